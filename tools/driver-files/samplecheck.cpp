// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "driversamples.h"

#include "zelmar_label/address_grammar/radixnumber_p.h"
#include "zelmar_label/label_table/labelloader.h"

using namespace label;

namespace {

CommunicatorCommand command(const QString &address, int dataType)
{
    CommunicatorCommand made;
    made.address = address;
    made.dataType = static_cast<CommunicatorCommand::DataType>(dataType);
    return made;
}

QString named(const QString &address)
{
    return address.isEmpty() ? QStringLiteral("none") : address;
}

/// Checks one accepted sample against its row.
class SampleCheck
{
public:
    SampleCheck(LabelLoader &label, const DriverSample &sample, int row)
        : m_label(label)
        , m_sample(sample)
        , m_row(row)
    {
    }

    QList<SampleFault> faults()
    {
        expect(SampleFault::Kind::Symbol, "symbol", m_label.getEditUsedPrifixSymbolByTypeId(m_row), m_sample.symbol);
        expect(SampleFault::Kind::Number, "number", QString::number(m_label.addressRange(m_row, m_sample.address)),
               QString::number(m_sample.number));
        expect(SampleFault::Kind::Bit, "bit", QString::number(m_label.bitOffset(m_row, m_sample.address)),
               QString::number(m_sample.bit));
        checkNext();
        checkBlock();
        if (row().type() == BitType)
            checkRegister();
        return m_faults;
    }

private:
    const CommandFormatter &row() const { return *m_label.deviceTypesTable().formatterAt(m_row); }

    void fail(SampleFault::Kind kind, const QString &text) { m_faults.append({kind, m_row, text}); }

    void expect(SampleFault::Kind kind, const char *what, const QString &seen, const QString &wanted)
    {
        if (seen != wanted)
            fail(kind, QStringLiteral("the %1 of %2 is %3, not %4 as in its sample")
                           .arg(QLatin1String(what), m_sample.address, named(seen), named(wanted)));
    }

    void checkNext()
    {
        const QList<CommunicatorCommand> run =
            m_label.makeContinueCommand(m_row, command(m_sample.address, m_sample.step), 2);
        const QString next = run.size() > 1 ? run.at(1).address : QString();
        expect(SampleFault::Kind::Next, "next address", next, m_sample.next);
        if (next.isEmpty() || next != m_sample.next)
            return;
        if (run.at(1).dataType != m_sample.step)
            fail(SampleFault::Kind::Next, QStringLiteral("the item after %1 has another type").arg(m_sample.address));
        // Runs of bits with a word part are not compared with the end of the row.
        const bool mayPassEnd =
            m_sample.step == BitType && m_sample.number >= readNumber(row().end(), row().base()).value_or(-1);
        if (!mayPassEnd && m_label.addressValidation(next, m_sample.filter) != m_row)
            fail(SampleFault::Kind::Next,
                 QStringLiteral("%1, the address after %2, is not an address of this row").arg(next, m_sample.address));
    }

    /// A block command names its item only by symbol and number.
    void checkBlock()
    {
        const bool isOnePart = row().rule().isOnePart();
        if ((row().type() == BitType && !isOnePart) || row().blocksize() < 1)
            return;
        const QList<CommunicatorCommand> blocks = m_label.makeBlockCommand(-1, m_row, m_sample.number, 1);
        const QString address = blocks.size() == 1 ? blocks.first().address : QString();
        const int found = m_label.addressValidation(address, row().type());
        const bool isWholeAddress = m_sample.address.endsWith(row().getRangeString(m_sample.address));
        if (m_label.addressRange(found, address) != m_sample.number || (isWholeAddress && found != m_row))
            fail(SampleFault::Kind::Block,
                 QStringLiteral("a block that begins with %1 is written %2, which is not that item")
                     .arg(m_sample.address, named(address)));
    }

    void checkRegister()
    {
        int registerRow = -1;
        QString address;
        if (m_label.canConvertToRegisterCommand(m_row))
            address =
                m_label.convertBitCommandToRegisterCommand(command(m_sample.address, BitType), registerRow).address;
        if (address == CommunicatorCommand().address)
            address.clear();
        expect(SampleFault::Kind::Register, "register", address, m_sample.registerAddress);
        if (address.isEmpty() && m_sample.registerAddress.isEmpty() && m_label.canConvertToRegisterCommand(m_row))
            fail(SampleFault::Kind::Register,
                 QStringLiteral("%1 has no register, though its row says that a register holds the bit")
                     .arg(m_sample.address));
        if (!address.isEmpty() && m_sample.bit >= m_label.datasize(registerRow) * 8)
            fail(SampleFault::Kind::Register,
                 QStringLiteral("bit %1 of %2 is beyond the register").arg(m_sample.bit).arg(m_sample.address));
    }

    LabelLoader &m_label;
    const DriverSample &m_sample;
    const int m_row;
    QList<SampleFault> m_faults;
};

} // namespace

QList<SampleFault> sampleFaults(LabelLoader &label, const DriverSample &sample)
{
    const int row = label.addressValidation(sample.address, sample.filter);
    if (!sample.isAccepted && row < 0)
        return {};
    if (!sample.isAccepted)
        return {{SampleFault::Kind::Accepted, row, QStringLiteral("%1 is accepted").arg(sample.address)}};
    if (row < 0)
        return {{SampleFault::Kind::Refused, row, QStringLiteral("%1 is refused").arg(sample.address)}};
    return SampleCheck(label, sample, row).faults();
}
