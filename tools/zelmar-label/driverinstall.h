// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_DRIVERINSTALL_H
#define ZELMAR_LABEL_TOOL_DRIVERINSTALL_H

#include <QList>
#include <QString>
#include <QStringList>

struct DriverText;

struct InstalledDrivers
{
    /// The names of the drivers that were replaced.
    QStringList replaced;
    /// A copy of the old database; empty if it is new.
    QString copy;
};

/// Writes the drivers into the driver database `path`, all or none. An existing driver is replaced in place, new ones
/// are added at the end, and other content of the file does not change. False with a sentence in `error` on failure.
bool installDrivers(const QString &path, const QList<DriverText> &drivers, InstalledDrivers &installed, QString &error);

#endif
