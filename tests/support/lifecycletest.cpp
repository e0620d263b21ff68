// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/lifecycletest.h"

#include "support/labelfixtures.h"

#include <QCoreApplication>
#include <QDir>

const QString LifecycleTest::key = QStringLiteral("4711");
const QString LifecycleTest::otherKey = QStringLiteral("4712");
const QString LifecycleTest::compiling = QStringLiteral("TOLV_compileing");
const QString LifecycleTest::allTables = QStringLiteral("SELECT name FROM sqlite_master ORDER BY name");
const QString LifecycleTest::noProject = QStringLiteral("critical|Tag Error|Current project point is null!");
const QString LifecycleTest::noConnection =
    QStringLiteral("critical|Database Error|TagSystem::init() tag database not exist ");
const QString LifecycleTest::notOpened = QStringLiteral("critical|Database Error|Unable to open default Tag database.");
const QString LifecycleTest::fileNotMade =
    QStringLiteral("warning|Error|Unable to create Tag database file. Please check for free space in the disk.");
const QString LifecycleTest::noOpenDatabase = QStringLiteral("warning|Error|Unable to open database.");
const QString LifecycleTest::standAloneNotOpened = QStringLiteral("warning|Error|Unable to open Tag database.");

void LifecycleTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_messages = std::make_unique<MessageRecorder>();
    QDir(databaseFolder()).removeRecursively();
}

void LifecycleTest::cleanup()
{
    dropProjects();
    setCurrentProject(QVariant());
    m_messages.reset();
    m_folder.reset();
    QDir(databaseFolder()).removeRecursively();
}

void LifecycleTest::setCurrentProject(const QVariant &project)
{
    qApp->setProperty("currentProject", project);
}
