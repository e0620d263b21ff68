// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/automaton_p.h"
#include "zelmar_label/address_grammar/patterncompiler_p.h"

#include <QRegExp>
#include <QSet>
#include <QtTest>

#include <algorithm>

using label::Automaton;

/// Tests what an automaton says about its texts, against `QRegExp` and a search through all short texts.
class TestAutomaton : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void acceptsForEachExpression();
    void refusesTooManyExpressions();
    void staysDead();
    void samplesTakeEachTransition_data();
    void samplesTakeEachTransition();
    void samplesHaveALimit();
    void hasNoSampleOfNothing();
    void findsWitnesses();
    void witnessesArePlain_data();
    void witnessesArePlain();
    void knowsAmbiguousMarks_data();
    void knowsAmbiguousMarks();
};

namespace {

QRegExp expressionOf(const QString &pattern)
{
    return QRegExp(pattern, Qt::CaseSensitive, QRegExp::RegExp);
}

/// All texts of up to `size` of the characters, the shortest first.
QStringList allTexts(const QString &characters, int size)
{
    QStringList all = {QString()};
    for (int index = 0; index < all.size() && all.at(index).size() < size; ++index) {
        const QString front = all.at(index);
        for (const QChar character : characters)
            all.append(front + character);
    }
    return all;
}

Automaton automatonOf(const QStringList &patterns, int markedGroup = 0)
{
    label::PatternExpressions expressions;
    std::vector<label::Expression> roots;
    for (const QString &pattern : patterns) {
        const label::PatternSyntax syntax(pattern);
        roots.push_back(label::PatternCompiler(expressions, markedGroup).compile(syntax.tree.value()).value());
    }
    return Automaton::of(expressions, roots).value();
}

/// Two states, of which the first leads to the second.
using Transition = QPair<int, int>;

/// All transitions that lead to a match.
QSet<Transition> transitionsOf(const Automaton &automaton)
{
    QSet<Transition> transitions;
    QList<int> open = {Automaton::start};
    QSet<int> seen = {Automaton::start};
    while (!open.isEmpty()) {
        const auto state = static_cast<Automaton::State>(open.takeLast());
        const QString following = automaton.following(state);
        for (const QChar character : following) {
            const int to = automaton.next(state, character.unicode());
            transitions.insert({state, to});
            if (!seen.contains(to))
                open.append(to);
            seen.insert(to);
        }
    }
    return transitions;
}

QSet<Transition> transitionsOf(const Automaton &automaton, const QString &text)
{
    QSet<Transition> transitions;
    Automaton::State state = Automaton::start;
    for (const QChar character : text) {
        const Automaton::State to = automaton.next(state, character.unicode());
        transitions.insert({state, to});
        state = to;
    }
    return transitions;
}

/// Patterns over a, b, digits and others, each with the texts of a list that match.
struct Language
{
    QString pattern;
    std::vector<bool> matches;
};

/// The size of the first text that the one language has and of which the other says `isOthers`; -1 for none.
int shortest(const QStringList &texts, const Language &one, const Language &other, bool isOthers)
{
    for (int index = 0; index < texts.size(); ++index) {
        const auto place = static_cast<std::size_t>(index);
        if (one.matches[place] && other.matches[place] == isOthers)
            return texts.at(index).size();
    }
    return -1;
}

/// What is wrong with a witness; empty for nothing. Texts longer than `longest` are not searched.
QString fault(const std::optional<QString> &witness, const Language &one, const Language &other, bool isOthers,
              int expected, int longest)
{
    const QString question = QStringLiteral("|%1| and |%2|: ").arg(one.pattern, other.pattern);
    if (!witness)
        return expected < 0 ? QString() : question + QStringLiteral("no witness");
    if (!expressionOf(one.pattern).exactMatch(*witness) || expressionOf(other.pattern).exactMatch(*witness) != isOthers)
        return question + QStringLiteral("the wrong witness ") + *witness;
    const bool isShortest = expected < 0 ? witness->size() > longest : witness->size() == expected;
    return isShortest ? QString() : question + QStringLiteral("not the shortest witness, ") + *witness;
}

} // namespace

void TestAutomaton::acceptsForEachExpression()
{
    const QStringList patterns = {"a+", "ab?", "(a|b)*1", "", ".*", "(?!a).*"};
    const Automaton automaton = automatonOf(patterns);
    for (const QString &text : allTexts(QStringLiteral("ab1Z"), 4)) {
        const Automaton::Accepted accepted = automaton.accepted(automaton.walk(Automaton::start, text));
        for (int index = 0; index < patterns.size(); ++index)
            QCOMPARE((accepted >> index & 1) != 0, expressionOf(patterns.at(index)).exactMatch(text));
    }
}

void TestAutomaton::refusesTooManyExpressions()
{
    label::PatternExpressions expressions;
    const label::Expression a = expressions.oneOf(label::CharacterSet('a'));
    QVERIFY(Automaton::of(expressions, std::vector<label::Expression>(64, a)));
    QVERIFY(!Automaton::of(expressions, std::vector<label::Expression>(65, a)));
}

void TestAutomaton::staysDead()
{
    const Automaton automaton = automatonOf({"a+"});
    QCOMPARE(automaton.next(Automaton::start, 'b'), Automaton::dead);
    QCOMPARE(automaton.next(Automaton::start, 0xffff), Automaton::dead);
    QCOMPARE(automaton.next(Automaton::dead, 'a'), Automaton::dead);
    QCOMPARE(automaton.accepted(Automaton::dead), Automaton::Accepted(0));
    QCOMPARE(automaton.front(u"aab"), 2);
    QCOMPARE(automaton.following(Automaton::dead), QString());
}

void TestAutomaton::samplesTakeEachTransition_data()
{
    QTest::addColumn<QString>("pattern");

    for (const char *const pattern : {"", "a", "(D)(0*\\d{1,4})", "([Ww])(0*[0-9A-Fa-f]{1,4}\\.[0-9A-Fa-f])", "(ab|c)*",
                                      "(a|b)*a(a|b){3}", "[^a]\\D", "(?!0)\\d{1,3}(/DN)?", "\\w+:\\d|x"})
        QTest::addRow("|%s|", pattern) << pattern;
}

void TestAutomaton::samplesTakeEachTransition()
{
    QFETCH(QString, pattern);

    const Automaton automaton = automatonOf({pattern});
    const QStringList samples = automaton.samples(10000);
    QVERIFY(!samples.isEmpty());
    QSet<Transition> taken;
    for (int index = 0; index < samples.size(); ++index) {
        QVERIFY2(expressionOf(pattern).exactMatch(samples.at(index)), qPrintable(samples.at(index)));
        QVERIFY(index == 0 || samples.at(index).size() >= samples.at(index - 1).size());
        taken += transitionsOf(automaton, samples.at(index));
    }
    QCOMPARE(QSet<QString>(samples.begin(), samples.end()).size(), samples.size());
    QVERIFY((transitionsOf(automaton) - taken).isEmpty());
    for (const QString &text : allTexts(QStringLiteral("aDxW0."), 3)) {
        if (expressionOf(pattern).exactMatch(text))
            QVERIFY2(text.size() >= samples.first().size(), qPrintable(text));
    }
}

void TestAutomaton::samplesHaveALimit()
{
    const Automaton automaton = automatonOf({"[a-c]{1,3}"});
    const QStringList all = automaton.samples(1000);
    QVERIFY(all.size() > 3);
    QCOMPARE(automaton.samples(3), all.mid(0, 3));
    QCOMPARE(automaton.samples(0), QStringList());
}

void TestAutomaton::hasNoSampleOfNothing()
{
    const Automaton automaton = automatonOf({"(?=a)b"});
    QCOMPARE(automaton.samples(10), QStringList());
    QVERIFY(!automaton.textOutside(automatonOf({"a"})));
    QCOMPARE(automaton.following(Automaton::start), QString());
}

void TestAutomaton::findsWitnesses()
{
    constexpr int longest = 4;
    const QStringList texts = allTexts(QStringLiteral("ab01Z"), longest);
    const QStringList patterns = {"",        "a",       "a*",     "a+",    "(ab)*",      "(a|b)*",
                                  "a|b",     ".*",      "..",     "\\d+",  "0*\\d{1,3}", "0*1",
                                  "[^a]*",   "\\D",     "a{2,3}", "a{5,}", "(?=a).*",    "(?!.*a).*",
                                  "a(b|1)?", "b{1,6}1", "(?=a)b", "Z|\\d", "[ab]{3}"};
    std::vector<Language> languages;
    std::vector<Automaton> automata;
    for (const QString &pattern : patterns) {
        Language language{pattern, {}};
        for (const QString &text : texts)
            language.matches.push_back(expressionOf(pattern).exactMatch(text));
        languages.push_back(language);
        automata.push_back(automatonOf({pattern}));
    }
    int outside = 0;
    int shared = 0;
    for (std::size_t one = 0; one < languages.size(); ++one) {
        for (std::size_t other = 0; other < languages.size(); ++other) {
            for (const bool isOthers : {false, true}) {
                const std::optional<QString> witness =
                    isOthers ? automata[one].sharedText(automata[other]) : automata[one].textOutside(automata[other]);
                const int expected = shortest(texts, languages[one], languages[other], isOthers);
                const QString wrong = fault(witness, languages[one], languages[other], isOthers, expected, longest);
                QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
                (isOthers ? shared : outside) += witness ? 1 : 0;
            }
        }
    }
    const int pairs = patterns.size() * patterns.size();
    QVERIFY2(outside > pairs / 2 && outside < pairs, qPrintable(QString::number(outside)));
    QVERIFY2(shared > pairs / 4 && shared < pairs, qPrintable(QString::number(shared)));
}

void TestAutomaton::witnessesArePlain_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("other");
    QTest::addColumn<QString>("expected");

    QTest::newRow("a digit before a letter") << "."
                                             << "x"
                                             << "0";
    QTest::newRow("a capital before a small letter") << "."
                                                     << "\\d"
                                                     << "A";
    QTest::newRow("a letter before a sign") << "\\D"
                                            << "[A-Z]"
                                            << "a";
    QTest::newRow("a character of another script when there is no other") << "\\d"
                                                                          << "[0-9]" << QString(QChar(0x0660));
}

void TestAutomaton::witnessesArePlain()
{
    QFETCH(QString, pattern);
    QFETCH(QString, other);

    QTEST(automatonOf({pattern}).textOutside(automatonOf({other})).value_or("none"), "expected");
}

void TestAutomaton::knowsAmbiguousMarks_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<int>("group");
    QTest::addColumn<bool>("expected");

    QTest::newRow("a symbol of one or two letters") << "(DB?)(\\d+)" << 1 << false;
    QTest::newRow("the number behind it") << "(DB?)(\\d+)" << 2 << false;
    QTest::newRow("a number before an optional end") << "(\\d+)(/DN)?" << 1 << false;
    QTest::newRow("numbers side by side") << "(\\d+)(\\d+)" << 1 << true;
    QTest::newRow("numbers side by side, the second") << "(\\d+)(\\d+)" << 2 << true;
    QTest::newRow("zeros before a number") << "0*(\\d+)" << 1 << true;
    QTest::newRow("an optional group before the same character") << "(a)?a?" << 1 << true;
    QTest::newRow("alternatives that share a text") << "(a)|a" << 1 << true;
    QTest::newRow("alternatives that share none") << "(a)|b" << 1 << false;
    QTest::newRow("ends that tell the group's place") << "(a|ab)(c|bd)" << 1 << false;
    QTest::newRow("ends that do not") << "(a|ab)(c|bc)" << 1 << true;
}

void TestAutomaton::knowsAmbiguousMarks()
{
    QFETCH(QString, pattern);
    QFETCH(int, group);

    QTEST(automatonOf({pattern}, group).hasAmbiguousMarks(), "expected");
}

QTEST_GUILESS_MAIN(TestAutomaton)
#include "tst_automaton.moc"
