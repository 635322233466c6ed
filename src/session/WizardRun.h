#pragma once

#include "controls/Ui.h"
#include "data/Connection.h"
#include "session/ObjectFactory.h"
#include "session/ProgramSettings.h"
#include "session/SesionHost.h"
#include "session/cConfiguracion.h"
#include "session/denM182.h"

#include <QString>

// Everything one run of the wizard shares: the session context copied from
// the host, this program's settings, the declaration database's data
// environment, the close-all flag, the way to the person (Ui) and the
// components creatable by programmatic identifier. The add-in's entry
// class creates one when the host hands over its session and passes it to
// every window; two runs in one process never meet.
class WizardRun
{
public:
    explicit WizardRun(Ui &ui);
    WizardRun(const WizardRun &) = delete;
    WizardRun &operator=(const WizardRun &) = delete;

    // Copies the host's session (what ObtenerDatos does): a missing or
    // unconvertible property throws SessionError, and what was copied
    // before it keeps its new value.
    void CopySession(const SesionHostPtr &session);

    Ui &ui() const { return m_ui; }
    cConfiguracion &Configuracion() { return m_configuracion; }
    const cConfiguracion &Configuracion() const { return m_configuracion; }
    ProgramSettings &Settings() { return m_settings; }
    const QLocale &Locale() const { return m_settings.locale; }
    ObjectFactory &Componentes() { return m_componentes; }

    // Set by "Salir" of the last window; each waiting window closes itself
    // when control comes back to it and finds the flag set.
    bool blnSalir = false;
    // The help file of the library (the host's own help).
    QString HelpFile;

    // The declaration database's data environment and its connection.
    denM182 &Den() { return m_den; }
    Connection &conM182() { return m_den.conM182(); }
    // conM182, opened if it is closed.
    Connection &OpenM182() { return m_den.Open(); }
    // Points conM182 at this session's Modelo182.mdb.
    void ConfigureDeclarationDatabase();

    // The host's entry and school connections. A window opened before the
    // host handed its session over fails here with a message, not a crash.
    Connection &ConexionEntrada();
    Connection &ConexionCentro();

    // A new, closed connection with this run's data folder and statement
    // observer (a school year's own database).
    ConnectionPtr NewConnection() const;

    // Sees every statement of conM182, of the session's connections and of
    // every connection the run creates (tests assert the exact texts).
    void SetStatementObserver(Connection::Observer observer);

    // The folder of the add-in's own library (the tests point it elsewhere).
    QString AddinFolder() const;
    void SetAddinFolder(const QString &folder) { m_addinFolder = folder; }

private:
    Ui &m_ui;
    cConfiguracion m_configuracion;
    ProgramSettings m_settings;
    denM182 m_den;
    ObjectFactory m_componentes;
    Connection::Observer m_observer;
    QString m_addinFolder;
};
