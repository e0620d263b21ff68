// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "driverchecks.h"

#include "tools/driver-files/driverlinter.h"

#include <QIODevice>

ExitCode readCheckedDrivers(const QStringList &files, const Streams &streams, QList<DriverText> &drivers)
{
    DriverLinter linter;
    for (const QString &file : files)
        linter.addFile(file);
    const QList<LintFinding> findings = linter.findings();
    for (const LintFinding &finding : findings)
        streams.err.write(finding.toString().toUtf8() + '\n');
    if (hasErrors(findings))
        return AddressRefused;
    drivers = linter.drivers();
    return Success;
}
