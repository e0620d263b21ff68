// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/patterncompiler_p.h"

#include <algorithm>

namespace label {

namespace {

using Kind = PatternNode::Kind;

constexpr int endless = PatternNode::endless;
constexpr int mostWidth = 1 << 20;

int sum(int left, int right)
{
    return left == endless || right == endless || left + right > mostWidth ? endless : left + right;
}

int product(int width, int count)
{
    if (width == 0 || count == 0)
        return 0;
    return width == endless || count == endless || qint64(width) * count > mostWidth ? endless : width * count;
}

TextWidth sum(TextWidth left, TextWidth right)
{
    return {std::min(left.least + right.least, mostWidth), sum(left.most, right.most)};
}

bool hasAssertion(const PatternNode &node)
{
    return node.kind == Kind::Start || node.kind == Kind::End || node.kind == Kind::Ahead ||
           std::any_of(node.children.begin(), node.children.end(), hasAssertion);
}

bool isWidthless(const PatternNode &node)
{
    return node.kind == Kind::Start || node.kind == Kind::End || node.kind == Kind::Ahead;
}

bool findGroup(const PatternNode &node, int group, GroupPosition &position)
{
    if (node.kind == Kind::Group && node.group == group) {
        position.isFound = true;
        return true;
    }
    for (std::size_t index = 0; index < node.children.size(); ++index) {
        if (!findGroup(node.children[index], group, position))
            continue;
        if (node.kind == Kind::Choice || (node.kind == Kind::Repeat && node.least == 0))
            position.isOptional = true;
        if (node.kind == Kind::Repeat && node.most != 1)
            position.isRepeated = true;
        for (std::size_t other = 0; node.kind == Kind::Sequence && other < node.children.size(); ++other) {
            if (other != index) {
                TextWidth &width = other < index ? position.before : position.behind;
                width = sum(width, widthOf(node.children[other]));
            }
        }
        return true;
    }
    return false;
}

} // namespace

TextWidth widthOf(const PatternNode &node)
{
    TextWidth width;
    switch (node.kind) {
    case Kind::Characters:
        return {1, 1};
    case Kind::Sequence:
        for (const PatternNode &child : node.children)
            width = sum(width, widthOf(child));
        return width;
    case Kind::Choice:
        width = widthOf(node.children.front());
        for (const PatternNode &child : node.children) {
            const TextWidth one = widthOf(child);
            width.least = std::min(width.least, one.least);
            width.most = width.most == endless || one.most == endless ? endless : std::max(width.most, one.most);
        }
        return width;
    case Kind::Repeat:
        width = widthOf(node.children.front());
        return {std::min(mostWidth, width.least * std::min(node.least, mostRepetitions)),
                product(width.most, node.most)};
    case Kind::Group:
        return widthOf(node.children.front());
    case Kind::Start:
    case Kind::End:
    case Kind::Ahead:
        break;
    }
    return width;
}

GroupPosition positionOf(const PatternNode &tree, int group)
{
    GroupPosition position;
    findGroup(tree, group, position);
    return position;
}

std::optional<Expression> PatternCompiler::compile(const PatternNode &tree)
{
    const Expression expression = compiled(tree, m_expressions.emptyText(), {true, true});
    return m_isKnown && !m_expressions.isFull() ? std::optional(expression) : std::nullopt;
}

Expression PatternCompiler::giveUp()
{
    m_isKnown = false;
    return m_expressions.nothing();
}

Expression PatternCompiler::marks()
{
    if (m_markedGroup == 0)
        return m_expressions.emptyText();
    return m_expressions.anyNumberOf(m_expressions.oneOf(CharacterSet(groupStartMark, groupEndMark)));
}

Expression PatternCompiler::compiled(const PatternNode &node, Expression rest, Place place)
{
    if (!m_isKnown || m_expressions.isFull())
        return giveUp();
    if (node.kind == Kind::Group && node.group == m_limitedGroup)
        return compiledLimitedGroup(node, rest);
    switch (node.kind) {
    case Kind::Characters:
        if (node.characters.isEmpty())
            return giveUp();
        return m_expressions.sequence(m_expressions.oneOf(node.characters),
                                      m_skipsMarks ? m_expressions.sequence(marks(), rest) : rest);
    case Kind::Sequence:
        return compiledSequence(node, rest, place);
    case Kind::Choice: {
        Expression choice = m_expressions.nothing();
        for (const PatternNode &child : node.children)
            choice = m_expressions.either(choice, compiled(child, rest, place));
        return choice;
    }
    case Kind::Repeat:
        return compiledRepeat(node, rest);
    case Kind::Group:
        if (m_markedGroup == 0 || node.group != m_markedGroup)
            return compiled(node.children.front(), rest, place);
        rest = m_expressions.sequence(m_expressions.oneOf(CharacterSet(groupEndMark)), rest);
        return m_expressions.sequence(m_expressions.oneOf(CharacterSet(groupStartMark)),
                                      compiled(node.children.front(), rest, place));
    case Kind::Start:
        return place.isAtStart ? rest : giveUp();
    case Kind::End:
        if (place.isAtEnd)
            return rest;
        m_looksAhead = true;
        return m_expressions.both(rest, marks());
    case Kind::Ahead:
        return compiledAhead(node, rest);
    }
    return giveUp();
}

Expression PatternCompiler::compiledSequence(const PatternNode &node, Expression rest, Place place)
{
    for (std::size_t index = node.children.size(); index-- > 0;) {
        const auto child = node.children.begin() + static_cast<std::ptrdiff_t>(index);
        const bool isFirst = std::all_of(node.children.begin(), child, isWidthless);
        rest = compiled(*child, rest, {place.isAtStart && isFirst, place.isAtEnd});
        place.isAtEnd = place.isAtEnd && isWidthless(*child);
    }
    return rest;
}

Expression PatternCompiler::compiledRepeat(const PatternNode &node, Expression rest)
{
    const PatternNode &child = node.children.front();
    const bool isMarked = m_markedGroup != 0 && positionOf(child, m_markedGroup).isFound;
    if (hasAssertion(child) || (isMarked && node.most != 1))
        return giveUp();
    const Expression once = compiled(child, m_expressions.emptyText(), {false, false});
    Expression repeated = m_expressions.emptyText();
    if (node.most == endless)
        repeated = m_expressions.anyNumberOf(once);
    for (int count = node.least; count < node.most; ++count)
        repeated = m_expressions.either(m_expressions.emptyText(), m_expressions.sequence(once, repeated));
    for (int count = 0; count < node.least; ++count)
        repeated = m_expressions.sequence(once, repeated);
    return m_expressions.sequence(repeated, rest);
}

Expression PatternCompiler::compiledLimitedGroup(const PatternNode &node, Expression rest)
{
    const PatternNode &child = node.children.front();
    // An assertion in the group looks at what follows the group too.
    if (hasAssertion(child) && rest != m_expressions.emptyText())
        return giveUp();
    const Expression texts = compiled(child, m_expressions.emptyText(), {false, false});
    return m_expressions.sequence(m_expressions.both(texts, m_limit), rest);
}

Expression PatternCompiler::compiledAhead(const PatternNode &node, Expression rest)
{
    m_looksAhead = true;
    const bool skipped = m_skipsMarks;
    m_skipsMarks = true;
    const Expression ahead =
        m_expressions.sequence(marks(), compiled(node.children.front(), m_expressions.anything(), {false, false}));
    m_skipsMarks = skipped;
    return m_expressions.both(rest, node.isNegative ? m_expressions.complement(ahead) : ahead);
}

} // namespace label
