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

/// An address with the answers that a driver must give; one line of a sample file.
struct DriverSample
{
    QString file;
    int line = 0;
    bool isAccepted = false;
    /// Without station.
    QString address;
    /// The rows to query: -1 any, 0 bit rows, any other value register rows.
    int filter = -1;
    /// The following values exist only for accepted addresses. Empty texts mean "-".
    QString symbol;
    int number = -1;
    int bit = -1;
    /// The data type of a run, and the next address in it.
    int step = 0;
    QString next;
    /// The register that holds the bit.
    QString registerAddress;
};

/// A sample for which the driver gives another answer.
struct SampleFault
{
    enum class Kind {
        Refused,  ///< it must be accepted
        Accepted, ///< it must be refused
        Symbol,
        Number,
        Bit,
        Next,     ///< the next address
        Register, ///< the register that holds the bit
        Block,    ///< a block that begins with this address reads another item
    };

    Kind kind = Kind::Refused;
    /// The type index of the row that answered; -1 for none.
    int row = -1;
    QString text;
};

/// Reads a sample file. Collects errors of the form; a line with an error gives no sample.
QList<DriverSample> readDriverSamples(const QString &path, QList<DriverFileError> &errors);

/// The label's answers that differ from the sample. Addresses of dynamic families add rows to the label.
QList<SampleFault> sampleFaults(label::LabelLoader &label, const DriverSample &sample);

#endif
