// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/pattern.h"

#include "zelmar_label/address_grammar/patterncompiler_p.h"

#include <atomic>
#include <memory>

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

/// Keeps the first value that any thread made.
template<typename Value, typename Make>
const Value &madeOnce(std::atomic<const Value *> &place, Make make)
{
    const Value *known = place.load(std::memory_order_acquire);
    if (known)
        return *known;
    std::unique_ptr<const Value> made = make();
    return place.compare_exchange_strong(known, made.get(), std::memory_order_acq_rel) ? *made.release() : *known;
}

} // namespace

/// All that is read of a text.
struct Pattern::Reading
{
    explicit Reading(const QString &text)
        : syntax(text)
        , groups(static_cast<std::size_t>(syntax.groups))
    {
        if (!syntax.tree)
            return;
        PatternExpressions expressions;
        PatternCompiler compiler(expressions, 0);
        if (const std::optional<Expression> root = compiler.compile(*syntax.tree))
            automaton = Automaton::of(expressions, {*root});
        looksAhead = compiler.looksAhead();
    }

    ~Reading()
    {
        for (const std::atomic<const GroupReader *> &group : groups)
            delete group.load();
        delete matcher.load();
    }
    Q_DISABLE_COPY(Reading)

    const QRegExp &expression(const QString &text) const
    {
        return madeOnce(matcher, [&] {
            auto made = std::make_unique<QRegExp>(expressionOf(syntax, text));
            // Copying an expression changes it until its engine is made.
            made->exactMatch(QString());
            return std::unique_ptr<const QRegExp>(std::move(made));
        });
    }

    const GroupReader *group(int number) const
    {
        if (!syntax.tree || number < 1 || number > syntax.groups)
            return nullptr;
        return &madeOnce(groups[static_cast<std::size_t>(number - 1)],
                         [&] { return std::make_unique<const GroupReader>(*syntax.tree, number); });
    }

    const PatternSyntax syntax;
    std::optional<Automaton> automaton;
    bool looksAhead = false;
    mutable std::vector<std::atomic<const GroupReader *>> groups;
    mutable std::atomic<const QRegExp *> matcher = nullptr;
};

/// A text, read when it is first asked about: a table of rows needs few of its patterns alone.
struct Pattern::Source
{
    explicit Source(const QString &patternText)
        : text(patternText)
    {
    }
    ~Source() { delete reading.load(); }
    Q_DISABLE_COPY(Source)

    const QString text;
    mutable std::atomic<const Reading *> reading = nullptr;
};

Pattern::Pattern()
    : Pattern(QString())
{
}

Pattern::Pattern(const QString &text)
    : m_source(std::make_shared<const Source>(text))
{
}

const Pattern::Reading &Pattern::reading() const
{
    return madeOnce(m_source->reading, [this] { return std::make_unique<const Reading>(m_source->text); });
}

QString Pattern::text() const
{
    return m_source->text;
}

bool Pattern::isValid() const
{
    return reading().syntax.tree || expression().isValid();
}

QString Pattern::errorString() const
{
    return expression().errorString();
}

int Pattern::countGroups() const
{
    return reading().syntax.tree ? reading().syntax.groups : expression().captureCount();
}

const Automaton *Pattern::automaton() const
{
    return reading().automaton ? &*reading().automaton : nullptr;
}

const PatternNode *Pattern::tree() const
{
    return reading().syntax.tree ? &*reading().syntax.tree : nullptr;
}

QRegExp Pattern::expression() const
{
    return reading().expression(m_source->text);
}

bool Pattern::matches(QStringView text) const
{
    const Automaton *const read = automaton();
    return read ? read->accepted(read->walk(Automaton::start, text)) != 0 : expression().exactMatch(text.toString());
}

int Pattern::front(QStringView text) const
{
    const Automaton *const read = automaton();
    if (read && !reading().looksAhead)
        return read->front(text);
    QRegExp matcher = expression();
    return matcher.exactMatch(text.toString()) ? static_cast<int>(text.size()) : matcher.matchedLength();
}

QString Pattern::following(QStringView front) const
{
    const Automaton *const read = automaton();
    return read ? read->following(read->walk(Automaton::start, front)) : QString();
}

bool Pattern::isFoundIn(QStringView text) const
{
    return matches(text) || expression().indexIn(text.toString()) >= 0;
}

TextPlace Pattern::group(int group, QStringView text) const
{
    const Automaton *const read = automaton();
    const GroupReader *const reader = reading().group(group);
    const bool isWhole = read && read->accepted(read->walk(Automaton::start, text)) != 0;
    if (isWhole && group == 0)
        return {0, static_cast<int>(text.size())};
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
    return reading().syntax.tree && positionOf(*reading().syntax.tree, group).isOptional;
}

std::optional<Expression> Pattern::expressionIn(PatternExpressions &expressions) const
{
    return automaton() ? PatternCompiler(expressions, 0).compile(*reading().syntax.tree) : std::nullopt;
}

std::optional<Expression> Pattern::expressionIn(PatternExpressions &expressions, int group, Expression groupTexts) const
{
    const GroupReader *const reader = reading().group(group);
    if (!automaton() || !reader || !reader->isKnown())
        return std::nullopt;
    PatternCompiler compiler(expressions, 0);
    compiler.limitGroup(group, groupTexts);
    return compiler.compile(*reading().syntax.tree);
}

} // namespace label
