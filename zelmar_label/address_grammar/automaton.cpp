// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/automaton_p.h"

#include <algorithm>
#include <map>
#include <set>

namespace label {

namespace {

constexpr std::size_t mostStates = 4096;
constexpr std::size_t mostClasses = 250;
constexpr std::size_t mostPairs = 50000;
constexpr uint lastAscii = 127;

bool isShorter(const QString &left, const QString &right)
{
    return left.size() != right.size() ? left.size() < right.size() : left < right;
}

/// How readable a character is in a text for people.
int plainness(uint unit)
{
    if (unit >= '0' && unit <= '9')
        return 0;
    if (unit >= 'A' && unit <= 'Z')
        return 1;
    if (unit >= 'a' && unit <= 'z')
        return 2;
    return unit > ' ' && unit < lastAscii ? 3 : unit <= lastAscii ? 4 : 5;
}

/// For each run of units the number of the part that it belongs to: runs of one part are in the same sets.
std::vector<uint> partsOf(const std::vector<uint> &starts, const std::vector<const CharacterSet *> &sets)
{
    constexpr uint none = ~0u;
    std::vector<uint> parts(starts.size(), 0);
    uint count = 1;
    for (const CharacterSet *const set : sets) {
        // The new part of what is in the set, for each part so far.
        std::vector<uint> inside(count, none);
        auto run = starts.begin();
        for (const CharacterSet::Range range : set->ranges()) {
            run = std::lower_bound(run, starts.end(), range.first);
            for (; run != starts.end() && *run <= range.last; ++run) {
                uint &part = parts[static_cast<std::size_t>(run - starts.begin())];
                if (inside[part] == none)
                    inside[part] = count++;
                part = inside[part];
            }
        }
    }
    return parts;
}

} // namespace

void Automaton::divide(const std::vector<const CharacterSet *> &sets)
{
    std::vector<uint> starts = {0, lastAscii + 1, groupStartMark, groupEndMark};
    for (const CharacterSet *const set : sets) {
        for (const CharacterSet::Range range : set->ranges())
            starts.insert(starts.end(), {range.first, range.last + 1});
    }
    std::sort(starts.begin(), starts.end());
    starts.erase(std::unique(starts.begin(), starts.end()), starts.end());
    const std::vector<uint> parts = partsOf(starts, sets);

    constexpr uint none = ~0u;
    std::vector<uint> classes(*std::max_element(parts.begin(), parts.end()) + 1, none);
    for (std::size_t run = 0; run < starts.size(); ++run) {
        uint &unitClass = classes[parts[run]];
        if (unitClass == none) {
            unitClass = static_cast<uint>(m_units.size());
            m_units.push_back(starts[run]);
        }
        if (starts[run] > lastAscii) {
            if (m_beyondAscii.empty() || m_beyondAscii.back().unitClass != unitClass)
                m_beyondAscii.push_back({starts[run], static_cast<uchar>(unitClass)});
            continue;
        }
        for (uint unit = starts[run]; unit < starts[run + 1]; ++unit) {
            m_ascii[unit] = static_cast<uchar>(unitClass);
            if (plainness(unit) < plainness(m_units[unitClass]))
                m_units[unitClass] = unit;
        }
    }
    m_classes = static_cast<uint>(m_units.size());
}

uint Automaton::classBeyondAscii(uint unit) const
{
    const auto behind = std::upper_bound(m_beyondAscii.begin(), m_beyondAscii.end(), unit,
                                         [](uint value, ClassRun run) { return value < run.first; });
    return std::prev(behind)->unitClass;
}

std::optional<Automaton> Automaton::of(PatternExpressions &expressions, const std::vector<Expression> &roots)
{
    Automaton automaton;
    std::vector<const CharacterSet *> sets;
    for (const Expression root : roots)
        expressions.collectSets(root, sets);
    automaton.divide(sets);
    if (automaton.m_classes > mostClasses || roots.size() > mostExpressions)
        return std::nullopt;
    std::map<std::vector<Expression>, State> known;
    std::vector<const std::vector<Expression> *> states;
    const auto addState = [&](const std::vector<Expression> &parts) {
        const auto [place, isNew] = known.try_emplace(parts, static_cast<State>(states.size()));
        if (isNew)
            states.push_back(&place->first);
        return place;
    };
    addState(std::vector<Expression>(roots.size(), expressions.nothing()));
    // The start is a state of its own, so that its number is known also when it can match nothing.
    if (addState(roots)->second == dead)
        states.push_back(&known.begin()->first);
    std::vector<Expression> parts;
    for (std::size_t state = 0; state < states.size(); ++state) {
        Accepted accepted = 0;
        for (std::size_t index = 0; index < roots.size(); ++index)
            accepted |= Accepted(expressions.isNullable((*states[state])[index]) ? 1 : 0) << index;
        automaton.m_accepted.push_back(accepted);
        for (const uint unit : automaton.m_units) {
            parts = *states[state];
            for (Expression &part : parts)
                part = expressions.derivative(part, unit);
            automaton.m_next.push_back(addState(parts)->second);
        }
        if (states.size() > mostStates || expressions.isFull())
            return std::nullopt;
    }
    automaton.findAlive();
    return automaton;
}

/// Finds which expressions each state can still accept, and leads what can accept none to the dead state.
void Automaton::findAlive()
{
    m_alive = m_accepted;
    for (bool hasGrown = true; hasGrown;) {
        hasGrown = false;
        for (std::size_t state = m_alive.size(); state-- > 0;) {
            Accepted alive = m_alive[state];
            for (uint unitClass = 0; unitClass < m_classes; ++unitClass)
                alive |= m_alive[m_next[state * m_classes + unitClass]];
            hasGrown = hasGrown || alive != m_alive[state];
            m_alive[state] = alive;
        }
    }
    for (State &next : m_next)
        next = m_alive[next] != 0 ? next : dead;
}

int Automaton::front(QStringView text) const
{
    State state = start;
    for (int at = 0; at < text.size(); ++at) {
        state = next(state, text.at(at).unicode());
        if (state == dead)
            return at;
    }
    return static_cast<int>(text.size());
}

QString Automaton::following(State state) const
{
    QString characters;
    for (uint unit = 0; unit <= lastAscii; ++unit) {
        if (next(state, unit) != dead)
            characters.append(QChar(unit));
    }
    return characters;
}

/// For each state a shortest text from it to an accepting one; null for none.
std::vector<QString> Automaton::shortestEnds() const
{
    std::vector<QString> ends(m_accepted.size());
    for (std::size_t state = 0; state < ends.size(); ++state) {
        if (m_accepted[state] != 0)
            ends[state] = QLatin1String("");
    }
    for (bool hasChanged = true; hasChanged;) {
        hasChanged = false;
        for (std::size_t state = ends.size(); state-- > 0;) {
            for (uint unitClass = 0; unitClass < m_classes; ++unitClass) {
                const State next = m_next[state * m_classes + unitClass];
                if (ends[next].isNull() || m_units[unitClass] > CharacterSet::lastUnit)
                    continue;
                if (!ends[state].isNull() && ends[state].size() <= ends[next].size() + 1)
                    continue;
                ends[state] = QChar(m_units[unitClass]) + ends[next];
                hasChanged = true;
            }
        }
    }
    return ends;
}

QStringList Automaton::samples(int most) const
{
    const std::vector<QString> ends = shortestEnds();
    std::vector<QString> fronts(m_accepted.size());
    fronts[start] = QLatin1String("");
    QStringList texts;
    if (!ends[start].isNull())
        texts.append(ends[start]);
    std::vector<State> order = {start};
    for (std::size_t index = 0; index < order.size(); ++index) {
        const State state = order[index];
        // Both ends of a class: the first digit and the last, say. The plainer one leads on.
        std::vector<uint> units = m_units;
        std::vector<bool> isSeen(m_classes, false);
        for (uint unit = lastAscii; unit-- > ' ';) {
            if (!isSeen[classOf(unit)])
                units.push_back(unit);
            isSeen[classOf(unit)] = true;
        }
        for (const uint unit : units) {
            const State to = next(state, unit);
            if (to == dead || unit > CharacterSet::lastUnit)
                continue;
            const QString text = fronts[state] + QChar(unit);
            texts.append(text + ends[to]);
            if (fronts[to].isNull()) {
                fronts[to] = text;
                order.push_back(to);
            }
        }
    }
    std::sort(texts.begin(), texts.end(), isShorter);
    texts.erase(std::unique(texts.begin(), texts.end()), texts.end());
    return texts.mid(0, most);
}

template<typename IsWitness>
std::optional<QString> Automaton::witness(const Automaton &other, IsWitness isWitness) const
{
    std::map<std::pair<uint, uint>, uint> units;
    const auto offer = [&](uint unit) {
        const auto place = units.insert({{classOf(unit), other.classOf(unit)}, unit}).first;
        if (plainness(unit) < plainness(place->second))
            place->second = unit;
    };
    for (uint unit = 0; unit <= lastAscii; ++unit)
        offer(unit);
    for (const Automaton *const one : {this, &other}) {
        for (const ClassRun run : one->m_beyondAscii) {
            if (run.first <= CharacterSet::lastUnit)
                offer(run.first);
        }
    }
    std::vector<uint> plainest;
    for (const auto &unit : units)
        plainest.push_back(unit.second);
    std::sort(plainest.begin(), plainest.end(), [](uint left, uint right) {
        return plainness(left) != plainness(right) ? plainness(left) < plainness(right) : left < right;
    });

    using Pair = std::pair<State, State>;
    std::map<Pair, QString> texts = {{{start, start}, QLatin1String("")}};
    std::vector<Pair> order = {{start, start}};
    for (std::size_t index = 0; index < order.size(); ++index) {
        const Pair pair = order[index];
        if (isWitness(m_accepted[pair.first] != 0, other.m_accepted[pair.second] != 0))
            return texts[pair];
        for (const uint unit : plainest) {
            const Pair to(next(pair.first, unit), other.next(pair.second, unit));
            if (to.first != dead && texts.insert({to, texts[pair] + QChar(unit)}).second)
                order.push_back(to);
        }
    }
    return std::nullopt;
}

std::optional<QString> Automaton::textOutside(const Automaton &other) const
{
    return witness(other, [](bool isMine, bool isOthers) { return isMine && !isOthers; });
}

std::optional<QString> Automaton::sharedText(const Automaton &other) const
{
    return witness(other, [](bool isMine, bool isOthers) { return isMine && isOthers; });
}

bool Automaton::hasAmbiguousMarks() const
{
    // Two runs over one text, which may take different marks before a character or at the end.
    struct Runs
    {
        State left;
        State right;
        bool differ;

        bool operator<(const Runs &other) const
        {
            return std::tie(left, right, differ) < std::tie(other.left, other.right, other.differ);
        }
    };
    static const std::vector<uint> marks[] = {{}, {groupStartMark}, {groupEndMark}, {groupStartMark, groupEndMark}};
    const auto behind = [this](State state, const std::vector<uint> &taken) {
        for (const uint mark : taken)
            state = next(state, mark);
        return state;
    };
    std::set<Runs> seen;
    std::vector<Runs> open;
    const auto visit = [&](const Runs &runs) {
        if (runs.left != dead && runs.right != dead && seen.insert(runs).second)
            open.push_back(runs);
    };
    visit({start, start, false});
    while (!open.empty()) {
        if (seen.size() > mostPairs)
            return true;
        const Runs runs = open.back();
        open.pop_back();
        for (const std::vector<uint> &leftMarks : marks) {
            for (const std::vector<uint> &rightMarks : marks) {
                const State left = behind(runs.left, leftMarks);
                const State right = behind(runs.right, rightMarks);
                if (left == dead || right == dead)
                    continue;
                const bool differ = runs.differ || &leftMarks != &rightMarks;
                if (differ && m_accepted[left] != 0 && m_accepted[right] != 0)
                    return true;
                for (const uint unit : m_units) {
                    if (unit <= CharacterSet::lastUnit)
                        visit({next(left, unit), next(right, unit), differ});
                }
            }
        }
    }
    return false;
}

} // namespace label
