// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/customlabelstest.h"
#include "support/logrecorder.h"

#include <QCoreApplication>
#include <QtTest>

using label::LabelInterface;

class CustomLabelsSetupTest : public CustomLabelsTest
{
    Q_OBJECT

private Q_SLOTS:
    void setupMakesTwoTablesAndAnEntry_data();
    void setupMakesTwoTablesAndAnEntry();
    void setupRefusesNamesThatMakeNoTableName_data();
    void setupRefusesNamesThatMakeNoTableName();
    void setupTwiceKeepsRowsAndLimits();
    void setupCompletesWhatIsMissing();
    void setupUpdatesEveryEntryOfTheDriver();
    void aFailingStepLeavesTheEarlierOnes_data();
    void aFailingStepLeavesTheEarlierOnes();
    void setupKeepsTheDefaultLabel();
    void driversAreSetUpApart();
};

void CustomLabelsSetupTest::setupMakesTwoTablesAndAnEntry_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("general");
    QTest::addColumn<QString>("device");
    QTest::newRow("a name of one word") << "Alpha"
                                        << "Alpha_general_table"
                                        << "Alpha_types_table";
    QTest::newRow("blanks become underscores") << "ISO on TCP"
                                               << "ISO_on_TCP_general_table"
                                               << "ISO_on_TCP_types_table";
    QTest::newRow("each of two blanks in a row") << "Two  blanks"
                                                 << "Two__blanks_general_table"
                                                 << "Two__blanks_types_table";
    QTest::newRow("blanks at both ends") << " Ends "
                                         << "_Ends__general_table"
                                         << "_Ends__types_table";
    QTest::newRow("letters beyond ASCII")
        << QStringLiteral("K\u00e4fer \u96fb") << QStringLiteral("K\u00e4fer_\u96fb_general_table")
        << QStringLiteral("K\u00e4fer_\u96fb_types_table");
    QTest::newRow("an empty name") << ""
                                   << "_general_table"
                                   << "_types_table";
}

void CustomLabelsSetupTest::setupMakesTwoTablesAndAnEntry()
{
    QFETCH(QString, name);
    QFETCH(QString, general);
    QFETCH(QString, device);
    writeDriverDatabase(driverDatabasePath(), {driver(name, 120, 960)});
    const LogRecorder log;
    QVERIFY(setup(name));
    // The default label was built for its limits.
    QCOMPARE(log.lines(), QStringList{rowLine});
    QVERIFY(label::useCustomLabel(name));
    QCOMPARE(customTables(), (QStringList{QStringLiteral("table_index"), general, device}));
    const QString statement = QStringLiteral("SELECT sql FROM sqlite_master WHERE name = '%1'");
    QCOMPARE(customRows(statement.arg(general)),
             QStringList{QStringLiteral("CREATE TABLE ") + general +
                         QStringLiteral(" (driver_name TEXT, block_size NUMBER, bit_block_size NUMBER, "
                                        "support_actions TEXT)")});
    QCOMPARE(customRows(statement.arg(device)),
             QStringList{QStringLiteral("CREATE TABLE ") + device +
                         QStringLiteral(" (pattern TEXT, type NUMBER, start NUMBER, end NUMBER, address_group_index "
                                        "NUMBER, description TEXT, prefix_symbol TEXT, data_size NUMBER, catch_table "
                                        "TEXT, multiple_rule TEXT, base NUMBER, blocksize NUMBER, label_index "
                                        "NUMBER)")});
    QCOMPARE(customRows(QStringLiteral("SELECT * FROM ") + general), QStringList{name + QStringLiteral("|120|960|")});
    QCOMPARE(customRows(QStringLiteral("SELECT * FROM ") + device), QStringList());
    QCOMPARE(customRows(allOfIndex), QStringList{name + QLatin1Char('|') + general + QLatin1Char('|') + device});
    QVERIFY2(isConnectionOpen(), "setting up leaves the connection open");
}

void CustomLabelsSetupTest::setupRefusesNamesThatMakeNoTableName_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a hyphen") << "Simatic S7-300 MPI";
    QTest::newRow("a slash") << "LustBus ServoC/CDE Series";
    QTest::newRow("a full stop") << "Driver 2.0";
    QTest::newRow("a bracket") << "Driver (new)";
    QTest::newRow("a digit at the front") << "3M";
    QTest::newRow("an apostrophe") << "O'Neil";
    QTest::newRow("a tab, which is no blank to be replaced") << "Tab\tname";
}

void CustomLabelsSetupTest::setupRefusesNamesThatMakeNoTableName()
{
    QFETCH(QString, name);
    Driver one = driver(QStringLiteral("other"));
    if (!name.contains(QLatin1Char('\'')))
        one.name = name;
    writeDriverDatabase(driverDatabasePath(), {one});
    const LogRecorder log;
    QVERIFY(!setup(name));
    QCOMPARE(log.lines().size(), 1);
    QVERIFY2(isFailureLine(log.lines().constFirst(), "setupCustomLabel"), qPrintable(log.lines().constFirst()));
    QCOMPARE(customTables(), QStringList{QStringLiteral("table_index")});
    QCOMPARE(customRows(allOfIndex), QStringList());
    QVERIFY(!label::useCustomLabel(name));
    QCOMPARE(inAFreshProcess({QStringLiteral("use ") + name}), QStringLiteral("false"));
}

void CustomLabelsSetupTest::setupTwiceKeepsRowsAndLimits()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Twice"), 120, 960)});
    QVERIFY(setup(QStringLiteral("Twice")));
    changeCustomDatabase({deviceRow("Twice_types_table", "(C)(\\d+)", "C"),
                          QStringLiteral("UPDATE Twice_general_table SET block_size = 7"),
                          QStringLiteral("UPDATE table_index SET general_table = 'x', device_table = ''")});
    QVERIFY(setup(QStringLiteral("Twice")));
    QCOMPARE(customRows(QStringLiteral("SELECT pattern, label_index FROM Twice_types_table")),
             QStringList{QStringLiteral("(C)(\\d+)|77")});
    QCOMPARE(customRows(QStringLiteral("SELECT * FROM Twice_general_table")),
             QStringList{QStringLiteral("Twice|7|960|")});
    QCOMPARE(customRows(allOfIndex), QStringList{QStringLiteral("Twice|Twice_general_table|Twice_types_table")});
    QCOMPARE(customTables().size(), 3);
}

void CustomLabelsSetupTest::setupCompletesWhatIsMissing()
{
    changeCustomDatabase({indexStatement, QStringLiteral("CREATE TABLE Half_types_table (pattern TEXT)"),
                          QStringLiteral("INSERT INTO Half_types_table VALUES ('kept')")});
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Half"), 3, 4)});
    QVERIFY(setup(QStringLiteral("Half")));
    QCOMPARE(customRows(QStringLiteral("SELECT * FROM Half_types_table")), QStringList{QStringLiteral("kept")});
    QCOMPARE(customRows(QStringLiteral("SELECT * FROM Half_general_table")), QStringList{QStringLiteral("Half|3|4|")});
    QCOMPARE(customRows(allOfIndex), QStringList{QStringLiteral("Half|Half_general_table|Half_types_table")});
}

void CustomLabelsSetupTest::setupUpdatesEveryEntryOfTheDriver()
{
    changeCustomDatabase({indexStatement, QStringLiteral("INSERT INTO table_index VALUES ('Doubled', '', '')"),
                          QStringLiteral("INSERT INTO table_index VALUES ('DOUBLED', 'g', 'd')"),
                          QStringLiteral("INSERT INTO table_index VALUES ('Doubled', 'a', 'b')")});
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Doubled"))});
    QVERIFY(setup(QStringLiteral("Doubled")));
    const QString entry = QStringLiteral("Doubled|Doubled_general_table|Doubled_types_table");
    QCOMPARE(customRows(allOfIndex), (QStringList{entry, QStringLiteral("DOUBLED|g|d"), entry}));
}

void CustomLabelsSetupTest::aFailingStepLeavesTheEarlierOnes_data()
{
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<QStringList>("tables");
    const QString general = QStringLiteral("Step_general_table");
    const QString device = QStringLiteral("Step_types_table");
    const QString index = QStringLiteral("table_index");
    QTest::newRow("the general table is there in another case")
        << QStringList{indexStatement, QStringLiteral("CREATE TABLE STEP_general_table (driver_name)")}
        << QStringList{index, QStringLiteral("STEP_general_table")};
    QTest::newRow("the name of the device table is taken by a view")
        << QStringList{indexStatement, QStringLiteral("CREATE VIEW Step_types_table AS SELECT 1")}
        << QStringList{index, device, general};
    QTest::newRow("the list of drivers has no names")
        << QStringList{QStringLiteral("CREATE TABLE table_index (general_table, device_table)")}
        << QStringList{index, general, device};
    QTest::newRow("the list of drivers is a view, which takes no new row")
        << QStringList{QStringLiteral("CREATE VIEW table_index AS SELECT 'x' AS name, '' AS general_table, '' AS "
                                      "device_table")}
        << QStringList{index, general, device};
    QTest::newRow("the list of drivers is a view, which takes no change")
        << QStringList{QStringLiteral("CREATE VIEW table_index AS SELECT 'Step' AS name, '' AS general_table, '' AS "
                                      "device_table")}
        << QStringList{index, general, device};
}

void CustomLabelsSetupTest::aFailingStepLeavesTheEarlierOnes()
{
    QFETCH(QStringList, before);
    QFETCH(QStringList, tables);
    changeCustomDatabase(before);
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Step"), 5, 6)});
    const LogRecorder log;
    QVERIFY(!setup(QStringLiteral("Step")));
    QVERIFY2(isFailureLine(log.lines().constLast(), "setupCustomLabel"), qPrintable(log.lines().constLast()));
    QCOMPARE(customTables(), tables);
    if (tables.contains(QStringLiteral("Step_general_table")))
        QCOMPARE(customRows(QStringLiteral("SELECT * FROM Step_general_table")),
                 QStringList{QStringLiteral("Step|5|6|")});
    QVERIFY(!label::useCustomLabel(QStringLiteral("Step")));
}

void CustomLabelsSetupTest::setupKeepsTheDefaultLabel()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Kept"), 11, 22)});
    QString error = untouched;
    LabelInterface *const standard = label::createLabel(QStringLiteral("Kept"), error);
    QVERIFY(standard);
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Kept"), 33, 44)});
    QVERIFY(setup(QStringLiteral("Kept")));
    QCOMPARE(label::createLabel(QStringLiteral("Kept"), error), standard);
    QCOMPARE(customRows(QStringLiteral("SELECT block_size, bit_block_size FROM Kept_general_table")),
             QStringList{QStringLiteral("11|22")});
}

void CustomLabelsSetupTest::driversAreSetUpApart()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Apart 1"), 1, 2, QStringLiteral("a")),
                                               driver(QStringLiteral("Apart 2"), 3, 4, QStringLiteral("b"))});
    QVERIFY(setup(QStringLiteral("Apart 1")));
    QVERIFY(!label::useCustomLabel(QStringLiteral("Apart 2")));
    QVERIFY(setup(QStringLiteral("Apart 2")));
    QCOMPARE(customRows(allOfIndex),
             (QStringList{QStringLiteral("Apart 1|Apart_1_general_table|Apart_1_types_table"),
                          QStringLiteral("Apart 2|Apart_2_general_table|Apart_2_types_table")}));
    QVERIFY(label::setupDefaultLabel(QStringLiteral("Apart 1")));
    QVERIFY(!label::useCustomLabel(QStringLiteral("Apart 1")));
    QVERIFY(label::useCustomLabel(QStringLiteral("Apart 2")));
    QCOMPARE(customRows(allOfIndex),
             (QStringList{QStringLiteral("Apart 1||"),
                          QStringLiteral("Apart 2|Apart_2_general_table|Apart_2_types_table")}));
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    CustomLabelsSetupTest test;
    return runTestOrSteps(test, argc, argv);
}

#include "tst_customlabels_setup.moc"
