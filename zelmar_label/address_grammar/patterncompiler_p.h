// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_PATTERNCOMPILER_P_H
#define ZELMAR_LABEL_PATTERNCOMPILER_P_H

#include "zelmar_label/address_grammar/patternexpression_p.h"
#include "zelmar_label/address_grammar/patternsyntax_p.h"

#include <optional>
#include <vector>

namespace label {

/// Number of characters of the texts that a part of a pattern matches.
struct TextWidth
{
    int least = 0;
    int most = 0; ///< or `PatternNode::endless`

    bool isFixed() const { return least == most; }
};

TextWidth widthOf(const PatternNode &node);

/// Where a capture group lies in a matching text, as far as the tree shows it.
struct GroupPosition
{
    bool isFound = false;
    bool isOptional = false; ///< some texts match without it
    bool isRepeated = false; ///< several parts of a text may match it
    TextWidth before;
    TextWidth behind;
};

GroupPosition positionOf(const PatternNode &tree, int group);

/// Turns a tree into an expression.
class PatternCompiler
{
public:
    /// Marks the start and the end of the group `markedGroup`; 0 for none.
    PatternCompiler(PatternExpressions &expressions, int markedGroup)
        : m_expressions(expressions)
        , m_markedGroup(markedGroup)
    {
    }

    /// Lets the group match only texts that `texts` matches too.
    void limitGroup(int group, Expression texts)
    {
        m_limitedGroup = group;
        m_limit = texts;
    }

    /// The whole pattern; nothing for one that needs more than a bounded number of expressions or has an assertion that
    /// is not known.
    std::optional<Expression> compile(const PatternNode &tree);

    /// True when the pattern asserts something about the text that follows. How much of a text could begin a match is
    /// then not decided by the automaton: `QRegExp` looks at the text as it is, not as it may become.
    bool looksAhead() const { return m_looksAhead; }

private:
    struct Place
    {
        bool isAtStart;
        bool isAtEnd;
    };

    Expression compiled(const PatternNode &node, Expression rest, Place place);
    Expression compiledSequence(const PatternNode &node, Expression rest, Place place);
    Expression compiledRepeat(const PatternNode &node, Expression rest);
    Expression compiledAhead(const PatternNode &node, Expression rest);
    Expression compiledLimitedGroup(const PatternNode &node, Expression rest);
    Expression giveUp();
    Expression marks();

    PatternExpressions &m_expressions;
    const int m_markedGroup;
    int m_limitedGroup = 0;
    Expression m_limit = 0;
    bool m_isKnown = true;
    bool m_looksAhead = false;
    bool m_skipsMarks = false;
};

} // namespace label

#endif
