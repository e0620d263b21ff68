// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/widgets/addmultipletagspanel.h"

#include "zelmar_label/widgets/addmultipletagspanelform_p.h"

#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>

AddMultipleTagsPanel::AddMultipleTagsPanel(QWidget *parent)
    : QWidget(parent)
    , ui(std::make_unique<Form>(this))
{
}

AddMultipleTagsPanel::~AddMultipleTagsPanel() = default;

QString AddMultipleTagsPanel::prefix() const
{
    return ui->prefixLineEdit->text();
}

void AddMultipleTagsPanel::setPrefix(const QString &prefix)
{
    ui->prefixLineEdit->setText(prefix);
}

QString AddMultipleTagsPanel::postfix() const
{
    return ui->postfixLineEdit->text();
}

void AddMultipleTagsPanel::setPostfix(const QString &postfix)
{
    ui->postfixLineEdit->setText(postfix);
}

bool AddMultipleTagsPanel::isSequential() const
{
    return ui->sequentialRadioButton->isChecked();
}

void AddMultipleTagsPanel::setSequential(const bool &sequential)
{
    ui->sequentialRadioButton->setChecked(sequential);
}

int AddMultipleTagsPanel::numberOfDigits() const
{
    return ui->numberOfDigitsSpinBox->value();
}

void AddMultipleTagsPanel::setNumberOfDigits(const int &digits)
{
    ui->numberOfDigitsSpinBox->setValue(digits);
}

int AddMultipleTagsPanel::startAt() const
{
    return ui->startAtSpinBox->value();
}

void AddMultipleTagsPanel::setStartAt(const int &start)
{
    ui->startAtSpinBox->setValue(start);
}

bool AddMultipleTagsPanel::isSameAsPLCAddress() const
{
    return ui->sameAsPLCAddressRadioButton->isChecked();
}

void AddMultipleTagsPanel::setSameAsPLCAddress(const bool &same)
{
    ui->sameAsPLCAddressRadioButton->setChecked(same);
}

int AddMultipleTagsPanel::addressIncrement() const
{
    return ui->addressIncrementSpinBox->value();
}

void AddMultipleTagsPanel::setAddressIncrement(const int &increment)
{
    ui->addressIncrementSpinBox->setValue(increment);
}

void AddMultipleTagsPanel::on_prefixLineEdit_textChanged(const QString & /*text*/)
{
    toolTipChanged();
}

void AddMultipleTagsPanel::on_postfixLineEdit_textChanged(const QString & /*text*/)
{
    toolTipChanged();
}

void AddMultipleTagsPanel::on_sequentialRadioButton_clicked()
{
    toolTipChanged();
}

void AddMultipleTagsPanel::on_numberOfDigitsSpinBox_valueChanged(int /*value*/)
{
    toolTipChanged();
}

void AddMultipleTagsPanel::on_startAtSpinBox_valueChanged(int /*value*/)
{
    toolTipChanged();
}

void AddMultipleTagsPanel::on_sameAsPLCAddressRadioButton_clicked()
{
    toolTipChanged();
}

void AddMultipleTagsPanel::on_addressIncrementSpinBox_valueChanged(int /*value*/)
{
    toolTipChanged();
}

void AddMultipleTagsPanel::toolTipChanged() {}
