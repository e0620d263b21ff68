// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_FOREIGNLABEL_P_H
#define ZELMAR_LABEL_FOREIGNLABEL_P_H

#include "zelmar_label/label_table/addressdiagnosis.h"

namespace label {

/// Diagnoses an address with those calls of a label that add no rows.
AddressDiagnosis diagnoseForeignLabel(LabelInterface &label, const QString &address, int type);

} // namespace label

#endif
