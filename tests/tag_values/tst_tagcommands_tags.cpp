// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/commandstest.h"
#include "support/logrecorder.h"
#include "support/projectfixtures.h"

#include "zelmar_label/label_store/labelstore.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <QtTest>

#include <climits>

/// Tests the command and the symbol of a tag of any kind.
class TagCommandsTagsTest : public CommandsTest
{
    Q_OBJECT

private Q_SLOTS:
    void commandOfATag_data();
    void commandOfATag();
    void commandOfADoubledRow();
    void commandWithoutAColumn();
    void commandOfASystemTag_data();
    void commandOfASystemTag();
    void commandOfARecipeTag_data();
    void commandOfARecipeTag();
    void commandOfRecipeTagsInACircle();
    void commandOfARecipeTagThatIsGone();
    void commandWithoutADatabase();

    void prefixSymbol_data();
    void prefixSymbol();
    void prefixSymbolOfADynamicRow();
};

void TagCommandsTagsTest::commandOfATag_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<QString>("expected");
    QTest::newRow("read once") << 50 << true << QStringLiteral("D50|2|1|0|0||0");
    QTest::newRow("a scan time of its own") << 51 << true << QStringLiteral("D51|2|1|7|0||0");
    QTest::newRow("a text of length 12") << 52 << true << QStringLiteral("D52|5|12|7|0||0");
    QTest::newRow("a text of length 0") << 54 << true << QStringLiteral("D54|5|0|1|0||0");
    QTest::newRow("a bit") << 53 << true << QStringLiteral("M53|0|1|1|0||0");
    QTest::newRow("an empty address") << 55 << true << QStringLiteral("|2|1|1|0||0");
    QTest::newRow("just above the system tags") << 21001 << true << QStringLiteral("M1|0|1|1|0||0");
    QTest::newRow("just above the recipe tags") << 60001 << true << QStringLiteral("M2|0|1|1|0||0");
    QTest::newRow("no such row") << 9999 << false << nullCommand;
    QTest::newRow("no tag") << -1 << false << nullCommand;
    QTest::newRow("just below the system tags") << 19999 << false << nullCommand;
    QTest::newRow("just below the recipe tags") << 29999 << false << nullCommand;
    QTest::newRow("the highest number") << INT_MAX << false << nullCommand;
    QTest::newRow("the lowest number") << INT_MIN << false << nullCommand;
}

void TagCommandsTagsTest::commandOfATag()
{
    QFETCH(int, id);
    for (const bool before : {false, true}) {
        bool ok = before;
        const LogRecorder log;
        QTEST(described(m_tags->getCommunicatorCommandByIndex(id, ok)), "expected");
        QTEST(ok, "ok");
        QCOMPARE(log.lines(), QStringList());
    }
}

void TagCommandsTagsTest::commandOfADoubledRow()
{
    executeOn(key, QStringLiteral("DROP TABLE custom_tag_table"));
    executeOn(key, QStringLiteral("CREATE TABLE custom_tag_table (id, data_type, address, scan_time, scale, "
                                  "connector_id)"));
    executeOn(key, QStringLiteral("INSERT INTO custom_tag_table VALUES (7, 3, 'D1', 2, 1, 2), (8, 3, 'D2', 2, 1, 2), "
                                  "(7, 3, 'D3', 2, 1, 2)"));
    bool ok = true;
    QCOMPARE(described(m_tags->getCommunicatorCommandByIndex(7, ok)), nullCommand);
    QVERIFY(!ok);
    QVERIFY(!m_tags->isReadOnce(7));
    QCOMPARE(described(m_tags->getCommunicatorCommandByIndex(8, ok)), QStringLiteral("D2|2|1|2|0||0"));
    QVERIFY(ok);
    executeOn(key, QStringLiteral("DELETE FROM custom_tag_table WHERE address = 'D3'"));
    QCOMPARE(described(m_tags->getCommunicatorCommandByIndex(7, ok)), QStringLiteral("D1|2|1|2|0||0"));
    QVERIFY(ok);
}

void TagCommandsTagsTest::commandWithoutAColumn()
{
    executeOn(key, QStringLiteral("DROP TABLE custom_tag_table"));
    executeOn(key, QStringLiteral("CREATE TABLE custom_tag_table (id, data_type, address, connector_id)"));
    executeOn(key, QStringLiteral("INSERT INTO custom_tag_table VALUES (7, 3, 'D1', 2)"));
    bool ok = true;
    QCOMPARE(described(m_tags->getCommunicatorCommandByIndex(7, ok)), nullCommand);
    QVERIFY(!ok);
    QCOMPARE(m_tags->getDataTypeByID(7), 3);
}

void TagCommandsTagsTest::commandOfASystemTag_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a number") << 20012 << QStringLiteral("S>Current_screen|3|1|1|0||0");
    QTest::newRow("a text has the type of a number") << 20010 << QStringLiteral("S>Current_screen_name|3|1|1|0||0");
    QTest::newRow("the time in seconds") << 20072 << QStringLiteral("S>R_Timestamp_Unix|3|1|1|0||0");
    QTest::newRow("a tag whose id a row bears") << 20011 << QStringLiteral("S>Change_screen|3|1|1|0||0");
    QTest::newRow("a tag that is found by its key, not by its own id")
        << 20201 << QStringLiteral("S>R_Year|3|1|1|0||0");
    QTest::newRow("an id without a tag") << 20094 << nullCommand;
    QTest::newRow("the first id") << 20000 << nullCommand;
    QTest::newRow("the last id") << 21000 << nullCommand;
}

void TagCommandsTagsTest::commandOfASystemTag()
{
    QFETCH(int, id);
    bool ok = false;
    const LogRecorder log;
    QTEST(described(m_tags->getCommunicatorCommandByIndex(id, ok)), "expected");
    QVERIFY(ok);
    QCOMPARE(log.lines(), QStringList());
}

void TagCommandsTagsTest::commandOfARecipeTag_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("expected");
    QTest::newRow("connected to a tag: its name, -1, and the rest of the tag")
        << 30001 << QStringLiteral("R>1_1|2|1|7|-1||0");
    QTest::newRow("not connected") << 30002 << QStringLiteral("R>1_2|3|1|1|-1||0");
    QTest::newRow("connected to a system tag") << 30003 << QStringLiteral("R>1_3|3|1|1|-1||0");
    QTest::newRow("connected to a tag that does not exist") << 30004 << QStringLiteral("R>1_4|3|1|1|-1||0");
    QTest::newRow("connected to another recipe tag") << 30005 << QStringLiteral("R>1_5|2|1|7|-1||0");
    QTest::newRow("connected to -1") << 30006 << QStringLiteral("R>1_6|3|1|1|-1||0");
    QTest::newRow("without letters in its name, connected to a text") << 30007 << QStringLiteral("|5|12|7|-1||0");
    QTest::newRow("connected to a recipe row tag") << 30008 << QStringLiteral("R>1_8|2|1|7|-1||0");
    QTest::newRow("connected but without a name") << 30009 << nullCommand;
    QTest::newRow("an id that a row bears") << 30000 << nullCommand;
    QTest::newRow("the last recipe id") << 50000 << nullCommand;
    QTest::newRow("the last recipe row id") << 60000 << nullCommand;
    QTest::newRow("a recipe row tag has no -1") << 50001 << QStringLiteral("R>1_1I1|2|1|7|0||0");
    QTest::newRow("a recipe row tag that is not connected") << 50002 << QStringLiteral("R>1_1I2|3|1|1|0||0");
    QTest::newRow("a recipe row tag connected to a recipe tag keeps that one's -1")
        << 50003 << QStringLiteral("R>1_1I3|2|1|7|-1||0");
    QTest::newRow("a recipe tag among the ids of rows") << 50500 << QStringLiteral("R>1_9|0|1|1|-1||0");
    QTest::newRow("a recipe row tag among the ids of recipe tags") << 30500 << QStringLiteral("R>1_1I5|0|1|1|0||0");
}

void TagCommandsTagsTest::commandOfARecipeTag()
{
    QFETCH(int, id);
    bool ok = false;
    const LogRecorder log;
    QTEST(described(m_tags->getCommunicatorCommandByIndex(id, ok)), "expected");
    QVERIFY(ok);
    QCOMPARE(log.lines(), QStringList());
}

void TagCommandsTagsTest::commandOfRecipeTagsInACircle()
{
    m_tags->setRecipeTags({{30001, QStringLiteral("R>1_1")}, {30002, QStringLiteral("R>1_2")}},
                          {{30001, 30002}, {30002, 30001}});
    bool ok = false;
    QCOMPARE(described(m_tags->getCommunicatorCommandByIndex(30001, ok)), QStringLiteral("R>1_1|3|1|1|-1||0"));
    QVERIFY(ok);
    QCOMPARE(described(m_tags->getCommunicatorCommandByIndex(30002, ok)), QStringLiteral("R>1_2|3|1|1|-1||0"));
    QVERIFY(ok);
}

void TagCommandsTagsTest::commandOfARecipeTagThatIsGone()
{
    bool ok = false;
    m_tags->setRecipeTags({}, {});
    QCOMPARE(described(m_tags->getCommunicatorCommandByIndex(30001, ok)), nullCommand);
    QVERIFY(ok);
    m_tags->setRecipeRowTags({}, {});
    QCOMPARE(described(m_tags->getCommunicatorCommandByIndex(50001, ok)), nullCommand);
    QVERIFY(ok);
}

void TagCommandsTagsTest::commandWithoutADatabase()
{
    const LogRecorder log;
    TagSystem *tags = TagSystem::instance(QString());
    bool ok = true;
    QCOMPARE(described(tags->getCommunicatorCommandByIndex(1, ok)), nullCommand);
    QVERIFY(!ok);
    QCOMPARE(described(tags->getCommunicatorCommandByIndex(20012, ok)), QStringLiteral("S>Current_screen|3|1|1|0||0"));
    QVERIFY(ok);
    QCOMPARE(tags->getDataTypeByID(1), 0);
    QVERIFY(!tags->isBitType(1));
    QVERIFY(tags->getContinuousCommand(1, 3).isEmpty());
    QVERIFY(tags->getContinuousCommandwithCap(1, 3, 1, true).isEmpty());
    QCOMPARE(tags->getPrefixSymbol(1), QString());
    QList<CommunicatorCommand> out;
    QVERIFY(!tags->creatBlockCommand(1, 3, out));
    QCOMPARE(criticalLines(log.lines()), QStringList());
}

void TagCommandsTagsTest::prefixSymbol_data()
{
    QTest::addColumn<int>("link");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QStringList>("lines");
    const QStringList none;
    QTest::newRow("a register") << registersLink << 3 << QStringLiteral("D100") << QStringLiteral("D") << none;
    QTest::newRow("with a station") << registersLink << 3 << QStringLiteral("3-E100") << QStringLiteral("E") << none;
    QTest::newRow("a bit") << registersLink << 0 << QStringLiteral("M1") << QStringLiteral("M") << none;
    QTest::newRow("a bit at a register") << registersLink << 0 << QStringLiteral("D1") << QString() << none;
    QTest::newRow("a number at a bit") << registersLink << 3 << QStringLiteral("M1") << QString() << none;
    QTest::newRow("an unknown address") << registersLink << 3 << QStringLiteral("Y1") << QString() << none;
    QTest::newRow("outside the limits") << registersLink << 3 << QStringLiteral("D10000") << QString() << none;
    QTest::newRow("no address") << registersLink << 3 << QString() << QString() << none;
    QTest::newRow("an internal tag") << 0 << 3 << QStringLiteral("D100") << QString() << QStringList{noPrefixLabel};
    QTest::newRow("an unknown link") << missingLink << 3 << QStringLiteral("D100") << QString()
                                     << QStringList{noPrefixLabel};
    QTest::newRow("link -1") << -1 << 3 << QStringLiteral("D100") << QString() << none;
}

void TagCommandsTagsTest::prefixSymbol()
{
    QFETCH(int, link);
    QFETCH(int, type);
    QFETCH(QString, address);
    writeTags(key, {tag(500, link, type, address)});
    const LogRecorder log;
    QTEST(m_tags->getPrefixSymbol(500), "expected");
    QTEST(log.lines().filter(QStringLiteral("TagSystem")), "lines");
    QTEST(criticalLines(log.lines()), "lines");
}

void TagCommandsTagsTest::prefixSymbolOfADynamicRow()
{
    writeTags(key, {tag(500, dataBlocksLink, 3, QStringLiteral("DB12.DBW4")),
                    tag(501, dataBlocksLink, 3, QStringLiteral("3-DB13.DBW4"))});
    QCOMPARE(m_tags->getPrefixSymbol(500), QStringLiteral("DB12.DBW"));
    // A new row is not made of an address with a station.
    QCOMPARE(m_tags->getPrefixSymbol(501), QString());
}

QTEST_GUILESS_MAIN(TagCommandsTagsTest)

#include "tst_tagcommands_tags.moc"
