// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/patternprefix_p.h"

#include "support/randomcases.h"

#include <QRegExp>
#include <QtTest>

class TestPatternPrefix : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void size_data();
    void size();
    void rulesOut_data();
    void rulesOut();
    void neverContradictsTheExpression_data();
    void neverContradictsTheExpression();
    void rulesOutMostForeignTexts();
    void knowsThePrefixOfShippedPatterns();
    void neverContradictsShippedPatterns();
};

namespace {

/// How the prefix and the expression disagree on `text`; empty if they agree.
QString contradiction(const label::PatternPrefix &prefix, const QString &pattern, const QString &text)
{
    const QRegExp expression(pattern, Qt::CaseSensitive, QRegExp::RegExp);
    const bool matches = expression.exactMatch(text);
    const bool canBeCompleted = matches || expression.matchedLength() >= text.size();
    if (matches && prefix.rulesOutMatch(text))
        return QStringLiteral("the match of |") + text + QStringLiteral("| is ruled out for |") + pattern +
               QLatin1Char('|');
    if (canBeCompleted && prefix.rulesOutCompletion(text))
        return QStringLiteral("the completion of |") + text + QStringLiteral("| is ruled out for |") + pattern +
               QLatin1Char('|');
    return QString();
}

} // namespace

void TestPatternPrefix::size_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<int>("size");

    QTest::newRow("nothing") << "" << 0;
    QTest::newRow("a symbol and its number") << "(D)(\\d+)" << 2;
    QTest::newRow("a number of one to five digits stops at the quantifier") << "(D)(\\d{1,5})" << 1;
    QTest::newRow("leading zeros may be absent") << "(SM)(0*\\d+)" << 2;
    QTest::newRow("an escaped dot is a character") << "(DB12\\.DBX)(\\d+\\.[0-7])" << 9;
    QTest::newRow("a leading anchor is no character") << "^(D)(\\d)$" << 2;
    QTest::newRow("alternatives on top tell nothing") << "D1|X1" << 0;
    QTest::newRow("alternatives in a group stop there") << "(DB)(1|2)(\\d)" << 2;
    QTest::newRow("an optional group stops there") << "(AB)(CD)?" << 2;
    QTest::newRow("an optional character stops there") << "AB?C" << 1;
    QTest::newRow("a group without capture is entered") << "(?:DB)X" << 3;
    QTest::newRow("a lookahead stops there") << "A(?=B)B" << 1;
    QTest::newRow("a class that begins with a bracket is not read") << "[]a]b" << 0;
    QTest::newRow("a negated class is any character") << "[^a]b" << 2;
    QTest::newRow("a hexadecimal escape is not read") << "A\\x41B" << 1;
    QTest::newRow("an octal escape is not read") << "A\\0101B" << 1;
    QTest::newRow("an open group tells nothing") << "(D" << 0;
    QTest::newRow("a closed group that was not opened tells nothing") << "D)" << 0;
    QTest::newRow("an open class tells nothing") << "D[a" << 0;
    QTest::newRow("no more than sixteen characters are kept") << "ABCDEFGHIJKLMNOPQRSTUVWXYZ" << 16;
}

void TestPatternPrefix::size()
{
    QFETCH(QString, pattern);
    QFETCH(int, size);

    QCOMPARE(label::PatternPrefix(pattern).size(), size);
}

void TestPatternPrefix::rulesOut_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("match");
    QTest::addColumn<bool>("completion");

    QTest::newRow("a text of the pattern") << "(D)(\\d+)"
                                           << "D100" << false << false;
    QTest::newRow("another symbol") << "(D)(\\d+)"
                                    << "X100" << true << true;
    QTest::newRow("the symbol alone can be completed") << "(D)(\\d+)"
                                                       << "D" << true << false;
    QTest::newRow("the empty text can be completed") << "(D)(\\d+)"
                                                     << "" << true << false;
    QTest::newRow("a symbol that goes on differently") << "(DB)(\\d+)"
                                                       << "DX1" << true << true;
    QTest::newRow("a symbol in lower case") << "(D)(\\d+)"
                                            << "d1" << true << true;
    QTest::newRow("a text that differs behind the known characters is left to the expression")
        << "(D)(\\d+)"
        << "D1x" << false << false;
    QTest::newRow("a digit of another script is a digit")
        << "(D)(\\d+)" << QString::fromUtf8("D\xd9\xa3") << false << false;
    QTest::newRow("a character out of a class") << "([A-C])(\\d)"
                                                << "D1" << true << true;
    QTest::newRow("a range written backwards is the range") << "[F-A](\\d)"
                                                            << "C1" << false << false;
    QTest::newRow("a character out of a range written backwards") << "[F-A](\\d)"
                                                                  << "G1" << true << true;
    QTest::newRow("a broken pattern rules out nothing") << "(D"
                                                        << "X" << false << false;
}

void TestPatternPrefix::rulesOut()
{
    QFETCH(QString, pattern);
    QFETCH(QString, text);
    QFETCH(bool, match);
    QFETCH(bool, completion);

    const label::PatternPrefix prefix(pattern);
    QCOMPARE(prefix.rulesOutMatch(text), match);
    QCOMPARE(prefix.rulesOutCompletion(text), completion);
}

void TestPatternPrefix::neverContradictsTheExpression_data()
{
    QTest::addColumn<quint32>("seed");

    QTest::newRow("patterns of seed 1") << 1u;
    QTest::newRow("patterns of seed 20240607") << 20240607u;
    QTest::newRow("patterns of seed 77") << 77u;
}

void TestPatternPrefix::neverContradictsTheExpression()
{
    QFETCH(quint32, seed);

    Random random(seed);
    int known = 0;
    int matches = 0;
    for (int i = 0; i < 10000; ++i) {
        const PatternCase made = nastyPattern(random);
        const label::PatternPrefix prefix(made.pattern);
        known += prefix.size() > 0;
        QStringList texts = {QString(), made.sample, made.pattern};
        for (int length = 1; length < made.sample.size(); ++length)
            texts.append(made.sample.left(length));
        for (int left = 8; left > 0; --left)
            texts.append(mutated(random, made.sample));
        for (const QString &text : qAsConst(texts)) {
            const QString wrong = contradiction(prefix, made.pattern, text);
            QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
            matches += QRegExp(made.pattern).exactMatch(text);
        }
    }
    // The patterns are worth something only if prefixes are known and texts match.
    QVERIFY2(known > 2000, qPrintable(QString::number(known)));
    QVERIFY2(matches > 5000, qPrintable(QString::number(matches)));
}

void TestPatternPrefix::rulesOutMostForeignTexts()
{
    const label::PatternPrefix prefix(QStringLiteral("(D)(\\d{1,5})"));
    for (ushort code = 0; code < 300; ++code) {
        const QString text = QChar(code) + QStringLiteral("100");
        QCOMPARE(prefix.rulesOutMatch(text), code != 'D');
        QCOMPARE(prefix.rulesOutCompletion(text), code != 'D');
    }
}

void TestPatternPrefix::knowsThePrefixOfShippedPatterns()
{
    const QList<ShippedDriver> drivers = shippedDrivers();
    if (drivers.isEmpty())
        QSKIP("no drivers in the source tree");
    int known = 0;
    int rows = 0;
    for (const ShippedDriver &driver : drivers) {
        for (const Row &row : driver.rows) {
            ++rows;
            known += label::PatternPrefix(row.pattern).size() > 0;
        }
    }
    QVERIFY2(known * 10 >= rows * 9, qPrintable(QStringLiteral("%1 of %2 rows").arg(known).arg(rows)));
}

void TestPatternPrefix::neverContradictsShippedPatterns()
{
    Random random(5);
    const QList<ShippedDriver> drivers = shippedDrivers();
    if (drivers.isEmpty())
        QSKIP("no drivers in the source tree");
    for (const ShippedDriver &driver : drivers) {
        QStringList texts = driver.addresses;
        for (const QString &address : driver.addresses) {
            texts.append(address.left(random.below(address.size() + 1)));
            texts.append(mutated(random, address));
        }
        for (const Row &row : driver.rows) {
            const label::PatternPrefix prefix(row.pattern);
            for (const QString &text : qAsConst(texts)) {
                const QString wrong = contradiction(prefix, row.pattern, text);
                QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
            }
        }
    }
}

QTEST_GUILESS_MAIN(TestPatternPrefix)
#include "tst_patternprefix.moc"
