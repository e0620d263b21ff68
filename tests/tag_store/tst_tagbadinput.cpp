// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/logrecorder.h"
#include "support/projecttest.h"

#include "zelmar_label/address_grammar/communicatorcommand.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QtTest>

namespace {

const QString insertFailed = QStringLiteral("warning|Error|Insert tag error.");
const QString notRead = QStringLiteral("warning|Read Database error|");
const QString notModified = QStringLiteral("warning|Modify tag error|");

CommunicatorCommand command(const QString &address)
{
    CommunicatorCommand made;
    made.address = address;
    return made;
}

/// The only value of a statement's only row, with all its characters.
QString valueOn(const QString &connection, const QString &statement)
{
    QSqlQuery query(QSqlDatabase::database(connection, false));
    return query.exec(statement) && query.next() ? query.value(0).toString() : QStringLiteral("(no row)");
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TagBadInputTest : public ProjectTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void names_data() { texts(); }
    void names();
    void renames_data() { texts(); }
    void renames();
    void copies_data() { texts(); }
    void copies();
    void addresses_data() { texts(); }
    void addresses();
    void columnNames_data();
    void columnNames();

    void lackingColumns_data();
    void lackingColumns();
    void aTableWithoutNames();
    void aViewInPlaceOfTheTable();
    void numberColumns_data();
    void numberColumns();
    void doubledNames();

    void aReadOnlyDatabase();
    void aReadOnlyDatabaseWithoutTheTable();
    void aDatabaseThatOthersWrite();
    void aDatabaseThatOthersHaveToThemselves();
    void aLockedDatabaseAtTheStart();
    void aFullDatabase();
    void aDeletedDatabase();
    void aClosedDatabase();
    void brokenFiles_data();
    void brokenFiles();
    void truncatedWhileOpen_data();
    void truncatedWhileOpen();
    void anEmptyFile();

private:
    static void texts();
    void makeTags(int count);
    void refusesAllWrites(TagSystem *tags, bool isEmptyUpdateRefused = true);

    bool m_isBroken = false;
};

void TagBadInputTest::init()
{
    ProjectTest::init();
    m_isBroken = false;
    executeOn(key, "PRAGMA busy_timeout = 0");
}

void TagBadInputTest::cleanup()
{
    QCOMPARE(m_messages->take(), QStringList());
    dropProjects();
    if (!m_isBroken) {
        openProject(m_path, otherKey);
        QCOMPARE(rowsOn(otherKey, "PRAGMA integrity_check"), QStringList("ok"));
        closeProject(otherKey);
    }
    m_messages.reset();
    m_folder.reset();
}

/// "isFindable": the text means itself between apostrophes; "isNameable": between quotes.
void TagBadInputTest::texts()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isFindable");
    QTest::addColumn<bool>("isNameable");
    QTest::newRow("an apostrophe") << "it's" << false << true;
    QTest::newRow("an apostrophe at the end") << "its'" << false << true;
    QTest::newRow("apostrophes alone") << "'''" << false << true;
    QTest::newRow("a quote") << "19\"" << true << false;
    QTest::newRow("a quote within") << "a\"b" << true << false;
    QTest::newRow("both kinds of quotes") << "'\"" << false << false;
    QTest::newRow("a back quote") << "`a`" << true << true;
    QTest::newRow("a place mark") << "%1" << true << true;
    QTest::newRow("all place marks") << "%3%2%1%L1%99" << true << true;
    QTest::newRow("a bind name") << ":name" << true << true;
    QTest::newRow("a numbered place") << "x?1" << true << true;
    QTest::newRow("NUL within") << QStringLiteral("a") + QChar(0) + "b" << false << false;
    QTest::newRow("NUL at the end") << QStringLiteral("ab") + QChar(0) << false << false;
    QTest::newRow("NUL alone") << QString(QChar(0)) << false << false;
    QTest::newRow("line ends") << "a\r\nb\nc\r" << true << true;
    QTest::newRow("other line ends") << QString::fromUtf16(u"a\u0085b\u2028c\u2029") << true << true;
    QTest::newRow("a tab and control characters") << "\t\x01\x1b[31m" << true << true;
    QTest::newRow("an emoji") << QString::fromUtf8("Tank 😀👩‍🔧") << true << true;
    QTest::newRow("letters of many kinds") << QString::fromUtf8("Behälter 容器 خزان δεξαμενή") << true << true;
    QTest::newRow("a combining mark") << QString::fromUtf16(u"a\u0308\u0323") << true << true;
    QTest::newRow("a byte order mark at the start") << QString::fromUtf16(u"x\uFEFFy") << true << true;
    QTest::newRow("a comment") << "x -- y" << true << true;
    QTest::newRow("another comment") << "x /* y" << true << true;
    QTest::newRow("a second statement") << "x'; DROP TABLE custom_tag_table; --" << false << true;
    QTest::newRow("a second statement behind a quote") << "x\"; DROP TABLE custom_tag_table; --" << true << false;
    QTest::newRow("a backslash") << "a\\b\\" << true << true;
    QTest::newRow("patterns") << "%_*?[a-z]" << true << true;
    QTest::newRow("markup") << "<b>&amp;</b>" << true << true;
    QTest::newRow("blanks alone") << "   " << true << true;
    QTest::newRow("a hundred thousand characters") << QStringLiteral("x").repeated(100000) << true << true;
    QTest::newRow("a hundred thousand different characters")
        << QStringLiteral("Tank 0815 ").repeated(10000) << true << true;
    QTest::newRow("a thousand characters") << QStringLiteral("x").repeated(1000) << true << true;
}

void TagBadInputTest::names()
{
    QFETCH(QString, text);
    QFETCH(bool, isFindable);
    TagSystem *tags = bound();
    QVERIFY(tags->isNewTag(text));
    QVERIFY(tags->addTag("first", "D1", 3, 4, 5));
    QVERIFY(tags->addTag(text, "D2", 3, 4, 5));
    QVERIFY(!tags->addTag(text, "D3", 3, 4, 5));
    QVERIFY(!tags->isNewTag(text));
    QCOMPARE(tags->getTagNames(), QStringList({"first", text}));
    QCOMPARE(tags->getTagNameList(3), QStringList({"first", text}));
    QCOMPARE(tags->getTagNameById(2), text);
    QCOMPARE(tags->getIdByTagName(text), isFindable ? 2 : -1);
    QCOMPARE(valueOn(key, "SELECT name FROM custom_tag_table WHERE id = 2"), text);
    QVERIFY(tags->getSimilarTagNames(text).contains(text));
    QCOMPARE(tags->findSimilarTagName(text).contains(2), isFindable);
    QVERIFY(tags->modifyTag(text, "D9", 1, 1, 1));
    QCOMPARE(tags->getAddressByID(2), QStringLiteral("D9"));
    QCOMPARE(tags->getAddressByID(1), QStringLiteral("D1"));
    tags->refreshTagNames();
    QCOMPARE(tags->getTagNames(), QStringList({"first", text}));
    tags->addDafaultTag(text + "+");
    QCOMPARE(tags->getTagNames(), QStringList({"first", text, text + "+"}));
    QCOMPARE(tags->isStringSimilar(text, text, 99.0, 2, Qt::CaseSensitive), true);
}

void TagBadInputTest::renames()
{
    QFETCH(QString, text);
    QFETCH(bool, isNameable);
    TagSystem *tags = bound();
    QVERIFY(tags->addTag("first", "D1", 3, 4, 5));
    LogRecorder log;
    tags->setTagNameById(text, 1);
    QCOMPARE(log.take().size(), isNameable ? 0 : 1);
    QCOMPARE(tags->getTagNames(), QStringList(isNameable ? text : QStringLiteral("first")));
    QCOMPARE(tags->getTagNameById(1), isNameable ? text : QStringLiteral("first"));
    QCOMPARE(rowsOn(key, "SELECT count(*), max(address), max(scale) FROM custom_tag_table"), QStringList("1|D1|5"));
}

void TagBadInputTest::copies()
{
    QFETCH(QString, text);
    QFETCH(bool, isFindable);
    TagSystem *tags = bound();
    QVERIFY(tags->addTag("first", "D1", 3, 4, 5));
    QCOMPARE(tags->addTags(1, qMakePair(text, command(text)), 1), QList<int>({isFindable ? 2 : -1}));
    QCOMPARE(tags->getTagNames(), QStringList({"first", text}));
    QCOMPARE(valueOn(key, "SELECT address FROM custom_tag_table WHERE id = 2"), text);
    QCOMPARE(rowsOn(key, "SELECT id, connector_id, data_type FROM custom_tag_table"), QStringList({"1|3|4", "2|3|4"}));
}

void TagBadInputTest::addresses()
{
    QFETCH(QString, text);
    QFETCH(bool, isFindable);
    TagSystem *tags = bound();
    QVERIFY(tags->addTag("first", text, 3, 4, 5));
    QCOMPARE(tags->getAddressByID(1), text);
    QVERIFY(tags->modifyTag("first", "D1", 3, 4, 5));
    QVERIFY(tags->modifyTag("second", text, 3, 4, 5));
    QCOMPARE(tags->getAddressByID(2), text);
    QCOMPARE(valueOn(key, "SELECT address FROM custom_tag_table WHERE id = 2"), text);
    const LogRecorder log;
    QCOMPARE(tags->getTagIDsByAddress(3, text), isFindable ? QList<int>({2}) : QList<int>());
    QCOMPARE(log.lines(), isFindable ? QStringList("TagSystem::getTagIDsByAddress  2") : QStringList());
    QCOMPARE(tags->getTagIDsByAddress(4, text), QList<int>());
    QCOMPARE(tags->normalizedAddress(text), text);
    QCOMPARE(rowsOn(key, "SELECT count(*) FROM custom_tag_table"), QStringList("2"));
}

void TagBadInputTest::columnNames_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<int>("value");
    QTest::newRow("a column") << "scale" << 5;
    QTest::newRow("a column in capitals") << "SCALE" << 5;
    QTest::newRow("an expression") << "scale + 1" << 6;
    QTest::newRow("an unknown column") << "nothing" << 0;
    QTest::newRow("an empty column") << "" << 0;
    QTest::newRow("an apostrophe") << "sca'le" << 0;
    QTest::newRow("NUL") << QStringLiteral("scale") + QChar(0) << 0;
    QTest::newRow("a place mark") << "%2" << 0;
    QTest::newRow("a second statement") << "scale; DROP TABLE custom_tag_table; --" << 0;
}

void TagBadInputTest::columnNames()
{
    QFETCH(QString, column);
    TagSystem *tags = bound();
    QVERIFY(tags->addTag("first", "D1", 3, 4, 5));
    QTEST(tags->getIntValueByID(1, column), "value");
    QCOMPARE(rowsOn(key, "SELECT count(*) FROM custom_tag_table"), QStringList("1"));
}

void TagBadInputTest::lackingColumns_data()
{
    QTest::addColumn<QString>("columns");
    QTest::newRow("two columns") << "id INTEGER PRIMARY KEY, name TEXT";
    QTest::newRow("all but the comment") << "id INTEGER PRIMARY KEY, name STRING, access NUMBER, connector_id NUMBER, "
                                            "data_type NUMBER, address STRING, scan_time NUMBER, scale NUMBER, "
                                            "addition NUMBER, default_value NUMBER, user_log NUMBER";
    QTest::newRow("no access") << "id INTEGER PRIMARY KEY, name STRING, connector_id NUMBER, data_type NUMBER, "
                                  "address STRING, scan_time NUMBER, scale NUMBER, addition NUMBER, default_value "
                                  "NUMBER, user_log NUMBER, user_log_comment STRING";
}

void TagBadInputTest::lackingColumns()
{
    QFETCH(QString, columns);
    executeOn(key, "CREATE TABLE custom_tag_table (" + columns + ")");
    executeOn(key, "INSERT INTO custom_tag_table (id, name) VALUES (1, 'Tank'), (2, 'Pump')");
    const QStringList before = rowsOn(key, allRows);
    const QString schema = valueOn(key, "SELECT sql FROM sqlite_master WHERE name = 'custom_tag_table'");
    TagSystem *tags = bound();
    QCOMPARE(m_messages->take(), QStringList());
    QCOMPARE(tags->getTagNames(), QStringList({"Tank", "Pump"}));
    QCOMPARE(tags->getTagNameById(2), QStringLiteral("Pump"));
    QCOMPARE(tags->getIdByTagName("Pump"), 2);
    QCOMPARE(tags->getTagIDList(), QList<int>({1, 2}));
    QCOMPARE(tags->getAccessModeByID(1), 0);
    QCOMPARE(tags->getScanTimeByID(1), 0);
    QCOMPARE(tags->getAddressByID(1), QString());
    QCOMPARE(tags->getTagIDsByAddress(0, "D1"), QList<int>());
    QVERIFY(tags->isValidTagID(2));

    QVERIFY(!tags->addTag("New", "D1", 0, 1, 1));
    QCOMPARE(m_messages->take(), QStringList(insertFailed));
    tags->addDafaultTag("New");
    QCOMPARE(m_messages->take(), QStringList(insertFailed));
    QVERIFY(!tags->modifyTag("Tank", "D1", 0, 1, 1));
    const QStringList messages = m_messages->take();
    QCOMPARE(messages.size(), 1);
    QVERIFY2(messages.first().startsWith(notModified), qPrintable(messages.first()));
    LogRecorder log;
    QCOMPARE(tags->addTags(1, qMakePair(QString("New"), command("D7")), 1), QList<int>({-1}));
    QCOMPARE(log.take().filter("Add Tag error : ").size(), 1);
    QCOMPARE(tags->getTagNames(), QStringList({"Tank", "Pump"}));
    QCOMPARE(rowsOn(key, allRows), before);
    tags->setTagNameById("Silo", 1);
    QCOMPARE(tags->getTagNames(), QStringList({"Silo", "Pump"}));
    QCOMPARE(valueOn(key, "SELECT sql FROM sqlite_master WHERE name = 'custom_tag_table'"), schema);
}

void TagBadInputTest::aTableWithoutNames()
{
    executeOn(key, "CREATE TABLE custom_tag_table (id INTEGER PRIMARY KEY, scale NUMBER)");
    executeOn(key, "INSERT INTO custom_tag_table VALUES (1, 9)");
    TagSystem *tags = bound();
    const QString error = errorOn(key, "select name,id from custom_tag_table");
    QVERIFY(error.contains("no such column: name"));
    QCOMPARE(m_messages->take(), QStringList(notRead + error));
    QCOMPARE(tags->getTagNames(), QStringList());
    QCOMPARE(tags->getTagNameById(1), QString());
    QCOMPARE(tags->getIdByTagName("a"), -1);
    QCOMPARE(tags->getIntValueByID(1, "scale"), 9);
    QCOMPARE(tags->addTags(1, 2), QList<int>({1}));
    QVERIFY(!tags->addTag("New", "", 0, 1, 1));
    QCOMPARE(m_messages->take(), QStringList(insertFailed));
    QCOMPARE(rowsOn(key, allRows), QStringList("1|9"));
}

void TagBadInputTest::aViewInPlaceOfTheTable()
{
    executeOn(key, "CREATE TABLE kept (id INTEGER PRIMARY KEY, name TEXT)");
    executeOn(key, "INSERT INTO kept VALUES (1, 'Tank')");
    executeOn(key, "CREATE VIEW custom_tag_table AS SELECT *, 0 AS access, 4 AS connector_id, 1 AS data_type, 'D1' AS "
                   "address, 1 AS scan_time, 1 AS scale, 0 AS addition, 0 AS default_value, 0 AS user_log, '' AS "
                   "user_log_comment FROM kept");
    TagSystem *tags = bound();
    QCOMPARE(tags->getTagNames(), QStringList("Tank"));
    QCOMPARE(tags->getAddressByID(1), QStringLiteral("D1"));
    QCOMPARE(tags->getLinkID(1), 4);
    refusesAllWrites(tags);
    QCOMPARE(rowsOn(key, "SELECT * FROM kept"), QStringList("1|Tank"));
}

void TagBadInputTest::numberColumns_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<int>("value");
    QTest::newRow("a number") << "7" << 7;
    QTest::newRow("a number as a text") << "'7'" << 7;
    QTest::newRow("a text") << "'seven'" << 0;
    QTest::newRow("a text that begins with a number") << "'7 of 9'" << 0;
    QTest::newRow("an empty text") << "''" << 0;
    QTest::newRow("NULL") << "NULL" << 0;
    QTest::newRow("bytes") << "x'00FF'" << 0;
    QTest::newRow("a fraction") << "3.25" << 3;
    QTest::newRow("a negative number") << "-1" << -1;
    QTest::newRow("the highest number") << "2147483647" << 2147483647;
}

void TagBadInputTest::numberColumns()
{
    QFETCH(QString, sql);
    QFETCH(int, value);
    executeOn(key, tagTableStatement());
    executeOn(
        key,
        QString("INSERT INTO custom_tag_table VALUES (1, 'Tank', %1, %1, %1, 'D1', %1, %1, %1, %1, %1, %1)").arg(sql));
    const QStringList before = rowsOn(key, "SELECT quote(access), quote(scale) FROM custom_tag_table");
    TagSystem *tags = bound();
    QCOMPARE(tags->getTagNames(), QStringList("Tank"));
    QCOMPARE(tags->getAccessModeByID(1), value);
    QCOMPARE(tags->getLinkID(1), value);
    QCOMPARE(tags->getDataTypeByID(1), value);
    QCOMPARE(tags->getScanTimeByID(1), value);
    QCOMPARE(tags->getScaleByID(1), value);
    QCOMPARE(tags->getAdditionByID(1), value);
    QCOMPARE(tags->getDefaultValueByID(1), value);
    QCOMPARE(tags->getIntValueByID(1, "user_log"), value);
    QCOMPARE(rowsOn(key, "SELECT quote(access), quote(scale) FROM custom_tag_table"), before);
    QVERIFY(tags->modifyTag("Tank", "D2", 2, 3, 4));
    QCOMPARE(rowsOn(key, allRows), QStringList("1|Tank|1|2|3|D2|1|4|0|0|0|"));
}

void TagBadInputTest::doubledNames()
{
    writeTags(key, {tag(1, "twin"), tag(2, "one"), tag(3, "twin")});
    TagSystem *tags = bound();
    QCOMPARE(tags->getTagNames(), QStringList({"twin", "one", "twin"}));
    QCOMPARE(tags->getIdByTagName("twin"), -1);
    QCOMPARE(tags->getTagNameById(1), QStringLiteral("twin"));
    QCOMPARE(tags->getTagNameById(3), QStringLiteral("twin"));
    QVERIFY(!tags->addTag("twin", "", 0, 1, 1));
    QCOMPARE(tags->addTags(1, 1), QList<int>({-1}));
    tags->setTagNameById("twin", 2);
    QCOMPARE(tags->getTagNames(), QStringList({"twin", "one", "twin"}));
    tags->setTagNameById("single", 3);
    QCOMPARE(tags->getTagNames(), QStringList({"twin", "one", "single"}));
    QCOMPARE(tags->getIdByTagName("twin"), 1);
    QVERIFY(!tags->isNewTag("twin"));
}

void TagBadInputTest::makeTags(int count)
{
    QList<TagRow> rows;
    for (int i = 1; i <= count; ++i)
        rows.append(tag(i, QStringLiteral("Tank_%1_%2").arg(i).arg(QString(50, QLatin1Char('x')))));
    writeTags(key, rows);
}

/// Tries all writes on tags of which the first is "Tank": each reports its failure, and nothing changes.
void TagBadInputTest::refusesAllWrites(TagSystem *tags, bool isEmptyUpdateRefused)
{
    const QStringList names = tags->getTagNames();
    m_messages->take();
    QVERIFY(!tags->addTag("New", "D1", 0, 1, 1));
    QCOMPARE(m_messages->take(), QStringList(insertFailed));
    tags->addDafaultTag("New");
    QCOMPARE(m_messages->take().mid(0, 1), QStringList(insertFailed));
    QVERIFY(!tags->modifyTag(names.first(), "D1", 0, 1, 1));
    QStringList messages = m_messages->take();
    QCOMPARE(messages.size(), 1);
    QVERIFY2(messages.first().startsWith(notModified), qPrintable(messages.first()));
    QVERIFY(messages.first() != notModified);
    QCOMPARE(tags->modifyTag("New", "D1", 0, 1, 1), !isEmptyUpdateRefused);
    messages = m_messages->take();
    QCOMPARE(messages.size(), isEmptyUpdateRefused ? 2 : 1);
    QCOMPARE(messages.first(), insertFailed);
    if (isEmptyUpdateRefused)
        QVERIFY2(messages.last().startsWith(notModified), qPrintable(messages.last()));
    LogRecorder log;
    QCOMPARE(tags->addTags(1, qMakePair(QString("New"), command("D1")), 2), QList<int>({-1, -1}));
    QCOMPARE(log.take().filter("Add Tag error : ").size(), 2);
    tags->setTagNameById("New", 1);
    QCOMPARE(log.take().filter("update custom_tag_table set name = ").size(), 1);
    m_messages->take();
    QCOMPARE(tags->getTagNames(), names);
}

void TagBadInputTest::aReadOnlyDatabase()
{
    writeTags(key, {tag(1, "Tank"), tag(2, "Pump")});
    closeProject(key);
    const QByteArray before = contents(m_path);
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", key);
        db.setDatabaseName(m_path);
        db.setConnectOptions("QSQLITE_OPEN_READONLY");
        QVERIFY(db.open());
    }
    TagSystem *tags = bound();
    QCOMPARE(m_messages->take(), QStringList());
    QCOMPARE(tags->getTagNames(), QStringList({"Tank", "Pump"}));
    refusesAllWrites(tags);
    QCOMPARE(tags->getIdByTagName("Pump"), 2);
    QCOMPARE(contents(m_path), before);
}

void TagBadInputTest::aReadOnlyDatabaseWithoutTheTable()
{
    closeProject(key);
    const QByteArray before = contents(m_path);
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", key);
        db.setDatabaseName(m_path);
        db.setConnectOptions("QSQLITE_OPEN_READONLY");
        QVERIFY(db.open());
    }
    TagSystem *tags = bound();
    const QString notMade = errorOn(key, tagTableStatement());
    QVERIFY(notMade.contains("readonly"));
    QCOMPARE(m_messages->take(),
             QStringList({"warning|Error|" + notMade, notRead + errorOn(key, "select name,id from custom_tag_table")}));
    QCOMPARE(tags->getTagNames(), QStringList());
    QCOMPARE(tags->getCustomTagTableAddressColumn(), 5);
    QVERIFY(!tags->addTag("New", "D1", 0, 1, 1));
    QCOMPARE(m_messages->take(), QStringList(insertFailed));
    QCOMPARE(contents(m_path), before);
}

void TagBadInputTest::aDatabaseThatOthersWrite()
{
    writeTags(key, {tag(1, "Tank"), tag(2, "Pump")});
    TagSystem *tags = bound();
    openProject(m_path, otherKey);
    executeOn(otherKey, "BEGIN IMMEDIATE");
    executeOn(otherKey, "INSERT INTO custom_tag_table (name) VALUES ('by others')");
    refusesAllWrites(tags);
    QCOMPARE(tags->getIdByTagName("Pump"), 2);
    QCOMPARE(tags->getTagIDList(), QList<int>({1, 2}));
    executeOn(otherKey, "COMMIT");
    QVERIFY(tags->addTag("New", "D1", 0, 1, 1));
    QCOMPARE(tags->getTagNames(), QStringList({"Tank", "Pump", "by others", "New"}));
    QCOMPARE(m_messages->take(), QStringList());
}

void TagBadInputTest::aDatabaseThatOthersHaveToThemselves()
{
    writeTags(key, {tag(1, "Tank"), tag(2, "Pump")});
    TagSystem *tags = bound();
    openProject(m_path, otherKey);
    executeOn(otherKey, "BEGIN EXCLUSIVE");
    QVERIFY(!tags->addTag("New", "D1", 0, 1, 1));
    QCOMPARE(m_messages->take(), QStringList(insertFailed));
    QCOMPARE(tags->getTagNames(), QStringList({"Tank", "Pump"}));
    QCOMPARE(tags->getIdByTagName("Pump"), -1);
    QCOMPARE(tags->getTagNameById(2), QString());
    QVERIFY(!tags->isNewTag("Pump"));
    QCOMPARE(tags->getSimilarTagNames("pu"), QStringList("Pump"));
    QCOMPARE(tags->getLinkID(2), -1);
    QCOMPARE(tags->addTags(2, 1), QList<int>({2}));
    const QString error = errorOn(key, "select name,id from custom_tag_table");
    QVERIFY(error.contains("database is locked"));
    tags->addDafaultTag("New");
    QCOMPARE(m_messages->take(), QStringList({insertFailed, notRead + error}));
    QCOMPARE(tags->getTagNames(), QStringList());
    executeOn(otherKey, "COMMIT");
    QVERIFY(tags->modifyTag("Silo", "D1", 0, 1, 1));
    QCOMPARE(tags->getTagNames(), QStringList({"Tank", "Pump", "Silo"}));
    QCOMPARE(tags->getIdByTagName("Pump"), 2);
}

void TagBadInputTest::aLockedDatabaseAtTheStart()
{
    writeTags(key, {tag(1, "Tank")});
    openProject(m_path, otherKey);
    executeOn(otherKey, "BEGIN EXCLUSIVE");
    TagSystem *tags = bound();
    const QStringList messages = m_messages->take();
    QVERIFY(!messages.isEmpty());
    QVERIFY2(messages.last().startsWith(notRead), qPrintable(messages.join('\n')));
    QCOMPARE(messages.filter("database is locked").size(), messages.size());
    QCOMPARE(tags->getTagNames(), QStringList());
    executeOn(otherKey, "ROLLBACK");
    tags->refreshTagNames();
    QCOMPARE(tags->getTagNames(), QStringList("Tank"));
    QVERIFY(!tags->addTag("Tank", "", 0, 1, 1));
}

/// SQLite treats a limit of pages as it treats a full disk.
void TagBadInputTest::aFullDatabase()
{
    writeTags(key, {tag(1, "Tank"), tag(2, "Pump")});
    TagSystem *tags = bound();
    executeOn(key, "PRAGMA max_page_count = 1");
    const QString large(100000, QLatin1Char('x'));
    QVERIFY(!tags->addTag(large, "D1", 0, 1, 1));
    QCOMPARE(m_messages->take(), QStringList(insertFailed));
    QVERIFY(!tags->modifyTag("Tank", large, 0, 1, 1));
    const QStringList messages = m_messages->take();
    QCOMPARE(messages.size(), 1);
    QVERIFY2(messages.first().startsWith(notModified + "database or disk is full"), qPrintable(messages.first()));
    QCOMPARE(tags->getTagNames(), QStringList({"Tank", "Pump"}));
    QCOMPARE(rowsOn(key, allRows), QStringList({"1|Tank|0|0|1||1|1|0|0|0|", "2|Pump|0|0|1||1|1|0|0|0|"}));
    executeOn(key, "BEGIN");
    QVERIFY(tags->addTag("Silo", "D1", 0, 1, 1));
    QVERIFY(!tags->addTag(large, "D1", 0, 1, 1));
    m_messages->take();
    QVERIFY(tags->modifyTag("Silo", "D2", 0, 1, 1));
    executeOn(key, "PRAGMA max_page_count = 100000");
    QVERIFY(tags->addTag(large, large, 0, 1, 1));
    QCOMPARE(tags->getTagNames().last().size(), 100000);
    QCOMPARE(tags->getIdByTagName(large), tags->getTagIDList().last());
    QCOMPARE(tags->getAddressByID(tags->getTagIDList().last()), large);
    QCOMPARE(tags->getSimilarTagNames("xxxxxxx"), QStringList(large));
    QSqlDatabase::database(key, false).rollback();
}

void TagBadInputTest::aDeletedDatabase()
{
    m_isBroken = true;
    writeTags(key, {tag(1, "Tank"), tag(2, "Pump")});
    TagSystem *tags = bound();
    QVERIFY(QFile::remove(m_path));
    QCOMPARE(tags->getTagNames(), QStringList({"Tank", "Pump"}));
    QCOMPARE(tags->getIdByTagName("Pump"), 2);
    // A change of no row writes nothing, and so succeeds.
    refusesAllWrites(tags, false);
    QCOMPARE(tags->getTagNameById(1), QStringLiteral("Tank"));
    QCOMPARE(rowsOn(key, "PRAGMA integrity_check"), QStringList("ok"));
    QVERIFY(!QFile::exists(m_path));
}

void TagBadInputTest::aClosedDatabase()
{
    writeTags(key, {tag(1, "Tank"), tag(2, "Pump")});
    TagSystem *tags = bound();
    tags->closeDatabase();
    QCOMPARE(tags->getTagNames(), QStringList({"Tank", "Pump"}));
    QCOMPARE(tags->getTagNameById(1), QString());
    QCOMPARE(tags->getIdByTagName("Tank"), -1);
    QCOMPARE(tags->getLinkID(1), -1);
    QCOMPARE(tags->getTagNameById(20022), QStringLiteral("S>Year"));
    QVERIFY(!tags->addTag("Tank", "", 0, 1, 1));
    QCOMPARE(m_messages->take(), QStringList());
    const LogRecorder log;
    QVERIFY(!tags->addTag("New", "", 0, 1, 1));
    QCOMPARE(m_messages->take(), QStringList(insertFailed));
    QVERIFY(!tags->modifyTag("Tank", "", 0, 1, 1));
    QCOMPARE(m_messages->take().size(), 1);
    QCOMPARE(tags->getTagNames(), QStringList({"Tank", "Pump"}));
    tags->setTagNameById("New", 1);
    const QStringList messages = m_messages->take();
    QCOMPARE(messages.size(), 1);
    QVERIFY(messages.first().startsWith(notRead));
    QCOMPARE(tags->getTagNames(), QStringList());
}

void TagBadInputTest::brokenFiles_data()
{
    QTest::addColumn<int>("kept");
    QTest::addColumn<QByteArray>("front");
    QTest::addColumn<QString>("error");
    QTest::newRow("ten bytes") << 10 << QByteArray() << "file is not a database";
    QTest::newRow("the header alone") << 100 << QByteArray() << "malformed";
    QTest::newRow("half of the first page") << 2048 << QByteArray() << "malformed";
    QTest::newRow("the first page alone") << 4096 << QByteArray() << "malformed";
    QTest::newRow("all but the last page") << -4096 << QByteArray() << "malformed";
    QTest::newRow("another file") << 0 << QByteArray(5000, 'x') << "file is not a database";
    QTest::newRow("a broken header") << 1000000 << QByteArray("SQLite format 4") << "file is not a database";
}

void TagBadInputTest::brokenFiles()
{
    QFETCH(int, kept);
    QFETCH(QByteArray, front);
    QFETCH(QString, error);
    m_isBroken = true;
    makeTags(300);
    closeProject(key);
    QByteArray bytes = contents(m_path);
    QVERIFY(bytes.size() > 3 * 4096);
    bytes = kept < 0 ? bytes.left(bytes.size() + kept) : bytes.left(kept);
    bytes.replace(0, qMin(front.size(), bytes.size()), front);
    QFile file(m_path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    file.close();
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", key);
        db.setDatabaseName(m_path);
        QVERIFY(db.open());
    }
    TagSystem *tags = bound();
    const QStringList messages = m_messages->take();
    QVERIFY(!messages.isEmpty());
    QVERIFY2(messages.last().startsWith(notRead), qPrintable(messages.join('\n')));
    QVERIFY2(messages.last().contains(error), qPrintable(messages.join('\n')));
    QVERIFY(!tags->addTag("New", "D1", 0, 1, 1));
    QCOMPARE(m_messages->take(), QStringList(insertFailed));
    QVERIFY(!tags->modifyTag("New", "D1", 0, 1, 1));
    m_messages->take();
    tags->addDafaultTag("New");
    tags->addTags(299, 2);
    const LogRecorder log;
    tags->setTagNameById("New", 299);
    m_messages->take();
    QCOMPARE(contents(m_path).size(), bytes.size());
}

void TagBadInputTest::truncatedWhileOpen_data()
{
    QTest::addColumn<int>("kept");
    QTest::newRow("nothing left") << 0;
    QTest::newRow("ten bytes") << 10;
    QTest::newRow("half of the first page") << 2048;
    QTest::newRow("the first page") << 4096;
    QTest::newRow("two pages") << 8192;
    QTest::newRow("two pages and a half") << 10240;
}

/// Lost data stays lost; but nothing crashes, and every failed write reports it.
void TagBadInputTest::truncatedWhileOpen()
{
    QFETCH(int, kept);
    m_isBroken = true;
    makeTags(300);
    TagSystem *tags = bound();
    QCOMPARE(tags->getTagNames().size(), 300);
    const QStringList names = tags->getTagNames();
    QVERIFY(QFile::resize(m_path, kept));
    QCOMPARE(tags->getTagNames(), names);
    QCOMPARE(tags->getSimilarTagNames("tank").size(), 300);
    for (const int id : {1, 150, 300}) {
        const QString name = tags->getTagNameById(id);
        QVERIFY(name.isEmpty() || name == names.at(id - 1));
        const int found = tags->getIdByTagName(names.at(id - 1));
        QVERIFY(found == -1 || found == id);
    }
    const bool isAdded = tags->addTag("New", "D1", 0, 1, 1);
    const QStringList messages = m_messages->take();
    QCOMPARE(messages.contains(insertFailed), !isAdded);
    if (!isAdded)
        QCOMPARE(tags->getTagNames(), names);
    const LogRecorder log;
    tags->modifyTag("Newer", "D1", 0, 1, 1);
    tags->addDafaultTag("Newest");
    tags->addTags(1, qMakePair(QString("Copy"), command("D7")), 2);
    tags->setTagNameById("Other", 299);
    tags->refreshTagNames();
    m_messages->take();
}

void TagBadInputTest::anEmptyFile()
{
    closeProject(key);
    QVERIFY(QFile::resize(m_path, 0));
    openProject(m_path, key);
    TagSystem *tags = bound();
    QCOMPARE(m_messages->take(), QStringList());
    QCOMPARE(tags->getTagNames(), QStringList());
    QVERIFY(tags->addTag("New", "D1", 0, 1, 1));
    QCOMPARE(tags->getTagNames(), QStringList("New"));
    QCOMPARE(tags->stationList(1), QList<int>());
    QCOMPARE(tags->getLinkName(1), QString());
}

QTEST_GUILESS_MAIN(TagBadInputTest)

#include "tst_tagbadinput.moc"
