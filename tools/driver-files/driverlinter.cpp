// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "driverlinter.h"

#include "lintcontext.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>

#include <algorithm>

namespace {

LintFinding formFinding(const DriverFileError &error, const QString &driver)
{
    LintFinding finding;
    finding.id = QStringLiteral("form");
    finding.source = error.file;
    finding.line = error.line;
    finding.driver = driver;
    finding.what = error.text;
    finding.advice = QStringLiteral("correct the file's form");
    return finding;
}

/// Empty if there is none.
QString samplesOf(const QString &path, const QString &sampleFolder)
{
    const QFileInfo file(path);
    const QString name = file.completeBaseName();
    QStringList places;
    if (!sampleFolder.isEmpty())
        places.append(QDir(sampleFolder).filePath(name + QLatin1String(".tsv")));
    places.append(file.dir().filePath(QLatin1String("samples/") + name + QLatin1String(".tsv")));
    places.append(file.dir().filePath(name + QLatin1String(".samples.tsv")));
    for (const QString &place : qAsConst(places)) {
        if (QFileInfo(place).isFile())
            return place;
    }
    return QString();
}

QString placeOf(const DriverText &driver)
{
    return driver.nameLine > 0 ? QStringLiteral("%1:%2").arg(driver.source).arg(driver.nameLine) : driver.source;
}

void lintDriver(const DriverText &driver, const QList<DriverSample> &samples, QList<LintFinding> &findings)
{
    LintReport report(driver, findings);
    LintContext context(driver, samples, report);
    lintForm(context);
    if (!context.isRead())
        return;
    // The order in which a person corrects a row. Later checks skip rows with earlier errors.
    lintNumbers(context);
    lintScripts(context);
    lintRules(context);
    lintPatterns(context);
    lintRuns(context);
    lintBits(context);
    // Before the other checks add rows of families.
    lintSamples(context);
    lintOrder(context);
    lintReach(context);
}

/// First the findings of the whole driver, then row by row, then those of samples.
bool isBefore(const LintFinding &left, const LintFinding &right)
{
    const auto isOfSample = [](const LintFinding &finding) { return finding.id.startsWith(QLatin1String("sample-")); };
    if (isOfSample(left) != isOfSample(right))
        return isOfSample(right);
    return !isOfSample(left) && left.row < right.row;
}

/// Names that drivers must not share.
class NameBook
{
public:
    void enter(const DriverText &driver, QList<LintFinding> &findings)
    {
        LintReport report(driver, findings);
        const QString place = placeOf(driver);
        if (m_drivers.contains(driver.name))
            report.error("doubled-driver", QStringLiteral("driver"),
                         QStringLiteral("driver '%1' is already in %2").arg(driver.name, m_drivers.value(driver.name)),
                         QStringLiteral("give each driver its own name: of two only the last is read"),
                         driver.nameLine);
        else
            m_drivers.insert(driver.name, place);
        const QString table = driver.deviceTable.isEmpty() ? driver.stem + QLatin1String("_types") : driver.deviceTable;
        if (m_tables.contains(table) && m_tables.value(table) != driver.name)
            report.error(
                "doubled-table", QStringLiteral("device_table"),
                QStringLiteral("the table '%1' already belongs to the driver '%2'").arg(table, m_tables.value(table)),
                QStringLiteral("give the file, and so its tables, its own name"), driver.nameLine);
        else
            m_tables.insert(table, driver.name);
    }

private:
    QHash<QString, QString> m_drivers;
    QHash<QString, QString> m_tables;
};

} // namespace

QString LintFinding::toString() const
{
    const QString severityWord = isError() ? QStringLiteral("error") : QStringLiteral("warning");
    QString place = source;
    if (line > 0)
        place += QLatin1Char(':') + QString::number(line);
    else
        place += QStringLiteral(": driver '%1'").arg(driver);
    if (line <= 0 && row > 0)
        place += QStringLiteral(", row %1 '%2'").arg(QString::number(row), pattern);
    return QStringLiteral("%1: %2: %3; %4 [%5]").arg(place, severityWord, what, advice, id);
}

bool hasErrors(const QList<LintFinding> &findings)
{
    return std::any_of(findings.begin(), findings.end(), [](const LintFinding &finding) { return finding.isError(); });
}

void DriverLinter::add(const DriverText &driver, const QList<DriverSample> &samples)
{
    m_entries.append({driver, samples, {}, true});
}

void DriverLinter::addFile(const QString &path, const QString &sampleFolder)
{
    Entry entry;
    QList<DriverFileError> errors;
    entry.driver = readDriverFile(path, errors);
    const QString samples = samplesOf(path, sampleFolder);
    if (!samples.isEmpty())
        entry.samples = readDriverSamples(samples, errors);
    for (const DriverFileError &error : qAsConst(errors))
        entry.formFindings.append(formFinding(error, entry.driver.name));
    entry.isReadable = errors.isEmpty();
    m_entries.append(entry);
}

bool DriverLinter::addDatabase(const QString &path, const QStringList &names, QString &error,
                               const QString &sampleFolder)
{
    const QStringList known = driversInDatabase(path, error);
    if (!error.isEmpty())
        return false;
    for (const QString &name : names) {
        if (!known.contains(name)) {
            error = QStringLiteral("there is no driver \"%1\" in %2").arg(name, path);
            return false;
        }
    }
    for (int i = 0; i < known.size(); ++i) {
        if (!names.isEmpty() && !names.contains(known.at(i)))
            continue;
        const DriverText driver = readDatabaseDriver(path, known.at(i), error);
        if (!error.isEmpty())
            return false;
        // A custom label that was switched back to the default one has no tables.
        if (driver.generalTable.isEmpty() && driver.deviceTable.isEmpty())
            continue;
        addDatabaseDriver(driver, known.indexOf(known.at(i)) < i, sampleFolder);
    }
    return true;
}

void DriverLinter::addDatabaseDriver(const DriverText &driver, bool isDoubled, const QString &sampleFolder)
{
    Entry entry;
    entry.driver = driver;
    // Two drivers of one name give the same driver when read.
    entry.isReadable = !isDoubled;
    const QString samples = QDir(sampleFolder).filePath(driver.stem + QLatin1String(".tsv"));
    QList<DriverFileError> errors;
    if (!isDoubled && !sampleFolder.isEmpty() && QFileInfo(samples).isFile())
        entry.samples = readDriverSamples(samples, errors);
    for (const DriverFileError &error : qAsConst(errors))
        entry.formFindings.append(formFinding(error, driver.name));
    m_entries.append(entry);
}

QList<DriverText> DriverLinter::drivers() const
{
    QList<DriverText> drivers;
    for (const Entry &entry : m_entries) {
        if (entry.isReadable)
            drivers.append(entry.driver);
    }
    return drivers;
}

int DriverLinter::countSamples() const
{
    int count = 0;
    for (const Entry &entry : m_entries)
        count += entry.samples.size();
    return count;
}

int DriverLinter::countSamples(const QString &driver) const
{
    int count = 0;
    for (const Entry &entry : m_entries)
        count += entry.driver.name == driver ? entry.samples.size() : 0;
    return count;
}

QList<LintFinding> DriverLinter::findings() const
{
    QList<LintFinding> all;
    NameBook names;
    for (const Entry &entry : m_entries) {
        QList<LintFinding> findings = entry.formFindings;
        if (!entry.driver.name.isEmpty())
            names.enter(entry.driver, findings);
        if (entry.isReadable)
            lintDriver(entry.driver, entry.samples, findings);
        std::stable_sort(findings.begin(), findings.end(), isBefore);
        all.append(findings);
    }
    return all;
}
