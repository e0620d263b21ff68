// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/nearaddresses_p.h"

#include "zelmar_label/label_table/addressfamily.h"
#include "zelmar_label/label_table/dynamicmember_p.h"
#include "zelmar_label/label_table/numberfault_p.h"

#include <algorithm>

namespace label {

namespace {

/// How many characters of a text could begin a match, whatever follows.
int reachOf(const Pattern &pattern, const QString &text)
{
    const Automaton *const automaton = pattern.automaton();
    return automaton ? automaton->front(text) : qMax(0, pattern.front(text));
}

/// True for texts that differ in one character, or in the order of two; the first one is not another.
bool areAlike(QStringView left, QStringView right)
{
    while (!left.isEmpty() && !right.isEmpty() && left.back() == right.back()) {
        left.chop(1);
        right.chop(1);
    }
    qsizetype same = 0;
    while (same < left.size() && same < right.size() && left.at(same) == right.at(same))
        ++same;
    const QStringView rest = left.mid(same);
    const QStringView other = right.mid(same);
    if (rest.size() == 2 && other.size() == 2)
        return rest.at(0) == other.at(1) && rest.at(1) == other.at(0);
    return rest.size() <= 1 && other.size() <= 1 && (same > 0 || rest.size() != other.size());
}

QString letters(const QString &text)
{
    QString found;
    for (const QChar character : text) {
        if (character.isLetter())
            found.append(character);
    }
    return found;
}

int commonFront(const QString &left, const QString &right)
{
    int same = 0;
    while (same < left.size() && same < right.size() && left.at(same) == right.at(same))
        ++same;
    return same;
}

/// True for a member of a family that the address leaves within its prefix: the row says nothing about other members.
bool isOtherMember(const CommandFormatter &row, int reach)
{
    return reach < row.prefixSymbol().size() && row.getEditorUsedPrefixsymbol() != row.prefixSymbol();
}

} // namespace

const std::vector<FamilyTemplate> &LabelView::families() const
{
    static const std::vector<FamilyTemplate> none;
    return m_loader ? m_loader->familyTemplates() : none;
}

std::optional<LabelView::NewMember> LabelView::newMember(const QString &address) const
{
    const std::optional<DynamicMember> member = m_loader ? m_loader->foreseenMember(address) : std::nullopt;
    if (!member)
        return std::nullopt;
    NewMember made = {member->templateIndex, row(member->templateIndex)};
    member->shape(made.row);
    return made;
}

int LabelView::accepting(const QString &address, int type) const
{
    if (!m_loader) {
        const int index = m_table.getFirstMatchedAddressIndex(address, type);
        return index >= 0 && !row(index).isFamilyTemplate() ? index : -1;
    }
    const AddressVerdict verdict = m_loader->judge(address, type);
    const bool isName = verdict.row >= 0 && !verdict.isNewMember && row(verdict.row).isFamilyTemplate();
    return verdict.isAccepted && !isName ? verdict.row : -1;
}

NearAddresses::NearAddresses(const LabelView &view, const QString &deviceAddress, int type, TypingErrors::Scope scope)
    : m_view(view)
    , m_address(deviceAddress)
    , m_folded(folded(deviceAddress))
    , m_capitals(toAscii(deviceAddress).toUpper())
    , m_type(type)
    , m_scope(scope)
{
    for (int index = 0; index < view.table().countFormatters(); ++index)
        visitRow(index);
    for (const FamilyTemplate &family : view.families())
        visitFamily(family);
}

void NearAddresses::visitRow(int index)
{
    const CommandFormatter &row = m_view.row(index);
    if (row.isFamilyTemplate())
        return;
    const Pattern &pattern = row.compiledPattern();
    const int reach = reachOf(pattern, m_address);
    const bool isMatch = reach >= m_address.size() && pattern.matches(m_address);
    if (!passesTypeFilter(row.type(), m_type)) {
        if (isMatch && m_ofOtherType < 0 && row.isDeviceAddressValid(m_address))
            m_ofOtherType = index;
        return;
    }
    if (isMatch)
        m_matching.push_back(index);
    if (isOtherMember(row, reach))
        return;
    m_reach = qMax(m_reach, reach);
    add({&pattern, index, false, reach, symbolScore(row.prefixSymbol())});
}

void NearAddresses::visitFamily(const FamilyTemplate &family)
{
    const Pattern &pattern = family.form->pattern;
    const bool isKnown = std::any_of(m_formats.begin(), m_formats.end(),
                                     [&](const NearFormat &format) { return format.pattern == &pattern; });
    if (isKnown || !passesTypeFilter(m_view.row(family.row).type(), m_type))
        return;
    const int reach = reachOf(pattern, m_address);
    m_familyReach = qMax(m_familyReach, reach);
    add({&pattern, family.row, true, reach, symbolScore(m_view.row(family.row).prefixSymbol())});
}

void NearAddresses::add(NearFormat format)
{
    const int reach = m_folded == m_address ? format.reach : qMax(format.reach, reachOf(*format.pattern, m_folded));
    format.score = qMax(format.score, 2 * reach);
    m_formats.push_back(format);
}

/// An address that begins with a similar symbol is less near than one that matches as many characters.
int NearAddresses::symbolScore(const QString &symbol) const
{
    for (int size = symbol.size() - 1; size <= symbol.size() + 1; ++size) {
        if (size > 0 && areAlike(QStringView(m_capitals).left(size), symbol))
            return 2 * symbol.size() - 1;
    }
    return 0;
}

int NearAddresses::familyTemplate()
{
    int best = -1;
    int likeness = -1;
    for (int index = 0; index < m_view.table().countFormatters(); ++index) {
        const CommandFormatter &row = m_view.row(index);
        const QString symbol = row.prefixSymbol();
        if (!row.isFamilyTemplate() || !passesTypeFilter(row.type(), m_type) || symbol.isEmpty() ||
            m_reach > symbol.size() || !m_folded.startsWith(symbol, Qt::CaseInsensitive))
            continue;
        // Without the forms of the families, their names show which of them is meant.
        const int common = commonFront(letters(m_folded), letters(row.pattern().toUpper()));
        if (common > likeness)
            best = index;
        likeness = qMax(likeness, common);
    }
    if (best < 0)
        return best;
    for (const NearAddress &near : addresses()) {
        if (near.format->isFamily)
            return near.row;
    }
    return best;
}

int NearAddresses::nearestRow()
{
    for (const NearAddress &near : addresses()) {
        if (m_reach > 0 && near.format->reach == m_reach && !near.format->isFamily)
            return near.format->row;
    }
    for (const NearFormat &format : m_formats) {
        if (m_reach > 0 && format.reach == m_reach && !format.isFamily)
            return format.row;
    }
    return -1;
}

const std::vector<NearAddress> &NearAddresses::addresses()
{
    if (m_addresses)
        return *m_addresses;
    m_addresses.emplace();
    // Longer texts are no typing errors.
    constexpr int longest = 48;
    if (m_address.size() > longest)
        return *m_addresses;
    TypingErrors errors(m_address, m_scope);
    int mostCost = mostTypingCost;
    for (const NearFormat *const format : best())
        search(*format, errors, mostCost);
    std::stable_sort(m_addresses->begin(), m_addresses->end(),
                     [](const NearAddress &left, const NearAddress &right) { return left.cost < right.cost; });
    while (!m_addresses->empty() && m_addresses->back().cost > mostCost)
        m_addresses->pop_back();
    return *m_addresses;
}

/// The formats to search, the most similar first.
std::vector<const NearFormat *> NearAddresses::best() const
{
    constexpr std::size_t most = 10;
    std::vector<const NearFormat *> formats;
    for (const NearFormat &format : m_formats) {
        if (format.score > 0 && format.pattern->automaton())
            formats.push_back(&format);
    }
    std::stable_sort(formats.begin(), formats.end(),
                     [](const NearFormat *left, const NearFormat *right) { return left->score > right->score; });
    formats.resize(qMin(formats.size(), most));
    return formats;
}

void NearAddresses::search(const NearFormat &format, TypingErrors &errors, int &mostCost)
{
    constexpr int most = 3;
    for (const NearText &near :
         format.pattern->automaton()->near(m_address, errors.edits(format.reach), {mostCost, muchUnlikelier, most})) {
        const QString text = format.isFamily ? near.text : withValidNumber(m_view.row(format.row), near.text);
        const int row = text.isEmpty() ? -1 : m_view.accepting(text, m_type);
        if (row < 0)
            continue;
        const int cost = near.cost + (text == near.text ? 0 : otherNumberCost);
        m_addresses->push_back({text, cost, near.change, &format, row});
        mostCost = qMin(mostCost, cost + muchUnlikelier);
    }
}

} // namespace label
