// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_BENCHMARKS_MELSECSCANNER_H
#define ZELMAR_LABEL_BENCHMARKS_MELSECSCANNER_H

#include <QStringView>

/// What a scanner reads in an address. -1 means no station, no number, no bit.
struct ScannedAddress
{
    /// Names the area, as "D" or "K4SB"; null for a refused address.
    const char *area = nullptr;
    int station = -1;
    int number = -1;
    int bit = -1;

    bool isAccepted() const { return area != nullptr; }
};

/// The yardstick: a scanner for the areas of melsec_q_ethernet.tsv as it is written by hand for one device. It has a
/// switch on the letters, a loop over the digits of the area's radix, and the limits. Any data type.
ScannedAddress scanMelsecAddress(QStringView address);

#endif
