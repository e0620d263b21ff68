// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "examples/editorfixtures.h"

#include "csvfile.h"
#include "tagmodel.h"
#include "tagtable.h"

#include <zelmar_label/label_store/labelstore.h>
#include <zelmar_label/tag_store/tagsystem.h>

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

/// Tests one working day with the editor, with keys and clicks only.
class TestEditorStory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void wholeStory();

private:
    void search(MainWindow &window, const char *letters);
    void changeAddress(MainWindow &window);
    void addRun(MainWindow &window);
    void exportTags(MainWindow &window, const QString &path);
    void findEverything(const QString &project, const QString &csv);
};

namespace {

void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QWidget *const target = QApplication::focusWidget();
    QVERIFY(target);
    QTest::keyClick(target, key, modifiers);
}

void type(const char *text)
{
    QWidget *const target = QApplication::focusWidget();
    QVERIFY(target);
    QTest::keyClicks(target, QLatin1String(text));
}

void begin(MainWindow &window)
{
    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
}

QString addressOf(MainWindow &window, const char *name)
{
    TagSystem &tags = window.session().tags();
    return tags.getAddressByID(tags.getIdByTagName(QLatin1String(name)));
}

} // namespace

void TestEditorStory::initTestCase()
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    copyDrivers();
}

void TestEditorStory::cleanupTestCase()
{
    TagSystem::drop();
    label::freeLabels();
}

void TestEditorStory::search(MainWindow &window, const char *letters)
{
    press(Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("search"));
    type(letters);
    press(Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(window.findChild<TagTable *>()));
}

void TestEditorStory::changeAddress(MainWindow &window)
{
    press(Qt::Key_F4);
    QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("addressEdit"));
    auto *const button = QApplication::focusWidget()->parent()->findChild<QPushButton *>();
    bool isAnswered = false;
    QTimer::singleShot(0, this, [&isAnswered] {
        QWidget *const dialog = QApplication::activeModalWidget();
        QVERIFY(dialog);
        auto *const symbols = dialog->findChild<QComboBox *>(QStringLiteral("TypesComboBox"));
        // It opens with the tag's address.
        QCOMPARE(symbols->currentText(), QStringLiteral("D"));
        QCOMPARE(dialog->findChild<QLineEdit *>(QStringLiteral("RangeEditor"))->text(), QStringLiteral("102"));
        auto *const stations = dialog->findChild<QComboBox *>(QStringLiteral("stationNumbersCombo"));
        QCOMPARE(stations->count(), 3);
        stations->setCurrentIndex(2);
        auto *const range = dialog->findChild<QLineEdit *>(QStringLiteral("RangeEditor"));
        range->selectAll();
        QTest::keyClicks(range, QStringLiteral("4321"));
        auto *const buttons = dialog->findChild<QDialogButtonBox *>();
        isAnswered = true;
        QTest::mouseClick(buttons->button(QDialogButtonBox::Ok), Qt::LeftButton);
    });
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(isAnswered);
    QCOMPARE(addressOf(window, "Mixer_temperature_3"), QStringLiteral("2-D4321"));
    QApplication::setActiveWindow(&window);
    QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget *>(window.findChild<TagTable *>()));
}

void TestEditorStory::addRun(MainWindow &window)
{
    press(Qt::Key_R, Qt::ControlModifier);
    QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("runPrefix"));
    type("Story_");
    // Suffix, digits, start, link, type.
    for (int tab = 0; tab < 6; ++tab)
        press(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("addressEdit"));
    type("D600");
    press(Qt::Key_Return);
    QTRY_VERIFY_WITH_TIMEOUT(!window.isBusy(), longestWait);
    QCOMPARE(messageOf(window), QStringLiteral("16 tags are added, from Story_01 to Story_16."));
    // The message, the panel, the search.
    for (int escape = 0; escape < 3; ++escape)
        press(Qt::Key_Escape);
    QCOMPARE(window.findChild<TagModel *>()->rowCount(), 216);
}

void TestEditorStory::exportTags(MainWindow &window, const QString &path)
{
    press(Qt::Key_E, Qt::ControlModifier);
    auto *const dialog = window.findChild<QFileDialog *>(QStringLiteral("fileDialog"));
    QVERIFY(dialog);
    QVERIFY(QTest::qWaitForWindowActive(dialog));
    auto *const name = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    name->setText(path);
    QTest::keyClick(name, Qt::Key_Return);
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path) && !window.isBusy(), longestWait);
    QCOMPARE(messageOf(window), QStringLiteral("Export to tags.csv: 216 tags."));
}

void TestEditorStory::findEverything(const QString &project, const QString &csv)
{
    MainWindow window;
    begin(window);
    QVERIFY2(window.openProject(project), qPrintable(messageOf(window)));
    const auto *const model = window.findChild<TagModel *>();
    QCOMPARE(model->rowCount(), 216);
    QCOMPARE(addressOf(window, "Mixer_temperature_3"), QStringLiteral("2-D4321"));
    search(window, "story");
    QCOMPARE(model->rowCount(), 16);
    for (int row = 0; row < 16; ++row) {
        const QString number = QString::number(row + 1).rightJustified(2, QLatin1Char('0'));
        QCOMPARE(model->index(row, TagModel::Name).data().toString(), QStringLiteral("Story_") + number);
        QCOMPARE(model->index(row, TagModel::Address).data().toString(), QStringLiteral("D%1").arg(600 + row));
        QVERIFY(!model->index(row, TagModel::Address).data(Qt::ToolTipRole).isValid());
    }

    QFile file(csv);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const CsvContent content = readCsv(file);
    QCOMPARE(content.rows.size(), 217);
    QCOMPARE(content.rows.constLast().fields.join(QLatin1Char('|')), QStringLiteral("Story_16|1|INT(16)|D615|1"));
    QStringList lines;
    for (const CsvRow &row : content.rows)
        lines.append(row.fields.join(QLatin1Char('|')));
    QVERIFY(lines.contains(QStringLiteral("Mixer_temperature_3|1|INT(16)|2-D4321|1")));
}

void TestEditorStory::wholeStory()
{
    const QTemporaryDir folder;
    const QString project = folder.filePath(QStringLiteral("sample-project.db"));
    const QString csv = folder.filePath(QStringLiteral("tags.csv"));
    {
        MainWindow window;
        begin(window);
        QVERIFY2(window.openSample(project), qPrintable(messageOf(window)));
        QCOMPARE(window.findChild<TagModel *>()->rowCount(), 200);
        search(window, "mxtmp3");
        changeAddress(window);
        addRun(window);
        exportTags(window, csv);
        QApplication::setActiveWindow(&window);
        press(Qt::Key_Q, Qt::ControlModifier);
        QVERIFY(!window.isVisible());
    }
    findEverything(project, csv);
}

QTEST_MAIN(TestEditorStory)

#include "tst_editorstory.moc"
