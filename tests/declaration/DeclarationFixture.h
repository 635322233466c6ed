#pragma once

#include "WizardFixture.h"

#include "data/Connection.h"
#include "wizard/frmActividadAlumno.h"

#include <QDate>
#include <QList>
#include <QVariantList>

// The donor window of a small school reached through the five steps, with
// today's date and the Office version fixed, and helpers to read the
// declaration tables back.
class DeclarationFixture : public WizardFixture
{
protected:
    // Installs `description` and walks to the last step choosing the given
    // activities of "2024-2025" with every month.
    frmActividadAlumno &WalkToDonors(const QStringList &activities = {"Comedor"});

    // Rows of `sql` on a fresh connection to `file` (every column as text).
    static QList<QStringList> Rows(const QString &file, const QString &sql);
    QList<QStringList> Declaration(const QString &sql) { return Rows(paths.modelo182File, sql); }

    // The three declaration tables, whole, for before/after comparisons.
    QList<QStringList> Snapshot();

    QString CartaDonantesFile() const { return paths.informes + QStringLiteral("/CartaDonantes.mdb"); }

    // A member of year 2024-2025 paying Comedor for a new student.
    void AddPayer(int member, const QString &surname1, const QString &surname2, const QString &name, const QString &dni,
                  const QString &province, int student, const QString &studentSurname);

    QDate today = QDate(2026, 3, 15);

    DeclarationFixture()
    {
        // A school whose CIF the tax agency accepts.
        description.school.cif = QStringLiteral("A58818501");
    }
};
