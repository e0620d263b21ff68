// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_FAKELABEL_H
#define ZELMAR_LABEL_TESTS_FAKELABEL_H

#include "zelmar_label/label_table/labelinterface.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

/// A label that records its calls in order and returns what a test has set, else the values for a wrong type index.
class FakeLabel final : public label::LabelInterface
{
public:
    QStringList registerSymbols;
    QStringList bitSymbols;
    /// Answers of `getAllMatchedIndex` by address and of `getAllMatchedSymbol` by symbol, whatever the type.
    QHash<QString, QList<int>> rowsOfAddress;
    QHash<QString, QList<int>> rowsOfSymbol;
    /// By type index.
    QStringList formats;
    /// By address; all others are not valid.
    QHash<QString, int> validRows;
    /// By address, as "symbol|range"; all others cannot be split.
    QHash<QString, QString> parts;

    /// The calls since the last query, as "getAllMatchedIndex(D1, 2)".
    QStringList take();

    /// The calls of this operation since the last query.
    QStringList take(const QString &operation);

    int countBitTypes() override;
    int countRegisterTypes() override;
    int base(int typeIndex) override;
    int datatype(int typeIndex) override;
    int datasize(int typeIndex) override;
    int addressRange(int typeIndex, const QString &address) override;
    bool parseAddress(const QString &address, QString &prefix, QString &range) override;
    int addressValidation(const QString &address, int type) override;
    QList<int> getAllMatchedIndex(const QString &address, int type) override;
    QList<int> getAllMatchedSymbol(const QString &symbol, int type) override;
    QString getPrefixSymbolByTypeID(int typeIndex) override;
    QString getEditUsedPrifixSymbolByTypeId(int typeIndex) override;
    QString getFormatString(int typeIndex) override;
    QString getCatchTableName(const QString &address, int type) override;
    int getBlockCommandMaxSize() override;
    int getBitCommandMaxSize() override;
    bool isMustContinue(int typeIndex) override;
    int alignmentSize(int typeIndex) override;
    int bitOffset(int typeIndex, const QString &address) override;
    bool canConvertToRegisterCommand(int typeIndex) override;
    CommunicatorCommand convertBitCommandToRegisterCommand(const CommunicatorCommand &command, int &typeIndex) override;
    bool isCommandInBlockRange(int typeIndex, const CommunicatorCommand &command,
                               const CommunicatorCommand &block) override;
    int calculateOffsetByte(int typeIndex, const CommunicatorCommand &base,
                            const CommunicatorCommand &command) override;
    QStringList prefixSymbolsByType(label::Type type) override;
    QStringList commandFormatsByType(label::Type type) override;
    QStringList registerCommandFormats() override;
    QStringList bitCommandFormats() override;
    QStringList reservCommandFormats() override;
    QStringList registerPrefixSymbols() override;
    QStringList bitPrefixSymbols() override;
    QStringList reservPrefixSymbols() override;
    QStringList prefixSymbols() override;
    QList<CommunicatorCommand> normalizeCommand(int typeIndex, const CommunicatorCommand &command) override;
    QList<CommunicatorCommand> makeContinueCommand(int typeIndex, const CommunicatorCommand &command,
                                                   int count) override;
    QList<CommunicatorCommand> makeContinueCommandwithCap(int typeIndex, const CommunicatorCommand &command, int count,
                                                          int cap, bool checkRange) override;
    CommunicatorCommand makeBlockCommandWithoutSizeLimit(int stationId, int typeIndex, int start, int length) override;
    QList<CommunicatorCommand> makeBlockCommand(int stationId, int typeIndex, int start, int length) override;
    bool needOptimize(int typeIndex) override;
    bool isTypeNeedAlignmentByte(int typeIndex) override;
    int blocksize(int typeIndex) override;

private:
    template<typename... Arguments>
    void note(const char *operation, const Arguments &...arguments);

    QStringList m_asked;
};

#endif
