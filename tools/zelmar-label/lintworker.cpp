// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "lintworker.h"

#include "driverchecks.h"
#include "interruptedwrite.h"

#include "tools/driver-files/driverlinter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <iterator>

namespace {

bool isDriverFile(const QString &argument)
{
    return argument.endsWith(QLatin1String(".tsv"));
}

QString placeOf(const LintFinding &finding)
{
    return finding.line > 0 ? QStringLiteral("%1:%2").arg(finding.source).arg(finding.line) : finding.source;
}

int countErrors(const QList<LintFinding> &findings)
{
    return static_cast<int>(
        std::count_if(findings.begin(), findings.end(), [](const LintFinding &finding) { return finding.isError(); }));
}

QList<LintFinding> findingsOf(const QString &driver, const QList<LintFinding> &findings)
{
    QList<LintFinding> own;
    std::copy_if(findings.begin(), findings.end(), std::back_inserter(own),
                 [&driver](const LintFinding &finding) { return finding.driver == driver; });
    return own;
}

QJsonValue numberOrNull(int number)
{
    return number > 0 ? QJsonValue(number) : QJsonValue();
}

} // namespace

LintWorker::LintWorker(const Request &request, const Streams &streams)
    : m_request(request)
    , m_streams(streams)
{
}

ExitCode LintWorker::run() const
{
    DriverLinter linter;
    QString error;
    if (!addAll(linter, error)) {
        m_streams.complain(error);
        return Unreadable;
    }
    const QList<LintFinding> findings = linter.findings();
    for (const LintFinding &finding : findings) {
        if (m_request.json)
            printAsJson(finding);
        else
            print(finding);
    }
    if (m_request.counts)
        printCounts(linter, findings);
    if (!m_request.json)
        printSummary(linter, findings);
    return hasErrors(findings) ? AddressRefused : Success;
}

bool LintWorker::addAll(DriverLinter &linter, QString &error) const
{
    if (!m_request.samples.isEmpty() && !QFileInfo(m_request.samples).isDir()) {
        error = QStringLiteral("there is no folder %1").arg(m_request.samples);
        return false;
    }
    QStringList drivers;
    for (const QString &argument : m_request.files) {
        if (isDriverFile(argument)) {
            error = driverFileObstacle(argument);
            if (!error.isEmpty())
                return false;
            linter.addFile(argument, m_request.samples);
        } else if (QFileInfo(argument).isDir()) {
            error = QStringLiteral("%1 is a folder; name its driver files, %1/*.tsv").arg(QDir::cleanPath(argument));
            return false;
        } else if (QFileInfo(argument).isFile()) {
            undoInterruptedWrite(argument);
            if (!linter.addDatabase(argument, {}, error, m_request.samples))
                return false;
        } else {
            drivers.append(argument);
        }
    }
    if (drivers.isEmpty() && !m_request.files.isEmpty())
        return true;
    const QString database =
        m_request.database.isEmpty()
            ? QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("database/drivers"))
            : m_request.database;
    undoInterruptedWrite(database);
    return linter.addDatabase(database, drivers, error, m_request.samples);
}

/// A paragraph with place, problem, row, column and advice.
void LintWorker::print(const LintFinding &finding) const
{
    const QString severity = finding.isError() ? QStringLiteral("error") : QStringLiteral("warning");
    m_streams.print(QStringLiteral("%1: %2: %3 [%4]").arg(placeOf(finding), severity, finding.what, finding.id));
    if (!finding.driver.isEmpty())
        m_streams.print(QLatin1String("    driver  ") + finding.driver);
    if (finding.row > 0)
        m_streams.print(QStringLiteral("    row     %1: %2  %3")
                            .arg(QString::number(finding.row), finding.pattern, finding.description));
    if (!finding.column.isEmpty())
        m_streams.print(QLatin1String("    column  ") + finding.column);
    m_streams.print(QLatin1String("    do      ") + finding.advice);
    m_streams.print(QString());
}

void LintWorker::printAsJson(const LintFinding &finding) const
{
    m_streams.print(JsonLine()
                        .add("severity", finding.isError() ? QStringLiteral("error") : QStringLiteral("warning"))
                        .add("id", finding.id)
                        .add("driver", finding.driver)
                        .add("file", finding.source)
                        .add("line", numberOrNull(finding.line))
                        .add("row", numberOrNull(finding.row))
                        .add("pattern", finding.pattern)
                        .add("description", finding.description)
                        .add("column", finding.column)
                        .add("what", finding.what)
                        .add("advice", finding.advice)
                        .text());
}

void LintWorker::printCounts(const DriverLinter &linter, const QList<LintFinding> &findings) const
{
    TextTable table;
    table.addRow({QStringLiteral("driver"), QStringLiteral("rows"), QStringLiteral("samples"), QStringLiteral("errors"),
                  QStringLiteral("warnings")});
    const QList<DriverText> drivers = linter.drivers();
    for (const DriverText &driver : drivers) {
        const QList<LintFinding> own = findingsOf(driver.name, findings);
        const int rows = driver.rows.size();
        const int samples = linter.countSamples(driver.name);
        const int errors = countErrors(own);
        const int warnings = own.size() - errors;
        if (m_request.json)
            m_streams.print(JsonLine()
                                .add("driver", driver.name)
                                .add("rows", rows)
                                .add("samples", samples)
                                .add("errors", errors)
                                .add("warnings", warnings)
                                .text());
        else
            table.addRow({driver.name, QString::number(rows), QString::number(samples), QString::number(errors),
                          QString::number(warnings)});
    }
    if (!m_request.json)
        m_streams.print(table);
}

void LintWorker::printSummary(const DriverLinter &linter, const QList<LintFinding> &findings) const
{
    int rows = 0;
    const QList<DriverText> drivers = linter.drivers();
    for (const DriverText &driver : drivers)
        rows += driver.rows.size();
    const int errors = countErrors(findings);
    m_streams.print(QStringLiteral("%1, %2, %3: %4, %5")
                        .arg(counted(drivers.size(), "driver"), counted(rows, "row"),
                             counted(linter.countSamples(), "sample"), counted(errors, "error"),
                             counted(findings.size() - errors, "warning")));
}
