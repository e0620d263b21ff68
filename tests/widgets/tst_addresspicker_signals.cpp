// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/formshape.h"
#include "support/pickerfixtures.h"

#include "zelmar_label/widgets/addresspicker.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

namespace {

constexpr int ascii = 8;

/// Opens the box with a click and selects the entry with another.
void chooseWithMouse(QComboBox &box, int row)
{
    QTest::mouseClick(&box, Qt::LeftButton);
    QAbstractItemView &view = *box.view();
    QVERIFY(QTest::qWaitForWindowExposed(view.window()));
    // A release in the list counts only after the click that opened it has ended.
    QTest::qWait(3 * QApplication::doubleClickInterval());
    // An entry may be wider than its visible part.
    const QPoint entry = (view.visualRect(box.model()->index(row, 0)) & view.viewport()->rect()).center();
    QTest::mouseMove(view.viewport(), entry);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, entry);
    QTRY_VERIFY(!view.isVisible());
}

PickerArguments onRange(const char *range, const char *station = "")
{
    PickerArguments arguments;
    arguments.range = QLatin1String(range);
    arguments.stationId = QLatin1String(station);
    return arguments;
}

} // namespace

class AddressPickerSignalsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void aChosenDataTypeGivesEachSignalOnce();
    void aDataTypeChosenWithTheMouse();
    void aChosenDataTypeWithARange();
    void aDataTypeThatIsSet_data();
    void aDataTypeThatIsSet();
    void aDataTypeThatIsSetWithARange();
    void aDataTypeOutsideTheListChoosesNone();
    void aDataTypeWithoutAListIsTaken();
    void aListOfDataTypesGivesNoSignal();

    void typingGivesTheAddressAtEachKey();
    void typingReplacesTheSelectedRange();
    void aRangeThatIsWiped();
    void aChosenSymbol_data();
    void aChosenSymbol();
    void aSymbolChosenWithTheMouse();
    void aChosenStation_data();
    void aChosenStation();
    void newStationsGiveTheAddress_data();
    void newStationsGiveTheAddress();
    void newSymbolsGiveTheAddress_data();
    void newSymbolsGiveTheAddress();
    void aRangeThatIsSet_data();
    void aRangeThatIsSet();
    void theLengthAsItStands();
    void aLengthThatIsSet();
    void refillingGivesTheAddressOnce_data();
    void refillingGivesTheAddressOnce();
    void refillingGoesThroughTheFieldsInOrder();
    void blockedFieldsGiveNothing();

private:
    FakeLabel m_label;
};

void AddressPickerSignalsTest::initTestCase()
{
    QApplication::setDoubleClickInterval(5);
}

void AddressPickerSignalsTest::init()
{
    m_label = deviceLabel();
}

void AddressPickerSignalsTest::aChosenDataTypeGivesEachSignalOnce()
{
    const auto picker = makePicker(m_label);
    QVERIFY(showActive(*picker));
    PickerSignals given(*picker);
    QTest::keyClick(&dataTypeBox(*picker), Qt::Key_Down);
    QCOMPARE(given.take(), texts({"dataTypeChanged 4", "dataTypeChangedToTagTable 4"}));
    QTest::keyClick(&dataTypeBox(*picker), Qt::Key_Home);
    QCOMPARE(given.take(), texts({"dataTypeChanged 0", "dataTypeChangedToTagTable 0"}));
    QCOMPARE(textsOf(symbolBox(*picker)), texts({"M", "X"}));
}

void AddressPickerSignalsTest::aDataTypeChosenWithTheMouse()
{
    const auto picker = makePicker(m_label);
    QVERIFY(showActive(*picker));
    PickerSignals given(*picker);
    chooseWithMouse(dataTypeBox(*picker), ascii);
    QCOMPARE(given.take(), texts({"dataTypeChanged 8", "dataTypeChangedToTagTable 8"}));
    QVERIFY(lengthEdit(*picker).isVisible());
}

void AddressPickerSignalsTest::aChosenDataTypeWithARange()
{
    const auto picker = makePicker(m_label, onRange("1", "3"));
    QVERIFY(showActive(*picker));
    PickerSignals given(*picker);
    QTest::keyClick(&dataTypeBox(*picker), Qt::Key_Down);
    QCOMPARE(given.take(), texts({"addressChanged 3-D1", "dataTypeChanged 4", "dataTypeChangedToTagTable 4"}));
}

void AddressPickerSignalsTest::aDataTypeThatIsSet_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("the one that it is") << 3 << texts({"dataTypeChanged 3"});
    QTest::newRow("another") << 5 << texts({"dataTypeChanged 5", "dataTypeChangedToTagTable 5", "dataTypeChanged 5"});
    QTest::newRow("the bit") << 0 << texts({"dataTypeChanged 0", "dataTypeChangedToTagTable 0", "dataTypeChanged 0"});
    QTest::newRow("none") << -1 << texts({"dataTypeChanged -1", "dataTypeChangedToTagTable -1", "dataTypeChanged -1"});
}

void AddressPickerSignalsTest::aDataTypeThatIsSet()
{
    QFETCH(int, type);
    QFETCH(QStringList, lines);
    const auto picker = makePicker(m_label);
    PickerSignals given(*picker);
    picker->setDataType(type);
    QCOMPARE(given.take(), lines);
    QCOMPARE(dataTypeBox(*picker).currentIndex(), type);
}

void AddressPickerSignalsTest::aDataTypeThatIsSetWithARange()
{
    const auto picker = makePicker(m_label, onRange("1"));
    PickerSignals given(*picker);
    picker->setDataType(5);
    QCOMPARE(given.take(), texts({"addressChanged D1", "dataTypeChanged 5", "dataTypeChangedToTagTable 5",
                                  "addressChanged D1", "dataTypeChanged 5"}));
}

void AddressPickerSignalsTest::aDataTypeOutsideTheListChoosesNone()
{
    const auto picker = makePicker(m_label);
    PickerSignals given(*picker);
    picker->setDataType(99);
    QCOMPARE(given.take(), texts({"dataTypeChanged -1", "dataTypeChangedToTagTable -1", "dataTypeChanged 99"}));
    QCOMPARE(dataTypeBox(*picker).currentIndex(), -1);
    picker->setDataType(99);
    QCOMPARE(given.take(), texts({"dataTypeChanged 99"}));
}

void AddressPickerSignalsTest::aDataTypeWithoutAListIsTaken()
{
    AddressPicker picker(&m_label, nullptr);
    PickerSignals given(picker);
    picker.setDataType(ascii);
    QCOMPARE(given.take(), texts({"dataTypeChanged 8"}));
    QVERIFY(!lengthEdit(picker).isHidden());
}

void AddressPickerSignalsTest::aListOfDataTypesGivesNoSignal()
{
    const auto picker = makePicker(m_label, onRange("1"));
    PickerSignals given(*picker);
    picker->setDataTypeList(texts({"one", "two"}));
    QCOMPARE(dataTypeBox(*picker).currentIndex(), 0);
    QCOMPARE(given.take(), QStringList());
    QVERIFY(!dataTypeBox(*picker).signalsBlocked());
}

void AddressPickerSignalsTest::typingGivesTheAddressAtEachKey()
{
    const auto picker = makePicker(m_label, onRange("", "12"));
    QVERIFY(showActive(*picker));
    PickerSignals given(*picker);
    QTest::keyClicks(&rangeEdit(*picker), QStringLiteral("10f"));
    QCOMPARE(given.take(), texts({"addressChanged 12-D1", "addressChanged 12-D10", "addressChanged 12-D10f"}));
    QCOMPARE(formatsOf(*picker), texts({"No matched type!"}));
    QTest::keyClick(&rangeEdit(*picker), Qt::Key_Backspace);
    QTest::keyClick(&rangeEdit(*picker), Qt::Key_Backspace);
    QCOMPARE(given.take(), texts({"addressChanged 12-D10", "addressChanged 12-D1"}));
    QCOMPARE(formatsOf(*picker), texts({"D: data register"}));
}

void AddressPickerSignalsTest::typingReplacesTheSelectedRange()
{
    const auto picker = makePicker(m_label, onRange("1"));
    // A line edit without focus loses its selection when its window becomes active.
    rangeEdit(*picker).setFocus();
    QVERIFY(showActive(*picker));
    PickerSignals given(*picker);
    QTest::keyClicks(&rangeEdit(*picker), QStringLiteral("20"));
    QCOMPARE(given.take(), texts({"addressChanged D2", "addressChanged D20"}));
}

void AddressPickerSignalsTest::aRangeThatIsWiped()
{
    const auto picker = makePicker(m_label, onRange("1"));
    QVERIFY(showActive(*picker));
    PickerSignals given(*picker);
    m_label.take();
    QTest::keySequence(&rangeEdit(*picker), QKeySequence::SelectAll);
    QTest::keyClick(&rangeEdit(*picker), Qt::Key_Delete);
    QCOMPARE(rangeEdit(*picker).text(), QString());
    QCOMPARE(given.take(), QStringList());
    QCOMPARE(m_label.take(), QStringList());
    QCOMPARE(formatsOf(*picker), texts({"D: data register"}));
}

void AddressPickerSignalsTest::aChosenSymbol_data()
{
    QTest::addColumn<QString>("range");
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QStringList>("formats");
    QTest::newRow("with a range") << QStringLiteral("1") << texts({"addressChanged W1", "addressChanged X1"})
                                  << texts({"X: inputs"});
    QTest::newRow("without a range") << QString() << QStringList() << texts({"X: inputs"});
}

void AddressPickerSignalsTest::aChosenSymbol()
{
    QFETCH(QString, range);
    QFETCH(QStringList, lines);
    QFETCH(QStringList, formats);
    const auto picker = makePicker(m_label, onRange(qPrintable(range)));
    QVERIFY(showActive(*picker));
    PickerSignals given(*picker);
    QTest::keyClick(&symbolBox(*picker), Qt::Key_Down);
    QCOMPARE(formatsOf(*picker), texts({"No matched type!"}));
    QTest::keyClick(&symbolBox(*picker), Qt::Key_Down);
    QCOMPARE(given.take(), lines);
    QCOMPARE(formatsOf(*picker), formats);
}

void AddressPickerSignalsTest::aSymbolChosenWithTheMouse()
{
    const auto picker = makePicker(m_label, onRange("1"));
    QVERIFY(showActive(*picker));
    PickerSignals given(*picker);
    chooseWithMouse(symbolBox(*picker), 2);
    QCOMPARE(given.take(), texts({"addressChanged X1"}));
    QCOMPARE(symbolBox(*picker).currentText(), QStringLiteral("X"));
}

void AddressPickerSignalsTest::aChosenStation_data()
{
    QTest::addColumn<QString>("range");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("with a range") << QStringLiteral("1")
                                  << texts({"addressChanged 1-D1", "addressChanged 3-D1", "addressChanged D1"});
    QTest::newRow("without a range") << QString() << QStringList();
}

void AddressPickerSignalsTest::aChosenStation()
{
    QFETCH(QString, range);
    QFETCH(QStringList, lines);
    const auto picker = makePicker(m_label, onRange(qPrintable(range)));
    QVERIFY(showActive(*picker));
    PickerSignals given(*picker);
    QTest::keyClick(&stationBox(*picker), Qt::Key_Down);
    picker->setStationId(QStringLiteral("3"));
    QTest::keyClick(&stationBox(*picker), Qt::Key_Home);
    QCOMPARE(given.take(), lines);
    picker->setStationId(QString());
    QCOMPARE(given.take(), QStringList());
}

void AddressPickerSignalsTest::newStationsGiveTheAddress_data()
{
    QTest::addColumn<QString>("range");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("with a range") << QStringLiteral("1") << texts({"addressChanged D1"});
    QTest::newRow("without a range") << QString() << QStringList();
}

void AddressPickerSignalsTest::newStationsGiveTheAddress()
{
    QFETCH(QString, range);
    QFETCH(QStringList, lines);
    const auto picker = makePicker(m_label, onRange(qPrintable(range), "3"));
    PickerSignals given(*picker);
    picker->setAvailableStationNumbers({3, 4, 5});
    QCOMPARE(given.take(), lines);
    QVERIFY(!stationBox(*picker).signalsBlocked());
}

void AddressPickerSignalsTest::newSymbolsGiveTheAddress_data()
{
    QTest::addColumn<QString>("range");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("with a range") << QStringLiteral("1") << texts({"addressChanged 3-R1"});
    QTest::newRow("without a range") << QString() << QStringList();
}

void AddressPickerSignalsTest::newSymbolsGiveTheAddress()
{
    QFETCH(QString, range);
    QFETCH(QStringList, lines);
    const auto picker = makePicker(m_label, onRange(qPrintable(range), "3"));
    PickerSignals given(*picker);
    FakeLabel other = deviceLabel();
    other.registerSymbols = texts({"S", "R"});
    picker->setLabel(&other);
    QCOMPARE(given.take(), lines);
    QVERIFY(!symbolBox(*picker).signalsBlocked());
    picker->updateTypesCombo();
    QCOMPARE(given.take(), lines);
}

void AddressPickerSignalsTest::aRangeThatIsSet_data()
{
    QTest::addColumn<QString>("range");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("valid") << QStringLiteral("10") << texts({"addressChanged D10"});
    QTest::newRow("the one that it is") << QStringLiteral("1") << QStringList();
    QTest::newRow("not valid: it was there for a moment") << QStringLiteral("x") << texts({"addressChanged Dx"});
    QTest::newRow("empty") << QString() << QStringList();
}

void AddressPickerSignalsTest::aRangeThatIsSet()
{
    QFETCH(QString, range);
    QFETCH(QStringList, lines);
    m_label.validRows.insert(QStringLiteral("D10"), 0);
    const auto picker = makePicker(m_label, onRange("1"));
    PickerSignals given(*picker);
    picker->setRange(range);
    QCOMPARE(given.take(), lines);
}

void AddressPickerSignalsTest::theLengthAsItStands()
{
    PickerArguments arguments = onRange("1");
    arguments.dataType = ascii;
    const auto picker = makePicker(m_label, arguments);
    QVERIFY(showActive(*picker));
    PickerSignals given(*picker);
    QTest::keyClicks(&lengthEdit(*picker), QStringLiteral("12x"));
    QCOMPARE(given.take(), texts({"lengthChanged 1", "lengthChanged 12"}));
    QTest::keySequence(&lengthEdit(*picker), QKeySequence::SelectAll);
    QTest::keyClick(&lengthEdit(*picker), Qt::Key_Delete);
    QCOMPARE(given.take(), texts({"lengthChanged "}));
}

void AddressPickerSignalsTest::aLengthThatIsSet()
{
    const auto picker = makePicker(m_label);
    PickerSignals given(*picker);
    picker->setLength(7);
    QCOMPARE(given.take(), texts({"lengthChanged 7"}));
    picker->setLength(7);
    picker->setLength(0);
    picker->setLength(-7);
    QCOMPARE(given.take(), QStringList());
}

void AddressPickerSignalsTest::refillingGivesTheAddressOnce_data()
{
    QTest::addColumn<QString>("range");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("with a range") << QStringLiteral("1") << texts({"addressChanged 3-X1"});
    QTest::newRow("with a range that is not valid") << QStringLiteral("y") << QStringList();
    QTest::newRow("without a range") << QString() << QStringList();
}

void AddressPickerSignalsTest::refillingGivesTheAddressOnce()
{
    QFETCH(QString, range);
    QFETCH(QStringList, lines);
    const auto picker = makePicker(m_label, onRange("1"));
    PickerSignals given(*picker);
    PickerArguments arguments = onRange(qPrintable(range), "3");
    arguments.dataType = ascii;
    arguments.deviceIndex = 2;
    arguments.length = 9;
    refillPicker(*picker, m_label, arguments);
    QCOMPARE(given.take(), lines);
}

void AddressPickerSignalsTest::refillingGoesThroughTheFieldsInOrder()
{
    const auto picker = makePicker(m_label);
    QStringList lines;
    for (QComboBox *box : {&dataTypeBox(*picker), &stationBox(*picker), &symbolBox(*picker)})
        connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                [&lines, box](int index) { lines.append(QStringLiteral("%1 %2").arg(box->objectName()).arg(index)); });
    for (QLineEdit *edit : {&rangeEdit(*picker), &lengthEdit(*picker)})
        connect(edit, &QLineEdit::textChanged, this,
                [&lines, edit](const QString &text) { lines.append(edit->objectName() + QLatin1Char(' ') + text); });
    PickerArguments arguments = onRange("1", "3");
    arguments.dataType = ascii;
    arguments.deviceIndex = 2;
    arguments.length = 9;
    refillPicker(*picker, m_label, arguments);
    QCOMPARE(lines, texts({"datatypeCombobox 8", "stationNumbersCombo 0", "stationNumbersCombo 2", "TypesComboBox 2",
                           "RangeEditor 1", "editLength 9"}));
}

void AddressPickerSignalsTest::blockedFieldsGiveNothing()
{
    const auto picker = makePicker(m_label, onRange("1"));
    PickerSignals given(*picker);
    m_label.take();
    picker->setChildrenBlockSignals(true);
    picker->setDataType(5);
    picker->setStationId(QStringLiteral("3"));
    picker->setDeviceIndex(2);
    picker->setLength(4);
    picker->setAvailableStationNumbers({8});
    rangeEdit(*picker).setText(QStringLiteral("2"));
    QCOMPARE(given.take(), QStringList());
    picker->setChildrenBlockSignals(false);
    picker->setDataType(5);
    QCOMPARE(given.take(), texts({"addressChanged X2", "dataTypeChanged 5"}));
}

QTEST_MAIN(AddressPickerSignalsTest)
#include "tst_addresspicker_signals.moc"
