#include "catalogue/CatalogueComponents.h"

#include "catalogue/frmConfiguracion.h"
#include "wizard/ConfigurationWindowMaker.h"

namespace {

class ConfiguracionMaker : public ConfigurationWindowMaker
{
public:
    std::shared_ptr<Form> Create(WizardRun &run, frmSelCursos &cursos, frmActividadPonderacion &paso) const override
    {
        return std::make_shared<frmConfiguracion>(run, cursos, paso);
    }
};

} // namespace

void RegisterCatalogueWindows(ObjectFactory &factory)
{
    factory.Register(QString::fromLatin1(ConfigurationWindowMaker::ProgId),
                     [] { return std::make_shared<ConfiguracionMaker>(); });
}
