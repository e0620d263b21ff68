// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "driverchecks.h"

#include "tools/driver-files/driverlinter.h"

#include <QFile>

QString driverFileObstacle(const QString &path)
{
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        return QString();
    return QStringLiteral("the driver file %1 cannot be read: %2").arg(path, file.errorString());
}

ExitCode readCheckedDrivers(const QStringList &files, const Streams &streams, QList<DriverText> &drivers)
{
    DriverLinter linter;
    for (const QString &file : files) {
        const QString obstacle = driverFileObstacle(file);
        if (!obstacle.isEmpty()) {
            streams.complain(obstacle);
            return Unreadable;
        }
        linter.addFile(file);
    }
    const QList<LintFinding> findings = linter.findings();
    for (const LintFinding &finding : findings)
        streams.err.write(finding.toString().toUtf8() + '\n');
    if (hasErrors(findings))
        return AddressRefused;
    drivers = linter.drivers();
    return Success;
}
