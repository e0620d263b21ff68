// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/projectfixtures.h"
#include "support/toolprocess.h"
#include "zelmar_label/label_store/labelstore.h"
#include "zelmar_label/label_table/labelinterface.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QMap>
#include <QRegExp>
#include <QSqlDatabase>
#include <QTest>

#include <functional>

namespace {

/// Rows that custom tables could change: SQLite reads 1E3 as 1000 and 007 as 7, and there is no column for the Y.
const char *const awkwardRows =
    "(W)([0-9A-Fa-f]{1,3})\t2\t2\tW: link register, W007-W1E3, e.g. W7\tW\t007\t1E3\t2\t\t\t16"
    "\t32\tY\n"
    "(D)(\\d{1,4})\t2\t2\tD: data register, D0-D99, e.g. D1\tD\t0\t99\t2\t\t\t10\t64\tN\n";

const char *const plainRow = "(D)(\\d{1,4})\t2\t2\tD: data register, D0-D99, e.g. D1\tD\t0\t99\t2\t\t\t10\t64\tN\n";

QByteArray driverText(const char *name, const char *rows)
{
    return QByteArray("# from nowhere\ndriver\t") + name +
           "\nblock_size\t77\nbit_block_size\t88\n"
           "pattern\ttype\taddress_group_index\tdescription\tprefix_symbol\tstart\tend\tdata_size\tmultiple_rule\t"
           "catch_table\tbase\tblocksize\tcontinue\n" +
           rows;
}

Driver driver(const char *name, const char *table)
{
    Driver made;
    made.name = QLatin1String(name);
    made.rows = {Row()};
    made.generalTable = QStringLiteral("general_") + QLatin1String(table);
    made.deviceTable = QStringLiteral("types_") + QLatin1String(table);
    return made;
}

/// The rows of a driver file, each as its fields in the order of their columns' names.
QList<QStringList> sortedRows(const QByteArray &text)
{
    QStringList columns;
    QList<QStringList> rows;
    const QStringList lines = QString::fromUtf8(text).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        const QStringList fields = line.split(QLatin1Char('\t'));
        if (line.startsWith(QLatin1Char('#')) || fields.size() < 3)
            continue;
        if (columns.isEmpty()) {
            columns = fields;
            continue;
        }
        QMap<QString, QString> row;
        for (int index = 0; index < columns.size(); ++index)
            row.insert(columns.at(index), fields.value(index));
        rows.append(row.values());
    }
    return rows;
}

} // namespace

/// Runs a copy of the built program on the custom database beside this test program, which this program's library
/// reads.
class TestCustomCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void showsNothingAtFirst();
    void setupIsTheLibrarys();
    void setupBringsTablesBack();
    void fillIsReadByTheLibrary();
    void fillLosesNothing();
    void fillReplaces();
    void fillOfAFamily();
    void everyShippedDriverComesBack_data();
    void everyShippedDriverComesBack();
    void shows();
    void showsFormats();
    void defaultKeepsTables();
    void dropRemovesTables();
    void dropSparesOthers();
    void besideTheTool();
    void withoutDatabaseFolder();
    void backups();
    void asJson();
    void refusals_data();
    void refusals();
    void nothingIsMadeOnRefusal();
    void namesThatShareTables();
    void lockedDatabase();
    void noDatabase();
    void noProgram();
    void usage_data();
    void usage();
    void help();

private:
    Result run(const QStringList &arguments) const
    {
        return runProcess(m_tool, QStringList(QStringLiteral("custom")) + arguments, QByteArray(), m_files.path());
    }
    Result runHere(const char *arguments) const
    {
        return run(argumentsOf(arguments) << QStringLiteral("--folder") << QCoreApplication::applicationDirPath());
    }
    QString file(const char *name) const { return m_files.filePath(QLatin1String(name)); }
    QStringList databaseFiles() const
    {
        return QDir(QFileInfo(m_custom).path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    label::LabelInterface *customLabel(const char *name) const;
    QStringList rows(const char *statement) const;

    QString m_tool;
    QString m_custom;
    QDir m_files;
};

void TestCustomCommands::initTestCase()
{
    const QDir here(QCoreApplication::applicationDirPath());
    m_tool = copyToolWithDrivers(QStringLiteral(ZELMAR_LABEL_TOOL), here.filePath(QStringLiteral("tool")));
    QVERIFY(here.mkpath(QStringLiteral("files")));
    m_files = QDir(here.filePath(QStringLiteral("files")));
    writeDriverDatabase(driverDatabasePath(),
                        {driver("Test PLC", "test"), driver("Test_PLC", "twin"), driver("Other PLC", "other"),
                         driver("S7-300", "dash"), driver("O'Hara", "quote"), driver("ISO on TCP", "iso")});
    m_custom = here.filePath(QStringLiteral("database/customdrivers"));
    writeFile(file("plain.tsv"), driverText("Test PLC", plainRow));
    writeFile(file("awkward.tsv"), driverText("Test PLC", awkwardRows));
    writeFile(file("other.tsv"), driverText("Other PLC", plainRow));
    writeFile(file("form.tsv"), driverText("Test PLC", "(D)(\\d)\t2\n"));
    writeFile(file("lint.tsv"), driverText("Test PLC", plainRow).replace("(\\d{1,4})", "(\\d{1,4}"));
    writeFile(file("dash.tsv"), driverText("S7-300", plainRow));
    writeFile(file("quote.tsv"), driverText("O'Hara", plainRow));
    writeFile(file("stranger.tsv"), driverText("No PLC", plainRow));
}

void TestCustomCommands::init()
{
    const QStringList old = databaseFiles().filter(QStringLiteral("customdrivers"));
    for (const QString &name : old)
        QFile::remove(QFileInfo(m_custom).dir().filePath(name));
}

label::LabelInterface *TestCustomCommands::customLabel(const char *name) const
{
    label::freeCustomLabel(QLatin1String(name));
    QString error;
    label::LabelInterface *const made = label::createCustomLabel(QLatin1String(name), error);
    if (!made)
        qWarning("%s", qPrintable(error));
    return made;
}

QStringList TestCustomCommands::rows(const char *statement) const
{
    openProject(m_custom, QStringLiteral("looked at"));
    const QStringList found = rowsOn(QStringLiteral("looked at"), QLatin1String(statement));
    closeProject(QStringLiteral("looked at"));
    return found;
}

void TestCustomCommands::showsNothingAtFirst()
{
    const Result result = runHere("show");
    QCOMPARE(result.err, QString());
    QCOMPARE(result.out, QStringLiteral("no driver has a custom label in %1\n").arg(m_custom));
    QCOMPARE(result.code, 0);
    QCOMPARE(databaseFiles(), QStringList(QStringLiteral("drivers")));
}

void TestCustomCommands::setupIsTheLibrarys()
{
    // The same file, statement by statement, and the same again for a second driver and a second time.
    const auto steps = [](const std::function<void(const char *)> &setUp) {
        for (const char *name : {"Test PLC", "Other PLC", "Test PLC"})
            setUp(name);
    };
    steps([](const char *name) { QVERIFY(label::setupCustomLabel(QLatin1String(name))); });
    label::removeCustomLabelDatabase();
    const QStringList wanted = databaseDump(m_custom);
    QVERIFY(QFile::remove(m_custom));
    steps([this](const char *name) {
        const Result result = run({QStringLiteral("setup"), QLatin1String(name), QStringLiteral("--folder"),
                                   QCoreApplication::applicationDirPath()});
        QCOMPARE(result.err, QString());
        QCOMPARE(result.code, 0);
    });
    QCOMPARE(databaseDump(m_custom), wanted);
    QVERIFY(wanted.contains(QStringLiteral("Test_PLC_general_table|Test PLC|100|200|")));
}

void TestCustomCommands::setupBringsTablesBack()
{
    const Result made = runHere("setup|Test PLC");
    QCOMPARE(made.err, QString());
    QCOMPARE(made.out, QStringLiteral("\"Test PLC\" uses its custom label, which is empty: it refuses every address "
                                      "until \"zelmar-label custom fill FILE.tsv\" fills it\n"
                                      "Running programs keep their current label.\n"));
    QCOMPARE(made.code, 0);
    QCOMPARE(runHere("fill|plain.tsv").code, 0);
    QCOMPARE(runHere("default|Test PLC").code, 0);
    const Result back = runHere("setup|Test PLC");
    QVERIFY2(back.out.startsWith(QLatin1String("\"Test PLC\" uses its custom label of 1 format\n")),
             qPrintable(back.out));
    QCOMPARE(back.code, 0);
}

void TestCustomCommands::fillIsReadByTheLibrary()
{
    const Result result = runHere("fill|plain.tsv");
    QCOMPARE(result.err, QString());
    QCOMPARE(result.out, QStringLiteral("\"Test PLC\" uses its custom label of 1 format\n"
                                        "Running programs keep their current label.\n"));
    QCOMPARE(result.code, 0);
    label::LabelInterface *const custom = customLabel("Test PLC");
    QVERIFY(custom);
    QCOMPARE(custom->getBlockCommandMaxSize(), 77);
    QCOMPARE(custom->getBitCommandMaxSize(), 88);
    QCOMPARE(custom->addressValidation(QStringLiteral("D99"), -1), 0);
    QCOMPARE(custom->addressValidation(QStringLiteral("D100"), -1), -1);
    QCOMPARE(custom->getFormatString(0), QStringLiteral("D: data register, D0-D99, e.g. D1"));
    QCOMPARE(rows("SELECT label_index FROM Test_PLC_types_table"), QStringList(QStringLiteral("0")));
    QCOMPARE(rows("SELECT * FROM table_index"),
             QStringList(QStringLiteral("Test PLC|Test_PLC_general_table|Test_PLC_types_table")));
}

void TestCustomCommands::fillLosesNothing()
{
    QCOMPARE(runHere("fill|awkward.tsv").code, 0);
    const auto *const custom = static_cast<label::LabelLoader *>(customLabel("Test PLC"));
    QVERIFY(custom);
    const label::CommandFormatter &row = *custom->deviceTypesTable().formatterAt(0);
    QCOMPARE(row.start(), QStringLiteral("007"));
    QCOMPARE(row.end(), QStringLiteral("1E3"));
    QVERIFY(row.isRangeValid(0x1E3));
    QVERIFY(!row.isRangeValid(0x1E4));
    QCOMPARE(row.continueRule(), QStringLiteral("Y"));
    QCOMPARE(custom->deviceTypesTable().formatterAt(1)->continueRule(), QStringLiteral("N"));
}

void TestCustomCommands::fillReplaces()
{
    QCOMPARE(runHere("fill|awkward.tsv").code, 0);
    QCOMPARE(runHere("fill|other.tsv").code, 0);
    QCOMPARE(runHere("fill|plain.tsv").code, 0);
    QCOMPARE(rows("SELECT pattern, \"continue\" FROM Test_PLC_types_table"),
             QStringList(QStringLiteral("(D)(\\d{1,4})|N")));
    QCOMPARE(rows("SELECT count(*) FROM Other_PLC_types_table"), QStringList(QStringLiteral("1")));
    QCOMPARE(rows("SELECT name FROM table_index"),
             QStringList({QStringLiteral("Test PLC"), QStringLiteral("Other PLC")}));
}

void TestCustomCommands::fillOfAFamily()
{
    // The shipped driver, beside the tool itself, whose creator makes rows by its name.
    QFile::remove(QFileInfo(m_tool).dir().filePath(QStringLiteral("database/customdrivers")));
    const Result result = run({QStringLiteral("fill"), QStringLiteral(ZELMAR_LABEL_DRIVERS_SOURCE "/iso_on_tcp.tsv")});
    QCOMPARE(result.err, QString());
    QCOMPARE(result.code, 0);
    const Result checked =
        runProcess(m_tool, {QStringLiteral("check"), QStringLiteral("ISO on TCP"), QStringLiteral("DB12.DBW4"),
                            QStringLiteral("--database"),
                            QFileInfo(m_tool).dir().filePath(QStringLiteral("database/customdrivers"))});
    QCOMPARE(checked.err, QString());
    QCOMPARE(checked.code, 0);
}

void TestCustomCommands::everyShippedDriverComesBack_data()
{
    QTest::addColumn<QString>("path");
    const QDir source(QStringLiteral(ZELMAR_LABEL_DRIVERS_SOURCE));
    const QStringList names = source.entryList({QStringLiteral("*.tsv")}, QDir::Files);
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << source.filePath(name);
}

void TestCustomCommands::everyShippedDriverComesBack()
{
    QFETCH(QString, path);
    const QByteArray text = contentOf(path);
    const QString name =
        QString::fromUtf8(text).section(QLatin1String("\ndriver\t"), 1).section(QLatin1Char('\n'), 0, 0);
    const Result result = run({QStringLiteral("fill"), path});
    if (name.contains(QLatin1Char('-')) || name.contains(QLatin1Char('/'))) {
        QCOMPARE(result.code, 1);
        QVERIFY2(result.err.contains(QLatin1String("can name the tables of a custom label")), qPrintable(result.err));
        return;
    }
    QCOMPARE(result.err, QString());
    QCOMPARE(result.code, 0);
    const QString custom = QFileInfo(m_tool).dir().filePath(QStringLiteral("database/customdrivers"));
    const Result exported =
        runProcess(m_tool, {QStringLiteral("export-driver"), name, QStringLiteral("--database"), custom});
    QCOMPARE(exported.err, QString());
    QCOMPARE(sortedRows(exported.out.toUtf8()), sortedRows(text));
    QVERIFY(!sortedRows(text).isEmpty());
}

void TestCustomCommands::shows()
{
    QCOMPARE(runHere("fill|plain.tsv").code, 0);
    QCOMPARE(runHere("setup|Other PLC").code, 0);
    QCOMPARE(runHere("default|Other PLC").code, 0);
    const Result result = runHere("show");
    QCOMPARE(result.err, QString());
    QCOMPARE(result.out, QStringLiteral("label    formats  largest read  largest read of bits  driver\n"
                                        "custom   1        77            88                    Test PLC\n"
                                        "default  0        100           200                   Other PLC\n"));
    QCOMPARE(result.code, 0);
    QCOMPARE(runHere("show|--json").out,
             QStringLiteral("{\"driver\":\"Test PLC\",\"label\":\"custom\",\"formats\":1,\"blockSize\":77,"
                            "\"bitBlockSize\":88}\n"
                            "{\"driver\":\"Other PLC\",\"label\":\"default\",\"formats\":0,\"blockSize\":100,"
                            "\"bitBlockSize\":200}\n"));
}

void TestCustomCommands::showsFormats()
{
    QCOMPARE(runHere("fill|plain.tsv").code, 0);
    const Result result = runHere("show|Test PLC");
    QCOMPARE(result.err, QString());
    QCOMPARE(result.out, QStringLiteral("symbol  example  range    radix  kind  family  format\n"
                                        "D       D0       0 to 99  10     word  -       D: data register, D0-D99\n"));
    QCOMPARE(runHere("show|Test PLC|--json").out,
             QStringLiteral("{\"typeIndex\":0,\"format\":\"D: data register, D0-D99, e.g. D1\",\"prefix\":\"D\","
                            "\"example\":\"D0\",\"first\":\"0\",\"last\":\"99\",\"radix\":10,\"dataType\":\"word\","
                            "\"family\":false}\n"));
    QCOMPARE(runHere("setup|Other PLC").code, 0);
    QCOMPARE(runHere("show|Other PLC").out,
             QStringLiteral("the custom label of \"Other PLC\" is empty: it refuses every address\n"));
    QCOMPARE(runHere("default|Other PLC").code, 0);
    QCOMPARE(runHere("show|Other PLC").out, QStringLiteral("\"Other PLC\" uses its default label\n"));
}

void TestCustomCommands::defaultKeepsTables()
{
    QCOMPARE(runHere("fill|plain.tsv").code, 0);
    const Result result = runHere("default|Test PLC");
    QCOMPARE(result.err, QString());
    QCOMPARE(result.out.section(QLatin1Char('\n'), 0, 0), QStringLiteral("\"Test PLC\" uses its default label"));
    QCOMPARE(result.code, 0);
    QCOMPARE(rows("SELECT * FROM table_index"), QStringList(QStringLiteral("Test PLC||")));
    QCOMPARE(rows("SELECT count(*) FROM Test_PLC_types_table"), QStringList(QStringLiteral("1")));
}

void TestCustomCommands::dropRemovesTables()
{
    QCOMPARE(runHere("fill|plain.tsv").code, 0);
    QCOMPARE(runHere("fill|other.tsv").code, 0);
    const Result result = runHere("drop|Test PLC");
    QCOMPARE(result.err, QString());
    QCOMPARE(result.code, 0);
    // Also one that is not in force.
    QCOMPARE(runHere("default|Other PLC").code, 0);
    QCOMPARE(runHere("drop|Other PLC").code, 0);
    QCOMPARE(rows("SELECT name FROM sqlite_master"), QStringList(QStringLiteral("table_index")));
    QCOMPARE(rows("SELECT * FROM table_index"), QStringList());
}

void TestCustomCommands::dropSparesOthers()
{
    QCOMPARE(runHere("fill|plain.tsv").code, 0);
    openProject(m_custom, QStringLiteral("shared"));
    executeOn(QStringLiteral("shared"), QStringLiteral("INSERT INTO table_index VALUES ('Sharer', "
                                                       "'Test_PLC_general_table', 'Test_PLC_types_table')"));
    closeProject(QStringLiteral("shared"));
    QCOMPARE(runHere("drop|Test PLC").code, 0);
    QCOMPARE(rows("SELECT name FROM table_index"), QStringList(QStringLiteral("Sharer")));
    QCOMPARE(rows("SELECT count(*) FROM Test_PLC_types_table"), QStringList(QStringLiteral("1")));
}

void TestCustomCommands::besideTheTool()
{
    const QDir tool = QFileInfo(m_tool).dir();
    QFile::remove(tool.filePath(QStringLiteral("database/customdrivers")));
    const Result result = run({QStringLiteral("setup"), QStringLiteral("Modbus TCP")});
    QCOMPARE(result.err, QString());
    QCOMPARE(result.code, 0);
    QVERIFY(QFile::exists(tool.filePath(QStringLiteral("database/customdrivers"))));
    QCOMPARE(run({QStringLiteral("show"), QStringLiteral("--json")}).out,
             QStringLiteral("{\"driver\":\"Modbus TCP\",\"label\":\"custom\",\"formats\":0,\"blockSize\":125,"
                            "\"bitBlockSize\":2000}\n"));
}

void TestCustomCommands::withoutDatabaseFolder()
{
    QVERIFY(m_files.mkpath(QStringLiteral("flat")));
    const QString flat = m_files.filePath(QStringLiteral("flat/"));
    QFile::remove(flat + QLatin1String("customdrivers"));
    QFile::remove(flat + QLatin1String("drivers"));
    QVERIFY(QFile::copy(driverDatabasePath(), flat + QLatin1String("drivers")));
    const Result result = run({QStringLiteral("setup"), QStringLiteral("Test PLC"), QStringLiteral("--folder"), flat});
    QCOMPARE(result.err, QString());
    QVERIFY(QFile::exists(flat + QLatin1String("customdrivers")));
}

void TestCustomCommands::backups()
{
    QCOMPARE(runHere("fill|plain.tsv").code, 0);
    // There was nothing to copy.
    QCOMPARE(databaseFiles(), QStringList({QStringLiteral("customdrivers"), QStringLiteral("drivers")}));
    for (const char *change : {"setup|Other PLC", "fill|awkward.tsv", "default|Test PLC", "drop|Other PLC"}) {
        const QStringList before = databaseDump(m_custom);
        const QStringList copies = databaseFiles();
        const Result result = runHere(change);
        QCOMPARE(result.err, QString());
        const QString copy = result.out.section(QStringLiteral("Backup of the custom database: "), 1).trimmed();
        QVERIFY2(QRegExp(QRegExp::escape(m_custom) + QStringLiteral("\\.\\d{4}-\\d\\d-\\d\\d_\\d{6}(_\\d+)?"))
                     .exactMatch(copy),
                 qPrintable(copy));
        QVERIFY(!copies.contains(QFileInfo(copy).fileName()));
        QCOMPARE(databaseDump(copy), before);
        QVERIFY(databaseDump(m_custom) != before);
    }
}

void TestCustomCommands::asJson()
{
    QCOMPARE(runHere("setup|Test PLC|--json").out,
             QStringLiteral("{\"driver\":\"Test PLC\",\"label\":\"custom\",\"formats\":0,\"blockSize\":100,"
                            "\"bitBlockSize\":200,\"backup\":null}\n"));
    const Result second = runHere("drop|Test PLC|--json");
    QVERIFY2(second.out.startsWith(QLatin1String("{\"driver\":\"Test PLC\",\"label\":\"default\",\"formats\":0,"
                                                 "\"blockSize\":0,\"bitBlockSize\":0,\"backup\":\"") +
                                   m_custom),
             qPrintable(second.out));
}

void TestCustomCommands::refusals_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("part");
    const auto add = [](const char *row, const char *arguments, int code, const char *part) {
        QTest::newRow(row) << QString::fromLatin1(arguments) << code << QString::fromLatin1(part);
    };
    const char *const dash = "the name \"S7-300\" contains \"-\"";
    add("setup of a name with a dash", "setup|S7-300", 1, dash);
    add("fill of a name with a dash", "fill|dash.tsv", 1, dash);
    add("setup of a name with an apostrophe", "setup|O'Hara", 1, "the name \"O'Hara\" contains \"'\"");
    add("fill of a name with an apostrophe", "fill|quote.tsv", 1, "error: the name \"O'Hara\" breaks");
    add("setup of a driver that is not there", "setup|No PLC", 3, "there is no driver \"No PLC\" in ");
    add("setup of a driver that is nearly there", "setup|Test PLX", 3, "near names: \"Test PLC\"");
    add("fill of a driver that is not there", "fill|stranger.tsv", 3, "there is no driver \"No PLC\" in ");
    add("fill from a file with an error of the form", "fill|form.tsv", 1,
        "form.tsv:6: error: 2 columns, but the header");
    add("fill from a file with an error that lint finds", "fill|lint.tsv", 1, "lint.tsv:6");
    add("fill from a file that is not there", "fill|missing.tsv", 3,
        "the driver file missing.tsv cannot be read: No such");
    add("drop of a driver without a custom label", "drop|Test PLC", 3, "\"Test PLC\" has no custom label in ");
    add("default of a driver without a custom label", "default|Test PLC", 3, "\"Test PLC\" has no custom label in ");
    add("show of a driver without a custom label", "show|Test PLC", 3, "\"Test PLC\" has no custom label in ");
}

void TestCustomCommands::refusals()
{
    QFETCH(QString, arguments);
    QFETCH(int, code);
    QFETCH(QString, part);
    QCOMPARE(runHere("fill|other.tsv").code, 0);
    const QByteArray before = contentOf(m_custom);
    const QStringList files = databaseFiles();
    const Result result = runHere(qPrintable(arguments));
    QVERIFY2((result.out + result.err).contains(part), qPrintable(result.out + result.err));
    QCOMPARE(result.code, code);
    QCOMPARE(contentOf(m_custom), before);
    QCOMPARE(databaseFiles(), files);
}

void TestCustomCommands::nothingIsMadeOnRefusal()
{
    for (const char *arguments :
         {"setup|S7-300", "setup|No PLC", "fill|lint.tsv", "fill|stranger.tsv", "drop|Test PLC"}) {
        QVERIFY(runHere(arguments).code != 0);
        QCOMPARE(databaseFiles(), QStringList(QStringLiteral("drivers")));
    }
}

void TestCustomCommands::namesThatShareTables()
{
    QCOMPARE(runHere("fill|plain.tsv").code, 0);
    const QByteArray before = contentOf(m_custom);
    const Result twin = runHere("setup|Test_PLC");
    QCOMPARE(twin.err, QStringLiteral("zelmar-label: \"Test_PLC\" cannot have a custom label beside \"Test PLC\": both "
                                      "would have the table Test_PLC_general_table\n"));
    QCOMPARE(twin.code, 3);
    QCOMPARE(contentOf(m_custom), before);
    QCOMPARE(databaseFiles(), QStringList({QStringLiteral("customdrivers"), QStringLiteral("drivers")}));

    openProject(m_custom, QStringLiteral("foreign"));
    executeOn(QStringLiteral("foreign"), QStringLiteral("CREATE TABLE OTHER_PLC_TYPES_TABLE (x)"));
    closeProject(QStringLiteral("foreign"));
    const Result foreign = runHere("setup|Other PLC");
    QCOMPARE(
        foreign.err,
        QStringLiteral("zelmar-label: %1: table OTHER_PLC_TYPES_TABLE belongs to another program\n").arg(m_custom));
    QCOMPARE(foreign.code, 3);
    QCOMPARE(rows("SELECT name FROM table_index"), QStringList(QStringLiteral("Test PLC")));
}

void TestCustomCommands::lockedDatabase()
{
    QCOMPARE(runHere("fill|plain.tsv").code, 0);
    const QByteArray before = contentOf(m_custom);
    openProject(m_custom, QStringLiteral("busy"));
    executeOn(QStringLiteral("busy"), QStringLiteral("BEGIN IMMEDIATE"));
    const Result result = runHere("fill|awkward.tsv");
    closeProject(QStringLiteral("busy"));
    QCOMPARE(result.err, QStringLiteral("zelmar-label: %1 cannot be written (database is locked)\n").arg(m_custom));
    QCOMPARE(result.code, 3);
    QCOMPARE(contentOf(m_custom), before);
    QCOMPARE(databaseFiles(), QStringList({QStringLiteral("customdrivers"), QStringLiteral("drivers")}));
}

void TestCustomCommands::noDatabase()
{
    writeFile(m_custom, QByteArray("not a database, but some text that is long enough\n").repeated(40));
    for (const char *arguments : {"show", "setup|Test PLC", "fill|plain.tsv", "drop|Test PLC"}) {
        const Result result = runHere(arguments);
        QVERIFY2(result.err.contains(QLatin1String("file is not a database")), qPrintable(result.err));
        QCOMPARE(result.code, 3);
    }
    QVERIFY(contentOf(m_custom).startsWith("not a database"));
    QCOMPARE(databaseFiles(), QStringList({QStringLiteral("customdrivers"), QStringLiteral("drivers")}));
}

void TestCustomCommands::noProgram()
{
    const Result missing = run(argumentsOf("show|--folder|nowhere"));
    QCOMPARE(missing.err, QStringLiteral("zelmar-label: there is no folder nowhere\n"));
    QCOMPARE(missing.code, 3);
    QVERIFY(m_files.mkpath(QStringLiteral("empty")));
    const Result empty = run(argumentsOf("setup|Test PLC|--folder|empty"));
    QCOMPARE(empty.err, QStringLiteral("zelmar-label: there is no driver database at empty/drivers; --folder names the "
                                       "folder of a program that has one\n"));
    QCOMPARE(empty.code, 3);
    QVERIFY(QDir(m_files.filePath(QStringLiteral("empty"))).isEmpty());
}

void TestCustomCommands::usage_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("no second word") << ""
                                    << "\"custom\" is followed by one of show, setup, fill, default, drop";
    QTest::newRow("an unknown second word")
        << "seutp|PLC"
        << "\"custom seutp\" is not a command; \"custom\" is followed by one of show, setup, fill, default, drop";
    QTest::newRow("setup without a driver") << "setup"
                                            << "the driver is missing";
    QTest::newRow("setup of two drivers") << "setup|A|B"
                                          << "\"B\" is one argument too many";
    QTest::newRow("fill without a file") << "fill"
                                         << "the driver file is missing";
    QTest::newRow("show with a database") << "show|--database|x"
                                          << "Unknown option 'database'";
}

void TestCustomCommands::usage()
{
    QFETCH(QString, arguments);
    QFETCH(QString, sentence);
    const Result result = run(argumentsOf(qPrintable(arguments)).filter(QRegExp(QStringLiteral(".+"))));
    QCOMPARE(result.err.section(QLatin1Char('\n'), 0, 0), QLatin1String("zelmar-label: ") + sentence);
    QCOMPARE(result.out, QString());
    QCOMPARE(result.code, 2);
}

void TestCustomCommands::help()
{
    const Result all = run(argumentsOf("--help"));
    QCOMPARE(all.code, 0);
    QVERIFY2(all.out.startsWith(QLatin1String("Usage: zelmar-label custom COMMAND")), qPrintable(all.out));
    QCOMPARE(all.out.count(QLatin1String("\n  custom ")), 5);
    QCOMPARE(run(argumentsOf("fill|--help")).out.section(QLatin1Char('\n'), 0, 0),
             QStringLiteral("Usage: zelmar-label custom fill [options] FILE.tsv"));
}

QTEST_GUILESS_MAIN(TestCustomCommands)

#include "tst_customcommands.moc"
