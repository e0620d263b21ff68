// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_CHARACTERSET_P_H
#define ZELMAR_LABEL_CHARACTERSET_P_H

#include <QString>

#include <vector>

namespace label {

/// A set of UTF-16 code units, and of marks beyond them that no text contains.
class CharacterSet
{
public:
    /// First and last, inclusive.
    struct Range
    {
        uint first;
        uint last;

        bool operator==(Range other) const { return first == other.first && last == other.last; }
    };

    static constexpr uint lastUnit = 0xffff;

    /// No character.
    CharacterSet() = default;
    CharacterSet(uint first, uint last);
    explicit CharacterSet(uint unit)
        : CharacterSet(unit, unit)
    {
    }

    /// All code units, and what `\d`, `\w` and `\s` mean in a pattern.
    static const CharacterSet &all();
    static const CharacterSet &digits();
    static const CharacterSet &words();
    static const CharacterSet &blanks();

    void add(const CharacterSet &other);
    /// The code units that are not in this set.
    CharacterSet complement() const;

    bool isEmpty() const { return m_ranges.empty(); }
    bool contains(uint unit) const;
    /// Number of units.
    int size() const;
    /// Ascending; they neither touch nor overlap.
    const std::vector<Range> &ranges() const { return m_ranges; }

    bool operator==(const CharacterSet &other) const { return m_ranges == other.m_ranges; }

private:
    std::vector<Range> m_ranges;
};

} // namespace label

#endif
