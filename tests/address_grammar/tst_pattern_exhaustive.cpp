// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/patterncomparison.h"

#include <QtTest>

namespace {

constexpr int usualSize = 4;
constexpr int slices = 16;
constexpr int fewTexts = 13;

/// The size of the largest patterns, unless the environment sets it. 5 compares more than ten million pairs of a
/// pattern and a text; this takes some minutes.
int patternSize()
{
    bool isSet = false;
    const int size = qEnvironmentVariableIntValue("ZELMAR_LABEL_PATTERN_SIZE", &isSet);
    return isSet ? size : usualSize;
}

struct Frame
{
    const char *opening;
    const char *ending;
};

const QStringList pieces = {"a", "1", ".", "\\d", "\\D", "[ab]",  "[^a]", "(", "(?:", "(?=", "(?!", ")",   "?", "*",
                            "+", "|", "^", "$",   "{2}", "{0,1}", "{,1}", "{", "[",   "]",   "\\1", "\\b", "\\"};
const QStringList atoms = {"a", "b", "\\d", "[^a]", ".", "^", "$"};
const Frame frames[] = {{"(", ")"},      {"(", ")?"},  {"(?:", ")*"}, {"(", ")+"}, {"(?:", "){2}"},
                        {"(", "){0,2}"}, {"(?=", ")"}, {"(?!", ")"},  {"", "?"}};

/// Groups that take a varying share of a text.
const QStringList groups = {"(a+)",    "(a*)",  "(a?)",   "(\\d+)?", "(a|ab)", "(.*)",
                            "(?:ab)?", "(?=b)", "(b|1)*", "b?",      "[ab]"};

/// All texts of up to `size` elements.
QStringList sequences(const QStringList &elements, int size)
{
    QStringList all = {QString()};
    QStringList longest = all;
    for (int count = 0; count < size; ++count) {
        QStringList longer;
        for (const QString &front : qAsConst(longest)) {
            for (const QString &element : elements)
                longer.append(front + element);
        }
        all += longer;
        longest = longer;
    }
    return all;
}

/// All patterns that up to `size` atoms, frames, sequences and alternatives make.
QStringList nestedPatterns(int size)
{
    QVector<QStringList> bySize = {{}, atoms};
    for (int whole = 2; whole <= size; ++whole) {
        QStringList patterns;
        for (const QString &inner : qAsConst(bySize[whole - 1])) {
            for (const Frame &frame : frames)
                patterns.append(QLatin1String(frame.opening) + inner + QLatin1String(frame.ending));
        }
        for (int left = 1; left < whole - 1; ++left) {
            for (const QString &first : qAsConst(bySize[left])) {
                for (const QString &second : qAsConst(bySize[whole - 1 - left]))
                    patterns += {first + second, first + QLatin1Char('|') + second};
            }
        }
        patterns.removeDuplicates();
        bySize.append(patterns);
    }
    QStringList all;
    for (const QStringList &patterns : qAsConst(bySize))
        all += patterns;
    all.removeDuplicates();
    return all;
}

QStringList texts(int size)
{
    return sequences({"a", "b", "1"}, size);
}

} // namespace

/// Compares all small patterns with `QRegExp` on all short texts.
class TestPatternExhaustive : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void piecesInAnyOrder_data();
    void piecesInAnyOrder();
    void movingGroups_data();
    void movingGroups();
    void nestedParts_data();
    void nestedParts();
    void cleanupTestCase();

private:
    void compare(const QStringList &patterns, const QStringList &texts);

    qint64 m_pairs = 0;
    qint64 m_matches = 0;
    int m_automata = 0;
    int m_expressions = 0;
    int m_invalid = 0;
};

void TestPatternExhaustive::compare(const QStringList &patterns, const QStringList &texts)
{
    QFETCH(int, slice);

    for (int index = slice; index < patterns.size(); index += slices) {
        PatternComparison comparison(patterns.at(index));
        QVERIFY2(comparison.difference().isEmpty(), qPrintable(comparison.difference()));
        m_invalid += !comparison.isValid();
        m_automata += comparison.hasAutomaton();
        m_expressions += comparison.isValid() && !comparison.hasAutomaton();
        // Without an automaton, the answers come from a copy of the expression.
        const int count = comparison.hasAutomaton() ? texts.size() : fewTexts;
        for (const QString &text : texts.mid(0, count)) {
            const QString difference = comparison.difference(text);
            QVERIFY2(difference.isEmpty(), qPrintable(difference));
            m_matches += comparison.hasMatched();
        }
        m_pairs += comparison.hasAutomaton() ? count : 0;
    }
}

void TestPatternExhaustive::piecesInAnyOrder_data()
{
    QTest::addColumn<int>("slice");
    for (int slice = 0; slice < slices; ++slice)
        QTest::addRow("slice %d", slice) << slice;
}

void TestPatternExhaustive::piecesInAnyOrder()
{
    static const QStringList patterns = sequences(pieces, patternSize() - 1);
    compare(patterns, texts(3));
}

void TestPatternExhaustive::movingGroups_data()
{
    piecesInAnyOrder_data();
}

void TestPatternExhaustive::movingGroups()
{
    static const QStringList patterns = sequences(groups, patternSize() - 1);
    compare(patterns, texts(5));
}

void TestPatternExhaustive::nestedParts_data()
{
    piecesInAnyOrder_data();
}

void TestPatternExhaustive::nestedParts()
{
    static const QStringList patterns = nestedPatterns(patternSize());
    compare(patterns, texts(5));
}

void TestPatternExhaustive::cleanupTestCase()
{
    const bool isLong = patternSize() > usualSize;
    QVERIFY2(m_pairs >= (isLong ? 10000000 : 1000000), qPrintable(QString::number(m_pairs)));
    QVERIFY2(m_matches >= m_pairs / 20, qPrintable(QString::number(m_matches)));
    QVERIFY2(m_automata >= 5000, qPrintable(QString::number(m_automata)));
    QVERIFY2(m_expressions >= 2000, qPrintable(QString::number(m_expressions)));
    QVERIFY2(m_invalid >= 10000, qPrintable(QString::number(m_invalid)));
    qInfo("%lld pairs, %lld matches, %d patterns with automaton", m_pairs, m_matches, m_automata);
}

QTEST_GUILESS_MAIN(TestPatternExhaustive)
#include "tst_pattern_exhaustive.moc"
