// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/addressdiagnosis.h"

#include "zelmar_label/address_grammar/stationaddress_p.h"
#include "zelmar_label/label_table/addressjudge_p.h"
#include "zelmar_label/label_table/addresssearch_p.h"
#include "zelmar_label/label_table/characterslip_p.h"
#include "zelmar_label/label_table/familyfault_p.h"
#include "zelmar_label/label_table/foreignlabel_p.h"
#include "zelmar_label/label_table/labelloader.h"
#include "zelmar_label/label_table/numberfault_p.h"
#include "zelmar_label/label_table/rowdescription_p.h"
#include "zelmar_label/label_table/textfault_p.h"

namespace label {

namespace {

using Kind = AddressDiagnosis::Kind;

/// A label for one question.
class Examination
{
public:
    Examination(AddressJudge &judge, const QString &text, int type)
        : m_judge(judge)
        , m_text(text)
    {
        describeQuestion(m_result, text, type);
    }

    AddressDiagnosis run()
    {
        const int accepting = m_judge.table().getFirstMatchedAddressIndex(m_text, m_result.type);
        if (accepting >= 0)
            ofAccepting(accepting);
        else if (const auto member = m_judge.newMember(m_text))
            ofNewMember(*member);
        else
            ofRefused();
        suggest();
        return m_result;
    }

private:
    const QString &address() const { return m_result.address; }

    void describe(int index, const CommandFormatter &row)
    {
        m_result.row = index;
        describeRow(m_result, row);
    }

    void describe(int index) { describe(index, m_judge.row(index)); }

    void ofAccepting(int index)
    {
        const CommandFormatter &row = m_judge.row(index);
        describe(index);
        if (isFamilyTemplate(row)) {
            // A template matches its own name.
            m_result.kind = Kind::FamilyName;
            m_result.isUnchecked = true;
            m_offers.append(exampleAddress(row));
            return;
        }
        m_result.isUnchecked = explainUnreadNumber(row, address(), m_result, m_offers);
    }

    void ofNewMember(const AddressJudge::NewMember &member)
    {
        const CommandFormatter &row = *member.row;
        describe(member.templateIndex, row);
        if (!passesTypeFilter(row.type(), m_result.type))
            ofOtherType(row);
        else if (row.isDeviceAddressValid(address()))
            explainUnreadNumber(row, address(), m_result, m_offers);
        else if (row.matchedFront(address()) > address().size())
            explainRefusedNumber(row, address(), m_result, m_offers);
        m_result.isUnchecked = m_result.kind != Kind::Accepted;
    }

    void ofRefused()
    {
        const bool isStationWrong = !m_result.station.isNull() && !isDecimal(m_result.station);
        if (address().isEmpty() && !isStationWrong) {
            m_result.kind = Kind::Empty;
            return;
        }
        const AddressSearch search(m_judge.table(), address(), m_result.type);
        if (search.ofOtherType() >= 0) {
            describe(search.ofOtherType());
            ofOtherType(m_judge.row(search.ofOtherType()));
        } else if (search.isMatched()) {
            const int row = nearestMatchedRow(m_judge, search, address());
            describe(row);
            explainRefusedNumber(m_judge.row(row), address(), m_result, m_offers);
        } else if (!m_result.station.isNull() && isOfFamilyWithoutStation()) {
            return;
        } else if (isStationWrong) {
            m_result.kind = Kind::StationNotNumber;
            m_wholeOffers.append(m_result.station + address());
        } else {
            ofText(search);
        }
    }

    void ofOtherType(const CommandFormatter &row)
    {
        m_result.kind = Kind::WrongType;
        if (row.type() != BitType) {
            for (const char *const bit : {".0", "/0", ".00"})
                m_offers.append(address() + QLatin1String(bit));
            offerFamilyMembers(m_judge, address(), m_result.type, m_offers);
            return;
        }
        CommunicatorCommand command;
        command.address = address();
        command.dataType = CommunicatorCommand::Bit;
        // For an unreadable number the row would write to the log.
        if (row.canConvertRegisterCommand() && row.getAddresRangePart(address()) >= 0)
            m_offers.append(row.convertToRegisterAddress(command));
    }

    bool isOfFamilyWithoutStation()
    {
        const auto member = m_judge.newMember(address());
        if (!member)
            return false;
        describe(member->templateIndex, *member->row);
        m_result.kind = Kind::StationBeforeFamily;
        m_wholeOffers.append(address());
        return true;
    }

    void ofText(const AddressSearch &search)
    {
        const int row = explainText(m_judge, search, m_result, m_offers);
        if (row < 0)
            return;
        describe(row);
        if (m_result.kind == Kind::UnknownFamilyMember)
            m_result.format = m_judge.row(row).prefixSymbol();
    }

    void suggest()
    {
        const QString front = m_result.station.isNull() ? QString() : m_result.station + QLatin1Char('-');
        for (const QString &offer : qAsConst(m_offers))
            suggest(front + offer);
        for (const QString &offer : qAsConst(m_wholeOffers))
            suggest(offer);
        if (m_result.slip == AddressDiagnosis::Slip::None && isFaultOfText(m_result.kind) &&
            !m_result.suggestions.isEmpty())
            nameSlip(address(), deviceAddress(m_result.suggestions.constFirst()), m_result);
    }

    void suggest(const QString &whole)
    {
        constexpr int mostSuggestions = 5;
        if (m_result.suggestions.size() < mostSuggestions && whole != m_text && !m_result.suggestions.contains(whole) &&
            m_judge.accepts(whole, m_result.type))
            m_result.suggestions.append(whole);
    }

    AddressJudge &m_judge;
    const QString m_text;
    AddressDiagnosis m_result;
    QStringList m_offers;
    QStringList m_wholeOffers;
};

} // namespace

AddressDiagnosis diagnoseAddress(const CommandInformationTalbe &table, const QString &address, int type)
{
    AddressJudge judge(table, nullptr);
    return Examination(judge, address, type).run();
}

AddressDiagnosis diagnoseAddress(LabelInterface &label, const QString &address, int type)
{
    const auto *const loader = dynamic_cast<LabelLoader *>(&label);
    if (!loader)
        return diagnoseForeignLabel(label, address, type);
    AddressJudge judge(loader->deviceTypesTable(), loader);
    return Examination(judge, address, type).run();
}

} // namespace label
