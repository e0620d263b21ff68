// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "commandline.h"
#include "customworker.h"
#include "driverworker.h"
#include "lintworker.h"
#include "output.h"
#include "projectworker.h"
#include "worker.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>
#include <unistd.h>

namespace {

bool logIsWanted = false;

/// The library logs each format that it reads and each question that fails.
void handleLog(QtMsgType type, const QMessageLogContext &, const QString &line)
{
    if (!logIsWanted && type != QtFatalMsg)
        return;
    const QByteArray text = line.toUtf8() + '\n';
    std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stderr);
}

bool isColored()
{
    return isatty(STDOUT_FILENO) == 1 && qEnvironmentVariableIsEmpty("NO_COLOR");
}

ExitCode carryOut(const Request &request, const Streams &streams)
{
    if (request.isOfProject())
        return ProjectWorker(request, streams).run();
    if (request.isOfCustomDatabase())
        return CustomWorker(request, streams).run();
    if (request.command == Request::Command::Lint)
        return LintWorker(request, streams).run();
    if (request.isOfDriverFile())
        return DriverWorker(request, streams).run();
    return Worker(request, streams).run();
}

} // namespace

int main(int argc, char *argv[])
{
    qInstallMessageHandler(handleLog);
    const QCoreApplication application(argc, argv);
    QFile in;
    QFile out;
    QFile err;
    in.open(stdin, QIODevice::ReadOnly);
    out.open(stdout, QIODevice::WriteOnly);
    err.open(stderr, QIODevice::WriteOnly | QIODevice::Unbuffered);
    const Streams streams = {in, out, err, isColored(), isatty(STDERR_FILENO) == 1};

    const CommandLine commandLine = parseCommandLine(QCoreApplication::arguments());
    if (!commandLine.error.isEmpty()) {
        streams.complain(commandLine.error.trimmed());
        return UsageError;
    }
    if (!commandLine.request) {
        streams.print(commandLine.text.trimmed());
        return Success;
    }
    logIsWanted = commandLine.request->debug;
    return carryOut(*commandLine.request, streams);
}
