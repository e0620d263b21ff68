// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_BENCHMARKS_MEASURING_H
#define ZELMAR_LABEL_BENCHMARKS_MEASURING_H

#include <benchmark/benchmark.h>

#include <QtGlobal>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

/// Prints to the console and stores the times, so that ratios of one run can be printed at its end.
class KeepingReporter : public benchmark::ConsoleReporter
{
public:
    // Without colours: their escape sequences would be printed before the ratios.
    KeepingReporter()
        : benchmark::ConsoleReporter(OO_Tabular)
    {
    }

    void ReportRuns(const std::vector<Run> &runs) override
    {
        benchmark::ConsoleReporter::ReportRuns(runs);
        for (const Run &run : runs) {
            if (!run.error_occurred && run.aggregate_name != "stddev" && run.aggregate_name != "cv")
                m_nanoseconds[run.benchmark_name()] =
                    run.GetAdjustedCPUTime() * 1e9 / benchmark::GetTimeUnitMultiplier(run.time_unit);
        }
    }

    /// The time of one iteration; 0 for a benchmark that did not run.
    double nanoseconds(const std::string &name) const
    {
        const auto found = m_nanoseconds.find(name);
        return found == m_nanoseconds.end() ? 0 : found->second;
    }

    /// Prints how many units of `unit` the benchmark `name` took; `allowed` is 0 if there is no limit.
    void printRatio(const std::string &name, const std::string &unit, double allowed = 0) const
    {
        if (nanoseconds(name) <= 0 || nanoseconds(unit) <= 0)
            return;
        const double ratio = nanoseconds(name) / nanoseconds(unit);
        if (allowed > 0)
            std::printf("ratio: %-62s %8.2f / %g allowed%s\n", name.c_str(), ratio, allowed,
                        ratio > allowed ? "  MISSED" : "");
        else
            std::printf("ratio: %-62s %8.2f\n", name.c_str(), ratio);
    }

private:
    std::map<std::string, double> m_nanoseconds;
};

/// Ends the program if a result is wrong: the time of a wrong result has no meaning.
inline void require(bool isRight, const char *what)
{
    if (isRight)
        return;
    std::fprintf(stderr, "wrong result: %s\n", what);
    std::exit(1);
}

/// The rows' constructors write to the debug log, which must not be measured.
inline void silenceLog()
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
}

#endif
