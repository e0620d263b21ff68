// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "tagimport.h"

#include "project.h"

#include <QFile>

namespace {

constexpr int longImport = 1000;

} // namespace

TagImport::TagImport(const Request &request, const Streams &streams)
    : m_request(request)
    , m_streams(streams)
{
}

ExitCode TagImport::run()
{
    if (!readFile())
        return m_refused > 0 ? AddressRefused : Unreadable;
    Project project(m_streams);
    if (m_request.dryRun)
        project.takeMissingTable();
    const Project::Access access = m_request.dryRun ? Project::Access::ReadOnly : Project::Access::ReadWrite;
    return project.open(m_request.project, access) ? runIn(project) : Unreadable;
}

ExitCode TagImport::runIn(Project &project)
{
    ImportPlan plan(project.tags(), [&project](int linkId, int dataType, const QString &address, int scale) {
        return project.refusal(linkId, dataType, address, scale);
    });
    QString error;
    if (project.hasTable() && !plan.readKnownTags(project.database(), error)) {
        m_streams.complain(QStringLiteral("the tags of %1 cannot be read (%2)").arg(project.path(), error));
        return Unreadable;
    }
    for (const CsvRow &row : qAsConst(m_content.rows))
        plan.readRow(m_columns, row);
    for (const ImportPlan::Refusal &refusal : plan.refusals())
        refuse(refusal.line, refusal.name, refusal.reason);
    if (m_refused > 0) {
        m_streams.complain(QStringLiteral("%1 %2 refused; nothing is imported")
                               .arg(counted(m_refused, "line"), QLatin1String(m_refused == 1 ? "is" : "are")));
        return AddressRefused;
    }
    if (!m_request.dryRun && !(write(project, plan) && project.commit())) {
        m_streams.complain(QStringLiteral("nothing is imported"));
        return Unreadable;
    }
    printSummary(plan);
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
    int line = m_content.errorLine;
    QString error = m_content.error;
    if (error.isEmpty() && m_content.rows.isEmpty()) {
        line = 1;
        error = QStringLiteral("the line of column names is missing");
    } else if (error.isEmpty()) {
        const CsvRow header = m_content.rows.takeFirst();
        line = header.line;
        m_columns.read(header, error);
    }
    if (!error.isEmpty())
        refuse(line, QString(), error);
    return error.isEmpty();
}

bool TagImport::write(Project &project, ImportPlan &plan) const
{
    const int all = plan.writeCount();
    bool isWritten = true;
    for (int index = 0; index < all; ++index) {
        isWritten = isWritten && plan.write(index);
        showProgress(index + 1, all);
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

void TagImport::printSummary(const ImportPlan &plan) const
{
    if (m_request.json) {
        m_streams.print(JsonLine()
                            .add("added", plan.added())
                            .add("changed", plan.changed())
                            .add("unchanged", plan.unchanged())
                            .add("dryRun", m_request.dryRun)
                            .text());
        return;
    }
    m_streams.print(QStringLiteral("%1%2 added, %3 changed, %4 unchanged")
                        .arg(m_request.dryRun ? QStringLiteral("would be: ") : QString(), QString::number(plan.added()),
                             QString::number(plan.changed()), QString::number(plan.unchanged())));
}
