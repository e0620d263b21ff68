// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_PATTERNSYNTAX_P_H
#define ZELMAR_LABEL_PATTERNSYNTAX_P_H

#include "zelmar_label/address_grammar/characterset_p.h"

#include <QString>

#include <optional>
#include <vector>

namespace label {

/// A node of the syntax tree of a pattern.
struct PatternNode
{
    enum class Kind {
        Characters, ///< one of `characters`
        Sequence,   ///< all children, one after the other
        Choice,     ///< one of the children
        Repeat,     ///< the child, `least` to `most` times
        Group,      ///< the child, captured as `group`
        Start,      ///< "^"
        End,        ///< "$"
        Ahead,      ///< the child follows, or for `isNegative` does not
    };
    static constexpr int endless = -1;

    Kind kind = Kind::Sequence;
    CharacterSet characters;
    std::vector<PatternNode> children;
    int least = 1;
    int most = 1; ///< or `endless`
    int group = 0;
    bool isNegative = false;
};

/// Counts of repetitions that `QRegExp` reads; higher ones make a pattern invalid.
constexpr int mostRepetitions = 1024;

/// Lookaheads that `QRegExp` reads outside of others; more make a pattern invalid.
constexpr int mostLookaheads = 13;

/// `QRegExp`'s parser is recursive: more groups in one another may overflow the stack.
constexpr int deepestGroup = 1000;

/// What could be read of a pattern's text.
struct PatternSyntax
{
    /// Reads `text` as `QRegExp` reads it, in the syntax `QRegExp::RegExp`, case-sensitively.
    explicit PatternSyntax(const QString &text);

    /// The tree; nothing for a pattern that is invalid or has a construct that is not known here.
    std::optional<PatternNode> tree;
    /// Number of capture groups, when there is a tree.
    int groups = 0;
    /// More than `deepestGroup` groups in one another; never with a tree.
    bool isTooDeep = false;
};

} // namespace label

#endif
