// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "librarymessages.h"

#include <QCoreApplication>
#include <QEvent>
#include <QMessageBox>
#include <QTimer>

LibraryMessages::LibraryMessages(QObject *parent)
    : QObject(parent)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool LibraryMessages::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() != QEvent::Polish)
        return false;
    auto *const box = qobject_cast<QMessageBox *>(object);
    if (!box || box->parentWidget())
        return false;
    // Its event loop still runs once, invisibly, since the library waits for an answer.
    box->setAttribute(Qt::WA_DontShowOnScreen);
    QTimer::singleShot(0, box, &QDialog::accept);
    Q_EMIT message(box->text());
    return false;
}
