// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/projecttest.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTest>

const QString key = QStringLiteral("11");
const QString otherKey = QStringLiteral("a connection of others");
const QString allRows = QStringLiteral("SELECT * FROM custom_tag_table ORDER BY id");
const QString idsAndNames = QStringLiteral("SELECT id, name FROM custom_tag_table ORDER BY id");

TagRow tag(int id, const QString &name, int connectorId)
{
    TagRow row;
    row.id = id;
    row.name = name;
    row.connectorId = connectorId;
    return row;
}

void ProjectTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_path = m_folder->filePath(QStringLiteral("project.db"));
    m_messages = std::make_unique<MessageRecorder>();
    makeProject(m_path, key);
}

void ProjectTest::cleanup()
{
    QCOMPARE(m_messages->take(), QStringList());
    dropProjects();
    m_messages.reset();
    m_folder.reset();
}

TagSystem *ProjectTest::bound()
{
    return TagSystem::instance(key);
}

QStringList ProjectTest::reloaded()
{
    QStringList names;
    QSqlQuery query(QSqlDatabase::database(key, false));
    if (!query.exec(QStringLiteral("select name,id from custom_tag_table")))
        return {query.lastError().text()};
    while (query.next())
        names.append(query.value(0).toString());
    return names;
}
