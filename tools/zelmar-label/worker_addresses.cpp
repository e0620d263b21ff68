// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "worker.h"

#include "device.h"

#include "zelmar_label/address_grammar/multiplerule.h"
#include "zelmar_label/label_table/addressdiagnosis.h"
#include "zelmar_label/label_table/rowdescription_p.h"

#include <array>
#include <limits>

namespace {

constexpr int allRegisters = label::WordType;

int bytesOf(int dataType)
{
    // In the order of the data types; bits cannot be cut.
    constexpr std::array<int, 6> bytes = {0, 1, 2, 4, 8, 1};
    return bytes.at(static_cast<std::size_t>(dataType));
}

/// Numbers that one unit of the row spans.
qint64 numbersInUnit(const label::CommandFormatter &row)
{
    return row.isTypeRangeNeedAlignmentByte() ? static_cast<qint64>(row.datasize()) * 8 : 1;
}

bool isValidNumber(const label::CommandFormatter &row, qint64 number)
{
    return number >= 0 && number <= std::numeric_limits<int>::max() && row.isRangeValid(static_cast<int>(number));
}

QString endSentence(const label::CommandFormatter &row)
{
    return QStringLiteral("%1 ends at %2%3").arg(label::formatName(row), row.end(), label::radixRemark(row.base()));
}

/// The library's run of addresses, checked against the driver.
class Run
{
public:
    Run(Device &device, const ResolvedAddress &start, const Request &request)
        : m_device(device)
        , m_start(start)
        , m_request(request)
    {
        const CommunicatorCommand command = Device::command(start, request.dataType);
        // The run includes its start.
        const int count = request.count + 1;
        commands = request.cap ? device.label().makeContinueCommandwithCap(start.row, command, count, *request.cap,
                                                                           !request.unchecked)
                               : device.label().makeContinueCommand(start.row, command, count);
        if (!commands.isEmpty() && isStart(commands.first().address))
            commands.removeFirst();
        cutAtForeignAddress();
    }

    /// Why there are fewer addresses than requested.
    QString endReason() const
    {
        if (!m_foreign.isEmpty())
            return m_foreignReason;
        const label::CommandFormatter &row = m_device.row(m_start.row);
        QString misaligned = alignmentReason(row);
        if (!misaligned.isEmpty())
            return misaligned;
        if (m_request.cap.value_or(1) > 0)
            return endSentence(row);
        return QStringLiteral("%1 begins at %2%3")
            .arg(label::formatName(row), row.start(), label::radixRemark(row.base()));
    }

    /// False if the run does not end at the limits.
    bool endsAtLimit() const { return m_endsAtLimit; }

    QList<CommunicatorCommand> commands;

private:
    bool isStart(const QString &address) const
    {
        const label::CommandFormatter &row = m_device.row(m_start.row);
        return row.getAddresRangePart(address) == row.getAddresRangePart(m_start.device) &&
               row.getbitOffset(address) == row.getbitOffset(m_start.device);
    }

    /// The step of the library's run, in numbers.
    int step(const label::CommandFormatter &row) const
    {
        const auto unit = static_cast<int>(numbersInUnit(row));
        if (m_request.cap)
            return *m_request.cap * unit;
        const int wider = row.type() > label::BitType ? m_request.dataType - row.type() : 0;
        return wider == 1 || wider == 2 ? 2 * wider * unit : unit;
    }

    /// Why the first omitted number is not aligned; empty if it is outside the limits. Not every alignment gives the
    /// library the distance between valid numbers.
    QString alignmentReason(const label::CommandFormatter &row) const
    {
        if (row.type() == label::BitType)
            return QString();
        const QList<CommunicatorCommand> unchecked = m_device.label().makeContinueCommandwithCap(
            m_start.row, Device::command(m_start, m_request.dataType), commands.size() + 2, step(row), false);
        for (const CommunicatorCommand &command : unchecked) {
            if (command.address.contains(QLatin1Char('-')))
                return QString();
            if (row.isAddressValid(command.address))
                continue;
            const label::AddressDiagnosis left = label::diagnoseAddress(m_device.table(), command.address, row.type());
            return left.kind() == label::AddressDiagnosis::Kind::NotAligned ? label::diagnosisSentence(left)
                                                                            : QString();
        }
        return QString();
    }

    /// The library compares the bit with the limits, but not the word of a bit. It also drops text after the bit.
    void cutAtForeignAddress()
    {
        for (int index = 0; index < commands.size(); ++index) {
            const QString &address = commands.at(index).address;
            if (isOwn(address))
                continue;
            m_foreign = address;
            explainForeign();
            commands.erase(commands.begin() + index, commands.end());
            return;
        }
    }

    bool isOwn(const QString &address) const
    {
        // A negative number would be read as a station.
        if (address.contains(QLatin1Char('-')))
            return false;
        return m_request.unchecked || m_device.row(m_start.row).isAddressValid(address);
    }

    void explainForeign()
    {
        if (m_foreign.contains(QLatin1Char('-'))) {
            m_foreignReason = QStringLiteral("numbers cannot be below 0");
            return;
        }
        const int type = m_device.row(m_start.row).type();
        const label::AddressDiagnosis diagnosis = label::diagnoseAddress(m_device.table(), m_foreign, type);
        using Kind = label::AddressDiagnosis::Kind;
        m_endsAtLimit = diagnosis.kind() == Kind::AboveLast || diagnosis.kind() == Kind::BelowFirst;
        m_foreignReason = m_endsAtLimit ? label::diagnosisSentence(diagnosis)
                                        : QStringLiteral("the next address would be %1, which is not an address of %2")
                                              .arg(m_foreign, label::formatName(m_device.row(m_start.row)));
    }

    Device &m_device;
    const ResolvedAddress &m_start;
    const Request &m_request;
    QString m_foreign;
    QString m_foreignReason;
    bool m_endsAtLimit = true;
};

/// The blocks of one run, checked against the driver.
class BlockRun
{
public:
    BlockRun(Device &device, const ResolvedAddress &start, int count)
        : m_device(device)
        , m_start(start)
        , m_count(count)
    {
        if (device.row(start.row).type() != label::BitType)
            ofNumbers(start.row, start.device, count);
        else if (device.label().canConvertToRegisterCommand(start.row))
            ofRegistersOfBits();
        else
            ofBits();
    }

    QList<CommunicatorCommand> blocks;
    /// Why there are no blocks.
    QString reason;

private:
    void ofRegistersOfBits()
    {
        int registerRow = -1;
        const QString registerAddress = m_device.registerOfBit(m_start, registerRow);
        const int offset = m_device.row(m_start.row).getbitOffset(m_start.device);
        if (registerRow < 0 || offset < 0) {
            reason = QStringLiteral("the driver has no register that holds this bit");
            return;
        }
        const qint64 bitsInUnit = m_device.label().datasize(registerRow) * qint64(8);
        if (bitsInUnit <= 0) {
            reason = QStringLiteral("the units of %1 have no size in the driver database")
                         .arg(label::formatName(m_device.row(registerRow)));
            return;
        }
        if (!areSideBySide(registerRow, m_device.row(registerRow).getAddresRangePart(registerAddress), bitsInUnit)) {
            reason = QStringLiteral("the bits that follow are not adjacent in registers");
            return;
        }
        ofNumbers(registerRow, registerAddress, (offset + m_count + bitsInUnit - 1) / bitsInUnit);
    }

    /// The next bits by the driver's rule must be the next bits in the registers: the next "done" bit belongs to the
    /// next timer. Bits of two registers show every step and every carry.
    bool areSideBySide(int registerRow, int firstNumber, qint64 bitsInUnit)
    {
        const int shown = static_cast<int>(qMin<qint64>(m_count, 2 * bitsInUnit));
        const QList<CommunicatorCommand> bits =
            m_device.label().makeContinueCommand(m_start.row, Device::command(m_start, label::BitType), shown);
        const int offset = m_device.row(m_start.row).getbitOffset(m_start.device);
        for (int index = 0; index < bits.size(); ++index) {
            ResolvedAddress bit = m_start;
            bit.device = bits.at(index).address;
            // The end of the range is checked elsewhere.
            if (!m_device.row(bit.row).isAddressValid(bit.device))
                return true;
            int row = -1;
            const QString registerAddress = m_device.registerOfBit(bit, row);
            if (row != registerRow)
                return false;
            const qint64 units = (m_device.row(row).getAddresRangePart(registerAddress) - firstNumber) /
                                 numbersInUnit(m_device.row(row));
            if (units * bitsInUnit + m_device.row(bit.row).getbitOffset(bit.device) != offset + index)
                return false;
        }
        return true;
    }

    void ofBits()
    {
        if (label::MultipleRule(m_device.row(m_start.row).ruleText()).isSplit())
            reason = QStringLiteral("bits of %1 cannot be read in blocks: no register holds them")
                         .arg(label::formatName(m_device.row(m_start.row)));
        else
            ofNumbers(m_start.row, m_start.device, m_count);
    }

    /// `units` of the row from `address` on.
    void ofNumbers(int index, const QString &address, qint64 units)
    {
        const label::CommandFormatter &row = m_device.row(index);
        const int number = row.getAddresRangePart(address);
        const qint64 length = units * numbersInUnit(row);
        if (number < 0)
            reason = QStringLiteral("its number cannot be read");
        else if (row.blocksize() <= 0)
            reason = QStringLiteral("the driver database allows no blocks of %1: its block size is 0")
                         .arg(label::formatName(row));
        else if (length <= 0 || !isValidNumber(row, number + length - numbersInUnit(row)))
            reason = QStringLiteral("the run goes beyond the end: ") + endSentence(row);
        else if (!address.endsWith(row.getRangeString(address)))
            reason = cannotBeBlocked();
        else
            hold(row, number, m_device.label().makeBlockCommand(-1, index, number, static_cast<int>(length)));
    }

    QString cannotBeBlocked() const
    {
        return QStringLiteral(
                   "addresses like %1 cannot be read in blocks: a block address has only a symbol and a number")
            .arg(m_start.device);
    }

    /// Blocks are named by the row's symbol, not by the text of their first address.
    void hold(const label::CommandFormatter &row, qint64 number, const QList<CommunicatorCommand> &made)
    {
        const qint64 step = row.aligmentSize() > 1 ? static_cast<qint64>(row.datasize()) * 8 : 1;
        for (const CommunicatorCommand &block : made) {
            if (!names(block.address, number, row)) {
                reason = cannotBeBlocked();
                return;
            }
            number += static_cast<qint64>(block.length) * step;
        }
        blocks = made;
    }

    bool names(const QString &address, qint64 number, const label::CommandFormatter &row) const
    {
        const label::CommandFormatter *const named =
            m_device.table().formatterAt(m_device.table().getFirstMatchedAddressIndex(address, row.type()));
        return named && named->type() == row.type() && named->datasize() == row.datasize() &&
               named->getAddresRangePart(address) == number;
    }

    Device &m_device;
    const ResolvedAddress &m_start;
    int m_count;
};

CommunicatorCommand itemCommand(const ResolvedAddress &address, int dataType, int length)
{
    CommunicatorCommand command = Device::command(address, dataType);
    if (length == 1)
        return command;
    // For more than one item, the library counts bytes for every type.
    command.dataType = CommunicatorCommand::Text;
    command.length = static_cast<quint64>(length) * static_cast<quint64>(bytesOf(dataType));
    return command;
}

} // namespace

void Worker::printAsJson(const CommunicatorCommand &command, const ResolvedAddress &start) const
{
    m_streams.print(JsonLine()
                        .add("address", start.atStation(command.address))
                        .add("dataType", label::dataTypeWord(command.dataType))
                        .add("length", static_cast<qint64>(command.length))
                        .text());
}

ExitCode Worker::printNext(Device &device) const
{
    const bool isBit = m_request.dataType == label::BitType;
    const QString text = m_request.addresses.constFirst();
    const ResolvedAddress start = device.resolve(text, isBit ? label::BitType : allRegisters);
    if (!start.isAccepted())
        return refuse(text, start.reason);
    if (device.row(start.row).getAddresRangePart(start.device) < 0)
        return refuse(text, QStringLiteral("its number cannot be read, so no address follows"));
    const Run run(device, start, m_request);
    for (const CommunicatorCommand &command : run.commands) {
        if (m_request.json)
            printAsJson(command, start);
        else
            m_streams.print(start.atStation(command.address));
    }
    const int made = run.commands.size();
    if (made >= m_request.count)
        return Success;
    m_streams.complain((made == 0 ? QStringLiteral("no address follows %1").arg(text)
                                  : QStringLiteral("%1 is followed by only %2 of %3 addresses")
                                        .arg(text, QString::number(made), QString::number(m_request.count))) +
                       QLatin1String(": ") + run.endReason());
    return run.endsAtLimit() ? Success : AddressRefused;
}

ExitCode Worker::printUnits(Device &device) const
{
    const QString text = m_request.addresses.constFirst();
    const ResolvedAddress start = device.resolve(text, allRegisters);
    if (!start.isAccepted())
        return refuse(text, start.reason);
    const label::CommandFormatter &row = device.row(start.row);
    const qint64 unit = static_cast<qint64>(row.datasize());
    if (unit <= 0)
        return refuse(
            text, QStringLiteral("the units of %1 have no size in the driver database").arg(label::formatName(row)));
    const qint64 bytes = qint64(bytesOf(m_request.dataType)) * m_request.length;
    const qint64 needed = (bytes + unit - 1) / unit;
    const int number = row.getAddresRangePart(start.device);
    if (needed > 1 && number < 0)
        return refuse(text, QStringLiteral("its number cannot be read, so no address follows"));
    const QList<CommunicatorCommand> units =
        device.label().normalizeCommand(start.row, itemCommand(start, m_request.dataType, m_request.length));
    TextTable table;
    for (const CommunicatorCommand &command : units) {
        if (m_request.json)
            printAsJson(command, start);
        else
            table.addRow({start.atStation(command.address), label::dataTypeWord(command.dataType)});
    }
    printTable(table);
    if (units.size() >= needed || isValidNumber(row, number + units.size() * numbersInUnit(row)))
        return Success;
    return refuse(text,
                  QStringLiteral("the item needs %1 units, but %2").arg(QString::number(needed), endSentence(row)));
}

ExitCode Worker::printBlocks(Device &device) const
{
    const QString text = m_request.addresses.constFirst();
    const ResolvedAddress start = device.resolve(text, label::anyType);
    if (!start.isAccepted())
        return refuse(text, start.reason);
    const BlockRun run(device, start, m_request.count);
    if (!run.reason.isEmpty())
        return refuse(text, run.reason);
    TextTable table;
    for (const CommunicatorCommand &block : run.blocks) {
        if (m_request.json)
            printAsJson(block, start);
        else
            table.addRow({start.atStation(block.address), QStringLiteral("length %1").arg(block.length),
                          label::dataTypeWord(block.dataType)});
    }
    printTable(table);
    return Success;
}
