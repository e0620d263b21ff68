// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_NEWDRIVER_H
#define ZELMAR_LABEL_TOOL_NEWDRIVER_H

#include "commandline.h"
#include "output.h"

/// Writes the driver file to begin with and its samples, or neither. Refuses to overwrite a file, and names that would
/// stand in the way of a custom label.
ExitCode writeNewDriver(const Request &request, const Streams &streams);

#endif
