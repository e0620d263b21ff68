// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/formshape.h"
#include "support/pickerfixtures.h"

#include "zelmar_label/widgets/addresspicker.h"
#include "zelmar_label/widgets/addresspickerdialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QtTest>

#include <functional>
#include <memory>

namespace {

std::unique_ptr<AddressPickerDialog> makeDialog(label::LabelInterface &label, const PickerArguments &arguments = {},
                                                QWidget *parent = nullptr)
{
    return std::make_unique<AddressPickerDialog>(&label, arguments.dataType, arguments.stationId, arguments.deviceIndex,
                                                 arguments.range, arguments.dataTypeList, arguments.bitTypeIndex,
                                                 arguments.stations, parent);
}

AddressPicker &pickerOf(const QDialog &dialog)
{
    return child<AddressPicker>(dialog, QStringLiteral("AddressPicker"));
}

QPushButton &button(const QDialog &dialog, QDialogButtonBox::StandardButton which)
{
    return *dialog.findChild<QDialogButtonBox *>()->button(which);
}

using Act = std::function<void(QDialog &)>;

} // namespace

Q_DECLARE_METATYPE(Act)

class AddressPickerDialogTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void theInterfaceIsOneSlot();
    void thePickerStandsAboveTheButtons();
    void thePickerGetsTheArguments();
    void thePickerBelongsToTheDialog();
    void theDialogTakesItsParent();
    void theDataTypeIsTheOneGiven_data();
    void theDataTypeIsTheOneGiven();
    void theDataTypeFollowsThePicker();
    void theDataTypeCanBeTold();
    void theAddressIsThePickers();
    void theRangeIsTypedOver();
    void aDialogIsAccepted_data();
    void aDialogIsAccepted();
    void aDialogIsRejected_data();
    void aDialogIsRejected();
    void aBareDialogIsEmpty();

private:
    FakeLabel m_label;
};

void AddressPickerDialogTest::init()
{
    m_label = deviceLabel();
}

void AddressPickerDialogTest::theInterfaceIsOneSlot()
{
    const QMetaObject &type = AddressPickerDialog::staticMetaObject;
    QCOMPARE(ownMethods(type), texts({"public slot dataTypeChanged(int newDataTypeIndex)"}));
    QCOMPARE(type.superClass(), &QDialog::staticMetaObject);
    QCOMPARE(type.propertyCount(), QDialog::staticMetaObject.propertyCount());
}

void AddressPickerDialogTest::thePickerStandsAboveTheButtons()
{
    const auto dialog = makeDialog(m_label);
    const auto *const column = qobject_cast<QVBoxLayout *>(dialog->layout());
    QVERIFY(column != nullptr);
    QCOMPARE(column->count(), 2);
    QCOMPARE(column->itemAt(0)->widget(), &pickerOf(*dialog));
    auto *const box = qobject_cast<QDialogButtonBox *>(column->itemAt(1)->widget());
    QVERIFY(box != nullptr);
    QCOMPARE(box->standardButtons(),
             QDialogButtonBox::StandardButtons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel));
    QCOMPARE(box->buttons().size(), 2);
    QCOMPARE(box->orientation(), Qt::Horizontal);
    QVERIFY(showActive(*dialog));
    QVERIFY(box->geometry().top() >= pickerOf(*dialog).geometry().bottom());
}

void AddressPickerDialogTest::thePickerGetsTheArguments()
{
    PickerArguments arguments;
    arguments.dataType = 8;
    arguments.stationId = QStringLiteral("12");
    arguments.deviceIndex = 2;
    arguments.range = QStringLiteral("1");
    const auto dialog = makeDialog(m_label, arguments);
    AddressPicker &picker = pickerOf(*dialog);
    QCOMPARE(dataTypeBox(picker).currentText(), QStringLiteral("Ascii"));
    QCOMPARE(textsOf(dataTypeBox(picker)), tagDataTypes());
    QCOMPARE(textsOf(stationBox(picker)), texts({"", "1", "3", "12"}));
    QCOMPARE(picker.addressWithStationId(), QStringLiteral("12-X1"));
    QCOMPARE(rangeEdit(picker).selectedText(), QStringLiteral("1"));
    QCOMPARE(picker.length(), 1);
    picker.setBitTypeIndex(8);
    picker.updateTypesCombo();
    QCOMPARE(textsOf(symbolBox(picker)), texts({"M", "X"}));
}

void AddressPickerDialogTest::thePickerBelongsToTheDialog()
{
    auto dialog = makeDialog(m_label);
    const QPointer<AddressPicker> picker = &pickerOf(*dialog);
    QCOMPARE(picker->parent(), dialog.get());
    dialog.reset();
    QVERIFY(picker.isNull());
}

void AddressPickerDialogTest::theDialogTakesItsParent()
{
    QWidget parent;
    QCOMPARE(makeDialog(m_label, {}, &parent)->parentWidget(), &parent);
    QCOMPARE(makeDialog(m_label)->parentWidget(), nullptr);
    QCOMPARE(AddressPickerDialog(&parent).parentWidget(), &parent);
}

void AddressPickerDialogTest::theDataTypeIsTheOneGiven_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("a register") << 3;
    QTest::newRow("a bit") << 0;
    QTest::newRow("none") << -1;
    QTest::newRow("outside the list") << 99;
}

void AddressPickerDialogTest::theDataTypeIsTheOneGiven()
{
    QFETCH(int, type);
    PickerArguments arguments;
    arguments.dataType = type;
    const auto dialog = makeDialog(m_label, arguments);
    QCOMPARE(dialog->dataType(), type);
}

void AddressPickerDialogTest::theDataTypeFollowsThePicker()
{
    const auto dialog = makeDialog(m_label);
    QVERIFY(showActive(*dialog));
    QTest::keyClick(&dataTypeBox(*dialog), Qt::Key_End);
    QCOMPARE(dialog->dataType(), 11);
    pickerOf(*dialog).setDataType(5);
    QCOMPARE(dialog->dataType(), 5);
}

void AddressPickerDialogTest::theDataTypeCanBeTold()
{
    const auto dialog = makeDialog(m_label);
    dialog->dataTypeChanged(7);
    QCOMPARE(dialog->dataType(), 7);
    QCOMPARE(dataTypeBox(*dialog).currentIndex(), 3);
}

void AddressPickerDialogTest::theAddressIsThePickers()
{
    const auto dialog = makeDialog(m_label);
    QVERIFY(showActive(*dialog));
    QCOMPARE(dialog->addressWithStationId(), QStringLiteral("D"));
    QTest::keyClicks(&rangeEdit(*dialog), QStringLiteral("77"));
    QTest::keyClick(&stationBox(*dialog), Qt::Key_End);
    QCOMPARE(dialog->addressWithStationId(), QStringLiteral("12-D77"));
}

void AddressPickerDialogTest::theRangeIsTypedOver()
{
    PickerArguments arguments;
    arguments.range = QStringLiteral("1");
    const auto dialog = makeDialog(m_label, arguments);
    auto &range = child<QLineEdit>(*dialog, QStringLiteral("RangeEditor"));
    QCOMPARE(range.text(), QStringLiteral("1"));
    QVERIFY(showActive(*dialog));
    QCOMPARE(QApplication::focusWidget(), &range);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("7"));
    QCOMPARE(range.text(), QStringLiteral("7"));
}

void AddressPickerDialogTest::aDialogIsAccepted_data()
{
    QTest::addColumn<Act>("act");
    QTest::newRow("by a click on OK") << Act(
        [](QDialog &dialog) { QTest::mouseClick(&button(dialog, QDialogButtonBox::Ok), Qt::LeftButton); });
    QTest::newRow("by Enter in the range")
        << Act([](QDialog &dialog) { QTest::keyClick(&rangeEdit(dialog), Qt::Key_Return); });
    QTest::newRow("by the button's signal")
        << Act([](QDialog &dialog) { Q_EMIT dialog.findChild<QDialogButtonBox *>()->accepted(); });
}

void AddressPickerDialogTest::aDialogIsAccepted()
{
    QFETCH(Act, act);
    const auto dialog = makeDialog(m_label);
    const DialogAnswer answer(act);
    QCOMPARE(dialog->exec(), int(QDialog::Accepted));
    QCOMPARE(answer.count(), 1);
}

void AddressPickerDialogTest::aDialogIsRejected_data()
{
    QTest::addColumn<Act>("act");
    QTest::newRow("by a click on Cancel")
        << Act([](QDialog &dialog) { QTest::mouseClick(&button(dialog, QDialogButtonBox::Cancel), Qt::LeftButton); });
    QTest::newRow("by Escape in the range")
        << Act([](QDialog &dialog) { QTest::keyClick(&rangeEdit(dialog), Qt::Key_Escape); });
    QTest::newRow("by closing it") << Act([](QDialog &dialog) { dialog.close(); });
}

void AddressPickerDialogTest::aDialogIsRejected()
{
    QFETCH(Act, act);
    const auto dialog = makeDialog(m_label);
    const QSignalSpy rejected(dialog.get(), &QDialog::rejected);
    bool isClosedByTheAct = false;
    const DialogAnswer answer([&](QDialog &open) {
        act(open);
        isClosedByTheAct = !open.isVisible();
    });
    QCOMPARE(dialog->exec(), int(QDialog::Rejected));
    QVERIFY(isClosedByTheAct);
    QCOMPARE(rejected.size(), 1);
}

void AddressPickerDialogTest::aBareDialogIsEmpty()
{
    AddressPickerDialog dialog(nullptr);
    QCOMPARE(dialog.dataType(), 0);
    QCOMPARE(dialog.addressWithStationId(), QString());
    QVERIFY(dialog.findChildren<QWidget *>().isEmpty());
    QVERIFY(dialog.layout() == nullptr);
    dialog.dataTypeChanged(4);
    QCOMPARE(dialog.dataType(), 4);
}

QTEST_MAIN(AddressPickerDialogTest)
#include "tst_addresspickerdialog.moc"
