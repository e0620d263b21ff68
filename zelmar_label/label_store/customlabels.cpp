// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/mutexlocker_p.h"
#include "zelmar_label/label_store/boundtext_p.h"
#include "zelmar_label/label_store/customtables.h"
#include "zelmar_label/label_store/labelcache_p.h"
#include "zelmar_label/label_store/labelconnection_p.h"
#include "zelmar_label/label_store/labelstore.h"
#include "zelmar_label/label_table/labelinterface.h"

#include <QDebug>
#include <QMap>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

namespace label {

namespace {

QString connectionName()
{
    return QStringLiteral("customdrivers");
}

LabelCache &customLabelCache()
{
    static LabelCache cache;
    return cache;
}

LabelCache::Entry findOrRead(const QString &name, QString &errorMessage)
{
    return customLabelCache().findOrRead(name, errorMessage, createCustomDatabaseConnection, removeCustomLabelDatabase);
}

/// The drivers that use their custom label, from the first reading of the custom database.
struct CustomLabelUse
{
    QMap<QString, bool> byDriver;
    bool isLoaded = false;
};

CustomLabelUse &customLabelUse()
{
    static CustomLabelUse use;
    return use;
}

bool hasTable(const QSqlDatabase &db, const QString &table)
{
    return db.tables(QSql::Tables).contains(table, Qt::CaseSensitive);
}

void loadCustomLabelUse(CustomLabelUse &use)
{
    use.isLoaded = true;
    QSqlDatabase db;
    if (!createCustomDatabaseConnection(db))
        return;
    QSqlQuery query(db);
    if (!query.exec(QStringLiteral("SELECT name, general_table, device_table FROM table_index")))
        return;
    while (query.next()) {
        const bool hasBothTables = !query.value(1).toString().isEmpty() && !query.value(2).toString().isEmpty();
        use.byDriver.insert(query.value(0).toString(), hasBothTables);
    }
}

/// Runs `statement` with `values` for its "?".
bool runs(QSqlQuery &query, const QString &statement, const QVariantList &values)
{
    if (!query.prepare(statement))
        return false;
    for (const QVariant &value : values)
        query.addBindValue(value);
    return query.exec();
}

bool createGeneralTable(QSqlQuery &query, const QString &name, const CustomTables &tables)
{
    if (!tables.canBeCreated() || !query.exec(tables.createGeneral()))
        return false;
    QString ignored;
    LabelInterface *defaultLabel = createLabel(name, ignored);
    if (!defaultLabel)
        return false;
    return runs(query,
                QStringLiteral("INSERT INTO %1 (driver_name, block_size, bit_block_size, support_actions) VALUES "
                               "(?, ?, ?, '')")
                    .arg(tables.general),
                {boundText(name), defaultLabel->getBlockCommandMaxSize(), defaultLabel->getBitCommandMaxSize()});
}

bool createDeviceTable(QSqlQuery &query, const CustomTables &tables)
{
    return tables.canBeCreated() && query.exec(tables.createDevice());
}

bool indexTables(QSqlQuery &query, const QString &name, const CustomTables &tables)
{
    const QVariant driver = boundText(name);
    if (!runs(query, QStringLiteral("SELECT * FROM table_index WHERE name = ?"), {driver}))
        return false;
    const bool isIndexed = query.next();
    query.finish();
    if (isIndexed)
        return runs(query, QStringLiteral("UPDATE table_index SET general_table = ?, device_table = ? WHERE name = ?"),
                    {tables.general, tables.device, driver});
    return runs(query, QStringLiteral("INSERT INTO table_index (name, general_table, device_table) VALUES (?, ?, ?)"),
                {driver, tables.general, tables.device});
}

/// The marker names the failed step.
bool failedAt(const char *operation, int marker)
{
    qDebug() << operation << marker;
    return false;
}

} // namespace

bool createCustomDatabaseConnection(QSqlDatabase &db)
{
    const MutexLocker<std::recursive_mutex> locker(&labelStoreLock());
    if (db.isOpen())
        return true;
    if (!openLabelDatabase(db, connectionName()))
        return false;
    if (!hasTable(db, QStringLiteral("table_index")))
        QSqlQuery(db).exec(CustomTables::createIndex());
    return true;
}

bool useCustomLabel(const QString &name)
{
    const MutexLocker<std::recursive_mutex> locker(&labelStoreLock());
    CustomLabelUse &use = customLabelUse();
    if (!use.isLoaded)
        loadCustomLabelUse(use);
    return use.byDriver.value(name, false);
}

bool setupCustomLabel(const QString &name)
{
    const MutexLocker<std::recursive_mutex> locker(&labelStoreLock());
    const char *const operation = "setupCustomLabel";
    QSqlDatabase db;
    if (!createCustomDatabaseConnection(db))
        return failedAt(operation, __LINE__);
    const CustomTables tables(name);
    QSqlQuery query(db);
    if (!hasTable(db, tables.general) && !createGeneralTable(query, name, tables))
        return failedAt(operation, __LINE__);
    if (!hasTable(db, tables.device) && !createDeviceTable(query, tables))
        return failedAt(operation, __LINE__);
    if (!indexTables(query, name, tables))
        return failedAt(operation, __LINE__);
    customLabelUse().byDriver.insert(name, true);
    return true;
}

bool setupDefaultLabel(const QString &name)
{
    const MutexLocker<std::recursive_mutex> locker(&labelStoreLock());
    const char *const operation = "setupDefaultLabel";
    QSqlDatabase db;
    if (!createCustomDatabaseConnection(db))
        return failedAt(operation, __LINE__);
    QSqlQuery query(db);
    if (!runs(query, QStringLiteral("UPDATE table_index SET general_table = '', device_table = '' WHERE name = ?"),
              {boundText(name)}))
        return failedAt(operation, __LINE__);
    customLabelUse().byDriver.insert(name, false);
    return true;
}

LabelInterface *createCustomLabel(const QString &name, QString &errorMessage)
{
    const MutexLocker<std::recursive_mutex> locker(&labelStoreLock());
    return findOrRead(name, errorMessage).label;
}

LabelHold holdCustomLabel(const QString &name, QString &errorMessage)
{
    const MutexLocker<std::recursive_mutex> locker(&labelStoreLock());
    return findOrRead(name, errorMessage).hold;
}

LabelHold holdLabel(LabelInterface *label)
{
    const MutexLocker<std::recursive_mutex> locker(&labelStoreLock());
    LabelHold hold = customLabelCache().holdOf(label);
    if (!hold)
        hold = holdOfDefaultLabel(label);
    return hold ? hold : LabelHold(LabelHold(), label);
}

void freeCustomLabel(const QString &name)
{
    const MutexLocker<std::recursive_mutex> locker(&labelStoreLock());
    customLabelCache().free(name);
}

void freeCustomLabels()
{
    const MutexLocker<std::recursive_mutex> locker(&labelStoreLock());
    customLabelCache().freeAll();
}

void removeCustomLabelDatabase()
{
    const MutexLocker<std::recursive_mutex> locker(&labelStoreLock());
    QSqlDatabase::removeDatabase(connectionName());
}

} // namespace label
