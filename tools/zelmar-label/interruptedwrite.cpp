// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "interruptedwrite.h"

#include "tools/driver-files/sqliteconnection.h"

#include <QFileInfo>
#include <QSqlQuery>
#include <QString>

void undoInterruptedWrite(const QString &path)
{
    // A program that is writing now also has a journal; SQLite uses locks to tell the difference.
    if (!QFileInfo(path).isFile() || !QFileInfo::exists(path + QLatin1String("-journal")))
        return;
    const SqliteConnection connection(path, SqliteConnection::Mode::Write);
    QSqlQuery query(connection.database());
    // The next reader of the file waits for a writer.
    query.exec(QStringLiteral("PRAGMA busy_timeout = 0"));
    query.exec(QStringLiteral("PRAGMA schema_version"));
}
