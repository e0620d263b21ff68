// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_LABELSTORE_H
#define ZELMAR_LABEL_LABELSTORE_H

#include "zelmar_label/zelmar_label_export.h"

class QSqlDatabase;
class QString;

/// The store of labels: it reads the driver database, and builds and keeps a label for each requested driver.
///
/// The driver database is the SQLite file "drivers" in the folder "database" beside the application; without such a
/// folder, the file beside the application. The store only reads it. Its Qt database connection is also named
/// "drivers".
///
/// A driver can be switched to a *custom label*: a private copy of its grammar in the SQLite file "customdrivers" of
/// the same folder. The user's installation owns these tables; the library makes and writes the file. Its connection is
/// also named "customdrivers". The library never writes rows into a custom device table; the calling program does.
///
/// Any thread may call these functions: they wait for each other. Labels may be used on all threads.
namespace label {

class LabelInterface;

/// Opens the driver database into `db`. Returns true when it is open, also when `db` was open before. When it cannot be
/// opened, writes a line to the debug log and returns false. SQLite makes a missing file, empty, if it can write to the
/// folder.
ZELMAR_LABEL_EXPORT bool createDatabaseConnection(QSqlDatabase &db);

/// Returns the label of driver `name` (case-sensitive). The first call builds it; later calls return the same object,
/// until `freeLabel`. The store owns it. Null on failure, with the reason in `errorMessage`, which is unchanged
/// otherwise. A failed build is not kept: the next call tries again.
ZELMAR_LABEL_EXPORT LabelInterface *createLabel(const QString &name, QString &errorMessage);

/// Frees the label of driver `name`. A caller's pointer to it is stale afterwards. A tag system or a picker that uses
/// the label keeps it until it needs it no more. Does nothing for a driver without a label. Frees only the label's own
/// storage; its rows and its creator stay allocated.
ZELMAR_LABEL_EXPORT void freeLabel(const QString &name);

/// Frees all labels at the end of the process, as `freeLabel` does. The store keeps the stale pointers: `createLabel`
/// for a freed driver returns its stale pointer until `freeLabel` forgets it. Tag systems find no label for it.
ZELMAR_LABEL_EXPORT void freeLabels();

/// Does nothing: the connection to the driver database stays registered for the life of the process.
ZELMAR_LABEL_EXPORT void removeLabelDatabase();

/// Opens the custom database into `db`; makes the file and its table of drivers if they are missing. Returns true when
/// it is open, also when `db` was open before.
ZELMAR_LABEL_EXPORT bool createCustomDatabaseConnection(QSqlDatabase &db);

/// Returns true when driver `name` uses its custom label. The first call reads the file, later calls do not; if it
/// cannot be opened, every driver counts as default afterwards.
ZELMAR_LABEL_EXPORT bool useCustomLabel(const QString &name);

/// Switches driver `name` of the driver database to its custom label and creates missing tables; existing tables keep
/// their rows and limits. When a step fails, writes a line to the debug log and returns false; earlier steps stay. A
/// driver name with "-" or "/" makes no table name and always fails. A cached label does not change.
ZELMAR_LABEL_EXPORT bool setupCustomLabel(const QString &name);

/// Makes driver `name` use its default label again. Its custom tables stay. Returns true also for a driver that was
/// never switched; false, with a line in the debug log, when the custom database cannot be written.
ZELMAR_LABEL_EXPORT bool setupDefaultLabel(const QString &name);

/// Returns the custom label of driver `name`, as `createLabel` returns the default one. It has its own cache.
ZELMAR_LABEL_EXPORT LabelInterface *createCustomLabel(const QString &name, QString &errorMessage);

/// As `freeLabel` and `freeLabels`, for custom labels.
ZELMAR_LABEL_EXPORT void freeCustomLabel(const QString &name);
ZELMAR_LABEL_EXPORT void freeCustomLabels();

/// Removes the connection to the custom database; the next use adds it again.
ZELMAR_LABEL_EXPORT void removeCustomLabelDatabase();

} // namespace label

#endif
