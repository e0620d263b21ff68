// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/numberfault_p.h"

#include "zelmar_label/address_grammar/commandformatter.h"
#include "zelmar_label/address_grammar/pattern.h"
#include "zelmar_label/address_grammar/radixnumber_p.h"
#include "zelmar_label/label_table/labeltype.h"
#include "zelmar_label/label_table/typingerrors_p.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace label {

namespace {

using Reason = AddressDiagnosis::Reason;

/// A number in an address, in capitals.
QString inAddress(int number, int radix)
{
    return numberText(number, radix).toUpper();
}

bool isDigit(QChar character, int radix)
{
    return radix >= 2 && radix <= 36 && character.unicode() < 128 && character.isLetterOrNumber() &&
           readNumber(QStringView(&character, 1), radix).has_value();
}

/// The digits at a position, also those in front of it.
TextPlace digitsAt(const QString &text, int at, int radix)
{
    int start = at;
    while (start > 0 && isDigit(text.at(start - 1), radix))
        --start;
    int end = at;
    while (end < text.size() && isDigit(text.at(end), radix))
        ++end;
    return {start, end - start};
}

bool areDigits(const QString &text, int radix)
{
    return !text.isEmpty() && digitsAt(text, 0, radix).size == text.size();
}

QString withoutLeadingZeros(const QString &digits)
{
    int zeros = 0;
    while (zeros < digits.size() - 1 && digits.at(zeros) == QLatin1Char('0'))
        ++zeros;
    return digits.mid(zeros);
}

int numberPosition(const CommandFormatter &row, const QString &deviceAddress)
{
    return row.rangePlace(deviceAddress).start;
}

bool isWithin(const CommandFormatter &row, std::optional<int> number)
{
    return number && *row.firstNumber() <= *number && *number <= *row.lastNumber();
}

/// The next aligned number, ignoring limits.
std::optional<int> nextAligned(const CommandFormatter &row, int number, int step)
{
    // Alignments are of 64 at most, unless a script announces another.
    const int distance = qBound(64, row.aligmentSize(), 4096);
    for (qint64 next = number, steps = 0; steps < distance; ++steps) {
        next += step;
        if (next != static_cast<int>(next))
            break;
        if (row.validateMultiple(static_cast<int>(next)))
            return static_cast<int>(next);
    }
    return std::nullopt;
}

/// The first valid number from `number` on, up or down.
std::optional<int> nextValid(const CommandFormatter &row, int number, int step)
{
    const int start = step > 0 ? qMax(number, *row.firstNumber()) : qMin(number, *row.lastNumber());
    const bool isAligned = row.type() == BitType || row.validateMultiple(start);
    const std::optional<int> valid = isAligned ? start : nextAligned(row, start, step);
    return isWithin(row, valid) ? valid : std::nullopt;
}

/// The address with another number; empty if the row does not accept it.
QString withNumber(const CommandFormatter &row, const QString &deviceAddress, std::optional<int> number)
{
    if (!number)
        return QString();
    const QString digits = inAddress(*number, row.base());
    const int width = deviceAddress.size() - row.withNumber(deviceAddress, QString()).size();
    const QString padded = digits.rightJustified(width, QLatin1Char('0'));
    QStringList forms = {digits, digits.toLower(), padded, padded.toLower()};
    // Some bit rows write words without the digits of their first bit.
    constexpr int bitDigits = 2;
    if (digits.size() > bitDigits)
        forms.append(digits.left(digits.size() - bitDigits));
    // For a script's bits it is only known that the number is replaced.
    const QString written = deviceAddress.mid(numberPosition(row, deviceAddress), width);
    const QString own = inAddress(row.getAddresRangePart(deviceAddress), row.base());
    const int place = written.lastIndexOf(own, -1, Qt::CaseInsensitive);
    if (row.type() == BitType && place >= 0)
        forms.append(QString(written).replace(place, own.size(), digits));
    for (const QString &form : qAsConst(forms)) {
        QString address = row.withNumber(deviceAddress, form);
        if (row.isDeviceAddressValid(address) && row.getAddresRangePart(address) == *number)
            return address;
    }
    return QString();
}

QStringList withNumbers(const CommandFormatter &row, const QString &deviceAddress,
                        const QList<std::optional<int>> &numbers)
{
    QStringList addresses;
    for (const std::optional<int> &number : numbers)
        addresses.append(withNumber(row, deviceAddress, number));
    addresses.removeAll(QString());
    return addresses;
}

NumberFinding notAligned(const CommandFormatter &row, const QString &deviceAddress, int number)
{
    const std::optional<int> below = nextAligned(row, number, -1);
    const std::optional<int> above = nextAligned(row, number, 1);
    AddressDiagnosis::NotAligned fault;
    fault.position = numberPosition(row, deviceAddress);
    fault.number = inAddress(number, row.base());
    if (below && above) {
        const int group = *above - *below;
        const int rest = (*below % group + group) % group;
        fault.group = inAddress(group, row.base());
        fault.remainder = rest == 0 ? QString() : inAddress(rest, row.base());
    }
    QList<std::optional<int>> numbers;
    for (const std::optional<int> &aligned : {below, above}) {
        if (!isWithin(row, aligned))
            continue;
        fault.nearest.append(inAddress(*aligned, row.base()));
        numbers.append(aligned);
    }
    if (numbers.size() == 2 && number - *below > *above - number)
        std::swap(numbers[0], numbers[1]);
    return {fault, withNumbers(row, deviceAddress, numbers)};
}

/// A script may count in another way than addresses are written, for example bits through a file of words: the last
/// address that the row accepts with other digits at the end.
std::optional<NumberFinding> aboveLastWritten(const CommandFormatter &row, const QString &deviceAddress)
{
    const int start = digitsAt(deviceAddress, deviceAddress.size(), 10).start;
    const QString front = deviceAddress.left(start);
    const auto isValid = [&](int number) { return row.isDeviceAddressValid(front + QString::number(number)); };
    const std::optional<int> written = readNumber(QStringView(deviceAddress).mid(start), 10);
    if (!row.isScripted() || row.base() != 10 || !written || !isValid(0))
        return std::nullopt;
    int good = 0;
    int refused = *written;
    while (refused - good > 1) {
        const int middle = good + (refused - good) / 2;
        (isValid(middle) ? good : refused) = middle;
    }
    const QString last = QString::number(good);
    return NumberFinding{AddressDiagnosis::AboveLast{start, QString::number(*written), last}, {front + last}};
}

enum class End { Lowest, Highest };

/// Finds the lowest or highest number that can stand at a place of a text.
class NumberSearch
{
public:
    /// The number follows `front`; `rest` follows the number.
    NumberSearch(const Automaton &automaton, QStringView front, QStringView rest, int radix)
        : m_automaton(automaton)
        , m_start(automaton.walk(Automaton::start, front))
        , m_rest(rest)
        , m_digits(radix == 16 ? QStringLiteral("0123456789aAbBcCdDeEfF") : QStringLiteral("0123456789"))
    {
    }

    /// Of at most `width` digits, without leading zeros if possible; empty for none.
    QString find(End end, int width)
    {
        m_failed.clear();
        for (int count = 1; count <= width; ++count) {
            const QString digits = found(m_start, end == End::Lowest ? count : width + 1 - count, end);
            if (!digits.isEmpty())
                return digits;
        }
        return QString();
    }

private:
    QString found(Automaton::State state, int count, End end)
    {
        const std::pair<Automaton::State, int> place(state, count);
        if (std::find(m_failed.begin(), m_failed.end(), place) != m_failed.end())
            return QString();
        for (int index = 0; index < m_digits.size(); ++index) {
            const QChar digit = m_digits.at(end == End::Lowest ? index : m_digits.size() - 1 - index);
            const Automaton::State next = m_automaton.next(state, digit.unicode());
            if (next == Automaton::dead)
                continue;
            if (count == 1 && m_automaton.accepted(m_automaton.walk(next, m_rest)) != 0)
                return QString(digit);
            const QString more = count == 1 ? QString() : found(next, count - 1, end);
            if (!more.isEmpty())
                return digit + more;
        }
        m_failed.push_back(place);
        return QString();
    }

    const Automaton &m_automaton;
    const Automaton::State m_start;
    const QStringView m_rest;
    const QString m_digits;
    /// States from which no number of so many digits leads to the end.
    std::vector<std::pair<Automaton::State, int>> m_failed;
};

/// A number that the pattern does not have at this place of an address, and the highest or lowest that it has.
struct SmallNumber
{
    QString written;
    QString limit;
    bool isTooHigh;
    QString offer;
};

std::optional<SmallNumber> smallNumber(const Pattern &pattern, const QString &address, TextPlace place, int radix)
{
    // Longer numbers are no typing errors of these small ones.
    constexpr int longest = 6;
    if (!pattern.automaton() || place.start <= 0 || place.size == 0 || place.size > longest)
        return std::nullopt;
    const QStringView rest = QStringView(address).mid(place.start + place.size);
    NumberSearch search(*pattern.automaton(), QStringView(address).left(place.start), rest, radix);
    const QString written = address.mid(place.start, place.size);
    const QString highest = search.find(End::Highest, place.size);
    const QString lowest = search.find(End::Lowest, longest);
    const std::optional<int> number = readNumber(written, radix);
    const bool isTooHigh = !highest.isEmpty() && number > readNumber(highest, radix);
    if (!number || (!isTooHigh && (lowest.isEmpty() || number >= readNumber(lowest, radix))))
        return std::nullopt;
    const QString limit = isTooHigh ? highest : lowest;
    return SmallNumber{withoutLeadingZeros(written).toUpper(), limit.toUpper(), isTooHigh,
                       address.left(place.start) + limit + rest.toString()};
}

/// True for a number at the end of an address, behind a separator.
bool isBitPlace(const QString &address, TextPlace place)
{
    return place.start > 0 && place.start + place.size == address.size() &&
           !address.at(place.start - 1).isLetterOrNumber();
}

} // namespace

qint64 distanceFromLimits(const CommandFormatter &row, const QString &deviceAddress)
{
    if (!row.firstNumber() || !row.lastNumber())
        return std::numeric_limits<qint64>::max();
    const qint64 number = row.getAddresRangePart(deviceAddress);
    return qMax<qint64>(0, qMax(number - *row.lastNumber(), *row.firstNumber() - number));
}

NumberFinding refusedNumber(const CommandFormatter &row, const QString &deviceAddress)
{
    const int number = row.getAddresRangePart(deviceAddress);
    const QString digits = inAddress(number, row.base());
    const int position = numberPosition(row, deviceAddress);
    if (!row.firstNumber() || !row.lastNumber())
        return {AddressDiagnosis::LimitsUnreadable{position, digits}, {}};
    const QString valid = withValidNumber(row, deviceAddress);
    const QStringList offers = valid.isEmpty() ? QStringList() : QStringList(valid);
    if (number > *row.lastNumber()) {
        const auto written = offers.isEmpty() ? aboveLastWritten(row, deviceAddress) : std::nullopt;
        return written ? *written : NumberFinding{AddressDiagnosis::AboveLast{position, digits, row.end()}, offers};
    }
    if (number < *row.firstNumber())
        return {AddressDiagnosis::BelowFirst{position, digits, row.start()}, offers};
    return notAligned(row, deviceAddress, number);
}

std::optional<NumberFinding> unreadNumber(const CommandFormatter &row, const QString &deviceAddress)
{
    if (row.getAddresRangePart(deviceAddress) != -1)
        return std::nullopt;
    const QString range = row.getRangeString(deviceAddress);
    const QString digits = row.type() == BitType ? row.rule().wordPart(range) : range;
    const QString plain = toAscii(deviceAddress);
    if (!digits.isEmpty() && plain != deviceAddress) {
        const auto different = std::mismatch(plain.begin(), plain.end(), deviceAddress.begin());
        const int position = static_cast<int>(different.first - plain.begin());
        AddressDiagnosis::UnexpectedCharacter fault;
        fault.position = position;
        fault.typingError = {AddressDiagnosis::Slip::NotAscii, position, deviceAddress.mid(position, 1),
                             plain.mid(position, 1)};
        return NumberFinding{fault, {plain}};
    }
    if (!areDigits(digits, row.base()) || readNumber(digits, row.base()))
        return std::nullopt;
    const AddressDiagnosis::NumberTooLong fault{numberPosition(row, deviceAddress),
                                                withoutLeadingZeros(digits).toUpper(), row.end()};
    const bool hasLimits = row.firstNumber() && row.lastNumber();
    return NumberFinding{fault, hasLimits ? withNumbers(row, deviceAddress, {nextValid(row, *row.lastNumber(), -1)})
                                          : QStringList()};
}

std::optional<NumberFinding> tooManyDigits(const CommandFormatter &row, const QString &deviceAddress, int reach)
{
    const TextPlace run = digitsAt(deviceAddress, reach, row.base());
    const int end = run.start + run.size;
    const QString shorter = deviceAddress.left(reach) + deviceAddress.mid(end);
    if (end == reach || !row.compiledPattern().matches(shorter) || !row.firstNumber() || !row.lastNumber())
        return std::nullopt;
    const int start = numberPosition(row, shorter);
    const bool isBitInside = row.type() == BitType && row.rule().isSplit() && row.rule().splitString().isEmpty();
    const QString digits = deviceAddress.mid(start, end - start - (isBitInside ? row.rule().minimumBitDigits() : 0));
    if (start < 0 || start >= reach || !areDigits(digits, row.base()))
        return std::nullopt;
    const std::optional<int> number = readNumber(digits, row.base());
    if (number && *number <= *row.lastNumber())
        return std::nullopt;
    const QString written = withoutLeadingZeros(digits).toUpper();
    const Reason reason = number ? Reason(AddressDiagnosis::AboveLast{start, written, row.end()})
                                 : Reason(AddressDiagnosis::NumberTooLong{start, written, row.end()});
    return NumberFinding{reason, withNumbers(row, shorter, {nextValid(row, *row.lastNumber(), -1)})};
}

std::optional<NumberFinding> bitBeyondWord(const CommandFormatter &row, const QString &deviceAddress, int reach)
{
    if (row.type() != BitType)
        return std::nullopt;
    const int radix = row.rule().isSplit() && row.rule().bitRadix() == 16 ? 16 : 10;
    const bool isWithoutSeparator = row.rule().isSplit() && row.rule().splitString().isEmpty();
    const int width = row.rule().minimumBitDigits();
    const TextPlace place = isWithoutSeparator ? TextPlace{deviceAddress.size() - width, width}
                                               : digitsAt(deviceAddress, qMin(reach, deviceAddress.size()), radix);
    if (place.start > reach || (!isWithoutSeparator && !isBitPlace(deviceAddress, place)))
        return std::nullopt;
    const auto bit = smallNumber(row.compiledPattern(), deviceAddress, place, radix);
    if (!bit || !bit->isTooHigh || !row.isDeviceAddressValid(bit->offer))
        return std::nullopt;
    return NumberFinding{AddressDiagnosis::BitBeyondWord{place.start, bit->written, bit->limit}, {bit->offer}};
}

std::optional<NumberFinding> familyNumber(const Pattern &pattern, const QString &deviceAddress, bool isBit)
{
    constexpr int radix = 10;
    const TextPlace place = digitsAt(deviceAddress, qMax(0, pattern.front(deviceAddress)), radix);
    const auto number = smallNumber(pattern, deviceAddress, place, radix);
    if (!number)
        return std::nullopt;
    if (isBit && number->isTooHigh && isBitPlace(deviceAddress, place))
        return NumberFinding{AddressDiagnosis::BitBeyondWord{place.start, number->written, number->limit},
                             {number->offer}};
    const AddressDiagnosis::FamilyNumber fault{place.start, number->written, number->limit, number->isTooHigh};
    return NumberFinding{fault, {number->offer}};
}

std::optional<RadixFinding> digitOutsideRadix(const CommandFormatter &row, const QString &deviceAddress, int reach)
{
    const int radix = row.base();
    if (radix < 2 || radix > 8 || reach >= deviceAddress.size())
        return std::nullopt;
    const QChar character = deviceAddress.at(reach);
    const QString highest = QString::number(radix - 1);
    if (!isDigit(character, 10) || isDigit(character, radix) ||
        !row.compiledPattern().canBeCompleted(deviceAddress.left(reach) + highest))
        return std::nullopt;
    RadixFinding finding = {{AddressDiagnosis::Slip::DigitOutsideRadix, reach, character, QString()}, {}};
    // "X18" is between X17 and X20.
    const TextPlace run = digitsAt(deviceAddress, reach, 10);
    const int end = run.start + run.size;
    const QString below = deviceAddress.left(reach) + highest.repeated(end - reach) + deviceAddress.mid(end);
    const int number = row.compiledPattern().matches(below) ? row.getAddresRangePart(below) : -1;
    if (number < 0 || number == std::numeric_limits<int>::max() || !row.firstNumber() || !row.lastNumber())
        finding.offers.append(below);
    else
        finding.offers = withNumbers(row, below, {nextValid(row, number, -1), nextValid(row, number + 1, 1)});
    return finding;
}

QString withValidNumber(const CommandFormatter &row, const QString &deviceAddress)
{
    const int number = row.getAddresRangePart(deviceAddress);
    if (number == -1)
        return unreadNumber(row, deviceAddress) ? QString() : deviceAddress;
    if (!row.firstNumber() || !row.lastNumber())
        return QString();
    if (row.isRangeValid(number))
        return deviceAddress;
    const bool isBelow = number < *row.firstNumber();
    const std::optional<int> nearest = nextValid(row, number, isBelow ? 1 : -1);
    return withNumber(row, deviceAddress, nearest ? nearest : nextValid(row, number, 1));
}

} // namespace label
