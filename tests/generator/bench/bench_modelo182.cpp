// Times the declaration generator on a large declaration:
//   bench_modelo182 create DIR ROWS   builds DIR/Modelo182.mdb with ROWS donor rows
//   bench_modelo182 generate DIR      writes DIR/Modelo182_<year>.txt and prints the time
//   bench_modelo182 validate DIR      only the validation, timed
// Run the second under /usr/bin/time -v for the peak memory.
#include "DeclarationTables.h"
#include "data/Connection.h"
#include "generator/Modelo182Validation.h"
#include "generator/Modelo182Writer.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTextStream>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    QTextStream out(stdout);
    if (args.size() < 3 || (args[1] == "create" && args.size() < 4)) {
        out << "bench_modelo182 create DIR ROWS | generate DIR\n";
        return 2;
    }
    const QString dir = QDir(args[2]).absolutePath();
    QDir().mkpath(dir);
    const QString file = QDir(dir).filePath(QStringLiteral("Modelo182.mdb"));
    const QLocale spanish(QLocale::Spanish, QLocale::Spain);
    QElapsedTimer timer;
    timer.start();
    if (args[1] == "create") {
        QFile::remove(file);
        auto connection = CreateDeclarationFile(file);
        FillLargeDeclaration(*connection, args[3].toInt(), spanish);
        out << "created " << file << " in " << timer.elapsed() << " ms\n";
        return 0;
    }
    Connection connection;
    connection.Open(QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=") + file);
    Modelo182Options options;
    options.locale = spanish;
    options.reportsFolder = dir;
    if (args[1] == "validate") {
        const Modelo182Validation validation = ValidarModelo182(connection, options);
        out << validation.filasDonantes << " rows, " << validation.problemas.size() << " problems, validated in "
            << timer.elapsed() << " ms\n";
        return validation.Correcta() ? 0 : 1;
    }
    NoProgress progress;
    const Modelo182Result result = EscribirModelo182(connection, options, progress);
    out << result.Resumen(spanish) << "\n"
        << "generated in " << timer.elapsed() << " ms\n";
    return result.generado ? 0 : 1;
}
