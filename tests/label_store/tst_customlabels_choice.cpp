// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/customlabelstest.h"
#include "support/logrecorder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QtTest>

using label::LabelInterface;

/// Tests which of its two labels a driver uses, and the switch between them.
class CustomLabelsChoiceTest : public CustomLabelsTest
{
    Q_OBJECT

private Q_SLOTS:
    void setupShowsWithoutReadingTheFile();
    void defaultShowsWithoutReadingTheFile();
    void defaultKeepsTheTables();
    void defaultOfADriverThatWasNeverSetUp();
    void defaultFailsWhereTheTableCannotBeWritten_data();
    void defaultFailsWhereTheTableCannotBeWritten();

    void useAsTheFileTells_data();
    void useAsTheFileTells();
    void useIsReadOnce();
    void useAfterAFailedOpening();
    void useOfAFileThatCannotBeRead();
    void useFollowsSetupBeforeAndAfterTheFirstLook();
};

void CustomLabelsChoiceTest::setupShowsWithoutReadingTheFile()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Shown"))});
    QVERIFY(!label::useCustomLabel(QStringLiteral("Shown")));
    QVERIFY(setup(QStringLiteral("Shown")));
    label::removeCustomLabelDatabase();
    QVERIFY(QFile::remove(customPath()));
    QVERIFY(label::useCustomLabel(QStringLiteral("Shown")));
    QVERIFY(!QFileInfo::exists(customPath()));
    QVERIFY(!QSqlDatabase::contains(customConnection));
}

void CustomLabelsChoiceTest::defaultShowsWithoutReadingTheFile()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("Back"))});
    QVERIFY(setup(QStringLiteral("Back")));
    QVERIFY(label::setupDefaultLabel(QStringLiteral("Back")));
    QVERIFY2(isConnectionOpen(), "switching back leaves the connection open");
    label::removeCustomLabelDatabase();
    QVERIFY(QFile::remove(customPath()));
    QVERIFY(!label::useCustomLabel(QStringLiteral("Back")));
    QVERIFY(!QFileInfo::exists(customPath()));
}

void CustomLabelsChoiceTest::defaultKeepsTheTables()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("There and back"), 120, 960)});
    QVERIFY(setup(QStringLiteral("There and back")));
    changeCustomDatabase({deviceRow("There_and_back_types_table", "(C)(\\d+)", "C")});
    const LogRecorder log;
    QVERIFY(label::setupDefaultLabel(QStringLiteral("There and back")));
    QCOMPARE(log.lines(), QStringList());
    QCOMPARE(customRows(allOfIndex), QStringList{QStringLiteral("There and back||")});
    QCOMPARE(customRows(QStringLiteral("SELECT pattern FROM There_and_back_types_table")),
             QStringList{QStringLiteral("(C)(\\d+)")});
    QCOMPARE(inAFreshProcess({QStringLiteral("use There and back")}), QStringLiteral("false"));

    QVERIFY(setup(QStringLiteral("There and back")));
    QVERIFY(label::useCustomLabel(QStringLiteral("There and back")));
    LabelInterface *const custom = build(QStringLiteral("There and back"));
    QVERIFY(custom);
    QCOMPARE(custom->prefixSymbols(), QStringList{QStringLiteral("C")});
}

void CustomLabelsChoiceTest::defaultOfADriverThatWasNeverSetUp()
{
    QDir().mkpath(databaseFolder());
    const LogRecorder log;
    QVERIFY(label::setupDefaultLabel(QStringLiteral("Never")));
    QVERIFY(!label::useCustomLabel(QStringLiteral("Never")));
    QCOMPARE(customRows(allOfIndex), QStringList());
    QCOMPARE(log.lines(), QStringList());
}

void CustomLabelsChoiceTest::defaultFailsWhereTheTableCannotBeWritten_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("statement");
    QTest::newRow("the list of drivers is a view")
        << "View"
        << "CREATE VIEW table_index AS SELECT 'View' AS name, 'g' AS general_table, 'd' AS device_table";
    QTest::newRow("the list of drivers has no device tables") << "Narrow"
                                                              << "CREATE TABLE table_index (name, general_table)";
}

void CustomLabelsChoiceTest::defaultFailsWhereTheTableCannotBeWritten()
{
    QFETCH(QString, name);
    QFETCH(QString, statement);
    changeCustomDatabase({statement});
    const LogRecorder log;
    QVERIFY(!label::setupDefaultLabel(name));
    QCOMPARE(log.lines().size(), 1);
    QVERIFY2(isFailureLine(log.lines().constFirst(), "setupDefaultLabel"), qPrintable(log.lines().constFirst()));
}

void CustomLabelsChoiceTest::useAsTheFileTells_data()
{
    QTest::addColumn<QStringList>("entries");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    const QString custom = QStringLiteral("'A', 'g', 'd'");
    QTest::newRow("both table names") << QStringList{custom} << "A"
                                      << "true";
    QTest::newRow("tables that do not exist are not looked for")
        << QStringList{QStringLiteral("'A', 'none', 'none'")} << "A"
        << "true";
    QTest::newRow("two empty table names") << QStringList{QStringLiteral("'A', '', ''")} << "A"
                                           << "false";
    QTest::newRow("no general table") << QStringList{QStringLiteral("'A', '', 'd'")} << "A"
                                      << "false";
    QTest::newRow("no device table") << QStringList{QStringLiteral("'A', 'g', ''")} << "A"
                                     << "false";
    QTest::newRow("NULL for the table names") << QStringList{QStringLiteral("'A', NULL, NULL")} << "A"
                                              << "false";
    QTest::newRow("a driver that is not in the list") << QStringList{custom} << "B"
                                                      << "false";
    QTest::newRow("another case") << QStringList{custom} << "a"
                                  << "false";
    QTest::newRow("an empty list") << QStringList() << "A"
                                   << "false";
    QTest::newRow("of two entries the last one counts, custom")
        << QStringList{QStringLiteral("'A', '', ''"), custom} << "A"
        << "true";
    QTest::newRow("of two entries the last one counts, default")
        << QStringList{custom, QStringLiteral("'A', '', ''")} << "A"
        << "false";
    QTest::newRow("a name with an apostrophe, which is no part of the statement")
        << QStringList{QStringLiteral("'O''Neil', 'g', 'd'")} << "O'Neil"
        << "true";
}

void CustomLabelsChoiceTest::useAsTheFileTells()
{
    QFETCH(QStringList, entries);
    QFETCH(QString, name);
    QFETCH(QString, expected);
    QStringList statements{indexStatement};
    for (const QString &entry : qAsConst(entries))
        statements.append(QStringLiteral("INSERT INTO table_index VALUES (") + entry + QLatin1Char(')'));
    changeCustomDatabase(statements);
    QCOMPARE(inAFreshProcess({QStringLiteral("use ") + name}), expected);
}

void CustomLabelsChoiceTest::useIsReadOnce()
{
    changeCustomDatabase({indexStatement, QStringLiteral("INSERT INTO table_index VALUES ('A', 'g', 'd')")});
    QVERIFY(QFile::copy(customPath(), customPath() + QStringLiteral(".other")));
    changeCustomDatabase({QStringLiteral("UPDATE table_index SET general_table = ''")});
    const QString other = customPath() + QStringLiteral(".other");
    QCOMPARE(
        inAFreshProcess({QStringLiteral("use A"), QStringLiteral("remove ") + customPath(),
                         QStringLiteral("rename ") + other + QLatin1Char('>') + customPath(), QStringLiteral("use A")}),
        QStringLiteral("false true true false"));
    QCOMPARE(inAFreshProcess({QStringLiteral("use A")}), QStringLiteral("true"));
}

void CustomLabelsChoiceTest::useAfterAFailedOpening()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("A"))});
    const QString other = customPath() + QStringLiteral(".other");
    changeCustomDatabase({indexStatement, QStringLiteral("INSERT INTO table_index VALUES ('B', 'g', 'd')")});
    QVERIFY(QFile::rename(customPath(), other));
    QVERIFY(QDir().mkpath(customPath()));
    QCOMPARE(inAFreshProcess({QStringLiteral("use B"), QStringLiteral("remove ") + customPath(),
                              QStringLiteral("rename ") + other + QLatin1Char('>') + customPath(),
                              QStringLiteral("use B"), QStringLiteral("setup A"), QStringLiteral("use A"),
                              QStringLiteral("use B"), QStringLiteral("default A"), QStringLiteral("use A")}),
             QStringLiteral("false true true false true true false true false"));
    QCOMPARE(inAFreshProcess({QStringLiteral("use B")}), QStringLiteral("true"));
}

void CustomLabelsChoiceTest::useOfAFileThatCannotBeRead()
{
    QDir().mkpath(databaseFolder());
    QFile file(customPath());
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write(QByteArray(4096, 'x')) == 4096);
    file.close();
    QCOMPARE(inAFreshProcess({QStringLiteral("use A"), QStringLiteral("setup A"), QStringLiteral("use A"),
                              QStringLiteral("default A")}),
             QStringLiteral("false false false false"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray(4096, 'x'));
}

void CustomLabelsChoiceTest::useFollowsSetupBeforeAndAfterTheFirstLook()
{
    writeDriverDatabase(driverDatabasePath(), {driver(QStringLiteral("A"))});
    QCOMPARE(inAFreshProcess({QStringLiteral("setup A"), QStringLiteral("use A"), QStringLiteral("default A"),
                              QStringLiteral("use A"), QStringLiteral("setup A"), QStringLiteral("use A")}),
             QStringLiteral("true true true false true true"));
    QCOMPARE(inAFreshProcess({QStringLiteral("use A"), QStringLiteral("use B"), QStringLiteral("default A"),
                              QStringLiteral("use A")}),
             QStringLiteral("true false true false"));
    QCOMPARE(inAFreshProcess({QStringLiteral("use A")}), QStringLiteral("false"));
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    CustomLabelsChoiceTest test;
    return runTestOrSteps(test, argc, argv);
}

#include "tst_customlabels_choice.moc"
