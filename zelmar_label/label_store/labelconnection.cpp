// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_store/labelconnection_p.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <QSqlDatabase>
#include <QString>
#include <QThread>

#include <map>

namespace label {

namespace {

/// Threads to which this file's connections belong. Qt tells the thread of a connection only by a warning in the log.
std::map<QString, QPointer<QThread>> &connectionThreads()
{
    static std::map<QString, QPointer<QThread>> threads;
    return threads;
}

QString databasePath(const QString &fileName)
{
    QDir folder(QCoreApplication::applicationDirPath());
    folder.cd(QStringLiteral("database"));
    return QFileInfo(folder, fileName).absoluteFilePath();
}

QSqlDatabase addConnection(const QString &name)
{
    connectionThreads()[name] = QThread::currentThread();
    return QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
}

/// The registered connection, or an invalid one where there is none that this thread can use.
QSqlDatabase ownConnection(const QString &name)
{
    if (!QSqlDatabase::contains(name))
        return QSqlDatabase();
    const auto owner = connectionThreads().find(name);
    if (owner != connectionThreads().end() && owner->second != QThread::currentThread())
        return QSqlDatabase();
    return QSqlDatabase::database(name, true);
}

} // namespace

bool openLabelDatabase(QSqlDatabase &db, const QString &name)
{
    if (db.isOpen())
        return true;
    const QString path = databasePath(name);
    db = ownConnection(name);
    if (!db.isValid()) {
        QSqlDatabase::removeDatabase(name);
        db = addConnection(name);
    }
    db.setDatabaseName(path);
    if (db.open())
        return true;
    qDebug() << QStringLiteral("Can't open label database %1").arg(path);
    return false;
}

} // namespace label
