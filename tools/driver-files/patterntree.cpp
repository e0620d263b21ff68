// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "patterntree.h"

#include <algorithm>
#include <vector>

namespace {

constexpr int unbounded = -1;
constexpr int mostTexts = 40;
/// No address is longer.
constexpr int longestText = 200;
/// Deeper patterns are ignored.
constexpr int deepest = 60;
/// Extra repetitions to try for a repetition without an upper limit.
constexpr int triedRepeats = 2;

void addOnce(QStringList &texts, const QString &text)
{
    if (texts.size() < mostTexts && text.size() <= longestText && !texts.contains(text))
        texts.append(text);
}

} // namespace

struct PatternTree::Node
{
    enum class Kind { Characters, Sequence, Alternatives, Group, Repeat };

    Kind kind = Kind::Sequence;
    /// For `Characters`: the possible characters, a few of each kind.
    QString characters;
    std::vector<std::unique_ptr<Node>> children;
    /// For a `Group`: its number, from 1; 0 if it captures nothing.
    int group = 0;
    int least = 1;
    int most = 1;

    bool mayLack(int wanted) const
    {
        switch (kind) {
        case Kind::Characters:
            return true;
        case Kind::Group:
            if (group == wanted)
                return false;
            break;
        case Kind::Repeat:
            if (least == 0)
                return true;
            break;
        case Kind::Alternatives:
            return std::any_of(children.begin(), children.end(),
                               [wanted](const auto &child) { return child->mayLack(wanted); });
        case Kind::Sequence:
            break;
        }
        return std::all_of(children.begin(), children.end(),
                           [wanted](const auto &child) { return child->mayLack(wanted); });
    }

    QStringList texts() const
    {
        switch (kind) {
        case Kind::Characters:
            return characters.split(QString(), Qt::SkipEmptyParts);
        case Kind::Alternatives:
            return ofAlternatives();
        case Kind::Repeat:
            return ofRepeat();
        case Kind::Group:
        case Kind::Sequence:
            break;
        }
        return ofSequence();
    }

private:
    QStringList ofAlternatives() const
    {
        std::vector<QStringList> parts;
        for (const auto &child : children)
            parts.push_back(child->texts());
        QStringList all;
        // The first few of each before the rest of any.
        for (int place = 0; place < mostTexts; ++place) {
            for (const QStringList &texts : parts) {
                if (place < texts.size())
                    addOnce(all, texts.at(place));
            }
        }
        return all;
    }

    /// The first texts of all parts, then the other texts of each part with the first ones of the rest.
    QStringList ofSequence() const
    {
        std::vector<QStringList> parts;
        for (const auto &child : children)
            parts.push_back(child->texts());
        if (std::any_of(parts.begin(), parts.end(), [](const QStringList &part) { return part.isEmpty(); }))
            return {};
        QStringList all;
        int longest = 1;
        for (const QStringList &part : parts)
            longest = qMax(longest, int(part.size()));
        for (int place = 0; place < longest; ++place) {
            QString aligned;
            for (const QStringList &part : parts)
                aligned += part.at(qMin(place, int(part.size()) - 1));
            addOnce(all, aligned);
            for (std::size_t varied = 0; varied < parts.size(); ++varied)
                addOnce(all, withPart(parts, varied, place));
        }
        return all;
    }

    static QString withPart(const std::vector<QStringList> &parts, std::size_t varied, int place)
    {
        QString text;
        for (std::size_t i = 0; i < parts.size(); ++i)
            text += parts.at(i).at(i == varied ? qMin(place, int(parts.at(i).size()) - 1) : 0);
        return text;
    }

    QStringList ofRepeat() const
    {
        const QStringList inner = children.front()->texts();
        QStringList all;
        const int last = most == unbounded ? least + triedRepeats : most;
        if (inner.isEmpty())
            return least == 0 ? QStringList{QString()} : QStringList();
        std::vector<int> counts = {qMax(least, qMin(1, last)), least, last, (least + last) / 2};
        for (const QString &text : inner) {
            for (const int count : counts) {
                if (text.size() * count <= longestText)
                    addOnce(all, text.repeated(count));
            }
        }
        // Different characters: "10" is neither "11" nor "00".
        const bool isShort = last >= 2 && last <= longestText;
        for (int i = 0; i + 1 < inner.size() && isShort; ++i)
            addOnce(all, inner.at(i + 1) + inner.at(i).repeated(qMax(1, last - 1)));
        return all;
    }
};

namespace {

using Node = PatternTree::Node;

class PatternReader
{
public:
    explicit PatternReader(const QString &pattern)
        : m_text(pattern)
    {
    }

    std::unique_ptr<Node> read()
    {
        auto root = readAlternatives();
        return m_failed || m_at < m_text.size() ? nullptr : std::move(root);
    }

private:
    bool atEnd() const { return m_at >= m_text.size(); }
    QChar peek(int ahead = 0) const { return m_at + ahead < m_text.size() ? m_text.at(m_at + ahead) : QChar(); }
    bool peekIs(char character, int ahead = 0) const { return peek(ahead) == QLatin1Char(character); }
    QChar take() { return atEnd() ? fail() : m_text.at(m_at++); }
    QChar fail()
    {
        m_failed = true;
        m_at = m_text.size();
        return QChar();
    }

    static std::unique_ptr<Node> make(Node::Kind kind)
    {
        auto node = std::make_unique<Node>();
        node->kind = kind;
        return node;
    }

    std::unique_ptr<Node> readAlternatives()
    {
        auto all = make(Node::Kind::Alternatives);
        all->children.push_back(readSequence());
        while (peekIs('|')) {
            take();
            all->children.push_back(readSequence());
        }
        return all->children.size() == 1 ? std::move(all->children.front()) : std::move(all);
    }

    std::unique_ptr<Node> readSequence()
    {
        auto sequence = make(Node::Kind::Sequence);
        while (!atEnd() && !peekIs('|') && !peekIs(')')) {
            std::unique_ptr<Node> part = readPart();
            if (part)
                sequence->children.push_back(readQuantifiers(std::move(part)));
        }
        return sequence;
    }

    /// Null for a construct that matches no text.
    std::unique_ptr<Node> readPart()
    {
        const QChar character = take();
        switch (character.unicode()) {
        case '(':
            return readGroup();
        case '[':
            return readClass();
        case '.':
            return charactersNode(QStringLiteral("0A1z"));
        case '^':
        case '$':
            return nullptr;
        case '\\':
            return readEscape();
        case '*':
        case '+':
        case '?':
        case '{':
            fail();
            return nullptr;
        default:
            return charactersNode(QString(character));
        }
    }

    static std::unique_ptr<Node> charactersNode(const QString &characters)
    {
        auto node = make(Node::Kind::Characters);
        node->characters = characters;
        return node;
    }

    std::unique_ptr<Node> readGroup()
    {
        if (++m_depth > deepest)
            fail();
        bool isAssertion = false;
        auto group = make(Node::Kind::Group);
        if (peekIs('?')) {
            take();
            const QChar kind = take();
            isAssertion = kind == QLatin1Char('=') || kind == QLatin1Char('!');
            if (!isAssertion && kind != QLatin1Char(':'))
                fail();
        } else {
            group->group = ++m_groups;
        }
        group->children.push_back(readAlternatives());
        if (!peekIs(')'))
            fail();
        else
            take();
        --m_depth;
        return isAssertion ? nullptr : std::move(group);
    }

    static QString ofEscape(QChar character)
    {
        switch (character.unicode()) {
        case 'd':
            return QStringLiteral("1093725468");
        case 'w':
            return QStringLiteral("1A0_z9");
        case 's':
            return QStringLiteral(" ");
        default:
            return QString(character);
        }
    }

    std::unique_ptr<Node> readEscape()
    {
        const QChar character = take();
        if (character == QLatin1Char('b') || character == QLatin1Char('B'))
            return nullptr;
        if (isUnknownEscape(character))
            fail();
        return charactersNode(ofEscape(character));
    }

    static bool isUnknownEscape(QChar character)
    {
        return character.isLetterOrNumber() && !QStringLiteral("dws").contains(character);
    }

    std::unique_ptr<Node> readClass()
    {
        const bool isNegated = peekIs('^');
        if (isNegated)
            take();
        QString members;
        bool isFirst = true;
        while (!atEnd() && (isFirst || !peekIs(']'))) {
            isFirst = false;
            readMember(members);
        }
        take();
        if (!isNegated)
            return charactersNode(spread(members));
        QString others;
        for (const QChar candidate : QStringLiteral("109ABFXZabfxz./:_- ")) {
            if (!members.contains(candidate))
                others.append(candidate);
        }
        return charactersNode(others);
    }

    void readMember(QString &members)
    {
        QChar first = take();
        if (first == QLatin1Char('\\')) {
            first = take();
            if (isUnknownEscape(first))
                fail();
            const QString meant = ofEscape(first);
            members += meant;
            if (meant.size() != 1)
                return;
            members.chop(1);
        }
        if (!peekIs('-') || peekIs(']', 1)) {
            members.append(first);
            return;
        }
        take();
        const QChar last = take();
        constexpr int widest = 256;
        for (int code = first.unicode(); code <= last.unicode() && code < first.unicode() + widest; ++code)
            members.append(QChar(code));
    }

    /// The ends come first, since only a few are used.
    static QString spread(const QString &members)
    {
        QString order;
        int low = 0;
        int high = members.size() - 1;
        // "1" before "0": a leading "1" changes the number.
        if (members.size() > 1 && members.at(0) == QLatin1Char('0'))
            order.append(members.at(1));
        while (low <= high) {
            for (const int place : {low, high}) {
                if (!order.contains(members.at(place)))
                    order.append(members.at(place));
            }
            ++low;
            --high;
        }
        return order;
    }

    std::unique_ptr<Node> readQuantifiers(std::unique_ptr<Node> part)
    {
        while (!atEnd()) {
            int least = 0;
            int most = unbounded;
            if (peekIs('?'))
                most = 1;
            else if (peekIs('+'))
                least = 1;
            else if (!peekIs('*') && !peekIs('{'))
                break;
            if (take() == QLatin1Char('{'))
                readCounts(least, most);
            auto repeat = make(Node::Kind::Repeat);
            repeat->least = least;
            repeat->most = most;
            repeat->children.push_back(std::move(part));
            part = std::move(repeat);
        }
        return part;
    }

    void readCounts(int &least, int &most)
    {
        QString counts;
        while (!atEnd() && !peekIs('}'))
            counts.append(take());
        take();
        const QStringList ends = counts.split(QLatin1Char(','));
        least = ends.first().toInt();
        most = ends.size() == 1 ? least : ends.last().isEmpty() ? unbounded : ends.last().toInt();
        constexpr int mostRepeats = 1000;
        if (ends.size() > 2 || least > mostRepeats || most > mostRepeats)
            fail();
    }

    const QString m_text;
    int m_at = 0;
    int m_groups = 0;
    int m_depth = 0;
    bool m_failed = false;
};

} // namespace

PatternTree::PatternTree(const QString &pattern)
    : m_root(PatternReader(pattern).read())
{
}

PatternTree::~PatternTree() = default;

bool PatternTree::isGroupOptional(int group) const
{
    return m_root && m_root->mayLack(group);
}

QStringList PatternTree::proposals() const
{
    return m_root ? m_root->texts() : QStringList();
}
