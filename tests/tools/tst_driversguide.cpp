// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "support/toolprocess.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QLatin1String toolOfPage("/path/to/zelmar_label/build/release/bin");

/// One command of the page and its printed output there, or a file that the reader saves.
struct Step
{
    int line = 0;
    QString command;
    QString output;
    QString fileName;
    /// Its real output.
    QString printed;
};

/// Blocks of kind "console" have commands after "$ " and their output; a block after "<!-- file: NAME -->" is a file.
QList<Step> stepsOf(const QString &page)
{
    QList<Step> steps;
    const QStringList lines = page.split(QLatin1Char('\n'));
    QString fileName;
    for (int index = 0; index < lines.size(); ++index) {
        const QString &line = lines.at(index);
        if (line.startsWith(QLatin1String("<!-- file: "))) {
            fileName = line.section(QLatin1Char(' '), 2, 2);
            continue;
        }
        if (!line.startsWith(QLatin1String("```")))
            continue;
        const bool isConsole = line == QLatin1String("```console");
        if (!fileName.isEmpty())
            steps.append({index + 1, QString(), QString(), fileName, QString()});
        for (++index; index < lines.size() && lines.at(index) != QLatin1String("```"); ++index) {
            if (isConsole && lines.at(index).startsWith(QLatin1String("$ ")))
                steps.append({index + 1, lines.at(index).mid(2), QString(), QString(), QString()});
            else if (isConsole || !fileName.isEmpty())
                steps.last().output += lines.at(index) + QLatin1Char('\n');
        }
        fileName.clear();
    }
    return steps;
}

/// Replaces text that depends on machine and day by the page's text.
QString normalized(QString text, const QString &tool)
{
    static const QRegularExpression time(QStringLiteral("\\.\\d{4}-\\d\\d-\\d\\d_\\d{6}(_\\d+)?"));
    text.replace(tool, toolOfPage);
    return text.replace(time, QStringLiteral(".TIME"));
}

bool isShown(const Step &step, const QString &tool)
{
    return normalized(step.printed, tool) == normalized(step.output, tool);
}

/// The page with the real output of the commands.
QString corrected(const QString &page, const QList<Step> &steps, const QString &tool)
{
    QStringList lines = page.split(QLatin1Char('\n'));
    // From the end, so that earlier lines keep their numbers.
    for (int index = steps.size() - 1; index >= 0; --index) {
        const Step &step = steps.at(index);
        if (step.command.isEmpty() || isShown(step, tool))
            continue;
        for (int count = step.output.count(QLatin1Char('\n')); count > 0; --count)
            lines.removeAt(step.line);
        QStringList printed = step.printed.split(QLatin1Char('\n'));
        if (printed.last().isEmpty())
            printed.removeLast();
        while (!printed.isEmpty())
            lines.insert(step.line, printed.takeLast().replace(tool, toolOfPage));
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace

/// Follows the driver author's guide word by word in an empty folder, like a new user. If its outputs have changed, the
/// variable ZELMAR_LABEL_CORRECTED_GUIDE names a file for the corrected page.
class TestDriversGuide : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyCommandPrintsWhatThePageShows();

private:
    static QString outputOf(const QString &command, const QString &tool, const QString &folder);
};

QString TestDriversGuide::outputOf(const QString &command, const QString &tool, const QString &folder)
{
    QProcess process;
    QProcessEnvironment environment = toolEnvironment();
    environment.insert(QStringLiteral("TOOL"), tool);
    environment.insert(QStringLiteral("PATH"), tool + QLatin1Char(':') + environment.value(QStringLiteral("PATH")));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setWorkingDirectory(folder);
    process.start(QStringLiteral("bash"), {QStringLiteral("-c"), command});
    return process.waitForFinished(60000) ? QString::fromUtf8(process.readAll()) : process.errorString();
}

void TestDriversGuide::everyCommandPrintsWhatThePageShows()
{
    if (QStandardPaths::findExecutable(QStringLiteral("sqlite3")).isEmpty())
        QSKIP("the guide needs the sqlite3 command");
    const QString tool = QCoreApplication::applicationDirPath() + QLatin1String("/tool");
    QVERIFY(QDir(tool).removeRecursively());
    copyToolWithDrivers(QStringLiteral(ZELMAR_LABEL_TOOL), tool);
    const QTemporaryDir folder;
    const QString page = QString::fromUtf8(contentOf(QStringLiteral(ZELMAR_LABEL_GUIDE)));
    QList<Step> steps = stepsOf(page);
    QStringList differences;
    int commands = 0;
    for (Step &step : steps) {
        if (!step.fileName.isEmpty()) {
            writeFile(folder.filePath(step.fileName), step.output.toUtf8());
            continue;
        }
        ++commands;
        step.printed = outputOf(step.command, tool, folder.path());
        if (!isShown(step, tool))
            differences.append(QStringLiteral("docs/driver-authors-guide.md:%1: $ %2\n%3")
                                   .arg(QString::number(step.line), step.command, step.printed));
    }
    const QString correctedPage = qEnvironmentVariable("ZELMAR_LABEL_CORRECTED_GUIDE");
    if (!correctedPage.isEmpty())
        writeFile(correctedPage, corrected(page, steps, tool).toUtf8());
    QVERIFY2(differences.isEmpty(), qPrintable(differences.join(QLatin1Char('\n'))));
    QVERIFY(commands > 40);
}

QTEST_GUILESS_MAIN(TestDriversGuide)

#include "tst_driversguide.moc"
