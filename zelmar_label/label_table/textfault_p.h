// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TEXTFAULT_P_H
#define ZELMAR_LABEL_TEXTFAULT_P_H

#include "zelmar_label/label_table/addressdiagnosis.h"

namespace label {

class AddressJudge;
class AddressSearch;
class CommandFormatter;

/// Writes the question into the diagnosis.
void describeQuestion(AddressDiagnosis &diagnosis, const QString &text, int type);

/// Writes the row's own texts into the diagnosis.
void describeRow(AddressDiagnosis &diagnosis, const CommandFormatter &row);

/// True for ASCII digits that fit an `int`.
bool isDecimal(const QString &text);

/// True for the kinds that a slip may explain.
bool isFaultOfText(AddressDiagnosis::Kind kind);

/// Among the rows that match the text and refuse its number, the one with the nearest limits.
int nearestMatchedRow(const AddressJudge &judge, const AddressSearch &search, const QString &deviceAddress);

/// For a text that no row matches: sets the reason and offers addresses. Returns the row of the diagnosis, or -1.
int explainText(AddressJudge &judge, const AddressSearch &search, AddressDiagnosis &diagnosis, QStringList &offers);

} // namespace label

#endif
