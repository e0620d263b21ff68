// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_TAGIMPORT_H
#define ZELMAR_LABEL_TOOL_TAGIMPORT_H

#include "commandline.h"
#include "importplan.h"
#include "output.h"

class Project;

/// Adds the tags of a CSV file to a project and changes existing ones, all or none.
class TagImport
{
public:
    TagImport(const Request &request, const Streams &streams);

    ExitCode run();

private:
    bool readFile();
    ExitCode runIn(Project &project);
    bool write(Project &project, ImportPlan &plan) const;
    void refuse(int line, const QString &name, const QString &reason);
    void showProgress(int done, int all) const;
    void printSummary(const ImportPlan &plan) const;

    const Request &m_request;
    const Streams &m_streams;
    CsvContent m_content;
    TagColumns m_columns;
    int m_refused = 0;
};

#endif
