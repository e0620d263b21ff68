// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/widgets/addmultipletagspanelform_p.h"

#include "zelmar_label/widgets/named_p.h"

#include <QFrame>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>
#include <QTextEdit>
#include <QVBoxLayout>

using label::named;

namespace {

QHBoxLayout *addRow(QVBoxLayout *column, const char *name)
{
    auto *const row = named(new QHBoxLayout, name);
    column->addLayout(row);
    return row;
}

void addLabel(QHBoxLayout *row, QWidget *group, const char *name, const QString &text)
{
    auto *const label = named(new QLabel(group), name);
    label->setText(text);
    row->addWidget(label);
}

QLineEdit *addLineEdit(QHBoxLayout *row, QWidget *group, const char *name, const QString &text)
{
    auto *const edit = named(new QLineEdit(group), name);
    edit->setText(text);
    edit->setPlaceholderText(QString());
    row->addWidget(edit);
    return edit;
}

QSpinBox *addSpinBox(QHBoxLayout *row, QWidget *group, const char *name, int maximum, int value)
{
    auto *const box = named(new QSpinBox(group), name);
    box->setMaximum(maximum);
    box->setValue(value);
    row->addWidget(box);
    return box;
}

/// A button with a small indent.
QRadioButton *addMode(QHBoxLayout *row, QWidget *group, const char *name, const QString &text)
{
    row->addItem(new QSpacerItem(20, 20, QSizePolicy::Fixed, QSizePolicy::Minimum));
    auto *const button = named(new QRadioButton(group), name);
    button->setText(text);
    row->addWidget(button);
    return button;
}

void addToolTip(QFrame *frame, const QString &html)
{
    frame->setFrameShape(QFrame::Panel);
    frame->setFrameShadow(QFrame::Sunken);
    frame->setLineWidth(3);
    frame->setMidLineWidth(1);
    auto *const column = named(new QVBoxLayout(frame), "verticalLayout");
    column->setContentsMargins(0, 0, 0, 0);
    auto *const text = named(new QTextEdit(frame), "toolTipTextEdit");
    QFont font = text->font();
    font.setPointSize(11);
    text->setFont(font);
    text->setReadOnly(true);
    text->setHtml(html);
    column->addWidget(text);
}

} // namespace

AddMultipleTagsPanel::Form::Form(AddMultipleTagsPanel *panel)
{
    panel->setObjectName(QStringLiteral("AddMultipleTagsPanel"));
    panel->resize(321, 275);
    panel->setWindowTitle(tr("Add Multiple Tags Panel"));
    auto *const panelColumn = named(new QVBoxLayout(panel), "verticalLayout_3");
    panelColumn->setContentsMargins(0, 0, 0, 0);

    auto *const group = named(new QGroupBox(panel), "addMultipleTagsGroupBox");
    group->setTitle(tr("Add Multiple Tags"));
    auto *const column = named(new QVBoxLayout(group), "verticalLayout_2");
    addNames(addRow(column, "horizontalLayout"), group);
    sequentialRadioButton =
        addMode(addRow(column, "horizontalLayout_4"), group, "sequentialRadioButton", tr("Sequential:"));
    sequentialRadioButton->setChecked(true);
    addSequence(addRow(column, "horizontalLayout_2"), group);
    sameAsPLCAddressRadioButton =
        addMode(addRow(column, "horizontalLayout_5"), group, "sameAsPLCAddressRadioButton", tr("Same as PLC address:"));
    addAddresses(addRow(column, "horizontalLayout_3"), group);
    panelColumn->addWidget(group);

    auto *const frame = named(new QFrame(panel), "frame");
    addToolTip(frame, tr("<html><head><meta name=\"qrichtext\" content=\"1\" /><style type=\"text/css\">\n"
                         "p, li { white-space: pre-wrap; }\n"
                         "</style></head><body style=\" font-family:'PMingLiU'; font-size:11pt; font-weight:400; "
                         "font-style:normal;\">\n"
                         "<p style=\"-qt-paragraph-type:empty; margin-top:0px; margin-bottom:0px; margin-left:0px; "
                         "margin-right:0px; -qt-block-indent:0; text-indent:0px;\"></p></body></html>"));
    panelColumn->addWidget(frame);

    QMetaObject::connectSlotsByName(panel);
}

void AddMultipleTagsPanel::Form::addNames(QHBoxLayout *row, QWidget *group)
{
    addLabel(row, group, "prefixLabel", tr("Prefix: "));
    prefixLineEdit = addLineEdit(row, group, "prefixLineEdit", tr("T"));
    addLabel(row, group, "postfixLabel", tr("Suffix: "));
    postfixLineEdit = addLineEdit(row, group, "postfixLineEdit", QString());
}

void AddMultipleTagsPanel::Form::addSequence(QHBoxLayout *row, QWidget *group)
{
    row->addItem(new QSpacerItem(40, 20, QSizePolicy::Expanding, QSizePolicy::Minimum));
    addLabel(row, group, "numberOfDigitsLabel", tr("Decimal Points: "));
    numberOfDigitsSpinBox = addSpinBox(row, group, "numberOfDigitsSpinBox", 999, 2);
    addLabel(row, group, "startAtLabel", tr("Start at: "));
    startAtSpinBox = addSpinBox(row, group, "startAtSpinBox", 999, 1);
}

void AddMultipleTagsPanel::Form::addAddresses(QHBoxLayout *row, QWidget *group)
{
    addLabel(row, group, "addressIncrementLabel", tr("Address Increment: "));
    addressIncrementSpinBox = addSpinBox(row, group, "addressIncrementSpinBox", 999, 1);
    addLabel(row, group, "totalTagsLabel", tr("Total Tags: "));
    addSpinBox(row, group, "totalTagsSpinBox", 65535, 16);
}
