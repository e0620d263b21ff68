// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "driverinstall.h"

#include "databasebackup.h"

#include "tools/driver-files/driverfile.h"
#include "tools/driver-files/sqliteconnection.h"

#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <QVariant>

namespace {

/// Copies drivers from a temporary database, which is attached as "made".
class Installation
{
public:
    explicit Installation(const QString &path)
        : m_path(path)
        , m_connection(path, SqliteConnection::Mode::Write)
        , m_db(m_connection.database())
    {
    }

    bool run(const QString &made, const QList<DriverText> &drivers, QStringList &replaced)
    {
        m_error = m_connection.error();
        if (!m_error.isEmpty() || !isDriverDatabase())
            return false;
        if (!execute(QStringLiteral("ATTACH ? AS made"), {made}) || !execute(QStringLiteral("BEGIN IMMEDIATE")))
            return false;
        for (const DriverText &driver : drivers) {
            if (!install(driver.name, replaced)) {
                QSqlQuery(m_db).exec(QStringLiteral("ROLLBACK"));
                return false;
            }
        }
        return execute(QStringLiteral("COMMIT"));
    }

    const QString &error() const { return m_error; }

private:
    bool isDriverDatabase()
    {
        QSqlQuery query(m_db);
        if (query.exec(QStringLiteral("SELECT name, general_table, device_table FROM table_index LIMIT 1")))
            return true;
        m_error = QStringLiteral("%1 is not a driver database (%2); name another with --into DATABASE")
                      .arg(m_path, query.lastError().databaseText());
        return false;
    }

    bool fail(const QString &reason)
    {
        m_error = QStringLiteral("%1 cannot be written (%2)").arg(m_path, reason);
        return false;
    }

    bool execute(const QString &statement, const QVariantList &values = {})
    {
        QSqlQuery query(m_db);
        bool isDone = query.prepare(statement);
        for (const QVariant &value : values)
            query.addBindValue(value);
        isDone = isDone && query.exec();
        return isDone || fail(query.lastError().databaseText());
    }

    /// The first row of the result; empty if there is none.
    QVariantList rowOf(const QString &statement, const QVariantList &values)
    {
        QSqlQuery query(m_db);
        query.prepare(statement);
        for (const QVariant &value : values)
            query.addBindValue(value);
        QVariantList row;
        if (query.exec() && query.next()) {
            for (int column = 0; column < query.record().count(); ++column)
                row.append(query.value(column));
        }
        return row;
    }

    bool install(const QString &name, QStringList &replaced)
    {
        const QString tables = QStringLiteral("SELECT general_table, device_table FROM %1.table_index WHERE name = ?");
        const QVariantList before = rowOf(tables.arg(QLatin1String("main")), {name});
        const QVariantList after = rowOf(tables.arg(QLatin1String("made")), {name});
        if (!before.isEmpty())
            replaced.append(name);
        for (const QVariant &table : before) {
            if (!dropTable(table.toString(), name))
                return false;
        }
        for (const QVariant &table : after) {
            if (!takeTable(table.toString()))
                return false;
        }
        return takeComments(before, after) &&
               execute(before.isEmpty()
                           ? QStringLiteral("INSERT INTO main.table_index (general_table, device_table, name) VALUES "
                                            "(?, ?, ?)")
                           : QStringLiteral("UPDATE main.table_index SET general_table = ?, device_table = ? WHERE "
                                            "name = ?"),
                       after + QVariantList({name}));
    }

    /// Unless another driver uses it, too.
    bool dropTable(const QString &table, const QString &owner)
    {
        const bool isShared = !rowOf(QStringLiteral("SELECT 1 FROM main.table_index WHERE name <> ? AND (general_table "
                                                    "= ? COLLATE NOCASE OR device_table = ? COLLATE NOCASE)"),
                                     {owner, table, table})
                                   .isEmpty();
        return isShared || execute(QStringLiteral("DROP TABLE IF EXISTS main.\"%1\"").arg(table));
    }

    bool takeEmptyTable(const QString &table)
    {
        const QVariantList statement =
            rowOf(QStringLiteral("SELECT sql FROM made.sqlite_master WHERE name = ?"), {table});
        return execute(statement.value(0).toString());
    }

    bool takeTable(const QString &table)
    {
        return takeEmptyTable(table) &&
               execute(QStringLiteral("INSERT INTO main.\"%1\" SELECT * FROM made.\"%1\" ORDER BY rowid").arg(table));
    }

    /// The comments of a driver are stored under its device table.
    bool takeComments(const QVariantList &before, const QVariantList &after)
    {
        const QString table = QStringLiteral("driver_comments");
        const bool hasComments =
            !rowOf(QStringLiteral("SELECT 1 FROM main.sqlite_master WHERE name = ?"), {table}).isEmpty();
        return (hasComments || takeEmptyTable(table)) &&
               execute(QStringLiteral("DELETE FROM main.driver_comments WHERE device_table IN (?, ?)"),
                       {before.value(1), after.value(1)}) &&
               execute(QStringLiteral("INSERT INTO main.driver_comments SELECT * FROM made.driver_comments WHERE "
                                      "device_table = ? ORDER BY rowid"),
                       {after.value(1)});
    }

    QString m_path;
    SqliteConnection m_connection;
    const QSqlDatabase &m_db;
    QString m_error;
};

} // namespace

bool installDrivers(const QString &path, const QList<DriverText> &drivers, InstalledDrivers &installed, QString &error)
{
    if (!QFileInfo::exists(path))
        return writeDriverDatabase(path, drivers, error);
    if (QFileInfo(path).isDir()) {
        error = QStringLiteral("%1 is a folder; name a file with --into DATABASE").arg(path);
        return false;
    }
    const QTemporaryDir folder;
    const QString made = folder.filePath(QStringLiteral("drivers"));
    if (!writeDriverDatabase(made, drivers, error) || !backUpDatabase(path, installed.copy, error))
        return false;
    Installation installation(path);
    if (installation.run(made, drivers, installed.replaced))
        return true;
    error = installation.error();
    QFile::remove(installed.copy);
    return false;
}
