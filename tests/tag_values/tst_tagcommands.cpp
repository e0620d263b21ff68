// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "support/projectfixtures.h"

#include "zelmar_label/label_store/labelstore.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <climits>
#include <memory>

namespace {

const QString key = QStringLiteral("project of the commands");

const QString registers = QStringLiteral("Registers");
const QString blocks = QStringLiteral("Blocks");
const QString dataBlocks = QStringLiteral("ISO on TCP");

constexpr int registersLink = 2;
constexpr int blocksLink = 3;
constexpr int dataBlocksLink = 4;
constexpr int brokenLink = 5;
constexpr int missingLink = 77;

const QString noPrefixLabel = QStringLiteral("critical: error TagSystem::getPrefixSymbol label is NULL");
const QString noRunLabel = QStringLiteral("critical: error TagSystem::getContinuousCommand label is null");
const QString noCapLabel = QStringLiteral("critical: error TagSystem::getContinuousCommandwithCap label is null");
const QString failed = QStringLiteral("critical: validation failed");

TagRow tag(int id, int link, int type, const QString &address)
{
    TagRow row;
    row.id = id;
    row.name = QStringLiteral("Tag %1").arg(id);
    row.connectorId = link;
    row.dataType = type;
    row.address = address;
    return row;
}

/// A row of the symbol, type and block size.
Row format(const QString &symbol, int type, int blocksize)
{
    Row row;
    row.pattern = QStringLiteral("(%1)(\\d+)").arg(symbol);
    row.prefixSymbol = symbol;
    row.type = type;
    row.blocksize = blocksize;
    return row;
}

/// All seven fields.
QString described(const CommunicatorCommand &command)
{
    return QStringLiteral("%1|%2|%3|%4|%5|%6|%7")
        .arg(command.address)
        .arg(int(command.dataType))
        .arg(command.length)
        .arg(command.scanTime)
        .arg(command.auxiliaryNumber)
        .arg(command.auxiliaryText)
        .arg(int(command.auxiliaryFlag));
}

QStringList described(const QList<CommunicatorCommand> &commands)
{
    QStringList texts;
    for (const CommunicatorCommand &one : commands)
        texts.append(described(one));
    return texts;
}

QStringList criticalLines(const QStringList &lines)
{
    return lines.filter(QRegularExpression(QStringLiteral("^critical: ")));
}

const QString nullCommand = QStringLiteral("S>NULL|3|1|1|0||0");

} // namespace

/// What follows from a tag in an editor: its command, its run, its blocks.
class TagCommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void commandTypeOfATagType_data();
    void commandTypeOfATagType();
    void sizeOfATagType_data();
    void sizeOfATagType();
    void normalizedAddress_data();
    void normalizedAddress();

    void commandOfATagType_data();
    void commandOfATagType();
    void commandOfATag_data();
    void commandOfATag();
    void commandOfADoubledRow();
    void commandWithoutAColumn();
    void commandOfASystemTag_data();
    void commandOfASystemTag();
    void commandOfARecipeTag_data();
    void commandOfARecipeTag();
    void commandOfRecipeTagsInACircle();
    void commandOfARecipeTagThatIsGone();
    void commandWithoutADatabase();

    void dataType_data();
    void dataType();
    void dataTypeOfAMissingSystemTagLeavesAnItem();
    void dataTypeOfRow0AndOfRowMinusOne();
    void readOnce_data();
    void readOnce();
    void bitType_data();
    void bitType();

    void prefixSymbol_data();
    void prefixSymbol();
    void prefixSymbolOfADynamicRow();

    void run_data();
    void run();
    void runHasDefaultsBesidesAddressAndType();
    void runWithCap_data();
    void runWithCap();
    void runWithCapKeepsLengthAndScanTime();
    void runOfABrokenDriver();
    void stationIsCutOffForRunsOnly();

    void blockOf10By4();
    void blockUnits_data();
    void blockUnits();
    void blockKeepsTheTagsOwnCommand();
    void blockWithoutRoom_data();
    void blockWithoutRoom();
    void blockThatFails_data();
    void blockThatFails();
    void blockReplacesTheList();

private:
    void makeSharedProject();

    TagSystem *m_tags = nullptr;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
};

void TagCommandsTest::initTestCase()
{
    Driver first;
    first.name = registers;
    Row relay = format(QStringLiteral("M"), 0, 16);
    relay.multipleRule = QStringLiteral("union-dec:r");
    first.rows = {relay, format(QStringLiteral("D"), 2, 64), format(QStringLiteral("E"), 3, 64),
                  format(QStringLiteral("B"), 1, 64), format(QStringLiteral("Q"), 4, 64)};

    Driver second;
    second.name = blocks;
    second.generalTable = QStringLiteral("general_blocks");
    second.deviceTable = QStringLiteral("types_blocks");
    Row bits = format(QStringLiteral("M"), 0, 4);
    bits.multipleRule = QStringLiteral("union-dec:r");
    Row noBits = format(QStringLiteral("N"), 0, 0);
    noBits.multipleRule = QStringLiteral("union-dec:r");
    second.rows = {bits,
                   noBits,
                   format(QStringLiteral("D"), 2, 4),
                   format(QStringLiteral("A"), 1, 1),
                   format(QStringLiteral("B"), 1, 7),
                   format(QStringLiteral("C"), 1, 3),
                   format(QStringLiteral("W"), 2, 0),
                   format(QStringLiteral("Z"), 2, -4),
                   format(QStringLiteral("X"), 2, 1),
                   format(QStringLiteral("V"), 2, 3),
                   format(QStringLiteral("E"), 3, 2),
                   format(QStringLiteral("Q"), 4, 3),
                   format(QStringLiteral("L"), 2, INT_MAX),
                   format(QStringLiteral("S"), 5, 3)};

    Driver third;
    third.name = dataBlocks;
    third.generalTable = QStringLiteral("general_data_blocks");
    third.deviceTable = QStringLiteral("types_data_blocks");
    Row words = format(QStringLiteral("DBW"), 2, 64);
    words.pattern = QStringLiteral("DB_DBW");
    third.rows = {words};

    writeDriverDatabase(driverDatabasePath(), {first, second, third});
    makeSharedProject();
}

/// Each test rolls back what it writes.
void TagCommandsTest::makeSharedProject()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    makeProject(m_folder->filePath(QStringLiteral("project")), key,
                {{registersLink, registers, 1},
                 {blocksLink, blocks, 1},
                 {dataBlocksLink, dataBlocks, 1},
                 {brokenLink, QStringLiteral("No such driver"), 1}});
    TagRow once = tag(50, registersLink, 3, QStringLiteral("D50"));
    once.scanTime = 0;
    TagRow slow = tag(51, registersLink, 3, QStringLiteral("D51"));
    slow.scanTime = 7;
    TagRow text = tag(52, registersLink, 8, QStringLiteral("D52"));
    text.scale = 12;
    text.scanTime = 7;
    TagRow bit = tag(53, registersLink, 0, QStringLiteral("M53"));
    bit.scale = 9;
    TagRow noText = tag(54, registersLink, 8, QStringLiteral("D54"));
    noText.scale = 0;
    writeTags(key,
              {once, slow, text, bit, noText, tag(20011, registersLink, 0, QStringLiteral("D1")),
               tag(30000, registersLink, 0, QStringLiteral("D1")), tag(55, registersLink, 3, QString()),
               tag(21001, registersLink, 0, QStringLiteral("M1")), tag(60001, registersLink, 0, QStringLiteral("M2"))});
    const LogRecorder log;
    m_tags = TagSystem::instance(key);
}

void TagCommandsTest::init()
{
    m_messages = std::make_unique<MessageRecorder>();
    executeOn(key, QStringLiteral("SAVEPOINT before_a_test"));
    m_tags->setRecipeTags({{30001, QStringLiteral("R>1_1")},
                           {30002, QStringLiteral("R>1_2")},
                           {30003, QStringLiteral("R>1_3")},
                           {30004, QStringLiteral("R>1_4")},
                           {30005, QStringLiteral("R>1_5")},
                           {30006, QStringLiteral("R>1_6")},
                           {30007, QStringLiteral("")},
                           {30008, QStringLiteral("R>1_8")},
                           {50500, QStringLiteral("R>1_9")}},
                          {{30001, 51},
                           {30003, 20010},
                           {30004, 9999},
                           {30005, 30001},
                           {30006, -1},
                           {30007, 52},
                           {30008, 50001},
                           {30009, 52},
                           {50500, 53}});
    m_tags->setRecipeRowTags({{50001, QStringLiteral("R>1_1I1")},
                              {50002, QStringLiteral("R>1_1I2")},
                              {50003, QStringLiteral("R>1_1I3")},
                              {50004, QStringLiteral("R>1_1I4")},
                              {30500, QStringLiteral("R>1_1I5")}},
                             {{50001, 51}, {50003, 30001}, {50004, 50}, {30500, 53}});
}

void TagCommandsTest::cleanup()
{
    executeOn(key, QStringLiteral("ROLLBACK TO before_a_test"));
    executeOn(key, QStringLiteral("RELEASE before_a_test"));
    // It grows with the addresses it is asked about.
    label::freeLabel(dataBlocks);
    QCOMPARE(m_messages->take(), QStringList());
    m_messages.reset();
}

void TagCommandsTest::cleanupTestCase()
{
    dropProjects();
    m_folder.reset();
    label::freeLabel(registers);
    label::freeLabel(blocks);
    QDir(QFileInfo(driverDatabasePath()).absolutePath()).removeRecursively();
}

void TagCommandsTest::commandTypeOfATagType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("expected");
    QTest::newRow("Bit") << 0 << 0;
    QTest::newRow("INT(8)") << 1 << 1;
    QTest::newRow("UINT(8)") << 2 << 1;
    QTest::newRow("INT(16)") << 3 << 2;
    QTest::newRow("UINT(16)") << 4 << 2;
    QTest::newRow("INT(32)") << 5 << 3;
    QTest::newRow("UINT(32)") << 6 << 3;
    QTest::newRow("FLOAT") << 7 << 3;
    QTest::newRow("Ascii") << 8 << 5;
    QTest::newRow("DOUBLE") << 9 << 4;
    QTest::newRow("INT(64)") << 10 << 4;
    QTest::newRow("UINT(64)") << 11 << 4;
    QTest::newRow("just above the types") << 12 << 9;
    QTest::newRow("-1") << -1 << 9;
    QTest::newRow("the highest number") << INT_MAX << 9;
    QTest::newRow("the lowest number") << INT_MIN << 9;
}

void TagCommandsTest::commandTypeOfATagType()
{
    QFETCH(int, type);
    QTEST(m_tags->getCommunicatorCommandDataType(type), "expected");
}

void TagCommandsTest::sizeOfATagType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("expected");
    QTest::newRow("Bit") << 0 << 1;
    QTest::newRow("INT(8)") << 1 << 1;
    QTest::newRow("UINT(8)") << 2 << 1;
    QTest::newRow("INT(16)") << 3 << 2;
    QTest::newRow("UINT(16)") << 4 << 2;
    QTest::newRow("INT(32)") << 5 << 4;
    QTest::newRow("UINT(32)") << 6 << 4;
    QTest::newRow("FLOAT") << 7 << 4;
    QTest::newRow("Ascii: one, whatever its length") << 8 << 1;
    QTest::newRow("DOUBLE") << 9 << 8;
    QTest::newRow("INT(64)") << 10 << 8;
    QTest::newRow("UINT(64)") << 11 << 8;
    QTest::newRow("just above the types") << 12 << 1;
    QTest::newRow("-1") << -1 << 1;
    QTest::newRow("the highest number") << INT_MAX << 1;
}

void TagCommandsTest::sizeOfATagType()
{
    QFETCH(int, type);
    QTEST(m_tags->getDataSizeByType(type), "expected");
    TagRow row = tag(500, registersLink, type, QStringLiteral("D1"));
    row.scale = 20;
    writeTags(key, {row});
    QCOMPARE(m_tags->getDataTypeByID(500), type);
    QTEST(m_tags->getDataSizeByID(500), "expected");
}

void TagCommandsTest::normalizedAddress_data()
{
    QTest::addColumn<QString>("address");
    QTest::newRow("an address") << QStringLiteral("D100");
    QTest::newRow("a station and blanks") << QStringLiteral(" 3-d0100 ");
    QTest::newRow("empty") << QStringLiteral("");
    QTest::newRow("null") << QString();
}

void TagCommandsTest::normalizedAddress()
{
    QFETCH(QString, address);
    QCOMPARE(m_tags->normalizedAddress(address), address);
    QCOMPARE(m_tags->normalizedAddress(address).isNull(), address.isNull());
}

void TagCommandsTest::commandOfATagType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("expected");
    // The scale is 12, and only a text's length.
    QTest::newRow("Bit") << 0 << QStringLiteral("D1|0|1|3|0||0");
    QTest::newRow("INT(8)") << 1 << QStringLiteral("D1|1|1|3|0||0");
    QTest::newRow("UINT(8)") << 2 << QStringLiteral("D1|1|1|3|0||0");
    QTest::newRow("INT(16)") << 3 << QStringLiteral("D1|2|1|3|0||0");
    QTest::newRow("UINT(16)") << 4 << QStringLiteral("D1|2|1|3|0||0");
    QTest::newRow("INT(32)") << 5 << QStringLiteral("D1|3|1|3|0||0");
    QTest::newRow("UINT(32)") << 6 << QStringLiteral("D1|3|1|3|0||0");
    QTest::newRow("FLOAT") << 7 << QStringLiteral("D1|3|1|3|0||0");
    QTest::newRow("Ascii") << 8 << QStringLiteral("D1|5|12|3|0||0");
    QTest::newRow("DOUBLE") << 9 << QStringLiteral("D1|4|1|3|0||0");
    QTest::newRow("INT(64)") << 10 << QStringLiteral("D1|4|1|3|0||0");
    QTest::newRow("UINT(64)") << 11 << QStringLiteral("D1|4|1|3|0||0");
    QTest::newRow("an unknown type") << 12 << QStringLiteral("D1|9|1|3|0||0");
    QTest::newRow("a negative type") << -1 << QStringLiteral("D1|9|1|3|0||0");
}

void TagCommandsTest::commandOfATagType()
{
    QFETCH(int, type);
    TagRow row = tag(500, registersLink, type, QStringLiteral("D1"));
    row.scale = 12;
    row.scanTime = 3;
    row.addition = 4;
    row.defaultValue = 5;
    row.comment = QStringLiteral("text");
    writeTags(key, {row});
    bool ok = false;
    const LogRecorder log;
    QTEST(described(m_tags->getCommunicatorCommandByIndex(500, ok)), "expected");
    QVERIFY(ok);
    QCOMPARE(log.lines(), QStringList());
}

void TagCommandsTest::commandOfATag_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<QString>("expected");
    QTest::newRow("read once") << 50 << true << QStringLiteral("D50|2|1|0|0||0");
    QTest::newRow("a scan time of its own") << 51 << true << QStringLiteral("D51|2|1|7|0||0");
    QTest::newRow("a text of length 12") << 52 << true << QStringLiteral("D52|5|12|7|0||0");
    QTest::newRow("a text of length 0") << 54 << true << QStringLiteral("D54|5|0|1|0||0");
    QTest::newRow("a bit") << 53 << true << QStringLiteral("M53|0|1|1|0||0");
    QTest::newRow("an empty address") << 55 << true << QStringLiteral("|2|1|1|0||0");
    QTest::newRow("just above the system tags") << 21001 << true << QStringLiteral("M1|0|1|1|0||0");
    QTest::newRow("just above the recipe tags") << 60001 << true << QStringLiteral("M2|0|1|1|0||0");
    QTest::newRow("no such row") << 9999 << false << nullCommand;
    QTest::newRow("no tag") << -1 << false << nullCommand;
    QTest::newRow("just below the system tags") << 19999 << false << nullCommand;
    QTest::newRow("just below the recipe tags") << 29999 << false << nullCommand;
    QTest::newRow("the highest number") << INT_MAX << false << nullCommand;
    QTest::newRow("the lowest number") << INT_MIN << false << nullCommand;
}

void TagCommandsTest::commandOfATag()
{
    QFETCH(int, id);
    for (const bool before : {false, true}) {
        bool ok = before;
        const LogRecorder log;
        QTEST(described(m_tags->getCommunicatorCommandByIndex(id, ok)), "expected");
        QTEST(ok, "ok");
        QCOMPARE(log.lines(), QStringList());
    }
}

void TagCommandsTest::commandOfADoubledRow()
{
    executeOn(key, QStringLiteral("DROP TABLE custom_tag_table"));
    executeOn(key, QStringLiteral("CREATE TABLE custom_tag_table (id, data_type, address, scan_time, scale, "
                                  "connector_id)"));
    executeOn(key, QStringLiteral("INSERT INTO custom_tag_table VALUES (7, 3, 'D1', 2, 1, 2), (8, 3, 'D2', 2, 1, 2), "
                                  "(7, 3, 'D3', 2, 1, 2)"));
    bool ok = true;
    QCOMPARE(described(m_tags->getCommunicatorCommandByIndex(7, ok)), nullCommand);
    QVERIFY(!ok);
    QVERIFY(!m_tags->isReadOnce(7));
    QCOMPARE(described(m_tags->getCommunicatorCommandByIndex(8, ok)), QStringLiteral("D2|2|1|2|0||0"));
    QVERIFY(ok);
    executeOn(key, QStringLiteral("DELETE FROM custom_tag_table WHERE address = 'D3'"));
    QCOMPARE(described(m_tags->getCommunicatorCommandByIndex(7, ok)), QStringLiteral("D1|2|1|2|0||0"));
    QVERIFY(ok);
}

void TagCommandsTest::commandWithoutAColumn()
{
    executeOn(key, QStringLiteral("DROP TABLE custom_tag_table"));
    executeOn(key, QStringLiteral("CREATE TABLE custom_tag_table (id, data_type, address, connector_id)"));
    executeOn(key, QStringLiteral("INSERT INTO custom_tag_table VALUES (7, 3, 'D1', 2)"));
    bool ok = true;
    QCOMPARE(described(m_tags->getCommunicatorCommandByIndex(7, ok)), nullCommand);
    QVERIFY(!ok);
    QCOMPARE(m_tags->getDataTypeByID(7), 3);
}

void TagCommandsTest::commandOfASystemTag_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a number") << 20012 << QStringLiteral("S>Current_screen|3|1|1|0||0");
    QTest::newRow("a text has the type of a number") << 20010 << QStringLiteral("S>Current_screen_name|3|1|1|0||0");
    QTest::newRow("the time in seconds") << 20072 << QStringLiteral("S>R_Timestamp_Unix|3|1|1|0||0");
    QTest::newRow("a tag whose id a row bears") << 20011 << QStringLiteral("S>Change_screen|3|1|1|0||0");
    QTest::newRow("a tag that is found by its key, not by its own id")
        << 20201 << QStringLiteral("S>R_Year|3|1|1|0||0");
    QTest::newRow("an id without a tag") << 20094 << nullCommand;
    QTest::newRow("the first id") << 20000 << nullCommand;
    QTest::newRow("the last id") << 21000 << nullCommand;
}

void TagCommandsTest::commandOfASystemTag()
{
    QFETCH(int, id);
    bool ok = false;
    const LogRecorder log;
    QTEST(described(m_tags->getCommunicatorCommandByIndex(id, ok)), "expected");
    QVERIFY(ok);
    QCOMPARE(log.lines(), QStringList());
}

void TagCommandsTest::commandOfARecipeTag_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("expected");
    QTest::newRow("connected to a tag: its name, -1, and the rest of the tag")
        << 30001 << QStringLiteral("R>1_1|2|1|7|-1||0");
    QTest::newRow("not connected") << 30002 << QStringLiteral("R>1_2|3|1|1|-1||0");
    QTest::newRow("connected to a system tag") << 30003 << QStringLiteral("R>1_3|3|1|1|-1||0");
    QTest::newRow("connected to a tag that does not exist") << 30004 << QStringLiteral("R>1_4|3|1|1|-1||0");
    QTest::newRow("connected to another recipe tag") << 30005 << QStringLiteral("R>1_5|2|1|7|-1||0");
    QTest::newRow("connected to -1") << 30006 << QStringLiteral("R>1_6|3|1|1|-1||0");
    QTest::newRow("without letters in its name, connected to a text") << 30007 << QStringLiteral("|5|12|7|-1||0");
    QTest::newRow("connected to a recipe row tag") << 30008 << QStringLiteral("R>1_8|2|1|7|-1||0");
    QTest::newRow("connected but without a name") << 30009 << nullCommand;
    QTest::newRow("an id that a row bears") << 30000 << nullCommand;
    QTest::newRow("the last recipe id") << 50000 << nullCommand;
    QTest::newRow("the last recipe row id") << 60000 << nullCommand;
    QTest::newRow("a recipe row tag has no -1") << 50001 << QStringLiteral("R>1_1I1|2|1|7|0||0");
    QTest::newRow("a recipe row tag that is not connected") << 50002 << QStringLiteral("R>1_1I2|3|1|1|0||0");
    QTest::newRow("a recipe row tag connected to a recipe tag keeps that one's -1")
        << 50003 << QStringLiteral("R>1_1I3|2|1|7|-1||0");
    QTest::newRow("a recipe tag among the ids of rows") << 50500 << QStringLiteral("R>1_9|0|1|1|-1||0");
    QTest::newRow("a recipe row tag among the ids of recipe tags") << 30500 << QStringLiteral("R>1_1I5|0|1|1|0||0");
}

void TagCommandsTest::commandOfARecipeTag()
{
    QFETCH(int, id);
    bool ok = false;
    const LogRecorder log;
    QTEST(described(m_tags->getCommunicatorCommandByIndex(id, ok)), "expected");
    QVERIFY(ok);
    QCOMPARE(log.lines(), QStringList());
}

void TagCommandsTest::commandOfRecipeTagsInACircle()
{
    m_tags->setRecipeTags({{30001, QStringLiteral("R>1_1")}, {30002, QStringLiteral("R>1_2")}},
                          {{30001, 30002}, {30002, 30001}});
    bool ok = false;
    QCOMPARE(described(m_tags->getCommunicatorCommandByIndex(30001, ok)), QStringLiteral("R>1_1|3|1|1|-1||0"));
    QVERIFY(ok);
    QCOMPARE(described(m_tags->getCommunicatorCommandByIndex(30002, ok)), QStringLiteral("R>1_2|3|1|1|-1||0"));
    QVERIFY(ok);
}

void TagCommandsTest::commandOfARecipeTagThatIsGone()
{
    bool ok = false;
    m_tags->setRecipeTags({}, {});
    QCOMPARE(described(m_tags->getCommunicatorCommandByIndex(30001, ok)), nullCommand);
    QVERIFY(ok);
    m_tags->setRecipeRowTags({}, {});
    QCOMPARE(described(m_tags->getCommunicatorCommandByIndex(50001, ok)), nullCommand);
    QVERIFY(ok);
}

void TagCommandsTest::commandWithoutADatabase()
{
    const LogRecorder log;
    TagSystem *tags = TagSystem::instance(QString());
    bool ok = true;
    QCOMPARE(described(tags->getCommunicatorCommandByIndex(1, ok)), nullCommand);
    QVERIFY(!ok);
    QCOMPARE(described(tags->getCommunicatorCommandByIndex(20012, ok)), QStringLiteral("S>Current_screen|3|1|1|0||0"));
    QVERIFY(ok);
    QCOMPARE(tags->getDataTypeByID(1), 0);
    QVERIFY(!tags->isBitType(1));
    QVERIFY(tags->getContinuousCommand(1, 3).isEmpty());
    QVERIFY(tags->getContinuousCommandwithCap(1, 3, 1, true).isEmpty());
    QCOMPARE(tags->getPrefixSymbol(1), QString());
    QList<CommunicatorCommand> out;
    QVERIFY(!tags->creatBlockCommand(1, 3, out));
    QCOMPARE(criticalLines(log.lines()), QStringList());
}

void TagCommandsTest::dataType_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("expected");
    QTest::newRow("a number") << 51 << 3;
    QTest::newRow("a text") << 52 << 8;
    QTest::newRow("a bit") << 53 << 0;
    QTest::newRow("no such row") << 9999 << 0;
    QTest::newRow("no tag") << -1 << 0;
    QTest::newRow("a system tag's number") << 20012 << 5;
    QTest::newRow("a system tag's text") << 20010 << 8;
    QTest::newRow("the time in seconds") << 20072 << 5;
    QTest::newRow("a system tag whose id a row bears") << 20011 << 5;
    QTest::newRow("the system tag of the null command") << 20999 << 5;
    QTest::newRow("a system id without a tag") << 20094 << 5;
    QTest::newRow("the first system id") << 20000 << 5;
    QTest::newRow("the last system id") << 21000 << 5;
    QTest::newRow("just above the system tags") << 21001 << 0;
    QTest::newRow("a recipe tag connected to a number") << 30001 << 3;
    QTest::newRow("a recipe tag that is not connected: row 0") << 30002 << 0;
    QTest::newRow("a recipe tag connected to a system tag's text") << 30003 << 8;
    QTest::newRow("a recipe tag connected to a tag that does not exist") << 30004 << 0;
    QTest::newRow("a recipe tag connected to another") << 30005 << 3;
    QTest::newRow("a recipe tag connected to -1") << 30006 << 1;
    QTest::newRow("a recipe tag connected to a recipe row tag") << 30008 << 3;
    QTest::newRow("a recipe tag that is connected but has no name") << 30009 << 8;
    QTest::newRow("a recipe id that a row bears") << 30000 << 0;
    QTest::newRow("a recipe row tag connected to a number") << 50001 << 3;
    QTest::newRow("a recipe row tag connected to a recipe tag") << 50003 << 3;
    QTest::newRow("a recipe row tag that is not connected: row 0") << 50002 << 0;
    QTest::newRow("just above the recipe tags") << 60001 << 0;
}

void TagCommandsTest::dataType()
{
    QFETCH(int, id);
    const LogRecorder log;
    QTEST(m_tags->getDataTypeByID(id), "expected");
    QCOMPARE(log.lines(), QStringList());
}

void TagCommandsTest::dataTypeOfAMissingSystemTagLeavesAnItem()
{
    bool ok = false;
    QCOMPARE(m_tags->getCommunicatorCommandByIndex(20013, ok).address, QStringLiteral("S>NULL"));
    QCOMPARE(m_tags->getDataTypeByID(20013), 5);
    QCOMPARE(described(m_tags->getCommunicatorCommandByIndex(20013, ok)), QStringLiteral("s>invalid|3|1|1|0||0"));
    QVERIFY(ok);
    QCOMPARE(m_tags->getDataTypeByID(20013), 5);
    QCOMPARE(m_tags->getCommunicatorCommandByIndex(20999, ok).address, QStringLiteral("S>NULL"));
}

void TagCommandsTest::dataTypeOfRow0AndOfRowMinusOne()
{
    writeTags(key, {tag(-1, registersLink, 4, QStringLiteral("D1")), tag(-2, registersLink, 9, QStringLiteral("D2"))});
    executeOn(key, QStringLiteral("INSERT INTO custom_tag_table (id, data_type) VALUES (0, 6)"));
    QCOMPARE(m_tags->getDataTypeByID(0), 6);
    QCOMPARE(m_tags->getDataTypeByID(-1), 4);
    QCOMPARE(m_tags->getDataTypeByID(-2), 9);
    QCOMPARE(m_tags->getDataTypeByID(30002), 6);
    QCOMPARE(m_tags->getDataTypeByID(50002), 6);
    QCOMPARE(m_tags->getDataTypeByID(30006), 1);
    bool ok = false;
    QCOMPARE(described(m_tags->getCommunicatorCommandByIndex(-1, ok)), QStringLiteral("D1|2|1|1|0||0"));
    QVERIFY(ok);
    // A negative id is on no link.
    QVERIFY(m_tags->getContinuousCommand(-1, 2).isEmpty());
}

void TagCommandsTest::readOnce_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("expected");
    QTest::newRow("scan time 0") << 50 << true;
    QTest::newRow("scan time 7") << 51 << false;
    QTest::newRow("scan time 1") << 53 << false;
    QTest::newRow("no such row") << 9999 << false;
    QTest::newRow("no tag") << -1 << false;
    QTest::newRow("a system tag") << 20012 << false;
    QTest::newRow("a system id without a tag") << 20094 << false;
    QTest::newRow("a recipe tag connected to scan time 7") << 30001 << false;
    QTest::newRow("a recipe row tag connected to scan time 0") << 50004 << true;
    QTest::newRow("a recipe tag that is not connected") << 30002 << false;
}

void TagCommandsTest::readOnce()
{
    QFETCH(int, id);
    QTEST(m_tags->isReadOnce(id), "expected");
}

void TagCommandsTest::bitType_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("expected");
    QTest::newRow("a bit") << 53 << true;
    QTest::newRow("a number") << 51 << false;
    QTest::newRow("a text") << 52 << false;
    QTest::newRow("no such row, though its data type reads 0") << 9999 << false;
    QTest::newRow("no tag") << -1 << false;
    QTest::newRow("a system tag") << 20099 << false;
    QTest::newRow("a system tag whose id a bit's row bears") << 20011 << false;
    QTest::newRow("a recipe tag connected to a bit") << 50500 << true;
    QTest::newRow("a recipe row tag connected to a bit") << 30500 << true;
    QTest::newRow("a recipe tag connected to a number") << 30001 << false;
    QTest::newRow("a recipe tag that is not connected, though its data type reads 0") << 30002 << false;
}

void TagCommandsTest::bitType()
{
    QFETCH(int, id);
    QTEST(m_tags->isBitType(id), "expected");
}

void TagCommandsTest::prefixSymbol_data()
{
    QTest::addColumn<int>("link");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QStringList>("lines");
    const QStringList none;
    QTest::newRow("a register") << registersLink << 3 << QStringLiteral("D100") << QStringLiteral("D") << none;
    QTest::newRow("with a station") << registersLink << 3 << QStringLiteral("3-E100") << QStringLiteral("E") << none;
    QTest::newRow("a bit") << registersLink << 0 << QStringLiteral("M1") << QStringLiteral("M") << none;
    QTest::newRow("a bit at a register") << registersLink << 0 << QStringLiteral("D1") << QString() << none;
    QTest::newRow("a number at a bit") << registersLink << 3 << QStringLiteral("M1") << QString() << none;
    QTest::newRow("an unknown address") << registersLink << 3 << QStringLiteral("Y1") << QString() << none;
    QTest::newRow("outside the limits") << registersLink << 3 << QStringLiteral("D10000") << QString() << none;
    QTest::newRow("no address") << registersLink << 3 << QString() << QString() << none;
    QTest::newRow("an internal tag") << 0 << 3 << QStringLiteral("D100") << QString() << QStringList{noPrefixLabel};
    QTest::newRow("an unknown link") << missingLink << 3 << QStringLiteral("D100") << QString()
                                     << QStringList{noPrefixLabel};
    QTest::newRow("link -1") << -1 << 3 << QStringLiteral("D100") << QString() << none;
}

void TagCommandsTest::prefixSymbol()
{
    QFETCH(int, link);
    QFETCH(int, type);
    QFETCH(QString, address);
    writeTags(key, {tag(500, link, type, address)});
    const LogRecorder log;
    QTEST(m_tags->getPrefixSymbol(500), "expected");
    QTEST(log.lines().filter(QStringLiteral("TagSystem")), "lines");
    QTEST(criticalLines(log.lines()), "lines");
}

void TagCommandsTest::prefixSymbolOfADynamicRow()
{
    writeTags(key, {tag(500, dataBlocksLink, 3, QStringLiteral("DB12.DBW4")),
                    tag(501, dataBlocksLink, 3, QStringLiteral("3-DB13.DBW4"))});
    QCOMPARE(m_tags->getPrefixSymbol(500), QStringLiteral("DB12.DBW"));
    // A new row is not made of an address with a station.
    QCOMPARE(m_tags->getPrefixSymbol(501), QString());
}

void TagCommandsTest::run_data()
{
    QTest::addColumn<int>("link");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<QStringList>("lines");
    const QStringList none;
    const QString d100 = QStringLiteral("D100");
    QTest::newRow("a word") << registersLink << 3 << d100 << 3
                            << QStringList{QStringLiteral("D100 2 1"), QStringLiteral("D101 2 1"),
                                           QStringLiteral("D102 2 1")}
                            << none;
    QTest::newRow("a double word on words")
        << registersLink << 5 << d100 << 3
        << QStringList{QStringLiteral("D100 3 1"), QStringLiteral("D102 3 1"), QStringLiteral("D104 3 1")} << none;
    QTest::newRow("a byte on words") << registersLink << 1 << d100 << 4
                                     << QStringList{QStringLiteral("D100 1 1"), QStringLiteral("D100 1 1"),
                                                    QStringLiteral("D101 1 1"), QStringLiteral("D101 1 1")}
                                     << none;
    QTest::newRow("a byte on double words starts unevenly")
        << registersLink << 1 << QStringLiteral("E10") << 4
        << QStringList{QStringLiteral("E10 1 1"), QStringLiteral("E10 1 1"), QStringLiteral("E11 1 1"),
                       QStringLiteral("E11 1 1")}
        << none;
    QTest::newRow("a bit") << registersLink << 0 << QStringLiteral("M9") << 2
                           << QStringList{QStringLiteral("M9 0 1"), QStringLiteral("M10 0 1")} << none;
    QTest::newRow("with a station") << registersLink << 3 << QStringLiteral("3-D100") << 2
                                    << QStringList{QStringLiteral("3-D100 2 1"), QStringLiteral("3-D101 2 1")} << none;
    QTest::newRow("something behind a second hyphen does not count")
        << registersLink << 3 << QStringLiteral("3-D100-9") << 2
        << QStringList{QStringLiteral("3-D100 2 1"), QStringLiteral("3-D101 2 1")} << none;
    QTest::newRow("one") << registersLink << 3 << d100 << 1 << QStringList{QStringLiteral("D100 2 1")} << none;
    QTest::newRow("none") << registersLink << 3 << d100 << 0 << none << none;
    QTest::newRow("fewer than none") << registersLink << 3 << d100 << -1 << none << none;
    QTest::newRow("beyond the limits") << registersLink << 3 << QStringLiteral("D9998") << 4
                                       << QStringList{QStringLiteral("D9998 2 1"), QStringLiteral("D9999 2 1")} << none;
    QTest::newRow("an unknown address") << registersLink << 3 << QStringLiteral("Y1") << 2 << none
                                        << QStringList{failed};
    QTest::newRow("a number at a bit") << registersLink << 3 << QStringLiteral("M1") << 2 << none
                                       << QStringList{failed};
    QTest::newRow("nothing behind the station")
        << registersLink << 3 << QStringLiteral("3-") << 2 << none << QStringList{failed};
    QTest::newRow("no address") << registersLink << 3 << QString() << 2 << none << QStringList{failed};
    QTest::newRow("an internal tag") << 0 << 3 << d100 << 2 << none << QStringList{noRunLabel};
    QTest::newRow("an unknown link") << missingLink << 3 << d100 << 2 << none << QStringList{noRunLabel};
    QTest::newRow("link -1") << -1 << 3 << d100 << 2 << none << none;
}

void TagCommandsTest::run()
{
    QFETCH(int, link);
    QFETCH(int, type);
    QFETCH(QString, address);
    QFETCH(int, count);
    writeTags(key, {tag(500, link, type, address)});
    const LogRecorder log;
    QTEST(shortForms(m_tags->getContinuousCommand(500, count)), "expected");
    QTEST(criticalLines(log.lines()), "lines");
}

void TagCommandsTest::runHasDefaultsBesidesAddressAndType()
{
    const QStringList expected{QStringLiteral("D51|2|1|1|0||0"), QStringLiteral("D52|2|1|1|0||0")};
    QCOMPARE(described(m_tags->getContinuousCommand(51, 2)), expected);
    // The length of a text goes as well.
    QCOMPARE(m_tags->getContinuousCommand(52, 1).value(0).length, 1ULL);

    const LogRecorder log;
    QVERIFY(m_tags->getContinuousCommand(9999, 2).isEmpty());
    QVERIFY(m_tags->getContinuousCommand(-1, 2).isEmpty());
    QCOMPARE(log.lines(), QStringList());
    // System and recipe tags are on link 0.
    QVERIFY(m_tags->getContinuousCommand(20012, 2).isEmpty());
    QVERIFY(m_tags->getContinuousCommand(30001, 2).isEmpty());
    const QStringList twice{noRunLabel, noRunLabel};
    QCOMPARE(criticalLines(log.lines()), twice);
    executeOn(key, QStringLiteral("INSERT INTO LINK VALUES (0, ?, 1)"), {registers});
    QVERIFY(m_tags->getContinuousCommand(30001, 2).isEmpty());
    QCOMPARE(criticalLines(log.lines()).mid(2), QStringList{failed});
}

void TagCommandsTest::runWithCap_data()
{
    QTest::addColumn<int>("link");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("cap");
    QTest::addColumn<bool>("checkRange");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<QStringList>("lines");
    const QStringList none;
    const QString d100 = QStringLiteral("D100");
    QTest::newRow("five apart") << registersLink << 3 << d100 << 3 << 5 << true
                                << QStringList{QStringLiteral("D100 2 1"), QStringLiteral("D105 2 1"),
                                               QStringLiteral("D110 2 1")}
                                << none;
    QTest::newRow("the format's type, not the tag's")
        << registersLink << 5 << d100 << 2 << 1 << true
        << QStringList{QStringLiteral("D100 2 1"), QStringLiteral("D101 2 1")} << none;
    QTest::newRow("with a station") << registersLink << 3 << QStringLiteral("3-D100") << 2 << 2 << true
                                    << QStringList{QStringLiteral("3-D100 2 1"), QStringLiteral("3-D102 2 1")} << none;
    QTest::newRow("bits") << registersLink << 0 << QStringLiteral("M8") << 2 << 8 << true
                          << QStringList{QStringLiteral("M8 0 1"), QStringLiteral("M16 0 1")} << none;
    QTest::newRow("beyond the limits") << registersLink << 3 << QStringLiteral("D9998") << 3 << 1 << true
                                       << QStringList{QStringLiteral("D9998 2 1"), QStringLiteral("D9999 2 1")} << none;
    QTest::newRow("beyond the limits, unchecked")
        << registersLink << 3 << QStringLiteral("D9998") << 3 << 1 << false
        << QStringList{QStringLiteral("D9998 2 1"), QStringLiteral("D9999 2 1"), QStringLiteral("D10000 2 1")} << none;
    QTest::newRow("a cap of 0") << registersLink << 3 << d100 << 2 << 0 << true
                                << QStringList{QStringLiteral("D100 2 1"), QStringLiteral("D100 2 1")} << none;
    QTest::newRow("backwards") << registersLink << 3 << d100 << 2 << -10 << true
                               << QStringList{QStringLiteral("D100 2 1"), QStringLiteral("D90 2 1")} << none;
    QTest::newRow("none") << registersLink << 3 << d100 << 0 << 1 << true << none << none;
    QTest::newRow("an unknown address fails in silence")
        << registersLink << 3 << QStringLiteral("Y1") << 2 << 1 << true << none << none;
    QTest::newRow("a number at a bit fails in silence")
        << registersLink << 3 << QStringLiteral("M1") << 2 << 1 << true << none << none;
    QTest::newRow("an internal tag") << 0 << 3 << d100 << 2 << 1 << true << none << QStringList{noCapLabel};
    QTest::newRow("an unknown link") << missingLink << 3 << d100 << 2 << 1 << true << none << QStringList{noCapLabel};
    QTest::newRow("link -1") << -1 << 3 << d100 << 2 << 1 << true << none << none;
}

void TagCommandsTest::runWithCap()
{
    QFETCH(int, link);
    QFETCH(int, type);
    QFETCH(QString, address);
    QFETCH(int, count);
    QFETCH(int, cap);
    QFETCH(bool, checkRange);
    writeTags(key, {tag(500, link, type, address)});
    const LogRecorder log;
    QTEST(shortForms(m_tags->getContinuousCommandwithCap(500, count, cap, checkRange)), "expected");
    QTEST(criticalLines(log.lines()), "lines");
}

void TagCommandsTest::runWithCapKeepsLengthAndScanTime()
{
    const QStringList expected{QStringLiteral("D52|2|12|7|0||0"), QStringLiteral("D62|2|12|7|0||0")};
    QCOMPARE(described(m_tags->getContinuousCommandwithCap(52, 2, 10, true)), expected);

    const LogRecorder log;
    QVERIFY(m_tags->getContinuousCommandwithCap(9999, 2, 1, true).isEmpty());
    QVERIFY(m_tags->getContinuousCommandwithCap(-1, 2, 1, true).isEmpty());
    QCOMPARE(log.lines(), QStringList());
    QVERIFY(m_tags->getContinuousCommandwithCap(20012, 2, 1, true).isEmpty());
    QVERIFY(m_tags->getContinuousCommandwithCap(50001, 2, 1, true).isEmpty());
    const QStringList twice{noCapLabel, noCapLabel};
    QCOMPARE(criticalLines(log.lines()), twice);
}

void TagCommandsTest::runOfABrokenDriver()
{
    writeTags(key, {tag(500, brokenLink, 3, QStringLiteral("D100"))});
    const LogRecorder log;
    QVERIFY(m_tags->getContinuousCommand(500, 2).isEmpty());
    QVERIFY(m_tags->getContinuousCommandwithCap(500, 2, 1, true).isEmpty());
    QCOMPARE(m_tags->getPrefixSymbol(500), QString());
    QList<CommunicatorCommand> out{command(QStringLiteral("before"), 1)};
    QVERIFY(!m_tags->creatBlockCommand(500, 2, out));
    QCOMPARE(addresses(out), QStringList{QStringLiteral("before")});
    const QStringList expected{noRunLabel, noCapLabel, noPrefixLabel};
    QCOMPARE(criticalLines(log.lines()), expected);
}

/// A driver that makes rows of new prefixes refuses addresses with a station, so that it shows which text it was asked.
void TagCommandsTest::stationIsCutOffForRunsOnly()
{
    writeTags(key, {tag(500, dataBlocksLink, 3, QStringLiteral("3-DB12.DBW4"))});
    QList<CommunicatorCommand> out;
    QVERIFY(m_tags->getContinuousCommandwithCap(500, 2, 2, true).isEmpty());
    QVERIFY(!m_tags->creatBlockCommand(500, 2, out));
    const QStringList expected{QStringLiteral("3-DB12.DBW4 2 1"), QStringLiteral("3-DB12.DBW5 2 1")};
    QCOMPARE(shortForms(m_tags->getContinuousCommand(500, 2)), expected);
    // Now the prefix is known.
    QCOMPARE(m_tags->getContinuousCommandwithCap(500, 2, 2, true).size(), 2);
    QVERIFY(m_tags->creatBlockCommand(500, 2, out));
    QCOMPARE(shortForms(out), QStringList{QStringLiteral("3-DB12.DBW4 2 2")});
}

void TagCommandsTest::blockOf10By4()
{
    writeTags(key, {tag(500, blocksLink, 3, QStringLiteral("D100"))});
    QList<CommunicatorCommand> out;
    QVERIFY(m_tags->creatBlockCommand(500, 10, out));
    const QStringList ten{QStringLiteral("D100|2|4|1|0||0"), QStringLiteral("D104|2|4|1|0||0"),
                          QStringLiteral("D108|2|2|1|0||0")};
    QCOMPARE(described(out), ten);
    QVERIFY(m_tags->creatBlockCommand(500, 8, out));
    const QStringList eight{QStringLiteral("D100|2|4|1|0||0"), QStringLiteral("D104|2|4|1|0||0")};
    QCOMPARE(described(out), eight);
}

void TagCommandsTest::blockUnits_data()
{
    QTest::addColumn<int>("link");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("expected");
    const auto known = [](const char *name, int link, int type, const char *address, int count,
                          const QStringList &expected) {
        QTest::newRow(name) << link << type << QString::fromLatin1(address) << count << expected;
    };
    const auto list = [](const char *texts) { return QString::fromLatin1(texts).split(QStringLiteral(", ")); };

    known("one item", blocksLink, 3, "D100", 1, list("D100 2 1"));
    known("less than a block", blocksLink, 3, "D100", 3, list("D100 2 3"));
    known("exactly a block", blocksLink, 3, "D100", 4, list("D100 2 4"));
    known("one more than a block", blocksLink, 3, "D100", 5, list("D100 2 4, D104 2 1"));
    known("exactly three blocks", blocksLink, 3, "D100", 12, list("D100 2 4, D104 2 4, D108 2 4"));
    known("with a station", blocksLink, 3, "3-D100", 6, list("3-D100 2 4, 3-D104 2 2"));
    known("up to the limit", blocksLink, 3, "D9995", 5, list("D9995 2 4, D9999 2 1"));
    known("no items make one block of none", blocksLink, 3, "D100", 0, list("D100 2 0"));
    known("blocks of one", blocksLink, 3, "X5", 3, list("X5 2 1, X6 2 1, X7 2 1"));

    known("words on double words: twice as many, all", registersLink, 3, "E100", 128, list("E100 2 128"));
    known("words on double words: twice as many", registersLink, 3, "E100", 129, list("E100 2 128, E164 2 1"));
    known("words on bytes: half as many, all", registersLink, 3, "B100", 32, list("B100 2 32"));
    known("words on bytes: half as many", registersLink, 3, "B100", 33, list("B100 2 32, B164 2 1"));
    known("words on words: as many", registersLink, 4, "D100", 65, list("D100 2 64, D164 2 1"));
    known("double words on words: half as many", registersLink, 5, "D100", 70, list("D100 3 32, D164 3 32, D228 3 6"));
    known("numbers with a point on words: half as many", registersLink, 7, "D100", 33, list("D100 3 32, D164 3 1"));
    known("quad words on words: a quarter", registersLink, 9, "D100", 17, list("D100 4 16, D164 4 1"));
    known("quad words on double words: half as many", registersLink, 10, "E100", 33, list("E100 4 32, E164 4 1"));
    known("quad words on bytes: three apart, as many", registersLink, 11, "B100", 65, list("B100 1 64, B164 1 1"));
    known("double words on bytes: a quarter", registersLink, 5, "B100", 17, list("B100 3 16, B164 3 1"));
    known("bytes on bytes: as many", registersLink, 1, "B100", 65, list("B100 1 64, B164 1 1"));
    known("bytes on words: twice as many", registersLink, 2, "D100", 129, list("D100 1 128, D164 1 1"));
    known("bytes on double words: four times, with the uneven start", blocksLink, 1, "E100", 10,
          list("E100 1 8, E102 1 2"));
    known("bytes on quad words: three apart, as many", blocksLink, 1, "Q100", 4, list("Q100 4 3, Q103 4 1"));
    known("words on quad words: four times", blocksLink, 3, "Q100", 13, list("Q100 2 12, Q103 2 1"));
    known("double words on quad words: twice as many", blocksLink, 5, "Q100", 7, list("Q100 3 6, Q103 3 1"));
    known("texts on words: three apart, as many", blocksLink, 8, "D100", 5, list("D100 2 4, D104 2 1"));
    known("texts on double words: a quarter", registersLink, 8, "E100", 17, list("E100 5 16, E164 5 1"));
    known("texts on quad words: half as many, truncated", blocksLink, 8, "Q100", 2, list("Q100 5 1, Q102 5 1"));
    known("texts on texts: as many", blocksLink, 8, "S100", 4, list("S100 5 3, S103 5 1"));
    known("quad words on texts: twice as many", blocksLink, 9, "S100", 7, list("S100 4 6, S103 4 1"));
    known("an unknown type, far from words: as many", blocksLink, 12, "D100", 5, list("D100 2 4, D104 2 1"));

    known("half of seven truncates", blocksLink, 3, "B100", 4, list("B100 2 3, B106 2 1"));
    known("a quarter of seven truncates", blocksLink, 5, "B100", 2, list("B100 3 1, B104 3 1"));
    known("half of three truncates", blocksLink, 5, "V100", 2, list("V100 3 1, V102 3 1"));
    known("bits are not converted", blocksLink, 0, "M98", 5, list("M98 0 4, M102 0 1"));
    known("the highest block size", blocksLink, 3, "L100", 500, list("L100 2 500"));
    known("twice the highest block size", blocksLink, 1, "L100", 500, list("L100 1 500"));
}

void TagCommandsTest::blockUnits()
{
    QFETCH(int, link);
    QFETCH(int, type);
    QFETCH(QString, address);
    QFETCH(int, count);
    writeTags(key, {tag(500, link, type, address)});
    QList<CommunicatorCommand> out;
    const LogRecorder log;
    QVERIFY(m_tags->creatBlockCommand(500, count, out));
    QTEST(shortForms(out), "expected");
    QCOMPARE(criticalLines(log.lines()), QStringList());
}

void TagCommandsTest::blockKeepsTheTagsOwnCommand()
{
    TagRow row = tag(500, blocksLink, 3, QStringLiteral("D0100"));
    row.scanTime = 7;
    TagRow text = tag(501, blocksLink, 8, QStringLiteral("3-D0100"));
    text.scanTime = 0;
    text.scale = 20;
    writeTags(key, {row, text});
    QList<CommunicatorCommand> out;
    QVERIFY(m_tags->creatBlockCommand(500, 4, out));
    QCOMPARE(described(out), QStringList{QStringLiteral("D0100|2|4|7|0||0")});
    QVERIFY(m_tags->creatBlockCommand(501, 1, out));
    QCOMPARE(described(out), QStringList{QStringLiteral("3-D0100|5|1|0|0||0")});
    // Several blocks are taken from the run, which has a spelling and a scan time of its own.
    QVERIFY(m_tags->creatBlockCommand(500, 5, out));
    const QStringList expected{QStringLiteral("D100|2|4|1|0||0"), QStringLiteral("D104|2|1|1|0||0")};
    QCOMPARE(described(out), expected);
}

void TagCommandsTest::blockWithoutRoom_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("address");
    QTest::newRow("half of one byte") << 3 << QStringLiteral("A100");
    QTest::newRow("a quarter of one byte") << 5 << QStringLiteral("A100");
    QTest::newRow("a quarter of three bytes") << 5 << QStringLiteral("C100");
    QTest::newRow("half of one word") << 5 << QStringLiteral("X100");
    QTest::newRow("a quarter of three words") << 10 << QStringLiteral("V100");
    QTest::newRow("a block size of 0") << 3 << QStringLiteral("W100");
    QTest::newRow("twice a block size of 0") << 1 << QStringLiteral("W100");
    QTest::newRow("a block size of 0 bits") << 0 << QStringLiteral("N100");
    QTest::newRow("a negative block size") << 3 << QStringLiteral("Z100");
    QTest::newRow("half of a negative block size") << 5 << QStringLiteral("Z100");
}

void TagCommandsTest::blockWithoutRoom()
{
    QFETCH(int, type);
    QFETCH(QString, address);
    writeTags(key, {tag(500, blocksLink, type, address)});
    for (int count : {1, 2, 10}) {
        QCOMPARE(m_tags->getContinuousCommand(500, count).size(), count);
        QList<CommunicatorCommand> out{command(QStringLiteral("before"), 1)};
        QVERIFY(!m_tags->creatBlockCommand(500, count, out));
        QCOMPARE(addresses(out), QStringList{QStringLiteral("before")});
    }
}

void TagCommandsTest::blockThatFails_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("count");
    QTest::newRow("no such row") << 9999 << 2;
    QTest::newRow("no tag") << -1 << 2;
    QTest::newRow("a system tag") << 20012 << 2;
    QTest::newRow("a recipe tag") << 30001 << 2;
    QTest::newRow("a recipe row tag") << 50001 << 2;
    QTest::newRow("an unknown link") << 500 << 2;
    QTest::newRow("link -1") << 501 << 2;
    QTest::newRow("an unknown address") << 502 << 2;
    QTest::newRow("a bit at a register") << 503 << 2;
    QTest::newRow("no address") << 55 << 2;
    QTest::newRow("the run leaves the limits") << 504 << 2;
    QTest::newRow("a negative count") << 51 << -1;
    QTest::newRow("the lowest count") << 51 << INT_MIN;
}

void TagCommandsTest::blockThatFails()
{
    QFETCH(int, id);
    QFETCH(int, count);
    writeTags(key, {tag(500, missingLink, 3, QStringLiteral("D1")), tag(501, -1, 3, QStringLiteral("D1")),
                    tag(502, registersLink, 3, QStringLiteral("Y1")), tag(503, registersLink, 0, QStringLiteral("D1")),
                    tag(504, registersLink, 3, QStringLiteral("D9999"))});
    QList<CommunicatorCommand> out{command(QStringLiteral("before"), 1)};
    const LogRecorder log;
    QVERIFY(!m_tags->creatBlockCommand(id, count, out));
    QCOMPARE(addresses(out), QStringList{QStringLiteral("before")});
    QCOMPARE(criticalLines(log.lines()), QStringList());
}

void TagCommandsTest::blockReplacesTheList()
{
    QList<CommunicatorCommand> out{command(QStringLiteral("before"), 1), command(QStringLiteral("after"), 1)};
    QVERIFY(m_tags->creatBlockCommand(51, 2, out));
    QCOMPARE(shortForms(out), QStringList{QStringLiteral("D51 2 2")});
}

QTEST_GUILESS_MAIN(TagCommandsTest)

#include "tst_tagcommands.moc"
