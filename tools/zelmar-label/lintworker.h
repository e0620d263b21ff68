// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_LINTWORKER_H
#define ZELMAR_LABEL_TOOL_LINTWORKER_H

#include "commandline.h"
#include "output.h"

class DriverLinter;
struct LintFinding;

/// Executes the request to lint drivers on the given streams.
class LintWorker
{
public:
    LintWorker(const Request &request, const Streams &streams);

    ExitCode run() const;

private:
    bool addAll(DriverLinter &linter, QString &error) const;
    void print(const LintFinding &finding) const;
    void printAsJson(const LintFinding &finding) const;
    void printCounts(const DriverLinter &linter, const QList<LintFinding> &findings) const;
    void printSummary(const DriverLinter &linter, const QList<LintFinding> &findings) const;

    const Request &m_request;
    const Streams &m_streams;
};

#endif
