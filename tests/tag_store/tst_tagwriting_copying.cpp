// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "support/projecttest.h"

#include "zelmar_label/address_grammar/communicatorcommand.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <QtTest>

class TagCopyingTest : public ProjectTest
{
    Q_OBJECT

private Q_SLOTS:
    void copies_data();
    void copies();
    void copiesOfItself_data();
    void copiesOfItself();
    void copiesOfAnUnknownTag();
    void copiesOfATagWithoutAType();
    void copiesThatCannotBeInserted();
    void copiesGoByTheNamesAtTheStart();
};

void TagCopyingTest::copies_data()
{
    QTest::addColumn<QStringList>("known");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("count");
    QTest::addColumn<QList<int>>("ids");
    QTest::addColumn<QStringList>("added");
    const QList<int> none;
    QTest::newRow("one of a free name") << QStringList() << "New" << 1 << QList<int>({2}) << QStringList("2|New");
    QTest::newRow("three of a free name stand under it and have no id")
        << QStringList() << "New" << 3 << QList<int>({-1, -1, -1}) << QStringList({"2|New", "3|New", "4|New"});
    QTest::newRow("none of a free name") << QStringList() << "New" << 0 << none << QStringList();
    QTest::newRow("less than none") << QStringList() << "New" << -2 << none << QStringList();
    QTest::newRow("a known name") << QStringList("New") << "New" << 2 << QList<int>({2, 2}) << QStringList("2|New");
    QTest::newRow("a known name of another case")
        << QStringList("NEW") << "New" << 1 << QList<int>({3}) << QStringList({"2|NEW", "3|New"});
    QTest::newRow("a numbered form alone")
        << QStringList("New-3") << "New" << 2 << QList<int>({-1, -1}) << QStringList("2|New-3");
    QTest::newRow("a numbered form of zero does not count")
        << QStringList("New-0") << "New" << 1 << QList<int>({3}) << QStringList({"2|New-0", "3|New"});
    QTest::newRow("a numbered form behind the last int exists")
        << QStringList("New-2147483648") << "New" << 1 << QList<int>({-1}) << QStringList({"2|New-2147483648"});
    QTest::newRow("a numbered form beyond all numbers exists")
        << QStringList("New-99999999999999999999") << "New" << 1 << QList<int>({-1})
        << QStringList({"2|New-99999999999999999999"});
    QTest::newRow("many zeros are no number")
        << QStringList("New-00000000000000000000") << "New" << 1 << QList<int>({3})
        << QStringList({"2|New-00000000000000000000", "3|New"});
    QTest::newRow("a number and the bare name")
        << QStringList({"New-3", "New"}) << "New" << 1 << QList<int>({3}) << QStringList({"2|New-3", "3|New"});
    QTest::newRow("a numbered form in two steps does not count")
        << QStringList("New-1-2") << "New" << 1 << QList<int>({3}) << QStringList({"2|New-1-2", "3|New"});
    QTest::newRow("something else behind the minus")
        << QStringList("New-x") << "New" << 1 << QList<int>({3}) << QStringList({"2|New-x", "3|New"});
    QTest::newRow("the name within another")
        << QStringList("xNew") << "New" << 1 << QList<int>({3}) << QStringList({"2|xNew", "3|New"});
    QTest::newRow("an expression that meets a name")
        << QStringList("Now") << "N.w" << 2 << QList<int>({-1, -1}) << QStringList("2|Now");
    QTest::newRow("an expression that does not meet itself")
        << QStringList("N+w") << "N+w" << 1 << QList<int>({-1}) << QStringList({"2|N+w", "3|N+w"});
    QTest::newRow("a broken expression meets nothing")
        << QStringList("N(") << "N(" << 1 << QList<int>({-1}) << QStringList({"2|N(", "3|N("});
    QTest::newRow("a choice is anchored in its parts")
        << QStringList("Pump room") << "Pump|Tank" << 1 << QList<int>({-1}) << QStringList("2|Pump room");
    QTest::newRow("a group of the name takes the number's place")
        << QStringList("New") << "(N)ew" << 2 << QList<int>({-1, -1}) << QStringList("2|New");
    QTest::newRow("an empty name adds nothing") << QStringList() << "" << 2 << none << QStringList();
    QTest::newRow("a system name is not refused")
        << QStringList() << "S>Mine" << 1 << QList<int>({-1}) << QStringList("2|S>Mine");
    QTest::newRow("an apostrophe has no id")
        << QStringList() << "it's" << 1 << QList<int>({-1}) << QStringList("2|it's");
}

void TagCopyingTest::copies()
{
    QFETCH(QStringList, known);
    QFETCH(QString, name);
    QFETCH(int, count);
    QFETCH(QStringList, added);
    QList<TagRow> rows = {tag(1, "model")};
    for (const QString &one : qAsConst(known))
        rows.append(tag(0, one));
    writeTags(key, rows);
    executeOn(key, "UPDATE custom_tag_table SET connector_id = 3, data_type = 6 WHERE id = 1");
    TagSystem *tags = bound();
    const CommunicatorCommand source = command("D7", CommunicatorCommand::DoubleWord, 12);
    QTEST(tags->addTags(1, qMakePair(name, source), count), "ids");
    QCOMPARE(rowsOn(key, idsAndNames + " LIMIT -1 OFFSET 1"), added);
    QCOMPARE(tags->getTagNames(), reloaded());
    const QStringList values = rowsOn(key, QString("SELECT access, connector_id, data_type, address, scan_time, scale, "
                                                   "addition, default_value, user_log, user_log_comment FROM "
                                                   "custom_tag_table WHERE id > %1")
                                               .arg(1 + known.size()));
    QCOMPARE(values.count("1|3|6|D7|1|12|0|0|0|"), values.size());
    QCOMPARE(values.size(), added.size() - known.size());
}

void TagCopyingTest::copiesOfItself_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QList<int>>("ids");
    QTest::addColumn<QStringList>("added");
    QTest::newRow("its own name exists") << 1 << QList<int>({1, 1, 1}) << QStringList();
    QTest::newRow("its own name is doubled") << 2 << QList<int>({-1, -1, -1}) << QStringList();
    QTest::newRow("an id without a row") << 99 << QList<int>({99}) << QStringList();
    QTest::newRow("a row with an empty name") << 4 << QList<int>({4}) << QStringList();
    QTest::newRow("a row without a name") << 5 << QList<int>({5}) << QStringList();
    QTest::newRow("a name that is an expression and does not meet itself")
        << 6 << QList<int>({-1, -1, -1})
        << QStringList(
               {"9|a+|1|3|4|(null)|1|1|0|0|0|", "10|a+|1|3|4|(null)|1|1|0|0|0|", "11|a+|1|3|4|(null)|1|1|0|0|0|"});
    QTest::newRow("a system tag becomes rows on link 0")
        << 20022 << QList<int>({20022, 20022, 20022})
        << QStringList({"9|S>Year|1|0|5|(null)|1|1|0|0|0|", "10|S>Year|1|0|5|(null)|1|1|0|0|0|",
                        "11|S>Year|1|0|5|(null)|1|1|0|0|0|"});
    QTest::newRow("a text system tag becomes texts")
        << 20092 << QList<int>({20092, 20092, 20092})
        << QStringList({"9|S>IP_Address|1|0|8|(null)|1|1|0|0|0|", "10|S>IP_Address|1|0|8|(null)|1|1|0|0|0|",
                        "11|S>IP_Address|1|0|8|(null)|1|1|0|0|0|"});
    QTest::newRow("a system id without a tag") << 20094 << QList<int>({20094}) << QStringList();
    QTest::newRow("a recipe id without a tag") << 30000 << QList<int>({30000}) << QStringList();
}

void TagCopyingTest::copiesOfItself()
{
    QFETCH(int, id);
    QFETCH(QStringList, added);
    writeTags(key, {tag(1, "Tank"), tag(2, "twin"), tag(3, "twin"), tag(4, ""), tag(5, QString()), tag(6, "a+"),
                    tag(8, "last")});
    executeOn(key, "UPDATE custom_tag_table SET connector_id = 3, data_type = 4");
    TagSystem *tags = bound();
    QTEST(tags->addTags(id, 3), "ids");
    QCOMPARE(rowsOn(key, "SELECT * FROM custom_tag_table WHERE id > 8 ORDER BY id"), added);
    QCOMPARE(tags->getTagNames(), reloaded());
    // With a null name, the command is not used.
    QTEST(tags->addTags(id, qMakePair(QString(), command("D7", CommunicatorCommand::DoubleWord, 12)), 3), "ids");
    QCOMPARE(rowsOn(key, "SELECT * FROM custom_tag_table WHERE address = 'D7'"), QStringList());
}

void TagCopyingTest::copiesOfAnUnknownTag()
{
    TagSystem *tags = bound();
    QCOMPARE(tags->addTags(-4, qMakePair(QString("New"), command("D7", CommunicatorCommand::DoubleWord, 12)), 3),
             QList<int>({-4}));
    QCOMPARE(rowsOn(key, allRows), QStringList());
}

void TagCopyingTest::copiesOfATagWithoutAType()
{
    executeOn(key, "CREATE TABLE custom_tag_table (id INTEGER PRIMARY KEY, name TEXT)");
    executeOn(key, "INSERT INTO custom_tag_table VALUES (1, 'Tank')");
    TagSystem *tags = bound();
    const LogRecorder log;
    QCOMPARE(tags->addTags(1, qMakePair(QString("New"), command("D7", CommunicatorCommand::DoubleWord, 12)), 2),
             QList<int>({-1, -1}));
    const QStringList lines = log.lines();
    QCOMPARE(lines.size(), 2);
    QVERIFY(lines.first().startsWith("Add Tag error :  \""));
    QCOMPARE(lines.first(), lines.last());
    QCOMPARE(tags->getTagNames(), QStringList("Tank"));
}

void TagCopyingTest::copiesThatCannotBeInserted()
{
    writeTags(key, {tag(1, "Tank")});
    TagSystem *tags = bound();
    executeOn(key, "CREATE TRIGGER no BEFORE INSERT ON custom_tag_table "
                   "WHEN (SELECT count(*) FROM custom_tag_table) >= 3 BEGIN SELECT raise(ABORT, 'full'); END");
    LogRecorder log;
    QCOMPARE(tags->addTags(1, qMakePair(QString("New"), command("D7", CommunicatorCommand::DoubleWord, 12)), 4),
             QList<int>({-1, -1, -1, -1}));
    const QStringList lines = log.take();
    const QString error = errorOn(key, "INSERT INTO custom_tag_table (name) VALUES ('x')");
    QVERIFY(error.contains("full"));
    const QString line = "Add Tag error :  \"" + error + '"';
    QCOMPARE(lines, QStringList({line, line}));
    QCOMPARE(tags->getTagNames(), QStringList({"Tank", "New", "New"}));

    QCOMPARE(tags->addTags(1, qMakePair(QString("Other"), command("D7", CommunicatorCommand::DoubleWord, 12)), 1),
             QList<int>({-1}));
    QCOMPARE(log.take(), QStringList(line));
}

/// Other writes appear when the list is reloaded, at the end.
void TagCopyingTest::copiesGoByTheNamesAtTheStart()
{
    writeTags(key, {tag(1, "Tank")});
    TagSystem *tags = bound();
    executeOn(key, "INSERT INTO custom_tag_table (id, name) VALUES (2, 'New')");
    QCOMPARE(tags->addTags(1, qMakePair(QString("New"), command("D7", CommunicatorCommand::DoubleWord, 12)), 1),
             QList<int>({-1}));
    QCOMPARE(rowsOn(key, idsAndNames), QStringList({"1|Tank", "2|New", "3|New"}));
    executeOn(key, "DELETE FROM custom_tag_table WHERE name = 'New'");
    QCOMPARE(tags->addTags(1, qMakePair(QString("New"), command("D7", CommunicatorCommand::DoubleWord, 12)), 2),
             QList<int>({-1, -1}));
    QCOMPARE(rowsOn(key, idsAndNames), QStringList("1|Tank"));
    QCOMPARE(tags->getTagNames(), QStringList("Tank"));
}

QTEST_GUILESS_MAIN(TagCopyingTest)

#include "tst_tagwriting_copying.moc"
