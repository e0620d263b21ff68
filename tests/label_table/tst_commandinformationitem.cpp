// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"

#include "zelmar_label/label_table/commandinformationitem.h"

#include <QtTest>

#include <climits>

using label::CommandFormatter;
using label::CommandInformationItem;

namespace {

Row wordRow()
{
    Row row;
    row.end = QStringLiteral("99");
    return row;
}

Row relayRow()
{
    Row row;
    row.pattern = QStringLiteral("(M)(\\d+)");
    row.type = 0;
    row.multipleRule = QStringLiteral("union-dec:r");
    return row;
}

Row unlimitedRow()
{
    Row row;
    row.start.clear();
    return row;
}

const QString limitsLine = QStringLiteral("isRangeValid CommandFormatter isRangeValid data error");

} // namespace

class CommandInformationItemTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEmptyGroupHasSizeZeroAndAcceptsNothing();
    void aGroupGivesTheSizeOfItsConstructor_data();
    void aGroupGivesTheSizeOfItsConstructor();
    void formattersComeBackInTheOrderOfAdding();
    void aNullPointerIsIgnored();
    void theSameFormatterCountsTwice();
    void formattersOutliveTheGroup();
    void hasTypeIsExact_data();
    void hasTypeIsExact();
    void isValid_data();
    void isValid();
    void isValidStopsAtTheFirstThatAccepts();
    void isValidGoesOnAfterOneThatRefuses();
    void everyBlockIsValid_data();
    void everyBlockIsValid();
};

void CommandInformationItemTest::anEmptyGroupHasSizeZeroAndAcceptsNothing()
{
    CommandInformationItem group;
    QCOMPARE(group.datasize(), 0);
    QCOMPARE(group.countCommands(), 0);
    QVERIFY(group.commandFormatters().isEmpty());
    QVERIFY(!group.hasType(0));
    QVERIFY(!group.isValid(QStringLiteral("D1")));
    QVERIFY(!group.isValid(QString()));
}

void CommandInformationItemTest::aGroupGivesTheSizeOfItsConstructor_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("a double word") << 4;
    QTest::newRow("nothing") << 0;
    QTest::newRow("a negative size is not looked at") << -3;
    QTest::newRow("the largest number") << INT_MAX;
}

void CommandInformationItemTest::aGroupGivesTheSizeOfItsConstructor()
{
    QFETCH(int, size);
    CommandInformationItem group(size, QStringLiteral("registers"));
    QCOMPARE(group.datasize(), size);
    QCOMPARE(group.countCommands(), 0);
    QVERIFY(group.commandFormatters().isEmpty());
}

void CommandInformationItemTest::formattersComeBackInTheOrderOfAdding()
{
    CommandFormatter words = wordRow().formatter();
    CommandFormatter relays = relayRow().formatter();
    CommandInformationItem group(2, QStringLiteral("registers"));
    group.addCommandFormatter(&relays);
    group.addCommandFormatter(&words);
    QCOMPARE(group.countCommands(), 2);
    QCOMPARE(group.commandFormatters(), (QList<CommandFormatter *>{&relays, &words}));
}

void CommandInformationItemTest::aNullPointerIsIgnored()
{
    CommandInformationItem group;
    group.addCommandFormatter(nullptr);
    QCOMPARE(group.countCommands(), 0);
    QVERIFY(!group.hasType(0));
    QVERIFY(!group.isValid(QStringLiteral("D1")));
}

void CommandInformationItemTest::theSameFormatterCountsTwice()
{
    CommandFormatter words = wordRow().formatter();
    CommandInformationItem group;
    group.addCommandFormatter(&words);
    group.addCommandFormatter(&words);
    QCOMPARE(group.countCommands(), 2);
}

void CommandInformationItemTest::formattersOutliveTheGroup()
{
    CommandFormatter words = wordRow().formatter();
    {
        CommandInformationItem group;
        group.addCommandFormatter(&words);
    }
    QCOMPARE(words.pattern(), QStringLiteral("(D)(\\d+)"));
    QVERIFY(words.isAddressValid(QStringLiteral("D5")));
}

void CommandInformationItemTest::hasTypeIsExact_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("has");
    QTest::newRow("the type of the first formatter") << 2 << true;
    QTest::newRow("the type of the second formatter, a bit type") << 0 << true;
    QTest::newRow("another register type is not taken for the same") << 3 << false;
    QTest::newRow("the type that no formatter has between two that they have") << 1 << false;
    QTest::newRow("-1 is no wildcard here") << -1 << false;
    QTest::newRow("reserved") << 5 << false;
}

void CommandInformationItemTest::hasTypeIsExact()
{
    QFETCH(int, type);
    QFETCH(bool, has);
    CommandFormatter words = wordRow().formatter();
    CommandFormatter relays = relayRow().formatter();
    CommandInformationItem group;
    group.addCommandFormatter(&words);
    group.addCommandFormatter(&relays);
    QCOMPARE(group.hasType(type), has);
}

void CommandInformationItemTest::isValid_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("valid");
    QTest::newRow("an address of the first formatter") << "D0" << true;
    QTest::newRow("its last address") << "D99" << true;
    QTest::newRow("one beyond its last address") << "D100" << false;
    QTest::newRow("an address of the second formatter") << "M100" << true;
    QTest::newRow("a station in front") << "3-M100" << true;
    QTest::newRow("a station in front of an address beyond the limits") << "3-D100" << false;
    QTest::newRow("no formatter's address") << "X1" << false;
    QTest::newRow("a symbol in the wrong case") << "d1" << false;
    QTest::newRow("more text behind an address") << "D1 " << false;
    QTest::newRow("the empty address") << "" << false;
}

void CommandInformationItemTest::isValid()
{
    QFETCH(QString, address);
    QFETCH(bool, valid);
    CommandFormatter words = wordRow().formatter();
    CommandFormatter relays = relayRow().formatter();
    CommandInformationItem group;
    group.addCommandFormatter(&words);
    group.addCommandFormatter(&relays);
    QCOMPARE(group.isValid(address), valid);
}

void CommandInformationItemTest::isValidStopsAtTheFirstThatAccepts()
{
    CommandFormatter words = wordRow().formatter();
    CommandFormatter unlimited = unlimitedRow().formatter();
    CommandInformationItem group;
    group.addCommandFormatter(&words);
    group.addCommandFormatter(&unlimited);
    const LogRecorder log;
    QVERIFY(group.isValid(QStringLiteral("D5")));
    QCOMPARE(log.lines(), QStringList());
}

void CommandInformationItemTest::isValidGoesOnAfterOneThatRefuses()
{
    CommandFormatter words = wordRow().formatter();
    CommandFormatter unlimited = unlimitedRow().formatter();
    CommandInformationItem group;
    group.addCommandFormatter(&unlimited);
    group.addCommandFormatter(&words);
    const LogRecorder log;
    QVERIFY(group.isValid(QStringLiteral("D5")));
    QCOMPARE(log.lines(), QStringList(limitsLine));
}

void CommandInformationItemTest::everyBlockIsValid_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("length");
    QTest::newRow("an address of the group") << "D0" << 4;
    QTest::newRow("no address of the group") << "X0" << 4;
    QTest::newRow("the empty address") << "" << 4;
    QTest::newRow("no length") << "D0" << 0;
    QTest::newRow("a negative length") << "D0" << -1;
    QTest::newRow("the largest length") << "D0" << INT_MAX;
}

void CommandInformationItemTest::everyBlockIsValid()
{
    QFETCH(QString, address);
    QFETCH(int, length);
    CommandFormatter words = wordRow().formatter();
    CommandInformationItem group;
    QVERIFY(group.isBlockValid(address, length));
    group.addCommandFormatter(&words);
    QVERIFY(group.isBlockValid(address, length));
}

QTEST_GUILESS_MAIN(CommandInformationItemTest)

#include "tst_commandinformationitem.moc"
