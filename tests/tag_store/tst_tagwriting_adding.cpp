// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/projecttest.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QtTest>

namespace {

const QStringList insertFailed = {QStringLiteral("warning|Error|Insert tag error.")};

} // namespace

class TagAddingTest : public ProjectTest
{
    Q_OBJECT

private Q_SLOTS:
    void defaultTags_data();
    void defaultTags();
    void aDefaultTagThatCannotBeInserted();

    void addedTags_data();
    void addedTags();
    void refusedTags_data();
    void refusedTags();
    void aTagThatCannotBeInserted();
    void idsAreCounted();
};

void TagAddingTest::defaultTags_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("rows");
    const QString known = "1|known|0|3|0||1|1|0|0|0|";
    QTest::newRow("a new name") << "Tank" << QStringList({known, "2|Tank|0|0|1||1|1|0|0|0|"});
    QTest::newRow("another case of a known name") << "KNOWN" << QStringList({known, "2|KNOWN|0|0|1||1|1|0|0|0|"});
    QTest::newRow("a known name") << "known" << QStringList(known);
    QTest::newRow("an empty name") << "" << QStringList(known);
    QTest::newRow("a null name") << QString() << QStringList(known);
    QTest::newRow("a system name") << "S>Year" << QStringList(known);
    QTest::newRow("a system name in small letters") << "s>x" << QStringList(known);
    QTest::newRow("a recipe name") << "R>1_1" << QStringList(known);
    QTest::newRow("a recipe name in small letters") << "r>" << QStringList(known);
}

void TagAddingTest::defaultTags()
{
    QFETCH(QString, name);
    QFETCH(QStringList, rows);
    TagSystem *tags = bound();
    QVERIFY(tags->addTag("known", "", 3, 0, 1));
    tags->addDafaultTag(name);
    QCOMPARE(rowsOn(key, allRows), rows);
    QCOMPARE(tags->getTagNames(), reloaded());
    tags->addDafaultTag(name);
    QCOMPARE(rowsOn(key, allRows), rows);
}

void TagAddingTest::aDefaultTagThatCannotBeInserted()
{
    TagSystem *tags = bound();
    tags->addDafaultTag("one");
    executeOn(key, "CREATE TRIGGER no BEFORE INSERT ON custom_tag_table BEGIN SELECT raise(ABORT, 'no'); END");
    executeOn(key, "UPDATE custom_tag_table SET name = 'renamed'");
    tags->addDafaultTag("two");
    QCOMPARE(m_messages->take(), insertFailed);
    QCOMPARE(tags->getTagNames(), QStringList("renamed"));

    executeOn(key, "DROP TABLE custom_tag_table");
    tags->addDafaultTag("three");
    const QString error = errorOn(key, "select name,id from custom_tag_table");
    QVERIFY(error.contains("no such table: custom_tag_table"));
    QCOMPARE(m_messages->take(), insertFailed + QStringList("warning|Read Database error|" + error));
    QCOMPARE(tags->getTagNames(), QStringList());
}

void TagAddingTest::addedTags_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("link");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("scale");
    QTest::addColumn<QString>("row");
    QTest::newRow("a tag of a device") << "Tank"
                                       << "1-D100" << 2 << 4 << 1 << "1|Tank|0|2|4|1-D100|1|1|0|0|0|";
    QTest::newRow("an internal text") << "Text"
                                      << "" << 0 << 11 << 40 << "1|Text|0|0|11||1|40|0|0|0|";
    QTest::newRow("numbers are not checked") << "x"
                                             << "y" << -5 << 99 << -1 << "1|x|0|-5|99|y|1|-1|0|0|0|";
    QTest::newRow("a null address is NULL") << "x" << QString() << 0 << 0 << 0 << "1|x|0|0|0|(null)|1|0|0|0|0|";
    QTest::newRow("a place mark in the name") << "%1"
                                              << "%2" << 0 << 0 << 0 << "1|%1|0|0|0|%2|1|0|0|0|0|";
    QTest::newRow("a bind name in the name") << ":access"
                                             << ":name" << 0 << 0 << 7 << "1|:access|0|0|0|:name|1|7|0|0|0|";
    QTest::newRow("a question mark in the name") << "?"
                                                 << "?" << 0 << 0 << 7 << "1|?|0|0|0|?|1|7|0|0|0|";
    QTest::newRow("quotes in the name") << "a'b\"c"
                                        << "'" << 0 << 0 << 7 << "1|a'b\"c|0|0|0|'|1|7|0|0|0|";
    QTest::newRow("a blank is a name") << " "
                                       << "" << 0 << 0 << 7 << "1| |0|0|0||1|7|0|0|0|";
    QTest::newRow("a system prefix further on") << "xS>Year"
                                                << "" << 0 << 0 << 7 << "1|xS>Year|0|0|0||1|7|0|0|0|";
}

void TagAddingTest::addedTags()
{
    QFETCH(QString, name);
    QFETCH(QString, address);
    QFETCH(int, link);
    QFETCH(int, type);
    QFETCH(int, scale);
    TagSystem *tags = bound();
    QVERIFY(tags->addTag(name, address, link, type, scale));
    const QStringList rows = rowsOn(key, allRows);
    QCOMPARE(rows.size(), 1);
    QTEST(rows.first(), "row");
    QCOMPARE(tags->getTagNames(), QStringList(name));
    QVERIFY(!tags->isNewTag(name));
}

void TagAddingTest::refusedTags_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a system name") << "S>Year";
    QTest::newRow("a system name without a tag") << "S>Mine";
    QTest::newRow("a system name in small letters") << "s>Year";
    QTest::newRow("a recipe name") << "R>1_1I1";
    QTest::newRow("a recipe name in small letters") << "r>1";
    QTest::newRow("an empty name") << "";
    QTest::newRow("a null name") << QString();
    QTest::newRow("a known name") << "known";
}

void TagAddingTest::refusedTags()
{
    QFETCH(QString, name);
    TagSystem *tags = bound();
    tags->addDafaultTag("known");
    // No statement is run: it would fail, and say so.
    executeOn(key, "ALTER TABLE custom_tag_table RENAME TO kept");
    QVERIFY(!tags->addTag(name, "D1", 1, 1, 1));
    QCOMPARE(tags->getTagNames(), QStringList("known"));
    executeOn(key, "ALTER TABLE kept RENAME TO custom_tag_table");
    QCOMPARE(rowsOn(key, idsAndNames), QStringList("1|known"));
}

void TagAddingTest::aTagThatCannotBeInserted()
{
    TagSystem *tags = bound();
    QVERIFY(tags->addTag("one", "", 0, 1, 1));
    executeOn(key, "CREATE TRIGGER no BEFORE INSERT ON custom_tag_table BEGIN SELECT raise(ABORT, 'no'); END");
    executeOn(key, "UPDATE custom_tag_table SET name = 'renamed'");
    QVERIFY(!tags->addTag("two", "", 0, 1, 1));
    QCOMPARE(m_messages->take(), insertFailed);
    QCOMPARE(tags->getTagNames(), QStringList("one"));
    executeOn(key, "DROP TRIGGER no");
    QVERIFY(tags->addTag("two", "", 0, 1, 1));
    QCOMPARE(tags->getTagNames(), QStringList({"renamed", "two"}));
}

void TagAddingTest::idsAreCounted()
{
    writeTags(key, {tag(-5, "negative"), tag(70000, "high")});
    TagSystem *tags = bound();
    QVERIFY(tags->addTag("next", "", 0, 1, 1));
    executeOn(key, "DELETE FROM custom_tag_table WHERE id > 0");
    QVERIFY(tags->addTag("again", "", 0, 1, 1));
    QCOMPARE(rowsOn(key, idsAndNames), QStringList({"-5|negative", "-4|again"}));
    QCOMPARE(tags->getTagNames(), QStringList({"negative", "again"}));
}

QTEST_GUILESS_MAIN(TagAddingTest)

#include "tst_tagwriting_adding.moc"
