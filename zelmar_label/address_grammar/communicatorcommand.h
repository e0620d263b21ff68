// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_COMMUNICATORCOMMAND_H
#define ZELMAR_LABEL_COMMUNICATORCOMMAND_H

#include "zelmar_label/zelmar_label_export.h"

#include <QString>

/// One PLC data item to read or write: its address, unit width, number of units and scan time.
///
/// The address is `[station-]device address`: the text before the first "-" is the station number in decimal, the
/// text between the first and the second "-" the device address; an address without "-" has no station.
///
/// A plain value without a lock: each thread works on its own copies. The destructor is not virtual: never delete
/// through a base pointer.
class ZELMAR_LABEL_EXPORT CommunicatorCommand
{
public:
    /// Width of one unit. Other numbers are possible; they count as a type of unknown width.
    enum DataType : qint32 {
        Bit = 0,        ///< one bit
        Byte = 1,       ///< 1 byte
        Word = 2,       ///< 2 bytes
        DoubleWord = 3, ///< 4 bytes
        QuadWord = 4,   ///< 8 bytes
        Text = 5,       ///< 1 byte per character
        Invalid = 9,    ///< a tag type outside the known range
    };

    /// Makes the null command: one `DoubleWord` at the address "S>NULL".
    CommunicatorCommand();

    /// Size of the data in bytes: whole or begun bytes for `Bit` (1 for a length of 0), `length` times the unit's width
    /// for the other known types, 1 for an unknown type. A product beyond 64 bits keeps its low 64 bits.
    virtual quint64 getDataSize() const;

    /// "address_datatype_length", both numbers in decimal, computed on each call. Identifies the command with its
    /// station.
    virtual QString stringKey() const;

    /// The station number; -1 without a station, 0 if the text before the first "-" is no decimal number.
    int getStationId() const;

    /// The device address: the address without its station. Text after a second "-" is dropped.
    QString getAddressString() const;

    /// How often the item is scanned, in the editor's scan time units; 0: read once.
    qint32 scanTime = 1;
    DataType dataType = DoubleWord;
    /// Number of units: bits for `Bit`, characters for `Text`. Above 1: a block command.
    quint64 length = 1;
    QString address;
    /// Three fields for users of commands; the library only copies them.
    qint32 auxiliaryNumber = 0;
    QString auxiliaryText;
    bool auxiliaryFlag = false;
};

#endif
