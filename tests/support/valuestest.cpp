// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/valuestest.h"

#include <QTest>

TagRow tag(int id, int type, int scale)
{
    TagRow row;
    row.id = id;
    row.name = QStringLiteral("Tag %1").arg(id);
    row.dataType = type;
    row.scale = scale;
    return row;
}

void ValuesTest::init()
{
    m_messages = std::make_unique<MessageRecorder>();
    m_log = std::make_unique<LogRecorder>();
}

void ValuesTest::cleanup()
{
    const QStringList lines = m_log->lines();
    m_log.reset();
    QCOMPARE(lines, QStringList());
    QCOMPARE(m_messages->take(), QStringList());
    m_messages.reset();
}

void ValuesTest::cleanupTestCase()
{
    dropProjects();
    m_folder.reset();
}

void ValuesTest::bindTo(const QList<TagRow> &rows)
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    makeProject(m_folder->filePath(QStringLiteral("project")), key);
    writeTags(key, rows);
    m_tags = TagSystem::instance(key);
}
