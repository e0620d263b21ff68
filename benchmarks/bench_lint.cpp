// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "measuring.h"

#include "tools/driver-files/driverlinter.h"
#include "zelmar_label/label_store/labelreader.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QCoreApplication>
#include <QDir>
#include <QSqlDatabase>

#include <memory>

namespace {

/// The linter looks for scripts beside the program.
void bringScriptsHere()
{
    const QDir from(QStringLiteral(ZELMAR_LABEL_DRIVERS_RUNTIME) + QLatin1String("/scripts"));
    const QDir here(QCoreApplication::applicationDirPath());
    here.mkpath(QStringLiteral("scripts"));
    const QStringList names = from.entryList(QDir::Files);
    for (const QString &name : names) {
        QFile::remove(here.filePath(QLatin1String("scripts/") + name));
        require(QFile::copy(from.filePath(name), here.filePath(QLatin1String("scripts/") + name)),
                "a script is copied");
    }
}

DriverLinter shippedDrivers()
{
    const QDir folder(QStringLiteral(ZELMAR_LABEL_DRIVERS_SOURCE));
    DriverLinter linter;
    const QStringList names = folder.entryList({QStringLiteral("*.tsv")}, QDir::Files);
    for (const QString &name : names)
        linter.addFile(folder.filePath(name));
    return linter;
}

void checkShippedDrivers()
{
    const DriverLinter linter = shippedDrivers();
    require(!hasErrors(linter.findings()), "the shipped drivers have no errors");
    int rows = 0;
    const QList<DriverText> drivers = linter.drivers();
    for (const DriverText &driver : drivers)
        rows += driver.rows.size();
    std::printf("linted: %d drivers, %d rows, %d samples\n", static_cast<int>(drivers.size()), rows,
                linter.countSamples());
}

void lintShippedDrivers(benchmark::State &state)
{
    const DriverLinter linter = shippedDrivers();
    for (auto _ : state)
        benchmark::DoNotOptimize(linter.findings());
}

/// The most that programs do with the drivers when they start.
void loadShippedDrivers(benchmark::State &state)
{
    const QString path = QStringLiteral(ZELMAR_LABEL_DRIVERS_RUNTIME) + QLatin1String("/database/drivers");
    QString error;
    const QStringList names = driversInDatabase(path, error);
    require(!names.isEmpty(), "the driver database is read");
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("measured"));
    db.setDatabaseName(path);
    require(db.open(), "the driver database is opened");
    for (auto _ : state) {
        for (const QString &name : names)
            benchmark::DoNotOptimize(std::unique_ptr<label::LabelLoader>(label::readLabel(db, name, error)));
    }
    db.close();
}

BENCHMARK(lintShippedDrivers)->Unit(benchmark::kMillisecond);
BENCHMARK(loadShippedDrivers)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    silenceLog();
    bringScriptsHere();
    checkShippedDrivers();

    KeepingReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::printf("ratio: %-62s %8.2f / 5 allowed\n", "seconds to lint all shipped drivers",
                reporter.nanoseconds("lintShippedDrivers") / 1e9);
    reporter.printRatio("lintShippedDrivers", "loadShippedDrivers");
    return 0;
}
