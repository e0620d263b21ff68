// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "examples/editorfixtures.h"

#include "tagmodel.h"
#include "tagtable.h"
#include "tagtypes.h"

#include <zelmar_label/label_store/labelstore.h>
#include <zelmar_label/tag_store/tagsystem.h>

#include <QAction>
#include <QLineEdit>
#include <QPointer>

/// Tests files that are no projects, and messages of the library.
class TestEditorProjects : public QObject, private EditorFixture
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init() { begin(); }
    void cleanup() { end(); }

    void idsOfOtherTagsAreReported();
    void badProjects_data();
    void badProjects();
    void badProjectKeepsTheOneBefore();
    void projectBeforeIsForgotten();
    void readOnlyProjects_data();
    void readOnlyProjects();
    void missingTagTableIsMade();
    void libraryMessagesStandInTheBar();
};

namespace {

QList<TagRow> fewTags()
{
    return {tagRow("Valve", 1, tagtype::Bit, "X7"), tagRow("Speed", 1, tagtype::Int16, "D100")};
}

} // namespace

void TestEditorProjects::initTestCase()
{
    copyDrivers();
}

void TestEditorProjects::cleanupTestCase()
{
    TagSystem::drop();
    label::freeLabels();
}

void TestEditorProjects::idsOfOtherTagsAreReported()
{
    makeProject(path("plant.db"), QStringLiteral("made"));
    writeTags(QStringLiteral("made"), {TagRow{20000, "At a system id"}, TagRow{1, "Good"}});
    closeProject(QStringLiteral("made"));
    QVERIFY(m_window->openProject(path("plant.db")));
    QCOMPARE(messageOf(*m_window),
             QStringLiteral("1 tag of %1 has the id of a system or recipe tag (20000): its address "
                            "is not used; give it another id.")
                 .arg(path("plant.db")));
    QVERIFY(m_window->session().isOpen());
}

void TestEditorProjects::badProjects_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("message");
    QTest::newRow("no file") << "missing"
                             << "There is no project at %1.";
    QTest::newRow("a folder") << "folder"
                              << "There is no project at %1.";
    QTest::newRow("no database") << "text"
                                 << "%1 is not a project (file is not a database).";
    QTest::newRow("an empty file")
        << "empty"
        << "%1 is not a project: it has no tables of links and stations (no such table: LINK).";
    QTest::newRow("a database of another kind")
        << "other"
        << "%1 is not a project: it has no tables of links and stations (no such table: LINK).";
    QTest::newRow("no stations")
        << "stations"
        << "%1 is not a project: it has no tables of links and stations (no such table: NODE).";
    QTest::newRow("another tag table") << "column"
                                       << "The tag table of %1 lacks the column connector_id.";
}

void TestEditorProjects::badProjects()
{
    QFETCH(QString, kind);
    QFETCH(QString, message);
    const QString file = path("bad.db");
    if (kind == QLatin1String("folder"))
        QVERIFY(QDir().mkpath(file));
    else if (kind == QLatin1String("text"))
        writeFile(file, QByteArray(4096, 'x'));
    else if (kind == QLatin1String("empty"))
        writeFile(file, QByteArray());
    else if (kind != QLatin1String("missing")) {
        openProject(file, QStringLiteral("bad"));
        executeOn(QStringLiteral("bad"), QStringLiteral("CREATE TABLE other (id INTEGER)"));
        if (kind != QLatin1String("other"))
            executeOn(QStringLiteral("bad"), QStringLiteral("CREATE TABLE LINK (LINKID, PLC_MODEL, ENABLED)"));
        if (kind == QLatin1String("column"))
            executeOn(QStringLiteral("bad"), QStringLiteral("CREATE TABLE custom_tag_table (id, name)"));
        closeProject(QStringLiteral("bad"));
    }
    const QByteArray before = contentOf(file);
    QVERIFY(!m_window->openProject(file));
    QCOMPARE(messageOf(*m_window), message.arg(file));
    QCOMPARE(contentOf(file), before);
    QVERIFY(!m_window->session().isOpen());
    // Actions that need a project do no harm.
    for (const QAction *action : m_window->actions()) {
        if (action->objectName() == QLatin1String("addTagAction") ||
            action->objectName() == QLatin1String("addRunAction") ||
            action->objectName() == QLatin1String("renameAction") ||
            action->objectName() == QLatin1String("addressAction") ||
            action->objectName() == QLatin1String("nextWrongAction"))
            const_cast<QAction *>(action)->trigger();
    }
    child<QLineEdit>("search")->setText(QStringLiteral("abc"));
    m_window->exportTo(path("none.csv"));
    QVERIFY(!m_window->isBusy());
}

void TestEditorProjects::badProjectKeepsTheOneBefore()
{
    open(fewTags());
    QVERIFY(!m_window->openProject(path("missing.db")));
    QVERIFY(!messageOf(*m_window).isEmpty());
    QCOMPARE(m_window->findChild<TagModel *>()->rowCount(), fewTags().size());
    QVERIFY(m_window->session().add(QStringLiteral("New"), 1, tagtype::Int16, QStringLiteral("D1"), 1).isEmpty());
    QCOMPARE(m_window->findChild<TagModel *>()->rowCount(), fewTags().size() + 1);
}

/// With very many tags, the library's data of each project would fill the memory.
void TestEditorProjects::projectBeforeIsForgotten()
{
    open(fewTags());
    const QPointer<TagSystem> before = &m_window->session().tags();
    QVERIFY(m_window->openProject(path("plant.db")));
    QVERIFY(before.isNull());
    QCOMPARE(m_window->findChild<TagModel *>()->rowCount(), fewTags().size());
    QVERIFY(m_window->session().add(QStringLiteral("New"), 1, tagtype::Int16, QStringLiteral("D1"), 1).isEmpty());
    QCOMPARE(rows().size(), fewTags().size() + 1);
}

void TestEditorProjects::readOnlyProjects_data()
{
    QTest::addColumn<QString>("guarded");
    QTest::newRow("the file") << "plant/plant.db";
    QTest::newRow("the folder, where the journal would be") << "plant";
}

void TestEditorProjects::readOnlyProjects()
{
    QFETCH(QString, guarded);
    QVERIFY(QDir().mkpath(path("plant")));
    writeProject(path("plant/plant.db"), fewTags());
    const QString kept = path(qPrintable(guarded));
    const QFile::Permissions before = QFile::permissions(kept);
    QVERIFY(QFile::setPermissions(kept, QFile::ReadOwner | QFile::ExeOwner));
    if (QFileInfo(kept).isWritable())
        QSKIP("root may write everything");
    const bool isOpen = m_window->openProject(path("plant/plant.db"));
    const bool isReadOnly = label("statusText").endsWith(QStringLiteral("read only"));
    const auto *const table = m_window->findChild<TagTable *>();
    QTest::keyClick(m_window.data(), Qt::Key_F4);
    const QString edited = messageOf(*m_window);
    QTest::keyClick(m_window.data(), Qt::Key_N, Qt::ControlModifier);
    QTest::keyClicks(child<QLineEdit>("newTagName"), QStringLiteral("New"));
    QTest::keyClick(m_window.data(), Qt::Key_R, Qt::ControlModifier);
    m_window->exportTo(path("out.csv"));
    waitForJob();
    QVERIFY(QFile::setPermissions(kept, before));
    const QString refusal = QStringLiteral("The project is read-only.");
    QVERIFY(isOpen);
    QVERIFY(isReadOnly);
    QCOMPARE(edited, refusal);
    QVERIFY(!(table->model()->flags(table->model()->index(0, 0)) & Qt::ItemIsEditable));
    QCOMPARE(label("newTagVerdict"), refusal);
    QCOMPARE(label("runVerdict"), refusal);
    QVERIFY(QFileInfo::exists(path("out.csv")));
}

void TestEditorProjects::missingTagTableIsMade()
{
    open({});
    QCOMPARE(m_window->findChild<TagModel *>()->rowCount(), 0);
    QVERIFY(m_window->session().add(QStringLiteral("First"), 0, tagtype::Bit, QString(), 1).isEmpty());
    QVERIFY(m_window->openProject(path("plant.db")));
    QCOMPARE(rows(), QStringList{QStringLiteral("First|0|0||1")});
}

void TestEditorProjects::libraryMessagesStandInTheBar()
{
    open(fewTags());
    openProject(path("plant.db"), QStringLiteral("foreign"));
    executeOn(QStringLiteral("foreign"), QStringLiteral("DROP TABLE custom_tag_table"));
    closeProject(QStringLiteral("foreign"));
    QCOMPARE(m_window->session().add(QStringLiteral("New"), 0, tagtype::Bit, QString(), 1),
             QStringLiteral("The tag could not be added."));
    QCOMPARE(messageOf(*m_window), QStringLiteral("Insert tag error."));
    QVERIFY(!QApplication::activeModalWidget());
}

QTEST_MAIN(TestEditorProjects)

#include "tst_editorprojects.moc"
