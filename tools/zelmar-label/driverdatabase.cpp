// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "driverdatabase.h"

#include "interruptedwrite.h"

#include "zelmar_label/label_store/labelreader.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QVariant>

#include <algorithm>
#include <numeric>
#include <vector>

namespace {

const char *const connectionName = "driver database";

QString quoted(const QString &text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

/// Least number of insertions, deletions and replacements of characters to change one text into the other.
int editDistance(const QString &left, const QString &right)
{
    std::vector<int> distances(static_cast<std::size_t>(right.size()) + 1);
    std::iota(distances.begin(), distances.end(), 0);
    for (int row = 0; row < left.size(); ++row) {
        int diagonal = distances[0];
        distances[0] = row + 1;
        for (int column = 0; column < right.size(); ++column) {
            const int changed = diagonal + (left.at(row) == right.at(column) ? 0 : 1);
            diagonal = distances[column + 1];
            distances[column + 1] = std::min({changed, distances[column] + 1, diagonal + 1});
        }
    }
    return distances.back();
}

bool isNear(const QString &asked, const QString &name)
{
    const QString left = asked.toLower();
    const QString right = name.toLower();
    if (left.isEmpty())
        return false;
    return right.contains(left) || left.contains(right) || editDistance(left, right) <= qMax(2, right.size() / 4);
}

QString nearNames(const QString &asked, const QStringList &names)
{
    QStringList near;
    for (const QString &name : names) {
        if (isNear(asked, name))
            near.append(quoted(name));
    }
    return near.join(QLatin1String(", "));
}

/// A name that can be used in a statement without quotes, as the library does.
int countRows(const QSqlDatabase &db, const QString &table)
{
    QSqlQuery query(db);
    return query.exec(QStringLiteral("SELECT COUNT(*) FROM %1").arg(table)) && query.next() ? query.value(0).toInt()
                                                                                            : 0;
}

} // namespace

DriverDatabase::DriverDatabase(const QString &path)
    : m_path(path.isEmpty() ? QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("database/drivers"))
                            : path)
    , m_db(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QLatin1String(connectionName)))
{
    m_db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
    m_db.setDatabaseName(m_path);
}

DriverDatabase::~DriverDatabase()
{
    m_db = QSqlDatabase();
    QSqlDatabase::removeDatabase(QLatin1String(connectionName));
}

bool DriverDatabase::isReadable(QString &error) const
{
    if (!QFileInfo(m_path).isFile()) {
        error = QStringLiteral("there is no driver database at %1; name one with --database FILE").arg(m_path);
        return false;
    }
    undoInterruptedWrite(m_path);
    QSqlDatabase db = m_db;
    if (db.isOpen() || db.open())
        return true;
    error = QStringLiteral("the driver database %1 cannot be opened (%2); check file permissions")
                .arg(m_path, db.lastError().databaseText());
    return false;
}

QList<DriverDatabase::Driver> DriverDatabase::drivers(QString &error) const
{
    QList<Driver> drivers;
    if (!isReadable(error))
        return drivers;
    QSqlQuery query(m_db);
    if (!query.exec(QStringLiteral("SELECT name, general_table, device_table FROM table_index"))) {
        error = QStringLiteral("%1 is not a driver database (%2); name another with --database FILE")
                    .arg(m_path, query.lastError().databaseText());
        return drivers;
    }
    while (query.next())
        drivers.append(summary(query.value(0).toString(), query.value(1).toString(), query.value(2).toString()));
    if (drivers.isEmpty())
        error = QStringLiteral("the driver database %1 has no drivers; name another with --database FILE").arg(m_path);
    return drivers;
}

DriverDatabase::Driver DriverDatabase::summary(const QString &name, const QString &generalTable,
                                               const QString &deviceTable) const
{
    Driver driver;
    driver.name = name;
    driver.formats = countRows(m_db, deviceTable);
    QSqlQuery query(m_db);
    if (!query.exec(QStringLiteral("SELECT block_size, bit_block_size FROM %1").arg(generalTable)))
        return driver;
    while (query.next()) {
        driver.blockSize = query.value(0).toInt();
        driver.bitBlockSize = query.value(1).toInt();
    }
    return driver;
}

bool DriverDatabase::readNames(QStringList &names, QString &error) const
{
    if (!isReadable(error))
        return false;
    QSqlQuery query(m_db);
    if (!query.exec(QStringLiteral("SELECT name FROM table_index"))) {
        error = QStringLiteral("%1 is not a driver database (%2); name another with --database FILE")
                    .arg(m_path, query.lastError().databaseText());
        return false;
    }
    while (query.next())
        names.append(query.value(0).toString());
    return true;
}

std::unique_ptr<label::LabelLoader> DriverDatabase::read(const QString &driver, QString &error) const
{
    QStringList names;
    if (!readNames(names, error))
        return nullptr;
    if (!names.contains(driver)) {
        const QString near = nearNames(driver, names);
        error =
            QStringLiteral("there is no driver %1 in %2; %3\"zelmar-label drivers\" lists all")
                .arg(quoted(driver), m_path, near.isEmpty() ? QString() : QStringLiteral("near names: %1; ").arg(near));
        return nullptr;
    }
    QString reason;
    std::unique_ptr<label::LabelLoader> label(label::readLabel(m_db, driver, reason));
    if (!label) {
        error = QStringLiteral("driver %1 cannot be read from %2: %3").arg(quoted(driver), m_path, reason);
        return nullptr;
    }
    if (label->countType(0) == 0) {
        error = QStringLiteral("driver %1 has no formats in %2: its device table is missing, empty or lacks a column")
                    .arg(quoted(driver), m_path);
        return nullptr;
    }
    return label;
}
