// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ROWINDEX_P_H
#define ZELMAR_LABEL_ROWINDEX_P_H

#include "zelmar_label/address_grammar/automaton_p.h"
#include "zelmar_label/address_grammar/patternsyntax_p.h"
#include "zelmar_label/address_grammar/rangereader_p.h"
#include "zelmar_label/label_table/growingrows_p.h"

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
    /// True when the number alone decides, and nothing is written to the debug log.
    bool isPlain = false;
    RangeReader reader;
    /// For what `reader` does not read.
    const AddressRow *facts = nullptr;
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
    /// that may write to the debug log; a row that is not listed is no completion of shorter texts. False for a pattern
    /// that is not read, which the index does not take.
    bool add(int index, const AddressRow &row, bool mayBePlain, bool isListed);

    /// Lists a row that accepts the same addresses as an added one.
    void listOnly(int index, const AddressRow &row);

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

    /// As above, for the rows whose pattern matches the text or a longer one, except for those that are listed under a
    /// longer text. Returns the latter; null for none.
    template<typename Visit>
    const GrowingRows *visitCompletions(QStringView text, Visit visit) const
    {
        const Node *const end = visitPath(text, [&](const Tails &tails, QStringView rest) {
            const Automaton &automaton = *tails.automaton;
            tails.visit(automaton.alive(automaton.walk(Automaton::start, rest)), visit);
        });
        return end ? &end->below : nullptr;
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
        /// The listed rows behind longer texts.
        GrowingRows below;
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
        const QChar *const end = text.end();
        for (const QChar *unit = text.begin(); node; ++unit) {
            if (const Tails *const tails = node->tails.load(std::memory_order_acquire))
                visit(*tails, QStringView(unit, end));
            if (unit == end)
                return node;
            node = childOf(*node, unit->unicode());
        }
        return nullptr;
    }

    class Opening;

    void list(const Opening &opening, ListedRow row);
    Node &nodeOf(const QString &text);
    /// The child, a new one if there is none.
    Node &childMade(Node &parent, ushort unit);
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
