// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/commandstest.h"
#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "support/projectfixtures.h"

#include "zelmar_label/label_store/labelstore.h"

#include <QtTest>

class TagCommandsRunsTest : public CommandsTest
{
    Q_OBJECT

private Q_SLOTS:
    void run_data();
    void run();
    void runHasDefaultsBesidesAddressAndType();
    void runWithCap_data();
    void runWithCap();
    void runWithCapKeepsLengthAndScanTime();
    void runOfABrokenDriver();
    void stationIsCutOffForRunsOnly();
};

void TagCommandsRunsTest::run_data()
{
    QTest::addColumn<int>("link");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<QStringList>("lines");
    const QStringList none;
    const QString d100 = QStringLiteral("D100");
    QTest::newRow("a word") << registersLink << 3 << d100 << 3
                            << QStringList{QStringLiteral("D100 2 1"), QStringLiteral("D101 2 1"),
                                           QStringLiteral("D102 2 1")}
                            << none;
    QTest::newRow("a double word on words")
        << registersLink << 5 << d100 << 3
        << QStringList{QStringLiteral("D100 3 1"), QStringLiteral("D102 3 1"), QStringLiteral("D104 3 1")} << none;
    QTest::newRow("a byte on words") << registersLink << 1 << d100 << 4
                                     << QStringList{QStringLiteral("D100 1 1"), QStringLiteral("D100 1 1"),
                                                    QStringLiteral("D101 1 1"), QStringLiteral("D101 1 1")}
                                     << none;
    QTest::newRow("a byte on double words starts unevenly")
        << registersLink << 1 << QStringLiteral("E10") << 4
        << QStringList{QStringLiteral("E10 1 1"), QStringLiteral("E10 1 1"), QStringLiteral("E11 1 1"),
                       QStringLiteral("E11 1 1")}
        << none;
    QTest::newRow("a bit") << registersLink << 0 << QStringLiteral("M9") << 2
                           << QStringList{QStringLiteral("M9 0 1"), QStringLiteral("M10 0 1")} << none;
    QTest::newRow("with a station") << registersLink << 3 << QStringLiteral("3-D100") << 2
                                    << QStringList{QStringLiteral("3-D100 2 1"), QStringLiteral("3-D101 2 1")} << none;
    QTest::newRow("something behind a second hyphen does not count")
        << registersLink << 3 << QStringLiteral("3-D100-9") << 2
        << QStringList{QStringLiteral("3-D100 2 1"), QStringLiteral("3-D101 2 1")} << none;
    QTest::newRow("one") << registersLink << 3 << d100 << 1 << QStringList{QStringLiteral("D100 2 1")} << none;
    QTest::newRow("none") << registersLink << 3 << d100 << 0 << none << none;
    QTest::newRow("fewer than none") << registersLink << 3 << d100 << -1 << none << none;
    QTest::newRow("beyond the limits") << registersLink << 3 << QStringLiteral("D9998") << 4
                                       << QStringList{QStringLiteral("D9998 2 1"), QStringLiteral("D9999 2 1")} << none;
    QTest::newRow("an unknown address") << registersLink << 3 << QStringLiteral("Y1") << 2 << none
                                        << QStringList{failed};
    QTest::newRow("a number at a bit") << registersLink << 3 << QStringLiteral("M1") << 2 << none
                                       << QStringList{failed};
    QTest::newRow("nothing behind the station")
        << registersLink << 3 << QStringLiteral("3-") << 2 << none << QStringList{failed};
    QTest::newRow("no address") << registersLink << 3 << QString() << 2 << none << QStringList{failed};
    QTest::newRow("an internal tag") << 0 << 3 << d100 << 2 << none << QStringList{noRunLabel};
    QTest::newRow("an unknown link") << missingLink << 3 << d100 << 2 << none << QStringList{noRunLabel};
    QTest::newRow("link -1") << -1 << 3 << d100 << 2 << none << none;
}

void TagCommandsRunsTest::run()
{
    QFETCH(int, link);
    QFETCH(int, type);
    QFETCH(QString, address);
    QFETCH(int, count);
    writeTags(key, {tag(500, link, type, address)});
    const LogRecorder log;
    QTEST(shortForms(m_tags->getContinuousCommand(500, count)), "expected");
    QTEST(criticalLines(log.lines()), "lines");
}

void TagCommandsRunsTest::runHasDefaultsBesidesAddressAndType()
{
    const QStringList expected{QStringLiteral("D51|2|1|1|0||0"), QStringLiteral("D52|2|1|1|0||0")};
    QCOMPARE(described(m_tags->getContinuousCommand(51, 2)), expected);
    // The length of a text goes as well.
    QCOMPARE(m_tags->getContinuousCommand(52, 1).value(0).length, 1ULL);

    const LogRecorder log;
    QVERIFY(m_tags->getContinuousCommand(9999, 2).isEmpty());
    QVERIFY(m_tags->getContinuousCommand(-1, 2).isEmpty());
    QCOMPARE(log.lines(), QStringList());
    // System and recipe tags are on link 0.
    QVERIFY(m_tags->getContinuousCommand(20012, 2).isEmpty());
    QVERIFY(m_tags->getContinuousCommand(30001, 2).isEmpty());
    const QStringList twice{noRunLabel, noRunLabel};
    QCOMPARE(criticalLines(log.lines()), twice);
    executeOn(key, QStringLiteral("INSERT INTO LINK VALUES (0, ?, 1)"), {registers});
    QVERIFY(m_tags->getContinuousCommand(30001, 2).isEmpty());
    QCOMPARE(criticalLines(log.lines()).mid(2), QStringList{failed});
}

void TagCommandsRunsTest::runWithCap_data()
{
    QTest::addColumn<int>("link");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("cap");
    QTest::addColumn<bool>("checkRange");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<QStringList>("lines");
    const QStringList none;
    const QString d100 = QStringLiteral("D100");
    QTest::newRow("five apart") << registersLink << 3 << d100 << 3 << 5 << true
                                << QStringList{QStringLiteral("D100 2 1"), QStringLiteral("D105 2 1"),
                                               QStringLiteral("D110 2 1")}
                                << none;
    QTest::newRow("the format's type, not the tag's")
        << registersLink << 5 << d100 << 2 << 1 << true
        << QStringList{QStringLiteral("D100 2 1"), QStringLiteral("D101 2 1")} << none;
    QTest::newRow("with a station") << registersLink << 3 << QStringLiteral("3-D100") << 2 << 2 << true
                                    << QStringList{QStringLiteral("3-D100 2 1"), QStringLiteral("3-D102 2 1")} << none;
    QTest::newRow("bits") << registersLink << 0 << QStringLiteral("M8") << 2 << 8 << true
                          << QStringList{QStringLiteral("M8 0 1"), QStringLiteral("M16 0 1")} << none;
    QTest::newRow("beyond the limits") << registersLink << 3 << QStringLiteral("D9998") << 3 << 1 << true
                                       << QStringList{QStringLiteral("D9998 2 1"), QStringLiteral("D9999 2 1")} << none;
    QTest::newRow("beyond the limits, unchecked")
        << registersLink << 3 << QStringLiteral("D9998") << 3 << 1 << false
        << QStringList{QStringLiteral("D9998 2 1"), QStringLiteral("D9999 2 1"), QStringLiteral("D10000 2 1")} << none;
    QTest::newRow("a cap of 0") << registersLink << 3 << d100 << 2 << 0 << true
                                << QStringList{QStringLiteral("D100 2 1"), QStringLiteral("D100 2 1")} << none;
    QTest::newRow("backwards") << registersLink << 3 << d100 << 2 << -10 << true
                               << QStringList{QStringLiteral("D100 2 1"), QStringLiteral("D90 2 1")} << none;
    QTest::newRow("none") << registersLink << 3 << d100 << 0 << 1 << true << none << none;
    QTest::newRow("an unknown address fails in silence")
        << registersLink << 3 << QStringLiteral("Y1") << 2 << 1 << true << none << none;
    QTest::newRow("a number at a bit fails in silence")
        << registersLink << 3 << QStringLiteral("M1") << 2 << 1 << true << none << none;
    QTest::newRow("an internal tag") << 0 << 3 << d100 << 2 << 1 << true << none << QStringList{noCapLabel};
    QTest::newRow("an unknown link") << missingLink << 3 << d100 << 2 << 1 << true << none << QStringList{noCapLabel};
    QTest::newRow("link -1") << -1 << 3 << d100 << 2 << 1 << true << none << none;
}

void TagCommandsRunsTest::runWithCap()
{
    QFETCH(int, link);
    QFETCH(int, type);
    QFETCH(QString, address);
    QFETCH(int, count);
    QFETCH(int, cap);
    QFETCH(bool, checkRange);
    writeTags(key, {tag(500, link, type, address)});
    const LogRecorder log;
    QTEST(shortForms(m_tags->getContinuousCommandwithCap(500, count, cap, checkRange)), "expected");
    QTEST(criticalLines(log.lines()), "lines");
}

void TagCommandsRunsTest::runWithCapKeepsLengthAndScanTime()
{
    const QStringList expected{QStringLiteral("D52|2|12|7|0||0"), QStringLiteral("D62|2|12|7|0||0")};
    QCOMPARE(described(m_tags->getContinuousCommandwithCap(52, 2, 10, true)), expected);

    const LogRecorder log;
    QVERIFY(m_tags->getContinuousCommandwithCap(9999, 2, 1, true).isEmpty());
    QVERIFY(m_tags->getContinuousCommandwithCap(-1, 2, 1, true).isEmpty());
    QCOMPARE(log.lines(), QStringList());
    QVERIFY(m_tags->getContinuousCommandwithCap(20012, 2, 1, true).isEmpty());
    QVERIFY(m_tags->getContinuousCommandwithCap(50001, 2, 1, true).isEmpty());
    const QStringList twice{noCapLabel, noCapLabel};
    QCOMPARE(criticalLines(log.lines()), twice);
}

void TagCommandsRunsTest::runOfABrokenDriver()
{
    writeTags(key, {tag(500, brokenLink, 3, QStringLiteral("D100"))});
    const LogRecorder log;
    QVERIFY(m_tags->getContinuousCommand(500, 2).isEmpty());
    QVERIFY(m_tags->getContinuousCommandwithCap(500, 2, 1, true).isEmpty());
    QCOMPARE(m_tags->getPrefixSymbol(500), QString());
    QList<CommunicatorCommand> out{command(QStringLiteral("before"), 1)};
    QVERIFY(!m_tags->creatBlockCommand(500, 2, out));
    QCOMPARE(addresses(out), QStringList{QStringLiteral("before")});
    const QStringList expected{noRunLabel, noCapLabel, noPrefixLabel};
    QCOMPARE(criticalLines(log.lines()), expected);
}

/// A driver that makes rows for new prefixes refuses addresses with a station: this shows which text it received.
void TagCommandsRunsTest::stationIsCutOffForRunsOnly()
{
    writeTags(key, {tag(500, dataBlocksLink, 3, QStringLiteral("3-DB12.DBW4"))});
    QList<CommunicatorCommand> out;
    QVERIFY(m_tags->getContinuousCommandwithCap(500, 2, 2, true).isEmpty());
    QVERIFY(!m_tags->creatBlockCommand(500, 2, out));
    const QStringList expected{QStringLiteral("3-DB12.DBW4 2 1"), QStringLiteral("3-DB12.DBW5 2 1")};
    QCOMPARE(shortForms(m_tags->getContinuousCommand(500, 2)), expected);
    // Now the prefix is known.
    QCOMPARE(m_tags->getContinuousCommandwithCap(500, 2, 2, true).size(), 2);
    QVERIFY(m_tags->creatBlockCommand(500, 2, out));
    QCOMPARE(shortForms(out), QStringList{QStringLiteral("3-DB12.DBW4 2 2")});
}

QTEST_GUILESS_MAIN(TagCommandsRunsTest)

#include "tst_tagcommands_runs.moc"
