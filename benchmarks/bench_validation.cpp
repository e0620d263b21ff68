// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

// Time to find the row of an address, in units of one match of an expression measured in the same run.

#include "benchmarks/measuring.h"

#include "zelmar_label/label_table/labelloader.h"

#include "support/labelfixtures.h"
#include "support/referencegrammar.h"

#include <QCoreApplication>
#include <QRegExp>

namespace {

constexpr double allowedHits = 8;
constexpr int anyRow = -1;

struct Family
{
    const char *symbol;
    const char *digits;
    int type;
    const char *rule;
    int base;
    const char *end;
};

// Like the device table of a mid-size PLC: families with the same first letters, octal, hexadecimal and two-part ones.
const Family families[] = {
    {"D", "\\d{1,5}", 2, "", 10, "32767"},
    {"X", "[0-7]{1,4}", 0, "union-oct:rm16_K4X", 8, "1777"},
    {"Y", "[0-7]{1,4}", 0, "union-oct:rm16_K4Y", 8, "1777"},
    {"M", "\\d{1,5}", 0, "union-dec:rm16_K4M", 10, "32767"},
    {"L", "\\d{1,5}", 0, "union-dec:rm16_K4L", 10, "32767"},
    {"S", "\\d{1,4}", 0, "union-dec:rm16_K4S", 10, "4095"},
    {"B", "[0-9A-Fa-f]{1,4}", 0, "union-hex:rm16_K4B", 16, "7FFF"},
    {"F", "\\d{1,5}", 0, "union-dec:rm16_K4F", 10, "32767"},
    {"SM", "\\d{1,4}", 0, "union-dec:rm16_K4SM", 10, "9999"},
    {"SB", "[0-9A-Fa-f]{1,4}", 0, "union-hex:rm16_K4SB", 16, "7FFF"},
    {"TS", "\\d{1,4}", 0, "union-dec:n", 10, "1023"},
    {"TC", "\\d{1,4}", 0, "union-dec:n", 10, "1023"},
    {"TN", "\\d{1,4}", 2, "", 10, "1023"},
    {"CS", "\\d{1,4}", 0, "union-dec:n", 10, "1023"},
    {"CC", "\\d{1,4}", 0, "union-dec:n", 10, "1023"},
    {"CN", "\\d{1,4}", 2, "", 10, "1023"},
    {"STS", "\\d{1,4}", 0, "union-dec:n", 10, "1023"},
    {"STC", "\\d{1,4}", 0, "union-dec:n", 10, "1023"},
    {"STN", "\\d{1,4}", 2, "", 10, "1023"},
    {"LTN", "\\d{1,4}", 3, "", 10, "1023"},
    {"LCN", "\\d{1,4}", 3, "", 10, "1023"},
    {"W", "[0-9A-Fa-f]{1,4}", 2, "", 16, "7FFF"},
    {"SW", "[0-9A-Fa-f]{1,4}", 2, "", 16, "7FFF"},
    {"SD", "\\d{1,5}", 2, "", 10, "11999"},
    {"R", "\\d{1,5}", 2, "", 10, "32767"},
    {"ZR", "\\d{1,6}", 2, "", 10, "393215"},
    {"Z", "\\d{1,2}", 2, "", 10, "23"},
    {"LZ", "\\d{1,2}", 3, "", 10, "1"},
    {"DW", "\\d{1,5}", 2, "", 10, "4095"},
    {"DB", "\\d{1,5}", 1, "", 10, "4095"},
    {"DD", "\\d{1,5}", 3, "", 10, "4095"},
    {"DX", "\\d{1,4}\\.[0-7]", 0, "dot-oct:r", 10, "4095"},
    {"D", "\\d{1,5}\\.[0-9a-f]", 0, "dot-f:r", 10, "32767"},
    {"W", "[0-9A-Fa-f]{1,4}\\.[0-9a-f]", 0, "dot-f:r", 16, "7FFF"},
    {"R", "\\d{1,5}\\.[0-9a-f]", 0, "dot-f:r", 10, "32767"},
    {"SD", "\\d{1,5}\\.[0-9a-f]", 0, "dot-f:r", 10, "11999"},
    {"K4X", "[0-7]{1,4}", 2, "m16", 8, "1760"},
    {"K4Y", "[0-7]{1,4}", 2, "m16", 8, "1760"},
    {"K4M", "\\d{1,5}", 2, "m16", 10, "32752"},
    {"K4L", "\\d{1,5}", 2, "m16", 10, "32752"},
    {"K4S", "\\d{1,4}", 2, "m16", 10, "4080"},
    {"K4B", "[0-9A-Fa-f]{1,4}", 2, "m16", 16, "7FF0"},
    {"K4F", "\\d{1,5}", 2, "m16", 10, "32752"},
    {"K4SM", "\\d{1,4}", 2, "m16", 10, "9984"},
    {"K4SB", "[0-9A-Fa-f]{1,4}", 2, "m16", 16, "7FF0"},
    {"MB", "\\d{1,5}", 1, "", 10, "8191"},
    {"MW", "\\d{1,5}", 2, "", 10, "8190"},
    {"MD", "\\d{1,5}", 3, "", 10, "8188"},
    {"MX", "\\d{1,5}\\.[0-7]", 0, "dot-oct:r", 10, "8191"},
    {"IB", "\\d{1,4}", 1, "", 10, "1023"},
    {"IW", "\\d{1,4}", 2, "", 10, "1022"},
    {"ID", "\\d{1,4}", 3, "", 10, "1020"},
    {"I", "\\d{1,4}\\.[0-7]", 0, "dot-oct:r", 10, "1023"},
    {"QB", "\\d{1,4}", 1, "", 10, "1023"},
    {"QW", "\\d{1,4}", 2, "", 10, "1022"},
    {"QD", "\\d{1,4}", 3, "", 10, "1020"},
    {"Q", "\\d{1,4}\\.[0-7]", 0, "dot-oct:r", 10, "1023"},
    {"T", "\\d{1,3}", 2, "", 10, "511"},
    {"C", "\\d{1,3}", 2, "", 10, "511"},
    {"TXT", "\\d{1,5}", 5, "", 10, "32767"},
};
constexpr int familyCount = sizeof(families) / sizeof(families[0]);
static_assert(familyCount == 60, "the printed numbers are for sixty rows");

Row rowOf(const Family &family, const QString &symbol)
{
    Row row;
    row.pattern = QStringLiteral("(%1)(%2)").arg(symbol, QLatin1String(family.digits));
    row.type = family.type;
    row.prefixSymbol = symbol;
    row.end = QLatin1String(family.end);
    row.multipleRule = QLatin1String(family.rule);
    row.base = family.base;
    return row;
}

/// `count` rows: the families, then copies of them with a number in the symbol.
QList<Row> rows(int count)
{
    QList<Row> made;
    for (int i = 0; i < count; ++i) {
        const Family &family = families[i % familyCount];
        const QString number = i < familyCount ? QString() : QString::number(i / familyCount) + QLatin1Char(':');
        made.append(rowOf(family, QLatin1String(family.symbol) + number));
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

struct Question
{
    const char *name;
    const char *address;
    int row;
};

const Question questions[] = {
    {"first_row", "D100", 0},
    {"middle_row", "DB100", 29},
    {"middle_row_with_station", "3-DB100", 29},
    {"middle_row_aligned", "K4M160", 38},
    {"two_part_bit", "D100.a", 32},
    {"last_row", "TXT100", 59},
    {"last_row_with_station", "3-TXT100", 59},
    {"no_row_knows_the_symbol", "V100", -1},
    {"no_row_knows_the_symbol_with_station", "3-V100", -1},
    {"no_row_has_the_number", "D99999", -1},
    {"no_row_knows_the_end", "D100x", -1},
};

void checkAnswers()
{
    const QList<Row> made = rows(familyCount);
    label::LabelLoader label(tableOf(made));
    reference::Table plain;
    for (const Row &row : made)
        plain.rows.append(reference::Format(row));
    for (const Question &question : questions) {
        const QString address = QLatin1String(question.address);
        require(label.addressValidation(address, anyRow) == question.row, question.address);
        require(plain.getFirstMatchedAddressIndex(address, anyRow) == question.row, question.address);
        require(label.getAllMatchedIndex(address, anyRow) == plain.getAllPartialMatchedAddressIndex(address, anyRow),
                question.address);
    }
    require(label.getAllMatchedIndex(QStringLiteral("K4"), anyRow).size() == 9, "nine rows begin with K4");
}

void oneHit(benchmark::State &state)
{
    const QRegExp expression(QStringLiteral("(D)(\\d{1,5})"));
    const QString address = QStringLiteral("D100");
    for (auto _ : state)
        benchmark::DoNotOptimize(expression.exactMatch(address));
}

void validate(benchmark::State &state, const Question &question)
{
    label::LabelLoader label(tableOf(rows(familyCount)));
    const QString address = QLatin1String(question.address);
    for (auto _ : state)
        benchmark::DoNotOptimize(label.addressValidation(address, anyRow));
}

void allMatched(benchmark::State &state, const Question &question)
{
    label::LabelLoader label(tableOf(rows(familyCount)));
    const QString address = QLatin1String(question.address);
    for (auto _ : state)
        benchmark::DoNotOptimize(label.getAllMatchedIndex(address, anyRow));
}

reference::Table plainTable()
{
    reference::Table plain;
    const QList<Row> made = rows(familyCount);
    for (const Row &row : made)
        plain.rows.append(reference::Format(row));
    return plain;
}

void plainValidate(benchmark::State &state, const Question &question)
{
    const reference::Table plain = plainTable();
    const QString address = QLatin1String(question.address);
    for (auto _ : state)
        benchmark::DoNotOptimize(plain.getFirstMatchedAddressIndex(address, anyRow));
}

void plainAllMatched(benchmark::State &state, const Question &question)
{
    const reference::Table plain = plainTable();
    const QString address = QLatin1String(question.address);
    for (auto _ : state)
        benchmark::DoNotOptimize(plain.getAllPartialMatchedAddressIndex(address, anyRow));
}

void keyStroke(benchmark::State &state)
{
    label::LabelLoader label(tableOf(rows(static_cast<int>(state.range(0)))));
    for (auto _ : state) {
        for (const char *typed : {"D", "D1", "D12", "D123"})
            benchmark::DoNotOptimize(label.getAllMatchedIndex(QLatin1String(typed), anyRow));
    }
}

std::string named(const char *operation, const Question &question)
{
    return std::string(operation) + "/" + question.name;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    silenceLog();
    checkAnswers();

    benchmark::RegisterBenchmark("oneHit", oneHit);
    for (const Question &question : questions) {
        benchmark::RegisterBenchmark(named("validate", question).c_str(), validate, question);
        benchmark::RegisterBenchmark(named("allMatched", question).c_str(), allMatched, question);
        benchmark::RegisterBenchmark(named("plainValidate", question).c_str(), plainValidate, question);
        benchmark::RegisterBenchmark(named("plainAllMatched", question).c_str(), plainAllMatched, question);
    }
    benchmark::RegisterBenchmark("keyStroke", keyStroke)->ArgName("rows")->Arg(60)->Arg(1000)->Arg(10000);

    KeepingReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    for (const Question &question : questions)
        reporter.printRatio(named("validate", question), "oneHit", allowedHits);
    for (const Question &question : questions)
        reporter.printRatio(named("allMatched", question), "oneHit");
    std::printf("the plain reference in units of the library:\n");
    for (const Question &question : questions) {
        reporter.printRatio(named("plainValidate", question), named("validate", question));
        reporter.printRatio(named("plainAllMatched", question), named("allMatched", question));
    }
    for (const int rows : {60, 1000, 10000}) {
        const double stroke = reporter.nanoseconds("keyStroke/rows:" + std::to_string(rows)) / 4 / 1e6;
        if (stroke > 0)
            std::printf("one key stroke on %d rows: %.4f ms\n", rows, stroke);
    }
    return 0;
}
