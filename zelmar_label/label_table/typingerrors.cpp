// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/typingerrors_p.h"

namespace label {

namespace {

// The costs of typing errors.
constexpr int costOfCase = 10;
constexpr int costOfBlank = 10;
constexpr int costOfZero = 10;
constexpr int costOfForm = 10;
constexpr int costOfLookAlike = 20;
constexpr int costOfOtherSeparator = 30;
constexpr int costOfMissingSeparator = 40;
constexpr int costOfTransposition = 40;
constexpr int costOfWrongDigit = 50;
constexpr int costOfShortText = 60;
constexpr int costOfLongerEnd = 5;
constexpr int costOfMissingCharacter = 70;
constexpr int costOfExtraCharacter = 70;
constexpr int costOfWrongCharacter = 80;
constexpr int costOfExtraEnd = 90;

constexpr QLatin1String separators(".:/\\", 4);

struct LookAlike
{
    char letter;
    char digit;
};
/// The digit stands for the letter that comes first here.
constexpr LookAlike lookAlikes[] = {{'O', '0'}, {'o', '0'}, {'Q', '0'}, {'I', '1'}, {'l', '1'}, {'i', '1'}, {'|', '1'}};

constexpr ushort beyondAscii = 128;

bool isSeparator(QChar character)
{
    return separators.contains(character);
}

/// The similar ASCII character; a null character if there is none.
QChar asciiForm(QChar character)
{
    if (character.unicode() < beyondAscii)
        return QChar();
    if (character.digitValue() >= 0)
        return QLatin1Char(static_cast<char>('0' + character.digitValue()));
    const QString plain = QString(character).normalized(QString::NormalizationForm_KC);
    return plain.size() == 1 && plain.at(0).unicode() < beyondAscii ? plain.at(0) : QChar();
}

/// The character that this one may mean: 0 for O, O for 0; a null character if there is none.
QChar lookAlike(QChar character)
{
    for (const LookAlike pair : lookAlikes) {
        if (character == QLatin1Char(pair.letter))
            return QLatin1Char(pair.digit);
        if (character == QLatin1Char(pair.digit))
            return QLatin1Char(pair.letter);
    }
    return QChar();
}

QChar inOtherCase(QChar character)
{
    return character.isUpper() ? character.toLower() : character.toUpper();
}

AddressDiagnosis::Slip slipOfReplacement(QChar written, QChar meant)
{
    using Slip = AddressDiagnosis::Slip;
    if (asciiForm(written) == meant)
        return Slip::NotAscii;
    if (inOtherCase(written) == meant)
        return Slip::LetterCase;
    if (lookAlike(written) == meant)
        return meant.isDigit() ? Slip::LetterForDigit : Slip::DigitForLetter;
    return isSeparator(meant) && !written.isLetterOrNumber() ? Slip::WrongSeparator : Slip::None;
}

} // namespace

QString toAscii(const QString &text)
{
    QString plain = text;
    for (int at = 0; at < text.size(); ++at) {
        const QChar form = asciiForm(text.at(at));
        if (!form.isNull())
            plain[at] = form;
    }
    return plain;
}

QString folded(const QString &text)
{
    QString plain;
    const QString ascii = toAscii(text);
    for (const QChar character : ascii) {
        if (!character.isSpace())
            plain.append(character);
    }
    for (int at = 0; at < plain.size(); ++at) {
        const QChar digit = lookAlike(plain.at(at));
        const bool isBesideDigit =
            (at > 0 && plain.at(at - 1).isDigit()) || (at + 1 < plain.size() && plain.at(at + 1).isDigit());
        if (isBesideDigit && digit.isDigit())
            plain[at] = digit;
    }
    return plain.toUpper();
}

TypingErrors::TypingErrors(const QString &deviceAddress, Scope scope)
    : m_text(deviceAddress)
    , m_scope(scope)
{
    m_edits.reserve(static_cast<std::size_t>(m_text.size()) + 1);
    for (int at = 0; at < m_text.size(); ++at)
        m_edits.push_back(editsAt(at));
    PositionEdits end;
    end.missingCost = costOfShortText;
    end.moreMissingCost = costOfLongerEnd;
    m_edits.push_back(end);
}

bool TypingErrors::isDigitAt(int at) const
{
    return at >= 0 && at < m_text.size() && m_text.at(at).isDigit();
}

bool TypingErrors::isLetterAt(int at) const
{
    return at >= 0 && at < m_text.size() && m_text.at(at).isLetter();
}

/// True for a letter before a letter that does not look like a digit: "TIM5" has no 1 in it.
bool TypingErrors::isInWord(int at) const
{
    return isLetterAt(at) && isLetterAt(at + 1) && !lookAlike(m_text.at(at + 1)).isDigit();
}

PositionEdits TypingErrors::editsAt(int at) const
{
    const QChar character = m_text.at(at);
    const bool isAfterDigit = isDigitAt(at - 1);
    const bool isInNumber = isAfterDigit && isDigitAt(at);
    // Two numbers are not joined into one.
    const bool isBetweenNumbers = !character.isLetterOrNumber() && isAfterDigit && isDigitAt(at + 1);
    PositionEdits edits;
    if (m_scope == Scope::Any)
        addSlips(edits, at);
    // The number without its symbol is another address.
    if (edits.removalCost == 0 && !isBetweenNumbers && (isLetterAt(at + 1) || (at > 0 && mayChange(at))))
        edits.removalCost = costOfExtraCharacter;
    if (!isInNumber)
        edits.missingCost = costOfMissingCharacter;
    if (at > 0 && mayChange(at)) {
        edits.otherCost = isDigitAt(at) ? 0 : costOfWrongCharacter;
        if (!isAfterDigit && !isDigitAt(at) && !isDigitAt(at + 1) && !isLetterAt(at + 1))
            edits.replacements.push_back({QLatin1Char('0'), costOfWrongCharacter});
    }
    if (at > 0 && !isInNumber)
        edits.restCost = costOfExtraEnd;
    return edits;
}

bool TypingErrors::mayChange(int at) const
{
    return m_scope == Scope::Any || isLetterAt(at);
}

/// The changes for errors that happen in typing a known address.
void TypingErrors::addSlips(PositionEdits &edits, int at) const
{
    const QChar character = m_text.at(at);
    const QChar form = asciiForm(character);
    const QChar similar = isInWord(at) ? QChar() : lookAlike(character);
    if (!form.isNull())
        edits.replacements.push_back({form, costOfForm});
    if (character.isLetter())
        edits.replacements.push_back({inOtherCase(character), costOfCase});
    if (!similar.isNull())
        edits.replacements.push_back({similar, costOfLookAlike});
    for (const char separator : separators) {
        if (character.isLetterOrNumber() && at > 0)
            edits.insertions.push_back({QLatin1Char(separator), costOfMissingSeparator});
        else if (!character.isLetterOrNumber() && !character.isSpace())
            edits.replacements.push_back({QLatin1Char(separator), costOfOtherSeparator});
    }
    if (character.isSpace())
        edits.removalCost = costOfBlank;
    else if (character == QLatin1Char('0') && !isDigitAt(at - 1) && isDigitAt(at + 1))
        edits.removalCost = costOfZero;
    if (isLetterAt(at) && isLetterAt(at + 1))
        edits.swapCost = costOfTransposition;
}

const std::vector<PositionEdits> &TypingErrors::edits(int reach)
{
    if (reach == m_reach)
        return m_edits;
    // Only the digit at which the address leaves the format may be wrong; of one that is too short, the last.
    const auto isDigitPlace = [&](int at, int ofReach) {
        return at == qMin(ofReach, m_text.size() - 1) && isDigitAt(at);
    };
    for (int at = 0; at < m_text.size(); ++at) {
        if (isDigitPlace(at, m_reach) || isDigitPlace(at, reach))
            m_edits[static_cast<std::size_t>(at)] = editsAt(at);
        if (!isDigitPlace(at, reach))
            continue;
        const int written = m_text.at(at).digitValue();
        for (int digit = 0; digit < 10; ++digit) {
            const int distance = qAbs(digit - written);
            if (distance > 0)
                m_edits[static_cast<std::size_t>(at)].replacements.push_back(
                    {QLatin1Char(static_cast<char>('0' + digit)), costOfWrongDigit + distance});
        }
    }
    m_reach = reach;
    return m_edits;
}

AddressDiagnosis::TypingError typingError(const QString &deviceAddress, const TextChange &change)
{
    using Slip = AddressDiagnosis::Slip;
    const QString written = deviceAddress.mid(change.position, 1);
    const QString meant = change.character.isNull() ? QString() : QString(change.character);
    Slip slip = Slip::None;
    if (change.kind == TextChange::Kind::Replaced)
        slip = slipOfReplacement(written.at(0), change.character);
    else if (change.kind == TextChange::Kind::Removed && written.at(0).isSpace())
        slip = Slip::Blank;
    else if (change.kind == TextChange::Kind::Inserted && isSeparator(change.character) && !written.isEmpty())
        slip = Slip::MissingSeparator;
    if (slip == Slip::None)
        return {};
    return {slip, change.position, slip == Slip::MissingSeparator ? QString() : written, meant};
}

} // namespace label
