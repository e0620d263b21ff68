// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

// Time to say why an address is refused, for all refused samples of the shipped drivers.

#include "zelmar_label/label_store/labelreader.h"
#include "zelmar_label/label_table/addressdiagnosis.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QHash>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTextStream>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <memory>
#include <vector>

namespace {

struct Question
{
    QString address;
    int type;
};

struct Answer
{
    double microseconds;
    QString text;
};

/// The scripts of drivers are read beside the program.
void bringScriptsHere()
{
    const QDir from(QStringLiteral(ZELMAR_LABEL_DRIVERS_RUNTIME) + QLatin1String("/scripts"));
    const QDir here(QCoreApplication::applicationDirPath());
    here.mkpath(QStringLiteral("scripts"));
    const QStringList names = from.entryList(QDir::Files);
    for (const QString &name : names)
        QFile::copy(from.filePath(name), here.filePath(QLatin1String("scripts/") + name));
}

QList<Question> refusedSamples(const QString &stem)
{
    QList<Question> questions;
    QFile file(QStringLiteral(ZELMAR_LABEL_DRIVERS_SOURCE "/samples/%1.tsv").arg(stem));
    file.open(QIODevice::ReadOnly);
    QTextStream lines(&file);
    lines.setCodec("UTF-8");
    while (!lines.atEnd()) {
        const QStringList fields = lines.readLine().split(QLatin1Char('\t'));
        if (fields.value(0) != QLatin1String("refuse"))
            continue;
        const QString filter = fields.value(2);
        const int type = filter == QLatin1String("bit")        ? label::BitType
                         : filter == QLatin1String("register") ? label::WordType
                                                               : label::anyType;
        questions.append({fields.value(1), type});
    }
    return questions;
}

/// The shortest of several times.
double timeOf(label::LabelLoader &label, const Question &question)
{
    constexpr int rounds = 5;
    qint64 shortest = std::numeric_limits<qint64>::max();
    for (int round = 0; round < rounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        label::diagnoseAddress(label, question.address, question.type);
        shortest = std::min(shortest, timer.nsecsElapsed());
    }
    return static_cast<double>(shortest) / 1000;
}

void print(const QString &name, std::vector<Answer> &answers)
{
    std::sort(answers.begin(), answers.end(),
              [](const Answer &left, const Answer &right) { return left.microseconds < right.microseconds; });
    if (answers.empty())
        return;
    const Answer &worst = answers.back();
    std::printf("%-24s %5d refused, median %6.1f us, 99%% %6.1f us, worst %7.1f us (%s)\n", qPrintable(name),
                static_cast<int>(answers.size()), answers[answers.size() / 2].microseconds,
                answers[answers.size() * 99 / 100].microseconds, worst.microseconds, qPrintable(worst.text));
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    bringScriptsHere();
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"));
    db.setDatabaseName(QStringLiteral(ZELMAR_LABEL_DRIVERS_RUNTIME "/database/drivers"));
    if (!db.open())
        return 1;
    QSqlQuery query(QStringLiteral("SELECT name, device_table FROM table_index ORDER BY name"), db);
    std::vector<Answer> all;
    while (query.next()) {
        QString error;
        const std::unique_ptr<label::LabelLoader> label(label::readLabel(db, query.value(0).toString(), error));
        const QList<Question> questions =
            refusedSamples(query.value(1).toString().section(QLatin1String("_types"), 0, 0));
        if (!label || questions.isEmpty())
            return 1;
        std::vector<Answer> answers;
        for (const Question &question : questions)
            answers.push_back({timeOf(*label, question), question.address});
        all.insert(all.end(), answers.begin(), answers.end());
        print(query.value(0).toString(), answers);
    }
    print(QStringLiteral("all"), all);
    return 0;
}
