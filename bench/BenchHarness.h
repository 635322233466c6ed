#pragma once

#include <QList>
#include <QString>

#include <functional>

// A plain timing harness: a body run a number of times, the median and the
// spread of its wall-clock times, and the process's peak memory.
struct Timing
{
    double medianMs = 0;
    double minMs = 0;
    double maxMs = 0;
};

// Wall-clock time, and the processor time (user + system) this process
// spent: on a machine others share, the second is what the code costs.
struct Timings
{
    Timing wall;
    Timing cpu;
};

// Runs `body` `runs` times (at least once) and sums up the times; `setUp`,
// when given, runs before each time, outside the timing.
Timings Repeat(int runs, const std::function<void()> &body, const std::function<void()> &setUp = {});

// The median, minimum and maximum of some times.
Timing Summarise(QList<double> times);

// The largest resident set this process has had, in KiB (getrusage).
long PeakResidentKib();

// One line of the results table: operation, donors, rows, wall-clock median
// and min-max, processor-time median and min-max, peak memory.
QString TableHeader();
QString TableRow(const QString &operation, qint64 donors, qint64 rows, const Timings &timings, long peakKib);
