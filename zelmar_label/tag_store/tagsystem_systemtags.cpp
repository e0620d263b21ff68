// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/tag_store/tagids_p.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include <algorithm>

namespace {

using Information = SystemTagItemInformation;

constexpr int number = 3;
constexpr int text = 7;
constexpr int unixTime = 8;

constexpr int systemIds = label::lastSystemTagId - label::firstSystemTagId + 1;

struct SystemTag
{
    int key;
    int id;
    const char *name;
    int dataType;
    Information::TagType tagType;
};

// The tags that read back a clock value have the id of the tag that sets it.
constexpr SystemTag countedTags[] = {
    {20010, 20010, "S>Current_screen_name", text, Information::InformationTag},
    {20011, 20011, "S>Change_screen", number, Information::ControlTag},
    {20012, 20012, "S>Current_screen", number, Information::InformationTag},
    {20020, 20020, "S>Full_time", text, Information::InformationTag},
    {20021, 20021, "S>Full_date", text, Information::InformationTag},
    {20022, 20022, "S>Year", number, Information::ControlTag},
    {20023, 20023, "S>Month", number, Information::ControlTag},
    {20024, 20024, "S>Day", number, Information::ControlTag},
    {20025, 20025, "S>Hour", number, Information::ControlTag},
    {20026, 20026, "S>Minute", number, Information::ControlTag},
    {20027, 20027, "S>Second", number, Information::ControlTag},
    {20028, 20028, "S>WeekDay", number, Information::InformationTag},
    {20030, 20030, "S>Current_USER", text, Information::InformationTag},
    {20031, 20031, "S>Current_user_security_group_list", text, Information::InformationTag},
    {20050, 20050, "S>Current_alarm_count", number, Information::InformationTag},
    {20060, 20060, "S>User_Command", text, Information::ControlTag},
    {20070, 20070, "S>R_Timestamp", text, Information::InformationTag},
    {20071, 20071, "S>Set_DateTime", text, Information::ControlTag},
    {20072, 20072, "S>R_Timestamp_Unix", unixTime, Information::InformationTag},
    {20090, 20090, "S>SD_card_size", number, Information::InformationTag},
    {20091, 20091, "S>USB_MemoryStick_size", number, Information::InformationTag},
    {20092, 20092, "S>IP_Address", text, Information::InformationTag},
    {20093, 20093, "S>Current_language_ID", number, Information::ControlTag},
    {20095, 20095, "S>Backlight", number, Information::ControlTag},
    {20096, 20096, "S>CF_card_accessing_bit", number, Information::InformationTag},
    {20097, 20097, "S>USB_accessing_bit", number, Information::InformationTag},
    {20098, 20098, "S>Flash_free_size", number, Information::InformationTag},
    {20099, 20099, "S>Buzzer_enable_bit", number, Information::ControlTag},
    {20100, 20100, "S>R_Current_language_ID", number, Information::InformationTag},
    {20101, 20101, "S>R_Idle_Time", number, Information::InformationTag},
    {20102, 20102, "S>R_MAC_Address", text, Information::InformationTag},
    {20201, 20022, "S>R_Year", number, Information::InformationTag},
    {20202, 20023, "S>R_Month", number, Information::InformationTag},
    {20203, 20024, "S>R_Day", number, Information::InformationTag},
    {20204, 20025, "S>R_Hour", number, Information::InformationTag},
    {20205, 20026, "S>R_Minute", number, Information::InformationTag},
    {20206, 20027, "S>R_Second", number, Information::InformationTag},
    {20207, 20207, "S>Week", number, Information::InformationTag},
    {20901, 20901, "S>Cpu_usage", number, Information::InformationTag},
    {20902, 20902, "S>Ram_left", number, Information::InformationTag},
    {20930, 20930, "S>Barcode_index", number, Information::ControlTag},
};

// In the table, but in neither count.
constexpr SystemTag uncountedTags[] = {
    {20900, 20900, "S>Change_screen_time", number, Information::InformationTag},
    {20999, 20999, "S>NULL", number, Information::InformationTag},
};

Information informationOf(const SystemTag &tag)
{
    return Information(tag.id, QLatin1String(tag.name), tag.tagType,
                       static_cast<CommunicatorCommand::DataType>(tag.dataType));
}

} // namespace

void TagSystem::initSystemTags()
{
    for (const SystemTag &tag : countedTags)
        m_systemTags.insert(tag.key, informationOf(tag));
    for (const Information &tag : qAsConst(m_systemTags)) {
        if (tag.tagType == Information::ControlTag)
            ++m_numControlSystemTag;
        else if (tag.tagType == Information::InformationTag)
            ++m_numInforSystemTag;
    }
    for (const SystemTag &tag : uncountedTags)
        m_systemTags.insert(tag.key, informationOf(tag));
    m_isDefaultSystemTag = std::make_unique<std::atomic<bool>[]>(systemIds);
}

SystemTagItemInformation::TagType TagSystem::getSystemTagType(int id)
{
    const auto tag = m_systemTags.constFind(id);
    return tag == m_systemTags.constEnd() ? Information::InvalidTag : tag->tagType;
}

CommunicatorCommand::DataType TagSystem::getSystemTagDataType(int id)
{
    const auto tag = m_systemTags.constFind(id);
    return tag == m_systemTags.constEnd() ? CommunicatorCommand::Invalid : tag->dataType;
}

bool TagSystem::isControlSystemTag(int id) const
{
    return m_systemTags.value(id).tagType == Information::ControlTag;
}

/// The name of a system id's tag; empty when there is none.
QString TagSystem::systemTagName(int id) const
{
    const auto tag = m_systemTags.constFind(id);
    if (tag != m_systemTags.constEnd())
        return tag->name;
    return m_isDefaultSystemTag[id - label::firstSystemTagId] ? Information().name : QString();
}

/// The lowest id of a system tag with this name; -1 when there is none.
int TagSystem::systemTagId(const QString &name) const
{
    for (auto tag = m_systemTags.constBegin(); tag != m_systemTags.constEnd(); ++tag) {
        if (tag->name == name)
            return tag.key();
    }
    if (name != Information().name)
        return -1;
    const std::atomic<bool> *const first = m_isDefaultSystemTag.get();
    const std::atomic<bool> *const found = std::find(first, first + systemIds, true);
    return found == first + systemIds ? -1 : label::firstSystemTagId + static_cast<int>(found - first);
}

/// The data type of a system id's tag. An id without a tag gets a default tag, which stays.
CommunicatorCommand::DataType TagSystem::keptSystemTagDataType(int id)
{
    const auto tag = m_systemTags.constFind(id);
    if (tag != m_systemTags.constEnd())
        return tag->dataType;
    m_isDefaultSystemTag[id - label::firstSystemTagId] = true;
    return Information().dataType;
}

int TagSystem::numControlSystemTag() const
{
    return m_numControlSystemTag;
}

int TagSystem::numInforSystemTag() const
{
    return m_numInforSystemTag;
}
