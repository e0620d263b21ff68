// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_SCREENSHOTS_WIDGETSCENES_H
#define ZELMAR_LABEL_SCREENSHOTS_WIDGETSCENES_H

class Pictures;

/// The pickers and the panel for runs of tags. False if one cannot be drawn.
bool drawWidgets(const Pictures &pictures);

#endif
