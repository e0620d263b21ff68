// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "lintcontext.h"
#include "lintlanguage.h"

#include "zelmar_label/label_table/rowdescription_p.h"

#include <algorithm>

using namespace label;

namespace {

using Rows = std::vector<const LintRow *>;

QString nameOf(const LintContext &context, const LintRow &row)
{
    const int line = context.driver.rows.at(row.index).line;
    const QString place = line > 0 ? QStringLiteral("line %1").arg(line) : QStringLiteral("row %1").arg(row.index + 1);
    return QStringLiteral("%1 (%2)").arg(formatName(row.formatter), place);
}

/// The row that takes the address from `row`: the first of `earlier` that accepts it; null for none.
const LintRow *takerOf(const Rows &earlier, const QString &address)
{
    const auto taker = std::find_if(earlier.begin(), earlier.end(), [&address](const LintRow *one) {
        return one->formatter.isDeviceAddressValid(address);
    });
    return taker == earlier.end() ? nullptr : *taker;
}

/// True when both rows read the address as the same unit of the device, so that either may take it.
bool isReadAlike(const CommandFormatter &row, const CommandFormatter &other, const QString &address)
{
    return row.type() == other.type() && row.datasize() == other.datasize() && row.base() == other.base() &&
           row.ruleText() == other.ruleText() && row.prefixSymbol() == other.prefixSymbol() &&
           row.getAddresRangePart(address) == other.getAddresRangePart(address) &&
           row.getbitOffset(address) == other.getbitOffset(address);
}

/// Compares a row with the earlier rows of its class whose patterns share texts with its own.
class OrderCheck
{
public:
    OrderCheck(const LintContext &context, const LintRow &row, Rows earlier)
        : m_context(context)
        , m_row(row)
        , m_earlier(std::move(earlier))
    {
    }

    void run()
    {
        if (isShadowed())
            reportShadow();
        else
            checkOverlaps();
    }

private:
    bool isShadowed() const
    {
        const bool isOftenTaken =
            std::all_of(m_row.addresses.begin(), m_row.addresses.end(),
                        [this](const QString &address) { return takerOf(m_earlier, address) != nullptr; });
        return isOftenTaken && !textOutside(m_row, m_earlier);
    }

    void reportShadow()
    {
        const QString &address = m_row.addresses.last();
        const LintRow &taker = *takerOf(m_earlier, address);
        const bool takesAll = !textOutside(m_row, {&taker});
        m_context.report.rowError(
            m_row.index, "row-shadowed", "pattern",
            takesAll ? QStringLiteral("the row is never used: %2 accepts %1 and all its other addresses")
                           .arg(address, nameOf(m_context, taker))
                     : QStringLiteral("the row is never used: %2 accepts %1, and earlier rows all its other addresses")
                           .arg(address, nameOf(m_context, taker)),
            QStringLiteral("move the row before the rows that accept its addresses, or narrow their patterns"));
    }

    /// An address that `other` takes from the row and reads differently; empty if none is known.
    QString ambiguousAddress(const LintRow &other) const
    {
        constexpr int mostTexts = 100;
        const QStringList texts = sharedTexts(m_row, other, mostTexts);
        const auto found = std::find_if(texts.begin(), texts.end(), [&](const QString &text) {
            return m_row.formatter.isDeviceAddressValid(text) && takerOf(m_earlier, text) == &other &&
                   !isReadAlike(m_row.formatter, other.formatter, text);
        });
        return found == texts.end() ? QString() : *found;
    }

    /// A special case of a row stands beside it on purpose.
    void checkOverlaps()
    {
        for (const LintRow *const other : m_earlier) {
            if (m_context.report.isWrong(other->index) || isSpecialCase(m_row, *other) || isSpecialCase(*other, m_row))
                continue;
            const QString address = ambiguousAddress(*other);
            if (address.isEmpty())
                continue;
            m_context.report.rowWarning(
                m_row.index, "row-overlaps", "pattern",
                QStringLiteral("%1 and %2 both accept %3 and read it differently; %1 comes first and takes it")
                    .arg(nameOf(m_context, *other), nameOf(m_context, m_row), address),
                QStringLiteral("narrow the pattern or the limits of one of the rows, so that each address has one "
                               "meaning"));
            return;
        }
    }

    const LintContext &m_context;
    const LintRow &m_row;
    const Rows m_earlier;
};

} // namespace

void lintOrder(LintContext &context)
{
    for (const LintRow &row : context.rows) {
        if (context.report.isWrong(row.index) || row.addresses.isEmpty() || row.isTemplate)
            continue;
        Rows earlier;
        for (int index = 0; index < row.index; ++index) {
            const LintRow &other = context.rows.at(static_cast<std::size_t>(index));
            if (other.isBit() == row.isBit() && !other.isEndless && sharesTexts(row, other))
                earlier.push_back(&other);
        }
        if (!earlier.empty())
            OrderCheck(context, row, std::move(earlier)).run();
    }
}
