// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/logrecorder.h"
#include "support/projectfixtures.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

const QString key = QStringLiteral("7");
const QString plainKey = QStringLiteral("plain");

const QString allRows = QStringLiteral("SELECT id, name, address, typeof(name) FROM custom_tag_table");

/// The operations as statements with the texts put into them: the plain reference for ordinary texts.
namespace plain {

QList<int> ids(const QString &statement)
{
    QList<int> ids;
    QSqlQuery query(QSqlDatabase::database(plainKey, false));
    query.exec(statement);
    while (query.next())
        ids.append(query.value(0).toInt());
    return ids;
}

int idByName(const QString &name)
{
    const QList<int> found = ids(QStringLiteral("select id,name from custom_tag_table where name = '%1'").arg(name));
    return found.size() == 1 ? found.first() : -1;
}

QList<int> idsByAddress(int link, const QString &address)
{
    return ids(QStringLiteral("select id,address from custom_tag_table where address = '%1' AND connector_id = %2")
                   .arg(address, QString::number(link)));
}

void rename(int id, const QString &name)
{
    QSqlQuery query(QSqlDatabase::database(plainKey, false));
    query.exec(
        QStringLiteral("update custom_tag_table set name = \"%1\" where id = %2").arg(name, QString::number(id)));
}

} // namespace plain

/// An ordinary text: no quotes, no zero character, no column name.
QString ordinaryText(QRandomGenerator &random)
{
    static const QStringList whole = {"007", "1E5",   "-3",  "0x10", "1.50", " 12", "12 ", "9999999999999999999",
                                      ".5",  "1e400", "nan", "inf",  "%",    "a%b", "?",   ":name",
                                      "--",  "a;b",   "\\",  "/*"};
    if (random.bounded(4) == 0)
        return whole.at(int(random.bounded(whole.size())));
    static const QString characters = QString::fromUtf8("abcXYZ0189 _-.:/#%&()[]{}*+=?!@$^~|<>,;äöüß漢字é\t");
    QString text;
    for (quint32 length = 1 + random.bounded(6U); length > 0; --length)
        text += characters.at(int(random.bounded(characters.size())));
    return text;
}

} // namespace

/// Tests that no user text becomes part of a statement.
class BoundValuesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void renames_data();
    void renames();
    void refusedRenames_data();
    void refusedRenames();
    void aNameThatIsNone_data();
    void aNameThatIsNone();
    void anAddressThatIsNone_data();
    void anAddressThatIsNone();
    void nullTextsAreEmptyOnes();
    void ordinaryTextsSeeNoChange_data();
    void ordinaryTextsSeeNoChange();

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
};

void BoundValuesTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_messages = std::make_unique<MessageRecorder>();
    makeProject(m_folder->filePath("project.db"), key);
    writeTags(key, {TagRow{1, "one", 2, 1, "D1"}, TagRow{2, "two", 2, 1, "D2"}, TagRow{3, "three", 0, 1, "D1"}});
}

void BoundValuesTest::cleanup()
{
    QCOMPARE(m_messages->take(), QStringList());
    dropProjects();
    m_messages.reset();
    m_folder.reset();
}

void BoundValuesTest::renames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("stored");
    QTest::newRow("an ordinary name") << "Tank level"
                                      << "Tank level";
    QTest::newRow("the name of a column") << "address"
                                          << "address";
    QTest::newRow("the name of another column") << "scale"
                                                << "scale";
    QTest::newRow("the name of the row's number") << "rowid"
                                                  << "rowid";
    QTest::newRow("a single quote") << "O'Brien"
                                    << "O'Brien";
    QTest::newRow("a statement in single quotes") << "x' where 1 = 1 --"
                                                  << "x' where 1 = 1 --";
    QTest::newRow("a semicolon") << "a; DELETE FROM custom_tag_table"
                                 << "a; DELETE FROM custom_tag_table";
    QTest::newRow("the places of a statement") << ":name"
                                               << ":name";
    QTest::newRow("digits become a number, as in every write") << "007"
                                                               << "7";
    QTest::newRow("an empty name") << ""
                                   << "";
    QTest::newRow("a null name") << QString() << "";
}

void BoundValuesTest::renames()
{
    QFETCH(QString, name);
    QFETCH(QString, stored);
    TagSystem *tags = TagSystem::instance(key);
    const LogRecorder log;
    tags->setTagNameById(name, 2);
    QCOMPARE(log.lines(), QStringList());
    QCOMPARE(rowsOn(key, "SELECT id, name, address FROM custom_tag_table"),
             QStringList({"1|one|D1", "2|" + stored + "|D2", "3|three|D1"}));
    QCOMPARE(tags->getTagNames(), QStringList({"one", stored, "three"}));
}

void BoundValuesTest::refusedRenames_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a double quote") << "a\"b";
    QTest::newRow("one that would rename every tag") << "x\" where 1 = 1 --";
    QTest::newRow("one that would change another tag") << "y\", address = \"D99\" where id = 2 --";
    QTest::newRow("two double quotes") << "a\"\"b";
    QTest::newRow("a zero character") << QString("ab").replace(1, 1, QChar(0));
}

void BoundValuesTest::refusedRenames()
{
    QFETCH(QString, name);
    const QStringList before = rowsOn(key, allRows);
    TagSystem *tags = TagSystem::instance(key);
    const LogRecorder log;
    tags->setTagNameById(name, 1);
    QCOMPARE(rowsOn(key, allRows), before);
    QCOMPARE(log.lines().size(), 1);
    const QString front = "\"update custom_tag_table set name = \\\"";
    QVERIFY2(log.lines().first().startsWith(front), qPrintable(log.lines().first()));
    QCOMPARE(tags->getTagNames(), QStringList({"one", "two", "three"}));
}

void BoundValuesTest::aNameThatIsNone_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("one that would invent an id") << "x' union select 4711, 'x";
    QTest::newRow("one that would hold for every row") << "x' or id = 2 --";
    QTest::newRow("a single quote that stands in a row") << "a'b";
    QTest::newRow("a single quote alone") << "'";
    QTest::newRow("a zero character behind a name") << QString("one") + QChar(0);
}

void BoundValuesTest::aNameThatIsNone()
{
    QFETCH(QString, name);
    executeOn(key, "INSERT INTO custom_tag_table (name) VALUES ('a''b')");
    TagSystem *tags = TagSystem::instance(key);
    const LogRecorder log;
    QCOMPARE(tags->getIdByTagName(name), -1);
    QCOMPARE(log.lines(), QStringList());
}

void BoundValuesTest::anAddressThatIsNone_data()
{
    QTest::addColumn<QString>("address");
    QTest::newRow("one that would hold for every row") << "x' or 1=1 --";
    QTest::newRow("one that would invent a row") << "x' union select 4711, 'x";
    QTest::newRow("a single quote that stands in a row") << "a'b";
    QTest::newRow("a zero character behind an address") << QString("D1") + QChar(0);
}

void BoundValuesTest::anAddressThatIsNone()
{
    QFETCH(QString, address);
    executeOn(key, "INSERT INTO custom_tag_table (address, connector_id) VALUES ('a''b', 2)");
    TagSystem *tags = TagSystem::instance(key);
    const LogRecorder log;
    QCOMPARE(tags->getTagIDsByAddress(2, address), QList<int>());
    QCOMPARE(log.lines(), QStringList());
}

void BoundValuesTest::nullTextsAreEmptyOnes()
{
    writeTags(key, {TagRow{8, "", 2, 1, ""}});
    TagSystem *tags = TagSystem::instance(key);
    QCOMPARE(tags->getIdByTagName(QString()), 8);
    QCOMPARE(tags->getIdByTagName(""), 8);
    QCOMPARE(tags->getTagIDsByAddress(2, QString()), QList<int>{8});
    QCOMPARE(tags->getTagIDsByAddress(2, ""), QList<int>{8});
}

void BoundValuesTest::ordinaryTextsSeeNoChange_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 20; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

/// Two projects that hold the same: one gets the library's operations, the other the plain statements.
void BoundValuesTest::ordinaryTextsSeeNoChange()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    makeProject(m_folder->filePath("plain.db"), plainKey);
    executeOn(plainKey, tagTableStatement());
    executeOn(key, "DELETE FROM custom_tag_table");
    for (int id = 1; id <= 12; ++id) {
        const QString name = ordinaryText(random);
        const QString address = ordinaryText(random);
        const int link = int(random.bounded(3));
        for (const QString &connection : {key, plainKey})
            executeOn(connection, "INSERT INTO custom_tag_table (id, name, address, connector_id) VALUES (?, ?, ?, ?)",
                      {id, name, address, link});
    }
    TagSystem *tags = TagSystem::instance(key);
    const LogRecorder log;
    int renamed = 0;
    for (int step = 0; step < 60; ++step) {
        const QString text = ordinaryText(random);
        QCOMPARE(tags->getIdByTagName(text), plain::idByName(text));
        const int link = int(random.bounded(3));
        QCOMPARE(tags->getTagIDsByAddress(link, text), plain::idsByAddress(link, text));
        const int id = 1 + int(random.bounded(12));
        const QStringList before = rowsOn(key, allRows);
        tags->setTagNameById(text, id);
        // The name may be taken, or an expression that a taken one matches.
        if (rowsOn(key, allRows) == before)
            continue;
        ++renamed;
        plain::rename(id, text);
        QCOMPARE(rowsOn(key, allRows), rowsOn(plainKey, allRows));
    }
    QVERIFY(renamed > 10);
}

QTEST_GUILESS_MAIN(BoundValuesTest)
#include "tst_boundvalues.moc"
