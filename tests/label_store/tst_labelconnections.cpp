// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"

#include "zelmar_label/label_store/labelstore.h"
#include "zelmar_label/label_table/labelinterface.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QPointer>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlQuery>
#include <QVariant>
#include <QtTest>

#include <thread>

namespace {

Driver driver(const QString &name, const QString &table, int blockSize)
{
    Driver driver;
    driver.name = name;
    driver.rows = {Row()};
    driver.blockSize = blockSize;
    driver.generalTable = table + "_general";
    driver.deviceTable = table + "_types";
    return driver;
}

QString customDatabasePath()
{
    return QDir(QCoreApplication::applicationDirPath()).filePath("database/customdrivers");
}

/// The first column of a statement on the custom database.
QStringList customRows(const QString &statement)
{
    QSqlDatabase db;
    if (!label::createCustomDatabaseConnection(db))
        return {"no database"};
    QStringList rows;
    QSqlQuery query(db);
    query.exec(statement);
    while (query.next())
        rows.append(query.value(0).toString());
    return rows;
}

/// Runs `task` to its end on a new thread.
template<typename Task>
void onAnotherThread(Task task)
{
    std::thread thread(task);
    thread.join();
}

int blockSizeOf(const QString &name)
{
    QString error;
    label::LabelInterface *const device = label::createLabel(name, error);
    return device ? device->getBlockCommandMaxSize() : -1;
}

} // namespace

/// Tests which connection the label store uses, and how it handles driver names.
class LabelConnectionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aConnectionOfTheCallerIsUsed_data();
    void aConnectionOfTheCallerIsUsed();
    void aConnectionInPlaceOfOursIsUsed_data();
    void aConnectionInPlaceOfOursIsUsed();
    void aConnectionOfAnotherThreadIsNotReplaced();
    void ourConnectionFollowsTheThread();

    void namesThatNoDriverHas_data();
    void namesThatNoDriverHas();
    void aDriverWithAnApostrophe();
    void namesThatAreNoTables_data();
    void namesThatAreNoTables();
    void switchingBackIsForOneDriver();
    void ordinaryNamesSeeNoChange();
};

void LabelConnectionsTest::init()
{
    QFile::remove(customDatabasePath());
    writeDriverDatabase(driverDatabasePath(),
                        {driver("One", "one", 11), driver("Two Wires", "two", 22), driver("Bob's PLC", "three", 33)});
}

void LabelConnectionsTest::cleanup()
{
    for (const QString name : {"One", "Two Wires", "Bob's PLC", "x"}) {
        label::freeLabel(name);
        label::freeCustomLabel(name);
        label::setupDefaultLabel(name);
    }
    for (const QString &name : QSqlDatabase::connectionNames())
        QSqlDatabase::removeDatabase(name);
}

void LabelConnectionsTest::aConnectionOfTheCallerIsUsed_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("the drivers") << "drivers";
    QTest::newRow("the custom drivers") << "customdrivers";
}

/// The caller's connection keeps its options; a new connection would not have them.
void LabelConnectionsTest::aConnectionOfTheCallerIsUsed()
{
    QFETCH(QString, name);
    {
        QSqlDatabase own = QSqlDatabase::addDatabase("QSQLITE", name);
        own.setConnectOptions("QSQLITE_BUSY_TIMEOUT=1234");
    }
    QSqlDatabase db;
    QVERIFY(name == "drivers" ? label::createDatabaseConnection(db) : label::createCustomDatabaseConnection(db));
    QCOMPARE(db.connectionName(), name);
    QCOMPARE(db.connectOptions(), QString("QSQLITE_BUSY_TIMEOUT=1234"));
}

void LabelConnectionsTest::aConnectionInPlaceOfOursIsUsed_data()
{
    aConnectionOfTheCallerIsUsed_data();
}

/// The store registered the name on another thread; then the caller replaced it.
void LabelConnectionsTest::aConnectionInPlaceOfOursIsUsed()
{
    QFETCH(QString, name);
    onAnotherThread([&name] {
        QSqlDatabase db;
        if (name == "drivers")
            label::createDatabaseConnection(db);
        else
            label::createCustomDatabaseConnection(db);
    });
    QVERIFY(QSqlDatabase::contains(name));
    QSqlDatabase::removeDatabase(name);
    aConnectionOfTheCallerIsUsed();
}

/// A connection that the caller registered on another thread does not change; Qt does not return it on this one.
void LabelConnectionsTest::aConnectionOfAnotherThreadIsNotReplaced()
{
    QPointer<QSqlDriver> theirs;
    onAnotherThread([&theirs] { theirs = QSqlDatabase::addDatabase("QSQLITE", "drivers").driver(); });
    const LogRecorder log;
    QString error;
    QVERIFY(!label::createLabel("One", error));
    QCOMPARE(error, QString("Can't create connection."));
    QVERIFY(theirs);
    QVERIFY(log.lines().last().startsWith("\"Can't open label database "));
}

void LabelConnectionsTest::ourConnectionFollowsTheThread()
{
    int there = 0;
    onAnotherThread([&there] { there = blockSizeOf("One"); });
    QCOMPARE(there, 11);
    const LogRecorder log;
    QCOMPARE(blockSizeOf("Two Wires"), 22);
    for (const QString &line : log.lines())
        QVERIFY2(!line.startsWith("warning"), qPrintable(line));
}

void LabelConnectionsTest::namesThatNoDriverHas_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("one that would hold for every row") << "x' OR 'a'='a";
    QTest::newRow("one that would choose a row") << "x' OR name = 'One";
    QTest::newRow("an apostrophe") << "x'";
    QTest::newRow("a comment") << "One' --";
    QTest::newRow("a zero character") << QString("One") + QChar(0);
    QTest::newRow("a null text") << QString();
    QTest::newRow("an empty text") << "";
    QTest::newRow("another case") << "one";
}

void LabelConnectionsTest::namesThatNoDriverHas()
{
    QFETCH(QString, name);
    for (int round = 0; round < 2; ++round) {
        QString error;
        QVERIFY(!label::createLabel(name, error));
        QCOMPARE(error, QString("Cant found driver table in label."));
        QVERIFY(!label::createCustomLabel(name, error));
        QCOMPARE(error, QString("Cant found driver table in label."));
        QVERIFY(!label::useCustomLabel(name));
    }
}

void LabelConnectionsTest::aDriverWithAnApostrophe()
{
    QCOMPARE(blockSizeOf("Bob's PLC"), 33);
    QVERIFY(label::setupDefaultLabel("Bob's PLC"));
    // Its table names would contain the apostrophe.
    QVERIFY(!label::setupCustomLabel("Bob's PLC"));
    QVERIFY(!label::useCustomLabel("Bob's PLC"));
}

void LabelConnectionsTest::namesThatAreNoTables_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a table and a comment") << "a(x)--";
    QTest::newRow("two statements") << "a(x);DROP/**/TABLE/**/table_index;--";
    QTest::newRow("a comment in the middle") << "a/**/";
    QTest::newRow("a table of the connection") << "temp.a";
    QTest::newRow("quotes of identifiers") << "\"a";
    QTest::newRow("brackets of identifiers") << "[a";
    QTest::newRow("a hyphen") << "Simatic S7-300 MPI";
    QTest::newRow("a slash") << "LustBus ServoC/CDE Series";
    QTest::newRow("a zero character") << QString("a") + QChar(0);
}

void LabelConnectionsTest::namesThatAreNoTables()
{
    QFETCH(QString, name);
    const QString tables = "SELECT name FROM sqlite_master UNION ALL SELECT name FROM sqlite_temp_master";
    QCOMPARE(customRows(tables), QStringList("table_index"));
    QVERIFY(!label::setupCustomLabel(name));
    QCOMPARE(customRows(tables), QStringList("table_index"));
    QCOMPARE(customRows("SELECT name FROM table_index"), QStringList());
    QVERIFY(!label::useCustomLabel(name));
}

void LabelConnectionsTest::switchingBackIsForOneDriver()
{
    QVERIFY(label::setupCustomLabel("One"));
    QVERIFY(label::setupCustomLabel("Two Wires"));
    for (const QString name : {"x' OR 'a'='a", "x' OR 1 --", "One' --"})
        QVERIFY(label::setupDefaultLabel(name));
    QCOMPARE(customRows("SELECT general_table FROM table_index"),
             QStringList({"One_general_table", "Two_Wires_general_table"}));
    QVERIFY(label::setupDefaultLabel("One"));
    QCOMPARE(customRows("SELECT general_table FROM table_index"), QStringList({"", "Two_Wires_general_table"}));
    QVERIFY(label::setupCustomLabel("One"));
    QCOMPARE(customRows("SELECT driver_name || block_size || '|' || typeof(block_size) FROM One_general_table"),
             QStringList("One11|integer"));
    QCOMPARE(customRows("SELECT count(*) FROM table_index"), QStringList("2"));
}

/// Compares with the statement that contains the name.
void LabelConnectionsTest::ordinaryNamesSeeNoChange()
{
    const QString characters = QString::fromUtf8("abAB019 _-./%#ä漢");
    QList<Driver> drivers;
    QRandomGenerator random(7);
    const auto anyName = [&random, &characters] {
        QString name;
        for (quint32 length = random.bounded(3U); length > 0; --length)
            name += characters.at(int(random.bounded(characters.size())));
        return name;
    };
    for (int number = 0; number < 60; ++number)
        drivers.append(driver(anyName(), QString("t%1").arg(number), 100 + number));
    writeDriverDatabase(driverDatabasePath(), drivers);
    int found = 0;
    for (int round = 0; round < 300; ++round) {
        const QString name = anyName();
        int expected = -1;
        {
            QSqlDatabase plain = QSqlDatabase::addDatabase("QSQLITE", "plain");
            plain.setDatabaseName(driverDatabasePath());
            QVERIFY(plain.open());
            QSqlQuery query(plain);
            QVERIFY(query.exec(QString("SELECT * FROM table_index WHERE name = '%1'").arg(name)));
            while (query.next())
                expected = query.value("general_table").toString().section('_', 0, 0).mid(1).toInt() + 100;
        }
        QSqlDatabase::removeDatabase("plain");
        QCOMPARE(blockSizeOf(name), expected);
        found += expected == -1 ? 0 : 1;
        label::freeLabel(name);
    }
    QVERIFY(found > 20);
}

QTEST_GUILESS_MAIN(LabelConnectionsTest)
#include "tst_labelconnections.moc"
