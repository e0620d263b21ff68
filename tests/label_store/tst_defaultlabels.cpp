// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"

#include "zelmar_label/label_store/labelstore.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QtTest>

using label::LabelInterface;
using label::LabelLoader;

namespace {

const QString rowLine = QStringLiteral("------------------------------------------    commandformatter");
const QString unknownDriver = QStringLiteral("Cant found driver table in label.");
/// What SQLite's Qt driver says about a statement that it could not prepare.
const QString noQuery = QStringLiteral("No query Unable to fetch row");
const QString noConnection = QStringLiteral("Can't create connection.");
const QString untouched = QStringLiteral("untouched");

QString lookUp(const QString &name)
{
    return QStringLiteral("SELECT * FROM table_index WHERE name = '") + name + QLatin1Char('\'');
}

QString failure(const QString &name)
{
    return QStringLiteral("Error (") + noQuery + QStringLiteral("): ") + lookUp(name);
}

QString databaseFolder()
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("database"));
}

QString fileBesideTheProgram()
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("drivers"));
}

Row row(const char *pattern, int type, const char *symbol, const char *rule = "")
{
    Row made;
    made.pattern = QLatin1String(pattern);
    made.type = type;
    made.prefixSymbol = QLatin1String(symbol);
    made.multipleRule = QLatin1String(rule);
    return made;
}

/// A driver with table names of its own.
Driver driver(const QString &name, const QList<Row> &rows, const QString &tables = QStringLiteral("a"))
{
    Driver made;
    made.name = name;
    made.rows = rows;
    made.generalTable = QStringLiteral("general_") + tables;
    made.deviceTable = QStringLiteral("types_") + tables;
    return made;
}

void writeDatabase(const QList<Driver> &drivers)
{
    writeDriverDatabase(driverDatabasePath(), drivers);
}

void execute(const QString &path, const QStringList &statements)
{
    const QString name = QStringLiteral("statements of a test");
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setDatabaseName(path);
        if (!db.open())
            qFatal("cannot open %s", qPrintable(path));
        QSqlQuery query(db);
        // Waiting for the disk is of no use to a test.
        if (!query.exec(QStringLiteral("PRAGMA synchronous = OFF")))
            qFatal("%s", qPrintable(query.lastError().text()));
        for (const QString &statement : statements) {
            if (!query.exec(statement))
                qFatal("%s: %s", qPrintable(statement), qPrintable(query.lastError().text()));
        }
    }
    QSqlDatabase::removeDatabase(name);
}

/// A database made by statements alone, for tables of other forms than the usual one.
void writeStatements(const QStringList &statements)
{
    const QString path = driverDatabasePath();
    QFile::remove(path);
    execute(path, statements);
}

const QString usualIndex =
    QStringLiteral("CREATE TABLE table_index (name TEXT, general_table TEXT, device_table TEXT)");
const QString usualEntry = QStringLiteral("INSERT INTO table_index VALUES ('Form', 'g', 'd')");
const QString usualGeneral = QStringLiteral("CREATE TABLE g (block_size, bit_block_size)");
const QString usualLimits = QStringLiteral("INSERT INTO g VALUES (11, 22)");
const QString usualDevice =
    QStringLiteral("CREATE TABLE d (pattern, type, address_group_index, description, prefix_symbol, start, \"end\", "
                   "data_size, multiple_rule, catch_table, base, blocksize, \"continue\")");
const QString usualRow =
    QStringLiteral("INSERT INTO d VALUES ('(D)(\\d+)', 2, 2, 'D: word', 'D', '0', '99', 2, '', 'words', 10, 32, 'Y')");

bool isConnectionOpen()
{
    return QSqlDatabase::database(QStringLiteral("drivers"), false).isOpen();
}

/// All lines but what Qt itself says when a connection that was opened before cannot be opened again.
QStringList ownLines(const LogRecorder &log)
{
    QStringList own;
    const QStringList lines = log.lines();
    for (const QString &line : lines) {
        if (!line.startsWith(QLatin1String("warning: QSqlDatabasePrivate::database: unable to open database")))
            own.append(line);
    }
    return own;
}

LabelLoader *loader(LabelInterface *made)
{
    return static_cast<LabelLoader *>(made);
}

} // namespace

class DefaultLabelsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void aConnectionIsOpenedToTheFileInTheFolder();
    void anOpenConnectionIsLeftAlone();
    void withoutTheFolderTheFileLiesBesideTheProgram();
    void aFileThatCannotBeOpened_data();
    void aFileThatCannotBeOpened();
    void aMissingFileIsMadeEmpty();

    void aLabelHasTheRowsAndLimitsOfItsDriver();
    void everyColumnReachesItsPlace();
    void buildingWritesOneLineForEachRow();
    void driversInOneFileAreKeptApart();
    void rowsKeepTheirOrder();
    void aDriverListedTwice();

    void aSecondCallGivesTheSameLabelWithoutTheFile();
    void namesAreCaseSensitive();
    void unknownDrivers_data();
    void unknownDrivers();
    void failedQueries_data();
    void failedQueries();
    void unusableFiles_data();
    void unusableFiles();
    void aLockedFileFailsUntilItIsFree();
    void aFailedBuildIsTriedAgain();
    void connectionStaysOpenAfterAFailureOnly();

    void generalTables_data();
    void generalTables();
    void deviceTablesWithoutRows_data();
    void deviceTablesWithoutRows();
    void aRequiredColumnIsMissing_data();
    void aRequiredColumnIsMissing();
    void otherFormsOfTheTables_data();
    void otherFormsOfTheTables();
    void withoutAContinueColumnTheRuleIsN();
    void blockSizes_data();
    void blockSizes();
    void dataSizesKeepTheirSign_data();
    void dataSizesKeepTheirSign();
    void emptyCells();

    void aFreedLabelIsBuiltAnewFromTheFile();
    void freeingAnUnknownDriverChangesNothing();
    void removingTheDatabaseDoesNothing();

    void dynamicFamilies_data();
    void dynamicFamilies();
    void driversWithoutFamiliesRefuse_data();
    void driversWithoutFamiliesRefuse();
    void aDataBlockFromRecognitionToConversion();
    void aFamilyInSmallLettersFindsNoTemplate();
    void dynamicRowsGoWithTheirLabel();

    void freeingAllLabelsKeepsTheirPointers();

private:
    LabelInterface *build(const QString &name);

    QSet<QString> m_built;
    QString m_error;
};

/// A label that `cleanup` frees; "untouched" stands in m_error when the store left the text alone.
LabelInterface *DefaultLabelsTest::build(const QString &name)
{
    m_error = untouched;
    LabelInterface *made = label::createLabel(name, m_error);
    if (made)
        m_built.insert(name);
    return made;
}

void DefaultLabelsTest::cleanup()
{
    for (const QString &name : qAsConst(m_built))
        label::freeLabel(name);
    m_built.clear();
    QSqlDatabase::database(QStringLiteral("drivers"), false).close();
    QFile::remove(fileBesideTheProgram());
    QDir(databaseFolder()).removeRecursively();
}

void DefaultLabelsTest::aConnectionIsOpenedToTheFileInTheFolder()
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

void DefaultLabelsTest::anOpenConnectionIsLeftAlone()
{
    const QString name = QStringLiteral("a connection of the test");
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setDatabaseName(QStringLiteral(":memory:"));
        QVERIFY(db.open());
        QVERIFY(label::createDatabaseConnection(db));
        QCOMPARE(db.connectionName(), name);
        QCOMPARE(db.databaseName(), QStringLiteral(":memory:"));
        QVERIFY(!QFileInfo::exists(fileBesideTheProgram()));
    }
    QSqlDatabase::removeDatabase(name);
}

void DefaultLabelsTest::withoutTheFolderTheFileLiesBesideTheProgram()
{
    QVERIFY(!QFileInfo::exists(databaseFolder()));
    writeDriverDatabase(fileBesideTheProgram(), {driver(QStringLiteral("Beside"), {Row()})});
    LabelInterface *made = build(QStringLiteral("Beside"));
    QVERIFY(made);
    QCOMPARE(made->countBitTypes(), 1);
    QVERIFY(!QFileInfo::exists(databaseFolder()));
}

void DefaultLabelsTest::aFileThatCannotBeOpened_data()
{
    QTest::addColumn<bool>("folder");
    QTest::newRow("a folder with the name of the file") << true;
    QTest::newRow("a link into a folder that is missing") << false;
}

void DefaultLabelsTest::aFileThatCannotBeOpened()
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
    QCOMPARE(ownLines(log), QStringList{line});
    log.take();
    QSqlDatabase db;
    QVERIFY(!label::createDatabaseConnection(db));
    QVERIFY(!db.isOpen());
    QCOMPARE(ownLines(log), QStringList{line});
    if (folder)
        QVERIFY(QDir().rmdir(path));
    else
        QVERIFY(QFile::remove(path));
    writeDatabase({driver(QStringLiteral("A"), {Row()})});
    QVERIFY2(build(QStringLiteral("A")), "the next call tries again");
}

void DefaultLabelsTest::aMissingFileIsMadeEmpty()
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

void DefaultLabelsTest::aLabelHasTheRowsAndLimitsOfItsDriver()
{
    Driver one = driver(QStringLiteral("A"), {Row(), row("(M)(\\d+)", 0, "M", "union-dec:rm16_D")});
    one.blockSize = 120;
    one.bitBlockSize = 960;
    writeDatabase({one});
    LabelInterface *made = build(QStringLiteral("A"));
    QVERIFY(made);
    QCOMPARE(m_error, untouched);
    QCOMPARE(made->getBlockCommandMaxSize(), 120);
    QCOMPARE(made->getBitCommandMaxSize(), 960);
    QCOMPARE(made->countBitTypes(), 2);
    QCOMPARE(made->prefixSymbols(), (QStringList{"D", "M"}));
}

void DefaultLabelsTest::everyColumnReachesItsPlace()
{
    Row word;
    word.pattern = QStringLiteral("(W)([0-9a-f]+)(x)");
    word.type = 3;
    word.addressGroupIndex = 2;
    word.description = QStringLiteral("W: word; Größe 4");
    word.prefixSymbol = QStringLiteral("Wort");
    word.start = QStringLiteral("10");
    word.end = QStringLiteral("1F");
    word.dataSize = 4;
    word.multipleRule = QStringLiteral("m8");
    word.catchTable = QStringLiteral("words");
    word.base = 16;
    word.blocksize = 17;
    word.continueRule = QStringLiteral("yes");
    writeDatabase({driver(QStringLiteral("A"), {word})});
    LabelInterface *made = build(QStringLiteral("A"));
    QVERIFY(made);
    QCOMPARE(loader(made)->deviceTypesTable().getFormatterIndexByPattern(QStringLiteral("(W)([0-9a-f]+)(x)")), 0);
    QCOMPARE(made->datatype(0), 3);
    QCOMPARE(made->addressRange(0, QStringLiteral("W1ax")), 26);
    QCOMPARE(made->getFormatString(0), QStringLiteral("W: word; Größe 4"));
    QCOMPARE(made->getPrefixSymbolByTypeID(0), QStringLiteral("Wort"));
    QCOMPARE(made->getEditUsedPrifixSymbolByTypeId(0), QStringLiteral("Wort"));
    QCOMPARE(made->addressValidation(QStringLiteral("W10x"), -1), 0);
    QCOMPARE(made->addressValidation(QStringLiteral("W18x"), -1), 0);
    QCOMPARE(made->addressValidation(QStringLiteral("W11x"), -1), -1);
    QCOMPARE(made->addressValidation(QStringLiteral("W8x"), -1), -1);
    QCOMPARE(made->addressValidation(QStringLiteral("W20x"), -1), -1);
    QCOMPARE(made->datasize(0), 4);
    QCOMPARE(made->alignmentSize(0), 8);
    QCOMPARE(made->getCatchTableName(QStringLiteral("W10x"), -1), QStringLiteral("words"));
    QCOMPARE(made->base(0), 16);
    QCOMPARE(made->blocksize(0), 17);
    QCOMPARE(made->isMustContinue(0), true);
}

void DefaultLabelsTest::buildingWritesOneLineForEachRow()
{
    writeDatabase({driver(QStringLiteral("A"), {Row(), Row(), Row()}), driver(QStringLiteral("B"), {Row()}, "b")});
    const LogRecorder log;
    QVERIFY(build(QStringLiteral("A")));
    QCOMPARE(log.lines(), (QStringList{rowLine, rowLine, rowLine}));
}

void DefaultLabelsTest::driversInOneFileAreKeptApart()
{
    Driver second = driver(QStringLiteral("B"), {row("(R)(\\d+)", 2, "R"), row("(S)(\\d+)", 2, "S")}, "b");
    second.blockSize = 7;
    second.bitBlockSize = 8;
    writeDatabase({driver(QStringLiteral("A"), {Row()}), second});
    LabelInterface *first = build(QStringLiteral("A"));
    LabelInterface *other = build(QStringLiteral("B"));
    QVERIFY(first && other && first != other);
    QCOMPARE(first->prefixSymbols(), QStringList{"D"});
    QCOMPARE(first->getBlockCommandMaxSize(), 100);
    QCOMPARE(first->getBitCommandMaxSize(), 200);
    QCOMPARE(other->prefixSymbols(), (QStringList{"R", "S"}));
    QCOMPARE(other->getBlockCommandMaxSize(), 7);
    QCOMPARE(other->getBitCommandMaxSize(), 8);
}

void DefaultLabelsTest::rowsKeepTheirOrder()
{
    Row wide = row("(D)(\\d+)", 3, "Z wide");
    wide.end = QStringLiteral("20000");
    writeDatabase({driver(QStringLiteral("A"), {wide, row("(D)(\\d+)", 2, "A narrow"), row("(B)(\\d+)", 2, "B")}),
                   driver(QStringLiteral("B"), {row("(D)(\\d+)", 2, "A narrow"), wide}, "b")});
    LabelInterface *made = build(QStringLiteral("A"));
    QVERIFY(made);
    QCOMPARE(made->prefixSymbols(), (QStringList{"Z wide", "A narrow", "B"}));
    QCOMPARE(made->addressValidation(QStringLiteral("D5"), -1), 0);
    QCOMPARE(made->datatype(0), 3);
    QCOMPARE(made->addressValidation(QStringLiteral("B5"), -1), 2);
    LabelInterface *other = build(QStringLiteral("B"));
    QVERIFY(other);
    QCOMPARE(other->addressValidation(QStringLiteral("D5"), -1), 0);
    QCOMPARE(other->datatype(0), 2);
    QCOMPARE(other->addressValidation(QStringLiteral("D20000"), -1), 1);
}

void DefaultLabelsTest::aDriverListedTwice()
{
    Driver later = driver(QStringLiteral("A"), {row("(R)(\\d+)", 2, "R")}, "b");
    later.blockSize = 7;
    writeDatabase({driver(QStringLiteral("A"), {Row(), Row()}), later});
    LabelInterface *made = build(QStringLiteral("A"));
    QVERIFY(made);
    QCOMPARE(made->prefixSymbols(), QStringList{"R"});
    QCOMPARE(made->getBlockCommandMaxSize(), 7);
}

void DefaultLabelsTest::aSecondCallGivesTheSameLabelWithoutTheFile()
{
    writeDatabase({driver(QStringLiteral("A"), {Row()})});
    LabelInterface *made = build(QStringLiteral("A"));
    QVERIFY(made);
    QVERIFY(QDir(databaseFolder()).removeRecursively());
    const LogRecorder log;
    QCOMPARE(build(QStringLiteral("A")), made);
    QCOMPARE(m_error, untouched);
    QVERIFY(!isConnectionOpen());
    QVERIFY(!QFileInfo::exists(databaseFolder()));
    QVERIFY(!QFileInfo::exists(fileBesideTheProgram()));
    QCOMPARE(log.lines(), QStringList());
}

void DefaultLabelsTest::namesAreCaseSensitive()
{
    writeDatabase({driver(QStringLiteral("Driver"), {Row()}),
                   driver(QStringLiteral("DRIVER"), {row("(R)(\\d+)", 2, "R")}, QStringLiteral("b"))});
    LabelInterface *first = build(QStringLiteral("Driver"));
    LabelInterface *second = build(QStringLiteral("DRIVER"));
    QVERIFY(first && second && first != second);
    QCOMPARE(first->prefixSymbols(), QStringList{"D"});
    QCOMPARE(second->prefixSymbols(), QStringList{"R"});
    QVERIFY(!build(QStringLiteral("driver")));
    QCOMPARE(m_error, unknownDriver);
}

void DefaultLabelsTest::unknownDrivers_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a name that is not listed") << "B";
    QTest::newRow("no name") << "";
    QTest::newRow("a name with a blank behind it") << "A ";
    QTest::newRow("a name in another case") << "a";
    QTest::newRow("a wild card") << "%";
    QTest::newRow("a place holder") << "%1";
    QTest::newRow("a doubled apostrophe, which SQL takes for one") << "A''";
}

void DefaultLabelsTest::unknownDrivers()
{
    QFETCH(QString, name);
    writeDatabase({driver(QStringLiteral("A"), {Row()})});
    const LogRecorder log;
    QVERIFY(!build(name));
    QCOMPARE(m_error, unknownDriver);
    QCOMPARE(log.lines(), QStringList());
}

void DefaultLabelsTest::failedQueries_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("withIndex");
    QTest::addColumn<QString>("error");
    QTest::newRow("an apostrophe in the name")
        << "O'Brien" << true
        << "Error (No query Unable to fetch row): SELECT * FROM table_index WHERE name = 'O'Brien'";
    QTest::newRow("a single apostrophe")
        << "'" << true << "Error (No query Unable to fetch row): SELECT * FROM table_index WHERE name = '''";
    QTest::newRow("a file without the index table")
        << "A" << false << "Error (No query Unable to fetch row): SELECT * FROM table_index WHERE name = 'A'";
    QTest::newRow("no name and no index table")
        << "" << false << "Error (No query Unable to fetch row): SELECT * FROM table_index WHERE name = ''";
    QTest::newRow("place holders in the name stay text")
        << "%1%2" << false << "Error (No query Unable to fetch row): SELECT * FROM table_index WHERE name = '%1%2'";
}

void DefaultLabelsTest::failedQueries()
{
    QFETCH(QString, name);
    QFETCH(bool, withIndex);
    QFETCH(QString, error);
    if (withIndex)
        writeDatabase({driver(QStringLiteral("O'Brien"), {Row()})});
    else
        writeStatements({QStringLiteral("CREATE TABLE other (name TEXT)")});
    const LogRecorder log;
    QVERIFY(!build(name));
    QCOMPARE(m_error, error);
    QCOMPARE(log.lines(), QStringList());
}

void DefaultLabelsTest::unusableFiles_data()
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

void DefaultLabelsTest::unusableFiles()
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

void DefaultLabelsTest::aLockedFileFailsUntilItIsFree()
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

void DefaultLabelsTest::aFailedBuildIsTriedAgain()
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

void DefaultLabelsTest::connectionStaysOpenAfterAFailureOnly()
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

void DefaultLabelsTest::generalTables_data()
{
    QTest::addColumn<QStringList>("statements");
    QTest::addColumn<int>("blockSize");
    QTest::addColumn<int>("bitBlockSize");
    QTest::newRow("the usual one") << QStringList{usualGeneral, usualLimits} << 11 << 22;
    QTest::newRow("missing") << QStringList() << 0 << 0;
    QTest::newRow("without a row") << QStringList{usualGeneral} << 0 << 0;
    QTest::newRow("two rows, the last of which counts")
        << QStringList{usualGeneral, usualLimits, "INSERT INTO g VALUES (33, 44)"} << 33 << 44;
    QTest::newRow("without the bits' column")
        << QStringList{"CREATE TABLE g (block_size)", "INSERT INTO g VALUES (11)"} << 11 << 0;
    QTest::newRow("without the registers' column")
        << QStringList{"CREATE TABLE g (bit_block_size)", "INSERT INTO g VALUES (22)"} << 0 << 22;
    QTest::newRow("without either column") << QStringList{"CREATE TABLE g (x)", "INSERT INTO g VALUES (1)"} << 0 << 0;
    QTest::newRow("further columns in another order")
        << QStringList{"CREATE TABLE g (x, bit_block_size, y, block_size)", "INSERT INTO g VALUES (1, 22, 3, 11)"} << 11
        << 22;
    QTest::newRow("numbers as texts") << QStringList{usualGeneral, "INSERT INTO g VALUES ('11', '22')"} << 11 << 22;
    QTest::newRow("texts that are no numbers") << QStringList{usualGeneral, "INSERT INTO g VALUES ('a', '')"} << 0 << 0;
    QTest::newRow("empty cells") << QStringList{usualGeneral, "INSERT INTO g VALUES (NULL, NULL)"} << 0 << 0;
    QTest::newRow("negative numbers") << QStringList{usualGeneral, "INSERT INTO g VALUES (-1, -2)"} << -1 << -2;
}

void DefaultLabelsTest::generalTables()
{
    QFETCH(QStringList, statements);
    QFETCH(int, blockSize);
    QFETCH(int, bitBlockSize);
    writeStatements(QStringList{usualIndex, usualEntry, usualDevice, usualRow} + statements);
    const LogRecorder log;
    LabelInterface *made = build(QStringLiteral("Form"));
    QVERIFY(made);
    QCOMPARE(m_error, untouched);
    QCOMPARE(made->getBlockCommandMaxSize(), blockSize);
    QCOMPARE(made->getBitCommandMaxSize(), bitBlockSize);
    QCOMPARE(made->countBitTypes(), 1);
    QCOMPARE(log.lines(), QStringList{rowLine});
}

void DefaultLabelsTest::deviceTablesWithoutRows_data()
{
    QTest::addColumn<QStringList>("statements");
    QTest::newRow("missing") << QStringList();
    QTest::newRow("empty") << QStringList{usualDevice};
    QTest::newRow("of another form") << QStringList{"CREATE TABLE d (x)", "INSERT INTO d VALUES (1)"};
}

void DefaultLabelsTest::deviceTablesWithoutRows()
{
    QFETCH(QStringList, statements);
    writeStatements(QStringList{usualIndex, usualEntry, usualGeneral, usualLimits} + statements);
    const LogRecorder log;
    LabelInterface *made = build(QStringLiteral("Form"));
    QVERIFY(made);
    QCOMPARE(m_error, untouched);
    QCOMPARE(made->countBitTypes(), 0);
    QCOMPARE(made->getBlockCommandMaxSize(), 11);
    QCOMPARE(build(QStringLiteral("Form")), made);
    QVERIFY(!isConnectionOpen());
    QCOMPARE(log.lines(), QStringList());
}

void DefaultLabelsTest::aRequiredColumnIsMissing_data()
{
    QTest::addColumn<QString>("column");
    for (const char *column : {"pattern", "type", "address_group_index", "description", "prefix_symbol", "data_size",
                               "catch_table", "multiple_rule", "start", "end", "base", "blocksize"})
        QTest::newRow(column) << column;
}

void DefaultLabelsTest::aRequiredColumnIsMissing()
{
    QFETCH(QString, column);
    Driver one = driver(QStringLiteral("A"), {Row(), Row()});
    one.missingColumns = QStringList{column};
    writeDatabase({one});
    const LogRecorder log;
    LabelInterface *made = build(QStringLiteral("A"));
    QVERIFY(made);
    QCOMPARE(m_error, untouched);
    QCOMPARE(made->countBitTypes(), 0);
    QCOMPARE(made->getBlockCommandMaxSize(), 100);
    QCOMPARE(made->addressValidation(QStringLiteral("D1"), -1), -1);
    QCOMPARE(build(QStringLiteral("A")), made);
    QCOMPARE(log.lines(), QStringList());
}

void DefaultLabelsTest::otherFormsOfTheTables_data()
{
    QTest::addColumn<QStringList>("statements");
    QTest::addColumn<QStringList>("symbols");
    QTest::addColumn<int>("blockSize");
    const QStringList general{usualGeneral, usualLimits};
    const QStringList device{usualDevice, usualRow};
    QTest::newRow("the usual form") << general + device + QStringList{usualIndex, usualEntry} << QStringList{"D"} << 11;
    QTest::newRow("device columns in the opposite order, with others between them")
        << general + QStringList{usualIndex, usualEntry,
                                 "CREATE TABLE d (\"continue\", x, blocksize, base, catch_table, multiple_rule, "
                                 "data_size, \"end\", start, prefix_symbol, y, description, address_group_index, type, "
                                 "pattern, z)",
                                 "INSERT INTO d VALUES ('Y', 1, 32, 10, 'words', '', 2, '99', '0', 'D', 2, 'D: word', "
                                 "2, 2, '(D)(\\d+)', 3)"}
        << QStringList{"D"} << 11;
    QTest::newRow("device columns in capitals")
        << general + QStringList{usualIndex, usualEntry,
                                 "CREATE TABLE d (PATTERN, TYPE, ADDRESS_GROUP_INDEX, DESCRIPTION, PREFIX_SYMBOL, "
                                 "START, \"END\", DATA_SIZE, MULTIPLE_RULE, CATCH_TABLE, BASE, BLOCKSIZE, "
                                 "\"CONTINUE\")",
                                 usualRow}
        << QStringList{"D"} << 11;
    QTest::newRow("a view for a device table")
        << general + QStringList{usualIndex, usualEntry, QString(usualDevice).replace(" d ", " stored "),
                                 QString(usualRow).replace(" d ", " stored "), "CREATE VIEW d AS SELECT * FROM stored"}
        << QStringList{"D"} << 11;
    QTest::newRow("numbers as texts")
        << general + QStringList{usualIndex, usualEntry, usualDevice,
                                 "INSERT INTO d VALUES ('(D)(\\d+)', '2', '2', 'D: word', 'D', '0', '99', '2', '', "
                                 "'words', '10', '32', 'Y')"}
        << QStringList{"D"} << 11;
    QTest::newRow("limits as numbers")
        << general + QStringList{usualIndex, usualEntry, usualDevice,
                                 "INSERT INTO d VALUES ('(D)(\\d+)', 2, 2, 'D: word', 'D', 0, 99, 2, '', 'words', 10, "
                                 "32, 'Y')"}
        << QStringList{"D"} << 11;
    QTest::newRow("an index in another order, with another column")
        << general + device +
               QStringList{"CREATE TABLE table_index (device_table, x, general_table, name)",
                           "INSERT INTO table_index VALUES ('d', 1, 'g', 'Form')"}
        << QStringList{"D"} << 11;
    QTest::newRow("an index without general tables") << general + device +
                                                            QStringList{"CREATE TABLE table_index (name, device_table)",
                                                                        "INSERT INTO table_index VALUES ('Form', 'd')"}
                                                     << QStringList{"D"} << 0;
    QTest::newRow("an index without device tables") << general + device +
                                                           QStringList{"CREATE TABLE table_index (name, general_table)",
                                                                       "INSERT INTO table_index VALUES ('Form', 'g')"}
                                                    << QStringList() << 11;
    QTest::newRow("an index with empty cells")
        << general + device + QStringList{usualIndex, "INSERT INTO table_index VALUES ('Form', NULL, '')"}
        << QStringList() << 0;
}

void DefaultLabelsTest::otherFormsOfTheTables()
{
    QFETCH(QStringList, statements);
    QFETCH(QStringList, symbols);
    QFETCH(int, blockSize);
    writeStatements(statements);
    LabelInterface *made = build(QStringLiteral("Form"));
    QVERIFY(made);
    QCOMPARE(m_error, untouched);
    QCOMPARE(made->prefixSymbols(), symbols);
    QCOMPARE(made->getBlockCommandMaxSize(), blockSize);
    if (symbols.isEmpty())
        return;
    QCOMPARE(made->getFormatString(0), QStringLiteral("D: word"));
    QCOMPARE(made->datatype(0), 2);
    QCOMPARE(made->datasize(0), 2);
    QCOMPARE(made->base(0), 10);
    QCOMPARE(made->blocksize(0), 32);
    QCOMPARE(made->isMustContinue(0), true);
    QCOMPARE(made->getCatchTableName(QStringLiteral("D99"), 2), QStringLiteral("words"));
    QCOMPARE(made->addressValidation(QStringLiteral("D100"), -1), -1);
}

void DefaultLabelsTest::withoutAContinueColumnTheRuleIsN()
{
    Row word;
    word.continueRule = QStringLiteral("Y");
    Driver one = driver(QStringLiteral("A"), {word, word});
    one.missingColumns = QStringList{QStringLiteral("continue")};
    writeDatabase({one, driver(QStringLiteral("B"), {word}, QStringLiteral("b"))});
    LabelInterface *made = build(QStringLiteral("A"));
    QVERIFY(made);
    QCOMPARE(made->countBitTypes(), 2);
    QCOMPARE(loader(made)->deviceTypesTable().continueRule(0), QStringLiteral("N"));
    QCOMPARE(loader(made)->deviceTypesTable().continueRule(1), QStringLiteral("N"));
    QCOMPARE(made->isMustContinue(0), false);
    LabelInterface *other = build(QStringLiteral("B"));
    QVERIFY(other);
    QCOMPARE(loader(other)->deviceTypesTable().continueRule(0), QStringLiteral("Y"));
}

void DefaultLabelsTest::blockSizes_data()
{
    QTest::addColumn<int>("stored");
    QTest::addColumn<int>("read");
    QTest::newRow("a usual one") << 64 << 64;
    QTest::newRow("-1 is none") << -1 << 0;
    QTest::newRow("any negative one is none") << -64 << 0;
    QTest::newRow("0") << 0 << 0;
    QTest::newRow("1") << 1 << 1;
}

void DefaultLabelsTest::blockSizes()
{
    QFETCH(int, stored);
    QFETCH(int, read);
    Row word;
    word.blocksize = stored;
    writeDatabase({driver(QStringLiteral("A"), {word})});
    LabelInterface *made = build(QStringLiteral("A"));
    QVERIFY(made);
    QCOMPARE(made->blocksize(0), read);
}

void DefaultLabelsTest::dataSizesKeepTheirSign_data()
{
    QTest::addColumn<int>("stored");
    QTest::addColumn<quint64>("read");
    QTest::newRow("a usual one") << 4 << Q_UINT64_C(4);
    QTest::newRow("0") << 0 << Q_UINT64_C(0);
    QTest::newRow("-1") << -1 << Q_UINT64_C(0xffffffffffffffff);
    QTest::newRow("-2") << -2 << Q_UINT64_C(0xfffffffffffffffe);
}

void DefaultLabelsTest::dataSizesKeepTheirSign()
{
    QFETCH(int, stored);
    QFETCH(quint64, read);
    Row word;
    word.dataSize = stored;
    writeDatabase({driver(QStringLiteral("A"), {word})});
    LabelInterface *made = build(QStringLiteral("A"));
    QVERIFY(made);
    QCOMPARE(quint64(loader(made)->deviceTypesTable().getFormatterAtIndex(0).datasize()), read);
    QCOMPARE(made->datasize(0), stored);
}

void DefaultLabelsTest::emptyCells()
{
    writeStatements({usualIndex, usualEntry, usualDevice,
                     "INSERT INTO d VALUES (NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, "
                     "NULL)",
                     usualRow});
    LabelInterface *made = build(QStringLiteral("Form"));
    QVERIFY(made);
    QCOMPARE(made->countBitTypes(), 2);
    QCOMPARE(made->datatype(0), 0);
    QCOMPARE(made->base(0), 0);
    QCOMPARE(made->datasize(0), 0);
    QCOMPARE(made->blocksize(0), 0);
    QCOMPARE(made->getFormatString(0), QString());
    QCOMPARE(loader(made)->deviceTypesTable().continueRule(0), QString());
    QCOMPARE(made->addressValidation(QStringLiteral("D1"), -1), 1);
}

void DefaultLabelsTest::aFreedLabelIsBuiltAnewFromTheFile()
{
    writeDatabase({driver(QStringLiteral("A"), {Row()}), driver(QStringLiteral("B"), {Row()}, QStringLiteral("b"))});
    LabelInterface *other = build(QStringLiteral("B"));
    QVERIFY(build(QStringLiteral("A")));
    writeDatabase({driver(QStringLiteral("A"), {row("(R)(\\d+)", 2, "R"), Row()})});
    QCOMPARE(build(QStringLiteral("A"))->prefixSymbols(), QStringList{"D"});
    label::freeLabel(QStringLiteral("A"));
    LabelInterface *anew = build(QStringLiteral("A"));
    QVERIFY(anew);
    QCOMPARE(anew->prefixSymbols(), (QStringList{"R", "D"}));
    QCOMPARE(build(QStringLiteral("B")), other);
    QCOMPARE(other->prefixSymbols(), QStringList{"D"});
}

void DefaultLabelsTest::freeingAnUnknownDriverChangesNothing()
{
    writeDatabase({driver(QStringLiteral("A"), {Row()})});
    LabelInterface *made = build(QStringLiteral("A"));
    QVERIFY(made);
    const LogRecorder log;
    label::freeLabel(QStringLiteral("B"));
    label::freeLabel(QStringLiteral("a"));
    label::freeLabel(QString());
    QCOMPARE(build(QStringLiteral("A")), made);
    QCOMPARE(made->countBitTypes(), 1);
    label::freeLabel(QStringLiteral("A"));
    label::freeLabel(QStringLiteral("A"));
    QCOMPARE(log.lines(), QStringList());
}

void DefaultLabelsTest::removingTheDatabaseDoesNothing()
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

void DefaultLabelsTest::dynamicFamilies_data()
{
    QTest::addColumn<QString>("driverName");
    QTest::addColumn<QString>("templatePattern");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("symbol");
    QTest::newRow("data blocks over Ethernet") << "ISO on TCP"
                                               << "DB_DBW"
                                               << "DB12.DBW4"
                                               << "DB12.DBW";
    QTest::newRow("data blocks over the multi-point interface") << "Simatic S7-300 MPI"
                                                                << "DB_DBX_BYTE"
                                                                << "DB12.DBX4"
                                                                << "DB12.DBX";
    QTest::newRow("data files on a serial line") << "MicroLogix DF1 RS232"
                                                 << "NUMBER"
                                                 << "N9:5"
                                                 << "N9:";
    QTest::newRow("data files over Ethernet") << "MicroLogix Ethernet"
                                              << "FLOAT"
                                              << "F12:5"
                                              << "F12:";
    QTest::newRow("data files of the large controller") << "PLC5 DF1 CRC"
                                                        << "TIMER_ACC"
                                                        << "T9:1.ACC"
                                                        << "T9:";
    QTest::newRow("parameters of a drive") << "LustBus ServoC/CDE Series"
                                           << "INT16_NO_IDX"
                                           << "INT16:1:2"
                                           << "INT16:1:";
    QTest::newRow("memory of modules") << "FX5U Ethernet"
                                       << "MOD_ACCESS_DEV"
                                       << "U1\\G100"
                                       << "U1\\G";
}

void DefaultLabelsTest::dynamicFamilies()
{
    QFETCH(QString, driverName);
    QFETCH(QString, templatePattern);
    QFETCH(QString, address);
    QFETCH(QString, symbol);
    Row family;
    family.pattern = templatePattern;
    family.prefixSymbol = QStringLiteral("family");
    writeDatabase({driver(driverName, {Row(), family})});
    LabelInterface *made = build(driverName);
    QVERIFY(made);
    QCOMPARE(made->addressValidation(QStringLiteral("3-") + address, -1), -1);
    QCOMPARE(made->addressValidation(address, -1), 2);
    QCOMPARE(made->addressValidation(address, -1), 2);
    QCOMPARE(made->addressValidation(QStringLiteral("3-") + address, -1), 2);
    QCOMPARE(made->countBitTypes(), 3);
    QCOMPARE(made->getPrefixSymbolByTypeID(2), symbol);
    QCOMPARE(made->getEditUsedPrifixSymbolByTypeId(2), QStringLiteral("family"));
}

void DefaultLabelsTest::driversWithoutFamiliesRefuse_data()
{
    QTest::addColumn<QString>("driverName");
    QTest::newRow("a driver without a family") << "A";
    QTest::newRow("the name of a driver with one, in another case") << "ISO ON TCP";
}

void DefaultLabelsTest::driversWithoutFamiliesRefuse()
{
    QFETCH(QString, driverName);
    writeDatabase({driver(driverName, {row("DB_DBW", 2, "DB"), row("NUMBER", 2, "N"), row("MOD_ACCESS_DEV", 2, "U"),
                                       row("INT16_NO_IDX", 2, "P")})});
    LabelInterface *made = build(driverName);
    QVERIFY(made);
    for (const char *address : {"DB12.DBW4", "N9:5", "U1\\G100", "INT16:1:2"})
        QCOMPARE(made->addressValidation(QLatin1String(address), -1), -1);
    QCOMPARE(made->countBitTypes(), 4);
}

void DefaultLabelsTest::aDataBlockFromRecognitionToConversion()
{
    Row bits = row("DB_DBX", 0, "DB", "dot-oct:r");
    bits.dataSize = 1;
    Row bytes = row("DB_DBX_BYTE", 1, "DB");
    bytes.dataSize = 1;
    writeDatabase({driver(QStringLiteral("ISO on TCP"), {bits, bytes, row("DB_DBW", 2, "DB")})});
    LabelInterface *made = build(QStringLiteral("ISO on TCP"));
    QVERIFY(made);

    QString prefix;
    QString range;
    QVERIFY(!made->parseAddress(QStringLiteral("DB12.DBW4"), prefix, range));
    QCOMPARE(made->addressValidation(QStringLiteral("DB12.DBW4"), -1), 3);
    QCOMPARE(made->addressValidation(QStringLiteral("DB12.DBW6"), -1), 3);
    QVERIFY(made->parseAddress(QStringLiteral("DB12.DBW4"), prefix, range));
    QCOMPARE(prefix, QStringLiteral("DB"));
    QCOMPARE(range, QStringLiteral("12.DBW4"));
    QCOMPARE(made->addressRange(3, QStringLiteral("DB12.DBW4")), 4);
    QCOMPARE(addresses(made->makeContinueCommand(3, command(QStringLiteral("DB12.DBW4"), 2), 2)),
             (QStringList{"DB12.DBW4", "DB12.DBW5"}));
    QCOMPARE(shortForms(made->makeBlockCommand(2, 3, 4, 8)), QStringList{"2-DB12.DBW4 2 8"});

    QCOMPARE(made->addressValidation(QStringLiteral("DB12.DBX10.3"), 0), 4);
    QCOMPARE(made->addressValidation(QStringLiteral("4-DB12.DBX10.7"), 0), 4);
    QCOMPARE(made->addressRange(4, QStringLiteral("DB12.DBX10.3")), 10);
    QCOMPARE(made->bitOffset(4, QStringLiteral("DB12.DBX10.3")), 3);

    int typeIndex = -1;
    QCOMPARE(
        made->convertBitCommandToRegisterCommand(command(QStringLiteral("DB12.DBX10.3"), 0), typeIndex).stringKey(),
        QStringLiteral("DB12.DBX10_1_1"));
    QCOMPARE(typeIndex, 5);
    QCOMPARE(made->countBitTypes(), 6);
    QCOMPARE(made->getPrefixSymbolByTypeID(5), QStringLiteral("DB12.DBX"));
    QCOMPARE(made->addressValidation(QStringLiteral("DB12xDBX10.3"), -1), -1);
}

void DefaultLabelsTest::aFamilyInSmallLettersFindsNoTemplate()
{
    const QString name = QStringLiteral("LustBus ServoC/CDE Series");
    writeDatabase({driver(name, {row("INT16_NO_IDX", 2, "P")})});
    LabelInterface *made = build(name);
    QVERIFY(made);
    const LogRecorder log;
    QCOMPARE(made->addressValidation(QStringLiteral("int16:1:2"), -1), -1);
    QCOMPARE(made->countBitTypes(), 1);
    QCOMPARE(log.lines(), QStringList());
}

void DefaultLabelsTest::dynamicRowsGoWithTheirLabel()
{
    const QString name = QStringLiteral("ISO on TCP");
    writeDatabase({driver(name, {row("DB_DBW", 2, "DB")})});
    LabelInterface *made = build(name);
    QVERIFY(made);
    QCOMPARE(made->addressValidation(QStringLiteral("DB12.DBW4"), -1), 1);
    QCOMPARE(build(name)->countBitTypes(), 2);
    label::freeLabel(name);
    LabelInterface *anew = build(name);
    QVERIFY(anew);
    QCOMPARE(anew->countBitTypes(), 1);
    QString prefix;
    QString range;
    QVERIFY(!anew->parseAddress(QStringLiteral("DB12.DBW4"), prefix, range));
}

/// The last test: from here on the store holds stale pointers.
void DefaultLabelsTest::freeingAllLabelsKeepsTheirPointers()
{
    writeDatabase({driver(QStringLiteral("Last 1"), {Row()}),
                   driver(QStringLiteral("Last 2"), {Row()}, QStringLiteral("b")),
                   driver(QStringLiteral("Last 3"), {Row()}, QStringLiteral("c"))});
    QString error = untouched;
    const auto first = quintptr(label::createLabel(QStringLiteral("Last 1"), error));
    const auto second = quintptr(label::createLabel(QStringLiteral("Last 2"), error));
    QVERIFY(first != 0 && second != 0);
    const LogRecorder log;
    label::freeLabels();
    QCOMPARE(quintptr(label::createLabel(QStringLiteral("Last 1"), error)), first);
    QCOMPARE(quintptr(label::createLabel(QStringLiteral("Last 2"), error)), second);
    QCOMPARE(log.lines(), QStringList());
    QVERIFY(label::createLabel(QStringLiteral("Last 3"), error));
    QCOMPARE(log.lines(), QStringList{rowLine});
    QCOMPARE(error, untouched);
    label::freeLabel(QStringLiteral("Last 3"));
}

QTEST_GUILESS_MAIN(DefaultLabelsTest)

#include "tst_defaultlabels.moc"
