// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "lintcontext.h"

#include <QHash>

#include <algorithm>

namespace {

class NumberCheck
{
public:
    NumberCheck(const LintContext &context, const LintRow &row)
        : m_context(context)
        , m_row(row)
    {
    }

    void run()
    {
        checkLimit("start", m_row.formatter.start(), m_row.first.has_value());
        checkLimit("end", m_row.formatter.end(), m_row.last.has_value());
        if (m_row.first && m_row.last && *m_row.first > *m_row.last)
            error("limits-crossed", "start",
                  QStringLiteral("'start' %1 is above 'end' %2").arg(m_row.formatter.start(), m_row.formatter.end()),
                  QStringLiteral("give the first number as 'start' and the last one as 'end'; as it is, every number "
                                 "is refused"));
        else if (m_row.hasLimits()) {
            checkAlignment();
            checkReach("start", *m_row.first);
            checkReach("end", *m_row.last);
        }
        checkSizes();
    }

private:
    void error(const char *id, const char *column, const QString &what, const QString &advice)
    {
        m_context.report.rowError(m_row.index, id, column, what, advice);
    }

    void checkLimit(const char *column, const QString &text, bool isNumber)
    {
        const int base = m_row.formatter.base();
        if (isNumber || text.isEmpty() || (base != 8 && base != 10 && base != 16))
            return;
        const QString radix = base == 10  ? QStringLiteral("decimal")
                              : base == 8 ? QStringLiteral("octal")
                                          : QStringLiteral("hexadecimal");
        error("limit-not-number", column,
              QStringLiteral("'%1' is no %2 number: '%3'").arg(QLatin1String(column), radix, text),
              QStringLiteral("write it in the radix of the column 'base', not larger than 2147483647; as it is, every "
                             "number is refused"));
    }

    void checkAlignment()
    {
        if (m_row.isBit() || m_row.formatter.validateMultiple(*m_row.first))
            return;
        error("alignment-start", "start",
              QStringLiteral("'start' %1 is a number that the rule '%2' refuses")
                  .arg(m_row.formatter.start(), m_row.formatter.ruleText()),
              QStringLiteral("begin with an aligned number, or give the rule that fits ('m8' and 'm16' begin at 0, "
                             "'m8a1' and 'm16a1' at 1)"));
    }

    /// A limit that no address reaches is often a typing error: a digit missing in the pattern or extra in the limit.
    void checkReach(const char *column, int limit)
    {
        // Rows of word and bit always begin at 0, since runs compare the bit with the limits.
        const bool isSplit = m_row.isBit() && m_row.formatter.rule().isSplit();
        // "fam3" reads the first bit of a word as its number, so the last bit is never a number.
        const bool isWordNumber = isSplit && m_row.formatter.bitbase() < 0;
        if (isWordNumber || m_row.isScripted || m_row.isTemplate || m_row.addresses.isEmpty() ||
            (isSplit && limit == 0) || !m_row.formatter.isRangeValid(limit))
            return;
        const bool isReached =
            std::any_of(m_row.addresses.begin(), m_row.addresses.end(), [this, limit](const QString &address) {
                return m_row.formatter.getAddresRangePart(address) == limit;
            });
        if (!isReached)
            m_context.report.rowWarning(m_row.index, "limit-unreached", column,
                                        QStringLiteral("found no address with the number of '%1', %2")
                                            .arg(QLatin1String(column), m_context.field(m_row.index, column)),
                                        QStringLiteral("compare the limit with the digits that the pattern allows"));
    }

    /// Units of the row in the largest read. The driver's size counts its usual registers: it holds twice as many bytes
    /// as words.
    qint64 mostUnits() const
    {
        if (m_row.isBit())
            return m_context.driver.bitBlockSize.toInt();
        QHash<int, int> rowsOfSize;
        int usual = 0;
        for (const LintRow &row : m_context.rows) {
            const int size = static_cast<int>(row.formatter.datasize());
            if (!row.isBit() && ++rowsOfSize[size] > rowsOfSize.value(usual))
                usual = size;
        }
        const qint64 own = qMax<qint64>(1, static_cast<qint64>(m_row.formatter.datasize()));
        return m_context.driver.blockSize.toInt() * qMax<qint64>(1, usual / own);
    }

    void checkSizes()
    {
        bool isNumber = false;
        const int blocksize = m_context.field(m_row.index, "blocksize").toInt(&isNumber);
        if (isNumber && blocksize < 1)
            error("block-size", "blocksize",
                  QStringLiteral("'blocksize' is %1: at least one unit must fit into a block").arg(blocksize),
                  QStringLiteral("give the most units of one block, at least 1; with less no block can be read"));
        const qint64 most = mostUnits();
        if (most > 0 && blocksize > most)
            m_context.report.rowWarning(
                m_row.index, "block-above-limit", "blocksize",
                QStringLiteral("'blocksize' %1 is more than one read of the driver may hold, %2")
                    .arg(blocksize)
                    .arg(most),
                QStringLiteral("lower it, or raise '%1'")
                    .arg(m_row.isBit() ? QStringLiteral("bit_block_size") : QStringLiteral("block_size")));
        const int dataSize = m_context.field(m_row.index, "data_size").toInt(&isNumber);
        if (isNumber && dataSize < 1)
            error("data-size", "data_size", QStringLiteral("'data_size' is %1").arg(dataSize),
                  QStringLiteral("give the bytes of one unit, at least 1"));
    }

    const LintContext &m_context;
    const LintRow &m_row;
};

} // namespace

void lintNumbers(LintContext &context)
{
    for (const LintRow &row : context.rows)
        NumberCheck(context, row).run();
}
