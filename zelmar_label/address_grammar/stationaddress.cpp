// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/stationaddress_p.h"

namespace label {

namespace {
constexpr QLatin1Char separator('-');
}

bool hasStation(const QString &address)
{
    return address.contains(separator);
}

int stationNumber(const QString &address)
{
    const int end = address.indexOf(separator);
    // A copy, since Qt 6 has no QStringRef and Qt 5's QStringView reads no numbers.
    return end < 0 ? noStation : address.left(end).toInt(); // clazy:exclude=qstring-ref
}

QString deviceAddress(const QString &address)
{
    const int first = address.indexOf(separator);
    if (first < 0)
        return address;
    const int second = address.indexOf(separator, first + 1);
    return second < 0 ? address.mid(first + 1) : address.mid(first + 1, second - first - 1);
}

QString withStation(int station, const QString &address)
{
    return station == noStation ? address : QString::number(station) + separator + address;
}

} // namespace label
