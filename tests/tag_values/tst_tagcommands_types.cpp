// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/commandstest.h"
#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "support/projectfixtures.h"

#include "zelmar_label/label_store/labelstore.h"

#include <QtTest>

#include <climits>

/// Tests the effect of a tag's data type.
class TagCommandsTypesTest : public CommandsTest
{
    Q_OBJECT

private Q_SLOTS:
    void commandTypeOfATagType_data();
    void commandTypeOfATagType();
    void sizeOfATagType_data();
    void sizeOfATagType();
    void normalizedAddress_data();
    void normalizedAddress();

    void commandOfATagType_data();
    void commandOfATagType();

    void dataType_data();
    void dataType();
    void dataTypeOfAMissingSystemTagLeavesAnItem();
    void dataTypeOfRow0AndOfRowMinusOne();
    void readOnce_data();
    void readOnce();
    void bitType_data();
    void bitType();
};

void TagCommandsTypesTest::commandTypeOfATagType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("expected");
    QTest::newRow("Bit") << 0 << 0;
    QTest::newRow("INT(8)") << 1 << 1;
    QTest::newRow("UINT(8)") << 2 << 1;
    QTest::newRow("INT(16)") << 3 << 2;
    QTest::newRow("UINT(16)") << 4 << 2;
    QTest::newRow("INT(32)") << 5 << 3;
    QTest::newRow("UINT(32)") << 6 << 3;
    QTest::newRow("FLOAT") << 7 << 3;
    QTest::newRow("Ascii") << 8 << 5;
    QTest::newRow("DOUBLE") << 9 << 4;
    QTest::newRow("INT(64)") << 10 << 4;
    QTest::newRow("UINT(64)") << 11 << 4;
    QTest::newRow("just above the types") << 12 << 9;
    QTest::newRow("-1") << -1 << 9;
    QTest::newRow("the highest number") << INT_MAX << 9;
    QTest::newRow("the lowest number") << INT_MIN << 9;
}

void TagCommandsTypesTest::commandTypeOfATagType()
{
    QFETCH(int, type);
    QTEST(m_tags->getCommunicatorCommandDataType(type), "expected");
}

void TagCommandsTypesTest::sizeOfATagType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("expected");
    QTest::newRow("Bit") << 0 << 1;
    QTest::newRow("INT(8)") << 1 << 1;
    QTest::newRow("UINT(8)") << 2 << 1;
    QTest::newRow("INT(16)") << 3 << 2;
    QTest::newRow("UINT(16)") << 4 << 2;
    QTest::newRow("INT(32)") << 5 << 4;
    QTest::newRow("UINT(32)") << 6 << 4;
    QTest::newRow("FLOAT") << 7 << 4;
    QTest::newRow("Ascii: one, whatever its length") << 8 << 1;
    QTest::newRow("DOUBLE") << 9 << 8;
    QTest::newRow("INT(64)") << 10 << 8;
    QTest::newRow("UINT(64)") << 11 << 8;
    QTest::newRow("just above the types") << 12 << 1;
    QTest::newRow("-1") << -1 << 1;
    QTest::newRow("the highest number") << INT_MAX << 1;
}

void TagCommandsTypesTest::sizeOfATagType()
{
    QFETCH(int, type);
    QTEST(m_tags->getDataSizeByType(type), "expected");
    TagRow row = tag(500, registersLink, type, QStringLiteral("D1"));
    row.scale = 20;
    writeTags(key, {row});
    QCOMPARE(m_tags->getDataTypeByID(500), type);
    QTEST(m_tags->getDataSizeByID(500), "expected");
}

void TagCommandsTypesTest::normalizedAddress_data()
{
    QTest::addColumn<QString>("address");
    QTest::newRow("an address") << QStringLiteral("D100");
    QTest::newRow("a station and blanks") << QStringLiteral(" 3-d0100 ");
    QTest::newRow("empty") << QStringLiteral("");
    QTest::newRow("null") << QString();
}

void TagCommandsTypesTest::normalizedAddress()
{
    QFETCH(QString, address);
    QCOMPARE(m_tags->normalizedAddress(address), address);
    QCOMPARE(m_tags->normalizedAddress(address).isNull(), address.isNull());
}

void TagCommandsTypesTest::commandOfATagType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("expected");
    // The scale is 12, and only a text's length.
    QTest::newRow("Bit") << 0 << QStringLiteral("D1|0|1|3|0||0");
    QTest::newRow("INT(8)") << 1 << QStringLiteral("D1|1|1|3|0||0");
    QTest::newRow("UINT(8)") << 2 << QStringLiteral("D1|1|1|3|0||0");
    QTest::newRow("INT(16)") << 3 << QStringLiteral("D1|2|1|3|0||0");
    QTest::newRow("UINT(16)") << 4 << QStringLiteral("D1|2|1|3|0||0");
    QTest::newRow("INT(32)") << 5 << QStringLiteral("D1|3|1|3|0||0");
    QTest::newRow("UINT(32)") << 6 << QStringLiteral("D1|3|1|3|0||0");
    QTest::newRow("FLOAT") << 7 << QStringLiteral("D1|3|1|3|0||0");
    QTest::newRow("Ascii") << 8 << QStringLiteral("D1|5|12|3|0||0");
    QTest::newRow("DOUBLE") << 9 << QStringLiteral("D1|4|1|3|0||0");
    QTest::newRow("INT(64)") << 10 << QStringLiteral("D1|4|1|3|0||0");
    QTest::newRow("UINT(64)") << 11 << QStringLiteral("D1|4|1|3|0||0");
    QTest::newRow("an unknown type") << 12 << QStringLiteral("D1|9|1|3|0||0");
    QTest::newRow("a negative type") << -1 << QStringLiteral("D1|9|1|3|0||0");
}

void TagCommandsTypesTest::commandOfATagType()
{
    QFETCH(int, type);
    TagRow row = tag(500, registersLink, type, QStringLiteral("D1"));
    row.scale = 12;
    row.scanTime = 3;
    row.addition = 4;
    row.defaultValue = 5;
    row.comment = QStringLiteral("text");
    writeTags(key, {row});
    bool ok = false;
    const LogRecorder log;
    QTEST(described(m_tags->getCommunicatorCommandByIndex(500, ok)), "expected");
    QVERIFY(ok);
    QCOMPARE(log.lines(), QStringList());
}

void TagCommandsTypesTest::dataType_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("expected");
    QTest::newRow("a number") << 51 << 3;
    QTest::newRow("a text") << 52 << 8;
    QTest::newRow("a bit") << 53 << 0;
    QTest::newRow("no such row") << 9999 << 0;
    QTest::newRow("no tag") << -1 << 0;
    QTest::newRow("a system tag's number") << 20012 << 5;
    QTest::newRow("a system tag's text") << 20010 << 8;
    QTest::newRow("the time in seconds") << 20072 << 5;
    QTest::newRow("a system tag whose id a row bears") << 20011 << 5;
    QTest::newRow("the system tag of the null command") << 20999 << 5;
    QTest::newRow("a system id without a tag") << 20094 << 5;
    QTest::newRow("the first system id") << 20000 << 5;
    QTest::newRow("the last system id") << 21000 << 5;
    QTest::newRow("just above the system tags") << 21001 << 0;
    QTest::newRow("a recipe tag connected to a number") << 30001 << 3;
    QTest::newRow("a recipe tag that is not connected: row 0") << 30002 << 0;
    QTest::newRow("a recipe tag connected to a system tag's text") << 30003 << 8;
    QTest::newRow("a recipe tag connected to a tag that does not exist") << 30004 << 0;
    QTest::newRow("a recipe tag connected to another") << 30005 << 3;
    QTest::newRow("a recipe tag connected to -1") << 30006 << 1;
    QTest::newRow("a recipe tag connected to a recipe row tag") << 30008 << 3;
    QTest::newRow("a recipe tag that is connected but has no name") << 30009 << 8;
    QTest::newRow("a recipe id that a row bears") << 30000 << 0;
    QTest::newRow("a recipe row tag connected to a number") << 50001 << 3;
    QTest::newRow("a recipe row tag connected to a recipe tag") << 50003 << 3;
    QTest::newRow("a recipe row tag that is not connected: row 0") << 50002 << 0;
    QTest::newRow("just above the recipe tags") << 60001 << 0;
}

void TagCommandsTypesTest::dataType()
{
    QFETCH(int, id);
    const LogRecorder log;
    QTEST(m_tags->getDataTypeByID(id), "expected");
    QCOMPARE(log.lines(), QStringList());
}

void TagCommandsTypesTest::dataTypeOfAMissingSystemTagLeavesAnItem()
{
    bool ok = false;
    QCOMPARE(m_tags->getCommunicatorCommandByIndex(20013, ok).address, QStringLiteral("S>NULL"));
    QCOMPARE(m_tags->getDataTypeByID(20013), 5);
    QCOMPARE(described(m_tags->getCommunicatorCommandByIndex(20013, ok)), QStringLiteral("s>invalid|3|1|1|0||0"));
    QVERIFY(ok);
    QCOMPARE(m_tags->getDataTypeByID(20013), 5);
    QCOMPARE(m_tags->getCommunicatorCommandByIndex(20999, ok).address, QStringLiteral("S>NULL"));
}

void TagCommandsTypesTest::dataTypeOfRow0AndOfRowMinusOne()
{
    writeTags(key, {tag(-1, registersLink, 4, QStringLiteral("D1")), tag(-2, registersLink, 9, QStringLiteral("D2"))});
    executeOn(key, QStringLiteral("INSERT INTO custom_tag_table (id, data_type) VALUES (0, 6)"));
    QCOMPARE(m_tags->getDataTypeByID(0), 6);
    QCOMPARE(m_tags->getDataTypeByID(-1), 4);
    QCOMPARE(m_tags->getDataTypeByID(-2), 9);
    QCOMPARE(m_tags->getDataTypeByID(30002), 6);
    QCOMPARE(m_tags->getDataTypeByID(50002), 6);
    QCOMPARE(m_tags->getDataTypeByID(30006), 1);
    bool ok = false;
    QCOMPARE(described(m_tags->getCommunicatorCommandByIndex(-1, ok)), QStringLiteral("D1|2|1|1|0||0"));
    QVERIFY(ok);
    // A negative id is on no link.
    QVERIFY(m_tags->getContinuousCommand(-1, 2).isEmpty());
}

void TagCommandsTypesTest::readOnce_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("expected");
    QTest::newRow("scan time 0") << 50 << true;
    QTest::newRow("scan time 7") << 51 << false;
    QTest::newRow("scan time 1") << 53 << false;
    QTest::newRow("no such row") << 9999 << false;
    QTest::newRow("no tag") << -1 << false;
    QTest::newRow("a system tag") << 20012 << false;
    QTest::newRow("a system id without a tag") << 20094 << false;
    QTest::newRow("a recipe tag connected to scan time 7") << 30001 << false;
    QTest::newRow("a recipe row tag connected to scan time 0") << 50004 << true;
    QTest::newRow("a recipe tag that is not connected") << 30002 << false;
}

void TagCommandsTypesTest::readOnce()
{
    QFETCH(int, id);
    QTEST(m_tags->isReadOnce(id), "expected");
}

void TagCommandsTypesTest::bitType_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("expected");
    QTest::newRow("a bit") << 53 << true;
    QTest::newRow("a number") << 51 << false;
    QTest::newRow("a text") << 52 << false;
    QTest::newRow("no such row, though its data type reads 0") << 9999 << false;
    QTest::newRow("no tag") << -1 << false;
    QTest::newRow("a system tag") << 20099 << false;
    QTest::newRow("a system tag whose id a bit's row bears") << 20011 << false;
    QTest::newRow("a recipe tag connected to a bit") << 50500 << true;
    QTest::newRow("a recipe row tag connected to a bit") << 30500 << true;
    QTest::newRow("a recipe tag connected to a number") << 30001 << false;
    QTest::newRow("a recipe tag that is not connected, though its data type reads 0") << 30002 << false;
}

void TagCommandsTypesTest::bitType()
{
    QFETCH(int, id);
    QTEST(m_tags->isBitType(id), "expected");
}

QTEST_GUILESS_MAIN(TagCommandsTypesTest)

#include "tst_tagcommands_types.moc"
