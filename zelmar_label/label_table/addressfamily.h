// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ADDRESSFAMILY_H
#define ZELMAR_LABEL_ADDRESSFAMILY_H

#include "zelmar_label/address_grammar/pattern.h"
#include "zelmar_label/label_table/dynamiclabelcreatorinterface.h"

#include <QString>
#include <QStringView>
#include <QtAlgorithms>

#include <optional>
#include <vector>

namespace label {

/// One form of the addresses of a dynamic family: "DB" with a number from 1 to 2047, ".DBW" and a number, say.
///
/// Group 1 of the pattern is the prefix, which has a row of its own in the label. Group 2, if there is one, is the
/// element ("DBW", "ACC").
struct FamilyForm
{
    /// Matches the whole device address.
    Pattern pattern;
    /// The pattern text of the template row: `base`, and behind it the element if `hasElementInBase`, and `baseEnd`.
    QString base;
    bool hasElementInBase = false;
    QString baseEnd;
    /// The pattern of a member's row, with %1 for the prefix and %2 for the element.
    QString rowPattern;
    /// Characters behind the range string of a member: 4 for ".ACC".
    int behindRange = 0;

    /// True when the name of a template, its pattern text, is the form's for this element, and for some element.
    bool isTemplate(QStringView element, QStringView templateName) const;
    bool mayHaveTemplate(QStringView templateName) const;
};

/// The place of an address in a family.
struct FamilyPlace
{
    const FamilyForm *form = nullptr;
    TextPlace prefix;
    TextPlace element;
};

/// The forms of all families of one driver. Immutable; any number of threads may use it.
class AddressFamily
{
public:
    /// No form, or up to 64, each with a pattern that is read into an automaton.
    explicit AddressFamily(std::vector<FamilyForm> forms);

    const std::vector<FamilyForm> &forms() const { return m_forms; }

    /// The first form that matches a device address; null for none.
    const FamilyForm *formOf(QStringView device) const;

    /// As above, with the places of prefix and element.
    FamilyPlace placeOf(QStringView device) const;

    /// How a template row becomes the row of the member at this place.
    static DynamicLabelItem memberOf(const FamilyPlace &place, const QString &device);

private:
    const std::vector<FamilyForm> m_forms;
    std::optional<Automaton> m_automaton;
};

/// A creator whose families are known as forms. The family must outlive it.
class FamilyCreator : public DynamicLabelCreatorInterface
{
public:
    explicit FamilyCreator(const AddressFamily &family)
        : m_family(family)
    {
    }

    const AddressFamily &family() const { return m_family; }

    bool create(const QString &address, DynamicLabelItem &item) override;

    /// The answer that `create` would give now, without changing the answers of later calls.
    virtual bool foresee(const QString &address, DynamicLabelItem &item) const;

    /// False while the next call of `create` for an address of no family changes the creator.
    virtual bool isAtRest() const { return true; }

protected:
    ~FamilyCreator() = default;

private:
    const AddressFamily &m_family;
};

} // namespace label

#endif
