// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_LABELHOLD_P_H
#define ZELMAR_LABEL_LABELHOLD_P_H

#include <memory>

class QString;

namespace label {

class LabelInterface;

/// Keeps a label's storage while part of the library uses it, also after `freeLabel`.
using LabelHold = std::shared_ptr<LabelInterface>;

/// As `createLabel` and `createCustomLabel`; also null after `freeLabels` and `freeCustomLabels`.
LabelHold holdLabel(const QString &name, QString &errorMessage);
LabelHold holdCustomLabel(const QString &name, QString &errorMessage);

/// A hold of a label that a caller gives. A label that the store did not make is the caller's: this does not keep it.
LabelHold holdLabel(LabelInterface *label);

} // namespace label

#endif
