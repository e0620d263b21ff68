// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "lintcontext.h"

#include "zelmar_label/label_table/labelloader.h"
#include "zelmar_label/label_table/labeltype.h"

#include <algorithm>
#include <vector>

namespace {

struct FaultWords
{
    const char *id;
    const char *column;
    const char *advice;
};

FaultWords wordsOf(SampleFault::Kind kind)
{
    switch (kind) {
    case SampleFault::Kind::Refused:
        return {"sample-refused", "pattern", "widen the pattern or the limits, or correct the sample"};
    case SampleFault::Kind::Accepted:
        return {"sample-accepted", "pattern", "narrow the pattern or the limits, or correct the sample"};
    case SampleFault::Kind::Symbol:
        return {"sample-symbol", "prefix_symbol", "correct the symbol, the order of the rows, or the sample"};
    case SampleFault::Kind::Number:
        return {"sample-number", "address_group_index", "correct the group, 'base' or the rule, or the sample"};
    case SampleFault::Kind::Bit:
        return {"sample-bit", "multiple_rule", "correct the rule or the sample"};
    case SampleFault::Kind::Next:
        return {"sample-next", "multiple_rule", "correct the rule, 'type' or the limits, or the sample"};
    case SampleFault::Kind::Register:
        return {"sample-register", "multiple_rule", "correct the rule or the sample"};
    case SampleFault::Kind::Block:
        return {"sample-block", "prefix_symbol", "correct the symbol: blocks are written symbol and number"};
    }
    return {"sample-refused", "pattern", ""};
}

/// The likely row of a refused sample: the first of its symbol and class.
int meantRow(const LintContext &context, const DriverSample &sample)
{
    const bool isBit = sample.bit >= 0;
    for (const LintRow &row : context.rows) {
        const QString symbol = row.formatter.getEditorUsedPrefixsymbol();
        if (row.isBit() == isBit && symbol == sample.symbol)
            return row.index;
    }
    return -1;
}

void tell(LintContext &context, const DriverSample &sample, const SampleFault &fault)
{
    const int row = fault.row >= 0 ? context.ownRow(fault.row) : meantRow(context, sample);
    FaultWords words = wordsOf(fault.kind);
    const bool isOfScript = row >= 0 && context.rows.at(static_cast<std::size_t>(row)).isScripted &&
                            (fault.kind == SampleFault::Kind::Number || fault.kind == SampleFault::Kind::Bit ||
                             fault.kind == SampleFault::Kind::Next || fault.kind == SampleFault::Kind::Register);
    if (isOfScript)
        words = {"script-answer", "multiple_rule", "correct the script or the sample"};
    context.report.sampleFault(row, words.id, words.column, sample, fault.text, QLatin1String(words.advice));
}

} // namespace

void lintSamples(LintContext &context)
{
    const bool isEndless =
        std::any_of(context.rows.begin(), context.rows.end(), [](const LintRow &row) { return row.isEndless; });
    if (context.samples.isEmpty() || isEndless)
        return;
    std::vector<bool> isCovered(context.rows.size(), false);
    for (const DriverSample &sample : context.samples) {
        const QList<SampleFault> faults = sampleFaults(context.label(), sample);
        for (const SampleFault &fault : faults)
            tell(context, sample, fault);
        const int row =
            sample.isAccepted ? context.ownRow(context.label().addressValidation(sample.address, sample.filter)) : -1;
        if (row >= 0)
            isCovered[static_cast<std::size_t>(row)] = true;
    }
    for (const LintRow &row : context.rows) {
        if (isCovered[static_cast<std::size_t>(row.index)] || (row.isTemplate && !row.isMember))
            continue;
        context.report.rowWarning(row.index, "no-sample", "pattern",
                                  QStringLiteral("no sample is an address of the row"),
                                  QStringLiteral("add its first and its last number, and the numbers beside them as "
                                                 "refused ones"));
    }
}
