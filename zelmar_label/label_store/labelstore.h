// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_LABELSTORE_H
#define ZELMAR_LABEL_LABELSTORE_H

#include "zelmar_label/zelmar_label_export.h"

class QSqlDatabase;
class QString;

/// The store of labels: it reads the driver database, builds a label for each driver that is asked for, and keeps it.
///
/// The driver database is the SQLite file "drivers" in the folder "database" beside the application (or, if there is no
/// such folder, beside the application itself). It is only read. "drivers" is also the name of the Qt database
/// connection.
///
/// A driver can be switched to a *custom label*: a private copy of its grammar in tables that the user's installation
/// owns, in the SQLite file "customdrivers" of the same folder, which the library makes and writes. "customdrivers" is
/// also the name of its connection. Nothing here writes rows into a custom device table; they come from the program
/// around the library.
///
/// Nothing here is locked: labels are made and freed on one thread at a time, which may be another one each time.
namespace label {

class LabelInterface;

/// Opens the driver database into `db`. True when it is open, also when `db` was open before; false, after a line in
/// the debug log, when it cannot be opened. A file that is missing is made by SQLite, empty, where the folder can be
/// written.
ZELMAR_LABEL_EXPORT bool createDatabaseConnection(QSqlDatabase &db);

/// The label of driver `name` (case-sensitive), built on the first call and from then on the same object, until
/// `freeLabel`. The store owns it. Null on failure, with the reason in `errorMessage`, which is untouched otherwise;
/// nothing is kept of a failed build, so that the next call tries again.
ZELMAR_LABEL_EXPORT LabelInterface *createLabel(const QString &name, QString &errorMessage);

/// Frees the label of driver `name`; pointers to it are stale from then on. A driver without a label is ignored. The
/// label's own storage is given back, its rows and its creator stay allocated.
ZELMAR_LABEL_EXPORT void freeLabel(const QString &name);

/// Frees all labels, for the end of the process: the store keeps the stale pointers, so that neither `createLabel` nor
/// `freeLabel` may be called for a freed driver afterwards.
ZELMAR_LABEL_EXPORT void freeLabels();

/// Does nothing: the connection to the driver database stays registered for the life of the process.
ZELMAR_LABEL_EXPORT void removeLabelDatabase();

/// Opens the custom database into `db`, making the file and its table of drivers where they are missing. True when it
/// is open, also when `db` was open before.
ZELMAR_LABEL_EXPORT bool createCustomDatabaseConnection(QSqlDatabase &db);

/// True when driver `name` is to use its custom label. The file is read once, at the first call; if it cannot be opened
/// then, every driver reads as default from then on.
ZELMAR_LABEL_EXPORT bool useCustomLabel(const QString &name);

/// Switches driver `name`, one of the driver database, to its custom label, creating its tables where they are missing;
/// tables that are there keep their rows and limits. False, with a line in the debug log, when a step fails; earlier
/// steps stay. A driver name with "-" or "/" in it makes no table name and always fails. A cached label is not touched.
ZELMAR_LABEL_EXPORT bool setupCustomLabel(const QString &name);

/// Makes driver `name` use its default label again. Its custom tables stay. True also for a driver that was never
/// switched; false, with a line in the debug log, when the custom database cannot be written.
ZELMAR_LABEL_EXPORT bool setupDefaultLabel(const QString &name);

/// The custom label of driver `name`, as `createLabel` gives the default one, from a cache of its own.
ZELMAR_LABEL_EXPORT LabelInterface *createCustomLabel(const QString &name, QString &errorMessage);

/// As `freeLabel` and `freeLabels`, for custom labels.
ZELMAR_LABEL_EXPORT void freeCustomLabel(const QString &name);
ZELMAR_LABEL_EXPORT void freeCustomLabels();

/// Removes the connection to the custom database; the next use adds it again.
ZELMAR_LABEL_EXPORT void removeCustomLabelDatabase();

} // namespace label

#endif
