// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_LABELCACHE_P_H
#define ZELMAR_LABEL_LABELCACHE_P_H

#include "zelmar_label/label_store/labelhold_p.h"

#include <QMap>
#include <QString>

#include <mutex>

class QSqlDatabase;

namespace label {

/// Locked by each operation of the label store.
std::recursive_mutex &labelStoreLock();

/// Driver name to label. The caller holds `labelStoreLock()`.
class LabelCache
{
public:
    struct Entry
    {
        /// What callers get; stale after `freeAll`.
        LabelInterface *label = nullptr;
        /// Null after `freeAll`.
        LabelHold hold;
    };

    /// Forgets the label and frees its storage once nothing in the library holds it. Ignores an unknown name.
    void free(const QString &name) { m_labels.remove(name); }

    /// Frees the storage of all labels, in the order of their names, as `free` does, and keeps the stale pointers.
    void freeAll();

    /// The label of driver `name`. The first call reads it from the database that `open` opens, then calls `finish`.
    /// Null on failure, with the reason in `errorMessage`; nothing is kept then, and the connection stays open.
    Entry findOrRead(const QString &name, QString &errorMessage, bool (*open)(QSqlDatabase &), void (*finish)());

    /// The hold of a label of this cache; null for any other pointer.
    LabelHold holdOf(const LabelInterface *label) const;

private:
    QMap<QString, Entry> m_labels;
};

/// The hold of a label of the store of default labels; null for any other pointer.
LabelHold holdOfDefaultLabel(const LabelInterface *label);

} // namespace label

#endif
