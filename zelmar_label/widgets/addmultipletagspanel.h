// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ADDMULTIPLETAGSPANEL_H
#define ZELMAR_LABEL_ADDMULTIPLETAGSPANEL_H

#include <QString>
#include <QWidget>

#include <memory>

/// The form in which a person describes a run of tags to be added at once: how they are named and numbered, the step
/// between their addresses, and how many. It holds the settings in its fields and makes no tags; what the numbers mean
/// is the caller's. All fields stay live in both ways of numbering.
///
/// A derived class shows what the settings come to in `toolTipChanged`; its text belongs into the field
/// "toolTipTextEdit", which `findChild` gives.
///
/// Not exported. GUI thread only.
class AddMultipleTagsPanel : public QWidget
{
    Q_OBJECT

public:
    explicit AddMultipleTagsPanel(QWidget *parent);
    ~AddMultipleTagsPanel() override;

    /// Text in front of the number in a tag's name; "T" at first.
    QString prefix() const;
    void setPrefix(const QString &prefix);

    /// Text behind the number in a tag's name.
    QString postfix() const;
    void setPostfix(const QString &postfix);

    /// True when tags are numbered one after the other, which is so at first.
    bool isSequential() const;
    /// Of the two ways of numbering one is always chosen: to leave this one, choose the other.
    void setSequential(const bool &sequential);

    /// Digits of a tag's number, 0 to 999; larger ones are cut to that, here and below.
    int numberOfDigits() const;
    void setNumberOfDigits(const int &digits);

    /// The first tag's number, 0 to 999.
    int startAt() const;
    void setStartAt(const int &start);

    /// True when tags are numbered as their addresses.
    bool isSameAsPLCAddress() const;
    void setSameAsPLCAddress(const bool &same);

    /// From one address to the next, 0 to 999.
    int addressIncrement() const;
    void setAddressIncrement(const int &increment);

protected Q_SLOTS:
    virtual void on_prefixLineEdit_textChanged(const QString &text);
    virtual void on_postfixLineEdit_textChanged(const QString &text);
    virtual void on_sequentialRadioButton_clicked();
    virtual void on_numberOfDigitsSpinBox_valueChanged(int value);
    virtual void on_startAtSpinBox_valueChanged(int value);
    virtual void on_sameAsPLCAddressRadioButton_clicked();
    virtual void on_addressIncrementSpinBox_valueChanged(int value);

    /// Called after each change of the settings above, but not of the number of tags; does nothing here.
    virtual void toolTipChanged();

private:
    Q_DISABLE_COPY(AddMultipleTagsPanel)

    struct Form;

    std::unique_ptr<Form> ui;
};

#endif
