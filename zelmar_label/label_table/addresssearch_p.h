// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ADDRESSSEARCH_P_H
#define ZELMAR_LABEL_ADDRESSSEARCH_P_H

#include <QString>

#include <vector>

namespace label {

class CommandInformationTalbe;

/// The rows nearest to a device address that no row of the type accepts.
class AddressSearch
{
public:
    AddressSearch(const CommandInformationTalbe &table, const QString &deviceAddress, int type);

    /// The row that the text matches furthest, the first of equals; -1 when it matches no character of any.
    int nearest() const { return m_nearest; }

    /// The number of matched characters; the text's size plus one when the row matches.
    int reach() const { return m_reach; }
    bool isMatched() const { return m_reach > m_address.size(); }

    /// The first row of the other type that accepts the text; -1 if there is none.
    int ofOtherType() const { return m_ofOtherType; }

    struct Candidate
    {
        int row;
        int reach;
        int score;
    };
    /// Some rows, nearest first, that the text matches in part or whose symbol it begins with, ignoring letter case,
    /// blanks and wide letters.
    const std::vector<Candidate> &candidates() const { return m_candidates; }

private:
    void visit(int index);
    void keep(const Candidate &candidate);
    int symbolSize(const QString &symbol) const;

    const CommandInformationTalbe &m_table;
    const QString m_address;
    const QString m_compact;
    const int m_type;
    int m_nearest = -1;
    int m_reach = 0;
    int m_ofOtherType = -1;
    std::vector<Candidate> m_candidates;
};

} // namespace label

#endif
