#pragma once

#include "session/ObjectFactory.h"

#include <memory>

class Form;
class WizardRun;
class frmSelCursos;
class frmActividadPonderacion;

// Makes the catalogue maintenance window that "Configurar Deducciones" of
// the deduction step opens. That window lives in the layer above the
// wizard, so the add-in registers a maker in each run's components under
// this identifier; the deduction step only asks for it by name and offers
// the button when a maker is registered.
class ConfigurationWindowMaker : public ComObject
{
public:
    static constexpr const char *ProgId = "QModelo182.frmConfiguracion";

    // The window for this run, editing the catalogue the deduction step
    // `paso` shows (it reads that step's state and refills its lists when
    // accepted).
    virtual std::shared_ptr<Form> Create(WizardRun &run, frmSelCursos &cursos, frmActividadPonderacion &paso) const = 0;
};
