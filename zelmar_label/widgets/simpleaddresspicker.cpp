// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/widgets/simpleaddresspicker.h"

#include "zelmar_label/label_store/labelhold_p.h"
#include "zelmar_label/label_table/labelinterface.h"
#include "zelmar_label/tag_store/tagsystem.h"
#include "zelmar_label/widgets/addresspickerdialog.h"
#include "zelmar_label/widgets/named_p.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRegExp>

using label::named;

namespace {

/// Shared by all widgets: `getAddressRemoveStation` returns its last result.
QRegExp &stationAndAddress()
{
    static QRegExp expression(QStringLiteral("(\\d{0,3})-?([^-]*)"));
    return expression;
}

QString capture(const QString &text, int group)
{
    QRegExp &expression = stationAndAddress();
    expression.indexIn(text);
    return expression.cap(group);
}

constexpr int stationGroup = 1;
constexpr int addressGroup = 2;

struct StartOfDialog
{
    int deviceIndex = 0;
    QString range;
};

/// The position of the address's symbol in the label's list. The dialog sorts that list: the positions agree only if
/// the label's symbols are sorted.
StartOfDialog startOfDialog(label::LabelInterface &label, const QString &address, bool isBit)
{
    QString prefix;
    StartOfDialog start;
    if (!label.parseAddress(address, prefix, start.range))
        return {0, address};
    const QStringList symbols = isBit ? label.bitPrefixSymbols() : label.registerPrefixSymbols();
    start.deviceIndex = qMax(0, symbols.indexOf(prefix));
    return start;
}

} // namespace

struct ZELMAR_LABEL_NO_EXPORT SimpleAddressPicker::Form
{
    Q_DECLARE_TR_FUNCTIONS(SimpleAddressPicker)

public:
    explicit Form(SimpleAddressPicker *picker);

    QLineEdit *addressEdit;
    QPushButton *detailPushButton;
};

SimpleAddressPicker::Form::Form(SimpleAddressPicker *picker)
{
    picker->setObjectName(QStringLiteral("SimpleAddressPicker"));
    picker->resize(161, 28);
    picker->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    picker->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    picker->setFocusPolicy(Qt::ClickFocus);
    picker->setWindowTitle(tr("Form"));

    auto *const row = named(new QHBoxLayout(picker), "horizontalLayout");
    row->setSpacing(0);
    row->setContentsMargins(0, 0, 0, 0);
    addressEdit = named(new QLineEdit(picker), "addressEdit");
    row->addWidget(addressEdit);

    detailPushButton = named(new QPushButton(picker), "detailPushButton");
    detailPushButton->setText(tr("..."));
    detailPushButton->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    detailPushButton->setMinimumSize(22, 22);
    detailPushButton->setMaximumSize(22, QWIDGETSIZE_MAX);
    detailPushButton->setFocusPolicy(Qt::NoFocus);
    row->addWidget(detailPushButton);

    QWidget::setTabOrder(addressEdit, detailPushButton);
    picker->setFocusProxy(addressEdit);
}

SimpleAddressPicker::SimpleAddressPicker(label::LabelInterface *label, int linkId, int dataTypeIndex, int bitTypeIndex,
                                         const QStringList &dataTypeList, QWidget *parent)
    : QWidget(parent)
    , ui(std::make_unique<Form>(this))
    , m_label(label::holdLabel(label))
    , m_dataTypeIndex(dataTypeIndex)
    , m_bitTypeIndex(bitTypeIndex)
    , m_dataTypeList(dataTypeList)
    , m_addressEdit(ui->addressEdit)
    , m_linkId(linkId)
{
    m_addressEdit->installEventFilter(this);
    connectChildSignals();
}

SimpleAddressPicker::~SimpleAddressPicker() = default;

void SimpleAddressPicker::setAddress(const QString &address)
{
    m_addressEdit->setText(address);
}

QString SimpleAddressPicker::fullAddressString()
{
    return m_addressEdit->text();
}

QString SimpleAddressPicker::address()
{
    return capture(m_addressEdit->text(), addressGroup);
}

QString SimpleAddressPicker::stationId()
{
    return capture(m_addressEdit->text(), stationGroup);
}

QString SimpleAddressPicker::getAddressRemoveStation(const QString & /*address*/)
{
    return stationAndAddress().cap(addressGroup);
}

QList<int> SimpleAddressPicker::getAvailableStationNumber(int linkId)
{
    TagSystem *const tags = TagSystem::instance();
    return tags == nullptr ? QList<int>() : tags->stationList(linkId);
}

void SimpleAddressPicker::connectChildSignals()
{
    connect(ui->detailPushButton, &QPushButton::clicked, this, &SimpleAddressPicker::openAddressPicker);
}

bool SimpleAddressPicker::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() != QEvent::FocusOut)
        return QWidget::eventFilter(object, event);
    clearFocus();
    return true;
}

void SimpleAddressPicker::setDataTypeIndex(int index)
{
    m_dataTypeIndex = index;
}

void SimpleAddressPicker::focusOutEvent(QFocusEvent * /*event*/) {}

void SimpleAddressPicker::hideEvent(QHideEvent * /*event*/) {}

void SimpleAddressPicker::openAddressPicker()
{
    const StartOfDialog start = startOfDialog(*m_label, address(), m_dataTypeIndex == m_bitTypeIndex);
    const QList<int> stations = getAvailableStationNumber(m_linkId);
    AddressPickerDialog dialog(m_label.get(), m_dataTypeIndex, stationId(), start.deviceIndex, start.range,
                               m_dataTypeList, m_bitTypeIndex, stations, nullptr);
    if (dialog.exec() != QDialog::Accepted)
        return;
    m_addressEdit->setText(dialog.addressWithStationId());
    m_dataTypeIndex = dialog.dataType();
    Q_EMIT editFinished();
}
