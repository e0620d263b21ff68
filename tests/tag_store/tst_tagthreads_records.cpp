// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/tagthreadstest.h"
#include "support/threads.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QtTest>

using namespace threads;

class TagThreadsRecordsTest : public TagThreadsTest
{
    Q_OBJECT

private Q_SLOTS:
    void recordsAndItemsAddedByAllThreads();
};

/// Tests queries that grow the maps in memory, together with queries that only read them.
void TagThreadsRecordsTest::recordsAndItemsAddedByAllThreads()
{
    TagSystem *tags = TagSystem::instance(key);
    Texts wrong;
    onAllThreads([&](int number) {
        for (int i = 0; i < 3000; ++i) {
            const int unknown = 100000 + i * threadCount + number;
            const Tag tag(i % tagCount + 1);
            const int systemId = 20300 + i % 400;
            const bool isRight =
                tags->getCommunicatorID(unknown) == -1 &&
                (i % 2 == 0 ? tags->getAccessModeByID(unknown) : tags->getDataTypeByID(unknown)) == 0 &&
                tags->getCommunicatorID(unknown) == 0 && tags->getCommunicatorID(tag.id) == tag.link() &&
                tags->getDataTypeByID(systemId) == 5 && tags->getTagNameById(systemId) == QLatin1String("s>invalid") &&
                tags->getIdByTagName(QStringLiteral("S>Second")) == 20027;
            if (!isRight) {
                wrong.add(QStringLiteral("thread %1 at %2").arg(number).arg(i));
                return;
            }
        }
    });
    QCOMPARE(wrong.texts(), QStringList());
    QCOMPARE(tags->getCommunicatorID(100000 + 3000 * threadCount - 1), 0);
    QCOMPARE(tags->getCommunicatorID(100000 + 3000 * threadCount), -1);
}

QTEST_GUILESS_MAIN(TagThreadsRecordsTest)

#include "tst_tagthreads_records.moc"
