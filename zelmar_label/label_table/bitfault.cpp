// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/numberfault_p.h"

#include "zelmar_label/address_grammar/commandformatter.h"
#include "zelmar_label/address_grammar/multiplerule.h"
#include "zelmar_label/address_grammar/radixnumber_p.h"
#include "zelmar_label/label_table/addressdigits_p.h"

namespace label {

namespace {

/// A device address split before its bit.
struct BitPlace
{
    QString front;
    QString bit;
    int width = 1;

    BitPlace(const MultipleRule &rule, const QString &address)
    {
        if (rule.isSplit() && rule.splitString().isEmpty()) {
            width = rule.minimumBitDigits();
            front = address.left(qMax(0, address.size() - width));
        } else if (rule.isSplit()) {
            const int at = address.lastIndexOf(rule.splitString(), -1, Qt::CaseInsensitive);
            front = at < 0 ? QString() : address.left(at + rule.splitString().size());
        } else {
            // A script's bits are after the last separator.
            int end = address.size();
            while (end > 0 && address.at(end - 1).isLetterOrNumber())
                --end;
            front = address.left(end);
        }
        bit = front.isEmpty() ? QString() : address.mid(front.size());
    }
};

} // namespace

bool explainBitBeyondWord(const CommandFormatter &row, const QString &deviceAddress, int reach,
                          AddressDiagnosis &diagnosis, QStringList &offers)
{
    if (row.type() != CommunicatorCommand::Bit)
        return false;
    const MultipleRule rule(row.ruleText());
    const BitPlace place(rule, deviceAddress);
    constexpr int longestBit = 6;
    const int radix = rule.isSplit() && rule.bitRadix() == 16 ? 16 : 10;
    if (place.bit.size() > longestBit || !areDigits(place.bit, radix) || place.front.size() > reach)
        return false;
    constexpr int mostBits = 32;
    QString last;
    for (int bit = 0; bit < mostBits; ++bit) {
        const QString digits = numberInAddress(bit, radix).rightJustified(place.width, QLatin1Char('0'));
        for (const QString &form : {digits, digits.toLower()}) {
            if (!row.isDeviceAddressValid(place.front + form))
                continue;
            last = form;
            break;
        }
    }
    if (last.isEmpty() || *readNumber(place.bit, radix) <= *readNumber(last, radix))
        return false;
    diagnosis.kind = AddressDiagnosis::Kind::BitBeyondWord;
    diagnosis.position = place.front.size();
    diagnosis.number = withoutLeadingZeros(place.bit).toUpper();
    diagnosis.limit = last.toUpper();
    offers.append(place.front + last);
    return true;
}

} // namespace label
