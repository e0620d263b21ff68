// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_DRIVERSAMPLES_H
#define ZELMAR_LABEL_DRIVERSAMPLES_H

#include "driverfile.h"

#include <QList>
#include <QString>

namespace label {
class LabelLoader;
}

/// An address with the answers that a driver has to give; one line of a sample file.
struct DriverSample
{
    QString file;
    int line = 0;
    bool isAccepted = false;
    /// Without station.
    QString address;
    /// The rows that are asked: -1 any, 0 bit rows, any other value register rows.
    int filter = -1;
    /// What follows is told of accepted addresses only. Empty texts stand for "-".
    QString symbol;
    int number = -1;
    int bit = -1;
    /// The data type of a run, and the address that follows in it.
    int step = 0;
    QString next;
    /// The register that holds the bit.
    QString registerAddress;
};

/// A sample that the driver answers otherwise.
struct SampleFault
{
    enum class Kind {
        Refused,  ///< it has to be accepted
        Accepted, ///< it has to be refused
        Symbol,
        Number,
        Bit,
        Next,     ///< the address behind it
        Register, ///< the register that holds the bit
        Block,    ///< the address of a block that begins with it is another item
    };

    Kind kind = Kind::Refused;
    /// The type index of the row that answered; -1 for none.
    int row = -1;
    QString text;
};

/// Reads a sample file. Errors of the form are collected; a line with an error gives no sample.
QList<DriverSample> readDriverSamples(const QString &path, QList<DriverFileError> &errors);

/// What the label answers otherwise than the sample wants. Addresses of dynamic families add rows to the label.
QList<SampleFault> sampleFaults(label::LabelLoader &label, const DriverSample &sample);

#endif
