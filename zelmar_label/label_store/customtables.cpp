// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_store/customtables.h"

#include <algorithm>

namespace label {

CustomTables::CustomTables(QString driver)
{
    driver.replace(QLatin1Char(' '), QLatin1Char('_'));
    general = driver + QLatin1String("_general_table");
    device = driver + QLatin1String("_types_table");
}

bool CustomTables::canBeCreated() const
{
    return std::all_of(general.begin(), general.end(), [](QChar character) {
        const ushort code = character.unicode();
        const bool isAsciiWord = character.isLetterOrNumber() || character == QLatin1Char('_');
        return code >= 0x80 || isAsciiWord || character == QLatin1Char('$');
    });
}

QString CustomTables::createIndex()
{
    return QStringLiteral("CREATE TABLE table_index(name TEXT, general_table TEXT, device_table TEXT)");
}

QString CustomTables::createGeneral() const
{
    return QStringLiteral("CREATE TABLE %1 (driver_name TEXT, block_size NUMBER, bit_block_size NUMBER, "
                          "support_actions TEXT)")
        .arg(general);
}

QString CustomTables::createDevice() const
{
    return QStringLiteral("CREATE TABLE %1 (pattern TEXT, type NUMBER, start NUMBER, end NUMBER, "
                          "address_group_index NUMBER, description TEXT, prefix_symbol TEXT, data_size NUMBER, "
                          "catch_table TEXT, multiple_rule TEXT, base NUMBER, blocksize NUMBER, label_index NUMBER)")
        .arg(device);
}

} // namespace label
