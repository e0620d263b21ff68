// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_PATTERNTREE_H
#define ZELMAR_LABEL_PATTERNTREE_H

#include <QString>
#include <QStringList>

#include <memory>

/// The structure of a row's pattern: enough to write texts that it should match, and to tell whether a capture group
/// can be left out. A text is a proposal only: what stands in an assertion is not looked at, so that the caller asks
/// the pattern itself.
class PatternTree
{
public:
    explicit PatternTree(const QString &pattern);
    ~PatternTree();
    Q_DISABLE_COPY(PatternTree)

    /// False for a pattern with a construct that is not known here; it then proposes nothing.
    bool isRead() const { return m_root != nullptr; }

    /// True when the pattern can match without the capture group, counted from 1.
    bool isGroupOptional(int group) const;

    /// Texts of many kinds: each alternative, each number of repetitions at its ends, first and last characters.
    QStringList proposals() const;

    struct Node;

private:
    std::unique_ptr<Node> m_root;
};

#endif
