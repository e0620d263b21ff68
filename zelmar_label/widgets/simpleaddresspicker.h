// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_SIMPLEADDRESSPICKER_H
#define ZELMAR_LABEL_SIMPLEADDRESSPICKER_H

#include "zelmar_label/zelmar_label_export.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>

QT_BEGIN_NAMESPACE
class QLineEdit;
QT_END_NAMESPACE

namespace label {
class LabelInterface;
}

/// Address entry in one line, for example in a table cell: an edit with the address and its station, and a button that
/// opens the picker in a dialog, with the stations of one link.
///
/// The text of the edit is the whole value; it is shown as typed, valid or not. The caller keeps the label, which must
/// outlive the widget.
///
/// An address is read as a station of up to three digits, an optional "-", and the device address up to the next "-":
/// "12-D100" is D100 at station 12, "D100" is D100 without a station, and "1234" is the address 4 at station 123.
///
/// GUI thread only: all these widgets share the last parsed address.
class ZELMAR_LABEL_EXPORT SimpleAddressPicker : public QWidget
{
    Q_OBJECT

public:
    /// An empty edit. `dataTypeIndex` and `bitTypeIndex` are positions in `dataTypeList`, the dialog's data types.
    SimpleAddressPicker(label::LabelInterface *label, int linkId, int dataTypeIndex, int bitTypeIndex,
                        const QStringList &dataTypeList, QWidget *parent);

    ~SimpleAddressPicker() override;

    /// Writes the text unchanged, with or without station.
    void setAddress(const QString &address);

    /// The whole text.
    QString fullAddressString();

    /// The device address in the text; empty if there is none.
    QString address();

    /// The digits of the station in the text; empty if there are none.
    QString stationId();

    /// The last device address that `address` or `stationId` of any of these widgets parsed, for any argument; empty
    /// before the first. To parse a text, set it and call `address`.
    QString getAddressRemoveStation(const QString &address);

    /// The station numbers of the link in the current project, ascending; none without a project.
    QList<int> getAvailableStationNumber(int linkId);

    /// Connects the button to the dialog. The constructor calls it: a second call opens a second dialog after the
    /// first.
    void connectChildSignals();

    /// Hides the loss of focus from the edit, so that a cell editor is not closed by its own dialog.
    bool eventFilter(QObject *object, QEvent *event) override;

public Q_SLOTS:
    /// The dialog's initial data type.
    void setDataTypeIndex(int index);

Q_SIGNALS:
    /// The dialog was accepted and its address written to the edit. Typing emits no signal.
    void editFinished();

protected:
    void focusOutEvent(QFocusEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private Q_SLOTS:
    void openAddressPicker();

private:
    Q_DISABLE_COPY(SimpleAddressPicker)

    struct ZELMAR_LABEL_NO_EXPORT Form;

    std::unique_ptr<Form> ui;
    std::shared_ptr<label::LabelInterface> m_label;
    int m_dataTypeIndex;
    int m_bitTypeIndex;
    QStringList m_dataTypeList;
    QLineEdit *m_addressEdit;
    int m_linkId;
};

#endif
