// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "widgetscenes.h"

#include "picture.h"

#include "zelmar_label/label_store/labelstore.h"
#include "zelmar_label/label_table/labelinterface.h"
#include "zelmar_label/tag_store/tagsystem.h"
#include "zelmar_label/widgets/addmultipletagspanel.h"
#include "zelmar_label/widgets/addresspicker.h"
#include "zelmar_label/widgets/addresspickerdialog.h"
#include "zelmar_label/widgets/simpleaddresspicker.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QLineEdit>
#include <QTextEdit>
#include <QTranslator>

#include <cstdio>

namespace {

constexpr int bitType = 0;
constexpr int wordType = 4;
constexpr int textType = 8;

label::LabelInterface *labelOf(const char *driver)
{
    QString error;
    label::LabelInterface *const label = label::createLabel(QLatin1String(driver), error);
    if (label == nullptr)
        std::fprintf(stderr, "%s\n", qPrintable(error));
    return label;
}

void type(QWidget &picker, const char *symbol, const char *range)
{
    auto *const symbols = picker.findChild<QComboBox *>(QStringLiteral("TypesComboBox"));
    symbols->setCurrentIndex(symbols->findText(QLatin1String(symbol)));
    picker.findChild<QLineEdit *>(QStringLiteral("RangeEditor"))->setText(QLatin1String(range));
}

bool drawPicker(const Pictures &pictures, label::LabelInterface *label, const QString &name, int dataType,
                const char *symbol, const char *range)
{
    const TagSystem tags(nullptr);
    AddressPickerDialog dialog(label, dataType, QStringLiteral("3"), 0, QString(), tags.dataTypeList(), bitType,
                               {1, 2, 3}, nullptr);
    type(dialog, symbol, range);
    return pictures.take(dialog, name, 480, 330);
}

bool drawGermanPicker(const Pictures &pictures, label::LabelInterface *label)
{
    QTranslator german;
    if (!german.load(QStringLiteral("zelmar_label_de"),
                     QCoreApplication::applicationDirPath() + QLatin1String("/translations"))) {
        std::fprintf(stderr, "there is no German translation beside the program\n");
        return false;
    }
    QCoreApplication::installTranslator(&german);
    const bool isDrawn = drawPicker(pictures, label, QStringLiteral("picker-german"), wordType, "D", "1x");
    QCoreApplication::removeTranslator(&german);
    return isDrawn;
}

bool drawSimplePicker(const Pictures &pictures, label::LabelInterface *label)
{
    const TagSystem tags(nullptr);
    SimpleAddressPicker picker(label, 1, wordType, bitType, tags.dataTypeList(), nullptr);
    picker.setAddress(QStringLiteral("3-D100"));
    return pictures.take(picker, QStringLiteral("simple-picker"), 220, 28);
}

/// Shows a text from a derived panel.
class PreviewPanel : public AddMultipleTagsPanel
{
public:
    PreviewPanel()
        : AddMultipleTagsPanel(nullptr)
    {
        PreviewPanel::toolTipChanged();
    }

protected:
    void toolTipChanged() override
    {
        QStringList names;
        for (int number = startAt(); number < startAt() + 3; ++number)
            names.append(prefix() + QStringLiteral("%1").arg(number, numberOfDigits(), 10, QLatin1Char('0')) +
                         postfix());
        findChild<QTextEdit *>(QStringLiteral("toolTipTextEdit"))
            ->setPlainText(names.join(QLatin1String(", ")) + QLatin1String(" ..."));
    }
};

bool drawPanel(const Pictures &pictures)
{
    PreviewPanel panel;
    return pictures.take(panel, QStringLiteral("multiple-tags-panel"), 400, 275);
}

} // namespace

bool drawWidgets(const Pictures &pictures)
{
    label::LabelInterface *const fx5u = labelOf("FX5U Ethernet");
    label::LabelInterface *const simatic = labelOf("ISO on TCP");
    return fx5u != nullptr && simatic != nullptr &&
           drawPicker(pictures, fx5u, QStringLiteral("picker"), wordType, "D", "10") &&
           drawPicker(pictures, simatic, QStringLiteral("picker-bits"), bitType, "M", "10") &&
           drawPicker(pictures, fx5u, QStringLiteral("picker-no-match"), wordType, "D", "1x") &&
           drawPicker(pictures, fx5u, QStringLiteral("picker-text"), textType, "D", "100") &&
           drawGermanPicker(pictures, fx5u) && drawSimplePicker(pictures, fx5u) && drawPanel(pictures);
}
