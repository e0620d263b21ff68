// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/codectest.h"
#include "support/projectfixtures.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QtTest>

/// Tests whose type and length count: for system tags, recipe tags, and rows that change.
class CodecKindsTest : public CodecTest
{
    Q_OBJECT

private Q_SLOTS:
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
};

void CodecKindsTest::systemTags_data()
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

void CodecKindsTest::systemTags()
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

void CodecKindsTest::recipeTags_data()
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

void CodecKindsTest::recipeTags()
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
void CodecKindsTest::recipeTagWithoutATag_data()
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

void CodecKindsTest::recipeTagWithoutATag()
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

void CodecKindsTest::recipeTagThatFollowsItsConnection()
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

void CodecKindsTest::typeAndScaleOfTheMoment()
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

void CodecKindsTest::asciiType_data()
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

void CodecKindsTest::asciiType()
{
    QFETCH(int, id);
    QTEST(m_tags->isAsciiType(id), "expected");
}

void CodecKindsTest::withoutADatabase()
{
    TagSystem *tags = TagSystem::instance(QString());
    m_log->take();
    QByteArray bytes;
    tags->var2ByteArray(20011, 1, bytes);
    QCOMPARE(hexOf(bytes), QStringLiteral("01 00 00 00"));
    QCOMPARE(hexOf(tags->varToByteArrayThreadSafe(20010, QByteArray("AB"))), QStringLiteral("41"));
    QCOMPARE(tags->byteArrayToVarThreadSafe(20011, QByteArray("\xff\xff\xff\xff")), QVariant(-1));
    // An unknown tag is a bit.
    tags->var2ByteArray(1, 3, bytes);
    QCOMPARE(hexOf(bytes), QStringLiteral("01"));
    QCOMPARE(tags->byteArrayToVarThreadSafe(1, QByteArray("\x02")), QVariant(true));
    // Qt warns of statements without a database.
    m_log->take();
}

QTEST_GUILESS_MAIN(CodecKindsTest)

#include "tst_codec_kinds.moc"
