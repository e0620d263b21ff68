// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_PICKERFIXTURES_H
#define ZELMAR_LABEL_TESTS_PICKERFIXTURES_H

#include "zelmar_label/widgets/addresspicker.h"

#include "support/fakelabel.h"
#include "support/formshape.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

QT_BEGIN_NAMESPACE
class QComboBox;
class QLineEdit;
class QListWidget;
QT_END_NAMESPACE

/// "Bit" to "UINT(64)", as tags number them; 0 is a bit and 8 a text.
QStringList tagDataTypes();

/// A device with the registers W, D, X (in this order) and the bits X, M. "D1" and "X1" are valid.
FakeLabel deviceLabel();

/// The arguments to make or refill a picker; a test sets only those it needs.
struct PickerArguments
{
    int dataType = 3;
    QString stationId;
    int deviceIndex = 0;
    QString range;
    QStringList dataTypeList = tagDataTypes();
    int bitTypeIndex = 0;
    QList<int> stations = {1, 3, 12};
    int length = 0;
};

std::unique_ptr<AddressPicker> makePicker(label::LabelInterface &label, const PickerArguments &arguments = {});
void refillPicker(AddressPicker &picker, label::LabelInterface &label, const PickerArguments &arguments);

/// The fields of a picker, found by name.
QComboBox &dataTypeBox(const QObject &picker);
QComboBox &stationBox(const QObject &picker);
QComboBox &symbolBox(const QObject &picker);
QLineEdit &rangeEdit(const QObject &picker);
QLineEdit &lengthEdit(const QObject &picker);

QStringList textsOf(const QComboBox &box);

/// The list of matching formats.
QStringList formatsOf(const QObject &picker);

/// Records the signals of a picker in order, as "dataTypeChanged 3".
class PickerSignals : public QObject
{
public:
    explicit PickerSignals(const AddressPicker &picker);

    /// The signals since the last call.
    QStringList take();

private:
    QStringList m_lines;
};

#endif
