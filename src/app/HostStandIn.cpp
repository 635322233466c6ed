#include "HostStandIn.h"

#include "data/DatabaseError.h"
#include "session/SessionSettings.h"
#include "session/modPrincipal.h"
#include "wizard/cAsignarDatos.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QLibrary>
#include <QMessageBox>
#include <QStandardPaths>
#include <cstdio>

namespace {

void Report(const QString &text)
{
    std::fprintf(stderr, "modelo182: %s\n", text.toLocal8Bit().constData());
    if (qobject_cast<QApplication *>(QCoreApplication::instance()))
        QMessageBox::critical(nullptr, modPrincipal::LoadResString(100), text);
}

using CreateFn = cAsignarDatos *(*)();
using DestroyFn = void (*)(cAsignarDatos *);

} // namespace

QString DefaultDemoFolder()
{
    const QString fromEnvironment = qEnvironmentVariable("MODELO182_DEMO");
    if (!fromEnvironment.isEmpty())
        return fromEnvironment;
    return QDir::homePath() + QStringLiteral("/.local/share/modelo182/demo");
}

bool CanShowWindows()
{
    return qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || qEnvironmentVariableIsSet("DISPLAY")
           || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
}

int RunWizard(const QString &sessionFile)
{
    SesionHostPtr session;
    try {
        const SessionSettings settings = SessionSettings::Load(sessionFile);
        QLocale::setDefault(settings.Program().locale);
        session = settings.BuildSession();
    } catch (const DatabaseError &error) {
        Report(QStringLiteral("No se puede abrir una base de datos del programa principal: ") + error.Describe());
        return 1;
    } catch (const std::exception &error) {
        Report(QString::fromUtf8(error.what()));
        return 1;
    }

    // The add-in is loaded at run time, as the host loads it.
    QLibrary library(QCoreApplication::applicationDirPath() + QStringLiteral("/libm182addin"));
    auto create = reinterpret_cast<CreateFn>(library.resolve("CrearAsignarDatos"));
    auto destroy = reinterpret_cast<DestroyFn>(library.resolve("DestruirAsignarDatos"));
    if (!create || !destroy) {
        Report(QStringLiteral("No se puede cargar el complemento del modelo 182: ") + library.errorString());
        return 1;
    }
    cAsignarDatos *addin = create();
    int result = 0;
    try {
        addin->ObtenerDatos(session);
        addin->ActivarFormulario(0);
    } catch (const DatabaseError &error) {
        Report(error.Describe());
        result = 1;
    } catch (const std::exception &error) {
        Report(QString::fromUtf8(error.what()));
        result = 1;
    }
    destroy(addin);
    return result;
}
