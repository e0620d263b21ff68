// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/commandformatter.h"
#include "zelmar_label/label_table/labelloader.h"

#include "support/badinput.h"
#include "support/labelfixtures.h"
#include "support/logrecorder.h"

#include <QtTest>

#include <limits>

/// Tests any number in an argument of a command: nothing throws, hangs or reads out of bounds. Most useful with the
/// address and undefined-behaviour sanitizers.
class TestBadCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void counts_data();
    void counts();
    void longRunsEndAtTheLimits();
    void lengths_data();
    void lengths();
    void blocks_data();
    void blocks();
    void wrongTypeIndexes_data();
    void wrongTypeIndexes();
    void extremeCarries();
    void extremeRegisterNumbers();
    void stationNumbers_data();
    void stationNumbers();
};

void TestBadCommands::counts_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("step");
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QStringList>("bits");

    QTest::newRow("none") << 0 << 1 << QStringList() << QStringList();
    QTest::newRow("a negative count") << -1 << 1 << QStringList() << QStringList();
    QTest::newRow("the lowest count") << lowest << 1 << QStringList() << QStringList();
    QTest::newRow("one at the widest step") << 1 << highest << QStringList{"D100"} << QStringList{"D100.5"};
    QTest::newRow("one at the widest step downwards") << 1 << lowest << QStringList{"D100"} << QStringList{"D100.5"};
    QTest::newRow("no step repeats the address")
        << 2 << 0 << QStringList{"D100", "D100"} << QStringList{"D100.5", "D100.5"};
}

void TestBadCommands::counts()
{
    QFETCH(int, count);
    QFETCH(int, step);
    QFETCH(QStringList, words);
    QFETCH(QStringList, bits);

    const LogRecorder log;
    Row bitRow;
    bitRow.pattern = QStringLiteral("(D)(\\d+\\.[0-9a-f])");
    bitRow.type = 0;
    bitRow.multipleRule = QStringLiteral("dot-f:r");
    for (const bool checkRange : {true, false}) {
        QCOMPARE(addresses(Row().formatter().makeContinueCommandwithCap(command("D100", 2), count, step, checkRange)),
                 words);
        QCOMPARE(addresses(bitRow.formatter().makeBitContinueCommand(command("D100.5", 0), count, step, checkRange)),
                 bits);
    }
}

void TestBadCommands::longRunsEndAtTheLimits()
{
    const LogRecorder log;
    const label::CommandFormatter row = Row().formatter();
    const CommunicatorCommand word = command(QStringLiteral("D9998"), 2);
    const QStringList upwards = {QStringLiteral("D9998"), QStringLiteral("D9999")};
    QCOMPARE(addresses(row.makeContinueCommand(word, highest)), upwards);
    QCOMPARE(addresses(row.makeContinueCommandwithCap(word, highest, 1, true)), upwards);
    const QStringList downwards = {QStringLiteral("D1"), QStringLiteral("D0")};
    QCOMPARE(addresses(row.makeContinueCommandwithCap(command(QStringLiteral("D1"), 2), highest, -1, true)), downwards);

    Row onePart;
    onePart.type = 0;
    onePart.multipleRule = QStringLiteral("union-dec:r");
    QCOMPARE(
        addresses(onePart.formatter().makeBitContinueCommand(command(QStringLiteral("D9998"), 0), highest, 1, true)),
        upwards);

    CommunicatorCommand text = command(QStringLiteral("D9998"), 5, 4000000000u);
    QCOMPARE(addresses(row.autoCompleteCommand(text)), upwards);
}

void TestBadCommands::lengths_data()
{
    QTest::addColumn<quint64>("length");
    QTest::addColumn<int>("pieces");

    QTest::newRow("none") << quint64(0) << 1;
    QTest::newRow("the limits end it") << quint64(1000000) << 10;
    QTest::newRow("the last count that is an int") << quint64(4294967292u) << 10;
    QTest::newRow("a count beyond int is none") << quint64(4294967295u) << 0;
    QTest::newRow("the highest length") << std::numeric_limits<quint64>::max() << 0;
}

void TestBadCommands::lengths()
{
    QFETCH(quint64, length);
    QFETCH(int, pieces);

    const LogRecorder log;
    const label::CommandFormatter row = Row().formatter();
    QCOMPARE(row.autoCompleteCommand(command(QStringLiteral("D9990"), 5, length)).size(), pieces);
}

void TestBadCommands::blocks_data()
{
    QTest::addColumn<int>("blocksize");
    QTest::addColumn<int>("dataSize");
    QTest::addColumn<QString>("rule");
    QTest::addColumn<int>("length");
    QTest::addColumn<QStringList>("blocks");

    QTest::newRow("a block of no units") << 0 << 2 << "" << 100 << QStringList();
    QTest::newRow("a negative block") << -1 << 2 << "" << 100 << QStringList();
    QTest::newRow("the lowest block") << lowest << 2 << "" << 100 << QStringList();
    QTest::newRow("aligned units of no bytes") << 64 << 0 << "m16" << 100 << QStringList();
    QTest::newRow("the highest block holds the longest run")
        << highest << 2 << "" << highest << QStringList{"D16 2 2147483647"};
    QTest::newRow("the highest block on an aligned row")
        << highest << 2 << "m16" << highest << QStringList{"D16 2 134217728"};
    QTest::newRow("the highest block of the widest units")
        << highest << highest << "m16" << 100 << QStringList{"D16 2 1"};
    QTest::newRow("a run of no length") << 64 << 2 << "" << 0 << QStringList();
    QTest::newRow("a run of negative length") << 64 << 2 << "" << lowest << QStringList();
    QTest::newRow("blocks of half the numbers")
        << 1073741824 << 2 << "" << highest << QStringList{"D16 2 1073741824", "D1073741840 2 1073741823"};
}

void TestBadCommands::blocks()
{
    QFETCH(int, blocksize);
    QFETCH(int, dataSize);
    QFETCH(QString, rule);
    QFETCH(int, length);
    QFETCH(QStringList, blocks);

    Row row;
    row.blocksize = blocksize;
    row.dataSize = dataSize;
    row.multipleRule = rule;
    const LogRecorder log;
    label::CommandInformationTalbe table;
    table.addCommandFormatter(row.formatter());
    QCOMPARE(shortForms(table.makeBlockCommand(-1, 0, 16, length)), blocks);
    for (const int start : {lowest, -1, highest})
        QCOMPARE(table.makeBlockCommand(lowest, 0, start, length).size(), blocks.size());
}

void TestBadCommands::wrongTypeIndexes_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("index");

    for (const int index : {-1, 2, 1000000, lowest, highest})
        QTest::addRow("row %d of two", index) << 2 << index;
    for (const int index : {-1, 0, 1000000, lowest, highest})
        QTest::addRow("row %d of an empty table", index) << 0 << index;
}

void TestBadCommands::wrongTypeIndexes()
{
    QFETCH(int, rows);
    QFETCH(int, index);

    LogRecorder log;
    label::CommandInformationTalbe table;
    for (int i = 0; i < rows; ++i)
        table.addCommandFormatter(Row().formatter());
    label::LabelLoader label(table);
    const CommunicatorCommand asked = command(QStringLiteral("D100"), 2);
    const QString number = QString::number(index);
    const auto line = [&number](const char *text) {
        return QStringList{QLatin1String(text) + QLatin1Char(' ') + number};
    };
    log.take();

    QCOMPARE(label.base(index), 10);
    QCOMPARE(label.getPrefixSymbolByTypeID(index), QString());
    QCOMPARE(label.getEditUsedPrifixSymbolByTypeId(index), QString());
    QCOMPARE(label.getFormatString(index), QString());
    QCOMPARE(label.needOptimize(index), true);
    QCOMPARE(label.isTypeNeedAlignmentByte(index), false);
    QCOMPARE(label.alignmentSize(index), 1);
    QCOMPARE(label.deviceTypesTable().isSemenseSepcialType(index), false);
    QVERIFY(!label.deviceTypesTable().formatterAt(index));
    QCOMPARE(label.deviceTypesTable().getFormatterAtIndex(index).pattern(), QString());
    QCOMPARE(log.take(), QStringList());

    QCOMPARE(label.datatype(index), -1);
    QCOMPARE(log.take(), line("CommandInformationTalbe::datatype wrong type_index "));
    QCOMPARE(label.blocksize(index), -1);
    QCOMPARE(log.take(), line("CommandInformationTalbe::blocksize wrong type_index "));
    QCOMPARE(label.datasize(index), -1);
    QCOMPARE(log.take(), line("CommandInformationTalbe:: datasize  wrong type_index "));
    QCOMPARE(label.addressRange(index, asked.address), -1);
    QCOMPARE(log.take(), line("CommandInformationTalbe:: addressRange  wrong type_index "));
    QCOMPARE(label.bitOffset(index, asked.address), -1);
    QCOMPARE(log.take(), line("CommandInformationTalbe::bitOffset wrong type_index "));
    QCOMPARE(label.canConvertToRegisterCommand(index), false);
    QCOMPARE(log.take(), line("CommandInformationTalbe::canConvertRegisterCommand wrong type_index "));
    QCOMPARE(label.isMustContinue(index), false);
    QCOMPARE(log.take(), line("CommandInformationTalbe::continueRule wrong type_index "));
    QVERIFY(label.normalizeCommand(index, asked).isEmpty());
    QCOMPARE(log.take(), line("CommandInformationTalbe::autoCompleteCommand wrong type_index "));
    QVERIFY(label.makeContinueCommand(index, asked, 3).isEmpty());
    QCOMPARE(log.take(), line("CommandInformationTalbe::makeContinueCommand wrong type_index "));
    QVERIFY(label.makeContinueCommandwithCap(index, asked, 3, 1, true).isEmpty());
    QCOMPARE(log.take(), line("CommandInformationTalbe::makeContinueCommand wrong type_index "));
    QVERIFY(label.makeBlockCommand(-1, index, 0, 10).isEmpty());
    QCOMPARE(log.take().last(), line("CommandInformationTalbe::makeBlockCommand wrong type_index ").first());
    QCOMPARE(label.makeBlockCommandWithoutSizeLimit(-1, index, 0, 10).address, QStringLiteral("S>NULL"));
    QCOMPARE(log.take(), line("CommandInformationTalbe::makeBlockCommand wrong type_index "));
    QCOMPARE(label.calculateOffsetByte(index, asked, asked), -1);
    QCOMPARE(log.take(), line("CommandInformationTalbe:: datasize  wrong type_index "));
    QCOMPARE(label.isCommandInBlockRange(index, asked, asked), false);
    QCOMPARE(log.take(), line("CommandInformationTalbe:: addressRange  wrong type_index "));

    // The conversion only writes to the row argument.
    int row = index;
    QCOMPARE(label.convertBitCommandToRegisterCommand(asked, row).address, QStringLiteral("S>NULL"));
    QCOMPARE(row, index);

    // Lookups take any filter but -1 and 0 for register rows, and lists by type give what has exactly that type.
    QCOMPARE(label.addressValidation(asked.address, index), rows > 0 && index != 0 ? 0 : -1);
    QCOMPARE(label.getAllMatchedIndex(asked.address, index).size(), index != 0 ? rows : 0);
    QCOMPARE(label.getAllMatchedSymbol(QStringLiteral("D"), index).size(), index != 0 ? rows : 0);
    QCOMPARE(label.getCatchTableName(asked.address, index), QString());
    const auto type = static_cast<label::Type>(index);
    QCOMPARE(label.prefixSymbolsByType(type).size(), index == 2 ? rows : 0);
    QCOMPARE(label.commandFormatsByType(type).size(), index == 2 ? rows : 0);
    QCOMPARE(label.countType(index), rows);
    QCOMPARE(label.countBitTypes(), rows);
    QCOMPARE(label.countRegisterTypes(), rows);
}

void TestBadCommands::extremeCarries()
{
    const LogRecorder log;
    for (const char *rule : {"dot-dec:r", "dot-31:r", "dot-f:r", "last2-hex:r", "union-oct:r", ""}) {
        Row row;
        row.type = 0;
        row.multipleRule = QLatin1String(rule);
        const label::CommandFormatter formatter = row.formatter();
        for (const int radix : {10, 16, 8, 2, 36, 32, 0, 1, 37, -1, lowest, highest}) {
            for (const int bit : {0, -1, 31, lowest, highest}) {
                int word = highest;
                int carried = bit;
                formatter.bitOffsetCarry(word, carried, radix);
                QVERIFY(bit != 0 || (word == highest && carried == 0));
            }
        }
    }
    Row row;
    row.type = 0;
    row.multipleRule = QStringLiteral("dot-dec:r");
    int word = highest;
    int bit = 17;
    row.formatter().bitOffsetCarry(word, bit, 10);
    QCOMPARE(word, lowest);
    QCOMPARE(bit, 1);
}

void TestBadCommands::extremeRegisterNumbers()
{
    const LogRecorder log;
    for (const char *rule : {"union-dec:rm8", "union-dec:rm8a1", "union-dec:rm16", "union-dec:rm16a1"}) {
        Row row;
        row.pattern = QStringLiteral("(D)(.*)");
        row.type = 0;
        row.multipleRule = QLatin1String(rule);
        const label::CommandFormatter formatter = row.formatter();
        for (const int number : {lowest, -1, 0, highest}) {
            const QString address = QLatin1Char('D') + QString::number(number);
            bool isNumber = false;
            formatter.convertedRagisterCommandRange(address).toInt(&isNumber);
            QVERIFY(isNumber);
            QVERIFY(qAbs(formatter.getbitOffset(address)) < 16);
        }
    }
    Row row;
    row.pattern = QStringLiteral("(D)(.*)");
    row.multipleRule = QStringLiteral("union-dec:rm16");
    row.type = 0;
    QCOMPARE(row.formatter().convertedRagisterCommandRange(QStringLiteral("D2147483647")),
             QStringLiteral("2147483632"));
    QCOMPARE(row.formatter().convertedRagisterCommandRange(QStringLiteral("D-2147483648")),
             QStringLiteral("-2147483648"));
}

void TestBadCommands::stationNumbers_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("next");

    QTest::newRow("a station that is no number is 0") << "x-D100"
                                                      << "0-D101";
    QTest::newRow("no station before the dash is 0") << "-D100"
                                                     << "0-D101";
    QTest::newRow("a station beyond int is 0") << "99999999999-D100"
                                               << "0-D101";
    QTest::newRow("a station of 100,000 digits is 0") << QString(QString(100000, '7') + "-D100") << "0-D101";
    QTest::newRow("what stands behind a second dash is dropped") << "7-D100-5"
                                                                 << "7-D101";
    QTest::newRow("a NUL character in the station")
        << QString(QStringLiteral("3") + QChar() + QStringLiteral("-D100")) << "0-D101";
}

void TestBadCommands::stationNumbers()
{
    QFETCH(QString, address);
    QFETCH(QString, next);

    const LogRecorder log;
    const label::CommandFormatter row = Row().formatter();
    QVERIFY(row.isAddressValid(address));
    QCOMPARE(row.matchedLength(address), address.size());
    QCOMPARE(row.makeContinueCommand(command(address, 2), 2).value(1).address, next);
    for (const int station : {0, -2, lowest, highest})
        QCOMPARE(row.addStationID(station, command(address, 2)).address, QString(QString::number(station) + "-D100"));
}

QTEST_GUILESS_MAIN(TestBadCommands)

#include "tst_badinput_commands.moc"
