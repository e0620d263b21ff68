// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "linktree.h"

#include "look.h"
#include "projectsession.h"

#include <QEvent>
#include <QHeaderView>

namespace {

enum Column {
    TitleColumn,
    CountColumn,
};

enum Role {
    LinkRole = Qt::UserRole,
    StationRole,
};

QString tipOf(const LinkInfo &link)
{
    if (link.id == 0)
        return LinkTree::tr("Tags of the panel itself, without a device");
    if (!link.label)
        return LinkTree::tr("Link %1: there is no driver \"%2\"").arg(QString::number(link.id), link.driver);
    return LinkTree::tr("Link %1, driver %2").arg(QString::number(link.id), link.driver);
}

} // namespace

LinkTree::LinkTree(ProjectSession &session, QWidget *parent)
    : QTreeWidget(parent)
    , m_session(session)
{
    setObjectName(QStringLiteral("linkTree"));
    setAccessibleName(tr("Links and stations"));
    setColumnCount(2);
    setHeaderLabels({tr("Links"), tr("Tags")});
    setUniformRowHeights(true);
    setFrameShape(QFrame::NoFrame);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(TitleColumn, QHeaderView::Stretch);
    header()->setSectionResizeMode(CountColumn, QHeaderView::ResizeToContents);
    connect(this, &QTreeWidget::currentItemChanged, this, [this] { Q_EMIT scopeChanged(scope()); });
    connect(&session, &ProjectSession::opened, this, &LinkTree::fill);
    fill();
}

QTreeWidgetItem *LinkTree::addItem(QTreeWidgetItem *parent, const QString &title, const TagScope &scope)
{
    auto *const item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(this);
    item->setText(TitleColumn, title);
    item->setData(TitleColumn, LinkRole, scope.link);
    item->setData(TitleColumn, StationRole, scope.station);
    item->setSizeHint(TitleColumn, QSize(0, fontMetrics().height() * 7 / 5));
    item->setTextAlignment(CountColumn, Qt::AlignRight | Qt::AlignVCenter);
    return item;
}

void LinkTree::fill()
{
    clear();
    if (!m_session.isOpen())
        return;
    addItem(nullptr, tr("All tags"), {});
    AddressJudge &judge = m_session.judge();
    for (const int id : judge.links()) {
        const LinkInfo link = judge.link(id);
        QTreeWidgetItem *const item = addItem(nullptr, link.title(), {id, TagScope::All});
        item->setToolTip(TitleColumn, tipOf(link));
        for (const int station : link.stations) {
            QTreeWidgetItem *const child = addItem(item, tr("Station %1").arg(station), {id, station});
            child->setToolTip(TitleColumn, tr("Tags with station %1 in their address").arg(station));
        }
        item->setExpanded(true);
    }
    applyColors();
    setCurrentItem(topLevelItem(0));
}

void LinkTree::applyColors()
{
    const QColor faded = look::faded(palette());
    for (int row = 0; row < topLevelItemCount(); ++row) {
        QTreeWidgetItem *const item = topLevelItem(row);
        item->setForeground(CountColumn, faded);
        const int id = item->data(TitleColumn, LinkRole).toInt();
        if (id == TagScope::All)
            continue;
        const LinkInfo link = m_session.judge().link(id);
        if (id != 0 && !link.label)
            item->setForeground(TitleColumn, look::wrong(palette()));
        else if (!link.isEnabled)
            item->setForeground(TitleColumn, faded);
    }
}

void LinkTree::changeEvent(QEvent *event)
{
    QTreeWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_session.isOpen())
        applyColors();
}

void LinkTree::showCounts(const TagIndex &index)
{
    for (int row = 0; row < topLevelItemCount(); ++row) {
        QTreeWidgetItem *const item = topLevelItem(row);
        const int link = item->data(TitleColumn, LinkRole).toInt();
        const int count = link == TagScope::All ? index.count() : index.count(link);
        item->setText(CountColumn, locale().toString(count));
    }
}

TagScope LinkTree::scope() const
{
    const QTreeWidgetItem *const item = currentItem();
    if (!item)
        return {};
    return {item->data(TitleColumn, LinkRole).toInt(), item->data(TitleColumn, StationRole).toInt()};
}
