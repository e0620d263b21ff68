// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "tagtable.h"

#include "celldelegates.h"
#include "look.h"
#include "projectsession.h"
#include "tagmodel.h"

#include <QEvent>
#include <QHeaderView>
#include <QLabel>

TagTable::TagTable(ProjectSession &session, TagModel &model, QWidget *parent)
    : QTableView(parent)
    , m_session(session)
    , m_model(model)
    , m_hint(new QLabel(viewport()))
{
    setObjectName(QStringLiteral("tagTable"));
    setAccessibleName(tr("Tags"));
    setModel(&model);
    setFrameShape(QFrame::NoFrame);
    setShowGrid(false);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(DoubleClicked | EditKeyPressed);
    setItemDelegateForColumn(TagModel::Address, new AddressDelegate(session, this));
    setItemDelegateForColumn(TagModel::Type, new TypeDelegate(session, this));
    verticalHeader()->hide();
    // Measuring 100,000 rows would read each of them.
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionResizeMode(TagModel::Name, QHeaderView::Stretch);
    m_hint->setObjectName(QStringLiteral("emptyHint"));
    m_hint->setAlignment(Qt::AlignCenter);
    m_hint->setWordWrap(true);
    m_hint->setAttribute(Qt::WA_TransparentForMouseEvents);
    connect(this, &QTableView::activated, this, [this](const QModelIndex &index) {
        if (state() != EditingState && (m_model.flags(index) & Qt::ItemIsEditable))
            edit(index);
    });
    connect(&model, &TagModel::modelReset, this, &TagTable::restore);
    applyLook();
    showHint();
}

void TagTable::applyLook()
{
    const int line = fontMetrics().height();
    verticalHeader()->setDefaultSectionSize(line * 8 / 5);
    horizontalHeader()->setMinimumSectionSize(look::letters(this, 8));
    horizontalHeader()->resizeSection(TagModel::Type, look::letters(this, 11));
    horizontalHeader()->resizeSection(TagModel::Address, look::letters(this, 17));
    horizontalHeader()->resizeSection(TagModel::Access, look::letters(this, 12));
    horizontalHeader()->resizeSection(TagModel::Scale, look::letters(this, 8));
    m_model.setLook(look::monospace(font()), look::wrong(palette()), look::wrongIcon(palette(), line));
    look::setTone(m_hint, look::Tone::Faded);
}

void TagTable::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange)
        applyLook();
}

void TagTable::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    m_hint->setGeometry(viewport()->rect());
}

int TagTable::currentTag() const
{
    return m_model.idAt(currentIndex().row());
}

void TagTable::selectTag(int id)
{
    const int row = m_model.rowOf(id);
    if (row < 0)
        return;
    setCurrentIndex(m_model.index(row, qMax(0, currentIndex().column())));
    scrollTo(currentIndex(), EnsureVisible);
}

void TagTable::editCell(int column)
{
    const QModelIndex cell = m_model.index(currentIndex().row(), column);
    if (!cell.isValid() || !(m_model.flags(cell) & Qt::ItemIsEditable))
        return;
    setFocus();
    setCurrentIndex(cell);
    edit(cell);
}

void TagTable::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    if (!current.isValid())
        return;
    const int id = m_model.idAt(current.row());
    if (id == m_current)
        return;
    m_current = id;
    Q_EMIT tagSelected(id);
}

/// Another set of rows keeps the tag if it contains it, and begins at the top otherwise.
void TagTable::restore()
{
    showHint();
    if (m_model.rowCount() == 0) {
        m_current = -1;
        Q_EMIT tagSelected(-1);
        return;
    }
    setCurrentIndex(m_model.index(qMax(0, m_model.rowOf(m_current)), 0));
}

QString TagTable::hint() const
{
    return m_hint->isHidden() ? QString() : m_hint->text();
}

void TagTable::showHint()
{
    m_hint->setVisible(m_model.rowCount() == 0);
    if (!m_session.isOpen())
        m_hint->setText(tr("No project is open.\n\nCtrl+O opens one, Ctrl+Shift+O the sample."));
    else if (!m_model.filter().isEmpty())
        m_hint->setText(tr("No tags match.\n\nEscape clears the search."));
    else
        m_hint->setText(tr("There are no tags here yet.\n\nCtrl+N adds one, Ctrl+R a run of them."));
}
