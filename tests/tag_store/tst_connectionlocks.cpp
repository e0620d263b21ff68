// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/projectfixtures.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QCoreApplication>
#include <QObject>
#include <QSqlDatabase>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace {

const QString busyKey = QStringLiteral("7");
const QString quietKey = QStringLiteral("8");
const QString lockingKey = QStringLiteral("locking");

/// Calls a tag system while its own property is read.
class AskingObject : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int tag READ tag)

public:
    TagSystem *tags = nullptr;
    mutable QStringList answers;

    int tag() const
    {
        answers.append(tags->getTagNameById(20022));
        answers.append(QString::number(tags->getSystemTagType(20022)));
        answers.append(QString::number(tags->getSystemTagDataType(20022)));
        answers.append(QString::number(int(tags->isControlSystemTag(20022))));
        return 20022;
    }
};

} // namespace

/// Tests which threads wait for each other.
class ConnectionLocksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aBusyFileDelaysNoOtherProject();
    void systemTagsAreReadWhileAPropertyIs();
    void systemTagsAreReadByManyThreads();
    void oneConnectionServesManyThreads();

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<MessageRecorder> m_messages;
};

void ConnectionLocksTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_messages = std::make_unique<MessageRecorder>();
    makeProject(m_folder->filePath("busy.db"), busyKey);
    makeProject(m_folder->filePath("quiet.db"), quietKey);
    writeTags(busyKey, {TagRow{1, "busy", 0, 3, "D1"}});
    writeTags(quietKey, {TagRow{1, "quiet", 0, 3, "D1"}, TagRow{2, "other", 0, 3, "D2"}});
}

void ConnectionLocksTest::cleanup()
{
    QCOMPARE(m_messages->take(), QStringList());
    QCoreApplication::instance()->setProperty("tolv_env", QVariant());
    dropProjects();
    m_messages.reset();
    m_folder.reset();
}

void ConnectionLocksTest::aBusyFileDelaysNoOtherProject()
{
    TagSystem *busy = TagSystem::instance(busyKey);
    TagSystem *quiet = TagSystem::instance(quietKey);
    executeOn(busyKey, "PRAGMA busy_timeout = 60000");
    openProject(m_folder->filePath("busy.db"), lockingKey);
    executeOn(lockingKey, "BEGIN EXCLUSIVE");

    std::atomic<bool> isAsking = false;
    std::atomic<bool> isAnswered = false;
    QString waitedFor;
    std::thread waiting([&] {
        isAsking = true;
        waitedFor = busy->getTagNameById(1);
        isAnswered = true;
    });
    while (!isAsking)
        std::this_thread::yield();
    // Time to reach the file; without it the test would pass too easily, never fail.
    QTest::qSleep(200);
    QStringList names;
    for (int id = 1; id <= 2; ++id)
        names.append(quiet->getTagNameById(id));
    const bool wasWaiting = !isAnswered;
    executeOn(lockingKey, "ROLLBACK");
    waiting.join();

    QVERIFY(wasWaiting);
    QCOMPARE(names, QStringList({"quiet", "other"}));
    QCOMPARE(waitedFor, QString("busy"));
}

void ConnectionLocksTest::systemTagsAreReadWhileAPropertyIs()
{
    AskingObject object;
    object.tags = TagSystem::instance(quietKey);
    QCOMPARE(object.tags->getCommunicatorID(&object, "tag"), 0);
    QCOMPARE(object.answers, QStringList({"S>Year", "1", "3", "1"}));
}

/// Also while other threads add default tags.
void ConnectionLocksTest::systemTagsAreReadByManyThreads()
{
    TagSystem *tags = TagSystem::instance(quietKey);
    std::atomic<int> wrong = 0;
    const auto read = [&] {
        for (int round = 0; round < 20; ++round) {
            for (int id = 20000; id <= 21000; ++id) {
                const QString name = tags->getTagNameById(id);
                const bool isControl = tags->isControlSystemTag(id);
                if (id == 20022 && (name != "S>Year" || !isControl || tags->getSystemTagDataType(id) != 3))
                    ++wrong;
                if (id == 20094 && (isControl || tags->getSystemTagType(id) != 2))
                    ++wrong;
            }
        }
    };
    const auto ask = [&] {
        for (int id = 20000; id <= 21000; ++id) {
            const int expected = tags->getTagNameById(id).isEmpty() ? 5 : tags->getDataTypeByID(id);
            if (tags->getDataTypeByID(id) != expected)
                ++wrong;
        }
    };
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 6; ++thread)
        threads.emplace_back(read);
    for (int thread = 0; thread < 2; ++thread)
        threads.emplace_back(ask);
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(int(wrong), 0);
    QCOMPARE(tags->getTagNameById(20094), QString("s>invalid"));
    QCOMPARE(tags->getIdByTagName("s>invalid"), 20000);
}

/// Eight threads on one connection in the tolv environment, while its file is locked and unlocked all the time, and
/// eight queries on another project at the same time.
void ConnectionLocksTest::oneConnectionServesManyThreads()
{
    QCoreApplication::instance()->setProperty("tolv_env", true);
    TagSystem *busy = TagSystem::instance(busyKey);
    TagSystem *quiet = TagSystem::instance(quietKey);
    executeOn(busyKey, "PRAGMA busy_timeout = 60000");
    openProject(m_folder->filePath("busy.db"), lockingKey);
    std::atomic<int> wrong = 0;
    std::atomic<int> running = 8;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 8; ++thread) {
        threads.emplace_back([&, thread] {
            TagSystem *tags = thread % 2 == 0 ? busy : quiet;
            const QString expected = thread % 2 == 0 ? "busy" : "quiet";
            for (int round = 0; round < 200; ++round) {
                if (tags->getTagNameById(1) != expected || tags->getIdByTagName(expected) != 1 ||
                    tags->getTagNameList(0).first() != expected || tags->getTagIDsByAddress(0, "D1") != QList<int>{1} ||
                    tags->getScanTimeByID(1) != 1 || tags->getAddressByID(1) != "D1" || !tags->isValidTagID(1))
                    ++wrong;
            }
            --running;
        });
    }
    while (running > 0) {
        executeOn(lockingKey, "BEGIN EXCLUSIVE");
        std::this_thread::yield();
        executeOn(lockingKey, "ROLLBACK");
        QTest::qSleep(1);
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(int(wrong), 0);
}

QTEST_GUILESS_MAIN(ConnectionLocksTest)
#include "tst_connectionlocks.moc"
