// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_AUTOMATON_P_H
#define ZELMAR_LABEL_AUTOMATON_P_H

#include "zelmar_label/address_grammar/patternexpression_p.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <array>
#include <optional>
#include <vector>

namespace label {

/// A change of one character, and what it costs: the lower, the more likely.
struct CharacterEdit
{
    QChar character;
    int cost;
};

/// The changes that a search may make at one position of a text. The last position is the end of the text, where only
/// insertions count.
struct PositionEdits
{
    std::vector<CharacterEdit> replacements;
    std::vector<CharacterEdit> insertions; ///< before the position
    int removalCost = 0;                   ///< 0 for a character that must stay
};

/// A text that an automaton accepts, and the cost of changing another text into it.
struct NearText
{
    QString text;
    int cost;
};

/// A deterministic automaton that reads texts of UTF-16 code units for up to 64 expressions at once. Immutable; any
/// number of threads may use it.
class Automaton
{
public:
    using State = quint16;
    /// Bit n: expression n.
    using Accepted = quint64;

    static constexpr State dead = 0;
    static constexpr State start = 1;
    static constexpr int mostExpressions = 64;

    /// Nothing for expressions that need too many states.
    static std::optional<Automaton> of(PatternExpressions &expressions, const std::vector<Expression> &roots);

    /// The state after `unit`; `dead` when no expression can match a text that goes on so.
    State next(State state, uint unit) const { return m_next[state * m_classes + classOf(unit)]; }

    /// The state after the whole text.
    State walk(State state, QStringView text) const
    {
        for (const QChar *unit = text.begin(); unit != text.end() && state != dead; ++unit)
            state = next(state, unit->unicode());
        return state;
    }

    Accepted accepted(State state) const { return m_accepted[state]; }

    /// The expressions that match the text so far, or could after further characters.
    Accepted alive(State state) const { return m_alive[state]; }

    /// The number of leading characters of `text` that could begin a match.
    int front(QStringView text) const;

    int countStates() const { return static_cast<int>(m_accepted.size()); }

    /// The ASCII characters that may follow in this state.
    QString following(State state) const;

    /// Accepted texts that together take every transition, the shortest first; at most `most`.
    QStringList samples(int most) const;

    /// A shortest text that this automaton accepts and `other` does not; one with ASCII characters, if there is any.
    std::optional<QString> textOutside(const Automaton &other) const;

    /// A shortest text that both accept.
    std::optional<QString> sharedText(const Automaton &other) const;

    /// True when some text is accepted in two ways that differ in the places of their marks.
    bool hasAmbiguousMarks() const;

    /// Accepted texts near `text`, at most `most`, the lowest cost first, none above `mostCost`. `edits` has an entry
    /// for each character and one for the end.
    std::vector<NearText> near(QStringView text, const std::vector<PositionEdits> &edits, int mostCost, int most) const;

private:
    Automaton() = default;

    uint classOf(uint unit) const { return unit < m_ascii.size() ? m_ascii[unit] : classBeyondAscii(unit); }
    uint classBeyondAscii(uint unit) const;
    void divide(const std::vector<const CharacterSet *> &sets);
    void findAlive();
    std::vector<QString> shortestEnds() const;
    template<typename IsWitness>
    std::optional<QString> witness(const Automaton &other, IsWitness isWitness) const;

    /// A run of code units of one class that ends where the next begins.
    struct ClassRun
    {
        uint first;
        uchar unitClass;
    };

    std::array<uchar, 128> m_ascii = {};
    std::vector<ClassRun> m_beyondAscii;
    /// One unit of each class, an ASCII one if there is any.
    std::vector<uint> m_units;
    uint m_classes = 0;
    std::vector<State> m_next;
    std::vector<Accepted> m_accepted;
    std::vector<Accepted> m_alive;
};

} // namespace label

#endif
