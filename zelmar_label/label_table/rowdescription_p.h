// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ROWDESCRIPTION_P_H
#define ZELMAR_LABEL_ROWDESCRIPTION_P_H

#include <QString>

#include <vector>

namespace label {

class CommandFormatter;
struct FamilyTemplate;

/// The name of a row with these texts: the concrete symbol on a row of a dynamic family, else the form at the start of
/// the description ("Dn.b: bit of a register"), else the symbol, which may be empty.
QString shortName(const QString &description, const QString &symbol, const QString &editorSymbol);

/// As above; "the format" for a row without any name.
QString formatName(const CommandFormatter &row);

/// A shortest address of the row, with a valid number. For the template row of a family, one that a form of `families`
/// has. Without any, the row's symbol and first number.
QString exampleAddress(const CommandFormatter &row, const std::vector<FamilyTemplate> &families);

/// "bit", "byte", "word", "double word", "quad word", "text"; "type 7" for a type without a name.
QString dataTypeWord(int type);

/// " (octal)", " (hexadecimal)" or " (radix 2)", to write after numbers of this radix; empty for decimal.
QString radixRemark(int radix);

} // namespace label

#endif
