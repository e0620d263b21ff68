// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "support/projectfixtures.h"

#include "zelmar_label/tag_store/tagmessages_p.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QPoint>
#include <QPointer>
#include <QPushButton>
#include <QSqlDatabase>
#include <QTemporaryDir>
#include <QTimer>
#include <QTranslator>
#include <QtTest>

#include <functional>
#include <limits>
#include <memory>
#include <thread>

namespace {

const QString key = QStringLiteral("4711");
const QString otherKey = QStringLiteral("4712");
const QString compiling = QStringLiteral("TOLV_compileing");
const QString allTables = QStringLiteral("SELECT name FROM sqlite_master ORDER BY name");

const QString noProject = QStringLiteral("critical|Tag Error|Current project point is null!");
const QString noConnection = QStringLiteral("critical|Database Error|TagSystem::init() tag database not exist ");
const QString notOpened = QStringLiteral("critical|Database Error|Unable to open default Tag database.");
const QString fileNotMade =
    QStringLiteral("warning|Error|Unable to create Tag database file. Please check for free space in the disk.");
const QString noOpenDatabase = QStringLiteral("warning|Error|Unable to open database.");
const QString standAloneNotOpened = QStringLiteral("warning|Error|Unable to open Tag database.");

void inAnotherThread(const std::function<void()> &work)
{
    std::thread(work).join();
}

void setCurrentProject(const QVariant &project)
{
    qApp->setProperty("currentProject", project);
}

/// Looks at the message box that the next operation shows, and presses its button.
class BoxReader : public QObject
{
public:
    BoxReader()
    {
        m_timer.setInterval(5);
        connect(&m_timer, &QTimer::timeout, this, &BoxReader::read);
        m_timer.start();
    }

    /// What has been shown: icon, title, text, number of buttons.
    QStringList boxes;
    bool hadParent = false;
    bool isModal = true;
    bool hasOnlyOk = true;

private:
    void read()
    {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        const QString icon = box->icon() == QMessageBox::Critical  ? QStringLiteral("critical")
                             : box->icon() == QMessageBox::Warning ? QStringLiteral("warning")
                                                                   : QStringLiteral("other");
        boxes.append(icon + QLatin1Char('|') + box->windowTitle() + QLatin1Char('|') + box->text());
        hadParent = hadParent || box->parentWidget();
        isModal = isModal && box->isModal();
        hasOnlyOk = hasOnlyOk && box->standardButtons() == QMessageBox::Ok && box->buttons().size() == 1;
        box->button(QMessageBox::Ok)->click();
    }

    QTimer m_timer;
};

/// Puts the context in front of every text that is translated.
class ContextTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        if (qstrcmp(context, "TagSystem") != 0)
            return QString();
        return QStringLiteral("TagSystem: ") + QString::fromUtf8(text);
    }
};

} // namespace

class TagLifecycleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void theClassHasNoExtras();
    void anObjectWithoutADatabase();

    void anEmptyKeyGivesOneObjectWithoutADatabase();
    void aKeyGivesTheObjectOfItsConnection();
    void anUnknownKeyGivesADeadObject();
    void aKeyWhoseFileCannotBeOpened();
    void aClosedConnectionIsOpened();
    void objectsOfTwoProjects();
    void theMapHandsOutWhatItHolds();

    void withoutAProjectThereIsNoObject();
    void theObjectOfTheCurrentProject();
    void theKeyOfTheCurrentProject_data();
    void theKeyOfTheCurrentProject();

    void initTellsWhetherThereIsAConnection();
    void initReadsTheNames();
    void initAgainBindsToAnotherProject();

    void dropEndsAllObjects();
    void dropWithoutObjects();
    void dropSkipsNullValues();
    void anObjectStaysInTheMapWhenItEnds();
    void theDestructorClosesTheConnection();

    void closingTheDatabase();
    void closingWhatWasNeverOpened();
    void closingLeavesAConnectionThatIsNotOpen();
    void aClosedObjectFailsQuietly();

    void theDatabaseOfTheMainThread();
    void theDatabaseOfAnotherThread();
    void theCompileConnectionServesEveryObject();
    void theCompileConnectionIsOpened();
    void theCompileConnectionComesAndGoes();
    void aConnectionThatIsClosedAndOpenedAgain();
    void aConnectionThatMovesToAnotherFile();

    void aStandAloneDatabaseIsMade();
    void aStandAloneDatabaseIsOpened();
    void aStandAloneDatabaseWithoutTheFolder();
    void aStandAloneDatabaseElsewhere();
    void aStandAloneDatabaseThatCannotBeOpened_data();
    void aStandAloneDatabaseThatCannotBeOpened();
    void aSecondStandAloneDatabase();
    void theFileOfAStandAloneDatabase();
    void theFileOfAStandAloneDatabaseCannotBeMade();
    void aFileThatIsThereIsKept();

    void messagesAreBoxes_data();
    void messagesAreBoxes();
    void messagesAreTranslated();

private:
    QString path(const char *fileName) const { return m_folder->filePath(QLatin1String(fileName)); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
};

void TagLifecycleTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_messages = std::make_unique<MessageRecorder>();
    QDir(databaseFolder()).removeRecursively();
}

void TagLifecycleTest::cleanup()
{
    dropProjects();
    setCurrentProject(QVariant());
    m_messages.reset();
    m_folder.reset();
    QDir(databaseFolder()).removeRecursively();
}

void TagLifecycleTest::theClassHasNoExtras()
{
    const QMetaObject &meta = TagSystem::staticMetaObject;
    QCOMPARE(meta.className(), "TagSystem");
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
    QCOMPARE(meta.methodCount(), QObject::staticMetaObject.methodCount());
    QCOMPARE(meta.propertyCount(), QObject::staticMetaObject.propertyCount());
    QCOMPARE(meta.enumeratorCount(), 0);
}

void TagLifecycleTest::anObjectWithoutADatabase()
{
    QObject parent;
    auto *const tags = new TagSystem(&parent);
    QCOMPARE(tags->parent(), &parent);
    QVERIFY(!tags->database().isValid());
    QCOMPARE(tags->getTagNameById(20022), QStringLiteral("S>Year"));
    QCOMPARE(tags->getTagNames(), QStringList());
    QCOMPARE(tags->getTagNameById(1), QString());
    QVERIFY2(!TagSystem::s_instanceMap, "only instance() fills the map");
    QCOMPARE(m_messages->take(), QStringList());
}

void TagLifecycleTest::anEmptyKeyGivesOneObjectWithoutADatabase()
{
    const LogRecorder log;
    TagSystem *const tags = TagSystem::instance(QString());
    QVERIFY(tags);
    QCOMPARE(TagSystem::instance(QStringLiteral("")), tags);
    QCOMPARE(TagSystem::s_instanceMap->size(), 1);
    QCOMPARE(TagSystem::s_instanceMap->value(QString()), tags);
    QVERIFY(!tags->database().isValid());
    QVERIFY(!tags->parent());
    QCOMPARE(log.lines(), QStringList());
    QCOMPARE(tags->getTagNames(), QStringList());
    QCOMPARE(tags->getIdByTagName(QStringLiteral("S>NULL")), 20999);
    QCOMPARE(tags->dataTypeList().size(), 12);
    QCOMPARE(m_messages->take(), QStringList());
}

void TagLifecycleTest::aKeyGivesTheObjectOfItsConnection()
{
    makeProject(path("project.db"), key);
    const LogRecorder log;
    TagSystem *const tags = TagSystem::instance(key);
    QVERIFY(tags);
    QCOMPARE(log.lines(), QStringList{QStringLiteral("--------------------- (\"4711\")")});
    QCOMPARE(TagSystem::instance(key), tags);
    QCOMPARE(log.lines().size(), 1);
    QCOMPARE(TagSystem::s_instanceMap->keys(), QStringList{key});
    QCOMPARE(tags->database().connectionName(), key);
    QVERIFY(tags->database().isOpen());
    QVERIFY(!tags->parent());
    QCOMPARE(rowsOn(key, allTables), (QStringList{"LINK", "NODE", "custom_tag_table"}));
    QCOMPARE(tags->getCustomTagTableAddressColumn(), 5);
    QCOMPARE(tags->getTagNames(), QStringList());
    QCOMPARE(m_messages->take(), QStringList());
}

void TagLifecycleTest::anUnknownKeyGivesADeadObject()
{
    const LogRecorder log;
    TagSystem *const tags = TagSystem::instance(key);
    QVERIFY(tags);
    QCOMPARE(m_messages->take(), QStringList{noConnection});
    QCOMPARE(log.lines(), QStringList());
    makeProject(path("project.db"), key);
    QCOMPARE(TagSystem::instance(key), tags);
    QCOMPARE(m_messages->take(), QStringList());
    QVERIFY2(!tags->database().isValid(), "a second request does not try again");
    QCOMPARE(rowsOn(key, allTables), (QStringList{"LINK", "NODE"}));
    QCOMPARE(tags->getCustomTagTableAddressColumn(), 0);
    QCOMPARE(tags->getTagNames(), QStringList());
    QCOMPARE(tags->getTagNameById(20022), QStringLiteral("S>Year"));
}

void TagLifecycleTest::aKeyWhoseFileCannotBeOpened()
{
    QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), key).setDatabaseName(m_folder->path());
    const LogRecorder log;
    TagSystem *const tags = TagSystem::instance(key);
    QVERIFY(tags);
    QCOMPARE(m_messages->take(), QStringList{notOpened});
    QCOMPARE(log.ownLines(), QStringList());
    QVERIFY(tags->database().isValid());
    QVERIFY(!tags->database().isOpen());
    QCOMPARE(tags->getCustomTagTableAddressColumn(), 5);
    QCOMPARE(tags->getTagNames(), QStringList());
    QCOMPARE(TagSystem::instance(key), tags);
    QCOMPARE(m_messages->take(), QStringList());
}

void TagLifecycleTest::aClosedConnectionIsOpened()
{
    makeProject(path("project.db"), key);
    writeTags(key, {{1, QStringLiteral("Pump")}});
    QSqlDatabase::database(key, false).close();
    TagSystem *const tags = TagSystem::instance(key);
    QVERIFY(tags->database().isOpen());
    QCOMPARE(tags->getTagNames(), QStringList{QStringLiteral("Pump")});
    QCOMPARE(m_messages->take(), QStringList());
}

void TagLifecycleTest::objectsOfTwoProjects()
{
    makeProject(path("one.db"), key);
    makeProject(path("two.db"), otherKey);
    writeTags(key, {{1, QStringLiteral("one")}});
    writeTags(otherKey, {{1, QStringLiteral("two")}});
    TagSystem *const one = TagSystem::instance(key);
    TagSystem *const two = TagSystem::instance(otherKey);
    QVERIFY(one != two);
    QCOMPARE(one->getTagNames(), QStringList{QStringLiteral("one")});
    QCOMPARE(two->getTagNames(), QStringList{QStringLiteral("two")});
    QCOMPARE(one->getTagNameById(1), QStringLiteral("one"));
    QCOMPARE(two->getTagNameById(1), QStringLiteral("two"));
    QVERIFY(one->addTag(QStringLiteral("more"), QStringLiteral("D1"), 1, 3, 1));
    QCOMPARE(two->getTagNames(), QStringList{QStringLiteral("two")});
    QCOMPARE(TagSystem::s_instanceMap->keys(), (QStringList{key, otherKey}));
}

void TagLifecycleTest::theMapHandsOutWhatItHolds()
{
    TagSystem::instance(QString());
    TagSystem::s_instanceMap->insert(QStringLiteral("null"), nullptr);
    QCOMPARE(TagSystem::instance(QStringLiteral("null")), static_cast<TagSystem *>(nullptr));
    auto *const own = new TagSystem(nullptr);
    TagSystem::s_instanceMap->insert(QStringLiteral("own"), own);
    QCOMPARE(TagSystem::instance(QStringLiteral("own")), own);
    QCOMPARE(m_messages->take(), QStringList());
}

void TagLifecycleTest::withoutAProjectThereIsNoObject()
{
    const LogRecorder log;
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(TagSystem::instance(), static_cast<TagSystem *>(nullptr));
        QCOMPARE(m_messages->take(), QStringList{noProject});
    }
    QVERIFY2(!TagSystem::s_instanceMap, "no object is made");
    QCOMPARE(log.lines(), QStringList());
}

void TagLifecycleTest::theObjectOfTheCurrentProject()
{
    makeProject(path("one.db"), key);
    makeProject(path("two.db"), otherKey);
    setCurrentProject(quint64(4711));
    TagSystem *const one = TagSystem::instance();
    QVERIFY(one);
    QCOMPARE(one->database().connectionName(), key);
    QCOMPARE(TagSystem::instance(), one);
    QCOMPARE(TagSystem::instance(key), one);
    setCurrentProject(quint64(4712));
    TagSystem *const two = TagSystem::instance();
    QVERIFY(two && two != one);
    QCOMPARE(two->database().connectionName(), otherKey);
    setCurrentProject(quint64(4711));
    QCOMPARE(TagSystem::instance(), one);
    setCurrentProject(QVariant());
    QCOMPARE(TagSystem::instance(), static_cast<TagSystem *>(nullptr));
    QCOMPARE(m_messages->take(), QStringList{noProject});
}

void TagLifecycleTest::theKeyOfTheCurrentProject_data()
{
    QTest::addColumn<QVariant>("project");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a pointer as a number") << QVariant(Q_UINT64_C(140737488355328)) << "140737488355328";
    QTest::newRow("the highest number") << QVariant(std::numeric_limits<quint64>::max()) << "18446744073709551615";
    QTest::newRow("zero") << QVariant(quint64(0)) << "0";
    QTest::newRow("an int") << QVariant(17) << "17";
    QTest::newRow("a negative number wraps") << QVariant(-1) << "18446744073709551615";
    QTest::newRow("a text of digits") << QVariant(QStringLiteral("77")) << "77";
    QTest::newRow("a text that is no number") << QVariant(QStringLiteral("project")) << "0";
    QTest::newRow("a hexadecimal text") << QVariant(QStringLiteral("0x10")) << "0";
    QTest::newRow("a value that is no number at all") << QVariant(QPoint(1, 2)) << "0";
    QTest::newRow("an empty value of a type") << QVariant(QVariant::ULongLong) << "0";
}

void TagLifecycleTest::theKeyOfTheCurrentProject()
{
    QFETCH(QVariant, project);
    QFETCH(QString, expected);
    makeProject(path("project.db"), expected);
    setCurrentProject(project);
    TagSystem *const tags = TagSystem::instance();
    QVERIFY(tags);
    QCOMPARE(TagSystem::s_instanceMap->keys(), QStringList{expected});
    QCOMPARE(tags->database().connectionName(), expected);
    QCOMPARE(m_messages->take(), QStringList());
}

void TagLifecycleTest::initTellsWhetherThereIsAConnection()
{
    TagSystem tags(nullptr);
    LogRecorder log;
    QVERIFY(!tags.init(key));
    QCOMPARE(m_messages->take(), QStringList{noConnection});
    QCOMPARE(tags.getCustomTagTableAddressColumn(), 0);
    QCOMPARE(log.take(), QStringList());

    QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), otherKey).setDatabaseName(m_folder->path());
    QVERIFY2(tags.init(otherKey), "the connection is there, though it cannot be opened");
    QCOMPARE(m_messages->take(), QStringList{notOpened});
    QCOMPARE(tags.getCustomTagTableAddressColumn(), 5);
    QCOMPARE(log.ownLines(), QStringList());
    QSqlDatabase::removeDatabase(otherKey);

    makeProject(path("project.db"), key);
    log.take();
    QVERIFY(tags.init(key));
    QCOMPARE(m_messages->take(), QStringList());
    QCOMPARE(log.lines(), QStringList{QStringLiteral("--------------------- (\"4711\")")});
    QVERIFY2(!TagSystem::s_instanceMap, "only instance() fills the map");
}

void TagLifecycleTest::initReadsTheNames()
{
    makeProject(path("project.db"), key);
    writeTags(key, {{1, QStringLiteral("Pump")}, {2, QStringLiteral("Valve")}});
    TagSystem tags(nullptr);
    QVERIFY(tags.init(key));
    QCOMPARE(tags.getTagNames(), (QStringList{"Pump", "Valve"}));
    QVERIFY(!tags.isNewTag(QStringLiteral("Pump")));
}

void TagLifecycleTest::initAgainBindsToAnotherProject()
{
    makeProject(path("one.db"), key);
    makeProject(path("two.db"), otherKey);
    writeTags(key, {{1, QStringLiteral("one")}});
    writeTags(otherKey, {{1, QStringLiteral("two")}});
    TagSystem tags(nullptr);
    QVERIFY(tags.init(key));
    QCOMPARE(tags.getTagNameById(1), QStringLiteral("one"));
    QVERIFY(tags.init(otherKey));
    QCOMPARE(tags.getTagNames(), QStringList{QStringLiteral("two")});
    QCOMPARE(tags.getTagNameById(1), QStringLiteral("two"));
    QCOMPARE(tags.database().connectionName(), otherKey);
    QVERIFY2(QSqlDatabase::database(key, false).isOpen(), "the first connection is left as it is");
    QVERIFY(tags.init(key));
    QCOMPARE(tags.getTagNames(), QStringList{QStringLiteral("one")});
    QCOMPARE(tags.getTagNameById(1), QStringLiteral("one"));
}

void TagLifecycleTest::dropEndsAllObjects()
{
    makeProject(path("one.db"), key);
    makeProject(path("two.db"), otherKey);
    const QPointer<TagSystem> one = TagSystem::instance(key);
    const QPointer<TagSystem> two = TagSystem::instance(otherKey);
    const QPointer<TagSystem> none = TagSystem::instance(QString());
    const LogRecorder log;
    TagSystem::drop();
    QVERIFY(!one && !two && !none);
    QVERIFY(!TagSystem::s_instanceMap);
    QVERIFY(!QSqlDatabase::contains(key) && !QSqlDatabase::contains(otherKey));
    QCOMPARE(log.lines(), QStringList());

    openProject(path("one.db"), key);
    TagSystem *const again = TagSystem::instance(key);
    QVERIFY(again->addTag(QStringLiteral("Pump"), QStringLiteral("D1"), 1, 3, 1));
    QCOMPARE(again->getTagNames(), QStringList{QStringLiteral("Pump")});
    QCOMPARE(m_messages->take(), QStringList());
}

void TagLifecycleTest::dropWithoutObjects()
{
    TagSystem::drop();
    TagSystem::drop();
    QVERIFY(!TagSystem::s_instanceMap);
    QCOMPARE(m_messages->take(), QStringList());
}

void TagLifecycleTest::dropSkipsNullValues()
{
    const QPointer<TagSystem> none = TagSystem::instance(QString());
    TagSystem::s_instanceMap->insert(QStringLiteral("null"), nullptr);
    TagSystem::drop();
    QVERIFY(!none);
    QVERIFY(!TagSystem::s_instanceMap);
}

void TagLifecycleTest::anObjectStaysInTheMapWhenItEnds()
{
    TagSystem *const tags = TagSystem::instance(QString());
    delete tags;
    QCOMPARE(quintptr(TagSystem::s_instanceMap->value(QString())), quintptr(tags));
    TagSystem::s_instanceMap->clear();
}

void TagLifecycleTest::theDestructorClosesTheConnection()
{
    makeProject(path("project.db"), key);
    const LogRecorder log;
    {
        TagSystem tags(nullptr);
        QVERIFY(tags.init(key));
        QVERIFY(QSqlDatabase::contains(key));
        QCOMPARE(tags.getTagNameById(1), QString());
    }
    QVERIFY(!QSqlDatabase::contains(key));
    QCOMPARE(log.lines(), QStringList{QStringLiteral("--------------------- (\"4711\")")});
}

void TagLifecycleTest::closingTheDatabase()
{
    makeProject(path("project.db"), key);
    TagSystem *const tags = TagSystem::instance(key);
    QVERIFY(tags->addTag(QStringLiteral("Pump"), QStringLiteral("D1"), 1, 3, 1));
    QCOMPARE(tags->getTagNameById(1), QStringLiteral("Pump"));
    const LogRecorder log;
    tags->closeDatabase();
    QVERIFY(!QSqlDatabase::contains(key));
    QVERIFY(!tags->database().isOpen());
    tags->closeDatabase();
    QCOMPARE(log.lines(), QStringList());
    QCOMPARE(TagSystem::instance(key), tags);
    QCOMPARE(m_messages->take(), QStringList());

    openProject(path("project.db"), key);
    QCOMPARE(rowsOn(key, QStringLiteral("SELECT name FROM custom_tag_table")), QStringList{QStringLiteral("Pump")});
    QCOMPARE(rowsOn(key, QStringLiteral("PRAGMA integrity_check")), QStringList{QStringLiteral("ok")});
    tags->closeDatabase();
    QVERIFY2(QSqlDatabase::contains(key), "a later connection of the same name is another one's");
}

void TagLifecycleTest::closingWhatWasNeverOpened()
{
    const LogRecorder log;
    TagSystem tags(nullptr);
    tags.closeDatabase();
    TagSystem::instance(QString())->closeDatabase();
    QCOMPARE(log.lines(), QStringList());
    QCOMPARE(m_messages->take(), QStringList());
}

void TagLifecycleTest::closingLeavesAConnectionThatIsNotOpen()
{
    QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), key).setDatabaseName(m_folder->path());
    TagSystem *const tags = TagSystem::instance(key);
    tags->closeDatabase();
    QVERIFY(QSqlDatabase::contains(key));
    TagSystem::drop();
    QVERIFY(QSqlDatabase::contains(key));
}

void TagLifecycleTest::aClosedObjectFailsQuietly()
{
    makeProject(path("project.db"), key);
    writeTags(key, {{1, QStringLiteral("Pump")}});
    TagSystem *const tags = TagSystem::instance(key);
    QCOMPARE(tags->getTagNameById(1), QStringLiteral("Pump"));
    tags->closeDatabase();
    QCOMPARE(tags->getTagNameById(1), QString());
    QCOMPARE(tags->getCommunicatorID(1), -1);
    QCOMPARE(tags->getAllLinkID(), QList<int>());
    QCOMPARE(tags->getTagIDList(), QList<int>());
    QCOMPARE(tags->getTagNameById(20022), QStringLiteral("S>Year"));
    QCOMPARE(tags->getTagNames(), QStringList{QStringLiteral("Pump")});
    QCOMPARE(m_messages->take(), QStringList());
}

void TagLifecycleTest::theDatabaseOfTheMainThread()
{
    makeProject(path("one.db"), key);
    makeProject(path("two.db"), compiling);
    TagSystem *const tags = TagSystem::instance(key);
    QCOMPARE(tags->database().connectionName(), key);
    QVERIFY(!TagSystem::instance(QString())->database().isValid());
}

void TagLifecycleTest::theDatabaseOfAnotherThread()
{
    makeProject(path("one.db"), key);
    writeTags(key, {{1, QStringLiteral("own")}});
    TagSystem *const tags = TagSystem::instance(key);
    QStringList connections;
    QStringList names;
    const QString compiledPath = path("two.db");
    inAnotherThread([&connections, &names, &compiledPath, tags] {
        const auto note = [&connections, &names, tags] {
            connections.append(tags->database().connectionName());
            names.append(tags->getTagNameById(1));
        };
        note();
        makeProject(compiledPath, compiling);
        writeTags(compiling, {{1, QStringLiteral("compiled")}});
        note();
        closeProject(compiling);
        note();
    });
    QCOMPARE(connections, (QStringList{key, compiling, key}));
    QCOMPARE(names, (QStringList{"own", "compiled", "own"}));
    QCOMPARE(tags->database().connectionName(), key);
    QCOMPARE(m_messages->take(), QStringList());
}

void TagLifecycleTest::theCompileConnectionServesEveryObject()
{
    makeProject(path("one.db"), key);
    const QList<TagSystem *> objects{TagSystem::instance(key), TagSystem::instance(QString()),
                                     TagSystem::instance(QStringLiteral("no such connection"))};
    QCOMPARE(m_messages->take(), QStringList{noConnection});
    QStringList names;
    const QString compiledPath = path("two.db");
    inAnotherThread([&names, &compiledPath, &objects] {
        makeProject(compiledPath, compiling);
        writeTags(compiling, {{1, QStringLiteral("compiled")}});
        for (TagSystem *tags : objects)
            names.append(tags->getTagNameById(1));
        closeProject(compiling);
    });
    QCOMPARE(names, (QStringList{"compiled", "compiled", "compiled"}));
    for (TagSystem *tags : objects)
        QCOMPARE(tags->getTagNameById(1), QString());
}

void TagLifecycleTest::theCompileConnectionIsOpened()
{
    makeProject(path("one.db"), key);
    TagSystem *const tags = TagSystem::instance(key);
    bool isOpen = false;
    const QString compiledPath = path("two.db");
    inAnotherThread([&isOpen, &compiledPath, tags] {
        makeProject(compiledPath, compiling);
        QSqlDatabase::database(compiling, false).close();
        isOpen = tags->database().isOpen();
        closeProject(compiling);
    });
    QVERIFY(isOpen);
}

void TagLifecycleTest::theCompileConnectionComesAndGoes()
{
    makeProject(path("one.db"), key);
    writeTags(key, {{1, QStringLiteral("own")}});
    TagSystem *const tags = TagSystem::instance(key);
    QStringList names;
    QStringList lists;
    const QString compiledPath = path("compiled.db");
    for (int i = 0; i < 10; ++i) {
        inAnotherThread([&names, &lists, &compiledPath, tags, i] {
            makeProject(compiledPath, compiling);
            writeTags(compiling, {{1, QStringLiteral("compiled %1").arg(i)}});
            names.append(tags->getTagNameById(1));
            tags->refreshTagNames();
            lists.append(tags->getTagNames());
            closeProject(compiling);
        });
        QCOMPARE(tags->getTagNameById(1), QStringLiteral("own"));
    }
    const QStringList expected{"compiled 0", "compiled 1", "compiled 2", "compiled 3", "compiled 4",
                               "compiled 5", "compiled 6", "compiled 7", "compiled 8", "compiled 9"};
    QCOMPARE(names, expected);
    QCOMPARE(lists, expected);
    QCOMPARE(m_messages->take(), QStringList());
}

void TagLifecycleTest::aConnectionThatIsClosedAndOpenedAgain()
{
    makeProject(path("project.db"), key);
    writeTags(key, {{1, QStringLiteral("Pump")}});
    TagSystem *const tags = TagSystem::instance(key);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(tags->getTagNameById(1), QStringLiteral("Pump"));
        QCOMPARE(tags->getTagIDList(), QList<int>{1});
        QSqlDatabase::database(key, false).close();
        QCOMPARE(tags->getTagNameById(1), QString());
        QCOMPARE(tags->getTagIDList(), QList<int>());
        QVERIFY(QSqlDatabase::database(key, false).open());
    }
    QCOMPARE(tags->getTagNameById(1), QStringLiteral("Pump"));
    QCOMPARE(m_messages->take(), QStringList());
}

void TagLifecycleTest::aConnectionThatMovesToAnotherFile()
{
    makeProject(path("two.db"), key);
    writeTags(key, {{1, QStringLiteral("two")}});
    makeProject(path("one.db"), key);
    writeTags(key, {{1, QStringLiteral("one")}});
    TagSystem *const tags = TagSystem::instance(key);
    QCOMPARE(tags->getTagNameById(1), QStringLiteral("one"));
    {
        QSqlDatabase db = QSqlDatabase::database(key, false);
        db.close();
        db.setDatabaseName(path("two.db"));
        QVERIFY(db.open());
    }
    QCOMPARE(tags->getTagNameById(1), QStringLiteral("two"));
    QCOMPARE(tags->getTagNames(), QStringList{QStringLiteral("one")});
    QVERIFY(tags->addTag(QStringLiteral("more"), QStringLiteral("D1"), 1, 3, 1));
    QCOMPARE(tags->getTagNames(), (QStringList{"two", "more"}));
}

void TagLifecycleTest::aStandAloneDatabaseIsMade()
{
    const QString fileName = QStringLiteral("tags of a tool");
    QVERIFY(QDir().mkpath(databaseFolder()));
    const LogRecorder log;
    {
        TagSystem tags(nullptr);
        QVERIFY(tags.createDatabaseConnection(fileName));
        QCOMPARE(m_messages->take(), QStringList{noOpenDatabase});
        QVERIFY(tags.database().isOpen());
        QCOMPARE(tags.database().connectionName(), fileName);
        QCOMPARE(tags.database().driverName(), QStringLiteral("QSQLITE"));
        QCOMPARE(tags.database().databaseName(), databaseFolder() + QLatin1Char('/') + fileName);
        QCOMPARE(rowsOn(fileName, allTables), QStringList{QStringLiteral("custom_tag_table")});
        QVERIFY2(tags.getCustomTagTableAddressColumn() == 0, "the column lists are filled by init() only");
        QVERIFY(tags.addTag(QStringLiteral("Pump"), QStringLiteral("D1"), 1, 3, 1));
        QCOMPARE(tags.getTagNames(), QStringList{QStringLiteral("Pump")});
        QCOMPARE(m_messages->take(), QStringList());
    }
    QVERIFY(!QSqlDatabase::contains(fileName));
    QCOMPARE(log.lines(), QStringList());
}

void TagLifecycleTest::aStandAloneDatabaseIsOpened()
{
    const QString fileName = QStringLiteral("known");
    QVERIFY(QDir().mkpath(databaseFolder()));
    makeProject(databaseFolder() + QStringLiteral("/known"), key);
    writeTags(key, {{1, QStringLiteral("Pump")}});
    closeProject(key);
    TagSystem tags(nullptr);
    QVERIFY(tags.createDatabaseConnection(fileName));
    QCOMPARE(m_messages->take(), QStringList());
    QCOMPARE(tags.getTagNameById(1), QStringLiteral("Pump"));
    QCOMPARE(tags.getTagNames(), QStringList());
    tags.refreshTagNames();
    QCOMPARE(tags.getTagNames(), QStringList{QStringLiteral("Pump")});
}

void TagLifecycleTest::aStandAloneDatabaseWithoutTheFolder()
{
    const QString fileName = QStringLiteral("beside.tags");
    const QString beside = QDir(QCoreApplication::applicationDirPath()).filePath(fileName);
    QFile::remove(beside);
    QVERIFY(!QFileInfo::exists(databaseFolder()));
    TagSystem tags(nullptr);
    QVERIFY(tags.createDatabaseConnection(fileName));
    QCOMPARE(tags.database().databaseName(), beside);
    QCOMPARE(rowsOn(fileName, allTables), QStringList{QStringLiteral("custom_tag_table")});
    QVERIFY(!QFileInfo::exists(databaseFolder()));
    tags.closeDatabase();
    QVERIFY(QFile::remove(beside));
}

void TagLifecycleTest::aStandAloneDatabaseElsewhere()
{
    const QString filePath = path("elsewhere.tags");
    TagSystem tags(nullptr);
    QVERIFY(tags.createDatabaseConnection(filePath));
    QCOMPARE(tags.database().connectionName(), filePath);
    QCOMPARE(tags.database().databaseName(), filePath);
    QVERIFY(QFileInfo::exists(filePath));
}

void TagLifecycleTest::aStandAloneDatabaseThatCannotBeOpened_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QStringList>("messages");
    QTest::newRow("a file in a folder that is missing")
        << "missing/tags" << QStringList{fileNotMade, noOpenDatabase, standAloneNotOpened};
    QTest::newRow("a folder with the name of the file") << "folder" << QStringList{standAloneNotOpened};
}

void TagLifecycleTest::aStandAloneDatabaseThatCannotBeOpened()
{
    QFETCH(QString, fileName);
    QFETCH(QStringList, messages);
    QVERIFY(QDir().mkpath(databaseFolder() + QStringLiteral("/folder")));
    TagSystem tags(nullptr);
    QVERIFY(!tags.createDatabaseConnection(fileName));
    QCOMPARE(m_messages->take(), messages);
    QVERIFY(!tags.database().isOpen());
    QVERIFY2(QSqlDatabase::contains(fileName), "the connection stays registered");
    tags.closeDatabase();
    QVERIFY(QSqlDatabase::contains(fileName));
}

void TagLifecycleTest::aSecondStandAloneDatabase()
{
    QVERIFY(QDir().mkpath(databaseFolder()));
    TagSystem tags(nullptr);
    QVERIFY(tags.createDatabaseConnection(QStringLiteral("first")));
    QVERIFY(tags.addTag(QStringLiteral("Pump"), QStringLiteral("D1"), 1, 3, 1));
    m_messages->take();
    // The first database is still open when the second file is made, so that nothing is amiss.
    QVERIFY(tags.createDatabaseConnection(QStringLiteral("second")));
    QCOMPARE(m_messages->take(), QStringList());
    QCOMPARE(tags.database().connectionName(), QStringLiteral("second"));
    QCOMPARE(tags.getTagNameById(1), QString());
    QCOMPARE(rowsOn(QStringLiteral("second"), allTables), QStringList{QStringLiteral("custom_tag_table")});
    QVERIFY(QSqlDatabase::database(QStringLiteral("first"), false).isOpen());
    QCOMPARE(rowsOn(QStringLiteral("first"), QStringLiteral("SELECT name FROM custom_tag_table")),
             QStringList{QStringLiteral("Pump")});
}

void TagLifecycleTest::theFileOfAStandAloneDatabase()
{
    const QString filePath = path("fresh.tags");
    TagSystem tags(nullptr);
    tags.initializeTagDatabase(filePath);
    QCOMPARE(m_messages->take(), QStringList{noOpenDatabase});
    QVERIFY(QFileInfo::exists(filePath));
    QCOMPARE(QFileInfo(filePath).size(), qint64(0));
    QVERIFY(!tags.database().isValid());
}

void TagLifecycleTest::theFileOfAStandAloneDatabaseCannotBeMade()
{
    const QString filePath = path("missing/fresh.tags");
    const LogRecorder log;
    TagSystem tags(nullptr);
    tags.initializeTagDatabase(filePath);
    QCOMPARE(m_messages->take(), (QStringList{fileNotMade, noOpenDatabase}));
    QVERIFY(!QFileInfo::exists(filePath));

    makeProject(path("project.db"), key);
    QVERIFY(tags.init(key));
    executeOn(key, QStringLiteral("DROP TABLE custom_tag_table"));
    tags.initializeTagDatabase(filePath);
    QCOMPARE(m_messages->take(), QStringList{fileNotMade});
    QCOMPARE(rowsOn(key, allTables), (QStringList{"LINK", "NODE", "custom_tag_table"}));
}

void TagLifecycleTest::aFileThatIsThereIsKept()
{
    QFile file(path("there.tags"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write("kept"), qint64(4));
    file.close();
    TagSystem tags(nullptr);
    tags.initializeTagDatabase(file.fileName());
    QCOMPARE(m_messages->take(), QStringList{noOpenDatabase});
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("kept"));
}

void TagLifecycleTest::messagesAreBoxes_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("no current project") << "instance" << QStringList{noProject};
    QTest::newRow("no such connection") << "init" << QStringList{noConnection};
    QTest::newRow("a connection that does not open") << "open" << QStringList{notOpened};
    QTest::newRow("no open database for the table") << "table" << QStringList{noOpenDatabase};
    QTest::newRow("a stand-alone file that cannot be made")
        << "stand-alone" << QStringList{fileNotMade, noOpenDatabase, standAloneNotOpened};
}

void TagLifecycleTest::messagesAreBoxes()
{
    QFETCH(QString, operation);
    QFETCH(QStringList, expected);
    m_messages.reset();
    TagSystem tags(nullptr);
    QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), otherKey).setDatabaseName(m_folder->path());
    BoxReader reader;
    if (operation == QLatin1String("instance"))
        QCOMPARE(TagSystem::instance(), static_cast<TagSystem *>(nullptr));
    else if (operation == QLatin1String("init"))
        QVERIFY(!tags.init(key));
    else if (operation == QLatin1String("open"))
        QVERIFY(tags.init(otherKey));
    else if (operation == QLatin1String("table"))
        tags.createCustomTable();
    else
        QVERIFY(!tags.createDatabaseConnection(QStringLiteral("missing/tags")));
    QCOMPARE(reader.boxes, expected);
    QVERIFY(!reader.hadParent);
    QVERIFY2(reader.isModal, "a box blocks");
    QVERIFY(reader.hasOnlyOk);
}

void TagLifecycleTest::messagesAreTranslated()
{
    ContextTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    TagSystem tags(nullptr);
    TagSystem::instance();
    tags.init(key);
    tags.createCustomTable();
    tags.createDatabaseConnection(QStringLiteral("missing/tags"));
    QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), otherKey).setDatabaseName(m_folder->path());
    tags.init(otherKey);
    QCoreApplication::removeTranslator(&translator);
    QStringList expected{noProject,      noConnection,        noOpenDatabase, fileNotMade,
                         noOpenDatabase, standAloneNotOpened, notOpened};
    for (QString &message : expected)
        message.replace(QLatin1Char('|'), QStringLiteral("|TagSystem: "));
    QCOMPARE(m_messages->take(), expected);
}

QTEST_MAIN(TagLifecycleTest)

#include "tst_taglifecycle.moc"
