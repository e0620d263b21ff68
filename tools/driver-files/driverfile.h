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
    /// Line of the driver file, from 1; 0 where the row comes from a database.
    int line = 0;
    /// The fields in the order of `DriverText::columns`.
    QStringList fields;
    /// Comments and blank lines in front of the row, as they stand, without line ends.
    QStringList comments;
};

/// A driver in its text form: what a driver file holds, and what a database holds of a driver. Plain data; nothing in
/// it is checked but the form.
struct DriverText
{
    /// Where it comes from, for messages: the path of the file or of the database.
    QString source;
    /// Names the tables in the database: NAME_general and NAME_types. Of a file, the file's base name.
    QString stem;
    /// The tables that a database really has for the driver; empty for a file.
    QString generalTable;
    QString deviceTable;
    /// The driver's name, as projects use it.
    QString name;
    QString blockSize;
    QString bitBlockSize;
    /// Lines of the driver file that hold the name and the header, from 1; 0 where the driver comes from a database.
    int nameLine = 0;
    int headerLine = 0;
    /// The names of the columns, in the order of the file.
    QStringList columns;
    QList<DriverRow> rows;
    /// Comments and blank lines in front of the settings, among them, in front of the header, and behind the last row.
    QStringList headComments;
    QStringList headerComments;
    QStringList tailComments;

    /// The field of the row in the column; empty when there is no such column.
    QString field(const DriverRow &row, const QString &column) const;
};

/// What is wrong with the form of a driver file, for a person: "file:line: error: text" by `toString`.
struct DriverFileError
{
    QString file;
    int line = 1;
    QString text;

    QString toString() const;
};

/// The thirteen columns of a device table, in the order in which a driver file has them by default.
QStringList driverColumns();

/// True for the columns that hold numbers in the database.
bool isNumberColumn(const QString &column);

/// What is wrong with `value` in the column or setting `name`: it is empty where it must not be, or no number where one
/// is needed. Empty when nothing is.
QString valueFault(const QString &name, const QString &value);

/// True for a name that can stand in front of "_general" and "_types" as it is.
bool isGoodStem(const QString &stem);

/// Reads a driver file (UTF-8, columns separated by tabs). All errors of the form are collected, not only the first:
/// the text is usable only when there are none.
DriverText readDriverFile(const QString &path, QList<DriverFileError> &errors);

/// The text form, byte for byte what `readDriverFile` read if it came from a file whose settings stand in their usual
/// order (`driver`, `block_size`, `bit_block_size`) without comments between them and whose last line has an end.
QByteArray driverFileText(const DriverText &driver);

/// Why the text form cannot hold the driver, as a sentence: a tab or a line end in a field, or a first field that would
/// read as a comment. Empty when it can.
QString textFormObstacle(const DriverText &driver);

/// The drivers that the database at `path` has, in its order. Empty with a sentence in `error` on failure.
QStringList driversInDatabase(const QString &path, QString &error);

/// Reads one driver out of a driver database, with the comments if the database holds them; of several with the name
/// the last one, as the library does. Columns that the library does not read are left out, and a `continue` that is
/// missing reads as "N"; other columns that are missing are missing from `columns`. `error` is a sentence on failure.
DriverText readDatabaseDriver(const QString &path, const QString &name, QString &error);

/// Writes a driver database with these drivers afresh; the file that was there is replaced at the end, in one step.
/// False with a sentence in `error` on failure, and the old file stays.
bool writeDriverDatabase(const QString &path, const QList<DriverText> &drivers, QString &error);

#endif
