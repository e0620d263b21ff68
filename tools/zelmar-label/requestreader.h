// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_REQUESTREADER_H
#define ZELMAR_LABEL_TOOL_REQUESTREADER_H

#include "commandline.h"
#include "commandtexts.h"

#include <QCommandLineParser>

/// Reads the arguments of one command; reports the first error.
class RequestReader
{
public:
    explicit RequestReader(const CommandText &command);

    /// `arguments` begin with the program's name.
    CommandLine read(const QStringList &arguments);

private:
    void fail(const QString &sentence);
    QString help() const;
    void readArguments();
    void countArguments(const QStringList &positional);
    void readOptions();
    void readNeededCount();
    void readSelection();
    void readRecipes();
    void readFilter();
    void readDataType(bool takesBits);
    void readCount(const char *option, int &count);
    void readCap();
    void readDatabaseToWrite();
    std::optional<int> wholeNumber(const char *option);

    const CommandText &m_text;
    QCommandLineParser m_parser;
    Request m_request;
    QString m_error;
};

#endif
