// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_DRIVERDATABASE_H
#define ZELMAR_LABEL_TOOL_DRIVERDATABASE_H

#include <QList>
#include <QSqlDatabase>
#include <QString>

#include <memory>

namespace label {
class LabelLoader;
}

/// A driver database, opened for reading only.
class DriverDatabase
{
public:
    /// The facts about a driver that need no formats.
    struct Driver
    {
        QString name;
        int formats = 0;
        int blockSize = 0;
        int bitBlockSize = 0;
    };

    /// Opens `path`, or the database beside the program if it is empty.
    explicit DriverDatabase(const QString &path);
    ~DriverDatabase();
    Q_DISABLE_COPY(DriverDatabase)

    const QString &path() const { return m_path; }

    /// All drivers in the order of the file. On failure none, and `error` names the file and what to do.
    QList<Driver> drivers(QString &error) const;

    /// The label of one driver. Null on failure, and `error` names the file and what to do.
    std::unique_ptr<label::LabelLoader> read(const QString &driver, QString &error) const;

private:
    bool isReadable(QString &error) const;
    bool readNames(QStringList &names, QString &error) const;
    Driver summary(const QString &name, const QString &generalTable, const QString &deviceTable) const;

    QString m_path;
    QSqlDatabase m_db;
};

#endif
