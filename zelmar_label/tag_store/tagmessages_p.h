// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TAGMESSAGES_P_H
#define ZELMAR_LABEL_TAGMESSAGES_P_H

#include <QString>

#include <functional>

namespace label {

enum class MessageKind {
    Critical,
    Warning,
};

/// Receives what a user would be shown.
using MessageHandler = std::function<void(MessageKind kind, const QString &title, const QString &text)>;

/// Shows a message box without a parent, with the one button Ok, and waits for it. A program without widgets gets a
/// line at warning level in the log instead.
void showMessage(MessageKind kind, const QString &title, const QString &text);

/// Sends all messages to `handler` from now on; an empty one brings message boxes back. For programs that must not
/// block.
void setMessageHandler(const MessageHandler &handler);

} // namespace label

#endif
