// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "benchmarks/judgefixtures.h"

#include "benchmarks/measuring.h"
#include "tools/driver-files/driverfile.h"
#include "tools/driver-files/driversamples.h"
#include "zelmar_label/label_store/labelreader.h"

#include "support/labelfixtures.h"
#include "support/shippedfiles.h"

#include <QDir>
#include <QSet>

#include <algorithm>
#include <random>

const QString manyRowsDriver = QStringLiteral("many rows");

namespace {

constexpr int manyRows = 200;
const QString connection = QStringLiteral("judged drivers");

bool isScripted(const DriverText &driver, const DriverRow &row)
{
    return driver.field(row, QStringLiteral("multiple_rule")).startsWith(QLatin1String("F>"));
}

QList<DriverText> driversWithoutScripts(QList<DriverFileError> &errors)
{
    QList<DriverText> drivers;
    const QDir folder(sourceFolder());
    const QStringList files = folder.entryList({QStringLiteral("*.tsv")}, QDir::Files);
    for (const QString &file : files) {
        DriverText driver = readDriverFile(folder.filePath(file), errors);
        const auto behind = std::remove_if(driver.rows.begin(), driver.rows.end(),
                                           [&](const DriverRow &row) { return isScripted(driver, row); });
        driver.rows.erase(behind, driver.rows.end());
        drivers.append(driver);
    }
    return drivers;
}

DriverText driverOfManyRows(const QList<DriverText> &drivers)
{
    DriverText many = drivers.first();
    many.name = manyRowsDriver;
    many.stem = QStringLiteral("many_rows");
    many.rows.clear();
    QSet<QStringList> known;
    for (const DriverText &driver : drivers) {
        require(driver.columns == many.columns, "the shipped drivers have the same columns");
        for (const DriverRow &row : driver.rows) {
            if (many.rows.size() < manyRows && !known.contains(row.fields))
                many.rows.append(row);
            known.insert(row.fields);
        }
    }
    require(many.rows.size() == manyRows, "the shipped drivers have enough rows");
    return many;
}

JudgedDriver judgedDriver(const DriverText &driver, label::LabelLoader &label, QList<DriverFileError> &errors)
{
    JudgedDriver judged{driver.name, {}, {}};
    const QList<DriverSample> samples =
        readDriverSamples(sourceFolder() + QLatin1String("/samples/") + driver.stem + QLatin1String(".tsv"), errors);
    for (const DriverSample &sample : samples) {
        const bool isAccepted = label.judge(sample.address, label::anyType).isAccepted;
        if (sample.isAccepted && isAccepted)
            judged.accepted.append(sample.address);
        if (!sample.isAccepted && !isAccepted)
            judged.refused.append(sample.address);
    }
    return judged;
}

} // namespace

JudgedDrivers::JudgedDrivers()
    : m_database(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection))
{
    QList<DriverFileError> errors;
    QList<DriverText> drivers = driversWithoutScripts(errors);
    QString error;
    require(writeDriverDatabase(driverDatabasePath(), drivers + QList<DriverText>{driverOfManyRows(drivers)}, error),
            "the driver database is written");
    m_database.setDatabaseName(driverDatabasePath());
    require(m_database.open(), "the driver database is opened");
    for (const DriverText &driver : qAsConst(drivers)) {
        const std::unique_ptr<label::LabelLoader> known = label(driver.name);
        m_all.push_back(judgedDriver(driver, *known, errors));
    }
    require(errors.isEmpty(), "the driver files are read");
}

JudgedDrivers::~JudgedDrivers()
{
    m_database = QSqlDatabase();
    QSqlDatabase::removeDatabase(connection);
}

const JudgedDriver &JudgedDrivers::driver(const QString &name) const
{
    const auto found =
        std::find_if(m_all.begin(), m_all.end(), [&](const JudgedDriver &driver) { return driver.name == name; });
    require(found != m_all.end(), "the driver is known");
    return *found;
}

std::unique_ptr<label::LabelLoader> JudgedDrivers::label(const QString &name) const
{
    QString error;
    std::unique_ptr<label::LabelLoader> label(label::readLabel(m_database, name, error));
    require(label != nullptr, "the label is read");
    return label;
}

QStringList mixed(const QStringList &texts, int count)
{
    std::minstd_rand random(1);
    QStringList chosen;
    chosen.reserve(count);
    for (int index = 0; index < count; ++index)
        chosen.append(texts.at(static_cast<int>(random() % static_cast<unsigned>(texts.size()))));
    return chosen;
}

QStringList withStations(const QStringList &addresses)
{
    QStringList texts;
    for (const QString &address : addresses)
        texts.append(QLatin1String("3-") + address);
    return texts;
}

FamilyLabel familyLabel(const JudgedDrivers &drivers, int rows)
{
    FamilyLabel made{drivers.label(QStringLiteral("ISO on TCP")), {}};
    for (int block = 1; block <= 2047; ++block) {
        for (const char *const element : {"DBB4", "DBW4", "DBD4", "DBX4", "DBX4.7"}) {
            if (made.label->countType(label::anyType) >= rows)
                return made;
            made.members.append(QStringLiteral("DB%1.%2").arg(block).arg(QLatin1String(element)));
            require(made.label->addressValidation(made.members.last(), label::anyType) >= 0, "a member of a family");
        }
    }
    return made;
}
