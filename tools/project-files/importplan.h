// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_PROJECTFILES_IMPORTPLAN_H
#define ZELMAR_LABEL_PROJECTFILES_IMPORTPLAN_H

#include "storedtext.h"
#include "tagcsv.h"

#include <QHash>
#include <QList>
#include <QString>

#include <functional>

class TagSystem;

/// Why the link's device has no item of the type at the address; empty if it has. `scale` is a text's length.
using AddressRefusal = std::function<QString(int linkId, int dataType, const QString &address, int scale)>;

/// The changes of a CSV import to a project: tags to add, tags to change, and refused rows. It reads rows and writes
/// tags one at a time, so that the caller can show progress and cancel.
class ImportPlan
{
public:
    struct Refusal
    {
        int line = 0;
        QString name;
        QString reason;
    };

    ImportPlan(TagSystem &tags, const AddressRefusal &refusal);

    /// Why this text cannot be the name of a new or renamed tag by its form; empty if it can.
    static QString nameRefusal(const TagSystem &tags, const StoredText &stored, const QString &name);

    /// Reads the tags before the import. False, with the database's message, if they cannot be read.
    bool readKnownTags(const QSqlDatabase &project, QString &error);

    void readRow(const TagColumns &columns, const CsvRow &row);

    const QList<Refusal> &refusals() const { return m_refusals; }
    int added() const { return m_added.size(); }
    int changed() const { return m_changed.size(); }
    int unchanged() const { return m_unchanged; }

    int writeCount() const { return added() + changed(); }
    /// Writes tag `index` of `writeCount`. False if the project refuses it.
    bool write(int index);

private:
    struct Known
    {
        PlainTag tag;
        int count = 0;
    };

    QString refusalOf(const PlainTag &tag) const;

    TagSystem &m_tags;
    AddressRefusal m_refusal;
    StoredText m_stored;
    QHash<QString, Known> m_known;
    QHash<QString, int> m_lines;
    QList<PlainTag> m_added;
    QList<PlainTag> m_changed;
    QList<Refusal> m_refusals;
    int m_unchanged = 0;
};

#endif
