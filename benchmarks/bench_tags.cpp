// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

// Times for tags as their number grows: adding, finding names, and reading one property of one tag. With the argument
// "tolv" the program measures the tag table in memory instead, which needs a separate process.

#include "benchmarks/measuring.h"

#include "zelmar_label/tag_store/filtertools.h"
#include "zelmar_label/tag_store/tagsystem.h"

#include "support/projectfixtures.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHash>
#include <QMutex>
#include <QRegExp>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QVariant>

#include <cstring>
#include <functional>

extern "C" void *__libc_malloc(size_t size);

static long s_allocations = 0;

/// Counts the allocations of the whole program, including Qt.
extern "C" void *malloc(size_t size)
{
    ++s_allocations;
    return __libc_malloc(size);
}

namespace {

constexpr int sizes[] = {1000, 10000, 100000};

QString nameOf(int number)
{
    return QStringLiteral("Line%1_Motor_Speed_%2").arg(number % 17).arg(number);
}

double nanosecondsOf(const std::function<void()> &work, int times = 1)
{
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < times; ++i)
        work();
    return static_cast<double>(timer.nsecsElapsed()) / times;
}

void printRatio(const char *what, double ratio, double allowed)
{
    std::printf("ratio: %-62s %8.2f / %g allowed%s\n", what, ratio, allowed, ratio > allowed ? "  MISSED" : "");
}

QList<TagRow> tagRows(int count)
{
    QList<TagRow> rows;
    for (int i = 1; i <= count; ++i) {
        TagRow row;
        row.id = i;
        row.name = nameOf(i);
        row.connectorId = 1;
        row.dataType = 3;
        row.address = QStringLiteral("D%1").arg(i);
        rows.append(row);
    }
    return rows;
}

/// A project of `count` tags; its key is also its file name.
TagSystem *project(const QTemporaryDir &folder, int count)
{
    const QString key = QString::number(count);
    makeProject(folder.filePath(key), key);
    writeTags(key, tagRows(count));
    return TagSystem::instance(key);
}

double costOfAdding(TagSystem &tags, int count)
{
    constexpr int added = 500;
    QSqlDatabase db = tags.database();
    db.transaction();
    const double cost = nanosecondsOf([&] {
                            for (int i = 1; i <= added; ++i)
                                tags.addTag(nameOf(count + i), QStringLiteral("D1"), 1, 3, 1);
                        }) /
                        added;
    const QStringList kept = tags.getTagNames();
    tags.refreshTagNames();
    require(kept == tags.getTagNames() && kept.size() == count + added, "names after adding");
    db.rollback();
    tags.refreshTagNames();
    require(tags.getTagNames().size() == count, "names after a roll-back");
    return cost;
}

void measureSimilarNames(TagSystem &tags)
{
    const QString text = QStringLiteral("mtspd99");
    const QStringList names = tags.getTagNames();
    QStringList slow;
    const double reference = nanosecondsOf([&] {
        slow = QStringList(names).filter(
            QRegExp(FilterTools::makefuzzypattern(text), Qt::CaseInsensitive, QRegExp::RegExp));
    });
    QStringList fast;
    const double library = nanosecondsOf([&] { fast = tags.getSimilarTagNames(text); }, 20);
    require(fast == slow && !fast.isEmpty(), "similar names");
    std::printf("ratio: %-62s %8.0f times as fast; 100 wanted%s (%.2f ms)\n", "fuzzy search of 100,000 names",
                reference / library, reference < library * 100 ? "  MISSED" : "", library / 1e6);
}

/// The time of one prepared SELECT by primary key, the unit of the look-ups.
double steppedSelect(TagSystem &tags, const QString &columns, int count)
{
    QSqlQuery query(tags.database());
    query.setForwardOnly(true);
    query.prepare(QStringLiteral("SELECT %1 FROM custom_tag_table WHERE id = ?").arg(columns));
    int id = 0;
    int fields = 0;
    const double cost = nanosecondsOf(
        [&] {
            query.bindValue(0, id++ % count + 1);
            query.exec();
            while (query.next())
                fields += query.value(1).toString().size();
            query.finish();
        },
        20000);
    require(fields > 0, "stepped select");
    return cost;
}

void measureLookUps(TagSystem &tags, int count)
{
    const double unit = steppedSelect(tags, QStringLiteral("id,name"), count);
    const double unitOfCommand = steppedSelect(tags, QStringLiteral("id,address,data_type,scan_time,scale"), count);
    int id = 0;
    const auto next = [&id, count] { return id++ % count + 1; };
    constexpr int times = 20000;
    require(tags.getTagNameById(7) == nameOf(7) && tags.getAddressByID(7) == QLatin1String("D7"), "look-ups");
    const QString column = QStringLiteral("scale");
    printRatio("getTagNameById against a stepped SELECT",
               nanosecondsOf([&] { tags.getTagNameById(next()); }, times) / unit, 2);
    printRatio("getAddressByID against a stepped SELECT",
               nanosecondsOf([&] { tags.getAddressByID(next()); }, times) / unit, 2);
    printRatio("getIntValueByID against a stepped SELECT",
               nanosecondsOf([&] { tags.getIntValueByID(next(), column); }, times) / unit, 2);
    bool ok = false;
    printRatio("getCommunicatorCommandByIndex against a stepped SELECT",
               nanosecondsOf([&] { tags.getCommunicatorCommandByIndex(next(), ok); }, times) / unitOfCommand, 2);
    require(ok, "a tag's command");
}

int measureEditor(const QTemporaryDir &folder)
{
    double first = 0;
    for (const int count : sizes) {
        TagSystem *tags = project(folder, count);
        const double cost = costOfAdding(*tags, count);
        if (first == 0)
            first = cost;
        std::printf("adding one of %6d tags in a transaction: %.1f us\n", count, cost / 1000);
        if (count == sizes[2]) {
            printRatio("adding at 100,000 tags against 1,000", cost / first, 2);
            measureSimilarNames(*tags);
            measureLookUps(*tags, count);
        }
    }
    return 0;
}

/// The bytes of a number are one allocation, a value is none.
void countCodecAllocations(TagSystem &tags)
{
    const QVariant number(1500);
    QByteArray bytes = tags.varToByteArrayThreadSafe(7, number);
    QVariant value;
    tags.byteArray2Var(7, bytes, value);
    constexpr int times = 1000;
    const long before = s_allocations;
    for (int i = 0; i < times; ++i)
        bytes = tags.varToByteArrayThreadSafe(7, number);
    const long encoding = s_allocations - before;
    for (int i = 0; i < times; ++i)
        value = tags.byteArrayToVarThreadSafe(7, bytes);
    const long decoding = s_allocations - before - encoding;
    require(value.toInt() == 1500, "the value of a tag's bytes");
    printRatio("allocations of encoding a number", double(encoding) / times, 1);
    printRatio("allocations of decoding a number", double(decoding) / times, 0);
}

int measureTolv(const QTemporaryDir &folder)
{
    const int count = sizes[2];
    const QString key = QStringLiteral("1");
    makeProject(folder.filePath(key), key);
    writeTags(key, tagRows(count));
    QSqlDatabase db = QSqlDatabase::database(key);
    qint64 bytes = 0;
    const auto read = [&] {
        QSqlQuery query(db);
        query.setForwardOnly(true);
        query.exec(QStringLiteral(
            "select id,data_type,scan_time,connector_id,address,scale,addition,access from custom_tag_table"));
        while (query.next()) {
            for (const int column : {0, 1, 3, 5, 7})
                bytes += query.value(column).toInt();
            bytes += query.value(4).toString().size();
        }
    };
    read();
    const double reading = nanosecondsOf(read, 3);
    TagSystem tags(nullptr);
    tags.init(key);
    const double loading = nanosecondsOf([&] { tags.initCatchTable(); });
    printRatio("loading 100,000 rows against reading them", loading / reading, 1.5);

    QHash<int, QString> bare;
    for (int i = 1; i <= count; ++i)
        bare.insert(i, nameOf(i));
    QMutex mutex;
    int id = 0;
    const auto next = [&id] { return id++ % count + 1; };
    constexpr int times = 2000000;
    const double unit = nanosecondsOf(
        [&] {
            const QMutexLocker locker(&mutex);
            bytes += bare.value(next()).size();
        },
        times);
    require(tags.getDataTypeByID(7) == 3 && tags.getCommunicatorID(7) == 1, "reads of the table in memory");
    for (int tag = 1; tag <= count; ++tag)
        bytes += tags.getDataTypeByID(tag);
    printRatio("getDataTypeByID against a QHash under a QMutex",
               nanosecondsOf([&] { bytes += tags.getDataTypeByID(next()); }, times) / unit, 2);
    printRatio("getCommunicatorID against a QHash under a QMutex",
               nanosecondsOf([&] { bytes += tags.getCommunicatorID(next()); }, times) / unit, 2);
    printRatio("getAccessModeByID against a QHash under a QMutex",
               nanosecondsOf([&] { bytes += tags.getAccessModeByID(next()); }, times) / unit, 2);
    bool ok = false;
    printRatio("getCommunicatorCommandByIndex against a QHash under a QMutex",
               nanosecondsOf([&] { bytes += tags.getCommunicatorCommandByIndex(next(), ok).address.size(); }, times) /
                   unit,
               2);
    require(ok && bytes > 0, "commands of the table in memory");
    countCodecAllocations(tags);
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    silenceLog();
    const QTemporaryDir folder;
    const bool isTolv = argc > 1 && std::strcmp(argv[1], "tolv") == 0;
    const int result = isTolv ? measureTolv(folder) : measureEditor(folder);
    dropProjects();
    return result;
}
