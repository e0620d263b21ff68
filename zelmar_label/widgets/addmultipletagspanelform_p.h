// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ADDMULTIPLETAGSPANELFORM_P_H
#define ZELMAR_LABEL_ADDMULTIPLETAGSPANELFORM_P_H

#include "zelmar_label/widgets/addmultipletagspanel.h"

#include <QCoreApplication>

QT_BEGIN_NAMESPACE
class QGroupBox;
class QHBoxLayout;
class QLineEdit;
class QRadioButton;
class QSpinBox;
class QVBoxLayout;
QT_END_NAMESPACE

/// The panel's fields. The panel owns them as its children; derived panels find the fields by their object names.
struct AddMultipleTagsPanel::Form
{
    Q_DECLARE_TR_FUNCTIONS(AddMultipleTagsPanel)

public:
    explicit Form(AddMultipleTagsPanel *panel);

    QLineEdit *prefixLineEdit = nullptr;
    QLineEdit *postfixLineEdit = nullptr;
    QRadioButton *sequentialRadioButton = nullptr;
    QSpinBox *numberOfDigitsSpinBox = nullptr;
    QSpinBox *startAtSpinBox = nullptr;
    QRadioButton *sameAsPLCAddressRadioButton = nullptr;
    QSpinBox *addressIncrementSpinBox = nullptr;

private:
    void addNames(QHBoxLayout *row, QWidget *group);
    void addSequence(QHBoxLayout *row, QWidget *group);
    void addAddresses(QHBoxLayout *row, QWidget *group);
};

#endif
