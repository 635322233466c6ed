#pragma once

class ObjectFactory;

// Makes the catalogue maintenance window creatable in a run's components,
// so that the deduction step can open it ("Configurar Deducciones").
void RegisterCatalogueWindows(ObjectFactory &factory);
