// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/widgets/addresspickerform_p.h"

#include "zelmar_label/widgets/named_p.h"

#include <QComboBox>
#include <QFrame>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>

#include <limits>

using label::named;

AddressPicker::Form::Form(AddressPicker *picker)
{
    picker->setObjectName(QStringLiteral("AddressPicker"));
    picker->resize(315, 193);
    picker->setMinimumSize(280, 140);
    picker->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    picker->setWindowTitle(tr("Form"));
    auto *const column = named(new QVBoxLayout(picker), "verticalLayout");

    auto *const group = named(new QGroupBox(picker), "groupBox");
    group->setTitle(QString());
    addDataTypeAndStation(named(new QHBoxLayout(group), "horizontalLayout_2"));
    column->addWidget(group);

    auto *const addressRow = named(new QHBoxLayout, "horizontalLayout");
    typesCombo = named(new QComboBox(picker), "TypesComboBox");
    typesCombo->setMinimumSize(30, 0);
    addressRow->addWidget(typesCombo);
    rangeEditor = named(new QLineEdit(picker), "RangeEditor");
    addressRow->addWidget(rangeEditor);
    column->addLayout(addressRow);

    auto *const frame = named(new QFrame(picker), "ragneFrame");
    frame->setFrameShape(QFrame::StyledPanel);
    frame->setFrameShadow(QFrame::Raised);
    auto *const frameColumn = named(new QVBoxLayout(frame), "verticalLayout_2");
    auto *const matchedLabel = named(new QLabel(frame), "label");
    matchedLabel->setText(tr("Matched Format:"));
    frameColumn->addWidget(matchedLabel);
    formattingList = named(new QListWidget(frame), "formattingList");
    // A key stroke must not wait for the layout of thousands of formats.
    formattingList->setLayoutMode(QListView::Batched);
    frameColumn->addWidget(formattingList);
    frameColumn->setStretch(1, 1);
    column->addWidget(frame);

    QMetaObject::connectSlotsByName(picker);
}

void AddressPicker::Form::addDataTypeAndStation(QHBoxLayout *row)
{
    QWidget *const group = row->parentWidget();
    auto *const typeLabel = named(new QLabel(group), "label_3");
    typeLabel->setText(tr("Data Type"));
    row->addWidget(typeLabel);
    dataTypeCombo = named(new QComboBox(group), "datatypeCombobox");
    row->addWidget(dataTypeCombo);
    row->addItem(new QSpacerItem(40, 20, QSizePolicy::Expanding, QSizePolicy::Minimum));

    auto *const stationLabel = named(new QLabel(group), "label_2");
    stationLabel->setText(tr("Station Number"));
    row->addWidget(stationLabel);
    stationCombo = named(new QComboBox(group), "stationNumbersCombo");
    stationCombo->setMaxVisibleItems(std::numeric_limits<int>::max());
    row->addWidget(stationCombo);

    lengthLabel = named(new QLabel(group), "lab_length");
    lengthLabel->setText(tr("Length"));
    row->addWidget(lengthLabel);
    lengthEdit = named(new QLineEdit(group), "editLength");
    row->addWidget(lengthEdit);
}
