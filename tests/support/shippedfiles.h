// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_SHIPPEDFILES_H
#define ZELMAR_LABEL_TESTS_SHIPPEDFILES_H

#include <QString>

/// Where the build puts the database and the scripts of the shipped drivers, and where their sources are.
QString runtimeFolder();
QString sourceFolder();

/// Puts the scripts of the shipped drivers beside the test program, where labels look for them.
void bringScriptsHere();

/// The same for their database and their scripts.
void bringDriversHere();

#endif
