// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "customworker.h"

#include "driverchecks.h"
#include "driverdatabase.h"
#include "drivername.h"
#include "worker.h"

#include "tools/driver-files/driverfile.h"

#include "zelmar_label/label_table/labelloader.h"

#include <QFileInfo>

namespace {

QString inForce(const CustomDriver &driver)
{
    return driver.isInForce ? QStringLiteral("custom") : QStringLiteral("default");
}

JsonLine asJson(const CustomDriver &driver)
{
    return JsonLine()
        .add("driver", driver.name)
        .add("label", inForce(driver))
        .add("formats", driver.formats)
        .add("blockSize", driver.blockSize)
        .add("bitBlockSize", driver.bitBlockSize);
}

} // namespace

CustomWorker::CustomWorker(const Request &request, const Streams &streams)
    : m_request(request)
    , m_streams(streams)
    , m_database(request.folder)
{
}

ExitCode CustomWorker::run()
{
    if (!m_request.folder.isEmpty() && !QFileInfo(m_request.folder).isDir())
        return refuse(QStringLiteral("there is no folder %1").arg(m_request.folder), Unreadable);
    switch (m_request.command) {
    case Request::Command::CustomSetup:
        return setUp();
    case Request::Command::CustomFill:
        return fill();
    case Request::Command::CustomDefault:
        return setDefault();
    case Request::Command::CustomDrop:
        return drop();
    default:
        return m_request.driver.isEmpty() ? list() : listFormats();
    }
}

ExitCode CustomWorker::list()
{
    QString error;
    const QList<CustomDriver> drivers = m_database.drivers(error);
    if (!error.isEmpty())
        return refuse(error, Unreadable);
    TextTable table;
    table.addRow({QStringLiteral("label"), QStringLiteral("formats"), QStringLiteral("largest read"),
                  QStringLiteral("largest read of bits"), QStringLiteral("driver")});
    for (const CustomDriver &driver : drivers) {
        if (m_request.json)
            m_streams.print(asJson(driver).text());
        table.addRow({inForce(driver), QString::number(driver.formats), QString::number(driver.blockSize),
                      QString::number(driver.bitBlockSize), driver.name});
    }
    if (!m_request.json && drivers.isEmpty())
        m_streams.print(QStringLiteral("no driver has a custom label in %1").arg(m_database.path()));
    else if (!m_request.json)
        m_streams.print(table);
    return Success;
}

ExitCode CustomWorker::listFormats()
{
    CustomDriver driver;
    if (!find(m_request.driver, driver))
        return Unreadable;
    if (driver.isInForce && driver.formats > 0) {
        // A custom database is read like a driver database.
        Request formats = m_request;
        formats.command = Request::Command::Formats;
        formats.database = m_database.path();
        return Worker(formats, m_streams).run();
    }
    const QString text = driver.isInForce
                             ? QStringLiteral("the custom label of \"%1\" is empty: it refuses every address")
                             : QStringLiteral("\"%1\" uses its default label");
    if (!m_request.json)
        m_streams.print(text.arg(driver.name));
    return Success;
}

/// False, with a message, if the driver was never set up.
bool CustomWorker::find(const QString &driver, CustomDriver &found)
{
    QString error;
    const QList<CustomDriver> drivers = m_database.drivers(error);
    for (const CustomDriver &one : drivers) {
        if (one.name != driver)
            continue;
        found = one;
        return true;
    }
    m_streams.complain(!error.isEmpty()
                           ? error
                           : QStringLiteral("\"%1\" has no custom label in %2; \"zelmar-label custom show\" lists all")
                                 .arg(driver, m_database.path()));
    return false;
}

/// A custom label begins with the limits of the default one. False, with a message, if there is none.
bool CustomWorker::readLimits(const QString &driver, int &blockSize, int &bitBlockSize) const
{
    const QString path = m_database.driverDatabase();
    if (!QFileInfo(path).isFile()) {
        m_streams.complain(
            QStringLiteral("there is no driver database at %1; --folder names the folder of a program that "
                           "has one")
                .arg(path));
        return false;
    }
    QString error;
    const std::unique_ptr<label::LabelLoader> label = DriverDatabase(path).read(driver, error);
    if (!label) {
        m_streams.complain(error);
        return false;
    }
    blockSize = label->getBlockCommandMaxSize();
    bitBlockSize = label->getBitCommandMaxSize();
    return true;
}

ExitCode CustomWorker::setUp()
{
    const QString &driver = m_request.driver;
    const QString fault = driverNameFault(driver);
    if (!fault.isEmpty())
        return refuse(fault, AddressRefused);
    int blockSize = 0;
    int bitBlockSize = 0;
    if (!readLimits(driver, blockSize, bitBlockSize))
        return Unreadable;
    return change(driver, [&](QString &error) { return m_database.setUp(driver, blockSize, bitBlockSize, error); });
}

ExitCode CustomWorker::fill()
{
    QList<DriverText> drivers;
    const ExitCode code = readCheckedDrivers(m_request.files, m_streams, drivers);
    if (code != Success)
        return code;
    const DriverText &text = drivers.constFirst();
    const QString fault = driverNameFault(text.name);
    if (!fault.isEmpty())
        return refuse(fault, AddressRefused);
    int blockSize = 0;
    int bitBlockSize = 0;
    if (!readLimits(text.name, blockSize, bitBlockSize))
        return Unreadable;
    return change(text.name, [&](QString &error) {
        return m_database.setUp(text.name, blockSize, bitBlockSize, error) && m_database.fill(text, error);
    });
}

ExitCode CustomWorker::setDefault()
{
    CustomDriver driver;
    if (!find(m_request.driver, driver))
        return Unreadable;
    return change(driver.name, [&](QString &error) { return m_database.setDefault(driver.name, error); });
}

ExitCode CustomWorker::drop()
{
    CustomDriver driver;
    if (!find(m_request.driver, driver))
        return Unreadable;
    return change(driver.name, [&](QString &error) { return m_database.drop(driver.name, error); });
}

/// Does all steps or none, then prints the driver's state.
ExitCode CustomWorker::change(const QString &driver, const Change &steps)
{
    QString error;
    if (!m_database.begin(error) || !steps(error) || !m_database.commit(error))
        return refuse(error, Unreadable);
    CustomDriver changed;
    changed.name = driver;
    const QList<CustomDriver> all = m_database.drivers(error);
    for (const CustomDriver &one : all) {
        if (one.name == driver)
            changed = one;
    }
    tell(changed);
    return Success;
}

void CustomWorker::tell(const CustomDriver &driver) const
{
    const QString &copy = m_database.copy();
    if (m_request.json) {
        m_streams.print(asJson(driver).add("backup", copy.isEmpty() ? QJsonValue() : QJsonValue(copy)).text());
        return;
    }
    if (!driver.isInForce)
        m_streams.print(QStringLiteral("\"%1\" uses its default label").arg(driver.name));
    else if (driver.formats == 0)
        m_streams.print(QStringLiteral("\"%1\" uses its custom label, which is empty: it refuses every address until "
                                       "\"zelmar-label custom fill FILE.tsv\" fills it")
                            .arg(driver.name));
    else
        m_streams.print(
            QStringLiteral("\"%1\" uses its custom label of %2").arg(driver.name, counted(driver.formats, "format")));
    m_streams.print(QStringLiteral("Running programs keep their current label."));
    if (!copy.isEmpty())
        m_streams.print(QStringLiteral("Backup of the custom database: %1").arg(copy));
}

ExitCode CustomWorker::refuse(const QString &sentence, ExitCode code) const
{
    m_streams.complain(sentence);
    return code;
}
