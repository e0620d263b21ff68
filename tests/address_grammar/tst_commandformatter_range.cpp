// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"

#include "zelmar_label/label_table/commandinformationitem.h"

#include <QtTest>

#include <limits>

Q_DECLARE_METATYPE(Row)

namespace {

const QString s_limitsMessage = QStringLiteral("isRangeValid CommandFormatter isRangeValid data error");

/// A register row whose addresses are "D" and a number in `base`.
Row registerRow(const QString &rule = QString(), int base = 10)
{
    Row row;
    row.pattern = base == 16 ? QStringLiteral("(D)([0-9A-Fa-f]+)") : QStringLiteral("(D)(\\d+)");
    row.base = base;
    row.multipleRule = rule;
    return row;
}

/// A bit row whose range strings match `range`.
Row bitRow(const QString &rule, const QString &range = QStringLiteral("\\d+\\.[0-9a-f]+"), int base = 10)
{
    Row row;
    row.pattern = QStringLiteral("(M)(%1)").arg(range);
    row.type = 0;
    row.prefixSymbol = QStringLiteral("M");
    row.multipleRule = rule;
    row.base = base;
    return row;
}

Row limited(Row row, const QString &start, const QString &end)
{
    row.start = start;
    row.end = end;
    return row;
}

Row ofType(Row row, int type)
{
    row.type = type;
    return row;
}

Row withGroup(Row row, const QString &pattern, int group)
{
    row.pattern = pattern;
    row.addressGroupIndex = group;
    return row;
}

} // namespace

class TestCommandFormatterRange : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rangeStringIsTheCaptureGroup_data();
    void rangeStringIsTheCaptureGroup();
    void editorShowsWhatItsSymbolLeaves_data();
    void editorShowsWhatItsSymbolLeaves();
    void numberOfAnAddress_data();
    void numberOfAnAddress();
    void bitOffsetOfAnAddress_data();
    void bitOffsetOfAnAddress();
    void carryMovesWholeWords_data();
    void carryMovesWholeWords();
    void carryWrapsAtTheLargestWord();
    void numberIsHeldAgainstTheLimits_data();
    void numberIsHeldAgainstTheLimits();
    void unreadableLimitsAreReportedAtEachCall();
    void addressValidity_data();
    void addressValidity();
    void dataTypeMatch_data();
    void dataTypeMatch();
    void questionsDoNotDisturbEachOther();
    void groupIsValidWhenAnyFormatterSaysSo();
    void groupStopsAtTheFirstFormatterThatAccepts();
    void groupTakesEveryBlock();
};

void TestCommandFormatterRange::rangeStringIsTheCaptureGroup_data()
{
    QTest::addColumn<Row>("row");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("range");

    const Row plain = registerRow();
    const Row block = withGroup(Row(), "(DB12\\.DBX)(\\d+\\.[0-7])", 2);
    QTest::newRow("a register address") << plain << "D100"
                                        << "100";
    QTest::newRow("leading zeros are kept") << plain << "D0100"
                                            << "0100";
    QTest::newRow("letters keep their case") << registerRow(QString(), 16) << "D0aF"
                                             << "0aF";
    QTest::newRow("a two-part address gives word and bit") << block << "DB12.DBX10.3"
                                                           << "10.3";
    QTest::newRow("an address of another row gives nothing") << plain << "M100"
                                                             << "";
    QTest::newRow("an empty address gives nothing") << plain << ""
                                                    << "";
    QTest::newRow("the pattern is case-sensitive") << plain << "d100"
                                                   << "";
    QTest::newRow("the search needs no exact match behind the address") << plain << "D100x"
                                                                        << "100";
    QTest::newRow("the search needs no exact match in front of the address") << plain << "xD100"
                                                                             << "100";
    QTest::newRow("the first place found counts") << plain << "D1D2"
                                                  << "1";
    QTest::newRow("a caret holds the search at the front") << withGroup(Row(), "^(D)(\\d+)", 2) << "xD100"
                                                           << "";
    QTest::newRow("the group number is the row's") << withGroup(Row(), "(D)(\\d+)(W)", 3) << "D100W"
                                                   << "W";
    QTest::newRow("group 0 is the whole match") << withGroup(Row(), "(D)(\\d+)", 0) << "D100"
                                                << "D100";
    QTest::newRow("a group that the pattern lacks gives nothing") << withGroup(Row(), "(D)(\\d+)", 5) << "D100"
                                                                  << "";
    QTest::newRow("an invalid pattern is found nowhere") << withGroup(Row(), "(D", 1) << "D100"
                                                         << "";
}

void TestCommandFormatterRange::rangeStringIsTheCaptureGroup()
{
    QFETCH(Row, row);
    QFETCH(QString, address);
    QFETCH(QString, range);
    const label::CommandFormatter formatter = row.formatter();
    const LogRecorder log;
    QCOMPARE(formatter.getRangeString(address), range);
    QCOMPARE(formatter.getEditorUsedRangeString(address), range);
    QCOMPARE(log.lines(), QStringList());
}

void TestCommandFormatterRange::editorShowsWhatItsSymbolLeaves_data()
{
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("range");

    QTest::newRow("the rest behind a symbol of the same length") << "D"
                                                                 << "D100"
                                                                 << "100";
    QTest::newRow("a longer symbol leaves fewer characters") << "DB12.DBX"
                                                             << "DB12.DBX10.3"
                                                             << "10.3";
    QTest::newRow("only lengths count, not whether the symbol stands there") << "XY"
                                                                             << "D100"
                                                                             << "00";
    QTest::newRow("the address need not belong to the row") << "Q"
                                                            << "nonsense"
                                                            << "onsense";
    QTest::newRow("a symbol as long as the address leaves nothing") << "ABCD"
                                                                    << "D100"
                                                                    << "";
    QTest::newRow("a symbol longer than the address leaves nothing") << "ABCDEFG"
                                                                     << "D100"
                                                                     << "";
    QTest::newRow("an empty address leaves nothing") << "D"
                                                     << ""
                                                     << "";
    QTest::newRow("no symbol gives the range string") << ""
                                                      << "D0100"
                                                      << "0100";
    QTest::newRow("no symbol and another row's address give nothing") << ""
                                                                      << "M100"
                                                                      << "";
}

void TestCommandFormatterRange::editorShowsWhatItsSymbolLeaves()
{
    QFETCH(QString, symbol);
    QFETCH(QString, address);
    QFETCH(QString, range);
    label::CommandFormatter formatter = registerRow().formatter();
    formatter.setEditorPrefixSymbol(symbol);
    QCOMPARE(formatter.getEditorUsedRangeString(address), range);
}

void TestCommandFormatterRange::numberOfAnAddress_data()
{
    QTest::addColumn<Row>("row");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("number");

    const Row digits = registerRow();
    const Row anything = withGroup(Row(), "(D)(.*)", 2);
    QTest::newRow("a decimal register") << digits << "D100" << 100;
    QTest::newRow("leading zeros in radix 10 are no octal mark") << digits << "D0100" << 100;
    QTest::newRow("a hexadecimal register") << registerRow(QString(), 16) << "D00FF" << 255;
    QTest::newRow("lower-case hexadecimal letters") << registerRow(QString(), 16) << "Dff" << 255;
    QTest::newRow("an octal register") << registerRow(QString(), 8) << "D20" << 16;
    QTest::newRow("a digit that the radix lacks") << registerRow(QString(), 8) << "D18" << -1;
    QTest::newRow("the largest number") << digits << "D2147483647" << std::numeric_limits<int>::max();
    QTest::newRow("one more than the largest number") << digits << "D2147483648" << -1;
    QTest::newRow("an address of another row") << digits << "M100" << -1;
    QTest::newRow("an empty address") << digits << "" << -1;
    QTest::newRow("an empty range string") << anything << "D" << -1;
    QTest::newRow("a range string of letters") << anything << "Dxyz" << -1;
    QTest::newRow("a register row reads the whole range string") << anything << "D10.3" << -1;
    QTest::newRow("the rule does not cut the range string of a register row")
        << withGroup(registerRow("dot-f:r"), "(D)(.*)", 2) << "D10.3" << -1;
    QTest::newRow("a pattern without captures") << withGroup(Row(), "D\\d+", 1) << "D100" << -1;

    QTest::newRow("a bit row reads the word part") << bitRow("dot-f:r") << "M100.e" << 100;
    QTest::newRow("the word part is read in the row's radix")
        << bitRow("dot-oct:r", "[0-9a-f]+\\.[0-7]", 16) << "M1f.7" << 31;
    QTest::newRow("the last digit is the bit") << bitRow("last1-hex:r", "[0-9a-f]+") << "M100f" << 100;
    QTest::newRow("the last two digits are the bit") << bitRow("last2-dec:r", "\\d+") << "M10014" << 100;
    QTest::newRow("nothing is left of two digits") << bitRow("last2-dec:r", "\\d+") << "M14" << -1;
    QTest::newRow("a group of bits begins with its bit 01") << bitRow("last2-fam3:rfam3", "\\d+") << "M00105" << 101;
    QTest::newRow("a one-part bit row reads the whole range string") << bitRow("union-oct:r", "\\d+", 8) << "M17" << 15;
    QTest::newRow("a bit row with a plain rule has no number") << bitRow("m8", "\\d+") << "M100" << -1;
    QTest::newRow("a bit row without a rule has no number") << bitRow("") << "M100.3" << -1;
    QTest::newRow("a bit row with an unknown separator has no number") << bitRow("comma-f:r") << "M100.3" << -1;
    QTest::newRow("the empty word in front of a separator") << bitRow("dot-f:r", "\\d*\\.\\d") << "M.3" << -1;
}

void TestCommandFormatterRange::numberOfAnAddress()
{
    QFETCH(Row, row);
    QFETCH(QString, address);
    QFETCH(int, number);
    const label::CommandFormatter formatter = row.formatter();
    const LogRecorder log;
    QCOMPARE(formatter.getAddresRangePart(address), number);
    QCOMPARE(log.lines(), QStringList());
}

void TestCommandFormatterRange::bitOffsetOfAnAddress_data()
{
    QTest::addColumn<Row>("row");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("bit");
    QTest::addColumn<QStringList>("lines");

    const QStringList silent;
    QTest::newRow("a hexadecimal bit") << bitRow("dot-f:r") << "M100.e" << 14 << silent;
    QTest::newRow("an octal bit") << bitRow("dot-oct:r") << "M100.7" << 7 << silent;
    QTest::newRow("a digit that the bit's radix lacks") << bitRow("dot-oct:r") << "M100.8" << -1 << silent;
    QTest::newRow("a decimal bit") << bitRow("dot-dec:r") << "M100.14" << 14 << silent;
    QTest::newRow("a bit from 0 to 31") << bitRow("dot-31:r") << "M100.31" << 31 << silent;
    QTest::newRow("the bit's radix is not the row's")
        << bitRow("dot-hex:r", "[0-9a-f]+\\.[0-9a-f]", 8) << "M17.f" << 15 << silent;
    QTest::newRow("a bit that counts from 1") << bitRow("last2-fam3:rfam3", "\\d+") << "M00105" << 4 << silent;
    QTest::newRow("an unknown radix word") << bitRow("dot-foo:r") << "M100.3" << -1 << silent;
    QTest::newRow("no separator in the range string") << bitRow("dot-f:r", "\\d+") << "M100" << -1 << silent;
    QTest::newRow("a one-part row without groups") << bitRow("union-dec:r", "\\d+") << "M37" << 0 << silent;
    QTest::newRow("a one-part row in groups of 8") << bitRow("union-dec:rm8", "\\d+") << "M37" << 5 << silent;
    QTest::newRow("a one-part row in groups of 16") << bitRow("union-dec:rm16_D", "\\d+") << "M37" << 5 << silent;
    QTest::newRow("a one-part row in groups of 16 from 1")
        << bitRow("union-dec:rm16a1_D", "\\d+") << "M37" << 4 << silent;
    QTest::newRow("a one-part number that its radix lacks") << bitRow("union-oct:rm8", "\\d+") << "M18" << -1 << silent;
    QTest::newRow("a plain rule has no radix and says so")
        << bitRow("m8", "\\d+") << "M100" << -1 << QStringList{"onePartBitOffset base error  \"100\""};
    QTest::newRow("a one-part rule without a radix says so")
        << bitRow("nosep-f:r", "\\d+") << "M100" << -1 << QStringList{"onePartBitOffset base error  \"100\""};
    QTest::newRow("an address of another row is no matter of the rule") << bitRow("m8") << "D100" << -1 << silent;
    QTest::newRow("a register row has no bits") << ofType(bitRow("dot-f:r"), 2) << "M100.e" << -1 << silent;
    QTest::newRow("a register row with a plain rule is silent") << registerRow("m8") << "D100" << -1 << silent;
    QTest::newRow("the search needs no exact match") << bitRow("dot-f:r") << "M100.ex" << 14 << silent;
}

void TestCommandFormatterRange::bitOffsetOfAnAddress()
{
    QFETCH(Row, row);
    QFETCH(QString, address);
    QFETCH(int, bit);
    QFETCH(QStringList, lines);
    const label::CommandFormatter formatter = row.formatter();
    const LogRecorder log;
    QCOMPARE(formatter.getbitOffset(address), bit);
    QCOMPARE(log.lines(), lines);
}

void TestCommandFormatterRange::carryMovesWholeWords_data()
{
    QTest::addColumn<QString>("rule");
    QTest::addColumn<int>("base");
    QTest::addColumn<int>("bit");
    QTest::addColumn<int>("carriedWord");
    QTest::addColumn<int>("carriedBit");

    // The word is 5 before.
    QTest::newRow("decimal: 15 is the last bit of a word") << "dot-dec:r" << 10 << 15 << 5 << 15;
    QTest::newRow("decimal: 16 is the next word") << "dot-dec:r" << 10 << 16 << 6 << 0;
    QTest::newRow("decimal: 33 is two words on") << "dot-dec:r" << 10 << 33 << 7 << 1;
    QTest::newRow("decimal: 9 and 10 are within the word") << "dot-dec:r" << 10 << 10 << 5 << 10;
    QTest::newRow("decimal: a bit below 0 stays") << "dot-dec:r" << 10 << -1 << 5 << -1;
    QTest::newRow("decimal: a whole word below 0 is taken off") << "dot-dec:r" << 10 << -17 << 4 << -1;
    QTest::newRow("decimal: exactly one word below 0") << "dot-dec:r" << 10 << -16 << 4 << 0;
    QTest::newRow("decimal: two digits carry alike") << "last2-dec:r" << 10 << 16 << 6 << 0;
    QTest::newRow("decimal with the word 15") << "dot-15:r" << 10 << 16 << 6 << 0;
    QTest::newRow("decimal handed to a rule of 32 bits: 31 stays") << "dot-31:r" << 10 << 31 << 5 << 31;
    QTest::newRow("decimal handed to a rule of 32 bits: 32 carries") << "dot-31:r" << 10 << 32 << 6 << 0;
    QTest::newRow("decimal handed to a rule of 32 bits: 65 carries twice") << "dot-31:r" << 10 << 65 << 7 << 1;
    QTest::newRow("decimal handed to a hexadecimal rule carries at 16") << "dot-f:r" << 10 << 16 << 6 << 0;
    QTest::newRow("decimal on a one-part rule carries at 10") << "union-dec:r" << 10 << 12 << 6 << 2;
    QTest::newRow("decimal on a plain rule carries at 10") << "m8" << 10 << 10 << 6 << 0;

    QTest::newRow("octal: 7 stays") << "dot-oct:r" << 8 << 7 << 5 << 7;
    QTest::newRow("octal: 8 is the next word") << "dot-oct:r" << 8 << 8 << 6 << 0;
    QTest::newRow("octal: 15 is bit 7 of the next word") << "dot-oct:r" << 8 << 15 << 6 << 7;
    QTest::newRow("octal: 64 reads as decimal 10 words") << "dot-oct:r" << 8 << 64 << 15 << 0;
    QTest::newRow("octal: a bit below 0 prints unsigned, only its last digit is left")
        << "dot-oct:r" << 8 << -1 << 5 << 7;

    QTest::newRow("hexadecimal: 15 stays") << "dot-f:r" << 16 << 15 << 5 << 15;
    QTest::newRow("hexadecimal: 16 is the next word") << "dot-f:r" << 16 << 16 << 6 << 0;
    QTest::newRow("hexadecimal: 17 is bit 1 of the next word") << "dot-f:r" << 16 << 17 << 6 << 1;
    QTest::newRow("hexadecimal: the tail of 1a is no decimal digit") << "dot-f:r" << 16 << 26 << 6 << 0;
    QTest::newRow("hexadecimal: 100 reads as decimal 10 words") << "dot-f:r" << 16 << 256 << 15 << 0;
    QTest::newRow("hexadecimal: the front of a5 is no decimal number") << "dot-f:r" << 16 << 165 << 5 << 5;
    QTest::newRow("hexadecimal: a bit below 0 has letters throughout") << "dot-f:r" << 16 << -1 << 5 << 0;

    QTest::newRow("two hexadecimal digits: ff stays") << "last2-f:r" << 16 << 255 << 5 << 255;
    QTest::newRow("two hexadecimal digits: 100 is the next word") << "last2-f:r" << 16 << 256 << 6 << 0;
    QTest::newRow("two hexadecimal digits: 123 has tail 23 read in decimal") << "last2-f:r" << 16 << 291 << 6 << 23;
    QTest::newRow("two digits for last2 in capitals") << "LAST2-f:r" << 16 << 255 << 5 << 255;
    QTest::newRow("two digits for last2 anywhere in the text") << "dot-f:r_last2" << 16 << 16 << 5 << 16;
    QTest::newRow("last1 has one digit") << "last1-f:r" << 16 << 16 << 6 << 0;

    QTest::newRow("radix 32: 31 stays") << "dot-31:r" << 32 << 31 << 5 << 31;
    QTest::newRow("radix 32: 32 is the next word") << "dot-31:r" << 32 << 32 << 6 << 0;
    QTest::newRow("radix 32: 33 is bit 1 of the next word") << "dot-31:r" << 32 << 33 << 6 << 1;
    QTest::newRow("radix 32: the tail of 1a is no decimal digit") << "dot-31:r" << 32 << 42 << 6 << 0;
}

void TestCommandFormatterRange::carryMovesWholeWords()
{
    QFETCH(QString, rule);
    QFETCH(int, base);
    QFETCH(int, bit);
    QFETCH(int, carriedWord);
    QFETCH(int, carriedBit);
    const label::CommandFormatter formatter = bitRow(rule).formatter();
    int word = 5;
    formatter.bitOffsetCarry(word, bit, base);
    QCOMPARE(word, carriedWord);
    QCOMPARE(bit, carriedBit);
}

void TestCommandFormatterRange::carryWrapsAtTheLargestWord()
{
    const label::CommandFormatter formatter = bitRow("dot-dec:r").formatter();
    int word = std::numeric_limits<int>::max();
    int bit = 16;
    formatter.bitOffsetCarry(word, bit, 10);
    QCOMPARE(word, std::numeric_limits<int>::min());
    QCOMPARE(bit, 0);
}

void TestCommandFormatterRange::numberIsHeldAgainstTheLimits_data()
{
    QTest::addColumn<Row>("row");
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("isValid");
    QTest::addColumn<QStringList>("lines");

    const QStringList silent;
    const QStringList reported{s_limitsMessage};
    QTest::newRow("the first number") << registerRow() << 0 << true << silent;
    QTest::newRow("the last number") << registerRow() << 9999 << true << silent;
    QTest::newRow("one below the first number") << registerRow() << -1 << false << silent;
    QTest::newRow("one above the last number") << registerRow() << 10000 << false << silent;
    QTest::newRow("the only number of equal limits") << limited(registerRow(), "7", "7") << 7 << true << silent;
    QTest::newRow("limits in the wrong order hold nothing") << limited(registerRow(), "9", "1") << 5 << false << silent;
    QTest::newRow("a first number below 0") << limited(registerRow(), "-8", "8") << -8 << true << silent;
    QTest::newRow("numbers are signed") << limited(registerRow(), "0", "2147483647") << std::numeric_limits<int>::min()
                                        << false << silent;

    const Row hexadecimal = limited(registerRow(QString(), 16), "0", "FFF");
    QTest::newRow("hexadecimal limits: FFF is 4095") << hexadecimal << 4095 << true << silent;
    QTest::newRow("hexadecimal limits: 4096 is beyond FFF") << hexadecimal << 4096 << false << silent;
    QTest::newRow("hexadecimal limits with 0x in front")
        << limited(registerRow(QString(), 16), "0x10", "0x1F") << 31 << true << silent;
    QTest::newRow("octal limits: 17 is 15") << limited(registerRow(QString(), 8), "0", "17") << 15 << true << silent;
    QTest::newRow("octal limits: 16 is beyond 17")
        << limited(registerRow(QString(), 8), "0", "17") << 16 << false << silent;

    QTest::newRow("an empty start") << limited(registerRow(), "", "9999") << 5 << false << reported;
    QTest::newRow("an empty end") << limited(registerRow(), "0", "") << 5 << false << reported;
    QTest::newRow("both limits empty are one message") << limited(registerRow(), "", "") << 5 << false << reported;
    QTest::newRow("a start that the radix lacks") << limited(registerRow(), "A", "9999") << 5 << false << reported;
    QTest::newRow("an end that the radix lacks") << limited(registerRow(), "0", "FFF") << 5 << false << reported;
    QTest::newRow("an end beyond 32 bits") << limited(registerRow(), "0", "2147483648") << 5 << false << reported;
    QTest::newRow("an unreadable end is reported even below the start")
        << limited(registerRow(), "3", "x") << 1 << false << reported;
    QTest::newRow("a bit row with unreadable limits") << limited(bitRow("dot-f:r"), "0", "x") << 1 << false << reported;

    const Row aligned = limited(registerRow("m8"), "0", "100");
    QTest::newRow("aligned: 12 is no multiple of 8, in silence") << aligned << 12 << false << silent;
    QTest::newRow("aligned: 16 is one") << aligned << 16 << true << silent;
    QTest::newRow("aligned: 104 is one, but beyond the limits") << aligned << 104 << false << silent;
    QTest::newRow("aligned from 1: 17") << registerRow("m16a1") << 17 << true << silent;
    QTest::newRow("aligned from 1: 16") << registerRow("m16a1") << 16 << false << silent;
    QTest::newRow("the alignment comes before unreadable limits")
        << limited(registerRow("m8"), "", "") << 12 << false << silent;
    QTest::newRow("unreadable limits are reported for an aligned number")
        << limited(registerRow("m8"), "", "") << 16 << false << reported;
    QTest::newRow("bit rows skip the alignment") << limited(bitRow("m8"), "0", "100") << 12 << true << silent;
    QTest::newRow("bit rows skip the alignment of a tail") << bitRow("union-dec:rm16") << 12 << true << silent;
    QTest::newRow("any type above 0 is aligned") << ofType(registerRow("m8"), 1) << 12 << false << silent;
    QTest::newRow("a negative type is aligned too") << ofType(registerRow("m8"), -1) << 12 << false << silent;
}

void TestCommandFormatterRange::numberIsHeldAgainstTheLimits()
{
    QFETCH(Row, row);
    QFETCH(int, value);
    QFETCH(bool, isValid);
    QFETCH(QStringList, lines);
    const label::CommandFormatter formatter = row.formatter();
    const LogRecorder log;
    QCOMPARE(formatter.isRangeValid(value), isValid);
    QCOMPARE(log.lines(), lines);
}

void TestCommandFormatterRange::unreadableLimitsAreReportedAtEachCall()
{
    const label::CommandFormatter formatter = limited(registerRow(), "", "9999").formatter();
    LogRecorder log;
    QVERIFY(!formatter.isRangeValid(0));
    QVERIFY(!formatter.isRangeValid(0));
    QVERIFY(!formatter.isAddressValid("D5"));
    QCOMPARE(log.take(), QStringList({s_limitsMessage, s_limitsMessage, s_limitsMessage}));
    const label::CommandFormatter copied = formatter;
    QVERIFY(!copied.isRangeValid(0));
    QCOMPARE(log.take(), QStringList(s_limitsMessage));
}

void TestCommandFormatterRange::addressValidity_data()
{
    QTest::addColumn<Row>("row");
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("isValid");

    QTest::newRow("a register within the limits") << registerRow() << "D100" << true;
    QTest::newRow("the last register") << registerRow() << "D9999" << true;
    QTest::newRow("a register beyond the limits") << registerRow() << "D10000" << false;
    QTest::newRow("something behind the address") << registerRow() << "D100x" << false;
    QTest::newRow("something in front of the address") << registerRow() << "xD100" << false;
    QTest::newRow("another row's address") << registerRow() << "M100" << false;
    QTest::newRow("only a part of an address") << registerRow() << "D" << false;
    QTest::newRow("an empty address") << registerRow() << "" << false;
    QTest::newRow("the symbol in lower case") << registerRow() << "d100" << false;
    QTest::newRow("a station in front") << registerRow() << "3-D100" << true;
    QTest::newRow("a station in front of a register beyond the limits") << registerRow() << "3-D10000" << false;
    QTest::newRow("a station that is no number") << registerRow() << "x-D100" << true;
    QTest::newRow("an empty station") << registerRow() << "-D100" << true;
    QTest::newRow("what stands behind a second station mark is dropped") << registerRow() << "1-D100-x" << true;
    QTest::newRow("a station alone") << registerRow() << "3-" << false;
    QTest::newRow("an address behind its own mark") << registerRow() << "D100-" << false;
    QTest::newRow("a number beyond 32 bits cannot be read, the match is enough")
        << registerRow() << "D99999999999" << true;
    QTest::newRow("an unaligned register") << registerRow("m8") << "D12" << false;
    QTest::newRow("an aligned register") << registerRow("m8") << "D16" << true;
    QTest::newRow("a two-part bit") << bitRow("dot-f:r") << "M100.e" << true;
    QTest::newRow("the bit is left to the pattern") << bitRow("dot-oct:r") << "M100.f" << true;
    QTest::newRow("a word beyond the limits") << bitRow("dot-f:r") << "M10000.0" << false;
    QTest::newRow("a bit row with a plain rule has no number, the match is enough")
        << bitRow("m8", "\\d+") << "M123456" << true;
    QTest::newRow("a bit row with a plain rule still needs the match") << bitRow("m8", "\\d+") << "D1" << false;
    QTest::newRow("an unreadable number does not ask for the limits")
        << limited(bitRow("", "\\d+"), "", "") << "M1" << true;
    QTest::newRow("an invalid pattern") << withGroup(Row(), "(D", 1) << "D100" << false;
    QTest::newRow("alternatives in the pattern") << withGroup(Row(), "(D|R)(\\d+)", 2) << "R7" << true;
}

void TestCommandFormatterRange::addressValidity()
{
    QFETCH(Row, row);
    QFETCH(QString, address);
    QFETCH(bool, isValid);
    const label::CommandFormatter formatter = row.formatter();
    const LogRecorder log;
    QCOMPARE(formatter.isAddressValid(address), isValid);
    QCOMPARE(log.lines(), QStringList());
}

void TestCommandFormatterRange::dataTypeMatch_data()
{
    QTest::addColumn<Row>("row");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("isMatch");

    QTest::newRow("a word of a word row") << registerRow() << "D100" << 2 << true;
    QTest::newRow("widths are not compared: wider") << registerRow() << "D100" << 4 << true;
    QTest::newRow("widths are not compared: narrower") << registerRow() << "D100" << 1 << true;
    QTest::newRow("a text of a word row") << registerRow() << "D100" << 5 << true;
    QTest::newRow("an unknown type of a word row") << registerRow() << "D100" << 9 << true;
    QTest::newRow("a bit of a word row") << registerRow() << "D100" << 0 << false;
    QTest::newRow("a bit of a bit row") << bitRow("dot-f:r") << "M100.3" << 0 << true;
    QTest::newRow("a word of a bit row") << bitRow("dot-f:r") << "M100.3" << 2 << false;
    QTest::newRow("beyond the limits") << registerRow() << "D10000" << 2 << false;
    QTest::newRow("unaligned") << registerRow("m8") << "D12" << 2 << false;
    QTest::newRow("another row's address") << registerRow() << "M100" << 2 << false;
    QTest::newRow("a match must be exact") << registerRow() << "D100x" << 2 << false;
    QTest::newRow("a station is not taken off") << registerRow() << "3-D100" << 2 << false;
    QTest::newRow("a bit row with a plain rule has no number to test") << bitRow("m8", "\\d+") << "M100" << 0 << false;
    QTest::newRow("no number, and limits that hold -1")
        << limited(bitRow("m8", "\\d+"), "-1", "10") << "M100" << 0 << true;
}

void TestCommandFormatterRange::dataTypeMatch()
{
    QFETCH(Row, row);
    QFETCH(QString, address);
    QFETCH(int, type);
    QFETCH(bool, isMatch);
    const label::CommandFormatter formatter = row.formatter();
    const LogRecorder log;
    QCOMPARE(formatter.isAddressDataTypeMatch(address, static_cast<CommunicatorCommand::DataType>(type)), isMatch);
    QCOMPARE(log.lines(), QStringList());
}

void TestCommandFormatterRange::questionsDoNotDisturbEachOther()
{
    const label::CommandFormatter formatter = bitRow("dot-f:r").formatter();
    QCOMPARE(formatter.getRangeString("M7.1"), QString("7.1"));
    QVERIFY(!formatter.isAddressValid("D1"));
    QCOMPARE(formatter.getbitOffset("M8.2"), 2);
    QCOMPARE(formatter.getRangeString("nothing"), QString());
    QCOMPARE(formatter.getAddresRangePart("M9.3"), 9);
    QCOMPARE(formatter.matchedLength("M9."), 3);
    QCOMPARE(formatter.getRangeString("M7.1"), QString("7.1"));
}

void TestCommandFormatterRange::groupIsValidWhenAnyFormatterSaysSo()
{
    label::CommandFormatter words = registerRow().formatter();
    label::CommandFormatter bits = bitRow("dot-f:r").formatter();
    label::CommandInformationItem group;
    QVERIFY(!group.isValid("D100"));
    group.addCommandFormatter(&words);
    group.addCommandFormatter(&bits);
    QVERIFY(group.isValid("D100"));
    QVERIFY(group.isValid("M100.3"));
    QVERIFY(group.isValid("2-M100.3"));
    QVERIFY(!group.isValid("D10000"));
    QVERIFY(!group.isValid("X1"));
}

void TestCommandFormatterRange::groupStopsAtTheFirstFormatterThatAccepts()
{
    label::CommandFormatter accepting = registerRow().formatter();
    label::CommandFormatter reporting = limited(registerRow(), "", "").formatter();
    label::CommandInformationItem group;
    group.addCommandFormatter(&accepting);
    group.addCommandFormatter(&reporting);
    LogRecorder log;
    QVERIFY(group.isValid("D100"));
    QCOMPARE(log.take(), QStringList());
    QVERIFY(!group.isValid("D10000"));
    QCOMPARE(log.take(), QStringList(s_limitsMessage));
}

void TestCommandFormatterRange::groupTakesEveryBlock()
{
    const label::CommandInformationItem group;
    QVERIFY(group.isBlockValid(QString(), 0));
    QVERIFY(group.isBlockValid("nonsense", -1));
    QVERIFY(group.isBlockValid("D100", std::numeric_limits<int>::max()));
}

QTEST_GUILESS_MAIN(TestCommandFormatterRange)
#include "tst_commandformatter_range.moc"
