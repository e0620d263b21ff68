// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ADDRESSPICKERDIALOG_H
#define ZELMAR_LABEL_ADDRESSPICKERDIALOG_H

#include <QDialog>
#include <QList>
#include <QString>
#include <QStringList>

QT_BEGIN_NAMESPACE
class QDialogButtonBox;
QT_END_NAMESPACE

class AddressPicker;

namespace label {
class LabelInterface;
}

/// An `AddressPicker` above "OK" and "Cancel". The caller keeps the label, which must outlive the dialog.
///
/// Not exported: editors use it through `SimpleAddressPicker`. GUI thread only.
class AddressPickerDialog : public QDialog
{
    Q_OBJECT

public:
    /// An empty dialog, without a picker.
    explicit AddressPickerDialog(QWidget *parent);

    /// A dialog for an address; the arguments are those of `AddressPicker`.
    AddressPickerDialog(label::LabelInterface *label, int dataType, const QString &stationId, int deviceIndex,
                        const QString &range, const QStringList &dataTypeList, int bitTypeIndex,
                        const QList<int> &stations, QWidget *parent);

    /// The address in the picker, valid or not; empty without a picker.
    QString addressWithStationId();

    /// Index of the last selected data type.
    int dataType();

public Q_SLOTS:
    void dataTypeChanged(int newDataTypeIndex);

private:
    Q_DISABLE_COPY(AddressPickerDialog)

    AddressPicker *m_picker = nullptr;
    QDialogButtonBox *m_buttonBox = nullptr;
    int m_dataType = 0;
};

#endif
