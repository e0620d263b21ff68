// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_CUSTOMWORKER_H
#define ZELMAR_LABEL_TOOL_CUSTOMWORKER_H

#include "commandline.h"
#include "customdatabase.h"
#include "output.h"

#include <functional>

/// Executes a request about custom labels on the given streams.
class CustomWorker
{
public:
    CustomWorker(const Request &request, const Streams &streams);

    ExitCode run();

private:
    using Change = std::function<bool(QString &error)>;

    ExitCode list();
    ExitCode listFormats();
    ExitCode setUp();
    ExitCode fill();
    ExitCode setDefault();
    ExitCode drop();

    bool find(const QString &driver, CustomDriver &found);
    bool readLimits(const QString &driver, int &blockSize, int &bitBlockSize) const;
    ExitCode change(const QString &driver, const Change &steps);
    void tell(const CustomDriver &driver) const;
    ExitCode refuse(const QString &sentence, ExitCode code) const;

    const Request &m_request;
    const Streams &m_streams;
    CustomDatabase m_database;
};

#endif
