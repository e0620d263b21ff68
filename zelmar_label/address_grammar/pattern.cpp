// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/pattern.h"

#include "zelmar_label/address_grammar/patterncompiler_p.h"

#include <array>
#include <atomic>
#include <mutex>

namespace label {

namespace {

QRegExp expressionOf(const PatternSyntax &syntax, const QString &text)
{
    return QRegExp(syntax.isTooDeep ? QStringLiteral("(") : text, Qt::CaseSensitive, QRegExp::RegExp);
}

/// What is known of one capture group.
struct GroupReader
{
    /// Fixed numbers of characters before and behind the group, in every text.
    std::optional<int> before;
    std::optional<int> behind;
    /// Else the automaton of the texts with marks around the group; nothing when a text may have several places.
    std::optional<Automaton> marked;

    GroupReader(const PatternNode &tree, int group)
    {
        const GroupPosition position = positionOf(tree, group);
        if (!position.isFound || position.isRepeated)
            return;
        if (!position.isOptional && position.before.isFixed() && position.behind.isFixed()) {
            before = position.before.least;
            behind = position.behind.least;
            return;
        }
        PatternExpressions expressions;
        const std::optional<Expression> expression = PatternCompiler(expressions, group).compile(tree);
        if (expression)
            marked = Automaton::of(expressions, {*expression});
        if (marked && marked->hasAmbiguousMarks())
            marked.reset();
    }

    bool isKnown() const { return before || marked; }

    TextPlace placeIn(QStringView text) const
    {
        if (before)
            return {*before, static_cast<int>(text.size()) - *before - *behind};
        Automaton::State state = Automaton::start;
        for (int first = 0; first <= text.size() && state != Automaton::dead; ++first) {
            Automaton::State inside = marked->next(state, groupStartMark);
            for (int end = first; inside != Automaton::dead; ++end) {
                const Automaton::State behindGroup = marked->next(inside, groupEndMark);
                if (behindGroup != Automaton::dead && marked->accepted(marked->walk(behindGroup, text.mid(end))) != 0)
                    return {first, end - first};
                inside = end < text.size() ? marked->next(inside, text.at(end).unicode()) : Automaton::dead;
            }
            if (first < text.size())
                state = marked->next(state, text.at(first).unicode());
        }
        return {};
    }
};

} // namespace

/// All that is read of a text. Automata are made when they are first asked for: a table of rows needs few of them.
struct Pattern::Compiled
{
    explicit Compiled(const QString &text)
        : text(text)
        , syntax(text)
        , groups(static_cast<std::size_t>(syntax.groups))
    {
        if (syntax.tree)
            return;
        expression = expressionOf(syntax, text);
        // A copy shares the compiled expression only when it is there.
        expression.isValid();
    }

    ~Compiled()
    {
        for (std::atomic<const GroupReader *> &group : groups)
            delete group.load();
    }
    Q_DISABLE_COPY(Compiled)

    const Automaton *automaton() const
    {
        std::call_once(isMade, [this] {
            if (!syntax.tree)
                return;
            PatternExpressions expressions;
            PatternCompiler compiler(expressions, 0);
            if (const std::optional<Expression> root = compiler.compile(*syntax.tree))
                made = Automaton::of(expressions, {*root});
            looksAhead = compiler.looksAhead();
        });
        return made ? &*made : nullptr;
    }

    const GroupReader *group(int number) const
    {
        if (!syntax.tree || number < 1 || number > syntax.groups)
            return nullptr;
        std::atomic<const GroupReader *> &place = groups[static_cast<std::size_t>(number - 1)];
        const GroupReader *known = place.load(std::memory_order_acquire);
        if (known)
            return known;
        auto reader = std::make_unique<const GroupReader>(*syntax.tree, number);
        return place.compare_exchange_strong(known, reader.get()) ? reader.release() : known;
    }

    const QString text;
    const PatternSyntax syntax;
    QRegExp expression;
    mutable std::once_flag isMade;
    mutable std::optional<Automaton> made;
    mutable bool looksAhead = false;
    mutable std::vector<std::atomic<const GroupReader *>> groups;
};

Pattern::Pattern()
    : Pattern(QString())
{
}

Pattern::Pattern(const QString &text)
    : m_compiled(std::make_shared<const Compiled>(text))
{
}

QString Pattern::text() const
{
    return m_compiled->text;
}

bool Pattern::isValid() const
{
    return m_compiled->syntax.tree || m_compiled->expression.isValid();
}

QString Pattern::errorString() const
{
    return expression().errorString();
}

int Pattern::countGroups() const
{
    return m_compiled->syntax.tree ? m_compiled->syntax.groups : m_compiled->expression.captureCount();
}

const Automaton *Pattern::automaton() const
{
    return m_compiled->automaton();
}

const PatternNode *Pattern::tree() const
{
    return m_compiled->syntax.tree ? &*m_compiled->syntax.tree : nullptr;
}

QRegExp Pattern::expression() const
{
    return m_compiled->syntax.tree ? expressionOf(m_compiled->syntax, m_compiled->text) : m_compiled->expression;
}

bool Pattern::matches(QStringView text) const
{
    const Automaton *const read = automaton();
    return read ? read->accepted(read->walk(Automaton::start, text)) != 0 : expression().exactMatch(text.toString());
}

int Pattern::front(QStringView text) const
{
    const Automaton *const read = automaton();
    if (read && !m_compiled->looksAhead)
        return read->front(text);
    QRegExp matcher = expression();
    return matcher.exactMatch(text.toString()) ? static_cast<int>(text.size()) : matcher.matchedLength();
}

QString Pattern::following(QStringView front) const
{
    const Automaton *const read = automaton();
    return read ? read->following(read->walk(Automaton::start, front)) : QString();
}

TextPlace Pattern::group(int group, QStringView text) const
{
    const Automaton *const read = automaton();
    const GroupReader *const reader = m_compiled->group(group);
    const bool isWhole = read && read->accepted(read->walk(Automaton::start, text)) != 0;
    if (isWhole && reader && reader->isKnown()) {
        const TextPlace place = reader->placeIn(text);
        return place.size > 0 ? place : TextPlace();
    }
    QRegExp matcher = expression();
    if (matcher.indexIn(text.toString()) < 0)
        return {};
    return {matcher.pos(group), static_cast<int>(matcher.cap(group).size())};
}

bool Pattern::isGroupOptional(int group) const
{
    return m_compiled->syntax.tree && positionOf(*m_compiled->syntax.tree, group).isOptional;
}

} // namespace label
