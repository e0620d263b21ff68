// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_DRIVERFILE_H
#define ZELMAR_LABEL_DRIVERFILE_H

#include <QList>
#include <QString>
#include <QStringList>

/// One row of a driver, as text, column by column.
struct DriverRow
{
    /// Line of the driver file, from 1; 0 for a row from a database.
    int line = 0;
    /// The fields in the order of `DriverText::columns`.
    QStringList fields;
    /// Unchanged comments and blank lines before the row, without line ends.
    QStringList comments;
};

/// A driver in its text form: the content of a driver file, or of a database for one driver. Plain data; only its form
/// is checked.
struct DriverText
{
    /// The source, for messages: the path of the file or of the database.
    QString source;
    /// Names the tables in the database: NAME_general and NAME_types. For a file, the file's base name.
    QString stem;
    /// The actual tables of the driver in a database; empty for a file.
    QString generalTable;
    QString deviceTable;
    /// The driver's name, as projects use it.
    QString name;
    QString blockSize;
    QString bitBlockSize;
    /// Lines of the driver file with the name and the header, from 1; 0 for a driver from a database.
    int nameLine = 0;
    int headerLine = 0;
    /// The names of the columns, in the order of the file.
    QStringList columns;
    QList<DriverRow> rows;
    /// Comments and blank lines before the settings, between them, before the header, and after the last row.
    QStringList headComments;
    QStringList headerComments;
    QStringList tailComments;

    /// The field of the row in the column; empty if there is no such column.
    QString field(const DriverRow &row, const QString &column) const;
};

/// An error in the form of a driver file, for a person: "file:line: error: text" by `toString`.
struct DriverFileError
{
    QString file;
    int line = 1;
    QString text;

    QString toString() const;
};

/// The thirteen columns of a device table, in the default order of a driver file.
QStringList driverColumns();

/// True for the columns that hold numbers in the database.
bool isNumberColumn(const QString &column);

/// The error of `value` in the column or setting `name`: it must not be empty, or must be a number. Empty if there is
/// no error.
QString valueFault(const QString &name, const QString &value);

/// True for a name that is valid in front of "_general" and "_types".
bool isGoodStem(const QString &stem);

/// Reads a driver file (UTF-8, columns separated by tabs). Collects all errors of the form, not only the first. Use the
/// text only if there are none.
DriverText readDriverFile(const QString &path, QList<DriverFileError> &errors);

/// The text form. It equals the bytes that `readDriverFile` read if the settings of the file have the usual order
/// (`driver`, `block_size`, `bit_block_size`), no comments between them, and the last line has an end.
QByteArray driverFileText(const DriverText &driver);

/// Why the text form cannot represent the driver, as a sentence: a tab or a line end in a field, or a first field that
/// looks like a comment. Empty if it can.
QString textFormObstacle(const DriverText &driver);

/// The drivers in the database at `path`, in its order. Empty with a sentence in `error` on failure.
QStringList driversInDatabase(const QString &path, QString &error);

/// Reads one driver from a driver database, with the comments if the database has them. Of several drivers with the
/// name it reads the last, like the library. Columns that the library does not read are omitted. A missing `continue`
/// is read as "N"; other missing columns are missing in `columns`. `error` is a sentence on failure.
DriverText readDatabaseDriver(const QString &path, const QString &name, QString &error);

/// Writes a new driver database with these drivers; an existing file is replaced at the end, in one step. False with a
/// sentence in `error` on failure, and the old file stays.
bool writeDriverDatabase(const QString &path, const QList<DriverText> &drivers, QString &error);

#endif
