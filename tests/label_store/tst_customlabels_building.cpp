// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/customlabelstest.h"
#include "support/logrecorder.h"

#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QtTest>

using label::LabelInterface;

class CustomLabelsBuildingTest : public CustomLabelsTest
{
    Q_OBJECT

private Q_SLOTS:
    void aFreshCustomLabelHasNoRowsAndTheDefaultLimits();
    void customRowsReachTheLabel();
    void theLimitsAreThoseOfTheCustomTable();
    void aCustomFamilyGrows();
    void customAndDefaultLabelsAreApart();
    void aSecondCallGivesTheSameLabelWithoutTheFile();
    void aFreedLabelIsBuiltAnew();
    void freeingAnUnknownDriverChangesNothing();
    void switchingLeavesCachedLabelsAlone();
    void failedBuilds_data();
    void failedBuilds();
    void anEntryWithoutTableNamesGivesAnEmptyLabel();

    void freeingAllLabelsKeepsTheirPointers();
};

void CustomLabelsBuildingTest::aFreshCustomLabelHasNoRowsAndTheDefaultLimits()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Fresh"), 120, 960)});
    QVERIFY(setup(QStringLiteral("Fresh")));
    const LogRecorder log;
    LabelInterface *const made = build(QStringLiteral("Fresh"));
    QVERIFY(made);
    QCOMPARE(m_error, untouched);
    QCOMPARE(made->countBitTypes(), 0);
    QCOMPARE(made->getBlockCommandMaxSize(), 120);
    QCOMPARE(made->getBitCommandMaxSize(), 960);
    QCOMPARE(made->addressValidation(QStringLiteral("D1"), -1), -1);
    QCOMPARE(log.lines(), QStringList());
}

void CustomLabelsBuildingTest::customRowsReachTheLabel()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Rows"))});
    QVERIFY(setup(QStringLiteral("Rows")));
    changeCustomDatabase(
        {QStringLiteral("INSERT INTO Rows_types_table VALUES ('(E)([0-9A-F]+)', 2, '1F', 'FF', 2, 'E: hex word', 'E', "
                        "4, 'words', '', 16, -1, 5)"),
         QStringLiteral("INSERT INTO Rows_types_table VALUES ('(M)(\\d+)', 0, 0, 99, 2, 'M: bit', 'M', 1, 'bits', "
                        "'union-dec:rm16_E', 10, 48, 1)")});
    LabelInterface *const made = build(QStringLiteral("Rows"));
    QVERIFY(made);
    QCOMPARE(made->countBitTypes(), 2);
    QCOMPARE(made->prefixSymbols(), (QStringList{QStringLiteral("E"), QStringLiteral("M")}));
    QCOMPARE(made->getFormatString(0), QStringLiteral("E: hex word"));
    QCOMPARE(made->datatype(0), 2);
    QCOMPARE(made->datasize(0), 4);
    QCOMPARE(made->base(0), 16);
    QCOMPARE(made->blocksize(0), 0);
    QCOMPARE(made->addressValidation(QStringLiteral("E1F"), -1), 0);
    QCOMPARE(made->addressValidation(QStringLiteral("E1E"), -1), -1);
    QCOMPARE(made->addressValidation(QStringLiteral("E100"), -1), -1);
    QCOMPARE(made->addressRange(0, QStringLiteral("EA0")), 160);
    QCOMPARE(made->getCatchTableName(QStringLiteral("M5"), -1), QStringLiteral("bits"));
    QCOMPARE(made->datatype(1), 0);
    QCOMPARE(made->blocksize(1), 48);
    QVERIFY(made->canConvertToRegisterCommand(1));
    QVERIFY2(!made->isMustContinue(0) && !made->isMustContinue(1), "custom rows never ask for continuity");
}

void CustomLabelsBuildingTest::theLimitsAreThoseOfTheCustomTable()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Limits"), 120, 960)});
    QVERIFY(setup(QStringLiteral("Limits")));
    changeCustomDatabase({QStringLiteral("UPDATE Limits_general_table SET block_size = 8, bit_block_size = 9, "
                                         "driver_name = 'other', support_actions = 'none'")});
    LabelInterface *const made = build(QStringLiteral("Limits"));
    QVERIFY(made);
    QCOMPARE(made->getBlockCommandMaxSize(), 8);
    QCOMPARE(made->getBitCommandMaxSize(), 9);
}

void CustomLabelsBuildingTest::aCustomFamilyGrows()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("ISO on TCP"))});
    QVERIFY(setup(QStringLiteral("ISO on TCP")));
    changeCustomDatabase({deviceRow("ISO_on_TCP_types_table", "DB_DBW", "DB")});
    LabelInterface *const made = build(QStringLiteral("ISO on TCP"));
    QVERIFY(made);
    QCOMPARE(made->addressValidation(QStringLiteral("DB12.DBW4"), -1), 1);
    QCOMPARE(made->addressValidation(QStringLiteral("3-DB12.DBW6"), -1), 1);
    QCOMPARE(made->countBitTypes(), 2);
    QCOMPARE(made->getPrefixSymbolByTypeID(1), QStringLiteral("DB12.DBW"));
    QCOMPARE(made->getEditUsedPrifixSymbolByTypeId(1), QStringLiteral("DB"));
}

void CustomLabelsBuildingTest::customAndDefaultLabelsAreApart()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Both"), 11, 22)});
    QVERIFY(setup(QStringLiteral("Both")));
    changeCustomDatabase({deviceRow("Both_types_table", "(C)(\\d+)", "C")});
    LabelInterface *const custom = build(QStringLiteral("Both"));
    QString error = untouched;
    LabelInterface *const standard = label::createLabel(QStringLiteral("Both"), error);
    QVERIFY(custom && standard && custom != standard);
    QCOMPARE(custom->prefixSymbols(), QStringList{QStringLiteral("C")});
    QCOMPARE(standard->prefixSymbols(), QStringList{QStringLiteral("D")});
    label::freeCustomLabel(QStringLiteral("Both"));
    QCOMPARE(label::createLabel(QStringLiteral("Both"), error), standard);
    QCOMPARE(standard->prefixSymbols(), QStringList{QStringLiteral("D")});
    QCOMPARE(error, untouched);
}

void CustomLabelsBuildingTest::aSecondCallGivesTheSameLabelWithoutTheFile()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Cached"))});
    QVERIFY(setup(QStringLiteral("Cached")));
    LabelInterface *const made = build(QStringLiteral("Cached"));
    QVERIFY(made);
    QVERIFY(QFile::remove(customPath()));
    QCOMPARE(build(QStringLiteral("Cached")), made);
    QCOMPARE(m_error, untouched);
    QVERIFY(!QFileInfo::exists(customPath()));
    QVERIFY(!QSqlDatabase::contains(customConnection));
}

void CustomLabelsBuildingTest::aFreedLabelIsBuiltAnew()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Freed"))});
    QVERIFY(setup(QStringLiteral("Freed")));
    QVERIFY(build(QStringLiteral("Freed")));
    changeCustomDatabase({deviceRow("Freed_types_table", "(C)(\\d+)", "C")});
    QCOMPARE(build(QStringLiteral("Freed"))->countBitTypes(), 0);
    label::freeCustomLabel(QStringLiteral("Freed"));
    LabelInterface *const anew = build(QStringLiteral("Freed"));
    QVERIFY(anew);
    QCOMPARE(anew->countBitTypes(), 1);
}

void CustomLabelsBuildingTest::freeingAnUnknownDriverChangesNothing()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Known"))});
    QVERIFY(setup(QStringLiteral("Known")));
    LabelInterface *const made = build(QStringLiteral("Known"));
    label::freeCustomLabel(QStringLiteral("known"));
    label::freeCustomLabel(QStringLiteral("Unknown"));
    QCOMPARE(build(QStringLiteral("Known")), made);
}

void CustomLabelsBuildingTest::switchingLeavesCachedLabelsAlone()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Switched"))});
    QVERIFY(setup(QStringLiteral("Switched")));
    LabelInterface *const made = build(QStringLiteral("Switched"));
    QVERIFY(made);
    QVERIFY(label::setupDefaultLabel(QStringLiteral("Switched")));
    QCOMPARE(build(QStringLiteral("Switched")), made);
    QVERIFY(setup(QStringLiteral("Switched")));
    QCOMPARE(build(QStringLiteral("Switched")), made);
}

void CustomLabelsBuildingTest::failedBuilds_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("statements");
    QTest::addColumn<QString>("error");
    const QString entry = QStringLiteral("INSERT INTO table_index VALUES ('A', 'g', 'd')");
    const QString noQuery = QStringLiteral("Error (No query Unable to fetch row): SELECT * FROM table_index WHERE name "
                                           "= '");
    QTest::newRow("a driver that was never set up") << "A" << QStringList() << unknownDriver;
    QTest::newRow("another case") << "a" << QStringList{indexStatement, entry} << unknownDriver;
    QTest::newRow("an empty name") << "" << QStringList{indexStatement, entry} << unknownDriver;
    QTest::newRow("an apostrophe") << "O'Neil" << QStringList{indexStatement, entry} << unknownDriver;
    QTest::newRow("a list of drivers without names")
        << "A" << QStringList{QStringLiteral("CREATE TABLE table_index (general_table, device_table)")}
        << QString(noQuery + QStringLiteral("A'"));
}

void CustomLabelsBuildingTest::failedBuilds()
{
    QFETCH(QString, name);
    QFETCH(QStringList, statements);
    QFETCH(QString, error);
    changeCustomDatabase(statements);
    const LogRecorder log;
    QVERIFY(!build(name));
    QCOMPARE(m_error, error);
    QCOMPARE(log.lines(), QStringList());
    QVERIFY2(isConnectionOpen(), "a failed build leaves the connection open");
}

void CustomLabelsBuildingTest::anEntryWithoutTableNamesGivesAnEmptyLabel()
{
    changeCustomDatabase({indexStatement, QStringLiteral("INSERT INTO table_index VALUES ('Empty', '', '')")});
    const LogRecorder log;
    LabelInterface *const made = build(QStringLiteral("Empty"));
    QVERIFY(made);
    QCOMPARE(m_error, untouched);
    QCOMPARE(made->countBitTypes(), 0);
    QCOMPARE(made->getBlockCommandMaxSize(), 0);
    QCOMPARE(made->getBitCommandMaxSize(), 0);
    QCOMPARE(build(QStringLiteral("Empty")), made);
    QCOMPARE(log.lines(), QStringList());
}

/// The last test: afterwards the store has stale pointers.
void CustomLabelsBuildingTest::freeingAllLabelsKeepsTheirPointers()
{
    changeCustomDatabase({indexStatement, QStringLiteral("INSERT INTO table_index VALUES ('Last 1', '', '')"),
                          QStringLiteral("INSERT INTO table_index VALUES ('Last 2', '', '')"),
                          QStringLiteral("INSERT INTO table_index VALUES ('Last 3', '', '')")});
    QString error = untouched;
    const auto first = quintptr(label::createCustomLabel(QStringLiteral("Last 1"), error));
    const auto second = quintptr(label::createCustomLabel(QStringLiteral("Last 2"), error));
    QVERIFY(first != 0 && second != 0);
    label::freeCustomLabels();
    QCOMPARE(quintptr(label::createCustomLabel(QStringLiteral("Last 1"), error)), first);
    QCOMPARE(quintptr(label::createCustomLabel(QStringLiteral("Last 2"), error)), second);
    QVERIFY(label::createCustomLabel(QStringLiteral("Last 3"), error));
    QCOMPARE(error, untouched);
    label::freeCustomLabel(QStringLiteral("Last 3"));
}

QTEST_GUILESS_MAIN(CustomLabelsBuildingTest)

#include "tst_customlabels_building.moc"
