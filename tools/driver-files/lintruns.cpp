// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "lintcontext.h"

using namespace label;

namespace {

/// The address as a run writes it: the same number and bit in the library's digits. Empty if no rule makes runs.
QString rewritten(const LintRow &row, const QString &address)
{
    CommunicatorCommand command;
    command.address = address;
    if (!row.isBit()) {
        command.dataType = static_cast<CommunicatorCommand::DataType>(row.formatter.type());
        return row.formatter.makeContinueCommandwithCap(command, 1, 1, false).value(0).address;
    }
    command.dataType = CommunicatorCommand::Bit;
    const bool isSplit = row.formatter.rule().isSplit();
    if (isSplit && (row.formatter.bitbase() < 0 || row.formatter.getbitOffset(address) < 0))
        return QString();
    const QList<CommunicatorCommand> run = row.formatter.makeBitContinueCommand(command, 1, 1, false);
    return run.isEmpty() ? QString() : run.first().address;
}

bool isSame(const CommandFormatter &row, const QString &address, const QString &other)
{
    return row.isDeviceAddressValid(other) && row.getAddresRangePart(other) == row.getAddresRangePart(address) &&
           row.getbitOffset(other) == row.getbitOffset(address);
}

void lintRun(const LintContext &context, const LintRow &row)
{
    for (const QString &address : row.addresses) {
        if (row.formatter.getAddresRangePart(address) < 0)
            continue;
        const QString written = rewritten(row, address);
        if (written.isEmpty() || isSame(row.formatter, address, written))
            continue;
        context.report.rowError(
            row.index, "run-refused", "pattern",
            QStringLiteral("runs and blocks write %1 as %2, which the row does not accept as the same address")
                .arg(address, written),
            QStringLiteral("accept numbers without leading zeros and with hexadecimal digits of both cases, as in "
                           "0*\\d{1,4} and [0-9A-Fa-f]{1,4}; if only full-width numbers are addresses, use a "
                           "script for the run"));
        return;
    }
}

} // namespace

void lintRuns(LintContext &context)
{
    for (const LintRow &row : context.rows) {
        if (!row.isScripted && !context.report.isWrong(row.index))
            lintRun(context, row);
    }
}
