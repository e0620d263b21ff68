// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_FUZZYMATCH_P_H
#define ZELMAR_LABEL_FUZZYMATCH_P_H

#include <QString>
#include <QStringList>

#include <vector>

namespace label {

/// Finds the same as the expression of `FilterTools::makefuzzypattern`, case-insensitively and for every text, but
/// without an expression: hundreds of times as fast.
class FuzzyMatch
{
public:
    /// `text` is the user's input. An empty text finds nothing.
    explicit FuzzyMatch(const QString &text);

    bool matches(const QString &name) const;

    /// The matching names, in their order.
    QStringList filter(const QStringList &names) const;

private:
    bool followsAt(const QString &name, int at, int first, int end) const;

    QString m_folded;
    /// Ends, in `m_folded`, of the pieces whose characters must follow each other directly.
    std::vector<int> m_pieceEnds;
};

} // namespace label

#endif
