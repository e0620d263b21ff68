// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_INTERRUPTEDWRITE_H
#define ZELMAR_LABEL_TOOL_INTERRUPTEDWRITE_H

class QString;

/// Undoes what a program that was stopped in the midst of writing has left behind in the SQLite file `path`. Whoever
/// may write does so unasked; over a connection that may only read, such a file cannot be read at all. Does nothing to
/// others.
void undoInterruptedWrite(const QString &path);

#endif
