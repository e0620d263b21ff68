// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/patternexpression_p.h"

#include <algorithm>

namespace label {

PatternExpressions::PatternExpressions()
{
    stored(Kind::Nothing, 0, 0, false);
    stored(Kind::EmptyText, 0, 0, true);
    complement(nothing());
}

Expression PatternExpressions::stored(Kind kind, int left, int right, bool isNullable)
{
    const auto [place, isNew] = m_known.insert({{static_cast<int>(kind), left, right}, count()});
    if (isNew)
        m_nodes.push_back({kind, left, right, isNullable});
    return place->second;
}

Expression PatternExpressions::oneOf(const CharacterSet &set)
{
    if (set.isEmpty())
        return nothing();
    const auto known = std::find(m_sets.begin(), m_sets.end(), set);
    const int index = static_cast<int>(known - m_sets.begin());
    if (known == m_sets.end())
        m_sets.push_back(set);
    return stored(Kind::OneOf, index, 0, false);
}

Expression PatternExpressions::sequence(Expression first, Expression second)
{
    if (first == nothing() || second == nothing())
        return nothing();
    if (first == emptyText())
        return second;
    if (second == emptyText())
        return first;
    const Node node = m_nodes[size_t(first)];
    if (node.kind == Kind::Sequence)
        return sequence(node.left, sequence(node.right, second));
    return stored(Kind::Sequence, first, second, isNullable(first) && isNullable(second));
}

Expression PatternExpressions::merged(Kind kind, Expression left, Expression right, bool isNullable)
{
    std::vector<Expression> parts;
    const auto collect = [&](Expression expression) {
        while (m_nodes[size_t(expression)].kind == kind) {
            parts.push_back(m_nodes[size_t(expression)].left);
            expression = m_nodes[size_t(expression)].right;
        }
        parts.push_back(expression);
    };
    collect(left);
    collect(right);
    std::sort(parts.begin(), parts.end());
    parts.erase(std::unique(parts.begin(), parts.end()), parts.end());
    Expression whole = parts.back();
    const bool needsAll = kind == Kind::Both;
    bool isWholeNullable = this->isNullable(whole);
    for (auto part = parts.rbegin() + 1; part != parts.rend(); ++part) {
        const bool isPartNullable = this->isNullable(*part);
        isWholeNullable = needsAll ? isWholeNullable && isPartNullable : isWholeNullable || isPartNullable;
        whole = stored(kind, *part, whole, isWholeNullable);
    }
    Q_ASSERT(isWholeNullable == isNullable);
    Q_UNUSED(isNullable)
    return whole;
}

Expression PatternExpressions::either(Expression left, Expression right)
{
    if (left == right || right == nothing() || left == anything())
        return left;
    if (left == nothing() || right == anything())
        return right;
    return merged(Kind::Either, left, right, isNullable(left) || isNullable(right));
}

Expression PatternExpressions::both(Expression left, Expression right)
{
    if (left == right || right == anything() || left == nothing())
        return left;
    if (left == anything() || right == nothing())
        return right;
    return merged(Kind::Both, left, right, isNullable(left) && isNullable(right));
}

Expression PatternExpressions::complement(Expression inner)
{
    const Node node = m_nodes[size_t(inner)];
    return node.kind == Kind::Complement ? node.left : stored(Kind::Complement, inner, 0, !node.isNullable);
}

Expression PatternExpressions::anyNumberOf(Expression inner)
{
    if (inner == nothing() || inner == emptyText())
        return emptyText();
    return m_nodes[size_t(inner)].kind == Kind::AnyNumber ? inner : stored(Kind::AnyNumber, inner, 0, true);
}

Expression PatternExpressions::derivative(Expression expression, uint unit)
{
    const auto known = m_derivatives.find({expression, unit});
    if (known != m_derivatives.end())
        return known->second;
    const Expression result = derived(expression, unit);
    m_derivatives.insert({{expression, unit}, result});
    return result;
}

Expression PatternExpressions::derived(Expression expression, uint unit)
{
    const Node node = m_nodes[size_t(expression)];
    switch (node.kind) {
    case Kind::Nothing:
    case Kind::EmptyText:
        return nothing();
    case Kind::OneOf:
        return m_sets[size_t(node.left)].contains(unit) ? emptyText() : nothing();
    case Kind::Sequence: {
        const Expression behindFirst = sequence(derivative(node.left, unit), node.right);
        return isNullable(node.left) ? either(behindFirst, derivative(node.right, unit)) : behindFirst;
    }
    case Kind::Either:
        return either(derivative(node.left, unit), derivative(node.right, unit));
    case Kind::Both:
        return both(derivative(node.left, unit), derivative(node.right, unit));
    case Kind::Complement:
        return complement(derivative(node.left, unit));
    case Kind::AnyNumber:
        return sequence(derivative(node.left, unit), expression);
    }
    return nothing();
}

void PatternExpressions::collectSets(Expression expression, std::vector<CharacterSet> &sets) const
{
    std::vector<bool> isSeen(m_nodes.size(), false);
    std::vector<Expression> open = {expression};
    while (!open.empty()) {
        const Expression next = open.back();
        open.pop_back();
        if (isSeen[size_t(next)])
            continue;
        isSeen[size_t(next)] = true;
        const Node &node = m_nodes[size_t(next)];
        const bool hasTwo = node.kind == Kind::Sequence || node.kind == Kind::Either || node.kind == Kind::Both;
        if (node.kind == Kind::OneOf) {
            const CharacterSet &set = m_sets[size_t(node.left)];
            if (std::find(sets.begin(), sets.end(), set) == sets.end())
                sets.push_back(set);
        }
        if (hasTwo || node.kind == Kind::Complement || node.kind == Kind::AnyNumber)
            open.push_back(node.left);
        if (hasTwo)
            open.push_back(node.right);
    }
}

} // namespace label
