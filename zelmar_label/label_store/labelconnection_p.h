// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_LABELCONNECTION_P_H
#define ZELMAR_LABEL_LABELCONNECTION_P_H

class QSqlDatabase;
class QString;

namespace label {

/// Opens the SQLite file `name` of the folder "database" beside the application into `db`, as the Qt connection `name`.
/// True at once when `db` is open. A registered connection of that name is used as it is; only one that this function
/// registered on another thread is replaced by one of the calling thread. False, after a line in the debug log, when
/// the file cannot be opened.
bool openLabelDatabase(QSqlDatabase &db, const QString &name);

} // namespace label

#endif
