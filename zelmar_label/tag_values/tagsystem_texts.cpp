// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/tag_store/tagsystem.h"
#include "zelmar_label/tag_values/tagdatatype_p.h"

#include <limits>
#include <optional>

namespace {

/// Odd types have a sign; for the 64-bit types this is wrong, but stays so.
bool isSigned(int type)
{
    return type % 2 != 0;
}

/// Width of the text form in bits. Types without a width of their own show their low 32 bits.
int textBits(int type)
{
    switch (type) {
    case label::TagInt8:
    case label::TagUInt8:
        return 8;
    case label::TagInt16:
    case label::TagUInt16:
        return 16;
    case label::TagInt64:
    case label::TagUInt64:
        return 64;
    default:
        return 32;
    }
}

quint64 lowBits(qint64 value, int bits)
{
    return static_cast<quint64>(value) & (std::numeric_limits<quint64>::max() >> (64 - bits));
}

qint64 withSign(quint64 pattern, int bits)
{
    const int unused = 64 - bits;
    return static_cast<qint64>(pattern << unused) >> unused;
}

/// The number of a text in `base` for one of the types 1 to 6: in base 10 the number itself, else the bit pattern of a
/// signed type. Nothing when it does not fit.
std::optional<qint64> fitted(qint64 value, int type, int base)
{
    const int bits = textBits(type);
    const qint64 highestPattern = static_cast<qint64>(lowBits(-1, bits));
    if (isSigned(type) && base == 10) {
        const qint64 highest = highestPattern / 2;
        return value >= -highest - 1 && value <= highest ? std::optional(value) : std::nullopt;
    }
    if (value < 0 || value > highestPattern)
        return std::nullopt;
    return isSigned(type) ? withSign(static_cast<quint64>(value), bits) : value;
}

bool isBase(int base)
{
    return base == 0 || (base >= 2 && base <= 36);
}

/// Zeros before the digits, so that a value below one keeps a zero before its point.
int missingZeros(int length, int totalDigits, int decimalDigits)
{
    return totalDigits > decimalDigits ? decimalDigits + 1 - length : totalDigits - length;
}

void insertZeros(QString &text, int count)
{
    if (count > 0)
        text.prepend(QString(count, QLatin1Char('0')));
}

} // namespace

QString TagSystem::toBaseSystemStringFromLongLong(const int &id, const long long &value, const int &base)
{
    const int type = getDataTypeByID(id);
    const int bits = textBits(type);
    const quint64 pattern = lowBits(value, bits);
    if (base == 10 && isSigned(type))
        return QString::number(withSign(pattern, bits));
    if (base == 8 || base == 10 || base == 16)
        return QString::number(pattern, base);
    return QString();
}

long long TagSystem::toLongLongByBaseSystemString(const int &id, const QString &text, bool &ok, const int &base,
                                                  bool &formatError)
{
    const int type = getDataTypeByID(id);
    bool isNumber = false;
    const qlonglong value = isBase(base) ? text.toLongLong(&isNumber, base) : 0;
    formatError = !isNumber;
    if (formatError)
        return 0;
    if (!isSigned(type) && value < 0) {
        ok = false;
        return 0;
    }
    if (type >= label::TagInt8 && type <= label::TagUInt32) {
        const std::optional<qint64> number = fitted(value, type, base);
        ok = number.has_value();
        return number.value_or(0);
    }
    // All other types are read in base 10, whatever the base.
    const qlonglong decimal = text.toLongLong(&ok, 10);
    return ok ? decimal : 0;
}

QString TagSystem::getValueTextWithShiftDecimalPoint(const QVariant &value, const int &totalDigits,
                                                     const int &decimalDigits, const bool &padToTotal)
{
    QString text = value.toString();
    const bool isNegative = text.contains(QLatin1Char('-'));
    text.remove(QLatin1Char('-'));
    text.remove(QLatin1Char('.'));
    const int length = text.size();
    if (totalDigits < length)
        text = text.right(qMax(0, totalDigits));
    else if (padToTotal)
        insertZeros(text, totalDigits - length);
    else if (decimalDigits >= length)
        insertZeros(text, missingZeros(length, totalDigits, decimalDigits));
    if (decimalDigits > 0 && totalDigits > decimalDigits && decimalDigits < text.size())
        text.insert(text.size() - decimalDigits, QLatin1Char('.'));
    return isNegative ? QLatin1Char('-') + text : text;
}
