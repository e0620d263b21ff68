// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ADDRESSPICKER_H
#define ZELMAR_LABEL_ADDRESSPICKER_H

#include "zelmar_label/zelmar_label_export.h"

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

/// The widget in which a person composes one device address: data type, station number, prefix symbol and the text
/// behind it, with a live list of the address formats that match so far.
///
/// All that it knows of the device comes from a label, which stays the caller's, can be exchanged at any time and has
/// to outlive the picker or its next label. There is no branch for a null label.
///
/// A *data type index* is a position in the list of `setDataTypeList`. One of them stands for bits; it decides whether
/// bit or register symbols are offered. Index 8, "Ascii" in `TagSystem::dataTypeList`, shows the length. A *device
/// index* is a position in the sorted list of symbols.
///
/// GUI thread only.
class ZELMAR_LABEL_EXPORT AddressPicker : public QWidget
{
    Q_OBJECT

public:
    /// An empty picker on data type 0, without data types, stations and a bit type.
    AddressPicker(label::LabelInterface *label, QWidget *parent);

    /// A picker on an address. `range` is the text behind the symbol and is dropped when it makes no valid address;
    /// `length` is a number of characters, and 0 or less for none. An empty `stationId` stands for no station.
    AddressPicker(label::LabelInterface *label, int dataType, const QString &stationId, int deviceIndex,
                  const QString &range, const QStringList &dataTypeList, int bitTypeIndex, const QList<int> &stations,
                  int length, QWidget *parent);

    ~AddressPicker() override;

    /// Refills the picker in place, as the long constructor fills it. Of the signals only `addressChanged` goes out,
    /// once, at the end.
    void resetAddressPicker(label::LabelInterface *label, int dataType, const QString &stationId, int deviceIndex,
                            const QString &range, const QStringList &dataTypeList, int bitTypeIndex,
                            const QList<int> &stations, int length);

    /// Symbol and range, without station, valid or not.
    QString address();

    /// `address`, preceded by the station and "-" where there is a station.
    QString addressWithStationId();

    /// True when the label has a row of any type for the address. May add a row to the label, as `addressValidation`.
    bool isAddressValid();
    bool isAddressValid(const QString &address);

    /// The chosen station in decimal; empty for none.
    QString stationId();

    /// The length as it stands in its field; 0 for an empty one.
    int length() const;

    /// Blocks or unblocks the signals of the picker and of its fields for data type, range, symbol and station.
    /// `updateTypesCombo`, `setDataTypeList` and `setAvailableStationNumbers` unblock the field that they fill.
    void setChildrenBlockSignals(bool block);

    /// Rows of a caller's tag table that the picker works for: kept for the caller, not used here.
    void setTagTableCurrentRow(QList<int> rows);
    QList<int> tagTableCurrentRows();

public Q_SLOTS:
    /// Chooses the data type and offers its symbols.
    void setDataType(int type);

    /// Numbers of 0 or less are ignored.
    void setLength(int length);

    /// Fills the list of symbols anew from the label, sorted and as wide as the widest, and keeps the chosen symbol if
    /// it is still there.
    void updateTypesCombo();

    /// Works on `label` from now on; the old label is not touched any more.
    void setLabel(label::LabelInterface *label);

    /// Chooses the station; a number that is not offered leaves none chosen, an empty text is ignored.
    void setStationId(const QString &stationId);

    /// Chooses the symbol at this position; none outside the list.
    void setDeviceIndex(int deviceIndex);

    /// Writes the text behind the symbol, or an empty one if that would make no valid address.
    void setRange(const QString &range);

    void setDataTypeList(const QStringList &dataTypeList);

    /// Takes effect with the next `updateTypesCombo`.
    void setBitTypeIndex(int bitTypeIndex);

    /// Offers these stations, in this order, behind an empty entry for none, which is chosen.
    void setAvailableStationNumbers(const QList<int> &availableStationNumbers);

Q_SIGNALS:
    /// The data type was set, also to the one that it was. A call of `setDataType` that changes the choice gives it
    /// twice, a choice of the user once.
    void dataTypeChanged(int newDataTypeIndex);

    /// The choice of the data type changed.
    void dataTypeChangedToTagTable(int dataType);

    /// Symbol, range or station changed while there is a range; `address` has the station.
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
    label::LabelInterface *m_label = nullptr;
    int m_dataType = 0;
    int m_bitTypeIndex = -1;
    int m_length = 0;
    /// While true, `updateRangeLabel` does nothing.
    bool m_updating = false;
    QList<int> m_tagTableCurrentRows;
    /// Sorts the symbols; made on first use.
    QSortFilterProxyModel *m_typesProxy = nullptr;
};

#endif
