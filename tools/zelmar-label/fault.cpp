// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "fault.h"

#include "device.h"

namespace {

using label::AddressDiagnosis;

const char *kindName(AddressDiagnosis::Kind kind)
{
    using Kind = AddressDiagnosis::Kind;
    switch (kind) {
    case Kind::Accepted:
        break;
    case Kind::Empty:
        return "empty";
    case Kind::UnknownFront:
        return "unknownFront";
    case Kind::UnknownFamilyMember:
        return "unknownFamilyMember";
    case Kind::FamilyNumber:
        return "familyNumber";
    case Kind::FamilyName:
        return "familyName";
    case Kind::StationBeforeFamily:
        return "stationBeforeFamily";
    case Kind::StationNotNumber:
        return "stationNotNumber";
    case Kind::Incomplete:
        return "incomplete";
    case Kind::UnexpectedCharacter:
        return "unexpectedCharacter";
    case Kind::AboveLast:
        return "aboveLast";
    case Kind::BelowFirst:
        return "belowFirst";
    case Kind::NotAligned:
        return "notAligned";
    case Kind::NumberTooLong:
        return "numberTooLong";
    case Kind::LimitsUnreadable:
        return "limitsUnreadable";
    case Kind::BitBeyondWord:
        return "bitBeyondWord";
    case Kind::NoBits:
        return "noBits";
    case Kind::WrongType:
        return "wrongType";
    case Kind::NumberRefused:
        return "numberRefused";
    }
    return "accepted";
}

QJsonValue slipName(const AddressDiagnosis::TypingError *error)
{
    using Slip = AddressDiagnosis::Slip;
    switch (error ? error->slip : Slip::None) {
    case Slip::None:
        break;
    case Slip::LetterCase:
        return QStringLiteral("letterCase");
    case Slip::Blank:
        return QStringLiteral("blank");
    case Slip::LetterForDigit:
        return QStringLiteral("letterForDigit");
    case Slip::DigitForLetter:
        return QStringLiteral("digitForLetter");
    case Slip::NotAscii:
        return QStringLiteral("notAscii");
    case Slip::DigitOutsideRadix:
        return QStringLiteral("digitOutsideRadix");
    case Slip::MissingSeparator:
        return QStringLiteral("missingSeparator");
    case Slip::WrongSeparator:
        return QStringLiteral("wrongSeparator");
    }
    return QJsonValue();
}

QJsonValue textOrNull(const QString &text)
{
    return text.isEmpty() ? QJsonValue() : QJsonValue(text);
}

/// The refused number of a reason, and the number that it is compared with; empty where a reason has none.
struct RefusedNumber
{
    QString number;
    QString limit;
};

template<typename Fault>
RefusedNumber refusedNumber(const Fault &)
{
    return {};
}
RefusedNumber refusedNumber(const AddressDiagnosis::FamilyNumber &fault)
{
    return {fault.number, fault.limit};
}
RefusedNumber refusedNumber(const AddressDiagnosis::AboveLast &fault)
{
    return {fault.number, fault.last};
}
RefusedNumber refusedNumber(const AddressDiagnosis::BelowFirst &fault)
{
    return {fault.number, fault.first};
}
RefusedNumber refusedNumber(const AddressDiagnosis::NotAligned &fault)
{
    return {fault.number, fault.group};
}
RefusedNumber refusedNumber(const AddressDiagnosis::NumberTooLong &fault)
{
    return {fault.number, fault.last};
}
RefusedNumber refusedNumber(const AddressDiagnosis::LimitsUnreadable &fault)
{
    return {fault.number, QString()};
}
RefusedNumber refusedNumber(const AddressDiagnosis::BitBeyondWord &fault)
{
    return {fault.bit, fault.last};
}
RefusedNumber refusedNumber(const AddressDiagnosis::NumberRefused &fault)
{
    return {fault.number, QString()};
}

} // namespace

QJsonObject faultAsJson(const ResolvedAddress &address)
{
    const AddressDiagnosis &diagnosis = address.diagnosis;
    const RefusedNumber refused = std::visit([](const auto &fault) { return refusedNumber(fault); }, diagnosis.reason);
    return {{QStringLiteral("kind"), QLatin1String(kindName(diagnosis.kind()))},
            {QStringLiteral("slip"), slipName(diagnosis.typingError())},
            {QStringLiteral("position"), address.position < 0 ? QJsonValue() : QJsonValue(address.position)},
            {QStringLiteral("number"), textOrNull(refused.number)},
            {QStringLiteral("limit"), textOrNull(refused.limit)},
            {QStringLiteral("radix"), diagnosis.row.index < 0 ? QJsonValue() : QJsonValue(diagnosis.row.radix)}};
}
