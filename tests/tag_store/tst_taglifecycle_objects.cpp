// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/lifecycletest.h"
#include "support/logrecorder.h"
#include "support/projectfixtures.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QPoint>
#include <QSqlDatabase>
#include <QtTest>

#include <limits>

/// Tests which object a key or the current project returns, and its initial state.
class TagObjectsTest : public LifecycleTest
{
    Q_OBJECT

private Q_SLOTS:
    void theClassHasNoExtras();
    void anObjectWithoutADatabase();

    void anEmptyKeyGivesOneObjectWithoutADatabase();
    void aKeyGivesTheObjectOfItsConnection();
    void anUnknownKeyGivesADeadObject();
    void aKeyWhoseFileCannotBeOpened();
    void aClosedConnectionIsOpened();
    void objectsOfTwoProjects();
    void theMapHandsOutWhatItHolds();

    void withoutAProjectThereIsNoObject();
    void theObjectOfTheCurrentProject();
    void theKeyOfTheCurrentProject_data();
    void theKeyOfTheCurrentProject();

    void initTellsWhetherThereIsAConnection();
    void initReadsTheNames();
    void initAgainBindsToAnotherProject();
};

void TagObjectsTest::theClassHasNoExtras()
{
    const QMetaObject &meta = TagSystem::staticMetaObject;
    QCOMPARE(meta.className(), "TagSystem");
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
    QCOMPARE(meta.methodCount(), QObject::staticMetaObject.methodCount());
    QCOMPARE(meta.propertyCount(), QObject::staticMetaObject.propertyCount());
    QCOMPARE(meta.enumeratorCount(), 0);
}

void TagObjectsTest::anObjectWithoutADatabase()
{
    QObject parent;
    auto *const tags = new TagSystem(&parent);
    QCOMPARE(tags->parent(), &parent);
    QVERIFY(!tags->database().isValid());
    QCOMPARE(tags->getTagNameById(20022), QStringLiteral("S>Year"));
    QCOMPARE(tags->getTagNames(), QStringList());
    QCOMPARE(tags->getTagNameById(1), QString());
    QVERIFY2(!TagSystem::s_instanceMap, "only instance() fills the map");
    QCOMPARE(m_messages->take(), QStringList());
}

void TagObjectsTest::anEmptyKeyGivesOneObjectWithoutADatabase()
{
    const LogRecorder log;
    TagSystem *const tags = TagSystem::instance(QString());
    QVERIFY(tags);
    QCOMPARE(TagSystem::instance(QStringLiteral("")), tags);
    QCOMPARE(TagSystem::s_instanceMap->size(), 1);
    QCOMPARE(TagSystem::s_instanceMap->value(QString()), tags);
    QVERIFY(!tags->database().isValid());
    QVERIFY(!tags->parent());
    QCOMPARE(log.lines(), QStringList());
    QCOMPARE(tags->getTagNames(), QStringList());
    QCOMPARE(tags->getIdByTagName(QStringLiteral("S>NULL")), 20999);
    QCOMPARE(tags->dataTypeList().size(), 12);
    QCOMPARE(m_messages->take(), QStringList());
}

void TagObjectsTest::aKeyGivesTheObjectOfItsConnection()
{
    makeProject(path("project.db"), key);
    const LogRecorder log;
    TagSystem *const tags = TagSystem::instance(key);
    QVERIFY(tags);
    QCOMPARE(log.lines(), QStringList{QStringLiteral("--------------------- (\"4711\")")});
    QCOMPARE(TagSystem::instance(key), tags);
    QCOMPARE(log.lines().size(), 1);
    QCOMPARE(TagSystem::s_instanceMap->keys(), QStringList{key});
    QCOMPARE(tags->database().connectionName(), key);
    QVERIFY(tags->database().isOpen());
    QVERIFY(!tags->parent());
    QCOMPARE(rowsOn(key, allTables), (QStringList{"LINK", "NODE", "custom_tag_table"}));
    QCOMPARE(tags->getCustomTagTableAddressColumn(), 5);
    QCOMPARE(tags->getTagNames(), QStringList());
    QCOMPARE(m_messages->take(), QStringList());
}

void TagObjectsTest::anUnknownKeyGivesADeadObject()
{
    const LogRecorder log;
    TagSystem *const tags = TagSystem::instance(key);
    QVERIFY(tags);
    QCOMPARE(m_messages->take(), QStringList{noConnection});
    QCOMPARE(log.lines(), QStringList());
    makeProject(path("project.db"), key);
    QCOMPARE(TagSystem::instance(key), tags);
    QCOMPARE(m_messages->take(), QStringList());
    QVERIFY2(!tags->database().isValid(), "a second request does not try again");
    QCOMPARE(rowsOn(key, allTables), (QStringList{"LINK", "NODE"}));
    QCOMPARE(tags->getCustomTagTableAddressColumn(), 0);
    QCOMPARE(tags->getTagNames(), QStringList());
    QCOMPARE(tags->getTagNameById(20022), QStringLiteral("S>Year"));
}

void TagObjectsTest::aKeyWhoseFileCannotBeOpened()
{
    QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), key).setDatabaseName(m_folder->path());
    const LogRecorder log;
    TagSystem *const tags = TagSystem::instance(key);
    QVERIFY(tags);
    QCOMPARE(m_messages->take(), QStringList{notOpened});
    QCOMPARE(log.ownLines(), QStringList());
    QVERIFY(tags->database().isValid());
    QVERIFY(!tags->database().isOpen());
    QCOMPARE(tags->getCustomTagTableAddressColumn(), 5);
    QCOMPARE(tags->getTagNames(), QStringList());
    QCOMPARE(TagSystem::instance(key), tags);
    QCOMPARE(m_messages->take(), QStringList());
}

void TagObjectsTest::aClosedConnectionIsOpened()
{
    makeProject(path("project.db"), key);
    writeTags(key, {{1, QStringLiteral("Pump")}});
    QSqlDatabase::database(key, false).close();
    TagSystem *const tags = TagSystem::instance(key);
    QVERIFY(tags->database().isOpen());
    QCOMPARE(tags->getTagNames(), QStringList{QStringLiteral("Pump")});
    QCOMPARE(m_messages->take(), QStringList());
}

void TagObjectsTest::objectsOfTwoProjects()
{
    makeProject(path("one.db"), key);
    makeProject(path("two.db"), otherKey);
    writeTags(key, {{1, QStringLiteral("one")}});
    writeTags(otherKey, {{1, QStringLiteral("two")}});
    TagSystem *const one = TagSystem::instance(key);
    TagSystem *const two = TagSystem::instance(otherKey);
    QVERIFY(one != two);
    QCOMPARE(one->getTagNames(), QStringList{QStringLiteral("one")});
    QCOMPARE(two->getTagNames(), QStringList{QStringLiteral("two")});
    QCOMPARE(one->getTagNameById(1), QStringLiteral("one"));
    QCOMPARE(two->getTagNameById(1), QStringLiteral("two"));
    QVERIFY(one->addTag(QStringLiteral("more"), QStringLiteral("D1"), 1, 3, 1));
    QCOMPARE(two->getTagNames(), QStringList{QStringLiteral("two")});
    QCOMPARE(TagSystem::s_instanceMap->keys(), (QStringList{key, otherKey}));
}

void TagObjectsTest::theMapHandsOutWhatItHolds()
{
    TagSystem::instance(QString());
    TagSystem::s_instanceMap->insert(QStringLiteral("null"), nullptr);
    QCOMPARE(TagSystem::instance(QStringLiteral("null")), static_cast<TagSystem *>(nullptr));
    auto *const own = new TagSystem(nullptr);
    TagSystem::s_instanceMap->insert(QStringLiteral("own"), own);
    QCOMPARE(TagSystem::instance(QStringLiteral("own")), own);
    QCOMPARE(m_messages->take(), QStringList());
}

void TagObjectsTest::withoutAProjectThereIsNoObject()
{
    const LogRecorder log;
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(TagSystem::instance(), static_cast<TagSystem *>(nullptr));
        QCOMPARE(m_messages->take(), QStringList{noProject});
    }
    QVERIFY2(!TagSystem::s_instanceMap, "no object is made");
    QCOMPARE(log.lines(), QStringList());
}

void TagObjectsTest::theObjectOfTheCurrentProject()
{
    makeProject(path("one.db"), key);
    makeProject(path("two.db"), otherKey);
    setCurrentProject(quint64(4711));
    TagSystem *const one = TagSystem::instance();
    QVERIFY(one);
    QCOMPARE(one->database().connectionName(), key);
    QCOMPARE(TagSystem::instance(), one);
    QCOMPARE(TagSystem::instance(key), one);
    setCurrentProject(quint64(4712));
    TagSystem *const two = TagSystem::instance();
    QVERIFY(two && two != one);
    QCOMPARE(two->database().connectionName(), otherKey);
    setCurrentProject(quint64(4711));
    QCOMPARE(TagSystem::instance(), one);
    setCurrentProject(QVariant());
    QCOMPARE(TagSystem::instance(), static_cast<TagSystem *>(nullptr));
    QCOMPARE(m_messages->take(), QStringList{noProject});
}

void TagObjectsTest::theKeyOfTheCurrentProject_data()
{
    QTest::addColumn<QVariant>("project");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a pointer as a number") << QVariant(Q_UINT64_C(140737488355328)) << "140737488355328";
    QTest::newRow("the highest number") << QVariant(std::numeric_limits<quint64>::max()) << "18446744073709551615";
    QTest::newRow("zero") << QVariant(quint64(0)) << "0";
    QTest::newRow("an int") << QVariant(17) << "17";
    QTest::newRow("a negative number wraps") << QVariant(-1) << "18446744073709551615";
    QTest::newRow("a text of digits") << QVariant(QStringLiteral("77")) << "77";
    QTest::newRow("a text that is no number") << QVariant(QStringLiteral("project")) << "0";
    QTest::newRow("a hexadecimal text") << QVariant(QStringLiteral("0x10")) << "0";
    QTest::newRow("a value that is no number at all") << QVariant(QPoint(1, 2)) << "0";
    QTest::newRow("an empty value of a type") << QVariant(QVariant::ULongLong) << "0";
}

void TagObjectsTest::theKeyOfTheCurrentProject()
{
    QFETCH(QVariant, project);
    QFETCH(QString, expected);
    makeProject(path("project.db"), expected);
    setCurrentProject(project);
    TagSystem *const tags = TagSystem::instance();
    QVERIFY(tags);
    QCOMPARE(TagSystem::s_instanceMap->keys(), QStringList{expected});
    QCOMPARE(tags->database().connectionName(), expected);
    QCOMPARE(m_messages->take(), QStringList());
}

void TagObjectsTest::initTellsWhetherThereIsAConnection()
{
    TagSystem tags(nullptr);
    LogRecorder log;
    QVERIFY(!tags.init(key));
    QCOMPARE(m_messages->take(), QStringList{noConnection});
    QCOMPARE(tags.getCustomTagTableAddressColumn(), 0);
    QCOMPARE(log.take(), QStringList());

    QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), otherKey).setDatabaseName(m_folder->path());
    QVERIFY2(tags.init(otherKey), "the connection is there, though it cannot be opened");
    QCOMPARE(m_messages->take(), QStringList{notOpened});
    QCOMPARE(tags.getCustomTagTableAddressColumn(), 5);
    QCOMPARE(log.ownLines(), QStringList());
    QSqlDatabase::removeDatabase(otherKey);

    makeProject(path("project.db"), key);
    log.take();
    QVERIFY(tags.init(key));
    QCOMPARE(m_messages->take(), QStringList());
    QCOMPARE(log.lines(), QStringList{QStringLiteral("--------------------- (\"4711\")")});
    QVERIFY2(!TagSystem::s_instanceMap, "only instance() fills the map");
}

void TagObjectsTest::initReadsTheNames()
{
    makeProject(path("project.db"), key);
    writeTags(key, {{1, QStringLiteral("Pump")}, {2, QStringLiteral("Valve")}});
    TagSystem tags(nullptr);
    QVERIFY(tags.init(key));
    QCOMPARE(tags.getTagNames(), (QStringList{"Pump", "Valve"}));
    QVERIFY(!tags.isNewTag(QStringLiteral("Pump")));
}

void TagObjectsTest::initAgainBindsToAnotherProject()
{
    makeProject(path("one.db"), key);
    makeProject(path("two.db"), otherKey);
    writeTags(key, {{1, QStringLiteral("one")}});
    writeTags(otherKey, {{1, QStringLiteral("two")}});
    TagSystem tags(nullptr);
    QVERIFY(tags.init(key));
    QCOMPARE(tags.getTagNameById(1), QStringLiteral("one"));
    QVERIFY(tags.init(otherKey));
    QCOMPARE(tags.getTagNames(), QStringList{QStringLiteral("two")});
    QCOMPARE(tags.getTagNameById(1), QStringLiteral("two"));
    QCOMPARE(tags.database().connectionName(), otherKey);
    QVERIFY2(QSqlDatabase::database(key, false).isOpen(), "the first connection is left as it is");
    QVERIFY(tags.init(key));
    QCOMPARE(tags.getTagNames(), QStringList{QStringLiteral("one")});
    QCOMPARE(tags.getTagNameById(1), QStringLiteral("one"));
}

QTEST_MAIN(TagObjectsTest)

#include "tst_taglifecycle_objects.moc"
