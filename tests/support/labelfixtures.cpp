// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/labelfixtures.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace {

const char *const connection = "driver database of a test";

void execute(QSqlQuery &query, const QString &statement, const QVariantList &values = {})
{
    if (!query.prepare(statement))
        qFatal("%s: %s", qPrintable(statement), qPrintable(query.lastError().text()));
    for (const QVariant &value : values)
        query.addBindValue(value);
    if (!query.exec())
        qFatal("%s: %s", qPrintable(statement), qPrintable(query.lastError().text()));
}

QList<QPair<QString, QVariant>> columns(const Row &row)
{
    return {{QStringLiteral("pattern"), row.pattern},
            {QStringLiteral("type"), row.type},
            {QStringLiteral("address_group_index"), row.addressGroupIndex},
            {QStringLiteral("description"), row.description},
            {QStringLiteral("prefix_symbol"), row.prefixSymbol},
            {QStringLiteral("start"), row.start},
            {QStringLiteral("end"), row.end},
            {QStringLiteral("data_size"), row.dataSize},
            {QStringLiteral("multiple_rule"), row.multipleRule},
            {QStringLiteral("catch_table"), row.catchTable},
            {QStringLiteral("base"), row.base},
            {QStringLiteral("blocksize"), row.blocksize},
            {QStringLiteral("continue"), row.continueRule}};
}

void writeRows(QSqlQuery &query, const Driver &driver)
{
    QStringList names;
    const auto known = columns(Row());
    for (const auto &column : known) {
        if (!driver.missingColumns.contains(column.first))
            names.append(QLatin1Char('"') + column.first + QLatin1Char('"'));
    }
    execute(query, QStringLiteral("CREATE TABLE %1 (%2)").arg(driver.deviceTable, names.join(QLatin1String(", "))));
    for (const Row &row : driver.rows) {
        QVariantList values;
        QStringList places;
        const auto filled = columns(row);
        for (const auto &column : filled) {
            if (driver.missingColumns.contains(column.first))
                continue;
            values.append(column.second);
            places.append(QStringLiteral("?"));
        }
        execute(query,
                QStringLiteral("INSERT INTO %1 VALUES (%2)").arg(driver.deviceTable, places.join(QLatin1Char(','))),
                values);
    }
}

void writeDriver(QSqlQuery &query, const Driver &driver)
{
    execute(query, QStringLiteral("INSERT INTO table_index VALUES (?, ?, ?)"),
            {driver.name, driver.generalTable, driver.deviceTable});
    execute(query, QStringLiteral("CREATE TABLE %1 (block_size, bit_block_size)").arg(driver.generalTable));
    execute(query, QStringLiteral("INSERT INTO %1 VALUES (?, ?)").arg(driver.generalTable),
            {driver.blockSize, driver.bitBlockSize});
    writeRows(query, driver);
}

QString scriptPath(const QString &fileName)
{
    QDir().mkpath(scriptsFolder());
    return scriptsFolder() + QLatin1Char('/') + fileName;
}

} // namespace

const QString rowLine = QStringLiteral("------------------------------------------    commandformatter");

label::CommandFormatter Row::formatter() const
{
    return label::CommandFormatter(pattern, type, addressGroupIndex, description, prefixSymbol, start, end,
                                   static_cast<unsigned long long>(dataSize), multipleRule, catchTable, base, blocksize,
                                   continueRule);
}

CommunicatorCommand command(const QString &address, int dataType, quint64 length)
{
    CommunicatorCommand made;
    made.address = address;
    made.dataType = static_cast<CommunicatorCommand::DataType>(dataType);
    made.length = length;
    return made;
}

QStringList shortForms(const QList<CommunicatorCommand> &commands)
{
    QStringList forms;
    for (const CommunicatorCommand &one : commands)
        forms.append(QStringLiteral("%1 %2 %3").arg(one.address).arg(int(one.dataType)).arg(one.length));
    return forms;
}

QStringList addresses(const QList<CommunicatorCommand> &commands)
{
    QStringList texts;
    for (const CommunicatorCommand &one : commands)
        texts.append(one.address);
    return texts;
}

QString scriptsFolder()
{
    return QCoreApplication::applicationDirPath() + QLatin1String("/scripts");
}

void writeScript(const QString &fileName, const QString &text)
{
    QFile file(scriptPath(fileName));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(text.toUtf8()) < 0)
        qFatal("cannot write %s", qPrintable(file.fileName()));
}

void removeScript(const QString &fileName)
{
    QFile::remove(scriptPath(fileName));
}

void writeDriverDatabase(const QString &path, const QList<Driver> &drivers)
{
    QFile::remove(path);
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QLatin1String(connection));
        db.setDatabaseName(path);
        if (!db.open())
            qFatal("cannot write %s", qPrintable(path));
        QSqlQuery query(db);
        // A test's database need not survive a power cut, and syncing is slow on a busy disk.
        execute(query, QStringLiteral("PRAGMA synchronous = OFF"));
        execute(query, QStringLiteral("CREATE TABLE table_index (name TEXT, general_table TEXT, device_table TEXT)"));
        for (const Driver &driver : drivers)
            writeDriver(query, driver);
    }
    QSqlDatabase::removeDatabase(QLatin1String(connection));
}

QString databaseFolder()
{
    return fileBesideTheProgram("database");
}

QString driverDatabasePath()
{
    QDir folder(QCoreApplication::applicationDirPath());
    folder.mkpath(QStringLiteral("database"));
    return folder.filePath(QStringLiteral("database/drivers"));
}

QString fileBesideTheProgram(const char *name)
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(QLatin1String(name));
}
