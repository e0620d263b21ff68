// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/shippeddriverstest.h"

#include "support/shippedfiles.h"
#include "zelmar_label/label_store/labelstore.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

using namespace label;

namespace shipped {

namespace {

const QString connection = QStringLiteral("shipped drivers");

QList<DriverSample> readSamples(const QString &stem)
{
    QList<DriverFileError> errors;
    const QList<DriverSample> samples =
        readDriverSamples(sourceFolder() + QLatin1String("/samples/") + stem + QLatin1String(".tsv"), errors);
    if (!errors.isEmpty())
        qFatal("%s", qPrintable(errors.first().toString()));
    return samples;
}

QList<ShippedDriver> readDrivers()
{
    QList<ShippedDriver> drivers;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        db.setDatabaseName(runtimeFolder() + QLatin1String("/database/drivers"));
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        QSqlQuery query(db);
        if (!db.open() || !query.exec(QStringLiteral("SELECT name, general_table, device_table FROM table_index")))
            qFatal("%s", qPrintable(db.lastError().text()));
        while (query.next()) {
            ShippedDriver driver;
            driver.name = query.value(0).toString();
            driver.stem = query.value(2).toString().section(QLatin1String("_types"), 0, 0);
            QSqlQuery limits(db);
            if (!limits.exec(QStringLiteral("SELECT block_size, bit_block_size FROM ") + query.value(1).toString()) ||
                !limits.next())
                qFatal("no limits of %s", qPrintable(driver.name));
            driver.blockSize = limits.value(0).toInt();
            driver.bitBlockSize = limits.value(1).toInt();
            driver.rows = readRows(db, query.value(2).toString());
            driver.samples = readSamples(driver.stem);
            drivers.append(driver);
        }
    }
    QSqlDatabase::removeDatabase(connection);
    return drivers;
}

} // namespace

QList<DeviceRow> readRows(const QSqlDatabase &db, const QString &table)
{
    QList<DeviceRow> rows;
    QSqlQuery query(db);
    if (!query.exec(QStringLiteral("SELECT * FROM ") + table))
        qFatal("%s", qPrintable(query.lastError().text()));
    while (query.next()) {
        const QSqlRecord record = query.record();
        const auto text = [&record](const char *column) { return record.value(QLatin1String(column)).toString(); };
        const auto number = [&record](const char *column) { return record.value(QLatin1String(column)).toInt(); };
        rows.append({text("pattern"), number("type"), number("address_group_index"), text("description"),
                     text("prefix_symbol"), text("start"), text("end"), number("data_size"), text("multiple_rule"),
                     number("base"), number("blocksize"), text("continue")});
    }
    return rows;
}

LabelLoader *labelOf(const QString &driver)
{
    QString error;
    LabelInterface *made = createLabel(driver, error);
    if (!made)
        qFatal("%s: %s", qPrintable(driver), qPrintable(error));
    return static_cast<LabelLoader *>(made);
}

int filterOf(int rowType)
{
    return rowType == CommunicatorCommand::Bit ? bitRow : registerRow;
}

void ShippedDriversTest::initTestCase()
{
    bringDriversHere();
    m_drivers = readDrivers();
}

void ShippedDriversTest::driverRows() const
{
    QTest::addColumn<int>("place");
    for (int i = 0; i < m_drivers.size(); ++i)
        QTest::newRow(qPrintable(m_drivers.at(i).name)) << i;
}

const ShippedDriver &ShippedDriversTest::driver() const
{
    QFETCH(int, place);
    return m_drivers.at(place);
}

} // namespace shipped
