// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_WORKER_H
#define ZELMAR_LABEL_TOOL_WORKER_H

#include "commandline.h"
#include "output.h"

#include <functional>

class CommunicatorCommand;
class Device;
class DriverDatabase;
struct ResolvedAddress;

/// Executes a request about a driver on the given streams.
class Worker
{
public:
    Worker(const Request &request, const Streams &streams);

    ExitCode run() const;

private:
    ExitCode listDrivers(const DriverDatabase &database) const;
    ExitCode listFormats(Device &device) const;
    ExitCode checkAddresses(Device &device) const;
    ExitCode printNext(Device &device) const;
    ExitCode printUnits(Device &device) const;
    ExitCode printBlocks(Device &device) const;

    void forEachAddress(const std::function<void(const QString &)> &visit) const;
    void printTable(const TextTable &table) const;
    void printAsJson(const CommunicatorCommand &command, const ResolvedAddress &start) const;
    ExitCode refuse(const QString &address, const QString &reason) const;

    const Request &m_request;
    const Streams &m_streams;
};

#endif
