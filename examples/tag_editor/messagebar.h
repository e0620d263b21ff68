// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_MESSAGEBAR_H
#define TAG_EDITOR_MESSAGEBAR_H

#include <QFrame>

QT_BEGIN_NAMESPACE
class QLabel;
class QTimer;
class QToolButton;
QT_END_NAMESPACE

/// Shows failures and results above the table instead of in a dialog. Hidden while there is no message.
class MessageBar : public QFrame
{
    Q_OBJECT

public:
    enum class Kind {
        Done,
        Problem,
    };

    explicit MessageBar(QWidget *parent = nullptr);

    /// Replaces the message; an empty text hides the bar. A success message needs no answer and disappears by itself.
    void show(Kind kind, const QString &text);
    void clear();

    QString text() const;
    bool isProblem() const { return m_kind == Kind::Problem; }

protected:
    void changeEvent(QEvent *event) override;

private:
    void paint();

    QLabel *m_text;
    QToolButton *m_close;
    QTimer *m_fade;
    Kind m_kind = Kind::Done;
};

#endif
