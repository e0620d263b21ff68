// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/pickerfixtures.h"

#include "zelmar_label/tag_store/tagsystem.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>

QStringList tagDataTypes()
{
    static const QStringList types = TagSystem(nullptr).dataTypeList();
    return types;
}

FakeLabel deviceLabel()
{
    FakeLabel label;
    label.registerSymbols = QStringList{QStringLiteral("W"), QStringLiteral("D"), QStringLiteral("X")};
    label.bitSymbols = QStringList{QStringLiteral("X"), QStringLiteral("M")};
    label.formats = QStringList{QStringLiteral("D: data register"), QString(), QStringLiteral("D: data of a block"),
                                QStringLiteral("X: inputs")};
    label.rowsOfSymbol = {{QStringLiteral("D"), {2, 1, 0}}, {QStringLiteral("X"), {3}}};
    label.rowsOfAddress = {{QStringLiteral("D1"), {0, 1}}, {QStringLiteral("X1"), {3}}};
    label.validRows = {{QStringLiteral("D1"), 0}, {QStringLiteral("X1"), 3}};
    return label;
}

std::unique_ptr<AddressPicker> makePicker(label::LabelInterface &label, const PickerArguments &arguments)
{
    return std::make_unique<AddressPicker>(&label, arguments.dataType, arguments.stationId, arguments.deviceIndex,
                                           arguments.range, arguments.dataTypeList, arguments.bitTypeIndex,
                                           arguments.stations, arguments.length, nullptr);
}

void refillPicker(AddressPicker &picker, label::LabelInterface &label, const PickerArguments &arguments)
{
    picker.resetAddressPicker(&label, arguments.dataType, arguments.stationId, arguments.deviceIndex, arguments.range,
                              arguments.dataTypeList, arguments.bitTypeIndex, arguments.stations, arguments.length);
}

QComboBox &dataTypeBox(const QObject &picker)
{
    return child<QComboBox>(picker, QStringLiteral("datatypeCombobox"));
}

QComboBox &stationBox(const QObject &picker)
{
    return child<QComboBox>(picker, QStringLiteral("stationNumbersCombo"));
}

QComboBox &symbolBox(const QObject &picker)
{
    return child<QComboBox>(picker, QStringLiteral("TypesComboBox"));
}

QLineEdit &rangeEdit(const QObject &picker)
{
    return child<QLineEdit>(picker, QStringLiteral("RangeEditor"));
}

QLineEdit &lengthEdit(const QObject &picker)
{
    return child<QLineEdit>(picker, QStringLiteral("editLength"));
}

QStringList textsOf(const QComboBox &box)
{
    QStringList texts;
    for (int i = 0; i < box.count(); ++i)
        texts.append(box.itemText(i));
    return texts;
}

QStringList formatsOf(const QObject &picker)
{
    const QListWidget &list = child<QListWidget>(picker, QStringLiteral("formattingList"));
    QStringList texts;
    for (int i = 0; i < list.count(); ++i)
        texts.append(list.item(i)->text());
    return texts;
}

PickerSignals::PickerSignals(const AddressPicker &picker)
{
    connect(&picker, &AddressPicker::dataTypeChanged, this,
            [this](int type) { m_lines.append(QStringLiteral("dataTypeChanged %1").arg(type)); });
    connect(&picker, &AddressPicker::dataTypeChangedToTagTable, this,
            [this](int type) { m_lines.append(QStringLiteral("dataTypeChangedToTagTable %1").arg(type)); });
    connect(&picker, &AddressPicker::addressChanged, this,
            [this](const QString &address) { m_lines.append(QLatin1String("addressChanged ") + address); });
    connect(&picker, &AddressPicker::lengthChanged, this,
            [this](const QString &length) { m_lines.append(QLatin1String("lengthChanged ") + length); });
}

QStringList PickerSignals::take()
{
    QStringList lines;
    lines.swap(m_lines);
    return lines;
}
