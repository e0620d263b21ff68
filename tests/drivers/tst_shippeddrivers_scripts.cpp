// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/shippeddriverstest.h"
#include "support/shippedfiles.h"
#include "zelmar_label/address_grammar/scripthook.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QDir>
#include <QTest>

using namespace label;
using namespace shipped;

class ShippedDriversScripts : public ShippedDriversTest
{
    Q_OBJECT

private Q_SLOTS:
    void scriptsRun_data();
    void scriptsRun();
    void scriptsConvert_data();
    void scriptsConvert();
    void scriptsBearAnyText_data();
    void scriptsBearAnyText();
};

void ShippedDriversScripts::scriptsRun_data()
{
    QTest::addColumn<QString>("driverName");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("step");
    QTest::addColumn<QString>("run");

    const QString ml = QStringLiteral("MicroLogix Ethernet");
    const QString plc5 = QStringLiteral("PLC5 DF1 CRC");
    const QString modbus = QStringLiteral("Modbus TCP");
    const QString fp = QStringLiteral("FP Serial");
    const QString ads = QStringLiteral("ADS Index");
    const QString fam3 = QStringLiteral("FAM3 Ethernet");
    const QString fins = QStringLiteral("OMRON FINS");
    const auto add = [](const char *name, const QString &driverName, const char *address, int count, int step,
                        const char *run) {
        QTest::newRow(name) << driverName << QString(QLatin1String(address)) << count << step
                            << QString(QLatin1String(run));
    };
    add("named bits go from element to element", ml, "T4:0/DN", 3, 1, "T4:0/DN T4:1/DN T4:2/DN");
    add("named bits keep their station", ml, "2-C5:7/CU", 2, 1, "2-C5:7/CU 2-C5:8/CU");
    add("named bits of a family keep their file", ml, "R6:3/FD", 2, 1, "R6:3/FD R6:4/FD");
    add("named bits honour the step", ml, "T4:0/EN", 3, 5, "T4:0/EN T4:5/EN T4:10/EN");
    add("named bits go down", ml, "T4:2/EN", 5, -1, "T4:2/EN T4:1/EN T4:0/EN");
    add("named bits with a step of 0 repeat", ml, "T4:2/EN", 2, 0, "T4:2/EN T4:2/EN");
    add("named bits stop at the last element of a MicroLogix", ml, "T4:254/TT", 5, 1, "T4:254/TT T4:255/TT");
    add("named bits go on to the last element of a PLC-5", plc5, "T4:254/TT", 3, 1, "T4:254/TT T4:255/TT T4:256/TT");
    add("named bits stop at the last element of a PLC-5", plc5, "T4:999/TT", 3, 1, "T4:999/TT");
    add("named bits lose leading zeros", ml, "T4:007/TT", 2, 1, "T4:7/TT T4:8/TT");
    add("no named bits for a count of 0", ml, "T4:0/DN", 0, 1, "");
    add("no named bits for a negative count", ml, "T4:0/DN", -3, 1, "");
    add("octal bits carry at 16", plc5, "I:017/16", 3, 1, "I:017/16 I:017/17 I:020/00");
    add("octal bits carry over several words", plc5, "O:077/17", 2, 33, "O:077/17 O:102/00");
    add("octal bits keep their station", plc5, "3-O:007/17", 2, 1, "3-O:007/17 3-O:010/00");
    add("octal bits stay as narrow as they are", plc5, "I:0/0", 2, 1, "I:0/0 I:0/1");
    add("octal bits go down", plc5, "I:1/0", 3, -1, "I:1/0 I:0/17 I:0/16");
    add("octal bits stop at the last word", plc5, "I:277/17", 3, 1, "I:277/17");
    add("octal bits stop at the first bit", plc5, "I:000/01", 5, -1, "I:000/01 I:000/00");
    add("no octal bits for a negative count", plc5, "I:000/00", -1, 1, "");
    add("terminals go on in the next slot", fam3, "X00263", 4, 1, "X00263 X00264 X00301 X00302");
    add("terminals go on in the next unit", fam3, "Y01664", 2, 1, "Y01664 Y10101");
    add("terminals go down", fam3, "X10101", 2, -1, "X10101 X01664");
    add("terminals honour the step", fam3, "X00201", 3, 64, "X00201 X00301 X00401");
    add("terminals with a step of 0 repeat", fam3, "X00201", 2, 0, "X00201 X00201");
    add("terminals keep their station and letter", fam3, "2-x00216", 2, 1, "2-x00216 2-x00217");
    add("terminals stay as narrow as they are", fam3, "X964", 2, 1, "X964 X1001");
    add("terminals stop at the last slot", fam3, "Y71663", 5, 1, "Y71663 Y71664");
    add("terminals stop behind the processor", fam3, "X00202", 5, -1, "X00202 X00201");
    add("no terminals for a count of 0", fam3, "X00201", 0, 1, "");
    add("no terminals for a negative count", fam3, "X00201", -1, 1, "");
    add("bits of banks carry at 16", fins, "EA_100.14", 3, 1, "EA_100.14 EA_100.15 EA_101.00");
    add("bits of banks carry over several words", fins, "E0_0.15", 2, 33, "E0_0.15 E0_3.00");
    add("bits of banks keep their station", fins, "3-E18_7.15", 2, 1, "3-E18_7.15 3-E18_8.00");
    add("bits of banks are as wide as they are", fins, "e0c_00099.9", 2, 1, "e0c_00099.9 e0c_00099.10");
    add("bits of banks go down", fins, "E1_1.00", 3, -1, "E1_1.00 E1_0.15 E1_0.14");
    add("bits of banks stop at the last word", fins, "E1_32767.15", 3, 1, "E1_32767.15");
    add("bits of banks stop at the first one", fins, "E1_0.01", 5, -1, "E1_0.01 E1_0.00");
    add("no bits of banks for a negative count", fins, "E1_0.00", -1, 1, "");
    add("coils keep five digits", modbus, "00009", 2, 1, "00009 00010");
    add("coils keep six digits", modbus, "009999", 2, 1, "009999 010000");
    add("coils keep their station", modbus, "7-00001", 3, 8, "7-00001 7-00009 7-00017");
    add("coils of five digits stop where the digits end", modbus, "09999", 2, 1, "09999");
    add("coils of six digits stop at the last coil", modbus, "065536", 2, 1, "065536");
    add("coils stop at the first one", modbus, "00002", 5, -1, "00002 00001");
    add("no coils for a count of 0", modbus, "00001", 0, 1, "");
    add("named bits behind a point keep it", ml, "T4:0.DN", 3, 1, "T4:0.DN T4:1.DN T4:2.DN");
    add("binary bits count through their file", ml, "B3/15", 3, 1, "B3/15 B3/16 B3/17");
    add("binary bits keep their station", ml, "2-B10/00031", 2, 1, "2-B10/31 2-B10/32");
    add("binary bits honour the step", ml, "B3/0", 3, 16, "B3/0 B3/16 B3/32");
    add("binary bits stop at the last word of a MicroLogix", ml, "B3/4095", 3, 1, "B3/4095");
    add("binary bits go on to the last word of a PLC-5", plc5, "B3/4095", 2, 1, "B3/4095 B3/4096");
    add("binary bits stop at the last word of a PLC-5", plc5, "B255/15998", 5, 1, "B255/15998 B255/15999");
    add("binary bits stop at the first one", ml, "B3/1", 5, -1, "B3/1 B3/0");
    add("no binary bits for a count of 0", ml, "B3/1", 0, 1, "");
    add("named bits of a family keep their file behind a point", ml, "T10:5.DN", 2, 1, "T10:5.DN T10:6.DN");
    add("octal bits keep the number of their file", plc5, "I1:017/17", 2, 1, "I1:017/17 I1:020/00");
    add("relays carry after the hexadecimal digit", fp, "X9E", 3, 1, "X9E X9F X100");
    add("relays of word 0 have no word", fp, "YE", 3, 1, "YE YF Y10");
    add("relays keep their station", fp, "2-RF", 2, 1, "2-RF 2-R10");
    add("relays honour the step", fp, "Y0", 3, 16, "Y0 Y10 Y20");
    add("relays go down", fp, "R11", 3, -1, "R11 R10 RF");
    add("relays with a step of 0 repeat", fp, "R11", 2, 0, "R11 R11");
    add("relays stop at the last word", fp, "L639E", 5, 1, "L639E L639F");
    add("relays stop at the first word", fp, "X1", 5, -1, "X1 X0");
    add("relays do not go on among the special ones", fp, "R886F", 3, 224, "R886F");
    add("special relays do not go on among the others", fp, "R9001", 3, -1, "R9001 R9000");
    add("special relays stop at the last word", fp, "R911F", 3, 1, "R911F");
    add("relays lose leading zeros and keep their letter", fp, "r001e", 2, 1, "r1E r1F");
    add("no relays for a count of 0", fp, "X0", 0, 1, "");
    add("no relays for a negative count", fp, "X0", -1, 1, "");
    add("bits of bytes carry at 8", ads, "0x4020:0x1F.6", 3, 1, "0x4020:0x1f.6 0x4020:0x1f.7 0x4020:0x20.0");
    add("bits of bytes keep decimal offsets", ads, "16416:9.7", 2, 1, "16416:9.7 16416:10.0");
    add("bits of bytes go down", ads, "0x4020:0x1.1", 3, -2, "0x4020:0x1.1 0x4020:0x0.7 0x4020:0x0.5");
    add("bits of bytes stop at the first one", ads, "0xF030:0.1", 5, -1, "0xF030:0.1 0xF030:0.0");
    add("bits of bytes stop at the last one", ads, "0x4040:268435455.7", 3, 1, "0x4040:268435455.7");
    add("bit offsets count on", ads, "3-0x4021:0xE", 3, 1, "3-0x4021:0xe 3-0x4021:0xf 3-0x4021:0x10");
    add("bit offsets honour the step", ads, "0xF021:131", 2, 8, "0xF021:131 0xF021:139");
    add("bit offsets stop at the last one", ads, "16417:2147483646", 3, 1, "16417:2147483646 16417:2147483647");
    add("bit offsets stop at the first one", ads, "0X4021:0X1", 3, -1, "0X4021:0X1 0X4021:0X0");
    add("no bits of bytes for a count of 0", ads, "0x4020:0x0.0", 0, 1, "");
}

void ShippedDriversScripts::scriptsRun()
{
    QFETCH(QString, driverName);
    QFETCH(QString, address);
    QFETCH(int, count);
    QFETCH(int, step);
    QFETCH(QString, run);
    LabelLoader &label = *labelOf(driverName);
    const int index = label.addressValidation(address, bitRow);
    QVERIFY(index >= 0);
    const CommandFormatter *row = label.deviceTypesTable().formatterAt(index);
    const QList<CommunicatorCommand> made =
        row->makeBitContinueCommand(command(address, CommunicatorCommand::Bit), count, step, true);
    QCOMPARE(addresses(made).join(QLatin1Char(' ')), run);
}

void ShippedDriversScripts::scriptsConvert_data()
{
    QTest::addColumn<QString>("driverName");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("registerAddress");
    QTest::addColumn<int>("registerType");

    const QString ml = QStringLiteral("MicroLogix DF1 RS232");
    const QString plc5 = QStringLiteral("PLC5 DF1 CRC");
    const QString fp = QStringLiteral("FP Serial");
    const QString ads = QStringLiteral("ADS Index");
    const QString fam3 = QStringLiteral("FAM3 Ethernet");
    const QString fins = QStringLiteral("OMRON FINS");
    const int byte = CommunicatorCommand::Byte;
    const int word = CommunicatorCommand::Word;
    const auto add = [](const char *name, const QString &driverName, const char *address, const char *registerAddress,
                        int registerType) {
        QTest::newRow(name) << driverName << QString(QLatin1String(address)) << QString(QLatin1String(registerAddress))
                            << registerType;
    };
    add("a named bit lies in the first word", ml, "T4:3/DN", "T4:3", word);
    add("a named bit behind a point lies in the first word", ml, "T4:3.DN", "T4:3", word);
    add("a binary bit lies in a sixteenth of its place", ml, "B3/17", "B3:1", word);
    add("a binary bit of a family lies in its file", plc5, "B10/15999", "B10:999", word);
    add("the word of a binary bit keeps the station", ml, "2-B3/4095", "2-B3:255", word);
    add("a named bit of a family lies in its file", ml, "T10:5.DN", "T10:5", word);
    add("the word of a named bit keeps the station", ml, "2-T4:3/DN", "2-T4:3", word);
    add("the word of an octal bit keeps its zeros", plc5, "I:017/05", "I:017", word);
    add("the word of an octal bit keeps the station", plc5, "2-O:1/5", "2-O:1", word);
    add("the word of an octal bit keeps the number of its file", plc5, "O0:1/5", "O0:1", word);
    add("a relay without a word lies in word 0", fp, "X5", "WX0", word);
    add("the word of a relay is in upper case", fp, "r1f", "WR1", word);
    add("the word of a special relay keeps the station", fp, "2-R901C", "2-WR901", word);
    add("a terminal lies in the word of its sixteen", fam3, "X00264", "X00249", word);
    add("the first terminal lies in the first word", fam3, "Y10101", "Y10101", word);
    add("the word of a terminal keeps its zeros and the station", fam3, "2-X00218", "2-X00217", word);
    add("a bit of a bank lies in a word of the bank", fins, "EA_100.05", "EA_100", word);
    add("the word of a bit of a bank keeps the station", fins, "2-e18_0032767.15", "2-e18_0032767", word);
    add("a bit of a byte lies in it", ads, "0x4020:0x10.3", "0x4020:0x10", byte);
    add("a bit offset lies in the group of the bytes", ads, "0x4021:0x83", "0x4020:0x10", byte);
    add("the byte of a decimal bit offset is decimal", ads, "16417:131", "16416:16", byte);
    add("the byte of a bit offset keeps the station", ads, "3-0xf021:0x9", "3-0xF020:0x1", byte);
}

void ShippedDriversScripts::scriptsConvert()
{
    QFETCH(QString, driverName);
    QFETCH(QString, address);
    QFETCH(QString, registerAddress);
    QFETCH(int, registerType);
    int index = -1;
    LabelLoader &label = *labelOf(driverName);
    const CommunicatorCommand made =
        label.convertBitCommandToRegisterCommand(command(address, CommunicatorCommand::Bit), index);
    QCOMPARE(made.address, registerAddress);
    QCOMPARE(label.datatype(index), registerType);
}

void ShippedDriversScripts::scriptsBearAnyText_data()
{
    QTest::addColumn<QString>("fileName");
    const QStringList names = QDir(runtimeFolder() + QLatin1String("/scripts")).entryList(QDir::Files);
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << name;
}

void ShippedDriversScripts::scriptsBearAnyText()
{
    QFETCH(QString, fileName);
    ScriptHook script(QLatin1String("F>") + fileName);
    QVERIFY(script.load());
    for (const char *text : {"",
                             "-",
                             "--",
                             "x",
                             "T4:/DN",
                             "T4:0/",
                             "T4:0/constructor",
                             "T4:0/toString",
                             "I:/0",
                             "O:9/0",
                             "0",
                             "000000000000000001",
                             "2-",
                             "S>NULL",
                             "XG",
                             "R-1",
                             ":",
                             "0x:0x.0",
                             "0x4020:",
                             "0x4020:0x.0",
                             "0x4020:.0",
                             "0x4022:0x0",
                             "1F:0.0",
                             "B3/",
                             "E_0.0",
                             "E19_0.0",
                             "E0_0.16",
                             "B/1"}) {
        const QString address = QLatin1String(text);
        QCOMPARE(script.getAddressRange(address), -1);
        QCOMPARE(script.bitoffset(address), -1);
        QCOMPARE(script.convertToRegisterAddress(address), QString());
        QCOMPARE(script.makeBitContinueCommand(command(address, CommunicatorCommand::Bit), 3, 1).size(), 0);
    }
}

QTEST_GUILESS_MAIN(ShippedDriversScripts)

#include "tst_shippeddrivers_scripts.moc"
