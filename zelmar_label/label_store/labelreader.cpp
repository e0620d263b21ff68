// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_store/labelreader.h"

#include "zelmar_label/label_store/boundtext_p.h"
#include "zelmar_label/label_store/dynamiclabelcreators.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QString>
#include <QVariant>

#include <algorithm>
#include <array>
#include <memory>

namespace label {

namespace {

struct TableNames
{
    QString general;
    QString device;
};

/// False with a message when the driver's tables are not found. If several rows have the driver's name, the last one
/// counts.
bool findTables(QSqlQuery &query, const QString &name, TableNames &tables, QString &errorMessage)
{
    if (query.prepare(QStringLiteral("SELECT * FROM table_index WHERE name = ?")))
        query.addBindValue(boundText(name));
    if (!query.exec()) {
        const QString statement = QStringLiteral("SELECT * FROM table_index WHERE name = '%1'").arg(name);
        errorMessage = QStringLiteral("Error (%1): %2").arg(query.lastError().text(), statement);
        return false;
    }
    const int generalColumn = query.record().indexOf(QStringLiteral("general_table"));
    const int deviceColumn = query.record().indexOf(QStringLiteral("device_table"));
    bool found = false;
    while (query.next()) {
        found = true;
        if (generalColumn >= 0)
            tables.general = query.value(generalColumn).toString();
        if (deviceColumn >= 0)
            tables.device = query.value(deviceColumn).toString();
    }
    query.finish();
    if (!found)
        errorMessage = QStringLiteral("Cant found driver table in label.");
    return found;
}

/// A missing table reads as one without rows.
void selectAll(QSqlQuery &query, const QString &table)
{
    query.prepare(QStringLiteral("SELECT * FROM %1").arg(table));
    query.exec();
}

void readLimits(QSqlQuery &query, const QString &table, LabelLoader &label)
{
    selectAll(query, table);
    const int blockColumn = query.record().indexOf(QStringLiteral("block_size"));
    const int bitBlockColumn = query.record().indexOf(QStringLiteral("bit_block_size"));
    while (query.next()) {
        if (blockColumn >= 0)
            label.setMaxBlockSize(query.value(blockColumn).toInt());
        if (bitBlockColumn >= 0)
            label.setMaxBitBlockSize(query.value(bitBlockColumn).toInt());
    }
    query.finish();
}

/// The positions of the columns of a device table; all but `continue` are required.
struct DeviceColumns
{
    explicit DeviceColumns(const QSqlRecord &record)
        : pattern(record.indexOf(QStringLiteral("pattern")))
        , type(record.indexOf(QStringLiteral("type")))
        , addressGroupIndex(record.indexOf(QStringLiteral("address_group_index")))
        , description(record.indexOf(QStringLiteral("description")))
        , prefixSymbol(record.indexOf(QStringLiteral("prefix_symbol")))
        , dataSize(record.indexOf(QStringLiteral("data_size")))
        , catchTable(record.indexOf(QStringLiteral("catch_table")))
        , multipleRule(record.indexOf(QStringLiteral("multiple_rule")))
        , start(record.indexOf(QStringLiteral("start")))
        , end(record.indexOf(QStringLiteral("end")))
        , base(record.indexOf(QStringLiteral("base")))
        , blocksize(record.indexOf(QStringLiteral("blocksize")))
        , continueRule(record.indexOf(QStringLiteral("continue")))
    {
    }

    bool isComplete() const
    {
        const std::array<int, 12> required = {pattern,  type,       addressGroupIndex, description, prefixSymbol,
                                              dataSize, catchTable, multipleRule,      start,       end,
                                              base,     blocksize};
        return std::all_of(required.begin(), required.end(), [](int column) { return column >= 0; });
    }

    int pattern;
    int type;
    int addressGroupIndex;
    int description;
    int prefixSymbol;
    int dataSize;
    int catchTable;
    int multipleRule;
    int start;
    int end;
    int base;
    int blocksize;
    int continueRule;
};

CommandFormatter readRow(const QSqlQuery &query, const DeviceColumns &columns)
{
    const auto text = [&query](int column) { return query.value(column).toString(); };
    const auto number = [&query](int column) { return query.value(column).toInt(); };
    return CommandFormatter(text(columns.pattern), number(columns.type), number(columns.addressGroupIndex),
                            text(columns.description), text(columns.prefixSymbol), text(columns.start),
                            text(columns.end), static_cast<unsigned long long>(number(columns.dataSize)),
                            text(columns.multipleRule), text(columns.catchTable), number(columns.base),
                            qMax(0, number(columns.blocksize)),
                            columns.continueRule >= 0 ? text(columns.continueRule) : QStringLiteral("N"));
}

CommandInformationTalbe readRows(QSqlQuery &query, const QString &table)
{
    CommandInformationTalbe rows;
    selectAll(query, table);
    const DeviceColumns columns(query.record());
    while (columns.isComplete() && query.next())
        rows.addCommandFormatter(readRow(query, columns));
    query.finish();
    return rows;
}

} // namespace

LabelLoader *readLabel(const QSqlDatabase &db, const QString &name, QString &errorMessage)
{
    QSqlQuery query(db);
    query.setForwardOnly(true);
    TableNames tables;
    if (!findTables(query, name, tables, errorMessage))
        return nullptr;
    auto label = std::make_unique<LabelLoader>();
    readLimits(query, tables.general, *label);
    label->setDeviceTypesTable(readRows(query, tables.device));
    label->setCreator(createDynamicLabelCreator(name));
    return label.release();
}

} // namespace label
