// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "support/projecttest.h"

#include "zelmar_label/address_grammar/communicatorcommand.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <QRandomGenerator>
#include <QtTest>

/// Tests the list of names in memory, after writes of the tags and of others.
class NamesAfterWritingTest : public ProjectTest
{
    Q_OBJECT

private Q_SLOTS:
    void namesAfterWritesByOthers_data();
    void namesAfterWritesByOthers();
    void namesStayAfterAFailure();
    void namesAfterRollBacks_data();
    void namesAfterRollBacks();
    void namesAfterRollBacksOfDeletes_data();
    void namesAfterRollBacksOfDeletes();
    void namesAfterAnIgnoredInsert();
    void namesAsTheTableKeepsThem_data();
    void namesAsTheTableKeepsThem();
    void randomWrites_data();
    void randomWrites();
};

void NamesAfterWritingTest::namesAfterWritesByOthers_data()
{
    QTest::addColumn<QString>("connection");
    QTest::addColumn<QString>("statement");
    const QList<QPair<const char *, const char *>> statements = {
        {"a row more", "INSERT INTO custom_tag_table (name) VALUES ('more')"},
        {"a row between", "INSERT INTO custom_tag_table (id, name) VALUES (2, 'between')"},
        {"a row at the end of all", "INSERT INTO custom_tag_table (id, name) VALUES (9223372036854775807, 'end')"},
        {"a row less", "DELETE FROM custom_tag_table WHERE name = 'one'"},
        {"the last row less", "DELETE FROM custom_tag_table WHERE id = 3"},
        {"no row left", "DELETE FROM custom_tag_table"},
        {"a rename", "UPDATE custom_tag_table SET name = 'renamed' WHERE id = 1"},
        {"a name that is NULL", "UPDATE custom_tag_table SET name = NULL WHERE id = 1"},
        {"another id", "UPDATE custom_tag_table SET id = 50 WHERE id = 1"},
        {"an index over the names", "CREATE INDEX names ON custom_tag_table (name DESC)"},
        {"a trigger that doubles", "CREATE TRIGGER t AFTER INSERT ON custom_tag_table WHEN new.name NOT LIKE 'twin%' "
                                   "BEGIN INSERT INTO custom_tag_table (name) VALUES ('twin ' || new.name); END"},
        {"a trigger that renames", "CREATE TRIGGER t AFTER INSERT ON custom_tag_table BEGIN UPDATE custom_tag_table "
                                   "SET name = upper(name) WHERE id = new.id; END"},
        {"a trigger that renames all", "CREATE TRIGGER t AFTER INSERT ON custom_tag_table BEGIN UPDATE "
                                       "custom_tag_table SET name = name || '!'; END"},
        {"a trigger that deletes", "CREATE TRIGGER t AFTER INSERT ON custom_tag_table BEGIN DELETE FROM "
                                   "custom_tag_table WHERE id = new.id; END"},
        {"a trigger that ignores", "CREATE TRIGGER t BEFORE INSERT ON custom_tag_table BEGIN SELECT raise(IGNORE); "
                                   "END"},
        {"a trigger that renames on change", "CREATE TRIGGER t AFTER UPDATE OF access ON custom_tag_table BEGIN "
                                             "UPDATE custom_tag_table SET name = name || '+' WHERE id = new.id; END"},
        {"a trigger that inserts on change", "CREATE TRIGGER t AFTER UPDATE OF access ON custom_tag_table BEGIN "
                                             "INSERT INTO custom_tag_table (name) VALUES ('changed'); END"},
        {"a column more", "ALTER TABLE custom_tag_table ADD COLUMN remark TEXT DEFAULT 'x'"},
        {"a table of another thing", "CREATE TABLE other_table (id INTEGER)"},
        {"a row of another table", "INSERT INTO NODE VALUES (1, 1, 1)"},
    };
    for (const auto &statement : statements) {
        QTest::addRow("%s, on the same connection", statement.first) << key << QString(statement.second);
        QTest::addRow("%s, on another connection", statement.first) << otherKey << QString(statement.second);
    }
}

void NamesAfterWritingTest::namesAfterWritesByOthers()
{
    QFETCH(QString, connection);
    QFETCH(QString, statement);
    openProject(m_path, otherKey);
    TagSystem *tags = bound();
    const auto prepare = [tags] {
        tryOn(key, "DROP TRIGGER IF EXISTS t");
        tryOn(key, "DROP INDEX IF EXISTS names");
        tryOn(key, "DROP TABLE IF EXISTS other_table");
        executeOn(key, "DELETE FROM custom_tag_table");
        tryOn(key, "ALTER TABLE custom_tag_table DROP COLUMN remark");
        writeTags(key, {tag(1, "one"), tag(3, "three")});
        // A connection sees others' tables when it reads.
        rowsOn(otherKey, allRows);
        tags->refreshTagNames();
        QVERIFY(tags->addTag("mine", "", 0, 1, 1));
    };
    prepare();
    executeOn(connection, statement);
    QVERIFY(tags->addTag("added", "", 0, 1, 1));
    QCOMPARE(tags->getTagNames(), reloaded());
    QVERIFY(tags->addTag("added after", "", 0, 1, 1));
    QCOMPARE(tags->getTagNames(), reloaded());

    prepare();
    executeOn(connection, statement);
    QVERIFY(tags->modifyTag("mine", "D1", 0, 1, 1));
    QCOMPARE(tags->getTagNames(), reloaded());
    QVERIFY(tags->modifyTag("three", "D1", 0, 1, 1));
    QCOMPARE(tags->getTagNames(), reloaded());

    prepare();
    executeOn(connection, statement);
    tags->setTagNameById("renamed by tags", 3);
    QCOMPARE(tags->getTagNames(), reloaded());
    tags->addDafaultTag("default");
    QCOMPARE(tags->getTagNames(), reloaded());

    prepare();
    executeOn(connection, statement);
    tags->addTags(20022, qMakePair(QString("copy"), command("D7", CommunicatorCommand::DoubleWord, 12)), 2);
    QCOMPARE(tags->getTagNames(), reloaded());
    tags->addDafaultTag("default");
    QCOMPARE(tags->getTagNames(), reloaded());
}

void NamesAfterWritingTest::namesStayAfterAFailure()
{
    TagSystem *tags = bound();
    tags->addDafaultTag("one");
    openProject(m_path, otherKey);
    executeOn(otherKey, "INSERT INTO custom_tag_table (name) VALUES ('two')");
    executeOn(otherKey, "CREATE TRIGGER no BEFORE INSERT ON custom_tag_table BEGIN SELECT raise(ABORT, 'no'); END");
    executeOn(otherKey, "CREATE TRIGGER nor BEFORE UPDATE ON custom_tag_table BEGIN SELECT raise(ABORT, 'no'); END");
    QVERIFY(!tags->addTag("three", "", 0, 1, 1));
    QVERIFY(!tags->modifyTag("one", "", 0, 1, 1));
    QCOMPARE(m_messages->take().size(), 2);
    QCOMPARE(tags->getTagNames(), QStringList("one"));
    executeOn(otherKey, "DROP TRIGGER no");
    QVERIFY(tags->addTag("three", "", 0, 1, 1));
    QCOMPARE(tags->getTagNames(), QStringList({"one", "two", "three"}));
}

void NamesAfterWritingTest::namesAfterRollBacks_data()
{
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<QStringList>("after");
    QTest::newRow("a transaction") << QStringList("BEGIN") << QStringList("ROLLBACK");
    QTest::newRow("a savepoint") << QStringList("SAVEPOINT a") << QStringList({"ROLLBACK TO a", "RELEASE a"});
    QTest::newRow("a savepoint that stays") << QStringList("SAVEPOINT a") << QStringList("ROLLBACK TO a");
    QTest::newRow("a savepoint in a transaction")
        << QStringList({"BEGIN", "SAVEPOINT a"}) << QStringList("ROLLBACK TO a");
    QTest::newRow("a savepoint in a savepoint")
        << QStringList({"SAVEPOINT a", "SAVEPOINT b"}) << QStringList("ROLLBACK TO b");
    QTest::newRow("an outer savepoint") << QStringList({"SAVEPOINT a", "SAVEPOINT b"}) << QStringList("ROLLBACK TO a");
    QTest::newRow("a transaction that is kept") << QStringList("BEGIN") << QStringList("COMMIT");
    QTest::newRow("a row of others before it")
        << QStringList({"BEGIN", "INSERT INTO custom_tag_table (name) VALUES ('by others')"})
        << QStringList("ROLLBACK");
    QTest::newRow("a row of others in the place of what was taken back")
        << QStringList("BEGIN")
        << QStringList({"ROLLBACK", "INSERT INTO custom_tag_table (name) VALUES ('by others')"});
    QTest::newRow("a delete that is taken back")
        << QStringList({"BEGIN", "DELETE FROM custom_tag_table"}) << QStringList("ROLLBACK");
    QTest::newRow("a rename that is taken back")
        << QStringList({"BEGIN", "UPDATE custom_tag_table SET name = name || '?'"}) << QStringList("ROLLBACK");
}

void NamesAfterWritingTest::namesAfterRollBacks()
{
    QFETCH(QStringList, before);
    QFETCH(QStringList, after);
    for (int between = 0; between < 6; ++between) {
        for (int last = 0; last < 4; ++last) {
            executeOn(key, tagTableStatement());
            executeOn(key, "DELETE FROM custom_tag_table");
            writeTags(key, {tag(1, "one"), tag(2, "two")});
            TagSystem *tags = bound();
            tags->refreshTagNames();
            QVERIFY(tags->addTag("three", "", 0, 1, 1));
            for (const QString &statement : qAsConst(before))
                executeOn(key, statement);
            switch (between) {
            case 0:
                tags->addTag("four", "", 0, 1, 1);
                tags->addTag("five", "", 0, 1, 1);
                break;
            case 1:
                tags->setTagNameById("renamed", 2);
                break;
            case 2:
                tags->modifyTag("two", "D1", 0, 1, 1);
                break;
            case 3:
                tags->setTagNameById("renamed", 2);
                tags->addTag("four", "", 0, 1, 1);
                break;
            case 4:
                tags->setTagNameById("renamed", 2);
                tags->modifyTag("three", "D1", 0, 1, 1);
                break;
            default:
                tags->refreshTagNames();
            }
            for (const QString &statement : qAsConst(after))
                executeOn(key, statement);
            switch (last) {
            case 0:
                tags->addTag("last", "", 0, 1, 1);
                break;
            case 1:
                tags->modifyTag("one", "D1", 0, 1, 1);
                break;
            case 2:
                tags->addDafaultTag("last");
                tags->modifyTag("one", "D1", 0, 1, 1);
                break;
            default:
                tags->setTagNameById("last", 1);
            }
            const QStringList expected = reloaded();
            QVERIFY2(tags->getTagNames() == expected,
                     qPrintable(QStringLiteral("%1 between, %2 last: %3 instead of %4")
                                    .arg(QString::number(between), QString::number(last), tags->getTagNames().join(' '),
                                         expected.join(' '))));
            tryOn(key, "ROLLBACK");
        }
    }
}

void NamesAfterWritingTest::namesAfterRollBacksOfDeletes_data()
{
    QTest::addColumn<QStringList>("others");
    QTest::addColumn<bool>("isRenamedBetween");
    const QString deleted = "DELETE FROM custom_tag_table WHERE id = 3";
    QTest::newRow("the last row was deleted and its id taken again") << QStringList(deleted) << false;
    QTest::newRow("the same, and a rename between") << QStringList(deleted) << true;
    QTest::newRow("the same for a row that only others knew")
        << QStringList("DELETE FROM custom_tag_table WHERE id > 3") << false;
}

/// A roll-back restores rows whose ids new tags have meanwhile.
void NamesAfterWritingTest::namesAfterRollBacksOfDeletes()
{
    QFETCH(QStringList, others);
    QFETCH(bool, isRenamedBetween);
    writeTags(key, {tag(1, "one"), tag(2, "two"), tag(3, "three")});
    TagSystem *tags = bound();
    executeOn(key, "INSERT INTO custom_tag_table (id, name) SELECT 4, 'known to others' WHERE " +
                       QString(others.first().contains("> 3") ? "1" : "0"));
    executeOn(key, "BEGIN");
    for (const QString &statement : qAsConst(others))
        executeOn(key, statement);
    if (isRenamedBetween)
        tags->setTagNameById("uno", 1);
    QVERIFY(tags->addTag("in place of it", "", 0, 1, 1));
    QCOMPARE(tags->getTagNames(), reloaded());
    executeOn(key, "ROLLBACK");
    QVERIFY(tags->modifyTag("two", "D1", 0, 1, 1));
    QCOMPARE(tags->getTagNames(), reloaded());
}

/// The connection's last row id is then that of an earlier row.
void NamesAfterWritingTest::namesAfterAnIgnoredInsert()
{
    TagSystem *tags = bound();
    executeOn(key, "CREATE TRIGGER t BEFORE INSERT ON custom_tag_table WHEN new.name = 'ignored' BEGIN SELECT "
                   "raise(IGNORE); END");
    tags->refreshTagNames();
    QVERIFY(tags->addTag("one", "", 0, 1, 1));
    QVERIFY(tags->addTag("two", "", 0, 1, 1));
    executeOn(key, "SAVEPOINT a");
    executeOn(key, "UPDATE custom_tag_table SET name = 'renamed' WHERE id = 1");
    QVERIFY(tags->addTag("ignored", "", 0, 1, 1));
    QCOMPARE(tags->getTagNames(), QStringList({"renamed", "two"}));
    executeOn(key, "ROLLBACK TO a");
    QVERIFY(tags->modifyTag("two", "D1", 0, 1, 1));
    QCOMPARE(tags->getTagNames(), QStringList({"one", "two"}));
    executeOn(key, "RELEASE a");
}

void NamesAfterWritingTest::namesAsTheTableKeepsThem_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("kept");
    QTest::newRow("digits") << "123"
                            << "123";
    QTest::newRow("leading zeros are lost in a column of this kind") << "007"
                                                                     << "7";
    QTest::newRow("an exponent is a number") << "1e3"
                                             << "1000";
    QTest::newRow("blanks around a number are lost") << " 5 "
                                                     << "5";
    QTest::newRow("a fraction") << "1.50"
                                << "1.5";
    QTest::newRow("letters behind digits") << "007b"
                                           << "007b";
    QTest::newRow("a blank within") << "0 7"
                                    << "0 7";
}

void NamesAfterWritingTest::namesAsTheTableKeepsThem()
{
    QFETCH(QString, name);
    QFETCH(QString, kept);
    TagSystem *tags = bound();
    QVERIFY(tags->addTag("first", "", 0, 1, 1));
    QVERIFY(tags->addTag(name, "", 0, 1, 1));
    QCOMPARE(tags->getTagNames(), QStringList({"first", kept}));
    QCOMPARE(tags->getTagNameById(2), kept);
    QCOMPARE(tags->getIdByTagName(name), 2);
    QCOMPARE(tags->isNewTag(name), name != kept);
    QCOMPARE(tags->getTagNames(), reloaded());
}

void NamesAfterWritingTest::randomWrites_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<bool>("hasTriggers");
    for (quint32 seed = 1; seed <= 4; ++seed)
        QTest::addRow("seed %u", seed) << seed << false;
    for (quint32 seed = 5; seed <= 8; ++seed)
        QTest::addRow("seed %u, with triggers and indices", seed) << seed << true;
}

/// Writes of the tags, of others on both connections, and transactions, in any order: after a successful write of the
/// tags the names are those of a reload; a failed write does not change them.
void NamesAfterWritingTest::randomWrites()
{
    QFETCH(quint32, seed);
    QFETCH(bool, hasTriggers);
    openProject(m_path, otherKey);
    executeOn(key, "PRAGMA busy_timeout = 0");
    executeOn(otherKey, "PRAGMA busy_timeout = 0");
    TagSystem *tags = bound();
    const LogRecorder log;
    QRandomGenerator random(seed);
    const auto below = [&random](int limit) { return static_cast<int>(random.bounded(quint32(limit))); };
    const auto name = [&below] {
        static const QStringList names = {"a", "b", "c", "a-1", "a-2", "b-7", "A", "x y", "7", "07", "it's", "d%1"};
        return below(3) == 0 ? QString("n%1").arg(below(1000)) : names.at(below(names.size()));
    };
    const QStringList plain = {"INSERT INTO custom_tag_table (name) VALUES ('o%1')",
                               "INSERT INTO custom_tag_table (id, name) VALUES (%1, 'p')",
                               "UPDATE custom_tag_table SET name = name || '-' || id WHERE id % 5 = 0",
                               "UPDATE custom_tag_table SET name = 'q' WHERE id = %1",
                               "DELETE FROM custom_tag_table WHERE id = (SELECT max(id) FROM custom_tag_table)",
                               "DELETE FROM custom_tag_table WHERE id % 3 = 0",
                               "DELETE FROM custom_tag_table WHERE id > 25"};
    const auto numbered = [&below](const QString &statement) {
        return QString(statement).replace("%1", QString::number(below(60)));
    };
    const QStringList transactions = {"BEGIN",         "COMMIT",        "ROLLBACK",  "SAVEPOINT a",   "SAVEPOINT b",
                                      "ROLLBACK TO a", "ROLLBACK TO b", "RELEASE b", "ROLLBACK TO a", "ROLLBACK"};
    const QStringList schemas = {
        "CREATE TRIGGER t AFTER INSERT ON custom_tag_table WHEN new.id % 2 = 0 BEGIN UPDATE custom_tag_table SET "
        "name = name || 't' WHERE id = new.id - 1; END",
        "CREATE TRIGGER t AFTER INSERT ON custom_tag_table WHEN new.id % 3 = 0 BEGIN DELETE FROM custom_tag_table "
        "WHERE id = new.id; END",
        "CREATE TRIGGER t AFTER UPDATE OF access ON custom_tag_table BEGIN UPDATE custom_tag_table SET name = name "
        "|| 'u' WHERE id = new.id; END",
        "CREATE TRIGGER t BEFORE INSERT ON custom_tag_table WHEN new.id % 2 = 0 BEGIN SELECT raise(IGNORE); END",
        "DROP TRIGGER t",
        "DROP TRIGGER t",
        "CREATE INDEX names ON custom_tag_table (name)",
        "DROP INDEX names",
    };
    int writes = 0;
    QStringList history;
    for (int round = 0; round < 1500; ++round) {
        const QStringList before = tags->getTagNames();
        const QString one = name();
        const bool isInTransaction = !tryOn(key, "BEGIN") || !tryOn(key, "COMMIT");
        bool isWritten = false;
        bool isFailed = false;
        const int kind = below(hasTriggers ? 12 : 11);
        switch (kind) {
        case 0:
        case 1:
            isWritten = tags->addTag(one, "D1", below(3), below(12), 1);
            isFailed = !isWritten;
            break;
        case 2:
            isWritten = tags->modifyTag(one, "D2", below(3), below(12), 1);
            isFailed = !isWritten;
            break;
        case 3:
            isWritten = tags->isNewTag(one);
            tags->addDafaultTag(one);
            break;
        case 4: {
            const int id = below(30);
            isWritten = !tags->getTagNameById(id).isEmpty();
            tags->addTags(id, qMakePair(one, command("D7", CommunicatorCommand::DoubleWord, 3)), below(3));
            break;
        }
        case 5: {
            const QRegExp taken("^" + one + "(-(\\d+))?$");
            isWritten = before.indexOf(taken) < 0;
            tags->setTagNameById(one, below(30));
            break;
        }
        case 6:
        case 7:
            // Deletes that are rolled back have a test of their own.
            history.append(numbered(plain.at(below(isInTransaction ? plain.size() - 3 : plain.size()))));
            tryOn(key, history.last());
            break;
        case 8:
            history.append(numbered(plain.at(below(plain.size()))));
            tryOn(otherKey, history.last());
            break;
        case 9:
        case 10:
            history.append(transactions.at(below(transactions.size())));
            tryOn(key, history.last());
            break;
        default:
            history.append(schemas.at(below(schemas.size())));
            tryOn(key, history.last());
        }
        if (kind < 6)
            history.append(QString::number(kind) + ' ' + one);
        if (isWritten) {
            ++writes;
            const QStringList expected = reloaded();
            QVERIFY2(tags->getTagNames() == expected,
                     qPrintable(QStringLiteral("round %1, kind %2: %3 instead of %4 after %5")
                                    .arg(QString::number(round), QString::number(kind), tags->getTagNames().join(' '),
                                         expected.join(' '), history.mid(history.size() - 15).join("; "))));
        } else if (isFailed) {
            // A modify may have added its tag before it failed; a name that was there stays.
            QVERIFY(kind == 2 || tags->getTagNames() == before);
        } else if (kind > 5) {
            QCOMPARE(tags->getTagNames(), before);
        }
    }
    QVERIFY2(writes > 300, qPrintable(QString::number(writes)));
    m_messages->take();
    tryOn(key, "ROLLBACK");
    QCOMPARE(rowsOn(key, "PRAGMA integrity_check"), QStringList("ok"));
}

QTEST_GUILESS_MAIN(NamesAfterWritingTest)

#include "tst_tagwriting_names.moc"
