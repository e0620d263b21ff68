// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_PATTERNTREE_H
#define ZELMAR_LABEL_PATTERNTREE_H

#include <QString>
#include <QStringList>

#include <memory>

/// The structure of a row's pattern: enough to propose matching texts and to find optional capture groups. Assertions
/// are ignored, so the caller must check each proposal with the pattern.
class PatternTree
{
public:
    explicit PatternTree(const QString &pattern);
    ~PatternTree();
    Q_DISABLE_COPY(PatternTree)

    /// False for a pattern with an unknown construct; it proposes nothing.
    bool isRead() const { return m_root != nullptr; }

    /// True when the pattern can match without the capture group, counted from 1.
    bool isGroupOptional(int group) const;

    /// Texts of many kinds: each alternative, least and most repetitions, first and last characters.
    QStringList proposals() const;

    struct Node;

private:
    std::unique_ptr<Node> m_root;
};

#endif
