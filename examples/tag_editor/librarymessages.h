// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_LIBRARYMESSAGES_H
#define TAG_EDITOR_LIBRARYMESSAGES_H

#include <QObject>
#include <QString>

/// Takes the message boxes that the library would open, which stand alone and block, and hands their texts on instead.
/// They are known by having no parent; the editor itself opens none.
class LibraryMessages : public QObject
{
    Q_OBJECT

public:
    explicit LibraryMessages(QObject *parent = nullptr);

    bool eventFilter(QObject *object, QEvent *event) override;

Q_SIGNALS:
    void message(const QString &text);
};

#endif
