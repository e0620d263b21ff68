// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "tagimport.h"

#include "project.h"

#include "zelmar_label/tag_store/tagsystem.h"
#include "zelmar_label/tag_values/tagdatatype_p.h"

#include <QFile>
#include <QSqlError>
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

constexpr int longImport = 1000;

/// -1 for a text that is neither a type's name nor its number.
int dataTypeOf(const TagSystem &tags, const QString &text)
{
    const QStringList names = tags.dataTypeList();
    const int named = names.indexOf(text);
    if (named >= 0)
        return named;
    // The list spells it without the bracket.
    if (text == QLatin1String("INT(64)"))
        return label::TagInt64;
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    return isNumber && number >= 0 && number < names.size() ? number : -1;
}

} // namespace

TagImport::TagImport(const Request &request, const Streams &streams)
    : m_request(request)
    , m_streams(streams)
{
}

QStringList TagImport::columns()
{
    return {QStringLiteral("name"), QStringLiteral("link"), QStringLiteral("data type"), QStringLiteral("address"),
            QStringLiteral("scale")};
}

ExitCode TagImport::run()
{
    if (!readFile())
        return m_refused > 0 ? AddressRefused : Unreadable;
    Project project(m_streams);
    if (m_request.dryRun)
        project.takeMissingTable();
    const Project::Access access = m_request.dryRun ? Project::Access::ReadOnly : Project::Access::ReadWrite;
    if (!project.open(m_request.project, access) || !readKnownTags(project))
        return Unreadable;
    readRows(project);
    if (m_refused > 0) {
        m_streams.complain(QStringLiteral("%1 lines are refused; nothing is imported").arg(m_refused));
        return AddressRefused;
    }
    if (!m_request.dryRun && !(write(project) && project.commit())) {
        m_streams.complain(QStringLiteral("nothing is imported"));
        return Unreadable;
    }
    printSummary();
    return Success;
}

bool TagImport::readFile()
{
    const QString path = m_request.arguments.constFirst();
    QFile file(path);
    const bool isStandardInput = path == QLatin1String("-");
    if (!isStandardInput && !file.open(QIODevice::ReadOnly)) {
        m_streams.complain(QStringLiteral("%1 cannot be read: %2").arg(path, file.errorString()));
        return false;
    }
    m_content = readCsv(isStandardInput ? m_streams.in : file);
    if (!m_content.error.isEmpty()) {
        refuse(m_content.errorLine, QString(), m_content.error);
        return false;
    }
    if (!m_content.rows.isEmpty())
        return readHeader(m_content.rows.takeFirst());
    refuse(1, QString(), QStringLiteral("the line of column names is missing"));
    return false;
}

bool TagImport::readHeader(const CsvRow &header)
{
    m_width = header.fields.size();
    QStringList names;
    for (const QString &name : header.fields)
        names.append(name.trimmed().toLower());
    for (const QString &name : qAsConst(names)) {
        if (!columns().contains(name) || names.count(name) > 1) {
            refuse(header.line, QString(),
                   columns().contains(name) ? QStringLiteral("the column \"%1\" stands twice").arg(name)
                                            : QStringLiteral("there is no column \"%1\"").arg(name));
            return false;
        }
    }
    for (const QString &column : columns()) {
        m_positions.append(names.indexOf(column));
        if (m_positions.constLast() >= 0 || column == columns().at(ScaleColumn))
            continue;
        refuse(header.line, QString(), QStringLiteral("the column \"%1\" is missing").arg(column));
        return false;
    }
    return true;
}

/// The tags as they are when the transaction begins.
bool TagImport::readKnownTags(const Project &project)
{
    if (!project.hasTable())
        return true;
    m_stored.readColumns(project.database());
    QSqlQuery query(project.database());
    query.setForwardOnly(true);
    query.exec(QStringLiteral("SELECT name, connector_id, data_type, address, scale FROM custom_tag_table"));
    while (query.next()) {
        Tag tag;
        tag.name = query.value(0).toString();
        tag.link = query.value(1).toInt();
        tag.dataType = query.value(2).toInt();
        tag.address = query.value(3).toString();
        tag.scale = query.value(4).toInt();
        tag.count = m_known.value(tag.name).count + (m_known.contains(tag.name) ? 1 : 0);
        m_known.insert(tag.name, tag);
    }
    if (!query.lastError().isValid())
        return true;
    m_streams.complain(
        QStringLiteral("the tags of %1 cannot be read (%2)").arg(project.path(), query.lastError().databaseText()));
    return false;
}

void TagImport::readRows(Project &project)
{
    for (const CsvRow &row : qAsConst(m_content.rows)) {
        Tag tag;
        QString reason = readRow(project, row, tag);
        if (reason.isEmpty())
            reason = refusal(project, tag);
        if (!tag.name.isEmpty() && !m_lines.contains(tag.name))
            m_lines.insert(tag.name, row.line);
        if (!reason.isEmpty()) {
            refuse(row.line, tag.name, reason);
            continue;
        }
        const auto known = m_known.constFind(tag.name);
        if (known == m_known.constEnd())
            m_added.append(tag);
        else if (known->isSame(tag))
            ++m_unchanged;
        else
            m_changed.append(tag);
    }
}

QString TagImport::field(const CsvRow &row, int column) const
{
    return row.fields.value(m_positions.at(column));
}

QString TagImport::readRow(const Project &project, const CsvRow &row, Tag &tag) const
{
    tag.line = row.line;
    tag.name = field(row, NameColumn);
    tag.address = field(row, AddressColumn);
    if (row.fields.size() != m_width)
        return QStringLiteral("it has %1 fields, the first line %2").arg(row.fields.size()).arg(m_width);
    bool isNumber = false;
    const QString link = field(row, LinkColumn);
    tag.link = link.toInt(&isNumber);
    if (!isNumber)
        return QStringLiteral("the link \"%1\" is no whole number").arg(link);
    const QString type = field(row, TypeColumn);
    tag.dataType = dataTypeOf(project.tags(), type);
    if (tag.dataType < 0)
        return QStringLiteral("there is no data type \"%1\"").arg(type);
    if (m_positions.at(ScaleColumn) < 0)
        return QString();
    const QString scale = field(row, ScaleColumn);
    tag.scale = scale.toInt(&isNumber);
    return isNumber ? QString() : QStringLiteral("the scale \"%1\" is no whole number").arg(scale);
}

QString TagImport::nameRefusal(const Project &project, const QString &name) const
{
    if (name.isEmpty())
        return QStringLiteral("the name is empty");
    if (project.tags().isSystemTag(name))
        return QStringLiteral("names that begin with \"%1\" are those of system tags").arg(name.left(2));
    if (project.tags().isRecipeTag(name))
        return QStringLiteral("names that begin with \"%1\" are those of recipe tags").arg(name.left(2));
    if (m_lines.contains(name))
        return QStringLiteral("line %1 has the same name").arg(m_lines.value(name));
    const auto known = m_known.constFind(name);
    if (known != m_known.constEnd() && known->count > 1)
        return QStringLiteral("%1 tags of the project have this name").arg(known->count);
    const QString stored = m_stored.name(name);
    return stored == name ? QString() : QStringLiteral("the project would keep the name as \"%1\"").arg(stored);
}

QString TagImport::refusal(Project &project, const Tag &tag) const
{
    const QString reason = nameRefusal(project, tag.name);
    if (!reason.isEmpty())
        return reason;
    const QString stored = m_stored.address(tag.address);
    if (stored != tag.address)
        return QStringLiteral("the project would keep the address %1 as \"%2\"").arg(tag.address, stored);
    return project.refusal(tag.link, tag.dataType, tag.address, tag.scale);
}

bool TagImport::write(Project &project)
{
    TagSystem &tags = project.tags();
    const int all = m_added.size() + m_changed.size();
    int done = 0;
    bool isWritten = true;
    for (const Tag &tag : qAsConst(m_added)) {
        isWritten = isWritten && tags.addTag(tag.name, tag.address, tag.link, tag.dataType, tag.scale);
        showProgress(++done, all);
    }
    for (const Tag &tag : qAsConst(m_changed)) {
        isWritten = isWritten && tags.modifyTag(tag.name, tag.address, tag.link, tag.dataType, tag.scale);
        showProgress(++done, all);
    }
    return isWritten && !project.hasFailed();
}

void TagImport::refuse(int line, const QString &name, const QString &reason)
{
    ++m_refused;
    if (m_request.json) {
        m_streams.print(JsonLine().add("line", line).add("name", name).add("reason", reason).text());
        return;
    }
    const QString place = QStringLiteral("%1:%2: ").arg(m_request.arguments.constFirst()).arg(line);
    m_streams.complain(place + (name.isEmpty() ? reason : name + QLatin1String(": ") + reason));
}

void TagImport::showProgress(int done, int all) const
{
    if (!m_streams.showsProgress || all < longImport)
        return;
    if (done % 500 == 0 || done == all)
        m_streams.err.write(
            QStringLiteral("\r%1 of %2 tags%3")
                .arg(QString::number(done), QString::number(all), done == all ? QStringLiteral("\n") : QString())
                .toUtf8());
}

void TagImport::printSummary() const
{
    if (m_request.json) {
        m_streams.print(JsonLine()
                            .add("added", m_added.size())
                            .add("changed", m_changed.size())
                            .add("unchanged", m_unchanged)
                            .add("dryRun", m_request.dryRun)
                            .text());
        return;
    }
    m_streams.print(QStringLiteral("%1%2 added, %3 changed, %4 unchanged")
                        .arg(m_request.dryRun ? QStringLiteral("would be: ") : QString(),
                             QString::number(m_added.size()), QString::number(m_changed.size()),
                             QString::number(m_unchanged)));
}
