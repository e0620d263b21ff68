// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_STATIONADDRESS_P_H
#define ZELMAR_LABEL_STATIONADDRESS_P_H

#include <QString>
#include <QStringView>

namespace label {

/// The station id for no station.
constexpr int noStation = -1;

/// An address with its station cut off.
struct StationSplit
{
    int station = noStation;
    /// The device address, and its index in the whole.
    QStringView device;
    int deviceStart = 0;
};

/// As `splitStation`, with the index of the first "-".
StationSplit splitStationAt(QStringView address, int dash);

/// The station is the text before the first "-" as a decimal number, 0 if it is none; the device address is the text
/// between the first and the second "-", or the whole address without a "-".
inline StationSplit splitStation(QStringView address)
{
    for (const QChar &unit : address) {
        if (unit == QLatin1Char('-'))
            return splitStationAt(address, static_cast<int>(&unit - address.begin()));
    }
    return {noStation, address, 0};
}

/// True when the address has a "-" and so a station.
bool hasStation(const QString &address);

/// The text before the first "-" as a decimal number, 0 if it is none; `noStation` without a "-".
int stationNumber(const QString &address);

/// The text between the first and the second "-", or the whole address (shared, not copied) without a "-".
QString deviceAddress(const QString &address);

/// `address` with "station-" in front, or unchanged for `noStation`.
QString withStation(int station, const QString &address);

} // namespace label

#endif
