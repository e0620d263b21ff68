// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/patternsyntax_p.h"

#include <utility>

namespace label {

namespace {

using Kind = PatternNode::Kind;

PatternNode characters(CharacterSet set)
{
    PatternNode node;
    node.kind = Kind::Characters;
    node.characters = std::move(set);
    return node;
}

/// A recursive-descent reader. It jumps to the end of the text at the first construct that it does not know.
class Reader
{
public:
    explicit Reader(const QString &text)
        : m_text(text)
    {
    }

    PatternNode read()
    {
        PatternNode tree = readChoice();
        if (!isAtEnd())
            giveUp();
        return tree;
    }

    bool isKnown() const { return m_failedAt < 0; }

    int groups() const { return m_groups; }

    /// True when the text, also behind an unknown construct, seems to nest groups too deeply.
    bool isTooDeep() const
    {
        int depth = m_depth;
        for (int at = m_failedAt; at >= 0 && at < m_text.size() && depth <= deepestGroup; ++at) {
            if (m_text.at(at) == QLatin1Char('\\'))
                ++at;
            else if (m_text.at(at) == QLatin1Char('('))
                ++depth;
            else if (m_text.at(at) == QLatin1Char(')'))
                depth = qMax(0, depth - 1);
        }
        return depth > deepestGroup;
    }

private:
    void giveUp()
    {
        if (isKnown())
            m_failedAt = m_next;
        m_next = m_text.size();
    }

    bool isAtEnd() const { return m_next >= m_text.size(); }
    bool isAt(char character) const { return !isAtEnd() && m_text.at(m_next) == QLatin1Char(character); }
    bool take(char character)
    {
        const bool isThere = isAt(character);
        m_next += isThere ? 1 : 0;
        return isThere;
    }
    QChar take()
    {
        if (!isAtEnd())
            return m_text.at(m_next++);
        giveUp();
        return QChar();
    }

    PatternNode readChoice()
    {
        PatternNode choice;
        choice.kind = Kind::Choice;
        do
            choice.children.push_back(readSequence());
        while (take('|'));
        return choice.children.size() == 1 ? std::move(choice.children.front()) : choice;
    }

    PatternNode readSequence()
    {
        PatternNode sequence;
        while (!isAtEnd() && !isAt('|') && !isAt(')'))
            sequence.children.push_back(readRepeated());
        return sequence;
    }

    PatternNode readRepeated()
    {
        const int aheads = m_aheads;
        PatternNode atom = readAtom();
        int least = 1;
        int most = 1;
        if (!readCounts(least, most))
            return atom;
        // The expression may count a lookahead once for each repetition.
        const bool isWidthless = atom.kind == Kind::Start || atom.kind == Kind::End || aheads != m_aheads;
        if (isWidthless || (most != PatternNode::endless && most < least) || least > mostRepetitions ||
            most > mostRepetitions)
            giveUp();
        PatternNode repeat;
        repeat.kind = Kind::Repeat;
        repeat.least = least;
        repeat.most = most;
        repeat.children.push_back(std::move(atom));
        return repeat;
    }

    bool readCounts(int &least, int &most)
    {
        if (take('*') || take('?')) {
            least = 0;
            most = m_text.at(m_next - 1) == QLatin1Char('*') ? PatternNode::endless : 1;
            return true;
        }
        if (take('+')) {
            most = PatternNode::endless;
            return true;
        }
        if (!take('{'))
            return false;
        const std::optional<int> first = readCount();
        least = first.value_or(0);
        most = least;
        if (take(','))
            most = readCount().value_or(PatternNode::endless);
        else if (!first)
            giveUp();
        if (!take('}'))
            giveUp();
        return true;
    }

    std::optional<int> readCount()
    {
        const int start = m_next;
        while (!isAtEnd() && m_text.at(m_next) >= QLatin1Char('0') && m_text.at(m_next) <= QLatin1Char('9'))
            ++m_next;
        constexpr int mostDigits = 5;
        if (m_next - start > mostDigits)
            giveUp();
        return m_next == start ? std::nullopt : std::optional(m_text.midRef(start, m_next - start).toInt());
    }

    PatternNode readAtom()
    {
        const QChar character = take();
        PatternNode node;
        switch (character.unicode()) {
        case '(':
            return readGroup();
        case '[':
            return characters(readClass());
        case '\\':
            return characters(readEscape());
        case '.':
            return characters(CharacterSet::all());
        case '^':
            node.kind = Kind::Start;
            return node;
        case '$':
            node.kind = Kind::End;
            return node;
        case '*':
        case '+':
        case '?':
        case '{':
        case '}':
        case ']':
            giveUp();
            return node;
        default:
            return characters(CharacterSet(character.unicode()));
        }
    }

    PatternNode readGroup()
    {
        if (++m_depth > deepestGroup)
            giveUp();
        PatternNode group;
        if (!take('?')) {
            // The expression has no captures inside a lookahead.
            if (m_openAheads == 0) {
                group.kind = Kind::Group;
                group.group = ++m_groups;
            }
        } else if (take('=') || take('!')) {
            group.kind = Kind::Ahead;
            group.isNegative = m_text.at(m_next - 1) == QLatin1Char('!');
            if (++m_aheads > mostLookaheads)
                giveUp();
        } else if (!take(':')) {
            giveUp();
        }
        const int ahead = group.kind == Kind::Ahead ? 1 : 0;
        m_openAheads += ahead;
        group.children.push_back(readChoice());
        m_openAheads -= ahead;
        if (!take(')'))
            giveUp();
        else
            --m_depth;
        return group;
    }

    CharacterSet readClass()
    {
        const bool isNegative = take('^');
        CharacterSet set;
        bool isFirst = true;
        while (isKnown() && (isFirst || !isAt(']'))) {
            isFirst = false;
            set.add(readClassPart());
        }
        take(']');
        return isNegative ? set.complement() : set;
    }

    CharacterSet readClassPart()
    {
        const CharacterSet first = readClassCharacter();
        if (!isAt('-') || m_next + 1 >= m_text.size() || m_text.at(m_next + 1) == QLatin1Char(']'))
            return first;
        take('-');
        const CharacterSet last = readClassCharacter();
        if (first.size() != 1 || last.size() != 1) {
            giveUp();
            return first;
        }
        // Expressions read a reversed range like the same range forwards.
        const uint left = first.ranges().front().first;
        const uint right = last.ranges().front().first;
        return CharacterSet(qMin(left, right), qMax(left, right));
    }

    CharacterSet readClassCharacter()
    {
        const QChar character = take();
        if (character == QLatin1Char('['))
            giveUp();
        return character == QLatin1Char('\\') ? readEscape() : CharacterSet(character.unicode());
    }

    CharacterSet readEscape()
    {
        const QChar escaped = take();
        switch (escaped.unicode()) {
        case 'd':
            return CharacterSet::digits();
        case 'D':
            return CharacterSet::digits().complement();
        case 'w':
            return CharacterSet::words();
        case 'W':
            return CharacterSet::words().complement();
        case 's':
            return CharacterSet::blanks();
        case 'S':
            return CharacterSet::blanks().complement();
        case 'a':
            return CharacterSet('\a');
        case 'f':
            return CharacterSet('\f');
        case 'n':
            return CharacterSet('\n');
        case 'r':
            return CharacterSet('\r');
        case 't':
            return CharacterSet('\t');
        case 'v':
            return CharacterSet('\v');
        case 'x':
            return readHexadecimal();
        default:
            break;
        }
        const bool isDigit = escaped >= QLatin1Char('0') && escaped <= QLatin1Char('9');
        if (isDigit || escaped == QLatin1Char('b') || escaped == QLatin1Char('B'))
            giveUp();
        return CharacterSet(escaped.unicode());
    }

    CharacterSet readHexadecimal()
    {
        constexpr int mostDigits = 4;
        const int start = m_next;
        bool isRead = false;
        uint unit = 0;
        while (m_next - start < mostDigits && !isAtEnd()) {
            const uint digit = m_text.mid(m_next, 1).toUInt(&isRead, 16);
            if (!isRead)
                break;
            unit = unit * 16 + digit;
            ++m_next;
        }
        if (m_next == start)
            giveUp();
        return CharacterSet(unit);
    }

    const QString m_text;
    int m_failedAt = -1;
    int m_next = 0;
    int m_groups = 0;
    int m_depth = 0;
    int m_aheads = 0;
    int m_openAheads = 0;
};

} // namespace

PatternSyntax::PatternSyntax(const QString &text)
{
    Reader reader(text);
    PatternNode read = reader.read();
    groups = reader.groups();
    isTooDeep = reader.isTooDeep();
    if (reader.isKnown())
        tree = std::move(read);
}

} // namespace label
