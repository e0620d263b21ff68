// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"

#include "zelmar_label/label_table/commandinformationtalbe.h"

#include <QtTest>

#include <climits>

using label::CommandInformationTalbe;

namespace {

Row row(const char *pattern, int type, const char *symbol, const char *rule = "")
{
    Row made;
    made.pattern = QLatin1String(pattern);
    made.type = type;
    made.prefixSymbol = QLatin1String(symbol);
    made.multipleRule = QLatin1String(rule);
    return made;
}

Row sized(Row changed, int dataSize, int blocksize)
{
    changed.dataSize = dataSize;
    changed.blocksize = blocksize;
    return changed;
}

Row based(Row changed, int base, const char *end)
{
    changed.base = base;
    changed.end = QLatin1String(end);
    return changed;
}

CommandInformationTalbe tableOf(const QList<Row> &rows)
{
    CommandInformationTalbe table;
    for (const Row &one : rows)
        table.addCommandFormatter(one.formatter());
    return table;
}

const QString nullKey = QStringLiteral("S>NULL_3_1");

bool isNullCommand(const CommunicatorCommand &command)
{
    return command.address == QLatin1String("S>NULL") && command.dataType == CommunicatorCommand::DoubleWord &&
           command.length == 1 && command.scanTime == 1 && command.auxiliaryNumber == 0 &&
           command.auxiliaryText.isEmpty() && !command.auxiliaryFlag;
}

/// Every field differs from a default command's.
CommunicatorCommand marked(const QString &address, int dataType)
{
    CommunicatorCommand made = command(address, dataType, 7);
    made.scanTime = 50;
    made.auxiliaryNumber = 4;
    made.auxiliaryText = QStringLiteral("text");
    made.auxiliaryFlag = true;
    return made;
}

enum BlockRow {
    WordRow,
    HexadecimalRow,
    BitsInWordsRow,
    BitsInBytesRow,
    BitsInBytesFromOneRow,
    GroupsOf64Row,
    WithoutBlockRow,
    NegativeBlockRow,
    WithoutSizeRow,
    WideBitsRow,
    ScriptedBitsRow,
    ScriptedGroupsRow,
    BlockRowCount
};

QList<Row> blockRows()
{
    writeScript(QStringLiteral("counts_bits.js"), QStringLiteral("function init() { needAligment = true; }"));
    writeScript(QStringLiteral("has_groups.js"), QStringLiteral("function init() { aligmentSize = 8; }"));
    return {
        sized(row("(D)(\\d+)", 2, "D"), 2, 64),
        based(sized(row("(W)([0-9a-f]+)", 2, "W"), 2, 16), 16, "FFFF"),
        sized(row("(M)(\\d+)", 2, "M", "m16"), 2, 4),
        sized(row("(K)(\\d+)", 1, "K", "m8"), 1, 2),
        sized(row("(L)(\\d+)", 1, "L", "m8a1"), 1, 2),
        sized(row("(N)(\\d+)", 2, "N", "m64a1"), 8, 4),
        sized(row("(Z)(\\d+)", 2, "Z"), 2, 0),
        sized(row("(Z)(\\d+)", 2, "Z"), 2, -5),
        sized(row("(Z)(\\d+)", 2, "Z", "m16"), 0, 4),
        sized(row("(V)(\\d+)", 2, "V", "m8"), 2, 4),
        sized(row("(S)(\\d+)", 2, "S", "F>counts_bits.js"), 2, 4),
        sized(row("(G)(\\d+)", 2, "G", "F>has_groups.js"), 2, 4),
    };
}

enum ConversionRow {
    RelayRow,
    DoubleWordRow,
    BitOfWordRow,
    BitOf32Row,
    NarrowRow,
    PlainBitRow,
    UnalignedBitRow,
    ByteFirstRow,
    ByteBitRow,
    ConversionRowCount
};

QList<Row> conversionRows()
{
    return {
        row("(M)(\\d+)", 0, "M", "union-dec:rm16_D"),   sized(row("(D)(\\d+)", 3, "D"), 4, 64),
        row("(D)(\\d+\\.[0-9a-f])", 0, "D", "dot-f:r"), row("(B)(\\d+\\.\\d+)", 0, "B", "dot-31:r_E"),
        sized(row("(E)(\\d+)", 2, "E"), 2, 64),         row("(K)(\\d+)", 0, "K"),
        row("(L)(\\d+)", 0, "L", "union-dec:r"),        sized(row("(P)(\\d+)", 1, "P"), 1, 64),
        row("(P)(\\d+\\.\\d+)", 0, "P", "dot-dec:r"),
    };
}

} // namespace

class CommandInformationTalbeCommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void normalizing_data();
    void normalizing();
    void continuing_data();
    void continuing();
    void continuingWithCap_data();
    void continuingWithCap();
    void forwardersReportAWrongIndex_data();
    void forwardersReportAWrongIndex();

    void blocks_data();
    void blocks();
    void blocksAreFreshCommands();
    void blocksOfAWrongIndex();
    void blockWithoutLimit_data();
    void blockWithoutLimit();
    void blockWithoutLimitOfAWrongIndex();

    void conversion_data();
    void conversion();
    void aConvertedCommandKeepsNothingOfTheBitCommand();
    void failedConversion_data();
    void failedConversion();
    void aCommandThatIsNoBitIsToldApartFirst_data();
    void aCommandThatIsNoBitIsToldApartFirst();

private:
    CommandInformationTalbe m_blockTable;
    CommandInformationTalbe m_conversionTable;
};

void CommandInformationTalbeCommandsTest::initTestCase()
{
    m_blockTable = tableOf(blockRows());
    m_conversionTable = tableOf(conversionRows());
    QCOMPARE(m_blockTable.countFormatters(), int(BlockRowCount));
    QCOMPARE(m_conversionTable.countFormatters(), int(ConversionRowCount));
}

void CommandInformationTalbeCommandsTest::cleanupTestCase()
{
    removeScript(QStringLiteral("counts_bits.js"));
    removeScript(QStringLiteral("has_groups.js"));
}

void CommandInformationTalbeCommandsTest::normalizing_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("dataType");
    QTest::addColumn<quint64>("length");
    QTest::addColumn<QStringList>("made");
    QTest::newRow("twice the width") << "3-D100" << 3 << quint64(1) << QStringList{"3-D100 2 1", "3-D101 2 1"};
    QTest::newRow("the width of the row") << "D100" << 2 << quint64(1) << QStringList{"D100 2 1"};
    QTest::newRow("a text") << "D100" << 5 << quint64(5) << QStringList{"D100 2 1", "D101 2 1", "D102 2 1"};
    QTest::newRow("beyond the limits") << "D9999" << 3 << quint64(1) << QStringList{"D9999 2 1"};
    QTest::newRow("not the row's address") << "X1" << 3 << quint64(1) << QStringList{"X1 3 1"};
}

void CommandInformationTalbeCommandsTest::normalizing()
{
    QFETCH(QString, address);
    QFETCH(int, dataType);
    QFETCH(quint64, length);
    QFETCH(QStringList, made);
    const LogRecorder log;
    QCOMPARE(shortForms(m_blockTable.normalizeCommand(WordRow, command(address, dataType, length))), made);
    QCOMPARE(log.lines(), QStringList());
}

void CommandInformationTalbeCommandsTest::continuing_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("dataType");
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("made");
    QTest::newRow("the row's width") << "2-D100" << 2 << 2 << QStringList{"2-D100 2 1", "2-D101 2 1"};
    QTest::newRow("one width more") << "D100" << 3 << 3 << QStringList{"D100 3 1", "D102 3 1", "D104 3 1"};
    QTest::newRow("one width less") << "D100" << 1 << 4 << QStringList{"D100 1 1", "D100 1 1", "D101 1 1", "D101 1 1"};
    QTest::newRow("over the end") << "D9998" << 2 << 5 << QStringList{"D9998 2 1", "D9999 2 1"};
    QTest::newRow("none") << "D100" << 2 << 0 << QStringList();
    QTest::newRow("not the row's address") << "X1" << 2 << 3 << QStringList{"X1 2 1"};
}

void CommandInformationTalbeCommandsTest::continuing()
{
    QFETCH(QString, address);
    QFETCH(int, dataType);
    QFETCH(int, count);
    QFETCH(QStringList, made);
    const LogRecorder log;
    QCOMPARE(shortForms(m_blockTable.makeContinueCommand(WordRow, command(address, dataType), count)), made);
    QCOMPARE(log.lines(), QStringList());
}

void CommandInformationTalbeCommandsTest::continuingWithCap_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("cap");
    QTest::addColumn<bool>("checkRange");
    QTest::addColumn<QStringList>("made");
    QTest::newRow("five apart") << int(WordRow) << "D100" << 5 << true
                                << QStringList{"D100 2 2", "D105 2 2", "D110 2 2"};
    QTest::newRow("checked at the end") << int(WordRow) << "D9995" << 5 << true << QStringList{"D9995 2 2"};
    QTest::newRow("unchecked at the end")
        << int(WordRow) << "D9995" << 5 << false << QStringList{"D9995 2 2", "D10000 2 2", "D10005 2 2"};
    QTest::newRow("aligned and checked") << int(BitsInWordsRow) << "M16" << 1 << true
                                         << QStringList{"M16 2 2", "M32 2 2", "M48 2 2"};
    QTest::newRow("aligned and unchecked")
        << int(BitsInWordsRow) << "M16" << 1 << false << QStringList{"M16 2 2", "M17 2 2", "M18 2 2"};
    QTest::newRow("backwards") << int(WordRow) << "D100" << -2 << true << QStringList{"D100 2 2", "D98 2 2", "D96 2 2"};
}

void CommandInformationTalbeCommandsTest::continuingWithCap()
{
    QFETCH(int, index);
    QFETCH(QString, address);
    QFETCH(int, cap);
    QFETCH(bool, checkRange);
    QFETCH(QStringList, made);
    const LogRecorder log;
    QCOMPARE(shortForms(m_blockTable.makeContinueCommandwithCap(index, command(address, 2, 2), 3, cap, checkRange)),
             made);
    QCOMPARE(log.lines(), QStringList());
}

void CommandInformationTalbeCommandsTest::forwardersReportAWrongIndex_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("-1") << -1;
    QTest::newRow("one behind the last row") << int(BlockRowCount);
    QTest::newRow("the largest number") << INT_MAX;
}

void CommandInformationTalbeCommandsTest::forwardersReportAWrongIndex()
{
    QFETCH(int, index);
    const CommunicatorCommand word = command(QStringLiteral("D100"), 2);
    LogRecorder log;
    QVERIFY(m_blockTable.normalizeCommand(index, word).isEmpty());
    QCOMPARE(
        log.take(),
        QStringList{QStringLiteral("CommandInformationTalbe::autoCompleteCommand wrong type_index  %1").arg(index)});
    const QString continueLine =
        QStringLiteral("CommandInformationTalbe::makeContinueCommand wrong type_index  %1").arg(index);
    QVERIFY(m_blockTable.makeContinueCommand(index, word, 3).isEmpty());
    QCOMPARE(log.take(), QStringList{continueLine});
    QVERIFY(m_blockTable.makeContinueCommandwithCap(index, word, 3, 1, true).isEmpty());
    QCOMPARE(log.take(), QStringList{continueLine});
}

void CommandInformationTalbeCommandsTest::blocks_data()
{
    QTest::addColumn<int>("station");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("length");
    QTest::addColumn<QStringList>("made");

    QTest::newRow("exactly one block") << -1 << int(WordRow) << 100 << 64 << QStringList{"D100 2 64"};
    QTest::newRow("one more than a block") << -1 << int(WordRow) << 100 << 65 << QStringList{"D100 2 64", "D164 2 1"};
    QTest::newRow("one less than a block") << -1 << int(WordRow) << 100 << 63 << QStringList{"D100 2 63"};
    QTest::newRow("two blocks and a rest")
        << -1 << int(WordRow) << 100 << 130 << QStringList{"D100 2 64", "D164 2 64", "D228 2 2"};
    QTest::newRow("a single unit") << -1 << int(WordRow) << 0 << 1 << QStringList{"D0 2 1"};
    QTest::newRow("length 0") << -1 << int(WordRow) << 100 << 0 << QStringList();
    QTest::newRow("a negative length") << -1 << int(WordRow) << 100 << -1 << QStringList();
    QTest::newRow("the most negative length") << -1 << int(WordRow) << 100 << INT_MIN << QStringList();
    QTest::newRow("beyond the limits: nothing is checked")
        << -1 << int(WordRow) << 9990 << 70 << QStringList{"D9990 2 64", "D10054 2 6"};
    QTest::newRow("a negative start") << -1 << int(WordRow) << -2 << 65 << QStringList{"D-2 2 64", "D62 2 1"};
    QTest::newRow("a station") << 3 << int(WordRow) << 100 << 65 << QStringList{"3-D100 2 64", "3-D164 2 1"};
    QTest::newRow("station 0") << 0 << int(WordRow) << 100 << 1 << QStringList{"0-D100 2 1"};
    QTest::newRow("only -1 means no station") << -2 << int(WordRow) << 100 << 1 << QStringList{"-2-D100 2 1"};
    QTest::newRow("another radix") << -1 << int(HexadecimalRow) << 255 << 17 << QStringList{"Wff 2 16", "W10f 2 1"};

    QTest::newRow("bits: exactly one block") << -1 << int(BitsInWordsRow) << 0 << 64 << QStringList{"M0 2 4"};
    QTest::newRow("bits: one bit more than a block takes a whole unit")
        << -1 << int(BitsInWordsRow) << 0 << 65 << QStringList{"M0 2 4", "M64 2 1"};
    QTest::newRow("bits: one bit less than a block takes a whole block")
        << -1 << int(BitsInWordsRow) << 0 << 63 << QStringList{"M0 2 4"};
    QTest::newRow("bits: a single bit") << -1 << int(BitsInWordsRow) << 32 << 1 << QStringList{"M32 2 1"};
    QTest::newRow("bits: one bit more than a unit") << -1 << int(BitsInWordsRow) << 32 << 17 << QStringList{"M32 2 2"};
    QTest::newRow("bits: two blocks and a rest, with a station")
        << 9 << int(BitsInWordsRow) << 16 << 145 << QStringList{"9-M16 2 4", "9-M80 2 4", "9-M144 2 2"};
    QTest::newRow("bits in bytes") << -1 << int(BitsInBytesRow) << 0 << 25 << QStringList{"K0 1 2", "K16 1 2"};
    QTest::newRow("bits in bytes, counted from 1")
        << -1 << int(BitsInBytesFromOneRow) << 1 << 17 << QStringList{"L1 1 2", "L17 1 1"};
    QTest::newRow("bits: units wider than the aligned group")
        << -1 << int(WideBitsRow) << 8 << 72 << QStringList{"V8 2 4", "V72 2 1"};
    QTest::newRow("groups of 64 count units") << -1 << int(GroupsOf64Row) << 1 << 5 << QStringList{"N1 2 4", "N5 2 1"};

    QTest::newRow("a row without a block size") << -1 << int(WithoutBlockRow) << 0 << 5 << QStringList();
    QTest::newRow("a row with a negative block size") << -1 << int(NegativeBlockRow) << 0 << 5 << QStringList();
    QTest::newRow("bits: a row without a data size") << -1 << int(WithoutSizeRow) << 0 << 5 << QStringList();

    QTest::newRow("a script that counts bits in groups of one: the start moves by units")
        << -1 << int(ScriptedBitsRow) << 0 << 65 << QStringList{"S0 2 4", "S4 2 1"};
    QTest::newRow("a script with groups that does not count bits: the start moves by bits")
        << -1 << int(ScriptedGroupsRow) << 0 << 5 << QStringList{"G0 2 4", "G64 2 1"};
}

void CommandInformationTalbeCommandsTest::blocks()
{
    QFETCH(int, station);
    QFETCH(int, index);
    QFETCH(int, start);
    QFETCH(int, length);
    QFETCH(QStringList, made);
    const LogRecorder log;
    QCOMPARE(shortForms(m_blockTable.makeBlockCommand(station, index, start, length)), made);
    QCOMPARE(log.lines(), QStringList());
}

void CommandInformationTalbeCommandsTest::blocksAreFreshCommands()
{
    const QList<CommunicatorCommand> made = m_blockTable.makeBlockCommand(-1, WordRow, 0, 3);
    QCOMPARE(made.size(), 1);
    QCOMPARE(made.first().scanTime, 1);
    QCOMPARE(made.first().auxiliaryNumber, 0);
    QCOMPARE(made.first().auxiliaryText, QString());
    QCOMPARE(made.first().auxiliaryFlag, false);
}

void CommandInformationTalbeCommandsTest::blocksOfAWrongIndex()
{
    for (const int index : {-1, int(BlockRowCount), INT_MAX}) {
        const LogRecorder log;
        QVERIFY(m_blockTable.makeBlockCommand(-1, index, 0, 10).isEmpty());
        QCOMPARE(
            log.lines(),
            (QStringList{QStringLiteral("CommandInformationTalbe:: datasize  wrong type_index  %1").arg(index),
                         QStringLiteral("CommandInformationTalbe::blocksize wrong type_index  %1").arg(index),
                         QStringLiteral("CommandInformationTalbe::makeBlockCommand wrong type_index  %1").arg(index)}));
    }
}

void CommandInformationTalbeCommandsTest::blockWithoutLimit_data()
{
    QTest::addColumn<int>("station");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("length");
    QTest::addColumn<QString>("made");
    QTest::newRow("far longer than a block") << -1 << int(WordRow) << 100 << 1000 << "D100 2 1000";
    QTest::newRow("a station") << 3 << int(WordRow) << 100 << 1000 << "3-D100 2 1000";
    QTest::newRow("length 0") << -1 << int(WordRow) << 100 << 0 << "D100 2 0";
    QTest::newRow("a negative length keeps its sign in 64 bits")
        << -1 << int(WordRow) << 100 << -1 << "D100 2 18446744073709551615";
    QTest::newRow("a row without a block size") << -1 << int(WithoutBlockRow) << 5 << 3 << "Z5 2 3";
    QTest::newRow("another radix") << -1 << int(HexadecimalRow) << 255 << 17 << "Wff 2 17";
    QTest::newRow("bits in bytes: 17 are padded to 24") << -1 << int(BitsInBytesRow) << 0 << 17 << "K0 1 3";
    QTest::newRow("bits in bytes: 16 are padded to 24 too") << -1 << int(BitsInBytesRow) << 0 << 16 << "K0 1 3";
    QTest::newRow("bits in bytes: 15 are padded to 16") << -1 << int(BitsInBytesRow) << 0 << 15 << "K0 1 2";
    QTest::newRow("bits in bytes: 0 are padded to 8") << -1 << int(BitsInBytesRow) << 0 << 0 << "K0 1 1";
    QTest::newRow("bits in bytes: -3 are padded to 8") << -1 << int(BitsInBytesRow) << 0 << -3 << "K0 1 1";
    QTest::newRow("bits in bytes: -8 are padded to 0") << -1 << int(BitsInBytesRow) << 0 << -8 << "K0 1 0";
    QTest::newRow("bits in bytes, counted from 1") << -1 << int(BitsInBytesFromOneRow) << 1 << 8 << "L1 1 2";
    QTest::newRow("bits in words: 16 are padded to 32") << -1 << int(BitsInWordsRow) << 16 << 16 << "M16 2 2";
    QTest::newRow("bits in words: 1 is padded to 16") << -1 << int(BitsInWordsRow) << 16 << 1 << "M16 2 1";
    QTest::newRow("padding narrower than a unit: 16 bits, then a unit and a half")
        << -1 << int(WideBitsRow) << 8 << 16 << "V8 2 2";
    QTest::newRow("groups of 64 are not padded") << -1 << int(GroupsOf64Row) << 1 << 5 << "N1 2 5";
    QTest::newRow("a script that counts bits in groups of one: no padding")
        << -1 << int(ScriptedBitsRow) << 0 << 16 << "S0 2 1";
    QTest::newRow("a script that counts bits in groups of one: begun units count")
        << -1 << int(ScriptedBitsRow) << 0 << 17 << "S0 2 2";
    QTest::newRow("a script with groups that does not count bits: no padding")
        << -1 << int(ScriptedGroupsRow) << 0 << 17 << "G0 2 17";
}

void CommandInformationTalbeCommandsTest::blockWithoutLimit()
{
    QFETCH(int, station);
    QFETCH(int, index);
    QFETCH(int, start);
    QFETCH(int, length);
    QFETCH(QString, made);
    const LogRecorder log;
    QCOMPARE(shortForms({m_blockTable.makeBlockCommandWithoutSizeLimit(station, index, start, length)}),
             QStringList{made});
    QCOMPARE(log.lines(), QStringList());
}

void CommandInformationTalbeCommandsTest::blockWithoutLimitOfAWrongIndex()
{
    for (const int index : {-1, int(BlockRowCount), INT_MAX}) {
        const LogRecorder log;
        QVERIFY(isNullCommand(m_blockTable.makeBlockCommandWithoutSizeLimit(3, index, 0, 10)));
        QCOMPARE(
            log.lines(),
            QStringList{QStringLiteral("CommandInformationTalbe::makeBlockCommand wrong type_index  %1").arg(index)});
    }
}

void CommandInformationTalbeCommandsTest::conversion_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("converted");
    QTest::addColumn<int>("dataType");
    QTest::addColumn<int>("index");
    QTest::newRow("a relay in an aligned group") << "M37"
                                                 << "D32" << 3 << int(DoubleWordRow);
    QTest::newRow("the first relay of a group") << "M16"
                                                << "D16" << 3 << int(DoubleWordRow);
    QTest::newRow("a bit of a word") << "D100.5"
                                     << "D100" << 3 << int(DoubleWordRow);
    QTest::newRow("a station stays") << "2-D100.5"
                                     << "2-D100" << 3 << int(DoubleWordRow);
    QTest::newRow("a station that is no number becomes 0") << "x-D100.5"
                                                           << "0-D100" << 3 << int(DoubleWordRow);
    QTest::newRow("a second dash: the rest is dropped") << "2-D100.5-9"
                                                        << "2-D100" << 3 << int(DoubleWordRow);
    QTest::newRow("leading zeros of a split address stay") << "D0100.5"
                                                           << "D0100" << 3 << int(DoubleWordRow);
    QTest::newRow("the last bit of the register") << "B1.15"
                                                  << "E1" << 2 << int(NarrowRow);
    QTest::newRow("a bit just beyond the register passes") << "B1.16"
                                                           << "E1" << 2 << int(NarrowRow);
    QTest::newRow("a byte register") << "P3.7"
                                     << "P3" << 1 << int(ByteFirstRow);
    QTest::newRow("a bit just beyond a byte passes") << "P3.8"
                                                     << "P3" << 1 << int(ByteFirstRow);
}

void CommandInformationTalbeCommandsTest::conversion()
{
    QFETCH(QString, address);
    QFETCH(QString, converted);
    QFETCH(int, dataType);
    QFETCH(int, index);
    int typeIndex = 77;
    QString convertedAddress = QStringLiteral("before");
    const LogRecorder log;
    const CommunicatorCommand made =
        m_conversionTable.convertBitCommandToRegisterCommand(command(address, 0), typeIndex, convertedAddress);
    QCOMPARE(made.address, converted);
    QCOMPARE(int(made.dataType), dataType);
    QCOMPARE(typeIndex, index);
    QCOMPARE(convertedAddress, converted);
    QCOMPARE(log.lines(), QStringList());
}

void CommandInformationTalbeCommandsTest::aConvertedCommandKeepsNothingOfTheBitCommand()
{
    int typeIndex = -1;
    QString convertedAddress;
    const CommunicatorCommand made = m_conversionTable.convertBitCommandToRegisterCommand(
        marked(QStringLiteral("M37"), 0), typeIndex, convertedAddress);
    QCOMPARE(made.stringKey(), QStringLiteral("D32_3_1"));
    QCOMPARE(made.scanTime, 1);
    QCOMPARE(made.auxiliaryNumber, 0);
    QCOMPARE(made.auxiliaryText, QString());
    QCOMPARE(made.auxiliaryFlag, false);
}

void CommandInformationTalbeCommandsTest::failedConversion_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("convertedAddress");
    QTest::addColumn<QStringList>("lines");
    const QString told = QStringLiteral("convertBitCommandToRegisterCommand ");
    QTest::newRow("no row accepts the bit")
        << "X1" << 77 << "before" << QStringList{"\"No match address (X1) in specific type (0)\""};
    QTest::newRow("only a register row accepts the address")
        << "D100" << 77 << "before" << QStringList{"\"No match address (D100) in specific type (0)\""};
    QTest::newRow("the message tells the station")
        << "4-X1" << 77 << "before" << QStringList{"\"No match address (4-X1) in specific type (0)\""};
    QTest::newRow("a place holder in the address stays text")
        << "X%2" << 77 << "before" << QStringList{"\"No match address (X%2) in specific type (0)\""};
    QTest::newRow("the empty address") << "" << 77 << "before"
                                       << QStringList{"\"No match address () in specific type (0)\""};
    QTest::newRow("no row accepts the register")
        << "L5" << -1 << "L" << QStringList{told + "\"ERROR: L cant not match any type. \""};
    QTest::newRow("no row accepts the register of a station")
        << "2-L5" << -1 << "2-L" << QStringList{told + "\"ERROR: 2-L cant not match any type. \""};
    QTest::newRow("a bit row without a rule has no number")
        << "K5" << -1 << "K"
        << QStringList{"onePartBitOffset base error  \"5\"",
                       "convertedRegisterTypeCommandRange Convert range string to number fail \"K5\"",
                       told + "\"ERROR: K cant not match any type. \""};
    QTest::newRow("the register is too narrow")
        << "B1.17" << int(NarrowRow) << "E1"
        << QStringList{told + "\"ERROR: [B1.17] bit offset(17) is bigger than converted command [E1] datasize(16).\""};
    QTest::newRow("the register of a station is too narrow")
        << "6-B1.31" << int(NarrowRow) << "6-E1"
        << QStringList{told +
                       "\"ERROR: [6-B1.31] bit offset(31) is bigger than converted command [6-E1] datasize(16).\""};
}

void CommandInformationTalbeCommandsTest::failedConversion()
{
    QFETCH(QString, address);
    QFETCH(int, index);
    QFETCH(QStringList, lines);
    QFETCH(QString, convertedAddress);
    int typeIndex = 77;
    QString address2 = QStringLiteral("before");
    const LogRecorder log;
    const CommunicatorCommand made =
        m_conversionTable.convertBitCommandToRegisterCommand(marked(address, 0), typeIndex, address2);
    QCOMPARE(made.stringKey(), nullKey);
    QVERIFY(isNullCommand(made));
    QCOMPARE(typeIndex, index);
    QCOMPARE(address2, convertedAddress);
    QCOMPARE(log.lines(), lines);
}

void CommandInformationTalbeCommandsTest::aCommandThatIsNoBitIsToldApartFirst_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("dataType");
    QTest::newRow("a word") << "D100" << 2;
    QTest::newRow("a bit address under a word type") << "D100.5" << 2;
    QTest::newRow("an address of no row") << "X1" << 3;
    QTest::newRow("an odd type") << "D100.5" << -1;
}

void CommandInformationTalbeCommandsTest::aCommandThatIsNoBitIsToldApartFirst()
{
    QFETCH(QString, address);
    QFETCH(int, dataType);
    int typeIndex = 77;
    QString convertedAddress = QStringLiteral("before");
    const LogRecorder log;
    QVERIFY(isNullCommand(
        m_conversionTable.convertBitCommandToRegisterCommand(command(address, dataType), typeIndex, convertedAddress)));
    QCOMPARE(typeIndex, 77);
    QCOMPARE(convertedAddress, QStringLiteral("before"));
    QCOMPARE(
        log.lines(),
        QStringList{"CommandInformationTalbe::convertBitCommandToRegisterCommand -- Argument cmd is not bit type"});
}

QTEST_GUILESS_MAIN(CommandInformationTalbeCommandsTest)

#include "tst_commandinformationtalbe_commands.moc"
