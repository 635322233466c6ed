#include "BenchHarness.h"

#include <QElapsedTimer>

#include <algorithm>
#include <sys/resource.h>

namespace {

double ProcessorMs()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto ms = [](const timeval &t) { return double(t.tv_sec) * 1e3 + double(t.tv_usec) / 1e3; };
    return ms(usage.ru_utime) + ms(usage.ru_stime);
}

} // namespace

Timings Repeat(int runs, const std::function<void()> &body, const std::function<void()> &setUp)
{
    QList<double> wall;
    QList<double> cpu;
    for (int i = 0; i < std::max(runs, 1); ++i) {
        if (setUp)
            setUp();
        QElapsedTimer timer;
        const double cpuStart = ProcessorMs();
        timer.start();
        body();
        wall << double(timer.nsecsElapsed()) / 1e6;
        cpu << ProcessorMs() - cpuStart;
    }
    return {Summarise(wall), Summarise(cpu)};
}

Timing Summarise(QList<double> times)
{
    Timing timing;
    if (times.isEmpty())
        return timing;
    std::sort(times.begin(), times.end());
    const qsizetype n = times.size();
    timing.medianMs = n % 2 ? times.at(n / 2) : (times.at(n / 2 - 1) + times.at(n / 2)) / 2;
    timing.minMs = times.first();
    timing.maxMs = times.last();
    return timing;
}

long PeakResidentKib()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss; // KiB on Linux
}

namespace {

QString Milliseconds(double ms)
{
    return ms >= 1000 ? QString::number(ms / 1000, 'f', 2) + QStringLiteral(" s")
                      : QString::number(ms, 'f', 1) + QStringLiteral(" ms");
}

} // namespace

QString TableHeader()
{
    return QStringLiteral("%1 %2 %3 %4 %5 %6 %7 %8")
        .arg(QStringLiteral("operation"), -14)
        .arg(QStringLiteral("donors"), 8)
        .arg(QStringLiteral("rows"), 9)
        .arg(QStringLiteral("median"), 10)
        .arg(QStringLiteral("min-max"), 22)
        .arg(QStringLiteral("cpu median"), 11)
        .arg(QStringLiteral("cpu min-max"), 22)
        .arg(QStringLiteral("peak RSS"), 10);
}

QString TableRow(const QString &operation, qint64 donors, qint64 rows, const Timings &timings, long peakKib)
{
    const auto spread = [](const Timing &t) {
        return Milliseconds(t.minMs) + QStringLiteral(" - ") + Milliseconds(t.maxMs);
    };
    return QStringLiteral("%1 %2 %3 %4 %5 %6 %7 %8")
        .arg(operation, -14)
        .arg(donors, 8)
        .arg(rows, 9)
        .arg(Milliseconds(timings.wall.medianMs), 10)
        .arg(spread(timings.wall), 22)
        .arg(Milliseconds(timings.cpu.medianMs), 11)
        .arg(spread(timings.cpu), 22)
        .arg(QString::number(double(peakKib) / 1024.0, 'f', 1) + QStringLiteral(" MB"), 10);
}
