// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/mutexlocker_p.h"
#include "zelmar_label/label_store/labelcache_p.h"
#include "zelmar_label/label_store/labelconnection_p.h"
#include "zelmar_label/label_store/labelstore.h"

#include <QSqlDatabase>
#include <QString>

namespace label {

namespace {

LabelCache &labelCache()
{
    static LabelCache cache;
    return cache;
}

LabelCache::Entry findOrRead(const QString &name, QString &errorMessage)
{
    return labelCache().findOrRead(name, errorMessage, createDatabaseConnection, removeLabelDatabase);
}

} // namespace

bool createDatabaseConnection(QSqlDatabase &db)
{
    return openLabelDatabase(db, QStringLiteral("drivers"));
}

LabelInterface *createLabel(const QString &name, QString &errorMessage)
{
    const MutexLocker<std::recursive_mutex> locker(&labelStoreLock());
    return findOrRead(name, errorMessage).label;
}

LabelHold holdLabel(const QString &name, QString &errorMessage)
{
    const MutexLocker<std::recursive_mutex> locker(&labelStoreLock());
    return findOrRead(name, errorMessage).hold;
}

LabelHold holdOfDefaultLabel(const LabelInterface *label)
{
    return labelCache().holdOf(label);
}

void freeLabel(const QString &name)
{
    const MutexLocker<std::recursive_mutex> locker(&labelStoreLock());
    labelCache().free(name);
}

void freeLabels()
{
    const MutexLocker<std::recursive_mutex> locker(&labelStoreLock());
    labelCache().freeAll();
}

void removeLabelDatabase() {}

} // namespace label
