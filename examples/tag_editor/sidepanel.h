// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_SIDEPANEL_H
#define TAG_EDITOR_SIDEPANEL_H

#include <QList>
#include <QWidget>

QT_BEGIN_NAMESPACE
class QPushButton;
class QVBoxLayout;
QT_END_NAMESPACE

/// A form beside the table: a title, what a derived class puts in, and buttons. Enter does what it is for.
/// Escape is left to the window, where something nearer may be to leave.
class SidePanel : public QWidget
{
    Q_OBJECT

public:
    SidePanel(const QString &title, const QString &closeText, QWidget *parent = nullptr);

Q_SIGNALS:
    void accepted();
    void closed();

protected:
    void keyPressEvent(QKeyEvent *event) override;

    QVBoxLayout *body() const { return m_body; }
    /// The button that does what the panel is for.
    QPushButton *addAcceptButton(const QString &text, const char *name);

    /// The order in which Tab visits the fields, and behind them the buttons.
    void setTabStops(const QList<QWidget *> &fields);

private:
    QVBoxLayout *m_body;
    QWidget *m_buttons;
    QPushButton *m_close;
    QPushButton *m_accept = nullptr;
};

#endif
