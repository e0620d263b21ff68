// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "interruptedwrite.h"

#include "tools/driver-files/sqliteconnection.h"

#include <QFileInfo>
#include <QSqlQuery>
#include <QString>

void undoInterruptedWrite(const QString &path)
{
    // A program that is writing right now has a journal, too; SQLite tells the two apart by their locks.
    if (!QFileInfo(path).isFile() || !QFileInfo::exists(path + QLatin1String("-journal")))
        return;
    const SqliteConnection connection(path, SqliteConnection::Mode::Write);
    QSqlQuery query(connection.database());
    // To wait for a writer is for whoever reads the file afterwards.
    query.exec(QStringLiteral("PRAGMA busy_timeout = 0"));
    query.exec(QStringLiteral("PRAGMA schema_version"));
}
