// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/addressfamily.h"

#include "zelmar_label/address_grammar/patterncompiler_p.h"

#include <utility>

namespace label {

bool FamilyForm::mayHaveTemplate(QStringView templateName) const
{
    return templateName.size() >= base.size() + baseEnd.size() && templateName.startsWith(base) &&
           templateName.endsWith(baseEnd);
}

bool FamilyForm::isTemplate(QStringView element, QStringView templateName) const
{
    const QStringView wanted = hasElementInBase ? element : QStringView();
    return mayHaveTemplate(templateName) &&
           templateName.mid(base.size(), templateName.size() - base.size() - baseEnd.size()) == wanted;
}

AddressFamily::AddressFamily(std::vector<FamilyForm> forms)
    : m_forms(std::move(forms))
{
    PatternExpressions expressions;
    std::vector<Expression> roots;
    for (const FamilyForm &form : m_forms)
        roots.push_back(*PatternCompiler(expressions, 0).compile(*form.pattern.tree()));
    m_automaton = Automaton::of(expressions, roots);
}

const FamilyForm *AddressFamily::formOf(QStringView device) const
{
    const Automaton::Accepted accepted = m_automaton->accepted(m_automaton->walk(Automaton::start, device));
    return accepted == 0 ? nullptr : &m_forms[std::size_t(qCountTrailingZeroBits(accepted))];
}

FamilyPlace AddressFamily::placeOf(QStringView device) const
{
    const FamilyForm *const form = formOf(device);
    if (!form)
        return {};
    const bool hasElement = form->pattern.countGroups() > 1;
    return {form, form->pattern.group(1, device), hasElement ? form->pattern.group(2, device) : TextPlace()};
}

DynamicLabelItem AddressFamily::memberOf(const FamilyPlace &place, const QString &device)
{
    const QString element = place.element.start < 0 ? QString() : device.mid(place.element.start, place.element.size);
    const QString prefix = device.mid(place.prefix.start, place.prefix.size);
    QString escaped = prefix;
    escaped.replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char('.'), QLatin1String("\\."));
    const QString &row = place.form->rowPattern;
    DynamicLabelItem item;
    item.prefixSymbol = prefix;
    item.pattern = row.contains(QLatin1String("%2")) ? row.arg(escaped, element) : row.arg(escaped);
    item.basePattern = place.form->base + (place.form->hasElementInBase ? element : QString()) + place.form->baseEnd;
    return item;
}

bool FamilyCreator::create(const QString &address, DynamicLabelItem &item)
{
    return foresee(address, item);
}

bool FamilyCreator::foresee(const QString &address, DynamicLabelItem &item) const
{
    const FamilyPlace place = m_family.placeOf(address);
    if (!place.form)
        return false;
    item = AddressFamily::memberOf(place, address);
    return true;
}

} // namespace label
