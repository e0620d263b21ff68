// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/formshape.h"
#include "support/pickerfixtures.h"

#include "zelmar_label/widgets/addresspicker.h"

#include <QComboBox>
#include <QFontMetrics>
#include <QLabel>
#include <QLineEdit>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QtTest>

#include <climits>
#include <memory>

namespace {

constexpr int ascii = 8;

} // namespace

class AddressPickerFieldsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void lengthShowsForOneDataTypeOnly_data();
    void lengthShowsForOneDataTypeOnly();
    void symbolsAreSortedByCharacter();
    void symbolsStayCompleteAndSortedOverRefills();
    void theSortingModelIsMadeOnce();
    void theSymbolBoxIsAsWideAsItsSymbols_data();
    void theSymbolBoxIsAsWideAsItsSymbols();
    void theChosenSymbolIsKept_data();
    void theChosenSymbolIsKept();
    void theBitTypeTakesEffectWithTheNextRefill();
    void aDeviceIndexIsAPositionInTheSortedList_data();
    void aDeviceIndexIsAPositionInTheSortedList();
    void noDeviceWithoutADataTypeEmptiesTheSymbols();
    void aRangeThatMakesNoValidAddressIsCleared_data();
    void aRangeThatMakesNoValidAddressIsCleared();
    void lengthsAboveNoneAreWritten_data();
    void lengthsAboveNoneAreWritten();
    void lengthIsReadFromItsField();
    void aStationIsChosenByItsExactText_data();
    void aStationIsChosenByItsExactText();
    void stationsStandInTheOrderGiven();
    void newStationsLeaveNoneChosen();
    void dataTypesAreReplaced();
    void anAddressIsPrecededByItsStation_data();
    void anAddressIsPrecededByItsStation();
    void validityIsAskedOfTheLabel();
    void rowsOfATableAreKept();
    void signalsAreBlockedTogether();

private:
    FakeLabel m_label;
};

void AddressPickerFieldsTest::init()
{
    m_label = deviceLabel();
}

void AddressPickerFieldsTest::lengthShowsForOneDataTypeOnly_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("isHidden");
    for (int type = 0; type < 12; ++type)
        QTest::addRow("%s", qPrintable(tagDataTypes().at(type))) << type << (type != ascii);
    QTest::newRow("none") << -1 << true;
    QTest::newRow("one behind the list") << 12 << true;
}

void AddressPickerFieldsTest::lengthShowsForOneDataTypeOnly()
{
    QFETCH(int, type);
    QFETCH(bool, isHidden);
    PickerArguments arguments;
    arguments.dataType = type == ascii ? 3 : ascii;
    const auto picker = makePicker(m_label, arguments);
    QCOMPARE(lengthEdit(*picker).isHidden(), !isHidden);
    picker->setDataType(type);
    QCOMPARE(lengthEdit(*picker).isHidden(), isHidden);
    QCOMPARE(child<QLabel>(*picker, QStringLiteral("lab_length")).isHidden(), isHidden);
    arguments.dataType = type;
    QCOMPARE(lengthEdit(*makePicker(m_label, arguments)).isHidden(), isHidden);
}

void AddressPickerFieldsTest::symbolsAreSortedByCharacter()
{
    m_label.registerSymbols = texts({"m", "M2", "Z", "M10", "D", "%MW"});
    const AddressPicker picker(&m_label, nullptr);
    QCOMPARE(textsOf(symbolBox(picker)), texts({"%MW", "D", "M10", "M2", "Z", "m"}));
    QCOMPARE(symbolBox(picker).currentText(), QStringLiteral("%MW"));
}

void AddressPickerFieldsTest::symbolsStayCompleteAndSortedOverRefills()
{
    const QStringList sorted = texts({"A", "B", "C", "D", "E", "F", "G"});
    m_label.registerSymbols = texts({"C", "G", "A", "E", "B", "F", "D"});
    m_label.bitSymbols = texts({"Y", "M", "X"});
    const auto picker = makePicker(m_label);
    QCOMPARE(textsOf(symbolBox(*picker)), sorted);
    picker->updateTypesCombo();
    QCOMPARE(textsOf(symbolBox(*picker)), sorted);
    picker->setDataType(0);
    QCOMPARE(textsOf(symbolBox(*picker)), texts({"M", "X", "Y"}));
    picker->setDataType(3);
    QCOMPARE(textsOf(symbolBox(*picker)), sorted);
    m_label.registerSymbols = texts({"G", "F", "E", "D", "C", "B", "A"});
    picker->setLabel(&m_label);
    QCOMPARE(textsOf(symbolBox(*picker)), sorted);
    refillPicker(*picker, m_label, {});
    QCOMPARE(textsOf(symbolBox(*picker)), sorted);
}

void AddressPickerFieldsTest::theSortingModelIsMadeOnce()
{
    const auto picker = makePicker(m_label);
    QComboBox &box = symbolBox(*picker);
    const auto *const proxy = qobject_cast<const QSortFilterProxyModel *>(box.model());
    QVERIFY(proxy != nullptr);
    QCOMPARE(proxy->parent(), &box);
    QVERIFY(qobject_cast<QStandardItemModel *>(proxy->sourceModel()) != nullptr);
    QCOMPARE(proxy->sourceModel()->parent(), proxy);
    QCOMPARE(proxy->sortColumn(), 0);
    QCOMPARE(proxy->sortOrder(), Qt::AscendingOrder);
    QVERIFY(!proxy->dynamicSortFilter());
    picker->updateTypesCombo();
    picker->setDataType(0);
    QCOMPARE(box.model(), proxy);
    QCOMPARE(box.findChildren<QSortFilterProxyModel *>().size(), 1);
}

void AddressPickerFieldsTest::theSymbolBoxIsAsWideAsItsSymbols_data()
{
    QTest::addColumn<QStringList>("symbols");
    QTest::addColumn<QString>("widest");
    QTest::newRow("no symbols") << QStringList() << QString();
    QTest::newRow("one") << texts({"D"}) << QStringLiteral("D");
    QTest::newRow("the first is the widest") << texts({"DATABLOCK", "D"}) << QStringLiteral("DATABLOCK");
    QTest::newRow("the last is the widest")
        << texts({"D", "M", "DATABLOCKS WITH A LONG NAME"}) << QStringLiteral("DATABLOCKS WITH A LONG NAME");
}

void AddressPickerFieldsTest::theSymbolBoxIsAsWideAsItsSymbols()
{
    QFETCH(QStringList, symbols);
    QFETCH(QString, widest);
    m_label.registerSymbols = symbols;
    AddressPicker picker(&m_label, nullptr);
    for (const int pixels : {12, 40}) {
        QFont font;
        font.setPixelSize(pixels);
        picker.setFont(font);
        picker.updateTypesCombo();
        const QFontMetrics metrics(picker.font());
        QCOMPARE(symbolBox(picker).minimumWidth(),
                 metrics.horizontalAdvance(widest) + metrics.horizontalAdvance(QStringLiteral("abcd")));
    }
}

void AddressPickerFieldsTest::theChosenSymbolIsKept_data()
{
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QStringList>("offered");
    QTest::addColumn<QString>("kept");
    QTest::newRow("offered further behind") << QStringLiteral("X") << texts({"M", "X"}) << QStringLiteral("X");
    QTest::newRow("offered as the first") << QStringLiteral("D") << texts({"W", "D"}) << QStringLiteral("D");
    QTest::newRow("not offered any more") << QStringLiteral("W") << texts({"X", "M"}) << QStringLiteral("M");
    QTest::newRow("offered in other case only") << QStringLiteral("X") << texts({"A", "x"}) << QStringLiteral("A");
    QTest::newRow("offered as part of another") << QStringLiteral("X") << texts({"A", "XX"}) << QStringLiteral("A");
    QTest::newRow("nothing offered") << QStringLiteral("X") << QStringList() << QString();
}

void AddressPickerFieldsTest::theChosenSymbolIsKept()
{
    QFETCH(QString, chosen);
    QFETCH(QStringList, offered);
    QFETCH(QString, kept);
    const auto picker = makePicker(m_label);
    QComboBox &box = symbolBox(*picker);
    box.setCurrentIndex(box.findText(chosen));
    QCOMPARE(box.currentText(), chosen);
    m_label.bitSymbols = offered;
    picker->setDataType(0);
    QCOMPARE(box.currentText(), kept);
    QCOMPARE(box.currentIndex(), offered.isEmpty() ? -1 : box.findText(kept));
}

void AddressPickerFieldsTest::theBitTypeTakesEffectWithTheNextRefill()
{
    const auto picker = makePicker(m_label);
    picker->setBitTypeIndex(3);
    QCOMPARE(textsOf(symbolBox(*picker)), texts({"D", "W", "X"}));
    picker->updateTypesCombo();
    QCOMPARE(textsOf(symbolBox(*picker)), texts({"M", "X"}));
}

void AddressPickerFieldsTest::aDeviceIndexIsAPositionInTheSortedList_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("symbol");
    QTest::newRow("the first") << 0 << QStringLiteral("D");
    QTest::newRow("the last") << 2 << QStringLiteral("X");
    QTest::newRow("none") << -1 << QString();
    QTest::newRow("behind the last") << 3 << QString();
    QTest::newRow("far out") << INT_MAX << QString();
    QTest::newRow("negative") << INT_MIN << QString();
}

void AddressPickerFieldsTest::aDeviceIndexIsAPositionInTheSortedList()
{
    QFETCH(int, index);
    QFETCH(QString, symbol);
    const auto picker = makePicker(m_label);
    symbolBox(*picker).setCurrentIndex(1);
    picker->setDeviceIndex(index);
    QCOMPARE(symbolBox(*picker).currentText(), symbol);
    QCOMPARE(textsOf(symbolBox(*picker)), texts({"D", "W", "X"}));
}

void AddressPickerFieldsTest::noDeviceWithoutADataTypeEmptiesTheSymbols()
{
    AddressPicker picker(&m_label, nullptr);
    picker.setDeviceIndex(2);
    QCOMPARE(textsOf(symbolBox(picker)), texts({"D", "W", "X"}));
    picker.setDeviceIndex(-1);
    QCOMPARE(textsOf(symbolBox(picker)), QStringList());
    picker.updateTypesCombo();
    QCOMPARE(textsOf(symbolBox(picker)), texts({"D", "W", "X"}));
}

void AddressPickerFieldsTest::aRangeThatMakesNoValidAddressIsCleared_data()
{
    QTest::addColumn<QString>("range");
    QTest::addColumn<QString>("kept");
    QTest::newRow("valid behind the symbol") << QStringLiteral("1") << QStringLiteral("1");
    QTest::newRow("not valid") << QStringLiteral("2") << QString();
    QTest::newRow("with its symbol") << QStringLiteral("D1") << QString();
    QTest::newRow("empty") << QString() << QString();
}

void AddressPickerFieldsTest::aRangeThatMakesNoValidAddressIsCleared()
{
    QFETCH(QString, range);
    QFETCH(QString, kept);
    PickerArguments arguments;
    arguments.range = QStringLiteral("1");
    const auto picker = makePicker(m_label, arguments);
    picker->setRange(range);
    QCOMPARE(rangeEdit(*picker).text(), kept);
    arguments.range = range;
    QCOMPARE(rangeEdit(*makePicker(m_label, arguments)).text(), kept);
}

void AddressPickerFieldsTest::lengthsAboveNoneAreWritten_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("read");
    QTest::newRow("one") << 1 << 1;
    QTest::newRow("above what can be typed") << 1000 << 1000;
    QTest::newRow("the greatest") << INT_MAX << INT_MAX;
    QTest::newRow("none") << 0 << 7;
    QTest::newRow("negative") << -1 << 7;
}

void AddressPickerFieldsTest::lengthsAboveNoneAreWritten()
{
    QFETCH(int, length);
    QFETCH(int, read);
    PickerArguments arguments;
    arguments.length = 7;
    const auto picker = makePicker(m_label, arguments);
    picker->setLength(length);
    QCOMPARE(lengthEdit(*picker).text(), QString::number(read));
    QCOMPARE(picker->length(), read);
}

void AddressPickerFieldsTest::lengthIsReadFromItsField()
{
    PickerArguments arguments;
    arguments.length = 7;
    const auto picker = makePicker(m_label, arguments);
    lengthEdit(*picker).setText(QStringLiteral("31"));
    QCOMPARE(picker->length(), 31);
    lengthEdit(*picker).clear();
    QCOMPARE(picker->length(), 0);
}

void AddressPickerFieldsTest::aStationIsChosenByItsExactText_data()
{
    QTest::addColumn<QString>("station");
    QTest::addColumn<QString>("chosen");
    QTest::newRow("offered") << QStringLiteral("12") << QStringLiteral("12");
    QTest::newRow("empty is ignored") << QString() << QStringLiteral("3");
    QTest::newRow("not offered") << QStringLiteral("2") << QString();
    QTest::newRow("with a leading zero") << QStringLiteral("012") << QString();
}

void AddressPickerFieldsTest::aStationIsChosenByItsExactText()
{
    QFETCH(QString, station);
    QFETCH(QString, chosen);
    PickerArguments arguments;
    arguments.stationId = QStringLiteral("3");
    const auto picker = makePicker(m_label, arguments);
    QCOMPARE(picker->stationId(), QStringLiteral("3"));
    picker->setStationId(station);
    QCOMPARE(picker->stationId(), chosen);
    QCOMPARE(stationBox(*picker).currentIndex(), chosen.isEmpty() ? -1 : stationBox(*picker).findText(chosen));
}

void AddressPickerFieldsTest::stationsStandInTheOrderGiven()
{
    const auto picker = makePicker(m_label);
    picker->setAvailableStationNumbers({9, -1, 9, 255, 0});
    const QComboBox &box = stationBox(*picker);
    QCOMPARE(textsOf(box), texts({"", "9", "-1", "9", "255", "0"}));
    for (int i = 0; i < box.count(); ++i) {
        QVERIFY(!box.itemData(i).isValid());
        QVERIFY(box.itemIcon(i).isNull());
    }
}

void AddressPickerFieldsTest::newStationsLeaveNoneChosen()
{
    PickerArguments arguments;
    arguments.stationId = QStringLiteral("3");
    const auto picker = makePicker(m_label, arguments);
    picker->setAvailableStationNumbers({3, 4});
    QCOMPARE(stationBox(*picker).currentIndex(), 0);
    QCOMPARE(picker->stationId(), QString());
    picker->setAvailableStationNumbers({});
    QCOMPARE(textsOf(stationBox(*picker)), texts({""}));
}

void AddressPickerFieldsTest::dataTypesAreReplaced()
{
    const auto picker = makePicker(m_label);
    picker->setDataTypeList(texts({"one", "two"}));
    QCOMPARE(textsOf(dataTypeBox(*picker)), texts({"one", "two"}));
    picker->setDataTypeList({});
    QCOMPARE(textsOf(dataTypeBox(*picker)), QStringList());
}

void AddressPickerFieldsTest::anAddressIsPrecededByItsStation_data()
{
    QTest::addColumn<QString>("station");
    QTest::addColumn<QString>("address");
    QTest::newRow("no station") << QString() << QStringLiteral("D100");
    QTest::newRow("station 3") << QStringLiteral("3") << QStringLiteral("3-D100");
}

void AddressPickerFieldsTest::anAddressIsPrecededByItsStation()
{
    QFETCH(QString, station);
    QFETCH(QString, address);
    m_label.validRows.insert(QStringLiteral("D100"), 0);
    PickerArguments arguments;
    arguments.stationId = station;
    arguments.range = QStringLiteral("100");
    const auto picker = makePicker(m_label, arguments);
    QCOMPARE(picker->address(), QStringLiteral("D100"));
    QCOMPARE(picker->stationId(), station);
    QCOMPARE(picker->addressWithStationId(), address);
}

void AddressPickerFieldsTest::validityIsAskedOfTheLabel()
{
    PickerArguments arguments;
    arguments.range = QStringLiteral("1");
    const auto picker = makePicker(m_label, arguments);
    QVERIFY(picker->isAddressValid());
    QVERIFY(picker->isAddressValid(QStringLiteral("X1")));
    QVERIFY(!picker->isAddressValid(QStringLiteral("X2")));
    QVERIFY(!picker->isAddressValid(QString()));
    rangeEdit(*picker).setText(QStringLiteral("2"));
    QVERIFY(!picker->isAddressValid());
}

void AddressPickerFieldsTest::rowsOfATableAreKept()
{
    AddressPicker picker(&m_label, nullptr);
    picker.setTagTableCurrentRow({5, 2, 5});
    QCOMPARE(picker.tagTableCurrentRows(), (QList<int>{5, 2, 5}));
    picker.setTagTableCurrentRow({});
    QCOMPARE(picker.tagTableCurrentRows(), QList<int>());
}

void AddressPickerFieldsTest::signalsAreBlockedTogether()
{
    AddressPicker picker(&m_label, nullptr);
    for (const bool blocked : {true, false}) {
        picker.setChildrenBlockSignals(blocked);
        QCOMPARE(picker.signalsBlocked(), blocked);
        QCOMPARE(dataTypeBox(picker).signalsBlocked(), blocked);
        QCOMPARE(rangeEdit(picker).signalsBlocked(), blocked);
        QCOMPARE(symbolBox(picker).signalsBlocked(), blocked);
        QCOMPARE(stationBox(picker).signalsBlocked(), blocked);
        QVERIFY(!lengthEdit(picker).signalsBlocked());
    }
}

QTEST_MAIN(AddressPickerFieldsTest)
#include "tst_addresspicker_fields.moc"
