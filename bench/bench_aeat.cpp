// Times the writer of the AEAT file (validation, file, donor history: what
// "modelo182 aeat" and the donor window run) on generated declarations.
//
//   bench_aeat [--runs N] [--dir DIR] [DONORS ...]
//       defaults: 5 runs, DIR bench-data in the build folder, 4500 45000
//       450000 donors.
// Each declaration has one Donantes row per donor and activity (three
// activities) and is built once into DIR/donors-N/Modelo182.mdb. Two cases
// per size: the file written again (the year's donor history already
// there, as when a declaration is written a second time) and the first
// writing (the year's history deleted before each run, outside the
// timing). Each case runs in a process of its own, so that its peak memory
// is its own; one untimed run first brings the database into the page cache.
#include "BenchHarness.h"
#include "DeclarationTables.h"
#include "data/Connection.h"
#include "generator/Modelo182Writer.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTextStream>

#include <cstdio>
#include <functional>
#include <stdexcept>
#include <utility>

namespace {

constexpr int kActivities = 3;
const QLocale kSpanish(QLocale::Spanish, QLocale::Spain);

QString Source(const QString &file)
{
    return QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=") + file;
}

qint64 DonorRows(const QString &file)
{
    if (!QFile::exists(file))
        return -1;
    Connection connection;
    connection.Open(Source(file));
    return connection.Execute(QStringLiteral("SELECT COUNT(*) FROM Donantes")).Fields(0).toLongLong();
}

// The declaration of `donors` donors, built unless already there.
QString Prepare(const QString &dir, qint64 donors, QTextStream &out)
{
    const QString folder = QDir(dir).filePath(QStringLiteral("donors-") + QString::number(donors));
    const QString file = QDir(folder).filePath(QStringLiteral("Modelo182.mdb"));
    if (DonorRows(file) == donors * kActivities)
        return file;
    QDir().mkpath(folder);
    QFile::remove(file);
    QElapsedTimer timer;
    timer.start();
    auto connection = CreateDeclarationFile(file);
    FillLargeDeclaration(*connection, int(donors * kActivities), kSpanish);
    out << "built " << file << " in " << timer.elapsed() << " ms\n";
    out.flush();
    return file;
}

enum class Writing { Again, First };

// One case, in this process: prints the wall-clock and processor medians,
// minima and maxima, then the peak memory in KiB.
int RunCase(const QString &file, int runs, Writing writing)
{
    Connection connection;
    connection.Open(Source(file));
    Modelo182Options options;
    options.locale = kSpanish;
    options.numeroJustificante = QStringLiteral("1820000000001");
    options.reportsFolder = QFileInfo(file).absolutePath();
    options.today = [] { return QDate(2025, 2, 10); };
    NoProgress progress;
    QString ejercicio;
    auto write = [&] {
        const Modelo182Result result = EscribirModelo182(connection, options, progress);
        if (!result.generado)
            throw std::runtime_error(result.Resumen(kSpanish).toStdString());
        ejercicio = result.ejercicio;
    };
    write();
    auto forgetYear = [&] {
        connection.Execute(QStringLiteral("DELETE FROM HistorialDonantes WHERE ejercicio = ") + ejercicio);
    };
    const Timings t = Repeat(runs, write, writing == Writing::First ? std::function<void()>(forgetYear) : nullptr);
    std::printf("%f %f %f %f %f %f %ld\n", t.wall.medianMs, t.wall.minMs, t.wall.maxMs, t.cpu.medianMs, t.cpu.minMs,
                t.cpu.maxMs, PeakResidentKib());
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    try {
        if (args.value(0) == QLatin1String("--case")) {
            const Writing writing = args.value(3) == QLatin1String("first") ? Writing::First : Writing::Again;
            return RunCase(args.value(1), args.value(2).toInt(), writing);
        }

        QTextStream out(stdout);
        int runs = 5;
        QString dir = QCoreApplication::applicationDirPath() + QStringLiteral("/../bench-data");
        QList<qint64> donorCounts;
        for (int i = 0; i < args.size(); ++i) {
            if (args[i] == QLatin1String("--runs") && i + 1 < args.size())
                runs = args[++i].toInt();
            else if (args[i] == QLatin1String("--dir") && i + 1 < args.size())
                dir = args[++i];
            else if (args[i].toLongLong() > 0)
                donorCounts << args[i].toLongLong();
            else {
                out << "bench_aeat [--runs N] [--dir DIR] [DONORS ...]\n";
                return 2;
            }
        }
        if (donorCounts.isEmpty())
            donorCounts = {4'500, 45'000, 450'000};

        QStringList rows{TableHeader()};
        const QList<std::pair<QString, QString>> cases = {{QStringLiteral("written again"), QStringLiteral("again")},
                                                          {QStringLiteral("first writing"), QStringLiteral("first")}};
        for (qint64 donors : donorCounts) {
            const QString file = Prepare(dir, donors, out);
            for (const auto &[operation, mode] : cases) {
                QProcess child;
                child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
                child.start(QCoreApplication::applicationFilePath(),
                            {QStringLiteral("--case"), file, QString::number(runs), mode});
                if (!child.waitForFinished(-1) || child.exitCode() != 0) {
                    out << "the case of " << donors << " donors (" << operation << ") failed\n";
                    return 1;
                }
                const QStringList f = QString::fromLatin1(child.readAllStandardOutput()).split(' ');
                const Timings timings{{f.value(0).toDouble(), f.value(1).toDouble(), f.value(2).toDouble()},
                                      {f.value(3).toDouble(), f.value(4).toDouble(), f.value(5).toDouble()}};
                rows << TableRow(operation, donors, donors * kActivities, timings, f.value(6).trimmed().toLong());
                out << rows.last() << "\n";
                out.flush();
            }
        }
        out << "\n" << runs << " runs per case\n" << rows.join(QLatin1Char('\n')) << "\n";
        return 0;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "bench_aeat: %s\n", error.what());
        return 1;
    }
}
