// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_LIBRARYMESSAGES_H
#define TAG_EDITOR_LIBRARYMESSAGES_H

#include <QObject>
#include <QString>

/// Suppresses the library's message boxes, which are separate and block, and passes on their texts. They are recognised
/// by their missing parent; the editor itself opens none.
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
