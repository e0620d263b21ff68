// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_NAMED_P_H
#define ZELMAR_LABEL_NAMED_P_H

#include <QString>

namespace label {

/// Sets the object name and returns `object`.
template<typename Object>
Object *named(Object *object, const char *name)
{
    object->setObjectName(QLatin1String(name));
    return object;
}

} // namespace label

#endif
