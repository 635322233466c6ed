#pragma once

#include "data/Connection.h"

#include <QString>

class Form;
class WizardRun;

// What every wizard window does when it loads: its icon from the session's
// RutaIcono, and the host API object marking its mandatory controls.
void PrepareWizardWindow(Form &form, WizardRun &run);

// Opens a school year's own database with its connection string. When it
// cannot be opened, beeps, shows the critical message naming the whole
// string and returns null.
ConnectionPtr OpenYearDatabase(const QString &conBD, WizardRun &run);

// The text of that message.
QString YearDatabaseMissingMessage(const QString &conBD);
