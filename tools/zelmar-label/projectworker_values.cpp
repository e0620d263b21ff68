// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "projectworker.h"

#include "project.h"
#include "tagcsv.h"
#include "taglimits.h"
#include "tagtypes.h"
#include "tagvalue.h"

#include "zelmar_label/tag_store/tagsystem.h"

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
        const TagLimits limits(tags, id);
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
        return refuse(tag, QStringLiteral("\"%1\" is not a list of hexadecimal bytes").arg(text));
    const bool isText = type == tagtype::Ascii;
    const int size = isText ? tags.getScaleByID(id) : tags.getDataSizeByType(type);
    if (bytes.isEmpty() || bytes.size() > size || (!isText && bytes.size() < size))
        return refuse(tag, QStringLiteral("the tag has %1, not %2").arg(counted(size, "byte")).arg(bytes.size()));
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
