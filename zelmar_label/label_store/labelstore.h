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

} // namespace label

#endif
