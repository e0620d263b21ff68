// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ADDRESSPICKERFORM_P_H
#define ZELMAR_LABEL_ADDRESSPICKERFORM_P_H

#include "zelmar_label/widgets/addresspicker.h"

#include <QCoreApplication>

QT_BEGIN_NAMESPACE
class QComboBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QListWidget;
QT_END_NAMESPACE

/// The picker's fields. The picker owns them as its children; their object names must not change: editors find and
/// style the fields by name.
struct ZELMAR_LABEL_NO_EXPORT AddressPicker::Form
{
    Q_DECLARE_TR_FUNCTIONS(AddressPicker)

public:
    explicit Form(AddressPicker *picker);

    QComboBox *dataTypeCombo;
    QComboBox *stationCombo;
    QLabel *lengthLabel;
    QLineEdit *lengthEdit;
    QComboBox *typesCombo;
    QLineEdit *rangeEditor;
    QListWidget *formattingList;

private:
    void addDataTypeAndStation(QHBoxLayout *row);
};

#endif
