// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_FAULT_H
#define ZELMAR_LABEL_TOOL_FAULT_H

#include <QJsonObject>

struct ResolvedAddress;

/// What is wrong with a refused address, for programs: "kind" and "slip" by name, "position" in the text from 0, and
/// "number" and "limit" as they stand in an address, in the row's "radix". What does not apply is null.
QJsonObject faultAsJson(const ResolvedAddress &address);

#endif
