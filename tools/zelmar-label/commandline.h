// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_COMMANDLINE_H
#define ZELMAR_LABEL_TOOL_COMMANDLINE_H

#include <QString>
#include <QStringList>

#include <optional>

/// What the user asks for.
struct Request
{
    enum class Command {
        Drivers,
        Formats,
        Check,
        Next,
        Split,
        Blocks,
    };

    Command command = Command::Drivers;
    /// Empty: the one beside the program.
    QString database;
    bool json = false;
    bool debug = false;
    QString driver;
    QStringList addresses;
    /// `check`: the type filter.
    int type = -1;
    /// `next`, `split`: the type of the data.
    int dataType = 0;
    /// `next`, `blocks`: how many.
    int count = 1;
    /// `next`: the distance, if it is not the natural one.
    std::optional<int> cap;
    bool unchecked = false;
    /// `split`: how many units of the data type.
    int length = 1;
};

/// Either a request, or a text to print and to end with: help and version on standard output, a usage error on standard
/// error with the usage of the command.
struct CommandLine
{
    std::optional<Request> request;
    QString text;
    QString error;
};

/// `arguments` begin with the program's name.
CommandLine parseCommandLine(const QStringList &arguments);

#endif
