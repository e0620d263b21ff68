// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/addressdiagnosis.h"

#include "zelmar_label/address_grammar/radixnumber_p.h"
#include "zelmar_label/address_grammar/stationaddress_p.h"
#include "zelmar_label/label_table/commandinformationtalbe.h"

#include <algorithm>
#include <optional>

namespace label {

namespace {

using Kind = AddressDiagnosis::Kind;

QString quoted(const QString &text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

/// "a", "a or b", "a, b or c".
QString alternatives(const QStringList &parts)
{
    if (parts.size() < 2)
        return parts.join(QString());
    return parts.mid(0, parts.size() - 1).join(QLatin1String(", ")) + QLatin1String(" or ") + parts.last();
}

/// Length of the front of `address` that the row could complete; two more than all of it when the row matches, which
/// sets a match apart from a text that only may become one.
int reach(const CommandFormatter &row, const QString &address)
{
    return qMax(0, row.matchedLength(QLatin1String("0-") + address));
}

bool isMatch(const CommandFormatter &row, const QString &address)
{
    return reach(row, address) > address.size();
}

QString numberInAddress(int number, int radix)
{
    return numberText(number, radix).toUpper();
}

bool isDigit(QChar character, int radix)
{
    return radix >= 2 && radix <= 36 && character.unicode() < 128 && character.isLetterOrNumber() &&
           readNumber(QString(character), radix).has_value();
}

bool areDigits(const QString &text, int radix)
{
    return std::all_of(text.begin(), text.end(), [radix](QChar character) { return isDigit(character, radix); });
}

QString withoutLeadingZeros(const QString &digits)
{
    int zeros = 0;
    while (zeros < digits.size() - 1 && digits.at(zeros) == QLatin1Char('0'))
        ++zeros;
    return digits.mid(zeros);
}

/// Takes "0" to "9" and the like out of `characters` and names them.
QStringList takeDigitWords(QString &characters)
{
    const auto take = [&characters](const QString &set) {
        for (const QChar character : set) {
            if (!characters.contains(character))
                return false;
        }
        for (const QChar character : set)
            characters.remove(character);
        return true;
    };
    if (take(QStringLiteral("0123456789ABCDEFabcdef")) || take(QStringLiteral("0123456789ABCDEF")))
        return {QStringLiteral("a hexadecimal digit")};
    if (take(QStringLiteral("0123456789")))
        return {QStringLiteral("a digit")};
    for (char last = '8'; last >= '2'; --last) {
        const QString all = QStringLiteral("0123456789");
        if (take(all.left(last - '0' + 1)))
            return {QStringLiteral("a digit from 0 to %1").arg(QLatin1Char(last))};
    }
    return {};
}

/// What the row could have behind `front`, in words.
QString expectation(const CommandFormatter &row, const QString &front)
{
    QString characters;
    for (char code = '!'; code <= '~'; ++code) {
        const QChar character = QLatin1Char(code);
        // It would set off a station.
        if (character != QLatin1Char('-') && row.canBeCompleted(front + character))
            characters.append(character);
    }
    constexpr int almostAll = 70;
    constexpr int mostNamed = 8;
    QStringList parts;
    if (characters.size() > almostAll) {
        parts.append(QStringLiteral("any character"));
    } else {
        parts = takeDigitWords(characters);
        if (characters.size() > mostNamed) {
            parts.append(QStringLiteral("one of ") + quoted(characters));
        } else {
            for (const QChar character : qAsConst(characters))
                parts.append(quoted(character));
        }
    }
    if (parts.isEmpty() || isMatch(row, front))
        parts.append(QStringLiteral("the end of the address"));
    return alternatives(parts);
}

class Diagnosis
{
public:
    Diagnosis(const CommandInformationTalbe &table, const QString &address, int type)
        : m_table(table)
    {
        m_result.address = deviceAddress(address);
        m_result.type = type;
    }

    AddressDiagnosis run()
    {
        const QString &address = m_result.address;
        const int accepting = m_table.getFirstMatchedAddressIndex(address, m_result.type);
        if (accepting >= 0)
            return of(Kind::Accepted, accepting);
        const int ofOtherType = m_table.getFirstMatchedAddressIndex(address, anyType);
        if (ofOtherType >= 0)
            return of(Kind::WrongType, ofOtherType);
        if (address.isEmpty())
            return of(Kind::Empty, -1);
        findNearest();
        if (m_reach > address.size())
            return ofMatchedRow();
        if (const std::optional<AddressDiagnosis> tooLarge = ofNumberTooLongForPattern())
            return *tooLarge;
        if (const std::optional<AddressDiagnosis> family = ofFamily())
            return *family;
        return ofText();
    }

private:
    const CommandFormatter &row(int index) const { return *m_table.formatterAt(index); }

    bool isCandidate(int index) const
    {
        return passesTypeFilter(row(index).type(), m_result.type) && !isFamilyTemplate(row(index));
    }

    AddressDiagnosis &of(Kind kind, int index)
    {
        m_result.kind = kind;
        m_result.row = index;
        if (index >= 0)
            m_result.format = formatName(row(index));
        return m_result;
    }

    void findNearest()
    {
        for (int index = 0; index < m_table.countFormatters() && m_reach <= m_result.address.size(); ++index) {
            if (!isCandidate(index))
                continue;
            const int reached = reach(row(index), m_result.address);
            if (m_nearest >= 0 && reached <= m_reach)
                continue;
            m_nearest = index;
            m_reach = reached;
        }
    }

    /// The row matches, so it is the number that it refuses.
    AddressDiagnosis ofMatchedRow()
    {
        const CommandFormatter &nearest = row(m_nearest);
        const int radix = nearest.base();
        const std::optional<int> first = readNumber(nearest.start(), radix);
        const std::optional<int> last = readNumber(nearest.end(), radix);
        if (!first || !last) {
            of(Kind::LimitsUnreadable, m_nearest);
            m_result.limit = quoted(nearest.start()) + QLatin1String(" and ") + quoted(nearest.end());
            return m_result;
        }
        const int number = nearest.getAddresRangePart(m_result.address);
        m_result.number = numberInAddress(number, radix);
        if (number > *last)
            return ofLimit(Kind::AboveLast, m_nearest, nearest.end());
        if (number < *first)
            return ofLimit(Kind::BelowFirst, m_nearest, nearest.start());
        return ofAlignment(number, *first, *last);
    }

    AddressDiagnosis ofLimit(Kind kind, int index, const QString &limit)
    {
        of(kind, index);
        m_result.limit = limit + radixRemark(row(index).base());
        return m_result;
    }

    AddressDiagnosis ofAlignment(int number, int first, int last)
    {
        const CommandFormatter &nearest = row(m_nearest);
        of(Kind::NotAligned, m_nearest);
        // Alignments are of 64 at most, unless a script announces another.
        const int distance = qBound(64, nearest.aligmentSize(), 4096);
        const std::optional<qint64> below = nextAligned(number, -1, distance);
        const std::optional<qint64> above = nextAligned(number, 1, distance);
        if (below && above) {
            const int group = static_cast<int>(*above - *below);
            const int rest = static_cast<int>((*below % group + group) % group);
            m_result.limit = numberInAddress(group, nearest.base());
            if (rest != 0)
                m_result.limit += QLatin1String(" plus ") + numberInAddress(rest, nearest.base());
            m_result.limit += radixRemark(nearest.base());
        }
        for (const std::optional<qint64> &aligned : {below, above}) {
            if (aligned && first <= *aligned && *aligned <= last)
                m_result.nearest.append(numberInAddress(static_cast<int>(*aligned), nearest.base()));
        }
        return m_result;
    }

    std::optional<qint64> nextAligned(qint64 number, int step, int distance) const
    {
        for (int steps = 0; steps < distance; ++steps) {
            number += step;
            if (row(m_nearest).validateMultiple(static_cast<int>(number)))
                return number;
        }
        return std::nullopt;
    }

    /// Patterns mostly allow as many digits as the last number has. A text that leaves a pattern in the middle of a
    /// number, and would match with fewer digits, has too large a number, which says more than that a character is
    /// wrong.
    std::optional<AddressDiagnosis> ofNumberTooLongForPattern()
    {
        const QString &address = m_result.address;
        for (int index = 0; index < m_table.countFormatters(); ++index) {
            if (!isCandidate(index) || reach(row(index), address) != m_reach)
                continue;
            const CommandFormatter &candidate = row(index);
            int end = m_reach;
            while (end < address.size() && isDigit(address.at(end), candidate.base()))
                ++end;
            const QString shorter = address.left(m_reach) + address.mid(end);
            if (end == m_reach || !isMatch(candidate, shorter))
                continue;
            const QString symbol = candidate.prefixSymbol();
            const int start =
                shorter.indexOf(candidate.getRangeString(shorter), shorter.startsWith(symbol) ? symbol.size() : 0);
            const QString digits = address.mid(start, end - start);
            if (start >= m_reach || !areDigits(digits, candidate.base()))
                continue;
            const std::optional<int> number = readNumber(digits, candidate.base());
            const std::optional<int> last = readNumber(candidate.end(), candidate.base());
            if (!last || (number && *number <= *last))
                continue;
            m_result.number = withoutLeadingZeros(digits).toUpper();
            return ofLimit(number ? Kind::AboveLast : Kind::NumberTooLong, index, candidate.end());
        }
        return std::nullopt;
    }

    /// True when the text leaves its nearest row in the concrete prefix of a family's member: that this member happens
    /// to be known says nothing about the text.
    bool isInMemberPrefix() const
    {
        const QString symbol = row(m_nearest).prefixSymbol();
        return m_reach < symbol.size() && row(m_nearest).getEditorUsedPrefixsymbol() != symbol;
    }

    /// The address begins with the symbol of a family, and no row goes further into it than that.
    std::optional<AddressDiagnosis> ofFamily()
    {
        const bool reachIsOfMember = m_nearest >= 0 && isInMemberPrefix();
        int best = -1;
        int bestLikeness = -1;
        for (int index = 0; index < m_table.countFormatters(); ++index) {
            const CommandFormatter &family = row(index);
            const QString symbol = family.prefixSymbol();
            if (!passesTypeFilter(family.type(), m_result.type) || !isFamilyTemplate(family) || symbol.isEmpty() ||
                (m_reach > symbol.size() && !reachIsOfMember) ||
                !m_result.address.startsWith(symbol, Qt::CaseInsensitive))
                continue;
            const int likeness = likenessTo(exampleAddress(family));
            if (likeness <= bestLikeness)
                continue;
            best = index;
            bestLikeness = likeness;
        }
        if (best < 0)
            return std::nullopt;
        of(Kind::UnknownFamilyMember, best);
        m_result.format = row(best).prefixSymbol();
        m_result.expected = row(best).formatString();
        return m_result;
    }

    /// How far the address and an example go together when their numbers do not count; most when they do throughout.
    int likenessTo(const QString &example) const
    {
        const QString left = shape(m_result.address);
        const QString right = shape(example);
        if (left == right)
            return left.size() + 1;
        const int size = qMin(left.size(), right.size());
        int same = 0;
        while (same < size && left.at(same) == right.at(same))
            ++same;
        return same;
    }

    static QString shape(const QString &address)
    {
        QString shape;
        for (const QChar character : address.toUpper()) {
            const QChar mark = character.isDigit() ? QChar(QLatin1Char('0')) : character;
            if (mark != QLatin1Char('0') || !shape.endsWith(mark))
                shape.append(mark);
        }
        return shape;
    }

    AddressDiagnosis ofText()
    {
        m_result.position = m_reach;
        m_result.suggestion = suggestion();
        if (m_nearest < 0)
            return of(Kind::UnknownFront, -1);
        if (m_reach >= m_result.address.size()) {
            of(Kind::Incomplete, m_nearest);
            m_result.expected = expectation(row(m_nearest), m_result.address);
            return m_result;
        }
        if (m_reach == 0 || m_reach < row(m_nearest).prefixSymbol().size())
            return of(Kind::UnknownFront, -1);
        of(Kind::UnexpectedCharacter, m_nearest);
        m_result.expected = expectation(row(m_nearest), m_result.address.left(m_reach));
        return m_result;
    }

    QString suggestion() const
    {
        const QString trimmed = m_result.address.trimmed();
        for (const QString &candidate : {trimmed, trimmed.toUpper(), trimmed.toLower()}) {
            if (candidate != m_result.address && m_table.getFirstMatchedAddressIndex(candidate, m_result.type) >= 0)
                return candidate;
        }
        return QString();
    }

    const CommandInformationTalbe &m_table;
    AddressDiagnosis m_result;
    int m_nearest = -1;
    int m_reach = 0;
};

QString wrongTypeSentence(const AddressDiagnosis &diagnosis)
{
    return diagnosis.type == BitType
               ? QStringLiteral("%1 is a %2, not a bit").arg(diagnosis.address, diagnosis.expected)
               : QStringLiteral("%1 is a %2, not a register").arg(diagnosis.address, diagnosis.expected);
}

QString frontSentence(const AddressDiagnosis &diagnosis)
{
    const char *const what = diagnosis.type == anyType   ? "format"
                             : diagnosis.type == BitType ? "bit format"
                                                         : "register format";
    return QStringLiteral("no %1 begins with %2")
        .arg(QLatin1String(what), quoted(diagnosis.address.left(diagnosis.position + 1)));
}

QString alignmentSentence(const AddressDiagnosis &diagnosis)
{
    QString sentence =
        diagnosis.limit.isEmpty()
            ? QStringLiteral("number %1 is not aligned as %2 demands").arg(diagnosis.number, diagnosis.format)
            : QStringLiteral("number %1 is not a multiple of %2").arg(diagnosis.number, diagnosis.limit);
    if (diagnosis.nearest.size() == 1)
        sentence += QStringLiteral("; %1 is").arg(diagnosis.nearest.first());
    if (diagnosis.nearest.size() > 1)
        sentence += QStringLiteral("; %1 are").arg(diagnosis.nearest.join(QLatin1String(" and ")));
    return sentence;
}

QString familySentence(const AddressDiagnosis &diagnosis)
{
    const QString sentence =
        QStringLiteral("no format of the %1 family takes %2").arg(diagnosis.format, quoted(diagnosis.address));
    return diagnosis.expected.isEmpty() ? sentence : sentence + QLatin1String("; one is ") + diagnosis.expected;
}

QString plainSentence(const AddressDiagnosis &diagnosis)
{
    switch (diagnosis.kind) {
    case Kind::Accepted:
        return QString();
    case Kind::Empty:
        return QStringLiteral("the address is empty");
    case Kind::UnknownFront:
        return frontSentence(diagnosis);
    case Kind::UnknownFamilyMember:
        return familySentence(diagnosis);
    case Kind::Incomplete:
        return QStringLiteral("%1 expects %2 at position %3, where the address ends")
            .arg(diagnosis.format, diagnosis.expected, QString::number(diagnosis.position + 1));
    case Kind::UnexpectedCharacter:
        return QStringLiteral("%1 expects %2 at position %3, not %4")
            .arg(diagnosis.format, diagnosis.expected, QString::number(diagnosis.position + 1),
                 quoted(diagnosis.address.mid(diagnosis.position, 1)));
    case Kind::AboveLast:
        return QStringLiteral("number %1 is above %2's last, %3")
            .arg(diagnosis.number, diagnosis.format, diagnosis.limit);
    case Kind::BelowFirst:
        return QStringLiteral("number %1 is below %2's first, %3")
            .arg(diagnosis.number, diagnosis.format, diagnosis.limit);
    case Kind::NotAligned:
        return alignmentSentence(diagnosis);
    case Kind::NumberTooLong:
        return QStringLiteral("number %1 is too long; %2's last is %3")
            .arg(diagnosis.number, diagnosis.format, diagnosis.limit);
    case Kind::LimitsUnreadable:
        return QStringLiteral("the limits of %1 in the driver database, %2, are no numbers of its radix")
            .arg(diagnosis.format, diagnosis.limit);
    case Kind::WrongType:
        return wrongTypeSentence(diagnosis);
    }
    return QString();
}

} // namespace

AddressDiagnosis diagnoseAddress(const CommandInformationTalbe &table, const QString &address, int type)
{
    AddressDiagnosis diagnosis = Diagnosis(table, address, type).run();
    if (diagnosis.kind == Kind::WrongType)
        diagnosis.expected = dataTypeWord(table.formatterAt(diagnosis.row)->type());
    return diagnosis;
}

QString diagnosisSentence(const AddressDiagnosis &diagnosis)
{
    const QString sentence = plainSentence(diagnosis);
    return diagnosis.suggestion.isEmpty() ? sentence : sentence + QLatin1String("; write ") + diagnosis.suggestion;
}

bool isFamilyTemplate(const CommandFormatter &row)
{
    const QString pattern = row.pattern();
    return !pattern.isEmpty() && std::all_of(pattern.begin(), pattern.end(), [](QChar character) {
        return character.isLetterOrNumber() || character == QLatin1Char('_');
    });
}

QString formatName(const CommandFormatter &row)
{
    const bool isOfFamily = row.getEditorUsedPrefixsymbol() != row.prefixSymbol();
    if (isOfFamily && !row.prefixSymbol().isEmpty())
        return row.prefixSymbol();
    const QString description = row.formatString();
    const int formEnd = description.indexOf(QLatin1String(": "));
    constexpr int longestForm = 24;
    if (formEnd > 0 && formEnd <= longestForm && description.indexOf(QLatin1Char(' ')) > formEnd)
        return description.left(formEnd);
    return row.prefixSymbol().isEmpty() ? QStringLiteral("the format") : row.prefixSymbol();
}

QString exampleAddress(const CommandFormatter &row)
{
    const QString mark = QStringLiteral("e.g. ");
    const QString description = row.formatString();
    const int found = description.lastIndexOf(mark);
    QString example = found < 0 ? QString() : description.mid(found + mark.size()).section(QLatin1Char(' '), 0, 0);
    while (!example.isEmpty() && QStringLiteral(".,;)").contains(example.at(example.size() - 1)))
        example.chop(1);
    return example.isEmpty() ? row.prefixSymbol() + row.start() : example;
}

QString dataTypeWord(int type)
{
    switch (type) {
    case BitType:
        return QStringLiteral("bit");
    case ByteType:
        return QStringLiteral("byte");
    case WordType:
        return QStringLiteral("word");
    case DoubleWordType:
        return QStringLiteral("double word");
    case QuadWordType:
        return QStringLiteral("quad word");
    case ReservedType:
        return QStringLiteral("text");
    default:
        return QStringLiteral("type %1").arg(type);
    }
}

QString radixRemark(int radix)
{
    switch (radix) {
    case 10:
        return QString();
    case 8:
        return QStringLiteral(" (octal)");
    case 16:
        return QStringLiteral(" (hexadecimal)");
    default:
        return QStringLiteral(" (radix %1)").arg(radix);
    }
}

} // namespace label
