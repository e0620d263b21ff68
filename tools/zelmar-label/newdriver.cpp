// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "newdriver.h"

#include "driverdatabase.h"
#include "drivername.h"

#include "tools/driver-files/driverfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

/// The template without its licence, which ends at the first empty comment: the new file belongs to its author.
QByteArray filled(const char *resource, const QString &name, const QString &file)
{
    static const QByteArray licenceEnd = "\n#\n";
    QFile text(QLatin1String(":/templates/") + QLatin1String(resource));
    text.open(QIODevice::ReadOnly);
    QByteArray content = text.readAll();
    content.remove(0, content.indexOf(licenceEnd) + licenceEnd.size());
    return content.replace("@NAME@", name.toUtf8()).replace("@FILE@", QFileInfo(file).fileName().toUtf8());
}

/// Lint looks for samples here.
QString samplesPath(const QString &driverFile)
{
    const QFileInfo info(driverFile);
    const QString inFolder = QLatin1String("samples/") + info.fileName();
    return info.path() == QLatin1String(".") ? inFolder : info.dir().filePath(inFolder);
}

/// Empty if the file was written.
QString writeFault(const QString &path, const QByteArray &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return QStringLiteral("%1 cannot be made: %2").arg(path, file.errorString());
    const bool isWritten = file.write(text) == text.size() && file.flush();
    if (isWritten)
        return QString();
    file.remove();
    return QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString());
}

QString writeBoth(const QString &driverFile, const QString &samplesFile, const QString &name)
{
    for (const QString &file : {driverFile, samplesFile}) {
        if (QFileInfo::exists(file))
            return QStringLiteral("%1 already exists; it is not changed").arg(file);
    }
    QString fault = writeFault(driverFile, filled("driver.tsv", name, driverFile));
    if (!fault.isEmpty())
        return fault;
    const QDir folder = QFileInfo(samplesFile).dir();
    const bool isFolderNew = !folder.exists();
    QDir().mkpath(folder.path());
    fault = writeFault(samplesFile, filled("samples.tsv", name, driverFile));
    if (!fault.isEmpty()) {
        QFile::remove(driverFile);
        if (isFolderNew)
            QDir().rmdir(folder.path());
    }
    return fault;
}

/// A driver with this name exists and may need rows that a new one lacks.
QString takenFault(const QString &name)
{
    const QString path = DriverDatabase(QString()).path();
    QString ignored;
    if (!QFileInfo::exists(path) || !driversInDatabase(path, ignored).contains(name))
        return QString();
    return QStringLiteral(
               "there is already a driver \"%1\"; \"zelmar-label export-driver\" writes it as a file to start "
               "from")
        .arg(name);
}

/// The next commands for the user.
void tellNextSteps(const QString &driverFile, const QString &samplesFile, const QString &name, const Streams &streams)
{
    streams.print(QStringLiteral("Wrote %1 and its samples %2. Change them, then try them with\n"
                                 "  zelmar-label lint %1\n"
                                 "  zelmar-label compile %1 --into trial.db\n"
                                 "  zelmar-label check \"%3\" D100 --database trial.db")
                      .arg(driverFile, samplesFile, name));
}

} // namespace

ExitCode writeNewDriver(const Request &request, const Streams &streams)
{
    const QString &name = request.driver;
    const QString driverFile = request.files.value(0, driverFileStem(name) + QLatin1String(".tsv"));
    for (const QString &fault : {driverNameFault(name), driverFilePathFault(driverFile), takenFault(name)}) {
        if (fault.isEmpty())
            continue;
        streams.complain(fault);
        return AddressRefused;
    }
    const QString samplesFile = samplesPath(driverFile);
    const QString fault = writeBoth(driverFile, samplesFile, name);
    if (!fault.isEmpty()) {
        streams.complain(fault);
        return Unreadable;
    }
    if (request.json)
        streams.print(JsonLine().add("driver", name).add("file", driverFile).add("samples", samplesFile).text());
    else
        tellNextSteps(driverFile, samplesFile, name, streams);
    return Success;
}
