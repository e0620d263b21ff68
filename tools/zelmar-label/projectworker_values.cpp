// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "projectworker.h"

#include "project.h"
#include "tagvalue.h"

#include "zelmar_label/tag_store/tagsystem.h"
#include "zelmar_label/tag_values/tagdatatype_p.h"

namespace {

bool isWide(int type)
{
    return type == label::TagInt64 || type == label::TagUInt64;
}

/// The least and the greatest value of a tag; of a text, its length.
struct Limits
{
    Limits(TagSystem &tags, int id)
        : type(tags.getDataTypeByID(id))
    {
        if (type == label::TagAscii) {
            length = tags.getScaleByID(id);
            return;
        }
        QVariant greatest;
        QVariant least;
        tags.getMaxMinValue(id, greatest, least);
        isNumber = greatest.isValid();
        // As texts and in JSON, the limits of a bit are numbers.
        const int shownType = type == label::TagBit ? label::TagInt32 : type;
        max = textOfValue(greatest, shownType);
        min = textOfValue(least, shownType);
        jsonMax = jsonOfValue(greatest, shownType);
        jsonMin = jsonOfValue(least, shownType);
    }

    int type;
    bool isNumber = false;
    int length = 0;
    QString max;
    QString min;
    QJsonValue jsonMax;
    QJsonValue jsonMin;
};

/// Why the tag cannot hold the value; empty when it can.
QString beyondLimits(TagSystem &tags, int id, const QVariant &value, const QString &text)
{
    const Limits limits(tags, id);
    if (limits.type == label::TagAscii) {
        const int size = value.toByteArray().size();
        if (size <= limits.length)
            return QString();
        return QStringLiteral("the text has %1 bytes, the tag %2").arg(size).arg(limits.length);
    }
    // 64-bit values are within the limits when they can be read at all.
    if (isWide(limits.type) || tags.isInTheRange(id, value))
        return QString();
    return QStringLiteral("%1 does not lie between %2 and %3").arg(text, limits.min, limits.max);
}

} // namespace

ExitCode ProjectWorker::printLimits(Project &project) const
{
    TagSystem &tags = project.tags();
    QList<int> ids = m_request.arguments.isEmpty() ? tags.getTagIDList() : QList<int>();
    for (const QString &tag : m_request.arguments) {
        const int id = project.find(tag);
        if (id < 0)
            return AddressRefused;
        ids.append(id);
    }
    TextTable table;
    table.addRow({QStringLiteral("id"), QStringLiteral("name"), QStringLiteral("data type"), QStringLiteral("least"),
                  QStringLiteral("greatest"), QStringLiteral("bytes of text")});
    for (const int id : qAsConst(ids)) {
        const Limits limits(tags, id);
        const QString name = tags.getTagNameById(id);
        const QString type = dataTypeName(tags, limits.type);
        const QString none = QStringLiteral("-");
        if (m_request.json)
            m_streams.print(JsonLine()
                                .add("id", id)
                                .add("name", name)
                                .add("dataType", type)
                                .add("least", limits.jsonMin)
                                .add("greatest", limits.jsonMax)
                                .add("length", limits.isNumber ? QJsonValue() : QJsonValue(limits.length))
                                .text());
        else
            table.addRow({QString::number(id), name, type, limits.isNumber ? limits.min : none,
                          limits.isNumber ? limits.max : none,
                          limits.isNumber ? none : QString::number(limits.length)});
    }
    printTable(table);
    return Success;
}

ExitCode ProjectWorker::encode(Project &project, int id) const
{
    TagSystem &tags = project.tags();
    const QString tag = m_request.arguments.at(0);
    const QString text = m_request.arguments.at(1);
    const int type = tags.getDataTypeByID(id);
    if (tags.datatypeString(type).isEmpty())
        return refuse(tag, QStringLiteral("there is no data type %1").arg(type));
    QString reason;
    const QVariant value = valueOfText(text, type, reason);
    if (value.isValid())
        reason = beyondLimits(tags, id, value, text);
    if (!reason.isEmpty())
        return refuse(tag, reason);
    const QString bytes = QString::fromLatin1(tags.varToByteArrayThreadSafe(id, value).toHex().toUpper());
    if (m_request.json)
        m_streams.print(JsonLine()
                            .add("id", id)
                            .add("name", tags.getTagNameById(id))
                            .add("dataType", tags.datatypeString(type))
                            .add("value", jsonOfValue(value, type))
                            .add("bytes", bytes)
                            .text());
    else
        m_streams.print(bytes);
    return Success;
}

ExitCode ProjectWorker::decode(Project &project, int id) const
{
    TagSystem &tags = project.tags();
    const QString tag = m_request.arguments.at(0);
    const QString text = m_request.arguments.mid(1).join(QLatin1Char(' '));
    const int type = tags.getDataTypeByID(id);
    if (tags.datatypeString(type).isEmpty())
        return refuse(tag, QStringLiteral("there is no data type %1").arg(type));
    QByteArray bytes;
    if (!bytesOfHex(text, bytes))
        return refuse(tag, QStringLiteral("\"%1\" is no row of bytes in hexadecimal").arg(text));
    const bool isText = type == label::TagAscii;
    const int size = isText ? tags.getScaleByID(id) : tags.getDataSizeByType(type);
    if (bytes.isEmpty() || bytes.size() > size || (!isText && bytes.size() < size))
        return refuse(tag, QStringLiteral("%1 bytes are given, the tag has %2").arg(bytes.size()).arg(size));
    const QVariant value = tags.byteArrayToVarThreadSafe(id, bytes);
    if (m_request.json)
        m_streams.print(JsonLine()
                            .add("id", id)
                            .add("name", tags.getTagNameById(id))
                            .add("dataType", tags.datatypeString(type))
                            .add("bytes", QString::fromLatin1(bytes.toHex().toUpper()))
                            .add("value", jsonOfValue(value, type))
                            .text());
    else
        m_streams.print(textOfValue(value, type));
    return Success;
}
