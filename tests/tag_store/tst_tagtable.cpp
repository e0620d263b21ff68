// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/logrecorder.h"
#include "support/projectfixtures.h"
#include "support/threads.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QTemporaryDir>
#include <QtTest>

#include <limits>
#include <memory>

namespace {

/// No operation returns the two lists; an explicit instantiation may name a private member.
QStringList &columnNamesOf(TagSystem &tags);
QStringList &columnTypesOf(TagSystem &tags);

template<auto names, auto types>
struct Columns
{
    friend QStringList &columnNamesOf(TagSystem &tags) { return tags.*names; }
    friend QStringList &columnTypesOf(TagSystem &tags) { return tags.*types; }
};
template struct Columns<&TagSystem::m_columnNames, &TagSystem::m_columnTypes>;

const QString key = QStringLiteral("4711");
const QString compiling = QStringLiteral("TOLV_compileing");
const QString allTables = QStringLiteral("SELECT name FROM sqlite_master ORDER BY name");
const QString storedStatement = QStringLiteral("SELECT sql FROM sqlite_master WHERE name = 'custom_tag_table'");

const QStringList columnNames = {"id",        "name",  "access",   "connector_id",  "data_type", "address",
                                 "scan_time", "scale", "addition", "default_value", "user_log",  "user_log_comment"};
const QStringList columnClauses = {" INTEGER PRIMARY KEY,",
                                   " STRING,",
                                   " NUMBER,",
                                   " NUMBER,",
                                   " NUMBER,",
                                   " STRING,",
                                   " NUMBER,",
                                   " NUMBER,",
                                   " NUMBER,",
                                   " NUMBER,",
                                   " NUMBER, ",
                                   " STRING"};

} // namespace

class TagTableTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void kindsOfIds_data();
    void kindsOfIds();

    void theColumnsAreTwoLists();
    void theColumnsAreOnlyAppended();
    void initClearsTheColumns();
    void thePlaceOfTheAddress();
    void theTableHasOneName();

    void aMissingTableIsMade();
    void theTableHasItsColumns();
    void theDatabaseCountsIdsFromOne();
    void anExistingTableIsKept_data();
    void anExistingTableIsKept();
    void aTableIsMadeOnce();
    void aTableThatCannotBeMade();
    void noTableWithoutADatabase();
    void noTableOnAClosedDatabase();
    void theTableIsMadeInTheObjectsOwnDatabase();
    void theTableIsNotMadeInTheDatabaseOfAnotherThread();

    void namesAreReadInRowOrder();
    void namesAreReadAsText_data();
    void namesAreReadAsText();
    void namesAreAsOfTheLastReading();
    void namesThatCannotBeRead_data();
    void namesThatCannotBeRead();
    void namesOfAnObjectWithoutADatabase();
    void anotherThreadReadsTheNamesOfItsConnection();

private:
    TagSystem *bound();

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
    std::unique_ptr<MessageRecorder> m_messages;
};

void TagTableTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_path = m_folder->filePath(QStringLiteral("project.db"));
    m_messages = std::make_unique<MessageRecorder>();
    makeProject(m_path, key);
}

void TagTableTest::cleanup()
{
    dropProjects();
    m_messages.reset();
    m_folder.reset();
}

TagSystem *TagTableTest::bound()
{
    return TagSystem::instance(key);
}

void TagTableTest::kindsOfIds_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("isSystem");
    QTest::addColumn<bool>("isRecipe");
    QTest::newRow("the lowest number") << std::numeric_limits<int>::min() << false << false;
    QTest::newRow("no tag") << -1 << false << false;
    QTest::newRow("zero") << 0 << false << false;
    QTest::newRow("the first custom tag") << 1 << false << false;
    QTest::newRow("before the system tags") << 19999 << false << false;
    QTest::newRow("the first system id") << 20000 << true << false;
    QTest::newRow("a system tag") << 20022 << true << false;
    QTest::newRow("a system id without a tag") << 20094 << true << false;
    QTest::newRow("the last system id") << 21000 << true << false;
    QTest::newRow("behind the system tags") << 21001 << false << false;
    QTest::newRow("between system and recipe tags") << 25000 << false << false;
    QTest::newRow("before the recipe tags") << 29999 << false << false;
    QTest::newRow("the first recipe tag") << 30000 << false << true;
    QTest::newRow("the last recipe item tag") << 50000 << false << true;
    QTest::newRow("the first recipe row tag") << 50001 << false << true;
    QTest::newRow("the last recipe row tag") << 60000 << false << true;
    QTest::newRow("behind the recipe tags") << 60001 << false << false;
    QTest::newRow("the highest number") << std::numeric_limits<int>::max() << false << false;
}

void TagTableTest::kindsOfIds()
{
    QFETCH(int, id);
    QFETCH(bool, isSystem);
    QFETCH(bool, isRecipe);
    TagSystem tags(nullptr);
    QCOMPARE(tags.isSystemID(id), isSystem);
    QCOMPARE(tags.isRecipeID(id), isRecipe);
    QCOMPARE(tags.isNotNormalTag(id), isSystem || isRecipe);
}

void TagTableTest::theColumnsAreTwoLists()
{
    TagSystem tags(nullptr);
    QCOMPARE(columnNamesOf(tags), QStringList());
    QCOMPARE(columnTypesOf(tags), QStringList());
    tags.settingTagTableColumns();
    QCOMPARE(columnNamesOf(tags), columnNames);
    QCOMPARE(columnTypesOf(tags), columnClauses);
}

void TagTableTest::theColumnsAreOnlyAppended()
{
    TagSystem tags(nullptr);
    tags.settingTagTableColumns();
    tags.settingTagTableColumns();
    QCOMPARE(columnNamesOf(tags), columnNames + columnNames);
    QCOMPARE(columnTypesOf(tags), columnClauses + columnClauses);
    QCOMPARE(tags.getCustomTagTableAddressColumn(), 5);
}

void TagTableTest::initClearsTheColumns()
{
    TagSystem tags(nullptr);
    tags.settingTagTableColumns();
    for (int i = 0; i < 2; ++i) {
        QVERIFY(tags.init(key));
        QCOMPARE(columnNamesOf(tags), columnNames);
        QCOMPARE(columnTypesOf(tags), columnClauses);
    }
}

void TagTableTest::thePlaceOfTheAddress()
{
    QCOMPARE(bound()->getCustomTagTableAddressColumn(), 5);
    QCOMPARE(TagSystem::instance(QStringLiteral("no such connection"))->getCustomTagTableAddressColumn(), 0);
    QCOMPARE(TagSystem::instance(QString())->getCustomTagTableAddressColumn(), 0);
    TagSystem other(nullptr);
    columnNamesOf(other) = QStringList{"id", "name"};
    QCOMPARE(other.getCustomTagTableAddressColumn(), 0);
    columnNamesOf(other).append(QStringLiteral("address"));
    QCOMPARE(other.getCustomTagTableAddressColumn(), 2);
}

void TagTableTest::theTableHasOneName()
{
    QCOMPARE(bound()->customTagTableName(), QStringLiteral("custom_tag_table"));
    QCOMPARE(TagSystem(nullptr).customTagTableName(), QStringLiteral("custom_tag_table"));
}

void TagTableTest::aMissingTableIsMade()
{
    QCOMPARE(rowsOn(key, allTables), (QStringList{"LINK", "NODE"}));
    bound();
    QCOMPARE(rowsOn(key, allTables), (QStringList{"LINK", "NODE", "custom_tag_table"}));
    QCOMPARE(rowsOn(key, storedStatement),
             QStringList{QStringLiteral("CREATE TABLE custom_tag_table ( id INTEGER PRIMARY KEY,name STRING,access "
                                        "NUMBER,connector_id NUMBER,data_type NUMBER,address STRING,scan_time "
                                        "NUMBER,scale NUMBER,addition NUMBER,default_value NUMBER,user_log NUMBER, "
                                        "user_log_comment STRING )")});
    QCOMPARE(m_messages->take(), QStringList());
}

void TagTableTest::theTableHasItsColumns()
{
    bound();
    QCOMPARE(rowsOn(key, QStringLiteral("SELECT cid, name, type, pk FROM pragma_table_info('custom_tag_table')")),
             (QStringList{"0|id|INTEGER|1", "1|name|STRING|0", "2|access|NUMBER|0", "3|connector_id|NUMBER|0",
                          "4|data_type|NUMBER|0", "5|address|STRING|0", "6|scan_time|NUMBER|0", "7|scale|NUMBER|0",
                          "8|addition|NUMBER|0", "9|default_value|NUMBER|0", "10|user_log|NUMBER|0",
                          "11|user_log_comment|STRING|0"}));
}

void TagTableTest::theDatabaseCountsIdsFromOne()
{
    TagSystem *const tags = bound();
    QVERIFY(tags->addTag(QStringLiteral("first"), QStringLiteral("D1"), 1, 3, 1));
    QVERIFY(tags->addTag(QStringLiteral("second"), QStringLiteral("D2"), 1, 3, 1));
    QCOMPARE(tags->getIdByTagName(QStringLiteral("first")), 1);
    QCOMPARE(tags->getIdByTagName(QStringLiteral("second")), 2);
    // The ids of system tags are left out.
    executeOn(key, QStringLiteral("UPDATE custom_tag_table SET id = 19999 WHERE id = 2"));
    QVERIFY(tags->addTag(QStringLiteral("third"), QStringLiteral("D3"), 1, 3, 1));
    QCOMPARE(rowsOn(key, QStringLiteral("SELECT id FROM custom_tag_table")), (QStringList{"1", "19999", "21001"}));
}

void TagTableTest::anExistingTableIsKept_data()
{
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QString>("row");
    QTest::newRow("fewer columns") << "CREATE TABLE custom_tag_table (id INTEGER PRIMARY KEY, name TEXT)"
                                   << "1|kept";
    QTest::newRow("further columns") << "CREATE TABLE custom_tag_table (id INTEGER PRIMARY KEY, name TEXT, a, b, c, d, "
                                        "e, f, g, h, i, j, k, l DEFAULT 'x')"
                                     << "1|kept|(null)|(null)|(null)|(null)|(null)|(null)|(null)|(null)|(null)|(null)|"
                                        "(null)|x";
    QTest::newRow("other types and another order") << "CREATE TABLE custom_tag_table (id BLOB, name DATE)"
                                                   << "1|kept";
    QTest::newRow("another case") << "CREATE TABLE CUSTOM_TAG_TABLE (id INTEGER PRIMARY KEY, name TEXT)"
                                  << "1|kept";
}

void TagTableTest::anExistingTableIsKept()
{
    QFETCH(QString, statement);
    QFETCH(QString, row);
    executeOn(key, statement);
    executeOn(key, QStringLiteral("INSERT INTO custom_tag_table (id, name) VALUES (1, 'kept')"));
    TagSystem *const tags = bound();
    tags->createCustomTable();
    QCOMPARE(m_messages->take(), QStringList());
    QCOMPARE(rowsOn(key, QStringLiteral("SELECT sql FROM sqlite_master WHERE lower(name) = 'custom_tag_table'")),
             QStringList{statement});
    QCOMPARE(rowsOn(key, QStringLiteral("SELECT * FROM custom_tag_table")), QStringList{row});
    QCOMPARE(tags->getTagNames(), QStringList{QStringLiteral("kept")});
}

void TagTableTest::aTableIsMadeOnce()
{
    TagSystem *const tags = bound();
    QVERIFY(tags->addTag(QStringLiteral("first"), QStringLiteral("D1"), 1, 3, 1));
    tags->createCustomTable();
    tags->createCustomTable();
    QCOMPARE(m_messages->take(), QStringList());
    QCOMPARE(rowsOn(key, QStringLiteral("SELECT name FROM custom_tag_table")), QStringList{QStringLiteral("first")});
}

void TagTableTest::aTableThatCannotBeMade()
{
    closeProject(key);
    QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), key);
    {
        QSqlDatabase db = QSqlDatabase::database(key, false);
        db.setDatabaseName(m_path);
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        QVERIFY(db.open());
    }
    TagSystem tags(nullptr);
    QVERIFY2(tags.init(key), "the object goes on without a table");
    const QStringList messages = m_messages->take();
    QCOMPARE(messages.size(), 2);
    QCOMPARE(messages.first(),
             QStringLiteral("warning|Error|attempt to write a readonly database Unable to fetch row"));
    QVERIFY2(messages.last().startsWith(QLatin1String("warning|Read Database error|")), qPrintable(messages.last()));
    QCOMPARE(rowsOn(key, allTables), (QStringList{"LINK", "NODE"}));
    QCOMPARE(tags.getTagNames(), QStringList());
    QCOMPARE(tags.getCustomTagTableAddressColumn(), 5);
}

void TagTableTest::noTableWithoutADatabase()
{
    TagSystem tags(nullptr);
    tags.createCustomTable();
    QCOMPARE(m_messages->take(), QStringList{QStringLiteral("warning|Error|Unable to open database.")});
}

void TagTableTest::noTableOnAClosedDatabase()
{
    bound()->closeDatabase();
    QCOMPARE(m_messages->take(), QStringList());
    bound()->createCustomTable();
    QCOMPARE(m_messages->take(), QStringList{QStringLiteral("warning|Error|Unable to open database.")});
}

void TagTableTest::theTableIsMadeInTheObjectsOwnDatabase()
{
    TagSystem *const tags = bound();
    executeOn(key, QStringLiteral("DROP TABLE custom_tag_table"));
    QStringList tablesOfTheThread;
    inAnotherThread([this, tags, &tablesOfTheThread] {
        makeProject(m_folder->filePath(QStringLiteral("compiled.db")), compiling);
        tags->createCustomTable();
        tablesOfTheThread = rowsOn(compiling, allTables);
        closeProject(compiling);
    });
    QCOMPARE(tablesOfTheThread, (QStringList{"LINK", "NODE"}));
    QCOMPARE(rowsOn(key, allTables), (QStringList{"LINK", "NODE", "custom_tag_table"}));
    QCOMPARE(m_messages->take(), QStringList());
}

void TagTableTest::theTableIsNotMadeInTheDatabaseOfAnotherThread()
{
    TagSystem tags(nullptr);
    QStringList tablesOfTheThread;
    inAnotherThread([this, &tags, &tablesOfTheThread] {
        makeProject(m_folder->filePath(QStringLiteral("compiled.db")), compiling);
        tags.createCustomTable();
        tablesOfTheThread = rowsOn(compiling, allTables);
        closeProject(compiling);
    });
    QCOMPARE(tablesOfTheThread, (QStringList{"LINK", "NODE"}));
    QCOMPARE(m_messages->take(), QStringList{QStringLiteral("warning|Error|Unable to open database.")});
}

void TagTableTest::namesAreReadInRowOrder()
{
    TagRow late;
    late.id = 5;
    late.name = QStringLiteral("a late one");
    TagRow early;
    early.id = 2;
    early.name = QStringLiteral("zebra");
    TagRow twin;
    twin.id = 9;
    twin.name = QStringLiteral("zebra");
    writeTags(key, {late, early, twin});
    QCOMPARE(bound()->getTagNames(), (QStringList{"zebra", "a late one", "zebra"}));
}

void TagTableTest::namesAreReadAsText_data()
{
    QTest::addColumn<QString>("literal");
    QTest::addColumn<QString>("name");
    QTest::newRow("a text") << "'Pump 1'"
                            << "Pump 1";
    QTest::newRow("NULL is an empty name") << "NULL"
                                           << "";
    QTest::newRow("an empty text") << "''"
                                   << "";
    QTest::newRow("the column takes digits as a number") << "'007'"
                                                         << "7";
    QTest::newRow("the column takes an exponent as a number") << "'1e3'"
                                                              << "1000";
    QTest::newRow("a number") << "42"
                              << "42";
    QTest::newRow("blanks at both ends") << "'  Pump '"
                                         << "  Pump ";
    QTest::newRow("an apostrophe and quotes") << "'O''Neil \"x\"'"
                                              << "O'Neil \"x\"";
    QTest::newRow("a place of a statement") << "'%1 ? :name'"
                                            << "%1 ? :name";
    QTest::newRow("a line end") << "'a' || char(10) || 'b'"
                                << "a\nb";
    QTest::newRow("letters beyond ASCII")
        << QStringLiteral("'K\u00e4fer \U0001F41E'") << QStringLiteral("K\u00e4fer \U0001F41E");
}

void TagTableTest::namesAreReadAsText()
{
    QFETCH(QString, literal);
    QFETCH(QString, name);
    executeOn(key, tagTableStatement());
    executeOn(key, QStringLiteral("INSERT INTO custom_tag_table (name) VALUES (") + literal + QLatin1Char(')'));
    TagSystem *const tags = bound();
    QCOMPARE(tags->getTagNames(), QStringList{name});
    tags->refreshTagNames();
    QCOMPARE(tags->getTagNames(), QStringList{name});
}

void TagTableTest::namesAreAsOfTheLastReading()
{
    TagSystem *const tags = bound();
    writeTags(key, {{1, QStringLiteral("first")}});
    QCOMPARE(tags->getTagNames(), QStringList());
    QVERIFY(tags->isNewTag(QStringLiteral("first")));
    tags->refreshTagNames();
    QCOMPARE(tags->getTagNames(), QStringList{QStringLiteral("first")});
    QVERIFY(!tags->isNewTag(QStringLiteral("first")));
    executeOn(key, QStringLiteral("DELETE FROM custom_tag_table"));
    QCOMPARE(tags->getTagNames(), QStringList{QStringLiteral("first")});
    tags->refreshTagNames();
    QCOMPARE(tags->getTagNames(), QStringList());
    QCOMPARE(m_messages->take(), QStringList());
}

void TagTableTest::namesThatCannotBeRead_data()
{
    QTest::addColumn<QStringList>("statements");
    QTest::addColumn<QString>("reason");
    QTest::newRow("the table has gone") << QStringList{"DROP TABLE custom_tag_table"}
                                        << "no such table: custom_tag_table";
    QTest::newRow("a table without names")
        << QStringList{"DROP TABLE custom_tag_table", "CREATE TABLE custom_tag_table (id INTEGER PRIMARY KEY)"}
        << "no such column: name";
    QTest::newRow("a table without ids") << QStringList{"DROP TABLE custom_tag_table",
                                                        "CREATE TABLE custom_tag_table (name STRING)"}
                                         << "no such column: id";
}

void TagTableTest::namesThatCannotBeRead()
{
    QFETCH(QStringList, statements);
    QFETCH(QString, reason);
    writeTags(key, {{1, QStringLiteral("first")}});
    TagSystem *const tags = bound();
    QCOMPARE(tags->getTagNames(), QStringList{QStringLiteral("first")});
    for (const QString &statement : qAsConst(statements))
        executeOn(key, statement);
    const LogRecorder log;
    tags->refreshTagNames();
    const QStringList messages = m_messages->take();
    QCOMPARE(messages.size(), 1);
    QVERIFY2(messages.first().startsWith(QStringLiteral("warning|Read Database error|") + reason),
             qPrintable(messages.first()));
    QCOMPARE(tags->getTagNames(), QStringList());
    QCOMPARE(log.lines(), QStringList());
}

void TagTableTest::namesOfAnObjectWithoutADatabase()
{
    TagSystem tags(nullptr);
    const LogRecorder log;
    tags.refreshTagNames();
    const QStringList messages = m_messages->take();
    QCOMPARE(messages.size(), 1);
    QVERIFY2(messages.first().startsWith(QLatin1String("warning|Read Database error|")), qPrintable(messages.first()));
    QCOMPARE(tags.getTagNames(), QStringList());
}

void TagTableTest::anotherThreadReadsTheNamesOfItsConnection()
{
    writeTags(key, {{1, QStringLiteral("own")}});
    TagSystem *const tags = bound();
    QStringList namesOfTheThread;
    inAnotherThread([this, tags, &namesOfTheThread] {
        makeProject(m_folder->filePath(QStringLiteral("compiled.db")), compiling);
        writeTags(compiling, {{1, QStringLiteral("compiled")}});
        tags->refreshTagNames();
        namesOfTheThread = tags->getTagNames();
        closeProject(compiling);
    });
    QCOMPARE(namesOfTheThread, QStringList{QStringLiteral("compiled")});
    tags->refreshTagNames();
    QCOMPARE(tags->getTagNames(), QStringList{QStringLiteral("own")});
    QCOMPARE(m_messages->take(), QStringList());
}

QTEST_GUILESS_MAIN(TagTableTest)

#include "tst_tagtable.moc"
