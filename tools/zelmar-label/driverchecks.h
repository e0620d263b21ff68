// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_DRIVERCHECKS_H
#define ZELMAR_LABEL_TOOL_DRIVERCHECKS_H

#include "output.h"

#include <QList>
#include <QString>
#include <QStringList>

struct DriverText;

/// Why a driver file cannot be read, as a sentence; empty when it can.
QString driverFileObstacle(const QString &path);

/// Reads driver files and lints them. All that is wrong is told on the error stream; when none of it is an error, the
/// drivers are handed over and the code is `Success`.
ExitCode readCheckedDrivers(const QStringList &files, const Streams &streams, QList<DriverText> &drivers);

#endif
