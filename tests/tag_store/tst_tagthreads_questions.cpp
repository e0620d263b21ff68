// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/logrecorder.h"
#include "support/randomcases.h"
#include "support/tagquestions.h"
#include "support/tagthreadstest.h"
#include "support/threads.h"

#include "zelmar_label/label_store/labelstore.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <QElapsedTimer>
#include <QtTest>

#include <algorithm>
#include <vector>

using namespace threads;

namespace {

constexpr int msecsOfStress = 3000;

/// All operations in the thread's own order, repeatedly; at least one full pass.
void ask(const std::vector<Operation> &operations, Work work, const QElapsedTimer &timer, Texts &wrong)
{
    std::vector<const Operation *> order;
    for (const Operation &operation : operations)
        order.push_back(&operation);
    do {
        for (std::size_t i = order.size(); i > 1; --i)
            std::swap(order[i - 1], order[static_cast<std::size_t>(work.random.below(static_cast<int>(i)))]);
        for (const Operation *operation : order) {
            if (operation->isRight(work))
                continue;
            wrong.add(QString::fromLatin1(operation->name));
            return;
        }
    } while (timer.elapsed() < msecsOfStress);
}

} // namespace

class TagThreadsQuestionsTest : public TagThreadsTest
{
    Q_OBJECT

private Q_SLOTS:
    void everyOperationOnOneThread_data();
    void everyOperationOnOneThread();
    void allOperationsOnAllThreads();
};

void TagThreadsQuestionsTest::everyOperationOnOneThread_data()
{
    QTest::addColumn<int>("number");
    const std::vector<Operation> operations = allOperations();
    for (std::size_t i = 0; i < operations.size(); ++i)
        QTest::newRow(operations[i].name) << static_cast<int>(i);
}

/// The expected answers of all threads.
void TagThreadsQuestionsTest::everyOperationOnOneThread()
{
    QFETCH(int, number);
    const Operation operation = allOperations().at(static_cast<std::size_t>(number));
    Work work{TagSystem::instance(key), Random(1)};
    const LogRecorder log;
    for (int i = 0; i < 20; ++i)
        QVERIFY(operation.isRight(work));
    QCOMPARE(troubleIn(log), QStringList());
}

void TagThreadsQuestionsTest::allOperationsOnAllThreads()
{
    TagSystem *tags = TagSystem::instance(key);
    const std::vector<Operation> operations = allOperations();
    const LogRecorder log;
    Texts wrong;
    QElapsedTimer timer;
    timer.start();
    onAllThreads([&](int number) {
        ask(operations, {tags, Random(static_cast<quint32>(100 + number))}, timer, wrong);
    });
    QCOMPARE(wrong.texts(), QStringList());
    QCOMPARE(troubleIn(log), QStringList());
}

QTEST_GUILESS_MAIN(TagThreadsQuestionsTest)

#include "tst_tagthreads_questions.moc"
