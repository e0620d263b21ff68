// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_LINTFIXTURES_H
#define ZELMAR_LABEL_TESTS_LINTFIXTURES_H

#include "support/shippedfiles.h"
#include "tools/driver-files/driverlinter.h"

#include <QDir>

/// The shipped driver files, by path.
inline QStringList shippedDriverFiles()
{
    const QDir folder(QStringLiteral(ZELMAR_LABEL_DRIVERS_SOURCE));
    QStringList files;
    for (const QString &name : folder.entryList({QStringLiteral("*.tsv")}, QDir::Files, QDir::Name))
        files.append(folder.filePath(name));
    return files;
}

/// One finding per line, for test messages.
inline QByteArray told(const QList<LintFinding> &findings)
{
    QStringList lines = {QStringLiteral("%1 findings").arg(findings.size())};
    for (const LintFinding &finding : findings.mid(0, 12))
        lines.append(QStringLiteral("row %1, column %2: ").arg(finding.row).arg(finding.column) + finding.toString());
    return lines.join(QLatin1Char('\n')).toUtf8();
}

/// The first finding of this kind, row (0 for the whole driver) and column; null for none.
inline const LintFinding *findingOf(const QList<LintFinding> &findings, const QString &id, int row,
                                    const QString &column)
{
    for (const LintFinding &finding : findings) {
        if (finding.id == id && finding.row == row && finding.column == column)
            return &finding;
    }
    return nullptr;
}

/// Replaces the field of the row at `index`, from 0.
inline void setField(DriverText &driver, int index, const QString &column, const QString &text)
{
    driver.rows[index].fields[driver.columns.indexOf(column)] = text;
}

#endif
