// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "editorscenes.h"

#include "picture.h"

#include "mainwindow.h"
#include "tagtable.h"

#include <zelmar_label/tag_store/tagsystem.h>

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>

#include <cstdio>

namespace {

void search(const MainWindow &window, const char *text)
{
    window.findChild<QLineEdit *>(QStringLiteral("search"))->setText(QLatin1String(text));
    settle();
}

/// Gives the tag an address that its device does not have.
void spoil(MainWindow &window, const char *tag, const char *address)
{
    constexpr int word = 3;
    const int id = window.session().tags().getIdByTagName(QLatin1String(tag));
    window.findChild<TagTable *>()->selectTag(id);
    window.session().change(id, QLatin1String(address), word, 1);
}

void describeRun(MainWindow &window)
{
    window.showAddRun();
    const auto *const panel = window.findChild<QWidget *>(QStringLiteral("addRunPanel"));
    panel->findChild<QLineEdit *>(QStringLiteral("runPrefix"))->setText(QStringLiteral("Mixer_speed_"));
    panel->findChild<QComboBox *>(QStringLiteral("linkCombo"))->setCurrentText(QStringLiteral("Mixer"));
    panel->findChild<QLineEdit *>(QStringLiteral("addressEdit"))->setText(QStringLiteral("2-D500"));
}

} // namespace

bool drawEditor(const Pictures &pictures)
{
    // The pictures show the path, which must be the same in each run.
    const QString folder = QDir::tempPath() + QLatin1String("/zelmar_label");
    const QString project = folder + QLatin1String("/sample-project.db");
    QDir().mkpath(folder);
    QFile::remove(project);
    MainWindow window;
    window.show();
    if (!window.openSample(project)) {
        std::fprintf(stderr, "the editor cannot make its sample project at %s\n", qPrintable(project));
        return false;
    }
    spoil(window, "Mixer_temperature_3", "D8O0");
    bool isDrawn = pictures.take(window, QStringLiteral("editor"));
    search(window, "qqq");
    isDrawn = pictures.take(window, QStringLiteral("editor-nothing-found")) && isDrawn;
    search(window, "");
    describeRun(window);
    isDrawn = pictures.take(window, QStringLiteral("editor-run")) && isDrawn;
    window.showShortcuts();
    return pictures.take(window, QStringLiteral("editor-keys")) && isDrawn;
}
