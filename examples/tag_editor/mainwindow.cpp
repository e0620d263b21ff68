// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "mainwindow.h"

#include "addrunpanel.h"
#include "addtagform.h"
#include "librarymessages.h"
#include "linktree.h"
#include "listpanels.h"
#include "longjob.h"
#include "look.h"
#include "messagebar.h"
#include "tagdetails.h"
#include "tagmodel.h"
#include "tagtable.h"

#include <zelmar_label/tag_store/tagsystem.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QScreen>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

QScrollArea *scrolled(QWidget *content)
{
    auto *const area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFocusPolicy(Qt::NoFocus);
    // The margin separates focus frames from a scroll bar.
    auto *const inner = new QWidget;
    auto *const layout = new QVBoxLayout(inner);
    const int gap = look::gap(content);
    layout->setContentsMargins(gap * 3 / 2, gap * 3 / 2, gap * 3 / 2, gap);
    layout->addWidget(content);
    area->setWidget(inner);
    return area;
}

} // namespace

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent)
    , m_model(new TagModel(m_session, this))
{
    setObjectName(QStringLiteral("tagEditor"));
    setWindowTitle(tr("Tag editor"));
    buildPanes();
    buildStatusBar();
    buildActions();
    wire();
    resize(QSize(look::letters(this, 190), fontMetrics().height() * 46).boundedTo(screen()->availableSize()));
    m_panes->setSizes({look::letters(this, 34), look::letters(this, 96), look::letters(this, 60)});
    m_table->setFocus();
}

MainWindow::~MainWindow()
{
    // While the receivers of the session's signals still exist.
    delete m_job;
    m_session.rollBack();
    delete takeCentralWidget();
}

void MainWindow::buildPanes()
{
    m_messages = new MessageBar(this);
    m_links = new LinkTree(m_session, this);
    m_panes = new QSplitter(Qt::Horizontal, this);
    m_panes->setObjectName(QStringLiteral("panes"));
    m_panes->setChildrenCollapsible(false);
    m_panes->addWidget(m_links);
    m_panes->addWidget(searchPane());
    m_panes->addWidget(sidePane());
    m_panes->setStretchFactor(0, 1);
    m_panes->setStretchFactor(1, 4);
    m_panes->setStretchFactor(2, 2);
    m_links->setMinimumWidth(look::letters(this, 24));
    m_panes->widget(1)->setMinimumWidth(look::letters(this, 66));
    m_side->setMinimumWidth(look::letters(this, 42));

    auto *const central = new QWidget(this);
    auto *const column = new QVBoxLayout(central);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_messages);
    column->addWidget(m_panes, 1);
    setCentralWidget(central);
}

QWidget *MainWindow::searchPane()
{
    auto *const pane = new QWidget(this);
    m_search = new QLineEdit(pane);
    m_search->setObjectName(QStringLiteral("search"));
    m_search->setPlaceholderText(tr("Search names (letters in order)"));
    m_search->setClearButtonEnabled(true);
    m_search->setAccessibleName(tr("Search tags"));
    m_search->installEventFilter(this);
    m_searchCount = new QLabel(pane);
    m_searchCount->setObjectName(QStringLiteral("searchCount"));
    // Wide enough from the start: a new window layout takes longer than the search.
    m_searchCount->setMinimumWidth(look::letters(this, 14));
    m_searchCount->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_table = new TagTable(m_session, *m_model, pane);

    const int gap = look::gap(this);
    auto *const row = new QHBoxLayout;
    row->setContentsMargins(gap, gap, gap, gap);
    row->setSpacing(gap);
    row->addWidget(m_search, 1);
    row->addWidget(m_searchCount);
    auto *const column = new QVBoxLayout(pane);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(row);
    column->addWidget(m_table, 1);
    return pane;
}

QWidget *MainWindow::sidePane()
{
    m_side = new QStackedWidget(this);
    m_side->setObjectName(QStringLiteral("side"));
    m_details = new TagDetails(m_session);
    m_addTag = new AddTagForm(m_session);
    m_addRun = new AddRunPanel(m_session);
    m_report = new ImportReport;
    m_shortcuts = new ShortcutsPanel;
    for (QWidget *const page :
         {static_cast<QWidget *>(m_details), static_cast<QWidget *>(m_addTag), static_cast<QWidget *>(m_addRun),
          static_cast<QWidget *>(m_report), static_cast<QWidget *>(m_shortcuts)})
        m_side->addWidget(scrolled(page));
    for (const SidePanel *const panel : {static_cast<SidePanel *>(m_addTag), static_cast<SidePanel *>(m_addRun),
                                         static_cast<SidePanel *>(m_report), static_cast<SidePanel *>(m_shortcuts)})
        connect(panel, &SidePanel::closed, this, &MainWindow::closePanel);
    return m_side;
}

void MainWindow::buildStatusBar()
{
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("statusText"));
    m_jobTitle = new QLabel(this);
    m_progress = new QProgressBar(this);
    m_progress->setObjectName(QStringLiteral("progress"));
    m_progress->setMaximumWidth(look::letters(this, 30));
    m_cancel = new QToolButton(this);
    m_cancel->setObjectName(QStringLiteral("cancelJob"));
    m_cancel->setText(tr("Cancel"));
    m_cancel->setToolTip(tr("Cancel and undo (Escape)"));
    m_status->setContentsMargins(look::gap(this), 0, 0, 0);
    statusBar()->addWidget(m_status, 1);
    for (QWidget *const widget :
         {static_cast<QWidget *>(m_jobTitle), static_cast<QWidget *>(m_progress), static_cast<QWidget *>(m_cancel)})
        statusBar()->addPermanentWidget(widget);
    setProgressVisible(false);
}

void MainWindow::wire()
{
    auto *const library = new LibraryMessages(this);
    connect(library, &LibraryMessages::message, this, [this](const QString &text) { report(text.trimmed()); });
    connect(m_links, &LinkTree::scopeChanged, this, &MainWindow::scopeChanged);
    connect(m_search, &QLineEdit::textChanged, m_model, &TagModel::setFilter);
    connect(m_model, &TagModel::modelReset, this, &MainWindow::showCounts);
    connect(m_model, &TagModel::reloaded, this, [this] {
        m_links->showCounts(m_model->index());
        m_details->showTag(m_table->currentTag());
    });
    connect(m_model, &TagModel::refused, this, &MainWindow::report);
    connect(m_table, &TagTable::tagSelected, m_details, &TagDetails::showTag);
    connect(m_details, &TagDetails::addressWanted, this, &MainWindow::takeSuggestion);
    connect(m_addTag, &AddTagForm::added, this,
            [this](const QString &name) { m_table->selectTag(m_session.tags().getIdByTagName(name)); });
    connect(&m_session, &ProjectSession::opened, this, &MainWindow::projectOpened);
    QWidget::setTabOrder(m_links, m_search);
    QWidget::setTabOrder(m_search, m_table);
}

void MainWindow::projectOpened()
{
    m_search->clear();
    m_links->showCounts(m_model->index());
    showDetails();
    const QString name = m_session.isOpen() ? m_session.path().section(QLatin1Char('/'), -1) : QString();
    setWindowTitle(name.isEmpty() ? tr("Tag editor") : tr("%1 – Tag editor").arg(name));
}

void MainWindow::scopeChanged()
{
    m_model->setScope(m_links->scope());
}
