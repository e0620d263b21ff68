// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_BENCHMARKS_JUDGEFIXTURES_H
#define ZELMAR_LABEL_BENCHMARKS_JUDGEFIXTURES_H

#include "zelmar_label/label_table/labelloader.h"

#include <QSqlDatabase>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

/// A shipped driver without its rows with a script, and its samples, the accepted ones as far as the rest accepts them.
struct JudgedDriver
{
    QString name;
    QStringList accepted;
    QStringList refused;
};

/// The shipped drivers in a database of their own, open as long as this object.
class JudgedDrivers
{
public:
    JudgedDrivers();
    ~JudgedDrivers();
    Q_DISABLE_COPY(JudgedDrivers)

    const QSqlDatabase &database() const { return m_database; }
    const std::vector<JudgedDriver> &all() const { return m_all; }
    /// Ends the program for an unknown name.
    const JudgedDriver &driver(const QString &name) const;

    /// A label without rows of families.
    std::unique_ptr<label::LabelLoader> label(const QString &name) const;

private:
    QSqlDatabase m_database;
    std::vector<JudgedDriver> m_all;
};

/// A driver that has `count` rows of the shipped drivers, and its rows are not repeated. Its name is "many rows".
extern const QString manyRowsDriver;

/// `count` texts of the list in an order that is the same in each run but has no pattern.
QStringList mixed(const QStringList &texts, int count);

/// The addresses with the station 3 in front.
QStringList withStations(const QStringList &addresses);

/// The label of "ISO on TCP" with rows of data blocks, up to `rows` rows, and the addresses that added them.
struct FamilyLabel
{
    std::unique_ptr<label::LabelLoader> label;
    QStringList members;
};
FamilyLabel familyLabel(const JudgedDrivers &drivers, int rows);

#endif
