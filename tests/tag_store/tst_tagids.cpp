// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/projectfixtures.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QTemporaryDir>
#include <QtTest>

#include <functional>
#include <memory>

namespace {

const QString key = QStringLiteral("7");

qint64 highestId()
{
    return rowsOn(key, "SELECT max(id) FROM custom_tag_table").first().toLongLong();
}

} // namespace

/// Tests that new tags never get the id of a system, recipe or recipe row tag; the database decides all other ids.
class TagIdsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void newIds_data();
    void newIds();
    void idsOfATableThatRemembers_data();
    void idsOfATableThatRemembers();
    void theDatabaseCountsOn();
    void aRunOverARange_data();
    void aRunOverARange();
    void idsInATransaction();
    void rowsThatStandThereStay();

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
};

void TagIdsTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_messages = std::make_unique<MessageRecorder>();
    makeProject(m_folder->filePath("project.db"), key);
}

void TagIdsTest::cleanup()
{
    QCOMPARE(m_messages->take(), QStringList());
    dropProjects();
    m_messages.reset();
    m_folder.reset();
}

void TagIdsTest::newIds_data()
{
    QTest::addColumn<qint64>("highest");
    QTest::addColumn<qint64>("expected");
    QTest::newRow("the first row") << qint64(0) << qint64(1);
    QTest::newRow("a small project") << qint64(7) << qint64(8);
    QTest::newRow("below the system tags") << qint64(19998) << qint64(19999);
    QTest::newRow("the first system id comes next") << qint64(19999) << qint64(21001);
    QTest::newRow("a row stands at the first system id") << qint64(20000) << qint64(21001);
    QTest::newRow("a row stands among the system tags") << qint64(20500) << qint64(21001);
    QTest::newRow("the last system id comes next") << qint64(20999) << qint64(21001);
    QTest::newRow("a row stands at the last system id") << qint64(21000) << qint64(21001);
    QTest::newRow("behind the system tags") << qint64(21001) << qint64(21002);
    QTest::newRow("below the recipe tags") << qint64(29998) << qint64(29999);
    QTest::newRow("the first recipe id comes next") << qint64(29999) << qint64(60001);
    QTest::newRow("a row stands among the recipe tags") << qint64(40000) << qint64(60001);
    QTest::newRow("the first recipe row id comes next") << qint64(50000) << qint64(60001);
    QTest::newRow("the last recipe row id comes next") << qint64(59999) << qint64(60001);
    QTest::newRow("a row stands at the last recipe row id") << qint64(60000) << qint64(60001);
    QTest::newRow("behind the recipe tags") << qint64(60001) << qint64(60002);
    QTest::newRow("a large project") << qint64(100000) << qint64(100001);
    QTest::newRow("negative ids only") << qint64(-5) << qint64(-4);
}

void TagIdsTest::newIds()
{
    QFETCH(qint64, highest);
    executeOn(key, tagTableStatement());
    TagSystem *tags = TagSystem::instance(key);
    const QList<std::function<void()>> additions = {
        [tags] { QVERIFY(tags->addTag("added", "D1", 0, 1, 1)); },
        [tags] { tags->addDafaultTag("added"); },
        [tags] { tags->addTags(20022, qMakePair(QString("added"), CommunicatorCommand()), 1); },
        [tags] { QVERIFY(tags->modifyTag("added", "D1", 0, 1, 1)); },
    };
    for (const auto &add : additions) {
        executeOn(key, "DELETE FROM custom_tag_table");
        if (highest != 0)
            executeOn(key, "INSERT INTO custom_tag_table (id, name) VALUES (?, 'there')", {highest});
        tags->refreshTagNames();
        add();
        const QStringList ids = rowsOn(key, "SELECT id FROM custom_tag_table WHERE name = 'added'");
        QCOMPARE(ids.size(), 1);
        QTEST(ids.first().toLongLong(), "expected");
        QCOMPARE(tags->getIdByTagName("added"), ids.first().toInt());
        QCOMPARE(tags->getTagNames().last(), QString("added"));
    }
}

void TagIdsTest::idsOfATableThatRemembers_data()
{
    QTest::addColumn<int>("deleted");
    QTest::addColumn<int>("expected");
    QTest::newRow("a small id") << 7 << 8;
    QTest::newRow("the last id before the system tags") << 19999 << 21001;
    QTest::newRow("the last system id") << 21000 << 21001;
    QTest::newRow("the last id before the recipe tags") << 29999 << 60001;
    QTest::newRow("a recipe row id") << 55555 << 60001;
}

/// A project's own table that never reuses an id continues after a deleted row.
void TagIdsTest::idsOfATableThatRemembers()
{
    QFETCH(int, deleted);
    executeOn(key, tagTableStatement().replace("INTEGER PRIMARY KEY", "INTEGER PRIMARY KEY AUTOINCREMENT"));
    executeOn(key, "INSERT INTO custom_tag_table (id, name) VALUES (3, 'stays'), (?, 'goes')", {deleted});
    executeOn(key, "DELETE FROM custom_tag_table WHERE name = 'goes'");
    TagSystem *tags = TagSystem::instance(key);
    QVERIFY(tags->addTag("added", "D1", 0, 1, 1));
    QTEST(tags->getIdByTagName("added"), "expected");
    QVERIFY(tags->addTag("next", "D1", 0, 1, 1));
    QCOMPARE(tags->getIdByTagName("next"), tags->getIdByTagName("added") + 1);
}

/// The database reuses the id of a deleted last row.
void TagIdsTest::theDatabaseCountsOn()
{
    TagSystem *tags = TagSystem::instance(key);
    QVERIFY(tags->addTag("one", "D1", 0, 1, 1));
    QVERIFY(tags->addTag("two", "D1", 0, 1, 1));
    executeOn(key, "DELETE FROM custom_tag_table WHERE id = 2");
    QVERIFY(tags->addTag("three", "D1", 0, 1, 1));
    QCOMPARE(tags->getIdByTagName("three"), 2);
    executeOn(key, "INSERT INTO custom_tag_table (id, name) VALUES (9223372036854775807, 'last')");
    QVERIFY(tags->addTag("somewhere", "D1", 0, 1, 1));
    QCOMPARE(tags->getTagNames().size(), 4);
}

void TagIdsTest::aRunOverARange_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("behind");
    QTest::newRow("the system tags") << 19989 << 21001;
    QTest::newRow("the recipe tags") << 29989 << 60001;
}

void TagIdsTest::aRunOverARange()
{
    QFETCH(int, before);
    QFETCH(int, behind);
    writeTags(key, {TagRow{before, "there"}});
    TagSystem *tags = TagSystem::instance(key);
    for (int number = 0; number < 20; ++number)
        QVERIFY(tags->addTag(QString("tag %1").arg(number), QString("D%1").arg(number), 0, 3, 1));
    QCOMPARE(highestId(), qint64(behind) + 9);
    for (int number = 0; number < 20; ++number) {
        const int id = tags->getIdByTagName(QString("tag %1").arg(number));
        QVERIFY(!tags->isNotNormalTag(id));
        bool ok = false;
        QCOMPARE(tags->getCommunicatorCommandByIndex(id, ok).address, QString("D%1").arg(number));
        QVERIFY(ok);
    }
}

void TagIdsTest::idsInATransaction()
{
    writeTags(key, {TagRow{19999, "there"}});
    TagSystem *tags = TagSystem::instance(key);
    executeOn(key, "BEGIN");
    QVERIFY(tags->addTag("taken back", "D1", 0, 1, 1));
    QCOMPARE(tags->getIdByTagName("taken back"), 21001);
    executeOn(key, "ROLLBACK");
    QVERIFY(tags->addTag("kept", "D1", 0, 1, 1));
    QCOMPARE(tags->getIdByTagName("kept"), 21001);
}

void TagIdsTest::rowsThatStandThereStay()
{
    writeTags(key, {TagRow{20000, "at a system id", 3, 1, "D1"}, TagRow{30000, "at a recipe id", 3, 1, "D2"}});
    TagSystem *tags = TagSystem::instance(key);
    QVERIFY(tags->addTag("added", "D3", 0, 1, 1));
    QVERIFY(tags->modifyTag("at a system id", "D4", 3, 1, 1));
    QCOMPARE(rowsOn(key, "SELECT id, name, address FROM custom_tag_table"),
             QStringList({"20000|at a system id|D4", "30000|at a recipe id|D2", "60001|added|D3"}));
}

QTEST_GUILESS_MAIN(TagIdsTest)
#include "tst_tagids.moc"
