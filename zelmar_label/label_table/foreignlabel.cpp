// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/foreignlabel_p.h"

#include "zelmar_label/address_grammar/stationaddress_p.h"
#include "zelmar_label/label_table/characterslip_p.h"
#include "zelmar_label/label_table/labelinterface.h"
#include "zelmar_label/label_table/rowdescription_p.h"
#include "zelmar_label/label_table/textfault_p.h"

namespace label {

namespace {

using Kind = AddressDiagnosis::Kind;

class ForeignExamination
{
public:
    ForeignExamination(LabelInterface &label, const QString &text, int type)
        : m_label(label)
        , m_text(text)
    {
        describeQuestion(m_result, text, type);
    }

    AddressDiagnosis run()
    {
        const int accepting = acceptingRow(m_text, m_result.type);
        if (accepting >= 0)
            return of(Kind::Accepted, accepting);
        const int ofOtherType = acceptingRow(m_text, anyType);
        if (ofOtherType >= 0)
            return of(Kind::WrongType, ofOtherType);
        if (m_result.address.isEmpty())
            return of(Kind::Empty, -1);
        if (!m_result.station.isNull() && !isDecimal(m_result.station))
            return of(Kind::StationNotNumber, -1);
        ofText();
        suggest();
        return m_result;
    }

private:
    /// The first row of the type that accepts the text. A label returns whether any row does, and which rows could;
    /// take one that finds its number in the text, else the first.
    int acceptingRow(const QString &text, int type) const
    {
        QString prefix;
        QString range;
        if (!m_label.parseAddress(text, prefix, range))
            return -1;
        const QList<int> rows = m_label.getAllMatchedIndex(text, type);
        for (const int row : rows) {
            if (hasNumber(row, text))
                return row;
        }
        return rows == m_label.getAllMatchedIndex(text, anyType) ? rows.value(0, -1) : -1;
    }

    bool hasNumber(int row, const QString &text) const { return m_label.addressRange(row, deviceAddress(text)) >= 0; }

    const AddressDiagnosis &of(Kind kind, int row)
    {
        m_result.kind = kind;
        m_result.row = row;
        if (row < 0)
            return m_result;
        m_result.rowType = m_label.datatype(row);
        m_result.radix = m_label.base(row);
        m_result.description = m_label.getFormatString(row);
        m_result.format = shortName(m_result.description, m_label.getPrefixSymbolByTypeID(row),
                                    m_label.getEditUsedPrifixSymbolByTypeId(row));
        return m_result;
    }

    void ofText()
    {
        const QString &address = m_result.address;
        int reach = address.size();
        QList<int> rows = rowsFor(address);
        for (const int row : qAsConst(rows)) {
            if (!hasNumber(row, address))
                continue;
            // The text seems complete, so the number is the fault.
            of(Kind::NumberRefused, row);
            m_result.number =
                QString::number(m_label.addressRange(row, address), qBound(2, m_result.radix, 36)).toUpper();
            return;
        }
        while (rows.isEmpty() && reach > 0)
            rows = rowsFor(address.left(--reach));
        m_result.position = reach;
        if (rows.isEmpty() || reach == 0) {
            of(Kind::UnknownFront, -1);
            return;
        }
        of(reach < address.size() ? Kind::UnexpectedCharacter : Kind::Incomplete, rows.first());
        for (char code = '!'; code <= '~'; ++code) {
            const QChar character = QLatin1Char(code);
            if (character != QLatin1Char('-') && rowsFor(address.left(reach) + character).contains(m_result.row))
                m_result.expected.append(character);
        }
        m_result.mayEnd = acceptingRow(address.left(reach), m_result.type) >= 0;
    }

    QList<int> rowsFor(const QString &deviceAddress) const
    {
        return m_label.getAllMatchedIndex(deviceAddress, m_result.type);
    }

    /// Typing errors that can be corrected without the row.
    void suggest()
    {
        constexpr int mostSuggestions = 5;
        const QString &address = m_result.address;
        QString compact = address;
        compact.remove(QLatin1Char(' '));
        QString withPoint = compact;
        withPoint.replace(QLatin1Char(','), QLatin1Char('.'));
        const QString digits = withoutDigitLetters(compact);
        for (const QString &meant : {compact, toAscii(compact), withPoint, digits, compact.toUpper(), compact.toLower(),
                                     withPoint.toUpper(), digits.toUpper(), address.left(m_result.position)}) {
            if (m_result.suggestions.size() >= mostSuggestions)
                break;
            const QString whole = m_result.station.isNull() ? meant : m_result.station + QLatin1Char('-') + meant;
            if (meant != address && !m_result.suggestions.contains(whole) && acceptingRow(whole, m_result.type) >= 0)
                m_result.suggestions.append(whole);
        }
        if (isFaultOfText(m_result.kind) && !m_result.suggestions.isEmpty())
            nameSlip(address, deviceAddress(m_result.suggestions.constFirst()), m_result);
    }

    LabelInterface &m_label;
    const QString m_text;
    AddressDiagnosis m_result;
};

} // namespace

AddressDiagnosis diagnoseForeignLabel(LabelInterface &label, const QString &address, int type)
{
    return ForeignExamination(label, address, type).run();
}

} // namespace label
