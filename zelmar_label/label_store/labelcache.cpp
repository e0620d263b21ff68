// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_store/labelcache_p.h"

#include "zelmar_label/label_store/labelreader.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QSqlDatabase>

namespace label {

LabelInterface *LabelCache::findOrRead(const QString &name, QString &errorMessage, bool (*open)(QSqlDatabase &),
                                       void (*finish)())
{
    if (LabelInterface *known = find(name))
        return known;
    LabelInterface *label = nullptr;
    {
        QSqlDatabase db;
        if (!open(db)) {
            errorMessage = QStringLiteral("Can't create connection.");
            return nullptr;
        }
        label = readLabel(db, name, errorMessage);
        if (!label)
            return nullptr;
        db.close();
    }
    finish();
    insert(name, label);
    return label;
}

} // namespace label
