// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_PROJECTFILES_TAGVALUE_H
#define ZELMAR_LABEL_PROJECTFILES_TAGVALUE_H

#include <QByteArray>
#include <QJsonValue>
#include <QString>
#include <QVariant>

/// The value that a text stands for in a tag of the type; null, with the reason in `error`, when it stands for none.
QVariant valueOfText(const QString &text, int dataType, QString &error);

/// A tag's value for a person: numbers in as many digits as tell them apart.
QString textOfValue(const QVariant &value, int dataType);

/// Numbers of 64 bits are texts, since most readers of JSON would round them.
QJsonValue jsonOfValue(const QVariant &value, int dataType);

/// Bytes in hexadecimal, with or without blanks. False when there is anything else.
bool bytesOfHex(const QString &text, QByteArray &bytes);

#endif
