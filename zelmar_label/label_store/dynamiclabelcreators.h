// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_DYNAMICLABELCREATORS_H
#define ZELMAR_LABEL_DYNAMICLABELCREATORS_H

#include "zelmar_label/label_table/addressfamily.h"

#include <QString>

#include <atomic>

namespace label {

/// Returns the creator for the exact driver name; a `DefaultCreator` for a driver without families. The caller owns it.
DynamicLabelCreatorInterface *createDynamicLabelCreator(const QString &driverName);

/// Has no family: refuses every address.
class DefaultCreator : public FamilyCreator
{
public:
    DefaultCreator();
};

/// The data blocks DB1 to DB2047: DB12.DBB4, DB12.DBW4, DB12.DBD4, DB12.DBX4 and DB12.DBX4.7.
class IsoOnTcpCerator : public FamilyCreator
{
public:
    IsoOnTcpCerator();
};

/// The data files 9 to 255: N9:5, N9:5/15, F9:5, B9:5, T9:5.ACC, T9:5/DN, C9:5.PRE, C9:5/CU and so on. Files below 9
/// are fixed rows of the drivers' tables.
class DF1Creator : public FamilyCreator
{
public:
    DF1Creator();
    bool create(const QString &address, DynamicLabelItem &item) override;
    bool foresee(const QString &address, DynamicLabelItem &item) const override;
    bool isAtRest() const override { return atRest; }

private:
    /// The prefix of the last address, if that was a bit of a timer. The rows of counter bits get it as their symbol:
    /// the editor shows the template's symbol anyway.
    QString lastTimer;
    /// True for an empty one; other threads ask while one creates.
    std::atomic<bool> atRest = true;
};

/// The buffer memory of modules: U1\G100.
class Fx5uEthCreator : public FamilyCreator
{
public:
    Fx5uEthCreator();
};

/// The parameters of a drive: USIGN16:3:9, USIGN16:3:9.15, STRING:3:0 and so on.
class LustBusCreator : public FamilyCreator
{
public:
    LustBusCreator();
};

} // namespace label

#endif
