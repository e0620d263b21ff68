// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_DRIVERLINTER_H
#define ZELMAR_LABEL_DRIVERLINTER_H

#include "driverfile.h"
#include "driversamples.h"

#include <QList>
#include <QString>

/// One error or warning about a driver.
struct LintFinding
{
    enum class Severity {
        Warning, ///< works, but is usually a mistake
        Error,   ///< addresses are refused, misread, or never found
    };

    Severity severity = Severity::Error;
    /// The kind of fault: a fixed short word.
    QString id;
    /// The driver file, sample file or database, and the line in it, from 1; 0 if there are no lines.
    QString source;
    int line = 0;
    QString driver;
    /// The row's number in the driver, from 1; 0 for the whole driver.
    int row = 0;
    QString pattern;
    QString description;
    /// The column or setting; may be empty.
    QString column;
    /// The problem and the advice, each a sentence without capital and full stop.
    QString what;
    QString advice;

    bool isError() const { return severity == Severity::Error; }
    /// "file:line: error: what; advice", with the driver and the row in place of a missing line.
    QString toString() const;
};

bool hasErrors(const QList<LintFinding> &findings);

/// Finds errors in drivers with the library itself. Scripts are read from the folder "scripts" beside the program.
///
/// The library and scripts may write to the debug log. docs/driver-authors-guide.md describes each finding for driver
/// authors.
class DriverLinter
{
public:
    /// Adds a driver. Drivers that are added together are also compared with each other.
    void add(const DriverText &driver, const QList<DriverSample> &samples = {});

    /// Adds a driver file with its samples: `samples/NAME.tsv` or `NAME.samples.tsv` beside it, or `NAME.tsv` of
    /// `sampleFolder`. Samples are optional. An error in the form of the files becomes a finding, and such a file is
    /// not examined further.
    void addFile(const QString &path, const QString &sampleFolder = QString());

    /// Adds the drivers of a database, or only those with the names. Their samples are files in `sampleFolder` with the
    /// names of their tables. False with a sentence in `error` on failure, also if there is no driver of a name.
    bool addDatabase(const QString &path, const QStringList &names, QString &error,
                     const QString &sampleFolder = QString());

    /// The added drivers, without files that have an invalid form.
    QList<DriverText> drivers() const;
    int countSamples() const;
    /// The drivers with this name.
    int countSamples(const QString &driver) const;

    /// All findings, by driver in the order of addition, then by row.
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
