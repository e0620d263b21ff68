// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/rowdescription_p.h"

#include "zelmar_label/address_grammar/commandformatter.h"
#include "zelmar_label/label_table/addressfamily.h"
#include "zelmar_label/label_table/labelloader.h"
#include "zelmar_label/label_table/labeltype.h"
#include "zelmar_label/label_table/numberfault_p.h"

namespace label {

namespace {

/// Shortest texts of a pattern that begin with `front`, the shortest first.
std::vector<NearText> shortestTexts(const Pattern &pattern, const QString &front)
{
    constexpr int longestEnd = 40;
    constexpr int most = 8;
    if (!pattern.automaton())
        return {};
    std::vector<PositionEdits> edits(static_cast<std::size_t>(front.size()) + 1);
    edits.back().missingCost = 1;
    edits.back().moreMissingCost = 1;
    return pattern.automaton()->near(front, edits, {longestEnd, longestEnd, most});
}

/// A shortest address with which a form uses the template row.
QString exampleOfFamily(const CommandFormatter &row, const std::vector<FamilyTemplate> &families)
{
    constexpr int most = 64;
    for (const FamilyTemplate &family : families) {
        const Pattern &pattern = family.form->pattern;
        const QStringList samples =
            family.form->mayHaveTemplate(row.pattern()) ? pattern.automaton()->samples(most) : QStringList();
        for (const QString &sample : samples) {
            const TextPlace element = pattern.countGroups() > 1 ? pattern.group(2, sample) : TextPlace();
            if (family.form->isTemplate(QStringView(sample).mid(qMax(0, element.start), element.size), row.pattern()))
                return sample;
        }
    }
    return row.prefixSymbol() + row.start();
}

} // namespace

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

QString exampleAddress(const CommandFormatter &row, const std::vector<FamilyTemplate> &families)
{
    if (row.isFamilyTemplate())
        return exampleOfFamily(row, families);
    for (const QString &front : {row.prefixSymbol(), QString()}) {
        for (const NearText &near : shortestTexts(row.compiledPattern(), front)) {
            const QString valid = withValidNumber(row, near.text);
            if (!valid.isEmpty())
                return valid;
        }
    }
    return row.prefixSymbol() + row.start();
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
