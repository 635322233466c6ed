#pragma once

#include <QString>

// `modelo182 declarar [--session FILE]`: the wizard's windows run without a
// screen on the saved work of the installation ("Cargar Datos"), forward
// through the steps to the donor grid, then "Generar Modelo 182" and
// "Certificados". Prints progress, any refusal exactly as the window shows
// it, and a closing summary. Returns the process exit code: 0 when the
// declaration, the AEAT file and the certificates were written.
int RunDeclaration(const QString &sessionFile);
