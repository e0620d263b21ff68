// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"
#include "support/logrecorder.h"

#include "zelmar_label/label_store/labelstore.h"
#include "zelmar_label/label_table/labelinterface.h"

#include <QDir>
#include <QFileInfo>
#include <QSemaphore>
#include <QSqlDatabase>
#include <QThread>
#include <QtTest>

#include <functional>
#include <memory>

using label::LabelInterface;

namespace {

const QString words = QStringLiteral("Words");
const QString blocks = QStringLiteral("ISO on TCP");
const QString scripted = QStringLiteral("Scripted");

/// Runs `task` on a thread that stays alive until `finish`: a finished thread is another case.
class Worker
{
public:
    explicit Worker(const std::function<void()> &task)
    {
        m_thread.reset(QThread::create([this, task] {
            task();
            m_done.release();
            m_leave.acquire();
        }));
        m_thread->start();
        m_done.acquire();
    }

    ~Worker() { finish(); }

    void finish()
    {
        if (!m_thread)
            return;
        m_leave.release();
        m_thread->wait();
        m_thread.reset();
    }

private:
    std::unique_ptr<QThread> m_thread;
    QSemaphore m_done;
    QSemaphore m_leave;
};

void onAThreadThatEnds(const std::function<void()> &task)
{
    Worker(task).finish();
}

LabelInterface *build(const QString &name)
{
    QString error;
    LabelInterface *made = label::createLabel(name, error);
    if (!made)
        qWarning("no label for %s: %s", qPrintable(name), qPrintable(error));
    return made;
}

/// The lines that show faults: all except those of built rows.
QStringList otherLines(const LogRecorder &log)
{
    QStringList lines = log.lines();
    lines.removeAll(rowLine);
    return lines;
}

} // namespace

class LabelThreadsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void cleanupTestCase();

    void builtOnOneThreadAndUsedOnAnother();
    void builtAgainWhileTheFirstThreadLives();
    void builtOnAThreadAfterTheMainThread();
    void builtOnManyThreadsOneAfterTheOther();
    void aFailedBuildLeavesTheConnectionToTheNextThread_data();
    void aFailedBuildLeavesTheConnectionToTheNextThread();
    void aScriptedRowWorksOnEveryThread();
    void theConnectionOfAnotherThreadIsReplaced();
};

void LabelThreadsTest::init()
{
    writeScript(QStringLiteral("threads.js"),
                QStringLiteral("function init() { bitBase = 8; needOptimize = true; }"
                               "function getAddressRange(address) { return parseInt(address.substr(1), 10) + 1000; }"));
    Driver plain;
    plain.name = words;
    plain.rows = {Row(), Row()};
    Row family;
    family.pattern = QStringLiteral("DB_DBW");
    family.prefixSymbol = QStringLiteral("DB");
    Driver dynamic;
    dynamic.name = blocks;
    dynamic.rows = {family};
    dynamic.generalTable = QStringLiteral("general_blocks");
    dynamic.deviceTable = QStringLiteral("types_blocks");
    Row script;
    script.multipleRule = QStringLiteral("F>threads.js");
    Driver withScript;
    withScript.name = scripted;
    withScript.rows = {script};
    withScript.generalTable = QStringLiteral("general_script");
    withScript.deviceTable = QStringLiteral("types_script");
    writeDriverDatabase(driverDatabasePath(), {plain, dynamic, withScript});
}

void LabelThreadsTest::cleanup()
{
    for (const QString &name : {words, blocks, scripted})
        label::freeLabel(name);
}

void LabelThreadsTest::cleanupTestCase()
{
    removeScript(QStringLiteral("threads.js"));
    QDir(QFileInfo(driverDatabasePath()).absolutePath()).removeRecursively();
}

void LabelThreadsTest::builtOnOneThreadAndUsedOnAnother()
{
    const LogRecorder log;
    LabelInterface *made = nullptr;
    onAThreadThatEnds([&made] { made = build(blocks); });
    QVERIFY(made);
    int index = -1;
    QStringList next;
    LabelInterface *again = nullptr;
    onAThreadThatEnds([&] {
        again = build(blocks);
        index = made->addressValidation(QStringLiteral("DB12.DBW4"), -1);
        next = addresses(made->makeContinueCommand(index, command(QStringLiteral("DB12.DBW4"), 2), 2));
        label::freeLabel(blocks);
    });
    QCOMPARE(again, made);
    QCOMPARE(index, 1);
    QCOMPARE(next, (QStringList{"DB12.DBW4", "DB12.DBW5"}));

    LabelInterface *onMain = build(blocks);
    QVERIFY(onMain);
    QCOMPARE(onMain->countBitTypes(), 1);
    QCOMPARE(onMain->addressValidation(QStringLiteral("DB7.DBW4"), -1), 1);
    label::freeLabel(blocks);

    int rowsOnThird = 0;
    onAThreadThatEnds([&rowsOnThird] { rowsOnThird = build(blocks)->countBitTypes(); });
    QCOMPARE(rowsOnThird, 1);
    QCOMPARE(otherLines(log), QStringList());
}

void LabelThreadsTest::builtAgainWhileTheFirstThreadLives()
{
    const LogRecorder log;
    LabelInterface *first = nullptr;
    Worker owner([&first] { first = build(words); });
    QVERIFY(first);
    QCOMPARE(first->countBitTypes(), 2);
    LabelInterface *second = build(blocks);
    QVERIFY(second);
    QCOMPARE(second->countBitTypes(), 1);
    owner.finish();
    label::freeLabel(words);
    QVERIFY(build(words));
    QCOMPARE(otherLines(log), QStringList());
}

void LabelThreadsTest::builtOnAThreadAfterTheMainThread()
{
    const LogRecorder log;
    QVERIFY(build(words));
    int rows = 0;
    Worker worker([&rows] { rows = build(blocks)->countBitTypes(); });
    QCOMPARE(rows, 1);
    LabelInterface *made = build(scripted);
    QVERIFY(made);
    QCOMPARE(made->countBitTypes(), 1);
    QCOMPARE(otherLines(log), QStringList());
}

void LabelThreadsTest::builtOnManyThreadsOneAfterTheOther()
{
    const LogRecorder log;
    QList<int> rows;
    for (int run = 0; run < 20; ++run) {
        onAThreadThatEnds([&rows] {
            rows.append(build(words)->countBitTypes());
            label::freeLabel(words);
        });
    }
    QCOMPARE(rows.size(), 20);
    QCOMPARE(rows.count(2), 20);
    QCOMPARE(otherLines(log), QStringList());
}

void LabelThreadsTest::aFailedBuildLeavesTheConnectionToTheNextThread_data()
{
    QTest::addColumn<bool>("ends");
    QTest::newRow("the failing thread has ended") << true;
    QTest::newRow("the failing thread lives on") << false;
}

void LabelThreadsTest::aFailedBuildLeavesTheConnectionToTheNextThread()
{
    QFETCH(bool, ends);
    const LogRecorder log;
    QString error;
    LabelInterface *failed = nullptr;
    Worker worker([&] { failed = label::createLabel(QStringLiteral("unknown"), error); });
    if (ends)
        worker.finish();
    QVERIFY(!failed);
    QCOMPARE(error, QStringLiteral("Cant found driver table in label."));
    LabelInterface *made = build(words);
    QVERIFY(made);
    QCOMPARE(made->countBitTypes(), 2);
    worker.finish();
    QCOMPARE(otherLines(log), QStringList());
}

void LabelThreadsTest::aScriptedRowWorksOnEveryThread()
{
    const LogRecorder log;
    LabelInterface *made = nullptr;
    onAThreadThatEnds([&made] { made = build(scripted); });
    QVERIFY(made);
    int number = 0;
    onAThreadThatEnds([&] { number = made->addressRange(0, QStringLiteral("D7")); });
    QCOMPARE(number, 1007);
    QCOMPARE(made->addressRange(0, QStringLiteral("D8")), 1008);
    onAThreadThatEnds([] { label::freeLabel(scripted); });
    LabelInterface *again = build(scripted);
    QVERIFY(again);
    QCOMPARE(again->addressRange(0, QStringLiteral("D9")), 1009);
    QCOMPARE(otherLines(log), QStringList());
}

void LabelThreadsTest::theConnectionOfAnotherThreadIsReplaced()
{
    const LogRecorder log;
    bool opened = false;
    QString path;
    onAThreadThatEnds([&] {
        QSqlDatabase db;
        opened = label::createDatabaseConnection(db);
        path = db.databaseName();
    });
    QVERIFY(opened);
    QSqlDatabase db;
    QVERIFY(label::createDatabaseConnection(db));
    QVERIFY(db.isOpen());
    QCOMPARE(db.connectionName(), QStringLiteral("drivers"));
    QCOMPARE(db.databaseName(), path);
    QCOMPARE(QSqlDatabase::connectionNames().count(QStringLiteral("drivers")), 1);
    db.close();
    QCOMPARE(otherLines(log), QStringList());
}

QTEST_GUILESS_MAIN(LabelThreadsTest)

#include "tst_labelthreads.moc"
