// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "commandtexts.h"

#include <QFileInfo>

#include <array>

namespace {

constexpr std::array<CommandText, 25> commandTexts = {{
    {Request::Command::Drivers, "drivers", "drivers [options]", "list the drivers",
     "Lists the drivers of the database with the number of their address formats and the largest read."},
    {Request::Command::Formats, "formats", "formats [options] DRIVER", "list the address formats of a driver",
     "Lists the address formats of a driver in the order in which they are tried. A \"family\" is a format with many "
     "prefixes, such as data blocks: the address gives the prefix."},
    {Request::Command::Check, "check", "check [options] DRIVER ADDRESS...", "check whether addresses are valid",
     "Prints for each address whether the device has it, and its parts or the reason of the refusal. \"-\" reads "
     "addresses from standard input, one on each line. An address may have a station: 2-D100."},
    {Request::Command::Next, "next", "next [options] --as TYPE DRIVER ADDRESS", "print the addresses that follow one",
     "Prints the addresses that follow ADDRESS, for items of a type. Wide items take more than one register."},
    {Request::Command::Split, "split", "split [options] --as TYPE DRIVER ADDRESS",
     "cut a wide item or a text into the device's units",
     "Prints the addresses of the units that together hold the item at ADDRESS."},
    {Request::Command::Blocks, "blocks", "blocks [options] --count N DRIVER ADDRESS",
     "cut a run of items into reads of the size that the device allows",
     "Prints the block commands that read N items from ADDRESS on: N units of the format, or N bits. Bits are read "
     "through their registers if the format allows it. With a project file instead of a driver, it prints the "
     "blocks of a tag: \"blocks [options] --count N PROJECT TAG\"."},
    {Request::Command::Lint, "lint", "lint [options] [FILE|DRIVER...]", "find errors in drivers",
     "Checks drivers and prints for each fault the row, the column, the problem and what to do. FILE is a driver file "
     "(.tsv) with its samples in samples/NAME.tsv or NAME.samples.tsv beside it, or a driver database. DRIVER is a "
     "driver of the database. Without arguments, all drivers of the database are checked. With warnings only, the "
     "exit code is 0."},
    {Request::Command::ExportDriver, "export-driver", "export-driver [options] DRIVER [FILE]",
     "write a driver as a text file",
     "Prints the text form of a driver of the database, or writes it to FILE. A shipped driver has the same "
     "bytes as its source."},
    {Request::Command::NewDriver, "new-driver", "new-driver [options] NAME [FILE]", "write a driver file to start from",
     "Writes a working driver file with comments that explain what to change, and its samples in the folder "
     "\"samples\" beside it. Without FILE, the file is named after the driver. Existing files are not changed."},
    {Request::Command::Compile, "compile", "compile [options] --into DATABASE FILE.tsv...",
     "write driver files into a driver database",
     "Checks the driver files like \"lint\" and writes the drivers into the SQLite database. An existing driver is "
     "replaced, other drivers are not changed. If a file has an error, nothing is written. A missing database is "
     "made; an existing one is copied first."},
    {Request::Command::CustomShow, "custom show", "custom show [options] [DRIVER]",
     "list the drivers that have a custom label",
     "Lists the drivers that were set up in the custom database, or the address formats of one of them."},
    {Request::Command::CustomSetup, "custom setup", "custom setup [options] DRIVER",
     "switch a driver to a custom label",
     "Switches the driver to its custom label. Existing tables are used with their formats; new ones are "
     "empty and refuse every address until they are filled."},
    {Request::Command::CustomFill, "custom fill", "custom fill [options] FILE.tsv",
     "give a driver the formats of a driver file",
     "Checks the driver file like \"lint\", switches its driver to the custom label and replaces the label's formats "
     "and limits by those of the file. If the file has an error, nothing is written."},
    {Request::Command::CustomDefault, "custom default", "custom default [options] DRIVER",
     "switch a driver back to its shipped formats",
     "Makes the driver use its default label again. The custom tables stay, so that \"custom setup\" can use "
     "them again."},
    {Request::Command::CustomDrop, "custom drop", "custom drop [options] DRIVER", "remove a driver's custom label",
     "Makes the driver use its default label again and removes its custom tables."},
    {Request::Command::Tags, "tags", "tags [options] PROJECT", "list a project's tags",
     "Lists the tags of a project with their link and driver, whether the device has the address, or why not, and "
     "their command."},
    {Request::Command::Commands, "commands", "commands [options] PROJECT TAG", "print the commands from a tag on",
     "Prints the commands of N items from the tag's address on. TAG is the name or the id of a tag."},
    {Request::Command::ProjectBlocks, "blocks", "blocks [options] --count N PROJECT TAG",
     "cut the items from a tag on into reads of the size that the device allows",
     "Prints the block commands that read N items of the tag's type from its address on. TAG is the name or the "
     "id of a tag."},
    {Request::Command::Encode, "encode", "encode [options] PROJECT TAG VALUE", "print a tag's value as bytes",
     "Prints the bytes of VALUE, in hexadecimal, the least significant one first. The value must be within the "
     "limits of the tag's type. Write \"--\" before a value with a minus sign."},
    {Request::Command::Decode, "decode", "decode [options] PROJECT TAG HEXBYTES", "print a tag's value from bytes",
     "Prints the value of the bytes. They are hexadecimal, the least significant one first, with or without blanks "
     "between them."},
    {Request::Command::Limits, "limits", "limits [options] PROJECT [TAG...]", "print the limits of tags",
     "Prints the least and the greatest value of each tag, or of all tags."},
    {Request::Command::SystemTags, "system-tags", "system-tags [options]", "list the tags that every panel has",
     "Lists the built-in tags of every panel, which are in every project."},
    {Request::Command::Export, "export", "export [options] PROJECT", "print a project's tags as CSV",
     "Prints the tags as CSV that \"import\" reads: name, link, data type, address, scale."},
    {Request::Command::Import, "import", "import [options] PROJECT FILE.csv", "add and change tags from CSV",
     "Adds the tags of the file to the project and changes existing tags, all or none: if a line is refused, nothing "
     "is written. The first line has the column names: name, link, data type, address and, optionally, scale. "
     "\"-\" reads standard input."},
    {Request::Command::SampleProject, "sample-project", "sample-project [options] FILE", "make a sample project",
     "Makes a project of four links and two hundred tags. An existing file is not changed."},
}};

QCommandLineOption flag(const QStringList &names, const char *description)
{
    return QCommandLineOption(names, QLatin1String(description));
}

QCommandLineOption valued(const char *name, const char *description, const char *value)
{
    return QCommandLineOption(QLatin1String(name), QLatin1String(description), QLatin1String(value));
}

QList<QCommandLineOption> commonOptions()
{
    return {flag({QStringLiteral("json")}, "Print one JSON object on each line."),
            flag({QStringLiteral("debug")}, "Print the library's log on standard error."),
            flag({QStringLiteral("h"), QStringLiteral("help")}, "Print this help."),
            flag({QStringLiteral("v"), QStringLiteral("version")}, "Print the version.")};
}

/// A project always uses the drivers beside the program.
QList<QCommandLineOption> placeOptions(Request::Command command)
{
    Request request;
    request.command = command;
    if (request.takesDatabase())
        return {valued("database", "Driver database to read. Default: database/drivers beside the program.", "FILE")};
    if (request.isOfCustomDatabase())
        return {valued("folder", "Folder of the program with the custom labels. Default: the folder of zelmar-label.",
                       "FOLDER")};
    return {};
}

QCommandLineOption recipeOption()
{
    return valued("recipe",
                  "Recipe tag for the project, connected to one of its tags: \"R>1_1=Level\". May be given more than "
                  "once.",
                  "NAME=TAG");
}

QList<QCommandLineOption> ownOptions(Request::Command command)
{
    switch (command) {
    case Request::Command::Drivers:
    case Request::Command::Formats:
        return {};
    case Request::Command::Check:
        return {valued("type", "Accept any address, bits only or registers only: any, bit, register. Default: any.",
                       "TYPE")};
    case Request::Command::Next:
        return {valued("as", "Type of the items: bit, byte, word, dword, qword, text.", "TYPE"),
                valued("count", "Number of addresses, 1 to 1000000. Default: 1.", "N"),
                valued("cap",
                       "Distance of the addresses in units, negative for downwards. Default: the natural distance.",
                       "N"),
                flag({QStringLiteral("unchecked")}, "With --cap: ignore limits and alignment.")};
    case Request::Command::Split:
        return {valued("as", "Type of the item: byte, word, dword, qword, text.", "TYPE"),
                valued("length", "Number of items of the type, or of characters, 1 to 1000000. Default: 1.", "N")};
    case Request::Command::Blocks:
        return {valued("count", "Number of items, 1 to 1000000.", "N")};
    case Request::Command::ProjectBlocks:
        return {valued("count", "Number of items, 1 to 1000000.", "N"), recipeOption()};
    case Request::Command::Lint:
        return {
            valued("samples", "Folder of the sample files, NAME.tsv for each driver file or pair of tables.", "FOLDER"),
            flag({QStringLiteral("counts")},
                 "Also print the number of rows, samples, errors and warnings of each driver.")};
    case Request::Command::ExportDriver:
        return {flag({QStringLiteral("force")}, "Overwrite an existing file.")};
    case Request::Command::Compile:
        return {valued("into", "The driver database to write.", "DATABASE")};
    case Request::Command::NewDriver:
    case Request::Command::CustomShow:
    case Request::Command::CustomSetup:
    case Request::Command::CustomFill:
    case Request::Command::CustomDefault:
    case Request::Command::CustomDrop:
        return {};
    case Request::Command::Tags:
        return {valued("link", "Only the tags of this link; 0 for internal tags.", "N"),
                valued("find", "Only tags whose name contains the characters of TEXT in order, in any case.", "TEXT"),
                recipeOption()};
    case Request::Command::Commands:
        return {valued("count", "Number of items, 1 to 1000000. Default: 1.", "N"), recipeOption()};
    case Request::Command::Encode:
    case Request::Command::Decode:
    case Request::Command::Limits:
        return {recipeOption()};
    case Request::Command::Import:
        return {flag({QStringLiteral("dry-run")}, "Print the changes, but do not make them.")};
    case Request::Command::SystemTags:
    case Request::Command::Export:
    case Request::Command::SampleProject:
        return {};
    }
    return {};
}

bool beginsWith(const CommandText &text, const QString &word)
{
    return word.isEmpty() || text.words().constFirst() == word;
}

} // namespace

const CommandText &textOf(Request::Command command)
{
    return commandTexts.at(static_cast<std::size_t>(command));
}

const CommandText *findCommand(const QStringList &words)
{
    for (const CommandText &text : commandTexts) {
        const QStringList own = text.words();
        if (words.mid(0, own.size()) != own)
            continue;
        return text.command == Request::Command::Blocks && QFileInfo(words.value(1)).isFile()
                   ? &textOf(Request::Command::ProjectBlocks)
                   : &text;
    }
    return nullptr;
}

QStringList secondWords(const QString &word)
{
    QStringList found;
    for (const CommandText &text : commandTexts) {
        if (beginsWith(text, word) && text.words().size() > 1)
            found.append(text.words().constLast());
    }
    return found;
}

QList<QCommandLineOption> optionsOf(Request::Command command)
{
    return ownOptions(command) + placeOptions(command) + commonOptions();
}

QList<QCommandLineOption> allOptions()
{
    QList<QCommandLineOption> options;
    QStringList known;
    for (const CommandText &command : commandTexts) {
        const QList<QCommandLineOption> own = optionsOf(command.command);
        for (const QCommandLineOption &option : own) {
            if (!known.contains(option.names().constFirst()))
                options.append(option);
            known.append(option.names());
        }
    }
    return options;
}

QString usageLine(const QString &usage)
{
    return QLatin1String("Usage: zelmar-label ") + usage + QLatin1Char('\n');
}

QString generalHelp(const QString &word)
{
    const QString usage = word.isEmpty() ? QStringLiteral("COMMAND") : word + QLatin1String(" COMMAND");
    QString text = usageLine(usage + QLatin1String(" [options] ...")) +
                   QStringLiteral("Checks device addresses with a driver database, reads and writes the tags of a "
                                  "project, and checks and writes drivers.\n\nCommands:\n");
    for (const CommandText &command : commandTexts) {
        if (beginsWith(command, word) && command.command != Request::Command::ProjectBlocks)
            text += QLatin1String("  ") + QString::fromLatin1(command.name).leftJustified(16) +
                    QLatin1String(command.summary) + QLatin1Char('\n');
    }
    return text +
           QStringLiteral(
               "\n\"zelmar-label COMMAND --help\" shows the options of a command.\n"
               "Exit codes: 0 success, 1 an address, a value, a line or a driver file was refused, 2 usage error, 3 "
               "the database, the driver or the project cannot be read or written.\n");
}
