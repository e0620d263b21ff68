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
        , m_rule(row.formatter.ruleText())
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
        const Expression words = m_expressions.either(validWords(), m_digits.unreadable());
        return m_expressions.either(withBit(words), withoutWord());
    }

    /// Surely refused.
    Expression refused()
    {
        if (!m_hasWord)
            return m_expressions.nothing();
        return withBit(m_expressions.both(upTo(greatestNumber), m_expressions.complement(validWords())));
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

    Expression validWords()
    {
        const Expression unread = m_expressions.both(m_digits.all(), m_expressions.complement(upTo(greatestNumber)));
        if (!m_row.hasLimits())
            return unread;
        const Expression below = *m_row.first > 0 ? upTo(*m_row.first - 1) : m_expressions.nothing();
        const Expression within = m_expressions.both(upTo(*m_row.last), m_expressions.complement(below));
        return m_expressions.either(m_expressions.both(within, alignedWords()), unread);
    }

    Expression alignedWords()
    {
        if (m_row.isBit() || !m_rule.hasAlignment())
            return m_digits.all();
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
        for (int digit = 0; digit < m_bitDigits; ++digit)
            words = m_expressions.sequence(words, m_expressions.oneOf(CharacterSet::all()));
        return words;
    }

    Expression anyCase(QChar character)
    {
        CharacterSet set(character.toLower().unicode());
        set.add(CharacterSet(character.toUpper().unicode()));
        return m_expressions.oneOf(set);
    }

    /// Range strings without a word, which have no number.
    Expression withoutWord()
    {
        if (!m_appended.isEmpty())
            return m_expressions.nothing();
        Expression texts = withBit(m_expressions.emptyText());
        if (m_bitDigits == 2)
            texts = m_expressions.either(texts, m_expressions.oneOf(CharacterSet::all()));
        return m_bitDigits == 0 ? texts : m_expressions.either(texts, m_expressions.emptyText());
    }

    const LintRow &m_row;
    const MultipleRule m_rule;
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

/// What the row may accept; nothing for a pattern without automaton.
std::optional<Expression> possibleTexts(PatternExpressions &expressions, const LintRow &row)
{
    if (isReadByRule(row)) {
        const Expression refused = GroupTexts(expressions, row).refused();
        const auto texts = row.pattern.expressionIn(expressions, row.group, expressions.complement(refused));
        if (texts)
            return texts;
    }
    return row.pattern.expressionIn(expressions);
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
        texts = row.pattern.expressionIn(expressions, row.group, GroupTexts(expressions, row).accepted());
    else if (isReadAlike(row, asked) && hasLimitsOf(row, asked))
        texts = row.pattern.expressionIn(expressions);
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
