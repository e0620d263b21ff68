// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/numberfault_p.h"

#include "zelmar_label/address_grammar/commandformatter.h"
#include "zelmar_label/address_grammar/multiplerule.h"
#include "zelmar_label/address_grammar/radixnumber_p.h"
#include "zelmar_label/label_table/addressdigits_p.h"
#include "zelmar_label/label_table/characterslip_p.h"

#include <limits>
#include <optional>

namespace label {

namespace {

using Kind = AddressDiagnosis::Kind;

/// The position of the number in a matching text; -1 for any other text.
int numberPosition(const CommandFormatter &row, const QString &deviceAddress)
{
    const QChar mark(QChar::ObjectReplacementCharacter);
    return row.withNumber(deviceAddress, mark).indexOf(mark);
}

/// The numbers of one row.
class Numbers
{
public:
    explicit Numbers(const CommandFormatter &row)
        : m_row(row)
        , first(readNumber(row.start(), row.base()))
        , last(readNumber(row.end(), row.base()))
    {
    }

    /// The next aligned number, ignoring limits.
    std::optional<int> nextAligned(int number, int step) const
    {
        // Alignments are of 64 at most, unless a script announces another.
        const int distance = qBound(64, m_row.aligmentSize(), 4096);
        for (qint64 next = number, steps = 0; steps < distance; ++steps) {
            next += step;
            if (next != static_cast<int>(next))
                break;
            if (m_row.validateMultiple(static_cast<int>(next)))
                return static_cast<int>(next);
        }
        return std::nullopt;
    }

    bool isWithin(std::optional<int> number) const { return number && *first <= *number && *number <= *last; }

    /// The valid number at `limit` or, by `step`, the next one inside.
    std::optional<int> outermost(int limit, int step) const
    {
        const std::optional<int> good = m_row.isRangeValid(limit) ? limit : nextAligned(limit, step);
        return isWithin(good) ? good : std::nullopt;
    }

    /// The address with another number; empty if the row does not accept it.
    QString spelled(const QString &deviceAddress, int number) const
    {
        const QString digits = numberInAddress(number, m_row.base());
        const int width = deviceAddress.size() - m_row.withNumber(deviceAddress, QString()).size();
        const QString padded = digits.rightJustified(width, QLatin1Char('0'));
        QStringList forms = {digits, digits.toLower(), padded, padded.toLower()};
        // Some bit rows write words without the digits of their first bit.
        constexpr int bitDigits = 2;
        if (digits.size() > bitDigits)
            forms.append(digits.left(digits.size() - bitDigits));
        // For a script's bits it is only known that the number is replaced.
        const QString written = deviceAddress.mid(numberPosition(m_row, deviceAddress), width);
        const QString own = numberInAddress(m_row.getAddresRangePart(deviceAddress), m_row.base());
        const int place = written.lastIndexOf(own, -1, Qt::CaseInsensitive);
        if (m_row.type() == CommunicatorCommand::Bit && place >= 0)
            forms.append(QString(written).replace(place, own.size(), digits));
        for (const QString &form : qAsConst(forms)) {
            QString address = m_row.withNumber(deviceAddress, form);
            if (m_row.isDeviceAddressValid(address) && m_row.getAddresRangePart(address) == number)
                return address;
        }
        return QString();
    }

    void offer(const QString &deviceAddress, std::optional<int> number, QStringList &offers) const
    {
        const QString address = number ? spelled(deviceAddress, *number) : QString();
        if (!address.isEmpty())
            offers.append(address);
    }

private:
    const CommandFormatter &m_row;

public:
    const std::optional<int> first;
    const std::optional<int> last;
};

void explainAlignment(const CommandFormatter &row, const Numbers &numbers, int number, const QString &deviceAddress,
                      AddressDiagnosis &diagnosis, QStringList &offers)
{
    diagnosis.kind = Kind::NotAligned;
    const std::optional<int> below = numbers.nextAligned(number, -1);
    const std::optional<int> above = numbers.nextAligned(number, 1);
    if (below && above) {
        const int group = *above - *below;
        const int rest = (*below % group + group) % group;
        diagnosis.limit = numberInAddress(group, row.base());
        diagnosis.remainder = rest == 0 ? QString() : numberInAddress(rest, row.base());
    }
    const bool isBelowNearer = below && above && number - *below <= *above - number;
    for (const std::optional<int> &aligned : {below, above}) {
        if (numbers.isWithin(aligned))
            diagnosis.nearest.append(numberInAddress(*aligned, row.base()));
    }
    for (const std::optional<int> &aligned : {isBelowNearer ? below : above, isBelowNearer ? above : below}) {
        if (numbers.isWithin(aligned))
            numbers.offer(deviceAddress, aligned, offers);
    }
}

/// A script may count in another way than addresses are written, for example bits through a file of words: returns the
/// last address that the row accepts with other digits at the end.
void explainWrittenNumber(const CommandFormatter &row, const QString &deviceAddress, AddressDiagnosis &diagnosis,
                          QStringList &offers)
{
    int start = deviceAddress.size();
    while (start > 0 && isDigit(deviceAddress.at(start - 1), 10))
        --start;
    const QString front = deviceAddress.left(start);
    const auto isValid = [&](int number) { return row.isDeviceAddressValid(front + QString::number(number)); };
    const std::optional<int> written = readNumber(deviceAddress.mid(start), 10);
    if (row.base() != 10 || !written || !isValid(0))
        return;
    int good = 0;
    int refused = *written;
    while (refused - good > 1) {
        const int middle = good + (refused - good) / 2;
        (isValid(middle) ? good : refused) = middle;
    }
    diagnosis.position = start;
    diagnosis.number = QString::number(*written);
    diagnosis.limit = QString::number(good);
    offers.append(front + diagnosis.limit);
}

/// Digits of a bit that follows its word without a separator; 0 for other rows.
int bitDigits(const CommandFormatter &row)
{
    const MultipleRule rule(row.ruleText());
    const bool isWithoutSeparator =
        row.type() == CommunicatorCommand::Bit && rule.isSplit() && rule.splitString().isEmpty();
    return isWithoutSeparator ? rule.minimumBitDigits() : 0;
}

} // namespace

qint64 distanceFromLimits(const CommandFormatter &row, const QString &deviceAddress)
{
    const Numbers numbers(row);
    if (!numbers.first || !numbers.last)
        return std::numeric_limits<qint64>::max();
    const qint64 number = row.getAddresRangePart(deviceAddress);
    return qMax<qint64>(0, qMax(number - *numbers.last, *numbers.first - number));
}

void explainRefusedNumber(const CommandFormatter &row, const QString &deviceAddress, AddressDiagnosis &diagnosis,
                          QStringList &offers)
{
    const Numbers numbers(row);
    const int number = row.getAddresRangePart(deviceAddress);
    diagnosis.number = numberInAddress(number, row.base());
    diagnosis.position = numberPosition(row, deviceAddress);
    if (!numbers.first || !numbers.last) {
        diagnosis.kind = Kind::LimitsUnreadable;
        return;
    }
    if (number > *numbers.last) {
        diagnosis.kind = Kind::AboveLast;
        diagnosis.limit = row.end();
        numbers.offer(deviceAddress, numbers.outermost(*numbers.last, -1), offers);
        if (offers.isEmpty())
            explainWrittenNumber(row, deviceAddress, diagnosis, offers);
    } else if (number < *numbers.first) {
        diagnosis.kind = Kind::BelowFirst;
        diagnosis.limit = row.start();
        numbers.offer(deviceAddress, numbers.outermost(*numbers.first, 1), offers);
    } else {
        explainAlignment(row, numbers, number, deviceAddress, diagnosis, offers);
    }
}

bool explainTooManyDigits(const CommandFormatter &row, const QString &deviceAddress, int reach,
                          AddressDiagnosis &diagnosis, QStringList &offers)
{
    int end = reach;
    while (end < deviceAddress.size() && isDigit(deviceAddress.at(end), row.base()))
        ++end;
    const QString shorter = deviceAddress.left(reach) + deviceAddress.mid(end);
    if (end == reach || row.matchedFront(shorter) <= shorter.size())
        return false;
    const int start = numberPosition(row, shorter);
    const QString digits = deviceAddress.mid(start, end - start - bitDigits(row));
    if (start < 0 || start >= reach || !areDigits(digits, row.base()))
        return false;
    const Numbers numbers(row);
    const std::optional<int> number = readNumber(digits, row.base());
    if (!numbers.first || !numbers.last || (number && *number <= *numbers.last))
        return false;
    diagnosis.kind = number ? Kind::AboveLast : Kind::NumberTooLong;
    diagnosis.position = start;
    diagnosis.number = withoutLeadingZeros(digits).toUpper();
    diagnosis.limit = row.end();
    numbers.offer(shorter, numbers.outermost(*numbers.last, -1), offers);
    return true;
}

bool explainDigitOutsideRadix(const CommandFormatter &row, const QString &deviceAddress, int reach,
                              AddressDiagnosis &diagnosis, QStringList &offers)
{
    const int radix = row.base();
    if (radix < 2 || radix > 8 || reach >= deviceAddress.size())
        return false;
    const QChar character = deviceAddress.at(reach);
    if (!isDigit(character, 10) || isDigit(character, radix))
        return false;
    const QString highest = QString::number(radix - 1);
    if (!row.canBeCompleted(deviceAddress.left(reach) + highest))
        return false;
    diagnosis.slip = AddressDiagnosis::Slip::DigitOutsideRadix;
    diagnosis.written = character;
    // "X18" is between X17 and X20.
    int end = reach;
    while (end < deviceAddress.size() && isDigit(deviceAddress.at(end), 10))
        ++end;
    const QString below = deviceAddress.left(reach) + highest.repeated(end - reach) + deviceAddress.mid(end);
    offers.append(below);
    const int number = row.matchedFront(below) > below.size() ? row.getAddresRangePart(below) : -1;
    if (number < 0 || number == std::numeric_limits<int>::max())
        return true;
    const Numbers numbers(row);
    const bool isAligned = row.type() == CommunicatorCommand::Bit || row.validateMultiple(number);
    if (!isAligned)
        numbers.offer(below, numbers.nextAligned(number, -1), offers);
    numbers.offer(below, isAligned ? number + 1 : numbers.nextAligned(number, 1), offers);
    return true;
}

bool explainUnreadNumber(const CommandFormatter &row, const QString &deviceAddress, AddressDiagnosis &diagnosis,
                         QStringList &offers)
{
    if (row.getAddresRangePart(deviceAddress) != -1)
        return false;
    const QString range = row.getRangeString(deviceAddress);
    const bool isBit = row.type() == CommunicatorCommand::Bit;
    const QString digits = isBit ? MultipleRule(row.ruleText()).wordPart(range) : range;
    const QString plain = toAscii(deviceAddress);
    if (!digits.isEmpty() && plain != deviceAddress) {
        diagnosis.kind = Kind::UnexpectedCharacter;
        nameSlip(deviceAddress, plain, diagnosis);
        offers.append(plain);
        return true;
    }
    if (!areDigits(digits, row.base()) || readNumber(digits, row.base()))
        return false;
    const Numbers numbers(row);
    diagnosis.kind = Kind::NumberTooLong;
    diagnosis.position = numberPosition(row, deviceAddress);
    diagnosis.number = withoutLeadingZeros(digits).toUpper();
    diagnosis.limit = row.end();
    if (numbers.first && numbers.last)
        numbers.offer(deviceAddress, numbers.outermost(*numbers.last, -1), offers);
    return true;
}

} // namespace label
