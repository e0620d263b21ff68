// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "longjob.h"

#include <QElapsedTimer>
#include <QTimer>

namespace {

/// Leaves time to draw in each frame.
constexpr qint64 sliceInMilliseconds = 10;

} // namespace

LongJob::LongJob(QObject *parent)
    : QObject(parent)
{
}

void LongJob::start()
{
    Q_EMIT progress(0, 0);
    QTimer::singleShot(0, this, &LongJob::run);
}

void LongJob::cancel()
{
    m_isCancelled = true;
}

void LongJob::run()
{
    if (m_isCancelled) {
        end(false);
        return;
    }
    if (!m_hasBegun) {
        m_hasBegun = true;
        if (!begin()) {
            end(false);
            return;
        }
    }
    QElapsedTimer timer;
    timer.start();
    Step last = Step::More;
    while (last == Step::More && timer.elapsed() < sliceInMilliseconds)
        last = step();
    Q_EMIT progress(done(), all());
    if (last == Step::More)
        QTimer::singleShot(0, this, &LongJob::run);
    else
        end(last == Step::Done && commit());
}

void LongJob::end(bool isDone)
{
    if (!isDone && m_hasBegun)
        rollBack();
    const QString text = isDone          ? result()
                         : m_isCancelled ? tr("%1: cancelled, nothing is changed.").arg(title())
                                         : QString();
    Q_EMIT finished(m_problem, text);
}
