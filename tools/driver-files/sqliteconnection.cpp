// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "sqliteconnection.h"

#include <QFileInfo>
#include <QSqlError>
#include <QUuid>

SqliteConnection::SqliteConnection(const QString &path, Mode mode)
    : m_name(QUuid::createUuid().toString())
    , m_db(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name))
{
    m_db.setDatabaseName(path);
    if (mode == Mode::Read) {
        m_db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        if (!QFileInfo(path).isFile()) {
            m_error = QStringLiteral("there is no file %1").arg(path);
            return;
        }
    }
    if (!m_db.open())
        m_error = QStringLiteral("%1 cannot be opened (%2)").arg(path, m_db.lastError().databaseText());
}

SqliteConnection::~SqliteConnection()
{
    m_db = QSqlDatabase();
    QSqlDatabase::removeDatabase(m_name);
}
