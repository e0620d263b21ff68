// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/logrecorder.h"
#include "support/projectfixtures.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QSqlDatabase>
#include <QTemporaryDir>
#include <QtTest>

#include <climits>
#include <memory>

namespace {

const QString key = QStringLiteral("project of an editor");

TagRow sample()
{
    TagRow row;
    row.id = 1;
    row.name = QStringLiteral("Sample");
    row.connectorId = 2;
    row.dataType = 3;
    row.address = QStringLiteral("D100");
    row.scale = 14;
    row.access = 15;
    row.scanTime = 16;
    row.addition = 17;
    row.defaultValue = 18;
    row.userLog = 19;
    row.comment = QStringLiteral("20");
    return row;
}

/// A second row, with an id of a system or recipe tag or next to them.
TagRow sampleAt(int id)
{
    TagRow row = sample();
    row.id = id;
    row.name = QStringLiteral("Sample %1").arg(id);
    row.address = QStringLiteral("D%1").arg(id);
    return row;
}

} // namespace

/// Tests the accessors of an editor: each reads the database each time.
class CatchTableTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void address_data();
    void address();
    void number_data();
    void number();
    void numberOfADoubledRow();
    void accessors_data();
    void accessors();
    void accessorsWithoutADatabase_data();
    void accessorsWithoutADatabase();
    void scaleOfARecipeTag_data();
    void scaleOfARecipeTag();
    void scaleOfAnUnconnectedRecipeTagIsThatOfRow0();

    void aNewTagAnswersTheDefaults();
    void writesShowAtOnce();
    void unknownIdsLeaveNothingBehind();
    void oddValues();
    void missingColumns();
    void aTableThatComesAndGoes();
    void aClosedDatabase();
    void twoProjects();

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
};

void CatchTableTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_messages = std::make_unique<MessageRecorder>();
    makeProject(m_folder->filePath(QStringLiteral("project")), key);
    writeTags(key, {sample(), sampleAt(20011), sampleAt(21001), sampleAt(30000), sampleAt(60001)});
    TagSystem::instance(key);
}

void CatchTableTest::cleanup()
{
    QCOMPARE(m_messages->take(), QStringList());
    m_messages.reset();
    dropProjects();
    m_folder.reset();
}

void CatchTableTest::address_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a tag") << 1 << QStringLiteral("D100");
    QTest::newRow("no such row") << 999 << QString();
    QTest::newRow("no tag") << -1 << QString();
    QTest::newRow("a system tag without a row") << 20012 << QString();
    QTest::newRow("a system id that a row bears") << 20011 << QStringLiteral("D20011");
    QTest::newRow("a recipe tag without a row") << 30001 << QString();
    QTest::newRow("a recipe id that a row bears") << 30000 << QStringLiteral("D30000");
    QTest::newRow("a connected recipe tag without a row") << 30002 << QString();
    QTest::newRow("a row without an address") << 50 << QString();
    QTest::newRow("a number") << 51 << QStringLiteral("17");
}

void CatchTableTest::address()
{
    QFETCH(int, id);
    executeOn(key, QStringLiteral("INSERT INTO custom_tag_table (id, address) VALUES (50, NULL), (51, '0017')"));
    TagSystem *tags = TagSystem::instance(key);
    tags->setRecipeTags({{30002, QStringLiteral("R>1_1")}}, {{30002, 1}});
    QTEST(tags->getAddressByID(id), "expected");
}

void CatchTableTest::number_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("column");
    QTest::addColumn<int>("expected");
    QTest::newRow("access") << 1 << QStringLiteral("access") << 15;
    QTest::newRow("link") << 1 << QStringLiteral("connector_id") << 2;
    QTest::newRow("data type") << 1 << QStringLiteral("data_type") << 3;
    QTest::newRow("scan time") << 1 << QStringLiteral("scan_time") << 16;
    QTest::newRow("scale") << 1 << QStringLiteral("scale") << 14;
    QTest::newRow("addition") << 1 << QStringLiteral("addition") << 17;
    QTest::newRow("default value") << 1 << QStringLiteral("default_value") << 18;
    QTest::newRow("user log") << 1 << QStringLiteral("user_log") << 19;
    QTest::newRow("a number in the comment") << 1 << QStringLiteral("user_log_comment") << 20;
    QTest::newRow("id") << 1 << QStringLiteral("id") << 1;
    QTest::newRow("in other letters") << 1 << QStringLiteral("SCALE") << 14;
    QTest::newRow("a text that is no number") << 1 << QStringLiteral("name") << 0;
    QTest::newRow("an expression") << 1 << QStringLiteral("scale * 100 + access") << 1415;
    QTest::newRow("several columns: the first counts") << 1 << QStringLiteral("scale, access") << 14;
    QTest::newRow("all columns: the id comes first") << 1 << QStringLiteral("*") << 1;
    QTest::newRow("no such column") << 1 << QStringLiteral("no_such_column") << 0;
    QTest::newRow("no column") << 1 << QString() << 0;
    QTest::newRow("a column that breaks the statement") << 1 << QStringLiteral("'") << 0;
    QTest::newRow("no such row") << 999 << QStringLiteral("scale") << 0;
    QTest::newRow("no tag") << -1 << QStringLiteral("scale") << 0;
    QTest::newRow("a system tag without a row") << 20012 << QStringLiteral("scale") << 0;
    QTest::newRow("a system id that a row bears") << 20011 << QStringLiteral("scale") << 14;
}

void CatchTableTest::number()
{
    QFETCH(int, id);
    QFETCH(QString, column);
    const LogRecorder log;
    QTEST(TagSystem::instance(key)->getIntValueByID(id, column), "expected");
    QCOMPARE(log.lines(), QStringList());
}

void CatchTableTest::numberOfADoubledRow()
{
    executeOn(key, QStringLiteral("DROP TABLE custom_tag_table"));
    executeOn(key, QStringLiteral("CREATE TABLE custom_tag_table (id, address, scale, access)"));
    executeOn(key, QStringLiteral("INSERT INTO custom_tag_table VALUES (7, 'D1', 11, 21), (8, 'D2', 12, 22), "
                                  "(7, 'D3', 13, 23)"));
    TagSystem *tags = TagSystem::instance(key);
    QCOMPARE(tags->getIntValueByID(7, QStringLiteral("scale")), 13);
    QCOMPARE(tags->getScaleByID(7), 13);
    QCOMPARE(tags->getAccessModeByID(7), 23);
    QCOMPARE(tags->getAddressByID(7), QStringLiteral("D3"));
    QCOMPARE(tags->getIntValueByID(8, QStringLiteral("scale")), 12);
}

void CatchTableTest::accessors_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QList<int>>("expected");
    // Scan time, default value, addition, scale, access mode.
    QTest::newRow("a tag") << 1 << QList<int>{16, 18, 17, 14, 15};
    QTest::newRow("no such row") << 999 << QList<int>{0, 0, 0, 0, 0};
    QTest::newRow("no tag") << -1 << QList<int>{0, 0, 0, 0, 0};
    QTest::newRow("the highest number") << INT_MAX << QList<int>{0, 0, 0, 0, 0};
    QTest::newRow("just below the system tags") << 19999 << QList<int>{0, 0, 0, 0, 0};
    QTest::newRow("the first system id") << 20000 << QList<int>{1, 0, 1, 1, 1};
    QTest::newRow("a system tag whose id a row bears") << 20011 << QList<int>{1, 0, 1, 1, 1};
    QTest::newRow("a system id without a tag") << 20094 << QList<int>{1, 0, 1, 1, 1};
    QTest::newRow("the last system id") << 21000 << QList<int>{1, 0, 1, 1, 1};
    QTest::newRow("just above the system tags") << 21001 << QList<int>{16, 18, 17, 14, 15};
    QTest::newRow("just below the recipe tags") << 29999 << QList<int>{0, 0, 0, 0, 0};
    QTest::newRow("a recipe id that a row bears") << 30000 << QList<int>{1, 0, 1, 0, 1};
    QTest::newRow("a connected recipe tag") << 30001 << QList<int>{1, 0, 1, 14, 1};
    QTest::newRow("the last recipe id") << 50000 << QList<int>{1, 0, 1, 0, 1};
    QTest::newRow("a connected recipe row tag") << 50001 << QList<int>{1, 0, 1, 14, 1};
    QTest::newRow("the last recipe row id") << 60000 << QList<int>{1, 0, 1, 0, 1};
    QTest::newRow("just above the recipe tags") << 60001 << QList<int>{16, 18, 17, 14, 15};
}

void CatchTableTest::accessors()
{
    QFETCH(int, id);
    TagSystem *tags = TagSystem::instance(key);
    tags->setRecipeTags({{30001, QStringLiteral("R>1_1")}}, {{30001, 1}});
    tags->setRecipeRowTags({{50001, QStringLiteral("R>1_1I1")}}, {{50001, 1}});
    const LogRecorder log;
    const QList<int> answers{tags->getScanTimeByID(id), tags->getDefaultValueByID(id), tags->getAdditionByID(id),
                             tags->getScaleByID(id), tags->getAccessModeByID(id)};
    QTEST(answers, "expected");
    QCOMPARE(log.lines(), QStringList());
}

void CatchTableTest::accessorsWithoutADatabase_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QList<int>>("expected");
    QTest::newRow("a custom id") << 1 << QList<int>{0, 0, 0, 0, 0};
    QTest::newRow("no tag") << -1 << QList<int>{0, 0, 0, 0, 0};
    QTest::newRow("a system tag") << 20011 << QList<int>{1, 0, 1, 1, 1};
    QTest::newRow("a recipe tag that is not connected") << 30000 << QList<int>{1, 0, 1, 0, 1};
    QTest::newRow("a recipe tag that is connected to a system tag") << 30001 << QList<int>{1, 0, 1, 1, 1};
}

void CatchTableTest::accessorsWithoutADatabase()
{
    QFETCH(int, id);
    const LogRecorder log;
    TagSystem *tags = TagSystem::instance(QString());
    tags->setRecipeTags({{30001, QStringLiteral("R>1_1")}}, {{30001, 20011}});
    const QList<int> answers{tags->getScanTimeByID(id), tags->getDefaultValueByID(id), tags->getAdditionByID(id),
                             tags->getScaleByID(id), tags->getAccessModeByID(id)};
    QTEST(answers, "expected");
    QCOMPARE(tags->getAddressByID(id), QString());
    QCOMPARE(tags->getIntValueByID(id, QStringLiteral("scale")), 0);
}

void CatchTableTest::scaleOfARecipeTag_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("scale");
    QTest::newRow("connected to a tag") << 30001 << 14;
    QTest::newRow("connected to a system tag") << 30002 << 1;
    QTest::newRow("connected to a tag that does not exist") << 30003 << 0;
    QTest::newRow("connected to no tag") << 30004 << 1;
    QTest::newRow("connected to another recipe tag") << 30005 << 14;
    QTest::newRow("connected to a recipe row tag") << 30006 << 14;
    QTest::newRow("without a name but connected") << 30007 << 14;
    QTest::newRow("with a name but not connected") << 30008 << 0;
    QTest::newRow("unknown") << 40000 << 0;
    QTest::newRow("a recipe row tag") << 50001 << 14;
    QTest::newRow("the last recipe id is no recipe row tag, though that map has it") << 50000 << 0;
    QTest::newRow("a recipe row id is no recipe tag, though that map has it") << 50002 << 0;
}

void CatchTableTest::scaleOfARecipeTag()
{
    QFETCH(int, id);
    TagSystem *tags = TagSystem::instance(key);
    tags->setRecipeTags({{30001, QStringLiteral("R>1_1")}, {30008, QStringLiteral("R>1_8")}}, {{30001, 1},
                                                                                               {30002, 20011},
                                                                                               {30003, 999},
                                                                                               {30004, -1},
                                                                                               {30005, 30001},
                                                                                               {30006, 50001},
                                                                                               {30007, 1},
                                                                                               {50002, 1}});
    tags->setRecipeRowTags({{50001, QStringLiteral("R>1_1I1")}}, {{50001, 1}, {50000, 1}});
    QTEST(tags->getScaleByID(id), "scale");
}

void CatchTableTest::scaleOfAnUnconnectedRecipeTagIsThatOfRow0()
{
    executeOn(key, QStringLiteral("INSERT INTO custom_tag_table (id, scale) VALUES (0, 5)"));
    QCOMPARE(TagSystem::instance(key)->getScaleByID(30000), 5);
    QCOMPARE(TagSystem::instance(key)->getScaleByID(60000), 5);
}

void CatchTableTest::aNewTagAnswersTheDefaults()
{
    TagSystem *tags = TagSystem::instance(key);
    QVERIFY(tags->addTag(QStringLiteral("New"), QStringLiteral("D7"), 3, 8, 12));
    const int id = tags->getIdByTagName(QStringLiteral("New"));
    QCOMPARE(id, 60002);
    QCOMPARE(tags->getAddressByID(id), QStringLiteral("D7"));
    QCOMPARE(tags->getScanTimeByID(id), 1);
    QCOMPARE(tags->getDefaultValueByID(id), 0);
    // A system or recipe tag answers 1 here.
    QCOMPARE(tags->getAdditionByID(id), 0);
    QCOMPARE(tags->getScaleByID(id), 12);
    QCOMPARE(tags->getAccessModeByID(id), 0);
}

void CatchTableTest::writesShowAtOnce()
{
    TagSystem *tags = TagSystem::instance(key);
    QCOMPARE(tags->getScaleByID(1), 14);
    QCOMPARE(tags->getAccessModeByID(1), 15);
    QVERIFY(tags->modifyTag(QStringLiteral("Sample"), QStringLiteral("D101"), 4, 5, 6));
    QCOMPARE(tags->getAddressByID(1), QStringLiteral("D101"));
    QCOMPARE(tags->getScaleByID(1), 6);
    QCOMPARE(tags->getAccessModeByID(1), 1);
    QCOMPARE(tags->getScanTimeByID(1), 1);
    QCOMPARE(tags->getAdditionByID(1), 0);
    QCOMPARE(tags->getDefaultValueByID(1), 0);
    QCOMPARE(tags->getIntValueByID(1, QStringLiteral("user_log")), 0);

    executeOn(key, QStringLiteral("UPDATE custom_tag_table SET address = 'D102', scale = 7, access = 8 WHERE id = 1"));
    QCOMPARE(tags->getAddressByID(1), QStringLiteral("D102"));
    QCOMPARE(tags->getScaleByID(1), 7);
    QCOMPARE(tags->getAccessModeByID(1), 8);

    const QString other = QStringLiteral("another text");
    openProject(m_folder->filePath(QStringLiteral("project")), other);
    executeOn(other, QStringLiteral("UPDATE custom_tag_table SET address = 'D103', scale = 9 WHERE id = 1"));
    closeProject(other);
    QCOMPARE(tags->getAddressByID(1), QStringLiteral("D103"));
    QCOMPARE(tags->getScaleByID(1), 9);

    executeOn(key, QStringLiteral("DELETE FROM custom_tag_table WHERE id = 1"));
    QCOMPARE(tags->getAddressByID(1), QString());
    QCOMPARE(tags->getScaleByID(1), 0);
    QCOMPARE(tags->getAccessModeByID(1), 0);
}

void CatchTableTest::unknownIdsLeaveNothingBehind()
{
    TagSystem *tags = TagSystem::instance(key);
    QCOMPARE(tags->getCommunicatorID(999), -1);
    QCOMPARE(tags->getAccessModeByID(999), 0);
    QCOMPARE(tags->getDataTypeByID(999), 0);
    QCOMPARE(tags->getCommunicatorID(999), -1);
    bool ok = true;
    const CommunicatorCommand command = tags->getCommunicatorCommandByIndex(999, ok);
    QVERIFY(!ok);
    QCOMPARE(command.address, QStringLiteral("S>NULL"));
    QCOMPARE(command.scanTime, 1);
}

void CatchTableTest::oddValues()
{
    executeOn(key,
              QStringLiteral("INSERT INTO custom_tag_table (id, scale, addition, scan_time, access, default_value) "
                             "VALUES (70, 'twelve', NULL, '13', -4, 2147483647)"));
    TagSystem *tags = TagSystem::instance(key);
    QCOMPARE(tags->getScaleByID(70), 0);
    QCOMPARE(tags->getAdditionByID(70), 0);
    QCOMPARE(tags->getScanTimeByID(70), 13);
    QCOMPARE(tags->getAccessModeByID(70), -4);
    QCOMPARE(tags->getDefaultValueByID(70), INT_MAX);
}

void CatchTableTest::missingColumns()
{
    executeOn(key, QStringLiteral("DROP TABLE custom_tag_table"));
    executeOn(key, QStringLiteral("CREATE TABLE custom_tag_table (id INTEGER PRIMARY KEY, address, scale)"));
    executeOn(key, QStringLiteral("INSERT INTO custom_tag_table VALUES (1, 'D1', 3)"));
    const LogRecorder log;
    TagSystem *tags = TagSystem::instance(key);
    QCOMPARE(tags->getAddressByID(1), QStringLiteral("D1"));
    QCOMPARE(tags->getScaleByID(1), 3);
    QCOMPARE(tags->getScanTimeByID(1), 0);
    QCOMPARE(tags->getDefaultValueByID(1), 0);
    QCOMPARE(tags->getAdditionByID(1), 0);
    QCOMPARE(tags->getAccessModeByID(1), 0);
    QCOMPARE(tags->getCommunicatorID(1), -1);
    QCOMPARE(log.lines(), QStringList());
}

void CatchTableTest::aTableThatComesAndGoes()
{
    const LogRecorder log;
    TagSystem *tags = TagSystem::instance(key);
    for (int round = 1; round <= 3; ++round) {
        QCOMPARE(tags->getScaleByID(1), 14);
        QCOMPARE(tags->getAddressByID(1), QStringLiteral("D100"));
        QCOMPARE(tags->getAccessModeByID(1), 15);
        executeOn(key, QStringLiteral("ALTER TABLE custom_tag_table RENAME TO hidden"));
        QCOMPARE(tags->getScaleByID(1), 0);
        QCOMPARE(tags->getAddressByID(1), QString());
        QCOMPARE(tags->getAccessModeByID(1), 0);
        executeOn(key, QStringLiteral("CREATE TABLE custom_tag_table (access, address, scale, id)"));
        executeOn(key, QStringLiteral("INSERT INTO custom_tag_table VALUES (71, 'D72', 73, 1)"));
        QCOMPARE(tags->getScaleByID(1), 73);
        QCOMPARE(tags->getAddressByID(1), QStringLiteral("D72"));
        QCOMPARE(tags->getAccessModeByID(1), 71);
        executeOn(key, QStringLiteral("DROP TABLE custom_tag_table"));
        executeOn(key, QStringLiteral("ALTER TABLE hidden RENAME TO custom_tag_table"));
    }
    QCOMPARE(log.lines(), QStringList());
}

void CatchTableTest::aClosedDatabase()
{
    TagSystem *tags = TagSystem::instance(key);
    QCOMPARE(tags->getScaleByID(1), 14);
    tags->closeDatabase();
    QVERIFY(!QSqlDatabase::contains(key));
    const LogRecorder log;
    QCOMPARE(tags->getScaleByID(1), 0);
    QCOMPARE(tags->getAddressByID(1), QString());
    QCOMPARE(tags->getAccessModeByID(1), 0);
    QCOMPARE(tags->getScanTimeByID(20011), 1);
    QCOMPARE(tags->getCommunicatorID(1), -1);
}

void CatchTableTest::twoProjects()
{
    const QString other = QStringLiteral("other project of an editor");
    makeProject(m_folder->filePath(QStringLiteral("other project")), other);
    TagRow row = sample();
    row.scale = 114;
    row.address = QStringLiteral("X1");
    row.access = 115;
    writeTags(other, {row});
    TagSystem *first = TagSystem::instance(key);
    TagSystem *second = TagSystem::instance(other);
    QVERIFY(first != second);
    for (int round = 0; round < 2; ++round) {
        QCOMPARE(first->getScaleByID(1), 14);
        QCOMPARE(second->getScaleByID(1), 114);
        QCOMPARE(first->getAddressByID(1), QStringLiteral("D100"));
        QCOMPARE(second->getAddressByID(1), QStringLiteral("X1"));
        QCOMPARE(first->getAccessModeByID(1), 15);
        QCOMPARE(second->getAccessModeByID(1), 115);
        QCOMPARE(second->getScaleByID(21001), 0);
    }
}

QTEST_GUILESS_MAIN(CatchTableTest)

#include "tst_catchtable.moc"
