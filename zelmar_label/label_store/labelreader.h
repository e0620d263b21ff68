// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_LABELREADER_H
#define ZELMAR_LABEL_LABELREADER_H

class QSqlDatabase;
class QString;

namespace label {

class LabelLoader;

/// Builds a label for driver `name` from the driver tables behind `db`, an open connection of the calling thread, whose
/// file may lie anywhere. Scripts are looked for beside the application all the same. The connection stays open.
///
/// The label is the caller's, to be deleted as a `LabelLoader`. Null on failure, with the reason in `errorMessage`,
/// which is untouched otherwise. A general or device table that is missing gives a label without limits or rows, in
/// silence, and so does a device table that lacks a column.
///
/// Not exported: programs of this project that link `zelmar_label_objects` use it.
LabelLoader *readLabel(const QSqlDatabase &db, const QString &name, QString &errorMessage);

} // namespace label

#endif
