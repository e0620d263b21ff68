// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_SQLITECONNECTION_H
#define ZELMAR_LABEL_SQLITECONNECTION_H

#include <QList>
#include <QSqlDatabase>
#include <QString>

struct DriverText;

/// A SQLite file, open during the lifetime of this object.
class SqliteConnection
{
public:
    enum class Mode {
        Read,  ///< the file must exist
        Write, ///< it is made if it is not; ":memory:" makes a database without a file
    };

    SqliteConnection(const QString &path, Mode mode);
    ~SqliteConnection();
    Q_DISABLE_COPY(SqliteConnection)

    const QSqlDatabase &database() const { return m_db; }
    /// Why the file is not open, as a sentence; empty if it is.
    const QString &error() const { return m_error; }

private:
    QString m_name;
    QSqlDatabase m_db;
    QString m_error;
};

/// Makes the tables of a driver database with these drivers. False with SQLite's message in `error`.
bool fillDriverDatabase(const QSqlDatabase &db, const QList<DriverText> &drivers, QString &error);

#endif
