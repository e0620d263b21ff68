// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/patternprefix_p.h"

#include <QHash>
#include <QVector>

namespace label {

namespace {

constexpr int longestPrefix = 16;

bool isAsciiPunctuation(QChar character)
{
    const ushort code = character.unicode();
    return code > 32 && code < 127 && !character.isLetterOrNumber() && character != QLatin1Char('_');
}

/// The ends of groups and whether they have alternatives, found before the leading characters are read: an alternative
/// or a quantifier after a group changes the meaning of the characters before it.
struct Groups
{
    struct Group
    {
        int end = -1;
        bool hasAlternatives = false;
    };
    QHash<int, Group> byStart;
    bool hasAlternatives = false;
    bool isReadable = true;
};

int classEnd(const QString &pattern, int start)
{
    int i = start + 1;
    if (i < pattern.size() && pattern.at(i) == QLatin1Char('^'))
        ++i;
    if (i < pattern.size() && pattern.at(i) == QLatin1Char(']'))
        return -1;
    for (; i < pattern.size(); ++i) {
        if (pattern.at(i) == QLatin1Char('\\'))
            ++i;
        else if (pattern.at(i) == QLatin1Char(']'))
            return i;
    }
    return -1;
}

Groups findGroups(const QString &pattern)
{
    Groups groups;
    QVector<int> open;
    for (int i = 0; i < pattern.size() && groups.isReadable; ++i) {
        const QChar character = pattern.at(i);
        if (character == QLatin1Char('\\')) {
            ++i;
        } else if (character == QLatin1Char('[')) {
            const int end = classEnd(pattern, i);
            groups.isReadable = end > 0;
            i = end;
        } else if (character == QLatin1Char('(')) {
            open.append(i);
            groups.byStart.insert(i, {});
        } else if (character == QLatin1Char(')')) {
            groups.isReadable = !open.isEmpty();
            if (groups.isReadable)
                groups.byStart[open.takeLast()].end = i;
        } else if (character == QLatin1Char('|')) {
            (open.isEmpty() ? groups.hasAlternatives : groups.byStart[open.last()].hasAlternatives) = true;
        }
    }
    groups.isReadable = groups.isReadable && open.isEmpty();
    return groups;
}

} // namespace

void PatternPrefix::Characters::add(QChar character)
{
    addRange(character.unicode(), character.unicode());
}

void PatternPrefix::Characters::addRange(ushort first, ushort last)
{
    for (int code = first; code <= qMin<int>(last, 127); ++code)
        ascii[static_cast<size_t>(code >> 6)] |= Q_UINT64_C(1) << (code & 63);
    beyondAscii = beyondAscii || last > 127;
}

void PatternPrefix::Characters::addDigits()
{
    addRange('0', '9');
    beyondAscii = true;
}

void PatternPrefix::Characters::addAll()
{
    addRange(0, 0xffff);
}

/// Reads leading characters up to the first item that may match nothing or more than one length.
class PatternPrefix::Parser
{
public:
    Parser(const QString &pattern, std::vector<Characters> &positions)
        : m_pattern(pattern)
        , m_positions(positions)
        , m_groups(findGroups(pattern))
    {
    }

    void parse()
    {
        if (!m_groups.isReadable || m_groups.hasAlternatives)
            return;
        if (m_pattern.startsWith(QLatin1Char('^')))
            ++m_next;
        while (m_next < m_pattern.size() && static_cast<int>(m_positions.size()) < longestPrefix && parseOne())
            ;
    }

private:
    bool parseOne()
    {
        const QChar character = m_pattern.at(m_next);
        if (character == QLatin1Char('('))
            return enterGroup();
        if (character == QLatin1Char(')'))
            return leaveGroup();
        Characters characters;
        const int end = readAtom(characters);
        return end > 0 && takeAtom(characters, end);
    }

    bool enterGroup()
    {
        const Groups::Group group = m_groups.byStart.value(m_next);
        if (group.hasAlternatives || mayBeAbsent(group.end + 1))
            return false;
        ++m_next;
        if (m_next < m_pattern.size() && m_pattern.at(m_next) == QLatin1Char('?')) {
            if (m_next + 1 >= m_pattern.size() || m_pattern.at(m_next + 1) != QLatin1Char(':'))
                return false;
            m_next += 2;
        }
        return true;
    }

    bool leaveGroup()
    {
        ++m_next;
        return !isRepeated(m_next);
    }

    bool takeAtom(const Characters &characters, int end)
    {
        if (mayBeAbsent(end))
            return false;
        m_positions.push_back(characters);
        m_next = end;
        return !isRepeated(end);
    }

    bool mayBeAbsent(int at) const { return at < m_pattern.size() && QLatin1String("?*{").contains(m_pattern.at(at)); }

    bool isRepeated(int at) const { return at < m_pattern.size() && m_pattern.at(at) == QLatin1Char('+'); }

    /// The position after the atom; -1 for an unknown one.
    int readAtom(Characters &characters) const
    {
        const QChar character = m_pattern.at(m_next);
        if (character == QLatin1Char('['))
            return readClass(characters);
        if (character == QLatin1Char('\\'))
            return readEscape(m_next, characters);
        if (QLatin1String("^$?*+{}|]").contains(character))
            return -1;
        if (character == QLatin1Char('.'))
            characters.addAll();
        else
            characters.add(character);
        return m_next + 1;
    }

    int readEscape(int at, Characters &characters) const
    {
        if (at + 1 >= m_pattern.size())
            return -1;
        const QChar escaped = m_pattern.at(at + 1);
        if (escaped == QLatin1Char('d'))
            characters.addDigits();
        else if (QLatin1String("DwWsS").contains(escaped))
            characters.addAll();
        else if (isAsciiPunctuation(escaped))
            characters.add(escaped);
        else
            return -1;
        return at + 2;
    }

    int readClass(Characters &characters) const
    {
        const int end = classEnd(m_pattern, m_next);
        for (int i = m_next + 1; i < end;) {
            const QChar first = m_pattern.at(i);
            if (first == QLatin1Char('^') || first == QLatin1Char('[')) {
                characters.addAll();
                break;
            }
            if (first == QLatin1Char('\\')) {
                i = readEscape(i, characters);
                if (i < 0 || m_pattern.at(i) == QLatin1Char('-'))
                    return -1;
                continue;
            }
            const bool isRange = i + 2 < end && m_pattern.at(i + 1) == QLatin1Char('-');
            const QChar last = isRange ? m_pattern.at(i + 2) : first;
            if (last == QLatin1Char('\\'))
                return -1;
            // Expressions read a reversed range like the same range forwards.
            characters.addRange(qMin(first, last).unicode(), qMax(first, last).unicode());
            i += isRange ? 3 : 1;
        }
        return end + 1;
    }

    const QString &m_pattern;
    std::vector<Characters> &m_positions;
    const Groups m_groups;
    int m_next = 0;
};

PatternPrefix::PatternPrefix(const QString &pattern)
{
    Parser(pattern, m_positions).parse();
}

bool PatternPrefix::rulesOutCompletion(const QString &text) const
{
    return possibleFront(text) < text.size();
}

int PatternPrefix::possibleFront(const QString &text) const
{
    const int known = qMin(text.size(), static_cast<int>(m_positions.size()));
    for (int i = 0; i < known; ++i) {
        if (!m_positions[static_cast<size_t>(i)].contains(text.at(i)))
            return i;
    }
    return text.size();
}

} // namespace label
