// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/projecttest.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QtTest>

namespace {

const QStringList insertFailed = {QStringLiteral("warning|Error|Insert tag error.")};

} // namespace

class TagModifyingTest : public ProjectTest
{
    Q_OBJECT

private Q_SLOTS:
    void modifiedTags_data();
    void modifiedTags();
    void modifyResetsWhatItDoesNotTake();
    void modifyChangesDoubledNames();
    void modifyWithoutANameOfATag_data();
    void modifyWithoutANameOfATag();
    void aTagThatCannotBeModified();
    void aNewTagThatCanBeInsertedOnly();
};

void TagModifyingTest::modifiedTags_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("link");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("scale");
    QTest::addColumn<QStringList>("rows");
    const QString known = "7|known|0|3|0|D1|1|1|0|0|0|";
    QTest::newRow("a new name is added and then modified")
        << "Tank"
        << "D100" << 2 << 4 << 5 << QStringList({known, "8|Tank|1|2|4|D100|1|5|0|0|0|"});
    QTest::newRow("a known name keeps its id")
        << "known"
        << "D100" << 2 << 4 << 5 << QStringList({"7|known|1|2|4|D100|1|5|0|0|0|"});
    QTest::newRow("the same values set the access")
        << "known"
        << "D1" << 3 << 0 << 1 << QStringList({"7|known|1|3|0|D1|1|1|0|0|0|"});
    QTest::newRow("another case is a new name")
        << "Known"
        << "" << 0 << 1 << 1 << QStringList({known, "8|Known|1|0|1||1|1|0|0|0|"});
    QTest::newRow("a null address is NULL")
        << "known" << QString() << 3 << 0 << 1 << QStringList({"7|known|1|3|0|(null)|1|1|0|0|0|"});
    QTest::newRow("an apostrophe in the name")
        << "it's"
        << "'" << 0 << 1 << 1 << QStringList({known, "8|it's|1|0|1|'|1|1|0|0|0|"});
}

void TagModifyingTest::modifiedTags()
{
    QFETCH(QString, name);
    QFETCH(QString, address);
    QFETCH(int, link);
    QFETCH(int, type);
    QFETCH(int, scale);
    executeOn(key, tagTableStatement());
    executeOn(key, "INSERT INTO custom_tag_table VALUES (7, 'known', 0, 3, 0, 'D1', 1, 1, 0, 0, 0, '')");
    TagSystem *tags = bound();
    QVERIFY(tags->modifyTag(name, address, link, type, scale));
    QTEST(rowsOn(key, allRows), "rows");
    QCOMPARE(tags->getTagNames(), reloaded());
}

void TagModifyingTest::modifyResetsWhatItDoesNotTake()
{
    executeOn(key, tagTableStatement());
    executeOn(key, "INSERT INTO custom_tag_table VALUES (7, 'a', 4, 1, 1, 'D1', 9, 1, 5, 6, 7, 'why'), "
                   "(8, 'b', 4, 1, 1, 'D1', 9, 1, 5, 6, 7, 'why')");
    QVERIFY(bound()->modifyTag("a", "D2", 2, 3, 4));
    QCOMPARE(rowsOn(key, allRows), QStringList({"7|a|1|2|3|D2|1|4|0|0|0|", "8|b|4|1|1|D1|9|1|5|6|7|why"}));
}

void TagModifyingTest::modifyChangesDoubledNames()
{
    writeTags(key, {tag(1, "twin"), tag(2, "one"), tag(3, "twin")});
    TagSystem *tags = bound();
    QVERIFY(tags->modifyTag("twin", "D2", 2, 3, 4));
    QCOMPARE(rowsOn(key, allRows),
             QStringList({"1|twin|1|2|3|D2|1|4|0|0|0|", "2|one|0|0|1||1|1|0|0|0|", "3|twin|1|2|3|D2|1|4|0|0|0|"}));
    QCOMPARE(tags->getTagNames(), QStringList({"twin", "one", "twin"}));
}

void TagModifyingTest::modifyWithoutANameOfATag_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isModified");
    QTest::newRow("an empty name") << "" << false;
    QTest::newRow("a null name") << QString() << false;
    QTest::newRow("a system name meets no row") << "S>Year" << true;
    QTest::newRow("a recipe name meets no row") << "r>1" << true;
}

void TagModifyingTest::modifyWithoutANameOfATag()
{
    QFETCH(QString, name);
    TagSystem *tags = bound();
    tags->addDafaultTag("known");
    QTEST(tags->modifyTag(name, "D2", 2, 3, 4), "isModified");
    QCOMPARE(rowsOn(key, allRows), QStringList("1|known|0|0|1||1|1|0|0|0|"));
}

void TagModifyingTest::aTagThatCannotBeModified()
{
    TagSystem *tags = bound();
    tags->addDafaultTag("known");
    executeOn(key, "CREATE TRIGGER no BEFORE UPDATE ON custom_tag_table BEGIN SELECT raise(ABORT, 'not so'); END");
    QVERIFY(!tags->modifyTag("known", "D2", 2, 3, 4));
    const QString error = errorOn(key, "UPDATE custom_tag_table SET access = 1");
    QVERIFY(error.contains("not so"));
    QCOMPARE(m_messages->take(), QStringList("warning|Modify tag error|" + error));
    QCOMPARE(rowsOn(key, allRows), QStringList("1|known|0|0|1||1|1|0|0|0|"));
    QCOMPARE(tags->getTagNames(), QStringList("known"));

    // A new name fails twice, and the second failure counts.
    executeOn(key, "DROP TABLE custom_tag_table");
    QVERIFY(!tags->modifyTag("new", "D2", 2, 3, 4));
    const QStringList messages = m_messages->take();
    QCOMPARE(messages.size(), 2);
    QCOMPARE(messages.mid(0, 1), insertFailed);
    QVERIFY(messages.at(1).startsWith("warning|Modify tag error|"));
    QVERIFY(messages.at(1) != "warning|Modify tag error|");
    QCOMPARE(tags->getTagNames(), QStringList("known"));
}

void TagModifyingTest::aNewTagThatCanBeInsertedOnly()
{
    TagSystem *tags = bound();
    executeOn(key, "CREATE TRIGGER no BEFORE UPDATE ON custom_tag_table BEGIN SELECT raise(ABORT, 'no'); END");
    QVERIFY(!tags->modifyTag("new", "D2", 2, 3, 4));
    QCOMPARE(m_messages->take().size(), 1);
    QCOMPARE(rowsOn(key, allRows), QStringList("1|new|0|2|3|D2|1|4|0|0|0|"));
    QCOMPARE(tags->getTagNames(), QStringList("new"));
    executeOn(key, "DROP TRIGGER no");
    executeOn(key, "CREATE TRIGGER no BEFORE INSERT ON custom_tag_table BEGIN SELECT raise(ABORT, 'no'); END");
    QVERIFY(tags->modifyTag("newer", "D2", 2, 3, 4));
    QCOMPARE(m_messages->take(), insertFailed);
    QCOMPARE(tags->getTagNames(), QStringList("new"));
}

QTEST_GUILESS_MAIN(TagModifyingTest)

#include "tst_tagwriting_modifying.moc"
