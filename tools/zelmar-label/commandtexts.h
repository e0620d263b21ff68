// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_COMMANDTEXTS_H
#define ZELMAR_LABEL_TOOL_COMMANDTEXTS_H

#include "commandline.h"

#include <QCommandLineOption>
#include <QList>
#include <QString>
#include <QStringList>

/// The usage and help texts of a command.
struct CommandText
{
    Request::Command command;
    /// One word, or two as in "custom show".
    const char *name;
    const char *usage;
    const char *summary;
    const char *description;

    QStringList words() const { return QString::fromLatin1(name).split(QLatin1Char(' ')); }
};

const CommandText &textOf(Request::Command command);

/// The command that the words begin with; null for none. `blocks` works on a project if a file follows.
const CommandText *findCommand(const QStringList &words);

/// The second words of the commands that begin with `word`.
QStringList secondWords(const QString &word);

/// All options of the command.
QList<QCommandLineOption> optionsOf(Request::Command command);

/// The options of all commands, each name once.
QList<QCommandLineOption> allOptions();

QString usageLine(const QString &usage);

/// For all commands, or those that begin with `word`.
QString generalHelp(const QString &word = QString());

#endif
