// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/codectest.h"

#include <QtTest>

#include <cfloat>
#include <climits>

/// Tests a tag's value as bytes.
class EncodingTest : public CodecTest
{
    Q_OBJECT

private Q_SLOTS:
    void encodeNumber_data();
    void encodeNumber();
    void encodeText_data();
    void encodeText();
    void encodeDiffers_data();
    void encodeDiffers();
    void encodeUnknownType_data();
    void encodeUnknownType();
    void encodeClearsTheArrayFirst();
    void encodeLeavesSharedArraysAlone();
};

void EncodingTest::encodeNumber_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("hex");

    QTest::newRow("Bit: 0") << 0 << QVariant(0) << QStringLiteral("00");
    QTest::newRow("Bit: 1") << 0 << QVariant(1) << QStringLiteral("01");
    QTest::newRow("Bit: only bit 0 of 6 counts") << 0 << QVariant(6) << QStringLiteral("00");
    QTest::newRow("Bit: only bit 0 of 7 counts") << 0 << QVariant(7) << QStringLiteral("01");
    QTest::newRow("Bit: true") << 0 << QVariant(true) << QStringLiteral("01");
    QTest::newRow("Bit: false") << 0 << QVariant(false) << QStringLiteral("00");
    QTest::newRow("Bit: 256 is even") << 0 << QVariant(256) << QStringLiteral("00");
    QTest::newRow("Bit: the number -1 is odd") << 0 << QVariant(-1) << QStringLiteral("01");
    QTest::newRow("Bit: a text of digits") << 0 << QVariant(QStringLiteral("3")) << QStringLiteral("01");

    QTest::newRow("INT(8): the lowest") << 1 << QVariant(-128) << QStringLiteral("80");
    QTest::newRow("INT(8): the highest") << 1 << QVariant(127) << QStringLiteral("7f");
    QTest::newRow("INT(8): -1") << 1 << QVariant(-1) << QStringLiteral("ff");
    QTest::newRow("INT(8): 200 is no matter") << 1 << QVariant(200) << QStringLiteral("c8");
    QTest::newRow("INT(8): the low byte of 4660") << 1 << QVariant(4660) << QStringLiteral("34");
    QTest::newRow("UINT(8): 0") << 2 << QVariant(0) << QStringLiteral("00");
    QTest::newRow("UINT(8): the highest") << 2 << QVariant(255) << QStringLiteral("ff");
    QTest::newRow("UINT(8): the low byte of 256") << 2 << QVariant(256) << QStringLiteral("00");
    QTest::newRow("UINT(8): the number -2") << 2 << QVariant(-2) << QStringLiteral("fe");

    QTest::newRow("INT(16): -2") << 3 << QVariant(-2) << QStringLiteral("fe ff");
    QTest::newRow("INT(16): the lowest") << 3 << QVariant(-32768) << QStringLiteral("00 80");
    QTest::newRow("INT(16): the highest") << 3 << QVariant(32767) << QStringLiteral("ff 7f");
    QTest::newRow("INT(16): the least significant byte first") << 3 << QVariant(4660) << QStringLiteral("34 12");
    QTest::newRow("INT(16): the low two bytes of 305419896") << 3 << QVariant(305419896) << QStringLiteral("78 56");
    QTest::newRow("UINT(16): the highest") << 4 << QVariant(65535) << QStringLiteral("ff ff");
    QTest::newRow("UINT(16): the low two bytes of 65536") << 4 << QVariant(65536) << QStringLiteral("00 00");
    QTest::newRow("UINT(16): the number -2") << 4 << QVariant(-2) << QStringLiteral("fe ff");

    QTest::newRow("INT(32): the lowest") << 5 << QVariant(INT_MIN) << QStringLiteral("00 00 00 80");
    QTest::newRow("INT(32): the highest") << 5 << QVariant(INT_MAX) << QStringLiteral("ff ff ff 7f");
    QTest::newRow("INT(32): -1") << 5 << QVariant(-1) << QStringLiteral("ff ff ff ff");
    QTest::newRow("INT(32): the least significant byte first")
        << 5 << QVariant(305419896) << QStringLiteral("78 56 34 12");
    QTest::newRow("INT(32): a text of digits") << 5 << QVariant(QStringLiteral("-2")) << QStringLiteral("fe ff ff ff");
    QTest::newRow("INT(32): a double is rounded") << 5 << QVariant(2.6) << QStringLiteral("03 00 00 00");
    QTest::newRow("UINT(32): the highest") << 6 << QVariant(4294967295U) << QStringLiteral("ff ff ff ff");
    QTest::newRow("UINT(32): half way") << 6 << QVariant(2147483648U) << QStringLiteral("00 00 00 80");
    QTest::newRow("UINT(32): the number -1") << 6 << QVariant(-1) << QStringLiteral("ff ff ff ff");
    QTest::newRow("UINT(32): the low four bytes of a longer number")
        << 6 << QVariant(Q_INT64_C(0x1122334455667788)) << QStringLiteral("88 77 66 55");

    QTest::newRow("UINT(32): the highest, as a text")
        << 6 << QVariant(QStringLiteral("4294967295")) << QStringLiteral("ff ff ff ff");
    QTest::newRow("UINT(16): the low bytes of a text above the highest int")
        << 4 << QVariant(QStringLiteral("2147483649")) << QStringLiteral("01 00");

    QTest::newRow("FLOAT: 0") << 7 << QVariant(0.0F) << QStringLiteral("00 00 00 00");
    QTest::newRow("FLOAT: minus 0") << 7 << QVariant(-0.0F) << QStringLiteral("00 00 00 80");
    QTest::newRow("FLOAT: 1") << 7 << QVariant(1.0F) << QStringLiteral("00 00 80 3f");
    QTest::newRow("FLOAT: -1.5, of a double") << 7 << QVariant(-1.5) << QStringLiteral("00 00 c0 bf");
    QTest::newRow("FLOAT: a text") << 7 << QVariant(QStringLiteral("0.25")) << QStringLiteral("00 00 80 3e");
    QTest::newRow("FLOAT: an int") << 7 << QVariant(2) << QStringLiteral("00 00 00 40");
    QTest::newRow("FLOAT: the highest") << 7 << QVariant(FLT_MAX) << QStringLiteral("ff ff 7f 7f");
    QTest::newRow("FLOAT: the lowest") << 7 << QVariant(-FLT_MAX) << QStringLiteral("ff ff 7f ff");
    QTest::newRow("FLOAT: the smallest") << 7 << QVariant(FLT_TRUE_MIN) << QStringLiteral("01 00 00 00");
    QTest::newRow("FLOAT: infinite") << 7 << QVariant(float(qInf())) << QStringLiteral("00 00 80 7f");

    QTest::newRow("DOUBLE: 0") << 9 << QVariant(0.0) << QStringLiteral("00 00 00 00 00 00 00 00");
    QTest::newRow("DOUBLE: minus 0") << 9 << QVariant(-0.0) << QStringLiteral("00 00 00 00 00 00 00 80");
    QTest::newRow("DOUBLE: 1") << 9 << QVariant(1.0) << QStringLiteral("00 00 00 00 00 00 f0 3f");
    QTest::newRow("DOUBLE: 0.1") << 9 << QVariant(0.1) << QStringLiteral("9a 99 99 99 99 99 b9 3f");
    QTest::newRow("DOUBLE: a text") << 9 << QVariant(QStringLiteral("-2")) << QStringLiteral("00 00 00 00 00 00 00 c0");
    QTest::newRow("DOUBLE: the highest") << 9 << QVariant(DBL_MAX) << QStringLiteral("ff ff ff ff ff ff ef 7f");
    QTest::newRow("DOUBLE: the lowest") << 9 << QVariant(-DBL_MAX) << QStringLiteral("ff ff ff ff ff ff ef ff");
    QTest::newRow("DOUBLE: the smallest") << 9 << QVariant(DBL_TRUE_MIN) << QStringLiteral("01 00 00 00 00 00 00 00");
    QTest::newRow("DOUBLE: infinite") << 9 << QVariant(-qInf()) << QStringLiteral("00 00 00 00 00 00 f0 ff");

    QTest::newRow("INT(64): the lowest") << 10 << QVariant(LLONG_MIN) << QStringLiteral("00 00 00 00 00 00 00 80");
    QTest::newRow("INT(64): the highest") << 10 << QVariant(LLONG_MAX) << QStringLiteral("ff ff ff ff ff ff ff 7f");
    QTest::newRow("INT(64): -1, of an int") << 10 << QVariant(-1) << QStringLiteral("ff ff ff ff ff ff ff ff");
    QTest::newRow("INT(64): the least significant byte first")
        << 10 << QVariant(Q_INT64_C(0x1122334455667788)) << QStringLiteral("88 77 66 55 44 33 22 11");
    QTest::newRow("UINT(64): the highest, as a number")
        << 11 << QVariant(ULLONG_MAX) << QStringLiteral("ff ff ff ff ff ff ff ff");
    QTest::newRow("UINT(64): the highest, as a text, is too large for a signed number")
        << 11 << QVariant(QStringLiteral("18446744073709551615")) << QStringLiteral("00 00 00 00 00 00 00 00");
    QTest::newRow("UINT(64): the highest signed number, as a text")
        << 11 << QVariant(QStringLiteral("9223372036854775807")) << QStringLiteral("ff ff ff ff ff ff ff 7f");
    QTest::newRow("UINT(64): one more, as a text")
        << 11 << QVariant(QStringLiteral("9223372036854775808")) << QStringLiteral("00 00 00 00 00 00 00 00");
    QTest::newRow("UINT(64): a negative text")
        << 11 << QVariant(QStringLiteral("-1")) << QStringLiteral("ff ff ff ff ff ff ff ff");

    const QVariant noNumber(QStringLiteral("abc"));
    QTest::newRow("Bit: a text that is no number") << 0 << noNumber << QStringLiteral("00");
    QTest::newRow("INT(8): a text that is no number") << 1 << noNumber << QStringLiteral("00");
    QTest::newRow("UINT(16): a text that is no number") << 4 << noNumber << QStringLiteral("00 00");
    QTest::newRow("INT(32): a text with a point is no whole number")
        << 5 << QVariant(QStringLiteral("1.5")) << QStringLiteral("00 00 00 00");
    QTest::newRow("FLOAT: a text that is no number") << 7 << noNumber << QStringLiteral("00 00 00 00");
    QTest::newRow("DOUBLE: a text that is no number") << 9 << noNumber << QStringLiteral("00 00 00 00 00 00 00 00");
    QTest::newRow("INT(64): a text that is no number") << 10 << noNumber << QStringLiteral("00 00 00 00 00 00 00 00");
    QTest::newRow("INT(32): a null variant") << 5 << QVariant() << QStringLiteral("00 00 00 00");
    QTest::newRow("DOUBLE: a null variant") << 9 << QVariant() << QStringLiteral("00 00 00 00 00 00 00 00");
    QTest::newRow("UINT(8): bytes are read as digits") << 2 << QVariant(QByteArray("65")) << QStringLiteral("41");
}

void EncodingTest::encodeNumber()
{
    QFETCH(int, type);
    QFETCH(QVariant, value);
    QByteArray bytes;
    m_tags->var2ByteArray(numbers + type, value, bytes);
    QTEST(hexOf(bytes), "hex");
    QTEST(hexOf(m_tags->varToByteArrayThreadSafe(numbers + type, value)), "hex");
}

void EncodingTest::encodeText_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("hex");
    QTest::newRow("shorter: zero bytes fill the rest")
        << 204 << QVariant(QByteArray("AB")) << QStringLiteral("41 42 00 00");
    QTest::newRow("longer: cut, without a terminator")
        << 204 << QVariant(QByteArray("ABCDEF")) << QStringLiteral("41 42 43 44");
    QTest::newRow("as long as the tag: no terminator")
        << 204 << QVariant(QByteArray("ABCD")) << QStringLiteral("41 42 43 44");
    QTest::newRow("one less") << 204 << QVariant(QByteArray("ABC")) << QStringLiteral("41 42 43 00");
    QTest::newRow("one more") << 204 << QVariant(QByteArray("ABCDE")) << QStringLiteral("41 42 43 44");
    QTest::newRow("empty") << 204 << QVariant(QByteArray()) << QStringLiteral("00 00 00 00");
    QTest::newRow("a null variant") << 204 << QVariant() << QStringLiteral("00 00 00 00");
    QTest::newRow("one zero byte") << 204 << QVariant(QByteArray(1, '\0')) << QStringLiteral("00 00 00 00");
    QTest::newRow("a string") << 206 << QVariant(QStringLiteral("hello")) << QStringLiteral("68 65 6c 6c 6f 00");
    QTest::newRow("a string with a letter of two bytes")
        << 206 << QVariant(QStringLiteral("a\u00e9")) << QStringLiteral("61 c3 a9 00 00 00");
    QTest::newRow("a string that is cut within a letter of two bytes")
        << 201 << QVariant(QStringLiteral("\u00e9")) << QStringLiteral("c3");
    QTest::newRow("a number") << 206 << QVariant(-1234) << QStringLiteral("2d 31 32 33 34 00");
    QTest::newRow("bytes above 127") << 204 << QVariant(QByteArray("\xff\x80\x01")) << QStringLiteral("ff 80 01 00");
    QTest::newRow("length 1") << 201 << QVariant(QByteArray("XY")) << QStringLiteral("58");
    QTest::newRow("length 0") << 200 << QVariant(QByteArray("XY")) << QString();
    QTest::newRow("length 0, no text") << 200 << QVariant(QByteArray()) << QString();
    QTest::newRow("length -1") << textOfNegativeLength << QVariant(QByteArray("XY")) << QString();
}

void EncodingTest::encodeText()
{
    QFETCH(int, id);
    QFETCH(QVariant, value);
    QByteArray bytes("before");
    m_tags->var2ByteArray(id, value, bytes);
    QTEST(hexOf(bytes), "hex");
    QTEST(hexOf(m_tags->varToByteArrayThreadSafe(id, value)), "hex");
}

void EncodingTest::encodeDiffers_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("plain");
    QTest::addColumn<QString>("threadSafe");
    QTest::newRow("Ascii: a zero byte inside")
        << 206 << QVariant(QByteArray("A\0B", 3)) << QStringLiteral("41 00 42 00 00 00")
        << QStringLiteral("41 00 00 00 00 00");
    QTest::newRow("Ascii: a zero byte at the front")
        << 204 << QVariant(QByteArray("\0AB", 3)) << QStringLiteral("00 41 42 00") << QStringLiteral("00 00 00 00");
    QTest::newRow("Ascii: a zero byte inside a text as long as the tag")
        << 204 << QVariant(QByteArray("A\0BC", 4)) << QStringLiteral("41 00 42 43") << QStringLiteral("41 00 00 00");
    QTest::newRow("Ascii: a zero byte inside a text that is longer")
        << 204 << QVariant(QByteArray("AB\0CDEF", 7)) << QStringLiteral("41 42 00 43") << QStringLiteral("41 42 00 00");
    const QVariant beyondSigned(QStringLiteral("18446744073709551613"));
    QTest::newRow("UINT(32): a text above the highest signed number")
        << 106 << beyondSigned << QStringLiteral("fd ff ff ff") << QStringLiteral("00 00 00 00");
    QTest::newRow("UINT(16): a text above the highest signed number")
        << 104 << beyondSigned << QStringLiteral("fd ff") << QStringLiteral("00 00");
    QTest::newRow("UINT(8): a text above the highest signed number")
        << 102 << beyondSigned << QStringLiteral("fd") << QStringLiteral("00");
    QTest::newRow("UINT(8): a negative text")
        << 102 << QVariant(QStringLiteral("-2")) << QStringLiteral("00") << QStringLiteral("fe");
    QTest::newRow("UINT(32): a negative text")
        << 106 << QVariant(QStringLiteral("-2")) << QStringLiteral("00 00 00 00") << QStringLiteral("fe ff ff ff");
    QTest::newRow("Bit: a negative text")
        << 100 << QVariant(QStringLiteral("-1")) << QStringLiteral("00") << QStringLiteral("01");
    QTest::newRow("Bit: a text above the highest signed number")
        << 100 << beyondSigned << QStringLiteral("01") << QStringLiteral("00");
}

void EncodingTest::encodeDiffers()
{
    QFETCH(int, id);
    QFETCH(QVariant, value);
    QByteArray bytes;
    m_tags->var2ByteArray(id, value, bytes);
    QTEST(hexOf(bytes), "plain");
    QTEST(hexOf(m_tags->varToByteArrayThreadSafe(id, value)), "threadSafe");
}

void EncodingTest::encodeUnknownType_data()
{
    unknownTypes();
}

void EncodingTest::encodeUnknownType()
{
    QFETCH(int, id);
    QByteArray bytes("before");
    m_tags->var2ByteArray(id, 5, bytes);
    QCOMPARE(hexOf(bytes), QString());
    // The value of the byte is not specified.
    QCOMPARE(m_tags->varToByteArrayThreadSafe(id, 5).size(), 1);
}

void EncodingTest::encodeClearsTheArrayFirst()
{
    QByteArray bytes("something long from before");
    m_tags->var2ByteArray(103, 1, bytes);
    QCOMPARE(hexOf(bytes), QStringLiteral("01 00"));
    m_tags->var2ByteArray(100, 1, bytes);
    QCOMPARE(hexOf(bytes), QStringLiteral("01"));
}

void EncodingTest::encodeLeavesSharedArraysAlone()
{
    const QByteArray text("ABCDEF");
    const QVariant value(text);
    QByteArray bytes = text;
    m_tags->var2ByteArray(204, value, bytes);
    QCOMPARE(bytes, QByteArray("ABCD"));
    QByteArray made = m_tags->varToByteArrayThreadSafe(206, value);
    made[0] = 'x';
    QCOMPARE(text, QByteArray("ABCDEF"));
    QCOMPARE(value.toByteArray(), QByteArray("ABCDEF"));
}

QTEST_GUILESS_MAIN(EncodingTest)

#include "tst_codec_encoding.moc"
