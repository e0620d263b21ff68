// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/projectfixtures.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QtTest>

#include <functional>
#include <memory>
#include <vector>

namespace {

const QString key = QStringLiteral("7");
const QString otherKey = QStringLiteral("other");
const QString thirdKey = QStringLiteral("third");

/// The table's names now, also while a statement of the test is open on the connection.
QStringList reloaded(const QString &connection = key)
{
    QStringList names;
    QSqlQuery query(QSqlDatabase::database(connection, false));
    query.exec(QStringLiteral("select name,id from custom_tag_table"));
    while (query.next())
        names.append(query.value(0).toString());
    return names;
}

bool isDone(const QString &connection, const QString &statement)
{
    QSqlQuery query(QSqlDatabase::database(connection, false));
    return query.exec(statement);
}

/// A file with only a tag table of this many rows.
void writeFile(const QString &path, const QString &name, int rows)
{
    QFile::remove(path);
    openProject(path, thirdKey);
    executeOn(thirdKey, tagTableStatement());
    for (int row = 1; row <= rows; ++row)
        executeOn(thirdKey, "INSERT INTO custom_tag_table (name) VALUES (?)", {name + QString::number(row)});
    closeProject(thirdKey);
}

bool isInTransaction(const QString &connection)
{
    if (!isDone(connection, QStringLiteral("BEGIN")))
        return true;
    return !isDone(connection, QStringLiteral("ROLLBACK"));
}

} // namespace

/// Tests that the list of names is always the table's after the last write, whatever else uses the connection and the
/// file.
class TagNameListTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void openStatementsStay_data();
    void openStatementsStay();
    void aStatementThatIsReadGoesOn();
    void noTransactionIsBegun_data();
    void noTransactionIsBegun();

    void anotherConnectionIsBound();
    void anotherConnectionHasAsManyRows();
    void theFileIsExchangedUnderTheConnection();
    void theConnectionIsOpenedAnew();
    void theConnectionIsRegisteredAnew();
    void twoObjectsOnOneConnection();

    void writesThatLookLikeNone_data();
    void writesThatLookLikeNone();
    void aReadOnlyConnection();

    void randomWrites_data();
    void randomWrites();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    TagSystem *bound() { return TagSystem::instance(key); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
};

void TagNameListTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_messages = std::make_unique<MessageRecorder>();
    makeProject(path("project.db"), key);
}

void TagNameListTest::cleanup()
{
    QCOMPARE(m_messages->take(), QStringList());
    dropProjects();
    m_messages.reset();
    m_folder.reset();
}

void TagNameListTest::openStatementsStay_data()
{
    QTest::addColumn<QString>("statement");
    QTest::newRow("an insert that gives back its row")
        << "INSERT INTO custom_tag_table (name) VALUES ('open'), ('open too') RETURNING id";
    QTest::newRow("an update that gives back its rows") << "UPDATE custom_tag_table SET address = 'D1' RETURNING name";
    QTest::newRow("a delete that gives back its rows") << "DELETE FROM custom_tag_table WHERE id > 1 RETURNING name";
    QTest::newRow("a writing statement on another table")
        << "INSERT INTO NODE VALUES (1, 1, 1), (2, 2, 1) RETURNING NODEID";
}

/// A writing statement of the caller whose rows are not all read.
void TagNameListTest::openStatementsStay()
{
    QFETCH(QString, statement);
    TagSystem *tags = bound();
    QVERIFY(tags->addTag("first", "", 0, 1, 1));
    QVERIFY(tags->addTag("second", "", 0, 1, 1));
    {
        QSqlQuery open(QSqlDatabase::database(key, false));
        open.setForwardOnly(true);
        QVERIFY2(open.exec(statement), qPrintable(open.lastError().text()));
        QVERIFY(open.next());
        tags->refreshTagNames();
        QCOMPARE(tags->getTagNames(), reloaded());
        QVERIFY(tags->addTag("while it is open", "", 0, 1, 1));
        QCOMPARE(tags->getTagNames(), reloaded());
        QVERIFY(tags->modifyTag("first", "D2", 0, 1, 1));
        tags->setTagNameById("uno", 1);
        QCOMPARE(tags->getTagNames(), reloaded());
    }
    QVERIFY(!isInTransaction(key));
    QVERIFY(tags->addTag("afterwards", "", 0, 1, 1));
    const QStringList names = reloaded();
    QCOMPARE(tags->getTagNames(), names);

    // The written data is in the file, not in a transaction that the end of the process rolls back.
    dropProjects();
    openProject(path("project.db"), otherKey);
    QCOMPARE(reloaded(otherKey), names);
    QVERIFY(names.contains("afterwards"));
}

/// A caller may write tags while it reads rows on the same connection.
void TagNameListTest::aStatementThatIsReadGoesOn()
{
    writeTags(key, {TagRow{1, "one"}, TagRow{2, "two"}, TagRow{3, "three"}});
    TagSystem *tags = bound();
    executeOn(key, "CREATE TABLE plan (name TEXT)");
    executeOn(key, "INSERT INTO plan VALUES ('a'), ('b'), ('c')");
    QSqlQuery reading(QSqlDatabase::database(key, false));
    reading.setForwardOnly(true);
    QVERIFY(reading.exec("SELECT name FROM plan"));
    QStringList read;
    while (reading.next()) {
        read.append(reading.value(0).toString());
        QVERIFY(tags->addTag(read.last(), "", 0, 1, 1));
        tags->setTagNameById(read.last() + "!", 1);
    }
    QVERIFY(!reading.lastError().isValid());
    QCOMPARE(read, QStringList({"a", "b", "c"}));
    QCOMPARE(tags->getTagNames(), reloaded());
}

void TagNameListTest::noTransactionIsBegun_data()
{
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<bool>("isInTransaction");
    QTest::newRow("no transaction") << QStringList() << false;
    QTest::newRow("a transaction") << QStringList("BEGIN") << true;
    QTest::newRow("a savepoint") << QStringList("SAVEPOINT a") << true;
}

void TagNameListTest::noTransactionIsBegun()
{
    QFETCH(QStringList, before);
    TagSystem *tags = bound();
    for (const QString &statement : qAsConst(before))
        executeOn(key, statement);
    const auto compare = [] { QTEST(isInTransaction(key), "isInTransaction"); };
    tags->refreshTagNames();
    compare();
    QVERIFY(tags->addTag("one", "", 0, 1, 1));
    compare();
    QVERIFY(tags->modifyTag("one", "D1", 0, 1, 1));
    compare();
    tags->setTagNameById("uno", 1);
    compare();
    tags->addDafaultTag("two");
    tags->addTags(1, 2);
    compare();
    QCOMPARE(tags->getTagNames(), QStringList({"uno", "two"}));
}

void TagNameListTest::anotherConnectionIsBound()
{
    makeProject(path("other.db"), otherKey);
    writeTags(otherKey, {TagRow{1, "of the other file"}});
    TagSystem tags(nullptr);
    QVERIFY(tags.init(key));
    QVERIFY(tags.addTag("of the first file", "", 0, 1, 1));
    QVERIFY(tags.init(otherKey));
    QCOMPARE(tags.getTagNames(), QStringList("of the other file"));
    QVERIFY(tags.addTag("more", "", 0, 1, 1));
    QCOMPARE(tags.getTagNames(), reloaded(otherKey));
}

/// Two equal files on connections without writes: all their counters are the same.
void TagNameListTest::anotherConnectionHasAsManyRows()
{
    QDir folder(QCoreApplication::applicationDirPath());
    folder.mkdir("database");
    const QString file = folder.filePath("database/standalone");
    for (int rows = 0; rows < 4; ++rows) {
        writeFile(path("bare.db"), "project", rows);
        writeFile(file, "alone", rows);
        openProject(path("bare.db"), otherKey);
        TagSystem tags(nullptr);
        QVERIFY(tags.init(otherKey));
        QCOMPARE(tags.getTagNames().size(), rows);
        QVERIFY(tags.createDatabaseConnection("standalone"));
        QVERIFY(tags.addTag("added", "", 0, 1, 1));
        QCOMPARE(tags.getTagNames(), reloaded("standalone"));
        tags.closeDatabase();
        closeProject(otherKey);
    }
    QFile::remove(file);
}

void TagNameListTest::theFileIsExchangedUnderTheConnection()
{
    for (int rows = 0; rows < 4; ++rows) {
        writeFile(path("first.db"), "ours", rows);
        writeFile(path("second.db"), "theirs", rows);
        openProject(path("first.db"), otherKey);
        TagSystem tags(nullptr);
        QVERIFY(tags.init(otherKey));
        {
            QSqlDatabase db = QSqlDatabase::database(otherKey, false);
            db.close();
            db.setDatabaseName(path("second.db"));
            QVERIFY(db.open());
        }
        QVERIFY(tags.addTag("added", "", 0, 1, 1));
        QCOMPARE(tags.getTagNames(), reloaded(otherKey));
        QVERIFY(tags.modifyTag("added", "D1", 0, 1, 1));
        QCOMPARE(tags.getTagNames(), reloaded(otherKey));
        tags.closeDatabase();
    }
}

void TagNameListTest::theConnectionIsOpenedAnew()
{
    openProject(path("project.db"), otherKey);
    TagSystem *tags = bound();
    QVERIFY(tags->addTag("one", "", 0, 1, 1));
    {
        QSqlDatabase db = QSqlDatabase::database(key, false);
        db.close();
        executeOn(otherKey, "UPDATE custom_tag_table SET name = 'uno'");
        QVERIFY(db.open());
    }
    QVERIFY(tags->addTag("two", "", 0, 1, 1));
    QCOMPARE(tags->getTagNames(), QStringList({"uno", "two"}));
}

/// The object keeps a copy of its old connection, which is no longer valid.
void TagNameListTest::theConnectionIsRegisteredAnew()
{
    TagSystem tags(nullptr);
    QVERIFY(tags.init(key));
    QVERIFY(tags.addTag("one", "", 0, 1, 1));
    makeProject(path("other.db"), key);
    writeTags(key, {TagRow{1, "theirs"}});
    QVERIFY(tags.init(key));
    QVERIFY(tags.addTag("two", "", 0, 1, 1));
    QCOMPARE(tags.getTagNames(), QStringList({"theirs", "two"}));
}

void TagNameListTest::twoObjectsOnOneConnection()
{
    TagSystem one(nullptr);
    TagSystem other(nullptr);
    QVERIFY(one.init(key));
    QVERIFY(other.init(key));
    for (int round = 0; round < 3; ++round) {
        QVERIFY(one.addTag(QString("one %1").arg(round), "", 0, 1, 1));
        QCOMPARE(one.getTagNames(), reloaded());
        QVERIFY(other.addTag(QString("other %1").arg(round), "", 0, 1, 1));
        QCOMPARE(other.getTagNames(), reloaded());
    }
}

void TagNameListTest::writesThatLookLikeNone_data()
{
    QTest::addColumn<QStringList>("statements");
    QTest::newRow("all rows deleted at once") << QStringList("DELETE FROM custom_tag_table");
    QTest::newRow("a row replaced") << QStringList("REPLACE INTO custom_tag_table (id, name) VALUES (3, 'replaced')");
    QTest::newRow("a table of the connection in front of the project's")
        << QStringList({"CREATE TEMP TABLE custom_tag_table AS SELECT * FROM main.custom_tag_table",
                        "UPDATE temp.custom_tag_table SET name = name || '?'"});
    QTest::newRow("another table of the name")
        << QStringList({"ALTER TABLE custom_tag_table RENAME TO old_tags", tagTableStatement(),
                        "INSERT INTO custom_tag_table (name) VALUES ('new')"});
    QTest::newRow("a view in the table's place")
        << QStringList({"ALTER TABLE custom_tag_table RENAME TO old_tags",
                        "CREATE VIEW custom_tag_table AS SELECT * FROM old_tags ORDER BY name",
                        "CREATE TRIGGER t INSTEAD OF INSERT ON custom_tag_table BEGIN INSERT INTO old_tags (name) "
                        "VALUES (new.name); END"});
    QTest::newRow("a table of the process that reads them backwards")
        << QStringList("PRAGMA reverse_unordered_selects = ON");
    QTest::newRow("the temporary database is dropped") << QStringList("PRAGMA temp_store = 2");
    QTest::newRow("the file is written anew") << QStringList("VACUUM");
}

void TagNameListTest::writesThatLookLikeNone()
{
    QFETCH(QStringList, statements);
    writeTags(key, {TagRow{1, "one"}, TagRow{2, "two"}, TagRow{3, "three"}});
    TagSystem *tags = bound();
    QVERIFY(tags->addTag("four", "", 0, 1, 1));
    for (const QString &statement : qAsConst(statements))
        executeOn(key, statement);
    for (int round = 0; round < 3; ++round) {
        QVERIFY(tags->addTag(QString("added %1").arg(round), "", 0, 1, 1));
        QCOMPARE(tags->getTagNames(), reloaded());
    }
}

void TagNameListTest::aReadOnlyConnection()
{
    writeTags(key, {TagRow{1, "one"}});
    TagSystem *tags = bound();
    executeOn(key, "PRAGMA query_only = ON");
    tags->refreshTagNames();
    QCOMPARE(tags->getTagNames(), QStringList("one"));
    QVERIFY(!tags->addTag("two", "", 0, 1, 1));
    QCOMPARE(m_messages->take().size(), 1);
    executeOn(key, "PRAGMA query_only = OFF");
    openProject(path("project.db"), otherKey);
    executeOn(otherKey, "UPDATE custom_tag_table SET name = 'uno'");
    QVERIFY(tags->addTag("two", "", 0, 1, 1));
    QCOMPARE(tags->getTagNames(), QStringList({"uno", "two"}));
}

void TagNameListTest::randomWrites_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 40; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

/// Writes of the object mixed with other writes; compares with the table after each.
void TagNameListTest::randomWrites()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    openProject(path("project.db"), otherKey);
    executeOn(otherKey, "PRAGMA busy_timeout = 0");
    executeOn(key, "PRAGMA busy_timeout = 0");
    TagSystem *tags = bound();
    int number = 1;
    const auto fresh = [&number] { return QString("tag %1").arg(++number); };
    const auto anyId = [&random] { return 1 + int(random.bounded(8)); };

    const std::vector<std::function<void()>> mine = {
        [&] { tags->addTag(fresh(), "D1", 0, 1, 1); },
        [&] { tags->addTag(fresh(), "D1", 0, 1, 1); },
        [&] { tags->addDafaultTag(fresh()); },
        [&] { tags->modifyTag(QString("tag %1").arg(1 + random.bounded(qMax(1, number - 1))), "D2", 0, 1, 1); },
        [&] { tags->setTagNameById(fresh(), anyId()); },
        [&] { tags->addTags(20022, qMakePair(fresh(), CommunicatorCommand()), 1); },
        [&] { tags->refreshTagNames(); },
    };
    const QStringList others = {
        "BEGIN",
        "COMMIT",
        "ROLLBACK",
        "SAVEPOINT a",
        "ROLLBACK TO a",
        "RELEASE a",
        "INSERT INTO custom_tag_table (name) VALUES ('by others')",
        "UPDATE custom_tag_table SET name = name || '.' WHERE id % 3 = 0",
        "DELETE FROM custom_tag_table WHERE id = (SELECT max(id) FROM custom_tag_table)",
        "DELETE FROM custom_tag_table",
        "INSERT INTO NODE VALUES (1, 1, 1)",
        "CREATE INDEX IF NOT EXISTS names ON custom_tag_table (name DESC)",
        "DROP INDEX IF EXISTS names",
    };
    for (int step = 0; step < 120; ++step) {
        QStringList done;
        for (quint32 more = random.bounded(3U); more > 0; --more) {
            const QString connection = random.bounded(3) == 0 ? otherKey : key;
            const QString statement = others.at(int(random.bounded(others.size())));
            if (isDone(connection, statement))
                done.append(connection + ": " + statement);
        }
        const quint32 own = random.bounded(quint32(mine.size()));
        done.append(QString("own write %1").arg(own));
        mine.at(own)();
        // A write that another connection's lock refused shows a message and changes nothing.
        if (!m_messages->take().isEmpty()) {
            isDone(otherKey, "ROLLBACK");
            tags->refreshTagNames();
            m_messages->take();
        }
        const QStringList names = reloaded();
        const QString told =
            QStringLiteral("step %1 (%2): %3 instead of %4")
                .arg(QString::number(step), done.join("; "), tags->getTagNames().join(", "), names.join(", "));
        QVERIFY2(tags->getTagNames() == names, qPrintable(told));
    }
}

QTEST_GUILESS_MAIN(TagNameListTest)
#include "tst_tagnamelist.moc"
