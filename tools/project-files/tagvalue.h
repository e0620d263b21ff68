// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_PROJECTFILES_TAGVALUE_H
#define ZELMAR_LABEL_PROJECTFILES_TAGVALUE_H

#include <QByteArray>
#include <QJsonValue>
#include <QString>
#include <QVariant>

/// The value of a text for a tag of the type; null, with the reason in `error`, if the text is invalid.
QVariant valueOfText(const QString &text, int dataType, QString &error);

/// A tag's value for a person: numbers have as many digits as needed to distinguish them.
QString textOfValue(const QVariant &value, int dataType);

/// Numbers of 64 bits are texts, since most readers of JSON would round them.
QJsonValue jsonOfValue(const QVariant &value, int dataType);

/// Bytes in hexadecimal, with or without blanks. False for any other text.
bool bytesOfHex(const QString &text, QByteArray &bytes);

#endif
