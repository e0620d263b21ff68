// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/logrecorder.h"
#include "support/shippeddriverstest.h"
#include "tools/driver-files/driversamples.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QMap>
#include <QSet>
#include <QTest>

using namespace label;
using namespace shipped;

namespace {

QString whereIs(const DriverSample &sample)
{
    return QStringLiteral("%1:%2 %3").arg(sample.file).arg(sample.line).arg(sample.address);
}

/// Descriptions of the rows that accept an address as a bit or as a register; rows of one family share theirs.
QStringList acceptingRows(const LabelLoader &label, const QString &address, int filter)
{
    QSet<QString> descriptions;
    const CommandInformationTalbe &table = label.deviceTypesTable();
    for (int i = 0; i < table.countFormatters(); ++i) {
        if (filterOf(table.formatterAt(i)->type()) == filter && table.formatterAt(i)->isAddressValid(address))
            descriptions.insert(table.formatterAt(i)->formatString());
    }
    return descriptions.values();
}

/// If an address has a second form (I1: for I:), an editor with symbol and range shows the same item.
void checkSymbol(LabelLoader &label, int index, const DriverSample &sample, Complaints &complaints)
{
    const CommandFormatter row = label.deviceTypesTable().getFormatterAtIndex(index);
    if (sample.address.startsWith(sample.symbol, Qt::CaseInsensitive))
        return;
    const QString where = whereIs(sample);
    const QString shown = sample.symbol + row.getRangeString(sample.address);
    const int found = label.addressValidation(shown, filterOf(row.type()));
    // Coils written as digits show the symbol of the coils written 0x.
    if (row.ruleText() != QLatin1String("F>modbus_coil_digits.js"))
        complaints.expectEqual(found, index, where, "row of the address that is shown");
    complaints.expectEqual(label.addressRange(found, shown), sample.number, where,
                           "number of the address that is shown");
    complaints.expectEqual(label.bitOffset(found, shown), sample.bit, where, "bit of the address that is shown");
}

void checkSample(LabelLoader &label, const DriverSample &sample, Complaints &complaints)
{
    const QList<SampleFault> faults = sampleFaults(label, sample);
    for (const SampleFault &fault : faults)
        complaints.add(whereIs(sample), fault.text);
    const int index = label.addressValidation(sample.address, sample.filter);
    if (index < 0)
        return;
    const CommandFormatter row = label.deviceTypesTable().getFormatterAtIndex(index);
    checkSymbol(label, index, sample, complaints);
    complaints.expectEqual(acceptingRows(label, sample.address, filterOf(row.type())).join(QLatin1String(" | ")),
                           row.formatString(), whereIs(sample), "rows that accept it");
}

} // namespace

class ShippedDriversSamples : public ShippedDriversTest
{
    Q_OBJECT

private Q_SLOTS:
    void samplesHold_data() { driverRows(); }
    void samplesHold();
    void samplesCoverEveryRow_data() { driverRows(); }
    void samplesCoverEveryRow();
};

void ShippedDriversSamples::samplesHold()
{
    const LogRecorder silence;
    const ShippedDriver &tested = driver();
    LabelLoader &label = *labelOf(tested.name);
    Complaints complaints;
    QVERIFY(!tested.samples.isEmpty());
    for (const DriverSample &sample : tested.samples)
        checkSample(label, sample, complaints);
    VERIFY_NONE(complaints);
}

void ShippedDriversSamples::samplesCoverEveryRow()
{
    const LogRecorder silence;
    const ShippedDriver &tested = driver();
    LabelLoader &label = *labelOf(tested.name);
    // Rows made for a family keep the description of their pattern.
    QMap<QString, QSet<int>> numbers;
    for (const DriverSample &sample : tested.samples) {
        if (sample.isAccepted)
            numbers[label.getFormatString(label.addressValidation(sample.address, sample.filter))].insert(
                sample.number);
    }
    Complaints complaints;
    for (const DeviceRow &row : tested.rows) {
        const QSet<int> seen = numbers.value(row.description);
        complaints.expect(seen.contains(row.end.toInt(nullptr, row.base)), row.description,
                          QStringLiteral("no sample of the last number"));
        // The pattern of these rows begins above the row's limit, which bits need to be 0.
        const bool isFloorInPattern = row.isBit() && tested.name.startsWith(QLatin1String("Modbus"));
        complaints.expect(isFloorInPattern || seen.contains(row.start.toInt(nullptr, row.base)), row.description,
                          QStringLiteral("no sample of the first number"));
    }
    VERIFY_NONE(complaints);
}

QTEST_GUILESS_MAIN(ShippedDriversSamples)

#include "tst_shippeddrivers_samples.moc"
