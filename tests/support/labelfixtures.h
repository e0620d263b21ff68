// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_LABELFIXTURES_H
#define ZELMAR_LABEL_TESTS_LABELFIXTURES_H

#include "zelmar_label/address_grammar/commandformatter.h"
#include "zelmar_label/address_grammar/communicatorcommand.h"

#include <QList>
#include <QString>
#include <QStringList>

/// The log line for each built row.
extern const QString rowLine;

/// One row of a device table; a test sets only the columns it needs.
struct Row
{
    QString pattern = QStringLiteral("(D)(\\d+)");
    int type = 2;
    int addressGroupIndex = 2;
    QString description = QStringLiteral("D: data register");
    QString prefixSymbol = QStringLiteral("D");
    QString start = QStringLiteral("0");
    QString end = QStringLiteral("9999");
    int dataSize = 2;
    QString multipleRule;
    QString catchTable;
    int base = 10;
    int blocksize = 64;
    QString continueRule = QStringLiteral("N");

    /// The formatter of a database row with these columns.
    label::CommandFormatter formatter() const;
};

/// A command of one item.
CommunicatorCommand command(const QString &address, int dataType, quint64 length = 1);

/// Commands as texts "address type length", to compare them.
QStringList shortForms(const QList<CommunicatorCommand> &commands);
QStringList addresses(const QList<CommunicatorCommand> &commands);

QString scriptsFolder();

/// Writes `text` to scripts/`fileName` beside the test program; makes the folder.
void writeScript(const QString &fileName, const QString &text);
void removeScript(const QString &fileName);

/// A driver of a database, and the columns to leave out of its device table.
struct Driver
{
    QString name;
    QList<Row> rows;
    int blockSize = 100;
    int bitBlockSize = 200;
    QString generalTable = QStringLiteral("general");
    QString deviceTable = QStringLiteral("types");
    QStringList missingColumns;
};

/// Writes a new SQLite file `path` with these drivers. Each needs its own table names.
void writeDriverDatabase(const QString &path, const QList<Driver> &drivers);

/// "database" beside the test program; it may be missing.
QString databaseFolder();

/// "database/drivers" beside the test program; the folder is made.
QString driverDatabasePath();

QString fileBesideTheProgram(const char *name);

#endif
