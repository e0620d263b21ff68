// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_store/labelcache_p.h"
#include "zelmar_label/label_store/labelconnection_p.h"
#include "zelmar_label/label_store/labelreader.h"
#include "zelmar_label/label_store/labelstore.h"
#include "zelmar_label/label_table/labelloader.h"

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
    if (LabelInterface *cached = labelCache().find(name))
        return cached;
    QSqlDatabase db;
    if (!createDatabaseConnection(db)) {
        errorMessage = QStringLiteral("Can't create connection.");
        return nullptr;
    }
    LabelInterface *label = readLabel(db, name, errorMessage);
    if (!label)
        return nullptr;
    db.close();
    labelCache().insert(name, label);
    return label;
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
