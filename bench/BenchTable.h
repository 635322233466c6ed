#pragma once

#include <QElapsedTimer>
#include <QString>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <sys/resource.h>
#include <vector>

// Repeats an operation and keeps its times; prints one row of a table.
struct Timing
{
    std::vector<double> ms;
    double Median() const
    {
        std::vector<double> sorted = ms;
        std::sort(sorted.begin(), sorted.end());
        return sorted.empty() ? 0 : sorted[sorted.size() / 2];
    }
    double Min() const { return ms.empty() ? 0 : *std::min_element(ms.begin(), ms.end()); }
    double Max() const { return ms.empty() ? 0 : *std::max_element(ms.begin(), ms.end()); }
};

inline Timing Repeat(int times, const std::function<void()> &operation, const std::function<void()> &before = {})
{
    Timing timing;
    for (int i = 0; i < times; ++i) {
        if (before)
            before();
        QElapsedTimer timer;
        timer.start();
        operation();
        timing.ms.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    return timing;
}

inline long PeakMemoryMB()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

inline void PrintHeader()
{
    std::printf("%-34s %10s %19s %10s %7s %11s\n", "operation", "median ms", "min-max ms", "floor ms", "ratio",
                "statements");
}

inline void PrintRow(const char *operation, const Timing &timing, const Timing &floor, long statements)
{
    const double ratio = floor.Median() > 0 ? timing.Median() / floor.Median() : 0;
    std::printf("%-34s %10.1f %9.1f-%-9.1f %10.1f %7.2f %11ld\n", operation, timing.Median(), timing.Min(), timing.Max(),
                floor.Median(), ratio, statements);
}
