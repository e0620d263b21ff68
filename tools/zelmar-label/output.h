// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_OUTPUT_H
#define ZELMAR_LABEL_TOOL_OUTPUT_H

#include <QByteArray>
#include <QJsonValue>
#include <QList>
#include <QString>
#include <QStringList>

class QIODevice;

/// What the tool tells its caller by its exit code.
enum ExitCode {
    Success = 0,
    AddressRefused = 1,
    UsageError = 2,
    Unreadable = 3, ///< the driver database, the driver or the project; also a project that cannot be written
};

/// One JSON object on one line, its keys in the order in which they were added.
class JsonLine
{
public:
    JsonLine &add(const char *key, const QJsonValue &value);
    QString text() const;

private:
    QByteArray m_members;
};

/// Texts in columns, two blanks apart. The last text of a row may be of any length and widens no column.
class TextTable
{
public:
    void addRow(const QStringList &cells) { m_rows.append(cells); }
    QStringList lines() const;

private:
    QList<QStringList> m_rows;
};

/// "1 format", "2 formats".
QString counted(int count, const char *noun);

/// Where the tool reads and writes. Texts are UTF-8, whatever the locale.
struct Streams
{
    QIODevice &in;
    QIODevice &out;
    QIODevice &err;
    bool colored = false;
    /// The error stream is a terminal, where a line can be written over.
    bool showsProgress = false;

    void print(const QString &line) const;
    /// To the error stream, with the program's name in front.
    void complain(const QString &sentence) const;
    /// The lines of `table`, in color where they begin with a verdict.
    void print(const TextTable &table) const;
};

#endif
