#pragma once

#include <QString>

// Plays the host: reads the session settings file, opens the host's
// databases, loads the add-in library and calls ObtenerDatos then
// ActivarFormulario. Returns the process exit code; reports problems in
// Spanish on standard error (and in a message box once a window can show).
int RunWizard(const QString &sessionFile);

// The settings file of the demo installation the program uses by default.
QString DefaultDemoFolder();

// Whether windows can be shown here (a display, or a platform chosen).
bool CanShowWindows();
