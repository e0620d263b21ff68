// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

// Waiting times in the pickers: one key stroke with the updated list of formats, and the first picture of the dialog.
// Programs draw sixty pictures a second, so a key stroke has 16 ms.

#include "benchmarks/measuring.h"

#include "zelmar_label/label_table/labelloader.h"
#include "zelmar_label/widgets/addresspicker.h"
#include "zelmar_label/widgets/addresspickerdialog.h"

#include "support/labelfixtures.h"

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>

namespace {

constexpr double allowedKeyStroke = 16e6;
constexpr double allowedOpening = 50e6;

constexpr int bitIndex = 0;
constexpr int wordIndex = 1;
const QStringList dataTypes = {QStringLiteral("Bit"), QStringLiteral("Word")};

/// Rows with different symbols and formats: "A0", "B0", ... of five digits. With `areAllAlike`, all have one symbol, so
/// that all match at each key stroke, which is the worst case.
void fill(label::LabelLoader &label, int rows, bool areAllAlike)
{
    label::CommandInformationTalbe table;
    for (int row = 0; row < rows; ++row) {
        Row columns;
        columns.prefixSymbol =
            areAllAlike
                ? QStringLiteral("D")
                : QStringLiteral("%1%2_").arg(QChar::fromLatin1(static_cast<char>('A' + row % 26))).arg(row / 26);
        columns.pattern = QStringLiteral("(%1)(\\d{1,5})").arg(columns.prefixSymbol);
        columns.description =
            QStringLiteral("%1n: data register number %2, e.g. %1100").arg(columns.prefixSymbol).arg(row);
        table.addCommandFormatter(columns.formatter());
    }
    label.setDeviceTypesTable(table);
}

/// One digit typed and deleted, each with a redraw: two key strokes per iteration.
void typeIntoRange(benchmark::State &state, int rows, bool areAllAlike)
{
    label::LabelLoader label;
    fill(label, rows, areAllAlike);
    AddressPicker picker(&label, wordIndex, QString(), 0, QStringLiteral("1"), dataTypes, bitIndex, {1, 2, 3}, 1,
                         nullptr);
    picker.show();
    if (!QTest::qWaitForWindowExposed(&picker))
        state.SkipWithError("the picker is not shown");
    auto *const range = picker.findChild<QLineEdit *>(QStringLiteral("RangeEditor"));
    const auto *const formats = picker.findChild<QListWidget *>(QStringLiteral("formattingList"));
    range->setCursorPosition(1);
    for (auto _ : state) {
        QTest::keyClick(range, Qt::Key_2);
        picker.grab();
        QTest::keyClick(range, Qt::Key_Backspace);
        picker.grab();
    }
    require(range->text() == QLatin1String("1"), "the range after the key strokes");
    require(formats->count() == (areAllAlike ? rows : 1), "the formats after the key strokes");
    state.counters["ms_a_key"] =
        benchmark::Counter(2e3 * state.iterations(), benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void openDialog(benchmark::State &state, int rows, bool areAllAlike)
{
    label::LabelLoader label;
    fill(label, rows, areAllAlike);
    QList<int> stations;
    for (int station = 1; station <= 32; ++station)
        stations.append(station);
    for (auto _ : state) {
        AddressPickerDialog dialog(&label, wordIndex, QStringLiteral("3"), 0, QStringLiteral("100"), dataTypes,
                                   bitIndex, stations, nullptr);
        dialog.show();
        require(QTest::qWaitForWindowExposed(&dialog), "the dialog is shown");
        dialog.grab();
        require(!dialog.addressWithStationId().isEmpty(), "the dialog has an address");
    }
}

/// The unit: a plain list of the same number of texts, filled and drawn.
void plainList(benchmark::State &state, int rows)
{
    QListWidget list;
    list.resize(250, 60);
    list.show();
    QStringList texts;
    for (int row = 0; row < rows; ++row)
        texts.append(QStringLiteral("Dn: data register number %1, e.g. D100").arg(row));
    for (auto _ : state) {
        list.clear();
        list.addItems(texts);
        list.grab();
    }
}

void tell(const KeepingReporter &reporter, const char *name, int parts, double allowed)
{
    const double taken = reporter.nanoseconds(name) / parts;
    std::printf("%-40s %8.2f ms of %g ms allowed%s\n", name, taken / 1e6, allowed / 1e6,
                taken > allowed ? "  MISSED" : "");
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    silenceLog();
    benchmark::Initialize(&argc, argv);
    for (const int rows : {60, 10000}) {
        const std::string suffix = "/" + std::to_string(rows);
        const auto add = [&suffix](const char *name, auto run) {
            benchmark::RegisterBenchmark((name + suffix).c_str(), run)->Unit(benchmark::kMillisecond);
        };
        add("two keys, few formats match", [rows](benchmark::State &state) { typeIntoRange(state, rows, false); });
        add("two keys, all formats match", [rows](benchmark::State &state) { typeIntoRange(state, rows, true); });
        add("dialog opens, all symbols differ", [rows](benchmark::State &state) { openDialog(state, rows, false); });
        add("dialog opens, one symbol", [rows](benchmark::State &state) { openDialog(state, rows, true); });
        add("plain list filled", [rows](benchmark::State &state) { plainList(state, rows); });
    }
    KeepingReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    for (const char *const rows : {"/60", "/10000"}) {
        const std::string suffix = rows;
        tell(reporter, ("two keys, few formats match" + suffix).c_str(), 2, allowedKeyStroke);
        tell(reporter, ("two keys, all formats match" + suffix).c_str(), 2, allowedKeyStroke);
        tell(reporter, ("dialog opens, all symbols differ" + suffix).c_str(), 1, allowedOpening);
        tell(reporter, ("dialog opens, one symbol" + suffix).c_str(), 1, allowedOpening);
        reporter.printRatio("two keys, few formats match" + suffix, "plain list filled" + suffix);
        reporter.printRatio("two keys, all formats match" + suffix, "plain list filled" + suffix);
    }
    return 0;
}
