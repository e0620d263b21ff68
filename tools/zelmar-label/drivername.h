// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_DRIVERNAME_H
#define ZELMAR_LABEL_TOOL_DRIVERNAME_H

#include <QString>

/// Why a driver of this name cannot have a custom label, as a sentence; empty when it can. The library makes table
/// names of the name by turning blanks into "_", and hands them to SQLite as they stand.
QString driverNameFault(const QString &name);

/// The name that a driver file of this driver is given, without ".tsv": it names the tables of the driver database.
QString driverFileStem(const QString &name);

/// Why a driver file cannot have the path, as a sentence; empty when it can.
QString driverFilePathFault(const QString &path);

#endif
