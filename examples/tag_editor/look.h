// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_LOOK_H
#define TAG_EDITOR_LOOK_H

#include <QColor>
#include <QFont>
#include <QIcon>
#include <QString>

QT_BEGIN_NAMESPACE
class QFormLayout;
class QLabel;
class QPalette;
class QWidget;
QT_END_NAMESPACE

/// What a style does not tell: colours with a meaning, readable on light and on dark palettes, and sizes that follow
/// the font.
namespace look {

bool isDark(const QPalette &palette);

QColor wrong(const QPalette &palette);
QColor good(const QPalette &palette);
/// Between the palette's text and its background.
QColor faded(const QPalette &palette);
/// The palette's own colour of links, unless it is that of light palettes on a dark one.
QColor link(const QPalette &palette);
/// The palette's background with a touch of `color`.
QColor tinted(const QPalette &palette, const QColor &color);

/// Letters of one width, in the size of `font`.
QFont monospace(const QFont &font);

/// About half a line, for margins and gaps.
int gap(const QWidget *widget);

/// The width of `count` letters.
int letters(const QWidget *widget, int count);

/// A warning triangle.
QIcon wrongIcon(const QPalette &palette, int size);

/// Lets a list take the height that is left, down to `lines`, rather than ask for its own.
void setLeftOverHeight(QWidget *list, int lines);

/// Puts the title of a row of several lines beside the first of them.
void alignToFirstLine(QFormLayout *form, QWidget *field);

/// The text, without its middle where it is too long to be read: a label would ask for a window as high as the text.
QString brief(const QString &text);

/// The same for a narrow label, with places to break a line within long words, such as names and addresses.
QString narrow(const QString &text);

/// What a label's text is about.
enum class Tone {
    Faded,
    Wrong,
    Good,
};

/// Gives the text the colour of its tone, on this palette and on those that come later.
void setTone(QLabel *label, Tone tone);

} // namespace look

#endif
