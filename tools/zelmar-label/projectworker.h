// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_PROJECTWORKER_H
#define ZELMAR_LABEL_TOOL_PROJECTWORKER_H

#include "commandline.h"
#include "output.h"

#include <QList>

class CommunicatorCommand;
class Project;

/// Executes a request about a project on the given streams.
class ProjectWorker
{
public:
    ProjectWorker(const Request &request, const Streams &streams);

    ExitCode run() const;

private:
    ExitCode read() const;
    ExitCode importTags() const;
    ExitCode makeSample() const;
    bool fillSample(const QString &path) const;
    ExitCode listSystemTags() const;
    ExitCode listTags(Project &project) const;
    ExitCode exportTags(Project &project) const;
    ExitCode printLimits(Project &project) const;
    ExitCode printCommands(Project &project, int id) const;
    ExitCode printBlocks(Project &project, int id) const;
    ExitCode encode(Project &project, int id) const;
    ExitCode decode(Project &project, int id) const;

    QList<int> selectedTags(Project &project) const;
    QString tagAsJson(Project &project, int id, const QString &refusal) const;
    QStringList tagCells(Project &project, int id, const QString &refusal) const;
    void printCommands(const QList<CommunicatorCommand> &commands) const;
    void printTable(const TextTable &table) const;
    ExitCode refuse(const QString &tag, const QString &reason) const;

    const Request &m_request;
    const Streams &m_streams;
};

#endif
