// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/streamedcommands.h"
#include "zelmar_label/address_grammar/communicatorcommand.h"
#include "zelmar_label/address_grammar/communicatorcommandt.h"

#include <QDataStream>
#include <QTest>

#include <limits>
#include <type_traits>

static_assert(std::is_same_v<decltype(CommunicatorCommandT::scanTime), qint32>, "");
static_assert(std::is_same_v<decltype(CommunicatorCommandT::dataType), qint32>, "");
static_assert(std::is_same_v<decltype(CommunicatorCommandT::length), qint32>, "");
static_assert(std::is_same_v<decltype(CommunicatorCommandT::address), QString>, "");
static_assert(std::is_same_v<decltype(CommunicatorCommandT::key), QString>, "");
static_assert(!std::is_polymorphic_v<CommunicatorCommandT>, "no virtual operation");
static_assert(!std::is_convertible_v<CommunicatorCommandT, CommunicatorCommand>, "nothing turns one back");
static_assert(std::is_convertible_v<CommunicatorCommand, CommunicatorCommandT>, "");
static_assert(
    std::is_same_v<decltype(std::declval<CommunicatorCommandT &>().outputDataStream(std::declval<QDataStream &>())),
                   void>,
    "");
static_assert(
    std::is_same_v<decltype(std::declval<CommunicatorCommandT &>().inputDataStream(std::declval<QDataStream &>())),
                   void>,
    "");
static_assert(std::is_same_v<decltype(std::declval<const CommunicatorCommandT &>().getDataSize()), int>, "");
static_assert(std::is_same_v<decltype(&CommunicatorCommandT::getStationId), int (*)(const CommunicatorCommandT &)>, "");
static_assert(
    std::is_same_v<decltype(&CommunicatorCommandT::getAddressString), QString (*)(const CommunicatorCommandT &)>, "");

/// Tests the fields and the key of a command, and their derived values.
class TestCommunicatorCommandTFields : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewCommandIsNull();
    void fieldsStandInDeclaredOrder();
    void madeFromACommandItHasAKey();
    void assignedFromACommandItHasANewKey();
    void lengthIsCutTo32Bits_data();
    void lengthIsCutTo32Bits();
    void copyingKeepsAStaleKey();
    void copyingKeepsAnEmptyKey();
    void assignedToItselfItStaysAsItIs();
    void keyFollowsTheFieldsOnRequestOnly();
    void key_data();
    void key();
    void nullReadOnceAndBlock_data();
    void nullReadOnceAndBlock();
    void dataTypeName_data();
    void dataTypeName();
    void dataSize_data();
    void dataSize();
    void dataSizeDiffersFromThePlainCommand_data();
    void dataSizeDiffersFromThePlainCommand();
    void stationAndDeviceAddress_data();
    void stationAndDeviceAddress();
};

void TestCommunicatorCommandTFields::aNewCommandIsNull()
{
    const CommunicatorCommandT command;
    QCOMPARE(command.scanTime, 1);
    QCOMPARE(command.dataType, 3);
    QCOMPARE(command.length, 1);
    QCOMPARE(command.address, QStringLiteral("S>NULL"));
    QVERIFY(command.key.isEmpty());
    QVERIFY(command.isNull());
    QCOMPARE(command.dataTypeName(), QStringLiteral("Double Word"));
    QVERIFY(!command.isBlockCommand());
    QVERIFY(!command.isReadOnce());
    QVERIFY(command.stringKey().isEmpty());
    QCOMPARE(command.getDataSize(), 4);
}

void TestCommunicatorCommandTFields::fieldsStandInDeclaredOrder()
{
    const CommunicatorCommandT command;
    const void *const places[] = {&command.scanTime, &command.dataType, &command.length, &command.address,
                                  &command.key};
    for (int i = 1; i < 5; ++i)
        QVERIFY2(std::less<const void *>()(places[i - 1], places[i]), QByteArray::number(i).constData());
}

void TestCommunicatorCommandTFields::madeFromACommandItHasAKey()
{
    const CommunicatorCommandT command(plainCommand(QStringLiteral("3-D100"), 2, 6, 9));
    QCOMPARE(command.scanTime, 9);
    QCOMPARE(command.dataType, 2);
    QCOMPARE(command.length, 6);
    QCOMPARE(command.address, QStringLiteral("3-D100"));
    QCOMPARE(command.key, QStringLiteral("3-D100_2_6"));
    QCOMPARE(command.stringKey(), QStringLiteral("3-D100_2_6"));
}

void TestCommunicatorCommandTFields::assignedFromACommandItHasANewKey()
{
    CommunicatorCommandT command(plainCommand(QStringLiteral("D1"), 0, 1));
    CommunicatorCommandT &result = command = plainCommand(QStringLiteral("W2"), 5, 12, 0);
    QCOMPARE(&result, &command);
    QCOMPARE(command.scanTime, 0);
    QCOMPARE(command.dataType, 5);
    QCOMPARE(command.length, 12);
    QCOMPARE(command.address, QStringLiteral("W2"));
    QCOMPARE(command.stringKey(), QStringLiteral("W2_5_12"));
}

void TestCommunicatorCommandTFields::lengthIsCutTo32Bits_data()
{
    QTest::addColumn<quint64>("length");
    QTest::addColumn<int>("cut");
    QTest::addColumn<QString>("key");

    QTest::newRow("a length that fits") << Q_UINT64_C(2147483647) << 2147483647 << "D1_1_2147483647";
    QTest::newRow("one above the signed range turns negative")
        << Q_UINT64_C(2147483648) << std::numeric_limits<int>::min() << "D1_1_-2147483648";
    QTest::newRow("all 32 bits set are -1") << Q_UINT64_C(4294967295) << -1 << "D1_1_-1";
    QTest::newRow("exactly 32 bits over leave 0") << Q_UINT64_C(4294967296) << 0 << "D1_1_0";
    QTest::newRow("high bits are lost") << Q_UINT64_C(4294967301) << 5 << "D1_1_5";
    QTest::newRow("the longest length is -1") << std::numeric_limits<quint64>::max() << -1 << "D1_1_-1";
}

void TestCommunicatorCommandTFields::lengthIsCutTo32Bits()
{
    QFETCH(quint64, length);
    const CommunicatorCommand plain = plainCommand(QStringLiteral("D1"), 1, length);
    const CommunicatorCommandT constructed(plain);
    QTEST(constructed.length, "cut");
    QTEST(constructed.stringKey(), "key");
    CommunicatorCommandT assigned;
    assigned = plain;
    QTEST(assigned.length, "cut");
    QTEST(assigned.stringKey(), "key");
}

void TestCommunicatorCommandTFields::copyingKeepsAStaleKey()
{
    CommunicatorCommandT original(plainCommand(QStringLiteral("D100"), 2, 1, 4));
    original.address = QStringLiteral("M7");
    const CommunicatorCommandT constructed(original);
    CommunicatorCommandT assigned(plainCommand(QStringLiteral("X1"), 0, 3));
    CommunicatorCommandT &result = assigned = original;
    QCOMPARE(&result, &assigned);
    for (const CommunicatorCommandT *copy : {&constructed, const_cast<const CommunicatorCommandT *>(&assigned)}) {
        QCOMPARE(copy->scanTime, 4);
        QCOMPARE(copy->dataType, 2);
        QCOMPARE(copy->length, 1);
        QCOMPARE(copy->address, QStringLiteral("M7"));
        QCOMPARE(copy->stringKey(), QStringLiteral("D100_2_1"));
    }
}

void TestCommunicatorCommandTFields::copyingKeepsAnEmptyKey()
{
    const CommunicatorCommandT original = rawCommand(QStringLiteral("D100"), 2, 1);
    QVERIFY(CommunicatorCommandT(original).stringKey().isEmpty());
    CommunicatorCommandT assigned(plainCommand(QStringLiteral("X1"), 0, 3));
    assigned = original;
    QVERIFY(assigned.stringKey().isEmpty());
}

void TestCommunicatorCommandTFields::assignedToItselfItStaysAsItIs()
{
    CommunicatorCommandT command(plainCommand(QStringLiteral("D100"), 2, 6, 9));
    const CommunicatorCommandT &same = command;
    command = same;
    QCOMPARE(command.scanTime, 9);
    QCOMPARE(command.dataType, 2);
    QCOMPARE(command.length, 6);
    QCOMPARE(command.address, QStringLiteral("D100"));
    QCOMPARE(command.stringKey(), QStringLiteral("D100_2_6"));
}

void TestCommunicatorCommandTFields::keyFollowsTheFieldsOnRequestOnly()
{
    CommunicatorCommandT command(plainCommand(QStringLiteral("D100"), 2, 1));
    command.address = QStringLiteral("M7");
    command.dataType = 0;
    command.length = 16;
    QCOMPARE(command.stringKey(), QStringLiteral("D100_2_1"));
    command.makekey();
    QCOMPARE(command.stringKey(), QStringLiteral("M7_0_16"));
    QCOMPARE(command.key, QStringLiteral("M7_0_16"));
    command.key = QStringLiteral("anything");
    QCOMPARE(command.stringKey(), QStringLiteral("anything"));
}

void TestCommunicatorCommandTFields::key_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("dataType");
    QTest::addColumn<int>("length");
    QTest::addColumn<QString>("key");

    QTest::newRow("one word") << "D100" << 2 << 1 << "D100_2_1";
    QTest::newRow("the station is part of the key") << "3-D100" << 2 << 1 << "3-D100_2_1";
    QTest::newRow("an empty address") << "" << 3 << 1 << "_3_1";
    QTest::newRow("negative numbers keep their sign") << "D1" << -7 << -3 << "D1_-7_-3";
    QTest::newRow("a place marker in the address stays text") << "D%2" << 2 << 4 << "D%2_2_4";
    QTest::newRow("the null address") << "S>NULL" << 3 << 1 << "S>NULL_3_1";
}

void TestCommunicatorCommandTFields::key()
{
    QFETCH(QString, address);
    QFETCH(int, dataType);
    QFETCH(int, length);
    CommunicatorCommandT command = rawCommand(address, dataType, length);
    command.makekey();
    QTEST(command.stringKey(), "key");
}

void TestCommunicatorCommandTFields::nullReadOnceAndBlock_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("scanTime");
    QTest::addColumn<bool>("isNull");
    QTest::addColumn<bool>("isBlock");
    QTest::addColumn<bool>("isReadOnce");

    QTest::newRow("the null address") << "S>NULL" << 1 << 1 << true << false << false;
    QTest::newRow("an empty address is null") << "" << 1 << 1 << true << false << false;
    QTest::newRow("a null address behind a station is none") << "1-S>NULL" << 1 << 1 << false << false << false;
    QTest::newRow("a null address in lower case is none") << "s>null" << 1 << 1 << false << false << false;
    QTest::newRow("a blank is an address") << " " << 1 << 1 << false << false << false;
    QTest::newRow("one item scanned") << "D1" << 1 << 1 << false << false << false;
    QTest::newRow("two items are a block") << "D1" << 2 << 1 << false << true << false;
    QTest::newRow("no item is no block") << "D1" << 0 << 1 << false << false << false;
    QTest::newRow("a negative length is no block") << "D1" << -5 << 1 << false << false << false;
    QTest::newRow("the longest block") << "D1" << 2147483647 << 1 << false << true << false;
    QTest::newRow("scan time 0 is read once") << "D1" << 1 << 0 << false << false << true;
    QTest::newRow("a negative scan time is not read once") << "D1" << 1 << -1 << false << false << false;
    QTest::newRow("a null block read once") << "S>NULL" << 3 << 0 << true << true << true;
}

void TestCommunicatorCommandTFields::nullReadOnceAndBlock()
{
    QFETCH(QString, address);
    QFETCH(int, length);
    QFETCH(int, scanTime);
    const CommunicatorCommandT command = rawCommand(address, 2, length, scanTime);
    QTEST(command.isNull(), "isNull");
    QTEST(command.isBlockCommand(), "isBlock");
    QTEST(command.isReadOnce(), "isReadOnce");
}

void TestCommunicatorCommandTFields::dataTypeName_data()
{
    QTest::addColumn<int>("dataType");
    QTest::addColumn<QString>("name");

    QTest::newRow("bit") << 0 << "Bit";
    QTest::newRow("byte") << 1 << "Byte";
    QTest::newRow("word") << 2 << "Word";
    QTest::newRow("double word") << 3 << "Double Word";
    QTest::newRow("a quad word has no name") << 4 << "unknow type";
    QTest::newRow("text has no name") << 5 << "unknow type";
    QTest::newRow("type 6") << 6 << "unknow type";
    QTest::newRow("type 7") << 7 << "unknow type";
    QTest::newRow("type 8") << 8 << "unknow type";
    QTest::newRow("invalid") << 9 << "unknow type";
    QTest::newRow("a negative type") << -1 << "unknow type";
    QTest::newRow("the greatest type") << 2147483647 << "unknow type";
}

void TestCommunicatorCommandTFields::dataTypeName()
{
    QFETCH(int, dataType);
    QTEST(rawCommand(QStringLiteral("D1"), dataType, 1).dataTypeName(), "name");
}

void TestCommunicatorCommandTFields::dataSize_data()
{
    QTest::addColumn<int>("dataType");
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("bytes");

    QTest::newRow("a negative number of bits stays as it is") << 0 << -9 << -9;
    QTest::newRow("no bit takes no byte") << 0 << 0 << 0;
    QTest::newRow("one bit takes a byte") << 0 << 1 << 1;
    QTest::newRow("two bits take a byte") << 0 << 2 << 1;
    QTest::newRow("seven bits take a byte") << 0 << 7 << 1;
    QTest::newRow("eight bits take two bytes") << 0 << 8 << 2;
    QTest::newRow("nine bits take two bytes") << 0 << 9 << 2;
    QTest::newRow("fifteen bits take two bytes") << 0 << 15 << 2;
    QTest::newRow("sixteen bits take three bytes") << 0 << 16 << 3;
    QTest::newRow("the most bits") << 0 << 2147483647 << 268435456;
    QTest::newRow("no byte") << 1 << 0 << 0;
    QTest::newRow("bytes count as they are") << 1 << 5 << 5;
    QTest::newRow("a negative number of bytes stays as it is") << 1 << -5 << -5;
    QTest::newRow("words have two bytes each") << 2 << 5 << 10;
    QTest::newRow("a negative number of words") << 2 << -5 << -10;
    QTest::newRow("double words have four bytes each") << 3 << 5 << 20;
    QTest::newRow("one quad word counts four bytes") << 4 << 1 << 4;
    QTest::newRow("two quad words count eight bytes") << 4 << 2 << 8;
    QTest::newRow("text has a byte for each character") << 5 << 20 << 20;
    QTest::newRow("type 6 counts its length") << 6 << 20 << 20;
    QTest::newRow("type 7 counts its length") << 7 << 20 << 20;
    QTest::newRow("type 8 counts its length") << 8 << 20 << 20;
    QTest::newRow("invalid counts its length") << 9 << 20 << 20;
    QTest::newRow("invalid without length") << 9 << 0 << 0;
    QTest::newRow("a negative type counts its length") << -1 << 20 << 20;
    QTest::newRow("the least type counts its length") << std::numeric_limits<int>::min() << 20 << 20;
}

void TestCommunicatorCommandTFields::dataSize()
{
    QFETCH(int, dataType);
    QFETCH(int, length);
    QTEST(rawCommand(QStringLiteral("D1"), dataType, length).getDataSize(), "bytes");
}

void TestCommunicatorCommandTFields::dataSizeDiffersFromThePlainCommand_data()
{
    QTest::addColumn<int>("dataType");
    QTest::addColumn<quint64>("length");
    QTest::addColumn<quint64>("plainBytes");
    QTest::addColumn<int>("bytes");

    QTest::newRow("0 bits") << 0 << Q_UINT64_C(0) << Q_UINT64_C(1) << 0;
    QTest::newRow("1 bit, alike") << 0 << Q_UINT64_C(1) << Q_UINT64_C(1) << 1;
    QTest::newRow("8 bits") << 0 << Q_UINT64_C(8) << Q_UINT64_C(1) << 2;
    QTest::newRow("9 bits, alike") << 0 << Q_UINT64_C(9) << Q_UINT64_C(2) << 2;
    QTest::newRow("16 bits") << 0 << Q_UINT64_C(16) << Q_UINT64_C(2) << 3;
    QTest::newRow("2 quad words") << 4 << Q_UINT64_C(2) << Q_UINT64_C(16) << 8;
    QTest::newRow("an unknown type") << 8 << Q_UINT64_C(6) << Q_UINT64_C(1) << 6;
    QTest::newRow("a length beyond 32 bits") << 1 << Q_UINT64_C(4294967298) << Q_UINT64_C(4294967298) << 2;
}

void TestCommunicatorCommandTFields::dataSizeDiffersFromThePlainCommand()
{
    QFETCH(int, dataType);
    QFETCH(quint64, length);
    const CommunicatorCommand plain = plainCommand(QStringLiteral("D1"), dataType, length);
    QTEST(plain.getDataSize(), "plainBytes");
    QTEST(CommunicatorCommandT(plain).getDataSize(), "bytes");
}

void TestCommunicatorCommandTFields::stationAndDeviceAddress_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("station");
    QTest::addColumn<QString>("deviceAddress");

    QTest::newRow("no station") << "D100" << -1 << "D100";
    QTest::newRow("an empty address has no station") << "" << -1 << "";
    QTest::newRow("station 3") << "3-D100" << 3 << "D100";
    QTest::newRow("station 0") << "0-D100" << 0 << "D100";
    QTest::newRow("text behind a second dash is dropped") << "1-D2-3" << 1 << "D2";
    QTest::newRow("an empty station counts as 0") << "-D100" << 0 << "D100";
    QTest::newRow("a station that is a word counts as 0") << "abc-D100" << 0 << "D100";
    QTest::newRow("a station beyond 32 bits counts as 0") << "4294967297-D100" << 0 << "D100";
    QTest::newRow("a dash at the end leaves no device address") << "3-" << 3 << "";
    QTest::newRow("two dashes in the middle leave no device address") << "3--D100" << 3 << "";
}

void TestCommunicatorCommandTFields::stationAndDeviceAddress()
{
    QFETCH(QString, address);
    const CommunicatorCommandT command = rawCommand(address, 2, 1);
    QTEST(CommunicatorCommandT::getStationId(command), "station");
    QTEST(CommunicatorCommandT::getAddressString(command), "deviceAddress");
}

QTEST_APPLESS_MAIN(TestCommunicatorCommandTFields)

#include "tst_communicatorcommandt_fields.moc"
