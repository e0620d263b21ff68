// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/lifecycletest.h"
#include "support/logrecorder.h"
#include "support/projectfixtures.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QtTest>

class StandAloneDatabaseTest : public LifecycleTest
{
    Q_OBJECT

private Q_SLOTS:
    void aStandAloneDatabaseIsMade();
    void aStandAloneDatabaseIsOpened();
    void aStandAloneDatabaseWithoutTheFolder();
    void aStandAloneDatabaseElsewhere();
    void aStandAloneDatabaseThatCannotBeOpened_data();
    void aStandAloneDatabaseThatCannotBeOpened();
    void aSecondStandAloneDatabase();
    void theFileOfAStandAloneDatabase();
    void theFileOfAStandAloneDatabaseCannotBeMade();
    void aFileThatIsThereIsKept();
};

void StandAloneDatabaseTest::aStandAloneDatabaseIsMade()
{
    const QString fileName = QStringLiteral("tags of a tool");
    QVERIFY(QDir().mkpath(databaseFolder()));
    const LogRecorder log;
    {
        TagSystem tags(nullptr);
        QVERIFY(tags.createDatabaseConnection(fileName));
        QCOMPARE(m_messages->take(), QStringList{noOpenDatabase});
        QVERIFY(tags.database().isOpen());
        QCOMPARE(tags.database().connectionName(), fileName);
        QCOMPARE(tags.database().driverName(), QStringLiteral("QSQLITE"));
        QCOMPARE(tags.database().databaseName(), databaseFolder() + QLatin1Char('/') + fileName);
        QCOMPARE(rowsOn(fileName, allTables), QStringList{QStringLiteral("custom_tag_table")});
        QVERIFY2(tags.getCustomTagTableAddressColumn() == 0, "the column lists are filled by init() only");
        QVERIFY(tags.addTag(QStringLiteral("Pump"), QStringLiteral("D1"), 1, 3, 1));
        QCOMPARE(tags.getTagNames(), QStringList{QStringLiteral("Pump")});
        QCOMPARE(m_messages->take(), QStringList());
    }
    QVERIFY(!QSqlDatabase::contains(fileName));
    QCOMPARE(log.lines(), QStringList());
}

void StandAloneDatabaseTest::aStandAloneDatabaseIsOpened()
{
    const QString fileName = QStringLiteral("known");
    QVERIFY(QDir().mkpath(databaseFolder()));
    makeProject(databaseFolder() + QStringLiteral("/known"), key);
    writeTags(key, {{1, QStringLiteral("Pump")}});
    closeProject(key);
    TagSystem tags(nullptr);
    QVERIFY(tags.createDatabaseConnection(fileName));
    QCOMPARE(m_messages->take(), QStringList());
    QCOMPARE(tags.getTagNameById(1), QStringLiteral("Pump"));
    QCOMPARE(tags.getTagNames(), QStringList());
    tags.refreshTagNames();
    QCOMPARE(tags.getTagNames(), QStringList{QStringLiteral("Pump")});
}

void StandAloneDatabaseTest::aStandAloneDatabaseWithoutTheFolder()
{
    const QString fileName = QStringLiteral("beside.tags");
    const QString beside = QDir(QCoreApplication::applicationDirPath()).filePath(fileName);
    QFile::remove(beside);
    QVERIFY(!QFileInfo::exists(databaseFolder()));
    TagSystem tags(nullptr);
    QVERIFY(tags.createDatabaseConnection(fileName));
    QCOMPARE(tags.database().databaseName(), beside);
    QCOMPARE(rowsOn(fileName, allTables), QStringList{QStringLiteral("custom_tag_table")});
    QVERIFY(!QFileInfo::exists(databaseFolder()));
    tags.closeDatabase();
    QVERIFY(QFile::remove(beside));
}

void StandAloneDatabaseTest::aStandAloneDatabaseElsewhere()
{
    const QString filePath = path("elsewhere.tags");
    TagSystem tags(nullptr);
    QVERIFY(tags.createDatabaseConnection(filePath));
    QCOMPARE(tags.database().connectionName(), filePath);
    QCOMPARE(tags.database().databaseName(), filePath);
    QVERIFY(QFileInfo::exists(filePath));
}

void StandAloneDatabaseTest::aStandAloneDatabaseThatCannotBeOpened_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QStringList>("messages");
    QTest::newRow("a file in a folder that is missing")
        << "missing/tags" << QStringList{fileNotMade, noOpenDatabase, standAloneNotOpened};
    QTest::newRow("a folder with the name of the file") << "folder" << QStringList{standAloneNotOpened};
}

void StandAloneDatabaseTest::aStandAloneDatabaseThatCannotBeOpened()
{
    QFETCH(QString, fileName);
    QFETCH(QStringList, messages);
    QVERIFY(QDir().mkpath(databaseFolder() + QStringLiteral("/folder")));
    TagSystem tags(nullptr);
    QVERIFY(!tags.createDatabaseConnection(fileName));
    QCOMPARE(m_messages->take(), messages);
    QVERIFY(!tags.database().isOpen());
    QVERIFY2(QSqlDatabase::contains(fileName), "the connection stays registered");
    tags.closeDatabase();
    QVERIFY(QSqlDatabase::contains(fileName));
}

void StandAloneDatabaseTest::aSecondStandAloneDatabase()
{
    QVERIFY(QDir().mkpath(databaseFolder()));
    TagSystem tags(nullptr);
    QVERIFY(tags.createDatabaseConnection(QStringLiteral("first")));
    QVERIFY(tags.addTag(QStringLiteral("Pump"), QStringLiteral("D1"), 1, 3, 1));
    m_messages->take();
    // The first database is still open when the second file is made, so that nothing is amiss.
    QVERIFY(tags.createDatabaseConnection(QStringLiteral("second")));
    QCOMPARE(m_messages->take(), QStringList());
    QCOMPARE(tags.database().connectionName(), QStringLiteral("second"));
    QCOMPARE(tags.getTagNameById(1), QString());
    QCOMPARE(rowsOn(QStringLiteral("second"), allTables), QStringList{QStringLiteral("custom_tag_table")});
    QVERIFY(QSqlDatabase::database(QStringLiteral("first"), false).isOpen());
    QCOMPARE(rowsOn(QStringLiteral("first"), QStringLiteral("SELECT name FROM custom_tag_table")),
             QStringList{QStringLiteral("Pump")});
}

void StandAloneDatabaseTest::theFileOfAStandAloneDatabase()
{
    const QString filePath = path("fresh.tags");
    TagSystem tags(nullptr);
    tags.initializeTagDatabase(filePath);
    QCOMPARE(m_messages->take(), QStringList{noOpenDatabase});
    QVERIFY(QFileInfo::exists(filePath));
    QCOMPARE(QFileInfo(filePath).size(), qint64(0));
    QVERIFY(!tags.database().isValid());
}

void StandAloneDatabaseTest::theFileOfAStandAloneDatabaseCannotBeMade()
{
    const QString filePath = path("missing/fresh.tags");
    const LogRecorder log;
    TagSystem tags(nullptr);
    tags.initializeTagDatabase(filePath);
    QCOMPARE(m_messages->take(), (QStringList{fileNotMade, noOpenDatabase}));
    QVERIFY(!QFileInfo::exists(filePath));

    makeProject(path("project.db"), key);
    QVERIFY(tags.init(key));
    executeOn(key, QStringLiteral("DROP TABLE custom_tag_table"));
    tags.initializeTagDatabase(filePath);
    QCOMPARE(m_messages->take(), QStringList{fileNotMade});
    QCOMPARE(rowsOn(key, allTables), (QStringList{"LINK", "NODE", "custom_tag_table"}));
}

void StandAloneDatabaseTest::aFileThatIsThereIsKept()
{
    QFile file(path("there.tags"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write("kept"), qint64(4));
    file.close();
    TagSystem tags(nullptr);
    tags.initializeTagDatabase(file.fileName());
    QCOMPARE(m_messages->take(), QStringList{noOpenDatabase});
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("kept"));
}

QTEST_MAIN(StandAloneDatabaseTest)

#include "tst_taglifecycle_standalone.moc"
