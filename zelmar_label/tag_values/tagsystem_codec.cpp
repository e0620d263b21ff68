// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/mutexlocker_p.h"
#include "zelmar_label/tag_store/tagids_p.h"
#include "zelmar_label/tag_store/tagsystem.h"
#include "zelmar_label/tag_values/bytearrayconversion.h"
#include "zelmar_label/tag_values/littleendian_p.h"
#include "zelmar_label/tag_values/tagdatatype_p.h"

#include <algorithm>
#include <cstring>

using label::fromLittleEndian;
using label::toLittleEndian;

namespace {

template<typename Number, typename Bits>
Number fromBits(Bits bits)
{
    static_assert(sizeof(Number) == sizeof(Bits), "a memory image has the size of its number");
    Number number;
    std::memcpy(&number, &bits, sizeof number);
    return number;
}

template<typename Bits, typename Number>
Bits bitsOf(Number number)
{
    return fromBits<Bits>(number);
}

/// `length` bytes: the text, cut or filled with zero bytes.
QByteArray textImage(const QByteArray &text, int textSize, int length)
{
    if (length <= 0)
        return QByteArray();
    QByteArray image(length, '\0');
    std::copy_n(text.constData(), std::min(textSize, length), image.begin());
    return image;
}

int sizeUpToZero(const QByteArray &text)
{
    const int zero = text.indexOf('\0');
    return zero < 0 ? text.size() : zero;
}

/// The value of a type that is no text; null for an unknown type.
QVariant numberOf(int type, const QByteArray &bytes)
{
    switch (type) {
    case label::TagBit:
    case label::TagUInt8:
        return static_cast<int>(fromLittleEndian(bytes, 1));
    case label::TagInt8:
        return static_cast<int>(static_cast<qint8>(fromLittleEndian(bytes, 1)));
    case label::TagInt16:
        return static_cast<int>(static_cast<qint16>(fromLittleEndian(bytes, 2)));
    case label::TagUInt16:
        return static_cast<int>(fromLittleEndian(bytes, 2));
    case label::TagInt32:
        return ByteArrayToInt(bytes);
    case label::TagUInt32:
        return ByteArrayToUInt(bytes);
    case label::TagFloat:
        return fromBits<float>(static_cast<quint32>(fromLittleEndian(bytes, 4)));
    case label::TagDouble:
        return fromBits<double>(fromLittleEndian(bytes, 8));
    case label::TagInt64:
        return static_cast<qlonglong>(fromLittleEndian(bytes, 8));
    case label::TagUInt64:
        return static_cast<qulonglong>(fromLittleEndian(bytes, 8));
    default:
        return QVariant();
    }
}

} // namespace

void TagSystem::var2ByteArray(int id, const QVariant &value, QByteArray &out)
{
    out.clear();
    const int tag = resolvedRecipe(id);
    if (tag == -1 && isRecipeID(id))
        return;
    const int type = getDataTypeByID(tag);
    const label::MutexLocker locker(&m_mutex);
    switch (type) {
    case label::TagBit:
        out = toLittleEndian(value.toUInt() & 1, 1);
        break;
    case label::TagInt8:
        out = toLittleEndian(static_cast<quint32>(value.toInt()), 1);
        break;
    case label::TagUInt8:
        out = toLittleEndian(value.toUInt(), 1);
        break;
    case label::TagInt16:
        out = toLittleEndian(static_cast<quint32>(value.toInt()), 2);
        break;
    case label::TagUInt16:
        out = toLittleEndian(value.toUInt(), 2);
        break;
    case label::TagInt32:
        out = toLittleEndian(static_cast<quint32>(value.toInt()), 4);
        break;
    case label::TagUInt32:
        out = toLittleEndian(value.toUInt(), 4);
        break;
    case label::TagFloat:
        out = toLittleEndian(bitsOf<quint32>(value.toFloat()), 4);
        break;
    case label::TagAscii: {
        const QByteArray text = value.toByteArray();
        out = textImage(text, text.size(), getScaleByID(tag));
        break;
    }
    case label::TagDouble:
        out = toLittleEndian(bitsOf<quint64>(value.toDouble()), 8);
        break;
    case label::TagInt64:
    case label::TagUInt64:
        out = toLittleEndian(static_cast<quint64>(value.toLongLong()), 8);
        break;
    default:
        break;
    }
}

void TagSystem::byteArray2Var(int id, const QByteArray &bytes, QVariant &out)
{
    const int type = getDataTypeByID(id);
    const label::MutexLocker locker(&m_mutex);
    if (type == label::TagAscii)
        out = bytes.left(qMax(0, getScaleByID(id)));
    else
        out = numberOf(type, bytes);
}

QByteArray TagSystem::varToByteArrayThreadSafe(int id, const QVariant &value)
{
    const int type = getDataTypeByID(id);
    const int size = getDataSizeByType(type);
    const label::MutexLocker locker(&m_mutex);
    switch (type) {
    case label::TagBit:
        return toLittleEndian(static_cast<quint32>(value.toInt()) & 1, size);
    case label::TagInt8:
    case label::TagUInt8:
    case label::TagInt16:
    case label::TagUInt16:
    case label::TagInt32:
    case label::TagUInt32:
        return toLittleEndian(static_cast<quint32>(value.toInt()), size);
    case label::TagFloat:
        return toLittleEndian(bitsOf<quint32>(value.toFloat()), size);
    case label::TagAscii: {
        const QByteArray text = value.toByteArray();
        return textImage(text, sizeUpToZero(text), getScaleByID(id));
    }
    case label::TagDouble:
        return toLittleEndian(bitsOf<quint64>(value.toDouble()), size);
    case label::TagInt64:
    case label::TagUInt64:
        return toLittleEndian(static_cast<quint64>(value.toLongLong()), size);
    default:
        return toLittleEndian(0, size);
    }
}

QVariant TagSystem::byteArrayToVarThreadSafe(int id, QByteArray bytes)
{
    const int type = getDataTypeByID(id);
    const label::MutexLocker locker(&m_mutex);
    if (bytes.size() < getDataSizeByType(type))
        return QVariant();
    if (type == label::TagBit)
        return bytes.at(0) != '\0';
    if (type != label::TagAscii)
        return numberOf(type, bytes);
    // A deep copy: the caller's bytes may be in temporary memory.
    return QByteArray(bytes.constData(), qBound(0, getScaleByID(id), bytes.size()));
}

int TagSystem::QByteArrayToInt(const QByteArray &bytes)
{
    return ByteArrayToInt(bytes);
}

unsigned int TagSystem::QByteArrayToUInt(const QByteArray &bytes)
{
    return ByteArrayToUInt(bytes);
}

QString TagSystem::byteArrayToString(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.constData(), sizeUpToZero(bytes));
}

bool TagSystem::isAsciiType(int id)
{
    return getDataTypeByID(id) == label::TagAscii;
}
