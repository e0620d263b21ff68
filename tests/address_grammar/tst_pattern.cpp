// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/pattern.h"
#include "zelmar_label/address_grammar/patterncompiler_p.h"

#include "support/patterncomparison.h"
#include "support/threads.h"

#include <QElapsedTimer>
#include <QtTest>

#include <memory>

using label::Pattern;
using label::TextPlace;

/// Tests what a pattern says, each time also against `QRegExp`.
class TestPattern : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void matches_data();
    void matches();
    void front_data();
    void front();
    void group_data();
    void group();
    void following_data();
    void following();
    void isGroupOptional_data();
    void isGroupOptional();
    void leavesToTheExpression_data();
    void leavesToTheExpression();
    void doesNotReadTooManyLookaheads();
    void isInvalid_data();
    void isInvalid();
    void isThePatternOfTheEmptyTextAtFirst();
    void readsEscapedBracketsAsCharacters();
    void matchesNothingWhenNestedTooDeeply();
    void readsDeepGroups();
    void givesUpLargePatternsSoon_data();
    void givesUpLargePatternsSoon();
    void readsEachUnitAsTheExpressionDoes_data();
    void readsEachUnitAsTheExpressionDoes();
    void answersAllThreads_data();
    void answersAllThreads();
    void copiesOutliveTheOriginal();
};

namespace {

QString nested(const char *opening, const char *ending, int depth)
{
    return QString(QLatin1String(opening)).repeated(depth) + QLatin1Char('a') +
           QString(QLatin1String(ending)).repeated(depth);
}

void verifyNoDifference(const QString &pattern, const QString &text)
{
    PatternComparison comparison(pattern);
    QVERIFY2(comparison.difference().isEmpty(), qPrintable(comparison.difference()));
    const QString difference = comparison.difference(text);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

} // namespace

void TestPattern::matches_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("expected");

    QTest::newRow("literals") << "DB1"
                              << "DB1" << true;
    QTest::newRow("literals in another case") << "DB1"
                                              << "db1" << false;
    QTest::newRow("a text that goes on") << "DB1"
                                         << "DB12" << false;
    QTest::newRow("the empty pattern") << ""
                                       << "" << true;
    QTest::newRow("any character") << "D."
                                   << "D/" << true;
    QTest::newRow("any character is one") << "D."
                                          << "D" << false;
    QTest::newRow("a class") << "[A-CX]"
                             << "X" << true;
    QTest::newRow("outside of a class") << "[A-CX]"
                                        << "D" << false;
    QTest::newRow("a negated class") << "[^A-C]"
                                     << "D" << true;
    QTest::newRow("inside of a negated class") << "[^A-C]"
                                               << "B" << false;
    QTest::newRow("a class that begins with a bracket") << "[]a]"
                                                        << "]" << true;
    QTest::newRow("its other character") << "[]a]"
                                         << "a" << true;
    QTest::newRow("a negated class that begins with a bracket") << "[^]a]"
                                                                << "]" << false;
    QTest::newRow("a reversed range") << "[F-A]"
                                      << "C" << true;
    QTest::newRow("outside of a reversed range") << "[F-A]"
                                                 << "G" << false;
    QTest::newRow("a hyphen at the end of a class") << "[a-]"
                                                    << "-" << true;
    QTest::newRow("an escape in a class") << "[\\dx]"
                                          << "7" << true;
    QTest::newRow("a count") << "a{2}"
                             << "aa" << true;
    QTest::newRow("less than a count") << "a{2}"
                                       << "a" << false;
    QTest::newRow("a range of counts") << "a{1,3}"
                                       << "aaa" << true;
    QTest::newRow("more than a range of counts") << "a{1,3}"
                                                 << "aaaa" << false;
    QTest::newRow("a count without a least") << "a{,2}"
                                             << "" << true;
    QTest::newRow("a count without a most") << "a{2,}"
                                            << "aaaaa" << true;
    QTest::newRow("no times") << "a{0}b"
                              << "b" << true;
    QTest::newRow("an optional character") << "ab?"
                                           << "a" << true;
    QTest::newRow("any number") << "(ab)*"
                                << "ababab" << true;
    QTest::newRow("a part of a repetition") << "(ab)*"
                                            << "aba" << false;
    QTest::newRow("at least one") << "a+"
                                  << "" << false;
    QTest::newRow("alternatives") << "a|bc|d"
                                  << "bc" << true;
    QTest::newRow("an empty alternative") << "(a|)b"
                                          << "b" << true;
    QTest::newRow("a group without capture") << "(?:ab){2}"
                                             << "abab" << true;
    QTest::newRow("both anchors") << "^a$"
                                  << "a" << true;
    QTest::newRow("a lookahead") << "(?=a)..b"
                                 << "acb" << true;
    QTest::newRow("a lookahead that fails") << "(?=a)..b"
                                            << "ccb" << false;
    QTest::newRow("a negative lookahead") << "(?!0)\\d+"
                                          << "10" << true;
    QTest::newRow("a negative lookahead that fails") << "(?!0)\\d+"
                                                     << "01" << false;
    QTest::newRow("as many lookaheads as can be read")
        << QStringLiteral("(?!b)").repeated(13) + QStringLiteral("a") << "a" << true;
    QTest::newRow("an escaped point") << "1\\.5"
                                      << "1.5" << true;
    QTest::newRow("an escaped point is no other character") << "1\\.5"
                                                            << "1x5" << false;
    QTest::newRow("a hexadecimal escape") << "\\x0041"
                                          << "A" << true;
    QTest::newRow("a tabulator") << "\\t"
                                 << "\t" << true;
    QTest::newRow("a digit of another script") << "D\\d" << QString::fromUtf8("D\xd9\xa3") << true;
    QTest::newRow("a character beyond the basic plane is two") << ".." << QString::fromUtf8("\xf0\x9f\x98\x80") << true;
}

void TestPattern::matches()
{
    QFETCH(QString, pattern);
    QFETCH(QString, text);

    const Pattern asked(pattern);
    QVERIFY(asked.isValid());
    QVERIFY(asked.automaton());
    QVERIFY(asked.tree());
    QCOMPARE(asked.text(), pattern);
    QTEST(asked.matches(text), "expected");
    verifyNoDifference(pattern, text);
}

void TestPattern::front_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("expected");

    QTest::newRow("a match") << "D\\d+"
                             << "D10" << 3;
    QTest::newRow("a text that must go on") << "D\\d+"
                                            << "D" << 1;
    QTest::newRow("the empty text") << "D\\d+"
                                    << "" << 0;
    QTest::newRow("a wrong end") << "D\\d+"
                                 << "D10x" << 3;
    QTest::newRow("a wrong beginning") << "D\\d+"
                                       << "X10" << 0;
    QTest::newRow("characters behind a complete match") << "D\\d"
                                                        << "D10" << 2;
    QTest::newRow("a lookahead") << "D(?=1)\\d\\d"
                                 << "D20" << 1;
    QTest::newRow("an invalid pattern") << "D("
                                        << "D" << 0;
}

void TestPattern::front()
{
    QFETCH(QString, pattern);
    QFETCH(QString, text);
    QFETCH(int, expected);

    const Pattern asked(pattern);
    QCOMPARE(asked.front(text), expected);
    QCOMPARE(asked.canBeCompleted(text), expected == text.size());
    verifyNoDifference(pattern, text);
}

void TestPattern::group_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("group");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("size");

    QTest::newRow("the whole text") << "(D)(\\d+)"
                                    << "D10" << 0 << 0 << 3;
    QTest::newRow("a fixed place") << "(D)(\\d+)"
                                   << "D10" << 2 << 1 << 2;
    QTest::newRow("a place that depends on the text") << "(DB?)(\\d+)"
                                                      << "DB10" << 2 << 2 << 2;
    QTest::newRow("a place that depends on the text behind") << "(D)(\\d+)(/DN)?"
                                                             << "D10/DN" << 2 << 1 << 2;
    QTest::newRow("the first of two ambiguous groups takes most") << "(\\d+)(\\d+)"
                                                                  << "1234" << 1 << 0 << 3;
    QTest::newRow("the second of two ambiguous groups") << "(\\d+)(\\d+)"
                                                        << "1234" << 2 << 3 << 1;
    QTest::newRow("a repeated group is its last part") << "(ab|c)*"
                                                       << "abcab" << 1 << 3 << 2;
    QTest::newRow("an optional group that is there") << "(D)(\\d)?"
                                                     << "D1" << 2 << 1 << 1;
    QTest::newRow("an optional group that is not") << "(D)(\\d)?"
                                                   << "D" << 2 << -1 << 0;
    QTest::newRow("an alternative that is not taken") << "(a)|(b)"
                                                      << "b" << 1 << -1 << 0;
    QTest::newRow("an empty group") << "a()b"
                                    << "ab" << 1 << -1 << 0;
    QTest::newRow("no such group") << "(D)(\\d)"
                                   << "D1" << 3 << -1 << 0;
    QTest::newRow("a place inside a longer text") << "(D)(\\d+)"
                                                  << "xxD10y" << 2 << 3 << 2;
    QTest::newRow("no match") << "(D)(\\d+)"
                              << "X" << 1 << -1 << 0;
    QTest::newRow("groups in one another") << "((a)(b))"
                                           << "ab" << 3 << 1 << 1;
    QTest::newRow("a group of a lookahead is none") << "(?=(a))(\\w)"
                                                    << "a" << 1 << 0 << 1;
    QTest::newRow("an invalid pattern") << "(D"
                                        << "D" << 1 << -1 << 0;
}

void TestPattern::group()
{
    QFETCH(QString, pattern);
    QFETCH(QString, text);
    QFETCH(int, group);

    const TextPlace place = Pattern(pattern).group(group, text);
    QTEST(place.start, "start");
    QTEST(place.size, "size");
    verifyNoDifference(pattern, text);
}

void TestPattern::following_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("front");
    QTest::addColumn<QString>("expected");

    QTest::newRow("at the start") << "[DX]\\d{1,2}"
                                  << ""
                                  << "DX";
    QTest::newRow("after a symbol") << "[DX]\\d{1,2}"
                                    << "D"
                                    << "0123456789";
    QTest::newRow("at the end") << "[DX]\\d{1,2}"
                                << "D12"
                                << "";
    QTest::newRow("after a wrong character") << "[DX]\\d{1,2}"
                                             << "Z"
                                             << "";
    QTest::newRow("no character of another script") << QString::fromUtf8("[a\xc3\xa9]") << ""
                                                    << "a";
    QTest::newRow("a lookahead") << "(?=a|b)[b-d]"
                                 << ""
                                 << "b";
    QTest::newRow("a pattern without automaton") << "(a)\\1"
                                                 << "a"
                                                 << "";
}

void TestPattern::following()
{
    QFETCH(QString, pattern);
    QFETCH(QString, front);

    QTEST(Pattern(pattern).following(front), "expected");
}

void TestPattern::isGroupOptional_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<int>("group");
    QTest::addColumn<bool>("expected");

    QTest::newRow("a group of its own") << "(D)(\\d)" << 2 << false;
    QTest::newRow("a question mark") << "(D)(\\d)?" << 2 << true;
    QTest::newRow("any number") << "(D)*" << 1 << true;
    QTest::newRow("at least one") << "(D)+" << 1 << false;
    QTest::newRow("a count from zero") << "(D){0,2}" << 1 << true;
    QTest::newRow("an alternative") << "(D)|X" << 1 << true;
    QTest::newRow("inside an optional group") << "(?:x(D))?" << 1 << true;
    QTest::newRow("around an optional group") << "((D)?x)" << 1 << false;
    QTest::newRow("no such group") << "(D)?" << 2 << false;
    QTest::newRow("a pattern without automaton") << "(a)?\\1" << 1 << false;
}

void TestPattern::isGroupOptional()
{
    QFETCH(QString, pattern);
    QFETCH(int, group);

    QTEST(Pattern(pattern).isGroupOptional(group), "expected");
}

void TestPattern::leavesToTheExpression_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("match");
    QTest::addColumn<QString>("other");

    QTest::newRow("a back reference") << "(a|b)\\1"
                                      << "bb"
                                      << "ab";
    QTest::newRow("a word boundary") << "a\\b.b"
                                     << "a-b"
                                     << "aab";
    QTest::newRow("no word boundary") << "a\\B.b"
                                      << "aab"
                                      << "a-b";
    QTest::newRow("an octal escape") << "\\0101"
                                     << "A"
                                     << "a";
    QTest::newRow("a start that is not at the start") << "a?^b"
                                                      << "b"
                                                      << "ab";
    QTest::newRow("a bracket in a class") << "[a[]"
                                          << "["
                                          << "b";
    QTest::newRow("a class as the end of a range") << "[a-\\d]"
                                                   << "5"
                                                   << "b";
    QTest::newRow("an empty count") << "a{}b"
                                    << "b"
                                    << "ab";
    QTest::newRow("a repeated lookahead") << "(?:(?=a).){2}"
                                          << "aa"
                                          << "ab";
    QTest::newRow("a repeated assertion") << "(?:a$)?"
                                          << "a"
                                          << "b";
}

void TestPattern::leavesToTheExpression()
{
    QFETCH(QString, pattern);
    QFETCH(QString, match);
    QFETCH(QString, other);

    const Pattern asked(pattern);
    QVERIFY(asked.isValid());
    QVERIFY(!asked.automaton());
    QVERIFY(asked.matches(match));
    QVERIFY(!asked.matches(other));
    verifyNoDifference(pattern, match);
    verifyNoDifference(pattern, other);
}

/// `QRegExp` loses memory here: it is not asked.
void TestPattern::doesNotReadTooManyLookaheads()
{
    QVERIFY(label::PatternSyntax(QStringLiteral("(?!b)").repeated(13) + QStringLiteral("a")).tree);
    QVERIFY(!label::PatternSyntax(QStringLiteral("(?!b)").repeated(14) + QStringLiteral("a")).tree);
    QVERIFY(!label::PatternSyntax(QStringLiteral("(?:(?=a).){14}")).tree);
}

void TestPattern::isInvalid_data()
{
    QTest::addColumn<QString>("pattern");

    QTest::newRow("an open group") << "D(";
    QTest::newRow("a closed group that was not opened") << "D)";
    QTest::newRow("an open class") << "[a";
    QTest::newRow("a closed class that was not opened") << "a]";
    QTest::newRow("an empty class") << "[]";
    QTest::newRow("a count beyond the largest") << "a{1025}";
    QTest::newRow("a range beyond the largest") << "a{1,1025}";
    QTest::newRow("a reversed range of counts") << "a{2,1}";
    QTest::newRow("an open count") << "a{1";
    QTest::newRow("a repetition of nothing") << "*";
    QTest::newRow("a backslash at the end") << "a\\";
    QTest::newRow("an unknown group") << "(?<a>b)";
}

void TestPattern::isInvalid()
{
    QFETCH(QString, pattern);

    const Pattern asked(pattern);
    QVERIFY(!asked.isValid());
    QVERIFY(!asked.automaton());
    QVERIFY(!asked.matches(pattern));
    QVERIFY(!asked.matches(QString()));
    QCOMPARE(asked.front(pattern), 0);
    QCOMPARE(asked.errorString(), QRegExp(pattern).errorString());
    verifyNoDifference(pattern, QStringLiteral("a"));
}

void TestPattern::isThePatternOfTheEmptyTextAtFirst()
{
    const Pattern pattern;
    QVERIFY(pattern.isValid());
    QVERIFY(pattern.matches(QString()));
    QVERIFY(!pattern.matches(u"a"));
    QCOMPARE(pattern.front(u"a"), 0);
    QCOMPARE(pattern.countGroups(), 0);
}

void TestPattern::readsEscapedBracketsAsCharacters()
{
    const Pattern pattern(QStringLiteral("\\(").repeated(1001));
    QVERIFY(pattern.isValid());
    QCOMPARE(pattern.countGroups(), 0);
    QVERIFY(pattern.matches(QStringLiteral("(").repeated(1001)));
    QVERIFY(!pattern.matches(QStringLiteral("(").repeated(1000)));
    QCOMPARE(pattern.front(QStringLiteral("(").repeated(1000)), 1000);
}

void TestPattern::matchesNothingWhenNestedTooDeeply()
{
    for (const int depth : {1001, 100000}) {
        const Pattern pattern(nested("(", ")", depth));
        QVERIFY(!pattern.isValid());
        QVERIFY(!pattern.automaton());
        QVERIFY(!pattern.matches(u"a"));
        QVERIFY(!pattern.matches(QString()));
        QCOMPARE(pattern.front(u"a"), 0);
        QCOMPARE(pattern.group(1, u"a").size, 0);
    }
    // Also behind what is not read.
    const Pattern behind(QStringLiteral("\\b") + nested("(", ")", 1001));
    QVERIFY(!behind.isValid());
    QVERIFY(!behind.matches(u"a"));
}

void TestPattern::readsDeepGroups()
{
    const Pattern pattern(nested("(", ")", 1000));
    QVERIFY(pattern.isValid());
    QCOMPARE(pattern.countGroups(), 1000);
    QVERIFY(pattern.matches(u"a"));
    QVERIFY(!pattern.matches(u"b"));
    QCOMPARE(pattern.group(1000, u"a").size, 1);
}

void TestPattern::givesUpLargePatternsSoon_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("hasAutomaton");

    QTest::newRow("a large count") << "a{1024}b" << true;
    QTest::newRow("many optional characters") << "(?:a?){400}" << true;
    QTest::newRow("many optional classes") << QStringLiteral("[a-z]?").repeated(200) << true;
    QTest::newRow("counts in one another") << "((a{1000}){1000}){1000}x" << false;
    QTest::newRow("optional counts in one another") << "(?:(?:a?){100}b?){100}" << false;
    QTest::newRow("counts in many groups") << nested("(", "){0,3}", 30) << false;
    QTest::newRow("states that double with each character") << "(a|b)*a(a|b){20}" << false;
    QTest::newRow("many lookaheads") << "(?=.*a)(?=.*b)(?=.*c)(?=.*d)(?=.*e)(?=.*f)(?=.*g)(?=.*h)(?=.*i)(?=.*j).*"
                                     << true;
    QTest::newRow("a long text") << QString(30000, QLatin1Char('a')) << false;
}

void TestPattern::givesUpLargePatternsSoon()
{
    QFETCH(QString, pattern);
    QFETCH(bool, hasAutomaton);

    // Some thousand times what a row needs; without limits, these take minutes.
    constexpr int mostMilliseconds = 100000;
    QElapsedTimer timer;
    timer.start();
    const label::PatternSyntax syntax(pattern);
    QVERIFY(syntax.tree);
    label::PatternExpressions expressions;
    const std::optional<label::Expression> root = label::PatternCompiler(expressions, 0).compile(*syntax.tree);
    const bool isMade = root && label::Automaton::of(expressions, {*root});
    QCOMPARE(isMade, hasAutomaton);
    QVERIFY2(timer.elapsed() < mostMilliseconds, qPrintable(QString::number(timer.elapsed())));
}

void TestPattern::readsEachUnitAsTheExpressionDoes_data()
{
    QTest::addColumn<QString>("pattern");

    for (const char *const pattern : {"\\d", "\\D", "\\w", "\\W", "\\s", "\\S", ".", "[\\d_]", "[^\\wx]", "\\x00e9"})
        QTest::newRow(pattern) << pattern;
    QTest::newRow("a range of letters") << QString::fromUtf8("[\xd0\x90-\xd0\xaf]");
}

void TestPattern::readsEachUnitAsTheExpressionDoes()
{
    QFETCH(QString, pattern);

    const Pattern asked(pattern);
    QVERIFY(asked.automaton());
    const QRegExp expression(pattern, Qt::CaseSensitive, QRegExp::RegExp);
    for (uint unit = 0; unit <= 0xffff; ++unit) {
        const QString text(QChar(static_cast<ushort>(unit)));
        QVERIFY2(asked.matches(text) == expression.exactMatch(text), qPrintable(QString::number(unit)));
    }
}

void TestPattern::answersAllThreads_data()
{
    QTest::addColumn<QString>("pattern");

    QTest::newRow("a fixed group") << "(D)(\\d{1,3})";
    QTest::newRow("a group that moves") << "(DB?)(\\d{1,3})";
    QTest::newRow("ambiguous groups") << "(D+)(D*\\d{1,3})";
    QTest::newRow("a lookahead") << "(D)(?!0)(\\d{1,3})";
    QTest::newRow("a pattern without automaton") << "(D)\\b?(\\d{1,3})\\B?";
}

void TestPattern::answersAllThreads()
{
    QFETCH(QString, pattern);

    // A new one, so that the threads read it at once.
    const Pattern shared(pattern);
    Texts wrong;
    onAllThreads([&](int thread) {
        QRegExp expression(pattern, Qt::CaseSensitive, QRegExp::RegExp);
        for (int number = 0; number < 300; ++number) {
            const QString text = QStringLiteral("D%1%2").arg(number + thread * 7).arg(number % 3 == 0 ? "x" : "");
            const bool isMatch = expression.exactMatch(text);
            const int front = isMatch ? text.size() : expression.matchedLength();
            wrong.check(shared.matches(text) == isMatch, text + QLatin1String(": match"));
            wrong.check(shared.front(text) == front, text + QLatin1String(": front"));
            expression.indexIn(text);
            wrong.check(shared.group(2, text).size == expression.cap(2).size(), text + QLatin1String(": group"));
        }
    });
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.texts().join(QLatin1Char('\n'))));
}

void TestPattern::copiesOutliveTheOriginal()
{
    auto original = std::make_unique<Pattern>(QStringLiteral("(D)(\\d+)"));
    const Pattern copy = *original;
    const label::Automaton *const automaton = copy.automaton();
    QCOMPARE(original->automaton(), automaton);
    original.reset();
    QVERIFY(copy.matches(u"D1"));
    QCOMPARE(copy.automaton(), automaton);
}

QTEST_GUILESS_MAIN(TestPattern)
#include "tst_pattern.moc"
