#pragma once

#include "session/ProgramSettings.h"
#include "session/cConfiguracion.h"

#include <QString>

// The library-wide state, alive while the library is loaded.
namespace modPrincipal {

// The one session context: created on first use and never replaced.
cConfiguracion &Configuracion();

// Set by "Salir" of the last wizard window; each waiting window closes
// itself when control comes back to it and finds the flag set.
extern bool blnSalir;

// The help file of the library (the host's own help).
extern QString HelpFile;

// This program's own settings (locale, reports folder choice, ...).
ProgramSettings &Settings();

// The host's entry and school connections of the session context. A wizard
// opened before the host handed its session over fails here, with a message
// rather than a crash.
Connection &ConexionEntrada();
Connection &ConexionCentro();

// The product name that titles every message box (string resource 100).
QString LoadResString(int id);

} // namespace modPrincipal
