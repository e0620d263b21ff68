// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/tag_store/filtertools.h"

#include <QRegExp>
#include <QString>

namespace FilterTools {

QString makefuzzypattern(const QString &text)
{
    if (text.isEmpty())
        return QString();
    const QLatin1String anything(".*");
    QString pattern = anything;
    const QString escaped = QRegExp::escape(text);
    for (const QChar character : escaped) {
        pattern += character;
        if (character != QLatin1Char('\\'))
            pattern += anything;
    }
    return pattern;
}

} // namespace FilterTools
