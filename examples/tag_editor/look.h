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

/// What a style does not define: colours with a meaning, readable on light and dark palettes, and sizes that follow the
/// font.
namespace look {

bool isDark(const QPalette &palette);

QColor wrong(const QPalette &palette);
QColor good(const QPalette &palette);
/// Between the palette's text and its background.
QColor faded(const QPalette &palette);
/// The palette's link colour, but not the one of light palettes on a dark palette.
QColor link(const QPalette &palette);
/// The palette's background with some `color`.
QColor tinted(const QPalette &palette, const QColor &color);

/// A fixed-width font, in the size of `font`.
QFont monospace(const QFont &font);

/// About half a line, for margins and gaps.
int gap(const QWidget *widget);

/// The width of `count` letters.
int letters(const QWidget *widget, int count);

/// A warning triangle.
QIcon wrongIcon(const QPalette &palette, int size);

/// Lets a list use the remaining height, at least `lines`, instead of its own size hint.
void setLeftOverHeight(QWidget *list, int lines);

/// Aligns the title of a row of several lines with the first line.
void alignToFirstLine(QFormLayout *form, QWidget *field);

/// The text without its middle if it is too long: a label would make the window as high as the text.
QString brief(const QString &text);

/// The same for a narrow label, with line break positions in long words, such as names and addresses.
QString narrow(const QString &text);

/// The meaning of a label's text.
enum class Tone {
    Faded,
    Wrong,
    Good,
};

/// Gives the text the colour of its tone, for this palette and later ones.
void setTone(QLabel *label, Tone tone);

} // namespace look

#endif
