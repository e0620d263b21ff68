// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/logrecorder.h"

#include "zelmar_label/label_store/dynamiclabelcreators.h"

#include <QtTest>

#include <memory>
#include <type_traits>

using namespace label;

static_assert(!std::has_virtual_destructor_v<DynamicLabelCreatorInterface>,
              "a creator is released through an interface without a virtual destructor");
static_assert(sizeof(DynamicLabelCreatorInterface) == sizeof(void *), "the interface has no data");

namespace {

void addColumns()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("basePattern");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("prefixSymbol");
}

void known(const char *name, const char *address, const char *basePattern, const char *pattern,
           const char *prefixSymbol)
{
    QTest::newRow(name) << address << basePattern << pattern << prefixSymbol;
}

/// The result for one address: the three texts, or nothing when it is refused.
QStringList answer(DynamicLabelCreatorInterface &creator, const QString &address)
{
    DynamicLabelItem item;
    if (!creator.create(address, item))
        return {};
    return {item.basePattern, item.pattern, item.prefixSymbol};
}

void refusedBy(const char *name, const char *address)
{
    QTest::newRow(name) << address;
}

template<typename Creator>
bool isMade(const QString &driverName)
{
    DynamicLabelCreatorInterface *made = createDynamicLabelCreator(driverName);
    const std::unique_ptr<Creator> creator(dynamic_cast<Creator *>(made));
    return creator && made;
}

template<typename Creator>
void compareKnown()
{
    QFETCH(QString, address);
    QFETCH(QString, basePattern);
    QFETCH(QString, pattern);
    QFETCH(QString, prefixSymbol);
    Creator creator;
    const LogRecorder log;
    QCOMPARE(answer(creator, address), (QStringList{basePattern, pattern, prefixSymbol}));
    QCOMPARE(log.lines(), QStringList());
}

template<typename Creator>
void compareRefused()
{
    QFETCH(QString, address);
    Creator creator;
    DynamicLabelItem item;
    const LogRecorder log;
    QVERIFY(!creator.create(address, item));
    QCOMPARE(log.lines(), QStringList());
}

} // namespace

class DynamicLabelCreatorsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void driversOfDataBlocks_data();
    void driversOfDataBlocks();
    void driversOfDataFiles_data();
    void driversOfDataFiles();
    void theDriverOfParameters();
    void theDriverOfModules();
    void driversWithoutFamilies_data();
    void driversWithoutFamilies();

    void theDefaultCreatorRefuses_data();
    void theDefaultCreatorRefuses();

    void dataBlocks_data();
    void dataBlocks();
    void noDataBlocks_data();
    void noDataBlocks();

    void dataFiles_data();
    void dataFiles();
    void noDataFiles_data();
    void noDataFiles();
    void counterBitsTakeTheSymbolOfTheLastTimerBit_data();
    void counterBitsTakeTheSymbolOfTheLastTimerBit();
    void creatorsDoNotShareTheLastTimerBit();

    void modules_data();
    void modules();
    void noModules_data();
    void noModules();

    void parameters_data();
    void parameters();
    void noParameters_data();
    void noParameters();
};

void DynamicLabelCreatorsTest::driversOfDataBlocks_data()
{
    QTest::addColumn<QString>("driver");
    QTest::newRow("over Ethernet") << "ISO on TCP";
    QTest::newRow("over the multi-point interface") << "Simatic S7-300 MPI";
}

void DynamicLabelCreatorsTest::driversOfDataBlocks()
{
    QFETCH(QString, driver);
    QVERIFY(isMade<IsoOnTcpCerator>(driver));
}

void DynamicLabelCreatorsTest::driversOfDataFiles_data()
{
    QTest::addColumn<QString>("driver");
    QTest::newRow("the small controller on a serial line") << "MicroLogix DF1 RS232";
    QTest::newRow("the small controller over Ethernet") << "MicroLogix Ethernet";
    QTest::newRow("the large controller") << "PLC5 DF1 CRC";
}

void DynamicLabelCreatorsTest::driversOfDataFiles()
{
    QFETCH(QString, driver);
    QVERIFY(isMade<DF1Creator>(driver));
}

void DynamicLabelCreatorsTest::theDriverOfParameters()
{
    QVERIFY(isMade<LustBusCreator>(QStringLiteral("LustBus ServoC/CDE Series")));
}

void DynamicLabelCreatorsTest::theDriverOfModules()
{
    QVERIFY(isMade<Fx5uEthCreator>(QStringLiteral("FX5U Ethernet")));
}

void DynamicLabelCreatorsTest::driversWithoutFamilies_data()
{
    QTest::addColumn<QString>("driver");
    QTest::newRow("a driver without a family") << "Modbus RTU";
    QTest::newRow("no name") << "";
    QTest::newRow("a name in another case") << "iso on tcp";
    QTest::newRow("a name with a blank behind it") << "ISO on TCP ";
    QTest::newRow("only the beginning of a name") << "PLC5 DF1";
    QTest::newRow("a name with more behind it") << "FX5U Ethernet 2";
}

void DynamicLabelCreatorsTest::driversWithoutFamilies()
{
    QFETCH(QString, driver);
    QVERIFY(isMade<DefaultCreator>(driver));
}

void DynamicLabelCreatorsTest::theDefaultCreatorRefuses_data()
{
    QTest::addColumn<QString>("address");
    refusedBy("an address of a data block", "DB12.DBW4");
    refusedBy("an address of a data file", "N9:5");
    refusedBy("an address of a module", "U1\\G100");
    refusedBy("an address of a parameter", "INT16:1:2");
    refusedBy("a plain address", "D100");
    refusedBy("the empty address", "");
}

void DynamicLabelCreatorsTest::theDefaultCreatorRefuses()
{
    compareRefused<DefaultCreator>();
}

void DynamicLabelCreatorsTest::dataBlocks_data()
{
    addColumns();
    known("a word", "DB12.DBW4", "DB_DBW", "(DB12\\.DBW)(\\d+)", "DB12.DBW");
    known("a byte", "DB12.DBB4", "DB_DBB", "(DB12\\.DBB)(\\d+)", "DB12.DBB");
    known("a double word", "DB12.DBD4", "DB_DBD", "(DB12\\.DBD)(\\d+)", "DB12.DBD");
    known("a bit area without a bit is a byte", "DB12.DBX3", "DB_DBX_BYTE", "(DB12\\.DBX)(\\d+)", "DB12.DBX");
    known("the last bit of a byte", "DB12.DBX3.7", "DB_DBX", "(DB12\\.DBX)(\\d+\\.[0-7])", "DB12.DBX");
    known("the first bit of a byte", "DB12.DBX3.0", "DB_DBX", "(DB12\\.DBX)(\\d+\\.[0-7])", "DB12.DBX");
    known("the lowest block", "DB1.DBW0", "DB_DBW", "(DB1\\.DBW)(\\d+)", "DB1.DBW");
    known("the highest block", "DB2047.DBW0", "DB_DBW", "(DB2047\\.DBW)(\\d+)", "DB2047.DBW");
    known("a bit of the highest block", "DB2047.DBX0.0", "DB_DBX", "(DB2047\\.DBX)(\\d+\\.[0-7])", "DB2047.DBX");
    known("the highest block below 10", "DB9.DBB1", "DB_DBB", "(DB9\\.DBB)(\\d+)", "DB9.DBB");
    known("the highest block of three digits", "DB999.DBB1", "DB_DBB", "(DB999\\.DBB)(\\d+)", "DB999.DBB");
    known("the lowest block of four digits", "DB1000.DBB1", "DB_DBB", "(DB1000\\.DBB)(\\d+)", "DB1000.DBB");
    known("the highest block below 2000", "DB1999.DBB1", "DB_DBB", "(DB1999\\.DBB)(\\d+)", "DB1999.DBB");
    known("block 2000", "DB2000.DBB1", "DB_DBB", "(DB2000\\.DBB)(\\d+)", "DB2000.DBB");
    known("block 2039", "DB2039.DBB1", "DB_DBB", "(DB2039\\.DBB)(\\d+)", "DB2039.DBB");
    known("block 2040", "DB2040.DBB1", "DB_DBB", "(DB2040\\.DBB)(\\d+)", "DB2040.DBB");
    known("leading zeros stay in the prefix", "DB007.DBW0", "DB_DBW", "(DB007\\.DBW)(\\d+)", "DB007.DBW");
    known("leading zeros of the highest block", "DB0002047.DBX1.1", "DB_DBX", "(DB0002047\\.DBX)(\\d+\\.[0-7])",
          "DB0002047.DBX");
    known("the number is not limited", "DB1.DBW999999999999", "DB_DBW", "(DB1\\.DBW)(\\d+)", "DB1.DBW");
}

void DynamicLabelCreatorsTest::dataBlocks()
{
    compareKnown<IsoOnTcpCerator>();
}

void DynamicLabelCreatorsTest::noDataBlocks_data()
{
    QTest::addColumn<QString>("address");
    refusedBy("one beyond the highest block", "DB2048.DBW0");
    refusedBy("a bit one beyond the highest block", "DB2048.DBX0.0");
    refusedBy("a block far beyond", "DB3000.DBW0");
    refusedBy("five digits", "DB10000.DBW0");
    refusedBy("block 0", "DB0.DBW0");
    refusedBy("block 0 in three digits", "DB000.DBW0");
    refusedBy("no block number", "DB.DBW0");
    refusedBy("a bit beyond a byte", "DB12.DBX3.8");
    refusedBy("two digits of a bit", "DB12.DBX3.07");
    refusedBy("a bit of a word", "DB12.DBW3.7");
    refusedBy("no number", "DB12.DBW");
    refusedBy("no bit behind the dot", "DB12.DBX3.");
    refusedBy("an unknown width", "DB12.DBL4");
    refusedBy("small letters", "db12.dbw4");
    refusedBy("a station in front", "2-DB12.DBW4");
    refusedBy("a blank in front", " DB12.DBW4");
    refusedBy("a blank behind", "DB12.DBW4 ");
    refusedBy("another character for the dot", "DB12,DBW4");
    refusedBy("an address of a data file", "N9:5");
    refusedBy("the empty address", "");
}

void DynamicLabelCreatorsTest::noDataBlocks()
{
    compareRefused<IsoOnTcpCerator>();
}

void DynamicLabelCreatorsTest::dataFiles_data()
{
    addColumns();
    known("a binary file", "B9:3", "BINARY", "(B9:)(\\d+)", "B9:");
    known("a counter file", "C9:3", "COUNTER", "(C9:)(\\d+)", "C9:");
    known("a floating-point file", "F9:3", "FLOAT", "(F9:)(\\d+)", "F9:");
    known("a number file", "N9:5", "NUMBER", "(N9:)(\\d+)", "N9:");
    known("a timer file", "T9:3", "TIMER", "(T9:)(\\d+)", "T9:");

    known("a bit of a binary file", "B9:1/15", "BINARY_BIT", "(B9:)(\\d+/(?:1[0-5]|0?\\d))", "B9:");
    known("a bit of a counter file", "C9:1/3", "COUNTER_BIT", "(C9:)(\\d+/(?:1[0-5]|0?\\d))", "C9:");
    known("a bit of a number file", "N9:1/15", "NUMBER_BIT", "(N9:)(\\d+/(?:1[0-5]|0?\\d))", "N9:");
    known("a bit of a timer file", "T9:1/0", "TIMER_BIT", "(T9:)(\\d+/(?:1[0-5]|0?\\d))", "T9:");
    known("a bit of two digits", "N9:1/09", "NUMBER_BIT", "(N9:)(\\d+/(?:1[0-5]|0?\\d))", "N9:");
    known("the lowest bit of two digits", "N9:1/10", "NUMBER_BIT", "(N9:)(\\d+/(?:1[0-5]|0?\\d))", "N9:");

    known("the enable bit of a timer", "T9:1/EN", "TIMER_EN", "(T9:)(\\d+/EN)", "T9:");
    known("the timing bit of a timer", "T9:1/TT", "TIMER_TT", "(T9:)(\\d+/TT)", "T9:");
    known("the done bit of a timer", "T9:1/DN", "TIMER_DN", "(T9:)(\\d+/DN)", "T9:");
    known("the accumulated value of a timer", "T9:1.ACC", "TIMER_ACC", "(T9:)(\\d+)\\.ACC", "T9:");
    known("the preset value of a timer", "T9:1.PRE", "TIMER_PRE", "(T9:)(\\d+)\\.PRE", "T9:");

    known("the count-up bit of a counter, without a symbol", "C9:1/CU", "COUNTER_CU", "(C9:)(\\d+/CU)", "");
    known("the count-down bit of a counter, without a symbol", "C9:1/CD", "COUNTER_CD", "(C9:)(\\d+/CD)", "");
    known("the done bit of a counter, without a symbol", "C9:1/DN", "COUNTER_DN", "(C9:)(\\d+/DN)", "");
    known("the overflow bit of a counter, without a symbol", "C9:1/OV", "COUNTER_OV", "(C9:)(\\d+/OV)", "");
    known("the update bit of a counter, without a symbol", "C9:1/UA", "COUNTER_UA", "(C9:)(\\d+/UA)", "");
    known("the underflow bit of a counter, without a symbol", "C9:1/UN", "COUNTER_UN", "(C9:)(\\d+/UN)", "");
    known("the accumulated value of a counter", "C9:1.ACC", "COUNTER_ACC", "(C9:)(\\d+)\\.ACC", "C9:");
    known("the preset value of a counter", "C9:1.PRE", "COUNTER_PRE", "(C9:)(\\d+)\\.PRE", "C9:");

    known("the highest file", "F255:1", "FLOAT", "(F255:)(\\d+)", "F255:");
    known("file 10", "N10:1", "NUMBER", "(N10:)(\\d+)", "N10:");
    known("file 99", "N99:1", "NUMBER", "(N99:)(\\d+)", "N99:");
    known("file 100", "N100:1", "NUMBER", "(N100:)(\\d+)", "N100:");
    known("file 199", "N199:1", "NUMBER", "(N199:)(\\d+)", "N199:");
    known("file 200", "N200:1", "NUMBER", "(N200:)(\\d+)", "N200:");
    known("file 249", "N249:1", "NUMBER", "(N249:)(\\d+)", "N249:");
    known("file 250", "N250:1", "NUMBER", "(N250:)(\\d+)", "N250:");
    known("a timer bit of the highest file", "T255:1/EN", "TIMER_EN", "(T255:)(\\d+/EN)", "T255:");
    known("a counter bit of the highest file", "C255:1/UN", "COUNTER_UN", "(C255:)(\\d+/UN)", "");
    known("a numbered bit of the highest file", "B255:1/1", "BINARY_BIT", "(B255:)(\\d+/(?:1[0-5]|0?\\d))", "B255:");
    known("a preset of the highest file", "T255:1.PRE", "TIMER_PRE", "(T255:)(\\d+)\\.PRE", "T255:");
    known("leading zeros stay in the prefix", "N009:1", "NUMBER", "(N009:)(\\d+)", "N009:");
    known("the element is not limited", "N9:99999999999", "NUMBER", "(N9:)(\\d+)", "N9:");
}

void DynamicLabelCreatorsTest::dataFiles()
{
    compareKnown<DF1Creator>();
}

void DynamicLabelCreatorsTest::noDataFiles_data()
{
    QTest::addColumn<QString>("address");
    refusedBy("a file below 9", "N8:5");
    refusedBy("file 0", "N0:5");
    refusedBy("a file below 9 behind zeros", "N007:5");
    refusedBy("one beyond the highest file", "F256:1");
    refusedBy("a timer bit one beyond the highest file", "T256:1/DN");
    refusedBy("a counter bit below file 9", "C5:1/DN");
    refusedBy("a preset below file 9", "T4:1.PRE");
    refusedBy("a numbered bit below file 9", "B3:1/1");
    refusedBy("four digits of a file", "N1000:1");
    refusedBy("a numbered bit of a floating-point file", "F9:1/3");
    refusedBy("a bit beyond a word", "N9:1/16");
    refusedBy("three digits of a bit", "N9:1/015");
    refusedBy("no bit behind the slash", "N9:1/");
    refusedBy("a counter's bit of a timer", "T9:1/CU");
    refusedBy("a timer's bit of a counter", "C9:1/EN");
    refusedBy("a done bit of a number file", "N9:1/DN");
    refusedBy("an accumulated value of a number file", "N9:1.ACC");
    refusedBy("a position, which neither timers nor counters have", "T9:1.POS");
    refusedBy("an unknown file type", "A9:1");
    refusedBy("a file type in small letters", "n9:5");
    refusedBy("a bit name in small letters", "T9:1/dn");
    refusedBy("no element", "N9:");
    refusedBy("no colon", "N9");
    refusedBy("a station in front", "1-N9:5");
    refusedBy("a station in front of a timer bit", "1-T9:1/DN");
    refusedBy("a blank behind", "N9:5 ");
    refusedBy("the empty address", "");
}

void DynamicLabelCreatorsTest::noDataFiles()
{
    compareRefused<DF1Creator>();
}

void DynamicLabelCreatorsTest::counterBitsTakeTheSymbolOfTheLastTimerBit_data()
{
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<QString>("prefixSymbol");
    QTest::newRow("nothing before") << QStringList() << "";
    QTest::newRow("a timer bit right before") << QStringList{"T9:1/DN"} << "T9:";
    QTest::newRow("a timer bit and another counter bit before") << QStringList{"T9:1/DN", "C12:7/CU"} << "T9:";
    QTest::newRow("the later of two timer bits") << QStringList{"T9:1/DN", "T20:1/EN"} << "T20:";
    QTest::newRow("a word since the timer bit") << QStringList{"T9:1/DN", "N9:1"} << "";
    QTest::newRow("a preset since the timer bit") << QStringList{"T9:1/DN", "T9:1.PRE"} << "";
    QTest::newRow("a numbered bit since the timer bit") << QStringList{"T9:1/DN", "T9:1/5"} << "";
    QTest::newRow("a refused address since the timer bit") << QStringList{"T9:1/DN", "X"} << "";
    QTest::newRow("only a counter bit before") << QStringList{"C9:1/DN"} << "";
    QTest::newRow("a timer bit after a word") << QStringList{"N9:1", "T11:1/TT"} << "T11:";
}

void DynamicLabelCreatorsTest::counterBitsTakeTheSymbolOfTheLastTimerBit()
{
    QFETCH(QStringList, before);
    QFETCH(QString, prefixSymbol);
    DF1Creator creator;
    for (const QString &address : qAsConst(before))
        answer(creator, address);
    QCOMPARE(answer(creator, QStringLiteral("C9:1/DN")),
             (QStringList{QStringLiteral("COUNTER_DN"), QStringLiteral("(C9:)(\\d+/DN)"), prefixSymbol}));
}

void DynamicLabelCreatorsTest::creatorsDoNotShareTheLastTimerBit()
{
    DF1Creator first;
    DF1Creator second;
    QCOMPARE(answer(first, QStringLiteral("T9:1/DN")).at(2), QStringLiteral("T9:"));
    QCOMPARE(answer(second, QStringLiteral("C9:1/DN")).at(2), QString());
    QCOMPARE(answer(first, QStringLiteral("C9:1/DN")).at(2), QStringLiteral("T9:"));
}

void DynamicLabelCreatorsTest::modules_data()
{
    addColumns();
    known("a module", "U1\\G100", "MOD_ACCESS_DEV", "(U1\\\\G)(\\d+)", "U1\\G");
    known("the first module and address", "U0\\G0", "MOD_ACCESS_DEV", "(U0\\\\G)(\\d+)", "U0\\G");
    known("leading zeros stay in the prefix", "U01\\G007", "MOD_ACCESS_DEV", "(U01\\\\G)(\\d+)", "U01\\G");
    known("the numbers are not limited", "U99999\\G4294967296", "MOD_ACCESS_DEV", "(U99999\\\\G)(\\d+)", "U99999\\G");
}

void DynamicLabelCreatorsTest::modules()
{
    compareKnown<Fx5uEthCreator>();
}

void DynamicLabelCreatorsTest::noModules_data()
{
    QTest::addColumn<QString>("address");
    refusedBy("no backslash", "U1G100");
    refusedBy("a slash for the backslash", "U1/G100");
    refusedBy("two backslashes", "U1\\\\G100");
    refusedBy("small letters", "u1\\g100");
    refusedBy("no module number", "U\\G100");
    refusedBy("no number", "U1\\G");
    refusedBy("a hexadecimal module number", "U3E\\G100");
    refusedBy("a bit", "U1\\G100.1");
    refusedBy("a station in front", "1-U1\\G100");
    refusedBy("text behind", "U1\\G100x");
    refusedBy("the empty address", "");
}

void DynamicLabelCreatorsTest::noModules()
{
    compareRefused<Fx5uEthCreator>();
}

void DynamicLabelCreatorsTest::parameters_data()
{
    addColumns();
    known("an integer of 16 bits, highest index", "INT16:1:65535", "INT16_NO_IDX", "(INT16:1:)(\\d+)", "INT16:1:");
    known("an integer of 8 bits", "INT8:1:2", "INT8_NO_IDX", "(INT8:1:)(\\d+)", "INT8:1:");
    known("an integer of 32 bits", "INT32:1:2", "INT32_NO_IDX", "(INT32:1:)(\\d+)", "INT32:1:");
    known("an unsigned of 8 bits", "USIGN8:1:2", "USIGN8_NO_IDX", "(USIGN8:1:)(\\d+)", "USIGN8:1:");
    known("an unsigned of 16 bits", "USIGN16:1:2", "USIGN16_NO_IDX", "(USIGN16:1:)(\\d+)", "USIGN16:1:");
    known("an unsigned of 32 bits", "USIGN32:1:2", "USIGN32_NO_IDX", "(USIGN32:1:)(\\d+)", "USIGN32:1:");
    known("a fixed-point number of 16 bits", "FIXPT16:1:2", "FIXPT16_NO_IDX", "(FIXPT16:1:)(\\d+)", "FIXPT16:1:");
    known("a fixed-point number of 32 bits", "INT32Q16:1:2", "INT32Q16_NO_IDX", "(INT32Q16:1:)(\\d+)", "INT32Q16:1:");
    known("a floating-point number", "FLOAT32:1:2", "FLOAT32_NO_IDX", "(FLOAT32:1:)(\\d+)", "FLOAT32:1:");
    known("a text", "STRING:1:0", "STRING_NO", "(STRING:1:)(\\d+)", "STRING:1:");

    known("the last bit of 8", "USIGN8:1:2.7", "USIGN8_NO_IDX_BIT", "(USIGN8:1:)(\\d+\\.[0-7])", "USIGN8:1:");
    known("the last bit of 16", "USIGN16:1:2.15", "USIGN16_NO_IDX_BIT", "(USIGN16:1:)(\\d+\\.(?:1[0-5]|0?\\d))",
          "USIGN16:1:");
    known("a bit of 16 in two digits", "USIGN16:1:2.09", "USIGN16_NO_IDX_BIT", "(USIGN16:1:)(\\d+\\.(?:1[0-5]|0?\\d))",
          "USIGN16:1:");
    known("the last bit of 32", "USIGN32:1:2.31", "USIGN32_NO_IDX_BIT", "(USIGN32:1:)(\\d+\\.(?:3[01]|[0-2]?\\d))",
          "USIGN32:1:");
    known("bit 29 of 32", "USIGN32:1:2.29", "USIGN32_NO_IDX_BIT", "(USIGN32:1:)(\\d+\\.(?:3[01]|[0-2]?\\d))",
          "USIGN32:1:");
    known("a bit of the highest index", "USIGN32:999:65535.0", "USIGN32_NO_IDX_BIT",
          "(USIGN32:999:)(\\d+\\.(?:3[01]|[0-2]?\\d))", "USIGN32:999:");

    known("the highest number", "INT16:999:0", "INT16_NO_IDX", "(INT16:999:)(\\d+)", "INT16:999:");
    known("number 0", "INT16:0:0", "INT16_NO_IDX", "(INT16:0:)(\\d+)", "INT16:0:");
    known("leading zeros of the number", "INT16:00012:3", "INT16_NO_IDX", "(INT16:00012:)(\\d+)", "INT16:00012:");
    known("leading zeros of the index", "INT16:1:0065535", "INT16_NO_IDX", "(INT16:1:)(\\d+)", "INT16:1:");
    known("index 59999", "INT16:1:59999", "INT16_NO_IDX", "(INT16:1:)(\\d+)", "INT16:1:");
    known("index 60000", "INT16:1:60000", "INT16_NO_IDX", "(INT16:1:)(\\d+)", "INT16:1:");
    known("index 64999", "INT16:1:64999", "INT16_NO_IDX", "(INT16:1:)(\\d+)", "INT16:1:");
    known("index 65499", "INT16:1:65499", "INT16_NO_IDX", "(INT16:1:)(\\d+)", "INT16:1:");
    known("index 65529", "INT16:1:65529", "INT16_NO_IDX", "(INT16:1:)(\\d+)", "INT16:1:");

    known("a type in small letters stays as typed", "int16:1:2", "int16_NO_IDX", "(int16:1:)(\\d+)", "int16:1:");
    known("a type in mixed letters stays as typed", "Float32:1:2", "Float32_NO_IDX", "(Float32:1:)(\\d+)",
          "Float32:1:");
    known("a text in small letters stays as typed", "string:1:0", "string_NO", "(string:1:)(\\d+)", "string:1:");
}

void DynamicLabelCreatorsTest::parameters()
{
    compareKnown<LustBusCreator>();
}

void DynamicLabelCreatorsTest::noParameters_data()
{
    QTest::addColumn<QString>("address");
    refusedBy("one beyond the highest index", "INT16:1:65536");
    refusedBy("an index of five digits far beyond", "INT16:1:99999");
    refusedBy("an index of six digits", "INT16:1:123456");
    refusedBy("a number of four digits", "INT16:1000:1");
    refusedBy("an unknown type", "FOO:1:2");
    refusedBy("a type with more behind it", "INT16X:1:2");
    refusedBy("a text whose type has more behind it", "STRING8:1:0");
    refusedBy("a text at an index", "STRING:1:5");
    refusedBy("a text at index 0 in two digits", "STRING:1:00");
    refusedBy("a text in small letters at an index", "string:1:5");
    refusedBy("one beyond the last bit of 8", "USIGN8:1:2.8");
    refusedBy("two digits of a bit of 8", "USIGN8:1:2.07");
    refusedBy("one beyond the last bit of 16", "USIGN16:1:2.16");
    refusedBy("one beyond the last bit of 32", "USIGN32:1:2.32");
    refusedBy("a bit of an index beyond the highest", "USIGN32:1:65536.0");
    refusedBy("a bit of a signed integer", "INT16:1:2.3");
    refusedBy("a bit of a type in small letters", "usign8:1:2.7");
    refusedBy("no number", "INT16::2");
    refusedBy("no index", "INT16:1:");
    refusedBy("no second colon", "INT16:1");
    refusedBy("a station in front", "1-INT16:1:2");
    refusedBy("a station in front of a bit", "1-USIGN8:1:2.7");
    refusedBy("a blank behind", "INT16:1:2 ");
    refusedBy("the empty address", "");
}

void DynamicLabelCreatorsTest::noParameters()
{
    compareRefused<LustBusCreator>();
}

QTEST_GUILESS_MAIN(DynamicLabelCreatorsTest)

#include "tst_dynamiclabelcreators.moc"
