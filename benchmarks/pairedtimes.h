// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_BENCHMARKS_PAIREDTIMES_H
#define ZELMAR_LABEL_BENCHMARKS_PAIREDTIMES_H

#include <algorithm>
#include <ctime>
#include <utility>
#include <vector>

/// The processor time of the calling thread in nanoseconds.
inline double processorTime()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e9 + double(time.tv_nsec);
}

/// Of an even number of values, the upper of the two in the middle.
inline double medianOf(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Nanoseconds of one call of two works, and the ratio of the first to the second.
struct PairedTimes
{
    double first;
    double second;
    double ratio;
};

/// Nanoseconds of one of `calls` calls.
template<typename Work>
double timeOfCalls(Work work, int calls)
{
    const double begin = processorTime();
    for (int call = 0; call < calls; ++call)
        work();
    return (processorTime() - begin) / calls;
}

/// The number of calls that take about a quarter of a millisecond: long for the clock, short for the scheduler.
template<typename Work>
int callsOfRound(Work work)
{
    constexpr double roundTime = 250e3;
    int calls = 1;
    while (timeOfCalls(work, calls) * calls < roundTime)
        calls *= 2;
    return calls;
}

/// Measures two works in turn, so that a change of the processor's speed meets both: medians over all rounds.
template<typename First, typename Second>
PairedTimes measurePaired(First first, Second second)
{
    constexpr int rounds = 101;
    const int firstCalls = callsOfRound(first);
    const int secondCalls = callsOfRound(second);
    std::vector<double> firstTimes;
    std::vector<double> secondTimes;
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        firstTimes.push_back(timeOfCalls(first, firstCalls));
        secondTimes.push_back(timeOfCalls(second, secondCalls));
        ratios.push_back(firstTimes.back() / secondTimes.back());
    }
    return {medianOf(firstTimes), medianOf(secondTimes), medianOf(ratios)};
}

#endif
