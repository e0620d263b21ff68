// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"

#include <QtTest>

#include <limits>

Q_DECLARE_METATYPE(Row)
Q_DECLARE_METATYPE(CommunicatorCommand)

namespace {

const QString s_limitsMessage = QStringLiteral("isRangeValid CommandFormatter isRangeValid data error");

Row registerRow(int dataSize = 2, const QString &rule = QString(), int type = 2)
{
    Row row;
    row.dataSize = dataSize;
    row.multipleRule = rule;
    row.type = type;
    return row;
}

Row hexadecimalRow()
{
    Row row;
    row.pattern = QStringLiteral("(H)([0-9A-Fa-f]+)");
    row.base = 16;
    row.end = QStringLiteral("FFFF");
    return row;
}

Row bitRow(const QString &rule, const QString &range, int dataSize = 1)
{
    Row row;
    row.pattern = QStringLiteral("(M)(%1)").arg(range);
    row.type = 0;
    row.dataSize = dataSize;
    row.multipleRule = rule;
    return row;
}

/// Addresses with text on both sides of the number.
Row enclosedRow()
{
    Row row;
    row.pattern = QStringLiteral("(T)(\\d+)(\\.ACC)");
    return row;
}

Row limited(Row row, const QString &start, const QString &end)
{
    row.start = start;
    row.end = end;
    return row;
}

/// A command with no field at its default.
CommunicatorCommand peculiar(const QString &address, int dataType, quint64 length = 1)
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

QStringList fullForms(const QList<CommunicatorCommand> &commands)
{
    QStringList forms;
    for (const CommunicatorCommand &one : commands)
        forms.append(fullForm(one));
    return forms;
}

} // namespace

class TestCommandFormatterRuns : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void completionCoversTheCommand_data();
    void completionCoversTheCommand();
    void textCompletionCountsLength_data();
    void textCompletionCountsLength();
    void piecesAreFreshAndUnsplitCommandsAreKept();
    void completionReportsUnreadableLimitsForEachPiece();
    void completionOfAHugeLengthEndsAtTheLimits();

    void continuation_data();
    void continuation();
    void continuedCommandsAreFresh();
    void continuationReportsUnreadableLimitsForEachPass();
    void continuationOfManyPassesEndsAtTheLimits();

    void spacedContinuation_data();
    void spacedContinuation();
    void spacedCommandsInheritLengthAndScanTime();
    void spacedContinuationReportsUnreadableLimitsForEachPass();
};

void TestCommandFormatterRuns::completionCoversTheCommand_data()
{
    QTest::addColumn<Row>("row");
    QTest::addColumn<CommunicatorCommand>("model");
    QTest::addColumn<QStringList>("pieces");

    const Row words = registerRow();
    QTest::newRow("two words at a station") << words << command("3-D100", 3) << QStringList{"3-D100 2 1", "3-D101 2 1"};
    QTest::newRow("four words") << words << command("D100", 4)
                                << QStringList{"D100 2 1", "D101 2 1", "D102 2 1", "D103 2 1"};
    QTest::newRow("four bytes of a double word") << registerRow(1, QString(), 1) << command("D100", 3)
                                                 << QStringList{"D100 1 1", "D101 1 1", "D102 1 1", "D103 1 1"};
    QTest::newRow("a begun unit counts") << registerRow(3) << command("D100", 3) << QStringList{"D100 2 1", "D101 2 1"};
    QTest::newRow("one unit is enough for a word") << words << command("D100", 2) << QStringList{"D100 2 1"};
    QTest::newRow("a unit is more than enough for a byte") << words << command("D100", 1) << QStringList{"D100 1 1"};
    QTest::newRow("a unit wider than the command keeps the command's type")
        << registerRow(8) << command("D100", 3) << QStringList{"D100 3 1"};
    QTest::newRow("a bit stays a bit") << words << command("D100", 0) << QStringList{"D100 0 1"};
    QTest::newRow("a command of length 0 needs nothing") << words << command("D100", 4, 0) << QStringList{"D100 4 0"};
    QTest::newRow("a text of one character is one byte") << words << command("D100", 5) << QStringList{"D100 5 1"};
    QTest::newRow("an unknown type is one byte") << words << command("D100", 9) << QStringList{"D100 9 1"};
    QTest::newRow("another row's address comes back with its station")
        << words << command("3-M100", 3) << QStringList{"3-M100 3 1"};
    QTest::newRow("a partial match is none") << words << command("D100x", 3) << QStringList{"D100x 3 1"};

    QTest::newRow("the piece beyond the end is left out") << words << command("D9999", 3) << QStringList{"D9999 2 1"};
    QTest::newRow("the piece below the start is left out")
        << limited(words, "101", "200") << command("D100", 3) << QStringList{"D101 2 1"};
    QTest::newRow("no piece within the limits gives nothing") << words << command("D10000", 3) << QStringList();
    QTest::newRow("a number beyond 32 bits counts from -1, which is left out")
        << words << command("D99999999999", 3) << QStringList{"D0 2 1"};
    QTest::newRow("a number that cannot be read counts from -1")
        << limited(words, "-1", "9") << command("D99999999999", 3) << QStringList{"D-1 2 1", "D0 2 1"};
    QTest::newRow("units that are never aligned give nothing")
        << registerRow(2, "m16") << command("D33", 3) << QStringList();

    QTest::newRow("aligned units move their bits")
        << registerRow(2, "m16") << command("D32", 3) << QStringList{"D32 2 1", "D48 2 1"};
    QTest::newRow("aligned units from 1")
        << registerRow(2, "m16a1") << command("D33", 3) << QStringList{"D33 2 1", "D49 2 1"};
    QTest::newRow("aligned bytes") << registerRow(1, "m8", 1) << command("D8", 2) << QStringList{"D8 1 1", "D16 1 1"};
    QTest::newRow("multiples of 64 count no bits, so the second unit is unaligned")
        << registerRow(2, "m64a1") << command("D65", 3) << QStringList{"D65 2 1"};

    QTest::newRow("leading zeros are lost") << words << command("D0100", 3) << QStringList{"D100 2 1", "D101 2 1"};
    QTest::newRow("leading zeros are kept in what is not split")
        << words << command("D0100", 2) << QStringList{"D0100 2 1"};
    QTest::newRow("hexadecimal digits come out in lower case")
        << hexadecimalRow() << command("H00FF", 3) << QStringList{"Hff 2 1", "H100 2 1"};
    QTest::newRow("octal digits carry at 8") << [] {
        Row row;
        row.base = 8;
        row.end = QStringLiteral("7777");
        return row;
    }() << command("D17", 3) << QStringList{"D17 2 1", "D20 2 1"};
    QTest::newRow("the text behind the number is kept")
        << enclosedRow() << command("T9.ACC", 3) << QStringList{"T9.ACC 2 1", "T10.ACC 2 1"};
    QTest::newRow("a station is rewritten in decimal")
        << words << command("03-D1", 3) << QStringList{"3-D1 2 1", "3-D2 2 1"};
    QTest::newRow("a station that is no number is 0")
        << words << command("x-D1", 3) << QStringList{"0-D1 2 1", "0-D2 2 1"};
    QTest::newRow("what stands behind a second station mark is lost")
        << words << command("1-D2-3", 3) << QStringList{"1-D2 2 1", "1-D3 2 1"};
    QTest::newRow("a negative piece keeps its sign behind a station")
        << limited(words, "-1", "9") << command("2-D99999999999", 3) << QStringList{"2-D-1 2 1", "2-D0 2 1"};
    QTest::newRow("a bit row is stepped by words, the bit is dropped")
        << bitRow("dot-f:r", "\\d+\\.[0-9a-f]") << command("M100.3", 2) << QStringList{"M100 0 1", "M101 0 1"};

    QTest::newRow("a length above 1 counts bytes")
        << words << command("D100", 2, 4) << QStringList{"D100 2 1", "D101 2 1"};
    QTest::newRow("a bit command of some length is cut as a text")
        << words << command("D100", 0, 4) << QStringList{"D100 2 1", "D101 2 1"};
    QTest::newRow("five characters are three words")
        << words << command("D100", 5, 5) << QStringList{"D100 2 1", "D101 2 1", "D102 2 1"};
}

void TestCommandFormatterRuns::completionCoversTheCommand()
{
    QFETCH(Row, row);
    QFETCH(CommunicatorCommand, model);
    QFETCH(QStringList, pieces);
    const label::CommandFormatter formatter = row.formatter();
    const LogRecorder log;
    QCOMPARE(shortForms(formatter.autoCompleteCommand(model)), pieces);
    QCOMPARE(log.lines(), QStringList());
}

void TestCommandFormatterRuns::textCompletionCountsLength_data()
{
    QTest::addColumn<Row>("row");
    QTest::addColumn<CommunicatorCommand>("model");
    QTest::addColumn<QStringList>("pieces");

    const Row words = registerRow();
    QTest::newRow("whole units") << words << command("D100", 5, 4) << QStringList{"D100 2 1", "D101 2 1"};
    QTest::newRow("a begun unit") << words << command("D100", 5, 3) << QStringList{"D100 2 1", "D101 2 1"};
    QTest::newRow("as many bytes as a unit has") << words << command("D100", 5, 2) << QStringList{"D100 2 1"};
    QTest::newRow("one byte takes the row's type") << words << command("D100", 5, 1) << QStringList{"D100 2 1"};
    QTest::newRow("no byte takes length 1") << words << command("D100", 5, 0) << QStringList{"D100 2 1"};
    QTest::newRow("the length counts bytes whatever the type")
        << words << command("D100", 4, 3) << QStringList{"D100 2 1", "D101 2 1"};
    QTest::newRow("another row's address takes length and type alone")
        << words << command("3-M100", 5, 9) << QStringList{"3-M100 2 1"};
    QTest::newRow("what is not split keeps its digits") << words << command("D0100", 5, 2) << QStringList{"D0100 2 1"};
    QTest::newRow("a station") << words << command("3-D100", 5, 3) << QStringList{"3-D100 2 1", "3-D101 2 1"};
    QTest::newRow("pieces beyond the end are left out")
        << words << command("D9998", 5, 10) << QStringList{"D9998 2 1", "D9999 2 1"};
    QTest::newRow("all beyond the end") << words << command("D10000", 5, 10) << QStringList();
    QTest::newRow("a run that begins below the start")
        << limited(words, "102", "200") << command("D100", 5, 8) << QStringList{"D102 2 1", "D103 2 1"};
    QTest::newRow("aligned units") << registerRow(2, "m16") << command("D16", 5, 6)
                                   << QStringList{"D16 2 1", "D32 2 1", "D48 2 1"};
    QTest::newRow("a hundredth of a unit counts")
        << registerRow(100) << command("D1", 5, 101) << QStringList{"D1 2 1", "D2 2 1"};
    QTest::newRow("less than a hundredth of a unit does not count")
        << registerRow(200) << command("D1", 5, 201) << QStringList{"D1 2 1"};
    QTest::newRow("more than a hundredth of a large unit counts")
        << registerRow(200) << command("D1", 5, 203) << QStringList{"D1 2 1", "D2 2 1"};
}

void TestCommandFormatterRuns::textCompletionCountsLength()
{
    QFETCH(Row, row);
    QFETCH(CommunicatorCommand, model);
    QFETCH(QStringList, pieces);
    const label::CommandFormatter formatter = row.formatter();
    const LogRecorder log;
    QCOMPARE(shortForms(formatter.autoCompleteStringCommand(model)), pieces);
    QCOMPARE(log.lines(), QStringList());
}

void TestCommandFormatterRuns::piecesAreFreshAndUnsplitCommandsAreKept()
{
    const label::CommandFormatter formatter = registerRow().formatter();
    QCOMPARE(fullForms(formatter.autoCompleteCommand(peculiar("2-D5", 3))),
             QStringList({"2-D5 type 2 length 1 scan 1 number 0 text '' flag 0",
                          "2-D6 type 2 length 1 scan 1 number 0 text '' flag 0"}));
    QCOMPARE(fullForms(formatter.autoCompleteCommand(peculiar("2-D5", 1))),
             QStringList("2-D5 type 1 length 1 scan 7 number -1 text 'text' flag 1"));
    QCOMPARE(fullForms(formatter.autoCompleteCommand(peculiar("2-M5", 3))),
             QStringList("2-M5 type 3 length 1 scan 7 number -1 text 'text' flag 1"));
    QCOMPARE(fullForms(formatter.autoCompleteStringCommand(peculiar("2-D5", 5, 2))),
             QStringList("2-D5 type 2 length 1 scan 7 number -1 text 'text' flag 1"));
    QCOMPARE(fullForms(formatter.autoCompleteStringCommand(peculiar("2-M5", 5, 9))),
             QStringList("2-M5 type 2 length 1 scan 7 number -1 text 'text' flag 1"));
    QCOMPARE(fullForms(formatter.autoCompleteStringCommand(peculiar("2-D5", 5, 3))),
             QStringList({"2-D5 type 2 length 1 scan 1 number 0 text '' flag 0",
                          "2-D6 type 2 length 1 scan 1 number 0 text '' flag 0"}));
}

void TestCommandFormatterRuns::completionReportsUnreadableLimitsForEachPiece()
{
    const label::CommandFormatter formatter = limited(registerRow(), "0", "FFF").formatter();
    LogRecorder log;
    QCOMPARE(formatter.autoCompleteCommand(command("D1", 4)).size(), 0);
    QCOMPARE(log.take(), QStringList({s_limitsMessage, s_limitsMessage, s_limitsMessage, s_limitsMessage}));
    QCOMPARE(formatter.autoCompleteStringCommand(command("D1", 5, 3)).size(), 0);
    QCOMPARE(log.take(), QStringList({s_limitsMessage, s_limitsMessage}));
    QCOMPARE(formatter.autoCompleteCommand(command("D1", 2)).size(), 1);
    QCOMPARE(log.take(), QStringList());
}

void TestCommandFormatterRuns::completionOfAHugeLengthEndsAtTheLimits()
{
    const label::CommandFormatter formatter = registerRow().formatter();
    QCOMPARE(addresses(formatter.autoCompleteCommand(command("D9998", 5, 4000000000U))),
             QStringList({"D9998", "D9999"}));
}

void TestCommandFormatterRuns::continuation_data()
{
    QTest::addColumn<Row>("row");
    QTest::addColumn<CommunicatorCommand>("model");
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("run");

    const Row words = registerRow();
    QTest::newRow("words of a word row") << words << command("D100", 2) << 3
                                         << QStringList{"D100 2 1", "D101 2 1", "D102 2 1"};
    QTest::newRow("double words take two registers")
        << words << command("D100", 3) << 3 << QStringList{"D100 3 1", "D102 3 1", "D104 3 1"};
    QTest::newRow("quad words take four registers")
        << words << command("D100", 4) << 3 << QStringList{"D100 4 1", "D104 4 1", "D108 4 1"};
    QTest::newRow("two bytes share a register")
        << words << command("D100", 1) << 5 << QStringList{"D100 1 1", "D100 1 1", "D101 1 1", "D101 1 1", "D102 1 1"};
    QTest::newRow("four bytes share a double word, the first two alone")
        << registerRow(4, QString(), 3) << command("D100", 1) << 11
        << QStringList{"D100 1 1", "D100 1 1", "D101 1 1", "D101 1 1", "D101 1 1", "D101 1 1",
                       "D102 1 1", "D102 1 1", "D102 1 1", "D102 1 1", "D103 1 1"};
    QTest::newRow("two double words share a quad word")
        << registerRow(8, QString(), 4) << command("D100", 3) << 3 << QStringList{"D100 3 1", "D100 3 1", "D101 3 1"};
    QTest::newRow("types are numbers: a text is one step wider than a quad word")
        << registerRow(8, QString(), 4) << command("D100", 5) << 2 << QStringList{"D100 5 1", "D102 5 1"};
    QTest::newRow("a text on a word row has no width and takes the row's type")
        << words << command("D100", 5) << 2 << QStringList{"D100 2 1", "D101 2 1"};
    QTest::newRow("three widths apart take the row's type")
        << registerRow(1, QString(), 1) << command("D100", 4) << 2 << QStringList{"D100 1 1", "D101 1 1"};
    QTest::newRow("an unknown type takes the row's type")
        << words << command("D100", 9) << 2 << QStringList{"D100 2 1", "D101 2 1"};
    QTest::newRow("a negative type takes the row's type")
        << words << command("D100", -1) << 2 << QStringList{"D100 2 1", "D101 2 1"};
    QTest::newRow("a bit row has no width to compare")
        << bitRow("union-dec:r", "\\d+") << command("M7", 1) << 2 << QStringList{"M7 0 1", "M8 0 1"};
    QTest::newRow("a two-part bit row is stepped by words")
        << bitRow("dot-f:r", "\\d+\\.[0-9a-f]") << command("M7.3", 2) << 2 << QStringList{"M7 0 1", "M8 0 1"};
    QTest::newRow("the length of the model is not taken over")
        << words << command("D100", 2, 8) << 2 << QStringList{"D100 2 1", "D101 2 1"};

    QTest::newRow("aligned words move 16 bits")
        << registerRow(2, "m16") << command("D16", 2) << 3 << QStringList{"D16 2 1", "D32 2 1", "D48 2 1"};
    QTest::newRow("aligned double words move 32 bits")
        << registerRow(2, "m16") << command("D16", 3) << 2 << QStringList{"D16 3 1", "D48 3 1"};
    QTest::newRow("aligned quad words move 64 bits")
        << registerRow(2, "m16") << command("D16", 4) << 2 << QStringList{"D16 4 1", "D80 4 1"};
    QTest::newRow("bytes of aligned words move 16 bits after two")
        << registerRow(2, "m16") << command("D16", 1) << 3 << QStringList{"D16 1 1", "D16 1 1", "D32 1 1"};
    QTest::newRow("an unaligned start is never valid")
        << registerRow(2, "m16") << command("D17", 2) << 5 << QStringList();
    QTest::newRow("multiples of 64 are met in single steps")
        << registerRow(2, "m64a1") << command("D60", 2) << 70 << QStringList{"D65 2 1", "D129 2 1"};

    QTest::newRow("a run across the end") << words << command("D9998", 2) << 5 << QStringList{"D9998 2 1", "D9999 2 1"};
    QTest::newRow("a run that enters at the start")
        << limited(words, "102", "200") << command("D100", 2) << 4 << QStringList{"D102 2 1", "D103 2 1"};
    QTest::newRow("a run of double words that jumps over the end")
        << words << command("D9997", 3) << 3 << QStringList{"D9997 3 1", "D9999 3 1"};
    QTest::newRow("shared addresses below the start use up their passes")
        << limited(words, "101", "200") << command("D100", 1) << 3 << QStringList{"D101 1 1"};
    QTest::newRow("a run beyond the end") << words << command("D10000", 2) << 3 << QStringList();
    QTest::newRow("a number that cannot be read counts from -1")
        << words << command("D99999999999", 2) << 3 << QStringList{"D0 2 1", "D1 2 1"};

    QTest::newRow("a station stands once")
        << words << command("2-D100", 2) << 2 << QStringList{"2-D100 2 1", "2-D101 2 1"};
    QTest::newRow("an empty station is 0") << words << command("-D100", 2) << 1 << QStringList{"0-D100 2 1"};
    QTest::newRow("what stands behind a second station mark is lost")
        << words << command("1-D2-3", 2) << 2 << QStringList{"1-D2 2 1", "1-D3 2 1"};
    QTest::newRow("leading zeros are lost") << words << command("D0100", 2) << 2 << QStringList{"D100 2 1", "D101 2 1"};
    QTest::newRow("hexadecimal digits") << hexadecimalRow() << command("H00FF", 2) << 2
                                        << QStringList{"Hff 2 1", "H100 2 1"};
    QTest::newRow("the text behind the number is kept")
        << enclosedRow() << command("T9.ACC", 2) << 2 << QStringList{"T9.ACC 2 1", "T10.ACC 2 1"};
    QTest::newRow("another row's address alone") << words << command("2-M100", 3, 4) << 3 << QStringList{"2-M100 3 4"};
    QTest::newRow("another row's address and no pass") << words << command("M100", 3) << 0 << QStringList{"M100 3 1"};
    QTest::newRow("no pass") << words << command("D100", 2) << 0 << QStringList();
    QTest::newRow("a negative count") << words << command("D100", 2) << -1 << QStringList();

    QTest::newRow("bits go on bit by bit") << bitRow("dot-f:r", "\\d+\\.[0-9a-f]") << command("M100.e", 0) << 3
                                           << QStringList{"M100.e 0 1", "M100.f 0 1", "M101.0 0 1"};
    QTest::newRow("bits are held against the limits")
        << limited(bitRow("union-dec:r", "\\d+"), "0", "8") << command("M7", 0) << 3 << QStringList{"M7 0 1", "M8 0 1"};
}

void TestCommandFormatterRuns::continuation()
{
    QFETCH(Row, row);
    QFETCH(CommunicatorCommand, model);
    QFETCH(int, count);
    QFETCH(QStringList, run);
    const label::CommandFormatter formatter = row.formatter();
    const LogRecorder log;
    QCOMPARE(shortForms(formatter.makeContinueCommand(model, count)), run);
    QCOMPARE(log.lines(), QStringList());
}

void TestCommandFormatterRuns::continuedCommandsAreFresh()
{
    const label::CommandFormatter formatter = registerRow().formatter();
    QCOMPARE(fullForms(formatter.makeContinueCommand(peculiar("2-D5", 3, 9), 1)),
             QStringList("2-D5 type 3 length 1 scan 1 number 0 text '' flag 0"));
    QCOMPARE(fullForms(formatter.makeContinueCommand(peculiar("D5", 2, 9), 1)),
             QStringList("D5 type 2 length 1 scan 1 number 0 text '' flag 0"));
    QCOMPARE(fullForms(formatter.makeContinueCommand(peculiar("2-M5", 3, 9), 1)),
             QStringList("2-M5 type 3 length 9 scan 7 number -1 text 'text' flag 1"));
}

void TestCommandFormatterRuns::continuationReportsUnreadableLimitsForEachPass()
{
    const label::CommandFormatter formatter = limited(registerRow(), "", "").formatter();
    const LogRecorder log;
    QCOMPARE(formatter.makeContinueCommand(command("D1", 2), 3).size(), 0);
    QCOMPARE(log.lines(), QStringList({s_limitsMessage, s_limitsMessage, s_limitsMessage}));
}

void TestCommandFormatterRuns::continuationOfManyPassesEndsAtTheLimits()
{
    const label::CommandFormatter formatter = registerRow().formatter();
    const int most = std::numeric_limits<int>::max();
    QCOMPARE(addresses(formatter.makeContinueCommand(command("D9999", 2), most)), QStringList("D9999"));
    QCOMPARE(addresses(formatter.makeContinueCommandwithCap(command("D1", 2), most, -1, true)),
             QStringList({"D1", "D0"}));
}

void TestCommandFormatterRuns::spacedContinuation_data()
{
    QTest::addColumn<Row>("row");
    QTest::addColumn<CommunicatorCommand>("model");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("cap");
    QTest::addColumn<bool>("checkRange");
    QTest::addColumn<QStringList>("run");

    const Row words = registerRow();
    QTest::newRow("spaced commands keep the length")
        << words << command("D100", 2, 2) << 3 << 5 << true << QStringList{"D100 2 2", "D105 2 2", "D110 2 2"};
    QTest::newRow("widths are not compared")
        << words << command("D100", 3) << 2 << 1 << true << QStringList{"D100 2 1", "D101 2 1"};
    QTest::newRow("a narrower command steps each time")
        << words << command("D100", 1) << 2 << 1 << true << QStringList{"D100 2 1", "D101 2 1"};
    QTest::newRow("a cap of 0 repeats one address")
        << words << command("D100", 2) << 3 << 0 << true << QStringList{"D100 2 1", "D100 2 1", "D100 2 1"};
    QTest::newRow("a cap of 0 beyond the end") << words << command("D10000", 2) << 3 << 0 << true << QStringList();
    QTest::newRow("a negative cap runs down to the start")
        << words << command("D2", 2) << 5 << -1 << true << QStringList{"D2 2 1", "D1 2 1", "D0 2 1"};
    QTest::newRow("a negative cap enters at the end")
        << words << command("D10001", 2) << 4 << -1 << true << QStringList{"D9999 2 1", "D9998 2 1"};
    QTest::newRow("a positive cap enters at the start")
        << limited(words, "105", "200") << command("D100", 2) << 3 << 5 << true << QStringList{"D105 2 1", "D110 2 1"};
    QTest::newRow("the checked end") << words << command("D9998", 2) << 3 << 1 << true
                                     << QStringList{"D9998 2 1", "D9999 2 1"};
    QTest::newRow("the unchecked end") << words << command("D9998", 2) << 3 << 1 << false
                                       << QStringList{"D9998 2 1", "D9999 2 1", "D10000 2 1"};
    QTest::newRow("unchecked numbers run below 0")
        << words << command("D0", 2) << 2 << -1 << false << QStringList{"D0 2 1", "D-1 2 1"};
    QTest::newRow("behind a station, the sign of an unchecked number is taken for a station mark")
        << words << command("2-D0", 2) << 2 << -1 << false << QStringList{"2-D0 2 1", "2-1 2 1"};
    QTest::newRow("unreadable limits do not matter unchecked")
        << limited(words, "", "") << command("D1", 2) << 2 << 1 << false << QStringList{"D1 2 1", "D2 2 1"};
    QTest::newRow("unchecked numbers wrap in 32 bits")
        << words << command("D2147483647", 2) << 2 << 1 << false << QStringList{"D2147483647 2 1", "D-2147483648 2 1"};

    QTest::newRow("checked alignment moves units")
        << registerRow(2, "m16") << command("D16", 2) << 3 << 1 << true << QStringList{"D16 2 1", "D32 2 1", "D48 2 1"};
    QTest::newRow("a cap counts aligned units")
        << registerRow(2, "m16") << command("D16", 2) << 3 << 2 << true << QStringList{"D16 2 1", "D48 2 1", "D80 2 1"};
    QTest::newRow("unchecked alignment moves single numbers") << registerRow(2, "m16") << command("D16", 2) << 3 << 1
                                                              << false << QStringList{"D16 2 1", "D17 2 1", "D18 2 1"};

    QTest::newRow("a station stands once")
        << words << command("2-D100", 2) << 2 << 10 << true << QStringList{"2-D100 2 1", "2-D110 2 1"};
    QTest::newRow("hexadecimal digits") << hexadecimalRow() << command("H0F", 2) << 2 << 16 << true
                                        << QStringList{"Hf 2 1", "H1f 2 1"};
    QTest::newRow("the text behind the number is kept")
        << enclosedRow() << command("T9.ACC", 2) << 2 << 2 << true << QStringList{"T9.ACC 2 1", "T11.ACC 2 1"};
    QTest::newRow("a bit row is stepped by words") << bitRow("dot-f:r", "\\d+\\.[0-9a-f]") << command("M7.3", 2) << 2
                                                   << 3 << true << QStringList{"M7 0 1", "M10 0 1"};
    QTest::newRow("another row's address alone")
        << words << command("2-M100", 3, 4) << 3 << 1 << true << QStringList{"2-M100 3 4"};
    QTest::newRow("no pass") << words << command("D100", 2) << 0 << 1 << true << QStringList();
    QTest::newRow("a negative count") << words << command("D100", 2) << -3 << 1 << false << QStringList();

    QTest::newRow("bits are spaced in bits") << bitRow("dot-f:r", "\\d+\\.[0-9a-f]") << command("M100.e", 0) << 2 << 3
                                             << true << QStringList{"M100.e 0 1", "M101.1 0 1"};
    QTest::newRow("checked bits stop at the limits") << limited(bitRow("union-dec:r", "\\d+"), "0", "8")
                                                     << command("M7", 0) << 2 << 2 << true << QStringList{"M7 0 1"};
    QTest::newRow("unchecked bits go beyond the limits")
        << limited(bitRow("union-dec:r", "\\d+"), "0", "8") << command("M7", 0) << 2 << 2 << false
        << QStringList{"M7 0 1", "M9 0 1"};
}

void TestCommandFormatterRuns::spacedContinuation()
{
    QFETCH(Row, row);
    QFETCH(CommunicatorCommand, model);
    QFETCH(int, count);
    QFETCH(int, cap);
    QFETCH(bool, checkRange);
    QFETCH(QStringList, run);
    const label::CommandFormatter formatter = row.formatter();
    const LogRecorder log;
    QCOMPARE(shortForms(formatter.makeContinueCommandwithCap(model, count, cap, checkRange)), run);
    QCOMPARE(log.lines(), QStringList());
}

void TestCommandFormatterRuns::spacedCommandsInheritLengthAndScanTime()
{
    const label::CommandFormatter formatter = registerRow().formatter();
    for (const bool checkRange : {true, false}) {
        QCOMPARE(fullForms(formatter.makeContinueCommandwithCap(peculiar("2-D5", 3, 9), 1, 1, checkRange)),
                 QStringList("2-D5 type 2 length 9 scan 7 number 0 text '' flag 0"));
        QCOMPARE(fullForms(formatter.makeContinueCommandwithCap(peculiar("D5", 3, 9), 1, 1, checkRange)),
                 QStringList("D5 type 2 length 9 scan 7 number 0 text '' flag 0"));
        QCOMPARE(fullForms(formatter.makeContinueCommandwithCap(peculiar("2-M5", 3, 9), 1, 1, checkRange)),
                 QStringList("2-M5 type 3 length 9 scan 7 number -1 text 'text' flag 1"));
    }
}

void TestCommandFormatterRuns::spacedContinuationReportsUnreadableLimitsForEachPass()
{
    const label::CommandFormatter formatter = limited(registerRow(), "0", "").formatter();
    const LogRecorder log;
    QCOMPARE(formatter.makeContinueCommandwithCap(command("D1", 2), 2, 5, true).size(), 0);
    QCOMPARE(log.lines(), QStringList({s_limitsMessage, s_limitsMessage}));
}

QTEST_GUILESS_MAIN(TestCommandFormatterRuns)
#include "tst_commandformatter_runs.moc"
