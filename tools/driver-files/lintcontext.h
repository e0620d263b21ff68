// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_LINTCONTEXT_H
#define ZELMAR_LABEL_LINTCONTEXT_H

#include "driverlinter.h"

#include "zelmar_label/address_grammar/commandformatter.h"
#include "zelmar_label/address_grammar/pattern.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace label {
class LabelLoader;
}

/// The findings of one driver.
class LintReport
{
public:
    LintReport(const DriverText &driver, QList<LintFinding> &findings)
        : m_driver(driver)
        , m_findings(findings)
    {
    }

    /// For the whole driver; `line` 0 means the first line of the file.
    void error(const char *id, const QString &column, const QString &what, const QString &advice, int line = 0);
    /// For the row at `index`, from 0.
    void rowError(int index, const char *id, const char *column, const QString &what, const QString &advice);
    void rowWarning(int index, const char *id, const char *column, const QString &what, const QString &advice);
    /// For the row at `index`, or the whole driver if it is -1, from a sample.
    void sampleFault(int index, const char *id, const char *column, const DriverSample &sample, const QString &what,
                     const QString &advice);

    /// True if the row has an error.
    bool isWrong(int index) const;

private:
    LintFinding ofDriver(const char *id, const QString &what, const QString &advice) const;
    LintFinding ofRow(int index, const char *id, const char *column, const QString &what, const QString &advice) const;

    const DriverText &m_driver;
    QList<LintFinding> &m_findings;
};

/// The address behind "e.g." in the row's description, else the row's symbol with its first number.
QString describedAddress(const label::CommandFormatter &row);

/// One row under examination.
struct LintRow
{
    int index = 0;
    /// As the library reads it; for a family's template the row of one member.
    label::CommandFormatter formatter;
    /// The capture group of the number, from 1; any number when the column is wrong.
    int group = 0;
    bool isTemplate = false;
    /// False for a template that the driver's creator does not use.
    bool isMember = false;
    /// True if the rule names an existing script file.
    bool isScripted = false;
    /// True if that script does not end: the row is not queried again.
    bool isEndless = false;
    std::optional<int> first;
    std::optional<int> last;
    /// Texts that the pattern matches, with any number, and those of them that the row accepts. A few of each kind.
    QStringList matches;
    QStringList addresses;

    const label::Pattern &pattern() const { return formatter.compiledPattern(); }
    bool isBit() const { return formatter.type() == 0; }
    bool hasLimits() const { return first && last && *first <= *last; }
    QString symbolAddress(int number) const;
};

/// One driver under examination: its text, and its label in the library.
class LintContext
{
public:
    LintContext(const DriverText &driver, const QList<DriverSample> &samples, LintReport &report);
    ~LintContext();
    Q_DISABLE_COPY(LintContext)

    /// True if the library has a row for each row of the text.
    bool isRead() const { return m_label != nullptr; }
    QString readError() const { return m_readError; }

    QString field(int index, const char *column) const;

    const DriverText &driver;
    const QList<DriverSample> &samples;
    LintReport &report;
    std::vector<LintRow> rows;

    label::LabelLoader &label() const { return *m_label; }
    /// The row of the text for a row of the label. For a row of a family it is the template; -1 for none.
    int ownRow(int labelRow) const;

private:
    void readLabel();
    void makeRow(int index);

    std::unique_ptr<label::LabelLoader> m_label;
    QString m_readError;
};

/// \name The checks
///@{
/// Columns, values, names: checks that need no library row.
void lintForm(const LintContext &context);
void lintPatterns(LintContext &context);
void lintNumbers(LintContext &context);
void lintRules(LintContext &context);
/// Addresses that the library writes in a form that the pattern refuses.
void lintRuns(LintContext &context);
void lintBits(LintContext &context);
void lintScripts(LintContext &context);
/// Rows whose addresses an earlier row takes: all of them, or some that it reads in another way.
void lintOrder(LintContext &context);
/// Registers and families without a row.
void lintReach(LintContext &context);
void lintSamples(LintContext &context);
///@}

#endif
