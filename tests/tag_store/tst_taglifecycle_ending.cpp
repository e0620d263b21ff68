// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/lifecycletest.h"
#include "support/logrecorder.h"
#include "support/projectfixtures.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QPointer>
#include <QSqlDatabase>
#include <QtTest>

/// Tests dropped or destroyed objects, and closed databases.
class TagEndingTest : public LifecycleTest
{
    Q_OBJECT

private Q_SLOTS:
    void dropEndsAllObjects();
    void dropWithoutObjects();
    void dropSkipsNullValues();
    void anObjectStaysInTheMapWhenItEnds();
    void theDestructorClosesTheConnection();

    void closingTheDatabase();
    void closingWhatWasNeverOpened();
    void closingLeavesAConnectionThatIsNotOpen();
    void aClosedObjectFailsQuietly();
};

void TagEndingTest::dropEndsAllObjects()
{
    makeProject(path("one.db"), key);
    makeProject(path("two.db"), otherKey);
    const QPointer<TagSystem> one = TagSystem::instance(key);
    const QPointer<TagSystem> two = TagSystem::instance(otherKey);
    const QPointer<TagSystem> none = TagSystem::instance(QString());
    const LogRecorder log;
    TagSystem::drop();
    QVERIFY(!one && !two && !none);
    QVERIFY(!TagSystem::s_instanceMap);
    QVERIFY(!QSqlDatabase::contains(key) && !QSqlDatabase::contains(otherKey));
    QCOMPARE(log.lines(), QStringList());

    openProject(path("one.db"), key);
    TagSystem *const again = TagSystem::instance(key);
    QVERIFY(again->addTag(QStringLiteral("Pump"), QStringLiteral("D1"), 1, 3, 1));
    QCOMPARE(again->getTagNames(), QStringList{QStringLiteral("Pump")});
    QCOMPARE(m_messages->take(), QStringList());
}

void TagEndingTest::dropWithoutObjects()
{
    TagSystem::drop();
    TagSystem::drop();
    QVERIFY(!TagSystem::s_instanceMap);
    QCOMPARE(m_messages->take(), QStringList());
}

void TagEndingTest::dropSkipsNullValues()
{
    const QPointer<TagSystem> none = TagSystem::instance(QString());
    TagSystem::s_instanceMap->insert(QStringLiteral("null"), nullptr);
    TagSystem::drop();
    QVERIFY(!none);
    QVERIFY(!TagSystem::s_instanceMap);
}

void TagEndingTest::anObjectStaysInTheMapWhenItEnds()
{
    TagSystem *const tags = TagSystem::instance(QString());
    delete tags;
    QCOMPARE(quintptr(TagSystem::s_instanceMap->value(QString())), quintptr(tags));
    TagSystem::s_instanceMap->clear();
}

void TagEndingTest::theDestructorClosesTheConnection()
{
    makeProject(path("project.db"), key);
    const LogRecorder log;
    {
        TagSystem tags(nullptr);
        QVERIFY(tags.init(key));
        QVERIFY(QSqlDatabase::contains(key));
        QCOMPARE(tags.getTagNameById(1), QString());
    }
    QVERIFY(!QSqlDatabase::contains(key));
    QCOMPARE(log.lines(), QStringList{QStringLiteral("--------------------- (\"4711\")")});
}

void TagEndingTest::closingTheDatabase()
{
    makeProject(path("project.db"), key);
    TagSystem *const tags = TagSystem::instance(key);
    QVERIFY(tags->addTag(QStringLiteral("Pump"), QStringLiteral("D1"), 1, 3, 1));
    QCOMPARE(tags->getTagNameById(1), QStringLiteral("Pump"));
    const LogRecorder log;
    tags->closeDatabase();
    QVERIFY(!QSqlDatabase::contains(key));
    QVERIFY(!tags->database().isOpen());
    tags->closeDatabase();
    QCOMPARE(log.lines(), QStringList());
    QCOMPARE(TagSystem::instance(key), tags);
    QCOMPARE(m_messages->take(), QStringList());

    openProject(path("project.db"), key);
    QCOMPARE(rowsOn(key, QStringLiteral("SELECT name FROM custom_tag_table")), QStringList{QStringLiteral("Pump")});
    QCOMPARE(rowsOn(key, QStringLiteral("PRAGMA integrity_check")), QStringList{QStringLiteral("ok")});
    tags->closeDatabase();
    QVERIFY2(QSqlDatabase::contains(key), "a later connection of the same name is another one's");
}

void TagEndingTest::closingWhatWasNeverOpened()
{
    const LogRecorder log;
    TagSystem tags(nullptr);
    tags.closeDatabase();
    TagSystem::instance(QString())->closeDatabase();
    QCOMPARE(log.lines(), QStringList());
    QCOMPARE(m_messages->take(), QStringList());
}

void TagEndingTest::closingLeavesAConnectionThatIsNotOpen()
{
    QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), key).setDatabaseName(m_folder->path());
    TagSystem *const tags = TagSystem::instance(key);
    tags->closeDatabase();
    QVERIFY(QSqlDatabase::contains(key));
    TagSystem::drop();
    QVERIFY(QSqlDatabase::contains(key));
}

void TagEndingTest::aClosedObjectFailsQuietly()
{
    makeProject(path("project.db"), key);
    writeTags(key, {{1, QStringLiteral("Pump")}});
    TagSystem *const tags = TagSystem::instance(key);
    QCOMPARE(tags->getTagNameById(1), QStringLiteral("Pump"));
    tags->closeDatabase();
    QCOMPARE(tags->getTagNameById(1), QString());
    QCOMPARE(tags->getCommunicatorID(1), -1);
    QCOMPARE(tags->getAllLinkID(), QList<int>());
    QCOMPARE(tags->getTagIDList(), QList<int>());
    QCOMPARE(tags->getTagNameById(20022), QStringLiteral("S>Year"));
    QCOMPARE(tags->getTagNames(), QStringList{QStringLiteral("Pump")});
    QCOMPARE(m_messages->take(), QStringList());
}

QTEST_MAIN(TagEndingTest)

#include "tst_taglifecycle_ending.moc"
