// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "examples/editorfixtures.h"

#include "linktree.h"
#include "tagmodel.h"
#include "tagtable.h"
#include "tagtypes.h"

#include "zelmar_label/tag_values/tagdatatype_p.h"

#include <zelmar_label/label_store/labelstore.h>
#include <zelmar_label/tag_store/tagsystem.h>

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QStackedWidget>
#include <QTableWidget>
#include <QTextCursor>
#include <QTextDocument>
#include <QTreeWidget>

/// The window and its models.
class TestTagEditor : public QObject, private EditorFixture
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup() { end(); }

    void typesAreTheLibrarys();
    void columns_data();
    void columns();
    void rowsAreReadOnDemand();
    void scopes_data();
    void scopes();
    void countsOfLinks();
    void search_data();
    void search();
    void searchAfterForeignWrite();
    void searchKeepsTheTag();
    void emptyStates();
    void wrongAddresses_data();
    void wrongAddresses();
    void rowsWithNumbersOfSystemTags();
    void nextWrongAddress();
    void lookingForAWrongAddressCanBeCancelled();
    void suggestionIsTaken();
    void refusedNames_data();
    void refusedNames();
    void rename();
    void cellEditors();
    void doubledNamesCannotBeChanged();
    void escapeLeavesTheNearestThing();
    void shortcutsAreListed();
    void paletteChange();

private:
    int idOf(const char *name) const { return m_window->session().tags().getIdByTagName(QLatin1String(name)); }
    QString text(int row, int column) const { return m_model->index(row, column).data().toString(); }
    QStringList names() const;

    TagModel *m_model = nullptr;
    TagTable *m_table = nullptr;
    QLineEdit *m_search = nullptr;
};

namespace {

QList<TagRow> fewTags()
{
    return {tagRow("Muted", 0, tagtype::Bit, ""),          tagRow("Valve", 1, tagtype::Bit, "X7"),
            tagRow("Speed", 1, tagtype::Int16, "D100"),    tagRow("Speed_2", 1, tagtype::Int16, "2-D100"),
            tagRow("Title", 1, tagtype::Ascii, "R0", 8),   tagRow("Block", 2, tagtype::Int16, "DB1.DBW4"),
            tagRow("Far", 1, tagtype::Int16, "D9999"),     tagRow("Lost", 9, tagtype::Int16, "D1"),
            tagRow("Old_speed", 3, tagtype::Int16, "D55"), tagRow("Twice", 0, tagtype::Int8, ""),
            tagRow("Twice", 0, tagtype::Int8, "")};
}

bool hasLettersInOrder(const QString &name, const QString &letters)
{
    int at = 0;
    for (const QChar letter : letters) {
        at = name.indexOf(letter, at, Qt::CaseInsensitive);
        if (at < 0)
            return false;
        ++at;
    }
    return true;
}

} // namespace

void TestTagEditor::initTestCase()
{
    copyDrivers();
}

void TestTagEditor::init()
{
    begin();
    m_model = m_window->findChild<TagModel *>();
    m_table = m_window->findChild<TagTable *>();
    m_search = child<QLineEdit>("search");
}

void TestTagEditor::cleanupTestCase()
{
    TagSystem::drop();
    label::freeLabels();
}

QStringList TestTagEditor::names() const
{
    QStringList found;
    for (int row = 0; row < m_model->rowCount(); ++row)
        found.append(text(row, TagModel::Name));
    return found;
}

void TestTagEditor::typesAreTheLibrarys()
{
    QCOMPARE(int(tagtype::Bit), int(label::TagBit));
    QCOMPARE(int(tagtype::UInt16), int(label::TagUInt16));
    QCOMPARE(int(tagtype::Float), int(label::TagFloat));
    QCOMPARE(int(tagtype::Ascii), int(label::TagAscii));
    QCOMPARE(int(tagtype::Double), int(label::TagDouble));
    QCOMPARE(int(tagtype::Int64), int(label::TagInt64));
    QCOMPARE(int(tagtype::UInt64), int(label::TagUInt64));
    QCOMPARE(TagSystem(nullptr).dataTypeList().size(), int(tagtype::UInt64) + 1);
}

void TestTagEditor::columns_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("texts");
    QTest::newRow("internal tag") << 0 << "Muted|Bit||Write Only|1";
    QTest::newRow("bit") << 1 << "Valve|Bit|X7|Write Only|1";
    QTest::newRow("address with a station") << 3 << "Speed_2|INT(16)|2-D100|Write Only|1";
    QTest::newRow("text with its length") << 4 << "Title|Ascii|R0|Write Only|8";
    QTest::newRow("tag of a missing link") << 7 << "Lost|INT(16)|D1|Write Only|1";
}

void TestTagEditor::columns()
{
    QFETCH(int, row);
    QFETCH(QString, texts);
    open(fewTags());
    QStringList shown;
    for (int column = 0; column < TagModel::ColumnCount; ++column)
        shown.append(text(row, column));
    QCOMPARE(shown.join(QLatin1Char('|')), texts);
}

void TestTagEditor::rowsAreReadOnDemand()
{
    QList<TagRow> rows;
    for (int number = 0; number < 20000; ++number) {
        TagRow row = tagRow("", 1, tagtype::Int16, "");
        row.name = QStringLiteral("Motor_%1").arg(number);
        row.address = QStringLiteral("D%1").arg(number % 8000);
        rows.append(row);
    }
    open(rows);
    QCOMPARE(m_model->rowCount(), 20000);
    m_table->grab();
    const int atTop = m_model->fetchCount();
    QVERIFY(atTop > 0);
    QVERIFY2(atTop < 200, qPrintable(QString::number(atTop)));
    m_table->scrollToBottom();
    m_table->grab();
    QVERIFY(m_model->fetchCount() > atTop);
    QVERIFY(m_model->fetchCount() < 400);
    QCOMPARE(text(19999, TagModel::Name), QStringLiteral("Motor_19999"));
}

void TestTagEditor::scopes_data()
{
    QTest::addColumn<int>("link");
    QTest::addColumn<int>("station");
    QTest::addColumn<QString>("expected");
    QTest::newRow("internal") << 0 << -1 << "Muted,Twice,Twice";
    QTest::newRow("link") << 1 << -1 << "Valve,Speed,Speed_2,Title,Far";
    QTest::newRow("station of a link") << 1 << 2 << "Speed_2";
    QTest::newRow("station without tags") << 1 << 1 << "";
    QTest::newRow("link whose driver is missing") << 3 << -1 << "Old_speed";
}

void TestTagEditor::scopes()
{
    QFETCH(int, link);
    QFETCH(int, station);
    QFETCH(QString, expected);
    open(fewTags());
    auto *const tree = m_window->findChild<LinkTree *>();
    QCOMPARE(names().size(), fewTags().size());
    for (QTreeWidgetItemIterator item(tree); *item; ++item) {
        tree->setCurrentItem(*item);
        if (tree->scope().link == link && tree->scope().station == station)
            break;
    }
    QCOMPARE(tree->scope().station, station);
    QCOMPARE(names().join(QLatin1Char(',')), expected);
}

void TestTagEditor::countsOfLinks()
{
    open(fewTags());
    const auto *const tree = m_window->findChild<LinkTree *>();
    QStringList lines;
    for (int row = 0; row < tree->topLevelItemCount(); ++row)
        lines.append(tree->topLevelItem(row)->text(0) + QLatin1Char(' ') + tree->topLevelItem(row)->text(1));
    QCOMPARE(lines.join(QLatin1Char('|')),
             QStringLiteral("All tags 11|Internal tags 3|Link 1 5|Link 2 1|Link 3 (disabled) 1"));
    QCOMPARE(tree->topLevelItem(2)->childCount(), 2);
    QVERIFY(m_window->session().add(QStringLiteral("New"), 1, tagtype::Int16, QStringLiteral("D1"), 1).isEmpty());
    QCOMPARE(tree->topLevelItem(2)->text(1), QStringLiteral("6"));
}

void TestTagEditor::search_data()
{
    QTest::addColumn<QString>("letters");
    QTest::newRow("one letter") << "s";
    QTest::newRow("letters in any case") << "SPD";
    QTest::newRow("letters out of order") << "dps";
    QTest::newRow("underscore and digit") << "_2";
    QTest::newRow("doubled names") << "twce";
    QTest::newRow("nothing has them") << "zq";
    QTest::newRow("as in an expression") << "S.*";
}

void TestTagEditor::search()
{
    QFETCH(QString, letters);
    open(fewTags());
    QStringList expected;
    for (const TagRow &row : fewTags()) {
        if (hasLettersInOrder(row.name, letters))
            expected.append(row.name);
    }
    QTest::keyClick(m_window.data(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(m_search, letters);
    QCOMPARE(names(), expected);
    QTest::keyClick(m_search, Qt::Key_Escape);
    QCOMPARE(names().size(), fewTags().size());
}

void TestTagEditor::searchAfterForeignWrite()
{
    open(fewTags());
    openProject(path("plant.db"), QStringLiteral("foreign"));
    executeOn(QStringLiteral("foreign"), QStringLiteral("DELETE FROM custom_tag_table WHERE name = 'Speed'"));
    executeOn(QStringLiteral("foreign"), QStringLiteral("UPDATE custom_tag_table SET name = 'Spade' WHERE id = 1"));
    closeProject(QStringLiteral("foreign"));
    m_window->session().tags().refreshTagNames();
    m_search->setText(QStringLiteral("spd"));
    // The window's own list is older; its items are among the present ones.
    QCOMPARE(names(), (QStringList{QStringLiteral("Speed_2"), QStringLiteral("Old_speed")}));
}

void TestTagEditor::searchKeepsTheTag()
{
    open(fewTags());
    m_table->selectTag(idOf("Speed_2"));
    m_search->setText(QStringLiteral("spd"));
    QCOMPARE(m_table->currentTag(), idOf("Speed_2"));
    m_search->setText(QStringLiteral("blk"));
    QCOMPARE(m_table->currentTag(), idOf("Block"));
}

void TestTagEditor::emptyStates()
{
    QVERIFY(m_table->hint().startsWith(QStringLiteral("No project is open.")));
    open({});
    QVERIFY(m_table->hint().startsWith(QStringLiteral("There are no tags here yet.")));
    m_search->setText(QStringLiteral("x"));
    QVERIFY(m_table->hint().startsWith(QStringLiteral("No tags match.")));
    m_search->clear();
    QVERIFY(m_window->session().add(QStringLiteral("New"), 0, tagtype::Bit, QString(), 1).isEmpty());
    QCOMPARE(m_table->hint(), QString());
    QCOMPARE(m_window->findChild<QLabel *>(QStringLiteral("detailsTitle"))->text(), QStringLiteral("New"));
}

void TestTagEditor::wrongAddresses_data()
{
    QTest::addColumn<int>("link");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("reason");
    const int word = tagtype::Int16;
    QTest::newRow("good one") << 1 << word << "D7999"
                              << "";
    QTest::newRow("good one with a station") << 1 << word << "1-D7999"
                                             << "";
    QTest::newRow("internal, whatever it is") << 0 << word << "?"
                                              << "";
    QTest::newRow("beyond the last") << 1 << word << "D8000"
                                     << "*";
    QTest::newRow("bit for a word") << 1 << word << "X7"
                                    << "*";
    QTest::newRow("octal 8") << 1 << int(tagtype::Bit) << "X8"
                             << "*";
    QTest::newRow("empty") << 1 << word << ""
                           << "*";
    QTest::newRow("station that the link lacks") << 1 << word << "7-D1"
                                                 << "link 1 has no station 7";
    QTest::newRow("station of another link") << 2 << word << "2-DB1.DBW4"
                                             << "link 2 has no station 2";
    QTest::newRow("station of letters") << 1 << word << "a-D1"
                                        << "the station \"a\" is not a decimal number";
    QTest::newRow("station missing") << 1 << word << "-D1"
                                     << "the station number before \"-\" is missing";
    QTest::newRow("text behind the address") << 1 << word << "1-D1-2"
                                             << "there is a second \"-\"; it may only separate the station";
    QTest::newRow("missing link") << 9 << word << "D1"
                                  << "the project has no link 9";
    QTest::newRow("missing driver") << 3 << word << "D1"
                                    << "link 3: there is no driver \"No such PLC\"";
    QTest::newRow("unknown type") << 1 << 12 << "D1"
                                  << "there is no data type 12";
    QTest::newRow("new family member beyond its limits") << 2 << word << "DB7.DBW99999"
                                                         << "*";
}

/// A "*" means any reason.
void TestTagEditor::wrongAddresses()
{
    QFETCH(int, link);
    QFETCH(int, type);
    QFETCH(QString, address);
    QFETCH(QString, reason);
    open({tagRow("Tag", link, type, qPrintable(address))});
    const QModelIndex cell = m_model->index(0, TagModel::Address);
    const QString tip = cell.data(Qt::ToolTipRole).toString();
    auto *const problem = m_window->findChild<QLabel *>(QStringLiteral("detailsProblem"));
    QCOMPARE(cell.data(Qt::ForegroundRole).isValid(), !reason.isEmpty());
    QCOMPARE(cell.data(Qt::DecorationRole).isValid(), !reason.isEmpty());
    QCOMPARE(problem->isVisible(), !reason.isEmpty());
    if (reason == QLatin1String("*"))
        QVERIFY(!tip.isEmpty());
    else
        QCOMPARE(tip, reason);
    if (!reason.isEmpty())
        QVERIFY2(problem->text().contains(tip), qPrintable(problem->text()));
    // A second query for a family's member has the same answer.
    QCOMPARE(m_window->session().verdict(1, m_window->session().tag(1)).reason, tip);
}

/// A table with more than 20,000 rows has them; by id, the library returns the system tag.
void TestTagEditor::rowsWithNumbersOfSystemTags()
{
    QList<TagRow> rows = {tagRow("Speed", 1, tagtype::Int16, "D100"), tagRow("Late", 1, tagtype::Float, "D200")};
    rows[1].id = 20011;
    open(rows);
    QCOMPARE(text(1, TagModel::Name), QStringLiteral("Late"));
    QCOMPARE(text(1, TagModel::Address), QStringLiteral("D200"));
    QCOMPARE(m_model->index(1, TagModel::Address).data(Qt::ToolTipRole).toString(),
             QStringLiteral("the tag's number, 20011, belongs to system or recipe tags"));
    m_table->selectTag(20011);
    QCOMPARE(m_window->findChild<QLabel *>(QStringLiteral("detailsTitle"))->text(), QStringLiteral("Late"));
    QVERIFY(!m_window->findChild<QLabel *>(QStringLiteral("commandAddress"))->isVisible());
    QVERIFY(m_model->setData(m_model->index(1, TagModel::Name), QStringLiteral("Later")));
    QVERIFY(m_model->setData(m_model->index(1, TagModel::Address), QStringLiteral("D300")));
    m_window->exportTo(path("out.csv"));
    waitForJob();
    QVERIFY(contentOf(path("out.csv")).endsWith("\"Later\",\"1\",\"FLOAT\",\"D300\",\"1\"\n"));
}

void TestTagEditor::nextWrongAddress()
{
    open(fewTags());
    QStringList visited;
    for (int press = 0; press < 4; ++press) {
        QTest::keyClick(m_window.data(), Qt::Key_F8);
        waitForJob();
        visited.append(text(m_table->currentIndex().row(), TagModel::Name));
    }
    QCOMPARE(visited.join(QLatin1Char(',')), QStringLiteral("Far,Lost,Old_speed,Far"));
    m_search->setText(QStringLiteral("valve"));
    QTest::keyClick(m_window.data(), Qt::Key_F8);
    waitForJob();
    QCOMPARE(messageOf(*m_window), QStringLiteral("All addresses shown are valid."));
}

void TestTagEditor::lookingForAWrongAddressCanBeCancelled()
{
    QList<TagRow> rows;
    for (int number = 0; number < 4000; ++number)
        rows.append(tagRow(qPrintable(QStringLiteral("Speed_%1").arg(number)), 1, tagtype::Int16, "D1"));
    open(rows);
    QTest::keyClick(m_window.data(), Qt::Key_F8);
    waitForProgress();
    QVERIFY(m_window->isBusy());
    QTest::keyClick(m_table, Qt::Key_Escape);
    waitForJob();
    QCOMPARE(messageOf(*m_window),
             QStringLiteral("Looking for the next invalid address: cancelled, nothing is changed."));
    QCOMPARE(m_table->currentIndex().row(), 0);
}

void TestTagEditor::suggestionIsTaken()
{
    open(fewTags());
    m_table->selectTag(idOf("Far"));
    auto *const links = m_window->findChild<QLabel *>(QStringLiteral("detailsSuggestions"));
    QVERIFY(links->isVisible());
    QVERIFY2(links->text().contains(QStringLiteral("href=\"D7999\"")), qPrintable(links->text()));
    Q_EMIT links->linkActivated(QStringLiteral("D7999"));
    QCOMPARE(m_window->session().tags().getAddressByID(idOf("Far")), QStringLiteral("D7999"));
    QVERIFY(!links->isVisible());
    QVERIFY(!m_model->index(m_model->rowOf(idOf("Far")), TagModel::Address).data(Qt::ToolTipRole).isValid());
}

void TestTagEditor::refusedNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");
    QTest::newRow("empty") << ""
                           << "The name is empty.";
    QTest::newRow("there already") << "Valve"
                                   << "There is already a tag \"Valve\".";
    QTest::newRow("of a system tag") << "S>Own"
                                     << "Names that begin with \"S>\" are reserved for system tags.";
    QTest::newRow("of a recipe tag") << "r>Own"
                                     << "Names that begin with \"r>\" are reserved for recipe tags.";
    QTest::newRow("kept as a number") << "007"
                                      << "The project would store the name as \"7\".";
    QTest::newRow("numbered form exists")
        << "Pump"
        << "The name \"Pump\" was refused: it contains a quote, or a tag of this name "
           "with a number exists.";
    QTest::newRow("holds a quote")
        << "A\"b"
        << "The name \"A\"b\" was refused: it contains a quote, or a tag of this name with a "
           "number exists.";
}

void TestTagEditor::refusedNames()
{
    QFETCH(QString, name);
    QFETCH(QString, reason);
    QList<TagRow> rows = fewTags();
    rows.append(tagRow("Pump-3", 0, tagtype::Bit, ""));
    open(rows);
    QVERIFY(!m_model->setData(m_model->index(2, TagModel::Name), name));
    QCOMPARE(messageOf(*m_window), reason);
    QCOMPARE(text(2, TagModel::Name), QStringLiteral("Speed"));
    QCOMPARE(m_model->rowCount(), rows.size());
}

void TestTagEditor::rename()
{
    open(fewTags());
    m_table->selectTag(idOf("Speed"));
    QTest::keyClick(m_table, Qt::Key_F2);
    auto *const editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    QVERIFY(editor);
    editor->selectAll();
    QTest::keyClicks(editor, QStringLiteral("Velocity"));
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(text(2, TagModel::Name), QStringLiteral("Velocity"));
    m_search->setText(QStringLiteral("vlcty"));
    QCOMPARE(names(), QStringList{QStringLiteral("Velocity")});
    QCOMPARE(m_window->findChild<QLabel *>(QStringLiteral("detailsTitle"))->text(), QStringLiteral("Velocity"));
}

void TestTagEditor::cellEditors()
{
    open(fewTags());
    m_table->selectTag(idOf("Speed"));
    const int row = m_table->currentIndex().row();
    // The picker's line, by keys.
    QTest::keyClick(m_table, Qt::Key_F4);
    QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("addressEdit"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("D77"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(text(row, TagModel::Address), QStringLiteral("D77"));
    // Escape restores the text.
    QTest::keyClick(m_table, Qt::Key_F4);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("D1"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QCOMPARE(text(row, TagModel::Address), QStringLiteral("D77"));
    // Another widget's focus ends the editing and keeps the text.
    QTest::keyClick(m_table, Qt::Key_F4);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("D78"));
    m_search->setFocus();
    QCOMPARE(text(row, TagModel::Address), QStringLiteral("D78"));
    // Types are chosen, scales typed.
    m_table->editCell(TagModel::Type);
    auto *const types = qobject_cast<QComboBox *>(QApplication::focusWidget());
    QVERIFY(types);
    types->setCurrentIndex(tagtype::Float);
    QTest::keyClick(types, Qt::Key_Return);
    QTRY_COMPARE(text(row, TagModel::Type), QStringLiteral("FLOAT"));
    QVERIFY(m_model->setData(m_model->index(row, TagModel::Scale), 4));
    QCOMPARE(text(row, TagModel::Scale), QStringLiteral("4"));
    QVERIFY(!(m_model->flags(m_model->index(row, TagModel::Access)) & Qt::ItemIsEditable));
    // Internal tags have no device to pick from.
    m_table->selectTag(idOf("Muted"));
    m_table->editCell(TagModel::Address);
    QVERIFY(qobject_cast<QLineEdit *>(QApplication::focusWidget()));
    QVERIFY(QApplication::focusWidget()->objectName() != QLatin1String("addressEdit"));
}

void TestTagEditor::doubledNamesCannotBeChanged()
{
    open(fewTags());
    const int row = names().indexOf(QStringLiteral("Twice"));
    QVERIFY(!m_model->setData(m_model->index(row, TagModel::Scale), 4));
    QCOMPARE(messageOf(*m_window), QStringLiteral("More than one tag has the name \"Twice\"; rename one."));
    QVERIFY(m_model->setData(m_model->index(row, TagModel::Name), QStringLiteral("Once")));
    QVERIFY(m_model->setData(m_model->index(row, TagModel::Scale), 4));
}

void TestTagEditor::escapeLeavesTheNearestThing()
{
    open(fewTags());
    auto *const side = m_window->findChild<QStackedWidget *>(QStringLiteral("side"));
    m_search->setText(QStringLiteral("speed"));
    QTest::keyClick(m_window.data(), Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(side->currentIndex(), 1);
    QVERIFY(!m_window->openProject(path("missing.db")));
    const QString message = messageOf(*m_window);
    QVERIFY(!message.isEmpty());
    // Out of the panel first, where the focus is.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QCOMPARE(side->currentIndex(), 0);
    QCOMPARE(messageOf(*m_window), message);
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(m_table));
    QTest::keyClick(m_window.data(), Qt::Key_N, Qt::ControlModifier);
    m_search->setFocus();
    QTest::keyClick(m_search, Qt::Key_Escape);
    QCOMPARE(messageOf(*m_window), QString());
    QTest::keyClick(m_search, Qt::Key_Escape);
    QCOMPARE(side->currentIndex(), 0);
    QTest::keyClick(m_search, Qt::Key_Escape);
    QCOMPARE(m_search->text(), QString());
    QTest::keyClick(m_search, Qt::Key_Escape);
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(m_table));
}

void TestTagEditor::shortcutsAreListed()
{
    QTest::keyClick(m_window.data(), Qt::Key_F1);
    const auto *const table = m_window->findChild<QTableWidget *>(QStringLiteral("shortcutTable"));
    QVERIFY(table->isVisible());
    QStringList listed;
    for (int row = 0; row < table->rowCount(); ++row)
        listed.append(table->item(row, 0)->text());
    QStringList keys;
    for (const QAction *action : m_window->actions()) {
        const QString key = action->shortcut().toString(QKeySequence::NativeText);
        QVERIFY2(!key.isEmpty(), qPrintable(action->text()));
        QVERIFY2(!keys.contains(key), qPrintable(key));
        QVERIFY2(listed.contains(key), qPrintable(key));
        keys.append(key);
    }
    QVERIFY(keys.size() >= 15);
}

void TestTagEditor::paletteChange()
{
    open(fewTags());
    const QPalette before = QApplication::palette();
    const QModelIndex wrong = m_model->index(names().indexOf(QStringLiteral("Far")), TagModel::Address);
    const auto lightness = [&wrong] { return wrong.data(Qt::ForegroundRole).value<QColor>().lightness(); };
    QTest::keyClick(m_window.data(), Qt::Key_N, Qt::ControlModifier);
    QVERIFY(!m_window->openProject(path("missing.db")));
    const auto *const message = child<QLabel>("messageText");
    const auto *const bar = child<QFrame>("messageBar");
    m_table->selectTag(idOf("Far"));
    const auto linkLightness = [this] {
        QTextDocument suggestions;
        suggestions.setHtml(label("detailsSuggestions"));
        QTextCursor cursor(&suggestions);
        cursor.movePosition(QTextCursor::End);
        return cursor.charFormat().foreground().color().lightness();
    };
    const auto *const verdict = child<QLabel>("newTagVerdict");
    const auto *const links = child<QTreeWidget>("linkTree");
    const auto textLightness = [](const QWidget *widget) {
        return widget->palette().color(QPalette::WindowText).lightness();
    };
    const auto countLightness = [links] { return links->topLevelItem(0)->foreground(1).color().lightness(); };
    QPalette dark = before;
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Window, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::WindowText, Qt::white);
    QApplication::setPalette(dark);
    QVERIFY(lightness() > 150);
    QVERIFY(linkLightness() > 150);
    QVERIFY(textLightness(message) > 150);
    QVERIFY(bar->palette().color(QPalette::Window).lightness() < 100);
    QVERIFY(textLightness(verdict) > 130);
    QVERIFY(countLightness() > 130);
    QPalette light = before;
    light.setColor(QPalette::Base, Qt::white);
    light.setColor(QPalette::Window, Qt::white);
    light.setColor(QPalette::Text, Qt::black);
    light.setColor(QPalette::WindowText, Qt::black);
    QApplication::setPalette(light);
    QVERIFY(lightness() < 130);
    QVERIFY(linkLightness() < 150);
    QVERIFY(textLightness(message) < 100);
    QVERIFY(bar->palette().color(QPalette::Window).lightness() > 200);
    QVERIFY(textLightness(verdict) < 130);
    QVERIFY(countLightness() < 130);
    QApplication::setPalette(before);
}

QTEST_MAIN(TestTagEditor)

#include "tst_tageditor.moc"
