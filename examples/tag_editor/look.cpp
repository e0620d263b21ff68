// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "look.h"

#include <QApplication>
#include <QEvent>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFormLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>

namespace look {

namespace {

QColor mixed(const QColor &first, const QColor &second, qreal share)
{
    const auto mix = [share](qreal a, qreal b) { return a * (1 - share) + b * share; };
    return QColor::fromRgbF(mix(first.redF(), second.redF()), mix(first.greenF(), second.greenF()),
                            mix(first.blueF(), second.blueF()));
}

constexpr const char *toneProperty = "tone";

/// The colour comes from the parent's palette, since the label's own palette has the old colour.
void paintTone(QLabel *label)
{
    const QPalette around = label->parentWidget() ? label->parentWidget()->palette() : QApplication::palette(label);
    const auto tone = static_cast<Tone>(label->property(toneProperty).toInt());
    const QColor color = tone == Tone::Wrong ? wrong(around) : tone == Tone::Good ? good(around) : faded(around);
    QPalette palette = label->palette();
    if (palette.color(QPalette::WindowText) == color)
        return;
    palette.setColor(QPalette::WindowText, color);
    label->setPalette(palette);
}

class ToneKeeper : public QObject
{
public:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::PaletteChange)
            paintTone(static_cast<QLabel *>(object));
        return false;
    }
};

QPixmap triangle(int size, const QColor &fill, const QColor &mark)
{
    constexpr int scale = 4;
    const qreal side = size * scale;
    QPixmap pixmap(size * scale, size * scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath path;
    path.moveTo(side / 2, side * 0.08);
    path.lineTo(side * 0.96, side * 0.9);
    path.lineTo(side * 0.04, side * 0.9);
    path.closeSubpath();
    painter.fillPath(path, fill);
    painter.setPen(QPen(mark, side * 0.11, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(side / 2, side * 0.38), QPointF(side / 2, side * 0.6));
    painter.drawPoint(QPointF(side / 2, side * 0.77));
    return pixmap;
}

} // namespace

bool isDark(const QPalette &palette)
{
    return palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
}

QColor wrong(const QPalette &palette)
{
    return isDark(palette) ? QColor(255, 138, 128) : QColor(176, 24, 20);
}

QColor good(const QPalette &palette)
{
    return isDark(palette) ? QColor(129, 212, 140) : QColor(24, 112, 44);
}

QColor faded(const QPalette &palette)
{
    return mixed(palette.color(QPalette::WindowText), palette.color(QPalette::Window), 0.38);
}

QColor link(const QPalette &palette)
{
    constexpr int readable = 140;
    const QColor &own = palette.color(QPalette::Link);
    return isDark(palette) && own.lightness() < readable ? QColor(120, 170, 250) : own;
}

QColor tinted(const QPalette &palette, const QColor &color)
{
    return mixed(palette.color(QPalette::Base), color, isDark(palette) ? 0.22 : 0.12);
}

QFont monospace(const QFont &font)
{
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    // Without a desktop setting, the system's font may be proportional.
    fixed.setStyleHint(QFont::Monospace);
    if (!QFontInfo(fixed).fixedPitch())
        fixed.setFamily(QStringLiteral("monospace"));
    fixed.setPointSizeF(QFontInfo(font).pointSizeF());
    return fixed;
}

int gap(const QWidget *widget)
{
    return widget->fontMetrics().height() / 2;
}

int letters(const QWidget *widget, int count)
{
    return widget->fontMetrics().averageCharWidth() * count;
}

QIcon wrongIcon(const QPalette &palette, int size)
{
    QIcon icon(triangle(size, wrong(palette), palette.color(QPalette::Base)));
    icon.addPixmap(triangle(size, palette.color(QPalette::HighlightedText), palette.color(QPalette::Highlight)),
                   QIcon::Selected);
    return icon;
}

void setLeftOverHeight(QWidget *list, int lines)
{
    list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    list->setMinimumHeight(list->fontMetrics().height() * lines);
}

void alignToFirstLine(QFormLayout *form, QWidget *field)
{
    auto *const title = qobject_cast<QLabel *>(form->labelForField(field));
    title->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    title->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::MinimumExpanding);
}

QString brief(const QString &text)
{
    constexpr int end = 200;
    return text.size() <= 2 * end ? text : text.left(end) + QStringLiteral(" … ") + text.right(end);
}

QString narrow(const QString &text)
{
    constexpr int longestWord = 28;
    const QChar zeroWidthSpace(0x200B);
    QString broken;
    int word = 0;
    for (const QChar character : brief(text)) {
        word = character.isSpace() ? 0 : word + 1;
        if (word > longestWord) {
            broken += zeroWidthSpace;
            word = 1;
        }
        broken += character;
    }
    return broken;
}

void setTone(QLabel *label, Tone tone)
{
    static ToneKeeper keeper;
    label->setProperty(toneProperty, static_cast<int>(tone));
    label->removeEventFilter(&keeper);
    label->installEventFilter(&keeper);
    paintTone(label);
}

} // namespace look
