// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_LINTLANGUAGE_H
#define ZELMAR_LABEL_LINTLANGUAGE_H

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

struct LintRow;

/// A short ASCII text that `row` may accept and that none of `others` is known to accept.
/// Nothing when there is no such text: then `others` accept all addresses of the row. The empty text when the patterns
/// are not known well enough.
///
/// The answer is exact for rows whose pattern has an automaton and whose number is read by a rule. The number of a
/// script is known only to rows of the same script.
std::optional<QString> textOutside(const LintRow &row, const std::vector<const LintRow *> &others);

/// True when the ASCII texts that `row` matches, or those that it accepts, all belong to `other` too.
bool isSpecialCase(const LintRow &row, const LintRow &other);

/// True when some text matches both patterns; false also for a pattern without automaton.
bool sharesTexts(const LintRow &row, const LintRow &other);

/// ASCII texts that both rows may accept, the shortest first, at most `most`. Ask the rows: they refuse some of the
/// texts when a script reads the number.
QStringList sharedTexts(const LintRow &row, const LintRow &other, int most);

#endif
