// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_STREAMEDCOMMANDS_H
#define ZELMAR_LABEL_TESTS_STREAMEDCOMMANDS_H

#include "zelmar_label/address_grammar/communicatorcommand.h"
#include "zelmar_label/address_grammar/communicatorcommandt.h"

#include <QByteArray>
#include <QDataStream>
#include <QString>

CommunicatorCommand plainCommand(const QString &address, int dataType, quint64 length, int scanTime = 1);

/// A command whose fields are set one by one, so that its key stays empty.
CommunicatorCommandT rawCommand(const QString &address, qint32 dataType, qint32 length, qint32 scanTime = 1);

/// The command's stream data.
QByteArray written(CommunicatorCommandT &command, QDataStream::ByteOrder order = QDataStream::BigEndian,
                   int version = QDataStream::Qt_5_15);

#endif
