// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

// Draws the pictures of the documentation: the library's widgets and the example editor, with the shipped drivers and
// the sample project. Style, font, size and palette are fixed, so that a picture changes only with the program.
//   zelmar_label_screenshots FOLDER light|dark [SUFFIX]

#include "editorscenes.h"
#include "picture.h"
#include "widgetscenes.h"

#include <QApplication>
#include <QDir>
#include <QFont>
#include <QLocale>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

#include <cstdio>

namespace {

QPalette darkPalette()
{
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(45, 47, 51));
    palette.setColor(QPalette::WindowText, QColor(222, 224, 228));
    palette.setColor(QPalette::Base, QColor(30, 31, 34));
    palette.setColor(QPalette::AlternateBase, QColor(38, 40, 44));
    palette.setColor(QPalette::Text, QColor(222, 224, 228));
    palette.setColor(QPalette::PlaceholderText, QColor(140, 144, 152));
    palette.setColor(QPalette::Button, QColor(56, 59, 64));
    palette.setColor(QPalette::ButtonText, QColor(222, 224, 228));
    palette.setColor(QPalette::ToolTipBase, QColor(56, 59, 64));
    palette.setColor(QPalette::ToolTipText, QColor(222, 224, 228));
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::Link, QColor(120, 170, 250));
    palette.setColor(QPalette::Highlight, QColor(52, 101, 164));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(120, 124, 132));
    return palette;
}

void setLook(bool isDark)
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSize(10);
    QApplication::setFont(font);
    QApplication::setPalette(isDark ? darkPalette() : QApplication::style()->standardPalette());
    // A blinking cursor would make pictures differ.
    QApplication::setCursorFlashTime(0);
}

} // namespace

int main(int argc, char *argv[])
{
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &line) {
        if (type != QtDebugMsg)
            std::fprintf(stderr, "%s\n", qPrintable(line));
    });
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3 || !QDir().mkpath(arguments.at(1))) {
        std::fprintf(stderr, "usage: zelmar_label_screenshots FOLDER light|dark [SUFFIX]\n");
        return 2;
    }
    const bool isDark = arguments.at(2) == QLatin1String("dark");
    setLook(isDark);
    const Pictures pictures(arguments.at(1), (isDark ? QStringLiteral("-dark") : QString()) + arguments.value(3));
    return drawWidgets(pictures) && drawEditor(pictures) ? 0 : 1;
}
