// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_PATTERN_H
#define ZELMAR_LABEL_PATTERN_H

#include "zelmar_label/address_grammar/automaton_p.h"
#include "zelmar_label/address_grammar/textplace.h"

#include <QRegExp>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <memory>
#include <optional>
#include <vector>

namespace label {

struct PatternNode;

/// A case-sensitive pattern in the syntax of `QRegExp::RegExp`, read into an automaton.
///
/// It answers as `QRegExp` does. It reads literals, escapes, classes, groups, alternatives, greedy repetitions, "^" at
/// the start, "$" at the end and lookahead. For any other pattern, and for a question that such a pattern decides in
/// another way than by the texts that it matches, a copy of the expression answers; this takes some hundred times as
/// long.
///
/// Immutable; copies share everything; any number of threads may use it. Nothing throws.
class Pattern
{
public:
    /// The pattern of the empty text.
    Pattern();
    explicit Pattern(const QString &text);

    QString text() const;

    /// False for a pattern that `QRegExp` cannot read; it matches nothing.
    bool isValid() const;
    QString errorString() const;
    /// Number of capture groups.
    int countGroups() const;

    /// The automaton of the texts that match; null for a pattern that is read by the expression.
    const Automaton *automaton() const;

    /// True when the whole text matches.
    bool matches(QStringView text) const;

    /// How many leading characters of a text could begin a match: `QRegExp::matchedLength` after an exact match was
    /// tried. 0 for an invalid pattern.
    int front(QStringView text) const;

    /// True when a text matches, or could after further characters.
    bool canBeCompleted(QStringView text) const { return front(text) >= text.size(); }

    /// The ASCII characters that may follow `front`, and whether the text could end there. Empty for a pattern without
    /// automaton.
    QString following(QStringView front) const;

    /// True when a part of the text matches.
    bool isFoundIn(QStringView text) const;

    /// The place of a capture group in the leftmost, longest match inside `text`, as `QRegExp::indexIn` and
    /// `QRegExp::pos` give it. An empty group has no place.
    TextPlace group(int group, QStringView text) const;

    /// True when the pattern matches also without the group.
    bool isGroupOptional(int group) const;

    /// An expression of the texts that match. Nothing for a pattern without automaton.
    std::optional<Expression> expressionIn(PatternExpressions &expressions) const;

    /// An expression of the texts that match and whose capture group, if it takes part, is a text of `groupTexts`.
    /// Nothing for a pattern without automaton, and when the place of the group in each text is not known.
    std::optional<Expression> expressionIn(PatternExpressions &expressions, int group, Expression groupTexts) const;

    /// The expression, for questions about one text. A copy, since a match changes it.
    QRegExp expression() const;

    /// The tree of the pattern; null for a pattern that is not read.
    const PatternNode *tree() const;

private:
    struct Reading;
    struct Source;

    const Reading &reading() const;

    std::shared_ptr<const Source> m_source;
};

} // namespace label

#endif
