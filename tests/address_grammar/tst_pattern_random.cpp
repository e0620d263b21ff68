// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/patterncomparison.h"
#include "support/randomcases.h"
#include "zelmar_label/address_grammar/patternsyntax_p.h"

#include <QtTest>

namespace {

/// The number of random patterns of each seed, unless the environment sets it. 20000 take some minutes.
int patternCount()
{
    bool isSet = false;
    const int count = qEnvironmentVariableIntValue("ZELMAR_LABEL_RANDOM_PATTERNS", &isSet);
    return isSet ? count : 500;
}

QString randomPattern(Random &random, int depth, bool hasLookaheads);

/// `QRegExp` counts a lookahead in a repeated part more than once, and loses memory when it counts too many.
QString randomGroup(Random &random, int depth, bool hasLookaheads)
{
    static const QStringList openings = {"(", "(", "(?:"};
    static const QStringList counts = {"?", "*", "+", "{2}", "{0,2}", "{1,}", "{,3}"};
    if (hasLookaheads && random.chance(30))
        return (random.chance(50) ? "(?=" : "(?!") + randomPattern(random, depth - 1, true) + QLatin1Char(')');
    const bool isRepeated = random.chance(60);
    return random.pick(openings) + randomPattern(random, depth - 1, hasLookaheads && !isRepeated) + QLatin1Char(')') +
           (isRepeated ? random.pick(counts) : QString());
}

QString randomPart(Random &random, int depth, bool hasLookaheads)
{
    static const QStringList atoms = {"D",     "X",     "0",      "1",       "a",     "\\d",    "\\d",  ".",
                                      "[0-7]", "[A-F]", "[^x]",   "\\w",     "\\D",   "\\s",    "[a-]", "[]a]",
                                      "\\.",   ":",     "[\\dA]", "\\x0041", "[F-A]", "[^\\d.]"};
    static const QStringList counts = {"", "", "", "", "?", "*", "+", "{2}", "{0,2}"};
    if (depth > 0 && random.chance(55))
        return randomGroup(random, depth, hasLookaheads);
    return random.pick(atoms) + random.pick(counts);
}

QString randomPattern(Random &random, int depth, bool hasLookaheads)
{
    QString pattern;
    for (int left = 1 + random.below(3); left > 0; --left)
        pattern += randomPart(random, depth, hasLookaheads);
    return random.chance(25) ? pattern + QLatin1Char('|') + randomPart(random, depth, hasLookaheads) : pattern;
}

/// False for a pattern that takes long, or that has more lookaheads than `QRegExp` reads.
bool isWorthComparing(const QString &pattern)
{
    constexpr int longest = 50;
    const int lookaheads = pattern.count(QLatin1String("(?=")) + pattern.count(QLatin1String("(?!"));
    return pattern.size() <= longest && lookaheads <= label::mostLookaheads;
}

QString anchored(Random &random, const QString &pattern)
{
    return (random.chance(15) ? QStringLiteral("^") : QString()) + pattern +
           (random.chance(15) ? QStringLiteral("$") : QString());
}

/// Texts that match, some of them changed, and their beginnings.
QStringList textsOf(Random &random, const QStringList &matching)
{
    QStringList texts = {QString()};
    for (const QString &text : matching) {
        texts.append(text);
        texts.append(text.left(random.below(text.size() + 1)));
        for (int left = 3; left > 0; --left)
            texts.append(mutated(random, text));
    }
    return texts;
}

} // namespace

/// Compares random and shipped patterns with `QRegExp`.
class TestPatternRandom : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void nestedPatterns_data();
    void nestedPatterns();
    void nastyPatterns_data();
    void nastyPatterns();
    void shippedRows();
    void shippedRowsNeedNoExpression();

private:
    void compare(Random &random, const QString &pattern, const QStringList &furtherTexts);

    int m_automata = 0;
    int m_pairs = 0;
    int m_matches = 0;
};

void TestPatternRandom::init()
{
    m_automata = 0;
    m_pairs = 0;
    m_matches = 0;
}

void TestPatternRandom::compare(Random &random, const QString &pattern, const QStringList &furtherTexts)
{
    constexpr int mostSamples = 12;
    PatternComparison comparison(pattern);
    QVERIFY2(comparison.difference().isEmpty(), qPrintable(comparison.difference()));
    QStringList matching = furtherTexts;
    if (comparison.hasAutomaton())
        matching += label::Pattern(pattern).automaton()->samples(mostSamples);
    const QStringList texts = textsOf(random, matching);
    for (const QString &text : texts) {
        const QString difference = comparison.difference(text);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
        m_matches += comparison.hasMatched();
    }
    m_automata += comparison.hasAutomaton();
    m_pairs += comparison.hasAutomaton() ? texts.size() : 0;
}

void TestPatternRandom::nestedPatterns_data()
{
    QTest::addColumn<quint32>("seed");

    for (const quint32 seed : {1u, 7u, 20240607u, 77u})
        QTest::addRow("seed %u", seed) << seed;
}

void TestPatternRandom::nestedPatterns()
{
    QFETCH(quint32, seed);

    Random random(seed);
    for (int count = patternCount(); count > 0; --count) {
        QString pattern;
        do
            pattern = anchored(random, randomPattern(random, 4, true));
        while (!isWorthComparing(pattern));
        compare(random, pattern, {QStringLiteral("D1")});
        if (QTest::currentTestFailed())
            return;
    }
    QVERIFY2(m_automata > patternCount() / 3, qPrintable(QString::number(m_automata)));
    QVERIFY2(m_pairs > patternCount() * 8, qPrintable(QString::number(m_pairs)));
    QVERIFY2(m_matches > patternCount() * 4, qPrintable(QString::number(m_matches)));
}

void TestPatternRandom::nastyPatterns_data()
{
    nestedPatterns_data();
}

void TestPatternRandom::nastyPatterns()
{
    QFETCH(quint32, seed);

    Random random(seed);
    for (int count = patternCount(); count > 0; --count) {
        const PatternCase made = nastyPattern(random);
        compare(random, made.pattern, {made.sample, made.pattern});
        if (QTest::currentTestFailed())
            return;
    }
    QVERIFY2(m_automata > patternCount() / 3, qPrintable(QString::number(m_automata)));
    QVERIFY2(m_pairs > patternCount() * 8, qPrintable(QString::number(m_pairs)));
    QVERIFY2(m_matches > patternCount() * 4, qPrintable(QString::number(m_matches)));
}

void TestPatternRandom::shippedRows()
{
    Random random(5);
    const QList<ShippedDriver> drivers = shippedDrivers();
    QVERIFY(!drivers.isEmpty());
    int rows = 0;
    for (const ShippedDriver &driver : drivers) {
        for (const Row &row : driver.rows) {
            compare(random, row.pattern, driver.addresses.mid(0, 20));
            if (QTest::currentTestFailed())
                return;
            ++rows;
        }
    }
    QVERIFY2(rows > 200, qPrintable(QString::number(rows)));
    QVERIFY2(m_matches > rows * 10, qPrintable(QString::number(m_matches)));
}

void TestPatternRandom::shippedRowsNeedNoExpression()
{
    const QList<ShippedDriver> drivers = shippedDrivers();
    for (const ShippedDriver &driver : drivers) {
        for (const Row &row : driver.rows)
            QVERIFY2(label::Pattern(row.pattern).automaton(), qPrintable(row.pattern));
    }
}

QTEST_GUILESS_MAIN(TestPatternRandom)
#include "tst_pattern_random.moc"
