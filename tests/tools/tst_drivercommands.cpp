// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "support/projectfixtures.h"
#include "support/toolprocess.h"
#include "zelmar_label/label_store/labelstore.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegExp>
#include <QTemporaryDir>
#include <QTest>

#include <cstring>
#include <memory>

namespace {

QByteArray shippedText(const char *file)
{
    return contentOf(QStringLiteral(ZELMAR_LABEL_DRIVERS_SOURCE "/") + QLatin1String(file));
}

/// A driver file of one row; tests break `end` and `pattern`.
QByteArray driverText(const char *name, const char *pattern = "(D)(\\d{1,4})", const char *end = "7999")
{
    return QByteArray("# from nowhere\ndriver\t") + name +
           "\nblock_size\t64\nbit_block_size\t512\n"
           "pattern\ttype\taddress_group_index\tdescription\tprefix_symbol\tstart\tend\tdata_size\tmultiple_rule\t"
           "catch_table\tbase\tblocksize\tcontinue\n" +
           pattern + "\t2\t2\tD: data register, D0-D" + end + ", e.g. D1\tD\t0\t" + end + "\t2\t\t\t10\t64\tN\n";
}

} // namespace

/// Runs a copy of the built program beside the shipped drivers.
class TestDriverCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void exportIsTheSource_data();
    void exportIsTheSource();
    void exportOfRowsWithoutComments();
    void exportToFile();
    void exportAsJson();
    void exportRefusals_data();
    void exportRefusals();
    void newDriverWorksAtOnce();
    void newDriverAsJson();
    void newDriverIsNamed_data();
    void newDriverIsNamed();
    void newDriverRefusals_data();
    void newDriverRefusals();
    void newDriverOverwritesNothing();
    void newDriverNamesSuitCustomLabels();
    void compileMakesDatabase();
    void compileAddsAndReplaces();
    void compileAsJson();
    void compileTakesComments();
    void compileRefusals_data();
    void compileRefusals();
    void compileKeepsDatabaseOnError_data();
    void compileKeepsDatabaseOnError();
    void usage_data();
    void usage();

private:
    Result run(const QStringList &arguments) const
    {
        return runProcess(m_tool, arguments, QByteArray(), m_work->path());
    }
    QString path(const char *name) const { return m_work->filePath(QLatin1String(name)); }
    QStringList files() const;

    QString m_tool;
    /// A new folder for each test function.
    std::unique_ptr<QTemporaryDir> m_work;
};

void TestDriverCommands::initTestCase()
{
    m_tool = copyToolWithDrivers(QStringLiteral(ZELMAR_LABEL_TOOL),
                                 QCoreApplication::applicationDirPath() + QLatin1String("/tool"));
}

void TestDriverCommands::init()
{
    m_work = std::make_unique<QTemporaryDir>();
    QVERIFY(m_work->isValid());
}

QStringList TestDriverCommands::files() const
{
    return QDir(m_work->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

void TestDriverCommands::exportIsTheSource_data()
{
    QTest::addColumn<QString>("driver");
    QTest::addColumn<QString>("file");
    const QDir source(QStringLiteral(ZELMAR_LABEL_DRIVERS_SOURCE));
    const QStringList names = source.entryList({QStringLiteral("*.tsv")}, QDir::Files);
    QVERIFY(names.size() >= 8);
    for (const QString &name : names) {
        const QString text = QString::fromUtf8(contentOf(source.filePath(name)));
        const QString driver = text.section(QLatin1String("\ndriver\t"), 1).section(QLatin1Char('\n'), 0, 0);
        QTest::newRow(qPrintable(driver)) << driver << source.filePath(name);
    }
}

void TestDriverCommands::exportIsTheSource()
{
    QFETCH(QString, driver);
    QFETCH(QString, file);
    const Result result = run({QStringLiteral("export-driver"), driver});
    QCOMPARE(result.err, QString());
    QCOMPARE(result.code, 0);
    QCOMPARE(result.out, QString::fromUtf8(contentOf(file)));
}

void TestDriverCommands::exportOfRowsWithoutComments()
{
    Driver plc;
    plc.name = QStringLiteral("Plain PLC");
    plc.generalTable = QStringLiteral("plain_general");
    plc.deviceTable = QStringLiteral("plain_types");
    Row row;
    row.end = QStringLiteral("0FF");
    row.base = 16;
    plc.rows = {Row(), row};
    writeDriverDatabase(path("plain"), {plc});
    const Result result = run(argumentsOf("export-driver|Plain PLC|--database|plain"));
    QCOMPARE(result.err, QString());
    QCOMPARE(result.out,
             QStringLiteral("driver\tPlain PLC\nblock_size\t100\nbit_block_size\t200\n"
                            "pattern\ttype\taddress_group_index\tdescription\tprefix_symbol\tstart\tend\tdata_size\t"
                            "multiple_rule\tcatch_table\tbase\tblocksize\tcontinue\n"
                            "(D)(\\d+)\t2\t2\tD: data register\tD\t0\t9999\t2\t\t\t10\t64\tN\n"
                            "(D)(\\d+)\t2\t2\tD: data register\tD\t0\t0FF\t2\t\t\t16\t64\tN\n"));
    QCOMPARE(result.code, 0);
}

void TestDriverCommands::exportToFile()
{
    const Result made = run(argumentsOf("export-driver|Modbus TCP|out.tsv"));
    QCOMPARE(made.out + made.err, QString());
    QCOMPARE(made.code, 0);
    QCOMPARE(contentOf(path("out.tsv")), shippedText("modbus_tcp.tsv"));

    const Result again = run(argumentsOf("export-driver|FX5U Ethernet|out.tsv"));
    QCOMPARE(again.err, QStringLiteral("zelmar-label: out.tsv already exists; --force overwrites it\n"));
    QCOMPARE(again.code, 3);
    QCOMPARE(contentOf(path("out.tsv")), shippedText("modbus_tcp.tsv"));

    const Result forced = run(argumentsOf("export-driver|FX5U Ethernet|out.tsv|--force"));
    QCOMPARE(forced.out + forced.err, QString());
    QCOMPARE(forced.code, 0);
    QCOMPARE(contentOf(path("out.tsv")), shippedText("fx5u_ethernet.tsv"));
    QCOMPARE(files(), QStringList(QStringLiteral("out.tsv")));
}

void TestDriverCommands::exportAsJson()
{
    const Result printed = run(argumentsOf("export-driver|Modbus TCP|--json"));
    QCOMPARE(printed.out.count(QLatin1Char('\n')), 1);
    const QJsonObject object = QJsonDocument::fromJson(printed.out.toUtf8()).object();
    QCOMPARE(object.keys(), QStringList({QStringLiteral("driver"), QStringLiteral("text")}));
    QCOMPARE(object.value(QStringLiteral("driver")).toString(), QStringLiteral("Modbus TCP"));
    QCOMPARE(object.value(QStringLiteral("text")).toString().toUtf8(), shippedText("modbus_tcp.tsv"));

    const Result written = run(argumentsOf("export-driver|Modbus TCP|out.tsv|--json"));
    QCOMPARE(written.out, QStringLiteral("{\"driver\":\"Modbus TCP\",\"file\":\"out.tsv\"}\n"));
    QCOMPARE(contentOf(path("out.tsv")), shippedText("modbus_tcp.tsv"));
}

void TestDriverCommands::exportRefusals_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("a driver that is not there") << "export-driver|Modbus|--database|plain"
                                                << "there is no driver \"Modbus\" in plain; "
                                                   "\"zelmar-label drivers\" lists all";
    QTest::newRow("a database that is not there")
        << "export-driver|Modbus|--database|missing"
        << "there is no driver database at missing; name one with --database FILE";
    QTest::newRow("a file that is no database")
        << "export-driver|Modbus|--database|text"
        << "text is not a driver database (file is not a database); name another with --database FILE";
    QTest::newRow("a folder that is not there") << "export-driver|Plain PLC|none/out.tsv|--database|plain"
                                                << "none/out.tsv cannot be written: No such file or directory";
}

void TestDriverCommands::exportRefusals()
{
    QFETCH(QString, arguments);
    QFETCH(QString, sentence);
    Driver plc;
    plc.name = QStringLiteral("Plain PLC");
    plc.rows = {Row()};
    writeDriverDatabase(path("plain"), {plc});
    writeFile(path("text"), QByteArray("not a database, but some text that is long enough\n").repeated(40));
    const QStringList before = files();
    const Result result = run(argumentsOf(qPrintable(arguments)));
    QCOMPARE(result.err, QStringLiteral("zelmar-label: %1\n").arg(sentence));
    QCOMPARE(result.out, QString());
    QCOMPARE(result.code, 3);
    QCOMPARE(files(), before);
}

void TestDriverCommands::newDriverWorksAtOnce()
{
    const Result made = run(argumentsOf("new-driver|My PLC"));
    QCOMPARE(made.err, QString());
    QCOMPARE(made.out, QStringLiteral("Wrote my_plc.tsv and its samples samples/my_plc.tsv. Change them, then "
                                      "try them with\n"
                                      "  zelmar-label lint my_plc.tsv\n"
                                      "  zelmar-label compile my_plc.tsv --into trial.db\n"
                                      "  zelmar-label check \"My PLC\" D100 --database trial.db\n"));
    QCOMPARE(made.code, 0);

    QVERIFY(contentOf(path("my_plc.tsv")).startsWith("# Driver file of My PLC.\n"));
    QVERIFY(contentOf(path("samples/my_plc.tsv")).startsWith("# Samples of my_plc.tsv:"));
    const Result linted = run(argumentsOf("lint|my_plc.tsv|--json"));
    QCOMPARE(linted.err, QString());
    QCOMPARE(linted.out.count(QStringLiteral("\"error\"")), 0);
    QCOMPARE(linted.out.count(QStringLiteral("\"warning\"")), 0);
    QCOMPARE(linted.code, 0);

    const Result compiled = run(argumentsOf("compile|my_plc.tsv|--into|trial.db"));
    QCOMPARE(compiled.err, QString());
    QCOMPARE(compiled.out, QStringLiteral("\"My PLC\" is added, 6 formats\n"));
    QCOMPARE(compiled.code, 0);

    const Result checked = run(argumentsOf("check|My PLC|D7999|2-D100.15|M37|MW32|X17|W1f|--database|trial.db"));
    QCOMPARE(checked.err, QString());
    QCOMPARE(checked.out, QStringLiteral("verdict  address    station  symbol  range   number  bit  kind  register\n"
                                         "ok       D7999      -        D       7999    7999    -    word  -\n"
                                         "ok       2-D100.15  2        D       100.15  100     15   bit   2-D100\n"
                                         "ok       M37        -        M       37      37      5    bit   MW32\n"
                                         "ok       MW32       -        MW      32      32      -    word  -\n"
                                         "ok       X17        -        X       17      15      0    bit   -\n"
                                         "ok       W1f        -        W       1f      31      -    word  -\n"));
    QCOMPARE(checked.code, 0);
    for (const char *refused : {"D8000", "D1.16", "M4096", "MW8", "X18", "X400", "W1000", "d1"})
        QCOMPARE(run(argumentsOf("check|My PLC|--database|trial.db") << QLatin1String(refused)).code, 1);
    QCOMPARE(run(argumentsOf("next|My PLC|X7|--as|bit|--database|trial.db")).out, QStringLiteral("X10\n"));
    QCOMPARE(run(argumentsOf("next|My PLC|W9|--as|word|--database|trial.db")).out, QStringLiteral("Wa\n"));
    QCOMPARE(run(argumentsOf("next|My PLC|D1.15|--as|bit|--database|trial.db")).out, QStringLiteral("D2.0\n"));
    QCOMPARE(run(argumentsOf("blocks|My PLC|M0|--count|1000|--database|trial.db")).code, 0);

    // Its comments are copied too.
    QCOMPARE(run(argumentsOf("export-driver|My PLC|--database|trial.db")).out.toUtf8(), contentOf(path("my_plc.tsv")));
}

void TestDriverCommands::newDriverAsJson()
{
    const Result made = run(argumentsOf("new-driver|My PLC|sub/mine.tsv|--json"));
    QCOMPARE(made.code, 3);
    QVERIFY(QDir(m_work->path()).mkdir(QStringLiteral("sub")));
    const Result second = run(argumentsOf("new-driver|My PLC|sub/mine.tsv|--json"));
    QCOMPARE(second.err, QString());
    QCOMPARE(
        second.out,
        QStringLiteral("{\"driver\":\"My PLC\",\"file\":\"sub/mine.tsv\",\"samples\":\"sub/samples/mine.tsv\"}\n"));
    QVERIFY(contentOf(path("sub/samples/mine.tsv")).startsWith("# Samples of mine.tsv:"));
}

void TestDriverCommands::newDriverIsNamed_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("file");
    QTest::newRow("capitals and blanks") << "ISO on UDP"
                                         << "iso_on_udp.tsv";
    QTest::newRow("digits") << "FX3U Serial 2"
                            << "fx3u_serial_2.tsv";
    QTest::newRow("several blanks") << "A  B"
                                    << "a_b.tsv";
    QTest::newRow("a letter beyond ASCII in front") << QString::fromUtf8("\u00d6l PLC") << "l_plc.tsv";
    QTest::newRow("no letter of ASCII") << QString::fromUtf8("\u6c38 1") << "driver_1.tsv";
}

void TestDriverCommands::newDriverIsNamed()
{
    QFETCH(QString, name);
    QFETCH(QString, file);
    const Result made = run({QStringLiteral("new-driver"), name});
    QCOMPARE(made.err, QString());
    QCOMPARE(made.code, 0);
    QVERIFY(QFile::exists(m_work->filePath(file)));
    QVERIFY(QFile::exists(m_work->filePath(QLatin1String("samples/") + file)));
    const Result compiled = run({QStringLiteral("compile"), file, QStringLiteral("--into"), QStringLiteral("t.db")});
    QCOMPARE(compiled.err, QString());
    QCOMPARE(
        run({QStringLiteral("check"), name, QStringLiteral("D1"), QStringLiteral("--database"), QStringLiteral("t.db")})
            .code,
        0);
}

void TestDriverCommands::newDriverRefusals_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("sentence");
    const auto add = [](const char *row, const char *arguments, const char *sentence) {
        QTest::newRow(row) << argumentsOf(arguments) << QString::fromUtf8(sentence);
    };
    add("a dash", "S7-300",
        "the name \"S7-300\" contains \"-\": only letters, digits, blanks and \"_\" can name the "
        "tables of a custom label");
    add("a slash", "ServoC/CDE",
        "the name \"ServoC/CDE\" contains \"/\": only letters, digits, blanks and \"_\" can "
        "name the tables of a custom label");
    add("an apostrophe", "O'Hara",
        "the name \"O'Hara\" contains \"'\": only letters, digits, blanks and \"_\" can "
        "name the tables of a custom label");
    add("a tab", "A\tB",
        "the name \"A\tB\" contains \"\t\": only letters, digits, blanks and \"_\" can name the "
        "tables of a custom label");
    add("a digit in front", "3S PLC",
        "the name \"3S PLC\" does not begin with a letter: it cannot name the tables of a custom label");
    add("a blank in front", " PLC", "the name \" PLC\" begins or ends with a blank");
    add("no name", "", "a driver needs a name");
    add("a driver that is there", "ISO on TCP",
        "there is already a driver \"ISO on TCP\"; \"zelmar-label export-driver\" writes it as a file to start from");
    add("a file of another kind", "PLC|plc.txt",
        "plc.txt: the file name must be lower-case letters, digits and \"_\", followed by \".tsv\", because it names "
        "the tables");
    add("a file with a capital", "PLC|Plc.tsv",
        "Plc.tsv: the file name must be lower-case letters, digits and \"_\", followed by \".tsv\", because it names "
        "the tables");
}

void TestDriverCommands::newDriverRefusals()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, sentence);
    const Result result = run(QStringList(QStringLiteral("new-driver")) + arguments);
    QCOMPARE(result.err, QStringLiteral("zelmar-label: %1\n").arg(sentence));
    QCOMPARE(result.out, QString());
    QCOMPARE(result.code, 1);
    QCOMPARE(files(), QStringList());
}

void TestDriverCommands::newDriverOverwritesNothing()
{
    writeFile(path("plc.tsv"), "mine");
    const Result result = run(argumentsOf("new-driver|PLC"));
    QCOMPARE(result.err, QStringLiteral("zelmar-label: plc.tsv already exists; it is not changed\n"));
    QCOMPARE(result.code, 3);
    QCOMPARE(contentOf(path("plc.tsv")), QByteArray("mine"));
    QCOMPARE(files(), QStringList(QStringLiteral("plc.tsv")));

    QVERIFY(QDir(m_work->path()).mkdir(QStringLiteral("samples")));
    writeFile(path("samples/other.tsv"), "mine");
    const Result samples = run(argumentsOf("new-driver|Other"));
    QCOMPARE(samples.err, QStringLiteral("zelmar-label: samples/other.tsv already exists; it is not changed\n"));
    QCOMPARE(samples.code, 3);
    QVERIFY(!QFile::exists(path("other.tsv")));

    // A file in place of the folder.
    QVERIFY(QDir(m_work->path()).mkdir(QStringLiteral("sub")));
    writeFile(path("sub/samples"), "mine");
    QCOMPARE(run(argumentsOf("new-driver|Other|sub/other.tsv")).code, 3);
    QVERIFY(!QFile::exists(path("sub/other.tsv")));
}

void TestDriverCommands::newDriverNamesSuitCustomLabels()
{
    // Only the dollar would work but is refused: it causes trouble in shells and file names.
    QStringList names;
    QList<Driver> drivers;
    for (char character = 32; character < 127; ++character) {
        // One letter and digit of each kind is enough.
        if (QChar::fromLatin1(character).isLetterOrNumber() && !std::strchr("0Zz", character))
            continue;
        names.append(QLatin1String("A") + QLatin1Char(character) + QLatin1String("B"));
        names.append(QLatin1Char(character) + QLatin1String("AB"));
    }
    names.append(QString::fromUtf8("\u00d6l \u6c38"));
    for (const QString &name : qAsConst(names)) {
        Driver driver;
        driver.name = name;
        driver.generalTable = QStringLiteral("general_%1").arg(drivers.size());
        driver.deviceTable = QStringLiteral("types_%1").arg(drivers.size());
        drivers.append(driver);
    }
    writeDriverDatabase(driverDatabasePath(), drivers);
    const QString custom = QCoreApplication::applicationDirPath() + QLatin1String("/database/customdrivers");
    for (const QString &name : qAsConst(names)) {
        QFile::remove(custom);
        const bool isAccepted =
            run({QStringLiteral("new-driver"), QStringLiteral("--"), name, QStringLiteral("x.tsv")}).code == 0;
        QFile::remove(path("x.tsv"));
        QFile::remove(path("samples/x.tsv"));
        const LogRecorder quiet;
        const bool isFit = label::setupCustomLabel(name) && !name.startsWith(QLatin1Char(' ')) &&
                           !name.startsWith(QLatin1Char('_')) && !name.contains(QLatin1Char('$'));
        label::removeCustomLabelDatabase();
        QVERIFY2(isAccepted == isFit, qPrintable(name));
    }
}

void TestDriverCommands::compileMakesDatabase()
{
    writeFile(path("one.tsv"), driverText("One"));
    writeFile(path("two.tsv"), driverText("Two"));
    const Result result = run(argumentsOf("compile|one.tsv|two.tsv|--into|new.db"));
    QCOMPARE(result.err, QString());
    QCOMPARE(result.out, QStringLiteral("\"One\" is added, 1 format\n\"Two\" is added, 1 format\n"));
    QCOMPARE(result.code, 0);
    QCOMPARE(files(), QStringList({QStringLiteral("new.db"), QStringLiteral("one.tsv"), QStringLiteral("two.tsv")}));
    QCOMPARE(run(argumentsOf("drivers|--database|new.db|--json")).out,
             QStringLiteral("{\"driver\":\"One\",\"formats\":1,\"blockSize\":64,\"bitBlockSize\":512}\n"
                            "{\"driver\":\"Two\",\"formats\":1,\"blockSize\":64,\"bitBlockSize\":512}\n"));
}

void TestDriverCommands::compileAddsAndReplaces()
{
    // A database as others make it, with more in it than a driver needs.
    Driver one;
    one.name = QStringLiteral("One");
    one.rows = {Row()};
    one.generalTable = QStringLiteral("limits_of_one");
    one.deviceTable = QStringLiteral("rows_of_one");
    Driver other = one;
    other.name = QStringLiteral("Other");
    other.generalTable = QStringLiteral("limits_of_other");
    other.deviceTable = QStringLiteral("rows_of_other");
    writeDriverDatabase(path("db"), {one, other});
    openProject(path("db"), QStringLiteral("extended"));
    executeOn(QStringLiteral("extended"), QStringLiteral("CREATE TABLE notes (text)"));
    executeOn(QStringLiteral("extended"), QStringLiteral("INSERT INTO notes VALUES ('keep me')"));
    executeOn(QStringLiteral("extended"), QStringLiteral("ALTER TABLE limits_of_other ADD COLUMN vendor DEFAULT 'x'"));
    closeProject(QStringLiteral("extended"));
    const QStringList before = databaseDump(path("db"));

    writeFile(path("one.tsv"), driverText("One", "(D)(\\d{1,4})", "77"));
    writeFile(path("three.tsv"), driverText("Three"));
    const Result result = run(argumentsOf("compile|one.tsv|three.tsv|--into|db"));
    QCOMPARE(result.err, QString());
    QCOMPARE(result.code, 0);
    const QStringList copies = files().filter(QRegExp(QStringLiteral("^db\\.\\d{4}-\\d\\d-\\d\\d_\\d{6}$")));
    QCOMPARE(copies.size(), 1);
    QCOMPARE(result.out, QStringLiteral("\"One\" is replaced, 1 format\n\"Three\" is added, 1 format\n"
                                        "Backup of the database: db%1\n")
                             .arg(copies.constFirst().mid(2)));
    QCOMPARE(databaseDump(m_work->filePath(copies.constFirst())), before);

    openProject(path("db"), QStringLiteral("looked at"));
    const auto rows = [](const char *statement) {
        return rowsOn(QStringLiteral("looked at"), QLatin1String(statement));
    };
    QCOMPARE(rows("SELECT * FROM table_index"), QStringList({QStringLiteral("One|one_general|one_types"),
                                                             QStringLiteral("Other|limits_of_other|rows_of_other"),
                                                             QStringLiteral("Three|three_general|three_types")}));
    QCOMPARE(rows("SELECT \"end\" FROM one_types"), QStringList(QStringLiteral("77")));
    QCOMPARE(rows("SELECT text FROM notes"), QStringList(QStringLiteral("keep me")));
    QCOMPARE(rows("SELECT vendor FROM limits_of_other"), QStringList(QStringLiteral("x")));
    QCOMPARE(rows("SELECT name FROM sqlite_master WHERE name LIKE '%of_one'"), QStringList());
    closeProject(QStringLiteral("looked at"));

    // Once more, with the tables that it had.
    writeFile(path("one.tsv"), driverText("One", "(D)(\\d{1,4})", "88"));
    QCOMPARE(run(argumentsOf("compile|one.tsv|--into|db")).code, 0);
    openProject(path("db"), QStringLiteral("looked at"));
    QCOMPARE(rows("SELECT \"end\" FROM one_types"), QStringList(QStringLiteral("88")));
    QCOMPARE(rows("SELECT count(*) FROM table_index"), QStringList(QStringLiteral("3")));
    closeProject(QStringLiteral("looked at"));
}

void TestDriverCommands::compileAsJson()
{
    writeFile(path("one.tsv"), driverText("One"));
    QCOMPARE(
        run(argumentsOf("compile|one.tsv|--into|db|--json")).out,
        QStringLiteral("{\"driver\":\"One\",\"formats\":1,\"replaced\":false,\"database\":\"db\",\"backup\":null}\n"));
    const Result again = run(argumentsOf("compile|one.tsv|--into|db|--json"));
    QVERIFY2(
        again.out.startsWith(QLatin1String("{\"driver\":\"One\",\"formats\":1,\"replaced\":true,\"database\":\"db\","
                                           "\"backup\":\"db.")),
        qPrintable(again.out));
}

void TestDriverCommands::compileTakesComments()
{
    // Into a database without comments, twice, to test that none is duplicate.
    Driver other;
    other.name = QStringLiteral("Other");
    other.rows = {Row()};
    writeDriverDatabase(path("db"), {other});
    const QByteArray text = driverText("One").replace("(D)", "# in front of the row\n\n(D)") + "# at the end\n";
    writeFile(path("one.tsv"), driverText("One"));
    QCOMPARE(run(argumentsOf("compile|one.tsv|--into|db")).code, 0);
    writeFile(path("one.tsv"), text);
    QCOMPARE(run(argumentsOf("compile|one.tsv|--into|db")).code, 0);
    QCOMPARE(run(argumentsOf("export-driver|One|--database|db")).out.toUtf8(), text);
}

void TestDriverCommands::compileRefusals_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("part");
    QTest::newRow("an error of the form")
        << "compile|form.tsv|--into|new.db" << 1 << "form.tsv:6: error: 12 columns, but the header has 13";
    QTest::newRow("an error that lint finds") << "compile|lint.tsv|--into|new.db" << 1 << "lint.tsv:6";
    QTest::newRow("a bad file behind a good one") << "compile|good.tsv|lint.tsv|--into|new.db" << 1 << "lint.tsv:6";
    QTest::newRow("a file that is not there")
        << "compile|missing.tsv|--into|new.db" << 3
        << "zelmar-label: the driver file missing.tsv cannot be read: No such file or directory\n";
    QTest::newRow("a folder for a file") << "compile|.|--into|new.db" << 3
                                         << "zelmar-label: the driver file . cannot be read: ";
    QTest::newRow("a folder for a database")
        << "compile|good.tsv|--into|." << 3 << "zelmar-label: . is a folder; name a file with --into DATABASE\n";
    QTest::newRow("one driver in two files")
        << "compile|good.tsv|twin.tsv|--into|new.db" << 1 << "twin.tsv:2: error: driver 'Good' is already in ";
}

void TestDriverCommands::compileRefusals()
{
    QFETCH(QString, arguments);
    QFETCH(int, code);
    QFETCH(QString, part);
    writeFile(path("good.tsv"), driverText("Good"));
    writeFile(path("twin.tsv"), driverText("Good"));
    writeFile(path("form.tsv"), driverText("Form").replace("\tN\n", "\n"));
    writeFile(path("lint.tsv"), driverText("Lint", "(D)(\\d{1,4}"));
    const QStringList before = files();
    const Result result = run(argumentsOf(qPrintable(arguments)));
    QVERIFY2((result.err + result.out).contains(part), qPrintable(result.err + result.out));
    QCOMPARE(result.code, code);
    QCOMPARE(files(), before);
}

void TestDriverCommands::compileKeepsDatabaseOnError_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("part");

    QTemporaryDir folder;
    Driver one;
    one.name = QStringLiteral("One");
    one.rows = {Row()};
    const auto database = [&](const QList<Driver> &drivers) {
        writeDriverDatabase(folder.filePath(QStringLiteral("db")), drivers);
        return contentOf(folder.filePath(QStringLiteral("db")));
    };
    QTest::newRow("a driver file with an error") << database({one}) << "lint.tsv" << 1 << "lint.tsv:6";
    QTest::newRow("no database") << QByteArray("not a database, but some text that is long enough\n").repeated(40)
                                 << "good.tsv" << 3 << "file is not a database";
    Driver owner = one;
    owner.name = QStringLiteral("Owner");
    owner.deviceTable = QStringLiteral("GOOD_types");
    QTest::newRow("a table that another driver has") << database({owner}) << "good.tsv" << 3 << "already exists";
    QTest::newRow("a file of another kind")
        << QByteArray() << "good.tsv" << 3
        << "db is not a driver database (no such table: table_index); name another with "
           "--into DATABASE\n";
}

void TestDriverCommands::compileKeepsDatabaseOnError()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, file);
    QFETCH(int, code);
    QFETCH(QString, part);
    writeFile(path("good.tsv"), driverText("Good"));
    writeFile(path("lint.tsv"), driverText("Lint", "(D)(\\d{1,4}"));
    writeFile(path("db"), content);
    const QStringList before = files();
    const Result result = run({QStringLiteral("compile"), file, QStringLiteral("--into"), QStringLiteral("db")});
    QVERIFY2((result.err + result.out).contains(part), qPrintable(result.err + result.out));
    QCOMPARE(result.code, code);
    QCOMPARE(contentOf(path("db")), content);
    QCOMPARE(files(), before);
}

void TestDriverCommands::usage_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("export without a driver") << "export-driver"
                                             << "the driver is missing";
    QTest::newRow("export to two files") << "export-driver|PLC|a|b"
                                         << "\"b\" is one argument too many";
    QTest::newRow("new-driver without a name") << "new-driver"
                                               << "the name of the driver is missing";
    QTest::newRow("new-driver with a database") << "new-driver|PLC|--database|x"
                                                << "Unknown option 'database'";
    QTest::newRow("compile without files") << "compile|--into|db"
                                           << "the driver file is missing";
    QTest::newRow("compile without a database") << "compile|a.tsv"
                                                << "--into is missing: the driver database to write";
}

void TestDriverCommands::usage()
{
    QFETCH(QString, arguments);
    QFETCH(QString, sentence);
    const Result result = run(argumentsOf(qPrintable(arguments)));
    QCOMPARE(result.err.section(QLatin1Char('\n'), 0, 0), QLatin1String("zelmar-label: ") + sentence);
    QCOMPARE(result.out, QString());
    QCOMPARE(result.code, 2);
    QCOMPARE(files(), QStringList());
}

QTEST_GUILESS_MAIN(TestDriverCommands)

#include "tst_drivercommands.moc"
