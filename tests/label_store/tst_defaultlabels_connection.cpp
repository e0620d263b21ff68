// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/defaultlabelstest.h"
#include "support/logrecorder.h"

#include "zelmar_label/label_store/labelstore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QtTest>

using label::LabelInterface;

class DefaultLabelsConnectionTest : public DefaultLabelsTest
{
    Q_OBJECT

private Q_SLOTS:
    void aConnectionIsOpenedToTheFileInTheFolder();
    void anOpenConnectionIsLeftAlone();
    void withoutTheFolderTheFileLiesBesideTheProgram();
    void aFileThatCannotBeOpened_data();
    void aFileThatCannotBeOpened();
    void aMissingFileIsMadeEmpty();

    void connectionStaysOpenAfterAFailureOnly();

    void removingTheDatabaseDoesNothing();
};

void DefaultLabelsConnectionTest::aConnectionIsOpenedToTheFileInTheFolder()
{
    writeDatabase({driver(QStringLiteral("A"), {Row()})});
    const LogRecorder log;
    QSqlDatabase db;
    QVERIFY(label::createDatabaseConnection(db));
    QVERIFY(db.isOpen());
    QCOMPARE(db.connectionName(), QStringLiteral("drivers"));
    QCOMPARE(db.driverName(), QStringLiteral("QSQLITE"));
    QCOMPARE(db.databaseName(), QFileInfo(driverDatabasePath()).absoluteFilePath());
    QSqlQuery query(db);
    QVERIFY(query.exec(QStringLiteral("SELECT name FROM table_index")) && query.next());
    QCOMPARE(query.value(0).toString(), QStringLiteral("A"));
    QCOMPARE(log.lines(), QStringList());
}

void DefaultLabelsConnectionTest::anOpenConnectionIsLeftAlone()
{
    const QString name = QStringLiteral("a connection of the test");
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setDatabaseName(QStringLiteral(":memory:"));
        QVERIFY(db.open());
        QVERIFY(label::createDatabaseConnection(db));
        QCOMPARE(db.connectionName(), name);
        QCOMPARE(db.databaseName(), QStringLiteral(":memory:"));
        QVERIFY(!QFileInfo::exists(fileBesideTheProgram("drivers")));
    }
    QSqlDatabase::removeDatabase(name);
}

void DefaultLabelsConnectionTest::withoutTheFolderTheFileLiesBesideTheProgram()
{
    QVERIFY(!QFileInfo::exists(databaseFolder()));
    writeDriverDatabase(fileBesideTheProgram("drivers"), {driver(QStringLiteral("Beside"), {Row()})});
    LabelInterface *made = build(QStringLiteral("Beside"));
    QVERIFY(made);
    QCOMPARE(made->countBitTypes(), 1);
    QVERIFY(!QFileInfo::exists(databaseFolder()));
}

void DefaultLabelsConnectionTest::aFileThatCannotBeOpened_data()
{
    QTest::addColumn<bool>("folder");
    QTest::newRow("a folder with the name of the file") << true;
    QTest::newRow("a link into a folder that is missing") << false;
}

void DefaultLabelsConnectionTest::aFileThatCannotBeOpened()
{
    QFETCH(bool, folder);
    const QString path = driverDatabasePath();
    if (folder)
        QVERIFY(QDir().mkpath(path));
    else
        QVERIFY(QFile::link(databaseFolder() + QStringLiteral("/missing/drivers"), path));
    const QString line = QStringLiteral("\"Can't open label database %1\"").arg(path);
    LogRecorder log;
    QVERIFY(!build(QStringLiteral("A")));
    QCOMPARE(m_error, noConnection);
    QCOMPARE(log.ownLines(), QStringList{line});
    log.take();
    QSqlDatabase db;
    QVERIFY(!label::createDatabaseConnection(db));
    QVERIFY(!db.isOpen());
    QCOMPARE(log.ownLines(), QStringList{line});
    if (folder)
        QVERIFY(QDir().rmdir(path));
    else
        QVERIFY(QFile::remove(path));
    writeDatabase({driver(QStringLiteral("A"), {Row()})});
    QVERIFY2(build(QStringLiteral("A")), "the next call tries again");
}

void DefaultLabelsConnectionTest::aMissingFileIsMadeEmpty()
{
    const QString path = driverDatabasePath();
    QVERIFY(!QFileInfo::exists(path));
    const LogRecorder log;
    QVERIFY(!build(QStringLiteral("A")));
    QCOMPARE(m_error, failure(QStringLiteral("A")));
    QVERIFY(QFileInfo::exists(path));
    QCOMPARE(QFileInfo(path).size(), qint64(0));
    QCOMPARE(log.lines(), QStringList());
}

void DefaultLabelsConnectionTest::connectionStaysOpenAfterAFailureOnly()
{
    writeDatabase({driver(QStringLiteral("A"), {Row()}), driver(QStringLiteral("B"), {Row()}, QStringLiteral("b"))});
    QVERIFY(build(QStringLiteral("A")));
    QVERIFY(QSqlDatabase::contains(QStringLiteral("drivers")));
    QVERIFY(!isConnectionOpen());
    QVERIFY(!build(QStringLiteral("C")));
    QVERIFY(isConnectionOpen());
    QVERIFY(!build(QStringLiteral("O'Brien")));
    QVERIFY(isConnectionOpen());
    QVERIFY(build(QStringLiteral("A")));
    QVERIFY2(isConnectionOpen(), "a label of the cache does not touch the connection");
    QVERIFY(build(QStringLiteral("B")));
    QVERIFY(!isConnectionOpen());
    QVERIFY(QSqlDatabase::contains(QStringLiteral("drivers")));
}

void DefaultLabelsConnectionTest::removingTheDatabaseDoesNothing()
{
    writeDatabase({driver(QStringLiteral("A"), {Row()}), driver(QStringLiteral("B"), {Row()}, QStringLiteral("b"))});
    LabelInterface *made = build(QStringLiteral("A"));
    QVERIFY(made);
    const LogRecorder log;
    label::removeLabelDatabase();
    QVERIFY(QSqlDatabase::contains(QStringLiteral("drivers")));
    QVERIFY(QFileInfo::exists(driverDatabasePath()));
    QCOMPARE(build(QStringLiteral("A")), made);
    QVERIFY(!build(QStringLiteral("C")));
    label::removeLabelDatabase();
    QVERIFY(isConnectionOpen());
    QVERIFY(build(QStringLiteral("B")));
    QCOMPARE(log.lines(), QStringList{rowLine});
}

QTEST_GUILESS_MAIN(DefaultLabelsConnectionTest)

#include "tst_defaultlabels_connection.moc"
