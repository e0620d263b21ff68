// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ROWDESCRIPTION_P_H
#define ZELMAR_LABEL_ROWDESCRIPTION_P_H

#include <QString>

namespace label {

class CommandFormatter;

/// True when the row is the template of a dynamic family: its pattern is a plain name and no expression.
bool isFamilyTemplate(const CommandFormatter &row);

/// What to call a row with these texts: the concrete symbol on a row of a dynamic family, else the form that the
/// description begins with ("Dn.b: bit of a register"), else the symbol, which may be empty.
QString shortName(const QString &description, const QString &symbol, const QString &editorSymbol);

/// As above; "the format" for a row without any name.
QString formatName(const CommandFormatter &row);

/// An address of the row's format: the one behind "e.g." in its description, else its symbol with its first number.
QString exampleAddress(const CommandFormatter &row);

/// "bit", "byte", "word", "double word", "quad word", "text"; "type 7" for a type without a name.
QString dataTypeWord(int type);

/// " (octal)", " (hexadecimal)" or " (radix 2)", to stand behind numbers of this radix; empty for decimal ones.
QString radixRemark(int radix);

} // namespace label

#endif
