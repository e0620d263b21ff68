// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_LABELREADER_H
#define ZELMAR_LABEL_LABELREADER_H

class QSqlDatabase;
class QString;

namespace label {

class LabelLoader;

/// Builds a label for driver `name` from the driver tables of `db`, an open connection of the calling thread. Its file
/// may be anywhere, but scripts are always beside the application. The connection stays open.
///
/// The caller owns the label and deletes it as a `LabelLoader`. Null on failure, with the reason in `errorMessage`,
/// which is unchanged otherwise. A missing general or device table gives a label without limits or rows, without a
/// message; so does a device table without a required column.
///
/// Not exported: programs of this project that link `zelmar_label_objects` use it.
LabelLoader *readLabel(const QSqlDatabase &db, const QString &name, QString &errorMessage);

} // namespace label

#endif
