// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_COMMANDKEY_P_H
#define ZELMAR_LABEL_COMMANDKEY_P_H

#include <QString>

namespace label {

/// The address by which a null command is known.
inline QString nullCommandAddress()
{
    return QStringLiteral("S>NULL");
}

/// "address_datatype_length". The address goes in as it stands: a "%1" in it is text, not a place to fill.
template<typename Length>
QString commandKey(const QString &address, int dataType, Length length)
{
    return address + QLatin1Char('_') + QString::number(dataType) + QLatin1Char('_') + QString::number(length);
}

} // namespace label

#endif
