// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "lintcontext.h"

#include "lintaddresses.h"

#include "zelmar_label/label_table/dynamiclabelcreatorinterface.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QSet>

using namespace label;

namespace {

/// One address of each bit, then the others.
QStringList bitByBit(const LintRow &row)
{
    QStringList firsts;
    QStringList others;
    QSet<int> bits;
    for (const QString &address : row.addresses) {
        const int bit = row.formatter.getbitOffset(address);
        (bits.contains(bit) ? others : firsts).append(address);
        bits.insert(bit);
    }
    return firsts + others;
}

/// Addresses whose register is checked: those that the driver writes, and the samples.
QStringList bitsToConvert(const LintContext &context, const LintRow &row)
{
    QStringList bits = bitByBit(row).mid(0, 12);
    for (const DriverSample &sample : context.samples) {
        if (bits.size() >= 24)
            break;
        if (sample.isAccepted && !bits.contains(sample.address) && row.formatter.isDeviceAddressValid(sample.address))
            bits.append(sample.address);
    }
    return bits;
}

void lintRegister(LintContext &context, const LintRow &row)
{
    const QStringList bits = bitsToConvert(context, row);
    for (const QString &bit : bits) {
        const int found = context.label().addressValidation(bit, BitType);
        if (context.ownRow(found) != row.index)
            continue;
        CommunicatorCommand command;
        command.address = bit;
        command.dataType = CommunicatorCommand::Bit;
        const CommandFormatter &formatter = *context.label().deviceTypesTable().formatterAt(found);
        const QString address = formatter.convertToRegisterAddress(command);
        int registerRow = -1;
        const QString made = context.label().convertBitCommandToRegisterCommand(command, registerRow).address;
        const int offset = context.label().bitOffset(found, bit);
        if (registerRow < 0) {
            context.report.rowError(
                row.index, "register-missing", "multiple_rule",
                QStringLiteral("the register of %1 is %2, which no register row accepts")
                    .arg(bit, address.isEmpty() ? QStringLiteral("none") : address),
                QStringLiteral("add the row of the register or name its symbol after '_' in the rule; end the rule in "
                               "':n' if no register holds the bit"));
            return;
        }
        if (made != CommunicatorCommand().address && offset < context.label().datasize(registerRow) * 8)
            continue;
        context.report.rowError(
            row.index, "register-narrow", "multiple_rule",
            QStringLiteral("bit %1 of %2 is beyond the %3 bits of its register %4")
                .arg(QString::number(offset), bit, QString::number(context.label().datasize(registerRow) * 8), address),
            QStringLiteral("name a wider register, correct 'data_size', or narrow the bit part"));
        return;
    }
}

/// Families that the driver's creator recognises but that have no template.
void lintFamilies(LintContext &context)
{
    QSet<QString> told;
    const QStringList addresses = familyAddresses();
    for (const QString &address : addresses) {
        DynamicLabelItem item;
        if (!familyCreator(context.driver.name).create(address, item) || told.contains(item.basePattern) ||
            context.label().deviceTypesTable().getFormatterIndexByPattern(item.basePattern) >= 0)
            continue;
        told.insert(item.basePattern);
        context.report.error("family-missing", QStringLiteral("pattern"),
                             QStringLiteral("addresses such as %1 need a row with the pattern '%2', which is missing")
                                 .arg(address, item.basePattern),
                             QStringLiteral("add the row: drivers of this name have that family"));
    }
    for (const LintRow &row : context.rows) {
        if (row.isTemplate && !row.isMember)
            context.report.rowWarning(
                row.index, "family-unknown", "pattern",
                QStringLiteral("the pattern '%1' is a plain name, but drivers of this name have no such family")
                    .arg(row.formatter.pattern()),
                QStringLiteral("write a regular expression, or name the driver like the one that has the family"));
    }
}

} // namespace

void lintReach(LintContext &context)
{
    for (const LintRow &row : context.rows) {
        if (context.report.isWrong(row.index) || row.addresses.isEmpty())
            continue;
        if (row.isBit() && row.formatter.canConvertRegisterCommand())
            lintRegister(context, row);
    }
    lintFamilies(context);
}
