// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/communicatorcommand.h"

#include <QTest>

#include <cstddef>
#include <cstring>
#include <functional>
#include <limits>
#include <type_traits>

static_assert(std::is_same_v<std::underlying_type_t<CommunicatorCommand::DataType>, qint32>, "stored in 32 bits");
static_assert(CommunicatorCommand::Bit == 0 && CommunicatorCommand::Byte == 1 && CommunicatorCommand::Word == 2, "");
static_assert(CommunicatorCommand::DoubleWord == 3 && CommunicatorCommand::QuadWord == 4, "");
static_assert(CommunicatorCommand::Text == 5 && CommunicatorCommand::Invalid == 9, "");

static_assert(std::is_same_v<decltype(CommunicatorCommand::scanTime), qint32>, "");
static_assert(std::is_same_v<decltype(CommunicatorCommand::dataType), CommunicatorCommand::DataType>, "");
static_assert(std::is_same_v<decltype(CommunicatorCommand::length), quint64>, "");
static_assert(std::is_same_v<decltype(CommunicatorCommand::address), QString>, "");
static_assert(std::is_same_v<decltype(CommunicatorCommand::auxiliaryNumber), qint32>, "");
static_assert(std::is_same_v<decltype(CommunicatorCommand::auxiliaryText), QString>, "");
static_assert(std::is_same_v<decltype(CommunicatorCommand::auxiliaryFlag), bool>, "");

static_assert(std::is_polymorphic_v<CommunicatorCommand>, "");
static_assert(!std::has_virtual_destructor_v<CommunicatorCommand>, "the destructor takes no slot");
static_assert(std::is_same_v<decltype(&CommunicatorCommand::getDataSize), quint64 (CommunicatorCommand::*)() const>,
              "");
static_assert(std::is_same_v<decltype(&CommunicatorCommand::stringKey), QString (CommunicatorCommand::*)() const>, "");
static_assert(std::is_same_v<decltype(std::declval<const CommunicatorCommand &>().getStationId()), int>, "");
static_assert(std::is_same_v<decltype(std::declval<const CommunicatorCommand &>().getAddressString()), QString>, "");

namespace {

CommunicatorCommand commandOf(int dataType, quint64 length, const QString &address = QStringLiteral("D100"))
{
    CommunicatorCommand command;
    command.dataType = static_cast<CommunicatorCommand::DataType>(dataType);
    command.length = length;
    command.address = address;
    return command;
}

CommunicatorCommand filledCommand()
{
    CommunicatorCommand command;
    command.scanTime = 7;
    command.dataType = CommunicatorCommand::Text;
    command.length = 20;
    command.address = QStringLiteral("3-D100");
    command.auxiliaryNumber = -1;
    command.auxiliaryText = QStringLiteral("kept");
    command.auxiliaryFlag = true;
    return command;
}

class OverridingCommand : public CommunicatorCommand
{
public:
    quint64 getDataSize() const override { return 77; }
    QString stringKey() const override { return QStringLiteral("overridden"); }
    virtual int nextSlot() const { return 0; }
};

} // namespace

class TestCommunicatorCommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewCommandIsTheNullCommand();
    void fieldsStandInDeclaredOrder();
    void virtualOperationsAreCalledThroughTheBase();
    void virtualOperationsHaveFixedSlots();
    void copyingIsMemberwise();
    void copiesAreIndependent();
    void dataSize_data();
    void dataSize();
    void key_data();
    void key();
    void keyFollowsTheFields();
    void stationAndDeviceAddress_data();
    void stationAndDeviceAddress();
};

void TestCommunicatorCommand::aNewCommandIsTheNullCommand()
{
    const CommunicatorCommand command;
    QCOMPARE(command.scanTime, 1);
    QCOMPARE(command.dataType, CommunicatorCommand::DoubleWord);
    QCOMPARE(command.length, Q_UINT64_C(1));
    QCOMPARE(command.address, QStringLiteral("S>NULL"));
    QCOMPARE(command.auxiliaryNumber, 0);
    QVERIFY(command.auxiliaryText.isEmpty());
    QVERIFY(!command.auxiliaryFlag);
    QCOMPARE(command.getDataSize(), Q_UINT64_C(4));
    QCOMPARE(command.stringKey(), QStringLiteral("S>NULL_3_1"));
    QCOMPARE(command.getStationId(), -1);
    QCOMPARE(command.getAddressString(), QStringLiteral("S>NULL"));
}

void TestCommunicatorCommand::fieldsStandInDeclaredOrder()
{
    const CommunicatorCommand command;
    const void *const places[] = {&command.scanTime,     &command.dataType,        &command.length,
                                  &command.address,      &command.auxiliaryNumber, &command.auxiliaryText,
                                  &command.auxiliaryFlag};
    for (int i = 1; i < 7; ++i)
        QVERIFY2(std::less<const void *>()(places[i - 1], places[i]), QByteArray::number(i).constData());
}

void TestCommunicatorCommand::virtualOperationsAreCalledThroughTheBase()
{
    const OverridingCommand command;
    const CommunicatorCommand &base = command;
    QCOMPARE(base.getDataSize(), Q_UINT64_C(77));
    QCOMPARE(base.stringKey(), QStringLiteral("overridden"));
}

// Consumers are compiled apart from the library, so the order of the virtual operations is part of the interface.
void TestCommunicatorCommand::virtualOperationsHaveFixedSlots()
{
#if defined(__x86_64__) && defined(__GXX_ABI_VERSION)
    const auto slot = [](auto operation) {
        std::ptrdiff_t words[2];
        static_assert(sizeof operation == sizeof words, "an offset into the table of operations, and an adjustment");
        std::memcpy(words, &operation, sizeof words);
        return (words[0] - 1) / static_cast<std::ptrdiff_t>(sizeof(void *));
    };
    QCOMPARE(slot(&CommunicatorCommand::getDataSize), std::ptrdiff_t(0));
    QCOMPARE(slot(&CommunicatorCommand::stringKey), std::ptrdiff_t(1));
    QCOMPARE(slot(&OverridingCommand::nextSlot), std::ptrdiff_t(2));
#else
    QSKIP("slots are read from the layout of member pointers, which is known for x86-64 only");
#endif
}

void TestCommunicatorCommand::copyingIsMemberwise()
{
    const CommunicatorCommand original = filledCommand();
    const CommunicatorCommand constructed(original);
    CommunicatorCommand assigned;
    assigned = original;
    for (const CommunicatorCommand &copy : {constructed, assigned}) {
        QCOMPARE(copy.scanTime, 7);
        QCOMPARE(copy.dataType, CommunicatorCommand::Text);
        QCOMPARE(copy.length, Q_UINT64_C(20));
        QCOMPARE(copy.address, QStringLiteral("3-D100"));
        QCOMPARE(copy.auxiliaryNumber, -1);
        QCOMPARE(copy.auxiliaryText, QStringLiteral("kept"));
        QVERIFY(copy.auxiliaryFlag);
    }
}

void TestCommunicatorCommand::copiesAreIndependent()
{
    const CommunicatorCommand original = filledCommand();
    CommunicatorCommand copy = original;
    copy.address = QStringLiteral("M1");
    copy.auxiliaryText.append(QLatin1String(" no more"));
    copy.length = 1;
    QCOMPARE(original.address, QStringLiteral("3-D100"));
    QCOMPARE(original.auxiliaryText, QStringLiteral("kept"));
    QCOMPARE(original.length, Q_UINT64_C(20));
}

void TestCommunicatorCommand::dataSize_data()
{
    QTest::addColumn<int>("dataType");
    QTest::addColumn<quint64>("length");
    QTest::addColumn<quint64>("bytes");

    QTest::newRow("no bit takes a byte all the same") << 0 << Q_UINT64_C(0) << Q_UINT64_C(1);
    QTest::newRow("one bit takes a byte") << 0 << Q_UINT64_C(1) << Q_UINT64_C(1);
    QTest::newRow("seven bits take a byte") << 0 << Q_UINT64_C(7) << Q_UINT64_C(1);
    QTest::newRow("eight bits fill a byte") << 0 << Q_UINT64_C(8) << Q_UINT64_C(1);
    QTest::newRow("nine bits begin a second byte") << 0 << Q_UINT64_C(9) << Q_UINT64_C(2);
    QTest::newRow("sixteen bits fill two bytes") << 0 << Q_UINT64_C(16) << Q_UINT64_C(2);
    QTest::newRow("seventeen bits begin a third byte") << 0 << Q_UINT64_C(17) << Q_UINT64_C(3);
    QTest::newRow("bits beyond 32 bits of length") << 0 << Q_UINT64_C(34359738368) << Q_UINT64_C(4294967296);
    QTest::newRow("no byte") << 1 << Q_UINT64_C(0) << Q_UINT64_C(0);
    QTest::newRow("bytes count as they are") << 1 << Q_UINT64_C(5) << Q_UINT64_C(5);
    QTest::newRow("bytes beyond 32 bits") << 1 << Q_UINT64_C(4294967297) << Q_UINT64_C(4294967297);
    QTest::newRow("no word") << 2 << Q_UINT64_C(0) << Q_UINT64_C(0);
    QTest::newRow("one word has two bytes") << 2 << Q_UINT64_C(1) << Q_UINT64_C(2);
    QTest::newRow("words have two bytes each") << 2 << Q_UINT64_C(5) << Q_UINT64_C(10);
    QTest::newRow("words whose bytes do not fit 32 bits") << 2 << Q_UINT64_C(2147483648) << Q_UINT64_C(4294967296);
    QTest::newRow("no double word") << 3 << Q_UINT64_C(0) << Q_UINT64_C(0);
    QTest::newRow("one double word has four bytes") << 3 << Q_UINT64_C(1) << Q_UINT64_C(4);
    QTest::newRow("double words have four bytes each") << 3 << Q_UINT64_C(5) << Q_UINT64_C(20);
    QTest::newRow("no quad word") << 4 << Q_UINT64_C(0) << Q_UINT64_C(0);
    QTest::newRow("one quad word has eight bytes") << 4 << Q_UINT64_C(1) << Q_UINT64_C(8);
    QTest::newRow("two quad words have sixteen bytes") << 4 << Q_UINT64_C(2) << Q_UINT64_C(16);
    QTest::newRow("no text") << 5 << Q_UINT64_C(0) << Q_UINT64_C(0);
    QTest::newRow("text has a byte for each character") << 5 << Q_UINT64_C(20) << Q_UINT64_C(20);
    QTest::newRow("type 6 is unknown") << 6 << Q_UINT64_C(20) << Q_UINT64_C(1);
    QTest::newRow("type 7 is unknown") << 7 << Q_UINT64_C(20) << Q_UINT64_C(1);
    QTest::newRow("type 8 is unknown") << 8 << Q_UINT64_C(20) << Q_UINT64_C(1);
    QTest::newRow("invalid counts as one byte") << 9 << Q_UINT64_C(20) << Q_UINT64_C(1);
    QTest::newRow("invalid without length counts as one byte") << 9 << Q_UINT64_C(0) << Q_UINT64_C(1);
    QTest::newRow("a type beyond the known ones") << 1000 << Q_UINT64_C(20) << Q_UINT64_C(1);
    QTest::newRow("a negative type is unknown") << -1 << Q_UINT64_C(20) << Q_UINT64_C(1);
    QTest::newRow("a product keeps its low 64 bits") << 3 << Q_UINT64_C(4611686018427387905) << Q_UINT64_C(4);
}

void TestCommunicatorCommand::dataSize()
{
    QFETCH(int, dataType);
    QFETCH(quint64, length);
    QTEST(commandOf(dataType, length).getDataSize(), "bytes");
}

void TestCommunicatorCommand::key_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("dataType");
    QTest::addColumn<quint64>("length");
    QTest::addColumn<QString>("key");

    QTest::newRow("one word") << "D100" << 2 << Q_UINT64_C(1) << "D100_2_1";
    QTest::newRow("one bit") << "M0" << 0 << Q_UINT64_C(1) << "M0_0_1";
    QTest::newRow("the station is part of the key") << "3-D100" << 2 << Q_UINT64_C(1) << "3-D100_2_1";
    QTest::newRow("everything behind a second dash is part of the key")
        << "1-D2-3" << 2 << Q_UINT64_C(1) << "1-D2-3_2_1";
    QTest::newRow("length zero") << "D100" << 5 << Q_UINT64_C(0) << "D100_5_0";
    QTest::newRow("the longest length") << "D100" << 1 << std::numeric_limits<quint64>::max()
                                        << "D100_1_18446744073709551615";
    QTest::newRow("an invalid type") << "D100" << 9 << Q_UINT64_C(12) << "D100_9_12";
    QTest::newRow("a negative type") << "D100" << -1 << Q_UINT64_C(12) << "D100_-1_12";
    QTest::newRow("an empty address") << "" << 3 << Q_UINT64_C(1) << "_3_1";
    QTest::newRow("leading zeros of the address stay") << "D0100" << 2 << Q_UINT64_C(1) << "D0100_2_1";
    QTest::newRow("underscores in the address stay") << "D_1" << 2 << Q_UINT64_C(4) << "D_1_2_4";
    QTest::newRow("a place marker in the address stays text") << "D%1" << 2 << Q_UINT64_C(4) << "D%1_2_4";
    QTest::newRow("the last place marker in the address stays text") << "%3%2" << 2 << Q_UINT64_C(4) << "%3%2_2_4";
}

void TestCommunicatorCommand::key()
{
    QFETCH(QString, address);
    QFETCH(int, dataType);
    QFETCH(quint64, length);
    QTEST(commandOf(dataType, length, address).stringKey(), "key");
}

void TestCommunicatorCommand::keyFollowsTheFields()
{
    CommunicatorCommand command = commandOf(2, 1);
    QCOMPARE(command.stringKey(), QStringLiteral("D100_2_1"));
    command.length = 8;
    QCOMPARE(command.stringKey(), QStringLiteral("D100_2_8"));
    command.dataType = CommunicatorCommand::Bit;
    QCOMPARE(command.stringKey(), QStringLiteral("D100_0_8"));
    command.address = QStringLiteral("M7");
    QCOMPARE(command.stringKey(), QStringLiteral("M7_0_8"));
    command.scanTime = 0;
    command.auxiliaryNumber = 5;
    command.auxiliaryText = QStringLiteral("text");
    command.auxiliaryFlag = true;
    QCOMPARE(command.stringKey(), QStringLiteral("M7_0_8"));
}

void TestCommunicatorCommand::stationAndDeviceAddress_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("station");
    QTest::addColumn<QString>("deviceAddress");

    QTest::newRow("no station") << "D100" << -1 << "D100";
    QTest::newRow("an empty address has no station") << "" << -1 << "";
    QTest::newRow("station 3") << "3-D100" << 3 << "D100";
    QTest::newRow("station 0") << "0-D100" << 0 << "D100";
    QTest::newRow("a station of several digits") << "247-M5" << 247 << "M5";
    QTest::newRow("a station with leading zeros is decimal") << "010-D1" << 10 << "D1";
    QTest::newRow("text behind a second dash is dropped") << "1-D2-3" << 1 << "D2";
    QTest::newRow("text behind a third dash is dropped") << "1-D2-3-4" << 1 << "D2";
    QTest::newRow("an empty station counts as 0") << "-D100" << 0 << "D100";
    QTest::newRow("a station that is a word counts as 0") << "abc-D100" << 0 << "D100";
    QTest::newRow("a station in radix 16 counts as 0") << "0x1F-D100" << 0 << "D100";
    QTest::newRow("a station with a letter behind counts as 0") << "3a-D100" << 0 << "D100";
    QTest::newRow("a station beyond 32 bits counts as 0") << "4294967297-D100" << 0 << "D100";
    QTest::newRow("the greatest station") << "2147483647-D100" << 2147483647 << "D100";
    QTest::newRow("a dash at the end leaves no device address") << "3-" << 3 << "";
    QTest::newRow("a lone dash") << "-" << 0 << "";
    QTest::newRow("two dashes in front leave no device address") << "--D100" << 0 << "";
    QTest::newRow("a negative station is an empty one") << "-2-D100" << 0 << "2";
    QTest::newRow("two dashes in the middle leave no device address") << "3--D100" << 3 << "";
    QTest::newRow("a device address may hold dots and slashes") << "4-DB12.DBX10/3" << 4 << "DB12.DBX10/3";
    QTest::newRow("the null address behind a station") << "1-S>NULL" << 1 << "S>NULL";
    QTest::newRow("other dashes than the hyphen separate nothing")
        << QStringLiteral("3\u2013D100") << -1 << QStringLiteral("3\u2013D100");
}

void TestCommunicatorCommand::stationAndDeviceAddress()
{
    QFETCH(QString, address);
    const CommunicatorCommand command = commandOf(2, 1, address);
    QTEST(command.getStationId(), "station");
    QTEST(command.getAddressString(), "deviceAddress");
    QCOMPARE(command.address, address);
}

QTEST_APPLESS_MAIN(TestCommunicatorCommand)

#include "tst_communicatorcommand.moc"
