// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_DRIVERCHECKS_H
#define ZELMAR_LABEL_TOOL_DRIVERCHECKS_H

#include "output.h"

#include <QList>
#include <QStringList>

struct DriverText;

/// Reads driver files and lints them. All that is wrong is told on the error stream; when none of it is an error, the
/// drivers are handed over and the code is `Success`.
ExitCode readCheckedDrivers(const QStringList &files, const Streams &streams, QList<DriverText> &drivers);

#endif
