// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/stationaddress_p.h"

#include "zelmar_label/address_grammar/radixnumber_p.h"

namespace label {

namespace {
constexpr QLatin1Char separator('-');
}

bool hasStation(const QString &address)
{
    return address.contains(separator);
}

StationSplit splitStation(QStringView address)
{
    int first = 0;
    while (first < address.size() && address.at(first) != separator)
        ++first;
    if (first == address.size())
        return {noStation, address, 0};
    int second = first + 1;
    while (second < address.size() && address.at(second) != separator)
        ++second;
    return {readNumber(address.left(first), 10).value_or(0), address.mid(first + 1, second - first - 1), first + 1};
}

int stationNumber(const QString &address)
{
    return splitStation(address).station;
}

QString deviceAddress(const QString &address)
{
    return hasStation(address) ? splitStation(address).device.toString() : address;
}

QString withStation(int station, const QString &address)
{
    return station == noStation ? address : QString::number(station) + separator + address;
}

} // namespace label
