// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_FUZZYMATCH_P_H
#define ZELMAR_LABEL_FUZZYMATCH_P_H

#include <QString>
#include <QStringList>

#include <vector>

namespace label {

/// Finds what the expression of `FilterTools::makefuzzypattern` finds, case-insensitively, without an expression:
/// hundreds of times as fast, with the same answer for every text.
class FuzzyMatch
{
public:
    /// `text` is what a user typed. An empty text finds nothing.
    explicit FuzzyMatch(const QString &text);

    bool matches(const QString &name) const;

    /// The names that match, in their order.
    QStringList filter(const QStringList &names) const;

private:
    bool followsAt(const QString &name, int at, int first, int end) const;

    QString m_folded;
    /// Ends, in `m_folded`, of the pieces whose characters have to follow each other at once.
    std::vector<int> m_pieceEnds;
};

} // namespace label

#endif
