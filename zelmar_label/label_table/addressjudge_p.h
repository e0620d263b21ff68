// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ADDRESSJUDGE_P_H
#define ZELMAR_LABEL_ADDRESSJUDGE_P_H

#include "zelmar_label/label_table/commandinformationtalbe.h"

#include <QString>

#include <map>
#include <optional>

namespace label {

class LabelLoader;

/// Gives a label's answers without adding rows.
class AddressJudge
{
public:
    /// `loader` may be null: then there are no dynamic families. Both must outlive the judge, unchanged.
    AddressJudge(const CommandInformationTalbe &table, const LabelLoader *loader)
        : m_table(table)
        , m_loader(loader)
    {
    }

    const CommandInformationTalbe &table() const { return m_table; }
    const CommandFormatter &row(int index) const { return *m_table.formatterAt(index); }

    /// The row that the label would add for an address that no row accepts.
    struct NewMember
    {
        int templateIndex;
        const CommandFormatter *row; ///< valid until the next query for a new member
    };
    std::optional<NewMember> newMember(const QString &address);

    /// True when the label really accepts the address: it is no family's name, and a new member of a family has the
    /// type and is within the limits.
    bool accepts(const QString &address, int type);

private:
    const CommandInformationTalbe &m_table;
    const LabelLoader *m_loader;
    /// Copying a row may load a script, so each template is copied once.
    std::map<int, CommandFormatter> m_copies;
};

} // namespace label

#endif
