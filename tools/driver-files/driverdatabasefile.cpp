// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "driverfile.h"

#include "sqliteconnection.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <QVariant>

#include <cstdio>

namespace {

const QLatin1String headPlace("head");
const QLatin1String headerPlace("header");
const QLatin1String rowPlace("row");
const QLatin1String tailPlace("tail");

/// Runs statements until one fails.
class Script
{
public:
    explicit Script(const QSqlDatabase &db)
        : m_query(db)
    {
    }

    void run(const QString &statement, const QVariantList &values = {})
    {
        if (!m_error.isEmpty())
            return;
        const bool isPrepared = m_query.prepare(statement);
        for (const QVariant &value : values)
            m_query.addBindValue(value);
        if (!isPrepared || !m_query.exec())
            m_error = m_query.lastError().databaseText();
    }

    const QString &error() const { return m_error; }

private:
    QSqlQuery m_query;
    QString m_error;
};

/// SQLite converts a text in a number column to a number if possible, "007" to 7. It does not convert blobs.
QVariant numberValue(const QString &text)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (isNumber && QString::number(number) == text)
        return number;
    return text.toUtf8();
}

QString quoted(const QString &name)
{
    QString inner = name;
    return QLatin1Char('"') + inner.replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
}

void writeComments(Script &script, const QString &table, const QString &place, int row, const QStringList &comments)
{
    for (const QString &comment : comments)
        script.run(QStringLiteral("INSERT INTO driver_comments VALUES (?, ?, ?, ?)"), {table, place, row, comment});
}

void writeRow(Script &script, const DriverText &driver, const DriverRow &row, const QString &statement)
{
    QVariantList values;
    for (int i = 0; i < driver.columns.size(); ++i) {
        const QString text = row.fields.value(i);
        values.append(isNumberColumn(driver.columns.at(i)) ? numberValue(text) : QVariant(text));
    }
    script.run(statement, values);
}

void writeRows(Script &script, const DriverText &driver, const QString &table)
{
    QStringList definitions;
    QStringList places;
    for (const QString &column : driver.columns) {
        definitions.append(quoted(column) +
                           (isNumberColumn(column) ? QLatin1String(" INTEGER") : QLatin1String(" TEXT")));
        places.append(QStringLiteral("?"));
    }
    script.run(QStringLiteral("CREATE TABLE %1 (%2)").arg(quoted(table), definitions.join(QLatin1String(", "))));
    const QString statement =
        QStringLiteral("INSERT INTO %1 VALUES (%2)").arg(quoted(table), places.join(QLatin1String(", ")));
    for (int i = 0; i < driver.rows.size(); ++i) {
        writeRow(script, driver, driver.rows.at(i), statement);
        writeComments(script, table, rowPlace, i, driver.rows.at(i).comments);
    }
}

void writeDriver(Script &script, const DriverText &driver)
{
    const QString generalTable = driver.stem + QLatin1String("_general");
    const QString deviceTable = driver.stem + QLatin1String("_types");
    script.run(QStringLiteral("INSERT INTO table_index VALUES (?, ?, ?)"), {driver.name, generalTable, deviceTable});
    script.run(
        QStringLiteral("CREATE TABLE %1 (block_size INTEGER, bit_block_size INTEGER)").arg(quoted(generalTable)));
    script.run(QStringLiteral("INSERT INTO %1 VALUES (?, ?)").arg(quoted(generalTable)),
               {numberValue(driver.blockSize), numberValue(driver.bitBlockSize)});
    writeComments(script, deviceTable, headPlace, -1, driver.headComments);
    writeComments(script, deviceTable, headerPlace, -1, driver.headerComments);
    writeRows(script, driver, deviceTable);
    writeComments(script, deviceTable, tailPlace, -1, driver.tailComments);
}

/// The library uses table names in its statements without quotes.
QString selectAll(const QString &table)
{
    return QStringLiteral("SELECT * FROM %1").arg(table);
}

void readTables(const QSqlDatabase &db, DriverText &driver, QString &error)
{
    QSqlQuery query(db);
    query.prepare(QStringLiteral("SELECT general_table, device_table FROM table_index WHERE name = ?"));
    query.addBindValue(driver.name);
    if (!query.exec()) {
        error = QStringLiteral("%1 is not a driver database (%2)").arg(driver.source, query.lastError().databaseText());
        return;
    }
    bool found = false;
    while (query.next()) {
        found = true;
        driver.generalTable = query.value(0).toString();
        driver.deviceTable = query.value(1).toString();
    }
    if (!found)
        error = QStringLiteral("there is no driver \"%1\" in %2").arg(driver.name, driver.source);
}

/// A driver file names its tables; tables of other programs may have any name.
QString stemOf(const DriverText &driver)
{
    QString stem = driver.deviceTable;
    if (stem.endsWith(QLatin1String("_types"))) {
        stem.chop(6);
        if (isGoodStem(stem) && driver.generalTable == stem + QLatin1String("_general"))
            return stem;
    }
    stem = driver.name.toLower();
    for (QChar &character : stem) {
        if (!isGoodStem(QLatin1Char('a') + QString(character)))
            character = QLatin1Char('_');
    }
    return isGoodStem(stem) ? stem : QLatin1String("driver_") + stem;
}

void readLimits(const QSqlDatabase &db, DriverText &driver)
{
    QSqlQuery query(db);
    if (!query.exec(selectAll(driver.generalTable)))
        return;
    while (query.next()) {
        driver.blockSize = query.value(QStringLiteral("block_size")).toString();
        driver.bitBlockSize = query.value(QStringLiteral("bit_block_size")).toString();
    }
}

void readRows(const QSqlDatabase &db, DriverText &driver)
{
    QSqlQuery query(db);
    if (!query.exec(selectAll(driver.deviceTable)))
        return;
    QList<int> places;
    const QSqlRecord record = query.record();
    for (int i = 0; i < record.count(); ++i) {
        if (!driverColumns().contains(record.fieldName(i)))
            continue;
        places.append(i);
        driver.columns.append(record.fieldName(i));
    }
    const QString continueColumn = driverColumns().last();
    const bool hasContinue = driver.columns.contains(continueColumn);
    if (!hasContinue)
        driver.columns.append(continueColumn);
    while (query.next()) {
        DriverRow row;
        for (const int place : qAsConst(places))
            row.fields.append(query.value(place).toString());
        if (!hasContinue)
            row.fields.append(QStringLiteral("N"));
        driver.rows.append(row);
    }
}

QStringList *commentsAt(DriverText &driver, const QString &place, int row)
{
    if (place == headPlace)
        return &driver.headComments;
    if (place == headerPlace)
        return &driver.headerComments;
    if (place == tailPlace)
        return &driver.tailComments;
    return place == rowPlace && row >= 0 && row < driver.rows.size() ? &driver.rows[row].comments : nullptr;
}

void readComments(const QSqlDatabase &db, DriverText &driver)
{
    QSqlQuery query(db);
    query.prepare(
        QStringLiteral("SELECT place, row, comment FROM driver_comments WHERE device_table = ? ORDER BY rowid"));
    query.addBindValue(driver.deviceTable);
    if (!query.exec())
        return;
    while (query.next()) {
        QStringList *const comments = commentsAt(driver, query.value(0).toString(), query.value(1).toInt());
        if (comments)
            comments->append(query.value(2).toString());
    }
}

} // namespace

QStringList driversInDatabase(const QString &path, QString &error)
{
    QStringList names;
    const SqliteConnection connection(path, SqliteConnection::Mode::Read);
    error = connection.error();
    if (!error.isEmpty())
        return names;
    QSqlQuery query(connection.database());
    if (!query.exec(QStringLiteral("SELECT name, general_table, device_table FROM table_index"))) {
        error = QStringLiteral("%1 is not a driver database (%2)").arg(path, query.lastError().databaseText());
        return names;
    }
    while (query.next())
        names.append(query.value(0).toString());
    return names;
}

DriverText readDatabaseDriver(const QString &path, const QString &name, QString &error)
{
    DriverText driver;
    driver.source = path;
    driver.name = name;
    const SqliteConnection connection(path, SqliteConnection::Mode::Read);
    error = connection.error();
    if (!error.isEmpty())
        return driver;
    readTables(connection.database(), driver, error);
    if (!error.isEmpty())
        return driver;
    driver.stem = stemOf(driver);
    readLimits(connection.database(), driver);
    readRows(connection.database(), driver);
    readComments(connection.database(), driver);
    return driver;
}

bool fillDriverDatabase(const QSqlDatabase &db, const QList<DriverText> &drivers, QString &error)
{
    Script script(db);
    script.run(QStringLiteral("BEGIN"));
    script.run(QStringLiteral("CREATE TABLE table_index (name TEXT, general_table TEXT, device_table TEXT)"));
    script.run(
        QStringLiteral("CREATE TABLE driver_comments (device_table TEXT, place TEXT, row INTEGER, comment TEXT)"));
    for (const DriverText &driver : drivers)
        writeDriver(script, driver);
    script.run(QStringLiteral("COMMIT"));
    error = script.error();
    return error.isEmpty();
}

bool writeDriverDatabase(const QString &path, const QList<DriverText> &drivers, QString &error)
{
    const QFileInfo target(path);
    const QString folder = target.absolutePath();
    // In the folder of the result, so that the final rename stays within one file system.
    if (!QDir().mkpath(folder)) {
        error = QStringLiteral("the folder %1 cannot be made").arg(folder);
        return false;
    }
    const QTemporaryDir work(folder + QLatin1String("/.drivers-XXXXXX"));
    if (!work.isValid()) {
        error = QStringLiteral("%1 cannot be written (%2)").arg(path, work.errorString());
        return false;
    }
    const QString made = work.filePath(QStringLiteral("drivers"));
    {
        const SqliteConnection connection(made, SqliteConnection::Mode::Write);
        error = connection.error();
        if (error.isEmpty() && !fillDriverDatabase(connection.database(), drivers, error))
            error = QStringLiteral("%1 cannot be written (%2)").arg(path, error);
    }
    if (!error.isEmpty())
        return false;
    // Unlike QFile::rename, this replaces an existing file.
    if (std::rename(QFile::encodeName(made).constData(), QFile::encodeName(target.absoluteFilePath()).constData()) == 0)
        return true;
    error = QStringLiteral("%1 cannot be replaced").arg(path);
    return false;
}
