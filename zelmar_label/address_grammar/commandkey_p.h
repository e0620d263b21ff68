// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_COMMANDKEY_P_H
#define ZELMAR_LABEL_COMMANDKEY_P_H

#include <QString>

namespace label {

/// The address of a null command.
inline QString nullCommandAddress()
{
    return QStringLiteral("S>NULL");
}

/// "address_datatype_length". A "%1" in the address is text, not a placeholder.
template<typename Length>
QString commandKey(const QString &address, int dataType, Length length)
{
    return address + QLatin1Char('_') + QString::number(dataType) + QLatin1Char('_') + QString::number(length);
}

} // namespace label

#endif
