// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/toolprocess.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace {

const char *const stepScript = R"(
function init() { canConvertToRegister = true; }
function getAddressRange(address) { return parseInt(address.substr(2), 10); }
function bitoffset(address) { return 13; }
function convertToRegisterAddress(address) { return address.split("/")[0]; }
function makeBitContinueCommand(address, count, step) {
    var list = [];
    for (var i = 0; i < count; ++i)
        list.push("T:" + (parseInt(address.substr(2), 10) + i * step) + "/DN");
    return list;
}
)";

Row row(const char *pattern, int type, const char *description, const char *symbol, const char *start, const char *end,
        int dataSize, const char *rule = "", int base = 10, int blocksize = 64)
{
    Row made;
    made.pattern = QLatin1String(pattern);
    made.type = type;
    made.description = QLatin1String(description);
    made.prefixSymbol = QLatin1String(symbol);
    made.start = QLatin1String(start);
    made.end = QLatin1String(end);
    made.dataSize = dataSize;
    made.multipleRule = QLatin1String(rule);
    made.base = base;
    made.blocksize = blocksize;
    return made;
}

QList<Row> plcRows()
{
    return {
        row("(D)(\\d{1,4})", 2, "D: data register, D0-D7999, e.g. D100", "D", "0", "7999", 2),
        row("(D)(\\d{1,4}\\.[0-9A-Fa-f])", 0, "Dn.b: bit of a data register, e.g. D100.A", "D", "0", "7999", 2,
            "dot-f:r"),
        row("(X)([0-7]+)", 0, "X: input (octal), e.g. X17", "X", "0", "1777", 1, "union-oct:rm16_K4X", 8),
        row("(K4X)([0-7]+)", 2, "K4X: sixteen inputs (octal), e.g. K4X20", "K4X", "0", "1760", 2, "m16", 8, 4),
        row("(C)(\\d+)", 0, "C: coil, e.g. C1", "C", "1", "2000", 1, "union-dec:n"),
        row("(V)(\\d+\\.[0-7])", 0, "Vn.b: bit without register, e.g. V1.7", "V", "0", "99", 1, "dot-oct:n"),
        row("(L)(\\d+)", 2, "L: register that is read alone, e.g. L5", "L", "0", "99", 2, "", 10, 0),
        row("(ST)(\\d+)\\.LEN", 2, "STn.LEN: length of a text, e.g. ST5.LEN", "ST", "0", "99", 2),
        row("(T:)(\\d+)", 2, "T:n: timer, e.g. T:5", "T:", "0", "99", 2),
        row("(T:)(\\d+/DN)", 0, "T:n/DN: done bit of a timer, e.g. T:5/DN", "T:", "0", "99", 2, "F>step.js"),
        row("(B)(\\d+)", 1, "B: byte, e.g. B5", "B", "0", "99", 1),
        row("(G)(\\d+)", 4, "G: group of 64 items, e.g. G65", "G", "1", "4033", 8, "m64a1"),
        row("(Y)(\\d+)", 2, "Y: register of no size, e.g. Y5", "Y", "0", "99", 0),
    };
}

QList<Row> blockRows()
{
    return {
        row("(MB)(\\d+)", 1, "MB: memory byte, e.g. MB10", "MB", "0", "99", 1),
        row("DB_DBX", 0, "DBn.DBXb.x: data block bit, e.g. DB1.DBX3.7", "DB", "0", "65535", 1, "dot-oct:r"),
        row("DB_DBX_BYTE", 1, "DBn.DBXb: byte of bits, e.g. DB1.DBX3", "DB", "0", "65535", 1),
        row("DB_DBW", 2, "DBn.DBWb: data block word, e.g. DB1.DBW4", "DB", "0", "9", 2),
    };
}

Driver driver(const char *name, const QList<Row> &rows, const char *table)
{
    Driver made;
    made.name = QLatin1String(name);
    made.rows = rows;
    made.generalTable = QStringLiteral("general_") + QLatin1String(table);
    made.deviceTable = QStringLiteral("types_") + QLatin1String(table);
    return made;
}

} // namespace

/// Runs a copy of the built program, beside the test's own database and scripts.
class TestTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void outputs_data();
    void outputs();
    void standardInput();
    void standardInputAsJson();
    void emptyStandardInput();
    void jsonHasExactlyTheKeys();
    void debugPrintsTheLog();
    void otherDatabase();
    void otherDatabaseIsNotWritten();
    void unreadable_data();
    void unreadable();
    void unknownDriverNamesTheFile();
    void missingDatabaseBesideTheProgram();
    void usage_data();
    void usage();
    void help_data();
    void help();
    void version();
    void manyAddressesOfOneFamily();
    void largestCount();
    void shippedDrivers_data();
    void shippedDrivers();

private:
    Result run(const QStringList &arguments, const QByteArray &input = QByteArray()) const;

    QDir m_folder;
    QString m_tool;
};

void TestTool::initTestCase()
{
    m_folder = QDir(QCoreApplication::applicationDirPath());
    QVERIFY(m_folder.mkpath(QStringLiteral("tool/database")));
    QVERIFY(m_folder.mkpath(QStringLiteral("tool/scripts")));
    QVERIFY(m_folder.cd(QStringLiteral("tool")));
    m_tool = copyTool(QStringLiteral(ZELMAR_LABEL_TOOL), m_folder.path());
    writeFile(m_folder.filePath(QStringLiteral("scripts/step.js")), stepScript);
    writeDriverDatabase(m_folder.filePath(QStringLiteral("database/drivers")),
                        {driver("Test PLC", plcRows(), "plc"), driver("ISO on TCP", blockRows(), "iso"),
                         driver("Empty PLC", {}, "empty")});
    writeDriverDatabase(m_folder.filePath(QStringLiteral("other")),
                        {driver("Other PLC", {row("(Q)(\\d)", 5, "", "Q", "0", "7", 1)}, "other")});
}

Result TestTool::run(const QStringList &arguments, const QByteArray &input) const
{
    return runProcess(m_tool, arguments, input);
}

void TestTool::outputs_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("out");
    QTest::addColumn<QString>("err");

    // Arguments are separated by "|".
    const auto add = [](const char *name, const char *arguments, int code, const char *out, const char *err = "") {
        QTest::newRow(name) << argumentsOf(arguments) << code << QString::fromUtf8(out) << QString::fromUtf8(err);
    };

    add("drivers as a table", "drivers", 0,
        "driver      formats  largest read  largest read of bits\n"
        "Test PLC    13       100           200\n"
        "ISO on TCP  4        100           200\n"
        "Empty PLC   0        100           200\n");
    add("drivers as JSON", "drivers|--json", 0,
        "{\"driver\":\"Test PLC\",\"formats\":13,\"blockSize\":100,\"bitBlockSize\":200}\n"
        "{\"driver\":\"ISO on TCP\",\"formats\":4,\"blockSize\":100,\"bitBlockSize\":200}\n"
        "{\"driver\":\"Empty PLC\",\"formats\":0,\"blockSize\":100,\"bitBlockSize\":200}\n");
    add("formats of a driver with families", "formats|ISO on TCP", 0,
        "symbol  example     range       radix  kind  family  format\n"
        "MB      MB0         0 to 99     10     byte  -       MB: memory byte\n"
        "DB      DB1.DBX0.0  0 to 65535  10     bit   family  DBn.DBXb.x: data block bit\n"
        "DB      DB1.DBX0    0 to 65535  10     byte  family  DBn.DBXb: byte of bits\n"
        "DB      DB1.DBW0    0 to 9      10     word  family  DBn.DBWb: data block word\n");
    add("formats as JSON", "--json|formats|ISO on TCP", 0,
        "{\"typeIndex\":0,\"format\":\"MB: memory byte, e.g. MB10\",\"prefix\":\"MB\",\"example\":\"MB0\","
        "\"first\":\"0\",\"last\":\"99\",\"radix\":10,\"dataType\":\"byte\",\"family\":false}\n"
        "{\"typeIndex\":1,\"format\":\"DBn.DBXb.x: data block bit, e.g. DB1.DBX3.7\",\"prefix\":\"DB\","
        "\"example\":\"DB1.DBX0.0\",\"first\":\"0\",\"last\":\"65535\",\"radix\":10,\"dataType\":\"bit\","
        "\"family\":true}\n"
        "{\"typeIndex\":2,\"format\":\"DBn.DBXb: byte of bits, e.g. DB1.DBX3\",\"prefix\":\"DB\","
        "\"example\":\"DB1.DBX0\",\"first\":\"0\",\"last\":\"65535\",\"radix\":10,\"dataType\":\"byte\","
        "\"family\":true}\n"
        "{\"typeIndex\":3,\"format\":\"DBn.DBWb: data block word, e.g. DB1.DBW4\",\"prefix\":\"DB\","
        "\"example\":\"DB1.DBW0\",\"first\":\"0\",\"last\":\"9\",\"radix\":10,\"dataType\":\"word\","
        "\"family\":true}\n");

    add("accepted addresses", "check|Test PLC|D100|2-D100|3-D7.a|X17|C5", 0,
        "verdict  address  station  symbol  range  number  bit  kind  register\n"
        "ok       D100     -        D       100    100     -    word  -\n"
        "ok       2-D100   2        D       100    100     -    word  -\n"
        "ok       3-D7.a   3        D       7.a    7       10   bit   3-D7\n"
        "ok       X17      -        X       17     15      15   bit   K4X0\n"
        "ok       C5       -        C       5      5       0    bit   -\n");
    add("accepted and refused ones in the order of the question", "check|Test PLC|D8000|D1|X18", 1,
        "verdict  address  station  symbol  range  number  bit  kind  register\n"
        "refused  D8000    number 8000 is above D's last, 7999; try D7999\n"
        "ok       D1       -        D       1      1       -    word  -\n"
        "refused  X18      8 at position 3 is no octal digit; the numbers of X are octal; try X17 or X20\n");
    add("refused only", "check|Test PLC|K4X12", 1,
        "refused  K4X12  number 12 is not a multiple of 20 (octal); 0 and 20 are; try K4X20 or K4X0\n");
    add("a station that is no number", "check|Test PLC|x-D100", 1,
        "refused  x-D100  the station \"x\" is not a decimal number; try D100\n");
    add("a dash in an address", "check|Test PLC|D-100", 1,
        "refused  D-100  the station \"D\" is not a decimal number; try D100\n");
    add("a dash for a separator", "check|Test PLC|D100-5", 1,
        "refused  D100-5  the station \"D100\" is not a decimal number; try D1005 or D100.5\n");
    add("no station and no address of the asked type", "check|Test PLC|--type|bit|x-D100", 1,
        "refused  x-D100  the station \"x\" is not a decimal number\n");
    add("a station with a sign", "check|Test PLC|+2-D100", 1,
        "refused  +2-D100  the station \"+2\" is not a decimal number; try D100\n");
    add("a station beyond an int", "check|Test PLC|99999999999-D100", 1,
        "refused  99999999999-D100  the station \"99999999999\" is not a decimal number; try D100\n");
    add("a missing station", "check|Test PLC|--|-D100", 1,
        "refused  -D100  the station number before \"-\" is missing; try D100\n");
    add("a second station", "check|Test PLC|1-D2-3", 1,
        "refused  1-D2-3  there is a second \"-\"; it may only separate the station\n");
    add("an empty address", "check|Test PLC|", 1, "refused    the address is empty\n");
    add("bits only", "check|Test PLC|--type|bit|D1|D1.0", 1,
        "verdict  address  station  symbol  range  number  bit  kind  register\n"
        "refused  D1       D1 is a word, not a bit; try D1.0\n"
        "ok       D1.0     -        D       1.0    1       0    bit   D1\n");
    add("registers only", "check|Test PLC|--type|register|D1.0", 1,
        "refused  D1.0  D1.0 is a bit, not a register; try D1\n");
    add("any type, said", "check|Test PLC|--type|any|D1", 0,
        "verdict  address  station  symbol  range  number  bit  kind  register\n"
        "ok       D1       -        D       1      1       -    word  -\n");
    add("a family's bit and its register", "check|ISO on TCP|4-DB12.DBX3.7", 0,
        "verdict  address        station  symbol  range      number  bit  kind  register\n"
        "ok       4-DB12.DBX3.7  4        DB      12.DBX3.7  3       7    bit   4-DB12.DBX3\n");
    add("a family's limit, at once", "check|ISO on TCP|DB12.DBW10|DB12.DBW10|DB12.DBW9", 1,
        "verdict  address     station  symbol  range    number  bit  kind  register\n"
        "refused  DB12.DBW10  number 10 is above DB12.DBW's last, 9, yet labels take it unchecked; try DB12.DBW9\n"
        "refused  DB12.DBW10  number 10 is above DB12.DBW's last, 9, yet labels take it unchecked; try DB12.DBW9\n"
        "ok       DB12.DBW9   -        DB      12.DBW9  9       -    word  -\n");
    add("a family of the other type", "check|ISO on TCP|--type|bit|DB12.DBW9", 1,
        "refused  DB12.DBW9  DB12.DBW9 is a word, not a bit, yet labels take it unchecked; try DB12.DBX9.0\n");
    add("no such member of a family", "check|ISO on TCP|DB5000.DBW1", 1,
        "refused  DB5000.DBW1  DB number 5000 is too high; the last is 2047; try DB2047.DBW1\n");
    add("the name of a family", "check|ISO on TCP|DB_DBW", 1,
        "refused  DB_DBW  \"DB_DBW\" is the name of a family of formats and no address; the family is DBn.DBWb: data "
        "block word, e.g. DB1.DBW4; try DB1.DBW0\n");
    add("suggestions at the station of the question", "check|Test PLC|4-d7|4-D100,5|4-D8000.1", 1,
        "refused  4-d7       \"d\" at position 1 should be \"D\": letter case counts; try 4-D7\n"
        "refused  4-D100,5   \",\" at position 5 should be \".\"; try 4-D100.5\n"
        "refused  4-D8000.1  number 8000 is above Dn.b's last, 7999; try 4-D7999.1\n");
    add("accepted and refused as JSON", "check|Test PLC|--json|2-D7.a|3-D8000|x-D1", 1,
        "{\"address\":\"2-D7.a\",\"valid\":true,\"station\":2,\"typeIndex\":1,"
        "\"format\":\"Dn.b: bit of a data register, e.g. D100.A\",\"prefix\":\"D\",\"range\":\"7.a\",\"number\":7,"
        "\"bit\":10,\"dataType\":\"bit\",\"register\":\"2-D7\",\"reason\":null,\"fault\":null,"
        "\"suggestions\":[]}\n"
        "{\"address\":\"3-D8000\",\"valid\":false,\"station\":3,\"typeIndex\":null,\"format\":null,\"prefix\":null,"
        "\"range\":null,\"number\":null,\"bit\":null,\"dataType\":null,\"register\":null,"
        "\"reason\":\"number 8000 is above D's last, 7999\","
        "\"fault\":{\"kind\":\"aboveLast\",\"limit\":\"7999\",\"number\":\"8000\",\"position\":3,\"radix\":10,"
        "\"slip\":null},\"suggestions\":[\"3-D7999\"]}\n"
        "{\"address\":\"x-D1\",\"valid\":false,\"station\":null,\"typeIndex\":null,\"format\":null,\"prefix\":null,"
        "\"range\":null,\"number\":null,\"bit\":null,\"dataType\":null,\"register\":null,"
        "\"reason\":\"the station \\\"x\\\" is not a decimal number\","
        "\"fault\":{\"kind\":\"stationNotNumber\",\"limit\":null,\"number\":null,\"position\":null,\"radix\":null,"
        "\"slip\":null},\"suggestions\":[\"D1\"]}\n");
    add("quotes and letters beyond ASCII in JSON", "check|Test PLC|--json|\"\xc3\xa4", 1,
        "{\"address\":\"\\\"\xc3\xa4\",\"valid\":false,\"station\":null,\"typeIndex\":null,\"format\":null,"
        "\"prefix\":null,\"range\":null,\"number\":null,\"bit\":null,\"dataType\":null,\"register\":null,"
        "\"reason\":\"no format begins with \\\"\\\"\\\"\","
        "\"fault\":{\"kind\":\"unknownFront\",\"limit\":null,\"number\":null,\"position\":0,\"radix\":null,"
        "\"slip\":null},\"suggestions\":[]}\n");

    add("one address follows by default", "next|Test PLC|D100|--as|word", 0, "D101\n");
    add("leading zeros do not survive", "next|Test PLC|D0100|--as|word", 0, "D101\n");
    add("double words go on by two registers", "next|Test PLC|2-D100|--as|dword|--count|3", 0,
        "2-D102\n2-D104\n2-D106\n");
    add("quad words go on by four registers", "next|Test PLC|D100|--as|qword|--count|2", 0, "D104\nD108\n");
    add("bytes share registers", "next|Test PLC|D100|--as|byte|--count|3", 0, "D100\nD101\nD101\n");
    add("octal bits", "next|Test PLC|X17|--as|bit|--count|2", 0, "X20\nX21\n");
    add("bits with a station keep their symbol", "next|Test PLC|3-D7.e|--as|bit|--count|3", 0,
        "3-D7.f\n3-D8.0\n3-D8.1\n");
    add("a script's bits", "next|Test PLC|T:5/DN|--as|bit|--count|2", 0, "T:6/DN\nT:7/DN\n");
    add("aligned words", "next|Test PLC|K4X20|--as|word|--count|2", 0, "K4X40\nK4X60\n");
    add("the next in a family", "next|ISO on TCP|DB12.DBW8|--as|word", 0, "DB12.DBW9\n");
    add("next as JSON", "next|Test PLC|3-D100|--as|dword|--json", 0,
        "{\"address\":\"3-D102\",\"dataType\":\"double word\",\"length\":1}\n");
    add("spaced", "next|Test PLC|D100|--as|word|--cap|5|--count|2", 0, "D105\nD110\n");
    add("spaced downwards to the first", "next|Test PLC|D3|--as|word|--cap|-2|--count|3", 0, "D1\n",
        "zelmar-label: D3 is followed by only 1 of 3 addresses: D begins at 0\n");
    add("spaced without alignment", "next|Test PLC|K4X20|--as|word|--cap|1|--unchecked", 0, "K4X21\n");
    add("beyond the limits when unchecked", "next|Test PLC|D7999|--as|word|--cap|1|--unchecked", 0, "D8000\n");
    add("never below zero, which would read as a station", "next|Test PLC|D1|--as|word|--cap|-1|--unchecked|--count|3",
        0, "D0\n", "zelmar-label: D1 is followed by only 1 of 3 addresses: numbers cannot be below 0\n");
    add("the range ends", "next|Test PLC|2-D7998|--as|word|--count|3", 0, "2-D7999\n",
        "zelmar-label: 2-D7998 is followed by only 1 of 3 addresses: D ends at 7999\n");
    add("the range has ended", "next|Test PLC|D7999|--as|word", 0, "",
        "zelmar-label: no address follows D7999: D ends at 7999\n");
    add("bits do not run over the last word", "next|Test PLC|D7999.e|--as|bit|--count|3", 0, "D7999.f\n",
        "zelmar-label: D7999.e is followed by only 1 of 3 addresses: number 8000 is above Dn.b's last, 7999\n");
    add("numbers between the aligned ones", "next|Test PLC|G65|--as|qword", 0, "",
        "zelmar-label: no address follows G65: number 66 is not a multiple of 64 plus 1; 65 and 129 are\n");
    add("spaced by less than the alignment", "next|Test PLC|G65|--as|qword|--cap|32|--count|3", 0, "G129\n",
        "zelmar-label: G65 is followed by only 1 of 3 addresses: number 97 is not a multiple of 64 plus 1; 65 and 129 "
        "are\n");
    add("spaced like the alignment, up to the end", "next|Test PLC|G3969|--as|qword|--cap|64|--count|2", 0, "G4033\n",
        "zelmar-label: G3969 is followed by only 1 of 2 addresses: G ends at 4033\n");
    add("double words up to the end", "next|Test PLC|D7997|--as|dword|--count|2", 0, "D7999\n",
        "zelmar-label: D7997 is followed by only 1 of 2 addresses: D ends at 7999\n");
    add("octal end in the row's writing", "next|Test PLC|X1777|--as|bit", 0, "",
        "zelmar-label: no address follows X1777: X ends at 1777 (octal)\n");
    add("a start that is refused", "next|Test PLC|D8000|--as|word", 1, "",
        "zelmar-label: D8000: number 8000 is above D's last, 7999\n");
    add("a register as bits", "next|Test PLC|D100|--as|bit", 1, "", "zelmar-label: D100 is a word, not a bit\n");
    add("a bit as words", "next|Test PLC|X1|--as|word", 1, "", "zelmar-label: X1 is a bit, not a register\n");

    add("a double word in words", "split|Test PLC|3-D100|--as|dword", 0, "3-D100  word\n3-D101  word\n");
    add("a text in words, the last one half full", "split|Test PLC|D100|--as|text|--length|5", 0,
        "D100  word\nD101  word\nD102  word\n");
    add("several words", "split|Test PLC|D100|--as|word|--length|3", 0, "D100  word\nD101  word\nD102  word\n");
    add("an item that one unit holds", "split|Test PLC|D100|--as|byte", 0, "D100  byte\n");
    add("a quad word in bytes", "split|Test PLC|B1|--as|qword|--json", 0,
        "{\"address\":\"B1\",\"dataType\":\"byte\",\"length\":1}\n{\"address\":\"B2\",\"dataType\":\"byte\",\"length\":"
        "1}\n"
        "{\"address\":\"B3\",\"dataType\":\"byte\",\"length\":1}\n{\"address\":\"B4\",\"dataType\":\"byte\",\"length\":"
        "1}\n"
        "{\"address\":\"B5\",\"dataType\":\"byte\",\"length\":1}\n{\"address\":\"B6\",\"dataType\":\"byte\",\"length\":"
        "1}\n"
        "{\"address\":\"B7\",\"dataType\":\"byte\",\"length\":1}\n{\"address\":\"B8\",\"dataType\":\"byte\",\"length\":"
        "1}\n");
    add("units that count bits", "split|Test PLC|K4X20|--as|dword", 0, "K4X20  word\nK4X40  word\n");
    add("an item that reaches beyond the end", "split|Test PLC|D7998|--as|qword", 1, "D7998  word\nD7999  word\n",
        "zelmar-label: D7998: the item needs 4 units, but D ends at 7999\n");
    add("units without a size", "split|Test PLC|Y5|--as|word", 1, "",
        "zelmar-label: Y5: the units of Y have no size in the driver database\n");
    add("a bit is not cut", "split|Test PLC|X1|--as|word", 1, "", "zelmar-label: X1 is a bit, not a register\n");

    add("blocks of the largest size", "blocks|Test PLC|2-D100|--count|150", 0,
        "2-D100  length 64  word\n2-D164  length 64  word\n2-D228  length 22  word\n");
    add("exactly one block", "blocks|Test PLC|D100|--count|64", 0, "D100  length 64  word\n");
    add("blocks as JSON", "blocks|Test PLC|2-D100|--count|65|--json", 0,
        "{\"address\":\"2-D100\",\"dataType\":\"word\",\"length\":64}\n"
        "{\"address\":\"2-D164\",\"dataType\":\"word\",\"length\":1}\n");
    add("units that count bits, in blocks", "blocks|Test PLC|K4X20|--count|5", 0,
        "K4X20   length 4  word\nK4X120  length 1  word\n");
    add("bits by the registers that hold them", "blocks|Test PLC|4-D100.e|--count|19", 0, "4-D100  length 3  word\n");
    add("bits that fill their register", "blocks|Test PLC|D100.0|--count|16", 0, "D100  length 1  word\n");
    add("one bit more", "blocks|Test PLC|D100.0|--count|17", 0, "D100  length 2  word\n");
    add("bits by registers that count bits", "blocks|Test PLC|X17|--count|2", 0, "K4X0  length 2  word\n");
    add("coils by themselves", "blocks|Test PLC|C5|--count|70", 0, "C5   length 64  bit\nC69  length 6   bit\n");
    add("a family's bits", "blocks|ISO on TCP|3-DB5.DBX3.6|--count|3", 0, "3-DB5.DBX3  length 2  byte\n");
    add("the last number", "blocks|Test PLC|D7990|--count|10", 0, "D7990  length 10  word\n");
    add("beyond the last number", "blocks|Test PLC|D7990|--count|11", 1, "",
        "zelmar-label: D7990: the run goes beyond the end: D ends at 7999\n");
    add("bits beyond the last register", "blocks|Test PLC|D7999.f|--count|2", 1, "",
        "zelmar-label: D7999.f: the run goes beyond the end: D ends at 7999\n");
    add("bits without a register", "blocks|Test PLC|V1.7|--count|2", 1, "",
        "zelmar-label: V1.7: bits of Vn.b cannot be read in blocks: no register holds them\n");
    add("a block size of 0", "blocks|Test PLC|L5|--count|2", 1, "",
        "zelmar-label: L5: the driver database allows no blocks of L: its block size is 0\n");
    add("a text behind the number", "blocks|Test PLC|ST5.LEN|--count|2", 1, "",
        "zelmar-label: ST5.LEN: addresses like ST5.LEN cannot be read in blocks: a block address has only a symbol and "
        "a "
        "number\n");
    add("bits that are one a register", "blocks|Test PLC|T:5/DN|--count|2", 1, "",
        "zelmar-label: T:5/DN: the bits that follow are not adjacent in registers\n");
    add("a single bit of those", "blocks|Test PLC|T:5/DN|--count|1", 0, "T:5  length 1  word\n");
    add("a start that is refused, in blocks", "blocks|Test PLC|Q9|--count|1", 1, "",
        "zelmar-label: Q9: no format begins with \"Q\"\n");
}

void TestTool::outputs()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, code);
    QFETCH(QString, out);
    QFETCH(QString, err);
    const Result result = run(arguments);
    QCOMPARE(result.err, err);
    QCOMPARE(result.out, out);
    QCOMPARE(result.code, code);
}

void TestTool::standardInput()
{
    const Result result = run({QStringLiteral("check"), QStringLiteral("Test PLC"), QStringLiteral("D1"),
                               QStringLiteral("-"), QStringLiteral("D4")},
                              "D2\r\n\n  \r\nD8000\nD3");
    QCOMPARE(result.code, 1);
    QCOMPARE(result.err, QString());
    QCOMPARE(result.out, QStringLiteral("verdict  address  station  symbol  range  number  bit  kind  register\n"
                                        "ok       D1       -        D       1      1       -    word  -\n"
                                        "ok       D2       -        D       2      2       -    word  -\n"
                                        "refused  D8000    number 8000 is above D's last, 7999; try D7999\n"
                                        "ok       D3       -        D       3      3       -    word  -\n"
                                        "ok       D4       -        D       4      4       -    word  -\n"));
}

void TestTool::standardInputAsJson()
{
    const Result result =
        run({QStringLiteral("check"), QStringLiteral("Test PLC"), QStringLiteral("-"), QStringLiteral("--json")},
            "X1\nC1\n");
    QCOMPARE(result.code, 0);
    QCOMPARE(result.out.count(QLatin1Char('\n')), 2);
    QVERIFY(result.out.startsWith(QStringLiteral("{\"address\":\"X1\",\"valid\":true,")));
}

void TestTool::emptyStandardInput()
{
    const Result result = run({QStringLiteral("check"), QStringLiteral("Test PLC"), QStringLiteral("-")}, QByteArray());
    QCOMPARE(result.code, 0);
    QCOMPARE(result.out, QString());
    QCOMPARE(result.err, QString());
}

void TestTool::jsonHasExactlyTheKeys()
{
    const QStringList keys = {QStringLiteral("address"),   QStringLiteral("bit"),     QStringLiteral("dataType"),
                              QStringLiteral("fault"),     QStringLiteral("format"),  QStringLiteral("number"),
                              QStringLiteral("prefix"),    QStringLiteral("range"),   QStringLiteral("reason"),
                              QStringLiteral("register"),  QStringLiteral("station"), QStringLiteral("suggestions"),
                              QStringLiteral("typeIndex"), QStringLiteral("valid")};
    const Result result = run({QStringLiteral("check"), QStringLiteral("Test PLC"), QStringLiteral("--json"),
                               QStringLiteral("D1"), QStringLiteral("Q1")});
    const QStringList lines = result.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 2);
    for (const QString &line : lines)
        QCOMPARE(QJsonDocument::fromJson(line.toUtf8()).object().keys(), keys);
}

void TestTool::debugPrintsTheLog()
{
    const QString line = QStringLiteral("------------------------------------------    commandformatter\n");
    const Result result = run({QStringLiteral("next"), QStringLiteral("ISO on TCP"), QStringLiteral("MB1"),
                               QStringLiteral("--as"), QStringLiteral("byte"), QStringLiteral("--debug")});
    QCOMPARE(result.code, 0);
    QCOMPARE(result.out, QStringLiteral("MB2\n"));
    QCOMPARE(result.err, line.repeated(4));
}

void TestTool::otherDatabase()
{
    const Result result =
        run({QStringLiteral("check"), QStringLiteral("--database"), m_folder.filePath(QStringLiteral("other")),
             QStringLiteral("Other PLC"), QStringLiteral("Q7")});
    QCOMPARE(result.err, QString());
    QCOMPARE(result.out, QStringLiteral("verdict  address  station  symbol  range  number  bit  kind  register\n"
                                        "ok       Q7       -        Q       7      7       -    text  -\n"));
    QCOMPARE(result.code, 0);
}

void TestTool::otherDatabaseIsNotWritten()
{
    const QString path = m_folder.filePath(QStringLiteral("locked"));
    QFile::remove(path);
    QVERIFY(QFile::copy(m_folder.filePath(QStringLiteral("other")), path));
    QVERIFY(QFile::setPermissions(path, QFileDevice::ReadOwner));
    const Result result = run({QStringLiteral("drivers"), QStringLiteral("--database"), path});
    QCOMPARE(result.code, 0);
    QVERIFY(!QFile::exists(path + QStringLiteral("-journal")));
    QVERIFY(!QFile::exists(path + QStringLiteral("-wal")));
}

void TestTool::unreadable_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("sentence");
    const QStringList check = {QStringLiteral("check"), QStringLiteral("Test PLC"), QStringLiteral("D1")};
    QTest::newRow("no such file") << check + QStringList({QStringLiteral("--database"), QStringLiteral("missing")})
                                  << "there is no driver database at missing; name one with --database FILE";
    QTest::newRow("a folder") << QStringList(
                                     {QStringLiteral("drivers"), QStringLiteral("--database"), QStringLiteral(".")})
                              << "there is no driver database at .; name one with --database FILE";
    QTest::newRow("no SQLite file") << check + QStringList({QStringLiteral("--database"), QStringLiteral("text")})
                                    << "text is not a driver database (file is not a database); name another with "
                                       "--database FILE";
    QTest::newRow("no SQLite file, asked for drivers")
        << QStringList({QStringLiteral("drivers"), QStringLiteral("--database"), QStringLiteral("text")})
        << "text is not a driver database (file is not a database); name another with --database FILE";
    QTest::newRow("an empty file") << check + QStringList({QStringLiteral("--database"), QStringLiteral("empty")})
                                   << "empty is not a driver database (no such table: table_index); name another with "
                                      "--database FILE";
}

void TestTool::unreadable()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, sentence);
    writeFile(QStringLiteral("text"), QByteArray("not a database, but some text that is long enough\n").repeated(40));
    writeFile(QStringLiteral("empty"), QByteArray());
    const Result result = run(arguments);
    QCOMPARE(result.err, QStringLiteral("zelmar-label: %1\n").arg(sentence));
    QCOMPARE(result.out, QString());
    QCOMPARE(result.code, 3);
}

void TestTool::unknownDriverNamesTheFile()
{
    const QString path = m_folder.filePath(QStringLiteral("database/drivers"));
    const auto message = [this](const char *driver) {
        return run({QStringLiteral("check"), QString::fromUtf8(driver), QStringLiteral("D1")});
    };
    QCOMPARE(message("test plc").err,
             QStringLiteral("zelmar-label: there is no driver \"test plc\" in %1; near names: \"Test PLC\"; "
                            "\"zelmar-label drivers\" lists all\n")
                 .arg(path));
    QCOMPARE(message("PLC").err,
             QStringLiteral("zelmar-label: there is no driver \"PLC\" in %1; near names: \"Test PLC\", \"Empty PLC\"; "
                            "\"zelmar-label drivers\" lists all\n")
                 .arg(path));
    QCOMPARE(message("ISO of TCP").err,
             QStringLiteral("zelmar-label: there is no driver \"ISO of TCP\" in %1; near names: \"ISO on TCP\"; "
                            "\"zelmar-label drivers\" lists all\n")
                 .arg(path));
    QCOMPARE(message("O'Hara").err,
             QStringLiteral("zelmar-label: there is no driver \"O'Hara\" in %1; \"zelmar-label drivers\" lists all\n")
                 .arg(path));
    QCOMPARE(
        message("Empty PLC").err,
        QStringLiteral("zelmar-label: driver \"Empty PLC\" has no formats in %1: its device table is missing, empty "
                       "or lacks a column\n")
            .arg(path));
    QCOMPARE(message("Empty PLC").code, 3);
    QCOMPARE(message("PLC").code, 3);
}

void TestTool::missingDatabaseBesideTheProgram()
{
    const QString alone = m_folder.filePath(QStringLiteral("alone"));
    const Result result = runProcess(copyTool(m_tool, alone), {QStringLiteral("drivers")});
    QCOMPARE(result.code, 3);
    QCOMPARE(result.err,
             QStringLiteral("zelmar-label: there is no driver database at %1/database/drivers; name one with "
                            "--database FILE\n")
                 .arg(alone));
}

void TestTool::usage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("sentence");
    QTest::addColumn<QString>("usage");
    const auto add = [](const char *name, const char *arguments, const char *sentence, const char *usage) {
        QTest::newRow(name) << QString::fromLatin1(arguments).split(QLatin1Char('|'), Qt::SkipEmptyParts)
                            << QString::fromLatin1(sentence) << QString::fromLatin1(usage);
    };
    add("no command", "", "the command is missing", "COMMAND [options] ...");
    add("unknown command", "chekc", "there is no command \"chekc\"", "COMMAND [options] ...");
    add("no driver", "formats", "the driver is missing", "formats [options] DRIVER");
    add("no address", "check|Test PLC", "the address is missing", "check [options] DRIVER ADDRESS...");
    add("an argument too many", "formats|Test PLC|D1", "\"D1\" is one argument too many", "formats [options] DRIVER");
    add("a driver for drivers", "drivers|Test PLC", "\"Test PLC\" is one argument too many", "drivers [options]");
    add("a second address", "next|Test PLC|D1|D2|--as|word", "\"D2\" is one argument too many",
        "next [options] --as TYPE DRIVER ADDRESS");
    add("an option of another command", "check|Test PLC|D1|--count|3", "Unknown option 'count'",
        "check [options] DRIVER ADDRESS...");
    add("an empty database", "check|Test PLC|D1|--database=", "--database is empty",
        "check [options] DRIVER ADDRESS...");
    add("an option without its value", "next|Test PLC|D1|--as", "Missing value after '--as'",
        "next [options] --as TYPE DRIVER ADDRESS");
    add("an unknown type filter", "check|Test PLC|D1|--type|word", "--type \"word\" is not one of any, bit, register",
        "check [options] DRIVER ADDRESS...");
    add("no data type", "next|Test PLC|D1", "--as is missing: one of bit, byte, word, dword, qword, text",
        "next [options] --as TYPE DRIVER ADDRESS");
    add("an unknown data type", "next|Test PLC|D1|--as|int",
        "--as \"int\" is not one of bit, byte, word, dword, qword, text", "next [options] --as TYPE DRIVER ADDRESS");
    add("bits are not split", "split|Test PLC|D1|--as|bit", "--as \"bit\" is not one of byte, word, dword, qword, text",
        "split [options] --as TYPE DRIVER ADDRESS");
    add("a count that is no number", "next|Test PLC|D1|--as|word|--count|ten",
        "--count \"ten\" is not a whole number, or is too large", "next [options] --as TYPE DRIVER ADDRESS");
    add("a count of 0", "next|Test PLC|D1|--as|word|--count|0", "--count 0 is not between 1 and 1000000",
        "next [options] --as TYPE DRIVER ADDRESS");
    add("a count of a million and one", "blocks|Test PLC|D1|--count|1000001",
        "--count 1000001 is not between 1 and 1000000", "blocks [options] --count N DRIVER ADDRESS");
    add("blocks without a count", "blocks|Test PLC|D1", "--count is missing: how many items to read",
        "blocks [options] --count N DRIVER ADDRESS");
    add("a distance of 0", "next|Test PLC|D1|--as|word|--cap|0", "--cap 0 would repeat one address",
        "next [options] --as TYPE DRIVER ADDRESS");
    add("a distance that is no number", "next|Test PLC|D1|--as|word|--cap|1.5",
        "--cap \"1.5\" is not a whole number, or is too large", "next [options] --as TYPE DRIVER ADDRESS");
    add("unchecked without a distance", "next|Test PLC|D1|--as|word|--unchecked", "--unchecked needs --cap",
        "next [options] --as TYPE DRIVER ADDRESS");
    add("a length of 0", "split|Test PLC|D1|--as|text|--length|0", "--length 0 is not between 1 and 1000000",
        "split [options] --as TYPE DRIVER ADDRESS");
}

void TestTool::usage()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, sentence);
    QFETCH(QString, usage);
    const Result result = run(arguments);
    const QStringList lines = result.err.split(QLatin1Char('\n'));
    QCOMPARE(lines.value(0), QLatin1String("zelmar-label: ") + sentence);
    QCOMPARE(lines.value(1), QLatin1String("Usage: zelmar-label ") + usage);
    QCOMPARE(result.out, QString());
    QCOMPARE(result.code, 2);
}

void TestTool::help_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("usage");
    QTest::newRow("the program's") << QStringList({QStringLiteral("--help")}) << "COMMAND [options] ...";
    QTest::newRow("short option") << QStringList({QStringLiteral("-h")}) << "COMMAND [options] ...";
    QTest::newRow("a command's") << QStringList({QStringLiteral("check"), QStringLiteral("--help")})
                                 << "check [options] DRIVER ADDRESS...";
    QTest::newRow("before the command") << QStringList({QStringLiteral("--help"), QStringLiteral("blocks")})
                                        << "blocks [options] --count N DRIVER ADDRESS";
}

void TestTool::help()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, usage);
    const Result result = run(arguments);
    QCOMPARE(result.code, 0);
    QCOMPARE(result.err, QString());
    QCOMPARE(result.out.section(QLatin1Char('\n'), 0, 0), QLatin1String("Usage: zelmar-label ") + usage);
}

void TestTool::version()
{
    const Result result = run({QStringLiteral("--version")});
    QCOMPARE(result.code, 0);
    QCOMPARE(result.out, QStringLiteral("zelmar-label " ZELMAR_LABEL_TOOL_VERSION "\n"));
}

void TestTool::manyAddressesOfOneFamily()
{
    // If each refused address added a row, the last ones would take seconds each.
    const Result result =
        run({QStringLiteral("check"), QStringLiteral("ISO on TCP"), QStringLiteral("-"), QStringLiteral("--json")},
            QByteArray("DB12.DBW10\n").repeated(3000) + "DB12.DBX1\n");
    QCOMPARE(result.code, 1);
    QCOMPARE(result.out.count(QStringLiteral("\"valid\":false")), 3000);
    // Four rows of the database, and one of the family for the address that is accepted.
    QVERIFY(result.out.contains(QStringLiteral("\"typeIndex\":4,")));
}

void TestTool::largestCount()
{
    const Result result =
        run({QStringLiteral("next"), QStringLiteral("Test PLC"), QStringLiteral("D0"), QStringLiteral("--as"),
             QStringLiteral("word"), QStringLiteral("--count"), QStringLiteral("1000000")});
    QCOMPARE(result.code, 0);
    QCOMPARE(result.out.count(QLatin1Char('\n')), 7999);
    QCOMPARE(result.err,
             QStringLiteral("zelmar-label: D0 is followed by only 7999 of 1000000 addresses: D ends at 7999\n"));
}

void TestTool::shippedDrivers_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("out");
    QTest::newRow("octal relays") << QStringList({QStringLiteral("next"), QStringLiteral("FX5U Ethernet"),
                                                  QStringLiteral("X17"), QStringLiteral("--as"), QStringLiteral("bit")})
                                  << "X20\n";
    QTest::newRow("a data block of its own")
        << QStringList({QStringLiteral("next"), QStringLiteral("ISO on TCP"), QStringLiteral("4-DB12.DBX10.7"),
                        QStringLiteral("--as"), QStringLiteral("bit")})
        << "4-DB12.DBX11.0\n";
    QTest::newRow("a script's bits") << QStringList({QStringLiteral("next"), QStringLiteral("MicroLogix DF1 RS232"),
                                                     QStringLiteral("T4:0/DN"), QStringLiteral("--as"),
                                                     QStringLiteral("bit")})
                                     << "T4:1/DN\n";
}

void TestTool::shippedDrivers()
{
    if (!QFile::exists(QStringLiteral(ZELMAR_LABEL_TOOL_FOLDER "/database/drivers")))
        QSKIP("the shipped driver database is not built");
    QFETCH(QStringList, arguments);
    const Result result = runProcess(QStringLiteral(ZELMAR_LABEL_TOOL), arguments);
    QCOMPARE(result.err, QString());
    QTEST(result.out, "out");
    QCOMPARE(result.code, 0);
}

QTEST_GUILESS_MAIN(TestTool)

#include "tst_tool.moc"
