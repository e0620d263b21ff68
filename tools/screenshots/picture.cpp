// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "picture.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPixmap>
#include <QThread>
#include <QWidget>

#include <cstdio>

Pictures::Pictures(const QString &folder, const QString &ending)
    : m_folder(folder)
    , m_ending(ending)
{
}

bool Pictures::take(QWidget &window, const QString &name, int width, int height) const
{
    if (width > 0 && height > 0)
        window.resize(width, height);
    window.show();
    window.activateWindow();
    settle();
    const QString path = m_folder + QLatin1Char('/') + name + m_ending + QLatin1String(".png");
    if (!window.grab().save(path)) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
        return false;
    }
    std::printf("%s\n", qPrintable(path));
    return true;
}

void settle()
{
    constexpr int quietMilliseconds = 300;
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < quietMilliseconds) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QThread::msleep(5);
    }
}
