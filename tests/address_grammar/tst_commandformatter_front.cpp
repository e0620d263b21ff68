// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "zelmar_label/address_grammar/multiplerule.h"

#include <QTest>

/// Tests how far a row matches a text, and addresses with another number.
class TestCommandFormatterFront : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void front_data();
    void front();
    void withNumber_data();
    void withNumber();
    void bitTail_data();
    void bitTail();
};

void TestCommandFormatterFront::front_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("matched");
    QTest::newRow("nothing in common") << "(DB)(\\d+)"
                                       << "X5" << 0;
    QTest::newRow("the front of the symbol") << "(DB)(\\d+)"
                                             << "DX5" << 1;
    QTest::newRow("an end too soon") << "(DB)(\\d+)"
                                     << "DB" << 2;
    QTest::newRow("a match is one more") << "(DB)(\\d+)"
                                         << "DB5" << 4;
    QTest::newRow("a text behind it") << "(DB)(\\d+)"
                                      << "DB5x" << 3;
    QTest::newRow("digits behind the last") << "(D)(\\d{1,2})"
                                            << "D123" << 3;
    QTest::newRow("a match whatever the number") << "(D)(\\d+)"
                                                 << "D99999999" << 10;
    QTest::newRow("no text") << "(D)(\\d+)"
                             << "" << 0;
    QTest::newRow("a pattern that is no expression") << "(D"
                                                     << "D" << 0;
}

void TestCommandFormatterFront::front()
{
    QFETCH(QString, pattern);
    QFETCH(QString, address);
    QFETCH(int, matched);
    const LogRecorder log;
    Row made;
    made.pattern = pattern;
    const label::CommandFormatter formatter = made.formatter();
    QCOMPARE(formatter.matchedFront(address), matched);
    QVERIFY(formatter.possibleFront(address) >= matched);
    QVERIFY(formatter.possibleFront(address) <= address.size() + 1);
}

void TestCommandFormatterFront::withNumber_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("rule");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("made");
    QTest::newRow("a register") << "(D)(\\d+)" << 2 << ""
                                << "D5"
                                << "D77";
    QTest::newRow("a suffix stays") << "(T)(\\d+)\\.ACC" << 2 << ""
                                    << "T5.ACC"
                                    << "T77.ACC";
    QTest::newRow("a bit stays") << "(D)(\\d+\\.[0-9A-F])" << 0 << "dot-f:r"
                                 << "D5.A"
                                 << "D77.A";
    QTest::newRow("a register's point is its own") << "(D)(\\d+\\.[0-9A-F])" << 2 << "dot-f:r"
                                                   << "D5.A"
                                                   << "D77";
    QTest::newRow("the last two digits stay") << "(R)(\\d+)" << 0 << "last2-dec:r"
                                              << "R1015"
                                              << "R7715";
    QTest::newRow("one part") << "(X)([0-7]+)" << 0 << "union-oct:n"
                              << "X17"
                              << "X77";
    QTest::newRow("not found") << "(D)(\\d+)" << 2 << ""
                               << "X5"
                               << "";
}

void TestCommandFormatterFront::withNumber()
{
    QFETCH(QString, pattern);
    QFETCH(int, type);
    QFETCH(QString, rule);
    QFETCH(QString, address);
    const LogRecorder log;
    Row row;
    row.pattern = pattern;
    row.type = type;
    row.multipleRule = rule;
    QTEST(row.formatter().withNumber(address, QStringLiteral("77")), "made");
}

void TestCommandFormatterFront::bitTail_data()
{
    QTest::addColumn<QString>("rule");
    QTest::addColumn<QString>("range");
    QTest::addColumn<QString>("tail");
    QTest::newRow("separator and bit") << "dot-f:r"
                                       << "100.A"
                                       << ".A";
    QTest::newRow("a separator of several characters, in any case") << "dotaccslash-dec:r"
                                                                    << "5.Acc/3"
                                                                    << ".Acc/3";
    QTest::newRow("the last digit") << "last1-oct:r"
                                    << "107"
                                    << "7";
    QTest::newRow("the last two digits") << "last2-dec:r"
                                         << "1015"
                                         << "15";
    QTest::newRow("no separator") << "dot-f:r"
                                  << "100"
                                  << "";
    QTest::newRow("one part") << "union-dec:n"
                              << "100"
                              << "";
    QTest::newRow("a plain rule") << "m8"
                                  << "100.5"
                                  << "";
}

void TestCommandFormatterFront::bitTail()
{
    QFETCH(QString, rule);
    QFETCH(QString, range);
    QTEST(label::MultipleRule(rule).bitTail(range), "tail");
}

QTEST_GUILESS_MAIN(TestCommandFormatterFront)

#include "tst_commandformatter_front.moc"
