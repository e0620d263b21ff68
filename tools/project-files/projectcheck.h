// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_PROJECTFILES_PROJECTCHECK_H
#define ZELMAR_LABEL_PROJECTFILES_PROJECTCHECK_H

#include <QString>

class QSqlDatabase;

/// What a file that is to be a project holds.
struct ProjectCheck
{
    bool hasTagTable = false;
    /// Why the file cannot be used; empty when it can.
    QString problem;
};

/// Why there is nothing to open, the project or the driver database beside the program; empty when both are there.
QString missingFile(const QString &projectPath);

/// Looks at the tag table of the project `path`, open as `database`. Changes nothing.
ProjectCheck checkProject(const QSqlDatabase &database, const QString &path);

#endif
