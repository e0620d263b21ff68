// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/label_table/labelloader.h"

#include "zelmar_label/address_grammar/mutexlocker_p.h"
#include "zelmar_label/label_table/addressfamily.h"
#include "zelmar_label/label_table/dynamicmember_p.h"
#include "zelmar_label/label_table/releasestorage_p.h"

#include <utility>

namespace label {

LabelLoader::LabelLoader() = default;

LabelLoader::LabelLoader(const CommandInformationTalbe &table)
    : LabelLoader(table, nullptr)
{
}

LabelLoader::LabelLoader(const CommandInformationTalbe &table, DynamicLabelCreatorInterface *creator)
    : deviceTypes(table)
{
    deviceTypes.compile();
    setCreator(creator);
}

LabelLoader::~LabelLoader()
{
    releaseStorage(m_creator);
}

void LabelLoader::setDeviceTypesTable(const CommandInformationTalbe &table)
{
    setDeviceTypesTable(CommandInformationTalbe(table));
}

void LabelLoader::setDeviceTypesTable(CommandInformationTalbe &&table)
{
    deviceTypes = std::move(table);
    deviceTypes.compile();
    findTemplates();
}

const CommandInformationTalbe &LabelLoader::deviceTypesTable() const
{
    return deviceTypes;
}

void LabelLoader::setCreator(DynamicLabelCreatorInterface *creator)
{
    if (creator == m_creator)
        return;
    releaseStorage(m_creator);
    m_creator = creator;
    m_families = dynamic_cast<const FamilyCreator *>(creator);
    findTemplates();
}

void LabelLoader::findTemplates()
{
    m_templates.clear();
    if (!m_families)
        return;
    const int count = deviceTypes.countFormatters();
    for (int row = 0; row < count; ++row) {
        const CommandFormatter &formatter = *deviceTypes.formatterAt(row);
        for (const FamilyForm &form : m_families->family().forms()) {
            if (formatter.isFamilyTemplate() && form.mayHaveTemplate(formatter.pattern()))
                m_templates.push_back({&form, row});
        }
    }
}

void LabelLoader::setMaxBlockSize(int size)
{
    maxBlockSize = size;
}

void LabelLoader::setMaxBitBlockSize(int size)
{
    maxBitBlockSize = size;
}

int LabelLoader::countType(int) const
{
    return deviceTypes.countFormatters();
}

int LabelLoader::countReservTypes() const
{
    return 0;
}

int LabelLoader::countBitTypes()
{
    return deviceTypes.countFormatters();
}

int LabelLoader::countRegisterTypes()
{
    return deviceTypes.countFormatters();
}

int LabelLoader::base(int typeIndex)
{
    return deviceTypes.base(typeIndex);
}

int LabelLoader::datatype(int typeIndex)
{
    return deviceTypes.datatype(typeIndex);
}

int LabelLoader::datasize(int typeIndex)
{
    return deviceTypes.datasize(typeIndex);
}

int LabelLoader::addressRange(int typeIndex, const QString &address)
{
    return deviceTypes.addressRange(typeIndex, address);
}

bool LabelLoader::parseAddress(const QString &address, QString &prefix, QString &range)
{
    const CommandFormatter *row = deviceTypes.formatterAt(deviceTypes.getFirstMatchedAddressIndex(address, anyType));
    if (!row)
        return false;
    prefix = row->getEditorUsedPrefixsymbol();
    range = row->getEditorUsedRangeString(address);
    return true;
}

int LabelLoader::addressValidation(const QString &address, int type)
{
    const int known = deviceTypes.countFormatters();
    const int index = deviceTypes.getFirstMatchedAddressIndex(address, type);
    return index >= 0 ? index : addDynamicRow(address, type, known);
}

int LabelLoader::addDynamicRow(const QString &address, int type, int known)
{
    if (!m_creator || (m_families && m_families->isAtRest() && !m_families->family().formOf(address)))
        return -1;
    const MutexLocker<std::mutex> locker(&m_growing);
    if (deviceTypes.countFormatters() != known) {
        const int added = deviceTypes.getFirstMatchedAddressIndex(address, type);
        if (added >= known)
            return added;
    }
    DynamicLabelItem item;
    const std::optional<DynamicMember> member = memberOf(m_creator->create(address, item), item);
    if (!member)
        return -1;
    CommandFormatter row = deviceTypes.getFormatterAtIndex(member->templateIndex);
    member->shape(row);
    deviceTypes.addCommandFormatter(std::move(row));
    deviceTypes.compile();
    return deviceTypes.countFormatters() - 1;
}

std::optional<DynamicMember> LabelLoader::foreseenMember(const QString &address) const
{
    const MutexLocker<std::mutex> locker(&m_growing);
    DynamicLabelItem item;
    return memberOf(m_creator && foresee(*m_creator, address, item), item);
}

std::optional<DynamicMember> LabelLoader::memberOf(bool isRecognised, const DynamicLabelItem &item) const
{
    const int templateIndex = isRecognised ? deviceTypes.getFormatterIndexByPattern(item.basePattern) : -1;
    if (templateIndex < 0)
        return std::nullopt;
    return DynamicMember{templateIndex, item};
}

QList<int> LabelLoader::getAllMatchedIndex(const QString &address, int type)
{
    return deviceTypes.getAllPartialMatchedAddressIndex(address, type);
}

QList<int> LabelLoader::getAllMatchedSymbol(const QString &symbol, int type)
{
    return deviceTypes.getAllMatchedSymbo(symbol, type);
}

QString LabelLoader::getPrefixSymbolByTypeID(int typeIndex)
{
    return deviceTypes.getPrefixSymbolByTypeID(typeIndex);
}

QString LabelLoader::getEditUsedPrifixSymbolByTypeId(int typeIndex)
{
    const CommandFormatter *row = deviceTypes.formatterAt(typeIndex);
    return row ? row->getEditorUsedPrefixsymbol() : QString();
}

QString LabelLoader::getFormatString(int typeIndex)
{
    return deviceTypes.formatstring(typeIndex);
}

QString LabelLoader::getCatchTableName(const QString &address, int type)
{
    return deviceTypes.getCatchTableName(address, type);
}

int LabelLoader::getBlockCommandMaxSize()
{
    return maxBlockSize;
}

int LabelLoader::getBitCommandMaxSize()
{
    return maxBitBlockSize;
}

int LabelLoader::alignmentSize(int typeIndex)
{
    return deviceTypes.alignmentSize(typeIndex);
}

int LabelLoader::bitOffset(int typeIndex, const QString &address)
{
    return deviceTypes.bitOffset(typeIndex, address);
}

bool LabelLoader::canConvertToRegisterCommand(int typeIndex)
{
    return deviceTypes.canConvertRegisterCommand(typeIndex);
}

QStringList LabelLoader::prefixSymbolsByType(label::Type type)
{
    return deviceTypes.prefixSymbolsByType(type);
}

QStringList LabelLoader::commandFormatsByType(label::Type type)
{
    return deviceTypes.formatStringsByType(type);
}

QStringList LabelLoader::registerCommandFormats()
{
    return deviceTypes.registerCommandFormats();
}

QStringList LabelLoader::bitCommandFormats()
{
    return deviceTypes.bitCommandFormats();
}

QStringList LabelLoader::reservCommandFormats()
{
    return deviceTypes.reserveCommandFormats();
}

QStringList LabelLoader::registerPrefixSymbols()
{
    return deviceTypes.registerPrefixSymbols();
}

QStringList LabelLoader::bitPrefixSymbols()
{
    return deviceTypes.bitPrefixSymbols();
}

QStringList LabelLoader::reservPrefixSymbols()
{
    return deviceTypes.reservePrefixSymbols();
}

QStringList LabelLoader::prefixSymbols()
{
    return deviceTypes.prefixSymbols();
}

QList<CommunicatorCommand> LabelLoader::normalizeCommand(int typeIndex, const CommunicatorCommand &command)
{
    return deviceTypes.normalizeCommand(typeIndex, command);
}

QList<CommunicatorCommand> LabelLoader::makeContinueCommand(int typeIndex, const CommunicatorCommand &command,
                                                            int count)
{
    return deviceTypes.makeContinueCommand(typeIndex, command, count);
}

QList<CommunicatorCommand> LabelLoader::makeContinueCommandwithCap(int typeIndex, const CommunicatorCommand &command,
                                                                   int count, int cap, bool checkRange)
{
    return deviceTypes.makeContinueCommandwithCap(typeIndex, command, count, cap, checkRange);
}

CommunicatorCommand LabelLoader::makeBlockCommandWithoutSizeLimit(int stationId, int typeIndex, int start, int length)
{
    return deviceTypes.makeBlockCommandWithoutSizeLimit(stationId, typeIndex, start, length);
}

QList<CommunicatorCommand> LabelLoader::makeBlockCommand(int stationId, int typeIndex, int start, int length)
{
    return deviceTypes.makeBlockCommand(stationId, typeIndex, start, length);
}

bool LabelLoader::needOptimize(int typeIndex)
{
    return deviceTypes.needOptimize(typeIndex);
}

bool LabelLoader::isTypeNeedAlignmentByte(int typeIndex)
{
    return deviceTypes.isTypeNeedAlignmentByte(typeIndex);
}

int LabelLoader::blocksize(int typeIndex)
{
    return deviceTypes.blocksize(typeIndex);
}

} // namespace label
