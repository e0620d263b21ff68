// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"
#include "support/projectfixtures.h"
#include "support/threads.h"

#include "zelmar_label/label_store/labelstore.h"
#include "zelmar_label/label_table/labelinterface.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <atomic>
#include <functional>
#include <memory>
#include <thread>

namespace {

constexpr int fixedTags = 200;
constexpr int firstChanging = 201;
constexpr int changingTags = 10;
constexpr int msecsOfWork = 2500;

const QString key = QStringLiteral("project of an editor");
const QString compiling = QStringLiteral("TOLV_compileing");
const QString words = QStringLiteral("Words");
const QString relays = QStringLiteral("Relays");

QString nameOf(int id)
{
    return QStringLiteral("Tag %1").arg(id);
}

QString addressOf(int id)
{
    return QStringLiteral("D%1").arg(id);
}

QString stateOf(const CommunicatorCommand &command)
{
    return QStringLiteral("%1 %2 %3").arg(command.address).arg(int(command.dataType)).arg(command.length);
}

/// The two states of a changing tag: a 16-bit number, and a text.
QStringList statesOf(int id)
{
    return {QStringLiteral("D%1 2 1").arg(id), QStringLiteral("D%1 5 30").arg(1000 + id)};
}

bool switchTag(TagSystem *tags, int id, bool isText)
{
    return isText ? tags->modifyTag(nameOf(id), addressOf(1000 + id), 1, 8, 30)
                  : tags->modifyTag(nameOf(id), addressOf(id), 1, 3, 1);
}

/// The queries of a compile run for a tag that does not change.
void readFixedTag(TagSystem *tags, int id, Texts &wrong)
{
    bool ok = false;
    const CommunicatorCommand command = tags->getCommunicatorCommandByIndex(id, ok);
    wrong.check(ok && stateOf(command) == statesOf(id).first() && command.scanTime == 7, QStringLiteral("command"));
    wrong.check(tags->getTagNameById(id) == nameOf(id), QStringLiteral("getTagNameById"));
    wrong.check(tags->getIdByTagName(nameOf(id)) == id, QStringLiteral("getIdByTagName"));
    wrong.check(tags->getAddressByID(id) == addressOf(id), QStringLiteral("getAddressByID"));
    wrong.check(tags->getCommunicatorID(id) == 1, QStringLiteral("getCommunicatorID"));
    wrong.check(tags->getDataTypeByID(id) == 3, QStringLiteral("getDataTypeByID"));
    wrong.check(tags->getAccessModeByID(id) == 1, QStringLiteral("getAccessModeByID"));
    wrong.check(tags->getScaleByID(id) == 1, QStringLiteral("getScaleByID"));
    wrong.check(tags->getScanTimeByID(id) == 7, QStringLiteral("getScanTimeByID"));
    wrong.check(tags->isValidTagID(id), QStringLiteral("isValidTagID"));
    wrong.check(tags->isValidStationID(id, 12), QStringLiteral("isValidStationID"));
    wrong.check(tags->varToByteArrayThreadSafe(id, 513) == QByteArray("\x01\x02"), QStringLiteral("codec"));
    QList<CommunicatorCommand> out;
    wrong.check(tags->creatBlockCommand(id, 70, out) &&
                    shortForms(out) ==
                        (QStringList{QStringLiteral("D%1 2 64").arg(id), QStringLiteral("D%1 2 6").arg(id + 64)}),
                QStringLiteral("creatBlockCommand"));
}

void readChangingTag(TagSystem *tags, int id, Texts &wrong)
{
    bool ok = false;
    const QString state = stateOf(tags->getCommunicatorCommandByIndex(id, ok));
    wrong.check(ok && statesOf(id).contains(state), QStringLiteral("a tag in a state of its own: ") + state);
    const int type = tags->getDataTypeByID(id);
    wrong.check(type == 3 || type == 8, QStringLiteral("a type of its own"));
    const QString address = tags->getAddressByID(id);
    wrong.check(address == addressOf(id) || address == addressOf(1000 + id), QStringLiteral("an address of its own"));
}

void readProject(TagSystem *tags, Texts &wrong)
{
    QList<int> links = tags->getAllLinkID();
    std::sort(links.begin(), links.end());
    wrong.check(links == (QList<int>{1, 2}), QStringLiteral("getAllLinkID"));
    wrong.check(tags->getAllEnabledLinkID() == QList<int>{1}, QStringLiteral("getAllEnabledLinkID"));
    wrong.check(tags->getLinkName(2) == relays, QStringLiteral("getLinkName"));
    wrong.check(tags->stationList(1) == QList<int>{12}, QStringLiteral("stationList"));
    wrong.check(tags->getLable(1) && !tags->getLable(9), QStringLiteral("getLable"));
    const QList<int> ids = tags->getTagIDList(1);
    wrong.check(ids.size() == fixedTags + changingTags, QStringLiteral("getTagIDList(link)"));
    wrong.check(tags->getTagIDList().size() >= ids.size(), QStringLiteral("getTagIDList"));
    wrong.check(tags->getTagNameList(1).size() == ids.size(), QStringLiteral("getTagNameList"));
    wrong.check(tags->getCommunicatorID(-7) == -1 && tags->getTagNameById(20201) == QLatin1String("S>R_Year"),
                QStringLiteral("other ids"));
}

/// A compile run: it registers its connection under the fixed name, and reads until it is stopped, at least one full
/// pass.
void compile(TagSystem *tags, const QString &path, const std::atomic<bool> &isOver, std::atomic<int> &passes,
             Texts &wrong)
{
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), compiling);
        db.setDatabaseName(path);
        wrong.check(db.open(), QStringLiteral("open"));
    }
    wrong.check(tags->database().connectionName() == compiling, QStringLiteral("database"));
    do {
        readProject(tags, wrong);
        for (int id = 1; id <= fixedTags && wrong.isEmpty(); id += 1 + passes % 7) {
            readFixedTag(tags, id, wrong);
            readChangingTag(tags, firstChanging + id % changingTags, wrong);
        }
        ++passes;
    } while (!isOver && wrong.isEmpty());
    QSqlDatabase::removeDatabase(compiling);
}

} // namespace

/// An editor: the main thread reads and writes, and one compile thread reads on its own connection.
class TagThreadsEditorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void theMainThreadWritesWhileAnotherReads();
    void compileRunsThatComeAndGo();
    void aCompileRunReadsTheFileItOpened();
    void aCompileRunSeesWhatIsCommitted();
    void aForeignThreadWithoutAConnectionOfItsOwn();

private:
    QString path() const { return m_folder->filePath(QStringLiteral("project")); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
};

void TagThreadsEditorTest::initTestCase()
{
    Driver plain;
    plain.name = words;
    plain.rows = {Row()};
    Driver bits;
    bits.name = relays;
    bits.rows = {Row()};
    bits.generalTable = QStringLiteral("general_bits");
    bits.deviceTable = QStringLiteral("types_bits");
    writeDriverDatabase(driverDatabasePath(), {plain, bits});
}

void TagThreadsEditorTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_messages = std::make_unique<MessageRecorder>();
    makeProject(path(), key, {{1, words, 1}, {2, relays, 0}}, {{1, 12, 1}});
    QList<TagRow> rows;
    for (int id = 1; id < firstChanging + changingTags; ++id) {
        TagRow row;
        row.id = id;
        row.name = nameOf(id);
        row.connectorId = 1;
        row.dataType = 3;
        row.address = addressOf(id);
        row.access = 1;
        row.scanTime = 7;
        rows.append(row);
    }
    writeTags(key, rows);
    TagSystem::instance(key);
}

void TagThreadsEditorTest::cleanup()
{
    QCOMPARE(m_messages->take(), QStringList());
    m_messages.reset();
    dropProjects();
    m_folder.reset();
    label::freeLabel(words);
    label::freeLabel(relays);
}

void TagThreadsEditorTest::cleanupTestCase()
{
    QDir(QFileInfo(driverDatabasePath()).absolutePath()).removeRecursively();
}

void TagThreadsEditorTest::theMainThreadWritesWhileAnotherReads()
{
    TagSystem *tags = TagSystem::instance(key);
    const LogRecorder log;
    Texts wrong;
    std::atomic<bool> isOver{false};
    std::atomic<int> passes{0};
    std::thread compiler([&] { compile(tags, path(), isOver, passes, wrong); });
    QElapsedTimer timer;
    timer.start();
    int added = 0;
    for (int round = 0; timer.elapsed() < msecsOfWork && wrong.isEmpty(); ++round) {
        const int changing = firstChanging + round % changingTags;
        wrong.check(switchTag(tags, changing, round % 3 == 0), QStringLiteral("modifyTag"));
        bool ok = false;
        const CommunicatorCommand written = tags->getCommunicatorCommandByIndex(changing, ok);
        wrong.check(ok && stateOf(written) == statesOf(changing).at(round % 3 == 0 ? 1 : 0),
                    QStringLiteral("what was written"));
        if (round % 10 == 0) {
            const QString name = QStringLiteral("New %1").arg(added++);
            wrong.check(tags->isNewTag(name), QStringLiteral("isNewTag before"));
            wrong.check(tags->addTag(name, addressOf(round), 2, 1, 1), QStringLiteral("addTag"));
            wrong.check(!tags->isNewTag(name), QStringLiteral("isNewTag after"));
            const int id = tags->getIdByTagName(name);
            wrong.check(tags->getTagNameById(id) == name, QStringLiteral("the new tag"));
            tags->setTagNameById(name + QStringLiteral(" renamed"), id);
            wrong.check(tags->getTagNames().last() == name + QStringLiteral(" renamed"),
                        QStringLiteral("the name list"));
        }
        readFixedTag(tags, 1 + round % fixedTags, wrong);
        wrong.check(tags->database().connectionName() == key, QStringLiteral("the main thread's connection"));
    }
    isOver = true;
    compiler.join();
    QCOMPARE(wrong.texts(), QStringList());
    QVERIFY(passes >= 1);
    QVERIFY(added >= 1);
    QCOMPARE(tags->getTagNames().size(), fixedTags + changingTags + added);
    QCOMPARE(tags->getTagIDList(2).size(), added);
    QCOMPARE(rowsOn(key, QStringLiteral("PRAGMA integrity_check")), QStringList{QStringLiteral("ok")});
    QVERIFY2(!log.lines().join(QLatin1Char('\n')).contains(QLatin1String("QSql")),
             qPrintable(log.lines().join(QLatin1Char('\n'))));
}

void TagThreadsEditorTest::compileRunsThatComeAndGo()
{
    TagSystem *tags = TagSystem::instance(key);
    const LogRecorder log;
    Texts wrong;
    const std::atomic<bool> isOver{true};
    std::atomic<int> passes{0};
    constexpr int runs = 15;
    for (int run = 0; run < runs; ++run) {
        std::atomic<bool> isDone{false};
        std::thread compiler([&] {
            compile(tags, path(), isOver, passes, wrong);
            isDone = true;
        });
        for (int round = 0; !isDone; ++round) {
            wrong.check(switchTag(tags, firstChanging + round % changingTags, (round + run) % 2 == 0),
                        QStringLiteral("modifyTag"));
            readFixedTag(tags, 1 + round % fixedTags, wrong);
        }
        compiler.join();
        QVERIFY(!QSqlDatabase::contains(compiling));
        QCOMPARE(tags->getAddressByID(1), addressOf(1));
    }
    QCOMPARE(wrong.texts(), QStringList());
    QCOMPARE(int(passes), runs);
    QVERIFY2(!log.lines().join(QLatin1Char('\n')).contains(QLatin1String("QSql")),
             qPrintable(log.lines().join(QLatin1Char('\n'))));
}

/// The connection has one name in the process, for objects of any project.
void TagThreadsEditorTest::aCompileRunReadsTheFileItOpened()
{
    const QString other = QStringLiteral("another project");
    makeProject(m_folder->filePath(QStringLiteral("other")), other, {{7, words, 1}});
    TagRow row;
    row.id = 1;
    row.name = QStringLiteral("Elsewhere");
    row.connectorId = 7;
    row.address = QStringLiteral("D9000");
    writeTags(other, {row});
    TagSystem *first = TagSystem::instance(key);
    TagSystem *second = TagSystem::instance(other);

    const QStringList paths{m_folder->filePath(QStringLiteral("other")), path(),
                            m_folder->filePath(QStringLiteral("other"))};
    for (const QString &opened : paths) {
        const bool isOther = opened != path();
        Texts wrong;
        std::thread compiler([&] {
            {
                QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), compiling);
                db.setDatabaseName(opened);
            }
            for (TagSystem *tags : {first, second}) {
                wrong.check(tags->getAddressByID(1) == (isOther ? QStringLiteral("D9000") : QStringLiteral("D1")),
                            QStringLiteral("address"));
                wrong.check(tags->getCommunicatorID(1) == (isOther ? 7 : 1), QStringLiteral("link"));
                wrong.check(tags->getTagNameById(1) == (isOther ? QStringLiteral("Elsewhere") : nameOf(1)),
                            QStringLiteral("name"));
                wrong.check(tags->getLinkName(7) == (isOther ? words : QString()), QStringLiteral("link name"));
                wrong.check((tags->getLable(7) != nullptr) == isOther, QStringLiteral("label"));
            }
            QSqlDatabase::removeDatabase(compiling);
        });
        compiler.join();
        QCOMPARE(wrong.texts(), QStringList());
        QCOMPARE(first->getAddressByID(1), QStringLiteral("D1"));
        QCOMPARE(second->getAddressByID(1), QStringLiteral("D9000"));
    }
}

void TagThreadsEditorTest::aCompileRunSeesWhatIsCommitted()
{
    TagSystem *tags = TagSystem::instance(key);
    const auto seenElsewhere = [this, tags] {
        QString seen;
        std::thread compiler([this, tags, &seen] {
            {
                QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), compiling);
                db.setDatabaseName(path());
            }
            seen = tags->getAddressByID(1) + QLatin1Char(' ') +
                   QString::number(tags->getIdByTagName(QStringLiteral("Late")));
            QSqlDatabase::removeDatabase(compiling);
        });
        compiler.join();
        return seen;
    };
    QVERIFY(tags->database().transaction());
    QVERIFY(tags->modifyTag(nameOf(1), QStringLiteral("D77"), 1, 3, 1));
    QVERIFY(tags->addTag(QStringLiteral("Late"), QString(), 0, 1, 1));
    QCOMPARE(tags->getAddressByID(1), QStringLiteral("D77"));
    QCOMPARE(seenElsewhere(), QStringLiteral("D1 -1"));
    QVERIFY(tags->database().commit());
    QCOMPARE(seenElsewhere(), QStringLiteral("D77 211"));
}

/// Without its own connection, another thread shares that of the main thread.
void TagThreadsEditorTest::aForeignThreadWithoutAConnectionOfItsOwn()
{
    TagSystem *tags = TagSystem::instance(key);
    const LogRecorder log;
    Texts wrong;
    std::atomic<bool> isDone{false};
    std::thread reader([&] {
        wrong.check(tags->database().connectionName() == key, QStringLiteral("database"));
        for (int round = 0; round < 5; ++round) {
            readProject(tags, wrong);
            for (int id = 1; id <= fixedTags; id += 3)
                readFixedTag(tags, id, wrong);
        }
        isDone = true;
    });
    for (int round = 0; !isDone; ++round) {
        wrong.check(switchTag(tags, firstChanging + round % changingTags, round % 2 == 0), QStringLiteral("modifyTag"));
        readFixedTag(tags, 1 + round % fixedTags, wrong);
    }
    reader.join();
    QCOMPARE(wrong.texts(), QStringList());
    QVERIFY2(!log.lines().join(QLatin1Char('\n')).contains(QLatin1String("QSql")),
             qPrintable(log.lines().join(QLatin1Char('\n'))));
}

QTEST_GUILESS_MAIN(TagThreadsEditorTest)

#include "tst_tagthreads_editor.moc"
