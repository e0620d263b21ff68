// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_FAULT_H
#define ZELMAR_LABEL_TOOL_FAULT_H

#include <QJsonObject>

struct ResolvedAddress;

/// The reason of a refused address, for programs: "kind" and "slip" by name, "position" in the text from 0, and
/// "number" and "limit" as written in an address, in the row's "radix". Values that do not apply are null.
QJsonObject faultAsJson(const ResolvedAddress &address);

#endif
