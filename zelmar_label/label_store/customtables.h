// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_CUSTOMTABLES_H
#define ZELMAR_LABEL_CUSTOMTABLES_H

#include <QString>

namespace label {

/// The tables of one driver's custom label in a custom database, and the statements that make them. Names that differ
/// only in blanks and underscores share their tables.
///
/// Not exported: programs of this project that link `zelmar_label_objects` use it.
struct CustomTables
{
    explicit CustomTables(QString driver);

    /// False for a driver whose name makes no plain table names, such as one with a "-", "/" or quote: SQLite would
    /// refuse the statements or run a part of the name.
    bool canBeCreated() const;

    /// Makes the table of all drivers.
    static QString createIndex();
    QString createGeneral() const;
    QString createDevice() const;

    QString general;
    QString device;
};

} // namespace label

#endif
