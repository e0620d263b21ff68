// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/labelstoremessages.h"
#include "support/logrecorder.h"
#include "support/projectfixtures.h"

#include "zelmar_label/label_store/labelstore.h"
#include "zelmar_label/label_table/labelinterface.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QSqlDatabase>
#include <QTextStream>
#include <QtTest>

using label::LabelInterface;

namespace {

const QString customConnection = QStringLiteral("customdrivers");
/// A connection of the test's own to the custom database.
const QString peek = QStringLiteral("peek");

const QString indexStatement =
    QStringLiteral("CREATE TABLE table_index(name TEXT, general_table TEXT, device_table TEXT)");
const QString allOfIndex = QStringLiteral("SELECT * FROM table_index");

QString customPath()
{
    return databaseFolder() + QStringLiteral("/customdrivers");
}

/// Runs statements on the custom database, which is made if it is missing.
void changeCustomDatabase(const QStringList &statements)
{
    QDir().mkpath(databaseFolder());
    openProject(customPath(), peek);
    for (const QString &statement : statements)
        executeOn(peek, statement);
    closeProject(peek);
}

QStringList customRows(const QString &statement)
{
    openProject(customPath(), peek);
    const QStringList rows = rowsOn(peek, statement);
    closeProject(peek);
    return rows;
}

QStringList customTables()
{
    return customRows(QStringLiteral("SELECT name FROM sqlite_master ORDER BY rowid"));
}

Driver driver(const QString &name, int blockSize = 120, int bitBlockSize = 960, const QString &tables = {})
{
    Driver made;
    made.name = name;
    made.rows = {Row()};
    made.blockSize = blockSize;
    made.bitBlockSize = bitBlockSize;
    made.generalTable += tables;
    made.deviceTable += tables;
    return made;
}

/// The values of a device row, in the order of a custom device table.
QString deviceRow(const char *table, const char *pattern, const char *symbol)
{
    return QStringLiteral("INSERT INTO %1 VALUES ('%2', 2, 0, 99, 2, 'custom: %3', '%3', 2, 'words', '', 10, 32, 77)")
        .arg(QLatin1String(table), QLatin1String(pattern), QLatin1String(symbol));
}

bool isConnectionOpen()
{
    return QSqlDatabase::contains(customConnection) && QSqlDatabase::database(customConnection, false).isOpen();
}

/// True for the line that names the step of `operation` that failed.
bool isFailureLine(const QString &line, const char *operation)
{
    const QRegularExpression form(QStringLiteral("^%1 \\d+$").arg(QLatin1String(operation)));
    return form.match(line).hasMatch();
}

/// Which drivers use their custom label is read once in a process; so a fresh look takes a fresh process. Its steps are
/// "use NAME", "setup NAME", "default NAME", "remove PATH" and "rename FROM>TO"; the result has a word for each step.
QString inAFreshProcess(const QStringList &steps)
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), QStringList{QStringLiteral("--steps")} + steps);
    if (!process.waitForFinished(60000) || process.exitCode() != 0)
        return QStringLiteral("exit code %1: ").arg(process.exitCode()) +
               QString::fromUtf8(process.readAllStandardError());
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

bool runStep(const QString &operation, const QString &argument)
{
    if (operation == QLatin1String("use"))
        return label::useCustomLabel(argument);
    if (operation == QLatin1String("setup"))
        return label::setupCustomLabel(argument);
    if (operation == QLatin1String("default"))
        return label::setupDefaultLabel(argument);
    if (operation == QLatin1String("remove"))
        return QFileInfo(argument).isDir() ? QDir().rmdir(argument) : QFile::remove(argument);
    if (operation == QLatin1String("rename"))
        return QFile::rename(argument.section(QLatin1Char('>'), 0, 0), argument.section(QLatin1Char('>'), 1));
    qFatal("no step %s", qPrintable(operation));
    return false;
}

int runSteps(const QStringList &steps)
{
    QStringList results;
    for (const QString &step : steps) {
        const bool result = runStep(step.section(QLatin1Char(' '), 0, 0), step.section(QLatin1Char(' '), 1));
        results.append(result ? QStringLiteral("true") : QStringLiteral("false"));
    }
    QTextStream(stdout) << results.join(QLatin1Char(' ')) << '\n';
    return 0;
}

} // namespace

class CustomLabelsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void aConnectionMakesTheFileAndItsTable();
    void anOpenConnectionIsLeftAlone();
    void anExistingTableIsKept();
    void theTableIsLookedForInItsExactCase();
    void withoutTheFolderTheFileLiesBesideTheProgram();
    void aFileThatCannotBeOpened();

    void setupMakesTwoTablesAndAnEntry_data();
    void setupMakesTwoTablesAndAnEntry();
    void setupRefusesNamesThatMakeNoTableName_data();
    void setupRefusesNamesThatMakeNoTableName();
    void setupTwiceKeepsRowsAndLimits();
    void setupCompletesWhatIsMissing();
    void setupUpdatesEveryEntryOfTheDriver();
    void aFailingStepLeavesTheEarlierOnes_data();
    void aFailingStepLeavesTheEarlierOnes();
    void setupKeepsTheDefaultLabel();
    void driversAreSetUpApart();

    void setupShowsWithoutReadingTheFile();
    void defaultShowsWithoutReadingTheFile();
    void defaultKeepsTheTables();
    void defaultOfADriverThatWasNeverSetUp();
    void defaultFailsWhereTheTableCannotBeWritten_data();
    void defaultFailsWhereTheTableCannotBeWritten();

    void useAsTheFileTells_data();
    void useAsTheFileTells();
    void useIsReadOnce();
    void useAfterAFailedOpening();
    void useOfAFileThatCannotBeRead();
    void useFollowsSetupBeforeAndAfterTheFirstLook();

    void aFreshCustomLabelHasNoRowsAndTheDefaultLimits();
    void customRowsReachTheLabel();
    void theLimitsAreThoseOfTheCustomTable();
    void aCustomFamilyGrows();
    void customAndDefaultLabelsAreApart();
    void aSecondCallGivesTheSameLabelWithoutTheFile();
    void aFreedLabelIsBuiltAnew();
    void freeingAnUnknownDriverChangesNothing();
    void switchingLeavesCachedLabelsAlone();
    void failedBuilds_data();
    void failedBuilds();
    void anEntryWithoutTableNamesGivesAnEmptyLabel();
    void theConnectionStaysAfterAFailureOnly();
    void removingTheDatabaseRemovesTheConnection();

    void freeingAllLabelsKeepsTheirPointers();

private:
    bool setup(const QString &name);
    LabelInterface *build(const QString &name);

    QSet<QString> m_names;
    QString m_error;
};

bool CustomLabelsTest::setup(const QString &name)
{
    m_names.insert(name);
    return label::setupCustomLabel(name);
}

/// A custom label that `cleanup` frees; "untouched" stands in m_error when the store left the text alone.
LabelInterface *CustomLabelsTest::build(const QString &name)
{
    m_names.insert(name);
    m_error = untouched;
    return label::createCustomLabel(name, m_error);
}

void CustomLabelsTest::cleanup()
{
    for (const QString &name : qAsConst(m_names)) {
        label::freeCustomLabel(name);
        label::freeLabel(name);
    }
    m_names.clear();
    label::removeCustomLabelDatabase();
    QSqlDatabase::database(QStringLiteral("drivers"), false).close();
    QFile::remove(fileBesideTheProgram("drivers"));
    QFile::remove(fileBesideTheProgram("customdrivers"));
    QDir(databaseFolder()).removeRecursively();
}

void CustomLabelsTest::aConnectionMakesTheFileAndItsTable()
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

void CustomLabelsTest::anOpenConnectionIsLeftAlone()
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

void CustomLabelsTest::anExistingTableIsKept()
{
    const QString statement = QStringLiteral("CREATE TABLE table_index (device_table, general_table, name, note)");
    changeCustomDatabase({statement, QStringLiteral("INSERT INTO table_index VALUES ('d', 'g', 'A', 'kept')")});
    QSqlDatabase db;
    QVERIFY(label::createCustomDatabaseConnection(db));
    QCOMPARE(customRows(QStringLiteral("SELECT sql FROM sqlite_master")), QStringList{statement});
    QCOMPARE(customRows(allOfIndex), QStringList{QStringLiteral("d|g|A|kept")});
}

void CustomLabelsTest::theTableIsLookedForInItsExactCase()
{
    changeCustomDatabase({QStringLiteral("CREATE TABLE TABLE_INDEX (name, general_table, device_table)")});
    const LogRecorder log;
    QSqlDatabase db;
    QVERIFY2(label::createCustomDatabaseConnection(db), "that the table cannot be made is not told");
    QCOMPARE(customTables(), QStringList{QStringLiteral("TABLE_INDEX")});
    QCOMPARE(log.lines(), QStringList());
}

void CustomLabelsTest::withoutTheFolderTheFileLiesBesideTheProgram()
{
    QVERIFY(!QFileInfo::exists(databaseFolder()));
    writeDriverDatabase(fileBesideTheProgram("drivers"), {driver(QStringLiteral("A"))});
    QVERIFY(setup(QStringLiteral("A")));
    QVERIFY(QFileInfo::exists(fileBesideTheProgram("customdrivers")));
    QVERIFY(!QFileInfo::exists(databaseFolder()));
    QVERIFY(build(QStringLiteral("A")));
}

void CustomLabelsTest::aFileThatCannotBeOpened()
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

void CustomLabelsTest::setupMakesTwoTablesAndAnEntry_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("general");
    QTest::addColumn<QString>("device");
    QTest::newRow("a name of one word") << "Alpha"
                                        << "Alpha_general_table"
                                        << "Alpha_types_table";
    QTest::newRow("blanks become underscores") << "ISO on TCP"
                                               << "ISO_on_TCP_general_table"
                                               << "ISO_on_TCP_types_table";
    QTest::newRow("each of two blanks in a row") << "Two  blanks"
                                                 << "Two__blanks_general_table"
                                                 << "Two__blanks_types_table";
    QTest::newRow("blanks at both ends") << " Ends "
                                         << "_Ends__general_table"
                                         << "_Ends__types_table";
    QTest::newRow("letters beyond ASCII")
        << QStringLiteral("K\u00e4fer \u96fb") << QStringLiteral("K\u00e4fer_\u96fb_general_table")
        << QStringLiteral("K\u00e4fer_\u96fb_types_table");
    QTest::newRow("an empty name") << ""
                                   << "_general_table"
                                   << "_types_table";
}

void CustomLabelsTest::setupMakesTwoTablesAndAnEntry()
{
    QFETCH(QString, name);
    QFETCH(QString, general);
    QFETCH(QString, device);
    writeDriverDatabase(driverDatabasePath(), {driver(name, 120, 960)});
    const LogRecorder log;
    QVERIFY(setup(name));
    // The default label was built for its limits.
    QCOMPARE(log.lines(), QStringList{rowLine});
    QVERIFY(label::useCustomLabel(name));
    QCOMPARE(customTables(), (QStringList{QStringLiteral("table_index"), general, device}));
    const QString statement = QStringLiteral("SELECT sql FROM sqlite_master WHERE name = '%1'");
    QCOMPARE(customRows(statement.arg(general)),
             QStringList{QStringLiteral("CREATE TABLE ") + general +
                         QStringLiteral(" (driver_name TEXT, block_size NUMBER, bit_block_size NUMBER, "
                                        "support_actions TEXT)")});
    QCOMPARE(customRows(statement.arg(device)),
             QStringList{QStringLiteral("CREATE TABLE ") + device +
                         QStringLiteral(" (pattern TEXT, type NUMBER, start NUMBER, end NUMBER, address_group_index "
                                        "NUMBER, description TEXT, prefix_symbol TEXT, data_size NUMBER, catch_table "
                                        "TEXT, multiple_rule TEXT, base NUMBER, blocksize NUMBER, label_index "
                                        "NUMBER)")});
    QCOMPARE(customRows(QStringLiteral("SELECT * FROM ") + general), QStringList{name + QStringLiteral("|120|960|")});
    QCOMPARE(customRows(QStringLiteral("SELECT * FROM ") + device), QStringList());
    QCOMPARE(customRows(allOfIndex), QStringList{name + QLatin1Char('|') + general + QLatin1Char('|') + device});
    QVERIFY2(isConnectionOpen(), "setting up leaves the connection open");
}

void CustomLabelsTest::setupRefusesNamesThatMakeNoTableName_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a hyphen") << "Simatic S7-300 MPI";
    QTest::newRow("a slash") << "LustBus ServoC/CDE Series";
    QTest::newRow("a full stop") << "Driver 2.0";
    QTest::newRow("a bracket") << "Driver (new)";
    QTest::newRow("a digit at the front") << "3M";
    QTest::newRow("an apostrophe") << "O'Neil";
    QTest::newRow("a tab, which is no blank to be replaced") << "Tab\tname";
}

void CustomLabelsTest::setupRefusesNamesThatMakeNoTableName()
{
    QFETCH(QString, name);
    Driver one = driver(QStringLiteral("other"));
    if (!name.contains(QLatin1Char('\'')))
        one.name = name;
    writeDriverDatabase(driverDatabasePath(), {one});
    const LogRecorder log;
    QVERIFY(!setup(name));
    QCOMPARE(log.lines().size(), 1);
    QVERIFY2(isFailureLine(log.lines().constFirst(), "setupCustomLabel"), qPrintable(log.lines().constFirst()));
    QCOMPARE(customTables(), QStringList{QStringLiteral("table_index")});
    QCOMPARE(customRows(allOfIndex), QStringList());
    QVERIFY(!label::useCustomLabel(name));
    QCOMPARE(inAFreshProcess({QStringLiteral("use ") + name}), QStringLiteral("false"));
}

void CustomLabelsTest::setupTwiceKeepsRowsAndLimits()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Twice"), 120, 960)});
    QVERIFY(setup(QStringLiteral("Twice")));
    changeCustomDatabase({deviceRow("Twice_types_table", "(C)(\\d+)", "C"),
                          QStringLiteral("UPDATE Twice_general_table SET block_size = 7"),
                          QStringLiteral("UPDATE table_index SET general_table = 'x', device_table = ''")});
    QVERIFY(setup(QStringLiteral("Twice")));
    QCOMPARE(customRows(QStringLiteral("SELECT pattern, label_index FROM Twice_types_table")),
             QStringList{QStringLiteral("(C)(\\d+)|77")});
    QCOMPARE(customRows(QStringLiteral("SELECT * FROM Twice_general_table")),
             QStringList{QStringLiteral("Twice|7|960|")});
    QCOMPARE(customRows(allOfIndex), QStringList{QStringLiteral("Twice|Twice_general_table|Twice_types_table")});
    QCOMPARE(customTables().size(), 3);
}

void CustomLabelsTest::setupCompletesWhatIsMissing()
{
    changeCustomDatabase({indexStatement, QStringLiteral("CREATE TABLE Half_types_table (pattern TEXT)"),
                          QStringLiteral("INSERT INTO Half_types_table VALUES ('kept')")});
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Half"), 3, 4)});
    QVERIFY(setup(QStringLiteral("Half")));
    QCOMPARE(customRows(QStringLiteral("SELECT * FROM Half_types_table")), QStringList{QStringLiteral("kept")});
    QCOMPARE(customRows(QStringLiteral("SELECT * FROM Half_general_table")), QStringList{QStringLiteral("Half|3|4|")});
    QCOMPARE(customRows(allOfIndex), QStringList{QStringLiteral("Half|Half_general_table|Half_types_table")});
}

void CustomLabelsTest::setupUpdatesEveryEntryOfTheDriver()
{
    changeCustomDatabase({indexStatement, QStringLiteral("INSERT INTO table_index VALUES ('Doubled', '', '')"),
                          QStringLiteral("INSERT INTO table_index VALUES ('DOUBLED', 'g', 'd')"),
                          QStringLiteral("INSERT INTO table_index VALUES ('Doubled', 'a', 'b')")});
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Doubled"))});
    QVERIFY(setup(QStringLiteral("Doubled")));
    const QString entry = QStringLiteral("Doubled|Doubled_general_table|Doubled_types_table");
    QCOMPARE(customRows(allOfIndex), (QStringList{entry, QStringLiteral("DOUBLED|g|d"), entry}));
}

void CustomLabelsTest::aFailingStepLeavesTheEarlierOnes_data()
{
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<QStringList>("tables");
    const QString general = QStringLiteral("Step_general_table");
    const QString device = QStringLiteral("Step_types_table");
    const QString index = QStringLiteral("table_index");
    QTest::newRow("the general table is there in another case")
        << QStringList{indexStatement, QStringLiteral("CREATE TABLE STEP_general_table (driver_name)")}
        << QStringList{index, QStringLiteral("STEP_general_table")};
    QTest::newRow("the name of the device table is taken by a view")
        << QStringList{indexStatement, QStringLiteral("CREATE VIEW Step_types_table AS SELECT 1")}
        << QStringList{index, device, general};
    QTest::newRow("the list of drivers has no names")
        << QStringList{QStringLiteral("CREATE TABLE table_index (general_table, device_table)")}
        << QStringList{index, general, device};
    QTest::newRow("the list of drivers is a view, which takes no new row")
        << QStringList{QStringLiteral("CREATE VIEW table_index AS SELECT 'x' AS name, '' AS general_table, '' AS "
                                      "device_table")}
        << QStringList{index, general, device};
    QTest::newRow("the list of drivers is a view, which takes no change")
        << QStringList{QStringLiteral("CREATE VIEW table_index AS SELECT 'Step' AS name, '' AS general_table, '' AS "
                                      "device_table")}
        << QStringList{index, general, device};
}

void CustomLabelsTest::aFailingStepLeavesTheEarlierOnes()
{
    QFETCH(QStringList, before);
    QFETCH(QStringList, tables);
    changeCustomDatabase(before);
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Step"), 5, 6)});
    const LogRecorder log;
    QVERIFY(!setup(QStringLiteral("Step")));
    QVERIFY2(isFailureLine(log.lines().constLast(), "setupCustomLabel"), qPrintable(log.lines().constLast()));
    QCOMPARE(customTables(), tables);
    if (tables.contains(QStringLiteral("Step_general_table")))
        QCOMPARE(customRows(QStringLiteral("SELECT * FROM Step_general_table")),
                 QStringList{QStringLiteral("Step|5|6|")});
    QVERIFY(!label::useCustomLabel(QStringLiteral("Step")));
}

void CustomLabelsTest::setupKeepsTheDefaultLabel()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Kept"), 11, 22)});
    QString error = untouched;
    LabelInterface *const standard = label::createLabel(QStringLiteral("Kept"), error);
    QVERIFY(standard);
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Kept"), 33, 44)});
    QVERIFY(setup(QStringLiteral("Kept")));
    QCOMPARE(label::createLabel(QStringLiteral("Kept"), error), standard);
    QCOMPARE(customRows(QStringLiteral("SELECT block_size, bit_block_size FROM Kept_general_table")),
             QStringList{QStringLiteral("11|22")});
}

void CustomLabelsTest::driversAreSetUpApart()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Apart 1"), 1, 2, QStringLiteral("a")),
                                               driver(QStringLiteral("Apart 2"), 3, 4, QStringLiteral("b"))});
    QVERIFY(setup(QStringLiteral("Apart 1")));
    QVERIFY(!label::useCustomLabel(QStringLiteral("Apart 2")));
    QVERIFY(setup(QStringLiteral("Apart 2")));
    QCOMPARE(customRows(allOfIndex),
             (QStringList{QStringLiteral("Apart 1|Apart_1_general_table|Apart_1_types_table"),
                          QStringLiteral("Apart 2|Apart_2_general_table|Apart_2_types_table")}));
    QVERIFY(label::setupDefaultLabel(QStringLiteral("Apart 1")));
    QVERIFY(!label::useCustomLabel(QStringLiteral("Apart 1")));
    QVERIFY(label::useCustomLabel(QStringLiteral("Apart 2")));
    QCOMPARE(customRows(allOfIndex),
             (QStringList{QStringLiteral("Apart 1||"),
                          QStringLiteral("Apart 2|Apart_2_general_table|Apart_2_types_table")}));
}

void CustomLabelsTest::setupShowsWithoutReadingTheFile()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Shown"))});
    QVERIFY(!label::useCustomLabel(QStringLiteral("Shown")));
    QVERIFY(setup(QStringLiteral("Shown")));
    label::removeCustomLabelDatabase();
    QVERIFY(QFile::remove(customPath()));
    QVERIFY(label::useCustomLabel(QStringLiteral("Shown")));
    QVERIFY(!QFileInfo::exists(customPath()));
    QVERIFY(!QSqlDatabase::contains(customConnection));
}

void CustomLabelsTest::defaultShowsWithoutReadingTheFile()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Back"))});
    QVERIFY(setup(QStringLiteral("Back")));
    QVERIFY(label::setupDefaultLabel(QStringLiteral("Back")));
    QVERIFY2(isConnectionOpen(), "switching back leaves the connection open");
    label::removeCustomLabelDatabase();
    QVERIFY(QFile::remove(customPath()));
    QVERIFY(!label::useCustomLabel(QStringLiteral("Back")));
    QVERIFY(!QFileInfo::exists(customPath()));
}

void CustomLabelsTest::defaultKeepsTheTables()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("There and back"), 120, 960)});
    QVERIFY(setup(QStringLiteral("There and back")));
    changeCustomDatabase({deviceRow("There_and_back_types_table", "(C)(\\d+)", "C")});
    const LogRecorder log;
    QVERIFY(label::setupDefaultLabel(QStringLiteral("There and back")));
    QCOMPARE(log.lines(), QStringList());
    QCOMPARE(customRows(allOfIndex), QStringList{QStringLiteral("There and back||")});
    QCOMPARE(customRows(QStringLiteral("SELECT pattern FROM There_and_back_types_table")),
             QStringList{QStringLiteral("(C)(\\d+)")});
    QCOMPARE(inAFreshProcess({QStringLiteral("use There and back")}), QStringLiteral("false"));

    QVERIFY(setup(QStringLiteral("There and back")));
    QVERIFY(label::useCustomLabel(QStringLiteral("There and back")));
    LabelInterface *const custom = build(QStringLiteral("There and back"));
    QVERIFY(custom);
    QCOMPARE(custom->prefixSymbols(), QStringList{QStringLiteral("C")});
}

void CustomLabelsTest::defaultOfADriverThatWasNeverSetUp()
{
    QDir().mkpath(databaseFolder());
    const LogRecorder log;
    QVERIFY(label::setupDefaultLabel(QStringLiteral("Never")));
    QVERIFY(!label::useCustomLabel(QStringLiteral("Never")));
    QCOMPARE(customRows(allOfIndex), QStringList());
    QCOMPARE(log.lines(), QStringList());
}

void CustomLabelsTest::defaultFailsWhereTheTableCannotBeWritten_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("statement");
    QTest::newRow("the list of drivers is a view")
        << "View"
        << "CREATE VIEW table_index AS SELECT 'View' AS name, 'g' AS general_table, 'd' AS device_table";
    QTest::newRow("the list of drivers has no device tables") << "Narrow"
                                                              << "CREATE TABLE table_index (name, general_table)";
    QTest::newRow("an apostrophe breaks the statement") << "O'Neil" << indexStatement;
}

void CustomLabelsTest::defaultFailsWhereTheTableCannotBeWritten()
{
    QFETCH(QString, name);
    QFETCH(QString, statement);
    changeCustomDatabase({statement});
    const LogRecorder log;
    QVERIFY(!label::setupDefaultLabel(name));
    QCOMPARE(log.lines().size(), 1);
    QVERIFY2(isFailureLine(log.lines().constFirst(), "setupDefaultLabel"), qPrintable(log.lines().constFirst()));
}

void CustomLabelsTest::useAsTheFileTells_data()
{
    QTest::addColumn<QStringList>("entries");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    const QString custom = QStringLiteral("'A', 'g', 'd'");
    QTest::newRow("both table names") << QStringList{custom} << "A"
                                      << "true";
    QTest::newRow("tables that do not exist are not looked for")
        << QStringList{QStringLiteral("'A', 'none', 'none'")} << "A"
        << "true";
    QTest::newRow("two empty table names") << QStringList{QStringLiteral("'A', '', ''")} << "A"
                                           << "false";
    QTest::newRow("no general table") << QStringList{QStringLiteral("'A', '', 'd'")} << "A"
                                      << "false";
    QTest::newRow("no device table") << QStringList{QStringLiteral("'A', 'g', ''")} << "A"
                                     << "false";
    QTest::newRow("NULL for the table names") << QStringList{QStringLiteral("'A', NULL, NULL")} << "A"
                                              << "false";
    QTest::newRow("a driver that is not in the list") << QStringList{custom} << "B"
                                                      << "false";
    QTest::newRow("another case") << QStringList{custom} << "a"
                                  << "false";
    QTest::newRow("an empty list") << QStringList() << "A"
                                   << "false";
    QTest::newRow("of two entries the last one counts, custom")
        << QStringList{QStringLiteral("'A', '', ''"), custom} << "A"
        << "true";
    QTest::newRow("of two entries the last one counts, default")
        << QStringList{custom, QStringLiteral("'A', '', ''")} << "A"
        << "false";
    QTest::newRow("a name with an apostrophe, which is no part of the statement")
        << QStringList{QStringLiteral("'O''Neil', 'g', 'd'")} << "O'Neil"
        << "true";
}

void CustomLabelsTest::useAsTheFileTells()
{
    QFETCH(QStringList, entries);
    QFETCH(QString, name);
    QFETCH(QString, expected);
    QStringList statements{indexStatement};
    for (const QString &entry : qAsConst(entries))
        statements.append(QStringLiteral("INSERT INTO table_index VALUES (") + entry + QLatin1Char(')'));
    changeCustomDatabase(statements);
    QCOMPARE(inAFreshProcess({QStringLiteral("use ") + name}), expected);
}

void CustomLabelsTest::useIsReadOnce()
{
    changeCustomDatabase({indexStatement, QStringLiteral("INSERT INTO table_index VALUES ('A', 'g', 'd')")});
    QVERIFY(QFile::copy(customPath(), customPath() + QStringLiteral(".other")));
    changeCustomDatabase({QStringLiteral("UPDATE table_index SET general_table = ''")});
    const QString other = customPath() + QStringLiteral(".other");
    QCOMPARE(
        inAFreshProcess({QStringLiteral("use A"), QStringLiteral("remove ") + customPath(),
                         QStringLiteral("rename ") + other + QLatin1Char('>') + customPath(), QStringLiteral("use A")}),
        QStringLiteral("false true true false"));
    QCOMPARE(inAFreshProcess({QStringLiteral("use A")}), QStringLiteral("true"));
}

void CustomLabelsTest::useAfterAFailedOpening()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("A"))});
    const QString other = customPath() + QStringLiteral(".other");
    changeCustomDatabase({indexStatement, QStringLiteral("INSERT INTO table_index VALUES ('B', 'g', 'd')")});
    QVERIFY(QFile::rename(customPath(), other));
    QVERIFY(QDir().mkpath(customPath()));
    QCOMPARE(inAFreshProcess({QStringLiteral("use B"), QStringLiteral("remove ") + customPath(),
                              QStringLiteral("rename ") + other + QLatin1Char('>') + customPath(),
                              QStringLiteral("use B"), QStringLiteral("setup A"), QStringLiteral("use A"),
                              QStringLiteral("use B"), QStringLiteral("default A"), QStringLiteral("use A")}),
             QStringLiteral("false true true false true true false true false"));
    QCOMPARE(inAFreshProcess({QStringLiteral("use B")}), QStringLiteral("true"));
}

void CustomLabelsTest::useOfAFileThatCannotBeRead()
{
    QDir().mkpath(databaseFolder());
    QFile file(customPath());
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write(QByteArray(4096, 'x')) == 4096);
    file.close();
    QCOMPARE(inAFreshProcess({QStringLiteral("use A"), QStringLiteral("setup A"), QStringLiteral("use A"),
                              QStringLiteral("default A")}),
             QStringLiteral("false false false false"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray(4096, 'x'));
}

void CustomLabelsTest::useFollowsSetupBeforeAndAfterTheFirstLook()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("A"))});
    QCOMPARE(inAFreshProcess({QStringLiteral("setup A"), QStringLiteral("use A"), QStringLiteral("default A"),
                              QStringLiteral("use A"), QStringLiteral("setup A"), QStringLiteral("use A")}),
             QStringLiteral("true true true false true true"));
    QCOMPARE(inAFreshProcess({QStringLiteral("use A"), QStringLiteral("use B"), QStringLiteral("default A"),
                              QStringLiteral("use A")}),
             QStringLiteral("true false true false"));
    QCOMPARE(inAFreshProcess({QStringLiteral("use A")}), QStringLiteral("false"));
}

void CustomLabelsTest::aFreshCustomLabelHasNoRowsAndTheDefaultLimits()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Fresh"), 120, 960)});
    QVERIFY(setup(QStringLiteral("Fresh")));
    const LogRecorder log;
    LabelInterface *const made = build(QStringLiteral("Fresh"));
    QVERIFY(made);
    QCOMPARE(m_error, untouched);
    QCOMPARE(made->countBitTypes(), 0);
    QCOMPARE(made->getBlockCommandMaxSize(), 120);
    QCOMPARE(made->getBitCommandMaxSize(), 960);
    QCOMPARE(made->addressValidation(QStringLiteral("D1"), -1), -1);
    QCOMPARE(log.lines(), QStringList());
}

void CustomLabelsTest::customRowsReachTheLabel()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Rows"))});
    QVERIFY(setup(QStringLiteral("Rows")));
    changeCustomDatabase(
        {QStringLiteral("INSERT INTO Rows_types_table VALUES ('(E)([0-9A-F]+)', 2, '1F', 'FF', 2, 'E: hex word', 'E', "
                        "4, 'words', '', 16, -1, 5)"),
         QStringLiteral("INSERT INTO Rows_types_table VALUES ('(M)(\\d+)', 0, 0, 99, 2, 'M: bit', 'M', 1, 'bits', "
                        "'union-dec:rm16_E', 10, 48, 1)")});
    LabelInterface *const made = build(QStringLiteral("Rows"));
    QVERIFY(made);
    QCOMPARE(made->countBitTypes(), 2);
    QCOMPARE(made->prefixSymbols(), (QStringList{QStringLiteral("E"), QStringLiteral("M")}));
    QCOMPARE(made->getFormatString(0), QStringLiteral("E: hex word"));
    QCOMPARE(made->datatype(0), 2);
    QCOMPARE(made->datasize(0), 4);
    QCOMPARE(made->base(0), 16);
    QCOMPARE(made->blocksize(0), 0);
    QCOMPARE(made->addressValidation(QStringLiteral("E1F"), -1), 0);
    QCOMPARE(made->addressValidation(QStringLiteral("E1E"), -1), -1);
    QCOMPARE(made->addressValidation(QStringLiteral("E100"), -1), -1);
    QCOMPARE(made->addressRange(0, QStringLiteral("EA0")), 160);
    QCOMPARE(made->getCatchTableName(QStringLiteral("M5"), -1), QStringLiteral("bits"));
    QCOMPARE(made->datatype(1), 0);
    QCOMPARE(made->blocksize(1), 48);
    QVERIFY(made->canConvertToRegisterCommand(1));
    QVERIFY2(!made->isMustContinue(0) && !made->isMustContinue(1), "custom rows never ask for continuity");
}

void CustomLabelsTest::theLimitsAreThoseOfTheCustomTable()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Limits"), 120, 960)});
    QVERIFY(setup(QStringLiteral("Limits")));
    changeCustomDatabase({QStringLiteral("UPDATE Limits_general_table SET block_size = 8, bit_block_size = 9, "
                                         "driver_name = 'other', support_actions = 'none'")});
    LabelInterface *const made = build(QStringLiteral("Limits"));
    QVERIFY(made);
    QCOMPARE(made->getBlockCommandMaxSize(), 8);
    QCOMPARE(made->getBitCommandMaxSize(), 9);
}

void CustomLabelsTest::aCustomFamilyGrows()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("ISO on TCP"))});
    QVERIFY(setup(QStringLiteral("ISO on TCP")));
    changeCustomDatabase({deviceRow("ISO_on_TCP_types_table", "DB_DBW", "DB")});
    LabelInterface *const made = build(QStringLiteral("ISO on TCP"));
    QVERIFY(made);
    QCOMPARE(made->addressValidation(QStringLiteral("DB12.DBW4"), -1), 1);
    QCOMPARE(made->addressValidation(QStringLiteral("3-DB12.DBW6"), -1), 1);
    QCOMPARE(made->countBitTypes(), 2);
    QCOMPARE(made->getPrefixSymbolByTypeID(1), QStringLiteral("DB12.DBW"));
    QCOMPARE(made->getEditUsedPrifixSymbolByTypeId(1), QStringLiteral("DB"));
}

void CustomLabelsTest::customAndDefaultLabelsAreApart()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Both"), 11, 22)});
    QVERIFY(setup(QStringLiteral("Both")));
    changeCustomDatabase({deviceRow("Both_types_table", "(C)(\\d+)", "C")});
    LabelInterface *const custom = build(QStringLiteral("Both"));
    QString error = untouched;
    LabelInterface *const standard = label::createLabel(QStringLiteral("Both"), error);
    QVERIFY(custom && standard && custom != standard);
    QCOMPARE(custom->prefixSymbols(), QStringList{QStringLiteral("C")});
    QCOMPARE(standard->prefixSymbols(), QStringList{QStringLiteral("D")});
    label::freeCustomLabel(QStringLiteral("Both"));
    QCOMPARE(label::createLabel(QStringLiteral("Both"), error), standard);
    QCOMPARE(standard->prefixSymbols(), QStringList{QStringLiteral("D")});
    QCOMPARE(error, untouched);
}

void CustomLabelsTest::aSecondCallGivesTheSameLabelWithoutTheFile()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Cached"))});
    QVERIFY(setup(QStringLiteral("Cached")));
    LabelInterface *const made = build(QStringLiteral("Cached"));
    QVERIFY(made);
    QVERIFY(QFile::remove(customPath()));
    QCOMPARE(build(QStringLiteral("Cached")), made);
    QCOMPARE(m_error, untouched);
    QVERIFY(!QFileInfo::exists(customPath()));
    QVERIFY(!QSqlDatabase::contains(customConnection));
}

void CustomLabelsTest::aFreedLabelIsBuiltAnew()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Freed"))});
    QVERIFY(setup(QStringLiteral("Freed")));
    QVERIFY(build(QStringLiteral("Freed")));
    changeCustomDatabase({deviceRow("Freed_types_table", "(C)(\\d+)", "C")});
    QCOMPARE(build(QStringLiteral("Freed"))->countBitTypes(), 0);
    label::freeCustomLabel(QStringLiteral("Freed"));
    LabelInterface *const anew = build(QStringLiteral("Freed"));
    QVERIFY(anew);
    QCOMPARE(anew->countBitTypes(), 1);
}

void CustomLabelsTest::freeingAnUnknownDriverChangesNothing()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Known"))});
    QVERIFY(setup(QStringLiteral("Known")));
    LabelInterface *const made = build(QStringLiteral("Known"));
    label::freeCustomLabel(QStringLiteral("known"));
    label::freeCustomLabel(QStringLiteral("Unknown"));
    QCOMPARE(build(QStringLiteral("Known")), made);
}

void CustomLabelsTest::switchingLeavesCachedLabelsAlone()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Switched"))});
    QVERIFY(setup(QStringLiteral("Switched")));
    LabelInterface *const made = build(QStringLiteral("Switched"));
    QVERIFY(made);
    QVERIFY(label::setupDefaultLabel(QStringLiteral("Switched")));
    QCOMPARE(build(QStringLiteral("Switched")), made);
    QVERIFY(setup(QStringLiteral("Switched")));
    QCOMPARE(build(QStringLiteral("Switched")), made);
}

void CustomLabelsTest::failedBuilds_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("statements");
    QTest::addColumn<QString>("error");
    const QString entry = QStringLiteral("INSERT INTO table_index VALUES ('A', 'g', 'd')");
    const QString noQuery = QStringLiteral("Error (No query Unable to fetch row): SELECT * FROM table_index WHERE name "
                                           "= '");
    QTest::newRow("a driver that was never set up") << "A" << QStringList() << unknownDriver;
    QTest::newRow("another case") << "a" << QStringList{indexStatement, entry} << unknownDriver;
    QTest::newRow("an empty name") << "" << QStringList{indexStatement, entry} << unknownDriver;
    QTest::newRow("an apostrophe breaks the statement")
        << "O'Neil" << QStringList{indexStatement, entry} << QString(noQuery + QStringLiteral("O'Neil'"));
    QTest::newRow("a list of drivers without names")
        << "A" << QStringList{QStringLiteral("CREATE TABLE table_index (general_table, device_table)")}
        << QString(noQuery + QStringLiteral("A'"));
}

void CustomLabelsTest::failedBuilds()
{
    QFETCH(QString, name);
    QFETCH(QStringList, statements);
    QFETCH(QString, error);
    changeCustomDatabase(statements);
    const LogRecorder log;
    QVERIFY(!build(name));
    QCOMPARE(m_error, error);
    QCOMPARE(log.lines(), QStringList());
    QVERIFY2(isConnectionOpen(), "a failed build leaves the connection open");
}

void CustomLabelsTest::anEntryWithoutTableNamesGivesAnEmptyLabel()
{
    changeCustomDatabase({indexStatement, QStringLiteral("INSERT INTO table_index VALUES ('Empty', '', '')")});
    const LogRecorder log;
    LabelInterface *const made = build(QStringLiteral("Empty"));
    QVERIFY(made);
    QCOMPARE(m_error, untouched);
    QCOMPARE(made->countBitTypes(), 0);
    QCOMPARE(made->getBlockCommandMaxSize(), 0);
    QCOMPARE(made->getBitCommandMaxSize(), 0);
    QCOMPARE(build(QStringLiteral("Empty")), made);
    QCOMPARE(log.lines(), QStringList());
}

void CustomLabelsTest::theConnectionStaysAfterAFailureOnly()
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

void CustomLabelsTest::removingTheDatabaseRemovesTheConnection()
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

/// The last test: from here on the store holds stale pointers.
void CustomLabelsTest::freeingAllLabelsKeepsTheirPointers()
{
    changeCustomDatabase({indexStatement, QStringLiteral("INSERT INTO table_index VALUES ('Last 1', '', '')"),
                          QStringLiteral("INSERT INTO table_index VALUES ('Last 2', '', '')"),
                          QStringLiteral("INSERT INTO table_index VALUES ('Last 3', '', '')")});
    QString error = untouched;
    const auto first = quintptr(label::createCustomLabel(QStringLiteral("Last 1"), error));
    const auto second = quintptr(label::createCustomLabel(QStringLiteral("Last 2"), error));
    QVERIFY(first != 0 && second != 0);
    label::freeCustomLabels();
    QCOMPARE(quintptr(label::createCustomLabel(QStringLiteral("Last 1"), error)), first);
    QCOMPARE(quintptr(label::createCustomLabel(QStringLiteral("Last 2"), error)), second);
    QVERIFY(label::createCustomLabel(QStringLiteral("Last 3"), error));
    QCOMPARE(error, untouched);
    label::freeCustomLabel(QStringLiteral("Last 3"));
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--steps"))
        return runSteps(arguments.mid(2));
    CustomLabelsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_customlabels.moc"
