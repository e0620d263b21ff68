// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "tagvalue.h"

#include "tagtypes.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QCoreApplication>

#include <array>
#include <charconv>
#include <cmath>

namespace {

/// The fewest digits that read back as the same number.
template<typename Number>
QString shortestText(Number number)
{
    std::array<char, 64> digits = {};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    return QString::fromLatin1(digits.data(), static_cast<int>(end - digits.data()));
}

bool isHexDigit(QChar digit)
{
    return (digit >= QLatin1Char('0') && digit <= QLatin1Char('9')) ||
           (digit >= QLatin1Char('a') && digit <= QLatin1Char('f')) ||
           (digit >= QLatin1Char('A') && digit <= QLatin1Char('F'));
}

QVariant wholeNumber(const QString &text, int dataType, QString &error)
{
    bool isNumber = false;
    QVariant number =
        dataType == tagtype::UInt64 ? QVariant(text.toULongLong(&isNumber)) : QVariant(text.toLongLong(&isNumber));
    if (isNumber)
        return number;
    error = QCoreApplication::translate("TagValue", "\"%1\" is not a whole number, or is beyond the limits").arg(text);
    return QVariant();
}

} // namespace

QVariant valueOfText(const QString &text, int dataType, QString &error)
{
    if (dataType == tagtype::Ascii)
        return text.toUtf8();
    if (!tagtype::isReal(dataType))
        return wholeNumber(text, dataType, error);
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (isNumber && std::isfinite(number))
        return number;
    error = QCoreApplication::translate("TagValue", "\"%1\" is not a number").arg(text);
    return QVariant();
}

QString textOfValue(const QVariant &value, int dataType)
{
    switch (dataType) {
    case tagtype::Bit:
        return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case tagtype::Float:
        return shortestText(value.toFloat());
    case tagtype::Double:
        return shortestText(value.toDouble());
    case tagtype::Ascii:
        return TagSystem::byteArrayToString(value.toByteArray());
    default:
        return value.toString();
    }
}

QJsonValue jsonOfValue(const QVariant &value, int dataType)
{
    switch (dataType) {
    case tagtype::Bit:
        return value.toBool();
    case tagtype::Float:
    case tagtype::Double:
        // Uses the text: a float would have the digits of a double. JSON has no infinity.
        return std::isfinite(value.toDouble()) ? QJsonValue(textOfValue(value, dataType).toDouble()) : QJsonValue();
    case tagtype::Ascii:
    case tagtype::Int64:
    case tagtype::UInt64:
        return textOfValue(value, dataType);
    default:
        return value.toLongLong();
    }
}

bool bytesOfHex(const QString &text, QByteArray &bytes)
{
    QString digits;
    for (const QChar character : text) {
        if (isHexDigit(character))
            digits += character;
        else if (!character.isSpace())
            return false;
    }
    bytes = QByteArray::fromHex(digits.toLatin1());
    return digits.size() % 2 == 0;
}
