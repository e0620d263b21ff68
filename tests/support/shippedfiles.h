// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_SHIPPEDFILES_H
#define ZELMAR_LABEL_TESTS_SHIPPEDFILES_H

#include <QString>

/// The build's folders for the database and the scripts of the shipped drivers, and their source folder.
QString runtimeFolder();
QString sourceFolder();

/// Copies the scripts of the shipped drivers to the folder beside the test program that labels use.
void bringScriptsHere();

/// The same for database and scripts.
void bringDriversHere();

#endif
