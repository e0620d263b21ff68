// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_SQLITECONNECTION_H
#define ZELMAR_LABEL_SQLITECONNECTION_H

#include <QList>
#include <QSqlDatabase>
#include <QString>

struct DriverText;

/// A SQLite file, open for as long as this object lives.
class SqliteConnection
{
public:
    enum class Mode {
        Read,  ///< the file has to be there
        Write, ///< it is made if it is not; ":memory:" makes a database without a file
    };

    SqliteConnection(const QString &path, Mode mode);
    ~SqliteConnection();
    Q_DISABLE_COPY(SqliteConnection)

    const QSqlDatabase &database() const { return m_db; }
    /// Why the file is not open, as a sentence; empty when it is.
    const QString &error() const { return m_error; }

private:
    QString m_name;
    QSqlDatabase m_db;
    QString m_error;
};

/// Makes the tables of a driver database with these drivers in an empty one. False with SQLite's words in `error`.
bool fillDriverDatabase(const QSqlDatabase &db, const QList<DriverText> &drivers, QString &error);

#endif
