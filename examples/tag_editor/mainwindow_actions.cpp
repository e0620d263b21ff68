// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "mainwindow.h"

#include "addrunpanel.h"
#include "addtagform.h"
#include "counts.h"
#include "linktree.h"
#include "listpanels.h"
#include "messagebar.h"
#include "nextwrongjob.h"
#include "runjob.h"
#include "tagdetails.h"
#include "tagmodel.h"
#include "tagtable.h"

#include <zelmar_label/tag_store/tagsystem.h>
#include <zelmar_label/widgets/simpleaddresspicker.h>

#include <QAction>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QToolBar>
#include <QToolButton>

namespace {

enum Page {
    DetailsPage,
    AddTagPage,
    AddRunPage,
    ReportPage,
    ShortcutsPage,
};

} // namespace

QAction *MainWindow::addCommand(const QString &text, const QString &tip, const QKeySequence &keys, const char *name,
                                void (MainWindow::*slot)())
{
    auto *const action = new QAction(text, this);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(keys);
    action->setToolTip(tip);
    addAction(action);
    m_commands.append(action);
    connect(action, &QAction::triggered, this, slot);
    return action;
}

void MainWindow::buildActions()
{
    auto *const bar = addToolBar(tr("Commands"));
    bar->setObjectName(QStringLiteral("toolBar"));
    bar->setMovable(false);
    bar->setFloatable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    const auto keys = [](const char *text) { return QKeySequence(QLatin1String(text)); };
    bar->addAction(
        addCommand(tr("Open…"), tr("Open a project"), keys("Ctrl+O"), "openAction", &MainWindow::chooseProject));
    addCommand(tr("Sample"), tr("Open the sample project"), keys("Ctrl+Shift+O"), "sampleAction",
               &MainWindow::chooseSample);
    bar->addSeparator();
    bar->addAction(addCommand(tr("Import…"), tr("Import tags from a CSV file"), keys("Ctrl+I"), "importAction",
                              &MainWindow::chooseImport));
    bar->addAction(addCommand(tr("Export…"), tr("Export all tags to a CSV file"), keys("Ctrl+E"), "exportAction",
                              &MainWindow::chooseExport));
    bar->addSeparator();
    bar->addAction(
        addCommand(tr("Add tag"), tr("Add one tag"), keys("Ctrl+N"), "addTagAction", &MainWindow::showAddTag));
    bar->addAction(
        addCommand(tr("Add run"), tr("Add a run of tags"), keys("Ctrl+R"), "addRunAction", &MainWindow::showAddRun));
    bar->addSeparator();
    bar->addAction(
        addCommand(tr("Rename"), tr("Rename the selected tag"), keys("F2"), "renameAction", &MainWindow::renameTag));
    bar->addAction(addCommand(tr("Address"),
                              tr("Edit the selected tag's address; in an address field, open the picker"), keys("F4"),
                              "addressAction", &MainWindow::editAddress));
    bar->addAction(addCommand(tr("Next invalid"), tr("Go to the next tag whose address is not valid"), keys("F8"),
                              "nextWrongAction", &MainWindow::nextWrongAddress));
    addCommand(tr("Search"), tr("Search tags by name"), keys("Ctrl+F"), "searchAction", &MainWindow::focusSearch);
    addCommand(tr("Links"), tr("Go to the links"), keys("Ctrl+L"), "linksAction", &MainWindow::focusLinks);
    addCommand(tr("Tags"), tr("Go to the tags"), keys("Ctrl+T"), "tagsAction", &MainWindow::focusTable);
    addCommand(tr("Details"), tr("Go to the value of the selected tag"), keys("Ctrl+D"), "detailsAction",
               &MainWindow::focusDetails);
    auto *const space = new QWidget(bar);
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    bar->addWidget(space);
    bar->addAction(addCommand(tr("Shortcuts"), tr("Show all keyboard shortcuts"), keys("F1"), "shortcutsAction",
                              &MainWindow::showShortcuts));
    QAction *const quit = new QAction(tr("Quit"), this);
    quit->setObjectName(QStringLiteral("quitAction"));
    quit->setShortcut(keys("Ctrl+Q"));
    quit->setToolTip(tr("Close the editor"));
    addAction(quit);
    m_commands.append(quit);
    connect(quit, &QAction::triggered, this, &QWidget::close);
    for (QAction *const action : qAsConst(m_commands)) {
        const auto button = qobject_cast<QToolButton *>(bar->widgetForAction(action));
        if (button)
            button->setToolTip(
                tr("%1 (%2)").arg(action->toolTip(), action->shortcut().toString(QKeySequence::NativeText)));
    }
    connect(m_addRun, &AddRunPanel::wanted, this, [this](const RunSettings &settings) {
        if (isReady())
            start(new RunJob(m_session, settings, this));
    });
    connect(m_cancel, &QToolButton::clicked, this, &MainWindow::escape);
}

void MainWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        escape();
    else
        QMainWindow::keyPressEvent(event);
}

bool MainWindow::eventFilter(QObject *object, QEvent *event)
{
    if (object != m_search || event->type() != QEvent::KeyPress)
        return QMainWindow::eventFilter(object, event);
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (key == Qt::Key_Down || key == Qt::Key_Return || key == Qt::Key_Enter) {
        m_table->setFocus();
        return true;
    }
    return false;
}

/// Escape leaves the innermost one.
void MainWindow::escape()
{
    if (m_job)
        m_job->cancel();
    else if (isInPanel())
        closePanel();
    else if (!m_messages->isHidden())
        m_messages->clear();
    else if (m_side->currentIndex() != DetailsPage)
        showDetails();
    else if (!m_search->text().isEmpty())
        m_search->clear();
    else
        m_table->setFocus();
}

bool MainWindow::isInPanel() const
{
    return m_side->currentIndex() != DetailsPage && m_side->isAncestorOf(focusWidget());
}

void MainWindow::closePanel()
{
    showDetails();
    m_table->setFocus();
}

/// The shown link, or the link of the selected tag if all are shown.
int MainWindow::linkForNewTags() const
{
    const int shown = m_links->scope().link;
    return shown == TagScope::All ? qMax(0, m_session.tag(m_table->currentTag()).link) : shown;
}

void MainWindow::showDetails()
{
    m_side->setCurrentIndex(DetailsPage);
}

void MainWindow::showAddTag()
{
    if (!m_session.isOpen())
        return;
    m_side->setCurrentIndex(AddTagPage);
    m_addTag->start(linkForNewTags());
}

void MainWindow::showAddRun()
{
    if (!m_session.isOpen())
        return;
    m_side->setCurrentIndex(AddRunPage);
    m_addRun->start(linkForNewTags());
}

void MainWindow::showReport()
{
    m_side->setCurrentIndex(ReportPage);
    m_report->setFocus();
}

void MainWindow::showShortcuts()
{
    m_shortcuts->show(m_commands);
    m_side->setCurrentIndex(ShortcutsPage);
    m_shortcuts->setFocus();
}

void MainWindow::renameTag()
{
    if (mayEdit())
        m_table->editCell(TagModel::Name);
}

void MainWindow::editAddress()
{
    const QWidget *const focused = focusWidget();
    const auto *const picker = focused ? qobject_cast<SimpleAddressPicker *>(focused->parentWidget()) : nullptr;
    if (picker)
        picker->findChild<QPushButton *>()->click();
    else if (mayEdit())
        m_table->editCell(TagModel::Address);
}

void MainWindow::focusSearch()
{
    m_search->setFocus();
    m_search->selectAll();
}

void MainWindow::focusLinks()
{
    m_links->setFocus();
}

void MainWindow::focusTable()
{
    m_table->setFocus();
}

void MainWindow::focusDetails()
{
    showDetails();
    m_details->findChild<QLineEdit *>(QStringLiteral("valueEdit"))->setFocus();
}

void MainWindow::nextWrongAddress()
{
    if (isReady() && m_session.isOpen())
        start(new NextWrongJob(m_session, m_model->ids(), m_table->currentIndex().row(), this));
}

void MainWindow::showWrong(int id)
{
    showDetails();
    m_table->setFocus();
    m_table->selectTag(id);
}

void MainWindow::takeSuggestion(int id, const QString &address)
{
    const PlainTag tag = m_session.tag(id);
    report(m_session.change(id, address, tag.dataType, tag.scale));
    m_table->setFocus();
}

void MainWindow::showCounts()
{
    const int shown = m_model->rowCount();
    const int all = m_model->index().count();
    const QString tags = counted(all, tr("1 tag"), tr("%1 tags"));
    m_searchCount->setText(m_model->filter().isEmpty() ? counted(shown, tr("1 tag"), tr("%1 tags"))
                                                       : counted(shown, tr("1 hit"), tr("%1 hits")));
    if (!m_session.isOpen())
        m_status->setText(tr("No project"));
    else
        m_status->setText((shown == all ? tags : tr("%1 of %2").arg(QLocale().toString(shown), tags)) +
                          tr("  ·  %1").arg(m_session.path()) +
                          (m_session.isWritable() ? QString() : tr("  ·  read only")));
}
