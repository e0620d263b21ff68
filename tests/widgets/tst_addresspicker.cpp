// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/formshape.h"
#include "support/pickerfixtures.h"

#include "zelmar_label/widgets/addresspicker.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QFrame>
#include <QGroupBox>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QtTest>

#include <memory>

namespace {

constexpr int ascii = 8;

} // namespace

class AddressPickerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void layoutsHoldTheirEntriesInOrder_data();
    void layoutsHoldTheirEntriesInOrder();
    void objectsAreMadeInOrder_data();
    void objectsAreMadeInOrder();
    void layoutsBelongToTheirWidgets_data();
    void layoutsBelongToTheirWidgets();
    void labelsHaveTheirTexts_data();
    void labelsHaveTheirTexts();
    void theWidgetHasItsSizes();
    void fieldsHaveTheirSettings();
    void onlyTheListOfFormatsStretches();
    void textsAreTranslatedInTheContextOfTheClass();
    void theInterfaceStandsInOrder();
    void thereAreNoPropertiesAndNoClassInformation();
    void noSlotIsConnectedByItsName();

    void theShortConstructorGivesAnEmptyPicker();
    void theLongConstructorFillsThePicker();
    void theLongConstructorSelectsTheRange();
    void theLongConstructorLimitsTheLength_data();
    void theLongConstructorLimitsTheLength();
    void theShortConstructorDoesNotLimitTheLength();
    void refillingReplacesEverything();
    void refillingKeepsTheLengthWhenThereIsNone();
    void thePickerDoesNotOwnItsLabel();

private:
    FakeLabel m_label;
};

void AddressPickerTest::init()
{
    m_label = deviceLabel();
}

void AddressPickerTest::layoutsHoldTheirEntriesInOrder_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<QStringList>("entries");

    QTest::newRow("the widget") << QStringLiteral("verticalLayout")
                                << texts({"QGroupBox groupBox", "QHBoxLayout horizontalLayout", "QFrame ragneFrame"});
    QTest::newRow("data type, station and length")
        << QStringLiteral("horizontalLayout_2")
        << texts({"QLabel label_3", "QComboBox datatypeCombobox", "spacer 40x20 Expanding Minimum", "QLabel label_2",
                  "QComboBox stationNumbersCombo", "QLabel lab_length", "QLineEdit editLength"});
    QTest::newRow("symbol and range") << QStringLiteral("horizontalLayout")
                                      << texts({"QComboBox TypesComboBox", "QLineEdit RangeEditor"});
    QTest::newRow("matching formats") << QStringLiteral("verticalLayout_2")
                                      << texts({"QLabel label", "QListWidget formattingList"});
}

void AddressPickerTest::layoutsHoldTheirEntriesInOrder()
{
    QFETCH(QString, layout);
    QFETCH(QStringList, entries);
    const AddressPicker picker(&m_label, nullptr);
    QCOMPARE(entriesOf(child<QLayout>(picker, layout)), entries);
}

void AddressPickerTest::objectsAreMadeInOrder_data()
{
    QTest::addColumn<QString>("parent");
    QTest::addColumn<QStringList>("children");

    QTest::newRow("in the widget") << QString()
                                   << texts({"QVBoxLayout verticalLayout", "QGroupBox groupBox",
                                             "QComboBox TypesComboBox", "QLineEdit RangeEditor", "QFrame ragneFrame"});
    QTest::newRow("in the group") << QStringLiteral("groupBox")
                                  << texts({"QHBoxLayout horizontalLayout_2", "QLabel label_3",
                                            "QComboBox datatypeCombobox", "QLabel label_2",
                                            "QComboBox stationNumbersCombo", "QLabel lab_length",
                                            "QLineEdit editLength"});
    QTest::newRow("in the frame") << QStringLiteral("ragneFrame")
                                  << texts({"QVBoxLayout verticalLayout_2", "QLabel label",
                                            "QListWidget formattingList"});
}

void AddressPickerTest::objectsAreMadeInOrder()
{
    QFETCH(QString, parent);
    QFETCH(QStringList, children);
    const AddressPicker picker(&m_label, nullptr);
    const QObject &owner = parent.isEmpty() ? static_cast<const QObject &>(picker) : child<QObject>(picker, parent);
    QCOMPARE(namedChildren(owner), children);
}

void AddressPickerTest::layoutsBelongToTheirWidgets_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<QString>("parent");

    QTest::newRow("the widget's column") << QStringLiteral("verticalLayout") << QStringLiteral("AddressPicker");
    QTest::newRow("the group's row") << QStringLiteral("horizontalLayout_2") << QStringLiteral("groupBox");
    QTest::newRow("the address's row") << QStringLiteral("horizontalLayout") << QStringLiteral("verticalLayout");
    QTest::newRow("the frame's column") << QStringLiteral("verticalLayout_2") << QStringLiteral("ragneFrame");
}

void AddressPickerTest::layoutsBelongToTheirWidgets()
{
    QFETCH(QString, layout);
    QFETCH(QString, parent);
    const AddressPicker picker(&m_label, nullptr);
    QCOMPARE(child<QLayout>(picker, layout).parent()->objectName(), parent);
}

void AddressPickerTest::labelsHaveTheirTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("label_3") << QStringLiteral("Data Type");
    QTest::newRow("label_2") << QStringLiteral("Station Number");
    QTest::newRow("lab_length") << QStringLiteral("Length");
    QTest::newRow("label") << QStringLiteral("Matched Format:");
}

void AddressPickerTest::labelsHaveTheirTexts()
{
    QFETCH(QString, text);
    const AddressPicker picker(&m_label, nullptr);
    QCOMPARE(child<QLabel>(picker, QLatin1String(QTest::currentDataTag())).text(), text);
}

void AddressPickerTest::theWidgetHasItsSizes()
{
    const AddressPicker picker(&m_label, nullptr);
    QCOMPARE(picker.objectName(), QStringLiteral("AddressPicker"));
    QCOMPARE(picker.size(), QSize(315, 193));
    QCOMPARE(picker.minimumSize(), QSize(280, 140));
    QCOMPARE(picker.maximumSize(), QSize(16777215, 16777215));
    QCOMPARE(picker.windowTitle(), QStringLiteral("Form"));
}

void AddressPickerTest::fieldsHaveTheirSettings()
{
    const AddressPicker picker(&m_label, nullptr);
    QCOMPARE(child<QGroupBox>(picker, QStringLiteral("groupBox")).title(), QString());
    QCOMPARE(stationBox(picker).maxVisibleItems(), 2147483647);
    QCOMPARE(symbolBox(picker).minimumHeight(), 0);
    const QFrame &frame = child<QFrame>(picker, QStringLiteral("ragneFrame"));
    QCOMPARE(frame.frameShape(), QFrame::StyledPanel);
    QCOMPARE(frame.frameShadow(), QFrame::Raised);
}

void AddressPickerTest::onlyTheListOfFormatsStretches()
{
    const AddressPicker picker(&m_label, nullptr);
    const QVBoxLayout &column = child<QVBoxLayout>(picker, QStringLiteral("verticalLayout_2"));
    QCOMPARE(column.stretch(0), 0);
    QCOMPARE(column.stretch(1), 1);
}

void AddressPickerTest::textsAreTranslatedInTheContextOfTheClass()
{
    const BracketTranslator translator("AddressPicker");
    const AddressPicker picker(&m_label, nullptr);
    m_label.rowsOfSymbol.clear();
    QCOMPARE(picker.windowTitle(), QStringLiteral("<Form>"));
    QCOMPARE(child<QLabel>(picker, QStringLiteral("label_3")).text(), QStringLiteral("<Data Type>"));
    QCOMPARE(child<QLabel>(picker, QStringLiteral("label_2")).text(), QStringLiteral("<Station Number>"));
    QCOMPARE(child<QLabel>(picker, QStringLiteral("lab_length")).text(), QStringLiteral("<Length>"));
    QCOMPARE(child<QLabel>(picker, QStringLiteral("label")).text(), QStringLiteral("<Matched Format:>"));
    symbolBox(picker).setCurrentIndex(1);
    QCOMPARE(formatsOf(picker), texts({"<No matched type!>"}));
}

void AddressPickerTest::theInterfaceStandsInOrder()
{
    QCOMPARE(ownMethods(AddressPicker::staticMetaObject),
             texts({"signal dataTypeChanged(int newDataTypeIndex)", "signal dataTypeChangedToTagTable(int dataType)",
                    "signal addressChanged(QString address)", "signal lengthChanged(QString length)",
                    "public slot setDataType(int type)", "public slot setLength(int length)",
                    "public slot updateTypesCombo()", "public slot setLabel(label::LabelInterface* label)",
                    "public slot setStationId(QString stationId)", "public slot setDeviceIndex(int deviceIndex)",
                    "public slot setRange(QString range)", "public slot setDataTypeList(QStringList dataTypeList)",
                    "public slot setBitTypeIndex(int bitTypeIndex)",
                    "public slot setAvailableStationNumbers(QList<int> availableStationNumbers)",
                    "private slot deviceComboBoxSelectChanged(int index)", "private slot rangeEditChanged()",
                    "private slot validationAddress()"}));
}

void AddressPickerTest::thereAreNoPropertiesAndNoClassInformation()
{
    const QMetaObject &type = AddressPicker::staticMetaObject;
    QCOMPARE(type.className(), "AddressPicker");
    QCOMPARE(type.superClass(), &QWidget::staticMetaObject);
    QCOMPARE(type.propertyCount(), QWidget::staticMetaObject.propertyCount());
    QCOMPARE(type.classInfoCount(), QWidget::staticMetaObject.classInfoCount());
    QCOMPARE(type.enumeratorCount(), QWidget::staticMetaObject.enumeratorCount());
}

void AddressPickerTest::noSlotIsConnectedByItsName()
{
    QVERIFY(ownMethods(AddressPicker::staticMetaObject).filter(QStringLiteral(" on_")).isEmpty());
}

void AddressPickerTest::theShortConstructorGivesAnEmptyPicker()
{
    QWidget parent;
    AddressPicker picker(&m_label, &parent);
    QCOMPARE(picker.parentWidget(), &parent);
    QCOMPARE(textsOf(dataTypeBox(picker)), QStringList());
    QCOMPARE(textsOf(stationBox(picker)), QStringList());
    QCOMPARE(textsOf(symbolBox(picker)), texts({"D", "W", "X"}));
    QCOMPARE(rangeEdit(picker).text(), QString());
    QCOMPARE(lengthEdit(picker).text(), QString());
    QCOMPARE(lengthEdit(picker).validator(), nullptr);
    QCOMPARE(formatsOf(picker), texts({"D: data of a block", "D: data register"}));
    QCOMPARE(picker.address(), QStringLiteral("D"));
    QCOMPARE(picker.addressWithStationId(), QStringLiteral("D"));
    QCOMPARE(picker.stationId(), QString());
    QCOMPARE(picker.length(), 0);
    QCOMPARE(picker.tagTableCurrentRows(), QList<int>());
}

void AddressPickerTest::theLongConstructorFillsThePicker()
{
    PickerArguments arguments;
    arguments.dataType = ascii;
    arguments.stationId = QStringLiteral("12");
    arguments.deviceIndex = 2;
    arguments.range = QStringLiteral("1");
    arguments.length = 20;
    QWidget parent;
    AddressPicker picker(&m_label, arguments.dataType, arguments.stationId, arguments.deviceIndex, arguments.range,
                         arguments.dataTypeList, arguments.bitTypeIndex, arguments.stations, arguments.length, &parent);
    QCOMPARE(picker.parentWidget(), &parent);
    QCOMPARE(dataTypeBox(picker).currentText(), QStringLiteral("Ascii"));
    QCOMPARE(textsOf(dataTypeBox(picker)), tagDataTypes());
    QCOMPARE(textsOf(stationBox(picker)), texts({"", "1", "3", "12"}));
    QCOMPARE(picker.stationId(), QStringLiteral("12"));
    QCOMPARE(textsOf(symbolBox(picker)), texts({"D", "W", "X"}));
    QCOMPARE(picker.address(), QStringLiteral("X1"));
    QCOMPARE(picker.addressWithStationId(), QStringLiteral("12-X1"));
    QCOMPARE(picker.length(), 20);
    QCOMPARE(formatsOf(picker), texts({"X: inputs"}));
    QVERIFY(!lengthEdit(picker).isHidden());
}

void AddressPickerTest::theLongConstructorSelectsTheRange()
{
    PickerArguments arguments;
    arguments.range = QStringLiteral("1");
    const auto picker = makePicker(m_label, arguments);
    QCOMPARE(rangeEdit(*picker).selectedText(), QStringLiteral("1"));
}

void AddressPickerTest::theLongConstructorLimitsTheLength_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isAccepted");
    QTest::newRow("none") << QStringLiteral("0") << QStringLiteral("0") << false;
    QTest::newRow("the shortest") << QStringLiteral("1") << QStringLiteral("1") << true;
    QTest::newRow("the longest") << QStringLiteral("255") << QStringLiteral("255") << true;
    QTest::newRow("one above the longest") << QStringLiteral("256") << QStringLiteral("256") << false;
    QTest::newRow("four digits") << QStringLiteral("1000") << QStringLiteral("100") << true;
    QTest::newRow("negative") << QStringLiteral("-1") << QStringLiteral("1") << true;
    QTest::newRow("letters") << QStringLiteral("x7y") << QStringLiteral("7") << true;
}

void AddressPickerTest::theLongConstructorLimitsTheLength()
{
    QFETCH(QString, keys);
    QFETCH(QString, text);
    QFETCH(bool, isAccepted);
    PickerArguments arguments;
    arguments.dataType = ascii;
    const auto picker = makePicker(m_label, arguments);
    const auto *const validator = qobject_cast<const QIntValidator *>(lengthEdit(*picker).validator());
    QVERIFY(validator != nullptr);
    QCOMPARE(validator->bottom(), 1);
    QCOMPARE(validator->top(), 255);
    QVERIFY(showActive(*picker));
    QTest::keyClicks(&lengthEdit(*picker), keys);
    QCOMPARE(lengthEdit(*picker).text(), text);
    QCOMPARE(lengthEdit(*picker).hasAcceptableInput(), isAccepted);
    QCOMPARE(picker->length(), text.toInt());
}

void AddressPickerTest::theShortConstructorDoesNotLimitTheLength()
{
    AddressPicker picker(&m_label, nullptr);
    picker.setDataType(ascii);
    QVERIFY(showActive(picker));
    QTest::keyClicks(&lengthEdit(picker), QStringLiteral("1000 x"));
    QCOMPARE(lengthEdit(picker).text(), QStringLiteral("1000 x"));
    QCOMPARE(picker.length(), 0);
}

void AddressPickerTest::refillingReplacesEverything()
{
    const auto picker = makePicker(m_label);
    FakeLabel other = deviceLabel();
    other.registerSymbols = texts({"R", "D"});
    other.validRows.insert(QStringLiteral("R1"), 0);
    PickerArguments arguments;
    arguments.dataType = ascii;
    arguments.stationId = QStringLiteral("7");
    arguments.deviceIndex = 1;
    arguments.range = QStringLiteral("1");
    arguments.stations = {7};
    arguments.length = 9;
    arguments.dataTypeList = tagDataTypes().mid(0, 9);
    refillPicker(*picker, other, arguments);
    QCOMPARE(textsOf(dataTypeBox(*picker)), tagDataTypes().mid(0, 9));
    QCOMPARE(dataTypeBox(*picker).currentIndex(), ascii);
    QCOMPARE(textsOf(symbolBox(*picker)), texts({"D", "R"}));
    QCOMPARE(textsOf(stationBox(*picker)), texts({"", "7"}));
    QCOMPARE(picker->addressWithStationId(), QStringLiteral("7-R1"));
    QCOMPARE(picker->length(), 9);
    QVERIFY(!lengthEdit(*picker).isHidden());
    QVERIFY(!picker->signalsBlocked());
}

void AddressPickerTest::refillingKeepsTheLengthWhenThereIsNone()
{
    PickerArguments arguments;
    arguments.length = 9;
    const auto picker = makePicker(m_label, arguments);
    arguments.length = 0;
    refillPicker(*picker, m_label, arguments);
    QCOMPARE(picker->length(), 9);
}

void AddressPickerTest::thePickerDoesNotOwnItsLabel()
{
    auto picker = makePicker(m_label);
    picker.reset();
    QCOMPARE(m_label.addressValidation(QStringLiteral("D1"), -1), 0);
}

QTEST_MAIN(AddressPickerTest)
#include "tst_addresspicker.moc"
