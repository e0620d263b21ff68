// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/defaultlabelstest.h"

#include "support/projectfixtures.h"

#include <QDir>
#include <QFile>
#include <QSqlDatabase>

using label::LabelInterface;
using label::LabelLoader;

namespace {

/// The message of SQLite's Qt driver for a statement that it cannot prepare.
const QString noQuery = QStringLiteral("No query Unable to fetch row");

QString lookUp(const QString &name)
{
    return QStringLiteral("SELECT * FROM table_index WHERE name = '") + name + QLatin1Char('\'');
}

} // namespace

LabelInterface *DefaultLabelsTest::build(const QString &name)
{
    m_error = untouched;
    LabelInterface *made = label::createLabel(name, m_error);
    if (made)
        m_built.insert(name);
    return made;
}

void DefaultLabelsTest::cleanup()
{
    for (const QString &name : qAsConst(m_built))
        label::freeLabel(name);
    m_built.clear();
    QSqlDatabase::database(QStringLiteral("drivers"), false).close();
    QFile::remove(fileBesideTheProgram("drivers"));
    QDir(databaseFolder()).removeRecursively();
}

QString DefaultLabelsTest::failure(const QString &name)
{
    return QStringLiteral("Error (") + noQuery + QStringLiteral("): ") + lookUp(name);
}

Row DefaultLabelsTest::row(const char *pattern, int type, const char *symbol, const char *rule)
{
    Row made;
    made.pattern = QLatin1String(pattern);
    made.type = type;
    made.prefixSymbol = QLatin1String(symbol);
    made.multipleRule = QLatin1String(rule);
    return made;
}

Driver DefaultLabelsTest::driver(const QString &name, const QList<Row> &rows, const QString &tables)
{
    Driver made;
    made.name = name;
    made.rows = rows;
    made.generalTable = QStringLiteral("general_") + tables;
    made.deviceTable = QStringLiteral("types_") + tables;
    return made;
}

void DefaultLabelsTest::writeDatabase(const QList<Driver> &drivers)
{
    writeDriverDatabase(driverDatabasePath(), drivers);
}

void DefaultLabelsTest::writeStatements(const QStringList &statements)
{
    const QString path = driverDatabasePath();
    const QString name = QStringLiteral("statements of a test");
    QFile::remove(path);
    openProject(path, name);
    for (const QString &statement : statements)
        executeOn(name, statement);
    closeProject(name);
}

bool DefaultLabelsTest::isConnectionOpen()
{
    return QSqlDatabase::database(QStringLiteral("drivers"), false).isOpen();
}

LabelLoader *DefaultLabelsTest::loader(LabelInterface *made)
{
    return static_cast<LabelLoader *>(made);
}
