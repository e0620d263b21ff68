// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_LINTADDRESSES_H
#define ZELMAR_LABEL_LINTADDRESSES_H

#include "lintcontext.h"

namespace label {
class DynamicLabelCreatorInterface;
}

/// Fills `row.matches` and `row.addresses` from the row's example, its limits, its pattern, and the samples.
void makeAddresses(LintRow &row, const QList<DriverSample> &samples);

/// The creator of dynamic families for the driver; it lives as long as the process.
label::DynamicLabelCreatorInterface &familyCreator(const QString &driver);

/// An address of each family that some creator knows.
QStringList familyAddresses();

/// Replaces the row of a family's template by a member's. False if the driver's creator does not use this family.
bool becomeMember(LintRow &row, const QString &driver);

#endif
