// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/commandformatter.h"

namespace label {

namespace {

/// The script's answer while its file exists, else the rule's. Testing for the file costs as much as matching several
/// patterns, so it is done only when the answer depends on it.
template<typename Answer>
Answer chosen(const ScriptHook &script, Answer byScript, Answer byRule)
{
    return byScript == byRule || script.exists() ? byScript : byRule;
}

bool isAlignedByScript(const ScriptHook &script, int value)
{
    if (!script.needAligment)
        return true;
    // No number is a multiple of 0.
    return script.aligmentSize != 0 && (qint64(value) - script.addressStartPos) % script.aligmentSize == 0;
}

} // namespace

bool CommandFormatter::validateMultiple(int value) const
{
    return chosen(m_script, isAlignedByScript(m_script, value), m_multipleRule.isAligned(value));
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
    const int missing = m_multipleRule.minimumBitDigits() - digits.size();
    if (missing > 0)
        digits.prepend(QString(missing, QLatin1Char('0')));
    return digits;
}

bool CommandFormatter::needOptimize() const
{
    return chosen(m_script, m_script.needOptimize, m_multipleRule.needOptimize());
}

QString CommandFormatter::continueRule() const
{
    return m_continueRuleText;
}

int CommandFormatter::aligmentSize() const
{
    return chosen(m_script, m_script.aligmentSize, m_multipleRule.aligmentSize());
}

bool CommandFormatter::isTypeRangeNeedAlignmentByte() const
{
    return chosen(m_script, m_script.needAligment, m_multipleRule.countsBits());
}

int CommandFormatter::bitbase() const
{
    return chosen(m_script, m_script.bitBase, m_multipleRule.bitRadix());
}

bool CommandFormatter::canConvertRegisterCommand() const
{
    return chosen(m_script, m_script.canConvertToRegister, m_multipleRule.canConvertToRegister());
}

bool CommandFormatter::isSemenseSepcialType() const
{
    return m_multipleRule.isSemenseSepcialType();
}

} // namespace label
