// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_SCREENSHOTS_PICTURE_H
#define ZELMAR_LABEL_SCREENSHOTS_PICTURE_H

#include <QString>

class QWidget;

/// Writes pictures as PNG files into one folder, with one suffix for their names.
class Pictures
{
public:
    Pictures(const QString &folder, const QString &ending);

    /// Shows the window at this size, in units of the screen's scale, waits until it is drawn, and writes it as `name`.
    /// Without a size the window keeps its own.
    bool take(QWidget &window, const QString &name, int width = 0, int height = 0) const;

private:
    QString m_folder;
    QString m_ending;
};

/// Waits until windows are shown and lists are filled.
void settle();

#endif
