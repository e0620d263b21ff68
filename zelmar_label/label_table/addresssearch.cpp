// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/addresssearch_p.h"

#include "zelmar_label/label_table/characterslip_p.h"
#include "zelmar_label/label_table/commandinformationtalbe.h"
#include "zelmar_label/label_table/rowdescription_p.h"

#include <algorithm>

namespace label {

namespace {

constexpr std::size_t mostCandidates = 8;

} // namespace

AddressSearch::AddressSearch(const CommandInformationTalbe &table, const QString &deviceAddress, int type)
    : m_table(table)
    , m_address(deviceAddress)
    , m_compact(withoutBlanks(toAscii(deviceAddress)))
    , m_type(type)
{
    m_candidates.reserve(mostCandidates + 1);
    for (int index = 0; index < table.countFormatters(); ++index)
        visit(index);
}

void AddressSearch::visit(int index)
{
    const CommandFormatter &row = *m_table.formatterAt(index);
    const int possible = row.possibleFront(m_address);
    if (!passesTypeFilter(row.type(), m_type)) {
        if (m_ofOtherType < 0 && possible > m_address.size() && row.isDeviceAddressValid(m_address) &&
            !isFamilyTemplate(row))
            m_ofOtherType = index;
        return;
    }
    const int symbol = symbolSize(row.prefixSymbol());
    const int bestScore = std::max(possible, symbol);
    const bool isKept = m_candidates.size() < mostCandidates || bestScore > m_candidates.back().score;
    // If a row matches, only other matching rows count.
    const int needed = isMatched() ? m_reach : 1;
    if (bestScore < needed || (!isKept && possible <= m_reach) || isFamilyTemplate(row))
        return;
    const int reach = possible == 0 ? 0 : row.matchedFront(m_address);
    if (reach > m_reach) {
        m_nearest = index;
        m_reach = reach;
    }
    keep({index, reach, std::max(reach, symbol)});
}

void AddressSearch::keep(const Candidate &candidate)
{
    if (candidate.score == 0)
        return;
    const auto isBetter = [](const Candidate &left, const Candidate &right) {
        return left.score != right.score ? left.score > right.score : left.reach > right.reach;
    };
    m_candidates.insert(std::upper_bound(m_candidates.begin(), m_candidates.end(), candidate, isBetter), candidate);
    if (m_candidates.size() > mostCandidates)
        m_candidates.pop_back();
}

int AddressSearch::symbolSize(const QString &symbol) const
{
    return m_compact.startsWith(symbol, Qt::CaseInsensitive) ? symbol.size() : 0;
}

} // namespace label
