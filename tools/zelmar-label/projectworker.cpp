// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "projectworker.h"

#include "project.h"
#include "sampleproject.h"
#include "tagcsv.h"
#include "tagimport.h"

#include "zelmar_label/label_table/rowdescription_p.h"
#include "zelmar_label/tag_store/tagids_p.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <QFile>
#include <QFileInfo>
#include <QIODevice>
#include <QJsonObject>
#include <QSet>

namespace {

QString textOrDash(const QString &text)
{
    return text.isEmpty() ? QStringLiteral("-") : text;
}

QJsonValue textOrNull(const QString &text)
{
    return text.isEmpty() ? QJsonValue() : QJsonValue(text);
}

/// The last address of the row of the device address.
QString endOf(const Link &link, const QString &address, int type)
{
    const ResolvedAddress resolved = link.device->resolve(address, type);
    if (!resolved.isAccepted())
        return QString();
    const label::CommandFormatter &row = link.device->row(resolved.row);
    return QStringLiteral("%1 ends at %2%3").arg(label::formatName(row), row.end(), label::radixRemark(row.base()));
}

QString shortfall(const Link &link, const CommunicatorCommand &command, int made, int count)
{
    const QString end = endOf(link, command.address, command.dataType);
    return QStringLiteral("only %1 of %2 items follow%3")
        .arg(QString::number(made), QString::number(count), end.isEmpty() ? QString() : QLatin1String(": ") + end);
}

} // namespace

ProjectWorker::ProjectWorker(const Request &request, const Streams &streams)
    : m_request(request)
    , m_streams(streams)
{
}

ExitCode ProjectWorker::run() const
{
    switch (m_request.command) {
    case Request::Command::SystemTags:
        return listSystemTags();
    case Request::Command::Import:
        return importTags();
    case Request::Command::SampleProject:
        return makeSample();
    default:
        return read();
    }
}

ExitCode ProjectWorker::read() const
{
    Project project(m_streams);
    if (!project.open(m_request.project, Project::Access::ReadOnly))
        return Unreadable;
    if (!project.setRecipes(m_request.recipes))
        return AddressRefused;
    ExitCode code = Success;
    if (m_request.command == Request::Command::Tags) {
        code = listTags(project);
    } else if (m_request.command == Request::Command::Export) {
        code = exportTags(project);
    } else if (m_request.command == Request::Command::Limits) {
        code = printLimits(project);
    } else {
        const int id = project.find(m_request.arguments.constFirst());
        if (id < 0)
            return AddressRefused;
        if (m_request.command == Request::Command::Commands)
            code = printCommands(project, id);
        else if (m_request.command == Request::Command::ProjectBlocks)
            code = printBlocks(project, id);
        else if (m_request.command == Request::Command::Encode)
            code = encode(project, id);
        else
            code = decode(project, id);
    }
    return project.hasFailed() ? Unreadable : code;
}

ExitCode ProjectWorker::importTags() const
{
    return TagImport(m_request, m_streams).run();
}

ExitCode ProjectWorker::makeSample() const
{
    const QString path = m_request.project;
    if (QFileInfo::exists(path)) {
        m_streams.complain(QStringLiteral("%1 already exists; it is not changed").arg(path));
        return Unreadable;
    }
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly)) {
            m_streams.complain(QStringLiteral("%1 cannot be made: %2").arg(path, file.errorString()));
            return Unreadable;
        }
    }
    if (fillSample(path))
        return Success;
    QFile::remove(path);
    return Unreadable;
}

bool ProjectWorker::fillSample(const QString &path) const
{
    Project project(m_streams);
    if (!project.open(path, Project::Access::ReadWrite))
        return false;
    QString error;
    const auto refusal = [&project](int linkId, int dataType, const QString &address, int scale) {
        return project.refusal(linkId, dataType, address, scale);
    };
    const bool isWritten = writeSampleProject(project.database(), project.tags(), refusal, error);
    if (!error.isEmpty())
        m_streams.complain(error);
    return isWritten && !project.hasFailed() && project.commit();
}

ExitCode ProjectWorker::listSystemTags() const
{
    TagSystem tags(nullptr);
    TextTable table;
    table.addRow({QStringLiteral("id"), QStringLiteral("name"), QStringLiteral("data type"), QStringLiteral("kind")});
    for (int id = label::firstSystemTagId; id <= label::lastSystemTagId; ++id) {
        const QString name = tags.getTagNameById(id);
        if (name.isEmpty())
            continue;
        const QString type = tags.datatypeString(tags.getDataTypeByID(id));
        const QString kind = tags.isControlSystemTag(id) ? QStringLiteral("control") : QStringLiteral("information");
        if (m_request.json)
            m_streams.print(JsonLine().add("id", id).add("name", name).add("dataType", type).add("kind", kind).text());
        else
            table.addRow({QString::number(id), name, type, kind});
    }
    printTable(table);
    return Success;
}

QList<int> ProjectWorker::selectedTags(Project &project) const
{
    TagSystem &tags = project.tags();
    const QList<int> ids = m_request.link ? tags.getTagIDList(*m_request.link) : tags.getTagIDList();
    if (m_request.find.isEmpty())
        return ids;
    const QStringList similar = tags.getSimilarTagNames(m_request.find);
    const QSet<QString> names(similar.begin(), similar.end());
    QList<int> found;
    for (const int id : ids) {
        if (names.contains(tags.getTagNameById(id)))
            found.append(id);
    }
    return found;
}

ExitCode ProjectWorker::listTags(Project &project) const
{
    TextTable table;
    table.addRow({QStringLiteral("verdict"), QStringLiteral("id"), QStringLiteral("name"), QStringLiteral("link"),
                  QStringLiteral("driver"), QStringLiteral("data type"), QStringLiteral("address"),
                  QStringLiteral("command"), QStringLiteral("scan time"), QStringLiteral("reason")});
    ExitCode code = Success;
    const QList<int> ids = selectedTags(project);
    for (const int id : ids) {
        const QString refusal = project.refusal(id);
        if (!refusal.isEmpty())
            code = AddressRefused;
        if (m_request.json)
            m_streams.print(tagAsJson(project, id, refusal));
        else
            table.addRow(tagCells(project, id, refusal));
    }
    printTable(table);
    return code;
}

QString ProjectWorker::tagAsJson(Project &project, int id, const QString &refusal) const
{
    TagSystem &tags = project.tags();
    const int linkId = tags.getCommunicatorID(id);
    const Link &link = project.link(linkId);
    bool isCommand = false;
    const CommunicatorCommand command = tags.getCommunicatorCommandByIndex(id, isCommand);
    QJsonObject commandObject = {{QStringLiteral("address"), command.address},
                                 {QStringLiteral("dataType"), label::dataTypeWord(command.dataType)},
                                 {QStringLiteral("length"), static_cast<qint64>(command.length)}};
    return JsonLine()
        .add("id", id)
        .add("name", tags.getTagNameById(id))
        .add("link", linkId)
        .add("linkEnabled", link.exists ? QJsonValue(link.isEnabled) : QJsonValue())
        .add("driver", textOrNull(link.driver))
        .add("dataType", dataTypeName(tags, tags.getDataTypeByID(id)))
        .add("address", tags.getAddressByID(id))
        .add("valid", refusal.isEmpty())
        .add("reason", textOrNull(refusal))
        .add("command", isCommand ? QJsonValue(commandObject) : QJsonValue())
        .add("scanTime", tags.getScanTimeByID(id))
        .add("scale", tags.getScaleByID(id))
        .text();
}

QStringList ProjectWorker::tagCells(Project &project, int id, const QString &refusal) const
{
    TagSystem &tags = project.tags();
    const int linkId = tags.getCommunicatorID(id);
    const Link &link = project.link(linkId);
    bool isCommand = false;
    const CommunicatorCommand command = tags.getCommunicatorCommandByIndex(id, isCommand);
    const QString remark = link.exists && !link.isEnabled ? QStringLiteral(" (disabled)") : QString();
    return {refusal.isEmpty() ? QStringLiteral("ok") : QStringLiteral("refused"),
            QString::number(id),
            tags.getTagNameById(id),
            linkId == 0 ? QStringLiteral("internal") : QString::number(linkId) + remark,
            textOrDash(link.driver),
            dataTypeName(tags, tags.getDataTypeByID(id)),
            textOrDash(tags.getAddressByID(id)),
            isCommand ? QStringLiteral("%1, length %2").arg(label::dataTypeWord(command.dataType)).arg(command.length)
                      : QStringLiteral("-"),
            QString::number(tags.getScanTimeByID(id)),
            textOrDash(refusal)};
}

ExitCode ProjectWorker::exportTags(Project &project) const
{
    TagSystem &tags = project.tags();
    if (!m_request.json)
        m_streams.out.write(tagCsvHeader());
    QSet<QString> names;
    const QList<int> ids = tags.getTagIDList();
    for (const int id : ids) {
        const PlainTag tag = plainTag(tags, id);
        if (names.contains(tag.name))
            m_streams.complain(
                QStringLiteral("more than one tag has the name \"%1\": import uses only the first").arg(tag.name));
        names.insert(tag.name);
        if (m_request.json)
            m_streams.print(JsonLine()
                                .add("name", tag.name)
                                .add("link", tag.link)
                                .add("dataType", dataTypeName(tags, tag.dataType))
                                .add("address", tag.address)
                                .add("scale", tag.scale)
                                .text());
        else
            m_streams.out.write(tagCsvLine(tags, tag));
    }
    return Success;
}

ExitCode ProjectWorker::printCommands(Project &project, int id) const
{
    TagSystem &tags = project.tags();
    const QString text = m_request.arguments.constFirst();
    const QString refusal = project.refusal(id);
    if (!refusal.isEmpty())
        return refuse(text, refusal);
    bool isCommand = false;
    const CommunicatorCommand command = tags.getCommunicatorCommandByIndex(id, isCommand);
    const int linkId = tags.getCommunicatorID(id);
    if (linkId == 0) {
        if (m_request.count > 1)
            return refuse(text, QStringLiteral("it has no device, so no items follow it"));
        printCommands({command});
        return Success;
    }
    const QList<CommunicatorCommand> commands = tags.getContinuousCommand(id, m_request.count);
    printCommands(commands);
    if (commands.size() >= m_request.count)
        return Success;
    const QString reason = shortfall(project.link(linkId), command, commands.size(), m_request.count);
    m_streams.complain(text + QLatin1String(": ") + reason);
    return commands.isEmpty() ? AddressRefused : Success;
}

ExitCode ProjectWorker::printBlocks(Project &project, int id) const
{
    TagSystem &tags = project.tags();
    const QString text = m_request.arguments.constFirst();
    const QString refusal = project.refusal(id);
    if (!refusal.isEmpty())
        return refuse(text, refusal);
    const int linkId = tags.getCommunicatorID(id);
    if (linkId == 0)
        return refuse(text, QStringLiteral("it has no device, so there are no blocks to read"));
    QList<CommunicatorCommand> blocks;
    if (tags.creatBlockCommand(id, m_request.count, blocks)) {
        printCommands(blocks);
        return Success;
    }
    const int made = tags.getContinuousCommand(id, m_request.count).size();
    if (made >= m_request.count)
        return refuse(text, QStringLiteral("the driver allows no block with an item of its type"));
    bool isCommand = false;
    const CommunicatorCommand command = tags.getCommunicatorCommandByIndex(id, isCommand);
    return refuse(text, shortfall(project.link(linkId), command, made, m_request.count));
}

void ProjectWorker::printCommands(const QList<CommunicatorCommand> &commands) const
{
    TextTable table;
    for (const CommunicatorCommand &command : commands) {
        if (m_request.json)
            m_streams.print(JsonLine()
                                .add("address", command.address)
                                .add("dataType", label::dataTypeWord(command.dataType))
                                .add("length", static_cast<qint64>(command.length))
                                .add("scanTime", command.scanTime)
                                .text());
        else
            table.addRow({textOrDash(command.address), QStringLiteral("length %1").arg(command.length),
                          label::dataTypeWord(command.dataType)});
    }
    printTable(table);
}

void ProjectWorker::printTable(const TextTable &table) const
{
    if (!m_request.json)
        m_streams.print(table);
}

ExitCode ProjectWorker::refuse(const QString &tag, const QString &reason) const
{
    m_streams.complain(tag + QLatin1String(": ") + reason);
    return AddressRefused;
}
