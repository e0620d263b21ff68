// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/streamedcommands.h"

CommunicatorCommand plainCommand(const QString &address, int dataType, quint64 length, int scanTime)
{
    CommunicatorCommand command;
    command.address = address;
    command.dataType = static_cast<CommunicatorCommand::DataType>(dataType);
    command.length = length;
    command.scanTime = scanTime;
    return command;
}

CommunicatorCommandT rawCommand(const QString &address, qint32 dataType, qint32 length, qint32 scanTime)
{
    CommunicatorCommandT command;
    command.address = address;
    command.dataType = dataType;
    command.length = length;
    command.scanTime = scanTime;
    return command;
}

QByteArray written(CommunicatorCommandT &command, QDataStream::ByteOrder order, int version)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(order);
    stream.setVersion(version);
    command.outputDataStream(stream);
    return bytes;
}
