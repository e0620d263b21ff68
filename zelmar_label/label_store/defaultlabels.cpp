// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_store/labelconnection_p.h"
#include "zelmar_label/label_store/labelreader.h"
#include "zelmar_label/label_store/labelstore.h"
#include "zelmar_label/label_table/labelloader.h"
#include "zelmar_label/label_table/releasestorage_p.h"

#include <QMap>
#include <QSqlDatabase>
#include <QString>

namespace label {

namespace {

QString connectionName()
{
    return QStringLiteral("drivers");
}

/// Driver name to label. The labels are the store's; everybody else gets plain pointers.
QMap<QString, LabelInterface *> &labelCache()
{
    static QMap<QString, LabelInterface *> cache;
    return cache;
}

} // namespace

bool createDatabaseConnection(QSqlDatabase &db)
{
    return openLabelDatabase(db, connectionName());
}

LabelInterface *createLabel(const QString &name, QString &errorMessage)
{
    const auto cached = labelCache().constFind(name);
    if (cached != labelCache().constEnd())
        return *cached;
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
    releaseStorage(labelCache().take(name));
}

void freeLabels()
{
    for (LabelInterface *label : qAsConst(labelCache()))
        releaseStorage(label);
}

void removeLabelDatabase() {}

} // namespace label
