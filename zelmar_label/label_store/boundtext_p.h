// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_BOUNDTEXT_P_H
#define ZELMAR_LABEL_BOUNDTEXT_P_H

#include <QString>
#include <QVariant>

namespace label {

/// `text` as a value of a statement. A null text becomes empty: Qt would bind it as NULL, which equals nothing.
inline QVariant boundText(const QString &text)
{
    return text.isNull() ? QVariant(QString(QLatin1String(""))) : QVariant(text);
}

} // namespace label

#endif
