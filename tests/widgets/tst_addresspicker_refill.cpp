// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/formshape.h"
#include "support/pickerfixtures.h"

#include "zelmar_label/widgets/addresspicker.h"

#include <QAbstractItemModel>
#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

namespace {

PickerArguments onRange(const char *range)
{
    PickerArguments arguments;
    arguments.range = QLatin1String(range);
    return arguments;
}

} // namespace

/// Tests that a refill of a field undoes all earlier changes by a caller.
class AddressPickerRefillTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void symbolsUnblockTheirField();
    void dataTypesUnblockTheirField();
    void stationsUnblockTheirFieldAndGiveASignal();
    void stationsGiveTheAddressOfAnUnblockedPicker();

    void aCallersTextGoes();
    void aCallersSymbolGoes();
    void aCallersDataGoes();
    void aCallersOrderGoes();
    void aCallersWidthGoes();
    void symbolsAreInOrder_data();
    void symbolsAreInOrder();
    void aSymbolAddedLaterStaysWhereItIs();

private:
    FakeLabel m_label;
};

void AddressPickerRefillTest::init()
{
    m_label = deviceLabel();
}

void AddressPickerRefillTest::symbolsUnblockTheirField()
{
    const auto picker = makePicker(m_label);
    picker->setChildrenBlockSignals(true);
    picker->updateTypesCombo();
    QVERIFY(!symbolBox(*picker).signalsBlocked());
    QVERIFY(picker->signalsBlocked());
    QVERIFY(dataTypeBox(*picker).signalsBlocked());
    QVERIFY(rangeEdit(*picker).signalsBlocked());
    QVERIFY(stationBox(*picker).signalsBlocked());
}

void AddressPickerRefillTest::dataTypesUnblockTheirField()
{
    const auto picker = makePicker(m_label);
    picker->setChildrenBlockSignals(true);
    picker->setDataTypeList({"Bit", "Byte"});
    QVERIFY(!dataTypeBox(*picker).signalsBlocked());
    QVERIFY(symbolBox(*picker).signalsBlocked());
    QVERIFY(stationBox(*picker).signalsBlocked());
    const QSignalSpy changes(&dataTypeBox(*picker), QOverload<int>::of(&QComboBox::currentIndexChanged));
    dataTypeBox(*picker).setCurrentIndex(1);
    QCOMPARE(changes.count(), 1);
}

void AddressPickerRefillTest::stationsUnblockTheirFieldAndGiveASignal()
{
    const auto picker = makePicker(m_label);
    picker->setChildrenBlockSignals(true);
    const QSignalSpy changes(&stationBox(*picker), QOverload<int>::of(&QComboBox::currentIndexChanged));
    picker->setAvailableStationNumbers({7, 8});
    QVERIFY(!stationBox(*picker).signalsBlocked());
    QVERIFY(dataTypeBox(*picker).signalsBlocked());
    QVERIFY(symbolBox(*picker).signalsBlocked());
    QCOMPARE(changes.count(), 1);
}

void AddressPickerRefillTest::stationsGiveTheAddressOfAnUnblockedPicker()
{
    const auto picker = makePicker(m_label, onRange("1"));
    stationBox(*picker).blockSignals(true);
    PickerSignals given(*picker);
    picker->setAvailableStationNumbers({7});
    QCOMPARE(given.take(), QStringList("addressChanged D1"));
}

void AddressPickerRefillTest::aCallersTextGoes()
{
    const auto picker = makePicker(m_label);
    symbolBox(*picker).setItemText(2, "changed");
    picker->updateTypesCombo();
    QCOMPARE(textsOf(symbolBox(*picker)), QStringList({"D", "W", "X"}));
}

void AddressPickerRefillTest::aCallersSymbolGoes()
{
    const auto picker = makePicker(m_label);
    symbolBox(*picker).addItem("Z");
    picker->updateTypesCombo();
    QCOMPARE(textsOf(symbolBox(*picker)), QStringList({"D", "W", "X"}));
    symbolBox(*picker).removeItem(0);
    picker->setDataType(3);
    QCOMPARE(textsOf(symbolBox(*picker)), QStringList({"D", "W", "X"}));
}

void AddressPickerRefillTest::aCallersDataGoes()
{
    const auto picker = makePicker(m_label);
    symbolBox(*picker).setItemData(1, "caller");
    symbolBox(*picker).setItemData(1, "tip", Qt::ToolTipRole);
    picker->updateTypesCombo();
    QCOMPARE(symbolBox(*picker).itemText(1), QString("W"));
    QCOMPARE(symbolBox(*picker).itemData(1), QVariant());
    QCOMPARE(symbolBox(*picker).itemData(1, Qt::ToolTipRole), QVariant());
}

void AddressPickerRefillTest::aCallersOrderGoes()
{
    const auto picker = makePicker(m_label);
    symbolBox(*picker).model()->sort(0, Qt::DescendingOrder);
    QCOMPARE(textsOf(symbolBox(*picker)), QStringList({"X", "W", "D"}));
    picker->updateTypesCombo();
    QCOMPARE(textsOf(symbolBox(*picker)), QStringList({"D", "W", "X"}));
}

void AddressPickerRefillTest::aCallersWidthGoes()
{
    const auto picker = makePicker(m_label);
    const int fitted = symbolBox(*picker).minimumWidth();
    symbolBox(*picker).setMinimumWidth(fitted + 111);
    picker->updateTypesCombo();
    QCOMPARE(symbolBox(*picker).minimumWidth(), fitted);
    QFont larger = picker->font();
    larger.setPointSize(larger.pointSize() * 3);
    picker->setFont(larger);
    picker->updateTypesCombo();
    QVERIFY(symbolBox(*picker).minimumWidth() > fitted);
}

void AddressPickerRefillTest::symbolsAreInOrder_data()
{
    QTest::addColumn<QStringList>("symbols");
    QTest::newRow("backwards") << QStringList({"Z", "Y", "X", "W", "D"});
    QTest::newRow("small letters behind") << QStringList({"d", "D", "a", "A"});
    QTest::newRow("doubled") << QStringList({"W", "D", "W", "D"});
    QTest::newRow("one") << QStringList("D");
    QTest::newRow("none") << QStringList();
    QStringList many;
    for (int number = 0; number < 2000; ++number)
        many.append(QString("DB%1.DBW").arg((number * 7919) % 2000));
    QTest::newRow("many") << many;
}

void AddressPickerRefillTest::symbolsAreInOrder()
{
    QFETCH(QStringList, symbols);
    m_label.registerSymbols = symbols;
    const auto picker = makePicker(m_label);
    symbols.sort();
    for (int round = 0; round < 3; ++round) {
        QCOMPARE(textsOf(symbolBox(*picker)), symbols);
        picker->updateTypesCombo();
    }
}

void AddressPickerRefillTest::aSymbolAddedLaterStaysWhereItIs()
{
    const auto picker = makePicker(m_label);
    symbolBox(*picker).addItem("A");
    QCOMPARE(textsOf(symbolBox(*picker)), QStringList({"D", "W", "X", "A"}));
    picker->updateTypesCombo();
    QCOMPARE(textsOf(symbolBox(*picker)), QStringList({"D", "W", "X"}));
}

QTEST_MAIN(AddressPickerRefillTest)
#include "tst_addresspicker_refill.moc"
