// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_PATTERNCOMPARISON_H
#define ZELMAR_LABEL_TESTS_PATTERNCOMPARISON_H

#include "zelmar_label/address_grammar/pattern.h"

#include <QRegExp>
#include <QString>

/// Compares what `label::Pattern` and `QRegExp` say about one pattern. For one thread.
class PatternComparison
{
public:
    /// `pattern` must not have more groups in one another than `QRegExp` can read.
    explicit PatternComparison(const QString &pattern);

    /// The difference in what is said without a text; empty for none.
    QString difference() const;

    /// The difference in what is said about a text; empty for none.
    QString difference(const QString &text);

    bool hasAutomaton() const { return m_pattern.automaton() != nullptr; }
    bool isValid() const { return m_expression.isValid(); }

    /// True when the last text matched.
    bool hasMatched() const { return m_hasMatched; }

private:
    QString groupDifference(const QString &text);
    QString sentence(const QString &question, int own, int expected, const QString &text) const;

    const label::Pattern m_pattern;
    QRegExp m_expression;
    bool m_hasMatched = false;
};

#endif
