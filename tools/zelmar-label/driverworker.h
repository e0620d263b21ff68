// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_DRIVERWORKER_H
#define ZELMAR_LABEL_TOOL_DRIVERWORKER_H

#include "commandline.h"
#include "output.h"

class QByteArray;

/// Executes a request about driver files on the given streams.
class DriverWorker
{
public:
    DriverWorker(const Request &request, const Streams &streams);

    ExitCode run() const;

private:
    ExitCode exportDriver() const;
    ExitCode compile() const;
    ExitCode write(const QString &path, const QByteArray &text) const;
    ExitCode refuse(const QString &sentence) const;

    const Request &m_request;
    const Streams &m_streams;
};

#endif
