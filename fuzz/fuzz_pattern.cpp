// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/patterncomparison.h"
#include "zelmar_label/address_grammar/patternsyntax_p.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int longestPattern = 60;
constexpr int longestText = 40;
/// Of the parts that counts in one another repeat. `QRegExp` copies the parts, and needs minutes for more.
constexpr int mostCopies = 200;

/// How many copies of its parts the counts of a tree make.
int copiesOf(const label::PatternNode &node)
{
    int copies = 1;
    for (const label::PatternNode &child : node.children)
        copies = qMin(copies + copiesOf(child), mostCopies + 1);
    if (node.kind != label::PatternNode::Kind::Repeat)
        return copies;
    return qMin(copies * qMax(1, qMax(node.least, node.most)), mostCopies + 1);
}

/// False also for a pattern that only `QRegExp` reads: it is the one that would answer.
bool isWorthComparing(const QString &pattern)
{
    const label::PatternSyntax syntax(pattern);
    return syntax.tree && copiesOf(*syntax.tree) <= mostCopies;
}

void abortOnDifference(const QString &difference)
{
    if (difference.isEmpty())
        return;
    std::fprintf(stderr, "%s\n", qPrintable(difference));
    std::abort();
}

} // namespace

/// The input is a pattern, a line end and a text, in UTF-8. Stops at a difference between a pattern and `QRegExp`.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString input = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const QString pattern = input.section(QLatin1Char('\n'), 0, 0);
    const QString text = input.section(QLatin1Char('\n'), 1).left(longestText);
    if (pattern.size() > longestPattern || !isWorthComparing(pattern))
        return 0;
    PatternComparison comparison(pattern);
    abortOnDifference(comparison.difference());
    abortOnDifference(comparison.difference(text));
    if (!comparison.hasAutomaton())
        return 0;
    constexpr int mostSamples = 5;
    const QStringList samples = label::Pattern(pattern).automaton()->samples(mostSamples);
    for (const QString &sample : samples)
        abortOnDifference(comparison.difference(sample));
    return 0;
}
