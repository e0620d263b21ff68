// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/commandformatter.h"
#include "zelmar_label/label_table/labelloader.h"

#include "support/badinput.h"
#include "support/labelfixtures.h"
#include "support/logrecorder.h"

#include <QtTest>

/// Tests any number in a column of a row: nothing throws, hangs or reads out of bounds. Most useful with the address
/// and undefined-behaviour sanitizers.
class TestBadColumns : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void groupNumbers_data();
    void groupNumbers();
    void radices_data();
    void radices();
    void limits_data();
    void limits();
    void numbersBeyondInt_data();
    void numbersBeyondInt();
    void rowTypes_data();
    void rowTypes();
    void dataSizes_data();
    void dataSizes();
};

void TestBadColumns::groupNumbers_data()
{
    QTest::addColumn<int>("group");
    QTest::addColumn<QString>("range");
    QTest::addColumn<int>("number");

    QTest::newRow("the whole match, which is no number") << 0 << "D100" << -1;
    QTest::newRow("the symbol, which is no number") << 1 << "D" << -1;
    QTest::newRow("the digits") << 2 << "100" << 100;
    QTest::newRow("one group too many") << 3 << "" << -1;
    QTest::newRow("far too many") << 1000000 << "" << -1;
    QTest::newRow("the highest number") << highest << "" << -1;
    QTest::newRow("a negative group") << -1 << "" << -1;
    QTest::newRow("the lowest number") << lowest << "" << -1;
}

void TestBadColumns::groupNumbers()
{
    QFETCH(int, group);
    QFETCH(QString, range);
    QFETCH(int, number);

    Row row;
    row.addressGroupIndex = group;
    const LogRecorder log;
    const label::CommandFormatter formatter = row.formatter();
    QCOMPARE(formatter.getRangeString(QStringLiteral("D100")), range);
    QCOMPARE(formatter.getAddresRangePart(QStringLiteral("D100")), number);
    QVERIFY(formatter.isAddressValid(QStringLiteral("D100")));
    QCOMPARE(formatter.isAddressDataTypeMatch(QStringLiteral("D100"), CommunicatorCommand::Word), number == 100);
    for (const QString &address : plainAddresses())
        askEverything(formatter, address);
}

void TestBadColumns::radices_data()
{
    QTest::addColumn<int>("radix");
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("isValid");
    QTest::addColumn<QString>("printed");

    QTest::newRow("36 is the highest") << 36 << 1296 << true << "Dv";
    QTest::newRow("0 reads by the text's own front") << 0 << 100 << true << "D31";
    for (const int radix : {1, 37, -5, -1, lowest, highest})
        QTest::addRow("%d reads nothing and prints in decimal", radix) << radix << -1 << false << "D31";
}

void TestBadColumns::radices()
{
    QFETCH(int, radix);
    QFETCH(int, number);
    QFETCH(bool, isValid);
    QFETCH(QString, printed);

    Row row;
    row.base = radix;
    LogRecorder log;
    const label::CommandFormatter formatter = row.formatter();
    log.take();
    QCOMPARE(formatter.getAddresRangePart(QStringLiteral("D100")), number);
    // An unreadable number does not make the address invalid.
    QVERIFY(formatter.isAddressValid(QStringLiteral("D100")));
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(formatter.isRangeValid(number), isValid);
    const QStringList complaint = {QStringLiteral("isRangeValid CommandFormatter isRangeValid data error")};
    QCOMPARE(log.take(), isValid ? QStringList() : complaint);
    QCOMPARE(formatter.makeBlockCommand(-1, 31, 1).address, printed);
    for (const QString &address : plainAddresses())
        askEverything(formatter, address);
}

void TestBadColumns::limits_data()
{
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("end");
    QTest::addColumn<bool>("isReadable");
    QTest::addColumn<bool>("isValid");

    QTest::newRow("ordinary limits") << "0"
                                     << "9999" << true << true;
    QTest::newRow("an end before the start") << "200"
                                             << "50" << true << false;
    QTest::newRow("the whole of int") << "-2147483648"
                                      << "2147483647" << true << true;
    QTest::newRow("an end beyond int") << "0"
                                       << "2147483648" << false << false;
    QTest::newRow("a start before int") << "-2147483649"
                                        << "9999" << false << false;
    QTest::newRow("no start") << ""
                              << "9999" << false << false;
    QTest::newRow("null limits") << QString() << QString() << false << false;
    QTest::newRow("letters") << "0"
                             << "FFF" << false << false;
    QTest::newRow("blanks around") << " 0 "
                                   << " 9999 " << true << true;
    QTest::newRow("a fraction") << "0"
                                << "99.5" << false << false;
    QTest::newRow("100,000 digits") << "0" << QString(100000, QLatin1Char('9')) << false << false;
    QTest::newRow("Arabic-Indic digits") << "0" << QString::fromUtf8("\xd9\xa9\xd9\xa9\xd9\xa9") << false << false;
    QTest::newRow("a NUL character behind the digits")
        << "0" << QString(QStringLiteral("9999") + QChar()) << false << false;
}

void TestBadColumns::limits()
{
    QFETCH(QString, start);
    QFETCH(QString, end);
    QFETCH(bool, isReadable);
    QFETCH(bool, isValid);

    Row row;
    row.start = start;
    row.end = end;
    LogRecorder log;
    const label::CommandFormatter formatter = row.formatter();
    log.take();
    const QStringList complaint = {QStringLiteral("isRangeValid CommandFormatter isRangeValid data error")};
    QCOMPARE(formatter.isRangeValid(100), isValid);
    QCOMPARE(log.take(), isReadable ? QStringList() : complaint);
    QCOMPARE(formatter.isAddressValid(QStringLiteral("D100")), isValid);
    QCOMPARE(log.take(), isReadable ? QStringList() : complaint);
    // Each pass of a run logs a line.
    QCOMPARE(formatter.makeContinueCommand(command(QStringLiteral("D100"), 2), 3).size(), isValid ? 3 : 0);
    QCOMPARE(log.take(), isReadable ? QStringList() : complaint + complaint + complaint);
}

void TestBadColumns::numbersBeyondInt_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("isValid");
    QTest::addColumn<QStringList>("run");

    QTest::newRow("the highest number") << "D2147483647" << highest << true << QStringList{"D2147483647"};
    QTest::newRow("one more is no number, and the match is enough")
        << "D2147483648" << -1 << true << QStringList{"D0", "D1"};
    QTest::newRow("100,000 digits") << QString("D" + QString(100000, '9')) << -1 << true << QStringList{"D0", "D1"};
    QTest::newRow("100,000 zeros are the number 0")
        << QString("D" + QString(100000, '0')) << 0 << true << QStringList{"D0", "D1", "D2"};
}

void TestBadColumns::numbersBeyondInt()
{
    QFETCH(QString, address);
    QFETCH(int, number);
    QFETCH(bool, isValid);
    QFETCH(QStringList, run);

    Row row;
    row.end = QStringLiteral("2147483647");
    const LogRecorder log;
    const label::CommandFormatter formatter = row.formatter();
    QCOMPARE(formatter.getAddresRangePart(address), number);
    QCOMPARE(formatter.isAddressValid(address), isValid);
    // The run continues from the number, also from -1, and skips numbers beyond the limits.
    QCOMPARE(addresses(formatter.makeContinueCommand(command(address, 2), 3)), run);
}

void TestBadColumns::rowTypes_data()
{
    QTest::addColumn<int>("type");

    for (const int type : {-1, 6, 9, 1000000, lowest, highest})
        QTest::addRow("a row of type %d is a register row", type) << type;
}

void TestBadColumns::rowTypes()
{
    QFETCH(int, type);

    Row row;
    row.type = type;
    const LogRecorder log;
    const label::CommandFormatter formatter = row.formatter();
    QVERIFY(formatter.isAddressDataTypeMatch(QStringLiteral("D100"), CommunicatorCommand::Word));
    QVERIFY(!formatter.isAddressDataTypeMatch(QStringLiteral("D100"), CommunicatorCommand::Bit));
    const QList<CommunicatorCommand> run = formatter.makeContinueCommand(command(QStringLiteral("D100"), 3), 2);
    QCOMPARE(addresses(run), (QStringList{QStringLiteral("D100"), QStringLiteral("D101")}));
    QCOMPARE(int(run.first().dataType), type);
    for (const int commandType : {lowest, -1, 1, highest})
        QCOMPARE(formatter.makeContinueCommand(command(QStringLiteral("D100"), commandType), 4).size(), 4);
}

void TestBadColumns::dataSizes_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QString>("rule");
    QTest::addColumn<QStringList>("pieces");

    const QStringList alone = {QStringLiteral("D32")};
    QTest::newRow("units of no bytes give no pieces") << 0 << "" << QStringList();
    QTest::newRow("aligned units of no bytes give no pieces") << 0 << "m16" << QStringList();
    QTest::newRow("a negative size is a huge one") << -1 << "" << alone;
    QTest::newRow("a negative size on an aligned row") << -1 << "m16" << alone;
    QTest::newRow("the highest size") << highest << "m16" << alone;
    QTest::newRow("the lowest size") << lowest << "m16" << alone;
    QTest::newRow("a unit that is wide enough") << 4 << "m16" << alone;
    QTest::newRow("two units") << 2 << "m16" << QStringList{QStringLiteral("D32"), QStringLiteral("D48")};
}

void TestBadColumns::dataSizes()
{
    QFETCH(int, size);
    QFETCH(QString, rule);
    QFETCH(QStringList, pieces);

    Row row;
    row.dataSize = size;
    row.multipleRule = rule;
    const LogRecorder log;
    const label::CommandFormatter formatter = row.formatter();
    QCOMPARE(addresses(formatter.autoCompleteCommand(command(QStringLiteral("D32"), 3))), pieces);
    for (const QString &address : plainAddresses())
        askEverything(formatter, address);

    label::CommandInformationTalbe table;
    table.addCommandFormatter(formatter);
    label::LabelLoader label(table);
    label.makeBlockCommandWithoutSizeLimit(-1, 0, highest, highest);
    label.makeBlockCommandWithoutSizeLimit(-1, 0, lowest, lowest);
    QCOMPARE(label.calculateOffsetByte(0, command("D32", 2), command("D32", 2)), size == -1 ? -1 : 0);
    QCOMPARE(label.datasize(0), size);
}

QTEST_GUILESS_MAIN(TestBadColumns)

#include "tst_badinput_columns.moc"
