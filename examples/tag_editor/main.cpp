// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "mainwindow.h"

#include <zelmar_label/label_store/labelstore.h>
#include <zelmar_label/tag_store/tagsystem.h>

#include <QApplication>
#include <QCommandLineParser>

namespace {

/// Every row that is read from a driver writes a line.
void quietDebugLog(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type != QtDebugMsg)
        fprintf(stderr, "%s\n", qPrintable(text));
}

int run(QApplication &application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QApplication::translate("main", "Edits the tags of an operator-panel project."));
    parser.addHelpOption();
    parser.addPositionalArgument(
        QStringLiteral("PROJECT"),
        QApplication::translate("main", "A project database; without it, the sample project is opened."),
        QStringLiteral("[PROJECT]"));
    parser.process(application);
    const QStringList arguments = parser.positionalArguments();
    if (arguments.size() > 1)
        parser.showHelp(2);

    MainWindow window;
    // The window shows a failure.
    if (arguments.isEmpty())
        window.openSample();
    else
        window.openProject(arguments.constFirst());
    window.show();
    return QApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    qInstallMessageHandler(quietDebugLog);
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zelmar-tag-editor"));
    QApplication::setApplicationDisplayName(QApplication::translate("main", "Tag editor"));
    const int code = run(application);
    TagSystem::drop();
    label::freeLabels();
    return code;
}
