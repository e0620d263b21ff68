// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_store/labelconnection_p.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QString>
#include <QThread>

#include <map>

namespace label {

namespace {

/// The drivers of the connections that this file registered, by the connection's name. Null after the connection was
/// removed or replaced.
std::map<QString, QPointer<QSqlDriver>> &ownDrivers()
{
    static std::map<QString, QPointer<QSqlDriver>> drivers;
    return drivers;
}

QString databasePath(const QString &fileName)
{
    QDir folder(QCoreApplication::applicationDirPath());
    folder.cd(QStringLiteral("database"));
    return QFileInfo(folder, fileName).absoluteFilePath();
}

/// True for a connection that this file registered on another thread. Qt allows a connection only in its own thread.
bool isOwnOfOtherThread(const QString &name)
{
    const QPointer<QSqlDriver> driver = ownDrivers()[name];
    return driver && driver->thread() != QThread::currentThread();
}

QSqlDatabase connection(const QString &name)
{
    if (QSqlDatabase::contains(name) && !isOwnOfOtherThread(name))
        return QSqlDatabase::database(name, true);
    QSqlDatabase::removeDatabase(name);
    const QSqlDatabase added = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
    ownDrivers()[name] = added.driver();
    return added;
}

} // namespace

bool openLabelDatabase(QSqlDatabase &db, const QString &name)
{
    if (db.isOpen())
        return true;
    const QString path = databasePath(name);
    db = connection(name);
    db.setDatabaseName(path);
    if (db.open())
        return true;
    qDebug() << QStringLiteral("Can't open label database %1").arg(path);
    return false;
}

} // namespace label
