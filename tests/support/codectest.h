// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_CODECTEST_H
#define ZELMAR_LABEL_TESTS_CODECTEST_H

#include "support/valuestest.h"

#include <QByteArray>
#include <QString>

/// Rows of a number type have id 100 plus the type, texts 200 plus their length.
constexpr int numbers = 100;
constexpr int texts = 200;
constexpr int textOfNegativeLength = 299;

QString hexOf(const QByteArray &bytes);
QByteArray fromHex(const QString &hex);

/// A tag's value as bytes and back.
class CodecTest : public ValuesTest
{
    Q_OBJECT

protected Q_SLOTS:
    void initTestCase();

protected:
    /// Test data: the tags without a valid type.
    static void unknownTypes();
};

#endif
