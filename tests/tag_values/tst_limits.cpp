// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/logrecorder.h"
#include "support/valuestest.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QTranslator>
#include <QtTest>

#include <cfloat>
#include <climits>

namespace {

/// Rows have id 100 plus their type.
constexpr int first = 100;

/// Puts the text and its context in angle brackets.
class BracketTranslator : public QTranslator
{
public:
    using QTranslator::QTranslator;
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        return QStringLiteral("<%1/%2>").arg(QLatin1String(context), QLatin1String(text));
    }
};

} // namespace

/// Tests the lists of types and access modes, and the values of each type.
class LimitsTest : public ValuesTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void dataTypes();
    void dataTypeText_data();
    void dataTypeText();
    void accessModes();
    void listsFollowTheLanguage();

    void limits_data();
    void limits();
    void limitsThatStayAsTheyAre_data();
    void limitsThatStayAsTheyAre();

    void range_data();
    void range();
    void rangeOfRecipeTags_data();
    void rangeOfRecipeTags();
    void rangeFollowsTheType();
};

void LimitsTest::initTestCase()
{
    QList<TagRow> rows;
    for (int type = 0; type <= 12; ++type)
        rows.append(tag(first + type, type));
    rows.append(tag(113, -1));
    rows.append(tag(20011, 1));
    rows.append(tag(21001, 1));
    rows.append(tag(29999, 1));
    rows.append(tag(30000, 1));
    rows.append(tag(60001, 1));
    const LogRecorder log;
    bindTo(rows);
    m_tags->setRecipeTags({{30001, QStringLiteral("R>1_1")}}, {{30001, 103},
                                                               {30002, 106},
                                                               {30003, -1},
                                                               {30004, 20011},
                                                               {30005, 30001},
                                                               {30006, 30003},
                                                               {30007, 9999},
                                                               {50000, 107}});
    m_tags->setRecipeRowTags({{50001, QStringLiteral("R>1_1I1")}}, {{50001, 102}, {50002, -1}, {60000, 111}});
}

void LimitsTest::dataTypes()
{
    const QStringList expected{QStringLiteral("Bit"),      QStringLiteral("INT(8)"),   QStringLiteral("UINT(8)"),
                               QStringLiteral("INT(16)"),  QStringLiteral("UINT(16)"), QStringLiteral("INT(32)"),
                               QStringLiteral("UINT(32)"), QStringLiteral("FLOAT"),    QStringLiteral("Ascii"),
                               QStringLiteral("DOUBLE"),   QStringLiteral("INT(64"),   QStringLiteral("UINT(64)")};
    QCOMPARE(m_tags->dataTypeList(), expected);
}

void LimitsTest::dataTypeText_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("text");
    QTest::newRow("0") << 0 << QStringLiteral("Bit");
    QTest::newRow("1") << 1 << QStringLiteral("INT(8)");
    QTest::newRow("2") << 2 << QStringLiteral("UINT(8)");
    QTest::newRow("3") << 3 << QStringLiteral("INT(16)");
    QTest::newRow("4") << 4 << QStringLiteral("UINT(16)");
    QTest::newRow("5") << 5 << QStringLiteral("INT(32)");
    QTest::newRow("6") << 6 << QStringLiteral("UINT(32)");
    QTest::newRow("7") << 7 << QStringLiteral("FLOAT");
    QTest::newRow("8") << 8 << QStringLiteral("Ascii");
    QTest::newRow("9") << 9 << QStringLiteral("DOUBLE");
    QTest::newRow("10 has no closing bracket") << 10 << QStringLiteral("INT(64");
    QTest::newRow("11") << 11 << QStringLiteral("UINT(64)");
    QTest::newRow("12 is none") << 12 << QString();
    QTest::newRow("-1 is none") << -1 << QString();
    QTest::newRow("the highest number is none") << INT_MAX << QString();
    QTest::newRow("the lowest number is none") << INT_MIN << QString();
}

void LimitsTest::dataTypeText()
{
    QFETCH(int, type);
    QTEST(m_tags->datatypeString(type), "text");
}

void LimitsTest::accessModes()
{
    const QStringList expected{QStringLiteral("Write Only"), QStringLiteral("Read/Write")};
    QCOMPARE(m_tags->accessModeList(), expected);
}

void LimitsTest::listsFollowTheLanguage()
{
    BracketTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const QStringList types = m_tags->dataTypeList();
    const QStringList modes = m_tags->accessModeList();
    const QString text = m_tags->datatypeString(10);
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(types.size(), 12);
    QCOMPARE(types.first(), QStringLiteral("<TagSystem/Bit>"));
    QCOMPARE(types.last(), QStringLiteral("<TagSystem/UINT(64)>"));
    QCOMPARE(text, QStringLiteral("<TagSystem/INT(64>"));
    const QStringList expected{QStringLiteral("<TagSystem/Write Only>"), QStringLiteral("<TagSystem/Read/Write>")};
    QCOMPARE(modes, expected);
    QCOMPARE(m_tags->datatypeString(10), QStringLiteral("INT(64"));
}

void LimitsTest::limits_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QVariant>("highest");
    QTest::addColumn<QVariant>("lowest");
    const QVariant highestInt(2147483647);
    const QVariant lowestInt(INT_MIN);
    QTest::newRow("Bit") << 100 << QVariant(1) << QVariant(0);
    QTest::newRow("INT(8)") << 101 << QVariant(127) << QVariant(-128);
    QTest::newRow("UINT(8)") << 102 << QVariant(255) << QVariant(0);
    QTest::newRow("INT(16)") << 103 << QVariant(32767) << QVariant(-32768);
    QTest::newRow("UINT(16)") << 104 << QVariant(65535) << QVariant(0);
    QTest::newRow("INT(32)") << 105 << highestInt << lowestInt;
    QTest::newRow("UINT(32): of two types") << 106 << QVariant(4294967295U) << QVariant(0);
    QTest::newRow("FLOAT: a tenth of what it holds") << 107 << QVariant(3.4e+37F) << QVariant(-3.4e+37F);
    QTest::newRow("Ascii") << 108 << highestInt << lowestInt;
    QTest::newRow("DOUBLE") << 109 << QVariant(1.7976931348623157e308) << QVariant(-1.7976931348623157e308);
    QTest::newRow("INT(64)") << 110 << QVariant(Q_INT64_C(9223372036854775807)) << QVariant(LLONG_MIN);
    QTest::newRow("UINT(64): of two types") << 111 << QVariant(Q_UINT64_C(18446744073709551615)) << QVariant(0);
    QTest::newRow("an unknown type") << 112 << highestInt << lowestInt;
    QTest::newRow("a negative type") << 113 << highestInt << lowestInt;
    QTest::newRow("no such row: a bit") << 9999 << QVariant(1) << QVariant(0);
    QTest::newRow("below -1 is a row that does not exist") << -2 << QVariant(1) << QVariant(0);

    QTest::newRow("a system tag's number") << 20012 << highestInt << lowestInt;
    QTest::newRow("a system tag's text") << 20010 << highestInt << lowestInt;
    QTest::newRow("a system tag whose id a row bears") << 20011 << highestInt << lowestInt;
    QTest::newRow("just above the system tags") << 21001 << QVariant(127) << QVariant(-128);

    QTest::newRow("a recipe tag connected to INT(16)") << 30001 << QVariant(32767) << QVariant(-32768);
    QTest::newRow("a recipe tag connected to UINT(32)") << 30002 << QVariant(4294967295U) << QVariant(0);
    QTest::newRow("a recipe tag connected to a system tag") << 30004 << highestInt << lowestInt;
    QTest::newRow("a recipe tag connected to another") << 30005 << QVariant(32767) << QVariant(-32768);
    QTest::newRow("a recipe tag connected to no row: a bit") << 30007 << QVariant(1) << QVariant(0);
    QTest::newRow("a recipe tag that is not connected: a bit") << 40000 << QVariant(1) << QVariant(0);
    QTest::newRow("the first recipe id, which a row bears") << 30000 << QVariant(1) << QVariant(0);
    QTest::newRow("the last recipe id") << 50000 << QVariant(3.4e+37F) << QVariant(-3.4e+37F);
    QTest::newRow("a recipe row tag") << 50001 << QVariant(255) << QVariant(0);
    QTest::newRow("the last recipe row id") << 60000 << QVariant(Q_UINT64_C(18446744073709551615)) << QVariant(0);
    QTest::newRow("just below the recipe tags") << 29999 << QVariant(127) << QVariant(-128);
    QTest::newRow("just above the recipe tags") << 60001 << QVariant(127) << QVariant(-128);
}

void LimitsTest::limits()
{
    QFETCH(int, id);
    QFETCH(QVariant, highest);
    QFETCH(QVariant, lowest);
    QVariant max(QStringLiteral("before"));
    QVariant min(QStringLiteral("before"));
    m_tags->getMaxMinValue(id, max, min);
    QCOMPARE(max.userType(), highest.userType());
    QCOMPARE(min.userType(), lowest.userType());
    // Comparison of variants is fuzzy for numbers with a point.
    QVERIFY(max.toDouble() == highest.toDouble());
    QVERIFY(min.toDouble() == lowest.toDouble());
    QCOMPARE(max, highest);
    QCOMPARE(min, lowest);
}

void LimitsTest::limitsThatStayAsTheyAre_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("no tag") << -1;
    QTest::newRow("a recipe tag connected to -1") << 30003;
    QTest::newRow("a recipe tag connected to one that is connected to -1") << 30006;
    QTest::newRow("a recipe row tag connected to -1") << 50002;
}

void LimitsTest::limitsThatStayAsTheyAre()
{
    QFETCH(int, id);
    QVariant max(QStringLiteral("before"));
    QVariant min;
    m_tags->getMaxMinValue(id, max, min);
    QCOMPARE(max, QVariant(QStringLiteral("before")));
    QVERIFY(!min.isValid());
}

void LimitsTest::range_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("expected");
    QTest::newRow("Bit: the lowest") << 0 << QVariant(0) << true;
    QTest::newRow("Bit: the highest") << 0 << QVariant(1) << true;
    QTest::newRow("Bit: above") << 0 << QVariant(2) << false;
    QTest::newRow("Bit: below") << 0 << QVariant(-1) << false;
    QTest::newRow("Bit: true") << 0 << QVariant(true) << true;
    QTest::newRow("INT(8): the lowest") << 1 << QVariant(-128) << true;
    QTest::newRow("INT(8): below") << 1 << QVariant(-129) << false;
    QTest::newRow("INT(8): the highest") << 1 << QVariant(127) << true;
    QTest::newRow("INT(8): above") << 1 << QVariant(128) << false;
    QTest::newRow("UINT(8): the lowest") << 2 << QVariant(0) << true;
    QTest::newRow("UINT(8): below") << 2 << QVariant(-1) << false;
    QTest::newRow("UINT(8): the highest") << 2 << QVariant(255) << true;
    QTest::newRow("UINT(8): above") << 2 << QVariant(256) << false;
    QTest::newRow("INT(16): the lowest") << 3 << QVariant(-32768) << true;
    QTest::newRow("INT(16): below") << 3 << QVariant(-32769) << false;
    QTest::newRow("INT(16): the highest") << 3 << QVariant(32767) << true;
    QTest::newRow("INT(16): above") << 3 << QVariant(32768) << false;
    QTest::newRow("UINT(16): the lowest") << 4 << QVariant(0) << true;
    QTest::newRow("UINT(16): below") << 4 << QVariant(-1) << false;
    QTest::newRow("UINT(16): the highest") << 4 << QVariant(65535) << true;
    QTest::newRow("UINT(16): above") << 4 << QVariant(65536) << false;
    QTest::newRow("INT(32): the lowest") << 5 << QVariant(INT_MIN) << true;
    QTest::newRow("INT(32): below") << 5 << QVariant(Q_INT64_C(-2147483649)) << false;
    QTest::newRow("INT(32): the highest") << 5 << QVariant(INT_MAX) << true;
    QTest::newRow("INT(32): above") << 5 << QVariant(2147483648U) << false;
    QTest::newRow("UINT(32): the lowest") << 6 << QVariant(0) << true;
    QTest::newRow("UINT(32): -1 is below") << 6 << QVariant(-1) << false;
    QTest::newRow("UINT(32): the highest") << 6 << QVariant(4294967295U) << true;
    QTest::newRow("UINT(32): above") << 6 << QVariant(Q_INT64_C(4294967296)) << false;
    QTest::newRow("UINT(32): the highest unsigned number counts as -1") << 6 << QVariant(ULLONG_MAX) << false;

    QTest::newRow("INT(16): a text of digits") << 3 << QVariant(QStringLiteral("-32768")) << true;
    QTest::newRow("INT(16): a text of digits that is above") << 3 << QVariant(QStringLiteral("32768")) << false;
    QTest::newRow("INT(16): a text that is no number") << 3 << QVariant(QStringLiteral("abc")) << false;
    QTest::newRow("INT(16): a text with a point is no whole number") << 3 << QVariant(QStringLiteral("1.0")) << false;
    QTest::newRow("INT(16): an empty text") << 3 << QVariant(QString()) << false;
    QTest::newRow("INT(16): a null variant") << 3 << QVariant() << false;
    QTest::newRow("INT(16): a list") << 3 << QVariant(QStringList()) << false;
    QTest::newRow("INT(8): a double is rounded into the range") << 1 << QVariant(127.4) << true;
    QTest::newRow("INT(8): a double is rounded out of the range") << 1 << QVariant(127.6) << false;
    QTest::newRow("UINT(8): bytes are read as digits") << 2 << QVariant(QByteArray("255")) << true;

    QTest::newRow("FLOAT: 3.3e+37") << 7 << QVariant(3.3e+37F) << true;
    QTest::newRow("FLOAT: 3.5e+37") << 7 << QVariant(3.5e+37F) << false;
    QTest::newRow("FLOAT: the highest") << 7 << QVariant(3.4e+37F) << true;
    QTest::newRow("FLOAT: the highest, of a double") << 7 << QVariant(3.4e+37) << true;
    QTest::newRow("FLOAT: the lowest") << 7 << QVariant(-3.4e+37F) << true;
    QTest::newRow("FLOAT: below") << 7 << QVariant(-3.5e+37F) << false;
    QTest::newRow("FLOAT: what the format holds is above") << 7 << QVariant(FLT_MAX) << false;
    QTest::newRow("FLOAT: infinite") << 7 << QVariant(qInf()) << false;
    QTest::newRow("FLOAT: not a number") << 7 << QVariant(qQNaN()) << false;
    QTest::newRow("FLOAT: a text") << 7 << QVariant(QStringLiteral("-3.3e37")) << true;
    QTest::newRow("FLOAT: a text that is no number") << 7 << QVariant(QStringLiteral("x")) << false;
    QTest::newRow("FLOAT: a null variant") << 7 << QVariant() << false;
    QTest::newRow("FLOAT: an int") << 7 << QVariant(INT_MIN) << true;

    QTest::newRow("DOUBLE: the highest") << 9 << QVariant(DBL_MAX) << true;
    QTest::newRow("DOUBLE: the lowest") << 9 << QVariant(-DBL_MAX) << true;
    QTest::newRow("DOUBLE: infinite") << 9 << QVariant(qInf()) << false;
    QTest::newRow("DOUBLE: minus infinite") << 9 << QVariant(-qInf()) << false;
    QTest::newRow("DOUBLE: not a number") << 9 << QVariant(qQNaN()) << false;
    QTest::newRow("DOUBLE: 0") << 9 << QVariant(0) << true;
    QTest::newRow("DOUBLE: a text") << 9 << QVariant(QStringLiteral("1e300")) << true;
    QTest::newRow("DOUBLE: a text that is no number") << 9 << QVariant(QStringLiteral("1e")) << false;
    QTest::newRow("DOUBLE: a null variant") << 9 << QVariant() << false;

    QTest::newRow("Ascii: 0") << 8 << QVariant(0) << false;
    QTest::newRow("Ascii: a text") << 8 << QVariant(QStringLiteral("abc")) << false;
    QTest::newRow("INT(64): 0") << 10 << QVariant(0) << false;
    QTest::newRow("INT(64): 1, of its own type") << 10 << QVariant(Q_INT64_C(1)) << false;
    QTest::newRow("UINT(64): 0") << 11 << QVariant(0) << false;
    QTest::newRow("UINT(64): 1, of its own type") << 11 << QVariant(Q_UINT64_C(1)) << false;
    QTest::newRow("an unknown type: 0") << 12 << QVariant(0) << false;
    QTest::newRow("a negative type: 0") << 13 << QVariant(0) << false;
}

void LimitsTest::range()
{
    QFETCH(int, type);
    QFETCH(QVariant, value);
    QTEST(m_tags->isInTheRange(first + type, value), "expected");
}

void LimitsTest::rangeOfRecipeTags_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("expected");
    QTest::newRow("connected to INT(16): the highest") << 30001 << QVariant(32767) << true;
    QTest::newRow("connected to INT(16): above") << 30001 << QVariant(32768) << false;
    QTest::newRow("connected to UINT(32): the highest") << 30002 << QVariant(4294967295U) << true;
    QTest::newRow("connected to UINT(32): below") << 30002 << QVariant(-1) << false;
    QTest::newRow("connected to a system tag") << 30004 << QVariant(INT_MIN) << true;
    QTest::newRow("connected to -1: nothing fits") << 30003 << QVariant(1) << false;
    QTest::newRow("not connected: a bit") << 40000 << QVariant(1) << true;
    QTest::newRow("not connected: no more than a bit") << 40000 << QVariant(2) << false;
    QTest::newRow("a recipe row tag: the highest") << 50001 << QVariant(255) << true;
    QTest::newRow("a recipe row tag: above") << 50001 << QVariant(256) << false;
    QTest::newRow("a recipe row tag connected to UINT(64)") << 60000 << QVariant(0) << false;
    QTest::newRow("a system tag's number") << 20011 << QVariant(INT_MAX) << true;
    QTest::newRow("a system tag's number: above") << 20011 << QVariant(2147483648U) << false;
    QTest::newRow("a system tag's text") << 20010 << QVariant(0) << false;
    QTest::newRow("no such row: a bit") << 9999 << QVariant(1) << true;
    QTest::newRow("no such row: no more than a bit") << 9999 << QVariant(2) << false;
    QTest::newRow("no tag: 1 does not fit") << -1 << QVariant(1) << false;
}

void LimitsTest::rangeOfRecipeTags()
{
    QFETCH(int, id);
    QFETCH(QVariant, value);
    QTEST(m_tags->isInTheRange(id, value), "expected");
}

void LimitsTest::rangeFollowsTheType()
{
    writeTags(key, {tag(500, 1)});
    QVERIFY(!m_tags->isInTheRange(500, 200));
    executeOn(key, QStringLiteral("UPDATE custom_tag_table SET data_type = 2 WHERE id = 500"));
    QVERIFY(m_tags->isInTheRange(500, 200));
    executeOn(key, QStringLiteral("DELETE FROM custom_tag_table WHERE id = 500"));
    QVERIFY(!m_tags->isInTheRange(500, 200));
}

QTEST_GUILESS_MAIN(LimitsTest)

#include "tst_limits.moc"
