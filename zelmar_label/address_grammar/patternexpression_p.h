// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_PATTERNEXPRESSION_P_H
#define ZELMAR_LABEL_PATTERNEXPRESSION_P_H

#include "zelmar_label/address_grammar/characterset_p.h"

#include <map>
#include <vector>

namespace label {

/// The marks that stand in a marked expression for the start and the end of a capture group.
constexpr uint groupStartMark = CharacterSet::lastUnit + 1;
constexpr uint groupEndMark = CharacterSet::lastUnit + 2;

/// An index into the expressions of one `PatternExpressions`. Equal expressions have equal indexes.
using Expression = int;

/// Regular expressions with intersection and complement, each stored once, and their derivatives.
///
/// The derivative of an expression by a character matches what may follow that character. Source: J. Brzozowski,
/// "Derivatives of Regular Expressions", Journal of the ACM 11 (1964); S. Owens, J. Reppy, A. Turon,
/// "Regular-expression derivatives re-examined", Journal of Functional Programming 19 (2009).
class PatternExpressions
{
public:
    PatternExpressions();

    Expression nothing() const { return 0; }
    Expression emptyText() const { return 1; }
    /// Every text, marked or not.
    Expression anything() const { return 2; }
    Expression oneOf(const CharacterSet &set);
    Expression sequence(Expression first, Expression second);
    Expression either(Expression left, Expression right);
    Expression both(Expression left, Expression right);
    Expression complement(Expression inner);
    Expression anyNumberOf(Expression inner);

    /// True when the expression matches the empty text.
    bool isNullable(Expression expression) const { return m_nodes[size_t(expression)].isNullable; }

    Expression derivative(Expression expression, uint unit);

    /// The different sets of the expression and everything inside it, appended to `sets`.
    void collectSets(Expression expression, std::vector<CharacterSet> &sets) const;

    /// Number of expressions stored.
    int count() const { return static_cast<int>(m_nodes.size()); }

private:
    enum class Kind { Nothing, EmptyText, OneOf, Sequence, Either, Both, Complement, AnyNumber };
    struct Node
    {
        Kind kind;
        int left;
        int right;
        bool isNullable;
    };

    Expression stored(Kind kind, int left, int right, bool isNullable);
    /// Sorted, each once: so that `a|b` and `b|a` are one expression.
    Expression merged(Kind kind, Expression left, Expression right, bool isNullable);
    Expression derived(Expression expression, uint unit);

    std::vector<Node> m_nodes;
    std::vector<CharacterSet> m_sets;
    std::map<std::vector<int>, Expression> m_known;
    std::map<std::pair<Expression, uint>, Expression> m_derivatives;
};

} // namespace label

#endif
