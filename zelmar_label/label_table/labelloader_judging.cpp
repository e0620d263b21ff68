// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/labelloader.h"

#include "zelmar_label/address_grammar/stationaddress_p.h"
#include "zelmar_label/label_table/addressfamily.h"
#include "zelmar_label/label_table/addresstable_p.h"
#include "zelmar_label/label_table/dynamicmember_p.h"

namespace label {

namespace {

bool isSame(const AddressVerdict &left, const AddressVerdict &right)
{
    return left.row == right.row && left.number == right.number && left.bit == right.bit &&
           left.isAccepted == right.isAccepted && left.isNewMember == right.isNewMember;
}

/// The text without the zeros in front of its first number.
QString withoutZeros(const QString &text)
{
    int start = 0;
    while (start < text.size() && !text.at(start).isLetterOrNumber())
        ++start;
    int end = start;
    while (end + 1 < text.size() && text.at(end) == QLatin1Char('0') && text.at(end + 1).isLetterOrNumber())
        ++end;
    return text.left(start) + text.mid(end);
}

/// The forms of a number, the shortest first, in the letter case of new addresses if that is possible.
QStringList numberForms(const QString &text)
{
    QStringList forms;
    const QString shortest = withoutZeros(text);
    for (int width = shortest.size(); width <= text.size(); ++width) {
        const QString form = text.right(width);
        forms += {form.toLower(), form.toUpper(), form};
    }
    forms.removeDuplicates();
    return forms;
}

QStringList letterForms(const QString &first, const QString &text)
{
    QStringList forms = {first, text.toUpper(), text.toLower(), text};
    forms.removeDuplicates();
    return forms;
}

} // namespace

AddressVerdict LabelLoader::judge(QStringView address, int type) const
{
    const StationSplit split = splitStation(address);
    AddressVerdict verdict;
    verdict.station = split.station;
    deviceTypes.rows().judge(split.device, type, verdict);
    if (verdict.rangeStart >= 0)
        verdict.rangeStart += split.deviceStart;
    // A family is recognised only in an address without a station.
    if (!verdict.isAccepted && m_creator && split.device.size() == address.size())
        judgeNewMember(address, type, verdict);
    return verdict;
}

void LabelLoader::judge(const QStringList &addresses, int type, AddressVerdict *verdicts) const
{
    for (const QString &address : addresses)
        *verdicts++ = judge(address, type);
}

void LabelLoader::judgeNewMember(QStringView device, int type, AddressVerdict &verdict) const
{
    if (!m_families)
        return judgeForeseenMember(device, type, verdict);
    const FamilyPlace place = m_families->family().placeOf(device);
    if (!place.form)
        return;
    const QStringView element = device.mid(qMax(0, place.element.start), place.element.size);
    for (const FamilyTemplate &known : m_templates) {
        const CommandFormatter &row = *deviceTypes.formatterAt(known.row);
        if (known.form != place.form || !place.form->isTemplate(element, row.compiledRow().columns.pattern))
            continue;
        // Behind the prefix, which is the first group of a member's row.
        if (row.compiledRow().columns.addressGroupIndex != 2)
            return judgeForeseenMember(device, type, verdict);
        const TextPlace range{place.prefix.size, int(device.size()) - place.prefix.size - place.form->behindRange};
        verdict.row = known.row;
        verdict.isNewMember = true;
        verdict.isAccepted =
            AddressTable::readAddress(row, device, range, verdict) && passesTypeFilter(row.type(), type);
        verdict.bit = AddressTable::bitOf(row, device, range);
        return;
    }
}

void LabelLoader::judgeForeseenMember(QStringView device, int type, AddressVerdict &verdict) const
{
    const std::optional<DynamicMember> member = foreseenMember(device.toString());
    if (!member)
        return;
    CommandFormatter row = deviceTypes.getFormatterAtIndex(member->templateIndex);
    member->shape(row);
    const TextPlace range = row.rangePlace(device);
    verdict.row = member->templateIndex;
    verdict.isNewMember = true;
    verdict.isAccepted = row.compiledPattern().matches(device) &&
                         AddressTable::readAddress(row, device, range, verdict) && passesTypeFilter(row.type(), type);
    verdict.bit = AddressTable::bitOf(row, device, range);
}

/// The texts around the number in their plainest form, the number without zeros, as far as the verdict stays the same.
QString LabelLoader::canonicalDevice(const QString &device, TextPlace place, const AddressVerdict &verdict,
                                     int type) const
{
    const CommandFormatter &row = *deviceTypes.formatterAt(verdict.row);
    const QString front = device.left(place.start);
    const QString range = device.mid(place.start, place.size);
    const QString end = device.mid(place.start + place.size);
    const QString bit = row.type() == BitType ? row.rule().bitTail(range) : QString();
    const QString symbol = verdict.isNewMember ? front : row.prefixSymbol();
    for (const QString &frontForm : letterForms(symbol, front)) {
        for (const QString &wordForm : numberForms(range.left(range.size() - bit.size()))) {
            for (const QString &bitForm : numberForms(bit)) {
                for (const QString &endForm : letterForms(end.toUpper(), end)) {
                    const QString form = frontForm + wordForm + bitForm + endForm;
                    if (isSame(judge(form, type), verdict))
                        return form;
                }
            }
        }
    }
    return device;
}

QString LabelLoader::canonicalAddress(const QString &address, int type) const
{
    AddressVerdict verdict = judge(address, type);
    if (!verdict.isAccepted)
        return QString();
    const StationSplit split = splitStation(address);
    const QString device = split.device.toString();
    const TextPlace place{verdict.rangeStart - split.deviceStart, verdict.rangeSize};
    verdict.station = noStation;
    const bool isPlain = verdict.rangeStart >= 0 && verdict.number >= 0;
    return withStation(split.station, isPlain ? canonicalDevice(device, place, verdict, type) : device);
}

} // namespace label
