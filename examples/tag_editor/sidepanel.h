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

/// A form beside the table: a title, the content of a derived class, and buttons. Enter confirms. Escape is left to the
/// window, which may have something to close first.
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
    /// The button that confirms.
    QPushButton *addAcceptButton(const QString &text, const char *name);

    /// The tab order of the fields, followed by the buttons.
    void setTabStops(const QList<QWidget *> &fields);

private:
    QVBoxLayout *m_body;
    QWidget *m_buttons;
    QPushButton *m_close;
    QPushButton *m_accept = nullptr;
};

#endif
