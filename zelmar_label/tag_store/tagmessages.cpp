// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/tag_store/tagmessages_p.h"

#include <QApplication>
#include <QDebug>
#include <QMessageBox>

namespace label {

namespace {

MessageHandler &messageHandler()
{
    static MessageHandler handler;
    return handler;
}

} // namespace

void showMessage(MessageKind kind, const QString &title, const QString &text)
{
    if (messageHandler())
        messageHandler()(kind, title, text);
    else if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        qWarning().noquote() << title + QLatin1String(": ") + text;
    else if (kind == MessageKind::Critical)
        QMessageBox::critical(nullptr, title, text, QMessageBox::Ok);
    else
        QMessageBox::warning(nullptr, title, text, QMessageBox::Ok);
}

void setMessageHandler(const MessageHandler &handler)
{
    messageHandler() = handler;
}

} // namespace label
