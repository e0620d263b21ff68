// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/commandstest.h"
#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "support/projectfixtures.h"

#include "zelmar_label/label_store/labelstore.h"

#include <QtTest>

#include <climits>

class TagCommandsBlocksTest : public CommandsTest
{
    Q_OBJECT

private Q_SLOTS:
    void blockOf10By4();
    void blockUnits_data();
    void blockUnits();
    void blockKeepsTheTagsOwnCommand();
    void blockWithoutRoom_data();
    void blockWithoutRoom();
    void blockThatFails_data();
    void blockThatFails();
    void blockReplacesTheList();
};

void TagCommandsBlocksTest::blockOf10By4()
{
    writeTags(key, {tag(500, blocksLink, 3, QStringLiteral("D100"))});
    QList<CommunicatorCommand> out;
    QVERIFY(m_tags->creatBlockCommand(500, 10, out));
    const QStringList ten{QStringLiteral("D100|2|4|1|0||0"), QStringLiteral("D104|2|4|1|0||0"),
                          QStringLiteral("D108|2|2|1|0||0")};
    QCOMPARE(described(out), ten);
    QVERIFY(m_tags->creatBlockCommand(500, 8, out));
    const QStringList eight{QStringLiteral("D100|2|4|1|0||0"), QStringLiteral("D104|2|4|1|0||0")};
    QCOMPARE(described(out), eight);
}

void TagCommandsBlocksTest::blockUnits_data()
{
    QTest::addColumn<int>("link");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("expected");
    const auto known = [](const char *name, int link, int type, const char *address, int count,
                          const QStringList &expected) {
        QTest::newRow(name) << link << type << QString::fromLatin1(address) << count << expected;
    };
    const auto list = [](const char *texts) { return QString::fromLatin1(texts).split(QStringLiteral(", ")); };

    known("one item", blocksLink, 3, "D100", 1, list("D100 2 1"));
    known("less than a block", blocksLink, 3, "D100", 3, list("D100 2 3"));
    known("exactly a block", blocksLink, 3, "D100", 4, list("D100 2 4"));
    known("one more than a block", blocksLink, 3, "D100", 5, list("D100 2 4, D104 2 1"));
    known("exactly three blocks", blocksLink, 3, "D100", 12, list("D100 2 4, D104 2 4, D108 2 4"));
    known("with a station", blocksLink, 3, "3-D100", 6, list("3-D100 2 4, 3-D104 2 2"));
    known("up to the limit", blocksLink, 3, "D9995", 5, list("D9995 2 4, D9999 2 1"));
    known("no items make one block of none", blocksLink, 3, "D100", 0, list("D100 2 0"));
    known("blocks of one", blocksLink, 3, "X5", 3, list("X5 2 1, X6 2 1, X7 2 1"));

    known("words on double words: twice as many, all", registersLink, 3, "E100", 128, list("E100 2 128"));
    known("words on double words: twice as many", registersLink, 3, "E100", 129, list("E100 2 128, E164 2 1"));
    known("words on bytes: half as many, all", registersLink, 3, "B100", 32, list("B100 2 32"));
    known("words on bytes: half as many", registersLink, 3, "B100", 33, list("B100 2 32, B164 2 1"));
    known("words on words: as many", registersLink, 4, "D100", 65, list("D100 2 64, D164 2 1"));
    known("double words on words: half as many", registersLink, 5, "D100", 70, list("D100 3 32, D164 3 32, D228 3 6"));
    known("numbers with a point on words: half as many", registersLink, 7, "D100", 33, list("D100 3 32, D164 3 1"));
    known("quad words on words: a quarter", registersLink, 9, "D100", 17, list("D100 4 16, D164 4 1"));
    known("quad words on double words: half as many", registersLink, 10, "E100", 33, list("E100 4 32, E164 4 1"));
    known("quad words on bytes: three apart, as many", registersLink, 11, "B100", 65, list("B100 1 64, B164 1 1"));
    known("double words on bytes: a quarter", registersLink, 5, "B100", 17, list("B100 3 16, B164 3 1"));
    known("bytes on bytes: as many", registersLink, 1, "B100", 65, list("B100 1 64, B164 1 1"));
    known("bytes on words: twice as many", registersLink, 2, "D100", 129, list("D100 1 128, D164 1 1"));
    known("bytes on double words: four times, with the uneven start", blocksLink, 1, "E100", 10,
          list("E100 1 8, E102 1 2"));
    known("bytes on quad words: three apart, as many", blocksLink, 1, "Q100", 4, list("Q100 4 3, Q103 4 1"));
    known("words on quad words: four times", blocksLink, 3, "Q100", 13, list("Q100 2 12, Q103 2 1"));
    known("double words on quad words: twice as many", blocksLink, 5, "Q100", 7, list("Q100 3 6, Q103 3 1"));
    known("texts on words: three apart, as many", blocksLink, 8, "D100", 5, list("D100 2 4, D104 2 1"));
    known("texts on double words: a quarter", registersLink, 8, "E100", 17, list("E100 5 16, E164 5 1"));
    known("texts on quad words: half as many, truncated", blocksLink, 8, "Q100", 2, list("Q100 5 1, Q102 5 1"));
    known("texts on texts: as many", blocksLink, 8, "S100", 4, list("S100 5 3, S103 5 1"));
    known("quad words on texts: twice as many", blocksLink, 9, "S100", 7, list("S100 4 6, S103 4 1"));
    known("an unknown type, far from words: as many", blocksLink, 12, "D100", 5, list("D100 2 4, D104 2 1"));

    known("half of seven truncates", blocksLink, 3, "B100", 4, list("B100 2 3, B106 2 1"));
    known("a quarter of seven truncates", blocksLink, 5, "B100", 2, list("B100 3 1, B104 3 1"));
    known("half of three truncates", blocksLink, 5, "V100", 2, list("V100 3 1, V102 3 1"));
    known("bits are not converted", blocksLink, 0, "M98", 5, list("M98 0 4, M102 0 1"));
    known("the highest block size", blocksLink, 3, "L100", 500, list("L100 2 500"));
    known("twice the highest block size", blocksLink, 1, "L100", 500, list("L100 1 500"));
}

void TagCommandsBlocksTest::blockUnits()
{
    QFETCH(int, link);
    QFETCH(int, type);
    QFETCH(QString, address);
    QFETCH(int, count);
    writeTags(key, {tag(500, link, type, address)});
    QList<CommunicatorCommand> out;
    const LogRecorder log;
    QVERIFY(m_tags->creatBlockCommand(500, count, out));
    QTEST(shortForms(out), "expected");
    QCOMPARE(criticalLines(log.lines()), QStringList());
}

void TagCommandsBlocksTest::blockKeepsTheTagsOwnCommand()
{
    TagRow row = tag(500, blocksLink, 3, QStringLiteral("D0100"));
    row.scanTime = 7;
    TagRow text = tag(501, blocksLink, 8, QStringLiteral("3-D0100"));
    text.scanTime = 0;
    text.scale = 20;
    writeTags(key, {row, text});
    QList<CommunicatorCommand> out;
    QVERIFY(m_tags->creatBlockCommand(500, 4, out));
    QCOMPARE(described(out), QStringList{QStringLiteral("D0100|2|4|7|0||0")});
    QVERIFY(m_tags->creatBlockCommand(501, 1, out));
    QCOMPARE(described(out), QStringList{QStringLiteral("3-D0100|5|1|0|0||0")});
    // Several blocks are taken from the run, which has a spelling and a scan time of its own.
    QVERIFY(m_tags->creatBlockCommand(500, 5, out));
    const QStringList expected{QStringLiteral("D100|2|4|1|0||0"), QStringLiteral("D104|2|1|1|0||0")};
    QCOMPARE(described(out), expected);
}

void TagCommandsBlocksTest::blockWithoutRoom_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("address");
    QTest::newRow("half of one byte") << 3 << QStringLiteral("A100");
    QTest::newRow("a quarter of one byte") << 5 << QStringLiteral("A100");
    QTest::newRow("a quarter of three bytes") << 5 << QStringLiteral("C100");
    QTest::newRow("half of one word") << 5 << QStringLiteral("X100");
    QTest::newRow("a quarter of three words") << 10 << QStringLiteral("V100");
    QTest::newRow("a block size of 0") << 3 << QStringLiteral("W100");
    QTest::newRow("twice a block size of 0") << 1 << QStringLiteral("W100");
    QTest::newRow("a block size of 0 bits") << 0 << QStringLiteral("N100");
    QTest::newRow("a negative block size") << 3 << QStringLiteral("Z100");
    QTest::newRow("half of a negative block size") << 5 << QStringLiteral("Z100");
}

void TagCommandsBlocksTest::blockWithoutRoom()
{
    QFETCH(int, type);
    QFETCH(QString, address);
    writeTags(key, {tag(500, blocksLink, type, address)});
    for (int count : {1, 2, 10}) {
        QCOMPARE(m_tags->getContinuousCommand(500, count).size(), count);
        QList<CommunicatorCommand> out{command(QStringLiteral("before"), 1)};
        QVERIFY(!m_tags->creatBlockCommand(500, count, out));
        QCOMPARE(addresses(out), QStringList{QStringLiteral("before")});
    }
}

void TagCommandsBlocksTest::blockThatFails_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("count");
    QTest::newRow("no such row") << 9999 << 2;
    QTest::newRow("no tag") << -1 << 2;
    QTest::newRow("a system tag") << 20012 << 2;
    QTest::newRow("a recipe tag") << 30001 << 2;
    QTest::newRow("a recipe row tag") << 50001 << 2;
    QTest::newRow("an unknown link") << 500 << 2;
    QTest::newRow("link -1") << 501 << 2;
    QTest::newRow("an unknown address") << 502 << 2;
    QTest::newRow("a bit at a register") << 503 << 2;
    QTest::newRow("no address") << 55 << 2;
    QTest::newRow("the run leaves the limits") << 504 << 2;
    QTest::newRow("a negative count") << 51 << -1;
    QTest::newRow("the lowest count") << 51 << INT_MIN;
}

void TagCommandsBlocksTest::blockThatFails()
{
    QFETCH(int, id);
    QFETCH(int, count);
    writeTags(key, {tag(500, missingLink, 3, QStringLiteral("D1")), tag(501, -1, 3, QStringLiteral("D1")),
                    tag(502, registersLink, 3, QStringLiteral("Y1")), tag(503, registersLink, 0, QStringLiteral("D1")),
                    tag(504, registersLink, 3, QStringLiteral("D9999"))});
    QList<CommunicatorCommand> out{command(QStringLiteral("before"), 1)};
    const LogRecorder log;
    QVERIFY(!m_tags->creatBlockCommand(id, count, out));
    QCOMPARE(addresses(out), QStringList{QStringLiteral("before")});
    QCOMPARE(criticalLines(log.lines()), QStringList());
}

void TagCommandsBlocksTest::blockReplacesTheList()
{
    QList<CommunicatorCommand> out{command(QStringLiteral("before"), 1), command(QStringLiteral("after"), 1)};
    QVERIFY(m_tags->creatBlockCommand(51, 2, out));
    QCOMPARE(shortForms(out), QStringList{QStringLiteral("D51 2 2")});
}

QTEST_GUILESS_MAIN(TagCommandsBlocksTest)

#include "tst_tagcommands_blocks.moc"
