// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/logrecorder.h"
#include "support/projecttest.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QtTest>

class TagRenamingTest : public ProjectTest
{
    Q_OBJECT

private Q_SLOTS:
    void renames_data();
    void renames();
    void renamesOfOtherKinds();
    void aRenameThatFails();
};

void TagRenamingTest::renames_data()
{
    QTest::addColumn<QStringList>("known");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("row");
    QTest::newRow("a free name") << QStringList() << "Foo"
                                 << "1|Foo";
    QTest::newRow("its own name") << QStringList() << "Tank"
                                  << "1|Tank";
    QTest::newRow("another case of its own name") << QStringList() << "TANK"
                                                  << "1|TANK";
    QTest::newRow("the name exists") << QStringList("Foo") << "Foo"
                                     << "1|Tank";
    QTest::newRow("a numbered form exists") << QStringList("Foo-3") << "Foo"
                                            << "1|Tank";
    QTest::newRow("a numbered form of zero exists") << QStringList("Foo-0") << "Foo"
                                                    << "1|Tank";
    QTest::newRow("something else behind the minus") << QStringList("Foo-x") << "Foo"
                                                     << "1|Foo";
    QTest::newRow("a minus alone") << QStringList("Foo-") << "Foo"
                                   << "1|Foo";
    QTest::newRow("another case exists") << QStringList("foo") << "Foo"
                                         << "1|Foo";
    QTest::newRow("a numbered name that is free") << QStringList("Foo") << "Foo-3"
                                                  << "1|Foo-3";
    QTest::newRow("an expression that meets a name") << QStringList("Foo") << "F.o"
                                                     << "1|Tank";
    QTest::newRow("an expression that does not meet itself") << QStringList("a+") << "a+"
                                                             << "1|a+";
    QTest::newRow("a broken expression") << QStringList() << "a("
                                         << "1|a(";
    QTest::newRow("an apostrophe") << QStringList() << "it's"
                                   << "1|it's";
    QTest::newRow("a place mark") << QStringList() << "%1%2%3"
                                  << "1|%1%2%3";
    QTest::newRow("a bind name") << QStringList() << ":name"
                                 << "1|:name";
    QTest::newRow("the name of a column is a name") << QStringList() << "address"
                                                    << "1|address";
    QTest::newRow("a system name is not refused") << QStringList() << "S>Year"
                                                  << "1|S>Year";
    QTest::newRow("an empty name") << QStringList() << ""
                                   << "1|";
}

void TagRenamingTest::renames()
{
    QFETCH(QStringList, known);
    QFETCH(QString, name);
    QFETCH(QString, row);
    TagRow first = tag(1, "Tank");
    first.address = "D1";
    QList<TagRow> rows = {first};
    for (const QString &one : qAsConst(known))
        rows.append(tag(0, one));
    writeTags(key, rows);
    TagSystem *tags = bound();
    const LogRecorder log;
    tags->setTagNameById(name, 1);
    QCOMPARE(log.lines(), QStringList());
    QCOMPARE(rowsOn(key, idsAndNames + " LIMIT 1"), QStringList(row));
    QCOMPARE(tags->getTagNames(), reloaded());
}

void TagRenamingTest::renamesOfOtherKinds()
{
    TagSystem *tags = bound();
    tags->addDafaultTag("Tank");
    for (const int id : {20022, 30000, 99, -1}) {
        tags->setTagNameById("Foo", id);
        QCOMPARE(rowsOn(key, idsAndNames), QStringList("1|Tank"));
    }
    QCOMPARE(tags->getTagNameById(20022), QStringLiteral("S>Year"));
    // The kind of an id is not tested: a row with such a number is renamed.
    writeTags(key, {tag(20022, "hidden")});
    tags->setTagNameById("Foo", 20022);
    QCOMPARE(rowsOn(key, idsAndNames), QStringList({"1|Tank", "20022|Foo"}));
    // A refused rename does not reload the names.
    executeOn(key, "UPDATE custom_tag_table SET name = 'Bar' WHERE id = 1");
    tags->setTagNameById("Foo", 1);
    QCOMPARE(tags->getTagNames(), QStringList({"Tank", "Foo"}));
}

void TagRenamingTest::aRenameThatFails()
{
    TagSystem *tags = bound();
    tags->addDafaultTag("Tank");
    LogRecorder log;
    executeOn(key, "INSERT INTO custom_tag_table (id, name) VALUES (5, 'by others')");
    tags->setTagNameById("a\"b", 1);
    QCOMPARE(log.take(), QStringList("\"update custom_tag_table set name = \\\"a\\\"b\\\" where id = 1\" "
                                     "\"a name holds no double quote and no zero character\""));
    QCOMPARE(rowsOn(key, idsAndNames), QStringList({"1|Tank", "5|by others"}));
    QCOMPARE(tags->getTagNames(), QStringList({"Tank", "by others"}));
}

QTEST_GUILESS_MAIN(TagRenamingTest)

#include "tst_tagwriting_renaming.moc"
