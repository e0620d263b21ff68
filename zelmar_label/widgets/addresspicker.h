// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ADDRESSPICKER_H
#define ZELMAR_LABEL_ADDRESSPICKER_H

#include "zelmar_label/zelmar_label_export.h"

#include <QFont>
#include <QList>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>

QT_BEGIN_NAMESPACE
class QSortFilterProxyModel;
QT_END_NAMESPACE

namespace label {
class LabelInterface;
}

/// The widget to enter one device address: data type, station number, prefix symbol and the text after it, with a list
/// of the address formats that match so far.
///
/// It reads everything about the device from a label. The caller keeps the label, may replace it at any time, and must
/// keep it until the picker has another one or is deleted. The label must not be null.
///
/// A *data type index* is a position in the list of `setDataTypeList`. One of them is the bit type; it selects bit or
/// register symbols. Index 8, "Ascii" in `TagSystem::dataTypeList`, shows the length. A *device index* is a position in
/// the sorted list of symbols.
///
/// GUI thread only.
class ZELMAR_LABEL_EXPORT AddressPicker : public QWidget
{
    Q_OBJECT

public:
    /// An empty picker on data type 0, without data types, stations and a bit type.
    AddressPicker(label::LabelInterface *label, QWidget *parent);

    /// A picker on an address. `range` is the text after the symbol; it is dropped when the address is not valid.
    /// `length` is a number of characters, 0 or less for none. An empty `stationId` means no station.
    AddressPicker(label::LabelInterface *label, int dataType, const QString &stationId, int deviceIndex,
                  const QString &range, const QStringList &dataTypeList, int bitTypeIndex, const QList<int> &stations,
                  int length, QWidget *parent);

    ~AddressPicker() override;

    /// Refills the picker like the long constructor. Emits only `addressChanged`, once, at the end.
    void resetAddressPicker(label::LabelInterface *label, int dataType, const QString &stationId, int deviceIndex,
                            const QString &range, const QStringList &dataTypeList, int bitTypeIndex,
                            const QList<int> &stations, int length);

    /// Symbol and range, without station, valid or not.
    QString address();

    /// `address`, after the station and "-" if there is a station.
    QString addressWithStationId();

    /// True when the label has a row of any type for the address. May add a row to the label, as `addressValidation`.
    bool isAddressValid();
    bool isAddressValid(const QString &address);

    /// The chosen station in decimal; empty for none.
    QString stationId();

    /// The length in its field; 0 for an empty one.
    int length() const;

    /// Blocks or unblocks the signals of the picker and of its fields for data type, range, symbol and station.
    /// `updateTypesCombo`, `setDataTypeList` and `setAvailableStationNumbers` unblock the field that they fill.
    void setChildrenBlockSignals(bool block);

    /// Rows of the caller's tag table: stored for the caller, not used here.
    void setTagTableCurrentRow(QList<int> rows);
    QList<int> tagTableCurrentRows();

public Q_SLOTS:
    /// Chooses the data type and offers its symbols.
    void setDataType(int type);

    /// Numbers of 0 or less are ignored.
    void setLength(int length);

    /// Refills the list of symbols from the label, sorted and as wide as the widest, and keeps the selected symbol if
    /// it is still there.
    void updateTypesCombo();

    /// Uses `label` from now on, and no longer the old label.
    void setLabel(label::LabelInterface *label);

    /// Selects the station; none for a number that is not in the list. Ignores an empty text.
    void setStationId(const QString &stationId);

    /// Selects the symbol at this position; none outside the list.
    void setDeviceIndex(int deviceIndex);

    /// Writes the text after the symbol, or an empty one if the address would not be valid.
    void setRange(const QString &range);

    void setDataTypeList(const QStringList &dataTypeList);

    /// Takes effect with the next `updateTypesCombo`.
    void setBitTypeIndex(int bitTypeIndex);

    /// Lists these stations in this order, after an empty entry for none, which is selected.
    void setAvailableStationNumbers(const QList<int> &availableStationNumbers);

Q_SIGNALS:
    /// The data type was set, also to the same one. A `setDataType` that changes it emits this twice, a change by the
    /// user once.
    void dataTypeChanged(int newDataTypeIndex);

    /// The selected data type changed.
    void dataTypeChangedToTagTable(int dataType);

    /// Symbol, range or station changed while the range is not empty; `address` includes the station.
    void addressChanged(const QString &address);

    /// The text of the length changed.
    void lengthChanged(const QString &length);

private Q_SLOTS:
    void deviceComboBoxSelectChanged(int index);
    void rangeEditChanged();
    void validationAddress();

private:
    Q_DISABLE_COPY(AddressPicker)

    struct ZELMAR_LABEL_NO_EXPORT Form;

    void connectChildSignals();
    void fillTypesCombo(const QStringList &symbols);
    void makeTypesProxy();
    void fitTypesCombo(const QStringList &symbols);
    void updateRangeLabel();
    void refreshLengthUI();

    std::unique_ptr<Form> ui;
    std::shared_ptr<label::LabelInterface> m_label;
    int m_dataType = 0;
    int m_bitTypeIndex = -1;
    int m_length = 0;
    /// While true, `updateRangeLabel` does nothing.
    bool m_updating = false;
    QList<int> m_tagTableCurrentRows;
    /// Sorts the symbols; created on first use.
    QSortFilterProxyModel *m_typesProxy = nullptr;
    /// The width that the symbols need in the font.
    int m_measuredWidth = 0;
    QStringList m_measuredSymbols;
    QFont m_measuredFont;
};

#endif
