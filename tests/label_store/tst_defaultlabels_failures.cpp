// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/defaultlabelstest.h"
#include "support/logrecorder.h"

#include "zelmar_label/label_store/labelstore.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QtTest>

using label::LabelInterface;

class DefaultLabelsFailuresTest : public DefaultLabelsTest
{
    Q_OBJECT

private Q_SLOTS:
    void unknownDrivers_data();
    void unknownDrivers();
    void failedQueries_data();
    void failedQueries();
    void unusableFiles_data();
    void unusableFiles();
    void aLockedFileFailsUntilItIsFree();
    void aFailedBuildIsTriedAgain();
};

void DefaultLabelsFailuresTest::unknownDrivers_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a name that is not listed") << "B";
    QTest::newRow("no name") << "";
    QTest::newRow("a name with a blank behind it") << "A ";
    QTest::newRow("a name in another case") << "a";
    QTest::newRow("a wild card") << "%";
    QTest::newRow("a place holder") << "%1";
    QTest::newRow("a single apostrophe") << "'";
    QTest::newRow("an apostrophe behind a name") << "A'";
    QTest::newRow("a doubled apostrophe") << "A''";
}

void DefaultLabelsFailuresTest::unknownDrivers()
{
    QFETCH(QString, name);
    writeDatabase({driver(QStringLiteral("A"), {Row()})});
    const LogRecorder log;
    QVERIFY(!build(name));
    QCOMPARE(m_error, unknownDriver);
    QCOMPARE(log.lines(), QStringList());
}

void DefaultLabelsFailuresTest::failedQueries_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("error");
    const QString front = "Error (No query Unable to fetch row): SELECT * FROM table_index WHERE name = ";
    QTest::newRow("a name") << "A" << front + "'A'";
    QTest::newRow("no name") << "" << front + "''";
    QTest::newRow("place holders in the name stay text") << "%1%2" << front + "'%1%2'";
    QTest::newRow("an apostrophe in the name stays text") << "O'Brien" << front + "'O'Brien'";
}

void DefaultLabelsFailuresTest::failedQueries()
{
    QFETCH(QString, name);
    QFETCH(QString, error);
    // There is no index table.
    writeStatements({QStringLiteral("CREATE TABLE other (name TEXT)")});
    const LogRecorder log;
    QVERIFY(!build(name));
    QCOMPARE(m_error, error);
    QCOMPARE(log.lines(), QStringList());
}

void DefaultLabelsFailuresTest::unusableFiles_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("keptBytes");
    QTest::newRow("an empty file") << QByteArray() << -1;
    QTest::newRow("a text")
        << QByteArray("This is no database, though it is long enough for the head of one. ").repeated(20) << -1;
    QTest::newRow("a short text") << QByteArray("text") << -1;
    QTest::newRow("a database cut off within its head") << QByteArray() << 60;
    QTest::newRow("a database cut off behind its head") << QByteArray() << 100;
    QTest::newRow("a database cut off within its first page") << QByteArray() << 2000;
}

void DefaultLabelsFailuresTest::unusableFiles()
{
    QFETCH(QByteArray, content);
    QFETCH(int, keptBytes);
    writeDatabase({driver(QStringLiteral("A"), {Row()})});
    QFile file(driverDatabasePath());
    if (keptBytes >= 0) {
        QVERIFY(file.size() > keptBytes);
        QVERIFY(file.resize(keptBytes));
    } else {
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        QCOMPARE(file.write(content), qint64(content.size()));
        file.close();
    }
    const LogRecorder log;
    QVERIFY(!build(QStringLiteral("A")));
    QCOMPARE(m_error, failure(QStringLiteral("A")));
    QCOMPARE(log.lines(), QStringList());
}

void DefaultLabelsFailuresTest::aLockedFileFailsUntilItIsFree()
{
    writeDatabase({driver(QStringLiteral("A"), {Row()})});
    const QString name = QStringLiteral("a writer");
    {
        QSqlDatabase writer = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        writer.setDatabaseName(driverDatabasePath());
        QVERIFY(writer.open());
        QSqlQuery query(writer);
        QVERIFY(query.exec(QStringLiteral("BEGIN EXCLUSIVE")));
        QVERIFY(!build(QStringLiteral("A")));
        QCOMPARE(m_error, failure(QStringLiteral("A")));
        QVERIFY(query.exec(QStringLiteral("ROLLBACK")));
    }
    QSqlDatabase::removeDatabase(name);
    QVERIFY(build(QStringLiteral("A")));
    QCOMPARE(m_error, untouched);
}

void DefaultLabelsFailuresTest::aFailedBuildIsTriedAgain()
{
    const QString name = QStringLiteral("A");
    QVERIFY(!build(name));
    QCOMPARE(m_error, failure(name));
    writeDatabase({driver(QStringLiteral("B"), {Row()})});
    QVERIFY(!build(name));
    QCOMPARE(m_error, unknownDriver);
    writeDatabase({driver(name, {Row()})});
    LabelInterface *made = build(name);
    QVERIFY(made);
    QCOMPARE(m_error, untouched);
    QCOMPARE(made->countBitTypes(), 1);
}

QTEST_GUILESS_MAIN(DefaultLabelsFailuresTest)

#include "tst_defaultlabels_failures.moc"
