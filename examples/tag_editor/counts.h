// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_COUNTS_H
#define TAG_EDITOR_COUNTS_H

#include <QLocale>
#include <QString>

/// `one` for 1, else `many` with the number for its %1. The plural forms of `tr` would need a translation file for
/// English.
inline QString counted(int count, const QString &one, const QString &many)
{
    return count == 1 ? one : many.arg(QLocale().toString(count));
}

#endif
