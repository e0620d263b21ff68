// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/mutexlocker_p.h"
#include "zelmar_label/tag_store/tagsystem.h"
#include "zelmar_label/tag_values/tagdatatype_p.h"

#include <limits>

namespace {

struct Limits
{
    QVariant max;
    QVariant min;
};

template<typename Number>
QVariant highest()
{
    return QVariant(std::numeric_limits<Number>::max());
}

Limits limitsOf(int type)
{
    switch (type) {
    case label::TagBit:
        return {1, 0};
    case label::TagInt8:
        return {127, -128};
    case label::TagUInt8:
        return {255, 0};
    case label::TagInt16:
        return {32767, -32768};
    case label::TagUInt16:
        return {65535, 0};
    case label::TagUInt32:
        return {highest<uint>(), 0};
    case label::TagFloat:
        // A tenth of the format's range: the range of panels.
        return {QStringLiteral("3.4e+37").toFloat(), QStringLiteral("-3.4e+37").toFloat()};
    case label::TagDouble:
        return {highest<double>(), std::numeric_limits<double>::lowest()};
    case label::TagInt64:
        return {highest<qlonglong>(), std::numeric_limits<qlonglong>::min()};
    case label::TagUInt64:
        return {highest<qulonglong>(), 0};
    default:
        return {highest<int>(), std::numeric_limits<int>::min()};
    }
}

template<typename Number>
bool isBetween(const Number &value, bool isNumber, const Number &min, const Number &max)
{
    return isNumber && min <= value && value <= max;
}

} // namespace

QStringList TagSystem::dataTypeList() const
{
    return {tr("Bit"),      tr("INT(8)"), tr("UINT(8)"), tr("INT(16)"), tr("UINT(16)"), tr("INT(32)"),
            tr("UINT(32)"), tr("FLOAT"),  tr("Ascii"),   tr("DOUBLE"),  tr("INT(64"),   tr("UINT(64)")};
}

QString TagSystem::datatypeString(int type) const
{
    return dataTypeList().value(type);
}

QStringList TagSystem::accessModeList() const
{
    return {tr("Write Only"), tr("Read/Write")};
}

void TagSystem::getMaxMinValue(int id, QVariant &max, QVariant &min)
{
    const int tag = resolvedRecipe(id);
    if (tag == -1)
        return;
    const int type = getDataTypeByID(tag);
    const label::MutexLocker locker(&m_mutex);
    const Limits limits = limitsOf(type);
    max = limits.max;
    min = limits.min;
}

bool TagSystem::isInTheRange(const int &id, const QVariant &value)
{
    const int type = getDataTypeByID(id);
    QVariant max;
    QVariant min;
    getMaxMinValue(id, max, min);
    bool isNumber = false;
    if (type >= label::TagBit && type <= label::TagUInt32) {
        const qlonglong number = value.toLongLong(&isNumber);
        return isBetween(number, isNumber, min.toLongLong(), max.toLongLong());
    }
    if (type == label::TagFloat) {
        const float number = value.toFloat(&isNumber);
        return isBetween(number, isNumber, min.toFloat(), max.toFloat());
    }
    if (type == label::TagDouble) {
        const double number = value.toDouble(&isNumber);
        return isBetween(number, isNumber, min.toDouble(), max.toDouble());
    }
    return false;
}
