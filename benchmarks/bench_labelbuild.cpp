// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

// Time to build the table of a label, and the number of script engines for it.

#include "benchmarks/measuring.h"

#include "zelmar_label/address_grammar/scripthook.h"
#include "zelmar_label/label_table/labelloader.h"

#include "support/labelfixtures.h"

#include <QCoreApplication>
#include <QScriptEngine>

namespace {

constexpr int rowCount = 100;

QList<Row> rows(int scriptRows)
{
    QList<Row> made;
    for (int i = 0; i < rowCount; ++i) {
        Row row;
        row.prefixSymbol = QStringLiteral("D%1_").arg(i);
        row.pattern = QStringLiteral("(D%1_)(\\d{1,5})").arg(i);
        row.multipleRule = i < scriptRows ? QStringLiteral("F>benchmark.js") : QString();
        made.append(row);
    }
    return made;
}

label::CommandInformationTalbe tableOf(const QList<Row> &rows)
{
    label::CommandInformationTalbe table;
    for (const Row &row : rows)
        table.addCommandFormatter(row.formatter());
    return table;
}

void checkEnginesWithoutScripts()
{
    const int before = label::ScriptHook::enginesMade();
    const label::CommandInformationTalbe table = tableOf(rows(0));
    label::CommandInformationTalbe copy = table;
    copy.addCommandFormatter(Row().formatter());
    const label::LabelLoader label(copy);
    require(copy.countFormatters() == rowCount + 1 && table.countFormatters() == rowCount, "rows of the copy");
    require(copy.getFirstMatchedAddressIndex(QStringLiteral("D99_7"), -1) == rowCount - 1, "the row of D99_7");
    const int made = label::ScriptHook::enginesMade() - before;
    std::printf("ratio: %-62s %8d / 0 allowed\n", "engines made for 100 rows without scripts, table copied", made);
    require(made == 0, "engines made without scripts");
}

void checkEnginesWithOneScript()
{
    const int before = label::ScriptHook::enginesAlive();
    {
        const label::CommandInformationTalbe table = tableOf(rows(1));
        const int alive = label::ScriptHook::enginesAlive() - before;
        std::printf("ratio: %-62s %8d / 1 allowed\n", "engines alive for 100 rows, one with a script", alive);
        require(alive == 1, "engines alive for one script row");
        label::CommandInformationTalbe copy = table;
        require(label::ScriptHook::enginesAlive() - before == 1, "engines alive while the rows are shared");
        copy.addCommandFormatter(Row().formatter());
        const int aliveWithCopy = label::ScriptHook::enginesAlive() - before;
        std::printf("ratio: %-62s %8d / 2 allowed\n", "engines alive with a second live copy of the rows",
                    aliveWithCopy);
        require(aliveWithCopy == 2, "engines alive for two copies");
        require(copy.addressRange(0, QStringLiteral("D0_1")) == 7, "the script's answer");
    }
    require(label::ScriptHook::enginesAlive() == before, "engines given back");
}

void enginePerRow(benchmark::State &state)
{
    for (auto _ : state) {
        std::vector<std::unique_ptr<QScriptEngine>> engines;
        for (int i = 0; i < rowCount; ++i)
            engines.push_back(std::make_unique<QScriptEngine>());
        benchmark::DoNotOptimize(engines);
    }
}

void buildTable(benchmark::State &state)
{
    const QList<Row> made = rows(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(tableOf(made));
}

void copyTable(benchmark::State &state)
{
    const label::CommandInformationTalbe table = tableOf(rows(static_cast<int>(state.range(0))));
    const label::CommandFormatter further = Row().formatter();
    for (auto _ : state) {
        label::CommandInformationTalbe copy = table;
        copy.addCommandFormatter(further);
        benchmark::DoNotOptimize(copy);
    }
}

BENCHMARK(enginePerRow)->Unit(benchmark::kMicrosecond);
BENCHMARK(buildTable)->ArgName("scripts")->Arg(0)->Arg(1)->Arg(rowCount)->Unit(benchmark::kMicrosecond);
BENCHMARK(copyTable)->ArgName("scripts")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    silenceLog();
    writeScript(QStringLiteral("benchmark.js"),
                QStringLiteral("function init() {}\nfunction getAddressRange(a) { return 7; }\n"));
    checkEnginesWithoutScripts();
    checkEnginesWithOneScript();

    KeepingReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatio("buildTable/scripts:0", "enginePerRow");
    reporter.printRatio("buildTable/scripts:1", "buildTable/scripts:0");
    return 0;
}
