// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/characterslip_p.h"

namespace label {

namespace {

constexpr char separators[] = ".:/\\,";
constexpr char blanks[] = " \t\n\r";

bool isOneOf(QChar character, const char *set)
{
    return QLatin1String(set).contains(character);
}

constexpr ushort beyondAscii = 128;

/// The similar ASCII character; a null character if there is none.
QChar asciiForm(QChar character)
{
    if (character.unicode() < beyondAscii)
        return QChar();
    if (character.digitValue() >= 0)
        return QLatin1Char(static_cast<char>('0' + character.digitValue()));
    const QString plain = QString(character).normalized(QString::NormalizationForm_KC);
    return plain.size() == 1 && plain.at(0).unicode() < beyondAscii ? plain.at(0) : QChar();
}

void setSlip(AddressDiagnosis &diagnosis, AddressDiagnosis::Slip slip, int position, const QString &written,
             const QString &meant)
{
    diagnosis.slip = slip;
    diagnosis.position = position;
    diagnosis.written = written;
    diagnosis.meant = meant;
}

} // namespace

bool isSeparator(QChar character)
{
    return isOneOf(character, separators);
}

bool isBlank(QChar character)
{
    return isOneOf(character, blanks);
}

QString lookAlikes(QChar character)
{
    if (!asciiForm(character).isNull())
        return asciiForm(character);
    if (isOneOf(character, "OoQ"))
        return QStringLiteral("0");
    if (isOneOf(character, "lI|i"))
        return QStringLiteral("1");
    if (character == QLatin1Char('0'))
        return QStringLiteral("O");
    return character == QLatin1Char('1') ? QStringLiteral("I") : QString();
}

QString withoutBlanks(const QString &text)
{
    QString compact;
    for (const QChar character : text) {
        if (!isBlank(character))
            compact.append(character);
    }
    return compact;
}

QString withoutDigitLetters(const QString &deviceAddress)
{
    QString text = deviceAddress;
    for (int at = 0; at < text.size(); ++at) {
        const QChar character = text.at(at);
        const bool isBehindText = at > 0;
        const bool isBesideDigit =
            (isBehindText && text.at(at - 1).isDigit()) || (at + 1 < text.size() && text.at(at + 1).isDigit());
        const bool isBeforeSeparator = isBehindText && at + 1 < text.size() && isSeparator(text.at(at + 1));
        if (!isBesideDigit && !isBeforeSeparator)
            continue;
        if (isOneOf(character, "Oo"))
            text[at] = QLatin1Char('0');
        if (isOneOf(character, "lI"))
            text[at] = QLatin1Char('1');
    }
    return text;
}

QString toAscii(const QString &text)
{
    QString plain = text;
    for (QChar &character : plain) {
        if (!asciiForm(character).isNull())
            character = asciiForm(character);
    }
    return plain;
}

void nameSlip(const QString &deviceAddress, const QString &meant, AddressDiagnosis &diagnosis)
{
    using Slip = AddressDiagnosis::Slip;
    int at = 0;
    while (at < deviceAddress.size() && at < meant.size() && deviceAddress.at(at) == meant.at(at))
        ++at;
    const QString written = deviceAddress.mid(at, 1);
    const QString other = meant.mid(at, 1);
    if (deviceAddress.compare(meant, Qt::CaseInsensitive) == 0)
        return setSlip(diagnosis, Slip::LetterCase, at, written, other);
    if (withoutBlanks(deviceAddress) == meant)
        return setSlip(diagnosis, Slip::Blank, at, written, QString());
    if (other.isEmpty())
        return;
    if (isSeparator(other.at(0)) && deviceAddress.mid(at) == meant.mid(at + 1))
        return setSlip(diagnosis, Slip::MissingSeparator, at, QString(), other);
    if (written.isEmpty())
        return;
    // The first one determines the slip; more of its kind may follow.
    if (asciiForm(written.at(0)) == other.at(0) && !other.at(0).isNull())
        return setSlip(diagnosis, Slip::NotAscii, at, written, other);
    if (lookAlikes(written.at(0)).contains(other) && deviceAddress.size() == meant.size())
        return setSlip(diagnosis, other.at(0).isDigit() ? Slip::LetterForDigit : Slip::DigitForLetter, at, written,
                       other);
    if (isSeparator(other.at(0)) && !written.at(0).isLetterOrNumber() && deviceAddress.mid(at + 1) == meant.mid(at + 1))
        setSlip(diagnosis, Slip::WrongSeparator, at, written, other);
}

} // namespace label
