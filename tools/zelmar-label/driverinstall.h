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
    /// The names of those that the database had already.
    QStringList replaced;
    /// A copy of the database as it was; empty when it is new.
    QString copy;
};

/// Puts the drivers into the driver database `path`, all or none. A driver that it has already is replaced where it
/// stands, new ones follow the others, and what else is in the file stays. False with a sentence in `error` on failure.
bool installDrivers(const QString &path, const QList<DriverText> &drivers, InstalledDrivers &installed, QString &error);

#endif
