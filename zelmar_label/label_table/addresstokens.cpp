// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/addressrepair_p.h"

#include "zelmar_label/address_grammar/commandformatter.h"
#include "zelmar_label/label_table/rowdescription_p.h"

#include <QStringList>

namespace label {

namespace {

enum class Token { Digits, Letters, Other };

Token tokenOf(QChar character)
{
    return character.isDigit() ? Token::Digits : character.isLetter() ? Token::Letters : Token::Other;
}

/// Numbers, words and single other characters.
QStringList tokens(const QString &text)
{
    QStringList parts;
    for (int at = 0; at < text.size();) {
        const Token token = tokenOf(text.at(at));
        int end = at + 1;
        while (token != Token::Other && end < text.size() && tokenOf(text.at(end)) == token)
            ++end;
        parts.append(text.mid(at, end - at));
        at = end;
    }
    return parts;
}

bool isNumber(const QString &token)
{
    return !token.isEmpty() && token.at(0).isDigit();
}

bool isWord(const QString &token)
{
    return !token.isEmpty() && token.at(0).isLetter();
}

} // namespace

Repair withLastWord(const CommandFormatter &row, const QString &deviceAddress)
{
    const QStringList written = tokens(deviceAddress);
    const QStringList example = tokens(exampleAddress(row));
    const int last = written.size() - 1;
    if (last < 1 || last >= example.size() || !isWord(written.at(last)) || !isWord(example.at(last)))
        return {QString(), 0};
    const QString meant = written.mid(0, last).join(QString()) + example.mid(last).join(QString());
    return row.isDeviceAddressValid(meant) ? Repair{meant, costOfWrongCharacter} : Repair{QString(), 0};
}

QString completed(const CommandFormatter &row, const QString &deviceAddress)
{
    const QStringList written = tokens(deviceAddress);
    const QStringList example = tokens(exampleAddress(row));
    for (int known : {written.size(), written.size() - 1}) {
        if (known < 0 || known > example.size())
            continue;
        QString candidate = written.mid(0, known).join(QString()) + example.mid(known).join(QString());
        if (candidate.startsWith(deviceAddress) && row.isDeviceAddressValid(candidate))
            return candidate;
    }
    return QString();
}

QString withNumbersOf(const QString &deviceAddress, const QString &example)
{
    QStringList numbers;
    const QStringList written = tokens(deviceAddress);
    for (const QString &token : written) {
        if (isNumber(token))
            numbers.append(token);
    }
    QString filled;
    const QStringList parts = tokens(example);
    for (const QString &part : parts)
        filled += isNumber(part) && !numbers.isEmpty() ? numbers.takeFirst() : part;
    return numbers.isEmpty() ? filled : QString();
}

} // namespace label
