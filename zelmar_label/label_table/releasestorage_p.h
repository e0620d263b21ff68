// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_RELEASESTORAGE_P_H
#define ZELMAR_LABEL_RELEASESTORAGE_P_H

#include <new>

namespace label {

/// Gives back the storage of an object made with `new` whose interface has no virtual destructor. The destructor is not
/// run, so what the object's members hold stays allocated: nobody who still uses a part of it is pulled the ground
/// away. A null pointer is ignored.
template<typename Interface>
void releaseStorage(Interface *object)
{
    ::operator delete(dynamic_cast<void *>(object));
}

} // namespace label

#endif
