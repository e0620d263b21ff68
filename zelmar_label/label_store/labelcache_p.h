// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_LABELCACHE_P_H
#define ZELMAR_LABEL_LABELCACHE_P_H

#include "zelmar_label/label_table/labelinterface.h"
#include "zelmar_label/label_table/releasestorage_p.h"

#include <QMap>
#include <QString>

class QSqlDatabase;

namespace label {

/// Driver name to label. The store owns the labels; callers get plain pointers.
class LabelCache
{
public:
    /// Null when there is none.
    LabelInterface *find(const QString &name) const { return m_labels.value(name); }

    void insert(const QString &name, LabelInterface *label) { m_labels.insert(name, label); }

    /// Frees the label's storage and forgets it. Ignores an unknown name.
    void free(const QString &name) { releaseStorage(m_labels.take(name)); }

    /// Frees the storage of all labels, in the order of their names, and keeps the stale pointers.
    void freeAll() const
    {
        for (LabelInterface *label : m_labels)
            releaseStorage(label);
    }

    /// The label of driver `name`. The first call reads it from the database that `open` opens, then calls `finish`.
    /// Null on failure, with the reason in `errorMessage`; nothing is kept then, and the connection stays open.
    LabelInterface *findOrRead(const QString &name, QString &errorMessage, bool (*open)(QSqlDatabase &),
                               void (*finish)());

private:
    QMap<QString, LabelInterface *> m_labels;
};

} // namespace label

#endif
