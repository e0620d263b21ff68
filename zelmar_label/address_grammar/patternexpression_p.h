// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_PATTERNEXPRESSION_P_H
#define ZELMAR_LABEL_PATTERNEXPRESSION_P_H

#include "zelmar_label/address_grammar/characterset_p.h"

#include <vector>

namespace label {

/// The marks that stand in a marked expression for the start and the end of a capture group.
constexpr uint groupStartMark = CharacterSet::lastUnit + 1;
constexpr uint groupEndMark = CharacterSet::lastUnit + 2;

/// An index into the expressions of one `PatternExpressions`. Equal expressions have equal indexes.
using Expression = int;

/// Expressions by keys; an entry needs no memory of its own.
class ExpressionTable
{
public:
    static constexpr Expression none = -1;

    /// `none` for an unknown key.
    Expression find(quint64 key) const { return m_entries[placeOf(key)].value; }
    /// `key` is not known yet.
    void insert(quint64 key, Expression value);

private:
    struct Entry
    {
        quint64 key = 0;
        Expression value = none;
    };

    /// Where the key is, or is to be.
    std::size_t placeOf(quint64 key) const;

    /// A power of two, of which less than half have a value.
    std::vector<Entry> m_entries = std::vector<Entry>(128);
    std::size_t m_count = 0;
};

/// Regular expressions with intersection and complement, each stored once, and their derivatives.
///
/// The derivative of an expression by a character matches what may follow that character. Source: J. Brzozowski,
/// "Derivatives of Regular Expressions", Journal of the ACM 11 (1964); S. Owens, J. Reppy, A. Turon,
/// "Regular-expression derivatives re-examined", Journal of Functional Programming 19 (2009).
class PatternExpressions
{
public:
    /// More expressions, and more alternatives in one, than the pattern of a row ever needs, and fewer than would take
    /// noticeable time.
    static constexpr int mostStored = 20000;
    static constexpr std::size_t mostAlternatives = 2000;

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

    /// The different sets of the expression and everything inside it, appended to `sets`. They stay valid until the
    /// next call of `oneOf`.
    void collectSets(Expression expression, std::vector<const CharacterSet *> &sets) const;

    /// Number of expressions stored.
    int count() const { return static_cast<int>(m_nodes.size()); }

    /// True when a limit is reached. `nothing()` then stands for each new expression, so that no result means anything.
    bool isFull() const { return m_isFull; }

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
    /// The left sides of a chain of one kind, and its last right side.
    std::vector<Expression> partsOf(Kind kind, Expression expression) const;
    /// A chain sorted by index, each part once: so that `a|b` and `b|a` are one expression. The newest part comes
    /// first: a longer chain then contains the shorter one.
    Expression merged(Kind kind, Expression left, Expression right);
    Expression derived(Expression expression, uint unit);
    /// True when the derivative is found faster than remembered.
    bool isSimple(Expression expression) const;
    /// True when the derivative needs that of the right side.
    bool isChain(Expression expression) const;

    bool m_isFull = false;
    std::vector<Node> m_nodes;
    std::vector<CharacterSet> m_sets;
    ExpressionTable m_known;
    ExpressionTable m_derivatives;
};

} // namespace label

#endif
