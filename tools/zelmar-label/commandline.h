// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_COMMANDLINE_H
#define ZELMAR_LABEL_TOOL_COMMANDLINE_H

#include <QString>
#include <QStringList>

#include <optional>

/// The user's request.
struct Request
{
    enum class Command {
        Drivers,
        Formats,
        Check,
        Next,
        Split,
        Blocks,
        Lint,
        ExportDriver,
        NewDriver,
        Compile,
        CustomShow,
        CustomSetup,
        CustomFill,
        CustomDefault,
        CustomDrop,
        Tags,
        Commands,
        ProjectBlocks,
        Encode,
        Decode,
        Limits,
        SystemTags,
        Export,
        Import,
        SampleProject,
    };

    bool isOfProject() const { return command >= Command::Tags; }
    bool isOfCustomDatabase() const { return command >= Command::CustomShow && command <= Command::CustomDrop; }
    /// True for commands that write drivers.
    bool isOfDriverFile() const { return command >= Command::ExportDriver && command <= Command::Compile; }
    /// True for commands that read a driver database.
    bool takesDatabase() const { return command <= Command::ExportDriver; }

    Command command = Command::Drivers;
    /// The driver database to read, empty for the one beside the program; for `compile` the one to write.
    QString database;
    /// The folder of the program with the custom database; empty for this program.
    QString folder;
    bool json = false;
    bool debug = false;
    /// The driver's name.
    QString driver;
    /// Driver files to read, or the one to write; `lint`: also databases, and names of drivers.
    QStringList files;
    /// `lint`: the folder of the sample files, empty for those beside the driver files.
    QString samples;
    /// `lint`: print the counts of each driver.
    bool counts = false;
    /// `export-driver`: overwrite an existing file.
    bool force = false;
    QStringList addresses;
    /// `check`: the type filter.
    int type = -1;
    /// `next`, `split`: the type of the data.
    int dataType = 0;
    /// `next`, `commands`, `blocks`: how many.
    int count = 1;
    /// `next`: the distance, if not the natural one.
    std::optional<int> cap;
    bool unchecked = false;
    /// `split`: how many units of the data type.
    int length = 1;
    /// The project database, for commands on a project.
    QString project;
    /// The arguments after the project: the tag and the value or bytes, the tags, or the CSV file.
    QStringList arguments;
    /// `tags`: list only the tags of this link.
    std::optional<int> link;
    /// `tags`: the characters that the names must contain.
    QString find;
    /// Recipe tags of the project, as "NAME=TAG".
    QStringList recipes;
    /// `import`: only report the changes.
    bool dryRun = false;
};

/// Either a request, or a text to print before exit: help and version on standard output, a usage error with the usage
/// of the command on standard error.
struct CommandLine
{
    std::optional<Request> request;
    QString text;
    QString error;
};

/// `arguments` begin with the program's name.
CommandLine parseCommandLine(const QStringList &arguments);

#endif
