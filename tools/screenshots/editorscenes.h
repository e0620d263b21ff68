// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_SCREENSHOTS_EDITORSCENES_H
#define ZELMAR_LABEL_SCREENSHOTS_EDITORSCENES_H

class Pictures;

/// Draws the example editor with the sample project. False if one picture cannot be drawn.
bool drawEditor(const Pictures &pictures);

#endif
