// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/pattern.h"

#include "support/randomcases.h"

#include <QtTest>

#include <algorithm>

using label::Automaton;
using label::NearText;
using label::Pattern;
using label::PositionEdits;

/// Tests the search for texts near a text.
class TestAutomatonNear : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsTheTextItself();
    void findsChangesByCost();
    void hasLimits();
    void agreesWithASearchThroughAllTexts_data();
    void agreesWithASearchThroughAllTexts();
};

namespace {

const QString characters = QStringLiteral("ab1");
constexpr int farAway = 1000;

QStringList allTexts(int size)
{
    QStringList all = {QString()};
    for (int index = 0; index < all.size() && all.at(index).size() < size; ++index) {
        const QString front = all.at(index);
        for (const QChar character : characters)
            all.append(front + character);
    }
    return all;
}

int lowestCost(const std::vector<label::CharacterEdit> &edits, QChar character)
{
    int lowest = farAway;
    for (const label::CharacterEdit &edit : edits) {
        if (edit.character == character)
            lowest = qMin(lowest, edit.cost);
    }
    return lowest;
}

/// The lowest cost of changing `from` into `to`; `farAway` or more when the edits do not allow it.
int changeCost(const QString &from, const QString &to, const std::vector<PositionEdits> &edits)
{
    const int width = to.size() + 1;
    std::vector<int> costs(static_cast<std::size_t>((from.size() + 1) * width), farAway);
    const auto cost = [&](int read, int written) -> int & {
        return costs[static_cast<std::size_t>(read * width + written)];
    };
    cost(0, 0) = 0;
    for (int read = 0; read <= from.size(); ++read) {
        const PositionEdits &here = edits[static_cast<std::size_t>(read)];
        for (int written = 0; written <= to.size(); ++written) {
            const int now = cost(read, written);
            const auto reach = [&](int nextRead, int nextWritten, int added) {
                cost(nextRead, nextWritten) = qMin(cost(nextRead, nextWritten), now + added);
            };
            if (written < to.size())
                reach(read, written + 1, lowestCost(here.insertions, to.at(written)));
            if (read == from.size())
                continue;
            if (here.removalCost > 0)
                reach(read + 1, written, here.removalCost);
            if (written < to.size())
                reach(read + 1, written + 1,
                      from.at(read) == to.at(written) ? 0 : lowestCost(here.replacements, to.at(written)));
        }
    }
    return cost(from.size(), to.size());
}

std::vector<label::CharacterEdit> randomChanges(Random &random)
{
    std::vector<label::CharacterEdit> changes;
    for (const QChar character : characters) {
        if (random.chance(40))
            changes.push_back({character, 2 + random.below(4)});
    }
    return changes;
}

std::vector<PositionEdits> randomEdits(Random &random, int size)
{
    std::vector<PositionEdits> edits(static_cast<std::size_t>(size) + 1);
    for (PositionEdits &here : edits) {
        here.replacements = randomChanges(random);
        here.insertions = randomChanges(random);
        here.removalCost = random.chance(50) ? 2 + random.below(4) : 0;
    }
    return edits;
}

/// The texts with their costs, in an order that does not depend on the search.
QStringList sorted(const std::vector<NearText> &texts)
{
    QStringList lines;
    for (const NearText &one : texts)
        lines.append(QStringLiteral("%1 %2").arg(one.cost).arg(one.text));
    lines.sort();
    return lines;
}

} // namespace

void TestAutomatonNear::findsTheTextItself()
{
    const std::vector<NearText> found =
        Pattern("a+").automaton()->near(u"aa", std::vector<PositionEdits>(3), {10, 10, 10});
    QCOMPARE(sorted(found), QStringList("0 aa"));
}

void TestAutomatonNear::findsChangesByCost()
{
    std::vector<PositionEdits> edits(3);
    edits[0].removalCost = 4;
    edits[1].replacements = {{QLatin1Char('1'), 3}};
    edits[2].insertions = {{QLatin1Char('1'), 2}};
    const Pattern pattern("(a?)\\d*|aO1");
    const std::vector<NearText> found = pattern.automaton()->near(u"aO", edits, {10, 10, 10});
    QVERIFY(!found.empty());
    QCOMPARE(found.front().text, QStringLiteral("aO1"));
    for (std::size_t index = 1; index < found.size(); ++index)
        QVERIFY(found[index - 1].cost <= found[index].cost);
    const QStringList lines = sorted(found);
    QVERIFY(lines.contains("2 aO1"));
    QVERIFY(lines.contains("3 a1"));
    QVERIFY(lines.contains("7 1"));
    QVERIFY(!lines.contains("0 aO"));
}

void TestAutomatonNear::hasLimits()
{
    std::vector<PositionEdits> edits(2);
    edits[0].replacements = {{QLatin1Char('a'), 2}};
    edits[0].removalCost = 3;
    edits[1].insertions = {{QLatin1Char('a'), 2}};
    const Pattern pattern("a*");
    QCOMPARE(sorted(pattern.automaton()->near(u"O", edits, {4, 4, 10})), QStringList({"2 a", "3 "}));
    QCOMPARE(sorted(pattern.automaton()->near(u"O", edits, {2, 4, 10})), QStringList({"2 a"}));
    QCOMPARE(sorted(pattern.automaton()->near(u"O", edits, {4, 0, 10})), QStringList({"2 a"}));
    QCOMPARE(sorted(pattern.automaton()->near(u"O", edits, {4, 4, 1})), QStringList({"2 a"}));
    QCOMPARE(sorted(pattern.automaton()->near(u"O", edits, {4, 4, 0})), QStringList());
}

void TestAutomatonNear::agreesWithASearchThroughAllTexts_data()
{
    QTest::addColumn<QString>("pattern");

    for (const char *const pattern :
         {"a*", "(ab)*1?", "[ab]{2,3}", "a|b|11", "(?!a).*", "a.b", "\\d+a?", "(a|b)*a(a|b)"})
        QTest::newRow(pattern) << pattern;
}

void TestAutomatonNear::agreesWithASearchThroughAllTexts()
{
    QFETCH(QString, pattern);

    // Each insertion costs at least 2, so that no text is longer.
    constexpr int mostCost = 7;
    constexpr int longest = 3 + mostCost / 2;
    constexpr int enough = 255;
    static const QStringList texts = allTexts(longest);
    const Pattern asked(pattern);
    QStringList matching;
    for (const QString &text : texts) {
        if (asked.matches(text))
            matching.append(text);
    }
    Random random(3);
    int found = 0;
    for (int round = 0; round < 60; ++round) {
        const QString text = texts.at(random.below(40));
        const std::vector<PositionEdits> edits = randomEdits(random, text.size());
        int least = mostCost + 1;
        for (const QString &candidate : qAsConst(matching))
            least = std::min(least, changeCost(text, candidate, edits));
        const std::vector<NearText> answer = asked.automaton()->near(text, edits, {mostCost, mostCost, enough});
        QCOMPARE(answer.empty() ? mostCost + 1 : answer.front().cost, least);
        for (const NearText &one : answer) {
            QVERIFY2(asked.matches(one.text), qPrintable(one.text));
            QVERIFY2(one.cost >= changeCost(text, one.text, edits), qPrintable(one.text));
        }
        QVERIFY(std::is_sorted(answer.begin(), answer.end(),
                               [](const NearText &left, const NearText &right) { return left.cost < right.cost; }));
        found += static_cast<int>(answer.size());
    }
    QVERIFY2(found > 30, qPrintable(QString::number(found)));
}

QTEST_GUILESS_MAIN(TestAutomatonNear)
#include "tst_automaton_near.moc"
