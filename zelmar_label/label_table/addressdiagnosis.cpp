// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/addressdiagnosis.h"

#include "zelmar_label/address_grammar/pattern.h"
#include "zelmar_label/address_grammar/stationaddress_p.h"
#include "zelmar_label/label_table/nearaddresses_p.h"
#include "zelmar_label/label_table/numberfault_p.h"
#include "zelmar_label/label_table/rowdescription_p.h"

#include <algorithm>
#include <cstddef>

namespace label {

namespace {

using Diagnosis = AddressDiagnosis;

bool isAsciiDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

/// True for ASCII digits that fit an `int`.
bool isDecimal(const QString &text)
{
    bool fits = false;
    text.toInt(&fits);
    return fits && std::all_of(text.begin(), text.end(), isAsciiDigit);
}

QString withoutDigits(QString text)
{
    text.resize(static_cast<int>(std::remove_if(text.begin(), text.end(), isAsciiDigit) - text.begin()));
    return text;
}

Diagnosis question(const QString &text, int type)
{
    Diagnosis diagnosis;
    diagnosis.type = type;
    diagnosis.address = deviceAddress(text);
    if (hasStation(text)) {
        // An empty station is not null.
        const QString station = text.left(text.indexOf(QLatin1Char('-')));
        diagnosis.station = station.isNull() ? QString(QLatin1String("")) : station;
    }
    return diagnosis;
}

bool isStationWrong(const Diagnosis &diagnosis)
{
    return !diagnosis.station.isNull() && !isDecimal(diagnosis.station);
}

Diagnosis::RowFacts factsOf(int index, const CommandFormatter &row)
{
    return {index,
            row.type(),
            row.base(),
            row.formatString(),
            shortName(row.formatString(), row.prefixSymbol(), row.getEditorUsedPrefixsymbol()),
            row.start(),
            row.end()};
}

/// A reason's own typing error; null for a reason without one.
template<typename Fault>
auto typingErrorOf(Fault &fault, int) -> decltype(&fault.typingError)
{
    return &fault.typingError;
}
template<typename Fault>
std::nullptr_t typingErrorOf(Fault &, ...)
{
    return nullptr;
}

/// A reason's own position; -1 for a reason without one.
template<typename Fault>
auto positionOf(const Fault &fault, int) -> decltype(fault.position)
{
    return fault.position;
}
template<typename Fault>
int positionOf(const Fault &, ...)
{
    return -1;
}

/// The characters that the format allows after `front`. Blanks and the "-" of a station are not named.
QString expectedAfter(const Pattern &pattern, const QString &front)
{
    QString named;
    for (const QChar character : pattern.following(front)) {
        if (character > QLatin1Char(' ') && character.unicode() < 127 && character != QLatin1Char('-'))
            named.append(character);
    }
    return named;
}

/// The diagnosis of one address by a table.
class Examination
{
public:
    Examination(LabelView &view, const QString &text, int type)
        : m_view(view)
        , m_text(text)
        , m_result(question(text, type))
    {
    }

    Diagnosis run()
    {
        const int accepting = m_view.table().getFirstMatchedAddressIndex(m_text, m_result.type);
        if (accepting >= 0)
            ofAccepting(accepting);
        else if (const auto member = m_view.newMember(m_text))
            ofNewMember(*member);
        else
            ofRefused();
        return m_result;
    }

private:
    const QString &address() const { return m_result.address; }
    const CommandFormatter &row(int index) const { return m_view.row(index); }

    void take(int index, const NumberFinding &finding)
    {
        m_result.row = factsOf(index, row(index));
        m_result.reason = finding.reason;
        suggest(finding.offers);
    }

    void ofAccepting(int index)
    {
        m_result.row = factsOf(index, row(index));
        m_result.isUnchecked = true;
        if (row(index).isFamilyTemplate()) {
            // A template matches its own name.
            m_result.reason = Diagnosis::FamilyName{};
            suggest({exampleAddress(row(index), m_view.families())});
        } else if (const auto unread = unreadNumber(row(index), address())) {
            take(index, *unread);
        } else {
            m_result.isUnchecked = false;
        }
    }

    void ofNewMember(const LabelView::NewMember &member)
    {
        const CommandFormatter &own = member.row;
        m_result.row = factsOf(member.templateIndex, own);
        if (!passesTypeFilter(own.type(), m_result.type)) {
            ofOtherType(own);
        } else {
            const bool isValid = own.isDeviceAddressValid(address());
            const std::optional<NumberFinding> finding =
                isValid ? unreadNumber(own, address()) : refusedNumber(own, address());
            if (!finding)
                return;
            m_result.reason = finding->reason;
            suggest(finding->offers);
        }
        m_result.isUnchecked = true;
    }

    void ofRefused()
    {
        if (address().isEmpty() && !isStationWrong(m_result)) {
            m_result.reason = Diagnosis::Empty{};
            return;
        }
        m_near.emplace(m_view, address(), m_result.type, TypingErrors::Scope::Any);
        if (m_near->ofOtherType() >= 0) {
            m_result.row = factsOf(m_near->ofOtherType(), row(m_near->ofOtherType()));
            ofOtherType(row(m_near->ofOtherType()));
        } else if (!m_near->matching().empty()) {
            const int matching = nearestMatching();
            take(matching, refusedNumber(row(matching), address()));
        } else if (!m_result.station.isNull() && isOfFamilyWithoutStation()) {
            suggestWhole(address());
        } else if (isStationWrong(m_result)) {
            m_result.reason = Diagnosis::StationNotNumber{};
            suggestWhole(m_result.station + address());
        } else if (!isNumberFault() && !isOfFamily() && !isBitFault()) {
            ofCharacter();
        }
    }

    void ofOtherType(const CommandFormatter &accepting)
    {
        m_result.reason = Diagnosis::WrongType{};
        CommunicatorCommand command;
        command.address = address();
        command.dataType = CommunicatorCommand::Bit;
        // For an unreadable number the row would write to the log.
        if (accepting.type() == BitType && accepting.canConvertRegisterCommand() &&
            accepting.getAddresRangePart(address()) >= 0)
            suggest({accepting.convertToRegisterAddress(command)});
        if (!m_result.suggestions.isEmpty())
            return;
        m_near.emplace(m_view, address(), m_result.type, TypingErrors::Scope::OtherFormat);
        suggestNear();
    }

    /// Of the rows that match the address and refuse its number, the one with the nearest limits.
    int nearestMatching() const
    {
        const std::vector<int> &rows = m_near->matching();
        return *std::min_element(rows.begin(), rows.end(), [this](int left, int right) {
            return distanceFromLimits(row(left), address()) < distanceFromLimits(row(right), address());
        });
    }

    bool isOfFamilyWithoutStation()
    {
        const auto member = m_view.newMember(address());
        if (!member)
            return false;
        m_result.row = factsOf(member->templateIndex, member->row);
        m_result.reason = Diagnosis::StationBeforeFamily{};
        return true;
    }

    /// True when `find` knows the fault of a row that the address matches furthest.
    template<typename Find>
    bool isFaultOfFurthest(Find find)
    {
        for (const NearFormat &format : m_near->formats()) {
            if (format.isFamily || format.reach < m_near->reach() || format.reach == 0)
                continue;
            if (const std::optional<NumberFinding> finding = find(row(format.row), address(), format.reach)) {
                take(format.row, *finding);
                return true;
            }
        }
        return false;
    }

    bool isNumberFault() { return isFaultOfFurthest(tooManyDigits); }

    bool isOfFamily()
    {
        const int templateRow = m_near->familyTemplate();
        if (templateRow < 0)
            return false;
        m_result.reason = Diagnosis::UnknownFamilyMember{};
        setFamily(templateRow);
        // A typing error is likelier than a number that the family does not have.
        if (!m_near->isLikelySlip() && isFamilyNumber())
            return true;
        for (const NearAddress &near : m_near->addresses()) {
            if (near.format->isFamily || near.cost < unlikelyCost)
                suggestNear(near);
        }
        return true;
    }

    /// True when the family has the address with another number.
    bool isFamilyNumber()
    {
        for (const NearFormat &format : m_near->formats()) {
            const auto finding = format.isFamily && format.reach == m_near->familyReach()
                                     ? familyNumber(*format.pattern, address(), row(format.row).type() == BitType)
                                     : std::nullopt;
            const int accepting = finding ? m_view.accepting(finding->offers.constFirst(), m_result.type) : -1;
            if (accepting < 0)
                continue;
            take(accepting, *finding);
            if (m_result.kind() == Diagnosis::Kind::FamilyNumber)
                setFamily(accepting);
            return true;
        }
        return false;
    }

    void setFamily(int templateRow)
    {
        m_result.row = factsOf(templateRow, row(templateRow));
        m_result.row.format = row(templateRow).prefixSymbol();
    }

    bool isBitFault()
    {
        if (isFaultOfFurthest(bitBeyondWord))
            return true;
        const int separator = qMax(address().lastIndexOf(QLatin1Char('.')), address().lastIndexOf(QLatin1Char('/')));
        const QString bit = address().mid(separator + 1);
        const bool isBit =
            !bit.isEmpty() && std::all_of(bit.begin(), bit.end(), [](QChar one) { return one.isLetterOrNumber(); });
        if (!isBit || separator <= 0 || m_near->reach() > separator)
            return false;
        const QString front = address().left(separator);
        const int index = m_view.table().getFirstMatchedAddressIndex(front, anyType);
        if (index < 0 || row(index).isFamilyTemplate() || hasBitsAfter(front))
            return false;
        take(index, {Diagnosis::NoBits{separator}, {front}});
        return true;
    }

    /// True when a bit row matches `front`, but not as an address.
    bool hasBitsAfter(const QString &front) const
    {
        const std::vector<NearFormat> &formats = m_near->formats();
        return std::any_of(formats.begin(), formats.end(), [&](const NearFormat &format) {
            return !format.isFamily && format.reach >= front.size() && row(format.row).type() == BitType &&
                   !row(format.row).isDeviceAddressValid(front);
        });
    }

    void ofCharacter()
    {
        const int nearest = m_near->nearestRow();
        const int reach = m_near->reach();
        const bool isIncomplete = nearest >= 0 && reach >= address().size();
        if (nearest < 0 || (!isIncomplete && reach < row(nearest).prefixSymbol().size())) {
            m_result.reason = Diagnosis::UnknownFront{qMax(reach, m_near->familyReach()), {}};
            suggestNear();
            return;
        }
        m_result.row = factsOf(nearest, row(nearest));
        const Pattern &pattern = row(nearest).compiledPattern();
        const QString front = address().left(reach);
        const QString expected = expectedAfter(pattern, front);
        if (isIncomplete) {
            m_result.reason = Diagnosis::Incomplete{reach, expected, {}};
            suggestCompletions();
        } else if (const auto wrongRadix = digitOutsideRadix(row(nearest), address(), reach)) {
            m_result.reason =
                Diagnosis::UnexpectedCharacter{reach, expected, pattern.matches(front), wrongRadix->error};
            suggest(wrongRadix->offers);
            return;
        } else {
            m_result.reason = Diagnosis::UnexpectedCharacter{reach, expected, pattern.matches(front), {}};
        }
        suggestNear();
    }

    /// The letters of an address that is only too short are right.
    void suggestCompletions()
    {
        for (const NearAddress &near : m_near->addresses()) {
            if (withoutDigits(near.text).startsWith(withoutDigits(address())))
                suggestNear(near);
        }
    }

    void suggestNear()
    {
        for (const NearAddress &near : m_near->addresses())
            suggestNear(near);
    }

    void suggestNear(const NearAddress &near)
    {
        const bool isFirst = m_result.suggestions.isEmpty();
        suggest({near.text});
        const auto find = [](auto &fault) -> Diagnosis::TypingError * { return typingErrorOf(fault, 0); };
        Diagnosis::TypingError *const error = std::visit(find, m_result.reason);
        if (isFirst && !m_result.suggestions.isEmpty() && error)
            *error = typingError(address(), near.change);
    }

    void suggest(const QStringList &deviceAddresses)
    {
        const QString front = m_result.station.isNull() ? QString() : m_result.station + QLatin1Char('-');
        for (const QString &offer : deviceAddresses)
            suggestWhole(front + offer);
    }

    void suggestWhole(const QString &whole)
    {
        constexpr int mostSuggestions = 5;
        if (m_result.suggestions.size() < mostSuggestions && whole != m_text && !m_result.suggestions.contains(whole) &&
            m_view.accepting(whole, m_result.type) >= 0)
            m_result.suggestions.append(whole);
    }

    LabelView &m_view;
    const QString m_text;
    Diagnosis m_result;
    std::optional<NearAddresses> m_near;
};

/// The first row that accepts the text. A label returns whether any row does, and which rows could; take one that finds
/// its number in the text, else the first.
int acceptingRow(LabelInterface &label, const QString &text, int type)
{
    QString prefix;
    QString range;
    if (!label.parseAddress(text, prefix, range))
        return -1;
    const QList<int> rows = label.getAllMatchedIndex(text, type);
    for (const int row : rows) {
        if (label.addressRange(row, deviceAddress(text)) >= 0)
            return row;
    }
    return rows == label.getAllMatchedIndex(text, anyType) ? rows.value(0, -1) : -1;
}

Diagnosis::RowFacts factsOf(int index, LabelInterface &label)
{
    const QString description = label.getFormatString(index);
    return {index,
            label.datatype(index),
            label.base(index),
            description,
            shortName(description, label.getPrefixSymbolByTypeID(index), label.getEditUsedPrifixSymbolByTypeId(index)),
            QString(),
            QString()};
}

/// How far rows could take an address that none of them accepts.
void explainByCompletion(LabelInterface &label, Diagnosis &result)
{
    const QString &address = result.address;
    int reach = address.size();
    QList<int> rows = label.getAllMatchedIndex(address, result.type);
    while (rows.isEmpty() && reach > 0)
        rows = label.getAllMatchedIndex(address.left(--reach), result.type);
    if (rows.isEmpty() || reach == 0) {
        result.reason = Diagnosis::UnknownFront{reach, {}};
        return;
    }
    result.row = factsOf(rows.constFirst(), label);
    const int number = reach < address.size() ? -1 : label.addressRange(result.row.index, address);
    if (number >= 0)
        result.reason = Diagnosis::NumberRefused{QString::number(number, qBound(2, result.row.radix, 36)).toUpper()};
    else if (reach < address.size())
        result.reason = Diagnosis::UnexpectedCharacter{reach, {}, false, {}};
    else
        result.reason = Diagnosis::Incomplete{reach, {}, {}};
}

Diagnosis byInterface(LabelInterface &label, const QString &text, int type)
{
    Diagnosis result = question(text, type);
    const int accepting = acceptingRow(label, text, type);
    const int ofAnyType = accepting >= 0 ? accepting : acceptingRow(label, text, anyType);
    if (ofAnyType >= 0)
        result.row = factsOf(ofAnyType, label);
    if (accepting >= 0)
        return result;
    if (ofAnyType >= 0)
        result.reason = Diagnosis::WrongType{};
    else if (result.address.isEmpty())
        result.reason = Diagnosis::Empty{};
    else if (isStationWrong(result))
        result.reason = Diagnosis::StationNotNumber{};
    else
        explainByCompletion(label, result);
    return result;
}

} // namespace

const AddressDiagnosis::TypingError *AddressDiagnosis::typingError() const
{
    const auto find = [](const auto &fault) -> const TypingError * { return typingErrorOf(fault, 0); };
    const TypingError *const error = std::visit(find, reason);
    return error && error->slip != Slip::None ? error : nullptr;
}

int AddressDiagnosis::position() const
{
    const TypingError *const error = typingError();
    return error ? error->position : std::visit([](const auto &fault) { return positionOf(fault, 0); }, reason);
}

AddressDiagnosis diagnoseAddress(const CommandInformationTalbe &table, const QString &address, int type)
{
    LabelView view(table, nullptr);
    return Examination(view, address, type).run();
}

AddressDiagnosis diagnoseAddress(LabelInterface &label, const QString &address, int type)
{
    const auto *const loader = dynamic_cast<LabelLoader *>(&label);
    if (!loader)
        return byInterface(label, address, type);
    LabelView view(loader->deviceTypesTable(), loader);
    return Examination(view, address, type).run();
}

} // namespace label
