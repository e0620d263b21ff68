// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_INTERRUPTEDWRITE_H
#define ZELMAR_LABEL_TOOL_INTERRUPTEDWRITE_H

class QString;

/// Rolls back the unfinished write of an interrupted program in the SQLite file `path`. SQLite does this by itself on a
/// writable connection; on a read-only connection such a file cannot be read. Does not change other files.
void undoInterruptedWrite(const QString &path);

#endif
