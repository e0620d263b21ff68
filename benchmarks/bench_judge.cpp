// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

// Time and memory to judge addresses, in units that are measured in the same run: a scanner written by hand for one
// device, and one match of an expression.

#include "benchmarks/countingallocator.h"
#include "benchmarks/judgefixtures.h"
#include "benchmarks/measuring.h"
#include "benchmarks/melsecscanner.h"
#include "benchmarks/pairedtimes.h"

#include "zelmar_label/label_store/labelreader.h"
#include "zelmar_label/label_table/addressdiagnosis.h"
#include "zelmar_label/label_table/labelloader.h"

#include <QCoreApplication>
#include <QRegExp>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QVariant>

#include <atomic>
#include <functional>
#include <thread>

namespace {

using label::AddressVerdict;
using label::anyType;
using label::LabelLoader;

/// Enough to exceed what the processor's branch prediction learns by heart.
constexpr int addressCount = 4096;
const QString melsec = QStringLiteral("MELSEC Q Ethernet");
const char *const realDrivers[] = {"FX5U Ethernet",     "ISO on TCP", "KV Ethernet", "LustBus ServoC/CDE Series",
                                   "MELSEC Q Ethernet", "S7 200 PPI"};

void printGoal(const QString &what, double value, double goal, const char *unit = "")
{
    std::printf("goal: %-84s %9.3f / %g%s allowed  %s\n", qPrintable(what), value, goal, unit,
                value > goal ? "MISSED" : "ok");
}

void printValue(const QString &what, double value, const char *unit)
{
    std::printf("      %-84s %9.1f%s\n", qPrintable(what), value, unit);
}

struct DriverQuestions
{
    std::unique_ptr<LabelLoader> label;
    QStringList accepted;
    QStringList refused;
};

/// The samples of a driver; members of families have their rows.
DriverQuestions questionsOf(const JudgedDrivers &drivers, const QString &name)
{
    const JudgedDriver &driver = drivers.driver(name);
    DriverQuestions questions{drivers.label(name), driver.accepted, driver.refused};
    for (const QString &address : driver.accepted)
        require(questions.label->addressValidation(address, anyType) >= 0, "an accepted sample");
    for (const QString &address : driver.refused)
        require(questions.label->addressValidation(address, anyType) < 0, "a refused sample");
    return questions;
}

struct Question
{
    LabelLoader *label;
    QString address;
};

/// The samples of several drivers in mixed order.
class Questions
{
public:
    Questions(const std::vector<DriverQuestions> &drivers, QStringList DriverQuestions::*samples)
    {
        QStringList keys;
        for (std::size_t driver = 0; driver < drivers.size(); ++driver) {
            for (const QString &address : drivers[driver].*samples)
                keys.append(QString::number(driver) + QLatin1Char('\t') + address);
        }
        const QStringList order = mixed(keys, addressCount);
        for (const QString &key : order) {
            const int end = key.indexOf(QLatin1Char('\t'));
            m_all.push_back({drivers[key.left(end).toUInt()].label.get(), key.mid(end + 1)});
        }
    }

    void judge() const
    {
        for (const Question &question : m_all)
            benchmark::DoNotOptimize(question.label->judge(question.address));
    }
    void validate() const
    {
        for (const Question &question : m_all)
            benchmark::DoNotOptimize(question.label->addressValidation(question.address, anyType));
    }

private:
    std::vector<Question> m_all;
};

void judgeAll(const LabelLoader &label, const QStringList &addresses)
{
    for (const QString &address : addresses)
        benchmark::DoNotOptimize(label.judge(address));
}

void scanAll(const QStringList &addresses)
{
    for (const QString &address : addresses)
        benchmark::DoNotOptimize(scanMelsecAddress(address));
}

void validateAll(LabelLoader &label, const QStringList &addresses)
{
    for (const QString &address : addresses)
        benchmark::DoNotOptimize(label.addressValidation(address, anyType));
}

/// As many matches as there are addresses.
void matchAll()
{
    static const QRegExp expression(QStringLiteral("(D)(\\d+)"));
    static const QString address = QStringLiteral("D100");
    for (int match = 0; match < addressCount; ++match)
        benchmark::DoNotOptimize(expression.exactMatch(address));
}

void checkScanner(const LabelLoader &label, const QStringList &addresses)
{
    for (const QString &address : addresses) {
        const ScannedAddress scanned = scanMelsecAddress(address);
        const AddressVerdict verdict = label.judge(address);
        require(scanned.isAccepted() == verdict.isAccepted && scanned.number == verdict.number &&
                    scanned.bit == verdict.bit,
                qPrintable(address));
        require(!scanned.isAccepted() || scanned.station == verdict.station, qPrintable(address));
    }
}

/// Against the yardstick, on its own device.
void compareWithScanner(const QString &what, const QStringList &samples, LabelLoader &label)
{
    checkScanner(label, samples);
    const QStringList addresses = mixed(samples, addressCount);
    const PairedTimes judged = measurePaired([&] { judgeAll(label, addresses); }, [&] { scanAll(addresses); });
    printGoal(QStringLiteral("judge, %1, in scans of the same addresses").arg(what), judged.ratio, 1.5);
    printValue(QStringLiteral("  judge"), judged.first / addressCount, " ns");
    printValue(QStringLiteral("  scan"), judged.second / addressCount, " ns");
}

void compareValidationWithScanner(const QString &what, const QStringList &samples, LabelLoader &label)
{
    const QStringList addresses = mixed(samples, addressCount);
    const PairedTimes validated = measurePaired([&] { validateAll(label, addresses); }, [&] { scanAll(addresses); });
    printGoal(QStringLiteral("addressValidation, %1, in scans of the same addresses").arg(what), validated.ratio, 1.5);
}

void compareWithUnits(const QString &what, const std::function<void()> &work, const QStringList &scanned)
{
    const PairedTimes matched = measurePaired(work, matchAll);
    printGoal(what + QLatin1String(", in matches of (D)(\\d+)"), matched.ratio, 0.2);
    const PairedTimes scans = measurePaired(work, [&] { scanAll(scanned); });
    printGoal(what + QLatin1String(", in scans of the yardstick's addresses"), scans.ratio, 1.5);
    printValue(QStringLiteral("  one"), matched.first / addressCount, " ns");
}

void compareJudging(const JudgedDrivers &drivers)
{
    const DriverQuestions own = questionsOf(drivers, melsec);
    compareWithScanner(QStringLiteral("accepted"), own.accepted, *own.label);
    compareWithScanner(QStringLiteral("accepted, with a station"), withStations(own.accepted), *own.label);
    compareWithScanner(QStringLiteral("refused"), own.refused, *own.label);
    compareValidationWithScanner(QStringLiteral("refused"), own.refused, *own.label);

    std::vector<DriverQuestions> real;
    for (const char *const name : realDrivers)
        real.push_back(questionsOf(drivers, QLatin1String(name)));
    const QStringList acceptedScans = mixed(own.accepted, addressCount);
    const QStringList refusedScans = mixed(own.refused, addressCount);
    const Questions accepted(real, &DriverQuestions::accepted);
    const Questions refused(real, &DriverQuestions::refused);
    compareWithUnits(
        QStringLiteral("judge, accepted, six drivers"), [&] { accepted.judge(); }, acceptedScans);
    compareWithUnits(
        QStringLiteral("judge, refused, six drivers"), [&] { refused.judge(); }, refusedScans);
    compareWithUnits(
        QStringLiteral("addressValidation, refused, six drivers"), [&] { refused.validate(); }, refusedScans);
}

/// The same addresses on a label with few rows and on one with many.
void compareSizes(const JudgedDrivers &drivers)
{
    const FamilyLabel few = familyLabel(drivers, 60);
    const FamilyLabel many = familyLabel(drivers, 10000);
    require(many.label->countType(anyType) == 10000, "10,000 rows");
    QStringList known;
    for (const QString &address : drivers.driver(QStringLiteral("ISO on TCP")).accepted + few.members) {
        if (!few.label->judge(address).isNewMember)
            known.append(address);
    }
    const QStringList addresses = mixed(known, addressCount);
    for (const QString &address : addresses)
        require(few.label->judge(address).row == many.label->judge(address).row, "the same row");
    const PairedTimes same =
        measurePaired([&] { judgeAll(*many.label, addresses); }, [&] { judgeAll(*few.label, addresses); });
    printGoal(QStringLiteral("judge, 10,000 rows, in those of 60 rows"), same.ratio, 1.5);
    const QStringList spread = mixed(many.members, addressCount);
    const PairedTimes all =
        measurePaired([&] { judgeAll(*many.label, spread); }, [&] { judgeAll(*few.label, addresses); });
    printValue(QStringLiteral("judge, 60 rows"), same.second / addressCount, " ns");
    printValue(QStringLiteral("judge, 10,000 rows, addresses of all rows"), all.first / addressCount, " ns");
    printValue(QStringLiteral("judge, 10,000 rows, addresses of all rows, in those of 60 rows"), all.ratio, "");
}

/// What a program asks about one address of a command.
void compareThreeQuestions(const JudgedDrivers &drivers)
{
    const DriverQuestions own = questionsOf(drivers, melsec);
    const QStringList addresses = mixed(own.accepted, addressCount);
    LabelLoader &label = *own.label;
    const auto askAll = [&] {
        for (const QString &address : addresses) {
            const int row = label.addressValidation(address, anyType);
            benchmark::DoNotOptimize(label.addressRange(row, address));
            benchmark::DoNotOptimize(label.bitOffset(row, address));
        }
    };
    const PairedTimes asked = measurePaired(askAll, [&] { judgeAll(label, addresses); });
    printGoal(QStringLiteral("addressValidation, addressRange and bitOffset, in judge"), asked.ratio, 3);
}

/// The processor time of the slower of two threads that judge half of the addresses each.
double timeOfHalf(const LabelLoader &label, const QStringList &addresses, int repeats)
{
    std::atomic<int> ready{0};
    const auto judgeHalf = [&](int first) {
        ++ready;
        while (ready < 2) {
        }
        const double begin = processorTime();
        for (int repeat = 0; repeat < repeats; ++repeat) {
            for (int index = first; index < addresses.size(); index += 2)
                benchmark::DoNotOptimize(label.judge(addresses.at(index)));
        }
        return processorTime() - begin;
    };
    double other = 0;
    std::thread thread([&] { other = judgeHalf(1); });
    const double own = judgeHalf(0);
    thread.join();
    return qMax(own, other);
}

void compareThreads(const JudgedDrivers &drivers)
{
    const DriverQuestions own = questionsOf(drivers, melsec);
    const QStringList addresses = mixed(own.accepted, addressCount);
    constexpr int repeats = 20;
    constexpr int rounds = 51;
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        const double half = timeOfHalf(*own.label, addresses, repeats);
        const double whole = timeOfCalls([&] { judgeAll(*own.label, addresses); }, repeats) * repeats;
        ratios.push_back(half / whole);
    }
    printGoal(QStringLiteral("two threads on one label, in the time of one"), medianOf(ratios), 0.55);
}

void compareCompleting(const JudgedDrivers &drivers)
{
    const FamilyLabel many = familyLabel(drivers, 10000);
    const QRegExp expression(QStringLiteral("(D)(\\d+)"));
    const QString hit = QStringLiteral("D100");
    for (const char *const text : {"", "D", "DB", "DB1", "DB12", "DB204", "DB2047.DBW", "M1"}) {
        const QString typed = QLatin1String(text);
        const int size = many.label->getAllMatchedIndex(typed, anyType).size();
        const auto allowed = [&] {
            for (int match = 0; match < 20; ++match)
                benchmark::DoNotOptimize(expression.exactMatch(hit));
            QList<int> result;
            for (int row = 0; row < size; ++row)
                result.append(row);
            benchmark::DoNotOptimize(result);
        };
        const PairedTimes times =
            measurePaired([&] { benchmark::DoNotOptimize(many.label->getAllMatchedIndex(typed, anyType)); }, allowed);
        printGoal(QStringLiteral("completing \"%1\" to %2 rows, in 20 matches and such a list").arg(typed).arg(size),
                  times.ratio, 1);
    }
}

void measureDiagnosis(const JudgedDrivers &drivers)
{
    std::vector<double> times;
    QString slowest;
    for (const JudgedDriver &driver : drivers.all()) {
        const std::unique_ptr<LabelLoader> label = drivers.label(driver.name);
        for (const QString &address : driver.refused) {
            const auto diagnose = [&] { benchmark::DoNotOptimize(label::diagnoseAddress(*label, address, anyType)); };
            diagnose();
            double time = timeOfCalls(diagnose, 1);
            for (int repeat = 0; repeat < 4; ++repeat)
                time = qMin(time, timeOfCalls(diagnose, 1));
            times.push_back(time);
            if (time >= *std::max_element(times.begin(), times.end()))
                slowest = driver.name + QLatin1String(": ") + address;
        }
    }
    printGoal(QStringLiteral("diagnosis of %1 refused samples, median").arg(times.size()), medianOf(times) / 1000, 20,
              " us");
    printGoal(QStringLiteral("  at worst (%1)").arg(slowest.left(40)),
              *std::max_element(times.begin(), times.end()) / 1000, 200, " us");
}

/// The rows of the driver's device table, read as the library reads them.
void selectRows(const QSqlDatabase &database)
{
    QSqlQuery query(database);
    query.setForwardOnly(true);
    query.prepare(QStringLiteral("SELECT * FROM many_rows_types"));
    query.exec();
    const int columns = query.record().count();
    int rows = 0;
    for (; query.next(); ++rows) {
        for (int column = 0; column < columns; ++column)
            benchmark::DoNotOptimize(query.value(column).toString());
    }
    require(rows == 200, "200 rows are selected");
}

void compareBuilding(const JudgedDrivers &drivers)
{
    const PairedTimes built = measurePaired([&] { benchmark::DoNotOptimize(drivers.label(manyRowsDriver)); },
                                            [&] { selectRows(drivers.database()); });
    printGoal(QStringLiteral("readLabel of 200 rows, in the SELECT of these rows"), built.ratio, 5);
    printValue(QStringLiteral("  readLabel"), built.first / 1000, " us");
}

void measureMemory(const JudgedDrivers &drivers)
{
    double rows = 0;
    double bytes = 0;
    double most = 0;
    QString largest;
    for (const JudgedDriver &driver : drivers.all()) {
        drivers.label(driver.name);
        const long long before = allocationCount().bytes;
        const std::unique_ptr<LabelLoader> label = drivers.label(driver.name);
        judgeAll(*label, driver.accepted);
        const double size = double(allocationCount().bytes - before);
        const int count = label->countType(anyType);
        rows += count;
        bytes += size;
        if (size / count > most) {
            most = size / count;
            largest = driver.name;
        }
    }
    printGoal(QStringLiteral("bytes of a row, all shipped drivers"), bytes / rows, 2048, " bytes");
    printGoal(QStringLiteral("bytes of a row, %1, the largest").arg(largest), most, 2048, " bytes");

    const long long before = allocationCount().bytes;
    FamilyLabel many = familyLabel(drivers, 10000);
    many.members = QStringList();
    printGoal(QStringLiteral("bytes of a row, 10,000 rows of families"),
              double(allocationCount().bytes - before) / many.label->countType(anyType), 2048, " bytes");
}

void countAllocations(const JudgedDrivers &drivers)
{
    const DriverQuestions own = questionsOf(drivers, QStringLiteral("ISO on TCP"));
    const QStringList addresses = mixed(own.accepted + own.refused + withStations(own.accepted), 1000000);
    std::vector<AddressVerdict> verdicts(std::size_t(addresses.size()));
    const long long before = allocationCount().calls;
    const double time = timeOfCalls([&] { own.label->judge(addresses, anyType, verdicts.data()); }, 1);
    printGoal(QStringLiteral("allocations of judge for a list of a million addresses"),
              double(allocationCount().calls - before), 0);
    printValue(QStringLiteral("  one address of the list"), time / addresses.size(), " ns");
    for (int index = 0; index < addresses.size(); index += 1000)
        require(verdicts[std::size_t(index)].row == own.label->judge(addresses.at(index)).row, "the list's verdict");
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    silenceLog();
    const JudgedDrivers drivers;
    const struct
    {
        const char *name;
        void (*measure)(const JudgedDrivers &);
    } groups[] = {
        {"judging", compareJudging},   {"sizes", compareSizes},           {"questions", compareThreeQuestions},
        {"threads", compareThreads},   {"completing", compareCompleting}, {"diagnosis", measureDiagnosis},
        {"building", compareBuilding}, {"memory", measureMemory},         {"allocations", countAllocations}};
    // With arguments only the groups with these names.
    const QStringList wanted = QCoreApplication::arguments().mid(1);
    for (const auto &group : groups) {
        if (wanted.isEmpty() || wanted.contains(QLatin1String(group.name)))
            group.measure(drivers);
    }
    return 0;
}
