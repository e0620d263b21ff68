// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/lifecycletest.h"
#include "support/projectfixtures.h"
#include "support/threads.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QSqlDatabase>
#include <QtTest>

/// Tests the connection of an object: the thread's, the compiler's, and one that others change.
class TagConnectionsTest : public LifecycleTest
{
    Q_OBJECT

private Q_SLOTS:
    void theDatabaseOfTheMainThread();
    void theDatabaseOfAnotherThread();
    void theCompileConnectionServesEveryObject();
    void theCompileConnectionIsOpened();
    void theCompileConnectionComesAndGoes();
    void aConnectionThatIsClosedAndOpenedAgain();
    void aConnectionThatMovesToAnotherFile();
};

void TagConnectionsTest::theDatabaseOfTheMainThread()
{
    makeProject(path("one.db"), key);
    makeProject(path("two.db"), compiling);
    TagSystem *const tags = TagSystem::instance(key);
    QCOMPARE(tags->database().connectionName(), key);
    QVERIFY(!TagSystem::instance(QString())->database().isValid());
}

void TagConnectionsTest::theDatabaseOfAnotherThread()
{
    makeProject(path("one.db"), key);
    writeTags(key, {{1, QStringLiteral("own")}});
    TagSystem *const tags = TagSystem::instance(key);
    QStringList connections;
    QStringList names;
    const QString compiledPath = path("two.db");
    inAnotherThread([&connections, &names, &compiledPath, tags] {
        const auto note = [&connections, &names, tags] {
            connections.append(tags->database().connectionName());
            names.append(tags->getTagNameById(1));
        };
        note();
        makeProject(compiledPath, compiling);
        writeTags(compiling, {{1, QStringLiteral("compiled")}});
        note();
        closeProject(compiling);
        note();
    });
    QCOMPARE(connections, (QStringList{key, compiling, key}));
    QCOMPARE(names, (QStringList{"own", "compiled", "own"}));
    QCOMPARE(tags->database().connectionName(), key);
    QCOMPARE(m_messages->take(), QStringList());
}

void TagConnectionsTest::theCompileConnectionServesEveryObject()
{
    makeProject(path("one.db"), key);
    const QList<TagSystem *> objects{TagSystem::instance(key), TagSystem::instance(QString()),
                                     TagSystem::instance(QStringLiteral("no such connection"))};
    QCOMPARE(m_messages->take(), QStringList{noConnection});
    QStringList names;
    const QString compiledPath = path("two.db");
    inAnotherThread([&names, &compiledPath, &objects] {
        makeProject(compiledPath, compiling);
        writeTags(compiling, {{1, QStringLiteral("compiled")}});
        for (TagSystem *tags : objects)
            names.append(tags->getTagNameById(1));
        closeProject(compiling);
    });
    QCOMPARE(names, (QStringList{"compiled", "compiled", "compiled"}));
    for (TagSystem *tags : objects)
        QCOMPARE(tags->getTagNameById(1), QString());
}

void TagConnectionsTest::theCompileConnectionIsOpened()
{
    makeProject(path("one.db"), key);
    TagSystem *const tags = TagSystem::instance(key);
    bool isOpen = false;
    const QString compiledPath = path("two.db");
    inAnotherThread([&isOpen, &compiledPath, tags] {
        makeProject(compiledPath, compiling);
        QSqlDatabase::database(compiling, false).close();
        isOpen = tags->database().isOpen();
        closeProject(compiling);
    });
    QVERIFY(isOpen);
}

void TagConnectionsTest::theCompileConnectionComesAndGoes()
{
    makeProject(path("one.db"), key);
    writeTags(key, {{1, QStringLiteral("own")}});
    TagSystem *const tags = TagSystem::instance(key);
    QStringList names;
    QStringList lists;
    const QString compiledPath = path("compiled.db");
    for (int i = 0; i < 10; ++i) {
        inAnotherThread([&names, &lists, &compiledPath, tags, i] {
            makeProject(compiledPath, compiling);
            writeTags(compiling, {{1, QStringLiteral("compiled %1").arg(i)}});
            names.append(tags->getTagNameById(1));
            tags->refreshTagNames();
            lists.append(tags->getTagNames());
            closeProject(compiling);
        });
        QCOMPARE(tags->getTagNameById(1), QStringLiteral("own"));
    }
    const QStringList expected{"compiled 0", "compiled 1", "compiled 2", "compiled 3", "compiled 4",
                               "compiled 5", "compiled 6", "compiled 7", "compiled 8", "compiled 9"};
    QCOMPARE(names, expected);
    QCOMPARE(lists, expected);
    QCOMPARE(m_messages->take(), QStringList());
}

void TagConnectionsTest::aConnectionThatIsClosedAndOpenedAgain()
{
    makeProject(path("project.db"), key);
    writeTags(key, {{1, QStringLiteral("Pump")}});
    TagSystem *const tags = TagSystem::instance(key);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(tags->getTagNameById(1), QStringLiteral("Pump"));
        QCOMPARE(tags->getTagIDList(), QList<int>{1});
        QSqlDatabase::database(key, false).close();
        QCOMPARE(tags->getTagNameById(1), QString());
        QCOMPARE(tags->getTagIDList(), QList<int>());
        QVERIFY(QSqlDatabase::database(key, false).open());
    }
    QCOMPARE(tags->getTagNameById(1), QStringLiteral("Pump"));
    QCOMPARE(m_messages->take(), QStringList());
}

void TagConnectionsTest::aConnectionThatMovesToAnotherFile()
{
    makeProject(path("two.db"), key);
    writeTags(key, {{1, QStringLiteral("two")}});
    makeProject(path("one.db"), key);
    writeTags(key, {{1, QStringLiteral("one")}});
    TagSystem *const tags = TagSystem::instance(key);
    QCOMPARE(tags->getTagNameById(1), QStringLiteral("one"));
    {
        QSqlDatabase db = QSqlDatabase::database(key, false);
        db.close();
        db.setDatabaseName(path("two.db"));
        QVERIFY(db.open());
    }
    QCOMPARE(tags->getTagNameById(1), QStringLiteral("two"));
    QCOMPARE(tags->getTagNames(), QStringList{QStringLiteral("one")});
    QVERIFY(tags->addTag(QStringLiteral("more"), QStringLiteral("D1"), 1, 3, 1));
    QCOMPARE(tags->getTagNames(), (QStringList{"two", "more"}));
}

QTEST_MAIN(TagConnectionsTest)

#include "tst_taglifecycle_connections.moc"
