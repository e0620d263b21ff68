// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_LABELLOADER_H
#define ZELMAR_LABEL_LABELLOADER_H

#include "zelmar_label/label_table/addressverdict.h"
#include "zelmar_label/label_table/commandinformationtalbe.h"
#include "zelmar_label/label_table/labelinterface.h"
#include "zelmar_label/zelmar_label_export.h"

#include <QStringView>

#include <mutex>
#include <optional>
#include <vector>

namespace label {

class DynamicLabelCreatorInterface;
class FamilyCreator;
struct FamilyForm;
struct DynamicLabelItem;
struct DynamicMember;

/// A row that a form of a dynamic family uses as template.
struct FamilyTemplate
{
    const FamilyForm *form;
    int row;
};

/// A label for one device table. A creator may extend the table during use.
///
/// Any number of threads may call the operations of `LabelInterface`, `judge` and `canonicalAddress` at once. Set
/// table, creator and block limits before other threads get the label. The label calls its creator on one thread at a
/// time.
///
/// Releasing a loader through its `LabelInterface` frees its own storage only; table and creator stay allocated. The
/// label store frees labels this way.
class ZELMAR_LABEL_EXPORT LabelLoader final : public LabelInterface
{
public:
    /// An empty table, both block limits 0, no creator.
    LabelLoader();

    /// Takes the table; both block limits are 0 until set.
    LabelLoader(const CommandInformationTalbe &table);

    /// As above, and takes ownership of `creator`, which may be null.
    LabelLoader(const CommandInformationTalbe &table, DynamicLabelCreatorInterface *creator);

    /// Frees the creator's storage and releases the table.
    ~LabelLoader();

    /// Replaces the table.
    void setDeviceTypesTable(const CommandInformationTalbe &table);
    void setDeviceTypesTable(CommandInformationTalbe &&table);

    /// The table, for reading; references into it last as long as the table.
    const CommandInformationTalbe &deviceTypesTable() const;

    /// Takes ownership of `creator`, which may be null, and frees the old one.
    void setCreator(DynamicLabelCreatorInterface *creator);

    /// Sets what `getBlockCommandMaxSize` and `getBitCommandMaxSize` return. Accepts any number.
    void setMaxBlockSize(int size);
    void setMaxBitBlockSize(int size);

    /// The template rows, with the forms of the creator's family; none for a creator that is no `FamilyCreator`.
    const std::vector<FamilyTemplate> &familyTemplates() const { return m_templates; }

    /// \name Judging addresses
    ///@{
    /// Row, station, number and bit of an address, with or without station, for the type filter `type`: accepted
    /// exactly when `addressValidation` returns a row, except that a new member of a family is also held against the
    /// type and the family's limits. Adds no rows.
    ///
    /// Takes no lock and allocates nothing, except for what a row needs that a script or a pattern outside the known
    /// syntax decides, for a number with blanks or a sign, and for a caller's own creator.
    AddressVerdict judge(QStringView address, int type = anyType) const;

    /// Judges each address; `verdicts` has a place for each.
    void judge(const QStringList &addresses, int type, AddressVerdict *verdicts) const;

    /// The one spelling of an address that the label accepts: the symbol as its row writes it, the numbers without
    /// leading zeros that the row does not need, and letters in the case in which the label writes addresses, where the
    /// row takes them so. `judge` gives the same row, station, number and bit for it; addresses with equal ones and
    /// with the same texts around the number have equal spellings. Empty for an address that is not accepted.
    QString canonicalAddress(const QString &address, int type = anyType) const;
    ///@}

    /// Number of all rows, whatever the argument.
    int countType(int type) const;

    /// Always 0.
    int countReservTypes() const;

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
    Q_DISABLE_COPY(LabelLoader)
    friend class LabelView;

    void findTemplates();

    /// Appends the row for an address of a dynamic family and returns its type index; -1 when the creator refuses the
    /// address or the table has no template for it. Returns the row that another thread appended meanwhile, if there is
    /// one among those behind `known`.
    int addDynamicRow(const QString &address, int type, int known);

    /// Judges a member that no row knows; leaves the verdict on any other address.
    void judgeNewMember(QStringView device, int type, AddressVerdict &verdict) const;

    /// As above, with the row that the creator describes.
    void judgeForeseenMember(QStringView device, int type, AddressVerdict &verdict) const;

    QString canonicalDevice(const QString &device, TextPlace place, const AddressVerdict &verdict, int type) const;

    /// The row that `addDynamicRow` would add. Does not add it and does not change the creator.
    std::optional<DynamicMember> foreseenMember(const QString &address) const;

    std::optional<DynamicMember> memberOf(bool isRecognised, const DynamicLabelItem &item) const;

    CommandInformationTalbe deviceTypes;
    int maxBlockSize = 0;
    int maxBitBlockSize = 0;
    DynamicLabelCreatorInterface *m_creator = nullptr;
    /// The same creator, if its family is known as forms.
    const FamilyCreator *m_families = nullptr;
    std::vector<FamilyTemplate> m_templates;
    /// Held while the creator is called and rows are added.
    mutable std::mutex m_growing;
};

} // namespace label

#endif
