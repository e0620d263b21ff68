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

/// Receives the messages for the user.
using MessageHandler = std::function<void(MessageKind kind, const QString &title, const QString &text)>;

/// Shows a message box without a parent, with the button Ok, and waits for it. A program without widgets writes a line
/// at warning level to the log instead.
void showMessage(MessageKind kind, const QString &title, const QString &text);

/// Sends all further messages to `handler`; an empty one restores message boxes. For programs that must not block.
void setMessageHandler(const MessageHandler &handler);

} // namespace label

#endif
