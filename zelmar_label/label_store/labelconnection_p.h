// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_LABELCONNECTION_P_H
#define ZELMAR_LABEL_LABELCONNECTION_P_H

class QSqlDatabase;
class QString;

namespace label {

/// Opens the SQLite file `name` of the folder "database" beside the application into `db`, as the Qt connection `name`.
/// Returns true at once when `db` is open. Uses a registered connection of that name unchanged; only replaces one that
/// this function registered on another thread. When the file cannot be opened, writes a line to the debug log and
/// returns false.
bool openLabelDatabase(QSqlDatabase &db, const QString &name);

} // namespace label

#endif
