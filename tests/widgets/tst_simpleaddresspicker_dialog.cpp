// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/formshape.h"
#include "support/pickerfixtures.h"
#include "support/projectfixtures.h"

#include "zelmar_label/widgets/addresspicker.h"
#include "zelmar_label/widgets/addresspickerdialog.h"
#include "zelmar_label/widgets/simpleaddresspicker.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

constexpr quint64 project = 77;
const QString key = QString::number(project);

constexpr int link = 4;
constexpr int linkWithoutStations = 9;
constexpr int intType = 3;

void clickOn(const QDialog &dialog, QDialogButtonBox::StandardButton which)
{
    QTest::mouseClick(dialog.findChild<QDialogButtonBox *>()->button(which), Qt::LeftButton);
}

void clickDetails(const SimpleAddressPicker &picker)
{
    QTest::mouseClick(&child<QPushButton>(picker, QStringLiteral("detailPushButton")), Qt::LeftButton);
}

/// The initial state of a dialog.
struct Start
{
    QString station;
    QString symbol;
    QString range;
    int dataType = -1;
};

/// Opens the dialog, reads its state and cancels it.
Start startOf(const SimpleAddressPicker &picker)
{
    Start start;
    const DialogAnswer answer([&start](QDialog &dialog) {
        start = {stationBox(dialog).currentText(), symbolBox(dialog).currentText(), rangeEdit(dialog).text(),
                 dataTypeBox(dialog).currentIndex()};
    });
    clickDetails(picker);
    return start;
}

} // namespace

/// Tests the dialog of a simple picker's button, and its result.
class SimpleAddressPickerDialogTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void stationsComeFromTheProject_data();
    void stationsComeFromTheProject();
    void stationsWithoutTheirTable();
    void stationsWithoutAProject();

    void theDialogStartsOnTheAddress_data();
    void theDialogStartsOnTheAddress();
    void theDialogIsMadeFromTheArguments();
    void theSymbolIsLookedUpInTheLabelsOrder();
    void questionsToTheLabel_data();
    void questionsToTheLabel();
    void theDialogStartsOnTheDataType();

    void acceptingTakesTheAddressOver();
    void acceptingByEnter();
    void acceptingTakesTheDataTypeOver();
    void acceptingWithoutAStation();
    void acceptingAnAddressThatIsNotValid();
    void cancellingChangesNothing_data();
    void cancellingChangesNothing();
    void aSecondConnectionOpensASecondDialog();

private:
    std::unique_ptr<SimpleAddressPicker> picker(const char *address, int linkId = link, int dataType = intType);

    QTemporaryDir m_folder;
    FakeLabel m_label;
};

void SimpleAddressPickerDialogTest::initTestCase()
{
    QVERIFY(m_folder.isValid());
}

void SimpleAddressPickerDialogTest::init()
{
    m_label = deviceLabel();
    m_label.registerSymbols = texts({"D", "W", "X"});
    m_label.bitSymbols = texts({"M", "X"});
    m_label.parts = {{QStringLiteral("D1"), QStringLiteral("D|1")},
                     {QStringLiteral("X1"), QStringLiteral("X|1")},
                     {QStringLiteral("Y1"), QStringLiteral("Y|1")}};
    makeProject(QDir(m_folder.path()).filePath(QStringLiteral("project")), key,
                {{link, QString(), 1}, {linkWithoutStations, QString(), 1}},
                {{1, 12, link}, {2, 3, link}, {3, 255, link}, {4, 5, link + 1}, {5, 0, link}});
    qApp->setProperty("currentProject", project);
}

void SimpleAddressPickerDialogTest::cleanup()
{
    qApp->setProperty("currentProject", QVariant());
    dropProjects();
}

std::unique_ptr<SimpleAddressPicker> SimpleAddressPickerDialogTest::picker(const char *address, int linkId,
                                                                           int dataType)
{
    auto made = std::make_unique<SimpleAddressPicker>(&m_label, linkId, dataType, 0, tagDataTypes(), nullptr);
    made->setAddress(QLatin1String(address));
    m_label.take();
    return made;
}

void SimpleAddressPickerDialogTest::stationsComeFromTheProject_data()
{
    QTest::addColumn<int>("linkId");
    QTest::addColumn<QList<int>>("stations");
    QTest::newRow("ascending") << link << QList<int>{0, 3, 12, 255};
    QTest::newRow("of the link only") << link + 1 << QList<int>{5};
    QTest::newRow("a link without stations") << linkWithoutStations << QList<int>();
    QTest::newRow("no such link") << -1 << QList<int>();
}

void SimpleAddressPickerDialogTest::stationsComeFromTheProject()
{
    QFETCH(int, linkId);
    QFETCH(QList<int>, stations);
    QCOMPARE(picker("")->getAvailableStationNumber(linkId), stations);
    QStringList offered{QString()};
    for (const int station : stations)
        offered.append(QString::number(station));
    QStringList inTheDialog;
    const DialogAnswer answer([&inTheDialog](QDialog &dialog) { inTheDialog = textsOf(stationBox(dialog)); });
    clickDetails(*picker("D1", linkId));
    QCOMPARE(inTheDialog, offered);
}

void SimpleAddressPickerDialogTest::stationsWithoutTheirTable()
{
    MessageRecorder messages;
    executeOn(key, QStringLiteral("DROP TABLE NODE"));
    QCOMPARE(picker("")->getAvailableStationNumber(link), QList<int>());
    QCOMPARE(messages.take(), QStringList());
}

void SimpleAddressPickerDialogTest::stationsWithoutAProject()
{
    MessageRecorder messages;
    qApp->setProperty("currentProject", QVariant());
    QCOMPARE(picker("")->getAvailableStationNumber(link), QList<int>());
    QCOMPARE(messages.take(), texts({"critical|Tag Error|Current project point is null!"}));
    QCOMPARE(startOf(*picker("D1")).range, QStringLiteral("1"));
}

void SimpleAddressPickerDialogTest::theDialogStartsOnTheAddress_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("dataType");
    QTest::addColumn<QString>("station");
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<QString>("range");
    QTest::newRow("a register") << QStringLiteral("X1") << intType << QString() << QStringLiteral("X")
                                << QStringLiteral("1");
    QTest::newRow("with its station") << QStringLiteral("12-D1") << intType << QStringLiteral("12")
                                      << QStringLiteral("D") << QStringLiteral("1");
    QTest::newRow("a bit") << QStringLiteral("3-X1") << 0 << QStringLiteral("3") << QStringLiteral("X")
                           << QStringLiteral("1");
    QTest::newRow("a symbol that is not offered")
        << QStringLiteral("Y1") << intType << QString() << QStringLiteral("D") << QStringLiteral("1");
    QTest::newRow("a station that is not offered")
        << QStringLiteral("99-D1") << intType << QString() << QStringLiteral("D") << QStringLiteral("1");
    QTest::newRow("a station with a leading zero")
        << QStringLiteral("03-D1") << intType << QString() << QStringLiteral("D") << QStringLiteral("1");
    QTest::newRow("what cannot be split and is not valid")
        << QStringLiteral("oops") << intType << QString() << QStringLiteral("D") << QString();
    QTest::newRow("what cannot be split and is valid behind the first symbol")
        << QStringLiteral("3-x2") << intType << QStringLiteral("3") << QStringLiteral("D") << QStringLiteral("x2");
    QTest::newRow("empty") << QString() << intType << QString() << QStringLiteral("D") << QString();
}

void SimpleAddressPickerDialogTest::theDialogStartsOnTheAddress()
{
    QFETCH(QString, address);
    QFETCH(int, dataType);
    QFETCH(QString, station);
    QFETCH(QString, symbol);
    QFETCH(QString, range);
    m_label.validRows.insert(QStringLiteral("Dx2"), 0);
    const Start start = startOf(*picker(qPrintable(address), link, dataType));
    QCOMPARE(start.station, station);
    QCOMPARE(start.symbol, symbol);
    QCOMPARE(start.range, range);
    QCOMPARE(start.dataType, dataType);
}

void SimpleAddressPickerDialogTest::theDialogIsMadeFromTheArguments()
{
    const auto simple = picker("D1");
    const DialogAnswer answer([](QDialog &dialog) {
        QVERIFY(qobject_cast<AddressPickerDialog *>(&dialog) != nullptr);
        QCOMPARE(dialog.parent(), nullptr);
        QVERIFY(dialog.isModal());
        QCOMPARE(textsOf(dataTypeBox(dialog)), tagDataTypes());
        QCOMPARE(textsOf(symbolBox(dialog)), texts({"D", "W", "X"}));
        QTest::keyClick(&dataTypeBox(dialog), Qt::Key_Home);
        QCOMPARE(textsOf(symbolBox(dialog)), texts({"M", "X"}));
    });
    clickDetails(*simple);
    QCOMPARE(answer.count(), 1);
}

void SimpleAddressPickerDialogTest::theSymbolIsLookedUpInTheLabelsOrder()
{
    m_label.registerSymbols = texts({"X", "W", "D"});
    m_label.validRows.insert(QStringLiteral("X1"), 3);
    const Start start = startOf(*picker("D1"));
    QCOMPARE(start.symbol, QStringLiteral("X"));
    QCOMPARE(start.range, QStringLiteral("1"));
}

void SimpleAddressPickerDialogTest::questionsToTheLabel_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("dataType");
    QTest::addColumn<QStringList>("questions");
    const QString registers = QStringLiteral("registerPrefixSymbols()");
    QTest::newRow("a register") << QStringLiteral("12-D1") << intType
                                << QStringList{QStringLiteral("parseAddress(D1)"), registers};
    QTest::newRow("a bit") << QStringLiteral("12-X1") << 0 << texts({"parseAddress(X1)", "bitPrefixSymbols()"});
    QTest::newRow("what cannot be split") << QStringLiteral("12-oops-D1") << intType << texts({"parseAddress(oops)"});
}

void SimpleAddressPickerDialogTest::questionsToTheLabel()
{
    QFETCH(QString, address);
    QFETCH(int, dataType);
    QFETCH(QStringList, questions);
    const auto simple = picker(qPrintable(address), link, dataType);
    startOf(*simple);
    QStringList asked = m_label.take();
    // The picker in the dialog first makes a call of its own.
    QCOMPARE(asked.mid(0, questions.size() + 1), questions + texts({"registerPrefixSymbols()"}));
}

void SimpleAddressPickerDialogTest::theDialogStartsOnTheDataType()
{
    const auto simple = picker("D1");
    simple->setDataTypeIndex(7);
    QCOMPARE(startOf(*simple).dataType, 7);
}

void SimpleAddressPickerDialogTest::acceptingTakesTheAddressOver()
{
    const auto simple = picker("12-D1");
    QStringList seenAtTheSignal;
    connect(simple.get(), &SimpleAddressPicker::editFinished, this,
            [&seenAtTheSignal, &simple] { seenAtTheSignal.append(simple->fullAddressString()); });
    const DialogAnswer answer([](QDialog &dialog) {
        QTest::keyClick(&symbolBox(dialog), Qt::Key_End);
        QTest::keyClick(&stationBox(dialog), Qt::Key_End);
        typeOver(rangeEdit(dialog), QStringLiteral("44"));
        clickOn(dialog, QDialogButtonBox::Ok);
    });
    clickDetails(*simple);
    QCOMPARE(answer.count(), 1);
    QCOMPARE(simple->fullAddressString(), QStringLiteral("255-X44"));
    QCOMPARE(seenAtTheSignal, texts({"255-X44"}));
    QCOMPARE(child<QLineEdit>(*simple, QStringLiteral("addressEdit")).text(), QStringLiteral("255-X44"));
}

void SimpleAddressPickerDialogTest::acceptingByEnter()
{
    const auto simple = picker("D1");
    const QSignalSpy finished(simple.get(), &SimpleAddressPicker::editFinished);
    const DialogAnswer answer([](QDialog &dialog) {
        typeOver(rangeEdit(dialog), QStringLiteral("2"));
        QTest::keyClick(&rangeEdit(dialog), Qt::Key_Enter);
    });
    clickDetails(*simple);
    QCOMPARE(finished.size(), 1);
    QCOMPARE(simple->fullAddressString(), QStringLiteral("D2"));
}

void SimpleAddressPickerDialogTest::acceptingTakesTheDataTypeOver()
{
    const auto simple = picker("D1");
    {
        const DialogAnswer answer([](QDialog &dialog) {
            QTest::keyClick(&dataTypeBox(dialog), Qt::Key_End);
            clickOn(dialog, QDialogButtonBox::Ok);
        });
        clickDetails(*simple);
    }
    QCOMPARE(startOf(*simple).dataType, 11);
}

void SimpleAddressPickerDialogTest::acceptingWithoutAStation()
{
    const auto simple = picker("12-D1");
    const DialogAnswer answer([](QDialog &dialog) {
        QTest::keyClick(&stationBox(dialog), Qt::Key_Home);
        clickOn(dialog, QDialogButtonBox::Ok);
    });
    clickDetails(*simple);
    QCOMPARE(simple->fullAddressString(), QStringLiteral("D1"));
}

void SimpleAddressPickerDialogTest::acceptingAnAddressThatIsNotValid()
{
    const auto simple = picker("oops");
    const DialogAnswer answer([](QDialog &dialog) { clickOn(dialog, QDialogButtonBox::Ok); });
    clickDetails(*simple);
    QCOMPARE(simple->fullAddressString(), QStringLiteral("D"));
}

void SimpleAddressPickerDialogTest::cancellingChangesNothing_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("by a click") << false;
    QTest::newRow("by Escape") << true;
}

void SimpleAddressPickerDialogTest::cancellingChangesNothing()
{
    QFETCH(bool, byKey);
    const auto simple = picker("12-D1");
    const QSignalSpy finished(simple.get(), &SimpleAddressPicker::editFinished);
    {
        const DialogAnswer answer([byKey](QDialog &dialog) {
            QTest::keyClick(&dataTypeBox(dialog), Qt::Key_End);
            QTest::keyClick(&symbolBox(dialog), Qt::Key_End);
            typeOver(rangeEdit(dialog), QStringLiteral("44"));
            if (byKey)
                QTest::keyClick(&rangeEdit(dialog), Qt::Key_Escape);
            else
                clickOn(dialog, QDialogButtonBox::Cancel);
            QVERIFY(!dialog.isVisible());
        });
        clickDetails(*simple);
        QCOMPARE(answer.count(), 1);
    }
    QVERIFY(finished.isEmpty());
    QCOMPARE(simple->fullAddressString(), QStringLiteral("12-D1"));
    QCOMPARE(startOf(*simple).dataType, intType);
}

void SimpleAddressPickerDialogTest::aSecondConnectionOpensASecondDialog()
{
    const auto simple = picker("D1");
    simple->connectChildSignals();
    const DialogAnswer answer([](QDialog &) {});
    clickDetails(*simple);
    QCOMPARE(answer.count(), 2);
}

QTEST_MAIN(SimpleAddressPickerDialogTest)
#include "tst_simpleaddresspicker_dialog.moc"
