// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_COMMUNICATORCOMMANDT_H
#define ZELMAR_LABEL_COMMUNICATORCOMMANDT_H

#include "zelmar_label/zelmar_label_export.h"

#include <QMutex>
#include <QString>

class CommunicatorCommand;
class QDataStream;

/// A `CommunicatorCommand` for users outside the library: the same four core fields, a stored key, a mutex and a stream
/// form. It is made from a `CommunicatorCommand` and cannot be converted back.
///
/// The stored key is current after construction or assignment from a `CommunicatorCommand` and after `makekey`. It is
/// stale after `inputDataStream` and after a write to a field, until the next `makekey`.
///
/// `outputDataStream`, `inputDataStream`, `dataTypeName`, `isNull`, `getDataSize` and `makekey` lock the object for
/// their whole body; the other members take no lock.
class ZELMAR_LABEL_EXPORT CommunicatorCommandT
{
public:
    /// The null command: one double word at "S>NULL", with an empty key.
    CommunicatorCommandT();

    /// Copies the five data fields, key included. The mutex is new; `other` is not locked.
    CommunicatorCommandT(const CommunicatorCommandT &other);
    CommunicatorCommandT &operator=(const CommunicatorCommandT &other);

    /// Takes address, data type, scan time and the low 32 bits of the length, and makes the key.
    CommunicatorCommandT(const CommunicatorCommand &command);
    CommunicatorCommandT &operator=(const CommunicatorCommand &command);

    ~CommunicatorCommandT();

    /// Writes scan time, data type and length as 32-bit integers and the address as `QString`, with the stream's own
    /// byte order and version; no header, no key.
    void outputDataStream(QDataStream &stream);

    /// Reads what `outputDataStream` wrote. The key does not change. If the stream ends early, `QDataStream` sets the
    /// remaining fields.
    void inputDataStream(QDataStream &stream);

    /// The station number; -1 without a station, 0 if the station text is no decimal number. Locks one process-wide
    /// mutex.
    static int getStationId(const CommunicatorCommandT &command);

    /// The device address: the address without its station. Locks one process-wide mutex.
    static QString getAddressString(const CommunicatorCommandT &command);

    /// "Bit", "Byte", "Word" or "Double Word" for the types 0 to 3, else "unknow type".
    QString dataTypeName() const;

    /// True for a scan time of 0.
    bool isReadOnce() const;

    /// True for a length above 1.
    bool isBlockCommand() const;

    /// True when the address is "S>NULL" or empty.
    bool isNull() const;

    /// The stored key, current or not.
    QString stringKey() const;

    /// Size in bytes as these users count it, unlike `CommunicatorCommand::getDataSize`: a bit block whose length is a
    /// multiple of 8 counts one byte more, and a quad word counts 4 bytes.
    int getDataSize() const;

    /// Stores "address_datatype_length" as the key.
    void makekey();

    qint32 scanTime = 1;
    qint32 dataType = 3;
    qint32 length = 1;
    QString address;
    QString key;

private:
    mutable QMutex mutex;
};

#endif
