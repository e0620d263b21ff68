// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "driverlinter.h"

#include <QCoreApplication>

#include <cstdio>

namespace {

constexpr int faulty = 1;
constexpr int wrongUsage = 2;

void ignoreLog(QtMsgType, const QMessageLogContext &, const QString &) {}

void complain(const QString &line)
{
    std::fprintf(stderr, "%s\n", line.toUtf8().constData());
}

} // namespace

/// Compiles driver files into the driver database if the linter finds no error in them. Prints each finding as
/// "file:line: error: text". After an error the old database stays.
int main(int argc, char *argv[])
{
    qInstallMessageHandler(ignoreLog);
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3) {
        complain(QStringLiteral("usage: compile-drivers DATABASE FILE.tsv..."));
        return wrongUsage;
    }
    DriverLinter linter;
    for (const QString &file : arguments.mid(2))
        linter.addFile(file);
    const QList<LintFinding> findings = linter.findings();
    for (const LintFinding &finding : findings)
        complain(finding.toString());
    if (hasErrors(findings))
        return faulty;
    QString error;
    if (writeDriverDatabase(arguments.at(1), linter.drivers(), error))
        return 0;
    complain(QStringLiteral("%1: error: %2").arg(arguments.at(1), error));
    return faulty;
}
