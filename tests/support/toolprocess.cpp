// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/toolprocess.h"

#include "support/projectfixtures.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

namespace {

void copyAfresh(const QString &from, const QString &to)
{
    QFile::remove(to);
    if (!QDir().mkpath(QFileInfo(to).path()) || !QFile::copy(from, to))
        qFatal("cannot copy %s to %s", qPrintable(from), qPrintable(to));
}

} // namespace

QProcessEnvironment toolEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("ASAN_OPTIONS"),
                       environment.value(QStringLiteral("ASAN_OPTIONS")) + QStringLiteral(":detect_leaks=0"));
    return environment;
}

Result runProcess(const QString &program, const QStringList &arguments, const QByteArray &input, const QString &folder)
{
    QProcess process;
    process.setProcessEnvironment(toolEnvironment());
    if (!folder.isEmpty())
        process.setWorkingDirectory(folder);
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    Result result;
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit) {
        result.err = process.errorString();
        return result;
    }
    result.code = process.exitCode();
    result.out = QString::fromUtf8(process.readAllStandardOutput());
    result.err = QString::fromUtf8(process.readAllStandardError());
    return result;
}

QString copyTool(const QString &tool, const QString &folder)
{
    const QString copy = QDir(folder).filePath(QFileInfo(tool).fileName());
    copyAfresh(tool, copy);
    return copy;
}

QString copyToolWithDrivers(const QString &tool, const QString &folder)
{
    const QDir source = QFileInfo(tool).dir();
    const QDir target(folder);
    // Neither the custom labels of the one nor those of an earlier run.
    QDir(target.filePath(QStringLiteral("database"))).removeRecursively();
    QStringList files = {QStringLiteral("database/drivers")};
    const QStringList scripts = QDir(source.filePath(QStringLiteral("scripts"))).entryList(QDir::Files);
    for (const QString &script : scripts)
        files.append(QLatin1String("scripts/") + script);
    for (const QString &file : qAsConst(files))
        copyAfresh(source.filePath(file), target.filePath(file));
    return copyTool(tool, folder);
}

QStringList argumentsOf(const char *text)
{
    return QString::fromUtf8(text).split(QLatin1Char('|'));
}

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("not readable");
}

QStringList databaseDump(const QString &path)
{
    const QString key = QStringLiteral("dumped");
    openProject(path, key);
    QStringList lines = rowsOn(key, QStringLiteral("SELECT name, sql FROM sqlite_master ORDER BY rowid"));
    const QStringList tables = rowsOn(key, QStringLiteral("SELECT name FROM sqlite_master ORDER BY rowid"));
    for (const QString &table : tables)
        lines += rowsOn(key, QStringLiteral("SELECT '%1', * FROM \"%1\"").arg(table));
    closeProject(key);
    return lines;
}
