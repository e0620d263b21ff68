// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_PROJECTFIXTURES_H
#define ZELMAR_LABEL_TESTS_PROJECTFIXTURES_H

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

/// One row of a project's `LINK` table.
struct LinkRow
{
    int id = 1;
    QString model;
    int enabled = 1;
};

/// One row of a project's `NODE` table.
struct NodeRow
{
    int id = 1;
    int station = 1;
    int link = 1;
};

/// One row of the tag table; a test sets only the columns it needs. Id 0: the database counts.
struct TagRow
{
    int id = 0;
    QString name;
    int connectorId = 0;
    int dataType = 1;
    QString address = QStringLiteral("");
    int scale = 1;
    int access = 0;
    int scanTime = 1;
    int addition = 0;
    int defaultValue = 0;
    int userLog = 0;
    QString comment = QStringLiteral("");
};

/// Writes a new project database `path` with `LINK` and `NODE`, and leaves it open as the connection `key`. It has no
/// tag table: `TagSystem` or `writeTags` makes it.
void makeProject(const QString &path, const QString &key, const QList<LinkRow> &links = {},
                 const QList<NodeRow> &nodes = {});

/// Adds rows to the tag table of the connection `key`; makes a missing table.
void writeTags(const QString &key, const QList<TagRow> &tags);

/// Registers `path` as the connection `key`, replacing an old one, and opens it.
void openProject(const QString &path, const QString &key);

/// Removes the connection `key`; the file stays.
void closeProject(const QString &key);

/// Deletes all `TagSystem` objects, and removes all connections.
void dropProjects();

/// The statement that makes the tag table.
QString tagTableStatement();

/// Runs a statement on the connection `key`; ends the program when it fails.
void executeOn(const QString &key, const QString &statement, const QVariantList &values = {});

/// Runs a statement that may fail, for example while another connection has a lock. Returns success or the error.
bool tryOn(const QString &key, const QString &statement);
QString errorOn(const QString &key, const QString &statement);

/// The result of a statement on the connection `key`: each row's fields, joined by "|"; NULL is "(null)".
QStringList rowsOn(const QString &key, const QString &statement);

/// Sorts ids, for lists in no particular order.
QList<int> sorted(QList<int> ids);

/// Collects the library's messages during its lifetime instead of showing message boxes. One at a time.
class MessageRecorder
{
public:
    MessageRecorder();
    ~MessageRecorder();
    Q_DISABLE_COPY(MessageRecorder)

    /// The messages since the last call, as "critical|title|text" or "warning|title|text".
    QStringList take();
};

#endif
