// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TOOL_SAMPLEPROJECT_H
#define ZELMAR_LABEL_TOOL_SAMPLEPROJECT_H

#include "output.h"

class QString;

/// Makes the project `path`: four links, one of them disabled, with stations, and two hundred tags of all types that
/// their drivers accept. Refuses to overwrite a file, and leaves none when something fails.
ExitCode makeSampleProject(const QString &path, const Streams &streams);

#endif
