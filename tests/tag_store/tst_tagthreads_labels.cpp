// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/logrecorder.h"
#include "support/randomcases.h"
#include "support/tagquestions.h"
#include "support/tagthreadstest.h"
#include "support/threads.h"

#include "zelmar_label/label_store/labelstore.h"
#include "zelmar_label/label_table/labelinterface.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <QtTest>

#include <array>
#include <thread>

using namespace threads;

class TagThreadsLabelsTest : public TagThreadsTest
{
    Q_OBJECT

private Q_SLOTS:
    void labelsForWhicheverThreadComesFirst();
    void labelsForThreadsThatComeAndGo();
};

void TagThreadsLabelsTest::labelsForWhicheverThreadComesFirst()
{
    TagSystem *tags = TagSystem::instance(key);
    const LogRecorder log;
    for (int round = 0; round < 5; ++round) {
        for (const QString &name : {words, blocks, scripted})
            label::freeLabel(name);
        label::freeCustomLabel(own);
        std::array<std::array<label::LabelInterface *, 6>, threadCount> got{};
        onAllThreads([&](int number) {
            for (int i = 0; i < 6; ++i) {
                const int link = (number + i) % 6;
                got.at(static_cast<std::size_t>(number)).at(static_cast<std::size_t>(link)) = tags->getLable(link);
            }
        });
        for (const auto &ofThread : got) {
            for (std::size_t link = 0; link < ofThread.size(); ++link) {
                QCOMPARE(ofThread.at(link), got.front().at(link));
                QCOMPARE(ofThread.at(link) == nullptr, link == 0 || link == 4);
            }
        }
        QCOMPARE(got.front().at(1)->countBitTypes(), 1);
        QCOMPARE(got.front().at(5)->countBitTypes(), 0);
    }
    QCOMPARE(troubleIn(log), QStringList());
}

void TagThreadsLabelsTest::labelsForThreadsThatComeAndGo()
{
    TagSystem *tags = TagSystem::instance(key);
    const LogRecorder log;
    Texts wrong;
    for (int round = 0; round < 12; ++round) {
        std::thread visitor([&] {
            Work work{tags, Random(static_cast<quint32>(round))};
            for (const Operation &operation : commandOperations()) {
                if (!operation.isRight(work))
                    wrong.add(QString::fromLatin1(operation.name));
            }
        });
        visitor.join();
        label::freeLabel(round % 2 == 0 ? words : blocks);
        label::freeCustomLabel(own);
        std::thread next([&] {
            if (!tags->getLable(1) || !tags->getLable(5))
                wrong.add(QStringLiteral("getLable"));
        });
        next.join();
    }
    QCOMPARE(wrong.texts(), QStringList());
    QCOMPARE(troubleIn(log), QStringList());
}

QTEST_GUILESS_MAIN(TagThreadsLabelsTest)

#include "tst_tagthreads_labels.moc"
