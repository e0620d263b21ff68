// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/addressdiagnosis.h"
#include "zelmar_label/label_table/labeltype.h"

#include <QCoreApplication>

namespace label {

namespace {

using Kind = AddressDiagnosis::Kind;
using Slip = AddressDiagnosis::Slip;

/// The text of one diagnosis. Sentences are whole, because word order depends on the language.
class Words
{
    Q_DECLARE_TR_FUNCTIONS(AddressDiagnosis)

public:
    explicit Words(const AddressDiagnosis &diagnosis)
        : m_diagnosis(diagnosis)
    {
    }

    QString sentence() const
    {
        QString fault = m_diagnosis.slip == Slip::None ? faultSentence() : slipSentence();
        if (!m_diagnosis.isUnchecked || m_diagnosis.kind == Kind::FamilyName)
            return fault;
        return tr("%1, yet labels take it unchecked").arg(fault);
    }

private:
    QString faultSentence() const
    {
        switch (m_diagnosis.kind) {
        case Kind::Accepted:
            return QString();
        case Kind::Empty:
            return tr("the address is empty");
        case Kind::UnknownFront:
        case Kind::Incomplete:
        case Kind::UnexpectedCharacter:
            return textSentence();
        case Kind::UnknownFamilyMember:
        case Kind::FamilyName:
        case Kind::StationBeforeFamily:
            return familySentence();
        case Kind::StationNotNumber:
            return m_diagnosis.station.isEmpty()
                       ? tr("the station number in front of \"-\" is missing")
                       : tr("the station \"%1\" is no decimal number").arg(m_diagnosis.station);
        case Kind::BitBeyondWord:
            return tr("bit %1 is beyond the last bit of %2, %3").arg(m_diagnosis.number, format(), m_diagnosis.limit);
        case Kind::NoBits:
            if (m_diagnosis.rowType == BitType)
                return tr("%1 is a bit itself; the address ends before position %2")
                    .arg(m_diagnosis.address.left(m_diagnosis.position), position());
            return tr("the bits of %1 cannot be addressed; the address ends before position %2")
                .arg(format(), position());
        case Kind::WrongType:
            return wrongTypeSentence();
        default:
            return numberSentence();
        }
    }

    QString textSentence() const
    {
        if (m_diagnosis.kind == Kind::Incomplete)
            return tr("%1 expects %2 at position %3, where the address ends").arg(format(), expectation(), position());
        if (m_diagnosis.kind == Kind::UnexpectedCharacter)
            return tr("%1 expects %2 at position %3, not \"%4\"")
                .arg(format(), expectation(), position(), m_diagnosis.address.mid(m_diagnosis.position, 1));
        const QString front = m_diagnosis.address.left(m_diagnosis.position + 1);
        if (m_diagnosis.type == anyType)
            return tr("no format begins with \"%1\"").arg(front);
        return m_diagnosis.type == BitType ? tr("no bit format begins with \"%1\"").arg(front)
                                           : tr("no register format begins with \"%1\"").arg(front);
    }

    QString slipSentence() const
    {
        const QString &written = m_diagnosis.written;
        const QString &meant = m_diagnosis.meant;
        switch (m_diagnosis.slip) {
        case Slip::LetterCase:
            return tr("\"%1\" at position %2 should be \"%3\": letter case counts").arg(written, position(), meant);
        case Slip::Blank:
            return tr("there is a blank at position %1").arg(position());
        case Slip::LetterForDigit:
            return tr("the letter \"%1\" at position %2 should be the digit %3").arg(written, position(), meant);
        case Slip::DigitForLetter:
            return tr("the digit %1 at position %2 should be the letter \"%3\"").arg(written, position(), meant);
        case Slip::NotAscii:
            return tr("\"%1\" at position %2 only looks like \"%3\"").arg(written, position(), meant);
        case Slip::DigitOutsideRadix:
            return m_diagnosis.radix == 8
                       ? tr("%1 at position %2 is no octal digit; the numbers of %3 are octal")
                             .arg(written, position(), format())
                       : tr("%1 at position %2 is no digit of radix %4, in which the numbers of %3 are written")
                             .arg(written, position(), format(), QString::number(m_diagnosis.radix));
        case Slip::MissingSeparator:
            return tr("\"%1\" is missing at position %2").arg(meant, position());
        case Slip::WrongSeparator:
            return tr("\"%1\" at position %2 should be \"%3\"").arg(written, position(), meant);
        case Slip::None:
            break;
        }
        return QString();
    }

    QString numberSentence() const
    {
        switch (m_diagnosis.kind) {
        case Kind::AboveLast:
            return tr("number %1 is above %2's last, %3").arg(m_diagnosis.number, format(), inRadix(m_diagnosis.limit));
        case Kind::BelowFirst:
            return tr("number %1 is below %2's first, %3")
                .arg(m_diagnosis.number, format(), inRadix(m_diagnosis.limit));
        case Kind::NumberTooLong:
            return tr("number %1 is too long; %2's last is %3")
                .arg(m_diagnosis.number, format(), inRadix(m_diagnosis.limit));
        case Kind::LimitsUnreadable:
            return tr("the limits of %1 in the driver database, \"%2\" and \"%3\", are no numbers of its radix")
                .arg(format(), m_diagnosis.first, m_diagnosis.last);
        case Kind::NumberRefused:
            return tr("%1 has no number %2").arg(format(), m_diagnosis.number);
        default:
            return alignmentSentence();
        }
    }

    QString alignmentSentence() const
    {
        const QString &number = m_diagnosis.number;
        const QStringList &nearest = m_diagnosis.nearest;
        if (m_diagnosis.limit.isEmpty())
            return tr("number %1 is not aligned as %2 demands").arg(number, format());
        const QString multiple =
            inRadix(m_diagnosis.remainder.isEmpty() ? m_diagnosis.limit
                                                    : tr("%1 plus %2").arg(m_diagnosis.limit, m_diagnosis.remainder));
        if (nearest.isEmpty())
            return tr("number %1 is not a multiple of %2").arg(number, multiple);
        return nearest.size() == 1 ? tr("number %1 is not a multiple of %2; %3 is").arg(number, multiple, nearest.at(0))
                                   : tr("number %1 is not a multiple of %2; %3 and %4 are")
                                         .arg(number, multiple, nearest.at(0), nearest.at(1));
    }

    QString familySentence() const
    {
        const QString &address = m_diagnosis.address;
        if (m_diagnosis.kind == Kind::FamilyName)
            return tr("\"%1\" is the name of a family of formats and no address; the family is %2")
                .arg(address, m_diagnosis.description);
        if (m_diagnosis.kind == Kind::StationBeforeFamily)
            return tr("%1 is new, and is recognised only without a station in front").arg(format());
        if (m_diagnosis.limit.isEmpty())
            return m_diagnosis.description.isEmpty()
                       ? tr("no format of the %1 family takes \"%2\"").arg(format(), address)
                       : tr("no format of the %1 family takes \"%2\"; one is %3")
                             .arg(format(), address, m_diagnosis.description);
        return m_diagnosis.number.toDouble() > m_diagnosis.limit.toDouble()
                   ? tr("%1 number %2 is too high; the last is %3").arg(format(), m_diagnosis.number, m_diagnosis.limit)
                   : tr("%1 number %2 is too low; the first is %3")
                         .arg(format(), m_diagnosis.number, m_diagnosis.limit);
    }

    QString wrongTypeSentence() const
    {
        const QString &address = m_diagnosis.address;
        switch (m_diagnosis.rowType) {
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

    QString format() const { return m_diagnosis.format.isEmpty() ? tr("the format") : m_diagnosis.format; }

    QString position() const { return QString::number(m_diagnosis.position + 1); }

    QString inRadix(const QString &number) const
    {
        switch (m_diagnosis.radix) {
        case 10:
            return number;
        case 8:
            return tr("%1 (octal)").arg(number);
        case 16:
            return tr("%1 (hexadecimal)").arg(number);
        default:
            return tr("%1 (radix %2)").arg(number, QString::number(m_diagnosis.radix));
        }
    }

    QString expectation() const
    {
        constexpr int almostAll = 70;
        constexpr int mostNamed = 8;
        QString characters = m_diagnosis.expected;
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
        if (parts.isEmpty() || m_diagnosis.mayEnd)
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
};

} // namespace

QString diagnosisSentence(const AddressDiagnosis &diagnosis)
{
    return diagnosis.kind == Kind::Accepted ? QString() : Words(diagnosis).sentence();
}

} // namespace label
