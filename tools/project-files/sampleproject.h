// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_PROJECTFILES_SAMPLEPROJECT_H
#define ZELMAR_LABEL_PROJECTFILES_SAMPLEPROJECT_H

#include "importplan.h"

#include <QString>

class QSqlDatabase;
class TagSystem;

/// Writes four links, one of them disabled, with stations, and two hundred tags of all types that their drivers accept.
/// On failure it returns false, with the reason in `error` unless the library has shown it; the caller rolls back.
bool writeSampleProject(const QSqlDatabase &database, TagSystem &tags, const AddressRefusal &refusal, QString &error);

#endif
