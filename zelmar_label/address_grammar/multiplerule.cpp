// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/multiplerule.h"

#include "zelmar_label/address_grammar/radixnumber_p.h"

#include <QDebug>
#include <QRegExp>

namespace label {

namespace {

bool isWordCharacter(QChar character)
{
    return character.isLetterOrNumber() || character.isMark() || character == QLatin1Char('_');
}

/// The first place where a text holds `(\w+)-(\w+)(:\w*)`, found in one pass: an expression's search takes a time that
/// grows with the square of the text's length.
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

bool holds(const QString &text, const QString &expression)
{
    return QRegExp(expression).indexIn(text) >= 0;
}

bool equalsAny(const QString &text, QLatin1String first, QLatin1String second)
{
    return text == first || text == second;
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
        int readRadix; // of the bit part, where 32 is no radix
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
    const bool tailOf8 = holds(tail, QStringLiteral("rm8(?!a)"));
    const bool tailOf8Plus1 = holds(tail, QStringLiteral("rm8a1\\w*"));
    const bool tailOf16 = holds(tail, QStringLiteral("rm16(?!a)"));
    const bool tailOf16Plus1 = holds(tail, QStringLiteral("rm16a1\\w*"));
    m_canConvertToRegister = tail.startsWith(QLatin1String(":r"));
    m_appendsFirstBit = tail.startsWith(QLatin1String(":rfam3"));
    m_registerAlignment = tailOf8         ? RegisterAlignment::Of8
                          : tailOf8Plus1  ? RegisterAlignment::Of8Plus1
                          : tailOf16      ? RegisterAlignment::Of16
                          : tailOf16Plus1 ? RegisterAlignment::Of16Plus1
                                          : RegisterAlignment::None;
    if (isCompound) {
        m_multipleOf8 = tailOf8;
        m_multipleOf8Plus1 = tailOf8Plus1;
        m_multipleOf16 = tailOf16;
        m_multipleOf64Plus1 = tail.startsWith(QLatin1String(":rm64a1"));
        m_multipleOf16Plus1 = tailOf16Plus1;
        m_needOptimize = tail.startsWith(QLatin1String(":n"));
        return;
    }
    const QString lowered = text.toLower();
    m_multipleOf8 = lowered == QLatin1String("m8");
    m_multipleOf8Plus1 = equalsAny(lowered, QLatin1String("m8a1"), QLatin1String("m8add1"));
    m_multipleOf16 = lowered == QLatin1String("m16");
    m_multipleOf64Plus1 = equalsAny(lowered, QLatin1String("m64a1"), QLatin1String("m64add1"));
    m_multipleOf16Plus1 = equalsAny(lowered, QLatin1String("m16a1"), QLatin1String("m16add1"));
    m_needOptimize = !lowered.startsWith(QLatin1Char('n'));
}

QString MultipleRule::wordPart(const QString &range) const
{
    switch (m_separator) {
    case Separator::None:
        return range;
    case Separator::Unknown:
        return QString();
    case Separator::LastDigit:
        return range.left(qMax(0, range.size() - 1));
    case Separator::LastTwoDigits: {
        const QString word = range.left(qMax(0, range.size() - 2));
        return m_appendsFirstBit ? word + QLatin1String("01") : word;
    }
    case Separator::Text:
        break;
    }
    const QString lowered = range.toLower();
    const int end = lowered.indexOf(m_splitString);
    return end < 0 ? lowered : lowered.left(end);
}

QString MultipleRule::bitPart(const QString &range) const
{
    if (isLastDigits())
        return range.right(lastDigits());
    if (m_splitString.isEmpty())
        return QString();
    const int first = range.indexOf(m_splitString);
    if (first < 0)
        return QString();
    const int begin = first + m_splitString.size();
    const int second = range.indexOf(m_splitString, begin);
    return second < 0 ? range.mid(begin) : range.mid(begin, second - begin);
}

QString MultipleRule::bitTail(const QString &range) const
{
    if (isLastDigits())
        return range.right(lastDigits());
    const int separator = m_separator == Separator::Text ? range.toLower().indexOf(m_splitString) : -1;
    return separator < 0 ? QString() : range.mid(separator);
}

int MultipleRule::bitOffset(const QString &range) const
{
    if (m_readRadix < 0)
        return -1;
    const std::optional<int> bit = readNumber(bitPart(range), m_readRadix);
    if (!bit)
        return -1;
    return m_countsBitsFromOne ? wrappingDifference(*bit, 1) : *bit;
}

int MultipleRule::onePartBitOffset(const QString &range) const
{
    if (!isOnePart() || m_bitRadix < 0) {
        qDebug() << "onePartBitOffset"
                 << "base error " << range;
        return -1;
    }
    const std::optional<int> number = readNumber(range, m_bitRadix);
    if (!number)
        return -1;
    const bool countsFromOne = m_multipleOf8Plus1 || m_multipleOf16Plus1;
    return (countsFromOne ? wrappingDifference(*number, 1) : *number) % aligmentSize();
}

QString MultipleRule::registerSymbol(const QString &defaultSymbol) const
{
    const QLatin1Char separator('_');
    return registerTail.contains(separator) ? registerTail.section(separator, 1, 1) : defaultSymbol;
}

bool MultipleRule::isAligned(int value) const
{
    if (m_multipleOf8)
        return isMultipleOf8(value);
    if (m_multipleOf8Plus1)
        return isMultipleOf8Plus1(value);
    if (m_multipleOf16)
        return isMultipleOf16(value);
    if (m_multipleOf64Plus1)
        return isMultipleOf64Plus1(value);
    if (m_multipleOf16Plus1)
        return isMultipleOf16Plus1(value);
    return true;
}

int MultipleRule::aligmentSize() const
{
    if (m_multipleOf8 || m_multipleOf8Plus1)
        return 8;
    if (m_multipleOf16 || m_multipleOf16Plus1)
        return 16;
    return 1;
}

} // namespace label
