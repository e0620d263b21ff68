// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/customlabelstest.h"

#include "support/projectfixtures.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QTest>
#include <QTextStream>

using label::LabelInterface;

const QString customConnection = QStringLiteral("customdrivers");
const QString indexStatement =
    QStringLiteral("CREATE TABLE table_index(name TEXT, general_table TEXT, device_table TEXT)");
const QString allOfIndex = QStringLiteral("SELECT * FROM table_index");

namespace {

/// The test's own connection to the custom database.
const QString peek = QStringLiteral("peek");

bool runStep(const QString &operation, const QString &argument)
{
    if (operation == QLatin1String("use"))
        return label::useCustomLabel(argument);
    if (operation == QLatin1String("setup"))
        return label::setupCustomLabel(argument);
    if (operation == QLatin1String("default"))
        return label::setupDefaultLabel(argument);
    if (operation == QLatin1String("remove"))
        return QFileInfo(argument).isDir() ? QDir().rmdir(argument) : QFile::remove(argument);
    if (operation == QLatin1String("rename"))
        return QFile::rename(argument.section(QLatin1Char('>'), 0, 0), argument.section(QLatin1Char('>'), 1));
    qFatal("no step %s", qPrintable(operation));
    return false;
}

int runSteps(const QStringList &steps)
{
    QStringList results;
    for (const QString &step : steps) {
        const bool result = runStep(step.section(QLatin1Char(' '), 0, 0), step.section(QLatin1Char(' '), 1));
        results.append(result ? QStringLiteral("true") : QStringLiteral("false"));
    }
    QTextStream(stdout) << results.join(QLatin1Char(' ')) << '\n';
    return 0;
}

} // namespace

bool CustomLabelsTest::setup(const QString &name)
{
    m_names.insert(name);
    return label::setupCustomLabel(name);
}

LabelInterface *CustomLabelsTest::build(const QString &name)
{
    m_names.insert(name);
    m_error = untouched;
    return label::createCustomLabel(name, m_error);
}

void CustomLabelsTest::cleanup()
{
    for (const QString &name : qAsConst(m_names)) {
        label::freeCustomLabel(name);
        label::freeLabel(name);
    }
    m_names.clear();
    label::removeCustomLabelDatabase();
    QSqlDatabase::database(QStringLiteral("drivers"), false).close();
    QFile::remove(fileBesideTheProgram("drivers"));
    QFile::remove(fileBesideTheProgram("customdrivers"));
    QDir(databaseFolder()).removeRecursively();
}

QString CustomLabelsTest::customPath()
{
    return databaseFolder() + QStringLiteral("/customdrivers");
}

void CustomLabelsTest::changeCustomDatabase(const QStringList &statements)
{
    QDir().mkpath(databaseFolder());
    openProject(customPath(), peek);
    for (const QString &statement : statements)
        executeOn(peek, statement);
    closeProject(peek);
}

QStringList CustomLabelsTest::customRows(const QString &statement)
{
    openProject(customPath(), peek);
    const QStringList rows = rowsOn(peek, statement);
    closeProject(peek);
    return rows;
}

QStringList CustomLabelsTest::customTables()
{
    return customRows(QStringLiteral("SELECT name FROM sqlite_master ORDER BY rowid"));
}

Driver CustomLabelsTest::driver(const QString &name, int blockSize, int bitBlockSize, const QString &tables)
{
    Driver made;
    made.name = name;
    made.rows = {Row()};
    made.blockSize = blockSize;
    made.bitBlockSize = bitBlockSize;
    made.generalTable += tables;
    made.deviceTable += tables;
    return made;
}

QString CustomLabelsTest::deviceRow(const char *table, const char *pattern, const char *symbol)
{
    return QStringLiteral("INSERT INTO %1 VALUES ('%2', 2, 0, 99, 2, 'custom: %3', '%3', 2, 'words', '', 10, 32, 77)")
        .arg(QLatin1String(table), QLatin1String(pattern), QLatin1String(symbol));
}

bool CustomLabelsTest::isConnectionOpen()
{
    return QSqlDatabase::contains(customConnection) && QSqlDatabase::database(customConnection, false).isOpen();
}

bool CustomLabelsTest::isFailureLine(const QString &line, const char *operation)
{
    const QRegularExpression form(QStringLiteral("^%1 \\d+$").arg(QLatin1String(operation)));
    return form.match(line).hasMatch();
}

QString inAFreshProcess(const QStringList &steps)
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), QStringList{QStringLiteral("--steps")} + steps);
    if (!process.waitForFinished(60000) || process.exitCode() != 0)
        return QStringLiteral("exit code %1: ").arg(process.exitCode()) +
               QString::fromUtf8(process.readAllStandardError());
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

int runTestOrSteps(QObject &test, int argc, char *argv[])
{
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--steps"))
        return runSteps(arguments.mid(2));
    return QTest::qExec(&test, argc, argv);
}
