// modelo182: the host stand-in. Opens the Modelo 182 wizard on a school's
// installation as the school-management suite would, and creates the demo
// installation.

#include "DemoIcon.h"
#include "HostStandIn.h"

#include "data/Demo.h"
#include "data/Installation.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <cstdio>

namespace {

const char *const kUsage =
    "Uso:\n"
    "  modelo182 [--session FICHERO]   abre el asistente del modelo 182 (por defecto, la instalación de demostración)\n"
    "  modelo182 demo CARPETA          crea una instalación de demostración en CARPETA\n"
    "  modelo182 demo CARPETA --server CONEXION\n"
    "                                  la misma, con las bases de datos del programa principal en un servidor\n"
    "                                  PostgreSQL (Provider=PostgreSQL;Host=...;Port=...;Database=NOMBRE;\n"
    "                                  User ID=...;Password=...): se crean NOMBRE_entrada, NOMBRE_centro, ...\n"
    "  modelo182 --help                muestra esta ayuda\n";

void Print(FILE *stream, const QString &text)
{
    std::fprintf(stream, "%s\n", text.toLocal8Bit().constData());
}

int CreateDemo(const QString &folder, const QString &server)
{
    try {
        // On a server, the declaration database goes where the add-in loaded
        // by this program looks for it: "Informes" beside its library.
        const InstallationPaths paths = server.isEmpty()
            ? CreateDemoInstallation(folder)
            : CreateDemoInstallationOnServer(folder, server, QCoreApplication::applicationDirPath());
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
        return 0;
    }

    if (!args.isEmpty() && args.first() == QLatin1String("demo")) {
        const bool onServer = args.size() == 4 && args.at(2) == QLatin1String("--server");
        if (args.size() != 2 && !onServer) {
            std::fputs(kUsage, stderr);
            return 2;
        }
        QCoreApplication app(argc, argv);
        return CreateDemo(args.at(1), onServer ? args.at(3) : QString());
    }

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
