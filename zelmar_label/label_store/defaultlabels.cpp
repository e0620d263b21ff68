// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

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

} // namespace

bool createDatabaseConnection(QSqlDatabase &db)
{
    return openLabelDatabase(db, QStringLiteral("drivers"));
}

LabelInterface *createLabel(const QString &name, QString &errorMessage)
{
    return labelCache().findOrRead(name, errorMessage, createDatabaseConnection, removeLabelDatabase);
}

void freeLabel(const QString &name)
{
    labelCache().free(name);
}

void freeLabels()
{
    labelCache().freeAll();
}

void removeLabelDatabase() {}

} // namespace label
