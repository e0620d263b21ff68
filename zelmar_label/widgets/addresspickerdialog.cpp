// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/widgets/addresspickerdialog.h"

#include "zelmar_label/widgets/addresspicker.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QVBoxLayout>

namespace {

/// The dialog edits no length, but the picker shows one for texts.
constexpr int shortestLength = 1;

} // namespace

AddressPickerDialog::AddressPickerDialog(QWidget *parent)
    : QDialog(parent)
{
}

AddressPickerDialog::AddressPickerDialog(label::LabelInterface *label, int dataType, const QString &stationId,
                                         int deviceIndex, const QString &range, const QStringList &dataTypeList,
                                         int bitTypeIndex, const QList<int> &stations, QWidget *parent)
    : QDialog(parent)
    , m_picker(new AddressPicker(label, dataType, stationId, deviceIndex, range, dataTypeList, bitTypeIndex, stations,
                                 shortestLength, nullptr))
    , m_buttonBox(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, Qt::Horizontal))
    , m_dataType(dataType)
{
    connect(m_picker, &AddressPicker::dataTypeChanged, this, &AddressPickerDialog::dataTypeChanged);
    connect(m_buttonBox, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttonBox, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *const column = new QVBoxLayout;
    column->addWidget(m_picker);
    column->addWidget(m_buttonBox);
    setLayout(column);
    // The range is selected, so that typing replaces it.
    m_picker->findChild<QLineEdit *>(QStringLiteral("RangeEditor"))->setFocus();
}

QString AddressPickerDialog::addressWithStationId()
{
    return m_picker == nullptr ? QString() : m_picker->addressWithStationId();
}

int AddressPickerDialog::dataType()
{
    return m_dataType;
}

void AddressPickerDialog::dataTypeChanged(int newDataTypeIndex)
{
    m_dataType = newDataTypeIndex;
}
