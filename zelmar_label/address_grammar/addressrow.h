// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ADDRESSROW_H
#define ZELMAR_LABEL_ADDRESSROW_H

#include "zelmar_label/address_grammar/multiplerule.h"
#include "zelmar_label/address_grammar/pattern.h"
#include "zelmar_label/address_grammar/rangereader_p.h"

#include <QString>
#include <QStringView>

#include <memory>
#include <optional>

namespace label {

/// The columns of a row of a device table, and the symbol that an editor shows on a row of a dynamic family.
struct AddressColumns
{
    QString pattern;
    int type = 0;
    int addressGroupIndex = 0;
    QString description;
    QString prefixSymbol;
    QString start;
    QString end;
    unsigned long long dataSize = 0;
    QString multipleRule;
    QString catchTable;
    int base = 0;
    int blocksize = 0;
    QString continueRule = QStringLiteral("N");
    QString editorPrefixSymbol;
};

/// A row, compiled once: the columns and all that is read of them. Immutable; formatters and tables share it, and any
/// number of threads may use it. It knows nothing of scripts except where the file of one would be.
class AddressRow
{
public:
    /// No pattern, no rule, no limits; its continue rule is "N".
    AddressRow();

    AddressRow(AddressColumns columns, QString scriptPath);

    /// The row of a member of a dynamic family: `columns` are those of `model` with another pattern and other symbols.
    AddressRow(AddressColumns columns, const AddressRow &model);

    /// The number that the rule reads in a range string; -1 when there is none that fits an `int`.
    int number(QStringView range) const;

    /// True when the limits are known and the number is within them, and aligned on a register row.
    bool isValid(int number) const { return first && last && reader.isValid(number); }

    /// The bit that the rule reads in the range string of a bit row; -1 when there is none.
    int bit(QStringView range) const;

    /// True for a bit row.
    bool isBit() const { return columns.type == 0; }

    const AddressColumns columns;
    const Pattern pattern;
    const MultipleRule rule;
    /// The limits; nothing for one that is no number.
    const std::optional<int> first;
    const std::optional<int> last;
    const QString scriptPath;
    /// Reads most range strings faster than the rule.
    const RangeReader reader;
};

} // namespace label

#endif
