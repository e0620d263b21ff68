// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/tag_store/systemtagiteminformation.h"

SystemTagItemInformation::SystemTagItemInformation(QObject *parent)
    : QObject(parent)
    , name(QStringLiteral("s>invalid"))
{
}

SystemTagItemInformation::SystemTagItemInformation(int tagId, const QString &tagName, TagType type,
                                                   CommunicatorCommand::DataType valueType, QObject *parent)
    : QObject(parent)
    , id(tagId)
    , name(tagName)
    , dataType(valueType)
    , tagType(type)
{
}

SystemTagItemInformation::SystemTagItemInformation(const SystemTagItemInformation &other)
    : QObject(nullptr)
{
    copy(other);
}

SystemTagItemInformation &SystemTagItemInformation::operator=(const SystemTagItemInformation &other)
{
    copy(other);
    return *this;
}

SystemTagItemInformation::~SystemTagItemInformation() = default;

void SystemTagItemInformation::copy(const SystemTagItemInformation &other)
{
    id = other.id;
    name = other.name;
    dataType = other.dataType;
    tagType = other.tagType;
}
