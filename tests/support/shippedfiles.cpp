// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/shippedfiles.h"

#include "support/labelfixtures.h"

#include <QDir>
#include <QFile>

namespace {

void copyAfresh(const QString &from, const QString &to)
{
    QFile::remove(to);
    if (!QFile::copy(from, to))
        qFatal("cannot copy %s to %s", qPrintable(from), qPrintable(to));
}

} // namespace

QString runtimeFolder()
{
    return QStringLiteral(ZELMAR_LABEL_DRIVERS_RUNTIME);
}

QString sourceFolder()
{
    return QStringLiteral(ZELMAR_LABEL_DRIVERS_SOURCE);
}

void bringScriptsHere()
{
    QDir().mkpath(scriptsFolder());
    const QDir scripts(runtimeFolder() + QLatin1String("/scripts"));
    const QStringList names = scripts.entryList(QDir::Files);
    for (const QString &name : names)
        copyAfresh(scripts.filePath(name), scriptsFolder() + QLatin1Char('/') + name);
}

void bringDriversHere()
{
    copyAfresh(runtimeFolder() + QLatin1String("/database/drivers"), driverDatabasePath());
    bringScriptsHere();
}
