// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_LOGRECORDER_H
#define ZELMAR_LABEL_TESTS_LOGRECORDER_H

#include <QStringList>
#include <QtGlobal>

/// Collects the lines of the Qt log from all threads during its lifetime, instead of printing them. Use one at a time,
/// in a test function or `init()`: QtTest installs its own message handler at its start.
class LogRecorder
{
public:
    LogRecorder();
    ~LogRecorder();
    Q_DISABLE_COPY(LogRecorder)

    /// All lines so far, in order; lines above debug level begin with "warning: " or "critical: ".
    QStringList lines() const;

    /// All lines except Qt's own when a connection opened before cannot be opened again.
    QStringList ownLines() const;

    /// The lines since the last call.
    QStringList take();

private:
    QtMessageHandler m_previous;
};

#endif
