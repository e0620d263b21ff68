// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_TOOLPROCESS_H
#define ZELMAR_LABEL_TESTS_TOOLPROCESS_H

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

/// The result of a program. If it crashed or did not end, the code is -1 and `err` has the reason.
struct Result
{
    int code = -1;
    QString out;
    QString err;
};

/// The environment of tested tools: no leak detection, because labels stay allocated by contract.
QProcessEnvironment toolEnvironment();

/// Runs a program to its end, at most a minute, in the environment of tools. Findings of a sanitizer appear in `err`.
/// `folder` is the working folder, by default this program's.
Result runProcess(const QString &program, const QStringList &arguments, const QByteArray &input = QByteArray(),
                  const QString &folder = QString());

/// Copies the program `tool` into `folder`, so that it reads the files beside the copy. Returns the path of the copy.
QString copyTool(const QString &tool, const QString &folder);

/// Copies the program `tool` into `folder` with the driver database and the scripts beside it. Returns the path of the
/// copy.
QString copyToolWithDrivers(const QString &tool, const QString &folder);

/// Arguments separated by "|".
QStringList argumentsOf(const char *text);

/// Writes a new file; ends the program on failure.
void writeFile(const QString &path, const QByteArray &content);

/// Returns "not readable" on failure.
QByteArray contentOf(const QString &path);

/// The whole content of a SQLite file: its tables, and their rows table by table.
QStringList databaseDump(const QString &path);

#endif
