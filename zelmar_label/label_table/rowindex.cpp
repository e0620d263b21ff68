// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/rowindex_p.h"

#include "zelmar_label/address_grammar/addressrow.h"
#include "zelmar_label/address_grammar/patterncompiler_p.h"

#include <algorithm>
#include <optional>

namespace label {

namespace {

using Kind = PatternNode::Kind;

/// Enough for symbols in both letter cases with optional letters.
constexpr std::size_t mostBranches = 32;
constexpr int mostAlternatives = 4;
constexpr int longestWord = 8;
/// Longer than any symbol; a part of the tree is as deep as its text is long.
constexpr int longestOpening = 64;

bool holdsGroup(const PatternNode &node, int group)
{
    return positionOf(node, group).isFound;
}

/// The few, short texts that a part of a pattern matches; nothing for more or longer ones.
std::optional<QStringList> wordsOf(const PatternNode &node)
{
    QStringList words;
    switch (node.kind) {
    case Kind::Characters:
        if (node.characters.size() > mostAlternatives)
            return std::nullopt;
        for (const CharacterSet::Range range : node.characters.ranges()) {
            for (uint unit = range.first; unit <= range.last; ++unit)
                words.append(QChar(unit));
        }
        break;
    case Kind::Sequence:
    case Kind::Group:
        words.append(QString());
        for (const PatternNode &child : node.children) {
            const std::optional<QStringList> ends = wordsOf(child);
            if (!ends)
                return std::nullopt;
            QStringList longer;
            for (const QString &front : qAsConst(words)) {
                for (const QString &end : *ends)
                    longer.append(front + end);
            }
            words = longer;
        }
        break;
    case Kind::Choice:
        for (const PatternNode &child : node.children) {
            const std::optional<QStringList> more = wordsOf(child);
            if (!more)
                return std::nullopt;
            words += *more;
        }
        break;
    case Kind::Repeat: {
        const std::optional<QStringList> once = node.most == 1 ? wordsOf(node.children.front()) : std::nullopt;
        if (!once)
            return std::nullopt;
        words = *once;
        if (node.least == 0)
            words.append(QString());
        break;
    }
    case Kind::Start:
    case Kind::End:
    case Kind::Ahead:
        return std::nullopt;
    }
    words.removeDuplicates();
    const bool isLong =
        std::any_of(words.begin(), words.end(), [](const QString &word) { return word.size() > longestWord; });
    return isLong || words.size() > int(mostBranches) ? std::nullopt : std::optional(words);
}

bool mayBeginWith(const PatternNode &node, uint unit)
{
    switch (node.kind) {
    case Kind::Characters:
        return node.characters.contains(unit);
    case Kind::Sequence:
        for (const PatternNode &child : node.children) {
            if (mayBeginWith(child, unit))
                return true;
            if (widthOf(child).least > 0)
                return false;
        }
        return false;
    default:
        return std::any_of(node.children.begin(), node.children.end(),
                           [unit](const PatternNode &child) { return mayBeginWith(child, unit); });
    }
}

ListedRow listedRow(int index, const AddressRow &row)
{
    return {static_cast<quint32>(index), row.isBit() ? 1U : 0U};
}

bool holdsStart(const PatternNode &node)
{
    return node.kind == Kind::Start || std::any_of(node.children.begin(), node.children.end(), holdsStart);
}

} // namespace

/// The texts that all matches of a pattern begin with, and the parts of the pattern behind them.
class RowIndex::Opening
{
public:
    Opening(const PatternNode &tree, int group)
        : m_group(group)
    {
        read(tree);
    }

    struct Branch
    {
        QString text;
        int groupStart = -1;
    };

    const std::vector<Branch> &branches() const { return m_branches; }
    const std::vector<const PatternNode *> &rest() const { return m_rest; }

    /// True when the rest begins at the start of the address.
    bool isAtStart() const { return m_branches.size() == 1 && m_branches.front().text.isEmpty(); }

    /// True when the rest asks for the start of the address, which is elsewhere behind a text.
    bool holdsStartBehind() const
    {
        return std::any_of(m_rest.begin(), m_rest.end(), [](const PatternNode *node) { return holdsStart(*node); });
    }

    /// True when the group ends inside the texts.
    bool isGroupClosed() const { return m_isGroupClosed; }

    /// True when an address may begin in two ways that differ in the place of the group.
    bool mayBranchTwice(const PatternNode &rest) const;

private:
    void read(const PatternNode &node)
    {
        if (node.kind == Kind::Sequence) {
            for (const PatternNode &child : node.children)
                read(child);
        } else if (!m_rest.empty()) {
            m_rest.push_back(&node);
        } else if (node.kind == Kind::Group) {
            readGroup(node);
        } else if (node.kind != Kind::Start || !isAtStart()) {
            readPart(node);
        }
    }

    void readGroup(const PatternNode &node)
    {
        const bool isWanted = node.group == m_group;
        for (Branch &branch : m_branches)
            branch.groupStart = isWanted ? branch.text.size() : branch.groupStart;
        read(node.children.front());
        m_isGroupClosed = m_isGroupClosed || (isWanted && m_rest.empty());
    }

    void readPart(const PatternNode &node)
    {
        const std::optional<QStringList> words =
            node.kind != Kind::Characters && holdsGroup(node, m_group) ? std::nullopt : wordsOf(node);
        if (!words || m_branches.front().text.size() >= longestOpening ||
            m_branches.size() * std::size_t(words->size()) > mostBranches) {
            m_rest.push_back(&node);
            return;
        }
        std::vector<Branch> longer;
        for (const Branch &branch : m_branches) {
            for (const QString &word : *words)
                longer.push_back({branch.text + word, branch.groupStart});
        }
        m_branches = std::move(longer);
    }

    const int m_group;
    std::vector<Branch> m_branches = {Branch()};
    std::vector<const PatternNode *> m_rest;
    bool m_isGroupClosed = false;
};

bool RowIndex::Opening::mayBranchTwice(const PatternNode &rest) const
{
    for (const Branch &shorter : m_branches) {
        for (const Branch &longer : m_branches) {
            if (longer.groupStart == shorter.groupStart || !longer.text.startsWith(shorter.text))
                continue;
            const int size = shorter.text.size();
            if (longer.text.size() == size || mayBeginWith(rest, longer.text.at(size).unicode()))
                return true;
        }
    }
    return false;
}

bool RowIndex::add(int index, const AddressRow &row, bool mayBePlain, bool isListed)
{
    const PatternSyntax syntax(row.columns.pattern);
    if (!syntax.tree)
        return false;
    const int group = row.columns.addressGroupIndex;
    const Opening opening(*syntax.tree, group);
    const Rest *const rest = restOf(opening.rest());
    if (!opening.isAtStart() && opening.holdsStartBehind())
        return false;
    if (isListed)
        list(opening, listedRow(index, row));
    const GroupPosition position = positionOf(*syntax.tree, group);
    const bool isPlaceFixed = position.isFound && !position.isOptional && !position.isRepeated &&
                              position.behind.isFixed() && !opening.isGroupClosed() &&
                              !opening.mayBranchTwice(rest->tree);
    for (const Opening::Branch &branch : opening.branches()) {
        RowLeaf leaf;
        leaf.row = index;
        leaf.type = row.columns.type;
        leaf.reader = row.reader;
        leaf.facts = &row;
        if (isPlaceFixed && (branch.groupStart >= 0 || position.before.isFixed())) {
            leaf.rangeStart = branch.groupStart >= 0 ? branch.groupStart : position.before.least;
            leaf.behindRange = position.behind.least;
            leaf.isPlain = mayBePlain;
        }
        Node &node = nodeOf(branch.text);
        if (node.added.empty())
            m_changed.push_back(&node);
        node.added.emplace_back(rest, leaf);
    }
    return true;
}

void RowIndex::listOnly(int index, const AddressRow &row)
{
    const PatternSyntax syntax(row.columns.pattern);
    if (!syntax.tree)
        return;
    const Opening opening(*syntax.tree, row.columns.addressGroupIndex);
    if (opening.isAtStart() || !opening.holdsStartBehind())
        list(opening, listedRow(index, row));
}

void RowIndex::list(const Opening &opening, ListedRow row)
{
    for (const Opening::Branch &branch : opening.branches()) {
        Node *node = &m_root;
        for (const QChar character : branch.text) {
            node->below.append(row);
            node = &childMade(*node, character.unicode());
        }
    }
}

std::vector<int> RowIndex::compile()
{
    std::vector<int> tooLarge;
    for (Node *const node : m_changed)
        publish(*node, tooLarge);
    m_changed.clear();
    return tooLarge;
}

void RowIndex::Tails::add(const Rest *rest, const RowLeaf &leaf)
{
    std::size_t place = static_cast<std::size_t>(std::find(rests.begin(), rests.end(), rest) - rests.begin());
    if (place == rests.size()) {
        rests.push_back(rest);
        starts.push_back(starts.back());
    }
    leaves.insert(leaves.begin() + starts[place + 1], leaf);
    for (; place + 1 < starts.size(); ++place)
        ++starts[place + 1];
}

std::vector<RowLeaf> RowIndex::Tails::takeLast()
{
    rests.pop_back();
    starts.pop_back();
    const std::vector<RowLeaf> taken(leaves.begin() + starts.back(), leaves.end());
    leaves.resize(starts.back());
    return taken;
}

void RowIndex::publish(Node &node, std::vector<int> &tooLarge)
{
    const Tails *const old = node.tails.load(std::memory_order_relaxed);
    auto tails = std::make_unique<Tails>(old ? *old : Tails());
    for (const auto &[rest, leaf] : node.added)
        tails->add(rest, leaf);
    node.added = {};
    tails->automaton = automatonOf(tails->rests);
    while (!tails->automaton && !tails->rests.empty()) {
        for (const RowLeaf &leaf : tails->takeLast())
            tooLarge.push_back(leaf.row);
        tails->automaton = automatonOf(tails->rests);
    }
    if (tails->rests.empty())
        return;
    m_tails.push_back(std::move(tails));
    node.tails.store(m_tails.back().get(), std::memory_order_release);
}

std::shared_ptr<const Automaton> RowIndex::automatonOf(const std::vector<const Rest *> &rests)
{
    std::vector<int> key;
    for (const Rest *const rest : rests)
        key.push_back(rest->number);
    std::shared_ptr<const Automaton> &known = m_automata[key];
    if (known || rests.size() > std::size_t(Automaton::mostExpressions))
        return known;
    PatternExpressions expressions;
    std::vector<Expression> roots;
    for (const Rest *const rest : rests) {
        const std::optional<Expression> root = PatternCompiler(expressions, 0).compile(rest->tree);
        if (!root)
            return nullptr;
        roots.push_back(*root);
    }
    if (std::optional<Automaton> automaton = Automaton::of(expressions, roots))
        known = std::make_shared<const Automaton>(std::move(*automaton));
    return known;
}

RowIndex::Node &RowIndex::nodeOf(const QString &text)
{
    Node *node = &m_root;
    for (const QChar character : text)
        node = &childMade(*node, character.unicode());
    return *node;
}

RowIndex::Node &RowIndex::childMade(Node &parent, ushort unit)
{
    Node *const child = childOf(parent, unit);
    return child ? *child : addChild(parent, unit);
}

RowIndex::Node &RowIndex::addChild(Node &parent, ushort unit)
{
    Node &child = m_nodes.emplace_back();
    if (&parent == &m_root && unit < m_first.size()) {
        m_first[unit].store(&child, std::memory_order_release);
        return child;
    }
    const Children *const old = parent.children.load(std::memory_order_relaxed);
    auto children = std::make_unique<Children>(old ? *old : Children());
    children->push_back({unit, &child});
    m_children.push_back(std::move(children));
    parent.children.store(m_children.back().get(), std::memory_order_release);
    return child;
}

const RowIndex::Rest *RowIndex::restOf(const std::vector<const PatternNode *> &nodes)
{
    std::string key;
    for (const PatternNode *const node : nodes)
        key += keyOf(*node);
    std::unique_ptr<const Rest> &known = m_rests[key];
    if (!known) {
        Rest rest{PatternNode(), static_cast<int>(m_rests.size())};
        for (const PatternNode *const node : nodes)
            rest.tree.children.push_back(*node);
        known = std::make_unique<const Rest>(std::move(rest));
    }
    return known.get();
}

int RowIndex::numberOf(const CharacterSet &set)
{
    const auto known = std::find(m_sets.begin(), m_sets.end(), set);
    const int number = static_cast<int>(known - m_sets.begin());
    if (known == m_sets.end())
        m_sets.push_back(set);
    return number;
}

/// A text that is the same for equal parts of patterns; groups make no difference.
std::string RowIndex::keyOf(const PatternNode &node)
{
    std::string inside;
    for (std::size_t index = 0; index < node.children.size(); ++index)
        inside += (node.kind == Kind::Choice && index > 0 ? "|" : "") + keyOf(node.children[index]);
    switch (node.kind) {
    case Kind::Characters:
        return '[' + std::to_string(numberOf(node.characters)) + ']';
    case Kind::Sequence:
    case Kind::Group:
        return inside;
    case Kind::Choice:
        return '(' + inside + ')';
    case Kind::Repeat:
        return '(' + inside + "){" + std::to_string(node.least) + ',' + std::to_string(node.most) + '}';
    case Kind::Ahead:
        return (node.isNegative ? "(!" : "(=") + inside + ')';
    case Kind::Start:
        return "^";
    case Kind::End:
        return "$";
    }
    return inside;
}

} // namespace label
