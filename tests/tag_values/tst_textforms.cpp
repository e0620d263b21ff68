// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/logrecorder.h"
#include "support/valuestest.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QtTest>

#include <climits>

namespace {

/// Rows have id 100 plus their type.
constexpr int first = 100;

} // namespace

/// Numbers as texts in base 8, 10 and 16 and back, and the shifted decimal point.
class TextFormsTest : public ValuesTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void minusOne_data();
    void minusOne();
    void print_data();
    void print();
    void printInAnotherBase_data();
    void printInAnotherBase();
    void printOtherTags_data();
    void printOtherTags();

    void read_data();
    void read();
    void readNoNumber_data();
    void readNoNumber();
    void readOtherTags_data();
    void readOtherTags();
    void readAnyLength_data();
    void readAnyLength();
    void roundTrip_data();
    void roundTrip();

    void shiftedPoint_data();
    void shiftedPoint();
};

void TextFormsTest::initTestCase()
{
    QList<TagRow> rows;
    for (int type = 0; type <= 12; ++type)
        rows.append(tag(first + type, type));
    const LogRecorder log;
    bindTo(rows);
    m_tags->setRecipeTags({{30001, QStringLiteral("R>1_1")}},
                          {{30001, 101}, {30002, 104}, {30003, -1}, {30004, 20010}});
    m_tags->setRecipeRowTags({{50001, QStringLiteral("R>1_1I1")}}, {{50001, 103}});
}

/// -1 shows width and sign of each type.
void TextFormsTest::minusOne_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("decimal");
    QTest::addColumn<QString>("hexadecimal");
    QTest::addColumn<QString>("octal");
    const QString unsigned32 = QStringLiteral("4294967295");
    const QString minus = QStringLiteral("-1");
    const QString hex32 = QStringLiteral("ffffffff");
    const QString octal32 = QStringLiteral("37777777777");
    const QString hex64 = QStringLiteral("ffffffffffffffff");
    const QString octal64 = QStringLiteral("1777777777777777777777");
    QTest::newRow("Bit") << 0 << unsigned32 << hex32 << octal32;
    QTest::newRow("INT(8)") << 1 << minus << QStringLiteral("ff") << QStringLiteral("377");
    QTest::newRow("UINT(8)") << 2 << QStringLiteral("255") << QStringLiteral("ff") << QStringLiteral("377");
    QTest::newRow("INT(16)") << 3 << minus << QStringLiteral("ffff") << QStringLiteral("177777");
    QTest::newRow("UINT(16)") << 4 << QStringLiteral("65535") << QStringLiteral("ffff") << QStringLiteral("177777");
    QTest::newRow("INT(32)") << 5 << minus << hex32 << octal32;
    QTest::newRow("UINT(32)") << 6 << unsigned32 << hex32 << octal32;
    QTest::newRow("FLOAT") << 7 << minus << hex32 << octal32;
    QTest::newRow("Ascii") << 8 << unsigned32 << hex32 << octal32;
    QTest::newRow("DOUBLE") << 9 << minus << hex32 << octal32;
    QTest::newRow("INT(64) has no sign") << 10 << QStringLiteral("18446744073709551615") << hex64 << octal64;
    QTest::newRow("UINT(64) has a sign") << 11 << minus << hex64 << octal64;
    QTest::newRow("an unknown even type") << 12 << unsigned32 << hex32 << octal32;
}

void TextFormsTest::minusOne()
{
    QFETCH(int, type);
    QTEST(m_tags->toBaseSystemStringFromLongLong(first + type, -1, 10), "decimal");
    QTEST(m_tags->toBaseSystemStringFromLongLong(first + type, -1, 16), "hexadecimal");
    QTEST(m_tags->toBaseSystemStringFromLongLong(first + type, -1, 8), "octal");
}

void TextFormsTest::print_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<qlonglong>("value");
    QTest::addColumn<int>("base");
    QTest::addColumn<QString>("text");
    const qlonglong wide = Q_INT64_C(0x123456789abcdef0);
    QTest::newRow("zero in base 10") << 5 << 0LL << 10 << QStringLiteral("0");
    QTest::newRow("zero in base 16") << 1 << 0LL << 16 << QStringLiteral("0");
    QTest::newRow("zero in base 8") << 11 << 0LL << 8 << QStringLiteral("0");
    QTest::newRow("Bit: 1") << 0 << 1LL << 10 << QStringLiteral("1");
    QTest::newRow("Bit: more than a bit is shown") << 0 << 6LL << 8 << QStringLiteral("6");
    QTest::newRow("INT(8): 255 in base 16") << 1 << 255LL << 16 << QStringLiteral("ff");
    QTest::newRow("INT(8): 255 in base 10 is -1") << 1 << 255LL << 10 << QStringLiteral("-1");
    QTest::newRow("INT(8): 128 in base 10 is the lowest") << 1 << 128LL << 10 << QStringLiteral("-128");
    QTest::newRow("INT(8): -128 in base 16") << 1 << -128LL << 16 << QStringLiteral("80");
    QTest::newRow("INT(8): the highest in base 8") << 1 << 127LL << 8 << QStringLiteral("177");
    QTest::newRow("INT(8): 256 has no low bits") << 1 << 256LL << 10 << QStringLiteral("0");
    QTest::newRow("INT(8): the low bits of a wide number") << 1 << wide << 10 << QStringLiteral("-16");
    QTest::newRow("UINT(8): 300 in base 10") << 2 << 300LL << 10 << QStringLiteral("44");
    QTest::newRow("UINT(8): the low bits of a wide number") << 2 << wide << 16 << QStringLiteral("f0");
    QTest::newRow("INT(16): 40000 in base 10") << 3 << 40000LL << 10 << QStringLiteral("-25536");
    QTest::newRow("INT(16): the low bits of a wide number") << 3 << wide << 16 << QStringLiteral("def0");
    QTest::newRow("INT(16): -2 in base 8") << 3 << -2LL << 8 << QStringLiteral("177776");
    QTest::newRow("UINT(16): 65537 in base 10") << 4 << 65537LL << 10 << QStringLiteral("1");
    QTest::newRow("UINT(16): -2 in base 10") << 4 << -2LL << 10 << QStringLiteral("65534");
    QTest::newRow("UINT(16): the low bits of a wide number") << 4 << wide << 8 << QStringLiteral("157360");
    QTest::newRow("INT(32): 2147483648 in base 10 is the lowest")
        << 5 << 2147483648LL << 10 << QStringLiteral("-2147483648");
    QTest::newRow("INT(32): the highest in base 10") << 5 << 2147483647LL << 10 << QStringLiteral("2147483647");
    QTest::newRow("INT(32): the low bits of a wide number") << 5 << wide << 16 << QStringLiteral("9abcdef0");
    QTest::newRow("UINT(32): the low bits of a wide number") << 6 << wide << 10 << QStringLiteral("2596069104");
    QTest::newRow("UINT(32): 4294967296 has no low bits") << 6 << 4294967296LL << 10 << QStringLiteral("0");
    QTest::newRow("FLOAT: an integer") << 7 << 12LL << 10 << QStringLiteral("12");
    QTest::newRow("FLOAT: the low bits of a wide number") << 7 << wide << 10 << QStringLiteral("-1698898192");
    QTest::newRow("Ascii: the low bits of a wide number") << 8 << wide << 10 << QStringLiteral("2596069104");
    QTest::newRow("DOUBLE: the low bits of a wide number") << 9 << wide << 16 << QStringLiteral("9abcdef0");
    QTest::newRow("DOUBLE: with a sign") << 9 << wide << 10 << QStringLiteral("-1698898192");
    QTest::newRow("INT(64): a wide number in base 16") << 10 << wide << 16 << QStringLiteral("123456789abcdef0");
    QTest::newRow("INT(64): the highest in base 10")
        << 10 << qlonglong(LLONG_MAX) << 10 << QStringLiteral("9223372036854775807");
    QTest::newRow("INT(64): the lowest in base 10 is half way")
        << 10 << qlonglong(LLONG_MIN) << 10 << QStringLiteral("9223372036854775808");
    QTest::newRow("INT(64): the lowest in base 8")
        << 10 << qlonglong(LLONG_MIN) << 8 << QStringLiteral("1000000000000000000000");
    QTest::newRow("UINT(64): the top bit in base 10 is a sign")
        << 11 << qlonglong(LLONG_MIN) << 10 << QStringLiteral("-9223372036854775808");
    QTest::newRow("UINT(64): the top bit in base 16")
        << 11 << qlonglong(LLONG_MIN) << 16 << QStringLiteral("8000000000000000");
    QTest::newRow("hexadecimal digits are lower case") << 4 << 0xabcdLL << 16 << QStringLiteral("abcd");
}

void TextFormsTest::print()
{
    QFETCH(int, type);
    QFETCH(qlonglong, value);
    QFETCH(int, base);
    QTEST(m_tags->toBaseSystemStringFromLongLong(first + type, value, base), "text");
}

void TextFormsTest::printInAnotherBase_data()
{
    QTest::addColumn<int>("base");
    for (int base : {2, 0, 1, 3, 7, 9, 11, 15, 17, 36, 37, -10, INT_MAX, INT_MIN})
        QTest::addRow("base %d", base) << base;
}

/// The text is not specified; it has no digits.
void TextFormsTest::printInAnotherBase()
{
    QFETCH(int, base);
    for (int type = 0; type <= 12; ++type) {
        const QString text = m_tags->toBaseSystemStringFromLongLong(first + type, 123, base);
        QVERIFY2(!text.contains(QRegularExpression(QStringLiteral("[0-9]"))), qPrintable(text));
    }
}

void TextFormsTest::printOtherTags_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("decimal");
    QTest::addColumn<QString>("hexadecimal");
    QTest::newRow("a system tag's number is INT(32)") << 20011 << QStringLiteral("-1") << QStringLiteral("ffffffff");
    QTest::newRow("a system tag's text") << 20010 << QStringLiteral("4294967295") << QStringLiteral("ffffffff");
    QTest::newRow("a recipe tag connected to INT(8)") << 30001 << QStringLiteral("-1") << QStringLiteral("ff");
    QTest::newRow("a recipe tag connected to UINT(16)") << 30002 << QStringLiteral("65535") << QStringLiteral("ffff");
    QTest::newRow("a recipe tag connected to -1 is INT(8)") << 30003 << QStringLiteral("-1") << QStringLiteral("ff");
    QTest::newRow("a recipe tag connected to a text")
        << 30004 << QStringLiteral("4294967295") << QStringLiteral("ffffffff");
    QTest::newRow("a recipe row tag") << 50001 << QStringLiteral("-1") << QStringLiteral("ffff");
    QTest::newRow("no such row: a bit") << 9999 << QStringLiteral("4294967295") << QStringLiteral("ffffffff");
}

void TextFormsTest::printOtherTags()
{
    QFETCH(int, id);
    QTEST(m_tags->toBaseSystemStringFromLongLong(id, -1, 10), "decimal");
    QTEST(m_tags->toBaseSystemStringFromLongLong(id, -1, 16), "hexadecimal");
}

void TextFormsTest::read_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("base");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<qlonglong>("value");

    QTest::newRow("INT(8): the highest") << 1 << QStringLiteral("127") << 10 << true << 127LL;
    QTest::newRow("INT(8): above") << 1 << QStringLiteral("128") << 10 << false << 0LL;
    QTest::newRow("INT(8): the lowest") << 1 << QStringLiteral("-128") << 10 << true << -128LL;
    QTest::newRow("INT(8): below") << 1 << QStringLiteral("-129") << 10 << false << 0LL;
    QTest::newRow("INT(8): zero") << 1 << QStringLiteral("0") << 10 << true << 0LL;
    QTest::newRow("INT(8): leading zeros") << 1 << QStringLiteral("0005") << 10 << true << 5LL;
    QTest::newRow("INT(8): a plus sign") << 1 << QStringLiteral("+5") << 10 << true << 5LL;
    QTest::newRow("INT(8): more than 32 bits is above, not cut off")
        << 1 << QStringLiteral("4294967297") << 10 << false << 0LL;
    QTest::newRow("INT(8): less than 32 bits is below, not cut off")
        << 1 << QStringLiteral("-4294967297") << 10 << false << 0LL;
    QTest::newRow("INT(8): ff in base 16") << 1 << QStringLiteral("ff") << 16 << true << -1LL;
    QTest::newRow("INT(8): FF in base 16") << 1 << QStringLiteral("FF") << 16 << true << -1LL;
    QTest::newRow("INT(8): 80 in base 16") << 1 << QStringLiteral("80") << 16 << true << -128LL;
    QTest::newRow("INT(8): 7f in base 16") << 1 << QStringLiteral("7f") << 16 << true << 127LL;
    QTest::newRow("INT(8): 100 in base 16") << 1 << QStringLiteral("100") << 16 << false << 0LL;
    QTest::newRow("INT(8): -1 in base 16") << 1 << QStringLiteral("-1") << 16 << false << 0LL;
    QTest::newRow("INT(8): more than 32 bits in base 16") << 1 << QStringLiteral("100000001") << 16 << false << 0LL;
    QTest::newRow("INT(8): 377 in base 8") << 1 << QStringLiteral("377") << 8 << true << -1LL;
    QTest::newRow("INT(8): 400 in base 8") << 1 << QStringLiteral("400") << 8 << false << 0LL;
    QTest::newRow("INT(8): eight bits in base 2") << 1 << QStringLiteral("10000000") << 2 << true << -128LL;
    QTest::newRow("INT(8): nine bits in base 2") << 1 << QStringLiteral("100000000") << 2 << false << 0LL;

    QTest::newRow("UINT(8): the highest") << 2 << QStringLiteral("255") << 10 << true << 255LL;
    QTest::newRow("UINT(8): above") << 2 << QStringLiteral("256") << 10 << false << 0LL;
    QTest::newRow("UINT(8): negative") << 2 << QStringLiteral("-1") << 10 << false << 0LL;
    QTest::newRow("UINT(8): ff in base 16") << 2 << QStringLiteral("ff") << 16 << true << 255LL;
    QTest::newRow("UINT(8): 100 in base 16") << 2 << QStringLiteral("100") << 16 << false << 0LL;
    QTest::newRow("UINT(8): -1 in base 16") << 2 << QStringLiteral("-1") << 16 << false << 0LL;
    QTest::newRow("UINT(8): 377 in base 8") << 2 << QStringLiteral("377") << 8 << true << 255LL;

    QTest::newRow("INT(16): the highest") << 3 << QStringLiteral("32767") << 10 << true << 32767LL;
    QTest::newRow("INT(16): above") << 3 << QStringLiteral("32768") << 10 << false << 0LL;
    QTest::newRow("INT(16): the lowest") << 3 << QStringLiteral("-32768") << 10 << true << -32768LL;
    QTest::newRow("INT(16): below") << 3 << QStringLiteral("-32769") << 10 << false << 0LL;
    QTest::newRow("INT(16): ffff in base 16") << 3 << QStringLiteral("ffff") << 16 << true << -1LL;
    QTest::newRow("INT(16): 8000 in base 16") << 3 << QStringLiteral("8000") << 16 << true << -32768LL;
    QTest::newRow("INT(16): ff in base 16") << 3 << QStringLiteral("ff") << 16 << true << 255LL;
    QTest::newRow("INT(16): 10000 in base 16") << 3 << QStringLiteral("10000") << 16 << false << 0LL;
    QTest::newRow("INT(16): 177777 in base 8") << 3 << QStringLiteral("177777") << 8 << true << -1LL;
    QTest::newRow("INT(16): -8000 in base 16") << 3 << QStringLiteral("-8000") << 16 << false << 0LL;

    QTest::newRow("UINT(16): the highest") << 4 << QStringLiteral("65535") << 10 << true << 65535LL;
    QTest::newRow("UINT(16): above") << 4 << QStringLiteral("65536") << 10 << false << 0LL;
    QTest::newRow("UINT(16): negative") << 4 << QStringLiteral("-1") << 10 << false << 0LL;
    QTest::newRow("UINT(16): ffff in base 16") << 4 << QStringLiteral("ffff") << 16 << true << 65535LL;
    QTest::newRow("UINT(16): 10000 in base 16") << 4 << QStringLiteral("10000") << 16 << false << 0LL;

    QTest::newRow("INT(32): the highest") << 5 << QStringLiteral("2147483647") << 10 << true << 2147483647LL;
    QTest::newRow("INT(32): above") << 5 << QStringLiteral("2147483648") << 10 << false << 0LL;
    QTest::newRow("INT(32): the lowest") << 5 << QStringLiteral("-2147483648") << 10 << true << -2147483648LL;
    QTest::newRow("INT(32): below") << 5 << QStringLiteral("-2147483649") << 10 << false << 0LL;
    QTest::newRow("INT(32): 80000000 in base 16") << 5 << QStringLiteral("80000000") << 16 << true << -2147483648LL;
    QTest::newRow("INT(32): ffffffff in base 16") << 5 << QStringLiteral("ffffffff") << 16 << true << -1LL;
    QTest::newRow("INT(32): 7fffffff in base 16") << 5 << QStringLiteral("7fffffff") << 16 << true << 2147483647LL;
    QTest::newRow("INT(32): 100000000 in base 16") << 5 << QStringLiteral("100000000") << 16 << false << 0LL;
    QTest::newRow("INT(32): -1 in base 16") << 5 << QStringLiteral("-1") << 16 << false << 0LL;
    QTest::newRow("INT(32): 37777777777 in base 8") << 5 << QStringLiteral("37777777777") << 8 << true << -1LL;

    QTest::newRow("UINT(32): the highest") << 6 << QStringLiteral("4294967295") << 10 << true << 4294967295LL;
    QTest::newRow("UINT(32): above") << 6 << QStringLiteral("4294967296") << 10 << false << 0LL;
    QTest::newRow("UINT(32): negative") << 6 << QStringLiteral("-1") << 10 << false << 0LL;
    QTest::newRow("UINT(32): ffffffff in base 16") << 6 << QStringLiteral("ffffffff") << 16 << true << 4294967295LL;
    QTest::newRow("UINT(32): 100000000 in base 16") << 6 << QStringLiteral("100000000") << 16 << false << 0LL;

    QTest::newRow("Bit: any number fits") << 0 << QStringLiteral("7") << 10 << true << 7LL;
    QTest::newRow("Bit: negative") << 0 << QStringLiteral("-1") << 10 << false << 0LL;
    QTest::newRow("Bit: 10 in base 16 is read in base 10") << 0 << QStringLiteral("10") << 16 << true << 10LL;
    QTest::newRow("FLOAT: negative") << 7 << QStringLiteral("-5") << 10 << true << -5LL;
    QTest::newRow("FLOAT: 10 in base 16 is read in base 10") << 7 << QStringLiteral("10") << 16 << true << 10LL;
    QTest::newRow("FLOAT: ff in base 16 is none in base 10") << 7 << QStringLiteral("ff") << 16 << false << 0LL;
    QTest::newRow("Ascii: negative") << 8 << QStringLiteral("-5") << 10 << false << 0LL;
    QTest::newRow("Ascii: 17 in base 8 is read in base 10") << 8 << QStringLiteral("17") << 8 << true << 17LL;
    QTest::newRow("DOUBLE: negative") << 9 << QStringLiteral("-5") << 10 << true << -5LL;
    QTest::newRow("DOUBLE: 10 in base 16 is read in base 10") << 9 << QStringLiteral("10") << 16 << true << 10LL;
    QTest::newRow("INT(64): 10 in base 16 is read in base 10") << 10 << QStringLiteral("10") << 16 << true << 10LL;
    QTest::newRow("INT(64): ff in base 16 is none in base 10") << 10 << QStringLiteral("ff") << 16 << false << 0LL;
    QTest::newRow("INT(64): a prefix in base 16 is none in base 10")
        << 10 << QStringLiteral("0x10") << 16 << false << 0LL;
    QTest::newRow("INT(64): negative") << 10 << QStringLiteral("-1") << 10 << false << 0LL;
    QTest::newRow("INT(64): the highest")
        << 10 << QStringLiteral("9223372036854775807") << 10 << true << qlonglong(LLONG_MAX);
    QTest::newRow("UINT(64): negative") << 11 << QStringLiteral("-1") << 10 << true << -1LL;
    QTest::newRow("UINT(64): the lowest signed number")
        << 11 << QStringLiteral("-9223372036854775808") << 10 << true << qlonglong(LLONG_MIN);
    QTest::newRow("UINT(64): -10 in base 8 is read in base 10") << 11 << QStringLiteral("-10") << 8 << true << -10LL;
    QTest::newRow("an unknown type: in base 10") << 12 << QStringLiteral("10") << 16 << true << 10LL;
    QTest::newRow("an unknown even type: negative") << 12 << QStringLiteral("-1") << 10 << false << 0LL;
}

void TextFormsTest::read()
{
    QFETCH(int, type);
    QFETCH(QString, text);
    QFETCH(int, base);
    for (const bool before : {false, true}) {
        bool ok = before;
        bool formatError = true;
        QTEST(m_tags->toLongLongByBaseSystemString(first + type, text, ok, base, formatError), "value");
        QTEST(ok, "ok");
        QCOMPARE(formatError, false);
    }
}

void TextFormsTest::readNoNumber_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("base");
    QTest::newRow("letters in base 10") << QStringLiteral("xyz") << 10;
    QTest::newRow("letters in base 16") << QStringLiteral("xyz") << 16;
    QTest::newRow("empty") << QString() << 10;
    QTest::newRow("a blank") << QStringLiteral(" ") << 10;
    QTest::newRow("a minus sign") << QStringLiteral("-") << 10;
    QTest::newRow("two minus signs") << QStringLiteral("--1") << 10;
    QTest::newRow("hexadecimal digits in base 10") << QStringLiteral("ff") << 10;
    QTest::newRow("a point") << QStringLiteral("1.5") << 10;
    QTest::newRow("an exponent") << QStringLiteral("1e3") << 10;
    QTest::newRow("an 8 in base 8") << QStringLiteral("18") << 8;
    QTest::newRow("a 2 in base 2") << QStringLiteral("102") << 2;
    QTest::newRow("something behind the digits") << QStringLiteral("12 V") << 10;
    QTest::newRow("a zero character behind the digits") << QString(QStringLiteral("12") + QChar(0)) << 10;
    QTest::newRow("one more than 64 bits hold") << QStringLiteral("9223372036854775808") << 10;
    QTest::newRow("64 bits in base 16") << QStringLiteral("ffffffffffffffff") << 16;
    QTest::newRow("a letter that is no digit") << QStringLiteral("\u00e4") << 10;
}

void TextFormsTest::readNoNumber()
{
    QFETCH(QString, text);
    QFETCH(int, base);
    for (int type = 0; type <= 12; ++type) {
        for (const bool before : {false, true}) {
            bool ok = before;
            bool formatError = false;
            QCOMPARE(m_tags->toLongLongByBaseSystemString(first + type, text, ok, base, formatError), 0LL);
            QCOMPARE(formatError, true);
            QCOMPARE(ok, before);
        }
    }
}

void TextFormsTest::readOtherTags_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<qlonglong>("value");
    QTest::newRow("a system tag's number") << 20011 << QStringLiteral("ffffffff") << true << -1LL;
    QTest::newRow("a system tag's number: too long") << 20011 << QStringLiteral("100000000") << false << 0LL;
    QTest::newRow("a system tag's text is read in base 10") << 20010 << QStringLiteral("10") << true << 10LL;
    QTest::newRow("a recipe tag connected to INT(8)") << 30001 << QStringLiteral("ff") << true << -1LL;
    QTest::newRow("a recipe tag connected to UINT(16)") << 30002 << QStringLiteral("ffff") << true << 65535LL;
    QTest::newRow("a recipe tag connected to -1") << 30003 << QStringLiteral("ff") << true << -1LL;
    QTest::newRow("a recipe row tag") << 50001 << QStringLiteral("8000") << true << -32768LL;
    QTest::newRow("no such row: a bit") << 9999 << QStringLiteral("10") << true << 10LL;
    QTest::newRow("no such row: letters") << 9999 << QStringLiteral("ff") << false << 0LL;
}

void TextFormsTest::readOtherTags()
{
    QFETCH(int, id);
    QFETCH(QString, text);
    bool ok = false;
    bool formatError = true;
    QTEST(m_tags->toLongLongByBaseSystemString(id, text, ok, 16, formatError), "value");
    QTEST(ok, "ok");
    QCOMPARE(formatError, false);
}

void TextFormsTest::readAnyLength_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("base");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<qlonglong>("value");
    const QString zeros(100, QLatin1Char('0'));
    QTest::newRow("INT(8): a hundred zeros before the digits in base 2")
        << 1 << QString(zeros + QStringLiteral("101")) << 2 << true << 5LL;
    QTest::newRow("UINT(32): a hundred zeros before the digits")
        << 6 << QString(zeros + QStringLiteral("7")) << 10 << true << 7LL;
    QTest::newRow("INT(64): a hundred zeros before the digits")
        << 10 << QString(zeros + QStringLiteral("7")) << 10 << true << 7LL;
    QTest::newRow("INT(32): sixty bits in base 2 are too many")
        << 5 << QString(60, QLatin1Char('1')) << 2 << false << 0LL;
    QTest::newRow("UINT(64): sixty bits in base 2 are too many in base 10")
        << 11 << QString(60, QLatin1Char('1')) << 2 << false << 0LL;
    QTest::newRow("UINT(8): a hundred thousand zeros") << 2 << QString(100000, QLatin1Char('0')) << 16 << true << 0LL;
}

void TextFormsTest::readAnyLength()
{
    read();
}

void TextFormsTest::roundTrip_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<qlonglong>("value");
    const QList<QPair<int, qlonglong>> cases{{1, -128},          {1, -1},      {1, 127},   {2, 0},
                                             {2, 255},           {3, -32768},  {3, 32767}, {4, 65535},
                                             {5, -2147483648LL}, {5, INT_MAX}, {6, 0},     {6, 4294967295LL}};
    for (const auto &one : cases)
        QTest::addRow("%lld of type %d", one.second, one.first) << one.first << one.second;
}

void TextFormsTest::roundTrip()
{
    QFETCH(int, type);
    QFETCH(qlonglong, value);
    for (const int base : {8, 10, 16}) {
        bool ok = false;
        bool formatError = true;
        const QString text = m_tags->toBaseSystemStringFromLongLong(first + type, value, base);
        QCOMPARE(m_tags->toLongLongByBaseSystemString(first + type, text, ok, base, formatError), value);
        QVERIFY(ok);
        QVERIFY(!formatError);
    }
}

void TextFormsTest::shiftedPoint_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("totalDigits");
    QTest::addColumn<int>("decimalDigits");
    QTest::addColumn<QString>("padded");
    QTest::addColumn<QString>("unpadded");

    QTest::newRow("fewer digits than the field")
        << QVariant(1234) << 6 << 2 << QStringLiteral("0012.34") << QStringLiteral("12.34");
    QTest::newRow("more digits than the field: the first is lost")
        << QVariant(1234) << 3 << 1 << QStringLiteral("23.4") << QStringLiteral("23.4");
    QTest::newRow("as many digits as the field")
        << QVariant(1234) << 4 << 1 << QStringLiteral("123.4") << QStringLiteral("123.4");
    QTest::newRow("a value below one keeps a zero")
        << QVariant(5) << 4 << 2 << QStringLiteral("00.05") << QStringLiteral("0.05");
    QTest::newRow("as many digits as decimals")
        << QVariant(12) << 4 << 2 << QStringLiteral("00.12") << QStringLiteral("0.12");
    QTest::newRow("one digit more than decimals")
        << QVariant(123) << 4 << 2 << QStringLiteral("01.23") << QStringLiteral("1.23");
    QTest::newRow("the field has no digit before the point")
        << QVariant(5) << 2 << 2 << QStringLiteral("05") << QStringLiteral("05");
    QTest::newRow("more decimals than the field")
        << QVariant(5) << 2 << 3 << QStringLiteral("05") << QStringLiteral("05");
    QTest::newRow("more decimals than a full field")
        << QVariant(12) << 2 << 5 << QStringLiteral("12") << QStringLiteral("12");
    QTest::newRow("zero") << QVariant(0) << 4 << 2 << QStringLiteral("00.00") << QStringLiteral("0.00");
    QTest::newRow("no decimals") << QVariant(7) << 3 << 0 << QStringLiteral("007") << QStringLiteral("7");
    QTest::newRow("no decimals, a field of one") << QVariant(7) << 1 << 0 << QStringLiteral("7") << QStringLiteral("7");
    QTest::newRow("negative decimals count as none")
        << QVariant(7) << 3 << -1 << QStringLiteral("007") << QStringLiteral("7");
    QTest::newRow("cut to as many digits as decimals: no point")
        << QVariant(1234) << 2 << 2 << QStringLiteral("34") << QStringLiteral("34");
    QTest::newRow("a field without digits") << QVariant(1234) << 0 << 0 << QString() << QString();

    QTest::newRow("the digits of -12.5 get their point by position")
        << QVariant(-12.5) << 5 << 1 << QStringLiteral("-0012.5") << QStringLiteral("-12.5");
    QTest::newRow("the value's own point does not count")
        << QVariant(12.5) << 5 << 2 << QStringLiteral("001.25") << QStringLiteral("1.25");
    QTest::newRow("the value's own point goes without decimals")
        << QVariant(12.5) << 5 << 0 << QStringLiteral("00125") << QStringLiteral("125");
    QTest::newRow("negative, below one") << QVariant(-5) << 4 << 2 << QStringLiteral("-00.05")
                                         << QStringLiteral("-0.05");
    QTest::newRow("negative, cut: the sign stays")
        << QVariant(-1234) << 3 << 1 << QStringLiteral("-23.4") << QStringLiteral("-23.4");
    QTest::newRow("negative, a field without a point")
        << QVariant(-5) << 2 << 2 << QStringLiteral("-05") << QStringLiteral("-05");
    QTest::newRow("a text with a sign in its middle")
        << QVariant(QStringLiteral("1-2-3")) << 3 << 1 << QStringLiteral("-12.3") << QStringLiteral("-12.3");
    QTest::newRow("a text with several points")
        << QVariant(QStringLiteral("1.2.3")) << 4 << 1 << QStringLiteral("012.3") << QStringLiteral("12.3");
    QTest::newRow("a text of letters") << QVariant(QStringLiteral("abc")) << 5 << 2 << QStringLiteral("00a.bc")
                                       << QStringLiteral("a.bc");
    QTest::newRow("an empty text") << QVariant(QString()) << 3 << 1 << QStringLiteral("00.0") << QStringLiteral("0.0");
    QTest::newRow("an empty text without decimals")
        << QVariant(QString()) << 2 << 0 << QStringLiteral("00") << QStringLiteral("0");
    QTest::newRow("a null variant") << QVariant() << 3 << 1 << QStringLiteral("00.0") << QStringLiteral("0.0");
    QTest::newRow("a sign alone") << QVariant(QStringLiteral("-")) << 3 << 1 << QStringLiteral("-00.0")
                                  << QStringLiteral("-0.0");
    QTest::newRow("an exponent is not known")
        << QVariant(QStringLiteral("1e-7")) << 5 << 1 << QStringLiteral("-001e.7") << QStringLiteral("-1e.7");
    QTest::newRow("a plus sign is a character like others")
        << QVariant(QStringLiteral("+12")) << 4 << 1 << QStringLiteral("0+1.2") << QStringLiteral("+1.2");
    QTest::newRow("the highest number") << QVariant(Q_UINT64_C(18446744073709551615)) << 21 << 10
                                        << QStringLiteral("01844674407.3709551615")
                                        << QStringLiteral("1844674407.3709551615");
}

void TextFormsTest::shiftedPoint()
{
    QFETCH(QVariant, value);
    QFETCH(int, totalDigits);
    QFETCH(int, decimalDigits);
    QTEST(m_tags->getValueTextWithShiftDecimalPoint(value, totalDigits, decimalDigits, true), "padded");
    QTEST(m_tags->getValueTextWithShiftDecimalPoint(value, totalDigits, decimalDigits, false), "unpadded");
}

QTEST_GUILESS_MAIN(TextFormsTest)

#include "tst_textforms.moc"
