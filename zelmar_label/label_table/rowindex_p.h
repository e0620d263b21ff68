// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ROWINDEX_P_H
#define ZELMAR_LABEL_ROWINDEX_P_H

#include "zelmar_label/address_grammar/automaton_p.h"
#include "zelmar_label/address_grammar/patternsyntax_p.h"

#include <QStringView>
#include <QtAlgorithms>

#include <algorithm>
#include <array>
#include <atomic>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace label {

class AddressRow;

/// A row behind one of the texts that its addresses begin with.
struct RowLeaf
{
    int row = -1;
    /// Where the range string begins, and how many characters follow it; -1 when that depends on the address.
    int rangeStart = -1;
    int behindRange = 0;
    int type = 0;
    const AddressRow *facts = nullptr;
    /// True when the place of the range string and `facts` alone decide, and nothing is written to the debug log.
    bool isPlain = false;
};

/// The patterns of all rows of a table as one automaton: a tree over the fixed texts that addresses begin with, and
/// behind each such text an automaton of what follows there. A new row changes only what lies behind its own texts.
///
/// One thread at a time may add; any number of threads may ask meanwhile. Nothing that was published is changed or
/// freed before the index is.
class RowIndex
{
public:
    RowIndex() = default;
    Q_DISABLE_COPY(RowIndex)

    /// Adds a row, which must outlive the index; it is found after the next `compile`. `mayBePlain` is false for a row
    /// that may write to the debug log. False for a pattern that is not read, which the index does not take.
    bool add(int index, const AddressRow &row, bool mayBePlain);

    /// Compiles what was added since the last call. Returns the rows whose patterns are too large: the index does not
    /// find them, or not behind all their texts.
    std::vector<int> compile();

    /// Calls `visit(const RowLeaf &)` for each row whose pattern matches the text, in no particular order.
    template<typename Visit>
    void visitMatches(QStringView text, Visit visit) const
    {
        visitPath(text, [&](const Tails &tails, QStringView rest) {
            const Automaton &automaton = *tails.automaton;
            tails.visit(automaton.accepted(automaton.walk(Automaton::start, rest)), visit);
        });
    }

    /// As above, for each row whose pattern matches the text or a longer one.
    template<typename Visit>
    void visitCompletions(QStringView text, Visit visit) const
    {
        const Node *const end = visitPath(text, [&](const Tails &tails, QStringView rest) {
            const Automaton &automaton = *tails.automaton;
            tails.visit(automaton.alive(automaton.walk(Automaton::start, rest)), visit);
        });
        if (end)
            visitBelow(*end, visit);
    }

private:
    /// What may follow a text.
    struct Rest
    {
        PatternNode tree;
        int number;
    };
    /// The rests behind the text of a node, and the rows that have them. Immutable once published.
    struct Tails
    {
        std::shared_ptr<const Automaton> automaton;
        /// Sorted by rest.
        std::vector<RowLeaf> leaves;
        /// Where the leaves of each rest begin, and the end of the last.
        std::vector<quint32> starts = {0};
        std::vector<const Rest *> rests;

        void add(const Rest *rest, const RowLeaf &leaf);
        /// Removes the last rest and returns its rows.
        std::vector<RowLeaf> takeLast();

        template<typename Visit>
        void visit(Automaton::Accepted which, Visit visit) const
        {
            for (; which != 0; which &= which - 1) {
                const uint rest = qCountTrailingZeroBits(which);
                for (quint32 leaf = starts[rest]; leaf < starts[rest + 1]; ++leaf)
                    visit(leaves[leaf]);
            }
        }
    };

    struct Node;
    struct Child
    {
        ushort unit;
        Node *node;
    };
    using Children = std::vector<Child>;
    struct Node
    {
        std::atomic<const Tails *> tails = nullptr;
        std::atomic<const Children *> children = nullptr;
        /// What the writer has added, and not yet published.
        std::vector<std::pair<const Rest *, RowLeaf>> added;
    };

    Node *childOf(const Node &node, ushort unit) const
    {
        if (&node == &m_root && unit < m_first.size())
            return m_first[unit].load(std::memory_order_acquire);
        const Children *const children = node.children.load(std::memory_order_acquire);
        if (!children)
            return nullptr;
        for (const Child child : *children) {
            if (child.unit == unit)
                return child.node;
        }
        return nullptr;
    }

    /// Calls `visit` for the tails behind each text that the address begins with. Returns the node of the whole
    /// address; null when there is none.
    template<typename Visit>
    const Node *visitPath(QStringView text, Visit visit) const
    {
        const Node *node = &m_root;
        for (qsizetype at = 0; node; ++at) {
            if (const Tails *const tails = node->tails.load(std::memory_order_acquire))
                visit(*tails, text.mid(at));
            if (at == text.size())
                return node;
            node = childOf(*node, text.at(at).unicode());
        }
        return nullptr;
    }

    template<typename Visit>
    void visitBelow(const Node &node, Visit visit) const
    {
        const auto visitChild = [&](const Node *child) {
            if (const Tails *const tails = child->tails.load(std::memory_order_acquire))
                std::for_each(tails->leaves.begin(), tails->leaves.end(), visit);
            visitBelow(*child, visit);
        };
        if (&node == &m_root) {
            for (const std::atomic<Node *> &first : m_first) {
                if (const Node *const child = first.load(std::memory_order_acquire))
                    visitChild(child);
            }
        }
        if (const Children *const children = node.children.load(std::memory_order_acquire)) {
            for (const Child child : *children)
                visitChild(child.node);
        }
    }

    Node &nodeOf(const QString &text);
    Node &addChild(Node &parent, ushort unit);
    const Rest *restOf(const std::vector<const PatternNode *> &nodes);
    std::string keyOf(const PatternNode &node);
    int numberOf(const CharacterSet &set);
    std::shared_ptr<const Automaton> automatonOf(const std::vector<const Rest *> &rests);
    void publish(Node &node, std::vector<int> &tooLarge);

    Node m_root;
    /// The nodes of single ASCII characters.
    std::array<std::atomic<Node *>, 128> m_first = {};

    /// \name For the writer only
    ///@{
    std::deque<Node> m_nodes;
    std::vector<Node *> m_changed;
    std::vector<CharacterSet> m_sets;
    std::unordered_map<std::string, std::unique_ptr<const Rest>> m_rests;
    std::map<std::vector<int>, std::shared_ptr<const Automaton>> m_automata;
    /// What was published; some of it is no longer asked, but may still be read.
    std::vector<std::unique_ptr<const Tails>> m_tails;
    std::vector<std::unique_ptr<const Children>> m_children;
    ///@}
};

} // namespace label

#endif
