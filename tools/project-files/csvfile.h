// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_PROJECTFILES_CSVFILE_H
#define ZELMAR_LABEL_PROJECTFILES_CSVFILE_H

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

class QIODevice;

/// One row of a CSV file, and its first line, from 1.
struct CsvRow
{
    int line = 0;
    QStringList fields;
};

/// The content of a CSV file, or why it cannot be read.
struct CsvContent
{
    QList<CsvRow> rows;
    QString error;
    int errorLine = 0;
};

/// Reads UTF-8 with or without a byte order mark. Blank lines are no rows.
CsvContent readCsv(QIODevice &device);

/// One row, without the line end. Every field is quoted.
QByteArray csvLine(const QStringList &fields);

#endif
