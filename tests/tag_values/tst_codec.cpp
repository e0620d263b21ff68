// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/logrecorder.h"
#include "support/projectfixtures.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QTemporaryDir>
#include <QtTest>

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstring>
#include <memory>

namespace {

const QString key = QStringLiteral("project of the codec");

/// Rows of a number type stand at 100 plus the type, texts at 200 plus their length.
constexpr int numbers = 100;
constexpr int texts = 200;
constexpr int textOfNegativeLength = 299;

QString hexOf(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex(' '));
}

QByteArray fromHex(const QString &hex)
{
    return QByteArray::fromHex(hex.toLatin1());
}

TagRow tag(int id, int type, int scale = 1)
{
    TagRow row;
    row.id = id;
    row.name = QStringLiteral("Tag %1").arg(id);
    row.dataType = type;
    row.scale = scale;
    return row;
}

} // namespace

/// A tag's value as bytes and back.
class CodecTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

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

    void systemTags_data();
    void systemTags();
    void recipeTags_data();
    void recipeTags();
    void recipeTagWithoutATag_data();
    void recipeTagWithoutATag();
    void recipeTagThatFollowsItsConnection();
    void typeAndScaleOfTheMoment();
    void asciiType_data();
    void asciiType();
    void withoutADatabase();

private:
    TagSystem *m_tags = nullptr;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
    std::unique_ptr<LogRecorder> m_log;
};

void CodecTest::initTestCase()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    makeProject(m_folder->filePath(QStringLiteral("project")), key);
    QList<TagRow> rows;
    for (int type = 0; type <= 11; ++type) {
        if (type != 8)
            rows.append(tag(numbers + type, type, 3));
    }
    for (int length : {0, 1, 4, 6})
        rows.append(tag(texts + length, 8, length));
    rows.append(tag(textOfNegativeLength, 8, -1));
    rows.append(tag(112, 12));
    rows.append(tag(113, -1));
    rows.append(tag(114, 1000));
    rows.append(tag(20011, 3));
    rows.append(tag(21001, 3));
    rows.append(tag(29999, 3));
    rows.append(tag(30000, 3));
    rows.append(tag(60001, 3));
    writeTags(key, rows);
    const LogRecorder log;
    m_tags = TagSystem::instance(key);
    const QMap<int, QString> names{{30001, QStringLiteral("R>1_1")}};
    const QMap<int, QString> rowNames{{50001, QStringLiteral("R>1_1I1")}};
    m_tags->setRecipeTags(names, {{30001, 103},
                                  {30002, 204},
                                  {30003, -1},
                                  {30004, 20010},
                                  {30005, 30001},
                                  {30006, 50001},
                                  {30007, 9999},
                                  {30008, 30003},
                                  {30009, 109},
                                  {50000, 111}});
    m_tags->setRecipeRowTags(rowNames, {{50001, 106}, {50002, 204}, {50003, -1}, {60000, 107}});
}

void CodecTest::init()
{
    m_messages = std::make_unique<MessageRecorder>();
    m_log = std::make_unique<LogRecorder>();
}

void CodecTest::cleanup()
{
    const QStringList lines = m_log->lines();
    m_log.reset();
    QCOMPARE(lines, QStringList());
    QCOMPARE(m_messages->take(), QStringList());
    m_messages.reset();
}

void CodecTest::cleanupTestCase()
{
    dropProjects();
    m_folder.reset();
}

void CodecTest::encodeNumber_data()
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

void CodecTest::encodeNumber()
{
    QFETCH(int, type);
    QFETCH(QVariant, value);
    QByteArray bytes;
    m_tags->var2ByteArray(numbers + type, value, bytes);
    QTEST(hexOf(bytes), "hex");
    QTEST(hexOf(m_tags->varToByteArrayThreadSafe(numbers + type, value)), "hex");
}

void CodecTest::encodeText_data()
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

void CodecTest::encodeText()
{
    QFETCH(int, id);
    QFETCH(QVariant, value);
    QByteArray bytes("before");
    m_tags->var2ByteArray(id, value, bytes);
    QTEST(hexOf(bytes), "hex");
    QTEST(hexOf(m_tags->varToByteArrayThreadSafe(id, value)), "hex");
}

void CodecTest::encodeDiffers_data()
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

void CodecTest::encodeDiffers()
{
    QFETCH(int, id);
    QFETCH(QVariant, value);
    QByteArray bytes;
    m_tags->var2ByteArray(id, value, bytes);
    QTEST(hexOf(bytes), "plain");
    QTEST(hexOf(m_tags->varToByteArrayThreadSafe(id, value)), "threadSafe");
}

void CodecTest::encodeUnknownType_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("just above the types") << 112;
    QTest::newRow("negative") << 113;
    QTest::newRow("far above the types") << 114;
}

void CodecTest::encodeUnknownType()
{
    QFETCH(int, id);
    QByteArray bytes("before");
    m_tags->var2ByteArray(id, 5, bytes);
    QCOMPARE(hexOf(bytes), QString());
    // What the byte holds is left open.
    QCOMPARE(m_tags->varToByteArrayThreadSafe(id, 5).size(), 1);
}

void CodecTest::encodeClearsTheArrayFirst()
{
    QByteArray bytes("something long from before");
    m_tags->var2ByteArray(103, 1, bytes);
    QCOMPARE(hexOf(bytes), QStringLiteral("01 00"));
    m_tags->var2ByteArray(100, 1, bytes);
    QCOMPARE(hexOf(bytes), QStringLiteral("01"));
}

void CodecTest::encodeLeavesSharedArraysAlone()
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

void CodecTest::decodeNumber_data()
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

void CodecTest::decodeNumber()
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

void CodecTest::decodeNotANumber()
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

/// A null variant stands for no value.
void CodecTest::decodeShort_data()
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

void CodecTest::decodeShort()
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

void CodecTest::decodeText_data()
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

void CodecTest::decodeText()
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

void CodecTest::decodeUnknownType_data()
{
    encodeUnknownType_data();
}

void CodecTest::decodeUnknownType()
{
    QFETCH(int, id);
    QVariant plain(5);
    m_tags->byteArray2Var(id, QByteArray(8, '\x01'), plain);
    QVERIFY(!plain.isValid());
    QVERIFY(!m_tags->byteArrayToVarThreadSafe(id, QByteArray(8, '\x01')).isValid());
    QVERIFY(!m_tags->byteArrayToVarThreadSafe(id, QByteArray()).isValid());
}

void CodecTest::decodeReplacesTheVariant()
{
    QVariant value(QStringLiteral("before"));
    m_tags->byteArray2Var(103, fromHex(QStringLiteral("fe ff")), value);
    QCOMPARE(value, QVariant(-2));
    m_tags->byteArray2Var(204, QByteArray("AB"), value);
    QCOMPARE(value, QVariant(QByteArray("AB")));
}

void CodecTest::decodedTextOutlivesForeignMemory()
{
    char memory[] = "ABCDEF";
    const QVariant whole = m_tags->byteArrayToVarThreadSafe(206, QByteArray::fromRawData(memory, 6));
    const QVariant cut = m_tags->byteArrayToVarThreadSafe(204, QByteArray::fromRawData(memory, 6));
    std::memset(memory, 'x', 6);
    QCOMPARE(whole.toByteArray(), QByteArray("ABCDEF"));
    QCOMPARE(cut.toByteArray(), QByteArray("ABCD"));
}

void CodecTest::roundTrip_data()
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

void CodecTest::roundTrip()
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
void CodecTest::roundTripOfDoubles_data()
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

void CodecTest::roundTripOfDoubles()
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

void CodecTest::systemTags_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("hex");
    const QVariant two(-2);
    const QString image = QStringLiteral("fe ff ff ff");
    QTest::newRow("a number is INT(32)") << 20012 << two << image;
    QTest::newRow("a row at a system tag's id does not count") << 20011 << two << image;
    QTest::newRow("the time in seconds is INT(32)") << 20072 << two << image;
    QTest::newRow("an id without a tag is INT(32)") << 20094 << two << image;
    QTest::newRow("the first id") << 20000 << two << image;
    QTest::newRow("the last id") << 21000 << two << image;
    QTest::newRow("just above is a row of the table") << 21001 << two << QStringLiteral("fe ff");
    QTest::newRow("a text has one byte") << 20010 << QVariant(QByteArray("AB")) << QStringLiteral("41");
}

void CodecTest::systemTags()
{
    QFETCH(int, id);
    QFETCH(QVariant, value);
    QFETCH(QString, hex);
    QByteArray bytes;
    m_tags->var2ByteArray(id, value, bytes);
    QCOMPARE(hexOf(bytes), hex);
    QCOMPARE(hexOf(m_tags->varToByteArrayThreadSafe(id, value)), hex);
    const QVariant expected = id == 20010 ? QVariant(QByteArray("A")) : value;
    QVariant back;
    m_tags->byteArray2Var(id, bytes, back);
    QCOMPARE(back, expected);
    QCOMPARE(m_tags->byteArrayToVarThreadSafe(id, bytes), expected);
}

void CodecTest::recipeTags_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("hex");
    QTest::addColumn<QVariant>("back");
    QTest::newRow("connected to INT(16)") << 30001 << QVariant(-2) << QStringLiteral("fe ff") << QVariant(-2);
    QTest::newRow("connected to a text of four")
        << 30002 << QVariant(QByteArray("ABCDEF")) << QStringLiteral("41 42 43 44") << QVariant(QByteArray("ABCD"));
    QTest::newRow("connected to a system tag's text")
        << 30004 << QVariant(QByteArray("AB")) << QStringLiteral("41") << QVariant(QByteArray("A"));
    QTest::newRow("connected to another recipe tag")
        << 30005 << QVariant(-2) << QStringLiteral("fe ff") << QVariant(-2);
    QTest::newRow("connected to a recipe row tag")
        << 30006 << QVariant(258U) << QStringLiteral("02 01 00 00") << QVariant(258U);
    QTest::newRow("connected to DOUBLE") << 30009 << QVariant(1.0) << QStringLiteral("00 00 00 00 00 00 f0 3f")
                                         << QVariant(1.0);
    QTest::newRow("the last recipe id") << 50000 << QVariant(1) << QStringLiteral("01 00 00 00 00 00 00 00")
                                        << QVariant(Q_UINT64_C(1));
    QTest::newRow("a recipe row tag") << 50001 << QVariant(258U) << QStringLiteral("02 01 00 00") << QVariant(258U);
    QTest::newRow("a recipe row tag's text")
        << 50002 << QVariant(QByteArray("AB")) << QStringLiteral("41 42 00 00") << QVariant(QByteArray("AB\0\0", 4));
    QTest::newRow("the last recipe row id")
        << 60000 << QVariant(1.0F) << QStringLiteral("00 00 80 3f") << QVariant(1.0F);
    QTest::newRow("just below the recipe ids is a row of the table")
        << 29999 << QVariant(-2) << QStringLiteral("fe ff") << QVariant(-2);
    QTest::newRow("just above the recipe ids is a row of the table")
        << 60001 << QVariant(-2) << QStringLiteral("fe ff") << QVariant(-2);
}

void CodecTest::recipeTags()
{
    QFETCH(int, id);
    QFETCH(QVariant, value);
    QFETCH(QString, hex);
    QFETCH(QVariant, back);
    QByteArray bytes;
    m_tags->var2ByteArray(id, value, bytes);
    QCOMPARE(hexOf(bytes), hex);
    QCOMPARE(hexOf(m_tags->varToByteArrayThreadSafe(id, value)), hex);
    QVariant plain;
    m_tags->byteArray2Var(id, fromHex(hex), plain);
    QCOMPARE(plain, back);
    QCOMPARE(plain.userType(), back.userType());
    const QVariant safe = m_tags->byteArrayToVarThreadSafe(id, fromHex(hex));
    QCOMPARE(safe, back);
    QCOMPARE(safe.userType(), back.userType());
}

/// A tag that does not exist is a bit; a recipe tag that is connected to -1 is an INT(8), but has no bytes.
void CodecTest::recipeTagWithoutATag_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("plain");
    QTest::addColumn<QString>("threadSafe");
    QTest::addColumn<QVariant>("decoded");
    const QVariant raw(254);
    const QVariant sign(-2);
    QTest::newRow("connected to -1") << 30003 << QString() << QStringLiteral("fe") << sign;
    QTest::newRow("connected to a recipe tag that is connected to -1")
        << 30008 << QString() << QStringLiteral("fe") << sign;
    QTest::newRow("a recipe row tag connected to -1") << 50003 << QString() << QStringLiteral("fe") << sign;
    QTest::newRow("connected to a tag that does not exist")
        << 30007 << QStringLiteral("00") << QStringLiteral("00") << raw;
    QTest::newRow("not connected") << 40000 << QStringLiteral("00") << QStringLiteral("00") << raw;
    QTest::newRow("not connected, though a row bears its id")
        << 30000 << QStringLiteral("00") << QStringLiteral("00") << raw;
    QTest::newRow("a recipe row tag that is not connected")
        << 55555 << QStringLiteral("00") << QStringLiteral("00") << raw;
    QTest::newRow("no recipe tag and no row") << 9999 << QStringLiteral("00") << QStringLiteral("00") << raw;
    QTest::newRow("-1 is an id like others") << -1 << QStringLiteral("00") << QStringLiteral("00") << raw;
}

void CodecTest::recipeTagWithoutATag()
{
    QFETCH(int, id);
    QFETCH(QVariant, decoded);
    QByteArray bytes("before");
    m_tags->var2ByteArray(id, -2, bytes);
    QTEST(hexOf(bytes), "plain");
    QTEST(hexOf(m_tags->varToByteArrayThreadSafe(id, -2)), "threadSafe");
    QVariant plain;
    m_tags->byteArray2Var(id, QByteArray("\xfe"), plain);
    QCOMPARE(plain, decoded);
    QCOMPARE(plain.userType(), int(QMetaType::Int));
}

void CodecTest::recipeTagThatFollowsItsConnection()
{
    TagSystem *tags = TagSystem::instance(QString());
    m_log->take();
    tags->setRecipeTags({}, {{30001, 20011}});
    QCOMPARE(hexOf(tags->varToByteArrayThreadSafe(30001, 1)), QStringLiteral("01 00 00 00"));
    tags->setRecipeTags({}, {{30001, 20010}});
    QCOMPARE(hexOf(tags->varToByteArrayThreadSafe(30001, 1)), QStringLiteral("31"));
    tags->setRecipeTags({}, {});
    QCOMPARE(hexOf(tags->varToByteArrayThreadSafe(30001, 1)), QStringLiteral("01"));
    // Qt warns of statements without a database.
    m_log->take();
}

void CodecTest::typeAndScaleOfTheMoment()
{
    writeTags(key, {tag(500, 8, 2)});
    QCOMPARE(hexOf(m_tags->varToByteArrayThreadSafe(500, 7)), QStringLiteral("37 00"));
    executeOn(key, QStringLiteral("UPDATE custom_tag_table SET scale = 3 WHERE id = 500"));
    QCOMPARE(hexOf(m_tags->varToByteArrayThreadSafe(500, 7)), QStringLiteral("37 00 00"));
    executeOn(key, QStringLiteral("UPDATE custom_tag_table SET data_type = 5 WHERE id = 500"));
    QByteArray bytes;
    m_tags->var2ByteArray(500, 7, bytes);
    QCOMPARE(hexOf(bytes), QStringLiteral("07 00 00 00"));
    executeOn(key, QStringLiteral("DELETE FROM custom_tag_table WHERE id = 500"));
    m_tags->var2ByteArray(500, 7, bytes);
    QCOMPARE(hexOf(bytes), QStringLiteral("01"));
}

void CodecTest::asciiType_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("expected");
    QTest::newRow("a text") << 204 << true;
    QTest::newRow("a text without a length") << 200 << true;
    QTest::newRow("FLOAT") << 107 << false;
    QTest::newRow("DOUBLE") << 109 << false;
    QTest::newRow("Bit") << 100 << false;
    QTest::newRow("an unknown type") << 112 << false;
    QTest::newRow("a system tag's text") << 20010 << true;
    QTest::newRow("a system tag's number") << 20011 << false;
    QTest::newRow("the time in seconds") << 20072 << false;
    QTest::newRow("a recipe tag connected to a text") << 30002 << true;
    QTest::newRow("a recipe tag connected to a number") << 30001 << false;
    QTest::newRow("a recipe tag that is not connected") << 30003 << false;
    QTest::newRow("no such tag") << 9999 << false;
}

void CodecTest::asciiType()
{
    QFETCH(int, id);
    QTEST(m_tags->isAsciiType(id), "expected");
}

void CodecTest::withoutADatabase()
{
    TagSystem *tags = TagSystem::instance(QString());
    m_log->take();
    QByteArray bytes;
    tags->var2ByteArray(20011, 1, bytes);
    QCOMPARE(hexOf(bytes), QStringLiteral("01 00 00 00"));
    QCOMPARE(hexOf(tags->varToByteArrayThreadSafe(20010, QByteArray("AB"))), QStringLiteral("41"));
    QCOMPARE(tags->byteArrayToVarThreadSafe(20011, QByteArray("\xff\xff\xff\xff")), QVariant(-1));
    // A tag that nobody knows is a bit.
    tags->var2ByteArray(1, 3, bytes);
    QCOMPARE(hexOf(bytes), QStringLiteral("01"));
    QCOMPARE(tags->byteArrayToVarThreadSafe(1, QByteArray("\x02")), QVariant(true));
    // Qt warns of statements without a database.
    m_log->take();
}

QTEST_GUILESS_MAIN(CodecTest)

#include "tst_codec.moc"
