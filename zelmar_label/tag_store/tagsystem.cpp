// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/tag_store/tagsystem.h"

#include "zelmar_label/tag_store/tagmessages_p.h"
#include "zelmar_label/tag_store/tagnamelist_p.h"
#include "zelmar_label/tag_store/tagstatements_p.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>

using label::MessageKind;

QMap<QString, TagSystem *> *TagSystem::s_instanceMap = nullptr;
TagSystem *TagSystem::s_defaultInstance = nullptr;

namespace {

QVariant applicationProperty(const char *name)
{
    const QCoreApplication *application = QCoreApplication::instance();
    return application ? application->property(name) : QVariant();
}

/// True in a process that only reads a finished project: tags no longer change there.
bool isTolvEnvironment()
{
    return applicationProperty("tolv_env").isValid();
}

bool isMainThread()
{
    const QCoreApplication *application = QCoreApplication::instance();
    return !application || application->thread() == QThread::currentThread();
}

} // namespace

TagSystem::TagSystem(QObject *parent)
    : QObject(parent)
    , m_tagNames(std::make_unique<label::TagNameList>())
{
    initSystemTags();
}

TagSystem::~TagSystem()
{
    closeDatabase();
}

TagSystem *TagSystem::instance(QString key)
{
    if (!s_instanceMap)
        s_instanceMap = new QMap<QString, TagSystem *>;
    if (!s_instanceMap->contains(key)) {
        auto *made = new TagSystem(nullptr);
        if (!key.isEmpty()) {
            made->init(key);
            if (isTolvEnvironment()) {
                made->initCatchTable();
                s_defaultInstance = made;
            }
        }
        s_instanceMap->insert(key, made);
    }
    return s_instanceMap->value(key);
}

TagSystem *TagSystem::instance()
{
    if (s_defaultInstance)
        return s_defaultInstance;
    const QVariant project = applicationProperty("currentProject");
    if (!isTolvEnvironment() && !project.isValid()) {
        label::showMessage(MessageKind::Critical, tr("Tag Error"), tr("Current project point is null!"));
        return nullptr;
    }
    return instance(QString::number(project.toULongLong(), 10));
}

void TagSystem::drop()
{
    if (!s_instanceMap)
        return;
    qDeleteAll(*s_instanceMap);
    delete s_instanceMap;
    s_instanceMap = nullptr;
}

bool TagSystem::init(const QString &connectionName)
{
    m_database = QSqlDatabase::database(connectionName, true);
    if (!m_database.isValid()) {
        label::showMessage(MessageKind::Critical, tr("Database Error"),
                           tr("TagSystem::init() tag database not exist "));
        return false;
    }
    m_columnTypes.clear();
    m_columnNames.clear();
    settingTagTableColumns();
    if (!m_database.isOpen() && !m_database.open()) {
        label::showMessage(MessageKind::Critical, tr("Database Error"), tr("Unable to open default Tag database."));
        return true;
    }
    qDebug() << "---------------------" << QSqlDatabase::connectionNames();
    createCustomTable();
    refreshTagNames();
    return true;
}

bool TagSystem::createDatabaseConnection(const QString &fileName)
{
    QDir folder(QCoreApplication::applicationDirPath());
    folder.cd(QStringLiteral("database"));
    const QFileInfo file(folder, fileName);
    if (!file.exists())
        initializeTagDatabase(file.absoluteFilePath());
    m_database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), fileName);
    m_database.setDatabaseName(file.absoluteFilePath());
    const bool isOpen = m_database.open();
    if (isOpen)
        createCustomTable();
    else
        label::showMessage(MessageKind::Warning, tr("Error"), tr("Unable to open Tag database."));
    return isOpen;
}

void TagSystem::initializeTagDatabase(const QString &filePath)
{
    QFile file(filePath);
    if (!file.open(QIODevice::ReadWrite))
        label::showMessage(MessageKind::Warning, tr("Error"),
                           tr("Unable to create Tag database file. Please check for free space in the disk."));
    file.close();
    createCustomTable();
}

QSqlDatabase TagSystem::database() const
{
    const QString compiling = QStringLiteral("TOLV_compileing");
    if (isMainThread() || isTolvEnvironment() || !QSqlDatabase::contains(compiling))
        return m_database;
    return QSqlDatabase::database(compiling, true);
}

void TagSystem::closeDatabase()
{
    if (!m_database.isOpen())
        return;
    label::TagStatements::forget(m_database);
    m_database.close();
    const QString name = m_database.connectionName();
    // Qt warns if a connection is removed while a copy of it exists.
    m_database = QSqlDatabase();
    QSqlDatabase::removeDatabase(name);
}

QString TagSystem::customTagTableName() const
{
    return QStringLiteral("custom_tag_table");
}
