// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "customdatabase.h"

#include "tools/driver-files/driverfile.h"

#include "zelmar_label/label_store/labelreader.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QSqlQuery>
#include <QSqlRecord>

#include <memory>

namespace {

QString continueColumn()
{
    return QStringLiteral("continue");
}

/// A value that is stored as text. SQLite converts a text in the limit columns to a number if possible: "007" to 7, and
/// the hexadecimal "1E3" to 1000. It does not convert blobs.
QVariant keptText(const QString &text)
{
    bool isNumber = false;
    text.toDouble(&isNumber);
    if (isNumber && text != QString::number(text.toLongLong()))
        return text.toUtf8();
    return text;
}

QVariant valueOf(const DriverText &driver, const DriverRow &row, const QString &column)
{
    const QString text = driver.field(row, column);
    if (column == QLatin1String("start") || column == QLatin1String("end"))
        return keptText(text);
    return isNumberColumn(column) ? QVariant(text.toInt()) : QVariant(text);
}

bool mustContinue(const DriverText &driver)
{
    for (const DriverRow &row : driver.rows) {
        if (driver.field(row, continueColumn()) != QLatin1String("N"))
            return true;
    }
    return false;
}

} // namespace

bool CustomDatabase::insertRows(const DriverText &driver, const QString &table, QString &error)
{
    // New tables lack this column, which is then read as "N".
    QStringList columns = driverColumns();
    const bool hasContinue = m_db.record(table).contains(continueColumn());
    if (!hasContinue && !mustContinue(driver))
        columns.removeAll(continueColumn());
    else if (!hasContinue &&
             !execute(QStringLiteral("ALTER TABLE \"%1\" ADD COLUMN \"continue\" TEXT").arg(table), {}, error))
        return false;
    QStringList places;
    for (int index = 0; index <= columns.size(); ++index)
        places.append(QStringLiteral("?"));
    const QString statement = QStringLiteral("INSERT INTO \"%1\" (\"%2\", label_index) VALUES (%3)")
                                  .arg(table, columns.join(QLatin1String("\", \"")), places.join(QLatin1Char(',')));
    for (int index = 0; index < driver.rows.size(); ++index) {
        QVariantList values;
        for (const QString &column : qAsConst(columns))
            values.append(valueOf(driver, driver.rows.at(index), column));
        values.append(index);
        if (!execute(statement, values, error))
            return false;
    }
    return true;
}

bool CustomDatabase::fill(const DriverText &driver, QString &error)
{
    const QList<CustomDriver> all = readDrivers(error);
    for (const CustomDriver &one : all) {
        if (one.name != driver.name || !one.isInForce)
            continue;
        return execute(QStringLiteral("DELETE FROM \"%1\"").arg(one.deviceTable), {}, error) &&
               insertRows(driver, one.deviceTable, error) &&
               execute(QStringLiteral("UPDATE \"%1\" SET block_size = ?, bit_block_size = ?").arg(one.generalTable),
                       {driver.blockSize.toInt(), driver.bitBlockSize.toInt()}, error) &&
               holds(driver, error);
    }
    error = QStringLiteral("\"%1\" has no custom label in %2").arg(driver.name, m_path);
    return false;
}

/// Uses the library's reader, which skips rows silently.
bool CustomDatabase::holds(const DriverText &driver, QString &error) const
{
    const std::unique_ptr<label::LabelLoader> label(label::readLabel(m_db, driver.name, error));
    if (!label)
        return false;
    bool isSame = label->deviceTypesTable().countFormatters() == driver.rows.size() &&
                  label->getBlockCommandMaxSize() == driver.blockSize.toInt() &&
                  label->getBitCommandMaxSize() == driver.bitBlockSize.toInt();
    for (int index = 0; isSame && index < driver.rows.size(); ++index) {
        const label::CommandFormatter &row = *label->deviceTypesTable().formatterAt(index);
        const DriverRow &wanted = driver.rows.at(index);
        isSame = row.start() == driver.field(wanted, QStringLiteral("start")) &&
                 row.end() == driver.field(wanted, QStringLiteral("end")) &&
                 row.formatString() == driver.field(wanted, QStringLiteral("description"));
    }
    if (!isSame)
        error = QStringLiteral("the tables of \"%1\" in %2 did not store the new values").arg(driver.name, m_path);
    return isSame;
}
