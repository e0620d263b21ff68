// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_DRIVERCHECKS_H
#define ZELMAR_LABEL_TOOL_DRIVERCHECKS_H

#include "output.h"

#include <QList>
#include <QString>
#include <QStringList>

struct DriverText;

/// Why a driver file cannot be read, as a sentence; empty if it can.
QString driverFileObstacle(const QString &path);

/// Reads driver files and lints them. Prints all findings to the error stream. Without errors it returns the drivers
/// and the code `Success`.
ExitCode readCheckedDrivers(const QStringList &files, const Streams &streams, QList<DriverText> &drivers);

#endif
