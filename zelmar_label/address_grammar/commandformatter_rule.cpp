// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/commandformatter.h"

#include "zelmar_label/address_grammar/addressrow.h"

#include <QFileInfo>

namespace label {

namespace {

bool isAlignedByScript(const ScriptHook &script, int value)
{
    if (!script.needAligment)
        return true;
    // No number is a multiple of 0.
    return script.aligmentSize != 0 && (qint64(value) - script.addressStartPos) % script.aligmentSize == 0;
}

} // namespace

/// The script's answer while its file exists, else the rule's. Testing for the file costs as much as reading several
/// addresses, so it is done only when the answer depends on it.
template<typename Answer>
Answer CommandFormatter::chosen(Answer byScript, Answer byRule) const
{
    return byScript == byRule || QFileInfo::exists(m_row->scriptPath) ? byScript : byRule;
}

bool CommandFormatter::validateMultiple(int value) const
{
    return chosen(isAlignedByScript(script(), value), m_row->rule.isAligned(value));
}

bool CommandFormatter::M8(int value)
{
    return isMultipleOf8(value);
}

bool CommandFormatter::M8add1(int value)
{
    return isMultipleOf8Plus1(value);
}

bool CommandFormatter::M16(int value)
{
    return isMultipleOf16(value);
}

bool CommandFormatter::M16add1(int value)
{
    return isMultipleOf16Plus1(value);
}

bool CommandFormatter::M64add1(int value)
{
    return isMultipleOf64Plus1(value);
}

QString CommandFormatter::stringWithDigits(QString digits) const
{
    const int missing = m_row->rule.minimumBitDigits() - digits.size();
    if (missing > 0)
        digits.prepend(QString(missing, QLatin1Char('0')));
    return digits;
}

bool CommandFormatter::needOptimize() const
{
    return chosen(script().needOptimize, m_row->rule.needOptimize());
}

QString CommandFormatter::continueRule() const
{
    return columns().continueRule;
}

int CommandFormatter::aligmentSize() const
{
    return chosen(script().aligmentSize, m_row->rule.aligmentSize());
}

bool CommandFormatter::isTypeRangeNeedAlignmentByte() const
{
    return chosen(script().needAligment, m_row->rule.countsBits());
}

int CommandFormatter::bitbase() const
{
    return chosen(script().bitBase, m_row->rule.bitRadix());
}

bool CommandFormatter::canConvertRegisterCommand() const
{
    return chosen(script().canConvertToRegister, m_row->rule.canConvertToRegister());
}

bool CommandFormatter::isSemenseSepcialType() const
{
    return m_row->rule.isSemenseSepcialType();
}

} // namespace label
