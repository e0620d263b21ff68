// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_TARGETFIELDS_H
#define TAG_EDITOR_TARGETFIELDS_H

#include <QList>
#include <QObject>

QT_BEGIN_NAMESPACE
class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QSpinBox;
class QVBoxLayout;
class QWidget;
QT_END_NAMESPACE

class ProjectSession;
class SimpleAddressPicker;

/// The form rows for the target of a new tag: link, data type, a text's length, and address.
class TargetFields : public QObject
{
    Q_OBJECT

public:
    TargetFields(ProjectSession &session, const QString &addressTitle, QFormLayout *form);

    int link() const;
    int dataType() const;
    /// 1 for all types but texts.
    int scale() const;
    /// Empty for an internal tag.
    QString address() const;
    /// False if there is no device for an address: for internal tags, and links without a driver.
    bool hasAddress() const { return m_picker != nullptr; }

    void setLink(int id);
    void setDataType(int type);
    void setAddress(const QString &address);

    /// The widgets in tab order.
    QList<QWidget *> tabStops() const;

Q_SIGNALS:
    void changed();
    /// Another link has another picker, and therefore another tab stop.
    void pickerReplaced();

private:
    void fillLinks();
    void replacePicker();
    void showRows();

    ProjectSession &m_session;
    QComboBox *m_link;
    QComboBox *m_type;
    QSpinBox *m_length;
    QWidget *m_place;
    QLabel *m_addressLabel = nullptr;
    QLineEdit *m_none = nullptr;
    QVBoxLayout *m_placeLayout;
    SimpleAddressPicker *m_picker = nullptr;
};

#endif
