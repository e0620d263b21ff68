// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/textfault_p.h"

#include "zelmar_label/address_grammar/stationaddress_p.h"
#include "zelmar_label/label_table/addressjudge_p.h"
#include "zelmar_label/label_table/addressrepair_p.h"
#include "zelmar_label/label_table/addresssearch_p.h"
#include "zelmar_label/label_table/characterslip_p.h"
#include "zelmar_label/label_table/familyfault_p.h"
#include "zelmar_label/label_table/numberfault_p.h"
#include "zelmar_label/label_table/rowdescription_p.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace label {

namespace {

using Kind = AddressDiagnosis::Kind;

/// Each repair takes many matches; longer texts are not typing errors.
constexpr int longestRepaired = 48;

struct RowRepair
{
    Repair repair;
    int row;
    int reach;
};

/// Corrections of the text by the nearest rows, the most likely first.
class Repairs
{
public:
    Repairs(AddressJudge &judge, const AddressSearch &search, const QString &address, int type)
        : m_judge(judge)
        , m_address(address)
    {
        if (address.size() > longestRepaired)
            return;
        constexpr std::size_t mostRows = 4;
        for (std::size_t index = 0; index < search.candidates().size() && index < mostRows; ++index)
            addOfRow(search.candidates()[index]);
        sort();
        if (m_found.empty() || !isLikelySlip(m_found.front().repair.cost)) {
            addNearSymbols(type);
            sort();
        }
        while (!m_found.empty() && m_found.back().repair.cost > m_found.front().repair.cost + muchUnlikelier)
            m_found.pop_back();
    }

    const std::vector<RowRepair> &found() const { return m_found; }

private:
    void addOfRow(const AddressSearch::Candidate &candidate)
    {
        const CommandFormatter &row = m_judge.row(candidate.row);
        const QList<Repair> ofRow = repaired(row, m_address);
        for (const Repair &repair : ofRow)
            m_found.push_back({repair, candidate.row, candidate.reach});
        const Repair word = withLastWord(row, m_address);
        if (!word.address.isEmpty())
            m_found.push_back({word, candidate.row, candidate.reach});
    }

    void addNearSymbols(int type)
    {
        for (int index = 0; index < m_judge.table().countFormatters(); ++index) {
            const CommandFormatter &row = m_judge.row(index);
            if (!passesTypeFilter(row.type(), type))
                continue;
            const QList<Repair> repairs = withNearSymbol(row, m_address);
            for (const Repair &repair : repairs) {
                if (isAccepted(row, repair.address, type))
                    m_found.push_back({repair, index, -1});
            }
        }
    }

    bool isAccepted(const CommandFormatter &row, const QString &address, int type)
    {
        return row.isDeviceAddressValid(address) || (isFamilyTemplate(row) && m_judge.accepts(address, type));
    }

    void sort()
    {
        std::stable_sort(m_found.begin(), m_found.end(), [](const RowRepair &left, const RowRepair &right) {
            return left.repair.cost < right.repair.cost;
        });
    }

    AddressJudge &m_judge;
    const QString m_address;
    std::vector<RowRepair> m_found;
};

/// Among the rows that the text matches furthest, the one with the fewest changes.
int nearestRow(const AddressSearch &search, const std::vector<RowRepair> &found)
{
    const auto best = std::find_if(found.begin(), found.end(),
                                   [&search](const RowRepair &one) { return one.reach == search.reach(); });
    return search.reach() > 0 && best != found.end() ? best->row : search.nearest();
}

void offerCompletions(const AddressJudge &judge, const AddressSearch &search, const QString &address,
                      QStringList &offers)
{
    for (const AddressSearch::Candidate &candidate : search.candidates()) {
        if (candidate.reach < address.size())
            continue;
        const QString whole = completed(judge.row(candidate.row), address);
        if (!whole.isEmpty())
            offers.append(whole);
    }
}

/// The characters that the row allows after `front`.
void expect(const CommandFormatter &row, const QString &front, AddressDiagnosis &diagnosis)
{
    for (char code = '!'; code <= '~'; ++code) {
        const QChar character = QLatin1Char(code);
        // It would separate a station.
        if (character != QLatin1Char('-') && row.canBeCompleted(front + character))
            diagnosis.expected.append(character);
    }
    diagnosis.mayEnd = row.matchedFront(front) > front.size();
}

int bitSeparator(const QString &address)
{
    return qMax(address.lastIndexOf(QLatin1Char('.')), address.lastIndexOf(QLatin1Char('/')));
}

/// The text is an address with a bit, but no row has bits there.
int rowWithoutBits(const AddressJudge &judge, const AddressSearch &search, const QString &address)
{
    const int separator = bitSeparator(address);
    const QString front = address.left(qMax(0, separator));
    const QString bit = address.mid(separator + 1);
    const bool isBit =
        !bit.isEmpty() && std::all_of(bit.begin(), bit.end(), [](QChar c) { return c.isLetterOrNumber(); });
    if (!isBit || front.isEmpty() || search.reach() > separator)
        return -1;
    const auto isWithBits = [&](const AddressSearch::Candidate &candidate) {
        const CommandFormatter &row = judge.row(candidate.row);
        return candidate.reach >= separator && row.type() == BitType && !row.isDeviceAddressValid(front);
    };
    if (std::any_of(search.candidates().begin(), search.candidates().end(), isWithBits))
        return -1;
    const int index = judge.table().getFirstMatchedAddressIndex(front, anyType);
    return index >= 0 && !isFamilyTemplate(judge.row(index)) ? index : -1;
}

/// The first candidate that matches furthest and whose number or bit is the fault; -1 if there is none.
template<typename Explain>
int firstExplained(const AddressJudge &judge, const AddressSearch &search, Explain explain)
{
    for (const AddressSearch::Candidate &candidate : search.candidates()) {
        if (candidate.reach == search.reach() && candidate.reach > 0 && explain(judge.row(candidate.row)))
            return candidate.row;
    }
    return -1;
}

QString withoutDigits(const QString &address)
{
    QString rest;
    std::copy_if(address.begin(), address.end(), std::back_inserter(rest), [](QChar c) { return !c.isDigit(); });
    return rest;
}

int explainCharacter(AddressJudge &judge, const AddressSearch &search, AddressDiagnosis &diagnosis, QStringList &offers)
{
    const QString &address = diagnosis.address;
    const Repairs repairs(judge, search, address, diagnosis.type);
    const int nearest = nearestRow(search, repairs.found());
    const bool isIncomplete = nearest >= 0 && search.reach() >= address.size();
    const bool isUnknown = nearest < 0 || (!isIncomplete && search.reach() < judge.row(nearest).prefixSymbol().size());
    diagnosis.position = search.reach();
    diagnosis.kind = isUnknown ? Kind::UnknownFront : isIncomplete ? Kind::Incomplete : Kind::UnexpectedCharacter;
    if (!isUnknown) {
        expect(judge.row(nearest), address.left(search.reach()), diagnosis);
        if (explainDigitOutsideRadix(judge.row(nearest), address, search.reach(), diagnosis, offers))
            return nearest;
    }
    // The search skips rows that begin with a digit for a letter, and does not try all similar rows.
    if (repairs.found().empty() || !isLikelySlip(repairs.found().front().repair.cost))
        offers.append(withoutDigitLetters(address));
    // The letters of a text that is only too short are right.
    for (const bool isLikelier : {true, false}) {
        for (const RowRepair &one : repairs.found()) {
            if (isLikelier == (isIncomplete && withoutDigits(one.repair.address).startsWith(withoutDigits(address))))
                offers.append(one.repair.address);
        }
    }
    if (isIncomplete)
        offerCompletions(judge, search, address, offers);
    offerFamilyMembers(judge, address, diagnosis.type, offers);
    return isUnknown ? -1 : nearest;
}

} // namespace

void describeQuestion(AddressDiagnosis &diagnosis, const QString &text, int type)
{
    diagnosis.type = type;
    diagnosis.address = deviceAddress(text);
    if (!hasStation(text))
        return;
    diagnosis.station = text.left(text.indexOf(QLatin1Char('-')));
    // An empty station also counts.
    if (diagnosis.station.isNull())
        diagnosis.station = QLatin1String("");
}

void describeRow(AddressDiagnosis &diagnosis, const CommandFormatter &row)
{
    diagnosis.rowType = row.type();
    diagnosis.radix = row.base();
    diagnosis.description = row.formatString();
    diagnosis.format = shortName(row.formatString(), row.prefixSymbol(), row.getEditorUsedPrefixsymbol());
    diagnosis.first = row.start();
    diagnosis.last = row.end();
}

bool isDecimal(const QString &text)
{
    bool fits = false;
    text.toInt(&fits);
    return fits && std::all_of(text.begin(), text.end(), [](QChar character) {
               return character >= QLatin1Char('0') && character <= QLatin1Char('9');
           });
}

bool isFaultOfText(AddressDiagnosis::Kind kind)
{
    return kind == Kind::UnknownFront || kind == Kind::UnexpectedCharacter || kind == Kind::Incomplete ||
           kind == Kind::UnknownFamilyMember;
}

int nearestMatchedRow(const AddressJudge &judge, const AddressSearch &search, const QString &deviceAddress)
{
    int nearest = search.nearest();
    qint64 least = distanceFromLimits(judge.row(nearest), deviceAddress);
    for (const AddressSearch::Candidate &candidate : search.candidates()) {
        if (candidate.reach <= deviceAddress.size())
            continue;
        const qint64 distance = distanceFromLimits(judge.row(candidate.row), deviceAddress);
        if (distance >= least)
            continue;
        nearest = candidate.row;
        least = distance;
    }
    return nearest;
}

int explainText(AddressJudge &judge, const AddressSearch &search, AddressDiagnosis &diagnosis, QStringList &offers)
{
    const QString &address = diagnosis.address;
    const int tooLong = firstExplained(judge, search, [&](const CommandFormatter &row) {
        return explainTooManyDigits(row, address, search.reach(), diagnosis, offers);
    });
    if (tooLong >= 0)
        return tooLong;
    if (explainFamily(judge, search, diagnosis, offers))
        return diagnosis.row;
    const int bit = firstExplained(judge, search, [&](const CommandFormatter &row) {
        return explainBitBeyondWord(row, address, search.reach(), diagnosis, offers);
    });
    if (bit >= 0)
        return bit;
    const int withoutBits = rowWithoutBits(judge, search, address);
    if (withoutBits < 0)
        return explainCharacter(judge, search, diagnosis, offers);
    diagnosis.kind = Kind::NoBits;
    diagnosis.position = bitSeparator(address);
    offers.append(address.left(diagnosis.position));
    return withoutBits;
}

} // namespace label
