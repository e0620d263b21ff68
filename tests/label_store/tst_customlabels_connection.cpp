// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/customlabelstest.h"
#include "support/logrecorder.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QtTest>

class CustomLabelsConnectionTest : public CustomLabelsTest
{
    Q_OBJECT

private Q_SLOTS:
    void aConnectionMakesTheFileAndItsTable();
    void anOpenConnectionIsLeftAlone();
    void anExistingTableIsKept();
    void theTableIsLookedForInItsExactCase();
    void withoutTheFolderTheFileLiesBesideTheProgram();
    void aFileThatCannotBeOpened();

    void theConnectionStaysAfterAFailureOnly();
    void removingTheDatabaseRemovesTheConnection();
};

void CustomLabelsConnectionTest::aConnectionMakesTheFileAndItsTable()
{
    QDir().mkpath(databaseFolder());
    const LogRecorder log;
    {
        QSqlDatabase db;
        QVERIFY(label::createCustomDatabaseConnection(db));
        QVERIFY(db.isOpen());
        QCOMPARE(db.connectionName(), customConnection);
        QCOMPARE(db.driverName(), QStringLiteral("QSQLITE"));
        QCOMPARE(db.databaseName(), QFileInfo(customPath()).absoluteFilePath());
    }
    QCOMPARE(customRows(QStringLiteral("SELECT sql FROM sqlite_master")), QStringList{indexStatement});
    QCOMPARE(customRows(allOfIndex), QStringList());
    QCOMPARE(log.lines(), QStringList());
}

void CustomLabelsConnectionTest::anOpenConnectionIsLeftAlone()
{
    const QString name = QStringLiteral("a connection of the test");
    QDir().mkpath(databaseFolder());
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setDatabaseName(QStringLiteral(":memory:"));
        QVERIFY(db.open());
        QVERIFY(label::createCustomDatabaseConnection(db));
        QCOMPARE(db.connectionName(), name);
        QCOMPARE(db.databaseName(), QStringLiteral(":memory:"));
        QCOMPARE(db.tables(QSql::Tables), QStringList());
    }
    QSqlDatabase::removeDatabase(name);
    QVERIFY(!QFileInfo::exists(customPath()));
    QVERIFY(!QSqlDatabase::contains(customConnection));
}

void CustomLabelsConnectionTest::anExistingTableIsKept()
{
    const QString statement = QStringLiteral("CREATE TABLE table_index (device_table, general_table, name, note)");
    changeCustomDatabase({statement, QStringLiteral("INSERT INTO table_index VALUES ('d', 'g', 'A', 'kept')")});
    QSqlDatabase db;
    QVERIFY(label::createCustomDatabaseConnection(db));
    QCOMPARE(customRows(QStringLiteral("SELECT sql FROM sqlite_master")), QStringList{statement});
    QCOMPARE(customRows(allOfIndex), QStringList{QStringLiteral("d|g|A|kept")});
}

void CustomLabelsConnectionTest::theTableIsLookedForInItsExactCase()
{
    changeCustomDatabase({QStringLiteral("CREATE TABLE TABLE_INDEX (name, general_table, device_table)")});
    const LogRecorder log;
    QSqlDatabase db;
    QVERIFY2(label::createCustomDatabaseConnection(db), "that the table cannot be made is not told");
    QCOMPARE(customTables(), QStringList{QStringLiteral("TABLE_INDEX")});
    QCOMPARE(log.lines(), QStringList());
}

void CustomLabelsConnectionTest::withoutTheFolderTheFileLiesBesideTheProgram()
{
    QVERIFY(!QFileInfo::exists(databaseFolder()));
    writeDriverDatabase(fileBesideTheProgram("drivers"), {driver(QStringLiteral("A"))});
    QVERIFY(setup(QStringLiteral("A")));
    QVERIFY(QFileInfo::exists(fileBesideTheProgram("customdrivers")));
    QVERIFY(!QFileInfo::exists(databaseFolder()));
    QVERIFY(build(QStringLiteral("A")));
}

void CustomLabelsConnectionTest::aFileThatCannotBeOpened()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("A"))});
    QVERIFY(QDir().mkpath(customPath()));
    const QString line = QStringLiteral("\"Can't open label database %1\"").arg(customPath());
    LogRecorder log;
    {
        QSqlDatabase db;
        QVERIFY(!label::createCustomDatabaseConnection(db));
        QVERIFY(!db.isOpen());
    }
    QCOMPARE(log.ownLines(), QStringList{line});

    log.take();
    QVERIFY(!build(QStringLiteral("A")));
    QCOMPARE(m_error, noConnection);
    QCOMPARE(log.ownLines(), QStringList{line});

    log.take();
    QVERIFY(!setup(QStringLiteral("A")));
    QCOMPARE(log.ownLines().size(), 2);
    QCOMPARE(log.ownLines().first(), line);
    QVERIFY(isFailureLine(log.ownLines().last(), "setupCustomLabel"));

    log.take();
    QVERIFY(!label::setupDefaultLabel(QStringLiteral("A")));
    QCOMPARE(log.ownLines().size(), 2);
    QCOMPARE(log.ownLines().first(), line);
    QVERIFY(isFailureLine(log.ownLines().last(), "setupDefaultLabel"));

    QVERIFY(QDir().rmdir(customPath()));
    QVERIFY2(setup(QStringLiteral("A")), "the next call tries again");
}

void CustomLabelsConnectionTest::theConnectionStaysAfterAFailureOnly()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Stays"))});
    QVERIFY(!build(QStringLiteral("Stays")));
    QVERIFY(isConnectionOpen());
    QVERIFY(setup(QStringLiteral("Stays")));
    const LogRecorder log;
    QVERIFY(build(QStringLiteral("Stays")));
    QVERIFY(!QSqlDatabase::contains(customConnection));
    QVERIFY(!build(QStringLiteral("Others")));
    QCOMPARE(m_error, unknownDriver);
    QVERIFY2(isConnectionOpen(), "the next opening adds the connection again");
    QCOMPARE(log.lines(), QStringList());
}

void CustomLabelsConnectionTest::removingTheDatabaseRemovesTheConnection()
{
    QDir().mkpath(databaseFolder());
    const LogRecorder log;
    QVERIFY(label::setupDefaultLabel(QStringLiteral("A")));
    QVERIFY(isConnectionOpen());
    label::removeCustomLabelDatabase();
    QVERIFY(!QSqlDatabase::contains(customConnection));
    label::removeCustomLabelDatabase();
    QVERIFY(QFileInfo::exists(customPath()));
    QCOMPARE(log.lines(), QStringList());
}

QTEST_GUILESS_MAIN(CustomLabelsConnectionTest)

#include "tst_customlabels_connection.moc"
