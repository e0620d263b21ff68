// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_LOGRECORDER_H
#define ZELMAR_LABEL_TESTS_LOGRECORDER_H

#include <QStringList>
#include <QtGlobal>

/// Collects the lines of the Qt log while it lives, from all threads, instead of printing them. One at a time, and made
/// within a test function or `init()`: QtTest installs its own message handler when it starts.
class LogRecorder
{
public:
    LogRecorder();
    ~LogRecorder();
    Q_DISABLE_COPY(LogRecorder)

    /// All lines so far, in order; "warning: " and "critical: " stand before lines above debug level.
    QStringList lines() const;

    /// All lines but what Qt itself says when a connection that was opened before cannot be opened again.
    QStringList ownLines() const;

    /// The lines since the last call.
    QStringList take();

private:
    QtMessageHandler m_previous;
};

#endif
