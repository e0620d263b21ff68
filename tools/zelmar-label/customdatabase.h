// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_CUSTOMDATABASE_H
#define ZELMAR_LABEL_TOOL_CUSTOMDATABASE_H

#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QVariant>

struct DriverText;

/// The entry of one driver in a custom database.
struct CustomDriver
{
    QString name;
    /// False if the driver was switched back to its default label.
    bool isInForce = false;
    QString generalTable;
    QString deviceTable;
    int formats = 0;
    int blockSize = 0;
    int bitBlockSize = 0;
};

/// The custom labels of the program in a folder. The library's functions work only in this program's folder. The tables
/// are the same as the library's. Only one object at a time.
///
/// A change is a transaction from `begin` to `commit`; without `commit` the file does not change.
class CustomDatabase
{
public:
    /// `folder` is the program's folder, empty for this program.
    explicit CustomDatabase(const QString &folder);
    ~CustomDatabase();
    Q_DISABLE_COPY(CustomDatabase)

    const QString &path() const { return m_path; }
    /// The database with the program's default labels.
    QString driverDatabase() const;

    /// Also false for a driver database that does not exist yet.
    bool exists() const;

    /// All drivers that were set up, in the order of the file. On failure none, and `error` is a sentence.
    QList<CustomDriver> drivers(QString &error);

    /// Copies the file, if it exists, and begins a change. On failure, this and the following functions return false
    /// with a sentence in `error`.
    bool begin(QString &error);

    /// The path of the copy; empty if there was no file.
    const QString &copy() const { return m_copy; }

    /// Switches the driver to its custom label like the library: existing tables are kept.
    bool setUp(const QString &driver, int blockSize, int bitBlockSize, QString &error);

    /// Replaces the formats and limits of a driver that was set up.
    bool fill(const DriverText &driver, QString &error);

    /// Switches the driver back; its tables stay.
    bool setDefault(const QString &driver, QString &error);

    /// Switches the driver back and removes its tables.
    bool drop(const QString &driver, QString &error);

    bool commit(QString &error);

private:
    bool open(const QString &options, QString &error);
    void undo();
    bool execute(const QString &statement, const QVariantList &values, QString &error);
    QString tableName(const QString &name) const;
    bool hasTable(const QString &table) const { return tableName(table) == table; }
    CustomDriver readDriver(const QString &name, const QString &generalTable, const QString &deviceTable) const;
    QList<CustomDriver> readDrivers(QString &error);
    QString otherOwner(const QString &driver, const QString &table, QString &error);
    bool insertRows(const DriverText &driver, const QString &table, QString &error);
    bool holds(const DriverText &driver, QString &error) const;

    QString m_folder;
    QString m_path;
    QString m_copy;
    QSqlDatabase m_db;
    bool m_isNew = false;
    bool m_isChanging = false;
    bool m_isCommitted = false;
};

#endif
