// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_NEARADDRESSES_P_H
#define ZELMAR_LABEL_NEARADDRESSES_P_H

#include "zelmar_label/label_table/labelloader.h"
#include "zelmar_label/label_table/typingerrors_p.h"

#include <QString>

#include <optional>
#include <vector>

namespace label {

/// A label's answers, without adding rows.
class LabelView
{
public:
    /// `loader` may be null: then there are no dynamic families. Both must outlive the view, unchanged.
    LabelView(const CommandInformationTalbe &table, const LabelLoader *loader)
        : m_table(table)
        , m_loader(loader)
    {
    }

    const CommandInformationTalbe &table() const { return m_table; }
    const CommandFormatter &row(int index) const { return *m_table.formatterAt(index); }
    const std::vector<FamilyTemplate> &families() const;

    /// The row that the label would add for an address that no row accepts.
    struct NewMember
    {
        int templateIndex;
        CommandFormatter row;
    };
    std::optional<NewMember> newMember(const QString &address) const;

    /// The row that really accepts the address, or the template row for a new member of a family: it is no family's
    /// name, its number is read, and a new member has the type and is within the limits. -1 for none.
    int accepting(const QString &address, int type) const;

private:
    const CommandInformationTalbe &m_table;
    const LabelLoader *m_loader;
};

/// A row, or a form of a dynamic family, that passes the type filter.
struct NearFormat
{
    const Pattern *pattern;
    int row; ///< type index; for a form that of a template row
    bool isFamily;
    int reach; ///< how many characters of the address the pattern matches
    int score; ///< how similar the address may be
};

/// An address of a format; no number outside the format's limits.
struct NearAddress
{
    QString text;
    int cost;
    TextChange change;
    const NearFormat *format;
    int row; ///< type index; for a new member of a family that of its template row
};

/// The formats and addresses near a device address that no row of the type accepts.
class NearAddresses
{
public:
    /// The view must outlive this.
    NearAddresses(const LabelView &view, const QString &deviceAddress, int type, TypingErrors::Scope scope);
    Q_DISABLE_COPY(NearAddresses)

    /// All rows of the type except templates, and all forms of families that have a template of the type.
    const std::vector<NearFormat> &formats() const { return m_formats; }

    /// The farthest reach of the rows, and of the forms.
    int reach() const { return m_reach; }
    int familyReach() const { return m_familyReach; }

    /// The rows of the type that match but refuse the number.
    const std::vector<int> &matching() const { return m_matching; }

    /// The first row of the other type that accepts the address; -1 if there is none.
    int ofOtherType() const { return m_ofOtherType; }

    /// The template row of the most similar family with whose symbol the address begins, unless a row matches more than
    /// the symbol; -1 for none.
    int familyTemplate();

    /// Of the rows that the address matches furthest, the one with the fewest changes; -1 when it matches no character
    /// of any.
    int nearestRow();

    /// The nearest addresses, the most likely first.
    const std::vector<NearAddress> &addresses();

    /// True when a typing error explains the address better than a wrong number.
    bool isLikelySlip() { return !addresses().empty() && addresses().front().cost < unlikelyCost; }

private:
    void visitRow(int index);
    void visitFamily(const FamilyTemplate &family);
    void add(NearFormat format);
    int symbolScore(const QString &symbol) const;
    std::vector<const NearFormat *> best() const;
    void search(const NearFormat &format, TypingErrors &errors, int &mostCost);

    const LabelView &m_view;
    const QString m_address;
    const QString m_folded;
    const QString m_capitals;
    const int m_type;
    const TypingErrors::Scope m_scope;
    std::vector<NearFormat> m_formats;
    std::vector<int> m_matching;
    int m_ofOtherType = -1;
    int m_reach = 0;
    int m_familyReach = 0;
    std::optional<std::vector<NearAddress>> m_addresses;
};

} // namespace label

#endif
