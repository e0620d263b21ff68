// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_ADDTAGFORM_H
#define TAG_EDITOR_ADDTAGFORM_H

#include "sidepanel.h"

QT_BEGIN_NAMESPACE
class QLabel;
class QLineEdit;
QT_END_NAMESPACE

class ProjectSession;
class TargetFields;

/// The form to add single tags.
class AddTagForm : public SidePanel
{
    Q_OBJECT

public:
    explicit AddTagForm(ProjectSession &session, QWidget *parent = nullptr);

    /// Starts a new tag on the link.
    void start(int link);

Q_SIGNALS:
    void added(const QString &name);

private:
    void orderTabs();
    void judge();
    void add();

    ProjectSession &m_session;
    QLineEdit *m_name;
    TargetFields *m_target;
    QLabel *m_verdict;
    QPushButton *m_add;
};

#endif
