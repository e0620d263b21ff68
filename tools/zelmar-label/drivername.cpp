// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "drivername.h"

#include "tools/driver-files/driverfile.h"

#include <QFileInfo>
#include <QRegularExpression>

QString driverNameFault(const QString &name)
{
    if (name.isEmpty())
        return QStringLiteral("a driver needs a name");
    if (name.trimmed() != name)
        return QStringLiteral("the name \"%1\" begins or ends with a blank").arg(name);
    if (!name.at(0).isLetter())
        return QStringLiteral("the name \"%1\" does not begin with a letter: it cannot name the tables of a custom "
                              "label")
            .arg(name);
    for (const QChar &character : name) {
        const bool isFit = character.isLetterOrNumber() || character.isSurrogate() || character == QLatin1Char(' ') ||
                           character == QLatin1Char('_');
        if (!isFit)
            return QStringLiteral(
                       "the name \"%1\" contains \"%2\": only letters, digits, blanks and \"_\" can name the "
                       "tables of a custom label")
                .arg(name, character);
    }
    return QString();
}

QString driverFileStem(const QString &name)
{
    static const QRegularExpression others(QStringLiteral("[^a-z0-9]+"));
    QString stem = name.toLower().replace(others, QStringLiteral("_"));
    while (stem.startsWith(QLatin1Char('_')))
        stem.remove(0, 1);
    while (stem.endsWith(QLatin1Char('_')))
        stem.chop(1);
    return stem.isEmpty() || !stem.at(0).isLetter() ? QLatin1String("driver_") + stem : stem;
}

QString driverFilePathFault(const QString &path)
{
    const QFileInfo file(path);
    if (isGoodStem(file.completeBaseName()) && file.suffix() == QLatin1String("tsv"))
        return QString();
    return QStringLiteral(
               "%1: the file name must be lower-case letters, digits and \"_\", followed by \".tsv\", because it "
               "names the tables")
        .arg(path);
}
