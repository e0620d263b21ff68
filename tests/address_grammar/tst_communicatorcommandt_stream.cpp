// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/streamedcommands.h"
#include "zelmar_label/address_grammar/communicatorcommandt.h"

#include <QBuffer>
#include <QDataStream>
#include <QTest>

class TestCommunicatorCommandTStream : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void streamForm_data();
    void streamForm();
    void oldStreamVersionsWriteTheAddressTheirWay();
    void theKeyIsNotStreamed();
    void readingLeavesTheKey();
    void commandsFollowEachOtherInAStream();
    void aDryStreamLeavesZeros_data();
    void aDryStreamLeavesZeros();
};

void TestCommunicatorCommandTStream::streamForm_data()
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

void TestCommunicatorCommandTStream::streamForm()
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

void TestCommunicatorCommandTStream::oldStreamVersionsWriteTheAddressTheirWay()
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

void TestCommunicatorCommandTStream::theKeyIsNotStreamed()
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

void TestCommunicatorCommandTStream::readingLeavesTheKey()
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

void TestCommunicatorCommandTStream::commandsFollowEachOtherInAStream()
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

void TestCommunicatorCommandTStream::aDryStreamLeavesZeros_data()
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

void TestCommunicatorCommandTStream::aDryStreamLeavesZeros()
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

QTEST_APPLESS_MAIN(TestCommunicatorCommandTStream)

#include "tst_communicatorcommandt_stream.moc"
