// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/logrecorder.h"
#include "support/projectfixtures.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

TagRow row(int id, const QString &name, int link, int dataType, const QString &address, int scale)
{
    TagRow made;
    made.id = id;
    made.name = name;
    made.connectorId = link;
    made.dataType = dataType;
    made.address = address;
    made.scale = scale;
    made.access = 1;
    made.scanTime = 0;
    made.addition = 6;
    made.defaultValue = 7;
    return made;
}

/// A command and its `ok` in one line: "ok address dataType length scanTime".
QString commandOf(TagSystem *tags, int id)
{
    bool ok = false;
    const CommunicatorCommand command = tags->getCommunicatorCommandByIndex(id, ok);
    return QStringLiteral("%1 %2 %3 %4 %5")
        .arg(ok ? QStringLiteral("ok") : QStringLiteral("failed"), command.address, QString::number(command.dataType),
             QString::number(command.length), QString::number(command.scanTime));
}

void hideTagTable(const QString &key)
{
    executeOn(key, QStringLiteral("ALTER TABLE custom_tag_table RENAME TO hidden"));
}

} // namespace

/// Tests the process that only reads a finished project: the tag table is in memory from the first read on.
class CatchTableTolvTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void fourAnswersComeFromMemory();
    void theOtherAnswersComeFromTheDatabase();
    void aSecondRequestDoesNotReadAgain();
    void anObjectOfOnesOwnReadsTheTableUntilItIsTold();

    void linkOfATag_data();
    void linkOfATag();
    void linkOfTheTagOfAnObject();
    void accessMode_data();
    void accessMode();
    void askingForTheAccessModeAddsARecord();
    void askingForTheDataTypeAddsARecord();
    void onlyTwoQuestionsAddARecord();

    void dataType_data();
    void dataType();
    void askingForTheDataTypeOfASystemIdAddsAnItem();
    void dataSize_data();
    void dataSize();

    void command_data();
    void command();
    void commandOfEachType_data();
    void commandOfEachType();
    void commandOfARecipeTag_data();
    void commandOfARecipeTag();
    void otherFieldsOfACommandStayDefault();
    void readOnceAndBitType_data();
    void readOnceAndBitType();

    void doubledRows();
    void oddValues();
    void anEmptyTable();
    void aTableThatLacksAColumn();
    void noSuchConnection();
    void anEmptyKeyHasNoCatchTable();
    void manyRows();

private:
    TagSystem *bind() const { return TagSystem::instance(m_key); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
    QString m_key;
    int m_project = 0;
};

void CatchTableTolvTest::initTestCase()
{
    // The value is never read.
    QCoreApplication::instance()->setProperty("tolv_env", false);
}

void CatchTableTolvTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_messages = std::make_unique<MessageRecorder>();
    m_key = QStringLiteral("finished project %1").arg(++m_project);
    makeProject(m_folder->filePath(QStringLiteral("project")), m_key);
    writeTags(m_key, {row(1, QStringLiteral("Speed"), 2, 3, QStringLiteral("3-D100"), 5),
                      row(2, QStringLiteral("Text"), 3, 8, QStringLiteral("D200"), 20),
                      row(3, QStringLiteral("Lamp"), 0, 0, QStringLiteral("X1"), 1),
                      row(20011, QStringLiteral("At a system id"), 4, 3, QStringLiteral("D3"), 1),
                      row(21001, QStringLiteral("Above the system tags"), 4, 5, QStringLiteral("D4"), 1),
                      row(30000, QStringLiteral("At a recipe id"), 4, 3, QStringLiteral("D5"), 1),
                      row(60001, QStringLiteral("Above the recipe tags"), 4, 7, QStringLiteral("D6"), 1)});
}

void CatchTableTolvTest::cleanup()
{
    QCOMPARE(m_messages->take(), QStringList());
    m_messages.reset();
    dropProjects();
    m_folder.reset();
}

void CatchTableTolvTest::fourAnswersComeFromMemory()
{
    TagSystem *tags = bind();
    executeOn(m_key, QStringLiteral("UPDATE custom_tag_table SET access = 0, connector_id = 9, data_type = 9, "
                                    "address = 'D9', scale = 9"));
    for (int round = 0; round < 2; ++round) {
        QCOMPARE(tags->getAccessModeByID(1), 1);
        QCOMPARE(tags->getCommunicatorID(1), 2);
        QCOMPARE(tags->getDataTypeByID(1), 3);
        QCOMPARE(commandOf(tags, 1), QStringLiteral("ok 3-D100 2 1 1"));
        QCOMPARE(commandOf(tags, 2), QStringLiteral("ok D200 5 20 1"));
        executeOn(m_key, QStringLiteral("DELETE FROM custom_tag_table"));
    }
    const LogRecorder log;
    tags->closeDatabase();
    QCOMPARE(tags->getAccessModeByID(2), 1);
    QCOMPARE(tags->getLinkID(2), 3);
    QCOMPARE(tags->getDataTypeByID(2), 8);
    QCOMPARE(commandOf(tags, 2), QStringLiteral("ok D200 5 20 1"));
    QCOMPARE(log.lines(), QStringList());
}

void CatchTableTolvTest::theOtherAnswersComeFromTheDatabase()
{
    TagSystem *tags = bind();
    QCOMPARE(tags->getAddressByID(1), QStringLiteral("3-D100"));
    QCOMPARE(tags->getScaleByID(1), 5);
    QCOMPARE(tags->getScanTimeByID(1), 0);
    QCOMPARE(tags->getAdditionByID(1), 6);
    QCOMPARE(tags->getDefaultValueByID(1), 7);
    QCOMPARE(tags->getTagIDList(2), QList<int>{1});

    executeOn(m_key,
              QStringLiteral("UPDATE custom_tag_table SET address = 'D9', scale = 15, scan_time = 10, addition = 16, "
                             "default_value = 17, connector_id = 12, data_type = 19, access = 14 WHERE id = 1"));
    QCOMPARE(tags->getAddressByID(1), QStringLiteral("D9"));
    QCOMPARE(tags->getScaleByID(1), 15);
    QCOMPARE(tags->getScanTimeByID(1), 10);
    QCOMPARE(tags->getAdditionByID(1), 16);
    QCOMPARE(tags->getDefaultValueByID(1), 17);
    QCOMPARE(tags->getIntValueByID(1, QStringLiteral("connector_id")), 12);
    QCOMPARE(tags->getIntValueByID(1, QStringLiteral("data_type")), 19);
    QCOMPARE(tags->getIntValueByID(1, QStringLiteral("access")), 14);
    QCOMPARE(tags->getTagIDList(2), QList<int>());
    QCOMPARE(tags->getTagIDList(12), QList<int>{1});
    QCOMPARE(tags->getTagIDsByAddress(12, QStringLiteral("D9")), QList<int>{1});

    hideTagTable(m_key);
    QCOMPARE(tags->getAddressByID(1), QString());
    QCOMPARE(tags->getScaleByID(1), 0);
    QCOMPARE(tags->getScanTimeByID(1), 0);
    QCOMPARE(tags->getTagIDList(), QList<int>());
    QVERIFY(!tags->isValidTagID(1));
    QCOMPARE(tags->getCommunicatorID(1), 2);
    // System and recipe tags need neither.
    QCOMPARE(tags->getScanTimeByID(20011), 1);
    QCOMPARE(tags->getDefaultValueByID(30000), 0);
    QCOMPARE(tags->getAdditionByID(30000), 1);
    QCOMPARE(tags->getScaleByID(20011), 1);
}

void CatchTableTolvTest::aSecondRequestDoesNotReadAgain()
{
    TagSystem *tags = bind();
    executeOn(m_key, QStringLiteral("UPDATE custom_tag_table SET connector_id = 9"));
    QCOMPARE(TagSystem::instance(m_key), tags);
    QCOMPARE(TagSystem::instance(), tags);
    QCOMPARE(tags->getCommunicatorID(1), 2);
    tags->refreshTagNames();
    QCOMPARE(tags->getCommunicatorID(1), 2);
}

void CatchTableTolvTest::anObjectOfOnesOwnReadsTheTableUntilItIsTold()
{
    TagSystem tags(nullptr);
    QVERIFY(tags.init(m_key));
    QCOMPARE(tags.getCommunicatorID(1), 2);
    QCOMPARE(commandOf(&tags, 1), QStringLiteral("ok 3-D100 2 1 0"));
    QCOMPARE(commandOf(&tags, 999), QStringLiteral("failed S>NULL 3 1 1"));
    executeOn(m_key, QStringLiteral("UPDATE custom_tag_table SET connector_id = 9, access = 8, data_type = 5"));
    QCOMPARE(tags.getCommunicatorID(1), 9);
    QCOMPARE(tags.getAccessModeByID(1), 8);
    QCOMPARE(tags.getDataTypeByID(1), 5);

    tags.initCatchTable();
    executeOn(m_key, QStringLiteral("UPDATE custom_tag_table SET connector_id = 10, access = 11, data_type = 6"));
    QCOMPARE(tags.getCommunicatorID(1), 9);
    QCOMPARE(tags.getAccessModeByID(1), 8);
    QCOMPARE(tags.getDataTypeByID(1), 5);
    QCOMPARE(commandOf(&tags, 1), QStringLiteral("ok 3-D100 3 1 1"));
}

void CatchTableTolvTest::linkOfATag_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("link");
    QTest::newRow("a tag") << 1 << 2;
    QTest::newRow("an internal tag") << 3 << 0;
    QTest::newRow("no such row") << 999 << -1;
    QTest::newRow("no tag") << -1 << -1;
    QTest::newRow("a system tag whose id a row bears") << 20011 << 0;
    QTest::newRow("a system id without a tag") << 20094 << 0;
    QTest::newRow("just above the system tags") << 21001 << 4;
    QTest::newRow("a recipe tag whose id a row bears") << 30000 << 0;
    QTest::newRow("a connected recipe tag") << 30001 << 0;
    QTest::newRow("the last recipe row id") << 60000 << 0;
    QTest::newRow("just above the recipe tags") << 60001 << 4;
}

void CatchTableTolvTest::linkOfATag()
{
    QFETCH(int, id);
    TagSystem *tags = bind();
    tags->setRecipeTags({{30001, QStringLiteral("R>1_1")}}, {{30001, 1}});
    hideTagTable(m_key);
    QTEST(tags->getCommunicatorID(id), "link");
    QTEST(tags->getLinkID(id), "link");
    QTEST(tags->getCommunicatorID(id), "link");
}

void CatchTableTolvTest::linkOfTheTagOfAnObject()
{
    TagSystem *tags = bind();
    hideTagTable(m_key);
    QObject object;
    object.setProperty("tagId", QStringLiteral("2"));
    QCOMPARE(tags->getCommunicatorID(&object, QStringLiteral("tagId")), 3);
    QCOMPARE(tags->getLinkID(&object, QStringLiteral("tagId")), 3);
    QCOMPARE(tags->getCommunicatorID(&object, QStringLiteral("x")), -1);
    object.setProperty("tagId", 999);
    QCOMPARE(tags->getCommunicatorID(&object, QStringLiteral("tagId")), -1);
}

void CatchTableTolvTest::accessMode_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("mode");
    QTest::newRow("a tag") << 1 << 1;
    QTest::newRow("a tag that may only be written") << 4 << 0;
    QTest::newRow("no such row") << 999 << 0;
    QTest::newRow("no tag") << -1 << 0;
    QTest::newRow("a system tag whose id a row bears") << 20011 << 1;
    QTest::newRow("a system id without a tag") << 20094 << 1;
    QTest::newRow("above the system tags, without a row") << 21002 << 0;
    QTest::newRow("a recipe id") << 30000 << 1;
    QTest::newRow("the last recipe row id") << 60000 << 1;
    QTest::newRow("above the recipe tags, without a row") << 60002 << 0;
}

void CatchTableTolvTest::accessMode()
{
    QFETCH(int, id);
    executeOn(m_key, QStringLiteral("INSERT INTO custom_tag_table (id, access) VALUES (4, 0)"));
    TagSystem *tags = bind();
    hideTagTable(m_key);
    QTEST(tags->getAccessModeByID(id), "mode");
}

void CatchTableTolvTest::askingForTheAccessModeAddsARecord()
{
    TagSystem *tags = bind();
    QCOMPARE(tags->getCommunicatorID(999), -1);
    QCOMPARE(commandOf(tags, 999), QStringLiteral("failed  9 1 -1"));
    QCOMPARE(tags->getAccessModeByID(999), 0);
    QCOMPARE(tags->getCommunicatorID(999), 0);
    QCOMPARE(commandOf(tags, 999), QStringLiteral("ok  0 1 1"));
    QVERIFY(tags->isBitType(999));
    // Other ids are still unknown, and the database has no such row.
    QCOMPARE(tags->getCommunicatorID(998), -1);
    QVERIFY(!tags->isValidTagID(999));
    QCOMPARE(tags->getTagNameById(999), QString());
}

void CatchTableTolvTest::askingForTheDataTypeAddsARecord()
{
    TagSystem *tags = bind();
    QCOMPARE(tags->getCommunicatorID(999), -1);
    QCOMPARE(tags->getDataTypeByID(999), 0);
    QCOMPARE(tags->getCommunicatorID(999), 0);
    QCOMPARE(commandOf(tags, 999), QStringLiteral("ok  0 1 1"));
    QCOMPARE(tags->getAccessModeByID(999), 0);

    QCOMPARE(tags->getCommunicatorID(-1), -1);
    QCOMPARE(tags->getDataTypeByID(-1), 0);
    // A negative id is no tag, whatever the catch table holds.
    QCOMPARE(tags->getCommunicatorID(-1), -1);
    QCOMPARE(commandOf(tags, -1), QStringLiteral("ok  0 1 1"));

    // An unconnected recipe tag leads to row 0.
    QCOMPARE(tags->getCommunicatorID(0), -1);
    QCOMPARE(tags->getDataTypeByID(30000), 0);
    QCOMPARE(tags->getCommunicatorID(0), 0);
}

void CatchTableTolvTest::onlyTwoQuestionsAddARecord()
{
    TagSystem *tags = bind();
    tags->setRecipeTags({{30001, QStringLiteral("R>1_1")}}, {{30001, 999}});
    for (int round = 0; round < 2; ++round) {
        QCOMPARE(tags->getCommunicatorID(999), -1);
        QCOMPARE(commandOf(tags, 999), QStringLiteral("failed  9 1 -1"));
        QCOMPARE(commandOf(tags, 30001), QStringLiteral("ok R>1_1 9 1 -1"));
        QVERIFY(!tags->isBitType(999));
        QVERIFY(!tags->isReadOnce(999));
        QCOMPARE(tags->getAddressByID(999), QString());
        QCOMPARE(tags->getScaleByID(999), 0);
        QCOMPARE(tags->getScanTimeByID(999), 0);
        QCOMPARE(tags->getTagNameById(999), QString());
        QVERIFY(!tags->isValidTagID(999));
        QVERIFY(!tags->isValidStationID(999, 1));
    }
    QCOMPARE(tags->getAccessModeByID(30001), 1);
    QCOMPARE(tags->getCommunicatorID(999), -1);
    QCOMPARE(tags->getDataTypeByID(30001), 0);
    QCOMPARE(tags->getCommunicatorID(999), 0);
}

void CatchTableTolvTest::dataType_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("type");
    QTest::newRow("a 16-bit number") << 1 << 3;
    QTest::newRow("a text") << 2 << 8;
    QTest::newRow("a bit") << 3 << 0;
    QTest::newRow("a type number that is none") << 5 << 77;
    QTest::newRow("a negative type number") << 6 << -3;
    QTest::newRow("no such row") << 999 << 0;
    QTest::newRow("no tag") << -1 << 0;
    QTest::newRow("a system tag that is a text") << 20010 << 8;
    QTest::newRow("a system tag that is a number") << 20022 << 5;
    QTest::newRow("a system tag whose id a row bears") << 20011 << 5;
    QTest::newRow("the Unix time stamp") << 20072 << 5;
    QTest::newRow("the first system id, without a tag") << 20000 << 5;
    QTest::newRow("a system id without a tag") << 20094 << 5;
    QTest::newRow("the null tag") << 20999 << 5;
    QTest::newRow("the last system id, without a tag") << 21000 << 5;
    QTest::newRow("just above the system tags") << 21001 << 5;
    QTest::newRow("a recipe tag on a text") << 30001 << 8;
    QTest::newRow("a recipe tag on a system tag") << 30002 << 8;
    QTest::newRow("a recipe tag on another one") << 30003 << 8;
    QTest::newRow("a recipe tag on nothing asks for row 0") << 30004 << 0;
    QTest::newRow("a recipe tag on no tag") << 30005 << 1;
    QTest::newRow("a recipe row tag") << 50001 << 3;
    QTest::newRow("just above the recipe tags") << 60001 << 7;
}

void CatchTableTolvTest::dataType()
{
    QFETCH(int, id);
    executeOn(m_key, QStringLiteral("INSERT INTO custom_tag_table (id, data_type) VALUES (5, 77), (6, -3)"));
    TagSystem *tags = bind();
    tags->setRecipeTags({}, {{30001, 2}, {30002, 20010}, {30003, 30001}, {30005, -1}});
    tags->setRecipeRowTags({}, {{50001, 1}});
    hideTagTable(m_key);
    QTEST(tags->getDataTypeByID(id), "type");
    QTEST(tags->getDataTypeByID(id), "type");
}

void CatchTableTolvTest::askingForTheDataTypeOfASystemIdAddsAnItem()
{
    TagSystem *tags = bind();
    QCOMPARE(tags->getTagNameById(20094), QString());
    QCOMPARE(commandOf(tags, 20094), QStringLiteral("ok S>NULL 3 1 1"));
    QCOMPARE(tags->getDataTypeByID(20094), 5);
    QCOMPARE(tags->getTagNameById(20094), QStringLiteral("s>invalid"));
    QCOMPARE(commandOf(tags, 20094), QStringLiteral("ok s>invalid 3 1 1"));
    QVERIFY(!tags->isControlSystemTag(20094));
    QCOMPARE(tags->numControlSystemTag(), 13);
    QCOMPARE(tags->numInforSystemTag(), 28);
    // This does not depend on the catch table.
    QCOMPARE(tags->getCommunicatorID(20094), 0);
    QCOMPARE(tags->getTagNameById(20095), QStringLiteral("S>Backlight"));
}

void CatchTableTolvTest::dataSize_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("bytes");
    QTest::newRow("a 16-bit number") << 1 << 2;
    QTest::newRow("a text, whatever its length") << 2 << 1;
    QTest::newRow("a bit") << 3 << 1;
    QTest::newRow("a system tag that is a number") << 20022 << 4;
    QTest::newRow("a system tag that is a text") << 20010 << 1;
    QTest::newRow("a 32-bit number") << 21001 << 4;
    QTest::newRow("a recipe tag on a 16-bit number") << 30001 << 2;
    QTest::newRow("no such row") << 999 << 1;
}

void CatchTableTolvTest::dataSize()
{
    QFETCH(int, id);
    TagSystem *tags = bind();
    tags->setRecipeTags({}, {{30001, 1}});
    QTEST(tags->getDataSizeByID(id), "bytes");
}

void CatchTableTolvTest::command_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a tag: its scan time is not kept") << 1 << QStringLiteral("ok 3-D100 2 1 1");
    QTest::newRow("a text: as long as its scale") << 2 << QStringLiteral("ok D200 5 20 1");
    QTest::newRow("a bit") << 3 << QStringLiteral("ok X1 0 1 1");
    QTest::newRow("no such row") << 999 << QStringLiteral("failed  9 1 -1");
    QTest::newRow("row 0") << 0 << QStringLiteral("failed  9 1 -1");
    QTest::newRow("no tag") << -1 << QStringLiteral("failed  9 1 -1");
    QTest::newRow("just below the system tags") << 19999 << QStringLiteral("failed  9 1 -1");
    QTest::newRow("a system id without a tag") << 20000 << QStringLiteral("ok S>NULL 3 1 1");
    QTest::newRow("a system tag that is a text") << 20010 << QStringLiteral("ok S>Current_screen_name 3 1 1");
    QTest::newRow("a system tag whose id a row bears") << 20011 << QStringLiteral("ok S>Change_screen 3 1 1");
    QTest::newRow("a system tag with the item id of another") << 20201 << QStringLiteral("ok S>R_Year 3 1 1");
    QTest::newRow("the last system id") << 21000 << QStringLiteral("ok S>NULL 3 1 1");
    QTest::newRow("just above the system tags") << 21001 << QStringLiteral("ok D4 3 1 1");
    QTest::newRow("a recipe tag that is in no map, though a row bears its id")
        << 30000 << QStringLiteral("ok S>NULL 3 1 1");
    QTest::newRow("just above the recipe tags") << 60001 << QStringLiteral("ok D6 3 1 1");
}

void CatchTableTolvTest::command()
{
    QFETCH(int, id);
    TagSystem *tags = bind();
    hideTagTable(m_key);
    QTEST(commandOf(tags, id), "expected");
    QTEST(commandOf(tags, id), "expected");
}

void CatchTableTolvTest::commandOfEachType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("expected");
    QTest::newRow("Bit") << 0 << QStringLiteral("ok D1 0 1 1");
    QTest::newRow("INT(8)") << 1 << QStringLiteral("ok D1 1 1 1");
    QTest::newRow("UINT(8)") << 2 << QStringLiteral("ok D1 1 1 1");
    QTest::newRow("INT(16)") << 3 << QStringLiteral("ok D1 2 1 1");
    QTest::newRow("UINT(16)") << 4 << QStringLiteral("ok D1 2 1 1");
    QTest::newRow("INT(32)") << 5 << QStringLiteral("ok D1 3 1 1");
    QTest::newRow("UINT(32)") << 6 << QStringLiteral("ok D1 3 1 1");
    QTest::newRow("FLOAT") << 7 << QStringLiteral("ok D1 3 1 1");
    QTest::newRow("Ascii") << 8 << QStringLiteral("ok D1 5 42 1");
    QTest::newRow("DOUBLE") << 9 << QStringLiteral("ok D1 4 1 1");
    QTest::newRow("INT(64)") << 10 << QStringLiteral("ok D1 4 1 1");
    QTest::newRow("UINT(64)") << 11 << QStringLiteral("ok D1 4 1 1");
    QTest::newRow("above the types") << 12 << QStringLiteral("ok D1 9 1 1");
    QTest::newRow("below the types") << -1 << QStringLiteral("ok D1 9 1 1");
}

void CatchTableTolvTest::commandOfEachType()
{
    QFETCH(int, type);
    writeTags(m_key, {row(50, QStringLiteral("Typed"), 2, type, QStringLiteral("D1"), 42)});
    TagSystem *tags = bind();
    QTEST(commandOf(tags, 50), "expected");
    QCOMPARE(tags->isBitType(50), type == 0);
}

void CatchTableTolvTest::commandOfARecipeTag_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<int>("auxiliaryNumber");
    QTest::newRow("on a tag") << 30001 << QStringLiteral("ok R>1_1 2 1 1") << -1;
    QTest::newRow("on a text") << 30002 << QStringLiteral("ok R>1_2 5 20 1") << -1;
    QTest::newRow("on a tag that does not exist") << 30003 << QStringLiteral("ok R>1_3 9 1 -1") << -1;
    QTest::newRow("on nothing") << 30004 << QStringLiteral("ok R>1_4 9 1 -1") << -1;
    QTest::newRow("on a system tag") << 30005 << QStringLiteral("ok R>1_5 3 1 1") << -1;
    QTest::newRow("connected, but without a name") << 30006 << QStringLiteral("ok S>NULL 3 1 1") << 0;
    QTest::newRow("in no map") << 30007 << QStringLiteral("ok S>NULL 3 1 1") << 0;
    QTest::newRow("a row tag on a tag") << 50001 << QStringLiteral("ok R>1_1I1 2 1 1") << 0;
    QTest::newRow("a row tag on a recipe tag") << 50002 << QStringLiteral("ok R>1_1I2 2 1 1") << -1;
    QTest::newRow("a row tag on nothing") << 50003 << QStringLiteral("ok R>1_1I3 9 1 -1") << 0;
    QTest::newRow("a row tag below the row tags' ids") << 30008 << QStringLiteral("ok R>1_1I8 5 20 1") << 0;
    QTest::newRow("a recipe tag among the row tags' ids") << 50004 << QStringLiteral("ok R>1_9 5 20 1") << -1;
    QTest::newRow("in both maps: the recipe tag") << 30009 << QStringLiteral("ok R>both 2 1 1") << -1;
}

void CatchTableTolvTest::commandOfARecipeTag()
{
    QFETCH(int, id);
    QFETCH(int, auxiliaryNumber);
    TagSystem *tags = bind();
    tags->setRecipeTags({{30001, QStringLiteral("R>1_1")},
                         {30002, QStringLiteral("R>1_2")},
                         {30003, QStringLiteral("R>1_3")},
                         {30004, QStringLiteral("R>1_4")},
                         {30005, QStringLiteral("R>1_5")},
                         {30009, QStringLiteral("R>both")},
                         {50004, QStringLiteral("R>1_9")}},
                        {{30001, 1}, {30002, 2}, {30003, 999}, {30005, 20011}, {30006, 1}, {30009, 1}, {50004, 2}});
    tags->setRecipeRowTags({{50001, QStringLiteral("R>1_1I1")},
                            {50002, QStringLiteral("R>1_1I2")},
                            {50003, QStringLiteral("R>1_1I3")},
                            {30008, QStringLiteral("R>1_1I8")},
                            {30009, QStringLiteral("R>row")}},
                           {{50001, 1}, {50002, 30001}, {30008, 2}, {30009, 2}});
    QTEST(commandOf(tags, id), "expected");
    bool ok = false;
    QCOMPARE(tags->getCommunicatorCommandByIndex(id, ok).auxiliaryNumber, auxiliaryNumber);
}

void CatchTableTolvTest::otherFieldsOfACommandStayDefault()
{
    TagSystem *tags = bind();
    for (int id : {1, 999, 20011, 30000}) {
        bool ok = false;
        const CommunicatorCommand command = tags->getCommunicatorCommandByIndex(id, ok);
        QCOMPARE(command.auxiliaryNumber, 0);
        QCOMPARE(command.auxiliaryText, QString());
        QCOMPARE(command.auxiliaryFlag, false);
    }
}

void CatchTableTolvTest::readOnceAndBitType_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("isBit");
    QTest::newRow("a number") << 1 << false;
    QTest::newRow("a bit") << 3 << true;
    QTest::newRow("no such row") << 999 << false;
    QTest::newRow("a system tag") << 20022 << false;
    QTest::newRow("a recipe tag on a bit") << 30001 << true;
    QTest::newRow("a recipe tag on a tag that does not exist") << 30002 << false;
}

/// Scan times are not in memory, so no tag is read-once there.
void CatchTableTolvTest::readOnceAndBitType()
{
    QFETCH(int, id);
    TagSystem *tags = bind();
    tags->setRecipeTags({{30001, QStringLiteral("R>1_1")}, {30002, QStringLiteral("R>1_2")}},
                        {{30001, 3}, {30002, 998}});
    QVERIFY(!tags->isReadOnce(id));
    QTEST(tags->isBitType(id), "isBit");
}

void CatchTableTolvTest::doubledRows()
{
    executeOn(m_key, QStringLiteral("DROP TABLE custom_tag_table"));
    executeOn(m_key,
              QStringLiteral("CREATE TABLE custom_tag_table (id, name, access, connector_id, data_type, address, "
                             "scan_time, scale, addition)"));
    executeOn(m_key, QStringLiteral("INSERT INTO custom_tag_table VALUES (7, 'one', 1, 2, 3, 'D1', 1, 1, 0), "
                                    "(8, 'single', 1, 2, 3, 'D3', 1, 1, 0), (7, 'other', 4, 5, 6, 'D2', 1, 1, 0)"));
    TagSystem *tags = bind();
    QCOMPARE(tags->getCommunicatorID(7), 5);
    QCOMPARE(tags->getAccessModeByID(7), 4);
    QCOMPARE(tags->getDataTypeByID(7), 6);
    QCOMPARE(commandOf(tags, 7), QStringLiteral("ok D2 3 1 1"));
}

void CatchTableTolvTest::oddValues()
{
    executeOn(m_key,
              QStringLiteral("INSERT INTO custom_tag_table (id, access, connector_id, data_type, address, scale) "
                             "VALUES (70, 'one', '12', NULL, NULL, 'x'), (71, 1, 'two', 8, '0017', 0)"));
    TagSystem *tags = bind();
    QCOMPARE(tags->getAccessModeByID(70), 0);
    QCOMPARE(tags->getCommunicatorID(70), 12);
    QCOMPARE(tags->getDataTypeByID(70), 0);
    QCOMPARE(commandOf(tags, 70), QStringLiteral("ok  0 1 1"));
    QCOMPARE(tags->getCommunicatorID(71), 0);
    QCOMPARE(commandOf(tags, 71), QStringLiteral("ok 17 5 0 1"));
}

void CatchTableTolvTest::anEmptyTable()
{
    executeOn(m_key, QStringLiteral("DELETE FROM custom_tag_table"));
    TagSystem *tags = bind();
    executeOn(m_key, QStringLiteral("INSERT INTO custom_tag_table (id, connector_id, address) VALUES (1, 2, 'D1')"));
    QCOMPARE(tags->getCommunicatorID(1), -1);
    QCOMPARE(commandOf(tags, 1), QStringLiteral("failed  9 1 -1"));
    QCOMPARE(tags->getAddressByID(1), QStringLiteral("D1"));
}

/// The one statement that fills the catch table names eight columns; without one of them there is nothing to read.
void CatchTableTolvTest::aTableThatLacksAColumn()
{
    executeOn(m_key, QStringLiteral("DROP TABLE custom_tag_table"));
    executeOn(m_key,
              QStringLiteral("CREATE TABLE custom_tag_table (id INTEGER PRIMARY KEY, name, access, connector_id, "
                             "data_type, address, scan_time, scale)"));
    executeOn(m_key, QStringLiteral("INSERT INTO custom_tag_table VALUES (1, 'Speed', 1, 2, 3, 'D100', 4, 5)"));
    TagSystem *tags = bind();
    QCOMPARE(tags->getTagNames(), QStringList{QStringLiteral("Speed")});
    QCOMPARE(commandOf(tags, 1), QStringLiteral("failed  9 1 -1"));
    QCOMPARE(tags->getCommunicatorID(1), -1);
    QCOMPARE(tags->getAddressByID(1), QStringLiteral("D100"));
    QCOMPARE(tags->getScaleByID(1), 5);
    QCOMPARE(tags->getAdditionByID(1), 0);
}

void CatchTableTolvTest::noSuchConnection()
{
    const QStringList notThere{QStringLiteral("critical|Database Error|TagSystem::init() tag database not exist ")};
    const LogRecorder log;
    TagSystem *tags = TagSystem::instance(QStringLiteral("no such project"));
    QCOMPARE(m_messages->take(), notThere);
    QCOMPARE(TagSystem::instance(), tags);
    QCOMPARE(commandOf(tags, 1), QStringLiteral("failed  9 1 -1"));
    QCOMPARE(tags->getCommunicatorID(1), -1);
    QCOMPARE(tags->getAccessModeByID(1), 0);
    QCOMPARE(tags->getCommunicatorID(1), 0);
    QCOMPARE(tags->getDataTypeByID(20010), 8);
}

void CatchTableTolvTest::anEmptyKeyHasNoCatchTable()
{
    TagSystem *bound = bind();
    const LogRecorder log;
    TagSystem *tags = TagSystem::instance(QString());
    QCOMPARE(TagSystem::instance(), bound);
    QCOMPARE(commandOf(tags, 1), QStringLiteral("failed S>NULL 3 1 1"));
    QCOMPARE(tags->getAccessModeByID(1), 0);
    QCOMPARE(tags->getDataTypeByID(1), 0);
    QCOMPARE(tags->getCommunicatorID(1), -1);
}

void CatchTableTolvTest::manyRows()
{
    executeOn(m_key, QStringLiteral("DELETE FROM custom_tag_table"));
    executeOn(m_key,
              QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 19000) "
                             "INSERT INTO custom_tag_table SELECT i, 'Tag ' || i, i % 2, i % 5, i % 12, 'D' || i, 0, "
                             "i % 100, 0, 0, 0, '' FROM n"));
    TagSystem *tags = bind();
    hideTagTable(m_key);
    QCOMPARE(tags->getCommunicatorID(19001), -1);
    QCOMPARE(tags->getCommunicatorID(19000), 0);
    QCOMPARE(commandOf(tags, 1), QStringLiteral("ok D1 1 1 1"));
    QCOMPARE(commandOf(tags, 18992), QStringLiteral("ok D18992 5 92 1"));
    QCOMPARE(tags->getAccessModeByID(18999), 1);
    QCOMPARE(tags->getDataTypeByID(18999), 3);
    int known = 0;
    for (int id = -10; id <= 19010; ++id)
        known += tags->getCommunicatorID(id) >= 0 ? 1 : 0;
    QCOMPARE(known, 19000);
}

QTEST_GUILESS_MAIN(CatchTableTolvTest)

#include "tst_catchtable_tolv.moc"
