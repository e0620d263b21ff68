// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/multiplerule.h"

#include "zelmar_label/address_grammar/radixnumber_p.h"

#include <QDebug>
#include <QRegExp>
#include <QVarLengthArray>

#include <algorithm>

namespace label {

namespace {

bool isWordCharacter(QChar character)
{
    return character.isLetterOrNumber() || character.isMark() || character == QLatin1Char('_');
}

/// The first match of `(\w+)-(\w+)(:\w*)` in a text, in one pass: the search time of an expression grows with the
/// square of the text's length.
struct CompoundShape
{
    int start = -1;
    int dash = -1;
    int colon = -1;
    int end = -1;

    explicit CompoundShape(const QString &text)
    {
        for (int at = text.indexOf(QLatin1Char('-')); at >= 0; at = text.indexOf(QLatin1Char('-'), at + 1)) {
            int first = at;
            while (first > 0 && isWordCharacter(text.at(first - 1)))
                --first;
            const int behind = wordEnd(text, at + 1);
            if (first == at || behind == at + 1 || behind == text.size() || text.at(behind) != QLatin1Char(':'))
                continue;
            start = first;
            dash = at;
            colon = behind;
            end = wordEnd(text, behind + 1);
            return;
        }
    }

    bool isFound() const { return start >= 0; }
    bool isWhole(const QString &text) const { return start == 0 && end == text.size(); }

private:
    static int wordEnd(const QString &text, int at)
    {
        while (at < text.size() && isWordCharacter(text.at(at)))
            ++at;
        return at;
    }
};

/// `unit` as a small letter; ASCII without a look into the tables of Unicode.
QChar smallLetter(QChar unit)
{
    if (unit.unicode() >= 128)
        return unit.toLower();
    return unit >= QLatin1Char('A') && unit <= QLatin1Char('Z') ? QChar(unit.unicode() | 0x20) : unit;
}

/// The index of `part` in a text whose units are changed by `map`; -1 for none.
template<typename Map>
qsizetype placeOf(QStringView part, QStringView text, Map map)
{
    for (qsizetype at = 0; at + part.size() <= text.size(); ++at) {
        qsizetype same = 0;
        while (same < part.size() && map(text.at(at + same)) == part.at(same))
            ++same;
        if (same == part.size())
            return at;
    }
    return -1;
}

bool holds(const QString &text, const QString &expression)
{
    return QRegExp(expression).indexIn(text) >= 0;
}

/// The first alignment that a lowered tail names, all but `Of64Plus1`.
MultipleRule::Alignment tailAlignment(const QString &tail)
{
    if (holds(tail, QStringLiteral("rm8(?!a)")))
        return MultipleRule::Alignment::Of8;
    if (tail.contains(QLatin1String("rm8a1")))
        return MultipleRule::Alignment::Of8Plus1;
    if (holds(tail, QStringLiteral("rm16(?!a)")))
        return MultipleRule::Alignment::Of16;
    if (tail.contains(QLatin1String("rm16a1")))
        return MultipleRule::Alignment::Of16Plus1;
    return MultipleRule::Alignment::None;
}

/// The alignment that a lowered plain text names.
MultipleRule::Alignment wordAlignment(const QString &text)
{
    static const struct
    {
        QLatin1String word;
        MultipleRule::Alignment alignment;
    } knownWords[] = {
        {QLatin1String("m8"), MultipleRule::Alignment::Of8},
        {QLatin1String("m8a1"), MultipleRule::Alignment::Of8Plus1},
        {QLatin1String("m8add1"), MultipleRule::Alignment::Of8Plus1},
        {QLatin1String("m16"), MultipleRule::Alignment::Of16},
        {QLatin1String("m64a1"), MultipleRule::Alignment::Of64Plus1},
        {QLatin1String("m64add1"), MultipleRule::Alignment::Of64Plus1},
        {QLatin1String("m16a1"), MultipleRule::Alignment::Of16Plus1},
        {QLatin1String("m16add1"), MultipleRule::Alignment::Of16Plus1},
    };
    for (const auto &known : knownWords) {
        if (text == known.word)
            return known.alignment;
    }
    return MultipleRule::Alignment::None;
}

} // namespace

MultipleRule::MultipleRule(const QString &ruleText)
    : text(ruleText)
    , separatorWord(QStringLiteral("."))
    , bitRadixWord(QStringLiteral("f"))
    , registerTail(QStringLiteral(":r"))
{
    const CompoundShape shape(text);
    if (shape.isFound()) {
        separatorWord = text.mid(shape.start, shape.dash - shape.start);
        bitRadixWord = text.mid(shape.dash + 1, shape.colon - shape.dash - 1);
        registerTail = text.mid(shape.colon, shape.end - shape.colon);
    }
    parseSeparator();
    parseBitRadix();
    parseAlignment(shape.isWhole(text));
    const QString lowered = text.toLower();
    m_semenseSpecialType = lowered == QLatin1String("semens1");
    m_minimumBitDigits = lowered.contains(QLatin1String("last2")) ? 2 : 1;
}

void MultipleRule::parseSeparator()
{
    static const struct
    {
        QLatin1String word;
        Separator separator;
        QLatin1String splitString;
    } knownWords[] = {
        {QLatin1String("dot"), Separator::Text, QLatin1String(".")},
        {QLatin1String("slash"), Separator::Text, QLatin1String("/")},
        {QLatin1String("dotpreslash"), Separator::Text, QLatin1String(".pre/")},
        {QLatin1String("dotaccslash"), Separator::Text, QLatin1String(".acc/")},
        {QLatin1String("dotposslash"), Separator::Text, QLatin1String(".pos/")},
        {QLatin1String("dotlenslash"), Separator::Text, QLatin1String(".len/")},
        {QLatin1String("last1"), Separator::LastDigit, QLatin1String("")},
        {QLatin1String("last2"), Separator::LastTwoDigits, QLatin1String("")},
        {QLatin1String("union"), Separator::None, QLatin1String("")},
        {QLatin1String("nosep"), Separator::None, QLatin1String("")},
    };
    const QString lowered = separatorWord.toLower();
    for (const auto &known : knownWords) {
        if (lowered == known.word) {
            m_separator = known.separator;
            m_splitString = known.splitString;
            return;
        }
    }
    m_splitString = lowered;
}

void MultipleRule::parseBitRadix()
{
    static const struct
    {
        QLatin1String word;
        int splitRadix;
        int onePartRadix;
        int readRadix; // of the bit part; 32 is no radix
    } knownWords[] = {
        {QLatin1String("f"), 16, -1, 16},    {QLatin1String("hex"), 16, 16, 16}, {QLatin1String("dec"), 10, 10, 10},
        {QLatin1String("15"), 10, -1, 10},   {QLatin1String("31"), 32, -1, 10},  {QLatin1String("oct"), 8, 8, 8},
        {QLatin1String("fam3"), -1, -1, 10},
    };
    const QString lowered = bitRadixWord.toLower();
    m_countsBitsFromOne = lowered == QLatin1String("fam3");
    for (const auto &known : knownWords) {
        if (lowered == known.word) {
            m_bitRadix = isOnePart() ? known.onePartRadix : known.splitRadix;
            m_readRadix = known.readRadix;
            return;
        }
    }
}

void MultipleRule::parseAlignment(bool isCompound)
{
    const QString tail = registerTail.toLower();
    m_canConvertToRegister = tail.startsWith(QLatin1String(":r"));
    m_appendsFirstBit = tail.startsWith(QLatin1String(":rfam3"));
    m_registerAlignment = tailAlignment(tail);
    if (isCompound) {
        const bool isOf64Plus1 = tail.startsWith(QLatin1String(":rm64a1"));
        const bool comesFirst = m_registerAlignment != Alignment::None && m_registerAlignment < Alignment::Of64Plus1;
        m_alignment = isOf64Plus1 && !comesFirst ? Alignment::Of64Plus1 : m_registerAlignment;
        m_needOptimize = tail.startsWith(QLatin1String(":n"));
        return;
    }
    const QString lowered = text.toLower();
    m_alignment = wordAlignment(lowered);
    m_needOptimize = !lowered.startsWith(QLatin1Char('n'));
}

/// The index of the separator text in any letter case; -1 for none.
qsizetype MultipleRule::separatorAt(QStringView range) const
{
    return placeOf(m_splitString, range, [](QChar unit) { return smallLetter(unit); });
}

/// The word part in the letter case of the range string, without appended digits.
QStringView MultipleRule::wordView(QStringView range) const
{
    switch (m_separator) {
    case Separator::None:
        return range;
    case Separator::LastDigit:
    case Separator::LastTwoDigits:
        return range.left(qMax<qsizetype>(0, range.size() - lastDigits()));
    case Separator::Text: {
        const qsizetype end = separatorAt(range);
        return end < 0 ? range : range.left(end);
    }
    case Separator::Unknown:
        break;
    }
    return QStringView();
}

QString MultipleRule::wordPart(const QString &range) const
{
    const QString word = wordView(range).toString();
    if (m_separator == Separator::LastTwoDigits && m_appendsFirstBit)
        return word + QLatin1String("01");
    return m_separator == Separator::Text ? word.toLower() : word;
}

std::optional<int> MultipleRule::wordNumber(QStringView range, int radix) const
{
    const QStringView word = wordView(range);
    if (m_separator != Separator::LastTwoDigits || !m_appendsFirstBit)
        return readNumber(word, radix);
    constexpr int fewDigits = 32;
    QVarLengthArray<QChar, fewDigits> digits(static_cast<int>(word.size()));
    std::copy(word.begin(), word.end(), digits.begin());
    digits.append(QLatin1Char('0'));
    digits.append(QLatin1Char('1'));
    return readNumber(QStringView(digits.constData(), digits.size()), radix);
}

QStringView MultipleRule::bitView(QStringView range) const
{
    if (isLastDigits())
        return range.right(qMin<qsizetype>(range.size(), lastDigits()));
    if (m_splitString.isEmpty())
        return QStringView();
    const auto same = [](QChar unit) { return unit; };
    const qsizetype first = placeOf(m_splitString, range, same);
    if (first < 0)
        return QStringView();
    const QStringView behind = range.mid(first + m_splitString.size());
    const qsizetype second = placeOf(m_splitString, behind, same);
    return second < 0 ? behind : behind.left(second);
}

QString MultipleRule::bitTail(const QString &range) const
{
    if (isLastDigits())
        return range.right(lastDigits());
    const qsizetype separator = m_separator == Separator::Text ? separatorAt(range) : -1;
    return separator < 0 ? QString() : range.mid(static_cast<int>(separator));
}

int MultipleRule::bitOffset(QStringView range) const
{
    if (m_readRadix < 0)
        return -1;
    const std::optional<int> bit = readNumber(bitView(range), m_readRadix);
    if (!bit)
        return -1;
    return m_countsBitsFromOne ? wrappingDifference(*bit, 1) : *bit;
}

int MultipleRule::onePartBitOffset(QStringView range) const
{
    if (!isOnePart() || m_bitRadix < 0) {
        qDebug() << "onePartBitOffset"
                 << "base error " << range.toString();
        return -1;
    }
    const std::optional<int> number = readNumber(range, m_bitRadix);
    if (!number)
        return -1;
    const bool countsFromOne = m_alignment == Alignment::Of8Plus1 || m_alignment == Alignment::Of16Plus1;
    return (countsFromOne ? wrappingDifference(*number, 1) : *number) % aligmentSize();
}

QString MultipleRule::registerSymbol(const QString &defaultSymbol) const
{
    const QLatin1Char separator('_');
    return registerTail.contains(separator) ? registerTail.section(separator, 1, 1) : defaultSymbol;
}

MultipleRule::LowBits MultipleRule::alignedBits() const
{
    switch (m_alignment) {
    case Alignment::Of8:
        return {7, 0};
    case Alignment::Of8Plus1:
        return {7, 1};
    case Alignment::Of16:
        return {15, 0};
    case Alignment::Of64Plus1:
        return {63, 1};
    case Alignment::Of16Plus1:
        return {15, 1};
    case Alignment::None:
        break;
    }
    return {0, 0};
}

int MultipleRule::aligmentSize() const
{
    switch (m_alignment) {
    case Alignment::Of8:
    case Alignment::Of8Plus1:
        return 8;
    case Alignment::Of16:
    case Alignment::Of16Plus1:
        return 16;
    case Alignment::None:
    case Alignment::Of64Plus1:
        break;
    }
    return 1;
}

} // namespace label
