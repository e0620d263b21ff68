// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/logrecorder.h"

#include <QMutex>
#include <QMutexLocker>

namespace {

QMutex s_mutex;
QStringList s_lines;

void record(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    const QMutexLocker locker(&s_mutex);
    switch (type) {
    case QtWarningMsg:
        s_lines.append(QLatin1String("warning: ") + text);
        break;
    case QtCriticalMsg:
    case QtFatalMsg:
        s_lines.append(QLatin1String("critical: ") + text);
        break;
    default:
        s_lines.append(text);
    }
}

} // namespace

LogRecorder::LogRecorder()
{
    take();
    m_previous = qInstallMessageHandler(record);
}

LogRecorder::~LogRecorder()
{
    qInstallMessageHandler(m_previous);
}

QStringList LogRecorder::lines() const
{
    const QMutexLocker locker(&s_mutex);
    return s_lines;
}

QStringList LogRecorder::ownLines() const
{
    QStringList own;
    const QStringList all = lines();
    for (const QString &line : all) {
        if (!line.startsWith(QLatin1String("warning: QSqlDatabasePrivate::database: unable to open database")))
            own.append(line);
    }
    return own;
}

QStringList LogRecorder::take()
{
    const QMutexLocker locker(&s_mutex);
    QStringList lines;
    lines.swap(s_lines);
    return lines;
}
