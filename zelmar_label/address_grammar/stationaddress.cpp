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

StationSplit splitStationAt(QStringView address, int dash)
{
    int second = dash + 1;
    while (second < address.size() && address.at(second) != separator)
        ++second;
    return {readNumber(address.left(dash), 10).value_or(0), address.mid(dash + 1, second - dash - 1), dash + 1};
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
