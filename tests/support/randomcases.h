// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_RANDOMCASES_H
#define ZELMAR_LABEL_TESTS_RANDOMCASES_H

#include "support/labelfixtures.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <random>

/// Random numbers that are the same on every machine for the same seed.
class Random
{
public:
    explicit Random(quint32 seed)
        : m_engine(seed)
    {
    }

    int below(int end) { return static_cast<int>(m_engine() % static_cast<quint32>(end)); }
    bool chance(int percent) { return below(100) < percent; }

    template<typename List>
    auto pick(const List &list) -> typename List::value_type
    {
        return list.at(below(static_cast<int>(list.size())));
    }

private:
    std::mt19937 m_engine;
};

/// A pattern, and a text made with it that often matches.
struct PatternCase
{
    QString pattern;
    QString sample;
};

/// Any pattern, broken expressions included.
PatternCase nastyPattern(Random &random);

/// A pattern as in device tables: a symbol, a range string for the rule, sometimes a suffix.
PatternCase orderlyPattern(Random &random, const QString &ruleText);

/// `text` with a few characters changed, dropped, doubled or cut off, sometimes with a station.
QString mutated(Random &random, const QString &text);

/// A row with all kinds of columns, and a text that its pattern often accepts.
struct RowCase
{
    Row row;
    QString sample;
};
RowCase randomRow(Random &random);

/// Writes the scripts that the rules of random rows name.
void writeRandomScripts();

/// The columns of a row in one line, for a failing test.
QString described(const Row &row);

/// The rows of a driver file of the source tree, and addresses of it.
struct ShippedDriver
{
    QString name;
    QList<Row> rows;
    QStringList addresses;
};
QList<ShippedDriver> shippedDrivers();

/// Copies the scripts of the source tree's drivers beside the test program.
void copyShippedScripts();

#endif
