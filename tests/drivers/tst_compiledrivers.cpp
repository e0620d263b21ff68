// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/shippeddriverstest.h"
#include "support/toolprocess.h"

#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

using namespace shipped;

namespace {

const QString connection = QStringLiteral("compiled drivers");

QString firstLineWith(const QString &text, const QString &part)
{
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (line.contains(part))
            return line;
    }
    return QString();
}

QString goodDriver()
{
    return QStringLiteral(
        "# from nowhere\n"
        "driver\tGood\nblock_size\t7\nbit_block_size\t8\n"
        "end\tstart\tpattern\ttype\taddress_group_index\tdescription\tprefix_symbol\tdata_size\tmultiple_rule\t"
        "catch_table\tbase\tblocksize\tcontinue\n"
        "0FF\t007\t(H)(0*[0-9A-Fa-f]{1,3})\t2\t2\tH: it's hexadecimal; it's kept\tH\t2\t\t\t16\t5\tY\n");
}

struct Compiled
{
    int exitCode;
    QString messages;
};

Compiled compile(const QString &database, const QStringList &files)
{
    const Result result = runProcess(QStringLiteral(ZELMAR_LABEL_COMPILE_DRIVERS), QStringList{database} + files);
    return {result.code, result.err};
}

} // namespace

/// The program that makes the database of driver files.
class CompileDrivers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void compileRefuses_data();
    void compileRefuses();
    void compileMakesDatabase();
    void compileKeepsOldDatabaseOnError();
};

void CompileDrivers::compileRefuses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");

    const QString head = QStringLiteral("driver\tD\nblock_size\t1\nbit_block_size\t1\n");
    const QString header = QStringLiteral("pattern\ttype\taddress_group_index\tdescription\tprefix_symbol\tstart\tend\t"
                                          "data_size\tmultiple_rule\tcatch_table\tbase\tblocksize\tcontinue\n");
    const QString row = QStringLiteral("(D)(\\d)\t2\t2\tD: it's one\tD\t0\t9\t2\t\t\t10\t1\tN\n");
    const auto add = [](const char *name, const QString &text, const char *message) {
        QTest::newRow(name) << text << QString(QLatin1String(message));
    };
    const auto changed = [&row](const char *before, const char *after) {
        QString other = row;
        return other.replace(QLatin1String(before), QLatin1String(after));
    };
    add("a row with a column too few", head + header + changed("\tN\n", "\n"), ":5: error: 12 columns");
    add("a row with a column too many", head + header + changed("\tN\n", "\tN\t\n"), ":5: error: 14 columns");
    add("an unknown column", head + QString(header).replace(QLatin1String("start"), QLatin1String("begin")) + row,
        ":4: error: unknown header 'begin'");
    add("a missing column", head + QString(header).remove(QLatin1String("\tcontinue")) + row,
        ":4: error: header 'continue' is missing");
    add("a column that stands twice",
        head + QString(header).replace(QLatin1String("start"), QLatin1String("end")) + row,
        ":4: error: header 'end' appears twice");
    add("an unknown setting", QStringLiteral("speed\t5\n") + head + header + row, ":1: error: unknown header 'speed'");
    add("a missing setting", QStringLiteral("driver\tD\nblock_size\t1\n") + header + row,
        ":3: error: 'bit_block_size' must be before the header");
    add("a setting that is no number", QString(head).replace(QLatin1String("\t1"), QLatin1String("\tx")) + header + row,
        ":2: error: 'block_size' is not a number: 'x'");
    add("a driver without a name", QString(head).replace(QLatin1String("\tD"), QLatin1String("\t")) + header + row,
        ":1: error: 'driver' is empty");
    add("the driver name of another file",
        QString(head).replace(QLatin1String("\tD"), QLatin1String("\tGood")) + header + row,
        ":1: error: driver 'Good' is already in ");
    add("an empty pattern", head + header + changed("(D)(\\d)", ""), ":5: error: 'pattern' is empty");
    add("an empty end", head + header + changed("\t9\t", "\t\t"), ":5: error: 'end' is empty");
    add("a block size of 0", head + header + changed("\t1\tN", "\t0\tN"), ":5: error: 'blocksize' is 0");
    add("a base of 2", head + header + changed("\t10\t", "\t2\t"), ":5: error: 'base' is not 8, 10 or 16: '2'");
    add("a type of 9", head + header + changed("\\d)\t2", "\\d)\t9"), ":5: error: 'type' is not 0 to 5: '9'");
    add("a continue rule of neither kind", head + header + changed("\tN", "\tno"),
        ":5: error: 'continue' is neither Y nor N: 'no'");
    add("a pattern that stands twice", head + header + row + changed("one", "two"),
        ":6: error: the pattern is already used in line 5");
    add("a description that stands twice", head + header + row + changed("(D)", "(E)"),
        ":6: error: the description is already used in line 5");
    add("a carriage return", head + header + changed("\n", "\r\n"), ":5: error: carriage return");
    add("no header", head, ":3: error: no header line");
    add("no rows", head + header, ":4: error: no rows");
    add("an empty file", QString(), ":1: error: empty file");
    add("an error behind comments and blank lines",
        QStringLiteral("# one\n\n") + head + QStringLiteral("# two\n") + header + changed("\t9\t", "\t\t"),
        ":8: error: 'end' is empty");
}

void CompileDrivers::compileRefuses()
{
    QFETCH(QString, text);
    QFETCH(QString, message);
    QTemporaryDir folder;
    const QString good = folder.filePath(QStringLiteral("good.tsv"));
    const QString bad = folder.filePath(QStringLiteral("bad.tsv"));
    const QString database = folder.filePath(QStringLiteral("out/drivers"));
    writeFile(good, goodDriver().toUtf8());
    writeFile(bad, text.toUtf8());

    const Compiled seen = compile(database, {good, bad});

    QVERIFY(seen.exitCode != 0);
    QVERIFY2(!firstLineWith(seen.messages, bad + message).isEmpty(), qPrintable(seen.messages));
    QVERIFY(QDir(folder.filePath(QStringLiteral("out")))
                .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)
                .isEmpty());
}

void CompileDrivers::compileMakesDatabase()
{
    QTemporaryDir folder;
    const QString good = folder.filePath(QStringLiteral("good.tsv"));
    const QString database = folder.filePath(QStringLiteral("a new folder/drivers"));
    writeFile(good, goodDriver().toUtf8());

    const Compiled seen = compile(database, {good});

    QCOMPARE(seen.messages, QString());
    QCOMPARE(seen.exitCode, 0);
    QList<DeviceRow> rows;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        db.setDatabaseName(database);
        QVERIFY(db.open());
        rows = readRows(db, QStringLiteral("good_types"));
        QSqlQuery query(db);
        QVERIFY(query.exec(QStringLiteral("SELECT * FROM good_general")) && query.next());
        QCOMPARE(query.value(QStringLiteral("block_size")).toInt(), 7);
        QCOMPARE(query.value(QStringLiteral("bit_block_size")).toInt(), 8);
    }
    QSqlDatabase::removeDatabase(connection);
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows.first().pattern, QStringLiteral("(H)(0*[0-9A-Fa-f]{1,3})"));
    QCOMPARE(rows.first().description, QStringLiteral("H: it's hexadecimal; it's kept"));
    QCOMPARE(rows.first().start, QStringLiteral("007"));
    QCOMPARE(rows.first().end, QStringLiteral("0FF"));
    QCOMPARE(rows.first().base, 16);
    QCOMPARE(rows.first().blocksize, 5);
    QCOMPARE(rows.first().continueRule, QStringLiteral("Y"));
}

void CompileDrivers::compileKeepsOldDatabaseOnError()
{
    QTemporaryDir folder;
    const QString good = folder.filePath(QStringLiteral("good.tsv"));
    const QString database = folder.filePath(QStringLiteral("drivers"));
    writeFile(good, goodDriver().toUtf8());
    QCOMPARE(compile(database, {good}).exitCode, 0);
    QFile before(database);
    QVERIFY(before.open(QIODevice::ReadOnly));
    const QByteArray old = before.readAll();

    writeFile(good, goodDriver().toUtf8() + "one\ttwo\n");
    QVERIFY(compile(database, {good}).exitCode != 0);

    QFile after(database);
    QVERIFY(after.open(QIODevice::ReadOnly));
    QCOMPARE(after.readAll(), old);
    QVERIFY(!old.isEmpty());
}

QTEST_GUILESS_MAIN(CompileDrivers)

#include "tst_compiledrivers.moc"
