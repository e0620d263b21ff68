// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/automaton_p.h"

#include <algorithm>

namespace label {

namespace {

constexpr int none = -1;

bool isDigit(uint unit)
{
    return unit >= '0' && unit <= '9';
}

/// A search over pairs of a state and a position in the text, the lowest cost first.
class NearSearch
{
public:
    NearSearch(const Automaton &automaton, QStringView text, const std::vector<PositionEdits> &edits, NearLimits limits)
        : m_automaton(automaton)
        , m_text(text)
        , m_edits(edits)
        , m_size(static_cast<int>(text.size()))
        , m_limits(limits)
        , m_queues(static_cast<std::size_t>(limits.mostCost) + 1)
        // A position behind the end stands for a text that is being completed.
        , m_visits(static_cast<std::size_t>(automaton.countStates()) * (text.size() + 2))
    {
        for (const uint unit : automaton.units()) {
            if (unit > ' ' && unit < 127)
                (isDigit(unit) ? m_digits : m_others).push_back(QChar(unit));
        }
    }

    std::vector<NearText> run()
    {
        // More steps would be guesses.
        constexpr std::size_t mostSteps = 4096;
        constexpr std::size_t usualSteps = 256;
        m_steps.reserve(usualSteps);
        push({none, 0, 0, Automaton::start, QChar(), {}}, 0);
        for (int cost = 0; cost <= m_limits.mostCost; ++cost) {
            Queue &queue = m_queues[static_cast<std::size_t>(cost)];
            while (queue.first != none && static_cast<int>(m_found.size()) < m_limits.most &&
                   m_steps.size() < mostSteps) {
                const int index = queue.first;
                queue.first = m_steps[static_cast<std::size_t>(index)].nextInQueue;
                follow(index);
            }
        }
        return m_found;
    }

private:
    struct Step
    {
        int parent;
        int at;
        int cost;
        Automaton::State state;
        QChar added;
        TextChange change;
        int nextInQueue = none;
    };

    struct Queue
    {
        int first = none;
        int last = none;
    };

    void push(Step step, int cost)
    {
        step.cost += cost;
        if (step.cost > m_limits.mostCost || step.state == Automaton::dead)
            return;
        const int index = static_cast<int>(m_steps.size());
        Queue &queue = m_queues[static_cast<std::size_t>(step.cost)];
        if (queue.first == none)
            queue.first = index;
        else
            m_steps[static_cast<std::size_t>(queue.last)].nextInQueue = index;
        queue.last = index;
        m_steps.push_back(step);
    }

    void follow(int index)
    {
        const Step step = m_steps[static_cast<std::size_t>(index)];
        uchar &visits = m_visits[static_cast<std::size_t>(step.state * (m_size + 2) + step.at)];
        if (visits >= m_limits.most)
            return;
        ++visits;
        const bool isWhole = step.at >= m_size && m_automaton.accepted(step.state) != 0;
        if (step.at < m_size)
            change(index, step);
        if (isWhole)
            keep(index);
        else
            complete(index, step);
    }

    /// The step after `step` that adds a character and goes on at `at`.
    Step added(int index, const Step &step, QChar character, int at, TextChange::Kind kind) const
    {
        Step next = {index, at, step.cost, m_automaton.next(step.state, character.unicode()), character, step.change};
        if (next.change.kind == TextChange::Kind::None && kind != TextChange::Kind::None)
            next.change = {kind, qMin(step.at, m_size), character};
        return next;
    }

    void change(int index, const Step &step)
    {
        const QChar own = m_text.at(step.at);
        const PositionEdits &edits = m_edits[static_cast<std::size_t>(step.at)];
        const Step kept = added(index, step, own, step.at + 1, TextChange::Kind::None);
        push(kept, 0);
        // A change that leads where the text leads without it corrects nothing.
        const auto replace = [&](QChar character, int cost) {
            const Step replaced = added(index, step, character, step.at + 1, TextChange::Kind::Replaced);
            if (replaced.state != kept.state)
                push(replaced, cost);
        };
        for (const CharacterEdit &edit : edits.replacements)
            replace(edit.character, edit.cost);
        for (std::size_t other = 0; edits.otherCost > 0 && other < m_others.size(); ++other)
            replace(m_others[other], edits.otherCost);
        if (edits.removalCost > 0 && kept.state != step.state)
            push(without(index, step, step.at + 1), edits.removalCost);
        if (edits.restCost > 0)
            push(without(index, step, m_size), edits.restCost);
        if (edits.swapCost > 0 && step.at + 1 < m_size)
            pushSwapped(index, step, own, edits.swapCost);
    }

    Step without(int index, const Step &step, int at) const
    {
        Step next = {index, at, step.cost, step.state, QChar(), step.change};
        if (next.change.kind == TextChange::Kind::None)
            next.change = {TextChange::Kind::Removed, step.at, QChar()};
        return next;
    }

    void pushSwapped(int index, const Step &step, QChar own, int cost)
    {
        const Step first = added(index, step, m_text.at(step.at + 1), step.at, TextChange::Kind::Swapped);
        if (first.state == Automaton::dead)
            return;
        m_steps.push_back(first);
        push(added(static_cast<int>(m_steps.size()) - 1, first, own, step.at + 2, TextChange::Kind::Swapped), cost);
    }

    void complete(int index, const Step &step)
    {
        const PositionEdits &edits = m_edits[static_cast<std::size_t>(qMin(step.at, m_size))];
        const auto insert = [&](QChar character, int at, int cost) {
            const Step inserted = added(index, step, character, at, TextChange::Kind::Inserted);
            if (cost > 0 && inserted.state != step.state)
                push(inserted, cost);
        };
        for (const CharacterEdit &edit : edits.insertions)
            insert(edit.character, step.at, edit.cost);
        const int cost = step.at > m_size ? edits.moreMissingCost : edits.missingCost;
        const int at = step.at < m_size ? step.at : m_size + 1;
        for (std::size_t digit = 0; digit < m_digits.size() && step.at >= m_size; ++digit)
            insert(m_digits[digit], at, cost);
        for (const QChar other : m_others)
            insert(other, at, cost);
    }

    /// Other characters for the same change are less likely.
    void keep(int index)
    {
        const Step &last = m_steps[static_cast<std::size_t>(index)];
        const auto isOfSameChange = [&](const NearText &one) {
            return one.change.kind == last.change.kind && one.change.position == last.change.position;
        };
        if (std::any_of(m_found.begin(), m_found.end(), isOfSameChange))
            return;
        if (m_found.empty())
            m_limits.mostCost = qMin(m_limits.mostCost, last.cost + m_limits.mostMore);
        QString text;
        for (int at = index; at != none; at = m_steps[static_cast<std::size_t>(at)].parent) {
            if (!m_steps[static_cast<std::size_t>(at)].added.isNull())
                text.append(m_steps[static_cast<std::size_t>(at)].added);
        }
        std::reverse(text.begin(), text.end());
        if (std::none_of(m_found.begin(), m_found.end(), [&](const NearText &one) { return one.text == text; }))
            m_found.push_back({text, last.cost, last.change});
    }

    const Automaton &m_automaton;
    const QStringView m_text;
    const std::vector<PositionEdits> &m_edits;
    const int m_size;
    NearLimits m_limits;
    std::vector<QChar> m_others;
    std::vector<QChar> m_digits;
    std::vector<Queue> m_queues;
    std::vector<uchar> m_visits;
    std::vector<Step> m_steps;
    std::vector<NearText> m_found;
};

} // namespace

std::vector<NearText> Automaton::near(QStringView text, const std::vector<PositionEdits> &edits,
                                      NearLimits limits) const
{
    return NearSearch(*this, text, edits, limits).run();
}

} // namespace label
