// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_PROJECTFILES_LABELFORWARDER_H
#define ZELMAR_LABEL_PROJECTFILES_LABELFORWARDER_H

#include "zelmar_label/label_table/labelinterface.h"

/// Forwards all calls to another label. A derived class can change some answers. It does not own the other label.
class LabelForwarder : public label::LabelInterface
{
public:
    explicit LabelForwarder(label::LabelInterface &label)
        : m_label(label)
    {
    }

    int countBitTypes() override { return m_label.countBitTypes(); }
    int countRegisterTypes() override { return m_label.countRegisterTypes(); }
    int base(int row) override { return m_label.base(row); }
    int datatype(int row) override { return m_label.datatype(row); }
    int datasize(int row) override { return m_label.datasize(row); }
    int addressRange(int row, const QString &address) override { return m_label.addressRange(row, address); }
    bool parseAddress(const QString &address, QString &prefix, QString &range) override
    {
        return m_label.parseAddress(address, prefix, range);
    }
    int addressValidation(const QString &address, int type) override
    {
        return m_label.addressValidation(address, type);
    }
    QList<int> getAllMatchedIndex(const QString &address, int type) override
    {
        return m_label.getAllMatchedIndex(address, type);
    }
    QList<int> getAllMatchedSymbol(const QString &symbol, int type) override
    {
        return m_label.getAllMatchedSymbol(symbol, type);
    }
    QString getPrefixSymbolByTypeID(int row) override { return m_label.getPrefixSymbolByTypeID(row); }
    QString getEditUsedPrifixSymbolByTypeId(int row) override { return m_label.getEditUsedPrifixSymbolByTypeId(row); }
    QString getFormatString(int row) override { return m_label.getFormatString(row); }
    QString getCatchTableName(const QString &address, int type) override
    {
        return m_label.getCatchTableName(address, type);
    }
    int getBlockCommandMaxSize() override { return m_label.getBlockCommandMaxSize(); }
    int getBitCommandMaxSize() override { return m_label.getBitCommandMaxSize(); }
    bool isMustContinue(int row) override { return m_label.isMustContinue(row); }
    int alignmentSize(int row) override { return m_label.alignmentSize(row); }
    int bitOffset(int row, const QString &address) override { return m_label.bitOffset(row, address); }
    bool canConvertToRegisterCommand(int row) override { return m_label.canConvertToRegisterCommand(row); }
    CommunicatorCommand convertBitCommandToRegisterCommand(const CommunicatorCommand &command, int &row) override
    {
        return m_label.convertBitCommandToRegisterCommand(command, row);
    }
    bool isCommandInBlockRange(int row, const CommunicatorCommand &command, const CommunicatorCommand &block) override
    {
        return m_label.isCommandInBlockRange(row, command, block);
    }
    int calculateOffsetByte(int row, const CommunicatorCommand &base, const CommunicatorCommand &command) override
    {
        return m_label.calculateOffsetByte(row, base, command);
    }
    QStringList prefixSymbolsByType(label::Type type) override { return m_label.prefixSymbolsByType(type); }
    QStringList commandFormatsByType(label::Type type) override { return m_label.commandFormatsByType(type); }
    QStringList registerCommandFormats() override { return m_label.registerCommandFormats(); }
    QStringList bitCommandFormats() override { return m_label.bitCommandFormats(); }
    QStringList reservCommandFormats() override { return m_label.reservCommandFormats(); }
    QStringList registerPrefixSymbols() override { return m_label.registerPrefixSymbols(); }
    QStringList bitPrefixSymbols() override { return m_label.bitPrefixSymbols(); }
    QStringList reservPrefixSymbols() override { return m_label.reservPrefixSymbols(); }
    QStringList prefixSymbols() override { return m_label.prefixSymbols(); }
    QList<CommunicatorCommand> normalizeCommand(int row, const CommunicatorCommand &command) override
    {
        return m_label.normalizeCommand(row, command);
    }
    QList<CommunicatorCommand> makeContinueCommand(int row, const CommunicatorCommand &command, int count) override
    {
        return m_label.makeContinueCommand(row, command, count);
    }
    QList<CommunicatorCommand> makeContinueCommandwithCap(int row, const CommunicatorCommand &command, int count,
                                                          int cap, bool checkRange) override
    {
        return m_label.makeContinueCommandwithCap(row, command, count, cap, checkRange);
    }
    CommunicatorCommand makeBlockCommandWithoutSizeLimit(int stationId, int row, int start, int length) override
    {
        return m_label.makeBlockCommandWithoutSizeLimit(stationId, row, start, length);
    }
    QList<CommunicatorCommand> makeBlockCommand(int stationId, int row, int start, int length) override
    {
        return m_label.makeBlockCommand(stationId, row, start, length);
    }
    bool needOptimize(int row) override { return m_label.needOptimize(row); }
    bool isTypeNeedAlignmentByte(int row) override { return m_label.isTypeNeedAlignmentByte(row); }
    int blocksize(int row) override { return m_label.blocksize(row); }

protected:
    ~LabelForwarder() = default;

private:
    label::LabelInterface &m_label;
};

#endif
