// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/addressdiagnosis.h"
#include "zelmar_label/label_table/labeltype.h"

#include <QCoreApplication>

namespace label {

namespace {

using Slip = AddressDiagnosis::Slip;

/// The text of one diagnosis. Sentences are whole, because word order depends on the language.
class Words
{
    Q_DECLARE_TR_FUNCTIONS(AddressDiagnosis)

public:
    explicit Words(const AddressDiagnosis &diagnosis)
        : m_diagnosis(diagnosis)
        , m_row(diagnosis.row)
    {
    }

    QString sentence() const
    {
        const AddressDiagnosis::TypingError *const error = m_diagnosis.typingError();
        const QString fault =
            error ? slipSentence(*error) : std::visit([this](const auto &one) { return of(one); }, m_diagnosis.reason);
        if (!m_diagnosis.isUnchecked || m_diagnosis.kind() == AddressDiagnosis::Kind::FamilyName)
            return fault;
        return tr("%1, yet labels take it unchecked").arg(fault);
    }

private:
    QString of(const AddressDiagnosis::Accepted &) const { return QString(); }

    QString of(const AddressDiagnosis::Empty &) const { return tr("the address is empty"); }

    QString of(const AddressDiagnosis::UnknownFront &fault) const
    {
        const QString front = m_diagnosis.address.left(fault.position + 1);
        if (m_diagnosis.type == anyType)
            return tr("no format begins with \"%1\"").arg(front);
        return m_diagnosis.type == BitType ? tr("no bit format begins with \"%1\"").arg(front)
                                           : tr("no register format begins with \"%1\"").arg(front);
    }

    QString of(const AddressDiagnosis::UnknownFamilyMember &) const
    {
        const QString &address = m_diagnosis.address;
        return m_row.description.isEmpty()
                   ? tr("no format of the %1 family takes \"%2\"").arg(format(), address)
                   : tr("no format of the %1 family takes \"%2\"; one is %3").arg(format(), address, m_row.description);
    }

    QString of(const AddressDiagnosis::FamilyNumber &fault) const
    {
        return fault.isTooHigh
                   ? tr("%1 number %2 is too high; the last is %3").arg(format(), fault.number, fault.limit)
                   : tr("%1 number %2 is too low; the first is %3").arg(format(), fault.number, fault.limit);
    }

    QString of(const AddressDiagnosis::FamilyName &) const
    {
        return tr("\"%1\" is the name of a family of formats and no address; the family is %2")
            .arg(m_diagnosis.address, m_row.description);
    }

    QString of(const AddressDiagnosis::StationBeforeFamily &) const
    {
        return tr("%1 is new, and is recognised only without a station in front").arg(format());
    }

    QString of(const AddressDiagnosis::StationNotNumber &) const
    {
        return m_diagnosis.station.isEmpty() ? tr("the station number in front of \"-\" is missing")
                                             : tr("the station \"%1\" is no decimal number").arg(m_diagnosis.station);
    }

    QString of(const AddressDiagnosis::Incomplete &fault) const
    {
        if (fault.expected.isEmpty())
            return tr("%1 is longer; the address ends at position %2").arg(format(), counted(fault.position));
        return tr("%1 expects %2 at position %3, where the address ends")
            .arg(format(), expectation(fault.expected, false), counted(fault.position));
    }

    QString of(const AddressDiagnosis::UnexpectedCharacter &fault) const
    {
        const QString position = counted(fault.position);
        const QString character = m_diagnosis.address.mid(fault.position, 1);
        if (fault.expected.isEmpty() && !fault.mayEnd)
            return tr("%1 has no \"%2\" at position %3").arg(format(), character, position);
        return tr("%1 expects %2 at position %3, not \"%4\"")
            .arg(format(), expectation(fault.expected, fault.mayEnd), position, character);
    }

    QString of(const AddressDiagnosis::AboveLast &fault) const
    {
        return tr("number %1 is above %2's last, %3").arg(fault.number, format(), inRadix(fault.last));
    }

    QString of(const AddressDiagnosis::BelowFirst &fault) const
    {
        return tr("number %1 is below %2's first, %3").arg(fault.number, format(), inRadix(fault.first));
    }

    QString of(const AddressDiagnosis::NotAligned &fault) const
    {
        const QStringList &nearest = fault.nearest;
        if (fault.group.isEmpty())
            return tr("number %1 is not aligned as %2 demands").arg(fault.number, format());
        const QString multiple =
            inRadix(fault.remainder.isEmpty() ? fault.group : tr("%1 plus %2").arg(fault.group, fault.remainder));
        if (nearest.isEmpty())
            return tr("number %1 is not a multiple of %2").arg(fault.number, multiple);
        return nearest.size() == 1
                   ? tr("number %1 is not a multiple of %2; %3 is").arg(fault.number, multiple, nearest.at(0))
                   : tr("number %1 is not a multiple of %2; %3 and %4 are")
                         .arg(fault.number, multiple, nearest.at(0), nearest.at(1));
    }

    QString of(const AddressDiagnosis::NumberTooLong &fault) const
    {
        return tr("number %1 is too long; %2's last is %3").arg(fault.number, format(), inRadix(fault.last));
    }

    QString of(const AddressDiagnosis::LimitsUnreadable &) const
    {
        return tr("the limits of %1 in the driver database, \"%2\" and \"%3\", are no numbers of its radix")
            .arg(format(), m_row.first, m_row.last);
    }

    QString of(const AddressDiagnosis::NumberRefused &fault) const
    {
        return tr("%1 has no number %2").arg(format(), fault.number);
    }

    QString of(const AddressDiagnosis::BitBeyondWord &fault) const
    {
        return tr("bit %1 is beyond the last bit of %2, %3").arg(fault.bit, format(), fault.last);
    }

    QString of(const AddressDiagnosis::NoBits &fault) const
    {
        if (m_row.type == BitType)
            return tr("%1 is a bit itself; the address ends before position %2")
                .arg(m_diagnosis.address.left(fault.position), counted(fault.position));
        return tr("the bits of %1 cannot be addressed; the address ends before position %2")
            .arg(format(), counted(fault.position));
    }

    QString of(const AddressDiagnosis::WrongType &) const
    {
        const QString &address = m_diagnosis.address;
        switch (m_row.type) {
        case BitType:
            return tr("%1 is a bit, not a register").arg(address);
        case ByteType:
            return tr("%1 is a byte, not a bit").arg(address);
        case WordType:
            return tr("%1 is a word, not a bit").arg(address);
        case DoubleWordType:
            return tr("%1 is a double word, not a bit").arg(address);
        case QuadWordType:
            return tr("%1 is a quad word, not a bit").arg(address);
        case ReservedType:
            return tr("%1 is a text, not a bit").arg(address);
        default:
            return tr("%1 is a register, not a bit").arg(address);
        }
    }

    QString slipSentence(const AddressDiagnosis::TypingError &error) const
    {
        const QString &written = error.written;
        const QString &meant = error.meant;
        const QString position = counted(error.position);
        switch (error.slip) {
        case Slip::LetterCase:
            return tr("\"%1\" at position %2 should be \"%3\": letter case counts").arg(written, position, meant);
        case Slip::Blank:
            return tr("there is a blank at position %1").arg(position);
        case Slip::LetterForDigit:
            return tr("the letter \"%1\" at position %2 should be the digit %3").arg(written, position, meant);
        case Slip::DigitForLetter:
            return tr("the digit %1 at position %2 should be the letter \"%3\"").arg(written, position, meant);
        case Slip::NotAscii:
            return tr("\"%1\" at position %2 only looks like \"%3\"").arg(written, position, meant);
        case Slip::DigitOutsideRadix:
            return m_row.radix == 8
                       ? tr("%1 at position %2 is no octal digit; the numbers of %3 are octal")
                             .arg(written, position, format())
                       : tr("%1 at position %2 is no digit of radix %4, in which the numbers of %3 are written")
                             .arg(written, position, format(), QString::number(m_row.radix));
        case Slip::MissingSeparator:
            return tr("\"%1\" is missing at position %2").arg(meant, position);
        case Slip::WrongSeparator:
            return tr("\"%1\" at position %2 should be \"%3\"").arg(written, position, meant);
        case Slip::None:
            break;
        }
        return QString();
    }

    QString format() const { return m_row.format.isEmpty() ? tr("the format") : m_row.format; }

    /// A position as users count it.
    static QString counted(int position) { return QString::number(position + 1); }

    QString inRadix(const QString &number) const
    {
        switch (m_row.radix) {
        case 10:
            return number;
        case 8:
            return tr("%1 (octal)").arg(number);
        case 16:
            return tr("%1 (hexadecimal)").arg(number);
        default:
            return tr("%1 (radix %2)").arg(number, QString::number(m_row.radix));
        }
    }

    static QString expectation(QString characters, bool mayEnd)
    {
        constexpr int almostAll = 70;
        constexpr int mostNamed = 8;
        QStringList parts;
        if (characters.size() > almostAll) {
            parts.append(tr("any character"));
        } else {
            parts = takeDigits(characters);
            if (characters.size() > mostNamed) {
                parts.append(tr("one of \"%1\"").arg(characters));
            } else {
                for (const QChar character : qAsConst(characters))
                    parts.append(tr("\"%1\"").arg(character));
            }
        }
        if (parts.isEmpty() || mayEnd)
            parts.append(tr("the end of the address"));
        return alternatives(parts);
    }

    /// Removes "0" to "9" and the like from `characters` and names them.
    static QStringList takeDigits(QString &characters)
    {
        const auto take = [&characters](const QString &set) {
            for (const QChar character : set) {
                if (!characters.contains(character))
                    return false;
            }
            for (const QChar character : set)
                characters.remove(character);
            return true;
        };
        if (take(QStringLiteral("0123456789ABCDEFabcdef")) || take(QStringLiteral("0123456789ABCDEF")))
            return {tr("a hexadecimal digit")};
        const QString digits = QStringLiteral("0123456789");
        if (take(digits))
            return {tr("a digit")};
        constexpr int fewest = 3;
        for (int count = digits.size() - 1; count >= fewest; --count) {
            for (int first = 0; first + count <= digits.size(); ++first) {
                if (take(digits.mid(first, count)))
                    return {tr("a digit from %1 to %2").arg(digits.at(first), digits.at(first + count - 1))};
            }
        }
        return {};
    }

    static QString alternatives(const QStringList &parts)
    {
        QString list = parts.constFirst();
        for (int index = 1; index < parts.size() - 1; ++index)
            list = tr("%1, %2", "all but the last of a list of alternatives").arg(list, parts.at(index));
        return parts.size() < 2 ? list : tr("%1 or %2", "the last of a list of alternatives").arg(list, parts.last());
    }

    const AddressDiagnosis &m_diagnosis;
    const AddressDiagnosis::RowFacts &m_row;
};

} // namespace

QString diagnosisSentence(const AddressDiagnosis &diagnosis)
{
    return diagnosis.kind() == AddressDiagnosis::Kind::Accepted ? QString() : Words(diagnosis).sentence();
}

} // namespace label
