// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

// Times of the example editor with 100,000 tags: opening the project, scrolling through its table, and filtering it
// with each letter of a search. A plain loop over the names is the reference.

#include "benchmarks/measuring.h"

#include "examples/editorfixtures.h"
#include "tagmodel.h"
#include "tagtable.h"
#include "tagtypes.h"

#include <zelmar_label/label_store/labelstore.h>
#include <zelmar_label/tag_store/tagsystem.h>

#include <QApplication>
#include <QLineEdit>
#include <QScrollBar>
#include <QTemporaryDir>

#include <algorithm>
#include <ctime>
#include <functional>
#include <vector>

namespace {

constexpr int tagCount = 100000;
constexpr double frame = 16;

QList<TagRow> manyTags()
{
    QList<TagRow> rows;
    for (int number = 0; number < tagCount; ++number) {
        TagRow row;
        row.id = number + 1;
        row.name = QStringLiteral("Line%1_Motor_Speed_%2").arg(number % 17).arg(number);
        row.connectorId = 1;
        row.dataType = tagtype::Int16;
        row.address = QStringLiteral("D%1").arg(number % 8000);
        rows.append(row);
    }
    return rows;
}

double millisecondsOf(const std::function<void()> &work)
{
    // CPU time of the thread: other programs on the machine do not count.
    const auto now = [] {
        timespec time = {};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    };
    const double begin = now();
    work();
    return now() - begin;
}

/// The names that contain the letters in order: the least work of a search.
QStringList plainSearch(const QStringList &names, const QString &letters)
{
    QStringList found;
    for (const QString &name : names) {
        int at = 0;
        for (const QChar letter : letters) {
            at = name.indexOf(letter, at, Qt::CaseInsensitive) + 1;
            if (at == 0)
                break;
        }
        if (at > 0)
            found.append(name);
    }
    return found;
}

void tell(const char *what, double milliseconds, double allowed, double plain)
{
    std::printf("%-62s %8.2f ms", what, milliseconds);
    if (plain > 0)
        std::printf(", %.2f times the plain loop (%.2f ms)", milliseconds / plain, plain);
    if (allowed > 0)
        std::printf(" / %g ms allowed%s", allowed, milliseconds > allowed ? "  MISSED" : "");
    std::printf("\n");
}

/// Draws the newly visible rows, as the next frame would.
void draw(MainWindow &window)
{
    QCoreApplication::processEvents();
    window.findChild<TagTable *>()->viewport()->repaint();
}

void measureOpening(MainWindow &window, const QString &path)
{
    const double opening = millisecondsOf([&] {
        require(window.openProject(path), "the project opens");
        draw(window);
    });
    const QStringList names = window.session().tags().getTagNames();
    int characters = 0;
    const double plain = millisecondsOf([&] {
        for (const QString &name : names)
            characters += name.size();
    });
    require(names.size() == tagCount && characters > tagCount, "all names are read");
    tell("opening 100,000 tags", opening, 0, plain);
}

void measureScrolling(MainWindow &window)
{
    auto *const table = window.findChild<TagTable *>();
    const auto *const model = window.findChild<TagModel *>();
    QScrollBar *const bar = table->verticalScrollBar();
    constexpr int steps = 200;
    double worst = 0;
    double all = 0;
    const int before = model->fetchCount();
    for (int step = 1; step <= steps; ++step) {
        const double cost = millisecondsOf([&] {
            bar->setValue(static_cast<int>(qint64(bar->maximum()) * step / steps));
            draw(window);
        });
        worst = std::max(worst, cost);
        all += cost;
    }
    require(bar->value() == bar->maximum(), "scrolled to the end");
    require(model->fetchCount() - before < tagCount / 5, "rows are read on demand");
    tell("scrolling by 500 rows, mean", all / steps, frame, 0);
    tell("scrolling by 500 rows, worst", worst, 0, 0);
}

void measureSearch(MainWindow &window, const QString &letters)
{
    const auto *const model = window.findChild<TagModel *>();
    auto *const search = window.findChild<QLineEdit *>(QStringLiteral("search"));
    const QStringList names = window.session().tags().getTagNames();
    for (int length = 1; length <= letters.size(); ++length) {
        const QString text = letters.left(length);
        QStringList expected;
        const double plain = millisecondsOf([&] { expected = plainSearch(names, text); });
        std::vector<double> costs;
        for (int round = 0; round < 5; ++round) {
            search->setText(letters.left(length - 1));
            draw(window);
            costs.push_back(millisecondsOf([&] {
                search->setText(text);
                draw(window);
            }));
        }
        std::sort(costs.begin(), costs.end());
        require(model->rowCount() == expected.size(), "rows of a search");
        const QString what = QStringLiteral("filtering anew for \"%1\", %2 hits, drawn").arg(text).arg(expected.size());
        tell(qPrintable(what), costs.at(costs.size() / 2), frame, plain);
    }
    search->clear();
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    silenceLog();
    copyDrivers();
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("plant.db"));
    writeProject(path, manyTags());
    {
        MainWindow window;
        window.show();
        draw(window);
        measureOpening(window, path);
        measureScrolling(window);
        measureSearch(window, QStringLiteral("mtspd99"));
        measureSearch(window, QStringLiteral("zq"));
    }
    TagSystem::drop();
    label::freeLabels();
    return 0;
}
