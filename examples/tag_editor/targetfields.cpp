// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "targetfields.h"

#include "look.h"
#include "projectsession.h"
#include "tagtypes.h"

#include <zelmar_label/tag_store/tagsystem.h>
#include <zelmar_label/widgets/simpleaddresspicker.h>

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

/// The largest value of the scale column as a length.
constexpr int longestText = 65535;

} // namespace

TargetFields::TargetFields(ProjectSession &session, const QString &addressTitle, QFormLayout *form)
    : QObject(form)
    , m_session(session)
    , m_link(new QComboBox(form->parentWidget()))
    , m_type(new QComboBox(form->parentWidget()))
    , m_length(new QSpinBox(form->parentWidget()))
    , m_place(new QWidget(form->parentWidget()))
    , m_placeLayout(new QVBoxLayout(m_place))
{
    m_link->setObjectName(QStringLiteral("linkCombo"));
    m_type->setObjectName(QStringLiteral("typeCombo"));
    m_length->setObjectName(QStringLiteral("lengthSpin"));
    m_length->setRange(1, longestText);
    m_length->setValue(16);
    m_placeLayout->setContentsMargins(0, 0, 0, 0);
    form->addRow(tr("&Link"), m_link);
    // A text's length is beside its type, so that the form does not move when it is shown or hidden.
    auto *const typeRow = new QHBoxLayout;
    typeRow->addWidget(m_type, 1);
    typeRow->addWidget(m_length);
    m_length->setSuffix(tr(" bytes"));
    m_length->setToolTip(tr("Length of the text"));
    m_length->setAccessibleName(m_length->toolTip());
    form->addRow(tr("Typ&e"), typeRow);
    auto *const typeLabel = qobject_cast<QLabel *>(form->labelForField(typeRow));
    typeLabel->setBuddy(m_type);
    form->addRow(addressTitle, m_place);
    m_addressLabel = qobject_cast<QLabel *>(form->labelForField(m_place));
    m_none = new QLineEdit(m_place);
    m_none->setEnabled(false);
    m_placeLayout->addWidget(m_none);
    connect(m_link, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &TargetFields::replacePicker);
    connect(m_type, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &TargetFields::showRows);
    connect(m_length, QOverload<int>::of(&QSpinBox::valueChanged), this, &TargetFields::changed);
    connect(&session, &ProjectSession::opened, this, &TargetFields::fillLinks);
    fillLinks();
}

void TargetFields::fillLinks()
{
    {
        const QSignalBlocker linkBlocker(m_link);
        const QSignalBlocker typeBlocker(m_type);
        m_link->clear();
        m_type->clear();
        if (m_session.isOpen()) {
            for (const int id : m_session.judge().links())
                m_link->addItem(m_session.judge().link(id).title(), id);
            m_type->addItems(m_session.tags().dataTypeList());
            m_type->setCurrentIndex(tagtype::Int16);
        }
    }
    replacePicker();
}

void TargetFields::replacePicker()
{
    const QString text = address();
    delete m_picker;
    m_picker = nullptr;
    const LinkInfo info = m_session.isOpen() ? m_session.judge().link(link()) : LinkInfo();
    if (info.label) {
        m_picker = new SimpleAddressPicker(m_session.pickerLabel(info.label), info.id, dataType(), tagtype::Bit,
                                           m_session.tags().dataTypeList(), m_place);
        m_picker->setAddress(text);
        auto *const edit = m_picker->findChild<QLineEdit *>();
        edit->setFont(look::monospace(edit->font()));
        edit->setPlaceholderText(tr("With or without station"));
        connect(edit, &QLineEdit::textChanged, this, &TargetFields::changed);
        m_placeLayout->addWidget(m_picker);
        m_addressLabel->setBuddy(edit);
        m_picker->show();
    }
    Q_EMIT pickerReplaced();
    showRows();
}

void TargetFields::showRows()
{
    if (m_picker)
        m_picker->setDataTypeIndex(dataType());
    m_length->setVisible(dataType() == tagtype::Ascii);
    m_none->setVisible(!m_picker);
    m_none->setPlaceholderText(link() == 0 ? tr("Internal tags have no address") : tr("There is no driver"));
    Q_EMIT changed();
}

QList<QWidget *> TargetFields::tabStops() const
{
    QList<QWidget *> stops = {m_link, m_type, m_length};
    // The picker comes before its edit: a widget after its focus proxy would end the tab round.
    if (m_picker)
        stops += {m_picker, m_picker->findChild<QLineEdit *>()};
    return stops;
}

int TargetFields::link() const
{
    return m_link->currentData().toInt();
}

int TargetFields::dataType() const
{
    return m_type->currentIndex();
}

int TargetFields::scale() const
{
    return dataType() == tagtype::Ascii ? m_length->value() : 1;
}

QString TargetFields::address() const
{
    return m_picker ? m_picker->fullAddressString() : QString();
}

void TargetFields::setLink(int id)
{
    m_link->setCurrentIndex(qMax(0, m_link->findData(id)));
}

void TargetFields::setDataType(int type)
{
    m_type->setCurrentIndex(type);
}

void TargetFields::setAddress(const QString &address)
{
    if (m_picker)
        m_picker->setAddress(address);
}
