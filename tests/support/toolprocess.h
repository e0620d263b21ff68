// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_TOOLPROCESS_H
#define ZELMAR_LABEL_TESTS_TOOLPROCESS_H

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

/// What a program left behind. Without a normal end the code is -1, and `err` says why.
struct Result
{
    int code = -1;
    QString out;
    QString err;
};

/// The environment of tools that are tested: leaks are not looked for, since labels stay allocated by contract.
QProcessEnvironment toolEnvironment();

/// Runs a program to its end, at most a minute, in the environment of tools. Findings of a sanitizer appear in `err`.
/// `folder` is the one to work in, if it is not this program's.
Result runProcess(const QString &program, const QStringList &arguments, const QByteArray &input = QByteArray(),
                  const QString &folder = QString());

/// Copies the program `tool` into `folder`, so that it reads what lies beside the copy. Gives the path of the copy.
QString copyTool(const QString &tool, const QString &folder);

/// Copies the program `tool` into `folder` with the driver database and the scripts beside it. Gives the path of the
/// copy.
QString copyToolWithDrivers(const QString &tool, const QString &folder);

/// Arguments set off by "|".
QStringList argumentsOf(const char *text);

/// Writes the file afresh; ends the program when it cannot.
void writeFile(const QString &path, const QByteArray &content);

/// "not readable" when it is not.
QByteArray contentOf(const QString &path);

/// Everything that a SQLite file holds: its tables, and their rows table by table.
QStringList databaseDump(const QString &path);

#endif
