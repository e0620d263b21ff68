// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"

#include <QtTest>

#include <limits>

Q_DECLARE_METATYPE(Row)

namespace {

const QString s_limitsMessage = QStringLiteral("isRangeValid CommandFormatter isRangeValid data error");

/// A bit row whose range strings match `range`.
Row bitRow(const QString &rule, const QString &range = QStringLiteral("\\d+\\.[0-9a-f]+"), int base = 10)
{
    Row row;
    row.pattern = QStringLiteral("(M)(%1)").arg(range);
    row.type = 0;
    row.prefixSymbol = QStringLiteral("M");
    row.multipleRule = rule;
    row.base = base;
    row.end = base == 8 ? QStringLiteral("7777") : QStringLiteral("9999");
    return row;
}

Row onePartRow(const QString &rule, int base = 10)
{
    return bitRow(rule, base == 16 ? QStringLiteral("[0-9A-Fa-f]+") : QStringLiteral("\\d+"), base);
}

Row limited(Row row, const QString &start, const QString &end)
{
    row.start = start;
    row.end = end;
    return row;
}

Row withGroup(Row row, const QString &pattern, int group)
{
    row.pattern = pattern;
    row.addressGroupIndex = group;
    return row;
}

CommunicatorCommand peculiar(const QString &address, int dataType, quint64 length)
{
    CommunicatorCommand made = command(address, dataType, length);
    made.scanTime = 7;
    made.auxiliaryNumber = -1;
    made.auxiliaryText = QStringLiteral("text");
    made.auxiliaryFlag = true;
    return made;
}

/// All seven fields.
QString fullForm(const CommunicatorCommand &one)
{
    return QStringLiteral("%1 type %2 length %3 scan %4 number %5 text '%6' flag %7")
        .arg(one.address)
        .arg(int(one.dataType))
        .arg(one.length)
        .arg(one.scanTime)
        .arg(one.auxiliaryNumber)
        .arg(one.auxiliaryText)
        .arg(one.auxiliaryFlag);
}

} // namespace

class TestCommandFormatterBits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bitContinuation_data();
    void bitContinuation();
    void bitsOfAPlainRuleCountFromMinusOne();
    void bitsOfAForeignAddressCountFromMinusOne();
    void continuedBitsAreFresh();
    void unreadableLimitsAreReportedForEachBit();
    void onePartBit_data();
    void onePartBit();
    void twoPartBit_data();
    void twoPartBit();
    void bitsAreAppended();
    void block_data();
    void block();
    void blockOfAChangedSymbol();

    void registerAddress_data();
    void registerAddress();
    void registerSymbol_data();
    void registerSymbol();
    void registerRange_data();
    void registerRange();
};

void TestCommandFormatterBits::bitContinuation_data()
{
    QTest::addColumn<Row>("row");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("step");
    QTest::addColumn<bool>("checkRange");
    QTest::addColumn<QStringList>("run");

    const Row hex = bitRow("dot-f:r");
    QTest::newRow("a hexadecimal bit carries behind f")
        << hex << "M100.e" << 3 << 1 << true << QStringList{"M100.e", "M100.f", "M101.0"};
    QTest::newRow("a decimal bit carries at 16")
        << bitRow("dot-dec:r") << "M100.14" << 3 << 1 << true << QStringList{"M100.14", "M100.15", "M101.0"};
    QTest::newRow("a decimal bit passes 9")
        << bitRow("dot-dec:r") << "M100.8" << 3 << 1 << true << QStringList{"M100.8", "M100.9", "M100.10"};
    QTest::newRow("the word 15 is decimal too")
        << bitRow("dot-15:r") << "M100.14" << 3 << 1 << true << QStringList{"M100.14", "M100.15", "M101.0"};
    QTest::newRow("an octal bit carries behind 7")
        << bitRow("dot-oct:r") << "M100.6" << 3 << 1 << true << QStringList{"M100.6", "M100.7", "M101.0"};
    QTest::newRow("a bit from 0 to 31 is written in decimal and carries at 32")
        << bitRow("dot-31:r") << "M100.30" << 3 << 1 << true << QStringList{"M100.30", "M100.31", "M101.0"};
    QTest::newRow("a bit from 0 to 31 passes 15")
        << bitRow("dot-31:r") << "M100.15" << 2 << 1 << true << QStringList{"M100.15", "M100.16"};
    QTest::newRow("two decimal digits are padded, without a separator")
        << onePartRow("last2-dec:r") << "M10014" << 3 << 1 << true << QStringList{"M10014", "M10015", "M10100"};
    QTest::newRow("two octal digits hold 77 before they carry")
        << onePartRow("last2-oct:r") << "M10007" << 2 << 1 << true << QStringList{"M10007", "M10010"};
    QTest::newRow("one hexadecimal digit without a separator")
        << bitRow("last1-hex:r", "[0-9a-f]+") << "M10f" << 2 << 1 << true << QStringList{"M10f", "M110"};
    QTest::newRow("a slash stands between word and bit")
        << bitRow("slash-dec:n", "\\d+/\\d+") << "M7/15" << 2 << 1 << true << QStringList{"M7/15", "M8/0"};
    QTest::newRow("a member name stands between word and bit")
        << bitRow("dotpreslash-dec:r", "\\d+\\.pre/\\d+") << "M7.pre/1" << 2 << 1 << true
        << QStringList{"M7.pre/1", "M7.pre/2"};
    QTest::newRow("a member name in capitals hides the bit, and comes out in lower case")
        << bitRow("dotaccslash-dec:r", "\\d+\\.ACC/\\d+") << "M7.ACC/1" << 2 << 1 << false
        << QStringList{"M7.acc/-1", "M7.acc/0"};
    QTest::newRow("a bit that counts from 1 in groups of bits goes on from the group's first")
        << onePartRow("last2-fam3:rfam3") << "M00105" << 2 << 1 << true << QStringList{"M10104", "M10105"};

    QTest::newRow("a one-part octal number")
        << onePartRow("union-oct:r", 8) << "M17" << 3 << 1 << true << QStringList{"M17", "M20", "M21"};
    QTest::newRow("a one-part hexadecimal number")
        << onePartRow("nosep-hex:r", 16) << "M0E" << 3 << 1 << true << QStringList{"Me", "Mf", "M10"};
    QTest::newRow("a one-part number is not aligned")
        << onePartRow("union-dec:rm16_D") << "M37" << 2 << 1 << true << QStringList{"M37", "M38"};
    QTest::newRow("one-part numbers beyond the end are left out")
        << limited(onePartRow("union-dec:r"), "0", "8") << "M7" << 4 << 1 << true << QStringList{"M7", "M8"};
    QTest::newRow("one-part numbers enter at the start")
        << limited(onePartRow("union-dec:r"), "10", "20") << "M7" << 5 << 2 << true << QStringList{"M11", "M13", "M15"};
    QTest::newRow("one-part numbers run down into the limits")
        << limited(onePartRow("union-dec:r"), "0", "8") << "M10" << 4 << -1 << true << QStringList{"M8", "M7"};
    QTest::newRow("one-part numbers beyond the end are made unchecked")
        << limited(onePartRow("union-dec:r"), "0", "8") << "M8" << 2 << 1 << false << QStringList{"M8", "M9"};
    QTest::newRow("a one-part number that cannot be read counts from -1")
        << onePartRow("union-dec:r") << "M99999999999" << 2 << 1 << true << QStringList{"M0"};

    QTest::newRow("a step over a letter carries what is decimal")
        << hex << "M100.e" << 2 << 3 << true << QStringList{"M100.e", "M101.1"};
    QTest::newRow("a step that lands on 1a loses the bit")
        << hex << "M100.e" << 2 << 12 << true << QStringList{"M100.e", "M101.0"};
    QTest::newRow("a step of 0 repeats the bit")
        << hex << "M100.3" << 3 << 0 << true << QStringList{"M100.3", "M100.3", "M100.3"};
    QTest::newRow("a decimal step of two words")
        << bitRow("dot-dec:r") << "M100.1" << 2 << 32 << true << QStringList{"M100.1", "M102.1"};
    QTest::newRow("a negative step within the word")
        << hex << "M100.2" << 3 << -1 << true << QStringList{"M100.2", "M100.1", "M100.0"};
    QTest::newRow("decimal bits below 0 are left out by the check")
        << bitRow("dot-dec:r") << "M100.1" << 4 << -1 << true << QStringList{"M100.1", "M100.0"};
    QTest::newRow("decimal bits below 0 are made unchecked")
        << bitRow("dot-dec:r") << "M100.0" << 2 << -1 << false << QStringList{"M100.0", "M100.-1"};

    QTest::newRow("a word beyond the end passes the check")
        << limited(hex, "0", "99") << "M99.f" << 2 << 1 << true << QStringList{"M99.f", "M100.0"};
    QTest::newRow("the limits hold for the bit")
        << limited(hex, "0", "9") << "M5.8" << 4 << 1 << true << QStringList{"M5.8", "M5.9"};
    QTest::newRow("left-out bits go on counting")
        << limited(hex, "0", "9") << "M5.e" << 4 << 1 << true << QStringList{"M6.0", "M6.1"};
    QTest::newRow("unchecked bits beyond the limits")
        << limited(hex, "0", "9") << "M5.9" << 2 << 1 << false << QStringList{"M5.9", "M5.a"};

    QTest::newRow("leading zeros of the word are lost")
        << hex << "M0100.0" << 2 << 1 << true << QStringList{"M100.0", "M100.1"};
    QTest::newRow("a bit in capitals comes out in lower case")
        << bitRow("dot-f:r", "\\d+\\.[0-9A-F]") << "M1.A" << 2 << 1 << true << QStringList{"M1.a", "M1.b"};
    QTest::newRow("a word in radix 16") << limited(bitRow("dot-oct:r", "[0-9A-F]+\\.[0-7]", 16), "0", "FF") << "M1F.7"
                                        << 2 << 1 << true << QStringList{"M1f.7", "M20.0"};
    QTest::newRow("text behind the bit is dropped") << withGroup(bitRow("dot-f:r"), "(M)(\\d+\\.[0-9a-f])(Z)", 2)
                                                    << "M1.1Z" << 2 << 1 << true << QStringList{"M1.1", "M1.2"};
    QTest::newRow("no exact match is needed") << hex << "M1.1:x" << 2 << 1 << true << QStringList{"M1.1", "M1.2"};
    QTest::newRow("no pass") << hex << "M1.1" << 0 << 1 << true << QStringList();
    QTest::newRow("a negative count") << hex << "M1.1" << -1 << 1 << true << QStringList();
    QTest::newRow("no pass on a one-part row") << onePartRow("union-dec:r") << "M1" << 0 << 1 << false << QStringList();

    const Row block = withGroup(bitRow("dot-oct:r"), "(DB12\\.DBX)(\\d+\\.[0-7])", 2);
    QTest::newRow("a long prefix") << block << "DB12.DBX10.7" << 2 << 1 << true
                                   << QStringList{"DB12.DBX10.7", "DB12.DBX11.0"};
    QTest::newRow("a station moves the cut of the prefix")
        << hex << "2-M100.3" << 2 << 1 << true << QStringList{"2-2100.3", "2-2100.4"};
    QTest::newRow("a station moves the cut of a one-part prefix")
        << onePartRow("union-dec:r") << "2-M100" << 2 << 1 << true << QStringList{"2-2100", "2-2101"};
    QTest::newRow("a station moves the cut of a long prefix")
        << block << "3-DB12.DBX10.3" << 2 << 1 << true << QStringList{"3-DB12.D10.3", "3-DB12.D10.4"};
    QTest::newRow("a long station is all of the prefix")
        << hex << "12-M100.3" << 2 << 1 << true << QStringList{"12-1100.3", "12-1100.4"};
}

void TestCommandFormatterBits::bitContinuation()
{
    QFETCH(Row, row);
    QFETCH(QString, address);
    QFETCH(int, count);
    QFETCH(int, step);
    QFETCH(bool, checkRange);
    QFETCH(QStringList, run);
    const label::CommandFormatter formatter = row.formatter();
    const LogRecorder log;
    QCOMPARE(addresses(formatter.makeBitContinueCommand(command(address, 0), count, step, checkRange)), run);
    QCOMPARE(log.lines(), QStringList());
}

void TestCommandFormatterBits::bitsOfAPlainRuleCountFromMinusOne()
{
    const label::CommandFormatter formatter = onePartRow("m8").formatter();
    const QStringList reported{"onePartBitOffset base error  \"100\""};
    LogRecorder log;
    QCOMPARE(addresses(formatter.makeBitContinueCommand(command("M100", 0), 3, 1, false)),
             QStringList({"M-1.ffffffffffffffff", "M-1.0", "M-1.1"}));
    QCOMPARE(log.take(), reported);
    QCOMPARE(addresses(formatter.makeBitContinueCommand(command("M100", 0), 3, 1, true)),
             QStringList({"M-1.0", "M-1.1"}));
    QCOMPARE(log.take(), reported);
}

void TestCommandFormatterBits::bitsOfAForeignAddressCountFromMinusOne()
{
    const label::CommandFormatter formatter = bitRow("dot-dec:r").formatter();
    const LogRecorder log;
    const QStringList run = addresses(formatter.makeBitContinueCommand(command("X5", 0), 3, 1, true));
    QCOMPARE(run.size(), 2);
    QVERIFY2(run.at(0).endsWith("-1.0"), qPrintable(run.at(0)));
    QVERIFY2(run.at(1).endsWith("-1.1"), qPrintable(run.at(1)));
    QCOMPARE(log.lines(), QStringList());
}

void TestCommandFormatterBits::continuedBitsAreFresh()
{
    const QString fresh = "M1.1 type 0 length 1 scan 1 number 0 text '' flag 0";
    const label::CommandFormatter twoPart = bitRow("dot-f:r").formatter();
    QCOMPARE(fullForm(twoPart.makeBitContinueCommand(peculiar("M1.1", 3, 9), 1, 1, true).at(0)), fresh);
    const label::CommandFormatter onePart = onePartRow("union-dec:r").formatter();
    QCOMPARE(fullForm(onePart.makeBitContinueCommand(peculiar("M11", 3, 9), 1, 1, true).at(0)),
             QString("M11 type 0 length 1 scan 1 number 0 text '' flag 0"));
}

void TestCommandFormatterBits::unreadableLimitsAreReportedForEachBit()
{
    LogRecorder log;
    const label::CommandFormatter twoPart = limited(bitRow("dot-f:r"), "", "").formatter();
    const label::CommandFormatter onePart = limited(onePartRow("union-dec:r"), "0", "x").formatter();
    log.take();
    QCOMPARE(twoPart.makeBitContinueCommand(command("M1.1", 0), 2, 1, true).size(), 0);
    QCOMPARE(log.take(), QStringList({s_limitsMessage, s_limitsMessage}));
    QCOMPARE(onePart.makeBitContinueCommand(command("M1", 0), 3, 1, true).size(), 0);
    QCOMPARE(log.take(), QStringList({s_limitsMessage, s_limitsMessage, s_limitsMessage}));
    QCOMPARE(onePart.makeBitContinueCommand(command("M1", 0), 3, 1, false).size(), 3);
    QCOMPARE(log.take(), QStringList());
}

void TestCommandFormatterBits::onePartBit_data()
{
    QTest::addColumn<Row>("row");
    QTest::addColumn<QString>("prefix");
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("checkRange");
    QTest::addColumn<int>("station");
    QTest::addColumn<QStringList>("made");

    const Row row = onePartRow("union-dec:r");
    QTest::newRow("no station") << row << "M" << 17 << true << -1 << QStringList{"M17 0 1"};
    QTest::newRow("a station") << row << "M" << 17 << true << 3 << QStringList{"3-M17 0 1"};
    QTest::newRow("station 0") << row << "M" << 17 << true << 0 << QStringList{"0-M17 0 1"};
    QTest::newRow("any other negative number is a station")
        << row << "M" << 17 << true << -2 << QStringList{"-2-M17 0 1"};
    QTest::newRow("the prefix is taken as it is")
        << row << "anything " << 17 << true << -1 << QStringList{"anything 17 0 1"};
    QTest::newRow("a station in the prefix is replaced") << row << "7-M" << 17 << true << 3 << QStringList{"3-M17 0 1"};
    QTest::newRow("a station in the prefix stays without another")
        << row << "7-M" << 17 << true << -1 << QStringList{"7-M17 0 1"};
    QTest::newRow("beyond the end") << row << "M" << 10000 << true << -1 << QStringList();
    QTest::newRow("beyond the end, unchecked") << row << "M" << 10000 << false << -1 << QStringList{"M10000 0 1"};
    QTest::newRow("below 0, unchecked") << row << "M" << -5 << false << -1 << QStringList{"M-5 0 1"};
    QTest::newRow("the row's radix") << onePartRow("union-oct:r", 8) << "M" << 16 << true << -1
                                     << QStringList{"M20 0 1"};
    QTest::newRow("radix 16 in lower case")
        << onePartRow("union-hex:r", 16) << "M" << 255 << true << -1 << QStringList{"Mff 0 1"};
    QTest::newRow("a register row gives its type") << Row() << "D" << 5 << true << -1 << QStringList{"D5 2 1"};
    QTest::newRow("a two-part row writes the number alone")
        << bitRow("dot-f:r") << "M" << 5 << true << -1 << QStringList{"M5 0 1"};
}

void TestCommandFormatterBits::onePartBit()
{
    QFETCH(Row, row);
    QFETCH(QString, prefix);
    QFETCH(int, value);
    QFETCH(bool, checkRange);
    QFETCH(int, station);
    QFETCH(QStringList, made);
    QList<CommunicatorCommand> list;
    row.formatter().makeOnePartBitCommands(list, prefix, value, checkRange, station);
    QCOMPARE(shortForms(list), made);
}

void TestCommandFormatterBits::twoPartBit_data()
{
    QTest::addColumn<Row>("row");
    QTest::addColumn<int>("word");
    QTest::addColumn<int>("bit");
    QTest::addColumn<int>("radix");
    QTest::addColumn<QString>("separator");
    QTest::addColumn<bool>("checkRange");
    QTest::addColumn<int>("station");
    QTest::addColumn<QStringList>("made");

    const Row row = bitRow("dot-f:r");
    const Row two = onePartRow("last2-dec:r");
    QTest::newRow("a hexadecimal bit") << row << 100 << 14 << 16 << "." << true << -1 << QStringList{"M100.e 0 1"};
    QTest::newRow("the radix is the caller's")
        << row << 100 << 14 << 8 << "." << true << -1 << QStringList{"M100.16 0 1"};
    QTest::newRow("radix 32 is written in decimal")
        << row << 100 << 31 << 32 << "." << true << -1 << QStringList{"M100.31 0 1"};
    QTest::newRow("no radix is written in decimal")
        << row << 100 << 12 << -1 << "." << true << -1 << QStringList{"M100.12 0 1"};
    QTest::newRow("the separator is the caller's")
        << row << 100 << 1 << 16 << "/" << true << -1 << QStringList{"M100/1 0 1"};
    QTest::newRow("two digits are padded") << two << 100 << 5 << 10 << "" << true << -1 << QStringList{"M10005 0 1"};
    QTest::newRow("three digits are not shortened")
        << two << 100 << 123 << 10 << "" << true << -1 << QStringList{"M100123 0 1"};
    QTest::newRow("radix 32 is padded too") << two << 100 << 5 << 32 << "" << true << -1 << QStringList{"M10005 0 1"};
    QTest::newRow("the word has the row's radix") << bitRow("dot-f:r", "[0-9a-f]+\\.[0-9a-f]", 16) << 255 << 10 << 16
                                                  << "." << true << -1 << QStringList{"Mff.a 0 1"};
    QTest::newRow("the check is on the bit")
        << limited(row, "0", "9") << 5 << 10 << 16 << "." << true << -1 << QStringList();
    QTest::newRow("the check is not on the word")
        << limited(row, "0", "9") << 500 << 9 << 16 << "." << true << -1 << QStringList{"M500.9 0 1"};
    QTest::newRow("a bit below the start")
        << limited(row, "4", "9") << 5 << 3 << 16 << "." << true << -1 << QStringList();
    QTest::newRow("a bit beyond the limits, unchecked")
        << limited(row, "0", "9") << 5 << 10 << 16 << "." << false << -1 << QStringList{"M5.a 0 1"};
    QTest::newRow("a station") << row << 100 << 1 << 16 << "." << true << 3 << QStringList{"3-M100.1 0 1"};
    QTest::newRow("any other negative number is a station")
        << row << 100 << 1 << 16 << "." << true << -7 << QStringList{"-7-M100.1 0 1"};
    QTest::newRow("a register row gives its type")
        << Row() << 100 << 1 << 16 << "." << true << -1 << QStringList{"M100.1 2 1"};
}

void TestCommandFormatterBits::twoPartBit()
{
    QFETCH(Row, row);
    QFETCH(int, word);
    QFETCH(int, bit);
    QFETCH(int, radix);
    QFETCH(QString, separator);
    QFETCH(bool, checkRange);
    QFETCH(int, station);
    QFETCH(QStringList, made);
    QList<CommunicatorCommand> list;
    row.formatter().makeTwoPartBitCommands(list, "M", word, bit, radix, separator, checkRange, station);
    QCOMPARE(shortForms(list), made);
}

void TestCommandFormatterBits::bitsAreAppended()
{
    const label::CommandFormatter formatter = bitRow("dot-f:r").formatter();
    QList<CommunicatorCommand> list{peculiar("X", 5, 9)};
    formatter.makeOnePartBitCommands(list, "M", 7, true, 4);
    formatter.makeTwoPartBitCommands(list, "M", 7, 1, 16, ".", true, 4);
    QCOMPARE(list.size(), 3);
    QCOMPARE(fullForm(list.at(0)), QString("X type 5 length 9 scan 7 number -1 text 'text' flag 1"));
    QCOMPARE(fullForm(list.at(1)), QString("4-M7 type 0 length 1 scan 1 number 0 text '' flag 0"));
    QCOMPARE(fullForm(list.at(2)), QString("4-M7.1 type 0 length 1 scan 1 number 0 text '' flag 0"));
}

void TestCommandFormatterBits::block_data()
{
    QTest::addColumn<Row>("row");
    QTest::addColumn<int>("station");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("length");
    QTest::addColumn<QString>("made");

    Row hex;
    hex.base = 16;
    hex.prefixSymbol = "H";
    Row suffixed;
    suffixed.pattern = "(T)(\\d+)(\\.ACC)";
    suffixed.prefixSymbol = "Timer";
    const QString rest = " scan 1 number 0 text '' flag 0";
    QTest::newRow("a station") << Row() << 2 << 100 << 8 << "2-D100 type 2 length 8" + rest;
    QTest::newRow("no station") << Row() << -1 << 100 << 8 << "D100 type 2 length 8" + rest;
    QTest::newRow("station 0") << Row() << 0 << 100 << 8 << "0-D100 type 2 length 8" + rest;
    QTest::newRow("any other negative number is a station")
        << Row() << -2 << 100 << 8 << "-2-D100 type 2 length 8" + rest;
    QTest::newRow("a length of 1 is no block") << Row() << -1 << 100 << 1 << "D100 type 2 length 1" + rest;
    QTest::newRow("a length of 0") << Row() << -1 << 100 << 0 << "D100 type 2 length 0" + rest;
    QTest::newRow("a negative length is extended by its sign")
        << Row() << -1 << 100 << -1 << "D100 type 2 length 18446744073709551615" + rest;
    QTest::newRow("the smallest length") << Row() << -1 << 100 << std::numeric_limits<int>::min()
                                         << "D100 type 2 length 18446744071562067968" + rest;
    QTest::newRow("a length beyond the row's block size") << Row() << -1 << 100 << 65 << "D100 type 2 length 65" + rest;
    QTest::newRow("a number beyond the limits") << Row() << -1 << 123456 << 2 << "D123456 type 2 length 2" + rest;
    QTest::newRow("a number below 0") << Row() << -1 << -5 << 2 << "D-5 type 2 length 2" + rest;
    QTest::newRow("an unaligned number") << [] {
        Row row;
        row.multipleRule = "m16";
        return row;
    }() << -1 << 17 << 2 << "D17 type 2 length 2" + rest;
    QTest::newRow("unreadable limits are not asked")
        << limited(Row(), "", "") << -1 << 17 << 2 << "D17 type 2 length 2" + rest;
    QTest::newRow("the row's radix in lower case") << hex << -1 << 255 << 2 << "Hff type 2 length 2" + rest;
    QTest::newRow("the symbol instead of the address's prefix, and no suffix")
        << suffixed << -1 << 9 << 2 << "Timer9 type 2 length 2" + rest;
    QTest::newRow("a bit row writes the word alone")
        << bitRow("dot-f:r") << 1 << 9 << 32 << "1-M9 type 0 length 32" + rest;
}

void TestCommandFormatterBits::block()
{
    QFETCH(Row, row);
    QFETCH(int, station);
    QFETCH(int, value);
    QFETCH(int, length);
    QFETCH(QString, made);
    const label::CommandFormatter formatter = row.formatter();
    const LogRecorder log;
    QCOMPARE(fullForm(formatter.makeBlockCommand(station, value, length)), made);
    QCOMPARE(log.lines(), QStringList());
}

void TestCommandFormatterBits::blockOfAChangedSymbol()
{
    label::CommandFormatter formatter = Row().formatter();
    formatter.setEditorPrefixSymbol("shown");
    QCOMPARE(formatter.makeBlockCommand(-1, 1, 2).address, QString("D1"));
    formatter.setPrefixSymbol("DB12.DBW");
    QCOMPARE(formatter.makeBlockCommand(3, 1, 2).address, QString("3-DB12.DBW1"));
}

void TestCommandFormatterBits::registerAddress_data()
{
    QTest::addColumn<Row>("row");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("registerAddress");
    QTest::addColumn<int>("bit");

    Row words = bitRow("dot-f:r");
    words.pattern = "(D)(\\d+\\.[0-9a-f])";
    words.prefixSymbol = "D";
    QTest::newRow("the word of a two-part bit, on the row's own symbol") << words << "D100.5"
                                                                         << "D100" << 5;
    QTest::newRow("a station") << words << "2-D100.5"
                               << "2-D100" << -1;
    QTest::newRow("a station is rewritten in decimal") << words << "02-D100.5"
                                                       << "2-D100" << -1;
    QTest::newRow("an empty station is 0") << words << "-D100.5"
                                           << "0-D100" << -1;
    QTest::newRow("leading zeros of the word are kept") << words << "D0100.3"
                                                        << "D0100" << 3;
    QTest::newRow("another symbol for the word") << bitRow("dot-f:r_D") << "M100.5"
                                                 << "D100" << 5;
    QTest::newRow("a group of 16 bits from 0") << onePartRow("union-dec:rm16_D") << "M37"
                                               << "D32" << 5;
    QTest::newRow("the first bit of a group of 16 from 0") << onePartRow("union-dec:rm16_D") << "M16"
                                                           << "D16" << 0;
    QTest::newRow("a group of 16 bits from 1") << onePartRow("union-dec:rm16a1_D") << "M37"
                                               << "D33" << 4;
    QTest::newRow("a group of bits counted from 1, by its first bit") << onePartRow("last2-fam3:rfam3") << "M00105"
                                                                      << "M00101" << 4;
    QTest::newRow("no alignment leaves the symbol") << onePartRow("union-dec:r") << "M37"
                                                    << "M" << 0;
    QTest::newRow("no alignment leaves station and symbol") << onePartRow("union-dec:r_D") << "4-M37"
                                                            << "4-D" << -1;
    QTest::newRow("another row's address leaves the symbol of a two-part row") << words << "X1"
                                                                               << "D" << -1;
    QTest::newRow("a rule that cannot convert answers all the same") << bitRow("dot-f:n") << "M100.5"
                                                                     << "M100" << 5;
}

void TestCommandFormatterBits::registerAddress()
{
    QFETCH(Row, row);
    QFETCH(QString, address);
    QFETCH(QString, registerAddress);
    QFETCH(int, bit);
    const label::CommandFormatter formatter = row.formatter();
    const LogRecorder log;
    QCOMPARE(formatter.convertToRegisterAddress(command(address, 0)), registerAddress);
    if (!address.contains('-'))
        QCOMPARE(formatter.getbitOffset(address), bit);
    QCOMPARE(log.lines(), QStringList());
}

void TestCommandFormatterBits::registerSymbol_data()
{
    QTest::addColumn<QString>("rule");
    QTest::addColumn<QString>("symbol");

    QTest::newRow("a tail without a symbol") << "dot-f:r"
                                             << "M";
    QTest::newRow("a tail with a symbol") << "union-dec:rm16_D"
                                          << "D";
    QTest::newRow("the symbol keeps its case") << "union-dec:rm16_Dw"
                                               << "Dw";
    QTest::newRow("only the second part is the symbol") << "union-dec:rm16_D_E"
                                                        << "D";
    QTest::newRow("an empty symbol") << "union-dec:rm16_"
                                     << "";
    QTest::newRow("a tail that is just a symbol") << "dot-f:_D"
                                                  << "D";
    QTest::newRow("a plain rule") << "m8"
                                  << "M";
    QTest::newRow("a plain rule does not name a symbol") << "m8_D"
                                                         << "M";
    QTest::newRow("a symbol in a compound shape within a plain text") << "m8 dot-f:r_D"
                                                                      << "D";
    QTest::newRow("no rule") << ""
                             << "M";
}

void TestCommandFormatterBits::registerSymbol()
{
    QFETCH(QString, rule);
    QFETCH(QString, symbol);
    label::CommandFormatter formatter = bitRow(rule).formatter();
    formatter.setEditorPrefixSymbol("shown");
    QCOMPARE(formatter.convertedRegisterCommandSymbol(), symbol);
}

void TestCommandFormatterBits::registerRange_data()
{
    QTest::addColumn<Row>("row");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("range");
    QTest::addColumn<QStringList>("lines");

    const QStringList silent;
    const auto failure = [](const QString &address) {
        return QStringList{"convertedRegisterTypeCommandRange Convert range string to number fail \"" + address + "\""};
    };
    const Row of8 = onePartRow("union-dec:rm8");
    const Row of8Plus1 = onePartRow("union-dec:rm8a1");
    const Row of16 = onePartRow("union-dec:rm16");
    const Row of16Plus1 = onePartRow("union-dec:rm16a1");
    QTest::newRow("rm8: 13") << of8 << "M13"
                             << "8" << silent;
    QTest::newRow("rm8: 8") << of8 << "M8"
                            << "8" << silent;
    QTest::newRow("rm8: 7") << of8 << "M7"
                            << "0" << silent;
    QTest::newRow("rm8a1: 13") << of8Plus1 << "M13"
                               << "9" << silent;
    QTest::newRow("rm8a1: 9 stays") << of8Plus1 << "M9"
                                    << "9" << silent;
    QTest::newRow("rm8a1: 8") << of8Plus1 << "M8"
                              << "1" << silent;
    QTest::newRow("rm8a1: 1 stays") << of8Plus1 << "M1"
                                    << "1" << silent;
    QTest::newRow("rm8a1: 0 is cut toward zero") << of8Plus1 << "M0"
                                                 << "1" << silent;
    QTest::newRow("rm16: 37") << of16 << "M37"
                              << "32" << silent;
    QTest::newRow("rm16: 15") << of16 << "M15"
                              << "0" << silent;
    QTest::newRow("rm16a1: 37") << of16Plus1 << "M37"
                                << "33" << silent;
    QTest::newRow("rm16a1: 16") << of16Plus1 << "M16"
                                << "1" << silent;
    QTest::newRow("rm16a1: 17 stays") << of16Plus1 << "M17"
                                      << "17" << silent;
    QTest::newRow("rm16a1: 0 is cut toward zero") << of16Plus1 << "M0"
                                                  << "1" << silent;
    QTest::newRow("rm8: numbers below 0 are cut toward zero") << bitRow("union-dec:rm8", "-?\\d+") << "M-13"
                                                              << "-8" << silent;
    QTest::newRow("rm8a1: numbers below 0 are cut toward zero") << bitRow("union-dec:rm8a1", "-?\\d+") << "M-13"
                                                                << "-7" << silent;
    QTest::newRow("anything behind rm8a1") << onePartRow("union-dec:rm8a1x_D") << "M13"
                                           << "9" << silent;
    QTest::newRow("the alignment anywhere in the tail") << onePartRow("union-dec:xrm8") << "M13"
                                                        << "8" << silent;
    QTest::newRow("the alignment in capitals") << onePartRow("union-dec:RM8") << "M13"
                                               << "8" << silent;
    QTest::newRow("of several alignments the first kind counts") << onePartRow("union-dec:rm16rm8a1") << "M29"
                                                                 << "25" << silent;
    QTest::newRow("leading zeros are lost in an aligned number") << of8 << "M0013"
                                                                 << "8" << silent;
    QTest::newRow("radix 16 in lower case") << onePartRow("union-hex:rm8", 16) << "MAF"
                                            << "a8" << silent;
    QTest::newRow("radix 8") << onePartRow("union-oct:rm8", 8) << "M17"
                             << "10" << silent;
    QTest::newRow("the row's radix reads, not the bit's") << onePartRow("union-oct:rm8") << "M19"
                                                          << "16" << silent;

    QTest::newRow("a tail without an alignment") << onePartRow("union-dec:r") << "M37"
                                                 << "" << silent;
    QTest::newRow("rm64a1 does not count") << onePartRow("union-dec:rm64a1") << "M70"
                                           << "" << silent;
    QTest::newRow("a number that the radix lacks") << onePartRow("union-oct:rm8", 8) << "M18"
                                                   << "" << failure("M18");
    QTest::newRow("a number beyond 32 bits") << of8 << "M99999999999"
                                             << "" << failure("M99999999999");
    QTest::newRow("another row's address") << of8 << "D13"
                                           << "" << failure("D13");
    QTest::newRow("a station is no part of a device address") << bitRow("union-dec:rm8", "\\d+") << "2-X13"
                                                              << "" << failure("2-X13");
    QTest::newRow("a plain rule has no word part") << onePartRow("m8") << "M13"
                                                   << "" << failure("M13");
    QTest::newRow("no rule has no word part") << onePartRow("") << "M13"
                                              << "" << failure("M13");
    QTest::newRow("an unknown separator has no word part") << onePartRow("comma-dec:rm8") << "M13"
                                                           << "" << failure("M13");
    QTest::newRow("a register row with a plain rule") << Row() << "D13"
                                                      << "" << failure("D13");
    QTest::newRow("the number is read before the alignment is looked for") << onePartRow("union-dec:r") << "D1"
                                                                           << "" << failure("D1");

    QTest::newRow("a two-part rule gives the word's text") << bitRow("dot-f:r") << "M0100.3"
                                                           << "0100" << silent;
    QTest::newRow("a word in capitals is lowered") << bitRow("dot-f:r", "[0-9A-F]+\\.[0-9A-F]", 16) << "MAB.C"
                                                   << "ab" << silent;
    QTest::newRow("last1 keeps the case of the word") << bitRow("last1-hex:r", "[0-9A-F]+", 16) << "MABC"
                                                      << "AB" << silent;
    QTest::newRow("a two-part rule is not aligned") << bitRow("dot-f:rm8") << "M13.3"
                                                    << "13" << silent;
    QTest::newRow("a two-part rule needs no number") << bitRow("dot-f:r", "\\w+\\.\\d") << "Mxyz.3"
                                                     << "xyz" << silent;
    QTest::newRow("a group of bits ends with 01") << onePartRow("last2-fam3:rfam3") << "M00105"
                                                  << "00101" << silent;
    QTest::newRow("another row's address on a two-part rule") << bitRow("dot-f:r") << "D1.1"
                                                              << "" << silent;
}

void TestCommandFormatterBits::registerRange()
{
    QFETCH(Row, row);
    QFETCH(QString, address);
    QFETCH(QString, range);
    QFETCH(QStringList, lines);
    const label::CommandFormatter formatter = row.formatter();
    const LogRecorder log;
    QCOMPARE(formatter.convertedRagisterCommandRange(address), range);
    QCOMPARE(log.lines(), lines);
}

QTEST_GUILESS_MAIN(TestCommandFormatterBits)
#include "tst_commandformatter_bits.moc"
