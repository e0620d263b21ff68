// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_PROJECTFILES_PROJECTCHECK_H
#define ZELMAR_LABEL_PROJECTFILES_PROJECTCHECK_H

#include <QString>

class QSqlDatabase;
class TagSystem;

/// The content of a possible project file.
struct ProjectCheck
{
    bool hasTagTable = false;
    /// Why the file cannot be used; empty if it can.
    QString problem;
};

/// Why the project or the driver database beside the program cannot be opened; empty if both exist.
QString missingFile(const QString &projectPath);

/// A warning about rows of the tag table whose ids belong to system and recipe tags: the library takes them for such
/// tags. Empty when there are none. Call it before recipe tags are set.
QString reservedIdWarning(TagSystem &tags, const QString &path);

/// Checks the tag table of the project `path`, open as `database`. Changes nothing.
ProjectCheck checkProject(const QSqlDatabase &database, const QString &path);

#endif
