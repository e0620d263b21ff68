// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_store/labelcache_p.h"

#include "zelmar_label/label_store/labelreader.h"
#include "zelmar_label/label_table/labelloader.h"
#include "zelmar_label/label_table/releasestorage_p.h"

#include <QSqlDatabase>

namespace label {

std::recursive_mutex &labelStoreLock()
{
    static std::recursive_mutex lock;
    return lock;
}

void LabelCache::freeAll()
{
    for (Entry &entry : m_labels)
        entry.hold.reset();
}

LabelCache::Entry LabelCache::findOrRead(const QString &name, QString &errorMessage, bool (*open)(QSqlDatabase &),
                                         void (*finish)())
{
    const auto known = m_labels.constFind(name);
    if (known != m_labels.constEnd())
        return *known;
    LabelInterface *label = nullptr;
    {
        QSqlDatabase db;
        if (!open(db)) {
            errorMessage = QStringLiteral("Can't create connection.");
            return {};
        }
        label = readLabel(db, name, errorMessage);
        if (!label)
            return {};
        db.close();
    }
    finish();
    return *m_labels.insert(name, {label, LabelHold(label, releaseStorage<LabelInterface>)});
}

LabelHold LabelCache::holdOf(const LabelInterface *label) const
{
    for (const Entry &entry : m_labels) {
        if (entry.hold.get() == label)
            return entry.hold;
    }
    return nullptr;
}

} // namespace label
