// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_PROJECTFILES_TAGCSV_H
#define ZELMAR_LABEL_PROJECTFILES_TAGCSV_H

#include "csvfile.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

class TagSystem;

/// One tag as a CSV file or a project has it.
struct PlainTag
{
    /// Of the CSV file, from 1; 0 of a tag of the project.
    int line = 0;
    QString name;
    int link = 0;
    int dataType = 0;
    QString address;
    int scale = 1;

    bool isSame(const PlainTag &other) const
    {
        return link == other.link && dataType == other.dataType && address == other.address && scale == other.scale;
    }
};

/// The type's name in lists and in CSV; the number of a type without a name.
QString dataTypeName(const TagSystem &tags, int type);

/// Where in a row of a CSV file a tag's properties stand, as the file's first row says.
class TagColumns
{
public:
    /// The names of the columns, as exported.
    static QStringList names();

    /// False, with the reason in `error`, when a column is unknown, doubled or missing. The scale may be missing.
    bool read(const CsvRow &header, QString &error);

    /// The tag in `row`; the reason in `error` when there is none, and as much of the tag as can be read.
    PlainTag tag(const CsvRow &row, const TagSystem &tags, QString &error) const;

private:
    /// Never null, which a database would take for no text.
    QString field(const CsvRow &row, int column) const
    {
        return QStringLiteral("") + row.fields.value(m_positions.at(column));
    }

    /// In the order of `names`; -1 for none.
    QList<int> m_positions;
    int m_width = 0;
};

/// The first row of an exported file, with its line end.
QByteArray tagCsvHeader();

/// The row of a tag, with its line end.
QByteArray tagCsvLine(const TagSystem &tags, const PlainTag &tag);

/// The tag of the project. Of a row whose id the library takes for a system or recipe tag's, which a table of 20,000
/// rows has, what stands in the row.
PlainTag plainTag(TagSystem &tags, int id);

#endif
