// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/commandformatter.h"

#include "zelmar_label/address_grammar/addressparts_p.h"
#include "zelmar_label/address_grammar/addressrow.h"
#include "zelmar_label/address_grammar/radixnumber_p.h"
#include "zelmar_label/address_grammar/stationaddress_p.h"

#include <limits>

namespace label {

namespace {

/// The number of whole or begun units that cover `size` bytes; less than a hundredth of a unit does not count. 0 for
/// units of 0 bytes and for a count beyond `int`.
int pieceCount(unsigned long long size, unsigned long long unitSize)
{
    const double count = static_cast<double>(size) / static_cast<double>(unitSize) + 0.49;
    return count < std::numeric_limits<int>::max() ? qRound(count) : 0;
}

/// The step of a run of commands that are wider or narrower than the row's unit. Types are enumeration numbers, not
/// sizes: a difference of one means half or double, of two a quarter or four times.
struct WidthStep
{
    int units = 1;            // in one advance
    int type = 0;             // of the new commands
    int passesPerAdvance = 1; // commands that share an address
};

WidthStep widthStep(int rowType, int commandType)
{
    if (rowType <= 0 || commandType <= 0)
        return {1, rowType, 1};
    switch (commandType - rowType) {
    case 1:
        return {2, commandType, 1};
    case 2:
        return {4, commandType, 1};
    case -1:
        return {1, commandType, 2};
    case -2:
        return {1, commandType, 4};
    default:
        return {1, rowType, 1};
    }
}

/// On a row twice as wide, two commands share each address. On a row four times as wide, the first two share the first
/// address and four share each later one.
bool advancesAfter(int pass, int passesPerAdvance)
{
    return passesPerAdvance == 1 || pass % passesPerAdvance == 1;
}

} // namespace

int CommandFormatter::unitStep() const
{
    return isTypeRangeNeedAlignmentByte() ? static_cast<int>(static_cast<quint32>(columns().dataSize * 8)) : 1;
}

/// True when no further step can return into the limits: the run may then end early. A row with unreadable limits
/// reports them at each pass and never ends early.
bool CommandFormatter::isBeyondLimits(int value, int step) const
{
    if (!m_row->first || !m_row->last)
        return false;
    return (step >= 0 && value > *m_row->last) || (step <= 0 && value < *m_row->first);
}

void CommandFormatter::appendNew(QList<CommunicatorCommand> &list, const QString &address, int stationId) const
{
    CommunicatorCommand command;
    command.address = address;
    command.dataType = static_cast<CommunicatorCommand::DataType>(columns().type);
    list.append(addStationID(stationId, command));
}

QList<CommunicatorCommand> CommandFormatter::unitCommands(const CommunicatorCommand &command,
                                                          unsigned long long size) const
{
    const int station = command.getStationId();
    const AddressParts parts = splitAddress(command.getAddressString());
    const int step = unitStep();
    QList<CommunicatorCommand> pieces;
    int value = parts.number;
    for (int left = pieceCount(size, columns().dataSize); left > 0 && !isBeyondLimits(value, step); --left) {
        if (isRangeValid(value)) {
            CommunicatorCommand piece;
            piece.address = withStation(station, parts.address(value));
            piece.dataType = static_cast<CommunicatorCommand::DataType>(columns().type);
            pieces.append(piece);
        }
        value = wrappingSum(value, step);
    }
    return pieces;
}

QList<CommunicatorCommand> CommandFormatter::autoCompleteCommand(const CommunicatorCommand &command) const
{
    if (command.length > 1)
        return autoCompleteStringCommand(command);
    if (!compiledPattern().matches(command.getAddressString()) || command.dataType == CommunicatorCommand::Bit)
        return {command};
    const unsigned long long size = command.getDataSize();
    return columns().dataSize < size ? unitCommands(command, size) : QList<CommunicatorCommand>{command};
}

QList<CommunicatorCommand> CommandFormatter::autoCompleteStringCommand(const CommunicatorCommand &command) const
{
    if (compiledPattern().matches(command.getAddressString()) && columns().dataSize < command.length)
        return unitCommands(command, command.length);
    CommunicatorCommand single = command;
    single.length = 1;
    single.dataType = static_cast<CommunicatorCommand::DataType>(columns().type);
    return {single};
}

QList<CommunicatorCommand> CommandFormatter::makeContinueCommand(const CommunicatorCommand &command, int count) const
{
    if (command.dataType == CommunicatorCommand::Bit)
        return makeBitContinueCommand(command, count, 1, true);
    const QString address = command.getAddressString();
    if (!compiledPattern().matches(address))
        return {command};
    const int station = command.getStationId();
    const AddressParts parts = splitAddress(address);
    const WidthStep width = widthStep(columns().type, command.dataType);
    const int step = wrappingProduct(unitStep(), width.units);
    QList<CommunicatorCommand> run;
    int value = parts.number;
    for (int pass = 0; pass < count && !isBeyondLimits(value, step); ++pass) {
        if (isRangeValid(value)) {
            CommunicatorCommand next;
            next.address = parts.address(value);
            next.dataType = static_cast<CommunicatorCommand::DataType>(width.type);
            run.append(addStationID(station, next));
        }
        if (advancesAfter(pass, width.passesPerAdvance))
            value = wrappingSum(value, step);
    }
    return run;
}

QList<CommunicatorCommand> CommandFormatter::makeContinueCommandwithCap(const CommunicatorCommand &command, int count,
                                                                        int cap, bool checkRange) const
{
    if (command.dataType == CommunicatorCommand::Bit)
        return makeBitContinueCommand(command, count, cap, checkRange);
    const QString address = command.getAddressString();
    if (!compiledPattern().matches(address))
        return {command};
    const int station = command.getStationId();
    const AddressParts parts = splitAddress(address);
    const int step = wrappingProduct(checkRange ? unitStep() : 1, cap);
    QList<CommunicatorCommand> run;
    int value = parts.number;
    for (int pass = 0; pass < count && !(checkRange && isBeyondLimits(value, step)); ++pass) {
        if (!checkRange || isRangeValid(value)) {
            CommunicatorCommand next;
            next.address = parts.address(value);
            next.length = command.length;
            next.scanTime = command.scanTime;
            next.dataType = static_cast<CommunicatorCommand::DataType>(columns().type);
            run.append(addStationID(station, next));
        }
        value = wrappingSum(value, step);
    }
    return run;
}

} // namespace label
