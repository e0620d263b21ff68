// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_RELEASESTORAGE_P_H
#define ZELMAR_LABEL_RELEASESTORAGE_P_H

#include <new>

namespace label {

/// Frees the storage of an object made with `new` whose interface has no virtual destructor. Does not run the
/// destructor: the data of the members stays allocated, because callers may still use it. Ignores a null pointer.
template<typename Interface>
void releaseStorage(Interface *object)
{
    ::operator delete(dynamic_cast<void *>(object));
}

} // namespace label

#endif
