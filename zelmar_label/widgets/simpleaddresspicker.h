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

/// Address entry in one line, as for a table's cell: an edit that holds the address with its station, and a button that
/// opens the picker in a dialog, with the stations of one link.
///
/// The text of the edit is the whole value; it is shown as typed, valid or not. The label stays the caller's and has to
/// outlive the widget.
///
/// An address is read as a station of up to three digits, an optional "-", and the device address up to the next "-":
/// "12-D100" is D100 at station 12, "D100" is D100 without a station, and "1234" is the address 4 at station 123.
///
/// GUI thread only: what was parsed last is remembered for all these widgets together.
class ZELMAR_LABEL_EXPORT SimpleAddressPicker : public QWidget
{
    Q_OBJECT

public:
    /// An empty edit. `dataTypeIndex` and `bitTypeIndex` are positions in `dataTypeList`, the data types that the
    /// dialog offers.
    SimpleAddressPicker(label::LabelInterface *label, int linkId, int dataTypeIndex, int bitTypeIndex,
                        const QStringList &dataTypeList, QWidget *parent);

    ~SimpleAddressPicker() override;

    /// Writes the text, with or without station, as it stands.
    void setAddress(const QString &address);

    /// The text as it stands.
    QString fullAddressString();

    /// The device address in the text; empty if there is none.
    QString address();

    /// The digits of the station in the text; empty if there are none.
    QString stationId();

    /// The device address that the last `address` or `stationId` of any of these widgets saw, whatever the argument;
    /// empty before the first. To have a text parsed, set it and call `address`.
    QString getAddressRemoveStation(const QString &address);

    /// The station numbers of the link, ascending, out of the current project; none without a project.
    QList<int> getAvailableStationNumber(int linkId);

    /// Lets the button open the dialog. The constructor has done it: a second call opens a second dialog after the
    /// first.
    void connectChildSignals();

    /// Keeps the edit from seeing that it lost the focus, so that a cell editor is not closed by its own dialog.
    bool eventFilter(QObject *object, QEvent *event) override;

public Q_SLOTS:
    /// The data type that the dialog starts with.
    void setDataTypeIndex(int index);

Q_SIGNALS:
    /// The dialog was accepted and its address taken over. Typing gives no signal.
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
    label::LabelInterface *m_label;
    int m_dataTypeIndex;
    int m_bitTypeIndex;
    QStringList m_dataTypeList;
    QLineEdit *m_addressEdit;
    int m_linkId;
};

#endif
