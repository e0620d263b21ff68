// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "sampleproject.h"

#include "project.h"

#include "zelmar_label/tag_store/tagsystem.h"
#include "zelmar_label/tag_values/tagdatatype_p.h"

#include <QFile>
#include <QFileInfo>
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

// A filling line: the mixer's controller, the filler's, the packer's, and meters that are not wired up yet.
constexpr std::array<Series, 26> series = {{
    {0, label::TagBit, "Alarm_muted", "", 0, 0, 1},
    {0, label::TagInt32, "Shift_counter_%1", "", 0, 0, 3},
    {0, label::TagAscii, "Operator_note_%1", "", 0, 0, 2, 32},
    {0, label::TagDouble, "Total_volume", "", 0, 0, 1},
    {0, label::TagUInt64, "Total_bottles", "", 0, 0, 1},
    {1, label::TagBit, "Mixer_valve_%1", "X%1", 0, 1, 8},
    {1, label::TagBit, "Mixer_pump_%1", "M%1", 100, 1, 20},
    {1, label::TagInt16, "Mixer_temperature_%1", "D%1", 100, 1, 16},
    {1, label::TagUInt16, "Mixer_level_%1", "2-D%1", 200, 1, 12},
    {1, label::TagFloat, "Mixer_flow_%1", "D%1", 300, 2, 10},
    {1, label::TagAscii, "Recipe_title_%1", "R%1", 1000, 16, 4, 32},
    {2, label::TagBit, "Filler_sensor_%1", "I%1.0", 0, 1, 12},
    {2, label::TagBit, "Filler_lamp_%1", "DB1.DBX%1.3", 0, 1, 8},
    {2, label::TagInt8, "Filler_offset_%1", "MB%1", 10, 1, 8},
    {2, label::TagUInt8, "Filler_mode_%1", "MB%1", 40, 1, 6},
    {2, label::TagInt32, "Filler_position_%1", "DB2.DBD%1", 0, 4, 10},
    {2, label::TagUInt32, "Filler_bottles_%1", "MD%1", 100, 4, 8},
    {2, label::TagDouble, "Filler_volume_%1", "DB3.DBB%1", 0, 8, 6},
    {2, label::TagInt64, "Filler_serial_%1", "DB4.DBB%1", 0, 8, 4},
    {3, label::TagBit, "Packer_contact_%1", "B3:%1/5", 0, 1, 10},
    {3, label::TagInt16, "Packer_speed_%1", "N7:%1", 0, 1, 16},
    {3, label::TagFloat, "Packer_weight_%1", "F8:%1", 0, 1, 8},
    {3, label::TagUInt16, "Packer_timer_%1", "T4:%1.ACC", 0, 1, 4},
    {4, label::TagUInt16, "Meter_voltage_%1", "3-4x%1", 1, 1, 10},
    {4, label::TagUInt64, "Meter_energy_%1", "4x%1", 101, 4, 6},
    {4, label::TagFloat, "Meter_power_%1", "4x%1", 201, 2, 6},
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

/// As far as the text asks for a number.
QString numbered(const char *text, int number)
{
    const QString pattern = QLatin1String(text);
    return pattern.contains(QLatin1String("%1")) ? pattern.arg(number) : pattern;
}

bool addLinks(const Project &project, const Streams &streams)
{
    QSqlQuery query(project.database());
    for (const char *statement : tables) {
        if (query.exec(QLatin1String(statement)))
            continue;
        streams.complain(QStringLiteral("%1 cannot be written").arg(project.path()));
        return false;
    }
    return true;
}

bool addTags(Project &project, const Streams &streams)
{
    for (const Series &row : series) {
        for (int index = 0; index < row.count; ++index) {
            const QString name = numbered(row.name, index + 1);
            const QString address = numbered(row.address, row.first + index * row.step);
            const QString reason = project.refusal(row.link, row.dataType, address, row.scale);
            if (!reason.isEmpty()) {
                streams.complain(QStringLiteral("%1, %2: %3").arg(name, address, reason));
                return false;
            }
            if (!project.tags().addTag(name, address, row.link, row.dataType, row.scale))
                return false;
        }
    }
    return true;
}

} // namespace

ExitCode makeSampleProject(const QString &path, const Streams &streams)
{
    if (QFileInfo::exists(path)) {
        streams.complain(QStringLiteral("%1 is there already; it stays as it is").arg(path));
        return Unreadable;
    }
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly)) {
            streams.complain(QStringLiteral("%1 cannot be made: %2").arg(path, file.errorString()));
            return Unreadable;
        }
    }
    bool isMade = false;
    {
        Project project(streams);
        isMade = project.open(path, Project::Access::ReadWrite) && addLinks(project, streams) &&
                 addTags(project, streams) && !project.hasFailed() && project.commit();
    }
    if (isMade)
        return Success;
    QFile::remove(path);
    return Unreadable;
}
