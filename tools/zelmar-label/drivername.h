// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_DRIVERNAME_H
#define ZELMAR_LABEL_TOOL_DRIVERNAME_H

#include <QString>

/// Why a driver of this name cannot have a custom label, as a sentence; empty if it can. The library replaces blanks in
/// the name by "_" and uses it as a table name in SQL without quotes.
QString driverNameFault(const QString &name);

/// The name of this driver's file, without ".tsv": it names the tables of the driver database.
QString driverFileStem(const QString &name);

/// Why a driver file cannot have this path, as a sentence; empty if it can.
QString driverFilePathFault(const QString &path);

#endif
