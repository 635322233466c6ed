#pragma once

class frmSelCursos;
class WizardRun;

// Brings the saved school years, activities and communities back into the
// first window when it cannot do so itself ("Cargar Datos" not yet
// available there): the same tables, the same order, the same flags.
void LoadSavedSelection(WizardRun &run, frmSelCursos &form);
