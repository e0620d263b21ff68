// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "sampleproject.h"

#include "tagtypes.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

#include <array>

namespace {

/// A row of tags of one type whose addresses are `step` apart. "%1" in the address is its number.
struct Series
{
    int link;
    int dataType;
    const char *name;
    const char *address;
    int first;
    int step;
    int count;
    int scale = 1;
};

// A filling line: the controllers of the mixer, the filler and the packer, and meters that are not connected yet.
constexpr std::array<Series, 26> series = {{
    {0, tagtype::Bit, "Alarm_muted", "", 0, 0, 1},
    {0, tagtype::Int32, "Shift_counter_%1", "", 0, 0, 3},
    {0, tagtype::Ascii, "Operator_note_%1", "", 0, 0, 2, 32},
    {0, tagtype::Double, "Total_volume", "", 0, 0, 1},
    {0, tagtype::UInt64, "Total_bottles", "", 0, 0, 1},
    {1, tagtype::Bit, "Mixer_valve_%1", "X%1", 0, 1, 8},
    {1, tagtype::Bit, "Mixer_pump_%1", "M%1", 100, 1, 20},
    {1, tagtype::Int16, "Mixer_temperature_%1", "D%1", 100, 1, 16},
    {1, tagtype::UInt16, "Mixer_level_%1", "2-D%1", 200, 1, 12},
    {1, tagtype::Float, "Mixer_flow_%1", "D%1", 300, 2, 10},
    {1, tagtype::Ascii, "Recipe_title_%1", "R%1", 1000, 16, 4, 32},
    {2, tagtype::Bit, "Filler_sensor_%1", "I%1.0", 0, 1, 12},
    {2, tagtype::Bit, "Filler_lamp_%1", "DB1.DBX%1.3", 0, 1, 8},
    {2, tagtype::Int8, "Filler_offset_%1", "MB%1", 10, 1, 8},
    {2, tagtype::UInt8, "Filler_mode_%1", "MB%1", 40, 1, 6},
    {2, tagtype::Int32, "Filler_position_%1", "DB2.DBD%1", 0, 4, 10},
    {2, tagtype::UInt32, "Filler_bottles_%1", "MD%1", 100, 4, 8},
    {2, tagtype::Double, "Filler_volume_%1", "DB3.DBB%1", 0, 8, 6},
    {2, tagtype::Int64, "Filler_serial_%1", "DB4.DBB%1", 0, 8, 4},
    {3, tagtype::Bit, "Packer_contact_%1", "B3:%1/5", 0, 1, 10},
    {3, tagtype::Int16, "Packer_speed_%1", "N7:%1", 0, 1, 16},
    {3, tagtype::Float, "Packer_weight_%1", "F8:%1", 0, 1, 8},
    {3, tagtype::UInt16, "Packer_timer_%1", "T4:%1.ACC", 0, 1, 4},
    {4, tagtype::UInt16, "Meter_voltage_%1", "3-4x%1", 1, 1, 10},
    {4, tagtype::UInt64, "Meter_energy_%1", "4x%1", 101, 4, 6},
    {4, tagtype::Float, "Meter_power_%1", "4x%1", 201, 2, 6},
}};

constexpr std::array<const char *, 12> tables = {
    "CREATE TABLE LINK (LINKID INTEGER PRIMARY KEY, LINK_NAME TEXT, PLC_MODEL TEXT, ENABLED INTEGER)",
    "CREATE TABLE NODE (NODEID INTEGER PRIMARY KEY, STATIONID INTEGER, LINKID INTEGER)",
    "INSERT INTO LINK VALUES (1, 'Mixer', 'FX5U Ethernet', 1)",
    "INSERT INTO LINK VALUES (2, 'Filler', 'ISO on TCP', 1)",
    "INSERT INTO LINK VALUES (3, 'Packer', 'MicroLogix Ethernet', 1)",
    "INSERT INTO LINK VALUES (4, 'Meters', 'Modbus TCP', 0)",
    "INSERT INTO NODE (STATIONID, LINKID) VALUES (1, 1)",
    "INSERT INTO NODE (STATIONID, LINKID) VALUES (2, 1)",
    "INSERT INTO NODE (STATIONID, LINKID) VALUES (1, 2)",
    "INSERT INTO NODE (STATIONID, LINKID) VALUES (1, 3)",
    "INSERT INTO NODE (STATIONID, LINKID) VALUES (1, 4)",
    "INSERT INTO NODE (STATIONID, LINKID) VALUES (3, 4)",
};

/// Only if the text has a place for a number.
QString numbered(const char *text, int number)
{
    const QString pattern = QLatin1String(text);
    return pattern.contains(QLatin1String("%1")) ? pattern.arg(number) : pattern;
}

bool addLinks(const QSqlDatabase &database, QString &error)
{
    QSqlQuery query(database);
    for (const char *statement : tables) {
        if (query.exec(QLatin1String(statement)))
            continue;
        error = QCoreApplication::translate("SampleProject", "%1 cannot be written").arg(database.databaseName());
        return false;
    }
    return true;
}

bool addTags(TagSystem &tags, const AddressRefusal &refusal, QString &error)
{
    for (const Series &row : series) {
        for (int index = 0; index < row.count; ++index) {
            const QString name = numbered(row.name, index + 1);
            const QString address = numbered(row.address, row.first + index * row.step);
            const QString reason = refusal(row.link, row.dataType, address, row.scale);
            if (!reason.isEmpty()) {
                error = QStringLiteral("%1, %2: %3").arg(name, address, reason);
                return false;
            }
            if (!tags.addTag(name, address, row.link, row.dataType, row.scale))
                return false;
        }
    }
    return true;
}

} // namespace

bool writeSampleProject(const QSqlDatabase &database, TagSystem &tags, const AddressRefusal &refusal, QString &error)
{
    return addLinks(database, error) && addTags(tags, refusal, error);
}
