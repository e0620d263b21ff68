// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "messagebar.h"

#include "look.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QTimer>
#include <QToolButton>

namespace {

constexpr int shownInMilliseconds = 10000;

} // namespace

MessageBar::MessageBar(QWidget *parent)
    : QFrame(parent)
    , m_text(new QLabel(this))
    , m_close(new QToolButton(this))
    , m_fade(new QTimer(this))
{
    setObjectName(QStringLiteral("messageBar"));
    setAutoFillBackground(true);
    m_text->setObjectName(QStringLiteral("messageText"));
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_text->setTextFormat(Qt::PlainText);
    m_close->setObjectName(QStringLiteral("messageClose"));
    m_close->setText(tr("Dismiss"));
    m_close->setAutoRaise(true);
    m_close->setFocusPolicy(Qt::NoFocus);
    m_fade->setSingleShot(true);
    m_fade->setInterval(shownInMilliseconds);
    connect(m_fade, &QTimer::timeout, this, &MessageBar::clear);
    connect(m_close, &QToolButton::clicked, this, &MessageBar::clear);

    const int gap = look::gap(this);
    auto *const row = new QHBoxLayout(this);
    row->setContentsMargins(gap * 3 / 2, gap / 2, gap / 2, gap / 2);
    row->addWidget(m_text, 1);
    row->addWidget(m_close);
    hide();
}

void MessageBar::show(Kind kind, const QString &text)
{
    m_kind = kind;
    m_text->setText(look::brief(text));
    m_text->setAccessibleName(m_text->text());
    paint();
    setVisible(!text.isEmpty());
    if (kind == Kind::Done)
        m_fade->start();
    else
        m_fade->stop();
}

void MessageBar::clear()
{
    m_text->clear();
    hide();
}

QString MessageBar::text() const
{
    return m_text->text();
}

void MessageBar::paint()
{
    const QPalette own = parentWidget() ? parentWidget()->palette() : palette();
    const QColor color = m_kind == Kind::Problem ? look::wrong(own) : look::good(own);
    const QColor ground = look::tinted(own, color);
    const QColor &text = own.color(QPalette::Text);
    if (palette().color(QPalette::Window) == ground && palette().color(QPalette::WindowText) == text)
        return;
    QPalette tinted;
    tinted.setColor(QPalette::Window, ground);
    tinted.setColor(QPalette::WindowText, text);
    setPalette(tinted);
}

void MessageBar::changeEvent(QEvent *event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange ||
        event->type() == QEvent::ParentChange)
        paint();
}
