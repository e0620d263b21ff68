// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_FAMILYFAULT_P_H
#define ZELMAR_LABEL_FAMILYFAULT_P_H

#include "zelmar_label/label_table/addressdiagnosis.h"

namespace label {

class AddressJudge;
class AddressSearch;

/// The text begins with the symbol of a dynamic family, and no row goes further into it than that. Fills in the
/// diagnosis but for the row's own texts, and offers addresses of the family.
bool explainFamily(AddressJudge &judge, const AddressSearch &search, AddressDiagnosis &diagnosis, QStringList &offers);

/// Offers addresses of the families with the symbol that the text begins with, however far rows go into it.
void offerFamilyMembers(AddressJudge &judge, const QString &address, int type, QStringList &offers);

} // namespace label

#endif
