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

/// The changes that a search may make at one position of a text, and their costs; 0 for a change that it may not make.
/// The last position is the end of the text, where only insertions count.
struct PositionEdits
{
    std::vector<CharacterEdit> replacements;
    std::vector<CharacterEdit> insertions; ///< before the position
    int removalCost = 0;
    /// Replacement by, and insertion of, a character that the automaton tells apart from others; digits only at the
    /// end.
    int otherCost = 0;
    int missingCost = 0;
    /// Each character after the first one that is missing at the end of the text.
    int moreMissingCost = 0;
    /// Exchange with the next character.
    int swapCost = 0;
    /// Removal of this character and all that follow.
    int restCost = 0;
};

/// A change that turns a text into another.
struct TextChange
{
    enum class Kind { None, Replaced, Inserted, Removed, Swapped };

    Kind kind = Kind::None;
    int position = 0; ///< in the text before any change
    QChar character;  ///< the new one, if any
};

/// A text that an automaton accepts, the cost of changing another text into it, and the first change.
struct NearText
{
    QString text;
    int cost = 0;
    TextChange change;
};

/// What a search for near texts may find.
struct NearLimits
{
    int mostCost; ///< of a text
    int mostMore; ///< cost above the first text's
    int most;     ///< number of texts, up to 255
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
        const State *const table = m_next.data();
        const uint classes = m_classes;
        for (const QChar *unit = text.begin(); unit != text.end() && state != dead; ++unit)
            state = table[state * classes + classOf(unit->unicode())];
        return state;
    }

    Accepted accepted(State state) const { return m_accepted[state]; }

    /// The expressions that match the text so far, or could after further characters.
    Accepted alive(State state) const { return m_alive[state]; }

    /// The number of leading characters of `text` that could begin a match.
    int front(QStringView text) const;

    int countStates() const { return static_cast<int>(m_accepted.size()); }

    /// One code unit, or mark, of each set that no expression divides; an ASCII one if there is any.
    const std::vector<uint> &units() const { return m_units; }

    /// The ASCII characters that may follow in this state.
    QString following(State state) const;

    /// Accepted texts that together take every transition, the shortest first; at most `most`.
    QStringList samples(int most) const;

    /// A shortest text that this automaton accepts and `other` does not; one with ASCII characters, if there is any.
    std::optional<QString> textOutside(const Automaton &other) const;

    /// A shortest text that both accept.
    std::optional<QString> sharedText(const Automaton &other) const;

    /// True when some text is accepted in two ways that differ in the places of their marks, and when this is not known
    /// soon.
    bool hasAmbiguousMarks() const;

    /// Accepted texts near `text`, at most `limits.most`, the lowest cost first. `edits` has an entry for each
    /// character and one for the end. Of the texts with the same kind of first change at the same position only the
    /// first; an accepted text is not made longer.
    std::vector<NearText> near(QStringView text, const std::vector<PositionEdits> &edits, NearLimits limits) const;

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
    std::vector<uint> m_units;
    uint m_classes = 0;
    std::vector<State> m_next;
    std::vector<Accepted> m_accepted;
    std::vector<Accepted> m_alive;
};

} // namespace label

#endif
