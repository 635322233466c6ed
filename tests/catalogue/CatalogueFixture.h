#pragma once

#include "WizardFixture.h"

#include "catalogue/frmConfiguracion.h"

#include <QStringList>

class frmActividadPonderacion;

// The wizard on a known catalogue, brought to the deduction step with
// 2023-2024's three activities, and the catalogue window opened from there
// as "Configurar Deducciones" does. Catalogue rows are read back through a
// connection of their own.
//
// Communities: 1 Andalucía, 2 Aragón, 3 Ceuta. Percentages: 1 = 80, 2 = 35,
// 3 = 13.5, 4 = 10, 5 = 15. Types: 1 Donativo, 2 Cuota de socio,
// 3 D'Aportación. Type links 1-1, 1-2, 2-3, 3-1; community links 1-4, 1-5, 2-4.
class CatalogueFixture : public WizardFixture
{
protected:
    void InstallCatalogue();
    frmActividadPonderacion &OpenStep();
    frmConfiguracion &OpenConfiguration();

    // Rows of a catalogue query, each row's fields joined by "|".
    QStringList Rows(const QString &sql) const;
    // The two link tables as "owner-percentage", sorted.
    QStringList CommunityLinkRows() const;
    QStringList TypeLinkRows() const;
    // The INSERT and DELETE statements run since the last TakeStatements.
    QStringList TakeWrites();

    frmSelCursos *cursos = nullptr;
    frmActividadPonderacion *step = nullptr;
};

// The stored link rows before any change.
inline const QStringList kStoredCommunityLinks{"1-4", "1-5", "2-4"};
inline const QStringList kStoredTypeLinks{"1-1", "1-2", "2-3", "3-1"};
