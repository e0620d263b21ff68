// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "tagcsv.h"

#include "tagtypes.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QCoreApplication>
#include <QSqlQuery>
#include <QVariant>

namespace {

enum Column {
    NameColumn,
    LinkColumn,
    TypeColumn,
    AddressColumn,
    ScaleColumn,
};

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(TagColumns)
};

/// -1 for a text that is neither the name nor the number of a type.
int dataTypeOf(const TagSystem &tags, const QString &text)
{
    const QStringList names = tags.dataTypeList();
    const int named = names.indexOf(text);
    if (named >= 0)
        return named;
    // The list has the name without the bracket.
    if (text == QLatin1String("INT(64)"))
        return tagtype::Int64;
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    return isNumber && number >= 0 && number < names.size() ? number : -1;
}

/// False if the table has no such row.
bool readRow(const TagSystem &tags, int id, PlainTag &tag)
{
    QSqlQuery query(tags.database());
    query.exec(QStringLiteral("SELECT name, connector_id, data_type, address, scale FROM %1 WHERE id = %2")
                   .arg(tags.customTagTableName(), QString::number(id)));
    if (!query.next())
        return false;
    tag.name = query.value(0).toString();
    tag.link = query.value(1).toInt();
    tag.dataType = query.value(2).toInt();
    tag.address = query.value(3).toString();
    tag.scale = query.value(4).toInt();
    return true;
}

} // namespace

QString dataTypeName(const TagSystem &tags, int type)
{
    const QString name = tags.datatypeString(type);
    return name.isEmpty() ? QString::number(type) : name;
}

QStringList TagColumns::names()
{
    return {QStringLiteral("name"), QStringLiteral("link"), QStringLiteral("data type"), QStringLiteral("address"),
            QStringLiteral("scale")};
}

bool TagColumns::read(const CsvRow &header, QString &error)
{
    m_width = header.fields.size();
    QStringList found;
    for (const QString &name : header.fields)
        found.append(name.trimmed().toLower());
    for (const QString &name : qAsConst(found)) {
        if (!names().contains(name) || found.count(name) > 1) {
            error = (names().contains(name) ? Texts::tr("the column \"%1\" appears twice")
                                            : Texts::tr("there is no column \"%1\""))
                        .arg(name);
            return false;
        }
    }
    for (const QString &column : names()) {
        m_positions.append(found.indexOf(column));
        if (m_positions.constLast() >= 0 || column == names().at(ScaleColumn))
            continue;
        error = Texts::tr("the column \"%1\" is missing").arg(column);
        return false;
    }
    return true;
}

PlainTag TagColumns::tag(const CsvRow &row, const TagSystem &tags, QString &error) const
{
    PlainTag tag;
    tag.line = row.line;
    tag.name = field(row, NameColumn);
    tag.address = field(row, AddressColumn);
    if (row.fields.size() != m_width) {
        error = Texts::tr("it has %1 fields, the first line %2").arg(row.fields.size()).arg(m_width);
        return tag;
    }
    bool isNumber = false;
    const QString link = field(row, LinkColumn);
    tag.link = link.toInt(&isNumber);
    if (!isNumber) {
        error = Texts::tr("the link \"%1\" is not a whole number").arg(link);
        return tag;
    }
    const QString type = field(row, TypeColumn);
    tag.dataType = dataTypeOf(tags, type);
    if (tag.dataType < 0) {
        error = Texts::tr("there is no data type \"%1\"").arg(type);
        return tag;
    }
    if (m_positions.at(ScaleColumn) < 0)
        return tag;
    const QString scale = field(row, ScaleColumn);
    tag.scale = scale.toInt(&isNumber);
    if (!isNumber)
        error = Texts::tr("the scale \"%1\" is not a whole number").arg(scale);
    return tag;
}

QByteArray tagCsvHeader()
{
    return csvLine(TagColumns::names()) + '\n';
}

QByteArray tagCsvLine(const TagSystem &tags, const PlainTag &tag)
{
    return csvLine({tag.name, QString::number(tag.link), dataTypeName(tags, tag.dataType), tag.address,
                    QString::number(tag.scale)}) +
           '\n';
}

PlainTag plainTag(TagSystem &tags, int id)
{
    PlainTag tag;
    if (tags.isNotNormalTag(id) && readRow(tags, id, tag))
        return tag;
    tag.name = tags.getTagNameById(id);
    tag.link = tags.getCommunicatorID(id);
    tag.dataType = tags.getDataTypeByID(id);
    tag.address = tags.getAddressByID(id);
    tag.scale = tags.getScaleByID(id);
    return tag;
}
