#include "session/WizardRun.h"

#include "session/SessionCopy.h"
#include "session/cCentroApi.h"

namespace {

Connection &Required(const ConnectionPtr &connection, const char *property)
{
    if (!connection)
        throw SessionError(QStringLiteral("No hay conexión «") + QString::fromLatin1(property)
                           + QStringLiteral("»: el programa principal no ha entregado la sesión."));
    return *connection;
}

} // namespace

WizardRun::WizardRun(Ui &ui) : m_ui(ui)
{
    cCentroApi::Register(m_componentes, false);
}

void WizardRun::CopySession(const SesionHostPtr &session)
{
    if (session) {
        m_settings = session->Program();
        m_den.conM182().SetBaseFolder(m_settings.dataFolder);
        cCentroApi::Register(m_componentes, m_settings.desarrollo);
    }
    ::CopySession(session, m_configuracion, HelpFile);
    if (m_observer)
        SetStatementObserver(m_observer);
}

void WizardRun::ConfigureDeclarationDatabase()
{
    m_den.ConfigureDataSource(m_configuracion, AddinFolder());
}

Connection &WizardRun::ConexionEntrada()
{
    return Required(m_configuracion.conLocalAppEntrada(), "conexionAppEntrada");
}

Connection &WizardRun::ConexionCentro()
{
    return Required(m_configuracion.conLocalCentro(), "conexionlocalCENTRO");
}

ConnectionPtr WizardRun::NewConnection() const
{
    auto connection = std::make_shared<Connection>();
    connection->SetBaseFolder(m_settings.dataFolder);
    connection->SetObserver(m_observer);
    return connection;
}

void WizardRun::SetStatementObserver(Connection::Observer observer)
{
    m_observer = std::move(observer);
    m_den.conM182().SetObserver(m_observer);
    for (const ConnectionPtr &connection :
         {m_configuracion.conLocalAppEntrada(), m_configuracion.conLocalCentro(), m_configuracion.conLocalBorradoCentro()})
        if (connection)
            connection->SetObserver(m_observer);
}

QString WizardRun::AddinFolder() const
{
    return m_addinFolder.isEmpty() ? AddinBinaryFolder() : m_addinFolder;
}
