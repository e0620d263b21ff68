// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/rowdescription_p.h"

#include "zelmar_label/address_grammar/commandformatter.h"
#include "zelmar_label/label_table/labeltype.h"

#include <algorithm>

namespace label {

bool isFamilyTemplate(const CommandFormatter &row)
{
    const QString pattern = row.pattern();
    return !pattern.isEmpty() && std::all_of(pattern.begin(), pattern.end(), [](QChar character) {
        return character.isLetterOrNumber() || character == QLatin1Char('_');
    });
}

QString formatName(const CommandFormatter &row)
{
    const QString name = shortName(row.formatString(), row.prefixSymbol(), row.getEditorUsedPrefixsymbol());
    return name.isEmpty() ? QStringLiteral("the format") : name;
}

QString shortName(const QString &description, const QString &symbol, const QString &editorSymbol)
{
    if (editorSymbol != symbol && !symbol.isEmpty())
        return symbol;
    const int formEnd = description.indexOf(QLatin1String(": "));
    constexpr int longestForm = 24;
    if (formEnd > 0 && formEnd <= longestForm && description.indexOf(QLatin1Char(' ')) > formEnd)
        return description.left(formEnd);
    return symbol;
}

QString exampleAddress(const CommandFormatter &row)
{
    const QString mark = QStringLiteral("e.g. ");
    const QString description = row.formatString();
    const int found = description.lastIndexOf(mark);
    QString example = found < 0 ? QString() : description.mid(found + mark.size()).section(QLatin1Char(' '), 0, 0);
    while (!example.isEmpty() && QStringLiteral(".,;)").contains(example.at(example.size() - 1)))
        example.chop(1);
    return example.isEmpty() ? row.prefixSymbol() + row.start() : example;
}

QString dataTypeWord(int type)
{
    switch (type) {
    case BitType:
        return QStringLiteral("bit");
    case ByteType:
        return QStringLiteral("byte");
    case WordType:
        return QStringLiteral("word");
    case DoubleWordType:
        return QStringLiteral("double word");
    case QuadWordType:
        return QStringLiteral("quad word");
    case ReservedType:
        return QStringLiteral("text");
    default:
        return QStringLiteral("type %1").arg(type);
    }
}

QString radixRemark(int radix)
{
    switch (radix) {
    case 10:
        return QString();
    case 8:
        return QStringLiteral(" (octal)");
    case 16:
        return QStringLiteral(" (hexadecimal)");
    default:
        return QStringLiteral(" (radix %1)").arg(radix);
    }
}

} // namespace label
