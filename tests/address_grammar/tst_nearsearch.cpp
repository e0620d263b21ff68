// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/pattern.h"

#include <QTest>

using label::Automaton;
using label::NearText;
using label::PositionEdits;
using label::TextChange;

namespace {

constexpr int mostCost = 100;
constexpr int mostMore = 50;
constexpr int most = 4;

/// Positions of a text, with no change allowed.
std::vector<PositionEdits> positions(const QString &text)
{
    return std::vector<PositionEdits>(static_cast<std::size_t>(text.size()) + 1);
}

QString joined(const std::vector<NearText> &found)
{
    QStringList parts;
    for (const NearText &one : found)
        parts.append(QStringLiteral("%1=%2").arg(one.text).arg(one.cost));
    return parts.join(QLatin1Char(' '));
}

QString near(const char *pattern, const QString &text, const std::vector<PositionEdits> &edits)
{
    return joined(label::Pattern(QLatin1String(pattern)).automaton()->near(text, edits, {mostCost, mostMore, most}));
}

} // namespace

class TestNearSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void acceptedTextItself();
    void replacement();
    void anyReplacement();
    void insertion();
    void anyInsertion();
    void removal();
    void removalOfTheRest();
    void swap();
    void completion();
    void lowestCostFirst();
    void nothingAboveTheHighestCost();
    void nothingMuchAboveTheFirst();
    void onlyTheLikeliestOfOneChange();
    void acceptedTextIsNotCompleted();
    void atMostSoMany();
    void firstChange();
};

void TestNearSearch::acceptedTextItself()
{
    QCOMPARE(near("D\\d", QStringLiteral("D5"), positions(QStringLiteral("D5"))), QStringLiteral("D5=0"));
    QCOMPARE(near("D\\d", QStringLiteral("X5"), positions(QStringLiteral("X5"))), QString());
}

void TestNearSearch::replacement()
{
    std::vector<PositionEdits> edits = positions(QStringLiteral("d5"));
    edits[0].replacements = {{QLatin1Char('D'), 10}, {QLatin1Char('X'), 5}};
    QCOMPARE(near("D\\d", QStringLiteral("d5"), edits), QStringLiteral("D5=10"));
}

void TestNearSearch::anyReplacement()
{
    std::vector<PositionEdits> edits = positions(QStringLiteral("S?5"));
    edits[1].otherCost = 20;
    QCOMPARE(near("SM\\d", QStringLiteral("S?5"), edits), QStringLiteral("SM5=20"));
    // A digit is only proposed at the end.
    QCOMPARE(near("S\\d\\d", QStringLiteral("S?5"), edits), QString());
}

void TestNearSearch::insertion()
{
    std::vector<PositionEdits> edits = positions(QStringLiteral("D15"));
    edits[2].insertions = {{QLatin1Char('.'), 30}};
    QCOMPARE(near("D\\d\\.\\d", QStringLiteral("D15"), edits), QStringLiteral("D1.5=30"));
}

void TestNearSearch::anyInsertion()
{
    std::vector<PositionEdits> edits = positions(QStringLiteral("C5"));
    edits[1].missingCost = 40;
    QCOMPARE(near("CH\\d", QStringLiteral("C5"), edits), QStringLiteral("CH5=40"));
}

void TestNearSearch::removal()
{
    std::vector<PositionEdits> edits = positions(QStringLiteral("D 5"));
    edits[1].removalCost = 10;
    QCOMPARE(near("D\\d", QStringLiteral("D 5"), edits), QStringLiteral("D5=10"));
}

void TestNearSearch::removalOfTheRest()
{
    std::vector<PositionEdits> edits = positions(QStringLiteral("D5xyz"));
    edits[2].restCost = 50;
    QCOMPARE(near("D\\d", QStringLiteral("D5xyz"), edits), QStringLiteral("D5=50"));
}

void TestNearSearch::swap()
{
    std::vector<PositionEdits> edits = positions(QStringLiteral("MS5"));
    edits[0].swapCost = 40;
    QCOMPARE(near("SM\\d", QStringLiteral("MS5"), edits), QStringLiteral("SM5=40"));
}

void TestNearSearch::completion()
{
    std::vector<PositionEdits> edits = positions(QStringLiteral("T"));
    edits[1].missingCost = 60;
    edits[1].moreMissingCost = 5;
    QCOMPARE(near("T\\d/DN", QStringLiteral("T"), edits), QStringLiteral("T0/DN=75"));
}

void TestNearSearch::lowestCostFirst()
{
    std::vector<PositionEdits> edits = positions(QStringLiteral("D8"));
    edits[1].replacements = {{QLatin1Char('1'), 30}, {QLatin1Char('7'), 10}};
    edits[0].removalCost = 20;
    QCOMPARE(near("D[0-7]|8", QStringLiteral("D8"), edits), QStringLiteral("D7=10 8=20"));
}

void TestNearSearch::nothingAboveTheHighestCost()
{
    std::vector<PositionEdits> edits = positions(QStringLiteral("d5"));
    edits[0].replacements = {{QLatin1Char('D'), mostCost}};
    QCOMPARE(near("D\\d", QStringLiteral("d5"), edits), QStringLiteral("D5=100"));
    edits[0].replacements = {{QLatin1Char('D'), mostCost + 1}};
    QCOMPARE(near("D\\d", QStringLiteral("d5"), edits), QString());
}

void TestNearSearch::nothingMuchAboveTheFirst()
{
    std::vector<PositionEdits> edits = positions(QStringLiteral("AB"));
    edits[0].removalCost = 10;
    edits[1].removalCost = 10 + mostMore;
    QCOMPARE(near("A|B", QStringLiteral("AB"), edits), QStringLiteral("B=10 A=60"));
    edits[1].removalCost = 11 + mostMore;
    QCOMPARE(near("A|B", QStringLiteral("AB"), edits), QStringLiteral("B=10"));
}

void TestNearSearch::onlyTheLikeliestOfOneChange()
{
    std::vector<PositionEdits> edits = positions(QStringLiteral("D8"));
    for (char digit = '0'; digit < '8'; ++digit)
        edits[1].replacements.push_back({QLatin1Char(digit), 20 - (digit - '0')});
    QCOMPARE(near("D[0-7]", QStringLiteral("D8"), edits), QStringLiteral("D7=13"));
}

void TestNearSearch::acceptedTextIsNotCompleted()
{
    std::vector<PositionEdits> edits = positions(QStringLiteral("D5x"));
    edits[2].removalCost = 10;
    edits[3].missingCost = 10;
    QCOMPARE(near("D\\d+", QStringLiteral("D5x"), edits), QStringLiteral("D5=10"));
}

void TestNearSearch::atMostSoMany()
{
    const QString text = QStringLiteral("ABCDEF");
    std::vector<PositionEdits> edits = positions(text);
    for (int at = 0; at < text.size(); ++at)
        edits[static_cast<std::size_t>(at)].removalCost = 10 + at;
    QCOMPARE(near("[A-F]{5}", text, edits), QStringLiteral("BCDEF=10 ACDEF=11 ABDEF=12 ABCEF=13"));
}

void TestNearSearch::firstChange()
{
    const QString text = QStringLiteral("D 5x");
    std::vector<PositionEdits> edits = positions(text);
    edits[1].removalCost = 10;
    edits[3].replacements = {{QLatin1Char('6'), 10}};
    const auto found =
        label::Pattern(QStringLiteral("D\\d\\d")).automaton()->near(text, edits, {mostCost, mostMore, most});
    QCOMPARE(joined(found), QStringLiteral("D56=20"));
    QCOMPARE(found.front().change.kind, TextChange::Kind::Removed);
    QCOMPARE(found.front().change.position, 1);
    edits[1].removalCost = 0;
    edits[1].replacements = {{QLatin1Char('4'), 10}};
    edits[3].removalCost = 10;
    const auto replaced =
        label::Pattern(QStringLiteral("D\\d\\d")).automaton()->near(text, edits, {mostCost, mostMore, most});
    QCOMPARE(replaced.front().change.kind, TextChange::Kind::Replaced);
    QCOMPARE(replaced.front().change.character, QChar(QLatin1Char('4')));
}

QTEST_APPLESS_MAIN(TestNearSearch)

#include "tst_nearsearch.moc"
