// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/patternexpression_p.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

namespace label {

namespace {

quint64 derivativeKey(Expression expression, uint unit)
{
    return quint64(expression) << 32 | unit;
}

} // namespace

std::size_t ExpressionTable::placeOf(quint64 key) const
{
    // Spreads keys that differ in any of their bits over the upper half.
    const quint64 spread = key * 0x9e3779b97f4a7c15u;
    std::size_t place = static_cast<std::size_t>(spread >> 32) & (m_entries.size() - 1);
    while (m_entries[place].value != none && m_entries[place].key != key)
        place = (place + 1) & (m_entries.size() - 1);
    return place;
}

void ExpressionTable::insert(quint64 key, Expression value)
{
    if (2 * ++m_count > m_entries.size()) {
        const std::vector<Entry> entries = std::exchange(m_entries, std::vector<Entry>(2 * m_entries.size()));
        for (const Entry &entry : entries) {
            if (entry.value != none)
                m_entries[placeOf(entry.key)] = entry;
        }
    }
    m_entries[placeOf(key)] = {key, value};
}

PatternExpressions::PatternExpressions()
{
    stored(Kind::Nothing, 0, 0, false);
    stored(Kind::EmptyText, 0, 0, true);
    complement(nothing());
}

Expression PatternExpressions::stored(Kind kind, int left, int right, bool isNullable)
{
    constexpr int bits = 20;
    static_assert(mostStored < 1 << bits, "indexes share a key");
    const quint64 key = quint64(kind) << 2 * bits | quint64(left) << bits | quint64(right);
    const Expression known = m_known.find(key);
    if (known != ExpressionTable::none)
        return known;
    m_isFull = m_isFull || count() >= mostStored;
    if (m_isFull)
        return nothing();
    m_known.insert(key, count());
    m_nodes.push_back({kind, left, right, isNullable});
    return count() - 1;
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
    if (first == nothing() || second == nothing() || isFull())
        return nothing();
    if (first == emptyText())
        return second;
    if (second == emptyText())
        return first;
    const std::vector<Expression> parts = partsOf(Kind::Sequence, first);
    Expression whole = second;
    for (auto part = parts.rbegin(); part != parts.rend(); ++part)
        whole = stored(Kind::Sequence, *part, whole, isNullable(*part) && isNullable(whole));
    return whole;
}

std::vector<Expression> PatternExpressions::partsOf(Kind kind, Expression expression) const
{
    std::vector<Expression> parts;
    while (m_nodes[size_t(expression)].kind == kind) {
        parts.push_back(m_nodes[size_t(expression)].left);
        expression = m_nodes[size_t(expression)].right;
    }
    parts.push_back(expression);
    return parts;
}

Expression PatternExpressions::merged(Kind kind, Expression left, Expression right)
{
    if (isFull())
        return nothing();
    const std::vector<Expression> lefts = partsOf(kind, left);
    const std::vector<Expression> rights = partsOf(kind, right);
    std::vector<Expression> parts;
    std::set_union(lefts.begin(), lefts.end(), rights.begin(), rights.end(), std::back_inserter(parts),
                   std::greater<>());
    m_isFull = m_isFull || parts.size() > mostAlternatives;
    Expression whole = parts.back();
    for (auto part = parts.rbegin() + 1; part != parts.rend(); ++part) {
        const bool needsAll = kind == Kind::Both;
        const bool isWholeNullable =
            needsAll ? isNullable(whole) && isNullable(*part) : isNullable(whole) || isNullable(*part);
        whole = stored(kind, *part, whole, isWholeNullable);
    }
    return whole;
}

Expression PatternExpressions::either(Expression left, Expression right)
{
    if (left == right || right == nothing() || left == anything())
        return left;
    if (left == nothing() || right == anything())
        return right;
    return merged(Kind::Either, left, right);
}

Expression PatternExpressions::both(Expression left, Expression right)
{
    if (left == right || right == anything() || left == nothing())
        return left;
    if (left == anything() || right == nothing())
        return right;
    return merged(Kind::Both, left, right);
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
    if (isSimple(expression))
        return derived(expression, unit);
    const Expression known = m_derivatives.find(derivativeKey(expression, unit));
    if (known != ExpressionTable::none)
        return known;
    // Chains may be long. Taken from their ends, they need no deep recursion.
    std::vector<Expression> open = {expression};
    while (isChain(open.back())) {
        const Expression rest = m_nodes[size_t(open.back())].right;
        if (isSimple(rest) || m_derivatives.find(derivativeKey(rest, unit)) != ExpressionTable::none)
            break;
        open.push_back(rest);
    }
    Expression result = nothing();
    for (auto part = open.rbegin(); part != open.rend(); ++part) {
        result = derived(*part, unit);
        m_derivatives.insert(derivativeKey(*part, unit), result);
    }
    return result;
}

bool PatternExpressions::isSimple(Expression expression) const
{
    const Node &node = m_nodes[size_t(expression)];
    const Kind kind = node.kind == Kind::Sequence ? m_nodes[size_t(node.left)].kind : node.kind;
    return kind == Kind::Nothing || kind == Kind::EmptyText || kind == Kind::OneOf;
}

bool PatternExpressions::isChain(Expression expression) const
{
    const Node &node = m_nodes[size_t(expression)];
    return node.kind == Kind::Either || node.kind == Kind::Both ||
           (node.kind == Kind::Sequence && isNullable(node.left));
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

void PatternExpressions::collectSets(Expression expression, std::vector<const CharacterSet *> &sets) const
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
            const CharacterSet *const set = &m_sets[size_t(node.left)];
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
