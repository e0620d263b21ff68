// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "digittexts.h"

#include "zelmar_label/address_grammar/radixnumber_p.h"

using namespace label;

namespace {

constexpr int modulus = 64;

int powerOf(int radix, int exponent)
{
    int power = 1;
    for (int count = 0; count < exponent; ++count)
        power = power * radix % modulus;
    return power;
}

} // namespace

DigitTexts::DigitTexts(PatternExpressions &expressions, int radix)
    : m_expressions(expressions)
    , m_radix(radix)
{
}

CharacterSet DigitTexts::digits(int first, int last) const
{
    CharacterSet set;
    for (int value = first; value <= last; ++value) {
        const QString text = numberText(value, m_radix);
        set.add(CharacterSet(text.front().unicode()));
        set.add(CharacterSet(text.front().toUpper().unicode()));
    }
    return set;
}

Expression DigitTexts::digit(int first, int last)
{
    return m_expressions.oneOf(digits(first, last));
}

Expression DigitTexts::anyDigits(int count)
{
    Expression texts = m_expressions.emptyText();
    for (int place = 0; place < count; ++place)
        texts = m_expressions.sequence(digit(0, m_radix - 1), texts);
    return texts;
}

Expression DigitTexts::all()
{
    const Expression any = digit(0, m_radix - 1);
    return m_expressions.sequence(any, m_expressions.anyNumberOf(any));
}

Expression DigitTexts::upTo(int number)
{
    if (number < 0)
        return m_expressions.nothing();
    const QString text = numberText(number, m_radix);
    Expression texts = m_expressions.nothing();
    for (int size = 1; size < text.size(); ++size) {
        const Expression longer = m_expressions.either(m_expressions.emptyText(), texts);
        texts = m_expressions.sequence(digit(0, m_radix - 1), longer);
    }
    texts = m_expressions.either(texts, upToOfSameSize(text));
    return m_expressions.sequence(m_expressions.anyNumberOf(digit(0, 0)), texts);
}

Expression DigitTexts::upToOfSameSize(const QString &number)
{
    Expression texts = m_expressions.emptyText();
    for (int place = number.size(); place-- > 0;) {
        const int value = readNumber(number.mid(place, 1), m_radix).value_or(0);
        const Expression less = m_expressions.sequence(digit(0, value - 1), anyDigits(number.size() - place - 1));
        texts = m_expressions.either(less, m_expressions.sequence(digit(value, value), texts));
    }
    return texts;
}

Expression DigitTexts::withRemainder(int digits, Remainders wanted)
{
    if (digits == 0)
        return (wanted & 1) != 0 ? m_expressions.emptyText() : m_expressions.nothing();
    const auto known = m_known.find({digits, wanted});
    if (known != m_known.end())
        return known->second;
    const int power = powerOf(m_radix, digits - 1);
    Expression texts = m_expressions.nothing();
    for (int value = 0; value < m_radix; ++value) {
        const int shift = value * power % modulus;
        const Remainders behind = shift == 0 ? wanted : wanted >> shift | wanted << (modulus - shift);
        const Expression rest = withRemainder(digits - 1, behind);
        texts = m_expressions.either(texts, m_expressions.sequence(digit(value, value), rest));
    }
    m_known.insert({{digits, wanted}, texts});
    return texts;
}

Expression DigitTexts::withRemainder(const std::function<bool(int)> &isWanted)
{
    Remainders wanted = 0;
    for (int remainder = 0; remainder < modulus; ++remainder)
        wanted |= Remainders(isWanted(remainder) ? 1 : 0) << remainder;
    // The last digits decide as soon as a power of the radix is a multiple of 64.
    Expression shorter = m_expressions.nothing();
    int size = 1;
    for (; powerOf(m_radix, size) != 0; ++size)
        shorter = m_expressions.either(shorter, withRemainder(size, wanted));
    const Expression front = m_expressions.anyNumberOf(digit(0, m_radix - 1));
    return m_expressions.either(shorter, m_expressions.sequence(front, withRemainder(size, wanted)));
}

Expression DigitTexts::unreadable(const CharacterSet &excluded)
{
    CharacterSet ofNumbers = digits(0, m_radix - 1);
    ofNumbers.add(CharacterSet::blanks());
    for (const char character : {'+', '-', ',', 'x', 'X'})
        ofNumbers.add(CharacterSet(QLatin1Char(character).unicode()));
    constexpr uint minusSign = 0x2212;
    ofNumbers.add(CharacterSet(minusSign));
    ofNumbers.add(excluded);
    const Expression others = m_expressions.oneOf(ofNumbers.complement());
    const Expression any = m_expressions.anyNumberOf(m_expressions.oneOf(excluded.complement()));
    return m_expressions.sequence(any, m_expressions.sequence(others, any));
}
