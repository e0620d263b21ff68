// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "lintcontext.h"

#include <algorithm>

namespace {

/// The example in the description, which must be an address of the row; empty without one.
QString describedExample(const LintRow &row)
{
    if (!row.formatter.formatString().contains(QLatin1String("e.g. ")))
        return QString();
    const QString example = describedAddress(row.formatter);
    const bool holdsNumber =
        std::any_of(example.begin(), example.end(), [](QChar character) { return character.isDigit(); });
    return holdsNumber ? example : QString();
}

class PatternCheck
{
public:
    PatternCheck(const LintContext &context, const LintRow &row)
        : m_context(context)
        , m_row(row)
        , m_pattern(row.pattern())
    {
    }

    void run()
    {
        if (!m_pattern.isValid()) {
            error("pattern-invalid", "pattern",
                  QStringLiteral("the pattern does not compile: %1").arg(m_pattern.errorString()),
                  QStringLiteral("correct the regular expression; as it is, it matches nothing"));
            return;
        }
        // An unused template is reported elsewhere.
        if (m_row.isTemplate && !m_row.isMember)
            return;
        if (hasGroup()) {
            checkNumber();
            checkExample();
        }
    }

private:
    void error(const char *id, const char *column, const QString &what, const QString &advice)
    {
        m_context.report.rowError(m_row.index, id, column, what, advice);
    }

    bool hasGroup()
    {
        const int group = m_row.group;
        if (group < 1 || group > m_pattern.countGroups()) {
            error("group-missing", "address_group_index",
                  QStringLiteral("the pattern has no group %1; it has %2").arg(group).arg(m_pattern.countGroups()),
                  QStringLiteral("give the number of the group that holds the number of the address"));
            return false;
        }
        if (!m_pattern.isGroupOptional(group))
            return true;
        error("group-optional", "pattern",
              QStringLiteral("the pattern matches without group %1, and such an address has no number").arg(group),
              QStringLiteral("make the group a part of every address: no '?', '*' or '|' around it"));
        return false;
    }

    /// A number that is too large is read as none, and an address without a number is accepted.
    void checkNumber()
    {
        if (m_row.isTemplate || m_row.isScripted)
            return;
        const QString tooLong = QStringLiteral("777777777777");
        for (const QString &address : m_row.addresses) {
            const QString text = m_row.formatter.withNumber(address, tooLong);
            if (!m_row.formatter.isDeviceAddressValid(text))
                continue;
            m_context.report.rowWarning(
                m_row.index, "digits-unbounded", "pattern",
                QStringLiteral("%1 is accepted, because a number with so many digits cannot be read").arg(text),
                QStringLiteral("limit the significant digits, as in 0*\\d{1,4}"));
            return;
        }
    }

    void checkExample()
    {
        // A row with wrong limits refuses everything for that reason.
        if (!m_row.hasLimits())
            return;
        const QString example = describedExample(m_row);
        if (!example.isEmpty() && !m_row.isTemplate && !m_row.formatter.isDeviceAddressValid(example)) {
            error("example-refused", "pattern",
                  QStringLiteral("the row refuses %1, the example of its own description").arg(example),
                  QStringLiteral("correct the pattern, the limits or the example"));
            return;
        }
        if (m_row.addresses.isEmpty() && m_pattern.automaton())
            error("no-address", "pattern", QStringLiteral("found no address that the row accepts"),
                  QStringLiteral("compare the pattern with 'start' and 'end': they seem to have no number in common"));
    }

    const LintContext &m_context;
    const LintRow &m_row;
    const label::Pattern &m_pattern;
};

} // namespace

void lintPatterns(LintContext &context)
{
    for (const LintRow &row : context.rows) {
        if (!row.isEndless)
            PatternCheck(context, row).run();
    }
}
