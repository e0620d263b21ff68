// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/formshape.h"
#include "support/pickerfixtures.h"

#include "zelmar_label/widgets/simpleaddresspicker.h"

#include <QFocusEvent>
#include <QHBoxLayout>
#include <QHideEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

namespace {

/// Lets a test send the events that the toolkit sends, and counts the paintings.
class OpenPicker : public SimpleAddressPicker
{
public:
    using SimpleAddressPicker::focusOutEvent;
    using SimpleAddressPicker::hideEvent;
    using SimpleAddressPicker::SimpleAddressPicker;

    int paintings = 0;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        ++paintings;
        SimpleAddressPicker::paintEvent(event);
    }
};

QLineEdit &editOf(const QObject &picker)
{
    return child<QLineEdit>(picker, QStringLiteral("addressEdit"));
}

} // namespace

/// Tests the widget itself; tst_simpleaddresspicker_dialog tests its dialog.
class SimpleAddressPickerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsRememberedAtFirst();

    void init();
    void theInterfaceStandsInOrder();
    void theWidgetHasItsSettings();
    void theFieldsStandInARowWithoutGaps();
    void theFieldsHaveTheirSettings();
    void textsAreTranslatedInTheContextOfTheClass();
    void theFocusGoesToTheEdit();

    void aTextIsTakenAsItStands_data();
    void aTextIsTakenAsItStands();
    void aTextIsSplit_data();
    void aTextIsSplit();
    void theLastMatchIsRememberedForAll();
    void typingGivesNoSignal();

    void leavingTheEditIsHiddenFromIt();
    void aFocusOutEndsTheFocus();
    void otherEventsPass_data();
    void otherEventsPass();
    void theEventsOfTheWidgetAreNotPassedOn();

private:
    FakeLabel m_label;
};

void SimpleAddressPickerTest::nothingIsRememberedAtFirst()
{
    SimpleAddressPicker picker(&m_label, 1, 0, 0, {}, nullptr);
    picker.setAddress(QStringLiteral("3-D1"));
    QCOMPARE(picker.getAddressRemoveStation(QStringLiteral("3-D1")), QString());
}

void SimpleAddressPickerTest::init()
{
    m_label = deviceLabel();
}

void SimpleAddressPickerTest::theInterfaceStandsInOrder()
{
    const QMetaObject &type = SimpleAddressPicker::staticMetaObject;
    QCOMPARE(ownMethods(type), texts({"signal editFinished()", "public slot setDataTypeIndex(int index)",
                                      "private slot openAddressPicker()"}));
    QCOMPARE(type.superClass(), &QWidget::staticMetaObject);
    QCOMPARE(type.propertyCount(), QWidget::staticMetaObject.propertyCount());
}

void SimpleAddressPickerTest::theWidgetHasItsSettings()
{
    QWidget parent;
    const SimpleAddressPicker picker(&m_label, 1, 0, 0, {}, &parent);
    QCOMPARE(picker.parentWidget(), &parent);
    QCOMPARE(picker.objectName(), QStringLiteral("SimpleAddressPicker"));
    QCOMPARE(picker.size(), QSize(161, 28));
    QCOMPARE(picker.sizePolicy(), QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred));
    QCOMPARE(picker.maximumSize(), QSize(16777215, 16777215));
    QCOMPARE(picker.focusPolicy(), Qt::ClickFocus);
    QCOMPARE(picker.windowTitle(), QStringLiteral("Form"));
}

void SimpleAddressPickerTest::theFieldsStandInARowWithoutGaps()
{
    const SimpleAddressPicker picker(&m_label, 1, 0, 0, {}, nullptr);
    const QHBoxLayout &row = child<QHBoxLayout>(picker, QStringLiteral("horizontalLayout"));
    QCOMPARE(picker.layout(), &row);
    QCOMPARE(entriesOf(row), texts({"QLineEdit addressEdit", "QPushButton detailPushButton"}));
    QCOMPARE(namedChildren(picker),
             texts({"QHBoxLayout horizontalLayout", "QLineEdit addressEdit", "QPushButton detailPushButton"}));
    QCOMPARE(row.spacing(), 0);
    QCOMPARE(row.contentsMargins(), QMargins());
}

void SimpleAddressPickerTest::theFieldsHaveTheirSettings()
{
    const SimpleAddressPicker picker(&m_label, 1, 0, 0, {}, nullptr);
    QCOMPARE(editOf(picker).text(), QString());
    const QPushButton &button = child<QPushButton>(picker, QStringLiteral("detailPushButton"));
    QCOMPARE(button.text(), QStringLiteral("..."));
    QCOMPARE(button.sizePolicy().horizontalPolicy(), QSizePolicy::Maximum);
    QCOMPARE(button.sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
    QCOMPARE(button.minimumSize(), QSize(22, 22));
    QCOMPARE(button.maximumSize(), QSize(22, 16777215));
    QCOMPARE(button.focusPolicy(), Qt::NoFocus);
}

void SimpleAddressPickerTest::textsAreTranslatedInTheContextOfTheClass()
{
    const BracketTranslator translator("SimpleAddressPicker");
    const SimpleAddressPicker picker(&m_label, 1, 0, 0, {}, nullptr);
    QCOMPARE(picker.windowTitle(), QStringLiteral("<Form>"));
    QCOMPARE(child<QPushButton>(picker, QStringLiteral("detailPushButton")).text(), QStringLiteral("<...>"));
}

void SimpleAddressPickerTest::theFocusGoesToTheEdit()
{
    SimpleAddressPicker picker(&m_label, 1, 0, 0, {}, nullptr);
    QCOMPARE(picker.focusProxy(), &editOf(picker));
    QCOMPARE(editOf(picker).nextInFocusChain(), &child<QPushButton>(picker, QStringLiteral("detailPushButton")));
    QVERIFY(showActive(picker));
    picker.setFocus();
    QVERIFY(editOf(picker).hasFocus());
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("7-D1"));
    QCOMPARE(picker.fullAddressString(), QStringLiteral("7-D1"));
}

void SimpleAddressPickerTest::aTextIsTakenAsItStands_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("an address with its station") << QStringLiteral("12-D100");
    QTest::newRow("an address") << QStringLiteral("D100");
    QTest::newRow("no address at all") << QStringLiteral("  not an address -- ");
    QTest::newRow("empty") << QString();
}

void SimpleAddressPickerTest::aTextIsTakenAsItStands()
{
    QFETCH(QString, text);
    SimpleAddressPicker picker(&m_label, 1, 0, 0, {}, nullptr);
    picker.setAddress(QStringLiteral("before"));
    picker.setAddress(text);
    QCOMPARE(editOf(picker).text(), text);
    QCOMPARE(picker.fullAddressString(), text);
    QCOMPARE(m_label.take(), QStringList());
}

void SimpleAddressPickerTest::aTextIsSplit_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("station");
    QTest::addColumn<QString>("address");
    QTest::newRow("a station and an address")
        << QStringLiteral("12-D100") << QStringLiteral("12") << QStringLiteral("D100");
    QTest::newRow("an address alone") << QStringLiteral("D100") << QString() << QStringLiteral("D100");
    QTest::newRow("digits go to the station") << QStringLiteral("100") << QStringLiteral("100") << QString();
    QTest::newRow("a fourth digit goes to the address")
        << QStringLiteral("1234") << QStringLiteral("123") << QStringLiteral("4");
    QTest::newRow("what is behind a second dash is dropped")
        << QStringLiteral("3-D100-5") << QStringLiteral("3") << QStringLiteral("D100");
    QTest::newRow("a station alone") << QStringLiteral("12-") << QStringLiteral("12") << QString();
    QTest::newRow("an empty station") << QStringLiteral("-D5") << QString() << QStringLiteral("D5");
    QTest::newRow("two dashes") << QStringLiteral("3--D5") << QStringLiteral("3") << QString();
    QTest::newRow("a station of four digits")
        << QStringLiteral("1234-D5") << QStringLiteral("123") << QStringLiteral("4");
    QTest::newRow("leading zeros stay") << QStringLiteral("003-D5") << QStringLiteral("003") << QStringLiteral("D5");
    QTest::newRow("a blank in front is no station") << QStringLiteral(" 3-D5") << QString() << QStringLiteral(" 3");
    QTest::newRow("digits of an address stay there") << QStringLiteral("D1-2") << QString() << QStringLiteral("D1");
    QTest::newRow("an address that begins with a digit")
        << QStringLiteral("4x100") << QStringLiteral("4") << QStringLiteral("x100");
    QTest::newRow("empty") << QString() << QString() << QString();
}

void SimpleAddressPickerTest::aTextIsSplit()
{
    QFETCH(QString, text);
    QFETCH(QString, station);
    QFETCH(QString, address);
    SimpleAddressPicker picker(&m_label, 1, 0, 0, {}, nullptr);
    QVERIFY(showActive(picker));
    QTest::keyClicks(&editOf(picker), text);
    QCOMPARE(picker.stationId(), station);
    QCOMPARE(picker.address(), address);
    QCOMPARE(picker.fullAddressString(), text);
}

void SimpleAddressPickerTest::theLastMatchIsRememberedForAll()
{
    SimpleAddressPicker one(&m_label, 1, 0, 0, {}, nullptr);
    SimpleAddressPicker other(&m_label, 1, 0, 0, {}, nullptr);
    one.setAddress(QStringLiteral("12-D100"));
    other.setAddress(QStringLiteral("X5"));
    QCOMPARE(one.address(), QStringLiteral("D100"));
    QCOMPARE(one.getAddressRemoveStation(QStringLiteral("12-D100")), QStringLiteral("D100"));
    QCOMPARE(one.getAddressRemoveStation(QStringLiteral("7-W3")), QStringLiteral("D100"));
    QCOMPARE(one.getAddressRemoveStation(QString()), QStringLiteral("D100"));
    QCOMPARE(other.getAddressRemoveStation(QStringLiteral("X5")), QStringLiteral("D100"));
    QCOMPARE(other.stationId(), QString());
    QCOMPARE(one.getAddressRemoveStation(QString()), QStringLiteral("X5"));
    one.fullAddressString();
    QCOMPARE(one.getAddressRemoveStation(QString()), QStringLiteral("X5"));
}

void SimpleAddressPickerTest::typingGivesNoSignal()
{
    SimpleAddressPicker picker(&m_label, 1, 0, 0, {}, nullptr);
    const QSignalSpy finished(&picker, &SimpleAddressPicker::editFinished);
    QVERIFY(showActive(picker));
    QTest::keyClicks(&editOf(picker), QStringLiteral("D1"));
    QTest::keyClick(&editOf(picker), Qt::Key_Return);
    picker.setAddress(QStringLiteral("D2"));
    picker.setDataTypeIndex(1);
    QVERIFY(finished.isEmpty());
}

void SimpleAddressPickerTest::leavingTheEditIsHiddenFromIt()
{
    QWidget window;
    QHBoxLayout row(&window);
    auto *const picker = new SimpleAddressPicker(&m_label, 1, 0, 0, {}, nullptr);
    auto *const next = new QLineEdit;
    row.addWidget(picker);
    row.addWidget(next);
    QLineEdit &edit = editOf(*picker);
    const QSignalSpy edited(&edit, &QLineEdit::editingFinished);
    const QSignalSpy finished(picker, &SimpleAddressPicker::editFinished);
    QVERIFY(showActive(window));
    QTest::mouseClick(&edit, Qt::LeftButton);
    QVERIFY(edit.hasFocus());
    QTest::keyClicks(&edit, QStringLiteral("D1"));
    QTest::mouseClick(next, Qt::LeftButton);
    QVERIFY(next->hasFocus());
    QVERIFY(!edit.hasFocus());
    QVERIFY(edited.isEmpty());
    QTest::mouseClick(&edit, Qt::LeftButton);
    QVERIFY(edit.hasFocus());
    QTest::keyClick(&edit, Qt::Key_Return);
    QCOMPARE(edited.size(), 1);
    QTest::keyClick(&edit, Qt::Key_Tab);
    QVERIFY(next->hasFocus());
    QCOMPARE(edited.size(), 1);
    QVERIFY(finished.isEmpty());
    QCOMPARE(picker->fullAddressString(), QStringLiteral("D1"));
}

void SimpleAddressPickerTest::aFocusOutEndsTheFocus()
{
    SimpleAddressPicker picker(&m_label, 1, 0, 0, {}, nullptr);
    QVERIFY(showActive(picker));
    picker.setFocus();
    QVERIFY(editOf(picker).hasFocus());
    QFocusEvent event(QEvent::FocusOut, Qt::PopupFocusReason);
    QVERIFY(QCoreApplication::sendEvent(&editOf(picker), &event));
    QVERIFY(!editOf(picker).hasFocus());
}

void SimpleAddressPickerTest::otherEventsPass_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("isHeld");
    QTest::newRow("the focus goes") << int(QEvent::FocusOut) << true;
    QTest::newRow("the focus comes") << int(QEvent::FocusIn) << false;
    QTest::newRow("the focus is about to change") << int(QEvent::FocusAboutToChange) << false;
    QTest::newRow("a key") << int(QEvent::KeyPress) << false;
    QTest::newRow("the edit is hidden") << int(QEvent::Hide) << false;
}

void SimpleAddressPickerTest::otherEventsPass()
{
    QFETCH(int, type);
    QFETCH(bool, isHeld);
    SimpleAddressPicker picker(&m_label, 1, 0, 0, {}, nullptr);
    QEvent event(static_cast<QEvent::Type>(type));
    QObject anyObject;
    QCOMPARE(picker.eventFilter(&editOf(picker), &event), isHeld);
    QCOMPARE(picker.eventFilter(&anyObject, &event), isHeld);
}

void SimpleAddressPickerTest::theEventsOfTheWidgetAreNotPassedOn()
{
    OpenPicker picker(&m_label, 1, 0, 0, {}, nullptr);
    QVERIFY(showActive(picker));
    QCoreApplication::processEvents();
    picker.paintings = 0;
    QFocusEvent focusOut(QEvent::FocusOut, Qt::OtherFocusReason);
    picker.focusOutEvent(&focusOut);
    QCoreApplication::processEvents();
    QCOMPARE(picker.paintings, 0);
    for (const bool isAccepted : {true, false}) {
        QHideEvent hide;
        hide.setAccepted(isAccepted);
        picker.hideEvent(&hide);
        QCOMPARE(hide.isAccepted(), isAccepted);
    }
    picker.update();
    QCoreApplication::processEvents();
    QCOMPARE(picker.paintings, 1);
}

QTEST_MAIN(SimpleAddressPickerTest)
#include "tst_simpleaddresspicker.moc"
