// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "zelmar_label/widgets/addresspicker.h"

#include "zelmar_label/label_store/labelhold_p.h"
#include "zelmar_label/label_table/labelinterface.h"
#include "zelmar_label/widgets/addresspickerform_p.h"

#include <QComboBox>
#include <QFontMetrics>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>

#include <utility>

namespace {

/// "Ascii" in the list of tag data types, the only one with a length.
constexpr int asciiDataType = 8;

constexpr int narrowestTypesCombo = 80;

constexpr int longList = 1000;

constexpr Qt::MatchFlags exactly = Qt::MatchExactly | Qt::MatchCaseSensitive;

} // namespace

AddressPicker::AddressPicker(label::LabelInterface *label, QWidget *parent)
    : QWidget(parent)
    , ui(std::make_unique<Form>(this))
    , m_label(label::holdLabel(label))
{
    ui->typesCombo->setMinimumWidth(narrowestTypesCombo);
    connectChildSignals();
    setDataType(0);
}

AddressPicker::AddressPicker(label::LabelInterface *label, int dataType, const QString &stationId, int deviceIndex,
                             const QString &range, const QStringList &dataTypeList, int bitTypeIndex,
                             const QList<int> &stations, int length, QWidget *parent)
    : QWidget(parent)
    , ui(std::make_unique<Form>(this))
    , m_label(label::holdLabel(label))
    , m_updating(true)
{
    ui->typesCombo->setMinimumWidth(narrowestTypesCombo);
    updateTypesCombo();
    m_bitTypeIndex = bitTypeIndex;
    connectChildSignals();
    setDataTypeList(dataTypeList);
    setDataType(dataType);
    setDeviceIndex(deviceIndex);
    setRange(range);
    setLength(length);
    setAvailableStationNumbers(stations);
    setStationId(stationId);
    ui->rangeEditor->selectAll();
    ui->lengthEdit->setValidator(new QIntValidator(1, 255, ui->lengthEdit));
    m_updating = false;
    updateRangeLabel();
    refreshLengthUI();
}

AddressPicker::~AddressPicker() = default;

void AddressPicker::connectChildSignals()
{
    const auto comboChanged = QOverload<int>::of(&QComboBox::currentIndexChanged);
    connect(ui->dataTypeCombo, comboChanged, this, &AddressPicker::setDataType);
    connect(ui->typesCombo, comboChanged, this, &AddressPicker::deviceComboBoxSelectChanged);
    connect(ui->dataTypeCombo, comboChanged, this, &AddressPicker::dataTypeChangedToTagTable);
    connect(ui->rangeEditor, &QLineEdit::textChanged, this, &AddressPicker::rangeEditChanged);
    connect(ui->typesCombo, comboChanged, this, &AddressPicker::rangeEditChanged);
    connect(ui->stationCombo, comboChanged, this, &AddressPicker::rangeEditChanged);
    connect(ui->lengthEdit, &QLineEdit::textChanged, this, &AddressPicker::lengthChanged);
}

void AddressPicker::resetAddressPicker(label::LabelInterface *label, int dataType, const QString &stationId,
                                       int deviceIndex, const QString &range, const QStringList &dataTypeList,
                                       int bitTypeIndex, const QList<int> &stations, int length)
{
    m_updating = true;
    blockSignals(true);
    m_label = label::holdLabel(label);
    updateTypesCombo();
    m_bitTypeIndex = bitTypeIndex;
    setDataTypeList(dataTypeList);
    setDataType(dataType);
    setAvailableStationNumbers(stations);
    setStationId(stationId);
    setDeviceIndex(deviceIndex);
    setRange(range);
    setLength(length);
    blockSignals(false);
    updateTypesCombo();
    m_updating = false;
    updateRangeLabel();
}

QString AddressPicker::address()
{
    return ui->typesCombo->currentText() + ui->rangeEditor->text();
}

QString AddressPicker::addressWithStationId()
{
    const QString station = stationId();
    return station.isEmpty() ? address() : station + QLatin1Char('-') + address();
}

bool AddressPicker::isAddressValid()
{
    return isAddressValid(address());
}

bool AddressPicker::isAddressValid(const QString &address)
{
    return m_label->addressValidation(address, -1) != -1;
}

QString AddressPicker::stationId()
{
    return ui->stationCombo->currentText();
}

int AddressPicker::length() const
{
    return ui->lengthEdit->text().toInt();
}

void AddressPicker::setChildrenBlockSignals(bool block)
{
    blockSignals(block);
    ui->dataTypeCombo->blockSignals(block);
    ui->rangeEditor->blockSignals(block);
    ui->typesCombo->blockSignals(block);
    ui->stationCombo->blockSignals(block);
}

void AddressPicker::setTagTableCurrentRow(QList<int> rows)
{
    m_tagTableCurrentRows = std::move(rows);
}

QList<int> AddressPicker::tagTableCurrentRows()
{
    return m_tagTableCurrentRows;
}

void AddressPicker::setDataType(int type)
{
    m_dataType = type;
    ui->dataTypeCombo->setCurrentIndex(type);
    updateTypesCombo();
    refreshLengthUI();
    Q_EMIT dataTypeChanged(type);
}

void AddressPicker::setLength(int length)
{
    if (length <= 0)
        return;
    m_length = length;
    ui->lengthEdit->setText(QString::number(length));
}

void AddressPicker::updateTypesCombo()
{
    QComboBox *const combo = ui->typesCombo;
    const QString chosen = combo->currentText();
    combo->blockSignals(true);
    fillTypesCombo(m_dataType == m_bitTypeIndex ? m_label->bitPrefixSymbols() : m_label->registerPrefixSymbols());
    combo->setCurrentIndex(qMax(0, combo->findText(chosen, exactly)));
    combo->blockSignals(false);
    updateRangeLabel();
    if (!ui->rangeEditor->text().isEmpty())
        Q_EMIT addressChanged(addressWithStationId());
}

void AddressPicker::fillTypesCombo(const QStringList &symbols)
{
    if (m_typesProxy == nullptr)
        makeTypesProxy();
    ui->typesCombo->clear();
    // Thousands of symbols are filled in twice as fast in order, and not one by one through the combo box.
    QStringList sorted = symbols;
    sorted.sort();
    QList<QStandardItem *> items;
    items.reserve(sorted.size());
    for (const QString &symbol : qAsConst(sorted))
        items.append(new QStandardItem(symbol));
    static_cast<QStandardItemModel *>(m_typesProxy->sourceModel())->invisibleRootItem()->appendRows(items);
    m_typesProxy->sort(0, Qt::AscendingOrder);
    fitTypesCombo(symbols);
}

void AddressPicker::makeTypesProxy()
{
    QComboBox *const combo = ui->typesCombo;
    m_typesProxy = new QSortFilterProxyModel(combo);
    // A row sorted at once would move away from the position where the combo box then writes its text.
    m_typesProxy->setDynamicSortFilter(false);
    QAbstractItemModel *const source = combo->model();
    m_typesProxy->setSourceModel(source);
    // A combo box deletes its own model when it gets another.
    source->setParent(m_typesProxy);
    combo->setModel(m_typesProxy);
}

void AddressPicker::fitTypesCombo(const QStringList &symbols)
{
    // Measuring thousands of symbols takes longer than filling them in.
    if (symbols != m_measuredSymbols || font() != m_measuredFont) {
        const QFontMetrics metrics(font());
        int widest = 0;
        for (const QString &symbol : symbols)
            widest = qMax(widest, metrics.horizontalAdvance(symbol));
        // Room for the arrow and the frame.
        m_measuredWidth = widest + metrics.horizontalAdvance(QStringLiteral("abcd"));
        m_measuredSymbols = symbols;
        m_measuredFont = font();
    }
    // The combo box would measure all symbols again.
    if (symbols.size() > longList)
        ui->typesCombo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    ui->typesCombo->setMinimumWidth(m_measuredWidth);
}

void AddressPicker::updateRangeLabel()
{
    if (m_updating)
        return;
    ui->formattingList->clear();
    const QList<int> rows = ui->rangeEditor->text().isEmpty()
                                ? m_label->getAllMatchedSymbol(ui->typesCombo->currentText(), m_dataType)
                                : m_label->getAllMatchedIndex(address(), m_dataType);
    if (rows.isEmpty()) {
        ui->formattingList->addItem(tr("No matched type!"));
        return;
    }
    QStringList formats;
    formats.reserve(rows.size());
    for (const int row : rows) {
        const QString format = m_label->getFormatString(row);
        if (!format.isEmpty())
            formats.append(format);
    }
    ui->formattingList->addItems(formats);
}

void AddressPicker::refreshLengthUI()
{
    const bool hasLength = m_dataType == asciiDataType;
    ui->lengthLabel->setVisible(hasLength);
    ui->lengthEdit->setVisible(hasLength);
}

void AddressPicker::setLabel(label::LabelInterface *label)
{
    m_label = label::holdLabel(label);
    updateTypesCombo();
}

void AddressPicker::setStationId(const QString &stationId)
{
    if (stationId.isEmpty())
        return;
    ui->stationCombo->setCurrentIndex(ui->stationCombo->findText(stationId, exactly));
}

void AddressPicker::setDeviceIndex(int deviceIndex)
{
    if (deviceIndex == -1 && ui->dataTypeCombo->currentText().isEmpty()) {
        ui->typesCombo->clear();
        return;
    }
    ui->typesCombo->setCurrentIndex(deviceIndex);
}

void AddressPicker::setRange(const QString &range)
{
    ui->rangeEditor->setText(range);
    if (!isAddressValid())
        ui->rangeEditor->clear();
}

void AddressPicker::setDataTypeList(const QStringList &dataTypeList)
{
    ui->dataTypeCombo->blockSignals(true);
    ui->dataTypeCombo->clear();
    ui->dataTypeCombo->insertItems(0, dataTypeList);
    ui->dataTypeCombo->blockSignals(false);
}

void AddressPicker::setBitTypeIndex(int bitTypeIndex)
{
    m_bitTypeIndex = bitTypeIndex;
}

void AddressPicker::setAvailableStationNumbers(const QList<int> &availableStationNumbers)
{
    QComboBox *const combo = ui->stationCombo;
    combo->blockSignals(true);
    combo->clear();
    combo->blockSignals(false);
    combo->addItem(QString());
    for (const int station : availableStationNumbers)
        combo->addItem(QString::number(station));
}

void AddressPicker::deviceComboBoxSelectChanged(int /*index*/)
{
    updateRangeLabel();
}

void AddressPicker::rangeEditChanged()
{
    if (ui->rangeEditor->text().isEmpty())
        return;
    updateRangeLabel();
    Q_EMIT addressChanged(addressWithStationId());
}

void AddressPicker::validationAddress()
{
    m_label->addressValidation(address(), -1);
}
