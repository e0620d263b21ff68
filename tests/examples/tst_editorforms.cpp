// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "examples/editorfixtures.h"

#include "addrunpanel.h"
#include "tagmodel.h"
#include "tagtypes.h"

#include <zelmar_label/label_store/labelstore.h>
#include <zelmar_label/tag_store/tagsystem.h>

#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QTimer>

/// Tests the editor's details of a tag, and its forms for new tags.
class TestEditorForms : public QObject, private EditorFixture
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init() { begin(); }
    void cleanup() { end(); }

    void commandOfATag_data();
    void commandOfATag();
    void blocksOfARun();
    void values_data();
    void values();
    void addForm_data();
    void addForm();
    void addFormAddsOneAfterTheOther();
    void runPreview_data();
    void runPreview();
    void tabOrder_data();
    void tabOrder();
    void veryLongTexts_data();
    void veryLongTexts();
    void runIsAdded();
    void runOfInternalTags();
    void runCanBeCancelled();
    void escapeInTheFormStopsTheRun();
    void linkWithoutDriver();
    void pickerByKey();

private:
    QWidget *panel(const char *name, Qt::Key key);
};

namespace {

QList<TagRow> someTags()
{
    return {tagRow("Valve", 1, tagtype::Bit, "X7"), tagRow("Speed", 1, tagtype::Int16, "D100"),
            tagRow("Title", 1, tagtype::Ascii, "R0", 8)};
}

} // namespace

void TestEditorForms::initTestCase()
{
    copyDrivers();
}

void TestEditorForms::cleanupTestCase()
{
    TagSystem::drop();
    label::freeLabels();
}

QWidget *TestEditorForms::panel(const char *name, Qt::Key key)
{
    QTest::keyClick(m_window.data(), key, Qt::ControlModifier);
    return child<QWidget>(name);
}

void TestEditorForms::commandOfATag_data()
{
    QTest::addColumn<int>("link");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("scale");
    QTest::addColumn<QString>("texts");
    QTest::addColumn<bool>("hasBlocks");
    QTest::newRow("bit") << 1 << int(tagtype::Bit) << "X7" << 1 << "X7|one bit|1" << true;
    QTest::newRow("double word at a station")
        << 1 << int(tagtype::Float) << "2-D10" << 1 << "2-D10|a double word, 4 bytes|1" << true;
    QTest::newRow("text") << 1 << int(tagtype::Ascii) << "R0" << 8 << "R0|8 bytes of text|1" << true;
    QTest::newRow("internal") << 0 << int(tagtype::Double) << "" << 1 << "none|a quad word, 8 bytes|1" << false;
    QTest::newRow("wrong address") << 1 << int(tagtype::Int16) << "Q?" << 1 << "Q?|a word, 2 bytes|1" << false;
}

void TestEditorForms::commandOfATag()
{
    QFETCH(int, link);
    QFETCH(int, type);
    QFETCH(QString, address);
    QFETCH(int, scale);
    QFETCH(QString, texts);
    QFETCH(bool, hasBlocks);
    open({tagRow("Tag", link, type, qPrintable(address), scale)});
    QCOMPARE(label("commandAddress") + QLatin1Char('|') + label("commandWidth") + QLatin1Char('|') +
                 label("commandScanTime"),
             texts);
    QCOMPARE(child<QListWidget>("blockList")->isVisible(), hasBlocks);
    QCOMPARE(label("commandFormat") != QLatin1String("none") && link != 0, hasBlocks);
}

void TestEditorForms::blocksOfARun()
{
    open({tagRow("Speed", 1, tagtype::Int16, "2-D7000")});
    const auto *const list = child<QListWidget>("blockList");
    auto *const count = child<QSpinBox>("blockCount");
    count->setValue(1000);
    QList<CommunicatorCommand> blocks;
    QVERIFY(m_window->session().tags().creatBlockCommand(1, 1000, blocks));
    QVERIFY(blocks.size() > 1);
    QCOMPARE(list->count(), blocks.size());
    for (int row = 0; row < blocks.size(); ++row)
        QCOMPARE(list->item(row)->text(),
                 QStringLiteral("%1 × %2").arg(blocks.at(row).address).arg(blocks.at(row).length));
    QCOMPARE(label("blockText"), QStringLiteral("%1 requests:").arg(blocks.size()));
    count->setValue(1001);
    QCOMPARE(list->count(), 0);
    QCOMPARE(label("blockText"), QStringLiteral("Only 1000 of 1001 items are within the device's limits."));
}

void TestEditorForms::values_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("others");
    QTest::addColumn<QString>("problem");
    const QString value = QStringLiteral("valueEdit");
    const QString hexadecimal = QStringLiteral("hexadecimalEdit");
    const QString octal = QStringLiteral("octalEdit");
    const QString bytes = QStringLiteral("bytesEdit");
    const QString none;
    QTest::newRow("decimal") << int(tagtype::Int16) << value << "1500"
                             << "1500|5dc|2734|DC 05" << none;
    QTest::newRow("negative") << int(tagtype::Int16) << value << "-2"
                              << "-2|fffe|177776|FE FF" << none;
    QTest::newRow("hexadecimal") << int(tagtype::Int8) << hexadecimal << "ff"
                                 << "-1|ff|377|FF" << none;
    QTest::newRow("octal") << int(tagtype::UInt8) << octal << "17"
                           << "15|f|17|0F" << none;
    QTest::newRow("bytes") << int(tagtype::UInt32) << bytes << "01000080"
                           << "2147483649|80000001|20000000001|01000080" << none;
    QTest::newRow("bit") << int(tagtype::Bit) << value << "1"
                         << "1|1|1|01" << none;
    QTest::newRow("float has no bases") << int(tagtype::Float) << value << "1.5"
                                        << "1.5|–|–|00 00 C0 3F" << none;
    QTest::newRow("bytes of a double") << int(tagtype::Double) << bytes << "00 00 00 00 00 00 F0 3F"
                                       << "1|–|–|00 00 00 00 00 00 F0 3F" << none;
    QTest::newRow("largest of all") << int(tagtype::UInt64) << value << "18446744073709551615"
                                    << "18446744073709551615|ffffffffffffffff|1777777777777777777777|FF FF FF FF FF FF "
                                       "FF FF"
                                    << none;
    QTest::newRow("text") << int(tagtype::Ascii) << value << "Hi"
                          << "Hi|–|–|48 69 00 00 00 00 00 00" << none;
    QTest::newRow("bytes of a text") << int(tagtype::Ascii) << bytes << "41 42 00"
                                     << "AB|–|–|41 42 00" << none;
    QTest::newRow("beyond the limits") << int(tagtype::Int8) << value << "128"
                                       << "128|||"
                                       << "128 is not between -128 and 127";
    QTest::newRow("no number") << int(tagtype::Int8) << value << "1x"
                               << "1x|||"
                               << "\"1x\" is not a whole number, or is beyond the limits";
    QTest::newRow("no hexadecimal number") << int(tagtype::Int8) << hexadecimal << "1g"
                                           << "|1g||"
                                           << "\"1g\" is not a number in base 16";
    QTest::newRow("too many bits") << int(tagtype::Int8) << hexadecimal << "100"
                                   << "|100||"
                                   << "\"100\" has more bits than the tag";
    QTest::newRow("too few bytes") << int(tagtype::Int16) << bytes << "01"
                                   << "|||01"
                                   << "1 bytes are given, the tag has 2";
    QTest::newRow("no bytes") << int(tagtype::Int16) << bytes << "0x01"
                              << "|||0x01"
                              << "\"0x01\" is not a list of hexadecimal bytes";
    QTest::newRow("text too long") << int(tagtype::Ascii) << value << "123456789"
                                   << "123456789|–|–|"
                                   << "the text has 9 bytes, the tag 8";
}

void TestEditorForms::values()
{
    QFETCH(int, type);
    QFETCH(QString, field);
    QFETCH(QString, typed);
    QFETCH(QString, others);
    QFETCH(QString, problem);
    open({tagRow("Tag", 0, type, "", 8)});
    auto *const edit = child<QLineEdit>(qPrintable(field));
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, typed);
    QStringList shown;
    for (const char *const name : {"valueEdit", "hexadecimalEdit", "octalEdit", "bytesEdit"})
        shown.append(child<QLineEdit>(name)->text());
    QCOMPARE(shown.join(QLatin1Char('|')), others);
    QCOMPARE(label("valueProblem"), problem);
    QCOMPARE(child<QLabel>("valueProblem")->isVisible(), !problem.isEmpty());
}

void TestEditorForms::addForm_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("link");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("verdict");
    QTest::addColumn<bool>("canAdd");
    const int word = tagtype::Int16;
    QTest::newRow("good") << "New" << 1 << word << "D1"
                          << "Enter adds the tag." << true;
    QTest::newRow("internal") << "New" << 0 << word << ""
                              << "Enter adds the tag." << true;
    QTest::newRow("no name") << "" << 1 << word << "D1"
                             << "Type a name." << false;
    QTest::newRow("no address") << "New" << 1 << word << ""
                                << "Type an address." << false;
    QTest::newRow("name is there") << "Speed" << 1 << word << "D1"
                                   << "There is already a tag \"Speed\"." << false;
    QTest::newRow("station that is not there") << "New" << 1 << word << "9-D1"
                                               << "The address is not valid: link 1 has no station 9." << false;
}

void TestEditorForms::addForm()
{
    QFETCH(QString, name);
    QFETCH(int, link);
    QFETCH(int, type);
    QFETCH(QString, address);
    QFETCH(QString, verdict);
    QFETCH(bool, canAdd);
    open(someTags());
    QWidget *const form = panel("addTagForm", Qt::Key_N);
    auto *const links = form->findChild<QComboBox *>(QStringLiteral("linkCombo"));
    links->setCurrentIndex(links->findData(link));
    form->findChild<QComboBox *>(QStringLiteral("typeCombo"))->setCurrentIndex(type);
    auto *const edit = form->findChild<QLineEdit *>(QStringLiteral("addressEdit"));
    QCOMPARE(edit != nullptr, link != 0);
    if (edit)
        QTest::keyClicks(edit, address);
    auto *const nameEdit = child<QLineEdit>("newTagName");
    nameEdit->selectAll();
    QTest::keyClicks(nameEdit, name);
    QCOMPARE(label("newTagVerdict"), verdict);
    QCOMPARE(child<QPushButton>("newTagAdd")->isEnabled(), canAdd);
    const QStringList before = rows();
    QTest::keyClick(nameEdit, Qt::Key_Return);
    QCOMPARE(rows().size(), before.size() + (canAdd ? 1 : 0));
}

void TestEditorForms::addFormAddsOneAfterTheOther()
{
    open(someTags());
    QWidget *const form = panel("addTagForm", Qt::Key_N);
    // The link of the selected tag, a bit.
    QCOMPARE(form->findChild<QComboBox *>(QStringLiteral("linkCombo"))->currentData().toInt(), 1);
    form->findChild<QComboBox *>(QStringLiteral("typeCombo"))->setCurrentIndex(tagtype::Ascii);
    form->findChild<QSpinBox *>(QStringLiteral("lengthSpin"))->setValue(12);
    auto *const edit = form->findChild<QLineEdit *>(QStringLiteral("addressEdit"));
    auto *const name = child<QLineEdit>("newTagName");
    for (const char *const next : {"First", "Second"}) {
        edit->setText(QStringLiteral("D20"));
        name->selectAll();
        QTest::keyClicks(name, QLatin1String(next));
        QTest::keyClick(name, Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(name));
    }
    QCOMPARE(rows().mid(3), (QStringList{QStringLiteral("First|1|8|D20|12"), QStringLiteral("Second|1|8|D20|12")}));
    QCOMPARE(label("detailsTitle"), QStringLiteral("Second"));
    QTest::keyClick(name, Qt::Key_Escape);
    QVERIFY(!form->isVisible());
}

void TestEditorForms::runPreview_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("increment");
    QTest::addColumn<int>("total");
    QTest::addColumn<QString>("prefix");
    QTest::addColumn<int>("shownIncrement");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QString>("verdict");
    const int word = tagtype::Int16;
    QTest::newRow("words") << word << "D500" << 0 << 3 << "T" << 1 << "T01 D500,T02 D501,T03 D502"
                           << "Enter adds 3 tags.";
    QTest::newRow("double words lie two apart")
        << int(tagtype::Int32) << "D500" << 0 << 2 << "T" << 2 << "T01 D500,T02 D502"
        << "Enter adds 2 tags.";
    QTest::newRow("texts lie their length apart")
        << int(tagtype::Ascii) << "D500" << 0 << 2 << "T" << 8 << "T01 D500,T02 D508"
        << "Enter adds 2 tags.";
    QTest::newRow("octal bits at a station")
        << int(tagtype::Bit) << "2-X6" << 0 << 3 << "T" << 1 << "T01 2-X6,T02 2-X7,T03 2-X10"
        << "Enter adds 3 tags.";
    QTest::newRow("increment of the user") << word << "2-D500" << 10 << 2 << "T" << 10 << "T01 2-D500,T02 2-D510"
                                           << "Enter adds 2 tags.";
    QTest::newRow("beyond the last number")
        << word << "D7998" << 0 << 3 << "T" << 1 << "T01 D7998,T02 D7999,T03 "
        << "Only 2 of the first 3 addresses exist on the device, from D7998 to D7999.";
    QTest::newRow("beyond the preview") << word << "D7800" << 0 << 300 << "T" << 1 << ""
                                        << "The last of the 300 addresses is beyond the device's limits.";
    QTest::newRow("name is there") << word << "D1" << 0 << 2 << "Old_" << 1 << "Old_01 D1,Old_02 D2"
                                   << "There is already a tag \"Old_02\".";
    QTest::newRow("names that are numbers") << word << "D1" << 0 << 2 << "" << 1 << "01 D1,02 D2"
                                            << "The project would store the name as \"1\".";
    QTest::newRow("no address yet") << word << "" << 0 << 2 << "T" << 1 << "T01 ,T02 "
                                    << "Type the first address.";
}

void TestEditorForms::runPreview()
{
    QFETCH(int, type);
    QFETCH(QString, address);
    QFETCH(int, increment);
    QFETCH(int, total);
    QFETCH(QString, prefix);
    QFETCH(int, shownIncrement);
    QFETCH(QString, expected);
    QFETCH(QString, verdict);
    open({tagRow("Old_02", 1, tagtype::Bit, "X7")});
    QWidget *const form = panel("addRunPanel", Qt::Key_R);
    child<QLineEdit>("runPrefix")->setText(prefix);
    form->findChild<QComboBox *>(QStringLiteral("typeCombo"))->setCurrentIndex(type);
    form->findChild<QSpinBox *>(QStringLiteral("lengthSpin"))->setValue(16);
    QTest::keyClicks(form->findChild<QLineEdit *>(QStringLiteral("addressEdit")), address);
    if (increment > 0)
        child<QSpinBox>("runIncrement")->setValue(increment);
    child<QSpinBox>("runTotal")->setValue(total);
    QCOMPARE(child<QSpinBox>("runIncrement")->value(), shownIncrement);
    QCOMPARE(label("runVerdict"), verdict);
    QCOMPARE(child<QPushButton>("runAdd")->isEnabled(), verdict.startsWith(QStringLiteral("Enter")));
    const auto *const preview = child<QTableWidget>("runPreview");
    if (expected.isEmpty()) {
        QCOMPARE(preview->rowCount(), 101);
        return;
    }
    QStringList lines;
    for (int row = 0; row < preview->rowCount(); ++row)
        lines.append(preview->item(row, 0)->text() + QLatin1Char(' ') + preview->item(row, 1)->text());
    QCOMPARE(lines.join(QLatin1Char(',')), expected);
}

void TestEditorForms::tabOrder_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("fields");
    QTest::newRow("one tag") << int(Qt::Key_N) << int(tagtype::Int16)
                             << "newTagName,linkCombo,typeCombo,addressEdit,panelClose";
    QTest::newRow("one text") << int(Qt::Key_N) << int(tagtype::Ascii)
                              << "newTagName,linkCombo,typeCombo,lengthSpin,addressEdit,panelClose";
    QTest::newRow("run") << int(Qt::Key_R) << int(tagtype::Int16)
                         << "runPrefix,runSuffix,runDigits,runStart,linkCombo,typeCombo,addressEdit,runIncrement,"
                            "runTotal,panelClose";
}

/// The focus skips the add button while there is nothing to add.
void TestEditorForms::tabOrder()
{
    QFETCH(int, key);
    QFETCH(int, type);
    QFETCH(QString, fields);
    open({tagRow("Speed", 1, tagtype::Int16, "D100")});
    QWidget *const form = panel(key == Qt::Key_N ? "addTagForm" : "addRunPanel", Qt::Key(key));
    form->findChild<QComboBox *>(QStringLiteral("typeCombo"))->setCurrentIndex(type);
    QStringList visited;
    while (visited.size() <= fields.count(QLatin1Char(','))) {
        visited.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(visited.join(QLatin1Char(',')), fields);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("panelClose"));
}

void TestEditorForms::veryLongTexts_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("verdict");
    QTest::addColumn<QString>("reason");
    QTest::newRow("search") << "search"
                            << ""
                            << "";
    QTest::newRow("value") << "valueEdit"
                           << "valueProblem"
                           << "is not a whole number";
    QTest::newRow("base 16") << "hexadecimalEdit"
                             << "valueProblem"
                             << "is not a number in base 16";
    QTest::newRow("bytes") << "bytesEdit"
                           << "valueProblem"
                           << "is not a list of hexadecimal bytes";
    QTest::newRow("name") << "newTagName"
                          << "newTagVerdict"
                          << "Type an address.";
    QTest::newRow("prefix") << "runPrefix"
                            << "runVerdict"
                            << "Type the first address.";
    QTest::newRow("suffix") << "runSuffix"
                            << "runVerdict"
                            << "Type the first address.";
    QTest::newRow("first address of a run") << "addressEdit"
                                            << "runVerdict"
                                            << "The first address is not valid";
}

void TestEditorForms::veryLongTexts()
{
    QFETCH(QString, field);
    QFETCH(QString, verdict);
    QFETCH(QString, reason);
    open({tagRow("Speed", 1, tagtype::Int16, "D100")});
    if (verdict == QLatin1String("newTagVerdict"))
        panel("addTagForm", Qt::Key_N);
    if (verdict == QLatin1String("runVerdict"))
        panel("addRunPanel", Qt::Key_R);
    QLineEdit *shown = nullptr;
    for (QLineEdit *const edit : m_window->findChildren<QLineEdit *>(field)) {
        if (edit->isVisible())
            shown = edit;
    }
    QVERIFY(shown);
    shown->setFocus();
    shown->selectAll();
    // An edit cuts what is pasted at 32,767 characters.
    QApplication::clipboard()->setText(QStringLiteral("a").repeated(100000));
    QTest::keyClick(shown, Qt::Key_V, Qt::ControlModifier);
    QVERIFY(shown->text().size() > 30000);
    if (verdict.isEmpty())
        QCOMPARE(m_window->findChild<TagModel *>()->rowCount(), 0);
    else
        QVERIFY2(label(qPrintable(verdict)).contains(reason), qPrintable(label(qPrintable(verdict))));
    QVERIFY(m_window->height() < 2000);
}

void TestEditorForms::runIsAdded()
{
    open(someTags());
    QWidget *const form = panel("addRunPanel", Qt::Key_R);
    child<QLineEdit>("runPrefix")->setText(QStringLiteral("Axis"));
    child<QLineEdit>("runSuffix")->setText(QStringLiteral("_pos"));
    child<QSpinBox>("runDigits")->setValue(3);
    child<QSpinBox>("runStart")->setValue(99);
    child<QSpinBox>("runTotal")->setValue(3);
    form->findChild<QComboBox *>(QStringLiteral("typeCombo"))->setCurrentIndex(tagtype::Float);
    form->findChild<QLineEdit *>(QStringLiteral("addressEdit"))->setText(QStringLiteral("1-D40"));
    child<QPushButton>("runAdd")->click();
    waitForJob();
    QCOMPARE(messageOf(*m_window), QStringLiteral("3 tags are added, from Axis099_pos to Axis101_pos."));
    QCOMPARE(rows().mid(3),
             (QStringList{QStringLiteral("Axis099_pos|1|7|1-D40|1"), QStringLiteral("Axis100_pos|1|7|1-D42|1"),
                          QStringLiteral("Axis101_pos|1|7|1-D44|1")}));
    // The names are taken now.
    QVERIFY(!child<QPushButton>("runAdd")->isEnabled());
}

void TestEditorForms::runOfInternalTags()
{
    open({tagRow("Inner", 0, tagtype::Bit, "")});
    panel("addRunPanel", Qt::Key_R);
    QVERIFY(!child<QSpinBox>("runIncrement")->isEnabled());
    QCOMPARE(label("runVerdict"), QStringLiteral("Enter adds 16 tags."));
    child<QSpinBox>("runTotal")->setValue(2);
    child<QPushButton>("runAdd")->click();
    waitForJob();
    QCOMPARE(rows().mid(1), (QStringList{QStringLiteral("Tag_01|0|3||1"), QStringLiteral("Tag_02|0|3||1")}));
}

void TestEditorForms::runCanBeCancelled()
{
    open(someTags());
    const QStringList before = rows();
    QWidget *const form = panel("addRunPanel", Qt::Key_R);
    form->findChild<QLineEdit *>(QStringLiteral("addressEdit"))->setText(QStringLiteral("D0"));
    child<QSpinBox>("runDigits")->setValue(4);
    child<QSpinBox>("runTotal")->setValue(8000);
    connect(child<QProgressBar>("progress"), &QProgressBar::valueChanged, this, [this](int value) {
        if (value > 0)
            QTest::keyClick(m_window.data(), Qt::Key_Escape);
    });
    child<QPushButton>("runAdd")->click();
    waitForJob();
    QCOMPARE(messageOf(*m_window), QStringLiteral("Adding 8,000 tags: cancelled, nothing is changed."));
    QCOMPARE(rows(), before);
    QCOMPARE(m_window->findChild<TagModel *>()->rowCount(), 3);
    QVERIFY(m_window->session().tags().isNewTag(QStringLiteral("Tag_0001")));
}

/// Escape ends a running job before it leaves the form with the focus.
void TestEditorForms::escapeInTheFormStopsTheRun()
{
    open(someTags());
    const QStringList before = rows();
    QWidget *const form = panel("addRunPanel", Qt::Key_R);
    form->findChild<QLineEdit *>(QStringLiteral("addressEdit"))->setText(QStringLiteral("D0"));
    child<QSpinBox>("runTotal")->setValue(8000);
    QTest::keyClick(child<QLineEdit>("runPrefix"), Qt::Key_Return);
    waitForProgress();
    QVERIFY(m_window->isBusy());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    waitForJob();
    QCOMPARE(messageOf(*m_window), QStringLiteral("Adding 8,000 tags: cancelled, nothing is changed."));
    QCOMPARE(rows(), before);
    QVERIFY(form->isVisible());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QVERIFY(!form->isVisible());
}

void TestEditorForms::linkWithoutDriver()
{
    open(someTags());
    const QString reason = QStringLiteral("ddress is not valid: link 3: there is no driver \"No such PLC\".");
    const auto chooseLink = [](const QWidget *form) {
        auto *const links = form->findChild<QComboBox *>(QStringLiteral("linkCombo"));
        links->setCurrentIndex(links->findData(3));
        QVERIFY(!form->findChild<QLineEdit *>(QStringLiteral("addressEdit")));
        QStringList hints;
        for (const QLineEdit *const edit : form->findChildren<QLineEdit *>()) {
            if (edit->isVisible() && !edit->isEnabled())
                hints.append(edit->placeholderText());
        }
        QCOMPARE(hints, QStringList{QStringLiteral("There is no driver")});
    };
    chooseLink(panel("addTagForm", Qt::Key_N));
    QTest::keyClicks(child<QLineEdit>("newTagName"), QStringLiteral("New"));
    QCOMPARE(label("newTagVerdict"), QLatin1String("The a") + reason);
    QVERIFY(!child<QPushButton>("newTagAdd")->isEnabled());
    chooseLink(panel("addRunPanel", Qt::Key_R));
    QCOMPARE(label("runVerdict"), QLatin1String("The first a") + reason);
    QVERIFY(!child<QPushButton>("runAdd")->isEnabled());
}

/// The picker's button takes no focus, so a key must open it.
void TestEditorForms::pickerByKey()
{
    open(someTags());
    auto *const edit = panel("addTagForm", Qt::Key_N)->findChild<QLineEdit *>(QStringLiteral("addressEdit"));
    edit->setFocus();
    QString opened;
    QTimer::singleShot(0, this, [&opened] {
        auto *const dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        opened = QLatin1String(dialog->metaObject()->className());
        dialog->findChild<QLineEdit *>(QStringLiteral("RangeEditor"))->setText(QStringLiteral("7"));
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    QTest::keyClick(edit, Qt::Key_F4);
    QCOMPARE(opened, QStringLiteral("AddressPickerDialog"));
    QVERIFY2(edit->text().endsWith(QLatin1Char('7')), qPrintable(edit->text()));
}

QTEST_MAIN(TestEditorForms)

#include "tst_editorforms.moc"
