// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_NEWDRIVER_H
#define ZELMAR_LABEL_TOOL_NEWDRIVER_H

#include "commandline.h"
#include "output.h"

/// Writes a template driver file and its samples, or neither. Does not overwrite files, and refuses names that prevent
/// a custom label.
ExitCode writeNewDriver(const Request &request, const Streams &streams);

#endif
