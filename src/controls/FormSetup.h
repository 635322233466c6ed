#pragma once

#include "data/Connection.h"

#include <QString>

class Form;
class Ui;

// What every wizard window does when it loads: its icon from the session's
// RutaIcono, and the host API object marking its mandatory controls.
void AplicarConfiguracionFormulario(Form &form);

// Opens a school year's own database with its connection string. When it
// cannot be opened, beeps, shows the critical message naming the whole
// string and returns null.
ConnectionPtr AbrirBDCurso(const QString &conBD, Ui &ui);

// The text of that message.
QString MensajeBDNoEncontrada(const QString &conBD);
