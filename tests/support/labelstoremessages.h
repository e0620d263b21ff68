// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_LABELSTOREMESSAGES_H
#define ZELMAR_LABEL_TESTS_LABELSTOREMESSAGES_H

#include <QString>

/// The error texts of the label store; "untouched" is set by tests and stays if the store does not write.
inline const QString untouched = QStringLiteral("untouched");
inline const QString unknownDriver = QStringLiteral("Cant found driver table in label.");
inline const QString noConnection = QStringLiteral("Can't create connection.");

#endif
