#pragma once

#include "data/Recordset.h"

#include <QHash>
#include <QString>
#include <array>

class Connection;
class cActividad;
class cCursoEscolar;
class frmActividadAlumno;

// Builds the donor grid of the last step from the chosen school years and
// activities: one row per student and paying family member, one amount
// column per year and activity, the declarant of the latest year, and, with
// saved work loaded, the saved payers, marks and amounts. Fills the window's
// grid, running total, donor records and saved payments kept aside.
class DonorGridBuilder
{
public:
    explicit DonorGridBuilder(frmActividadAlumno &form);

    void Build();

private:
    void StartGrid();
    void AddYear(const cCursoEscolar &curso, Connection &bd);
    void AddActivity(const cCursoEscolar &curso, const cActividad &actividad, Connection &bd);
    // The row of `fields` (found by its key, or appended); its amount placed.
    void AddEnrolment(const cCursoEscolar &curso, const cActividad &actividad, int col, const std::array<bool, 13> &meses,
                      const struct DonorColumns &columns, const Recordset &fields);
    int AppendRow(const QString &key, const DonorColumns &columns, const Recordset &fields);
    void LoadSavedPayer(int row, qlonglong idAlumno, qlonglong idMiembro);
    void PlaceSavedAmounts(const cCursoEscolar &curso, const cActividad &actividad, int col);
    void PlaceKeptPayments();
    void Finish();
    void SetMark(int row, bool declarado);
    void Progress(class ProgressBar &bar, class Label &label, int value);

    frmActividadAlumno &m_form;
    bool m_cargarDatos;
    // Grid rows by key and by (student, member): the first row wins.
    QHash<QString, int> m_rowByKey;
    QHash<QPair<qlonglong, qlonglong>, int> m_rowByIds;
};
