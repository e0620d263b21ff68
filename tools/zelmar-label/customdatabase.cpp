// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "customdatabase.h"

#include "databasebackup.h"
#include "drivername.h"
#include "interruptedwrite.h"
#include "zelmar_label/label_store/customtables.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>

namespace {

const char *const connectionName = "custom database";

} // namespace

CustomDatabase::CustomDatabase(const QString &folder)
    : m_folder(folder.isEmpty() ? QCoreApplication::applicationDirPath() : folder)
    , m_db(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QLatin1String(connectionName)))
{
    // Like the library: beside the program if there is no folder for databases.
    QDir databases(m_folder);
    databases.cd(QStringLiteral("database"));
    m_path = databases.filePath(QStringLiteral("customdrivers"));
    m_db.setDatabaseName(m_path);
}

CustomDatabase::~CustomDatabase()
{
    undo();
    m_db = QSqlDatabase();
    QSqlDatabase::removeDatabase(QLatin1String(connectionName));
}

/// Removes all traces of an uncommitted change.
void CustomDatabase::undo()
{
    const bool isUndone = !m_isChanging || QSqlQuery(m_db).exec(QStringLiteral("ROLLBACK"));
    m_db.close();
    if (m_isChanging && isUndone && m_isNew)
        QFile::remove(m_path);
    if (isUndone && !m_isCommitted && !m_copy.isEmpty())
        QFile::remove(m_copy);
}

QString CustomDatabase::driverDatabase() const
{
    return QFileInfo(m_path).dir().filePath(QStringLiteral("drivers"));
}

bool CustomDatabase::exists() const
{
    return QFileInfo::exists(m_path);
}

bool CustomDatabase::open(const QString &options, QString &error)
{
    if (m_db.isOpen())
        return true;
    undoInterruptedWrite(m_path);
    m_db.setConnectOptions(options);
    if (m_db.open())
        return true;
    error = QStringLiteral("the custom database %1 cannot be opened (%2)").arg(m_path, m_db.lastError().databaseText());
    return false;
}

bool CustomDatabase::execute(const QString &statement, const QVariantList &values, QString &error)
{
    QSqlQuery query(m_db);
    bool isDone = query.prepare(statement);
    for (const QVariant &value : values)
        query.addBindValue(value);
    isDone = isDone && query.exec();
    if (!isDone)
        error = QStringLiteral("%1 cannot be written (%2)").arg(m_path, query.lastError().databaseText());
    return isDone;
}

/// The table's spelling, since SQLite ignores case; empty if there is none.
QString CustomDatabase::tableName(const QString &name) const
{
    const QStringList tables = m_db.tables(QSql::Tables);
    for (const QString &table : tables) {
        if (table.compare(name, Qt::CaseInsensitive) == 0)
            return table;
    }
    return QString();
}

QList<CustomDriver> CustomDatabase::drivers(QString &error)
{
    if (!exists() || !open(QStringLiteral("QSQLITE_OPEN_READONLY"), error))
        return {};
    return readDrivers(error);
}

QList<CustomDriver> CustomDatabase::readDrivers(QString &error)
{
    QList<CustomDriver> drivers;
    QSqlQuery query(m_db);
    if (!query.exec(QStringLiteral("SELECT name, general_table, device_table FROM table_index"))) {
        error = QStringLiteral("%1 is not a custom database (%2)").arg(m_path, query.lastError().databaseText());
        return drivers;
    }
    while (query.next())
        drivers.append(readDriver(query.value(0).toString(), query.value(1).toString(), query.value(2).toString()));
    return drivers;
}

CustomDriver CustomDatabase::readDriver(const QString &name, const QString &generalTable,
                                        const QString &deviceTable) const
{
    CustomDriver driver;
    driver.name = name;
    driver.isInForce = !generalTable.isEmpty() && !deviceTable.isEmpty();
    const label::CustomTables tables(name);
    driver.generalTable = driver.isInForce ? generalTable : tables.general;
    driver.deviceTable = driver.isInForce ? deviceTable : tables.device;
    QSqlQuery query(m_db);
    if (query.exec(QStringLiteral("SELECT COUNT(*) FROM \"%1\"").arg(driver.deviceTable)) && query.next())
        driver.formats = query.value(0).toInt();
    if (query.exec(QStringLiteral("SELECT block_size, bit_block_size FROM \"%1\"").arg(driver.generalTable)) &&
        query.last()) {
        driver.blockSize = query.value(0).toInt();
        driver.bitBlockSize = query.value(1).toInt();
    }
    return driver;
}

bool CustomDatabase::begin(QString &error)
{
    m_isNew = !exists();
    if (!m_isNew && !backUpDatabase(m_path, m_copy, error))
        return false;
    // The file may be open for reading.
    m_db.close();
    if (!open(QString(), error))
        return false;
    // Lock at once, so that no other program changes what is checked here.
    if (!execute(QStringLiteral("BEGIN IMMEDIATE"), {}, error))
        return false;
    m_isChanging = true;
    return hasTable(QStringLiteral("table_index")) || execute(label::CustomTables::createIndex(), {}, error);
}

bool CustomDatabase::commit(QString &error)
{
    if (!execute(QStringLiteral("COMMIT"), {}, error))
        return false;
    m_isChanging = false;
    m_isCommitted = true;
    return true;
}

/// The driver that already has the table; names that differ only in blanks or case would share it.
QString CustomDatabase::otherOwner(const QString &driver, const QString &table, QString &error)
{
    const QList<CustomDriver> all = readDrivers(error);
    for (const CustomDriver &other : all) {
        const bool hasIt = other.generalTable.compare(table, Qt::CaseInsensitive) == 0 ||
                           other.deviceTable.compare(table, Qt::CaseInsensitive) == 0;
        if (hasIt && other.name != driver)
            return other.name;
    }
    return QString();
}

bool CustomDatabase::setUp(const QString &driver, int blockSize, int bitBlockSize, QString &error)
{
    error = driverNameFault(driver);
    const label::CustomTables tables(driver);
    for (const QString &table : {tables.general, tables.device}) {
        const QString owner = error.isEmpty() ? otherOwner(driver, table, error) : QString();
        if (error.isEmpty() && !owner.isEmpty())
            error = QStringLiteral("\"%1\" cannot have a custom label beside \"%2\": both would have the table %3")
                        .arg(driver, owner, table);
        else if (error.isEmpty() && !tableName(table).isEmpty() && !hasTable(table))
            error = QStringLiteral("%1: table %2 belongs to another program").arg(m_path, tableName(table));
    }
    if (!error.isEmpty())
        return false;
    if (!hasTable(tables.general) &&
        !(execute(tables.createGeneral(), {}, error) &&
          execute(QStringLiteral("INSERT INTO %1 (driver_name, block_size, bit_block_size, support_actions) VALUES (?, "
                                 "?, ?, '')")
                      .arg(tables.general),
                  {driver, blockSize, bitBlockSize}, error)))
        return false;
    if (!hasTable(tables.device) && !execute(tables.createDevice(), {}, error))
        return false;
    QSqlQuery query(m_db);
    query.prepare(QStringLiteral("SELECT 1 FROM table_index WHERE name = ?"));
    query.addBindValue(driver);
    const bool isIndexed = query.exec() && query.next();
    query.finish();
    return execute(isIndexed
                       ? QStringLiteral("UPDATE table_index SET general_table = ?, device_table = ? WHERE name = ?")
                       : QStringLiteral("INSERT INTO table_index (general_table, device_table, name) VALUES (?, ?, ?)"),
                   {tables.general, tables.device, driver}, error);
}

bool CustomDatabase::setDefault(const QString &driver, QString &error)
{
    return execute(QStringLiteral("UPDATE table_index SET general_table = '', device_table = '' WHERE name = ?"),
                   {driver}, error);
}

bool CustomDatabase::drop(const QString &driver, QString &error)
{
    const QList<CustomDriver> all = readDrivers(error);
    for (const CustomDriver &one : all) {
        if (one.name != driver)
            continue;
        for (const QString &table : {one.generalTable, one.deviceTable}) {
            const bool isOwn = !tableName(table).isEmpty() && otherOwner(driver, table, error).isEmpty();
            if (isOwn && !execute(QStringLiteral("DROP TABLE \"%1\"").arg(table), {}, error))
                return false;
        }
    }
    return error.isEmpty() && execute(QStringLiteral("DELETE FROM table_index WHERE name = ?"), {driver}, error);
}
