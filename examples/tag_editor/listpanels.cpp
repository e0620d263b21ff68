// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "listpanels.h"

#include "look.h"

#include <QAction>
#include <QHeaderView>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

/// A longer report would not be read.
constexpr int mostLines = 1000;

QTableWidget *textTable(const QStringList &titles, const char *name, QWidget *parent)
{
    auto *const table = new QTableWidget(0, titles.size(), parent);
    table->setObjectName(QLatin1String(name));
    table->setHorizontalHeaderLabels(titles);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table->horizontalHeader()->setStretchLastSection(true);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table->verticalHeader()->hide();
    table->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setTabKeyNavigation(false);
    table->setShowGrid(false);
    table->setWordWrap(true);
    look::setLeftOverHeight(table, 6);
    return table;
}

void addRow(QTableWidget *table, const QStringList &texts)
{
    const int row = table->rowCount();
    table->insertRow(row);
    for (int column = 0; column < texts.size(); ++column) {
        auto *const item = new QTableWidgetItem(texts.at(column));
        item->setToolTip(texts.at(column));
        table->setItem(row, column, item);
    }
}

} // namespace

ImportReport::ImportReport(QWidget *parent)
    : SidePanel(tr("Refused lines"), tr("Close"), parent)
    , m_table(textTable({tr("Line"), tr("Name"), tr("Reason")}, "importReport", this))
{
    body()->addWidget(m_table, 1);
    setFocusProxy(m_table);
}

void ImportReport::show(const QList<ImportPlan::Refusal> &refusals)
{
    m_table->setRowCount(0);
    for (const ImportPlan::Refusal &refusal : refusals.mid(0, mostLines))
        addRow(m_table, {QString::number(refusal.line), refusal.name, refusal.reason});
    if (refusals.size() > mostLines)
        addRow(m_table, {QString(), QString(), tr("and %1 more").arg(refusals.size() - mostLines)});
}

ShortcutsPanel::ShortcutsPanel(QWidget *parent)
    : SidePanel(tr("Keyboard shortcuts"), tr("Close"), parent)
    , m_table(textTable({tr("Keys"), tr("What they do")}, "shortcutTable", this))
{
    body()->addWidget(m_table, 1);
    setFocusProxy(m_table);
}

void ShortcutsPanel::show(const QList<QAction *> &actions)
{
    m_table->setRowCount(0);
    for (const QAction *action : actions)
        addRow(m_table, {action->shortcut().toString(QKeySequence::NativeText), action->toolTip()});
    addRow(m_table, {tr("Enter"), tr("In the table: edit the cell. In a form: confirm")});
    addRow(m_table, {tr("Escape"), tr("Leave the cell, cancel the running job, close the panel, clear the search")});
    addRow(m_table, {tr("Tab"), tr("Next field")});
    addRow(m_table, {tr("Down"), tr("In the search: go to the table")});
}
