// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/projectfixtures.h"
#include "support/toolprocess.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// Tests files of a program that stopped during a write, by Ctrl-C or a power failure.
class TestInterruptedWrite : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void isUndone_data();
    void isUndone();
    void isUndoneBesideTheProgram();
    void runningWriterIsLeftAlone();

private:
    Result run(const char *arguments) const
    {
        return runProcess(m_tool, argumentsOf(arguments), QByteArray(), m_work->path());
    }
    QString path(const char *name) const { return m_work->filePath(QLatin1String(name)); }

    QString m_tool;
    std::unique_ptr<QTemporaryDir> m_work;
};

namespace {

QString journalOf(const QString &path)
{
    return path + QLatin1String("-journal");
}

/// Begins a transaction that empties the table, and runs `whileWriting` when part of it is in the file.
template<typename Action>
void write(const QString &path, const QString &table, Action whileWriting)
{
    const QString key = QStringLiteral("writer");
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), key);
        db.setDatabaseName(path);
        QVERIFY(db.open());
        QSqlQuery query(db);
        // With a cache of one page SQLite has to write before the end of the transaction.
        QVERIFY(query.exec(QStringLiteral("PRAGMA cache_size = 1")) && query.exec(QStringLiteral("BEGIN IMMEDIATE")));
        QVERIFY(query.exec(QStringLiteral("DELETE FROM %1").arg(table)));
        QVERIFY(query.exec(QStringLiteral("CREATE TABLE ballast AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT "
                                          "i + 1 FROM n WHERE i < 400) SELECT randomblob(500) AS b FROM n")));
        whileWriting();
        QVERIFY(query.exec(QStringLiteral("ROLLBACK")));
    }
    QSqlDatabase::removeDatabase(key);
}

/// Leaves the file like a killed writer.
void interruptWrite(const QString &path, const char *table)
{
    const QString left = path + QLatin1String(".left");
    write(path, QLatin1String(table), [&] {
        QVERIFY(QFile::copy(path, left));
        QVERIFY(QFile::copy(journalOf(path), journalOf(left)));
    });
    QVERIFY(QFile::remove(path) && QFile::rename(left, path));
    QVERIFY(QFile::rename(journalOf(left), journalOf(path)));
}

QByteArray driverText()
{
    return "driver\tNew PLC\nblock_size\t64\nbit_block_size\t512\n"
           "pattern\ttype\taddress_group_index\tdescription\tprefix_symbol\tstart\tend\tdata_size\tmultiple_rule\t"
           "catch_table\tbase\tblocksize\tcontinue\n"
           "(D)(\\d{1,4})\t2\t2\tD: data register, D0-D7999, e.g. D1\tD\t0\t7999\t2\t\t\t10\t64\tN\n";
}

QList<Driver> onePlc()
{
    Driver plc;
    plc.name = QStringLiteral("Test PLC");
    Row row;
    row.pattern = QStringLiteral("(D)(\\d{1,4})");
    row.description = QStringLiteral("D: data register, D0-D9999, e.g. D1");
    plc.rows = {row};
    return {plc};
}

} // namespace

void TestInterruptedWrite::initTestCase()
{
    m_tool = copyToolWithDrivers(QStringLiteral(ZELMAR_LABEL_TOOL),
                                 QCoreApplication::applicationDirPath() + QLatin1String("/tool"));
}

void TestInterruptedWrite::init()
{
    m_work = std::make_unique<QTemporaryDir>();
    QVERIFY(m_work->isValid());
    writeDriverDatabase(path("drivers"), onePlc());
    writeFile(path("new.tsv"), driverText());
    const QString key = QStringLiteral("project");
    makeProject(path("plant.db"), key);
    TagRow tag;
    tag.name = QStringLiteral("Internal");
    writeTags(key, {tag});
    closeProject(key);
}

void TestInterruptedWrite::isUndone_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("part");
    const auto ofDrivers = [](const char *name, const char *arguments, const char *part) {
        QTest::newRow(name) << QStringLiteral("drivers") << QStringLiteral("table_index")
                            << QString::fromLatin1(arguments) << QString::fromLatin1(part);
    };
    const auto ofProject = [](const char *name, const char *arguments, const char *part) {
        QTest::newRow(name) << QStringLiteral("plant.db") << QStringLiteral("custom_tag_table")
                            << QString::fromLatin1(arguments) << QString::fromLatin1(part);
    };
    ofDrivers("drivers are listed", "drivers|--database|drivers", "Test PLC");
    ofDrivers("an address is checked", "check|Test PLC|D1|--database|drivers", "ok       D1");
    ofDrivers("a database is linted", "lint|drivers", "1 driver, 1 row, 0 samples: 0 errors");
    ofDrivers("a driver is linted", "lint|Test PLC|--database|drivers", "1 driver, 1 row, 0 samples: 0 errors");
    ofDrivers("a driver is exported", "export-driver|Test PLC|--database|drivers", "driver\tTest PLC\n");
    ofDrivers("a driver is added", "compile|new.tsv|--into|drivers", "\"New PLC\" is added, 1 format");
    ofProject("tags are listed", "tags|plant.db", "Internal");
    ofProject("tags are exported", "export|plant.db", "\"Internal\"");
}

void TestInterruptedWrite::isUndone()
{
    QFETCH(QString, file);
    QFETCH(QString, table);
    QFETCH(QString, arguments);
    QFETCH(QString, part);
    const QString target = m_work->filePath(file);
    interruptWrite(target, qPrintable(table));
    QVERIFY(QFile::exists(journalOf(target)));
    const Result result = run(qPrintable(arguments));
    QCOMPARE(result.err, QString());
    QVERIFY2(result.out.contains(part), qPrintable(result.out));
    QCOMPARE(result.code, 0);
    QVERIFY(!QFile::exists(journalOf(target)));
    QVERIFY(!databaseDump(target).join(QLatin1Char('\n')).contains(QLatin1String("ballast")));
}

/// Drivers and custom labels are then read without an option that names their files.
void TestInterruptedWrite::isUndoneBesideTheProgram()
{
    const QString tool = copyTool(QStringLiteral(ZELMAR_LABEL_TOOL), path("program"));
    QVERIFY(QDir(path("program")).mkpath(QStringLiteral("database")));
    QList<Driver> drivers = onePlc();
    writeDriverDatabase(path("program/database/drivers"), drivers);
    drivers.first().generalTable = QStringLiteral("Test_PLC_general_table");
    drivers.first().deviceTable = QStringLiteral("Test_PLC_device_table");
    writeDriverDatabase(path("program/database/customdrivers"), drivers);
    interruptWrite(path("program/database/drivers"), "table_index");
    interruptWrite(path("program/database/customdrivers"), "table_index");

    const Result linted = runProcess(tool, argumentsOf("lint"));
    QCOMPARE(linted.err, QString());
    QCOMPARE(linted.out, QStringLiteral("1 driver, 1 row, 0 samples: 0 errors, 0 warnings\n"));
    const Result shown = runProcess(tool, argumentsOf("custom|show"));
    QCOMPARE(shown.err, QString());
    QVERIFY2(shown.out.contains(QLatin1String("Test PLC")), qPrintable(shown.out));
}

/// A running writer also has such a journal.
void TestInterruptedWrite::runningWriterIsLeftAlone()
{
    QByteArray during;
    write(path("drivers"), QStringLiteral("table_index"), [&] {
        during = contentOf(journalOf(path("drivers")));
        run("drivers|--database|drivers");
        QCOMPARE(contentOf(journalOf(path("drivers"))), during);
    });
    QVERIFY(!during.isEmpty());
    QCOMPARE(run("check|Test PLC|D1|--database|drivers").code, 0);
}

QTEST_GUILESS_MAIN(TestInterruptedWrite)

#include "tst_interruptedwrite.moc"
