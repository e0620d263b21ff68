// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "lintfixtures.h"

#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString head = QStringLiteral("driver\tD\nblock_size\t1\nbit_block_size\t1\n");
const QString header = QStringLiteral("pattern\ttype\taddress_group_index\tdescription\tprefix_symbol\tstart\tend\t"
                                      "data_size\tmultiple_rule\tcatch_table\tbase\tblocksize\tcontinue\n");
const QString row = QStringLiteral("(D)(\\d)\t2\t2\tD: it's one\tD\t0\t9\t2\t\t\t10\t1\tN\n");

QString changed(QString text, const char *before, const char *after)
{
    return text.replace(QLatin1String(before), QLatin1String(after));
}

QString write(const QTemporaryDir &folder, const QString &name, const QByteArray &text)
{
    const QString path = folder.filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("not readable");
}

QStringList told(const QList<DriverFileError> &errors)
{
    QStringList lines;
    for (const DriverFileError &error : errors)
        lines.append(QString::number(error.line) + QLatin1String(": ") + error.text);
    return lines;
}

/// Runs statements on a SQLite file.
void execute(const QString &path, const QStringList &statements)
{
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("made by hand"));
        db.setDatabaseName(path);
        if (!db.open())
            qFatal("cannot open %s", qPrintable(path));
        QSqlQuery query(db);
        for (const QString &statement : statements) {
            if (!query.exec(statement))
                qFatal("cannot run %s", qPrintable(statement));
        }
    }
    QSqlDatabase::removeDatabase(QStringLiteral("made by hand"));
}

} // namespace

class DriverFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void goodFileIsRead();
    void formErrorIsTold_data();
    void formErrorIsTold();
    void allErrorsAreTold();
    void missingFileIsTold();
    void shippedFileSurvivesDatabase_data();
    void shippedFileSurvivesDatabase();
    void oddNumbersSurviveDatabase();
    void foreignDatabaseIsRead();
    void databaseWithoutContinueReadsAsN();
    void lastOfTwoDriversCounts();
    void unreadableDatabaseIsTold_data();
    void unreadableDatabaseIsTold();
    void failedWriteKeepsOldDatabase();
    void obstaclesOfTextForm_data();
    void obstaclesOfTextForm();
};

void DriverFiles::goodFileIsRead()
{
    const QTemporaryDir folder;
    const QByteArray text = (QStringLiteral("# from nowhere\n\n") + head + QStringLiteral("# two\n") + header +
                             QStringLiteral("# three\n") + row + QStringLiteral("\n# the end\n"))
                                .toUtf8();
    QList<DriverFileError> errors;

    const DriverText driver = readDriverFile(write(folder, QStringLiteral("good_1.tsv"), text), errors);

    QCOMPARE(told(errors), QStringList());
    QCOMPARE(driver.stem, QStringLiteral("good_1"));
    QCOMPARE(driver.name, QStringLiteral("D"));
    QCOMPARE(driver.nameLine, 3);
    QCOMPARE(driver.headerLine, 7);
    QCOMPARE(driver.columns, driverColumns());
    QCOMPARE(driver.headComments, QStringList({QStringLiteral("# from nowhere"), QString()}));
    QCOMPARE(driver.headerComments, QStringList(QStringLiteral("# two")));
    QCOMPARE(driver.tailComments, QStringList({QString(), QStringLiteral("# the end")}));
    QCOMPARE(driver.rows.size(), 1);
    QCOMPARE(driver.rows.first().line, 9);
    QCOMPARE(driver.rows.first().comments, QStringList(QStringLiteral("# three")));
    QCOMPARE(driver.field(driver.rows.first(), QStringLiteral("description")), QStringLiteral("D: it's one"));
    QCOMPARE(driver.field(driver.rows.first(), QStringLiteral("no such")), QString());
    QCOMPARE(driverFileText(driver), text);
}

void DriverFiles::formErrorIsTold_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("error");

    const auto add = [](const char *name, const QString &text, const char *error) {
        QTest::newRow(name) << text << QString(QLatin1String(error));
    };
    add("a row with a column too few", head + header + changed(row, "\tN\n", "\n"),
        "5: 12 columns, but the header has 13");
    add("a row with a column too many", head + header + changed(row, "\tN\n", "\tN\t\n"),
        "5: 14 columns, but the header has 13");
    add("an unknown column", head + changed(header, "start", "begin") + row, "4: unknown header 'begin'");
    add("a missing column", head + changed(header, "\tcontinue", "") + row, "4: header 'continue' is missing");
    add("a column that stands twice", head + changed(header, "start", "end") + row, "4: header 'end' appears twice");
    add("an unknown setting", QStringLiteral("speed\t5\n") + head + header + row, "1: unknown header 'speed'");
    add("a setting that stands twice", head + QStringLiteral("driver\tE\n") + header + row,
        "4: 'driver' appears twice");
    add("a setting without a value", QStringLiteral("driver\n") + head + header + row,
        "1: 1 columns, but a setting has 2");
    add("a missing setting", QStringLiteral("driver\tD\nblock_size\t1\n") + header + row,
        "3: 'bit_block_size' must be before the header");
    add("a setting that is no number", changed(head, "\t1", "\tx") + header + row,
        "2: 'block_size' is not a number: 'x'");
    add("a setting that is too large", changed(head, "\t1", "\t99999999999") + header + row,
        "2: 'block_size' is too large a number: '99999999999'");
    add("a driver without a name", changed(head, "\tD", "\t") + header + row, "1: 'driver' is empty");
    add("an empty pattern", head + header + changed(row, "(D)(\\d)", ""), "5: 'pattern' is empty");
    add("an empty end", head + header + changed(row, "\t9\t", "\t\t"), "5: 'end' is empty");
    add("a block size that is no number", head + header + changed(row, "\t1\tN", "\tmany\tN"),
        "5: 'blocksize' is not a number: 'many'");
    add("a block size below 0", head + header + changed(row, "\t1\tN", "\t-1\tN"),
        "5: 'blocksize' is not a number: '-1'");
    add("a carriage return", head + header + changed(row, "\n", "\r\n"),
        "5: carriage return: save the file with line feeds only, as sed -i 's/\\r$//' FILE does");
    add("a file with carriage returns throughout", changed(head + header + row, "\n", "\r\n"),
        "1: carriage return: save the file with line feeds only, as sed -i 's/\\r$//' FILE does");
    add("a byte order mark", QStringLiteral("\uFEFF") + head + header + row,
        "1: byte order mark: save the file as UTF-8 without one");
    add("no header", head, "3: no header line");
    add("no rows", head + header, "4: no rows");
    add("an empty file", QString(), "1: empty file");
    add("an error behind comments and blank lines",
        QStringLiteral("# one\n\n") + head + QStringLiteral("# two\n") + header + changed(row, "\t9\t", "\t\t"),
        "8: 'end' is empty");
}

void DriverFiles::formErrorIsTold()
{
    QFETCH(QString, text);
    QFETCH(QString, error);
    const QTemporaryDir folder;
    QList<DriverFileError> errors;
    readDriverFile(write(folder, QStringLiteral("bad.tsv"), text.toUtf8()), errors);
    QVERIFY2(told(errors).contains(error), qPrintable(told(errors).join(QLatin1Char('\n'))));
    QCOMPARE(errors.first().file, folder.filePath(QStringLiteral("bad.tsv")));
}

void DriverFiles::allErrorsAreTold()
{
    const QTemporaryDir folder;
    QList<DriverFileError> errors;
    const QString bad = changed(changed(row, "\t9\t", "\t\t"), "\t10\t", "\tten\t");
    readDriverFile(write(folder, QStringLiteral("Bad-1.tsv"), (head + header + row + bad).toUtf8() + "\xff\n"), errors);
    QCOMPARE(
        told(errors),
        QStringList({QStringLiteral("1: the file name must be lower-case letters, digits and '_', because it names "
                                    "the tables"),
                     QStringLiteral("6: 'end' is empty"), QStringLiteral("6: 'base' is not a number: 'ten'"),
                     QStringLiteral("7: not UTF-8")}));
    QCOMPARE(errors.at(1).toString(),
             folder.filePath(QStringLiteral("Bad-1.tsv")) + QLatin1String(":6: error: 'end' is empty"));
}

void DriverFiles::missingFileIsTold()
{
    QList<DriverFileError> errors;
    readDriverFile(QStringLiteral("/nowhere/gone.tsv"), errors);
    QCOMPARE(errors.size(), 1);
    QVERIFY2(errors.first().text.startsWith(QLatin1String("cannot be read")), qPrintable(errors.first().text));
}

void DriverFiles::shippedFileSurvivesDatabase_data()
{
    QTest::addColumn<QString>("path");
    const QStringList files = shippedDriverFiles();
    for (const QString &file : files)
        QTest::newRow(qPrintable(QFileInfo(file).baseName())) << file;
}

void DriverFiles::shippedFileSurvivesDatabase()
{
    QFETCH(QString, path);
    const QTemporaryDir folder;
    const QString database = folder.filePath(QStringLiteral("a new folder/drivers"));
    QList<DriverFileError> errors;
    QString error;
    const DriverText driver = readDriverFile(path, errors);
    QVERIFY(errors.isEmpty());
    QCOMPARE(driverFileText(driver), contentOf(path));
    DriverText other = driver;
    other.name = QStringLiteral("another");
    other.stem = QStringLiteral("another");
    QVERIFY2(writeDriverDatabase(database, {other, driver}, error), qPrintable(error));

    QCOMPARE(driversInDatabase(database, error), QStringList({other.name, driver.name}));
    const DriverText back = readDatabaseDriver(database, driver.name, error);

    QCOMPARE(error, QString());
    QCOMPARE(back.stem, driver.stem);
    QCOMPARE(back.deviceTable, driver.stem + QLatin1String("_types"));
    QCOMPARE(driverFileText(back), contentOf(path));
    QCOMPARE(QDir(folder.filePath(QStringLiteral("a new folder"))).entryList(QDir::Files | QDir::Hidden),
             QStringList(QStringLiteral("drivers")));
}

void DriverFiles::oddNumbersSurviveDatabase()
{
    const QTemporaryDir folder;
    const QString database = folder.filePath(QStringLiteral("drivers"));
    QList<DriverFileError> errors;
    QString error;
    const QByteArray text =
        (head + header + changed(changed(row, "\t10\t1\t", "\t010\t01\t"), "\t9\t", "\t1E3\t")).toUtf8();
    const DriverText driver = readDriverFile(write(folder, QStringLiteral("odd.tsv"), text), errors);
    QVERIFY(writeDriverDatabase(database, {driver}, error));
    QCOMPARE(driverFileText(readDatabaseDriver(database, driver.name, error)), text);
}

void DriverFiles::foreignDatabaseIsRead()
{
    const QTemporaryDir folder;
    const QString database = folder.filePath(QStringLiteral("foreign"));
    execute(database, {QStringLiteral("CREATE TABLE table_index (id, device_table, name, general_table)"),
                       QStringLiteral("INSERT INTO table_index VALUES (1, 'T', 'Their PLC-5/X', 'G')"),
                       QStringLiteral("CREATE TABLE G (driver_name, block_size, bit_block_size)"),
                       QStringLiteral("INSERT INTO G VALUES ('x', 12, 34)"),
                       QStringLiteral("CREATE TABLE T (pattern, label_index, type, continue)"),
                       QStringLiteral("INSERT INTO T VALUES ('(D)(1)', 77, 2, 'yes')")});
    QString error;

    const DriverText driver = readDatabaseDriver(database, QStringLiteral("Their PLC-5/X"), error);

    QCOMPARE(error, QString());
    QCOMPARE(driver.generalTable, QStringLiteral("G"));
    QCOMPARE(driver.deviceTable, QStringLiteral("T"));
    QCOMPARE(driver.stem, QStringLiteral("their_plc_5_x"));
    QCOMPARE(driver.blockSize, QStringLiteral("12"));
    QCOMPARE(driver.bitBlockSize, QStringLiteral("34"));
    QCOMPARE(driver.columns,
             QStringList({QStringLiteral("pattern"), QStringLiteral("type"), QStringLiteral("continue")}));
    QCOMPARE(driver.rows.size(), 1);
    QCOMPARE(driver.rows.first().line, 0);
    QCOMPARE(driver.rows.first().fields,
             QStringList({QStringLiteral("(D)(1)"), QStringLiteral("2"), QStringLiteral("yes")}));
}

void DriverFiles::databaseWithoutContinueReadsAsN()
{
    const QTemporaryDir folder;
    const QString database = folder.filePath(QStringLiteral("old"));
    execute(database, {QStringLiteral("CREATE TABLE table_index (name, general_table, device_table)"),
                       QStringLiteral("INSERT INTO table_index VALUES ('D', 'd_general', 'd_types')"),
                       QStringLiteral("CREATE TABLE d_types (pattern)"),
                       QStringLiteral("INSERT INTO d_types VALUES ('(D)(1)')")});
    QString error;
    const DriverText driver = readDatabaseDriver(database, QStringLiteral("D"), error);
    QCOMPARE(driver.stem, QStringLiteral("d"));
    QCOMPARE(driver.blockSize, QString());
    QCOMPARE(driver.field(driver.rows.first(), QStringLiteral("continue")), QStringLiteral("N"));
}

void DriverFiles::lastOfTwoDriversCounts()
{
    const QTemporaryDir folder;
    const QString database = folder.filePath(QStringLiteral("twice"));
    execute(database, {QStringLiteral("CREATE TABLE table_index (name, general_table, device_table)"),
                       QStringLiteral("INSERT INTO table_index VALUES ('D', 'g', 'one'), ('D', 'g', 'two')")});
    QString error;
    QCOMPARE(driversInDatabase(database, error), QStringList({QStringLiteral("D"), QStringLiteral("D")}));
    QCOMPARE(readDatabaseDriver(database, QStringLiteral("D"), error).deviceTable, QStringLiteral("two"));
}

void DriverFiles::unreadableDatabaseIsTold_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("reason");
    QTest::newRow("a file that is not there") << QStringLiteral("gone") << QStringLiteral("there is no file ");
    QTest::newRow("a file that is no database")
        << QStringLiteral("text") << QStringLiteral(" is not a driver database ");
    QTest::newRow("a database without drivers")
        << QStringLiteral("empty") << QStringLiteral(" is not a driver database ");
}

void DriverFiles::unreadableDatabaseIsTold()
{
    QFETCH(QString, kind);
    QFETCH(QString, reason);
    const QTemporaryDir folder;
    const QString path = folder.filePath(kind);
    if (kind == QLatin1String("text"))
        write(folder, kind, QByteArray(4096, 'x'));
    if (kind == QLatin1String("empty"))
        execute(path, {QStringLiteral("CREATE TABLE other (one)")});
    QString error;
    QCOMPARE(driversInDatabase(path, error), QStringList());
    QVERIFY2(error.contains(reason) && error.contains(path), qPrintable(error));
    error.clear();
    QVERIFY(readDatabaseDriver(path, QStringLiteral("D"), error).rows.isEmpty());
    QVERIFY2(error.contains(reason) && error.contains(path), qPrintable(error));
}

void DriverFiles::failedWriteKeepsOldDatabase()
{
    const QTemporaryDir folder;
    const QString database = folder.filePath(QStringLiteral("drivers"));
    QList<DriverFileError> errors;
    QString error;
    const DriverText driver =
        readDriverFile(write(folder, QStringLiteral("one.tsv"), (head + header + row).toUtf8()), errors);
    QVERIFY(writeDriverDatabase(database, {driver}, error));
    const QByteArray before = contentOf(database);

    // Two drivers cannot share their tables.
    QVERIFY(!writeDriverDatabase(database, {driver, driver}, error));

    QVERIFY2(error.contains(database) && error.contains(QLatin1String("already exists")), qPrintable(error));
    QCOMPARE(contentOf(database), before);
    QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 2);
}

void DriverFiles::obstaclesOfTextForm_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("obstacle");
    QTest::newRow("nothing unusual") << QStringLiteral("(D)#(\\t)") << QString();
    QTest::newRow("a tab") << QStringLiteral("(D)\t") << QStringLiteral("row 1 contains a tab or a line end");
    QTest::newRow("a line end") << QStringLiteral("(D)\n") << QStringLiteral("row 1 contains a tab or a line end");
    QTest::newRow("a carriage return") << QStringLiteral("(D)\r")
                                       << QStringLiteral("row 1 contains a tab or a line end");
    QTest::newRow("the mark of a comment")
        << QStringLiteral("#(D)") << QStringLiteral("row 1 begins with '#' and would be read as a comment");
}

void DriverFiles::obstaclesOfTextForm()
{
    QFETCH(QString, field);
    QFETCH(QString, obstacle);
    DriverText driver;
    driver.columns = driverColumns();
    DriverRow only;
    only.fields = QStringList{field};
    driver.rows = {only};
    QCOMPARE(textFormObstacle(driver), obstacle);
}

QTEST_GUILESS_MAIN(DriverFiles)
#include "tst_driverfile.moc"
