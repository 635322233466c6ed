#pragma once

#include "session/SesionHost.h"
#include "session/cConfiguracion.h"

// Copies the host's session into the session context, property by property
// in the host's order. A missing or unconvertible property (a 16-bit id
// above 32767, a connection property holding no connection) throws
// SessionError; what was stored before the failure keeps its new value.
// Also gives the help file, from "rutaaplicacion".
void CopySession(const SesionHostPtr &session, cConfiguracion &configuracion, QString &helpFile);
