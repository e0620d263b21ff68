// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/formshape.h"
#include "support/labelfixtures.h"
#include "support/pickerfixtures.h"

#include "zelmar_label/label_table/labelloader.h"
#include "zelmar_label/widgets/addresspicker.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMetaObject>
#include <QtTest>

namespace {

/// A device with words and bits of words under one symbol, and a relay.
label::CommandInformationTalbe deviceTable()
{
    Row word;
    Row bit;
    bit.pattern = QStringLiteral("(D)(\\d+\\.[0-9a-f])");
    bit.type = 0;
    bit.description = QStringLiteral("D: bit of a data register");
    bit.multipleRule = QStringLiteral("dot-f:n");
    Row relay;
    relay.pattern = QStringLiteral("(M)(\\d+)");
    relay.type = 0;
    relay.description = QStringLiteral("M: relay");
    relay.prefixSymbol = QStringLiteral("M");
    relay.multipleRule = QStringLiteral("union-dec:n");
    Row link;
    link.pattern = QStringLiteral("(W)([0-9a-f]+)");
    link.description = QStringLiteral("W: link register");
    link.prefixSymbol = QStringLiteral("W");
    link.end = QStringLiteral("ff");
    link.base = 16;
    label::CommandInformationTalbe table;
    for (const Row &row : {word, bit, relay, link})
        table.addCommandFormatter(row.formatter());
    return table;
}

} // namespace

/// Tests which calls the picker makes to a label, and what it shows of the answers.
class AddressPickerLabelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void questionsOfTheShortConstructor();
    void questionsOfTheLongConstructor();
    void questionsOfRefilling_data();
    void questionsOfRefilling();
    void questionsOfADataType_data();
    void questionsOfADataType();
    void aDataTypeOutsideTheListIsNoType();
    void questionsOfAKey();
    void questionsOfASymbol_data();
    void questionsOfASymbol();
    void questionsOfAStation();
    void questionsOfARange();
    void questionsOfValidity();
    void theBitTypeAloneIsNoQuestion();
    void questionsOfTheSlotsBehindTheFields();
    void aNewLabelIsAskedInsteadOfTheOld();

    void theListKeepsTheOrderAndLeavesOutEmptyFormats();
    void aStationDoesNotMatterToTheList();
    void formatsOfADevice_data();
    void formatsOfADevice();
    void aDeviceIsPickedByKeys();

private:
    FakeLabel m_label;
};

void AddressPickerLabelTest::init()
{
    m_label = deviceLabel();
}

void AddressPickerLabelTest::questionsOfTheShortConstructor()
{
    const AddressPicker picker(&m_label, nullptr);
    QCOMPARE(m_label.take(), texts({"registerPrefixSymbols()", "getAllMatchedSymbol(D, 0)", "getFormatString(2)",
                                    "getFormatString(1)", "getFormatString(0)"}));
}

void AddressPickerLabelTest::questionsOfTheLongConstructor()
{
    PickerArguments arguments;
    arguments.deviceIndex = 2;
    arguments.range = QStringLiteral("1");
    arguments.stationId = QStringLiteral("3");
    arguments.length = 4;
    const auto picker = makePicker(m_label, arguments);
    QCOMPARE(m_label.take(), texts({"registerPrefixSymbols()", "registerPrefixSymbols()", "registerPrefixSymbols()",
                                    "addressValidation(X1, -1)", "getAllMatchedIndex(X1, 3)", "getFormatString(3)"}));
}

void AddressPickerLabelTest::questionsOfRefilling_data()
{
    QTest::addColumn<int>("dataType");
    QTest::addColumn<QStringList>("questions");
    QTest::newRow("a register") << 5
                                << texts({"registerPrefixSymbols()", "registerPrefixSymbols()",
                                          "registerPrefixSymbols()", "addressValidation(D1, -1)",
                                          "registerPrefixSymbols()", "getAllMatchedIndex(D1, 5)", "getFormatString(0)",
                                          "getFormatString(1)"});
    QTest::newRow("a bit, which the new list starts with")
        << 0
        << texts({"registerPrefixSymbols()", "bitPrefixSymbols()", "addressValidation(M1, -1)", "bitPrefixSymbols()",
                  "getAllMatchedSymbol(M, 0)"});
}

void AddressPickerLabelTest::questionsOfRefilling()
{
    QFETCH(int, dataType);
    QFETCH(QStringList, questions);
    const auto picker = makePicker(m_label);
    FakeLabel other = deviceLabel();
    PickerArguments arguments;
    arguments.dataType = dataType;
    arguments.range = QStringLiteral("1");
    arguments.stationId = QStringLiteral("3");
    m_label.take();
    refillPicker(*picker, other, arguments);
    QCOMPARE(other.take(), questions);
    QCOMPARE(m_label.take(), QStringList());
}

void AddressPickerLabelTest::questionsOfADataType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QStringList>("questions");
    const QStringList once =
        texts({"registerPrefixSymbols()", "getAllMatchedIndex(D1, 3)", "getFormatString(0)", "getFormatString(1)"});
    QTest::newRow("the one that it is") << 3 << once;
    const QStringList other =
        texts({"registerPrefixSymbols()", "getAllMatchedIndex(D1, 8)", "getFormatString(0)", "getFormatString(1)"});
    QTest::newRow("another, asked once by the box and once by the call") << 8 << other + other;
    const QStringList bits = texts({"bitPrefixSymbols()", "getAllMatchedIndex(M1, 0)"});
    QTest::newRow("the bit") << 0 << bits + bits;
}

void AddressPickerLabelTest::questionsOfADataType()
{
    QFETCH(int, type);
    QFETCH(QStringList, questions);
    PickerArguments arguments;
    arguments.range = QStringLiteral("1");
    const auto picker = makePicker(m_label, arguments);
    m_label.take();
    picker->setDataType(type);
    QCOMPARE(m_label.take(), questions);
}

void AddressPickerLabelTest::aDataTypeOutsideTheListIsNoType()
{
    const auto picker = makePicker(m_label);
    picker->setDataType(99);
    m_label.take();
    picker->updateTypesCombo();
    QCOMPARE(m_label.take(QStringLiteral("getAllMatchedSymbol")), texts({"getAllMatchedSymbol(D, -1)"}));
}

void AddressPickerLabelTest::questionsOfAKey()
{
    const auto picker = makePicker(m_label);
    QVERIFY(showActive(*picker));
    m_label.take();
    QTest::keyClicks(&rangeEdit(*picker), QStringLiteral("12"));
    QCOMPARE(m_label.take(), texts({"getAllMatchedIndex(D1, 3)", "getFormatString(0)", "getFormatString(1)",
                                    "getAllMatchedIndex(D12, 3)"}));
}

void AddressPickerLabelTest::questionsOfASymbol_data()
{
    QTest::addColumn<QString>("range");
    QTest::addColumn<QStringList>("questions");
    QTest::newRow("without a range") << QString() << texts({"getAllMatchedSymbol(X, 3)", "getFormatString(3)"});
    const QStringList once = texts({"getAllMatchedIndex(X1, 3)", "getFormatString(3)"});
    QTest::newRow("with a range, for the symbol and for the address") << QStringLiteral("1") << once + once;
}

void AddressPickerLabelTest::questionsOfASymbol()
{
    QFETCH(QString, range);
    QFETCH(QStringList, questions);
    PickerArguments arguments;
    arguments.range = range;
    const auto picker = makePicker(m_label, arguments);
    m_label.take();
    picker->setDeviceIndex(2);
    QCOMPARE(m_label.take(), questions);
    picker->setDeviceIndex(2);
    QCOMPARE(m_label.take(), QStringList());
}

void AddressPickerLabelTest::questionsOfAStation()
{
    PickerArguments arguments;
    arguments.range = QStringLiteral("1");
    const auto picker = makePicker(m_label, arguments);
    m_label.take();
    picker->setStationId(QStringLiteral("3"));
    QCOMPARE(m_label.take(), texts({"getAllMatchedIndex(D1, 3)", "getFormatString(0)", "getFormatString(1)"}));
}

void AddressPickerLabelTest::questionsOfARange()
{
    const auto picker = makePicker(m_label);
    m_label.take();
    picker->setRange(QStringLiteral("7"));
    QCOMPARE(m_label.take(), texts({"getAllMatchedIndex(D7, 3)", "addressValidation(D7, -1)"}));
}

void AddressPickerLabelTest::questionsOfValidity()
{
    const auto picker = makePicker(m_label);
    m_label.take();
    picker->isAddressValid();
    picker->isAddressValid(QStringLiteral("5-D7"));
    QCOMPARE(m_label.take(), texts({"addressValidation(D, -1)", "addressValidation(5-D7, -1)"}));
}

void AddressPickerLabelTest::theBitTypeAloneIsNoQuestion()
{
    const auto picker = makePicker(m_label);
    m_label.take();
    picker->setBitTypeIndex(3);
    picker->setDataTypeList(texts({"one"}));
    picker->setLength(3);
    picker->setAvailableStationNumbers({1});
    QCOMPARE(m_label.take(), QStringList());
}

void AddressPickerLabelTest::questionsOfTheSlotsBehindTheFields()
{
    PickerArguments arguments;
    arguments.range = QStringLiteral("1");
    const auto picker = makePicker(m_label, arguments);
    PickerSignals given(*picker);
    m_label.take();
    const QStringList list = texts({"getAllMatchedIndex(D1, 3)", "getFormatString(0)", "getFormatString(1)"});
    QVERIFY(QMetaObject::invokeMethod(picker.get(), "deviceComboBoxSelectChanged", Q_ARG(int, 2)));
    QCOMPARE(m_label.take(), list);
    QCOMPARE(given.take(), QStringList());
    QVERIFY(QMetaObject::invokeMethod(picker.get(), "rangeEditChanged"));
    QCOMPARE(m_label.take(), list);
    QCOMPARE(given.take(), texts({"addressChanged D1"}));
    QVERIFY(QMetaObject::invokeMethod(picker.get(), "validationAddress"));
    QCOMPARE(m_label.take(), texts({"addressValidation(D1, -1)"}));
    QCOMPARE(given.take(), QStringList());
}

void AddressPickerLabelTest::aNewLabelIsAskedInsteadOfTheOld()
{
    const auto picker = makePicker(m_label);
    FakeLabel other = deviceLabel();
    other.registerSymbols = texts({"Z", "D"});
    m_label.take();
    picker->setLabel(&other);
    rangeEdit(*picker).setText(QStringLiteral("1"));
    picker->isAddressValid();
    QCOMPARE(m_label.take(), QStringList());
    QCOMPARE(other.take(), texts({"registerPrefixSymbols()", "getAllMatchedSymbol(D, 3)", "getFormatString(2)",
                                  "getFormatString(1)", "getFormatString(0)", "getAllMatchedIndex(D1, 3)",
                                  "getFormatString(0)", "getFormatString(1)", "addressValidation(D1, -1)"}));
}

void AddressPickerLabelTest::theListKeepsTheOrderAndLeavesOutEmptyFormats()
{
    m_label.formats = texts({"zero", "one", "", "three"});
    m_label.rowsOfSymbol.insert(QStringLiteral("D"), {3, 2, 0, 3, 1});
    m_label.rowsOfSymbol.insert(QStringLiteral("W"), {2});
    const auto picker = makePicker(m_label);
    QCOMPARE(formatsOf(*picker), texts({"three", "zero", "three", "one"}));
    picker->setDeviceIndex(1);
    QCOMPARE(formatsOf(*picker), QStringList());
    picker->setDeviceIndex(-1);
    QCOMPARE(formatsOf(*picker), texts({"No matched type!"}));
}

void AddressPickerLabelTest::aStationDoesNotMatterToTheList()
{
    PickerArguments arguments;
    arguments.range = QStringLiteral("1");
    arguments.stationId = QStringLiteral("12");
    const auto picker = makePicker(m_label, arguments);
    QCOMPARE(picker->addressWithStationId(), QStringLiteral("12-D1"));
    QCOMPARE(formatsOf(*picker), texts({"D: data register"}));
}

void AddressPickerLabelTest::formatsOfADevice_data()
{
    QTest::addColumn<int>("dataType");
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QStringList>("formats");
    const QStringList none = texts({"No matched type!"});
    QTest::newRow("a word symbol") << 3 << QStringLiteral("D") << QString() << texts({"D: data register"});
    QTest::newRow("a bit symbol") << 0 << QStringLiteral("D") << QString() << texts({"D: bit of a data register"});
    QTest::newRow("a word") << 3 << QStringLiteral("D") << QStringLiteral("12") << texts({"D: data register"});
    QTest::newRow("a word may become a bit")
        << 0 << QStringLiteral("D") << QStringLiteral("12") << texts({"D: bit of a data register"});
    QTest::newRow("a bit is no word") << 3 << QStringLiteral("D") << QStringLiteral("12.") << none;
    QTest::newRow("a digit beyond the radix") << 3 << QStringLiteral("W") << QStringLiteral("1g") << none;
    QTest::newRow("a hexadecimal digit") << 3 << QStringLiteral("W") << QStringLiteral("1f")
                                         << texts({"W: link register"});
}

void AddressPickerLabelTest::formatsOfADevice()
{
    QFETCH(int, dataType);
    QFETCH(QString, symbol);
    QFETCH(QString, keys);
    QFETCH(QStringList, formats);
    label::LabelLoader device(deviceTable());
    PickerArguments arguments;
    arguments.dataType = dataType;
    const auto picker = makePicker(device, arguments);
    QVERIFY(showActive(*picker));
    symbolBox(*picker).setCurrentText(symbol);
    QTest::keyClicks(&rangeEdit(*picker), keys);
    QCOMPARE(formatsOf(*picker), formats);
}

void AddressPickerLabelTest::aDeviceIsPickedByKeys()
{
    label::LabelLoader device(deviceTable());
    const auto picker = makePicker(device);
    QVERIFY(showActive(*picker));
    QTest::keyClick(&dataTypeBox(*picker), Qt::Key_Home);
    QTest::keyClick(&stationBox(*picker), Qt::Key_End);
    QCOMPARE(textsOf(symbolBox(*picker)), texts({"D", "M"}));
    QTest::keyClicks(&symbolBox(*picker), QStringLiteral("M"));
    QTest::keyClicks(&rangeEdit(*picker), QStringLiteral("100"));
    QCOMPARE(picker->addressWithStationId(), QStringLiteral("12-M100"));
    QVERIFY(picker->isAddressValid());
    QTest::keyClicks(&rangeEdit(*picker), QStringLiteral("00"));
    QVERIFY(!picker->isAddressValid());
    QTest::keyClick(&dataTypeBox(*picker), Qt::Key_Down);
    QCOMPARE(textsOf(symbolBox(*picker)), texts({"D", "W"}));
    picker->setRange(QStringLiteral("9999"));
    QCOMPARE(picker->addressWithStationId(), QStringLiteral("12-D9999"));
    picker->setRange(QStringLiteral("10000"));
    QCOMPARE(picker->addressWithStationId(), QStringLiteral("12-D"));
}

QTEST_MAIN(AddressPickerLabelTest)
#include "tst_addresspicker_label.moc"
