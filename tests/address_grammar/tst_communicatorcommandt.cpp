// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/communicatorcommand.h"
#include "zelmar_label/address_grammar/communicatorcommandt.h"

#include <QBuffer>
#include <QDataStream>
#include <QSemaphore>
#include <QTest>

#include <atomic>
#include <functional>
#include <limits>
#include <stdexcept>
#include <thread>
#include <type_traits>
#include <vector>

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

namespace {

constexpr int aWhile = 50;
constexpr int longEnough = 20000;

CommunicatorCommand plainCommand(const QString &address, int dataType, quint64 length, int scanTime = 1)
{
    CommunicatorCommand command;
    command.address = address;
    command.dataType = static_cast<CommunicatorCommand::DataType>(dataType);
    command.length = length;
    command.scanTime = scanTime;
    return command;
}

CommunicatorCommandT rawCommand(const QString &address, qint32 dataType, qint32 length, qint32 scanTime = 1)
{
    CommunicatorCommandT command;
    command.address = address;
    command.dataType = dataType;
    command.length = length;
    command.scanTime = scanTime;
    return command;
}

QByteArray written(CommunicatorCommandT &command, QDataStream::ByteOrder order = QDataStream::BigEndian,
                   int version = QDataStream::Qt_5_15)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(order);
    stream.setVersion(version);
    command.outputDataStream(stream);
    return bytes;
}

/// A device that stops inside a read or a write until it is told to go on, so that whoever uses it can be looked at in
/// the middle of its work.
class PausingDevice : public QIODevice
{
public:
    explicit PausingDevice(const QByteArray &content = QByteArray())
        : m_content(content)
    {
        open(QIODevice::ReadWrite | QIODevice::Unbuffered);
    }

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return m_content.size(); }

    QSemaphore inside;
    QSemaphore goOn;

protected:
    qint64 readData(char *data, qint64 size) override
    {
        pauseOnce();
        const int part = qMin(static_cast<int>(size), m_content.size());
        std::copy_n(m_content.constData(), part, data);
        m_content.remove(0, part);
        return part;
    }

    qint64 writeData(const char *, qint64 size) override
    {
        pauseOnce();
        return size;
    }

private:
    void pauseOnce()
    {
        if (m_paused)
            return;
        m_paused = true;
        inside.release();
        goOn.acquire();
    }

    QByteArray m_content;
    bool m_paused = false;
};

class ThrowingDevice : public QIODevice
{
public:
    ThrowingDevice() { open(QIODevice::ReadWrite | QIODevice::Unbuffered); }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *, qint64) override { throw std::runtime_error("reading"); }
    qint64 writeData(const char *, qint64) override { throw std::runtime_error("writing"); }
};

using Operation = std::function<void(CommunicatorCommandT &)>;

void writeSomewhere(CommunicatorCommandT &command)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    command.outputDataStream(stream);
}

void readSomething(CommunicatorCommandT &command)
{
    QDataStream stream(QByteArray::fromHex("00000001000000020000000100000004004d0031"));
    command.inputDataStream(stream);
}

/// Runs an operation on a thread of its own and tells whether it came to its end.
class Runner
{
public:
    Runner(CommunicatorCommandT &command, const Operation &operation)
        : m_thread([this, &command, operation] {
            operation(command);
            m_done.release();
        })
    {
    }
    ~Runner() { m_thread.join(); }
    Q_DISABLE_COPY(Runner)

    bool isDone(int milliseconds)
    {
        if (!m_done.tryAcquire(1, milliseconds))
            return false;
        m_done.release();
        return true;
    }

private:
    QSemaphore m_done;
    std::thread m_thread;
};

} // namespace

Q_DECLARE_METATYPE(Operation)

class TestCommunicatorCommandT : public QObject
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
    void streamForm_data();
    void streamForm();
    void oldStreamVersionsWriteTheAddressTheirWay();
    void theKeyIsNotStreamed();
    void readingLeavesTheKey();
    void commandsFollowEachOtherInAStream();
    void aDryStreamLeavesZeros_data();
    void aDryStreamLeavesZeros();
    void lockedOperationsWaitForAWriter_data();
    void lockedOperationsWaitForAWriter();
    void lockedOperationsWaitForAReader_data();
    void lockedOperationsWaitForAReader();
    void unlockedOperationsDoNotWait();
    void eachObjectHasALockOfItsOwn();
    void anExceptionReleasesTheLock();
    void recordsAreNeverTorn();
    void staticOperationsServeManyThreads();
};

void TestCommunicatorCommandT::aNewCommandIsNull()
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

void TestCommunicatorCommandT::fieldsStandInDeclaredOrder()
{
    const CommunicatorCommandT command;
    const void *const places[] = {&command.scanTime, &command.dataType, &command.length, &command.address,
                                  &command.key};
    for (int i = 1; i < 5; ++i)
        QVERIFY2(std::less<const void *>()(places[i - 1], places[i]), QByteArray::number(i).constData());
}

void TestCommunicatorCommandT::madeFromACommandItHasAKey()
{
    const CommunicatorCommandT command(plainCommand(QStringLiteral("3-D100"), 2, 6, 9));
    QCOMPARE(command.scanTime, 9);
    QCOMPARE(command.dataType, 2);
    QCOMPARE(command.length, 6);
    QCOMPARE(command.address, QStringLiteral("3-D100"));
    QCOMPARE(command.key, QStringLiteral("3-D100_2_6"));
    QCOMPARE(command.stringKey(), QStringLiteral("3-D100_2_6"));
}

void TestCommunicatorCommandT::assignedFromACommandItHasANewKey()
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

void TestCommunicatorCommandT::lengthIsCutTo32Bits_data()
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

void TestCommunicatorCommandT::lengthIsCutTo32Bits()
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

void TestCommunicatorCommandT::copyingKeepsAStaleKey()
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

void TestCommunicatorCommandT::copyingKeepsAnEmptyKey()
{
    const CommunicatorCommandT original = rawCommand(QStringLiteral("D100"), 2, 1);
    QVERIFY(CommunicatorCommandT(original).stringKey().isEmpty());
    CommunicatorCommandT assigned(plainCommand(QStringLiteral("X1"), 0, 3));
    assigned = original;
    QVERIFY(assigned.stringKey().isEmpty());
}

void TestCommunicatorCommandT::assignedToItselfItStaysAsItIs()
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

void TestCommunicatorCommandT::keyFollowsTheFieldsOnRequestOnly()
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

void TestCommunicatorCommandT::key_data()
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

void TestCommunicatorCommandT::key()
{
    QFETCH(QString, address);
    QFETCH(int, dataType);
    QFETCH(int, length);
    CommunicatorCommandT command = rawCommand(address, dataType, length);
    command.makekey();
    QTEST(command.stringKey(), "key");
}

void TestCommunicatorCommandT::nullReadOnceAndBlock_data()
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

void TestCommunicatorCommandT::nullReadOnceAndBlock()
{
    QFETCH(QString, address);
    QFETCH(int, length);
    QFETCH(int, scanTime);
    const CommunicatorCommandT command = rawCommand(address, 2, length, scanTime);
    QTEST(command.isNull(), "isNull");
    QTEST(command.isBlockCommand(), "isBlock");
    QTEST(command.isReadOnce(), "isReadOnce");
}

void TestCommunicatorCommandT::dataTypeName_data()
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

void TestCommunicatorCommandT::dataTypeName()
{
    QFETCH(int, dataType);
    QTEST(rawCommand(QStringLiteral("D1"), dataType, 1).dataTypeName(), "name");
}

void TestCommunicatorCommandT::dataSize_data()
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

void TestCommunicatorCommandT::dataSize()
{
    QFETCH(int, dataType);
    QFETCH(int, length);
    QTEST(rawCommand(QStringLiteral("D1"), dataType, length).getDataSize(), "bytes");
}

void TestCommunicatorCommandT::dataSizeDiffersFromThePlainCommand_data()
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

void TestCommunicatorCommandT::dataSizeDiffersFromThePlainCommand()
{
    QFETCH(int, dataType);
    QFETCH(quint64, length);
    const CommunicatorCommand plain = plainCommand(QStringLiteral("D1"), dataType, length);
    QTEST(plain.getDataSize(), "plainBytes");
    QTEST(CommunicatorCommandT(plain).getDataSize(), "bytes");
}

void TestCommunicatorCommandT::stationAndDeviceAddress_data()
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

void TestCommunicatorCommandT::stationAndDeviceAddress()
{
    QFETCH(QString, address);
    const CommunicatorCommandT command = rawCommand(address, 2, 1);
    QTEST(CommunicatorCommandT::getStationId(command), "station");
    QTEST(CommunicatorCommandT::getAddressString(command), "deviceAddress");
}

void TestCommunicatorCommandT::streamForm_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("dataType");
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("scanTime");
    QTest::addColumn<bool>("littleEndian");
    QTest::addColumn<QByteArray>("hex");

    QTest::newRow("a word, most significant byte first") << "D100" << 2 << 1 << 5 << false
                                                         << QByteArray("00000005"
                                                                       "00000002"
                                                                       "00000001"
                                                                       "00000008"
                                                                       "0044003100300030");
    QTest::newRow("a word, least significant byte first") << "D100" << 2 << 1 << 5 << true
                                                          << QByteArray("05000000"
                                                                        "02000000"
                                                                        "01000000"
                                                                        "08000000"
                                                                        "4400310030003000");
    QTest::newRow("each byte of the integers has its place") << "M" << 0x11121314 << 0x21222324 << 0x01020304 << false
                                                             << QByteArray("01020304"
                                                                           "11121314"
                                                                           "21222324"
                                                                           "00000002"
                                                                           "004d");
    QTest::newRow("each byte of the integers has its place the other way round")
        << "M" << 0x11121314 << 0x21222324 << 0x01020304 << true
        << QByteArray("04030201"
                      "14131211"
                      "24232221"
                      "02000000"
                      "4d00");
    QTest::newRow("negative integers in two's complement") << "M" << -1 << -2 << -256 << false
                                                           << QByteArray("ffffff00"
                                                                         "ffffffff"
                                                                         "fffffffe"
                                                                         "00000002"
                                                                         "004d");
    QTest::newRow("the null command") << "S>NULL" << 3 << 1 << 1 << false
                                      << QByteArray("00000001"
                                                    "00000003"
                                                    "00000001"
                                                    "0000000c"
                                                    "0053003e004e0055004c004c");
    QTest::newRow("a station goes in as it stands") << "3-D1" << 2 << 1 << 1 << false
                                                    << QByteArray("00000001"
                                                                  "00000002"
                                                                  "00000001"
                                                                  "00000008"
                                                                  "0033002d00440031");
    QTest::newRow("an empty address has length 0") << QStringLiteral("") << 2 << 1 << 1 << false
                                                   << QByteArray("00000001"
                                                                 "00000002"
                                                                 "00000001"
                                                                 "00000000");
    QTest::newRow("a null address has the null mark") << QString() << 2 << 1 << 1 << false
                                                      << QByteArray("00000001"
                                                                    "00000002"
                                                                    "00000001"
                                                                    "ffffffff");
    QTest::newRow("an address beyond ASCII") << QStringLiteral("\u00c41") << 0 << 1 << 0 << true
                                             << QByteArray("00000000"
                                                           "00000000"
                                                           "01000000"
                                                           "04000000"
                                                           "c4003100");
}

void TestCommunicatorCommandT::streamForm()
{
    QFETCH(QString, address);
    QFETCH(int, dataType);
    QFETCH(int, length);
    QFETCH(int, scanTime);
    QFETCH(bool, littleEndian);
    QFETCH(QByteArray, hex);
    const auto order = littleEndian ? QDataStream::LittleEndian : QDataStream::BigEndian;

    CommunicatorCommandT source = rawCommand(address, dataType, length, scanTime);
    QCOMPARE(written(source, order).toHex(), hex);

    QDataStream stream(QByteArray::fromHex(hex));
    stream.setByteOrder(order);
    CommunicatorCommandT target;
    target.inputDataStream(stream);
    QCOMPARE(target.scanTime, scanTime);
    QCOMPARE(target.dataType, dataType);
    QCOMPARE(target.length, length);
    QCOMPARE(target.address, address);
    QCOMPARE(target.address.isNull(), address.isNull());
    QVERIFY(target.stringKey().isEmpty());
    QCOMPARE(stream.status(), QDataStream::Ok);
    QVERIFY(stream.atEnd());
}

void TestCommunicatorCommandT::oldStreamVersionsWriteTheAddressTheirWay()
{
    CommunicatorCommandT command = rawCommand(QStringLiteral("D100"), 2, 1);
    QCOMPARE(written(command, QDataStream::BigEndian, QDataStream::Qt_1_0).toHex(), QByteArray("00000001"
                                                                                               "00000002"
                                                                                               "00000001"
                                                                                               "00000004"
                                                                                               "44313030"));

    QDataStream stream(QByteArray::fromHex("00000001"
                                           "00000002"
                                           "00000001"
                                           "00000004"
                                           "44313030"));
    stream.setVersion(QDataStream::Qt_1_0);
    CommunicatorCommandT target;
    target.inputDataStream(stream);
    QCOMPARE(target.address, QStringLiteral("D100"));
}

void TestCommunicatorCommandT::theKeyIsNotStreamed()
{
    CommunicatorCommandT withKey(plainCommand(QStringLiteral("D100"), 2, 1));
    CommunicatorCommandT withoutKey = rawCommand(QStringLiteral("D100"), 2, 1);
    const QByteArray expected = QByteArray("00000001"
                                           "00000002"
                                           "00000001"
                                           "00000008"
                                           "0044003100300030");
    QCOMPARE(written(withKey).toHex(), expected);
    QCOMPARE(written(withoutKey).toHex(), expected);
}

void TestCommunicatorCommandT::readingLeavesTheKey()
{
    CommunicatorCommandT source(plainCommand(QStringLiteral("M7"), 0, 16, 0));
    const QByteArray bytes = written(source);

    CommunicatorCommandT target(plainCommand(QStringLiteral("D100"), 2, 1));
    QDataStream stream(bytes);
    target.inputDataStream(stream);
    QCOMPARE(target.address, QStringLiteral("M7"));
    QCOMPARE(target.dataType, 0);
    QCOMPARE(target.length, 16);
    QCOMPARE(target.scanTime, 0);
    QCOMPARE(target.stringKey(), QStringLiteral("D100_2_1"));
    target.makekey();
    QCOMPARE(target.stringKey(), QStringLiteral("M7_0_16"));
}

void TestCommunicatorCommandT::commandsFollowEachOtherInAStream()
{
    QBuffer buffer;
    buffer.open(QIODevice::ReadWrite);
    QDataStream stream(&buffer);
    CommunicatorCommandT first = rawCommand(QStringLiteral("D1"), 2, 3, 4);
    CommunicatorCommandT second = rawCommand(QStringLiteral("5-M6"), 0, 7, 8);
    first.outputDataStream(stream);
    second.outputDataStream(stream);
    QCOMPARE(buffer.size(), qint64(12 + 4 + 4 + 12 + 4 + 8));

    buffer.seek(0);
    CommunicatorCommandT target;
    target.inputDataStream(stream);
    QCOMPARE(target.address, QStringLiteral("D1"));
    QCOMPARE(target.length, 3);
    target.inputDataStream(stream);
    QCOMPARE(target.address, QStringLiteral("5-M6"));
    QCOMPARE(target.length, 7);
    QVERIFY(stream.atEnd());
}

void TestCommunicatorCommandT::aDryStreamLeavesZeros_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<int>("scanTime");
    QTest::addColumn<int>("dataType");
    QTest::addColumn<int>("length");

    QTest::newRow("nothing at all") << QByteArray() << 0 << 0 << 0;
    QTest::newRow("half an integer") << QByteArray("0102") << 0 << 0 << 0;
    QTest::newRow("the scan time only") << QByteArray("00000009") << 9 << 0 << 0;
    QTest::newRow("no length") << QByteArray("0000000900000002") << 9 << 2 << 0;
    QTest::newRow("no address") << QByteArray("000000090000000200000004") << 9 << 2 << 4;
    QTest::newRow("half an address") << QByteArray("0000000900000002000000040000000800440031") << 9 << 2 << 4;
}

void TestCommunicatorCommandT::aDryStreamLeavesZeros()
{
    QFETCH(QByteArray, hex);
    CommunicatorCommandT command(plainCommand(QStringLiteral("D100"), 3, 7));
    QDataStream stream(QByteArray::fromHex(hex));
    command.inputDataStream(stream);
    QTEST(command.scanTime, "scanTime");
    QTEST(command.dataType, "dataType");
    QTEST(command.length, "length");
    QVERIFY(command.address.isEmpty());
    QVERIFY(command.isNull());
    QCOMPARE(command.stringKey(), QStringLiteral("D100_3_7"));
    QCOMPARE(stream.status(), QDataStream::ReadPastEnd);
}

void TestCommunicatorCommandT::lockedOperationsWaitForAWriter_data()
{
    QTest::addColumn<Operation>("operation");

    QTest::newRow("outputDataStream") << Operation(writeSomewhere);
    QTest::newRow("inputDataStream") << Operation(readSomething);
    QTest::newRow("dataTypeName") << Operation([](CommunicatorCommandT &command) { command.dataTypeName(); });
    QTest::newRow("isNull") << Operation([](CommunicatorCommandT &command) { command.isNull(); });
    QTest::newRow("getDataSize") << Operation([](CommunicatorCommandT &command) { command.getDataSize(); });
    QTest::newRow("makekey") << Operation([](CommunicatorCommandT &command) { command.makekey(); });
    QTest::newRow("assignment of a plain command, for its key")
        << Operation([](CommunicatorCommandT &command) { command = CommunicatorCommand(); });
}

void TestCommunicatorCommandT::lockedOperationsWaitForAWriter()
{
    QFETCH(Operation, operation);
    CommunicatorCommandT command = rawCommand(QStringLiteral("D100"), 2, 1);
    PausingDevice device;
    QDataStream stream(&device);
    Runner writer(command, [&stream](CommunicatorCommandT &used) { used.outputDataStream(stream); });
    QVERIFY(device.inside.tryAcquire(1, longEnough));
    Runner other(command, operation);
    const bool doneTooEarly = other.isDone(aWhile);
    device.goOn.release();
    QVERIFY(!doneTooEarly);
    QVERIFY(other.isDone(longEnough));
    QVERIFY(writer.isDone(longEnough));
}

void TestCommunicatorCommandT::lockedOperationsWaitForAReader_data()
{
    lockedOperationsWaitForAWriter_data();
}

void TestCommunicatorCommandT::lockedOperationsWaitForAReader()
{
    QFETCH(Operation, operation);
    CommunicatorCommandT command = rawCommand(QStringLiteral("D100"), 2, 1);
    PausingDevice device(QByteArray::fromHex("00000001000000020000000100000004004d0031"));
    QDataStream stream(&device);
    Runner reader(command, [&stream](CommunicatorCommandT &used) { used.inputDataStream(stream); });
    QVERIFY(device.inside.tryAcquire(1, longEnough));
    Runner other(command, operation);
    const bool doneTooEarly = other.isDone(aWhile);
    device.goOn.release();
    QVERIFY(!doneTooEarly);
    QVERIFY(other.isDone(longEnough));
    QVERIFY(reader.isDone(longEnough));
}

void TestCommunicatorCommandT::unlockedOperationsDoNotWait()
{
    CommunicatorCommandT command(plainCommand(QStringLiteral("3-D100"), 2, 6, 0));
    PausingDevice device;
    QDataStream stream(&device);
    Runner writer(command, [&stream](CommunicatorCommandT &used) { used.outputDataStream(stream); });
    QVERIFY(device.inside.tryAcquire(1, longEnough));
    bool isBlock = false;
    bool isReadOnce = false;
    int station = -2;
    QString key;
    QString device100;
    QString copiedAddress;
    QString assignedKey;
    {
        Runner other(command, [&](CommunicatorCommandT &used) {
            isBlock = used.isBlockCommand();
            isReadOnce = used.isReadOnce();
            key = used.stringKey();
            station = CommunicatorCommandT::getStationId(used);
            device100 = CommunicatorCommandT::getAddressString(used);
            copiedAddress = CommunicatorCommandT(used).address;
            CommunicatorCommandT assigned;
            assigned = used;
            assignedKey = assigned.stringKey();
        });
        const bool done = other.isDone(longEnough);
        device.goOn.release();
        QVERIFY(done);
    }
    QVERIFY(isBlock);
    QVERIFY(isReadOnce);
    QCOMPARE(key, QStringLiteral("3-D100_2_6"));
    QCOMPARE(station, 3);
    QCOMPARE(device100, QStringLiteral("D100"));
    QCOMPARE(copiedAddress, QStringLiteral("3-D100"));
    QCOMPARE(assignedKey, QStringLiteral("3-D100_2_6"));
    QVERIFY(writer.isDone(longEnough));
}

void TestCommunicatorCommandT::eachObjectHasALockOfItsOwn()
{
    CommunicatorCommandT command = rawCommand(QStringLiteral("D100"), 2, 1);
    PausingDevice device;
    QDataStream stream(&device);
    Runner writer(command, [&stream](CommunicatorCommandT &used) { used.outputDataStream(stream); });
    QVERIFY(device.inside.tryAcquire(1, longEnough));
    CommunicatorCommandT copy(command);
    bool done = false;
    {
        Runner other(copy, [](CommunicatorCommandT &used) { used.makekey(); });
        done = other.isDone(longEnough);
        device.goOn.release();
    }
    QVERIFY(done);
    QCOMPARE(copy.stringKey(), QStringLiteral("D100_2_1"));
}

void TestCommunicatorCommandT::anExceptionReleasesTheLock()
{
    CommunicatorCommandT command = rawCommand(QStringLiteral("D100"), 2, 1);
    ThrowingDevice device;
    QDataStream stream(&device);
    QVERIFY_EXCEPTION_THROWN(command.outputDataStream(stream), std::runtime_error);
    {
        Runner other(command, [](CommunicatorCommandT &used) { used.makekey(); });
        QVERIFY(other.isDone(longEnough));
    }
    QVERIFY_EXCEPTION_THROWN(command.inputDataStream(stream), std::runtime_error);
    {
        Runner other(command, [](CommunicatorCommandT &used) { used.isNull(); });
        QVERIFY(other.isDone(longEnough));
    }
}

// Two records with nothing in common are read in and written out by several threads; what comes out is one or the
// other, never a mixture.
void TestCommunicatorCommandT::recordsAreNeverTorn()
{
    constexpr int passes = 3000;
    CommunicatorCommandT first = rawCommand(QStringLiteral("1-D100"), 2, 10, 100);
    CommunicatorCommandT second = rawCommand(QStringLiteral("2-LongerAddress200"), 0, 20, 200);
    const QByteArray firstBytes = written(first);
    const QByteArray secondBytes = written(second);
    CommunicatorCommandT shared(first);
    std::atomic<int> torn{0};

    const auto read = [&](const QByteArray &bytes) {
        for (int i = 0; i < passes; ++i) {
            QDataStream stream(bytes);
            shared.inputDataStream(stream);
        }
    };
    const auto write = [&] {
        for (int i = 0; i < passes; ++i) {
            shared.makekey();
            const QByteArray bytes = written(shared);
            const int size = shared.getDataSize();
            const QString name = shared.dataTypeName();
            const bool isOne = bytes == firstBytes || bytes == secondBytes;
            const bool hasSize = size == 20 || size == 3;
            const bool hasName = name == QLatin1String("Word") || name == QLatin1String("Bit");
            if (!isOne || !hasSize || !hasName || shared.isNull())
                ++torn;
        }
    };
    {
        std::vector<std::thread> threads;
        threads.emplace_back(read, firstBytes);
        threads.emplace_back(read, secondBytes);
        threads.emplace_back(write);
        threads.emplace_back(write);
        for (std::thread &thread : threads)
            thread.join();
    }
    QCOMPARE(torn.load(), 0);
    shared.makekey();
    const QString key = shared.stringKey();
    QVERIFY2(key == QLatin1String("1-D100_2_10") || key == QLatin1String("2-LongerAddress200_0_20"), qPrintable(key));
}

void TestCommunicatorCommandT::staticOperationsServeManyThreads()
{
    const CommunicatorCommandT command = rawCommand(QStringLiteral("17-D100"), 2, 1);
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int pass = 0; pass < 2000; ++pass) {
                if (CommunicatorCommandT::getStationId(command) != 17)
                    ++wrong;
                if (CommunicatorCommandT::getAddressString(command) != QLatin1String("D100"))
                    ++wrong;
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(wrong.load(), 0);
}

QTEST_APPLESS_MAIN(TestCommunicatorCommandT)

#include "tst_communicatorcommandt.moc"
