// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "databasebackup.h"

#include "interruptedwrite.h"

#include "tools/driver-files/sqliteconnection.h"

#include <QDateTime>
#include <QFile>
#include <QSqlError>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

namespace {

QString freePath(const QString &path)
{
    const QString stem =
        path + QLatin1Char('.') + QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd_HHmmss"));
    QString free = stem;
    // Two copies in one second need different names.
    for (int number = 2; QFile::exists(free); ++number)
        free = QStringLiteral("%1_%2").arg(stem, QString::number(number));
    return free;
}

} // namespace

bool backUpDatabase(const QString &path, QString &copy, QString &error)
{
    undoInterruptedWrite(path);
    const QString wanted = freePath(path);
    const SqliteConnection connection(path, SqliteConnection::Mode::Read);
    error = connection.error();
    if (!error.isEmpty())
        return false;
    // SQLite copies only what is committed.
    QSqlQuery query(connection.database());
    query.prepare(QStringLiteral("VACUUM INTO ?"));
    query.addBindValue(wanted);
    if (query.exec()) {
        copy = wanted;
        return true;
    }
    QFile::remove(wanted);
    error = QStringLiteral("no copy of %1 can be made (%2), so it is not changed")
                .arg(path, query.lastError().databaseText());
    return false;
}
