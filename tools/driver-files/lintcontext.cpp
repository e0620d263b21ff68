// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "lintcontext.h"

#include "lintaddresses.h"
#include "sqliteconnection.h"

#include "zelmar_label/address_grammar/radixnumber_p.h"
#include "zelmar_label/label_store/labelreader.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QElapsedTimer>
#include <QSqlDatabase>

#include <algorithm>

LintFinding LintReport::ofDriver(const char *id, const QString &what, const QString &advice) const
{
    LintFinding finding;
    finding.id = QLatin1String(id);
    finding.source = m_driver.source;
    finding.driver = m_driver.name;
    finding.what = what;
    finding.advice = advice;
    return finding;
}

LintFinding LintReport::ofRow(int index, const char *id, const char *column, const QString &what,
                              const QString &advice) const
{
    LintFinding finding = ofDriver(id, what, advice);
    const DriverRow &row = m_driver.rows.at(index);
    finding.line = row.line;
    finding.row = index + 1;
    finding.pattern = m_driver.field(row, QStringLiteral("pattern"));
    finding.description = m_driver.field(row, QStringLiteral("description"));
    finding.column = QLatin1String(column);
    return finding;
}

void LintReport::error(const char *id, const QString &column, const QString &what, const QString &advice, int line)
{
    LintFinding finding = ofDriver(id, what, advice);
    finding.line = line > 0 ? line : qMin(1, m_driver.nameLine);
    finding.column = column;
    m_findings.append(finding);
}

void LintReport::rowError(int index, const char *id, const char *column, const QString &what, const QString &advice)
{
    m_findings.append(ofRow(index, id, column, what, advice));
}

void LintReport::rowWarning(int index, const char *id, const char *column, const QString &what, const QString &advice)
{
    LintFinding finding = ofRow(index, id, column, what, advice);
    finding.severity = LintFinding::Severity::Warning;
    m_findings.append(finding);
}

void LintReport::sampleFault(int index, const char *id, const char *column, const DriverSample &sample,
                             const QString &what, const QString &advice)
{
    LintFinding finding = index < 0 ? ofDriver(id, what, advice) : ofRow(index, id, column, what, advice);
    finding.source = sample.file;
    finding.line = sample.line;
    finding.column = QLatin1String(column);
    m_findings.append(finding);
}

bool LintReport::isWrong(int index) const
{
    return std::any_of(m_findings.begin(), m_findings.end(), [this, index](const LintFinding &finding) {
        return finding.row == index + 1 && finding.isError() && finding.driver == m_driver.name;
    });
}

QString describedAddress(const label::CommandFormatter &row)
{
    const QString mark = QStringLiteral("e.g. ");
    const QString description = row.formatString();
    const int found = description.lastIndexOf(mark);
    QString example = found < 0 ? QString() : description.mid(found + mark.size()).section(QLatin1Char(' '), 0, 0);
    while (!example.isEmpty() && QStringLiteral(".,;)").contains(example.back()))
        example.chop(1);
    return example.isEmpty() ? row.prefixSymbol() + row.start() : example;
}

QString LintRow::symbolAddress(int number) const
{
    return formatter.prefixSymbol() + label::numberText(number, formatter.base());
}

LintContext::LintContext(const DriverText &text, const QList<DriverSample> &wanted, LintReport &findings)
    : driver(text)
    , samples(wanted)
    , report(findings)
{
    readLabel();
    if (!m_label)
        return;
    rows.reserve(static_cast<std::size_t>(driver.rows.size()));
    for (int i = 0; i < driver.rows.size(); ++i)
        makeRow(i);
}

LintContext::~LintContext() = default;

QString LintContext::field(int index, const char *column) const
{
    return driver.field(driver.rows.at(index), QLatin1String(column));
}

/// Read from a database, as programs do, so that the reader interprets the columns.
void LintContext::readLabel()
{
    const SqliteConnection connection(QStringLiteral(":memory:"), SqliteConnection::Mode::Write);
    DriverText bare = driver;
    bare.stem = QStringLiteral("examined");
    if (!fillDriverDatabase(connection.database(), {bare}, m_readError))
        return;
    m_label.reset(label::readLabel(connection.database(), driver.name, m_readError));
    if (m_label && m_label->deviceTypesTable().countFormatters() != driver.rows.size())
        m_label.reset();
}

void LintContext::makeRow(int index)
{
    const label::CommandFormatter &own = *m_label->deviceTypesTable().formatterAt(index);
    LintRow row;
    row.index = index;
    row.formatter = own;
    row.isTemplate = own.isFamilyTemplate();
    row.isScripted = label::ScriptHook(own.ruleText()).exists();
    row.first = own.firstNumber();
    row.last = own.lastNumber();
    if (row.isTemplate)
        row.isMember = becomeMember(row, driver.name);
    row.group = field(index, "address_group_index").toInt();
    QElapsedTimer timer;
    timer.start();
    row.formatter.getAddresRangePart(describedAddress(row.formatter));
    row.isEndless = timer.elapsed() >= label::ScriptHook::deadlineSeconds * qint64(1000);
    if (!row.isEndless && row.pattern().isValid())
        makeAddresses(row, samples);
    rows.push_back(std::move(row));
}

int LintContext::ownRow(int labelRow) const
{
    if (labelRow < driver.rows.size())
        return labelRow;
    const QString description = m_label->deviceTypesTable().formatstring(labelRow);
    for (const LintRow &row : rows) {
        if (row.isTemplate && row.formatter.formatString() == description)
            return row.index;
    }
    return -1;
}
