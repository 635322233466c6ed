// modelo182: the host stand-in. Opens the Modelo 182 wizard on a school's
// installation as the school-management suite would, and creates the demo
// installation.

#include "AeatCommand.h"
#include "DeclareCommand.h"
#include "DemoIcon.h"
#include "HostStandIn.h"

#include "data/Demo.h"
#include "data/Installation.h"
#include "merge/TemplateInstaller.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <cstdio>
#include <optional>

namespace {

const char *const kUsage =
    "Uso:\n"
    "  modelo182 [--session FICHERO]   abre el asistente del modelo 182 (por defecto, la instalación de demostración)\n"
    "  modelo182 declarar [--session FICHERO]\n"
    "                                  genera el modelo 182 y los certificados con el trabajo guardado, sin ventanas\n"
    "  modelo182 demo CARPETA          crea una instalación de demostración en CARPETA\n"
    "      [--students N] [--years A] [--activities M] [--seed S]\n"
    "                                  un colegio generado de ese tamaño (p. ej. para medir la velocidad)\n"
    "  modelo182 demo CARPETA --server CONEXION\n"
    "                                  la misma, con las bases de datos del programa principal en un servidor\n"
    "                                  PostgreSQL (Provider=PostgreSQL;Host=...;Port=...;Database=NOMBRE;\n"
    "                                  User ID=...;Password=...): se crean NOMBRE_entrada, NOMBRE_centro, ...\n"
    "  modelo182 --help                muestra esta ayuda\n";

int RunAeat(int argc, char **argv, const QStringList &words)
{
    QCoreApplication app(argc, argv);
    AeatCommand command(DefaultDemoFolder() + QStringLiteral("/modelo182.ini"));
    const int code = command.Run(words);
    std::fputs(command.Output().toLocal8Bit().constData(), stdout);
    std::fputs(command.Errors().toLocal8Bit().constData(), stderr);
    return code;
}

void Print(FILE *stream, const QString &text)
{
    std::fprintf(stream, "%s\n", text.toLocal8Bit().constData());
}

int CreateDemo(const QString &folder, const std::optional<SchoolSize> &size, const QString &server)
{
    try {
        InstallationDescription description = size ? GeneratedSchool(*size) : DemoSchool();
        // On a server, the declaration database goes where the add-in loaded
        // by this program looks for it: "Informes" beside its library.
        if (!server.isEmpty())
            description = OnServer(description, server, QCoreApplication::applicationDirPath());
        const InstallationPaths paths = BuildInstallation(folder, description);
        // The school adapts the certificate templates in its reports folder.
        CertificateTemplates::Install(paths.informes);
        if (!WriteDemoIcon(paths.iconFile))
            Print(stderr, QStringLiteral("Aviso: no se ha podido escribir el icono «%1».").arg(paths.iconFile));
        Print(stdout, QStringLiteral("Instalación de demostración creada en %1").arg(paths.root));
        Print(stdout, QStringLiteral("Fichero de sesión: %1").arg(paths.iniFile));
        if (!server.isEmpty())
            Print(stdout, QStringLiteral("Base de datos de la declaración: %1").arg(paths.modelo182File));
        return 0;
    } catch (const std::exception &error) {
        Print(stderr, QStringLiteral("No se ha podido crear la instalación de demostración: %1")
                          .arg(QString::fromUtf8(error.what())));
        return 1;
    }
}

} // namespace

int main(int argc, char **argv)
{
    QStringList args;
    for (int i = 1; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);

    if (args.contains(QStringLiteral("--help")) || args.contains(QStringLiteral("-h"))) {
        std::fputs(kUsage, stdout);
        std::fputs(kAeatUsage, stdout);
        return 0;
    }

    if (!args.isEmpty() && args.first() == QLatin1String("aeat"))
        return RunAeat(argc, argv, args.mid(1));

    if (!args.isEmpty() && args.first() == QLatin1String("demo")) {
        std::optional<SchoolSize> size;
        QString folder;
        QString server;
        for (int i = 1; i < args.size(); ++i) {
            const QString &arg = args.at(i);
            const bool sized = arg == QLatin1String("--students") || arg == QLatin1String("--years")
                               || arg == QLatin1String("--activities") || arg == QLatin1String("--seed");
            if (sized && i + 1 < args.size()) {
                bool ok = false;
                const uint value = args.at(++i).toUInt(&ok);
                if (!ok || value == 0 || value > 1000000) {
                    Print(stderr,
                          QStringLiteral("El valor de ") + arg + QStringLiteral(" debe ser un número entero positivo."));
                    return 2;
                }
                if (!size)
                    size = SchoolSize{};
                if (arg == QLatin1String("--students"))
                    size->students = int(value);
                else if (arg == QLatin1String("--years"))
                    size->years = int(qMin(value, 20u));
                else if (arg == QLatin1String("--activities"))
                    size->activities = int(qMin(value, 9u));
                else
                    size->seed = value;
            } else if (arg == QLatin1String("--server") && i + 1 < args.size()) {
                server = args.at(++i);
            } else if (folder.isEmpty() && !arg.startsWith(QLatin1String("--"))) {
                folder = arg;
            } else {
                std::fputs(kUsage, stderr);
                return 2;
            }
        }
        if (folder.isEmpty()) {
            std::fputs(kUsage, stderr);
            return 2;
        }
        QCoreApplication app(argc, argv);
        return CreateDemo(folder, size, server);
    }

    const bool declarar = !args.isEmpty() && args.first() == QLatin1String("declarar");
    if (declarar)
        args.removeFirst();
    QString sessionFile = DefaultDemoFolder() + QStringLiteral("/modelo182.ini");
    for (int i = 0; i < args.size(); ++i) {
        if (args.at(i) == QLatin1String("--session") && i + 1 < args.size()) {
            sessionFile = args.at(++i);
        } else {
            Print(stderr, QStringLiteral("Opción desconocida: %1").arg(args.at(i)));
            std::fputs(kUsage, stderr);
            return 2;
        }
    }
    if (declarar) {
        QCoreApplication app(argc, argv);
        return RunDeclaration(sessionFile);
    }
    if (!QFileInfo::exists(sessionFile)) {
        Print(stderr, QStringLiteral("No existe el fichero de sesión «%1». Cree la instalación de demostración con: "
                                     "modelo182 demo %2")
                          .arg(sessionFile, DefaultDemoFolder()));
        return 1;
    }
    if (!CanShowWindows()) {
        Print(stderr, QStringLiteral("No hay pantalla en la que mostrar el asistente. Ejecútelo en un escritorio, o con "
                                     "un servidor X virtual: xvfb-run -a %1 --session %2")
                          .arg(QString::fromLocal8Bit(argv[0]), sessionFile));
        return 3;
    }
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("modelo182"));
    return RunWizard(sessionFile);
}
