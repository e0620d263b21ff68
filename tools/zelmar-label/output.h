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

/// The exit codes of the tool.
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

/// Texts in columns, two blanks apart. The last text of a row does not widen its column.
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

/// The input and output of the tool. Texts are always UTF-8.
struct Streams
{
    QIODevice &in;
    QIODevice &out;
    QIODevice &err;
    bool colored = false;
    /// The error stream is a terminal, which can overwrite a line.
    bool showsProgress = false;

    void print(const QString &line) const;
    /// To the error stream, after the program's name.
    void complain(const QString &sentence) const;
    /// Prints `table`; lines that begin with a verdict are colored.
    void print(const TextTable &table) const;
};

#endif
