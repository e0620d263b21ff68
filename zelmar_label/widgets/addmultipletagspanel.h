// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_ADDMULTIPLETAGSPANEL_H
#define ZELMAR_LABEL_ADDMULTIPLETAGSPANEL_H

#include <QString>
#include <QWidget>

#include <memory>

/// A form for adding several tags at once: their names and numbers, the step between their addresses, and how many. It
/// only keeps the settings in its fields; the caller interprets them and makes the tags. All fields stay enabled in
/// both numbering modes.
///
/// A derived class shows the result of the settings in `toolTipChanged`; its text goes into the field
/// "toolTipTextEdit", found with `findChild`.
///
/// Not exported. GUI thread only.
class AddMultipleTagsPanel : public QWidget
{
    Q_OBJECT

public:
    explicit AddMultipleTagsPanel(QWidget *parent);
    ~AddMultipleTagsPanel() override;

    /// Text before the number in a tag's name; "T" at first.
    QString prefix() const;
    void setPrefix(const QString &prefix);

    /// Text after the number in a tag's name.
    QString postfix() const;
    void setPostfix(const QString &postfix);

    /// True when tags are numbered in sequence, the initial mode.
    bool isSequential() const;
    /// One of the two numbering modes is always selected: to leave this one, select the other.
    void setSequential(const bool &sequential);

    /// Digits of a tag's number, 0 to 999; here and below larger values become 999.
    int numberOfDigits() const;
    void setNumberOfDigits(const int &digits);

    /// The first tag's number, 0 to 999.
    int startAt() const;
    void setStartAt(const int &start);

    /// True when tags have the numbers of their addresses.
    bool isSameAsPLCAddress() const;
    void setSameAsPLCAddress(const bool &same);

    /// Step from one address to the next, 0 to 999.
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

    /// Called after each change of the settings above, but not of the number of tags; the default does nothing.
    virtual void toolTipChanged();

private:
    Q_DISABLE_COPY(AddMultipleTagsPanel)

    struct Form;

    std::unique_ptr<Form> ui;
};

#endif
