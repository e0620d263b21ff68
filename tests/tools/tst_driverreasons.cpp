// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/toolprocess.h"

#include <QTest>

/// Tests the tool's messages for typing errors with the shipped drivers.
class DriverReasons : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reasons_data();
    void reasons();
};

void DriverReasons::reasons_data()
{
    QTest::addColumn<QString>("driver");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("advice");
    const auto add = [](const char *name, const char *driver, const char *address, const char *advice) {
        QTest::newRow(name) << QString(QLatin1String(driver)) << QString(QLatin1String(address))
                            << QString(QLatin1String(advice));
    };
    add("a script's bit keeps its digit", "FP Serial", "X128F", "number 128 is above X's last, 127; try X127F");
    add("a script's bit keeps its bank", "OMRON FINS", "E0_40000.1",
        "number 40000 is above Eb_n.b's last, 32767; try E0_32767.1");
    add("bits that are counted through a file", "MicroLogix Ethernet", "B3/5000",
        "number 5000 is above B3/n's last, 4095; try B3/4095");
    add("a terminal that a slot does not have", "FAM3 Ethernet", "X00265",
        "X expects a digit from 0 to 4 at position 6, not \"5\"; try X00264");
    add("terminals begin at 1", "FAM3 Ethernet", "X00200",
        "X expects a digit from 1 to 9 at position 6, not \"0\"; try X00201");
    add("an accumulator that is not there", "S7 200 PPI", "AC4",
        "AC expects a digit from 0 to 3 at position 3, not \"4\"; try AC3 or C4 or AB4 or AW4 or AD4");
    add("an odd analog word", "S7 200 PPI", "AIW1",
        "AIW expects \"0\", \"2\", \"4\", \"6\" or \"8\" at position 5, where the address ends; try AIW0 or AIW10 or "
        "IW1 or AW1");
    add("a symbol without its number", "OMRON FINS", "CIO",
        "CIO expects a digit at position 4, where the address ends; try CIO0 or CIO0.0 or C10");
    add("an older tool's timer", "OMRON FINS", "TIM000",
        "T expects a digit at position 2, not \"I\"; try T000 or TK000");
    add("a coil with the letter O", "Modbus TCP", "O0001",
        "the letter \"O\" at position 1 should be the digit 0; try 00001");
    add("the letter O for a whole number", "MicroLogix Ethernet", "T4:O/DN",
        "the letter \"O\" at position 4 should be the digit 0; try T4:0/DN");
    add("a file number with a zero in front", "MicroLogix Ethernet", "N07:0",
        "no format of the N family takes \"N07:0\"; one is Nf:n: integer, N9:0-N255:255, e.g. N10:5; try N7:0");
    add("a dash for the slash", "MicroLogix Ethernet", "T4:0-DN",
        "the station \"T4:0\" is not a decimal number; try T4:0.DN or T4:0/DN");
    add("a blank in a family's symbol", "ISO on TCP", "D B1",
        "there is a blank at position 2; try DB1.DBB0 or DB1.DBX0 or DB1.DBX0.0");
    add("a symbol's first letter, and no format behind it", "KV Ethernet", "P10", "no format begins with \"P\"");
    add("a slash in a family's address", "FX5U Ethernet", "U1/G0", "\"/\" at position 3 should be \"\\\"; try U1\\G0");
    add("a data block's word without the B", "ISO on TCP", "DB1.DW2",
        "no format of the DB family takes \"DB1.DW2\"; one is DBn.DBWb: data block word at a byte address, "
        "DB1.DBW0-DB2047.DBW65534, e.g. DB1.DBW4; try DB1.DBW2");
    add("a digit that is not octal, of 16 inputs", "FX5U Ethernet", "K4X8",
        "8 at position 4 is no octal digit; the numbers of K4X are octal; try K4X0 or K4X20");
    add("a point where the bit is two digits", "KV Ethernet", "R10.5",
        "R expects a digit or the end of the address at position 4, not \".\"; try R10");
    add("a letter too few in front", "KV Ethernet", "D100", "no format begins with \"D1\"; try DM100");
}

void DriverReasons::reasons()
{
    QFETCH(QString, driver);
    QFETCH(QString, address);
    QFETCH(QString, advice);
    const Result result = runProcess(QStringLiteral(ZELMAR_LABEL_TOOL), {QStringLiteral("check"), driver, address});
    QCOMPARE(result.out, QStringLiteral("refused  %1  %2\n").arg(address, advice));
    QCOMPARE(result.code, 1);
}

QTEST_GUILESS_MAIN(DriverReasons)
#include "tst_driverreasons.moc"
