// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "lintlanguage.h"

#include "digittexts.h"
#include "lintcontext.h"

#include "zelmar_label/address_grammar/multiplerule.h"
#include "zelmar_label/address_grammar/radixnumber_p.h"

#include <algorithm>
#include <limits>

using namespace label;

namespace {

constexpr int greatestNumber = std::numeric_limits<int>::max();

/// The texts of a row's capture group, by what the row does with their number.
class GroupTexts
{
public:
    GroupTexts(PatternExpressions &expressions, const LintRow &row)
        : m_row(row)
        , m_rule(row.formatter.rule())
        , m_expressions(expressions)
        , m_digits(expressions, row.formatter.base())
        , m_hasWord(!row.isBit() || m_rule.isOnePart() || m_rule.isSplit())
        , m_bitDigits(row.isBit() && m_rule.isSplit() && m_rule.splitString().isEmpty()
                          ? m_rule.bitTail(QStringLiteral("00")).size()
                          : 0)
        , m_appended(m_bitDigits > 0 ? m_rule.wordPart(QString(m_bitDigits, QLatin1Char('0'))) : QString())
    {
    }

    /// Surely accepted.
    Expression accepted()
    {
        if (!m_hasWord)
            return m_expressions.anything();
        const Expression words = m_expressions.either(validWords(), unreadableWords());
        return m_expressions.either(withBit(words), acceptsNoWord() ? withoutWord() : m_expressions.nothing());
    }

    /// Surely refused.
    Expression refused()
    {
        if (!m_hasWord)
            return m_expressions.nothing();
        const Expression words = m_expressions.both(upTo(greatestNumber), m_expressions.complement(validWords()));
        return m_expressions.either(withBit(words), acceptsNoWord() ? m_expressions.nothing() : withoutWord());
    }

private:
    /// Words whose number, with the digits that the rule appends, is at most `number`.
    Expression upTo(int number)
    {
        if (m_appended.isEmpty())
            return m_digits.upTo(number);
        const int radix = m_row.formatter.base();
        int power = 1;
        for (int digit = 0; digit < m_appended.size(); ++digit)
            power *= radix;
        const int rest = number - readNumber(m_appended, radix).value_or(0);
        return m_digits.upTo(rest < 0 ? -1 : rest / power);
    }

    /// Words whose number the row accepts.
    Expression validWords()
    {
        if (!m_row.hasLimits())
            return m_expressions.nothing();
        const Expression below = *m_row.first > 0 ? upTo(*m_row.first - 1) : m_expressions.nothing();
        const Expression within = m_expressions.both(upTo(*m_row.last), m_expressions.complement(below));
        return m_expressions.both(within, alignedWords());
    }

    Expression alignedWords()
    {
        if (m_row.isBit() || !m_rule.hasAlignment())
            return m_expressions.anything();
        return m_digits.withRemainder([this](int remainder) { return m_rule.isAligned(remainder); });
    }

    /// Range strings of the words.
    Expression withBit(Expression words)
    {
        const QString separator = m_row.isBit() ? m_rule.splitString() : QString();
        if (!separator.isEmpty() && m_rule.isSplit()) {
            Expression tail = m_expressions.anything();
            for (int place = separator.size(); place-- > 0;)
                tail = m_expressions.sequence(anyCase(separator.at(place)), tail);
            return m_expressions.sequence(words, m_expressions.either(m_expressions.emptyText(), tail));
        }
        return m_expressions.sequence(words, anyCharacters(m_bitDigits));
    }

    Expression anyCase(QChar character)
    {
        CharacterSet set(character.toLower().unicode());
        set.add(CharacterSet(character.toUpper().unicode()));
        return m_expressions.oneOf(set);
    }

    /// Words that surely are no numbers: no digits, or too many.
    Expression unreadableWords()
    {
        const QString separator = m_row.isBit() ? m_rule.splitString() : QString();
        const CharacterSet ends = separator.isEmpty() ? CharacterSet() : CharacterSet(separator.front().unicode());
        const Expression tooGreat = m_expressions.both(m_digits.all(), m_expressions.complement(upTo(greatestNumber)));
        return m_expressions.either(m_digits.unreadable(ends), tooGreat);
    }

    /// Range strings without a word.
    Expression withoutWord()
    {
        Expression texts = withBit(m_expressions.emptyText());
        for (int size = 0; size < m_bitDigits; ++size)
            texts = m_expressions.either(texts, anyCharacters(size));
        return texts;
    }

    /// The number of a range string without a word is that of the appended digits; none is as good as a valid one.
    bool acceptsNoWord() const
    {
        const std::optional<int> number = readNumber(m_appended, m_row.formatter.base());
        return !number || (m_row.hasLimits() && *m_row.first <= *number && *number <= *m_row.last);
    }

    Expression anyCharacters(int count)
    {
        Expression texts = m_expressions.emptyText();
        for (int place = 0; place < count; ++place)
            texts = m_expressions.sequence(m_expressions.oneOf(CharacterSet::all()), texts);
        return texts;
    }

    const LintRow &m_row;
    const MultipleRule &m_rule;
    PatternExpressions &m_expressions;
    DigitTexts m_digits;
    /// False for a rule that finds no word, so that no number is tested.
    const bool m_hasWord;
    /// Last characters of a range string that are the bit, of a rule without a separator.
    const int m_bitDigits;
    /// Digits that such a rule appends to the word.
    const QString m_appended;
};

bool isReadByRule(const LintRow &row)
{
    return !row.isScripted && DigitTexts::isKnownRadix(row.formatter.base());
}

/// Addresses are ASCII texts. A digit of another script matches `\d` too, but it makes no number.
Expression asciiTexts(PatternExpressions &expressions)
{
    constexpr uint lastAscii = 127;
    return expressions.anyNumberOf(expressions.oneOf(CharacterSet(0, lastAscii)));
}

/// What the row may accept; nothing for a pattern without automaton.
std::optional<Expression> possibleTexts(PatternExpressions &expressions, const LintRow &row)
{
    std::optional<Expression> texts;
    if (isReadByRule(row)) {
        const Expression refused = GroupTexts(expressions, row).refused();
        texts = row.pattern().expressionIn(expressions, row.group, expressions.complement(refused));
    }
    if (!texts)
        texts = row.pattern().expressionIn(expressions);
    return texts ? std::optional(expressions.both(*texts, asciiTexts(expressions))) : std::nullopt;
}

bool isReadAlike(const LintRow &row, const LintRow &other)
{
    return row.isScripted && row.formatter.ruleText() == other.formatter.ruleText() && row.isBit() == other.isBit();
}

bool hasLimitsOf(const LintRow &row, const LintRow &other)
{
    return row.hasLimits() && other.hasLimits() && *row.first <= *other.first && *other.last <= *row.last;
}

/// What the row surely accepts of the texts that `asked` accepts.
Expression certainTexts(PatternExpressions &expressions, const LintRow &row, const LintRow &asked)
{
    std::optional<Expression> texts;
    if (isReadByRule(row))
        texts = row.pattern().expressionIn(expressions, row.group, GroupTexts(expressions, row).accepted());
    else if (isReadAlike(row, asked) && hasLimitsOf(row, asked))
        texts = row.pattern().expressionIn(expressions);
    return texts.value_or(expressions.nothing());
}

} // namespace

std::optional<QString> textOutside(const LintRow &row, const std::vector<const LintRow *> &others)
{
    const QString unknown = QLatin1String("");
    PatternExpressions expressions;
    const std::optional<Expression> texts = possibleTexts(expressions, row);
    if (!texts)
        return unknown;
    Expression outside = *texts;
    for (const LintRow *const other : others)
        outside = expressions.both(outside, expressions.complement(certainTexts(expressions, *other, row)));
    const std::optional<Automaton> automaton = Automaton::of(expressions, {outside});
    return automaton ? automaton->sharedText(*automaton) : unknown;
}

bool isSpecialCase(const LintRow &row, const LintRow &other)
{
    PatternExpressions expressions;
    const std::optional<Expression> own = row.pattern().expressionIn(expressions);
    const std::optional<Expression> others = other.pattern().expressionIn(expressions);
    if (!own || !others)
        return false;
    const Expression outside = expressions.both(*own, expressions.complement(*others));
    const auto automaton = Automaton::of(expressions, {expressions.both(outside, asciiTexts(expressions))});
    return (automaton && !automaton->sharedText(*automaton)) || !textOutside(row, {&other});
}

bool sharesTexts(const LintRow &row, const LintRow &other)
{
    const Automaton *const own = row.pattern().automaton();
    const Automaton *const others = other.pattern().automaton();
    return own && others && own->sharedText(*others);
}

QStringList sharedTexts(const LintRow &row, const LintRow &other, int most)
{
    PatternExpressions expressions;
    const std::optional<Expression> left = possibleTexts(expressions, row);
    const std::optional<Expression> right = possibleTexts(expressions, other);
    if (!left || !right)
        return {};
    const std::optional<Automaton> shared = Automaton::of(expressions, {expressions.both(*left, *right)});
    return shared ? shared->samples(most) : QStringList();
}
