// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_LISTPANELS_H
#define TAG_EDITOR_LISTPANELS_H

#include "importplan.h"
#include "sidepanel.h"

#include <QList>

QT_BEGIN_NAMESPACE
class QAction;
class QTableWidget;
QT_END_NAMESPACE

/// The refused lines of a CSV file, with the reasons.
class ImportReport : public SidePanel
{
    Q_OBJECT

public:
    explicit ImportReport(QWidget *parent = nullptr);

    void show(const QList<ImportPlan::Refusal> &refusals);

private:
    QTableWidget *m_table;
};

/// Every action with its keys, and the keys without an action.
class ShortcutsPanel : public SidePanel
{
    Q_OBJECT

public:
    explicit ShortcutsPanel(QWidget *parent = nullptr);

    void show(const QList<QAction *> &actions);

private:
    QTableWidget *m_table;
};

#endif
