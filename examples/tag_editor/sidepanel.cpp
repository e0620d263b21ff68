// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "sidepanel.h"

#include "look.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

SidePanel::SidePanel(const QString &title, const QString &closeText, QWidget *parent)
    : QWidget(parent)
    , m_body(new QVBoxLayout)
    , m_buttons(new QWidget(this))
    , m_close(new QPushButton(closeText, m_buttons))
{
    auto *const heading = new QLabel(title, this);
    QFont bold = font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.2);
    heading->setFont(bold);

    auto *const buttons = new QHBoxLayout(m_buttons);
    buttons->setContentsMargins(0, 0, 0, 0);
    buttons->addStretch();
    m_close->setObjectName(QStringLiteral("panelClose"));
    m_close->setAutoDefault(false);
    connect(m_close, &QPushButton::clicked, this, &SidePanel::closed);
    buttons->addWidget(m_close);

    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(look::gap(this));
    column->addWidget(heading);
    column->addLayout(m_body, 1);
    column->addWidget(m_buttons);
}

QPushButton *SidePanel::addAcceptButton(const QString &text, const char *name)
{
    m_accept = new QPushButton(text, m_buttons);
    m_accept->setObjectName(QLatin1String(name));
    m_accept->setDefault(true);
    connect(m_accept, &QPushButton::clicked, this, &SidePanel::accepted);
    static_cast<QHBoxLayout *>(m_buttons->layout())->insertWidget(1, m_accept);
    return m_accept;
}

void SidePanel::setTabStops(const QList<QWidget *> &fields)
{
    QList<QWidget *> stops = fields;
    if (m_accept)
        stops.append(m_accept);
    stops.append(m_close);
    for (int at = 1; at < stops.size(); ++at)
        setTabOrder(stops.at(at - 1), stops.at(at));
}

void SidePanel::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && m_accept && m_accept->isEnabled())
        m_accept->click();
    else
        QWidget::keyPressEvent(event);
}
