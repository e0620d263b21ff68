// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_DRIVERLINTER_H
#define ZELMAR_LABEL_DRIVERLINTER_H

#include "driverfile.h"
#include "driversamples.h"

#include <QList>
#include <QString>

/// One thing that is wrong with a driver.
struct LintFinding
{
    enum class Severity {
        Warning, ///< works, but hardly as it is meant
        Error,   ///< addresses are refused, misread, or cannot be reached
    };

    Severity severity = Severity::Error;
    /// What kind of fault it is: a short word that does not change.
    QString id;
    /// The driver file, sample file or database, and the line in it, from 1; 0 where there are no lines.
    QString source;
    int line = 0;
    QString driver;
    /// The row's place in the driver, from 1; 0 when it is the whole driver.
    int row = 0;
    QString pattern;
    QString description;
    /// The column or setting; empty when it is none in particular.
    QString column;
    /// What is wrong, and what to do, each a sentence without capital and full stop.
    QString what;
    QString advice;

    bool isError() const { return severity == Severity::Error; }
    /// "file:line: error: what; advice", with the driver and the row in place of the line where there are no lines.
    QString toString() const;
};

bool hasErrors(const QList<LintFinding> &findings);

/// Finds what is wrong with drivers, by asking the library itself what it makes of them. Scripts are those of the
/// folder "scripts" beside the program.
///
/// Writes to the debug log what the library writes; a script may print. docs/driver-authors-guide.md tells driver
/// authors of each finding.
class DriverLinter
{
public:
    /// Adds a driver. Drivers that are added together are also held against each other.
    void add(const DriverText &driver, const QList<DriverSample> &samples = {});

    /// Adds a driver file with its samples: `samples/NAME.tsv` or `NAME.samples.tsv` beside it, or `NAME.tsv` of
    /// `sampleFolder`. None is no fault. What is wrong with the form of the files becomes a finding, and a file with
    /// such a fault is not examined further.
    void addFile(const QString &path, const QString &sampleFolder = QString());

    /// Adds the drivers of a database, or only those with the names, with the samples that `sampleFolder` has under the
    /// names of their tables. False with a sentence in `error` on failure, also when there is no driver of a name.
    bool addDatabase(const QString &path, const QStringList &names, QString &error,
                     const QString &sampleFolder = QString());

    /// The drivers that have been added, without files whose form is wrong.
    QList<DriverText> drivers() const;
    int countSamples() const;
    /// Those of the driver with the name.
    int countSamples(const QString &driver) const;

    /// All findings, driver by driver in the order in which they were added, row by row.
    QList<LintFinding> findings() const;

private:
    void addDatabaseDriver(const DriverText &driver, bool isDoubled, const QString &sampleFolder);

    struct Entry
    {
        DriverText driver;
        QList<DriverSample> samples;
        QList<LintFinding> formFindings;
        bool isReadable = true;
    };

    QList<Entry> m_entries;
};

#endif
