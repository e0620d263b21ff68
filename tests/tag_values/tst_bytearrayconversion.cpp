// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/tag_store/tagsystem.h"
#include "zelmar_label/tag_values/bytearrayconversion.h"

#include <QtTest>

/// Tests the conversions that need no tag.
class ByteArrayConversionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void number_data();
    void number();
    void numberOfBytesThatAreNotOwned();
    void numberOfANullArray();
    void text_data();
    void text();
    void textOfANullArray();
};

void ByteArrayConversionTest::number_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<int>("number");
    QTest::addColumn<unsigned int>("positive");
    QTest::newRow("no byte") << QByteArray("") << 0 << 0U;
    QTest::newRow("one byte") << QByteArray("7f") << 127 << 127U;
    QTest::newRow("one byte with its highest bit has no sign") << QByteArray("80") << 128 << 128U;
    QTest::newRow("one full byte has no sign") << QByteArray("ff") << 255 << 255U;
    QTest::newRow("one zero byte") << QByteArray("00") << 0 << 0U;
    QTest::newRow("two bytes, the least significant first") << QByteArray("34 12") << 4660 << 4660U;
    QTest::newRow("two bytes, the second with its highest bit") << QByteArray("00 80") << 32768 << 32768U;
    QTest::newRow("two full bytes have no sign") << QByteArray("ff ff") << 65535 << 65535U;
    QTest::newRow("three bytes") << QByteArray("56 34 12") << 1193046 << 1193046U;
    QTest::newRow("three full bytes have no sign") << QByteArray("ff ff ff") << 16777215 << 16777215U;
    QTest::newRow("four bytes") << QByteArray("78 56 34 12") << 305419896 << 305419896U;
    QTest::newRow("the highest int") << QByteArray("ff ff ff 7f") << 2147483647 << 2147483647U;
    QTest::newRow("only a fourth byte makes it negative") << QByteArray("00 00 00 80") << INT_MIN << 2147483648U;
    QTest::newRow("four full bytes") << QByteArray("ff ff ff ff") << -1 << 4294967295U;
    QTest::newRow("minus two") << QByteArray("fe ff ff ff") << -2 << 4294967294U;
    QTest::newRow("a fifth byte is ignored") << QByteArray("01 00 00 00 ff") << 1 << 1U;
    QTest::newRow("bytes behind the fourth are ignored")
        << QByteArray("78 56 34 12 ff ff ff ff ff ff") << 305419896 << 305419896U;
}

void ByteArrayConversionTest::number()
{
    QFETCH(QByteArray, hex);
    const QByteArray bytes = QByteArray::fromHex(hex);
    QTEST(ByteArrayToInt(bytes), "number");
    QTEST(ByteArrayToUInt(bytes), "positive");
    QTEST(TagSystem::QByteArrayToInt(bytes), "number");
    QTEST(TagSystem::QByteArrayToUInt(bytes), "positive");
}

void ByteArrayConversionTest::numberOfBytesThatAreNotOwned()
{
    const char memory[] = {'\x02', '\x01', '\x7f', '\x7f'};
    QCOMPARE(ByteArrayToInt(QByteArray::fromRawData(memory, 2)), 258);
    QCOMPARE(ByteArrayToUInt(QByteArray::fromRawData(memory, 2)), 258U);
}

void ByteArrayConversionTest::numberOfANullArray()
{
    QCOMPARE(ByteArrayToInt(QByteArray()), 0);
    QCOMPARE(ByteArrayToUInt(QByteArray()), 0U);
    QCOMPARE(TagSystem::QByteArrayToInt(QByteArray()), 0);
    QCOMPARE(TagSystem::QByteArrayToUInt(QByteArray()), 0U);
}

void ByteArrayConversionTest::text_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<QString>("text");
    QTest::newRow("no zero byte: all of it") << QByteArray("41 42 43") << QStringLiteral("ABC");
    QTest::newRow("a zero byte ends the text") << QByteArray("41 42 00 43") << QStringLiteral("AB");
    QTest::newRow("zero bytes at the end") << QByteArray("41 42 00 00") << QStringLiteral("AB");
    QTest::newRow("a zero byte at the front") << QByteArray("00 41 42") << QString();
    QTest::newRow("one zero byte") << QByteArray("00") << QString();
    QTest::newRow("one letter") << QByteArray("41") << QStringLiteral("A");
    QTest::newRow("blanks stay") << QByteArray("20 41 20 00") << QStringLiteral(" A ");
    QTest::newRow("control characters stay") << QByteArray("01 0d 0a 7f") << QStringLiteral("\x01\r\n\x7f");
    QTest::newRow("empty") << QByteArray("") << QString();
}

void ByteArrayConversionTest::text()
{
    QFETCH(QByteArray, hex);
    QTEST(TagSystem::byteArrayToString(QByteArray::fromHex(hex)), "text");
}

void ByteArrayConversionTest::textOfANullArray()
{
    QVERIFY(TagSystem::byteArrayToString(QByteArray()).isEmpty());
    QCOMPARE(TagSystem::byteArrayToString(QByteArray::fromRawData("ABCDEF", 3)), QStringLiteral("ABC"));
}

QTEST_APPLESS_MAIN(ByteArrayConversionTest)

#include "tst_bytearrayconversion.moc"
