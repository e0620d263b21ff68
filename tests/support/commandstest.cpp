// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/commandstest.h"

#include "support/labelfixtures.h"
#include "support/logrecorder.h"

#include "zelmar_label/label_store/labelstore.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTest>

#include <climits>

const QString registers = QStringLiteral("Registers");
const QString blocks = QStringLiteral("Blocks");
const QString dataBlocks = QStringLiteral("ISO on TCP");

const QString noPrefixLabel = QStringLiteral("critical: error TagSystem::getPrefixSymbol label is NULL");
const QString noRunLabel = QStringLiteral("critical: error TagSystem::getContinuousCommand label is null");
const QString noCapLabel = QStringLiteral("critical: error TagSystem::getContinuousCommandwithCap label is null");
const QString failed = QStringLiteral("critical: validation failed");

const QString nullCommand = QStringLiteral("S>NULL|3|1|1|0||0");

namespace {

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

} // namespace

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

void CommandsTest::initTestCase()
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

void CommandsTest::makeSharedProject()
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

void CommandsTest::init()
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

void CommandsTest::cleanup()
{
    executeOn(key, QStringLiteral("ROLLBACK TO before_a_test"));
    executeOn(key, QStringLiteral("RELEASE before_a_test"));
    // It grows with the addresses it validates.
    label::freeLabel(dataBlocks);
    QCOMPARE(m_messages->take(), QStringList());
    m_messages.reset();
}

void CommandsTest::cleanupTestCase()
{
    dropProjects();
    m_folder.reset();
    label::freeLabel(registers);
    label::freeLabel(blocks);
    QDir(QFileInfo(driverDatabasePath()).absolutePath()).removeRecursively();
}
