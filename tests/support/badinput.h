// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_BADINPUT_H
#define ZELMAR_LABEL_TESTS_BADINPUT_H

#include "zelmar_label/address_grammar/commandformatter.h"

#include <QString>
#include <QStringList>

#include <limits>

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

/// Calls every query of a row for an address, and checks what is true for any text.
void askEverything(const label::CommandFormatter &row, const QString &address);

const QStringList &plainAddresses();

#endif
