// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/codectest.h"

#include <QtTest>

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstring>

/// Tests bytes as a tag's value, and the round trip.
class DecodingTest : public CodecTest
{
    Q_OBJECT

private Q_SLOTS:
    void decodeNumber_data();
    void decodeNumber();
    void decodeNotANumber();
    void decodeShort_data();
    void decodeShort();
    void decodeText_data();
    void decodeText();
    void decodeUnknownType_data();
    void decodeUnknownType();
    void decodeReplacesTheVariant();
    void decodedTextOutlivesForeignMemory();

    void roundTrip_data();
    void roundTrip();
    void roundTripOfDoubles_data();
    void roundTripOfDoubles();
};

void DecodingTest::decodeNumber_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("hex");
    QTest::addColumn<QVariant>("value");

    QTest::newRow("INT(8): zero") << 1 << QStringLiteral("00") << QVariant(0);
    QTest::newRow("INT(8): the highest") << 1 << QStringLiteral("7f") << QVariant(127);
    QTest::newRow("INT(8): the lowest") << 1 << QStringLiteral("80") << QVariant(-128);
    QTest::newRow("INT(8): 200 comes back as -56") << 1 << QStringLiteral("c8") << QVariant(-56);
    QTest::newRow("INT(8): a second byte is ignored") << 1 << QStringLiteral("01 ff") << QVariant(1);
    QTest::newRow("UINT(8): the highest") << 2 << QStringLiteral("ff") << QVariant(255);
    QTest::newRow("UINT(8): 128") << 2 << QStringLiteral("80") << QVariant(128);
    QTest::newRow("INT(16): -2") << 3 << QStringLiteral("fe ff") << QVariant(-2);
    QTest::newRow("INT(16): the lowest") << 3 << QStringLiteral("00 80") << QVariant(-32768);
    QTest::newRow("INT(16): the highest") << 3 << QStringLiteral("ff 7f") << QVariant(32767);
    QTest::newRow("INT(16): the least significant byte first") << 3 << QStringLiteral("34 12") << QVariant(4660);
    QTest::newRow("UINT(16): the bytes of -2") << 4 << QStringLiteral("fe ff") << QVariant(65534);
    QTest::newRow("UINT(16): a third byte is ignored") << 4 << QStringLiteral("ff ff 01") << QVariant(65535);
    QTest::newRow("INT(32): the lowest") << 5 << QStringLiteral("00 00 00 80") << QVariant(INT_MIN);
    QTest::newRow("INT(32): the highest") << 5 << QStringLiteral("ff ff ff 7f") << QVariant(INT_MAX);
    QTest::newRow("INT(32): -1") << 5 << QStringLiteral("ff ff ff ff") << QVariant(-1);
    QTest::newRow("INT(32): a fifth byte is ignored") << 5 << QStringLiteral("02 00 00 00 ff") << QVariant(2);
    QTest::newRow("UINT(32): the highest") << 6 << QStringLiteral("ff ff ff ff") << QVariant(4294967295U);
    QTest::newRow("UINT(32): half way") << 6 << QStringLiteral("00 00 00 80") << QVariant(2147483648U);
    QTest::newRow("FLOAT: 1") << 7 << QStringLiteral("00 00 80 3f") << QVariant(1.0F);
    QTest::newRow("FLOAT: the highest") << 7 << QStringLiteral("ff ff 7f 7f") << QVariant(FLT_MAX);
    QTest::newRow("FLOAT: the smallest") << 7 << QStringLiteral("01 00 00 00") << QVariant(FLT_TRUE_MIN);
    QTest::newRow("FLOAT: infinite") << 7 << QStringLiteral("00 00 80 ff") << QVariant(float(-qInf()));
    QTest::newRow("DOUBLE: 0.1") << 9 << QStringLiteral("9a 99 99 99 99 99 b9 3f") << QVariant(0.1);
    QTest::newRow("DOUBLE: the highest") << 9 << QStringLiteral("ff ff ff ff ff ff ef 7f") << QVariant(DBL_MAX);
    QTest::newRow("DOUBLE: the smallest") << 9 << QStringLiteral("01 00 00 00 00 00 00 00") << QVariant(DBL_TRUE_MIN);
    QTest::newRow("DOUBLE: infinite") << 9 << QStringLiteral("00 00 00 00 00 00 f0 7f") << QVariant(qInf());
    QTest::newRow("INT(64): -1") << 10 << QStringLiteral("ff ff ff ff ff ff ff ff") << QVariant(Q_INT64_C(-1));
    QTest::newRow("INT(64): the lowest") << 10 << QStringLiteral("00 00 00 00 00 00 00 80") << QVariant(LLONG_MIN);
    QTest::newRow("INT(64): the least significant byte first")
        << 10 << QStringLiteral("88 77 66 55 44 33 22 11") << QVariant(Q_INT64_C(1234605616436508552));
    QTest::newRow("INT(64): a ninth byte is ignored")
        << 10 << QStringLiteral("01 00 00 00 00 00 00 00 ff") << QVariant(Q_INT64_C(1));
    QTest::newRow("UINT(64): the highest")
        << 11 << QStringLiteral("ff ff ff ff ff ff ff ff") << QVariant(Q_UINT64_C(18446744073709551615));
    QTest::newRow("UINT(64): half way") << 11 << QStringLiteral("00 00 00 00 00 00 00 80")
                                        << QVariant(Q_UINT64_C(9223372036854775808));
}

void DecodingTest::decodeNumber()
{
    QFETCH(int, type);
    QFETCH(QString, hex);
    QFETCH(QVariant, value);
    QVariant plain;
    m_tags->byteArray2Var(numbers + type, fromHex(hex), plain);
    QCOMPARE(plain, value);
    QCOMPARE(plain.userType(), value.userType());
    const QVariant threadSafe = m_tags->byteArrayToVarThreadSafe(numbers + type, fromHex(hex));
    QCOMPARE(threadSafe, value);
    QCOMPARE(threadSafe.userType(), value.userType());
}

void DecodingTest::decodeNotANumber()
{
    QVariant plain;
    m_tags->byteArray2Var(107, fromHex(QStringLiteral("00 00 c0 7f")), plain);
    QCOMPARE(plain.userType(), int(QMetaType::Float));
    QVERIFY(std::isnan(plain.toFloat()));
    const QVariant safe = m_tags->byteArrayToVarThreadSafe(109, fromHex(QStringLiteral("00 00 00 00 00 00 f8 7f")));
    QCOMPARE(safe.userType(), int(QMetaType::Double));
    QVERIFY(std::isnan(safe.toDouble()));
    QByteArray bytes;
    m_tags->var2ByteArray(107, qQNaN(), bytes);
    QCOMPARE(hexOf(bytes), QStringLiteral("00 00 c0 7f"));
    QCOMPARE(hexOf(m_tags->varToByteArrayThreadSafe(109, qQNaN())), QStringLiteral("00 00 00 00 00 00 f8 7f"));
}

/// A null variant means no value.
void DecodingTest::decodeShort_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("hex");
    QTest::addColumn<QVariant>("plain");
    QTest::addColumn<QVariant>("threadSafe");
    QTest::newRow("Bit: 0") << 100 << QStringLiteral("00") << QVariant(0) << QVariant(false);
    QTest::newRow("Bit: 1") << 100 << QStringLiteral("01") << QVariant(1) << QVariant(true);
    QTest::newRow("Bit: 5 is the raw byte, or true") << 100 << QStringLiteral("05") << QVariant(5) << QVariant(true);
    QTest::newRow("Bit: 128") << 100 << QStringLiteral("80") << QVariant(128) << QVariant(true);
    QTest::newRow("Bit: 255") << 100 << QStringLiteral("ff") << QVariant(255) << QVariant(true);
    QTest::newRow("Bit: only the first byte counts")
        << 100 << QStringLiteral("00 01") << QVariant(0) << QVariant(false);
    QTest::newRow("Bit: no byte") << 100 << QString() << QVariant(0) << QVariant();
    QTest::newRow("INT(8): no byte") << 101 << QString() << QVariant(0) << QVariant();
    QTest::newRow("UINT(8): no byte") << 102 << QString() << QVariant(0) << QVariant();
    QTest::newRow("INT(16): one byte") << 103 << QStringLiteral("ff") << QVariant(255) << QVariant();
    QTest::newRow("UINT(16): one byte") << 104 << QStringLiteral("80") << QVariant(128) << QVariant();
    QTest::newRow("INT(32): three bytes") << 105 << QStringLiteral("ff ff ff") << QVariant(16777215) << QVariant();
    QTest::newRow("INT(32): two bytes") << 105 << QStringLiteral("ff ff") << QVariant(65535) << QVariant();
    QTest::newRow("INT(32): no byte") << 105 << QString() << QVariant(0) << QVariant();
    QTest::newRow("UINT(32): one byte") << 106 << QStringLiteral("ff") << QVariant(255U) << QVariant();
    QTest::newRow("FLOAT: no byte") << 107 << QString() << QVariant(0.0F) << QVariant();
    QTest::newRow("FLOAT: three bytes of zero") << 107 << QStringLiteral("00 00 00") << QVariant(0.0F) << QVariant();
    QTest::newRow("DOUBLE: no byte") << 109 << QString() << QVariant(0.0) << QVariant();
    QTest::newRow("INT(64): seven bytes")
        << 110 << QStringLiteral("ff 00 00 00 00 00 00") << QVariant(Q_INT64_C(255)) << QVariant();
    QTest::newRow("UINT(64): seven bytes")
        << 111 << QStringLiteral("ff 00 00 00 00 00 00") << QVariant(Q_UINT64_C(255)) << QVariant();
    QTest::newRow("Ascii: no byte") << 204 << QString() << QVariant(QByteArray("")) << QVariant();
}

void DecodingTest::decodeShort()
{
    QFETCH(int, id);
    QFETCH(QString, hex);
    QFETCH(QVariant, plain);
    QFETCH(QVariant, threadSafe);
    QVariant value;
    m_tags->byteArray2Var(id, fromHex(hex), value);
    QCOMPARE(value, plain);
    QCOMPARE(value.userType(), plain.userType());
    const QVariant safe = m_tags->byteArrayToVarThreadSafe(id, fromHex(hex));
    QCOMPARE(safe, threadSafe);
    QCOMPARE(safe.userType(), threadSafe.userType());
    QCOMPARE(safe.isNull(), !threadSafe.isValid());
}

void DecodingTest::decodeText_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("hex");
    QTest::addColumn<QString>("expected");
    QTest::newRow("shorter: not padded") << 206 << QStringLiteral("41 42 43") << QStringLiteral("41 42 43");
    QTest::newRow("as long") << 204 << QStringLiteral("41 42 43 44") << QStringLiteral("41 42 43 44");
    QTest::newRow("longer: cut") << 204 << QStringLiteral("41 42 43 44 45 46") << QStringLiteral("41 42 43 44");
    QTest::newRow("zero bytes stay") << 206 << QStringLiteral("41 00 42 00 00 00")
                                     << QStringLiteral("41 00 42 00 00 00");
    QTest::newRow("one byte of six") << 206 << QStringLiteral("ff") << QStringLiteral("ff");
    QTest::newRow("length 0") << 200 << QStringLiteral("41 42") << QString();
    QTest::newRow("length -1") << textOfNegativeLength << QStringLiteral("41 42") << QString();
}

void DecodingTest::decodeText()
{
    QFETCH(int, id);
    QFETCH(QString, hex);
    QVariant plain;
    m_tags->byteArray2Var(id, fromHex(hex), plain);
    QCOMPARE(plain.userType(), int(QMetaType::QByteArray));
    QTEST(hexOf(plain.toByteArray()), "expected");
    const QVariant safe = m_tags->byteArrayToVarThreadSafe(id, fromHex(hex));
    QCOMPARE(safe.userType(), int(QMetaType::QByteArray));
    QTEST(hexOf(safe.toByteArray()), "expected");
}

void DecodingTest::decodeUnknownType_data()
{
    unknownTypes();
}

void DecodingTest::decodeUnknownType()
{
    QFETCH(int, id);
    QVariant plain(5);
    m_tags->byteArray2Var(id, QByteArray(8, '\x01'), plain);
    QVERIFY(!plain.isValid());
    QVERIFY(!m_tags->byteArrayToVarThreadSafe(id, QByteArray(8, '\x01')).isValid());
    QVERIFY(!m_tags->byteArrayToVarThreadSafe(id, QByteArray()).isValid());
}

void DecodingTest::decodeReplacesTheVariant()
{
    QVariant value(QStringLiteral("before"));
    m_tags->byteArray2Var(103, fromHex(QStringLiteral("fe ff")), value);
    QCOMPARE(value, QVariant(-2));
    m_tags->byteArray2Var(204, QByteArray("AB"), value);
    QCOMPARE(value, QVariant(QByteArray("AB")));
}

void DecodingTest::decodedTextOutlivesForeignMemory()
{
    char memory[] = "ABCDEF";
    const QVariant whole = m_tags->byteArrayToVarThreadSafe(206, QByteArray::fromRawData(memory, 6));
    const QVariant cut = m_tags->byteArrayToVarThreadSafe(204, QByteArray::fromRawData(memory, 6));
    std::memset(memory, 'x', 6);
    QCOMPARE(whole.toByteArray(), QByteArray("ABCDEF"));
    QCOMPARE(cut.toByteArray(), QByteArray("ABCD"));
}

void DecodingTest::roundTrip_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QVariant>("value");
    const QList<QPair<int, QVariant>> cases{{101, -128},
                                            {101, -1},
                                            {101, 127},
                                            {102, 0},
                                            {102, 255},
                                            {103, -32768},
                                            {103, -1},
                                            {103, 32767},
                                            {104, 0},
                                            {104, 65535},
                                            {105, INT_MIN},
                                            {105, -1},
                                            {105, INT_MAX},
                                            {106, 0U},
                                            {106, 4294967295U},
                                            {107, FLT_MAX},
                                            {107, -FLT_MAX},
                                            {107, FLT_MIN},
                                            {107, -12.75F},
                                            {109, DBL_MAX},
                                            {109, -DBL_MAX},
                                            {109, DBL_MIN},
                                            {109, 1.0 / 3},
                                            {110, LLONG_MIN},
                                            {110, LLONG_MAX},
                                            {111, ULLONG_MAX},
                                            {111, Q_UINT64_C(1)},
                                            {204, QByteArray("ABCD")},
                                            {206, QByteArray("\xff\x80\x7f\x01\x20\x0a")}};
    for (const auto &one : cases) {
        QTest::addRow("%s of tag %d", qPrintable(one.second.toString().toLatin1().toPercentEncoding()), one.first)
            << one.first << one.second;
    }
}

void DecodingTest::roundTrip()
{
    QFETCH(int, id);
    QFETCH(QVariant, value);
    QByteArray bytes;
    m_tags->var2ByteArray(id, value, bytes);
    QCOMPARE(hexOf(m_tags->varToByteArrayThreadSafe(id, value)), hexOf(bytes));
    QVariant back;
    m_tags->byteArray2Var(id, bytes, back);
    QCOMPARE(back, value);
    QCOMPARE(back.userType(), value.userType());
    const QVariant safe = m_tags->byteArrayToVarThreadSafe(id, bytes);
    QCOMPARE(safe, value);
    QCOMPARE(safe.userType(), value.userType());
}

/// Comparison of variants is fuzzy: doubles are compared by their bytes.
void DecodingTest::roundTripOfDoubles_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("hex");
    QTest::newRow("FLOAT: next to 1") << 107 << QStringLiteral("01 00 80 3f");
    QTest::newRow("FLOAT: below 1") << 107 << QStringLiteral("ff ff 7f 3f");
    QTest::newRow("FLOAT: denormal") << 107 << QStringLiteral("ff ff 7f 80");
    QTest::newRow("FLOAT: minus 0") << 107 << QStringLiteral("00 00 00 80");
    QTest::newRow("DOUBLE: next to 1") << 109 << QStringLiteral("01 00 00 00 00 00 f0 3f");
    QTest::newRow("DOUBLE: denormal") << 109 << QStringLiteral("ff ff ff ff ff ff 0f 80");
    QTest::newRow("DOUBLE: minus 0") << 109 << QStringLiteral("00 00 00 00 00 00 00 80");
}

void DecodingTest::roundTripOfDoubles()
{
    QFETCH(int, id);
    QFETCH(QString, hex);
    QVariant plain;
    m_tags->byteArray2Var(id, fromHex(hex), plain);
    QByteArray bytes;
    m_tags->var2ByteArray(id, plain, bytes);
    QCOMPARE(hexOf(bytes), hex);
    const QVariant safe = m_tags->byteArrayToVarThreadSafe(id, fromHex(hex));
    QCOMPARE(hexOf(m_tags->varToByteArrayThreadSafe(id, safe)), hex);
}

QTEST_GUILESS_MAIN(DecodingTest)

#include "tst_codec_decoding.moc"
