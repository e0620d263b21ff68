// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/formshape.h"
#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "support/pickerfixtures.h"
#include "support/projectfixtures.h"

#include "zelmar_label/label_table/labelloader.h"
#include "zelmar_label/widgets/addmultipletagspanel.h"
#include "zelmar_label/widgets/addresspicker.h"
#include "zelmar_label/widgets/simpleaddresspicker.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <climits>
#include <memory>
#include <utility>

namespace {

constexpr int ascii = 8;
constexpr int wordType = 3;

/// The maximum length of a line edit.
constexpr int lineEditLimit = 32767;

using LabelOwner = std::unique_ptr<label::LabelLoader>;

/// A device with one register; all its texts have the name's letter.
LabelOwner deviceWith(const QString &symbol)
{
    Row row;
    row.pattern = QLatin1Char('(') + symbol + QLatin1String(")(\\d+)");
    row.prefixSymbol = symbol;
    row.description = symbol + QLatin1String(": data register");
    label::CommandInformationTalbe table;
    table.addCommandFormatter(row.formatter());
    return std::make_unique<label::LabelLoader>(table);
}

/// A device of this many rows; every second has the symbol D, each other one its own.
LabelOwner deviceOf(int rows)
{
    const LogRecorder log;
    label::CommandInformationTalbe table;
    for (int i = 0; i < rows; ++i) {
        Row row;
        row.prefixSymbol = i % 2 == 0 ? QStringLiteral("D") : QStringLiteral("R%1_").arg(i, 5, 10, QLatin1Char('0'));
        row.pattern = QLatin1Char('(') + row.prefixSymbol + QLatin1String(")(\\d+)");
        row.description = QStringLiteral("row %1").arg(i);
        table.addCommandFormatter(row.formatter());
    }
    return std::make_unique<label::LabelLoader>(table);
}

/// Processes all pending events and paints.
void settle(QWidget &widget)
{
    QCoreApplication::processEvents();
    QVERIFY(!widget.grab().isNull());
}

QString longText(const QString &piece)
{
    return piece.repeated(100000 / piece.size());
}

} // namespace

class WidgetBadInputTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void aLabelIsExchangedAndTheOldOneFreed();
    void aLabelIsFreedBeforeTheNextIsSet();
    void aLabelIsExchangedWithItsListOpen();
    void aLabelIsExchangedFromWithinASignal();
    void aPickerIsRefilledWithAnotherLabel();
    void aLabelWithoutRows();
    void aLabelOfTenThousandRows();
    void thousandsOfStations();
    void thousandsOfStationsInTheDialog();

    void longTextsInTheRange_data();
    void longTextsInTheRange();
    void longTextsInTheLength_data();
    void longTextsInTheLength();
    void longTextsInTheSimplePicker_data();
    void longTextsInTheSimplePicker();
    void longTextsInThePanel_data();
    void longTextsInThePanel();

    void dataTypesOutsideTheList_data();
    void dataTypesOutsideTheList();
    void deviceIndexesOutsideTheList_data();
    void deviceIndexesOutsideTheList();
    void simplePickerOfADataTypeOutsideTheList_data();
    void simplePickerOfADataTypeOutsideTheList();
};

void WidgetBadInputTest::cleanup()
{
    qApp->setProperty("currentProject", QVariant());
    dropProjects();
}

void WidgetBadInputTest::aLabelIsExchangedAndTheOldOneFreed()
{
    LabelOwner old = deviceWith(QStringLiteral("D"));
    const LabelOwner next = deviceWith(QStringLiteral("R"));
    const auto picker = makePicker(*old);
    QVERIFY(showActive(*picker));
    QTest::keyClicks(&rangeEdit(*picker), QStringLiteral("12"));
    picker->setLabel(next.get());
    old.reset();
    settle(*picker);
    QCOMPARE(formatsOf(*picker), texts({"R: data register"}));
    QTest::keyClicks(&rangeEdit(*picker), QStringLiteral("3"));
    QTest::keyClick(&dataTypeBox(*picker), Qt::Key_Down);
    QTest::keyClick(&stationBox(*picker), Qt::Key_Down);
    settle(*picker);
    QCOMPARE(picker->addressWithStationId(), QStringLiteral("1-R123"));
    QVERIFY(picker->isAddressValid());
}

void WidgetBadInputTest::aLabelIsFreedBeforeTheNextIsSet()
{
    LabelOwner old = deviceWith(QStringLiteral("D"));
    const LabelOwner next = deviceWith(QStringLiteral("R"));
    const auto picker = makePicker(*old);
    QVERIFY(showActive(*picker));
    old.reset();
    settle(*picker);
    picker->setLabel(next.get());
    settle(*picker);
    QCOMPARE(picker->address(), QStringLiteral("R"));
}

void WidgetBadInputTest::aLabelIsExchangedWithItsListOpen()
{
    LabelOwner old = deviceOf(40);
    const LabelOwner next = deviceWith(QStringLiteral("R"));
    const auto picker = makePicker(*old);
    QVERIFY(showActive(*picker));
    QComboBox &box = symbolBox(*picker);
    box.showPopup();
    QTest::keyClick(box.view(), Qt::Key_End);
    picker->setLabel(next.get());
    old.reset();
    settle(*picker);
    QTest::keyClick(box.view(), Qt::Key_Down);
    QTest::keyClick(box.view(), Qt::Key_Return);
    settle(*picker);
    QCOMPARE(textsOf(box), texts({"R"}));
    QCOMPARE(picker->address(), QStringLiteral("R"));
}

void WidgetBadInputTest::aLabelIsExchangedFromWithinASignal()
{
    LabelOwner old = deviceWith(QStringLiteral("D"));
    const LabelOwner next = deviceWith(QStringLiteral("R"));
    const auto picker = makePicker(*old);
    connect(picker.get(), &AddressPicker::addressChanged, this, [&] {
        if (old == nullptr)
            return;
        const LabelOwner freed = std::move(old);
        picker->setLabel(next.get());
    });
    QVERIFY(showActive(*picker));
    QTest::keyClicks(&rangeEdit(*picker), QStringLiteral("12"));
    QVERIFY(old == nullptr);
    settle(*picker);
    QCOMPARE(picker->address(), QStringLiteral("R12"));
    QCOMPARE(formatsOf(*picker), texts({"R: data register"}));
}

void WidgetBadInputTest::aPickerIsRefilledWithAnotherLabel()
{
    LabelOwner old = deviceOf(40);
    const LabelOwner next = deviceWith(QStringLiteral("R"));
    PickerArguments arguments;
    arguments.deviceIndex = 20;
    arguments.range = QStringLiteral("5");
    const auto picker = makePicker(*old, arguments);
    QVERIFY(showActive(*picker));
    refillPicker(*picker, *next, arguments);
    old.reset();
    settle(*picker);
    QCOMPARE(textsOf(symbolBox(*picker)), texts({"R"}));
    QCOMPARE(picker->address(), QStringLiteral("R"));
}

void WidgetBadInputTest::aLabelWithoutRows()
{
    label::LabelLoader device;
    PickerArguments arguments;
    arguments.deviceIndex = 3;
    arguments.range = QStringLiteral("5");
    const auto picker = makePicker(device, arguments);
    QVERIFY(showActive(*picker));
    QTest::keyClicks(&rangeEdit(*picker), QStringLiteral("7"));
    settle(*picker);
    QCOMPARE(picker->address(), QStringLiteral("7"));
    QCOMPARE(formatsOf(*picker), texts({"No matched type!"}));
    QCOMPARE(textsOf(symbolBox(*picker)), QStringList());
}

void WidgetBadInputTest::aLabelOfTenThousandRows()
{
    const LabelOwner device = deviceOf(10000);
    const auto picker = makePicker(*device);
    QVERIFY(showActive(*picker));
    QComboBox &box = symbolBox(*picker);
    const QStringList symbols = textsOf(box);
    QCOMPARE(symbols.size(), 5001);
    QVERIFY(std::is_sorted(symbols.begin(), symbols.end()));
    QCOMPARE(formatsOf(*picker).size(), 5000);
    QCOMPARE(formatsOf(*picker).last(), QStringLiteral("row 9998"));
    QTest::keyClick(&box, Qt::Key_End);
    QTest::keyClicks(&rangeEdit(*picker), QStringLiteral("12"));
    settle(*picker);
    QCOMPARE(picker->address(), QStringLiteral("R09999_12"));
    QCOMPARE(formatsOf(*picker), texts({"row 9999"}));
    QVERIFY(picker->width() < 2000);
    picker->setDataType(5);
    QCOMPARE(textsOf(box), symbols);
    QCOMPARE(box.currentText(), QStringLiteral("R09999_"));
}

void WidgetBadInputTest::thousandsOfStations()
{
    const LabelOwner device = deviceWith(QStringLiteral("D"));
    PickerArguments arguments;
    arguments.stations.clear();
    for (int station = 0; station < 5000; ++station)
        arguments.stations.append(station);
    arguments.stationId = QStringLiteral("4321");
    const auto picker = makePicker(*device, arguments);
    QVERIFY(showActive(*picker));
    QComboBox &box = stationBox(*picker);
    QCOMPARE(box.count(), 5001);
    QCOMPARE(box.currentText(), QStringLiteral("4321"));
    box.showPopup();
    QVERIFY(QTest::qWaitForWindowExposed(box.view()->window()));
    QVERIFY(box.view()->window()->height() > 0);
    QTest::keyClick(box.view(), Qt::Key_End);
    QTest::keyClick(box.view(), Qt::Key_Return);
    settle(*picker);
    QCOMPARE(picker->stationId(), QStringLiteral("4999"));
}

void WidgetBadInputTest::thousandsOfStationsInTheDialog()
{
    QTemporaryDir folder;
    QList<NodeRow> nodes;
    for (int i = 0; i < 5000; ++i)
        nodes.append({i, 4999 - i, 1});
    makeProject(folder.filePath(QStringLiteral("project")), QStringLiteral("5"), {{1, QString(), 1}}, nodes);
    qApp->setProperty("currentProject", 5);
    const LabelOwner device = deviceWith(QStringLiteral("D"));
    SimpleAddressPicker picker(device.get(), 1, wordType, 0, tagDataTypes(), nullptr);
    picker.setAddress(QStringLiteral("D1"));
    const DialogAnswer answer([](QDialog &dialog) {
        QCOMPARE(stationBox(dialog).count(), 5001);
        QTest::keyClick(&stationBox(dialog), Qt::Key_End);
        dialog.accept();
    });
    QTest::mouseClick(&child<QPushButton>(picker, QStringLiteral("detailPushButton")), Qt::LeftButton);
    QCOMPARE(answer.count(), 1);
    QCOMPARE(picker.fullAddressString(), QStringLiteral("4999-D1"));
    QCOMPARE(picker.stationId(), QStringLiteral("499"));
}

void WidgetBadInputTest::longTextsInTheRange_data()
{
    QTest::addColumn<QString>("piece");
    QTest::addColumn<QStringList>("formats");
    QTest::newRow("letters") << QStringLiteral("x") << texts({"No matched type!"});
    QTest::newRow("digits, which the pattern takes") << QStringLiteral("9") << texts({"D: data register"});
    QTest::newRow("dashes") << QStringLiteral("-") << texts({"D: data register"});
    QTest::newRow("characters outside the basic plane")
        << QString::fromUtf8("\xF0\x9F\x94\xA7") << texts({"No matched type!"});
}

void WidgetBadInputTest::longTextsInTheRange()
{
    QFETCH(QString, piece);
    QFETCH(QStringList, formats);
    const LabelOwner device = deviceWith(QStringLiteral("D"));
    const auto picker = makePicker(*device);
    PickerSignals given(*picker);
    QVERIFY(showActive(*picker));
    paste(rangeEdit(*picker), longText(piece));
    settle(*picker);
    const QString text = rangeEdit(*picker).text();
    QVERIFY(text.size() <= lineEditLimit);
    QVERIFY(text.size() > lineEditLimit - piece.size());
    QCOMPARE(given.take(), QStringList{QLatin1String("addressChanged D") + text});
    QCOMPARE(formatsOf(*picker), formats);
    picker->setRange(longText(piece));
    QVERIFY(picker->isAddressValid() != rangeEdit(*picker).text().isEmpty());
}

void WidgetBadInputTest::longTextsInTheLength_data()
{
    QTest::addColumn<QString>("piece");
    QTest::newRow("letters") << QStringLiteral("x");
    QTest::newRow("digits") << QStringLiteral("9");
    QTest::newRow("zeros") << QStringLiteral("0");
}

void WidgetBadInputTest::longTextsInTheLength()
{
    QFETCH(QString, piece);
    const LabelOwner device = deviceWith(QStringLiteral("D"));
    PickerArguments arguments;
    arguments.dataType = ascii;
    arguments.length = 20;
    const auto limited = makePicker(*device, arguments);
    QVERIFY(showActive(*limited));
    paste(lengthEdit(*limited), longText(piece));
    settle(*limited);
    QVERIFY(limited->length() >= 0);
    QVERIFY(limited->length() <= 255);

    AddressPicker unlimited(device.get(), nullptr);
    unlimited.setDataType(ascii);
    QVERIFY(showActive(unlimited));
    paste(lengthEdit(unlimited), longText(piece));
    settle(unlimited);
    QCOMPARE(lengthEdit(unlimited).text().size(), lineEditLimit);
    QCOMPARE(unlimited.length(), 0);
}

void WidgetBadInputTest::longTextsInTheSimplePicker_data()
{
    QTest::addColumn<QString>("piece");
    QTest::newRow("letters") << QStringLiteral("x");
    QTest::newRow("digits") << QStringLiteral("9");
    QTest::newRow("dashes") << QStringLiteral("-");
    QTest::newRow("stations without end") << QStringLiteral("12-D7");
    QTest::newRow("line ends and zero characters") << QString::fromLatin1("\n\0\t", 3);
}

void WidgetBadInputTest::longTextsInTheSimplePicker()
{
    QFETCH(QString, piece);
    QTemporaryDir folder;
    makeProject(folder.filePath(QStringLiteral("project")), QStringLiteral("5"));
    qApp->setProperty("currentProject", 5);
    const LabelOwner device = deviceWith(QStringLiteral("D"));
    SimpleAddressPicker picker(device.get(), 1, wordType, 0, tagDataTypes(), nullptr);
    QVERIFY(showActive(picker));
    paste(child<QLineEdit>(picker, QStringLiteral("addressEdit")), longText(piece));
    settle(picker);
    const QString text = picker.fullAddressString();
    QVERIFY(text.size() <= lineEditLimit);
    QVERIFY(!text.isEmpty());
    QVERIFY(picker.stationId().size() <= 3);
    QVERIFY(text.contains(picker.address()));
    const DialogAnswer answer([](QDialog &dialog) { settle(dialog); });
    QTest::mouseClick(&child<QPushButton>(picker, QStringLiteral("detailPushButton")), Qt::LeftButton);
    QCOMPARE(answer.count(), 1);
    QCOMPARE(picker.fullAddressString(), text);
}

void WidgetBadInputTest::longTextsInThePanel_data()
{
    QTest::addColumn<QString>("piece");
    QTest::newRow("letters") << QStringLiteral("x");
    QTest::newRow("digits") << QStringLiteral("9");
    QTest::newRow("zeros") << QStringLiteral("0");
    QTest::newRow("marks") << QStringLiteral("<b>&");
}

void WidgetBadInputTest::longTextsInThePanel()
{
    QFETCH(QString, piece);
    AddMultipleTagsPanel panel(nullptr);
    QVERIFY(showActive(panel));
    for (const char *name : {"prefixLineEdit", "postfixLineEdit"})
        paste(child<QLineEdit>(panel, QLatin1String(name)), longText(piece));
    QCOMPARE(panel.prefix(), longText(piece).left(lineEditLimit));
    QCOMPARE(panel.postfix(), longText(piece).left(lineEditLimit));
    const QList<QSpinBox *> boxes = panel.findChildren<QSpinBox *>();
    QCOMPARE(boxes.size(), 4);
    for (QSpinBox *box : boxes) {
        paste(*box, longText(piece));
        QVERIFY(box->value() >= 0 && box->value() <= box->maximum());
    }
    settle(panel);
}

void WidgetBadInputTest::dataTypesOutsideTheList_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("one in front") << -1;
    QTest::newRow("one behind") << 12;
    QTest::newRow("far in front") << INT_MIN;
    QTest::newRow("far behind") << INT_MAX;
}

void WidgetBadInputTest::dataTypesOutsideTheList()
{
    QFETCH(int, type);
    const LabelOwner device = deviceWith(QStringLiteral("D"));
    PickerArguments arguments;
    arguments.range = QStringLiteral("5");
    const auto set = makePicker(*device, arguments);
    QVERIFY(showActive(*set));
    set->setDataType(type);
    arguments.dataType = type;
    const auto made = makePicker(*device, arguments);
    QVERIFY(showActive(*made));
    AddressPicker refilled(device.get(), nullptr);
    refillPicker(refilled, *device, arguments);
    for (AddressPicker *picker : {set.get(), made.get(), &refilled}) {
        settle(*picker);
        QCOMPARE(dataTypeBox(*picker).currentText(), QString());
        QVERIFY(lengthEdit(*picker).isHidden());
        QCOMPARE(picker->address(), QStringLiteral("D5"));
        QCOMPARE(formatsOf(*picker), texts({"D: data register"}));
    }
}

void WidgetBadInputTest::deviceIndexesOutsideTheList_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("one in front") << -1;
    QTest::newRow("one behind") << 1;
    QTest::newRow("far in front") << INT_MIN;
    QTest::newRow("far behind") << INT_MAX;
}

void WidgetBadInputTest::deviceIndexesOutsideTheList()
{
    QFETCH(int, index);
    const LabelOwner device = deviceWith(QStringLiteral("D"));
    PickerArguments arguments;
    arguments.deviceIndex = index;
    arguments.range = QStringLiteral("5");
    const auto picker = makePicker(*device, arguments);
    QVERIFY(showActive(*picker));
    settle(*picker);
    QCOMPARE(picker->address(), QString());
    QCOMPARE(formatsOf(*picker), texts({"No matched type!"}));
    QTest::keyClicks(&rangeEdit(*picker), QStringLiteral("D5"));
    QVERIFY(picker->isAddressValid());
    QCOMPARE(formatsOf(*picker), texts({"D: data register"}));
    picker->setDeviceIndex(index);
    picker->updateTypesCombo();
    QCOMPARE(symbolBox(*picker).currentText(), QStringLiteral("D"));
}

void WidgetBadInputTest::simplePickerOfADataTypeOutsideTheList_data()
{
    dataTypesOutsideTheList_data();
}

void WidgetBadInputTest::simplePickerOfADataTypeOutsideTheList()
{
    QFETCH(int, type);
    QTemporaryDir folder;
    makeProject(folder.filePath(QStringLiteral("project")), QStringLiteral("5"));
    qApp->setProperty("currentProject", 5);
    const LabelOwner device = deviceWith(QStringLiteral("D"));
    SimpleAddressPicker picker(device.get(), 1, wordType, 0, tagDataTypes(), nullptr);
    picker.setAddress(QStringLiteral("D5"));
    picker.setDataTypeIndex(type);
    const DialogAnswer answer([](QDialog &dialog) {
        settle(dialog);
        QCOMPARE(dataTypeBox(dialog).currentIndex(), -1);
        dialog.accept();
    });
    QTest::mouseClick(&child<QPushButton>(picker, QStringLiteral("detailPushButton")), Qt::LeftButton);
    QCOMPARE(answer.count(), 1);
    QCOMPARE(picker.fullAddressString(), QStringLiteral("D5"));
}

QTEST_MAIN(WidgetBadInputTest)
#include "tst_widgetbadinput.moc"
