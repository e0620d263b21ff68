// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/formshape.h"

#include "zelmar_label/widgets/addmultipletagspanel.h"

#include <QBoxLayout>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextEdit>
#include <QtTest>

#include <functional>

namespace {

/// Counts the calls of the hook.
class CountingPanel : public AddMultipleTagsPanel
{
public:
    CountingPanel()
        : AddMultipleTagsPanel(nullptr)
    {
    }

    int calls = 0;

protected:
    void toolTipChanged() override { ++calls; }
};

/// Overrides all slots and records each call with its argument.
class NotingPanel : public AddMultipleTagsPanel
{
public:
    NotingPanel()
        : AddMultipleTagsPanel(nullptr)
    {
    }

    QStringList calls;

protected:
    void on_prefixLineEdit_textChanged(const QString &text) override { calls.append(QLatin1String("prefix ") + text); }
    void on_postfixLineEdit_textChanged(const QString &text) override
    {
        calls.append(QLatin1String("postfix ") + text);
    }
    void on_sequentialRadioButton_clicked() override { calls.append(QStringLiteral("sequential")); }
    void on_numberOfDigitsSpinBox_valueChanged(int value) override
    {
        calls.append(QStringLiteral("digits %1").arg(value));
    }
    void on_startAtSpinBox_valueChanged(int value) override { calls.append(QStringLiteral("start %1").arg(value)); }
    void on_sameAsPLCAddressRadioButton_clicked() override { calls.append(QStringLiteral("same")); }
    void on_addressIncrementSpinBox_valueChanged(int value) override
    {
        calls.append(QStringLiteral("increment %1").arg(value));
    }
    void toolTipChanged() override { calls.append(QStringLiteral("hook")); }
};

using Act = std::function<void(AddMultipleTagsPanel &)>;

QSpinBox &spinBox(const AddMultipleTagsPanel &panel, const char *name)
{
    return child<QSpinBox>(panel, QLatin1String(name));
}

QLineEdit &lineEdit(const AddMultipleTagsPanel &panel, const char *name)
{
    return child<QLineEdit>(panel, QLatin1String(name));
}

QRadioButton &radioButton(const AddMultipleTagsPanel &panel, const char *name)
{
    return child<QRadioButton>(panel, QLatin1String(name));
}

void click(QRadioButton &button)
{
    QTest::mouseClick(&button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button.height() / 2));
}

} // namespace

Q_DECLARE_METATYPE(Act)

class AddMultipleTagsPanelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theInterfaceStandsInOrder();
    void layoutsHoldTheirEntriesInOrder_data();
    void layoutsHoldTheirEntriesInOrder();
    void layoutsBelongToTheirParents_data();
    void layoutsBelongToTheirParents();
    void objectsAreMadeInOrder_data();
    void objectsAreMadeInOrder();
    void thePanelHasItsSettings();
    void labelsHaveTheirTexts_data();
    void labelsHaveTheirTexts();
    void spinBoxesHaveTheirLimits_data();
    void spinBoxesHaveTheirLimits();
    void editsAndButtonsHaveTheirSettings();
    void theToolTipIsAnEmptyRichText();
    void textsAreTranslatedInTheContextOfTheClass();

    void aNewPanelReadsItsDefaults();
    void accessorsWorkOnTheFields();
    void oneOfTheTwoModesHolds();
    void aModeEndsNothing();
    void fieldsKeepTheirLimits_data();
    void fieldsKeepTheirLimits();
    void changesReachTheHook_data();
    void changesReachTheHook();
    void slotsAreJoinedToTheirFields();
    void theHookDoesNothingByItself();
};

void AddMultipleTagsPanelTest::theInterfaceStandsInOrder()
{
    const QMetaObject &type = AddMultipleTagsPanel::staticMetaObject;
    QCOMPARE(ownMethods(type), texts({"protected slot on_prefixLineEdit_textChanged(QString text)",
                                      "protected slot on_postfixLineEdit_textChanged(QString text)",
                                      "protected slot on_sequentialRadioButton_clicked()",
                                      "protected slot on_numberOfDigitsSpinBox_valueChanged(int value)",
                                      "protected slot on_startAtSpinBox_valueChanged(int value)",
                                      "protected slot on_sameAsPLCAddressRadioButton_clicked()",
                                      "protected slot on_addressIncrementSpinBox_valueChanged(int value)",
                                      "protected slot toolTipChanged()"}));
    QCOMPARE(type.superClass(), &QWidget::staticMetaObject);
    QCOMPARE(type.propertyCount(), QWidget::staticMetaObject.propertyCount());
}

void AddMultipleTagsPanelTest::layoutsHoldTheirEntriesInOrder_data()
{
    QTest::addColumn<QStringList>("entries");
    QTest::newRow("verticalLayout_3") << texts({"QGroupBox addMultipleTagsGroupBox", "QFrame frame"});
    QTest::newRow("verticalLayout_2") << texts({"QHBoxLayout horizontalLayout", "QHBoxLayout horizontalLayout_4",
                                                "QHBoxLayout horizontalLayout_2", "QHBoxLayout horizontalLayout_5",
                                                "QHBoxLayout horizontalLayout_3"});
    QTest::newRow("horizontalLayout") << texts(
        {"QLabel prefixLabel", "QLineEdit prefixLineEdit", "QLabel postfixLabel", "QLineEdit postfixLineEdit"});
    QTest::newRow("horizontalLayout_4") << texts({"spacer 20x20 Fixed Minimum", "QRadioButton sequentialRadioButton"});
    QTest::newRow("horizontalLayout_2") << texts({"spacer 40x20 Expanding Minimum", "QLabel numberOfDigitsLabel",
                                                  "QSpinBox numberOfDigitsSpinBox", "QLabel startAtLabel",
                                                  "QSpinBox startAtSpinBox"});
    QTest::newRow("horizontalLayout_5") << texts(
        {"spacer 20x20 Fixed Minimum", "QRadioButton sameAsPLCAddressRadioButton"});
    QTest::newRow("horizontalLayout_3") << texts({"QLabel addressIncrementLabel", "QSpinBox addressIncrementSpinBox",
                                                  "QLabel totalTagsLabel", "QSpinBox totalTagsSpinBox"});
    QTest::newRow("verticalLayout") << texts({"QTextEdit toolTipTextEdit"});
}

void AddMultipleTagsPanelTest::layoutsHoldTheirEntriesInOrder()
{
    QFETCH(QStringList, entries);
    const AddMultipleTagsPanel panel(nullptr);
    QCOMPARE(entriesOf(child<QLayout>(panel, QLatin1String(QTest::currentDataTag()))), entries);
}

void AddMultipleTagsPanelTest::layoutsBelongToTheirParents_data()
{
    QTest::addColumn<QString>("parent");
    QTest::newRow("verticalLayout_3") << QStringLiteral("AddMultipleTagsPanel");
    QTest::newRow("verticalLayout_2") << QStringLiteral("addMultipleTagsGroupBox");
    QTest::newRow("horizontalLayout") << QStringLiteral("verticalLayout_2");
    QTest::newRow("horizontalLayout_5") << QStringLiteral("verticalLayout_2");
    QTest::newRow("verticalLayout") << QStringLiteral("frame");
}

void AddMultipleTagsPanelTest::layoutsBelongToTheirParents()
{
    QFETCH(QString, parent);
    const AddMultipleTagsPanel panel(nullptr);
    QCOMPARE(child<QLayout>(panel, QLatin1String(QTest::currentDataTag())).parent()->objectName(), parent);
}

void AddMultipleTagsPanelTest::objectsAreMadeInOrder_data()
{
    QTest::addColumn<QStringList>("children");
    QTest::newRow("addMultipleTagsGroupBox")
        << texts({"QVBoxLayout verticalLayout_2", "QLabel prefixLabel", "QLineEdit prefixLineEdit",
                  "QLabel postfixLabel", "QLineEdit postfixLineEdit", "QRadioButton sequentialRadioButton",
                  "QLabel numberOfDigitsLabel", "QSpinBox numberOfDigitsSpinBox", "QLabel startAtLabel",
                  "QSpinBox startAtSpinBox", "QRadioButton sameAsPLCAddressRadioButton", "QLabel addressIncrementLabel",
                  "QSpinBox addressIncrementSpinBox", "QLabel totalTagsLabel", "QSpinBox totalTagsSpinBox"});
    QTest::newRow("verticalLayout_2") << texts({"QHBoxLayout horizontalLayout", "QHBoxLayout horizontalLayout_4",
                                                "QHBoxLayout horizontalLayout_2", "QHBoxLayout horizontalLayout_5",
                                                "QHBoxLayout horizontalLayout_3"});
}

void AddMultipleTagsPanelTest::objectsAreMadeInOrder()
{
    QFETCH(QStringList, children);
    const AddMultipleTagsPanel panel(nullptr);
    QCOMPARE(namedChildren(panel),
             texts({"QVBoxLayout verticalLayout_3", "QGroupBox addMultipleTagsGroupBox", "QFrame frame"}));
    QCOMPARE(namedChildren(child<QObject>(panel, QLatin1String(QTest::currentDataTag()))), children);
}

void AddMultipleTagsPanelTest::thePanelHasItsSettings()
{
    QWidget parent;
    const AddMultipleTagsPanel panel(&parent);
    QCOMPARE(panel.parentWidget(), &parent);
    QCOMPARE(panel.objectName(), QStringLiteral("AddMultipleTagsPanel"));
    QCOMPARE(panel.size(), QSize(321, 275));
    QCOMPARE(panel.windowTitle(), QStringLiteral("Add Multiple Tags Panel"));
    QCOMPARE(child<QGroupBox>(panel, QStringLiteral("addMultipleTagsGroupBox")).title(),
             QStringLiteral("Add Multiple Tags"));
    QCOMPARE(child<QLayout>(panel, QStringLiteral("verticalLayout_3")).contentsMargins(), QMargins());
    QCOMPARE(child<QLayout>(panel, QStringLiteral("verticalLayout")).contentsMargins(), QMargins());
    const QFrame &frame = child<QFrame>(panel, QStringLiteral("frame"));
    QCOMPARE(frame.frameShape(), QFrame::Panel);
    QCOMPARE(frame.frameShadow(), QFrame::Sunken);
    QCOMPARE(frame.lineWidth(), 3);
    QCOMPARE(frame.midLineWidth(), 1);
}

void AddMultipleTagsPanelTest::labelsHaveTheirTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("prefixLabel") << QStringLiteral("Prefix: ");
    QTest::newRow("postfixLabel") << QStringLiteral("Suffix: ");
    QTest::newRow("numberOfDigitsLabel") << QStringLiteral("Decimal Points: ");
    QTest::newRow("startAtLabel") << QStringLiteral("Start at: ");
    QTest::newRow("addressIncrementLabel") << QStringLiteral("Address Increment: ");
    QTest::newRow("totalTagsLabel") << QStringLiteral("Total Tags: ");
}

void AddMultipleTagsPanelTest::labelsHaveTheirTexts()
{
    QFETCH(QString, text);
    const AddMultipleTagsPanel panel(nullptr);
    QCOMPARE(child<QLabel>(panel, QLatin1String(QTest::currentDataTag())).text(), text);
}

void AddMultipleTagsPanelTest::spinBoxesHaveTheirLimits_data()
{
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("value");
    QTest::newRow("numberOfDigitsSpinBox") << 999 << 2;
    QTest::newRow("startAtSpinBox") << 999 << 1;
    QTest::newRow("addressIncrementSpinBox") << 999 << 1;
    QTest::newRow("totalTagsSpinBox") << 65535 << 16;
}

void AddMultipleTagsPanelTest::spinBoxesHaveTheirLimits()
{
    QFETCH(int, maximum);
    QFETCH(int, value);
    const AddMultipleTagsPanel panel(nullptr);
    const QSpinBox &box = spinBox(panel, QTest::currentDataTag());
    QCOMPARE(box.minimum(), 0);
    QCOMPARE(box.maximum(), maximum);
    QCOMPARE(box.value(), value);
}

void AddMultipleTagsPanelTest::editsAndButtonsHaveTheirSettings()
{
    const AddMultipleTagsPanel panel(nullptr);
    QCOMPARE(lineEdit(panel, "prefixLineEdit").text(), QStringLiteral("T"));
    QCOMPARE(lineEdit(panel, "prefixLineEdit").placeholderText(), QString());
    QCOMPARE(lineEdit(panel, "postfixLineEdit").text(), QString());
    QCOMPARE(lineEdit(panel, "postfixLineEdit").placeholderText(), QString());
    QCOMPARE(radioButton(panel, "sequentialRadioButton").text(), QStringLiteral("Sequential:"));
    QVERIFY(radioButton(panel, "sequentialRadioButton").isChecked());
    QCOMPARE(radioButton(panel, "sameAsPLCAddressRadioButton").text(), QStringLiteral("Same as PLC address:"));
    QVERIFY(!radioButton(panel, "sameAsPLCAddressRadioButton").isChecked());
    const QObject *const group = &child<QGroupBox>(panel, QStringLiteral("addMultipleTagsGroupBox"));
    QCOMPARE(radioButton(panel, "sequentialRadioButton").parent(), group);
    QCOMPARE(radioButton(panel, "sameAsPLCAddressRadioButton").parent(), group);
}

void AddMultipleTagsPanelTest::theToolTipIsAnEmptyRichText()
{
    const AddMultipleTagsPanel panel(nullptr);
    const QTextEdit &edit = child<QTextEdit>(panel, QStringLiteral("toolTipTextEdit"));
    QVERIFY(edit.isReadOnly());
    QCOMPARE(edit.font().pointSize(), 11);
    QVERIFY(edit.document()->isEmpty());
    QCOMPARE(edit.document()->blockCount(), 1);
    const QTextBlockFormat paragraph = edit.document()->firstBlock().blockFormat();
    QCOMPARE(paragraph.topMargin(), 0.0);
    QCOMPARE(paragraph.bottomMargin(), 0.0);
    QCOMPARE(paragraph.leftMargin(), 0.0);
    QCOMPARE(paragraph.rightMargin(), 0.0);
    QCOMPARE(paragraph.textIndent(), 0.0);
}

void AddMultipleTagsPanelTest::textsAreTranslatedInTheContextOfTheClass()
{
    const BracketTranslator translator("AddMultipleTagsPanel");
    const AddMultipleTagsPanel panel(nullptr);
    QCOMPARE(panel.windowTitle(), QStringLiteral("<Add Multiple Tags Panel>"));
    QCOMPARE(child<QGroupBox>(panel, QStringLiteral("addMultipleTagsGroupBox")).title(),
             QStringLiteral("<Add Multiple Tags>"));
    QCOMPARE(child<QLabel>(panel, QStringLiteral("prefixLabel")).text(), QStringLiteral("<Prefix: >"));
    QCOMPARE(child<QLabel>(panel, QStringLiteral("postfixLabel")).text(), QStringLiteral("<Suffix: >"));
    QCOMPARE(child<QLabel>(panel, QStringLiteral("numberOfDigitsLabel")).text(), QStringLiteral("<Decimal Points: >"));
    QCOMPARE(child<QLabel>(panel, QStringLiteral("startAtLabel")).text(), QStringLiteral("<Start at: >"));
    QCOMPARE(child<QLabel>(panel, QStringLiteral("addressIncrementLabel")).text(),
             QStringLiteral("<Address Increment: >"));
    QCOMPARE(child<QLabel>(panel, QStringLiteral("totalTagsLabel")).text(), QStringLiteral("<Total Tags: >"));
    QCOMPARE(radioButton(panel, "sequentialRadioButton").text(), QStringLiteral("<Sequential:>"));
    QCOMPARE(radioButton(panel, "sameAsPLCAddressRadioButton").text(), QStringLiteral("<Same as PLC address:>"));
    QCOMPARE(panel.prefix(), QStringLiteral("<T>"));
    const QStringList richTexts = translator.asked().filter(QStringLiteral("<body"));
    QCOMPARE(richTexts.size(), 1);
    QVERIFY(richTexts.first().contains(QLatin1String(
        "<body style=\" font-family:'PMingLiU'; font-size:11pt; font-weight:400; font-style:normal;\">")));
}

void AddMultipleTagsPanelTest::aNewPanelReadsItsDefaults()
{
    const AddMultipleTagsPanel panel(nullptr);
    QCOMPARE(panel.prefix(), QStringLiteral("T"));
    QCOMPARE(panel.postfix(), QString());
    QVERIFY(panel.isSequential());
    QVERIFY(!panel.isSameAsPLCAddress());
    QCOMPARE(panel.numberOfDigits(), 2);
    QCOMPARE(panel.startAt(), 1);
    QCOMPARE(panel.addressIncrement(), 1);
}

void AddMultipleTagsPanelTest::accessorsWorkOnTheFields()
{
    AddMultipleTagsPanel panel(nullptr);
    panel.setPrefix(QStringLiteral("Motor "));
    panel.setPostfix(QStringLiteral(" speed"));
    panel.setNumberOfDigits(3);
    panel.setStartAt(10);
    panel.setAddressIncrement(4);
    QCOMPARE(lineEdit(panel, "prefixLineEdit").text(), QStringLiteral("Motor "));
    QCOMPARE(lineEdit(panel, "postfixLineEdit").text(), QStringLiteral(" speed"));
    QCOMPARE(spinBox(panel, "numberOfDigitsSpinBox").value(), 3);
    QCOMPARE(spinBox(panel, "startAtSpinBox").value(), 10);
    QCOMPARE(spinBox(panel, "addressIncrementSpinBox").value(), 4);
    QCOMPARE(spinBox(panel, "totalTagsSpinBox").value(), 16);

    QVERIFY(showActive(panel));
    typeOver(lineEdit(panel, "prefixLineEdit"), QStringLiteral("P"));
    typeOver(lineEdit(panel, "postfixLineEdit"), QStringLiteral("S"));
    typeOver(spinBox(panel, "numberOfDigitsSpinBox"), QStringLiteral("5"));
    typeOver(spinBox(panel, "startAtSpinBox"), QStringLiteral("6"));
    typeOver(spinBox(panel, "addressIncrementSpinBox"), QStringLiteral("7"));
    QCOMPARE(panel.prefix(), QStringLiteral("P"));
    QCOMPARE(panel.postfix(), QStringLiteral("S"));
    QCOMPARE(panel.numberOfDigits(), 5);
    QCOMPARE(panel.startAt(), 6);
    QCOMPARE(panel.addressIncrement(), 7);
}

void AddMultipleTagsPanelTest::oneOfTheTwoModesHolds()
{
    AddMultipleTagsPanel panel(nullptr);
    panel.setSequential(false);
    QVERIFY(panel.isSequential());
    panel.setSameAsPLCAddress(true);
    QVERIFY(panel.isSameAsPLCAddress());
    QVERIFY(!panel.isSequential());
    panel.setSameAsPLCAddress(false);
    QVERIFY(panel.isSameAsPLCAddress());
    panel.setSequential(true);
    QVERIFY(panel.isSequential());
    QVERIFY(!panel.isSameAsPLCAddress());
    QVERIFY(showActive(panel));
    click(radioButton(panel, "sameAsPLCAddressRadioButton"));
    QVERIFY(panel.isSameAsPLCAddress());
    QTest::keyClick(&radioButton(panel, "sequentialRadioButton"), Qt::Key_Space);
    QVERIFY(panel.isSequential());
}

void AddMultipleTagsPanelTest::aModeEndsNothing()
{
    AddMultipleTagsPanel panel(nullptr);
    for (const bool isSequential : {false, true}) {
        panel.setSameAsPLCAddress(!isSequential);
        panel.setSequential(isSequential);
        QCOMPARE(panel.isSequential(), isSequential);
        for (const char *name :
             {"numberOfDigitsSpinBox", "startAtSpinBox", "addressIncrementSpinBox", "totalTagsSpinBox"})
            QVERIFY(spinBox(panel, name).isEnabled());
    }
}

void AddMultipleTagsPanelTest::fieldsKeepTheirLimits_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("kept");
    QTest::newRow("the least") << 0 << 0;
    QTest::newRow("negative") << -1 << 0;
    QTest::newRow("the most") << 999 << 999;
    QTest::newRow("one more") << 1000 << 999;
}

void AddMultipleTagsPanelTest::fieldsKeepTheirLimits()
{
    QFETCH(int, number);
    QFETCH(int, kept);
    AddMultipleTagsPanel panel(nullptr);
    panel.setNumberOfDigits(number);
    panel.setStartAt(number);
    panel.setAddressIncrement(number);
    QCOMPARE(panel.numberOfDigits(), kept);
    QCOMPARE(panel.startAt(), kept);
    QCOMPARE(panel.addressIncrement(), kept);
}

void AddMultipleTagsPanelTest::changesReachTheHook_data()
{
    QTest::addColumn<Act>("act");
    QTest::addColumn<int>("calls");

    QTest::newRow("two keys in the prefix")
        << Act([](auto &panel) { QTest::keyClicks(&lineEdit(panel, "prefixLineEdit"), QStringLiteral("ab")); }) << 2;
    QTest::newRow("a key in the suffix") << Act([](auto &panel) {
        QTest::keyClicks(&lineEdit(panel, "postfixLineEdit"), QStringLiteral("a"));
    }) << 1;
    QTest::newRow("a key in a number") << Act([](auto &panel) {
        QTest::keyClick(&spinBox(panel, "numberOfDigitsSpinBox"), Qt::Key_Up);
    }) << 1;
    QTest::newRow("a key in the start") << Act([](auto &panel) {
        QTest::keyClick(&spinBox(panel, "startAtSpinBox"), Qt::Key_Down);
    }) << 1;
    QTest::newRow("a key in the increment")
        << Act([](auto &panel) { QTest::keyClick(&spinBox(panel, "addressIncrementSpinBox"), Qt::Key_Up); }) << 1;
    QTest::newRow("a key in the total") << Act([](auto &panel) {
        QTest::keyClick(&spinBox(panel, "totalTagsSpinBox"), Qt::Key_Up);
    }) << 0;
    QTest::newRow("a click on the mode that holds")
        << Act([](auto &panel) { click(radioButton(panel, "sequentialRadioButton")); }) << 1;
    QTest::newRow("a click on the other mode")
        << Act([](auto &panel) { click(radioButton(panel, "sameAsPLCAddressRadioButton")); }) << 1;
    QTest::newRow("a mode that is set") << Act([](auto &panel) { panel.setSameAsPLCAddress(true); }) << 0;
    QTest::newRow("another prefix") << Act([](auto &panel) { panel.setPrefix(QStringLiteral("U")); }) << 1;
    QTest::newRow("the same prefix") << Act([](auto &panel) { panel.setPrefix(QStringLiteral("T")); }) << 0;
    QTest::newRow("another suffix") << Act([](auto &panel) { panel.setPostfix(QStringLiteral("U")); }) << 1;
    QTest::newRow("the same suffix") << Act([](auto &panel) { panel.setPostfix(QString()); }) << 0;
    QTest::newRow("other numbers") << Act([](auto &panel) {
        panel.setNumberOfDigits(3);
        panel.setStartAt(3);
        panel.setAddressIncrement(3);
    }) << 3;
    QTest::newRow("the same numbers") << Act([](auto &panel) {
        panel.setNumberOfDigits(2);
        panel.setStartAt(1);
        panel.setAddressIncrement(1);
    }) << 0;
}

void AddMultipleTagsPanelTest::changesReachTheHook()
{
    QFETCH(Act, act);
    QFETCH(int, calls);
    CountingPanel panel;
    QVERIFY(showActive(panel));
    QCOMPARE(panel.calls, 0);
    act(panel);
    QCOMPARE(panel.calls, calls);
}

void AddMultipleTagsPanelTest::slotsAreJoinedToTheirFields()
{
    NotingPanel panel;
    QVERIFY(showActive(panel));
    panel.setPrefix(QStringLiteral("P"));
    panel.setPostfix(QStringLiteral("S"));
    click(radioButton(panel, "sequentialRadioButton"));
    panel.setNumberOfDigits(5);
    panel.setStartAt(6);
    click(radioButton(panel, "sameAsPLCAddressRadioButton"));
    panel.setAddressIncrement(7);
    spinBox(panel, "totalTagsSpinBox").setValue(8);
    QCOMPARE(panel.calls, texts({"prefix P", "postfix S", "sequential", "digits 5", "start 6", "same", "increment 7"}));
}

void AddMultipleTagsPanelTest::theHookDoesNothingByItself()
{
    AddMultipleTagsPanel panel(nullptr);
    const QTextEdit &edit = child<QTextEdit>(panel, QStringLiteral("toolTipTextEdit"));
    const QString before = edit.toHtml();
    panel.setPrefix(QStringLiteral("P"));
    QVERIFY(QMetaObject::invokeMethod(&panel, "toolTipChanged"));
    QCOMPARE(edit.toHtml(), before);
}

QTEST_MAIN(AddMultipleTagsPanelTest)
#include "tst_addmultipletagspanel.moc"
