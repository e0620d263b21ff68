// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_LABELSTOREMESSAGES_H
#define ZELMAR_LABEL_TESTS_LABELSTOREMESSAGES_H

#include <QString>

/// What the label store gives as the error; "untouched" is a test's own, which stays where the store leaves it alone.
inline const QString untouched = QStringLiteral("untouched");
inline const QString unknownDriver = QStringLiteral("Cant found driver table in label.");
inline const QString noConnection = QStringLiteral("Can't create connection.");

#endif
