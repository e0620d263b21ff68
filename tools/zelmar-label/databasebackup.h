// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_DATABASEBACKUP_H
#define ZELMAR_LABEL_TOOL_DATABASEBACKUP_H

class QString;

/// Copies the SQLite file `path` to a new file beside it, whose name ends with the time, and returns its path in
/// `copy`. Omits uncommitted changes of other programs. False with a sentence in `error` on failure.
bool backUpDatabase(const QString &path, QString &copy, QString &error);

#endif
