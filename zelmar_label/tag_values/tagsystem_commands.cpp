// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/address_grammar/mutexlocker_p.h"
#include "zelmar_label/label_table/labelinterface.h"
#include "zelmar_label/tag_store/tagids_p.h"
#include "zelmar_label/tag_store/tagstatements_p.h"
#include "zelmar_label/tag_store/tagsystem.h"
#include "zelmar_label/tag_values/tagdatatype_p.h"

#include <QDebug>

namespace {

constexpr int textInSystemTag = 7;

CommunicatorCommand::DataType commandTypeOf(int tagType)
{
    switch (tagType) {
    case label::TagBit:
        return CommunicatorCommand::Bit;
    case label::TagInt8:
    case label::TagUInt8:
        return CommunicatorCommand::Byte;
    case label::TagInt16:
    case label::TagUInt16:
        return CommunicatorCommand::Word;
    case label::TagInt32:
    case label::TagUInt32:
    case label::TagFloat:
        return CommunicatorCommand::DoubleWord;
    case label::TagAscii:
        return CommunicatorCommand::Text;
    case label::TagDouble:
    case label::TagInt64:
    case label::TagUInt64:
        return CommunicatorCommand::QuadWord;
    default:
        return CommunicatorCommand::Invalid;
    }
}

void setTag(CommunicatorCommand &command, int tagType, const QString &address, int scale)
{
    command.address = address;
    command.dataType = commandTypeOf(tagType);
    command.length =
        command.dataType == CommunicatorCommand::Text ? static_cast<quint64>(static_cast<qint64>(scale)) : 1;
}

/// The longest block of a format in units of the tag. Types are enumeration numbers: a difference of one means half or
/// double.
int blockInTagUnits(int block, int formatType, int tagType)
{
    if (formatType <= 0 || tagType <= 0)
        return block;
    switch (tagType - formatType) {
    case 1:
        return block / 2;
    case 2:
        return block / 4;
    case -1:
        return static_cast<int>(qMin<qint64>(qint64(block) * 2, std::numeric_limits<int>::max()));
    case -2:
        return static_cast<int>(qMin<qint64>(qint64(block) * 4, std::numeric_limits<int>::max()));
    default:
        return block;
    }
}

CommunicatorCommand blockAt(const QList<CommunicatorCommand> &run, int index, int length)
{
    CommunicatorCommand block = run.value(index);
    block.length = static_cast<quint64>(length);
    return block;
}

} // namespace

CommunicatorCommand TagSystem::getCommunicatorCommandByIndex(int id, bool &ok)
{
    return m_catchTableReady && !isNotNormalTag(id) ? caughtCommand(id, ok) : commandOf(id, ok, 0);
}

CommunicatorCommand TagSystem::caughtCommand(int id, bool &ok)
{
    CommunicatorCommand command;
    const label::MutexLocker locker(&m_mutex);
    const auto record = m_catchTable.constFind(id);
    ok = record != m_catchTable.constEnd();
    if (ok) {
        setTag(command, record->dataType, record->address, record->scale);
        return command;
    }
    command.address = QString(QLatin1String(""));
    command.scanTime = -1;
    command.dataType = CommunicatorCommand::Invalid;
    return command;
}

/// `redirections` counts the recipe tags followed, which may form a circle.
CommunicatorCommand TagSystem::commandOf(int id, bool &ok, int redirections)
{
    if (m_catchTableReady && !isNotNormalTag(id))
        return caughtCommand(id, ok);
    CommunicatorCommand command;
    ok = true;
    if (isSystemID(id)) {
        const QString name = systemTagName(id);
        if (!name.isEmpty())
            command.address = name;
        return command;
    }
    label::MutexLocker locker(&m_mutex);
    if (isRecipeID(id)) {
        const bool isItem = m_recipeTags.contains(id);
        const bool isCircle = redirections > m_recipeTags.size() + m_recipeRowTags.size();
        if (isCircle || (!isItem && !m_recipeRowTags.contains(id)))
            return command;
        const int connected = isItem ? m_recipeConnectedIDs.value(id) : m_recipeRowConnectedIDs.value(id);
        const QString name = isItem ? m_recipeTags.value(id) : m_recipeRowTags.value(id);
        locker.unlock();
        bool ignored = false;
        command = commandOf(connected, ignored, redirections + 1);
        command.address = name;
        if (isItem)
            command.auxiliaryNumber = -1;
        return command;
    }
    CommunicatorCommand read;
    int rows = 0;
    label::TagStatements::forEachRow(
        database(), QStringLiteral("SELECT id,data_type,address,scan_time,scale FROM custom_tag_table WHERE id = ?"),
        {id}, [&read, &rows](const QSqlQuery &row) {
            ++rows;
            setTag(read, row.value(1).toInt(), row.value(2).toString(), row.value(4).toInt());
            read.scanTime = row.value(3).toInt();
        });
    ok = rows == 1;
    return ok ? read : command;
}

int TagSystem::getDataTypeByID(int id)
{
    if (isRecipeID(id)) {
        const int tag = resolvedRecipe(id);
        return tag == -1 ? label::TagInt8 : getDataTypeByID(tag);
    }
    if (isSystemID(id))
        return keptSystemTagDataType(id) == textInSystemTag ? label::TagAscii : label::TagInt32;
    const label::MutexLocker locker(&m_mutex);
    return m_catchTableReady ? caught(id).dataType : getIntValueByID(id, QStringLiteral("data_type"));
}

int TagSystem::getDataSizeByID(int id)
{
    return getDataSizeByType(getDataTypeByID(id));
}

int TagSystem::getDataSizeByType(int type)
{
    switch (type) {
    case label::TagInt16:
    case label::TagUInt16:
        return 2;
    case label::TagInt32:
    case label::TagUInt32:
    case label::TagFloat:
        return 4;
    case label::TagDouble:
    case label::TagInt64:
    case label::TagUInt64:
        return 8;
    default:
        return 1;
    }
}

int TagSystem::getCommunicatorCommandDataType(int type)
{
    return commandTypeOf(type);
}

bool TagSystem::isReadOnce(int id)
{
    bool ok = false;
    const CommunicatorCommand command = getCommunicatorCommandByIndex(id, ok);
    return ok && command.scanTime == 0;
}

bool TagSystem::isBitType(int id)
{
    bool ok = false;
    const CommunicatorCommand command = getCommunicatorCommandByIndex(id, ok);
    return ok && command.dataType == CommunicatorCommand::Bit;
}

QString TagSystem::normalizedAddress(const QString &address)
{
    return address;
}

/// The label for a tag, and its command; null without a link and, after a line in the log, without a label.
std::shared_ptr<label::LabelInterface> TagSystem::labelOf(int id, CommunicatorCommand &command, const char *missing)
{
    bool ok = false;
    command = getCommunicatorCommandByIndex(id, ok);
    const int link = ok ? getCommunicatorID(id) : -1;
    if (link == -1)
        return nullptr;
    std::shared_ptr<label::LabelInterface> device = holdLabelOf(link);
    if (!device && missing)
        qCritical() << missing;
    return device;
}

QString TagSystem::getPrefixSymbol(int id)
{
    CommunicatorCommand command;
    const std::shared_ptr<label::LabelInterface> device =
        labelOf(id, command, "error TagSystem::getPrefixSymbol label is NULL");
    if (!device)
        return QString();
    const int row = device->addressValidation(command.address, command.dataType);
    return row == -1 ? QString() : device->getPrefixSymbolByTypeID(row);
}

QList<CommunicatorCommand> TagSystem::getContinuousCommand(int id, int count)
{
    CommunicatorCommand command;
    const std::shared_ptr<label::LabelInterface> device =
        labelOf(id, command, "error TagSystem::getContinuousCommand label is null");
    if (!device)
        return {};
    const int row = device->addressValidation(command.getAddressString(), command.dataType);
    if (row == -1) {
        qCritical() << "validation failed";
        return {};
    }
    return device->makeContinueCommand(row, command, count);
}

QList<CommunicatorCommand> TagSystem::getContinuousCommandwithCap(int id, int count, int cap, bool checkRange)
{
    CommunicatorCommand command;
    const std::shared_ptr<label::LabelInterface> device =
        labelOf(id, command, "error TagSystem::getContinuousCommandwithCap label is null");
    if (!device)
        return {};
    const int row = device->addressValidation(command.address, command.dataType);
    return row == -1 ? QList<CommunicatorCommand>()
                     : device->makeContinueCommandwithCap(row, command, count, cap, checkRange);
}

bool TagSystem::creatBlockCommand(int id, int count, QList<CommunicatorCommand> &out)
{
    CommunicatorCommand command;
    const std::shared_ptr<label::LabelInterface> device = labelOf(id, command, nullptr);
    if (!device)
        return false;
    const int row = device->addressValidation(command.address, command.dataType);
    if (row == -1)
        return false;
    const QList<CommunicatorCommand> run = getContinuousCommand(id, count);
    if (run.size() != count)
        return false;
    const int block = blockInTagUnits(device->blocksize(row), device->datatype(row), command.dataType);
    // Without room for one item the loop would never end.
    if (block <= 0)
        return false;
    out.clear();
    if (block >= count) {
        command.length = static_cast<quint64>(count);
        out.append(command);
        return true;
    }
    int index = 0;
    for (; count - index > block; index += block)
        out.append(blockAt(run, index, block));
    out.append(blockAt(run, index, count - index));
    return true;
}
