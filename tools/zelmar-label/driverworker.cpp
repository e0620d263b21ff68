// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "driverworker.h"

#include "driverchecks.h"
#include "driverdatabase.h"
#include "driverinstall.h"
#include "newdriver.h"

#include "tools/driver-files/driverfile.h"

#include "zelmar_label/label_table/labelloader.h"

#include <QFileInfo>
#include <QIODevice>
#include <QSaveFile>

DriverWorker::DriverWorker(const Request &request, const Streams &streams)
    : m_request(request)
    , m_streams(streams)
{
}

ExitCode DriverWorker::run() const
{
    switch (m_request.command) {
    case Request::Command::ExportDriver:
        return exportDriver();
    case Request::Command::Compile:
        return compile();
    default:
        return writeNewDriver(m_request, m_streams);
    }
}

ExitCode DriverWorker::exportDriver() const
{
    QString error;
    const DriverDatabase database(m_request.database);
    if (!database.read(m_request.driver, error))
        return refuse(error);
    const DriverText driver = readDatabaseDriver(database.path(), m_request.driver, error);
    if (error.isEmpty())
        error = textFormObstacle(driver);
    if (!error.isEmpty())
        return refuse(error);
    const QByteArray text = driverFileText(driver);
    if (!m_request.files.isEmpty())
        return write(m_request.files.constFirst(), text);
    if (m_request.json)
        m_streams.print(JsonLine().add("driver", driver.name).add("text", QString::fromUtf8(text)).text());
    else
        m_streams.out.write(text);
    return Success;
}

ExitCode DriverWorker::write(const QString &path, const QByteArray &text) const
{
    if (QFileInfo::exists(path) && !m_request.force)
        return refuse(QStringLiteral("%1 already exists; --force overwrites it").arg(path));
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit())
        return refuse(QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString()));
    if (m_request.json)
        m_streams.print(JsonLine().add("driver", m_request.driver).add("file", path).text());
    return Success;
}

ExitCode DriverWorker::compile() const
{
    QList<DriverText> drivers;
    const ExitCode code = readCheckedDrivers(m_request.files, m_streams, drivers);
    if (code != Success)
        return code;
    InstalledDrivers installed;
    QString error;
    if (!installDrivers(m_request.database, drivers, installed, error))
        return refuse(error);
    for (const DriverText &driver : qAsConst(drivers)) {
        const bool isReplaced = installed.replaced.contains(driver.name);
        if (m_request.json)
            m_streams.print(JsonLine()
                                .add("driver", driver.name)
                                .add("formats", driver.rows.size())
                                .add("replaced", isReplaced)
                                .add("database", m_request.database)
                                .add("backup", installed.copy.isEmpty() ? QJsonValue() : QJsonValue(installed.copy))
                                .text());
        else
            m_streams.print(QStringLiteral("\"%1\" is %2, %3")
                                .arg(driver.name, isReplaced ? QStringLiteral("replaced") : QStringLiteral("added"),
                                     counted(driver.rows.size(), "format")));
    }
    if (!m_request.json && !installed.copy.isEmpty())
        m_streams.print(QStringLiteral("Backup of the database: %1").arg(installed.copy));
    return Success;
}

ExitCode DriverWorker::refuse(const QString &sentence) const
{
    m_streams.complain(sentence);
    return Unreadable;
}
