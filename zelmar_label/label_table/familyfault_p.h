// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_FAMILYFAULT_P_H
#define ZELMAR_LABEL_FAMILYFAULT_P_H

#include "zelmar_label/label_table/addressdiagnosis.h"

namespace label {

class AddressJudge;
class AddressSearch;

/// Handles a text that begins with the symbol of a dynamic family and matches no row further. Fills in the diagnosis
/// except the row's own texts, and offers addresses of the family.
bool explainFamily(AddressJudge &judge, const AddressSearch &search, AddressDiagnosis &diagnosis, QStringList &offers);

/// Offers addresses of the families whose symbol the text begins with, however far rows match it.
void offerFamilyMembers(AddressJudge &judge, const QString &address, int type, QStringList &offers);

} // namespace label

#endif
