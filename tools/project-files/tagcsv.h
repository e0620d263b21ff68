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

/// One tag of a CSV file or a project.
struct PlainTag
{
    /// Line of the CSV file, from 1; 0 for a tag of the project.
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

/// The columns of a tag's properties in a CSV file, from the file's first row.
class TagColumns
{
public:
    /// The names of the columns, as exported.
    static QStringList names();

    /// False, with the reason in `error`, if a column is unknown, doubled or missing. The scale is optional.
    bool read(const CsvRow &header, QString &error);

    /// The tag in `row`. If there is none, the reason is in `error`, and the tag has the readable values.
    PlainTag tag(const CsvRow &row, const TagSystem &tags, QString &error) const;

private:
    /// Never null, which a database would store as NULL.
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

/// The tag of the project. If the library treats the row's id as a system or recipe tag (in tables of 20,000 rows or
/// more), the content of the row.
PlainTag plainTag(TagSystem &tags, int id);

#endif
