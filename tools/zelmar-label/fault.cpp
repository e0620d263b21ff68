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

QJsonValue slipName(AddressDiagnosis::Slip slip)
{
    using Slip = AddressDiagnosis::Slip;
    switch (slip) {
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

} // namespace

QJsonObject faultAsJson(const ResolvedAddress &address)
{
    const AddressDiagnosis &diagnosis = address.diagnosis;
    return {{QStringLiteral("kind"), QLatin1String(kindName(diagnosis.kind))},
            {QStringLiteral("slip"), slipName(diagnosis.slip)},
            {QStringLiteral("position"), address.position < 0 ? QJsonValue() : QJsonValue(address.position)},
            {QStringLiteral("number"), textOrNull(diagnosis.number)},
            {QStringLiteral("limit"), textOrNull(diagnosis.limit)},
            {QStringLiteral("radix"), diagnosis.row < 0 ? QJsonValue() : QJsonValue(diagnosis.radix)}};
}
