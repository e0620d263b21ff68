// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/characterset_p.h"

#include <algorithm>

namespace label {

namespace {

template<typename Belongs>
CharacterSet unitsThat(Belongs belongs)
{
    CharacterSet set;
    for (uint unit = 0; unit <= CharacterSet::lastUnit; ++unit) {
        const uint first = unit;
        while (unit <= CharacterSet::lastUnit && belongs(QChar(static_cast<ushort>(unit))))
            ++unit;
        if (unit > first)
            set.add(CharacterSet(first, unit - 1));
    }
    return set;
}

} // namespace

CharacterSet::CharacterSet(uint first, uint last)
    : m_ranges{{first, last}}
{
}

const CharacterSet &CharacterSet::all()
{
    static const CharacterSet set(0, lastUnit);
    return set;
}

const CharacterSet &CharacterSet::digits()
{
    static const CharacterSet set = unitsThat([](QChar character) { return character.isDigit(); });
    return set;
}

const CharacterSet &CharacterSet::words()
{
    static const CharacterSet set = unitsThat([](QChar character) {
        return character.isLetterOrNumber() || character.isMark() || character == QLatin1Char('_');
    });
    return set;
}

const CharacterSet &CharacterSet::blanks()
{
    static const CharacterSet set = unitsThat([](QChar character) { return character.isSpace(); });
    return set;
}

void CharacterSet::add(const CharacterSet &other)
{
    if (!m_ranges.empty() && !other.m_ranges.empty() && m_ranges.back().last + 1 < other.m_ranges.front().first) {
        m_ranges.insert(m_ranges.end(), other.m_ranges.begin(), other.m_ranges.end());
        return;
    }
    std::vector<Range> sorted = m_ranges;
    sorted.insert(sorted.end(), other.m_ranges.begin(), other.m_ranges.end());
    std::sort(sorted.begin(), sorted.end(), [](Range left, Range right) { return left.first < right.first; });
    m_ranges.clear();
    for (const Range range : sorted) {
        if (!m_ranges.empty() && range.first <= m_ranges.back().last + 1)
            m_ranges.back().last = std::max(m_ranges.back().last, range.last);
        else
            m_ranges.push_back(range);
    }
}

CharacterSet CharacterSet::complement() const
{
    CharacterSet rest;
    uint next = 0;
    for (const Range range : m_ranges) {
        if (range.first > lastUnit)
            break;
        if (range.first > next)
            rest.m_ranges.push_back({next, range.first - 1});
        next = range.last + 1;
    }
    if (next <= lastUnit)
        rest.m_ranges.push_back({next, lastUnit});
    return rest;
}

bool CharacterSet::contains(uint unit) const
{
    const auto behind = std::upper_bound(m_ranges.begin(), m_ranges.end(), unit,
                                         [](uint value, Range range) { return value < range.first; });
    return behind != m_ranges.begin() && unit <= std::prev(behind)->last;
}

int CharacterSet::size() const
{
    uint size = 0;
    for (const Range range : m_ranges)
        size += range.last - range.first + 1;
    return static_cast<int>(size);
}

} // namespace label
