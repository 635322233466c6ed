#pragma once

#include <QList>
#include <QString>

class FlexGrid;
class frmActividadAlumno;
struct GeneracionModelo182;

// The declaration from the donor grid, as "Generar Modelo 182" makes it:
// every declared donor's tax identifier checked first; then, in one
// transaction, the declarant, donor and certificate rows; then the
// mail-merge database CartaDonantes.mdb filled in surname order and the
// declaration generator called. A refusal or a failure is shown to the
// person and leaves the previous declaration whole.
class DeclarationGenerator
{
public:
    explicit DeclarationGenerator(frmActividadAlumno &form);

    // Returns true when the declaration tables were written (the generator's
    // own result is then shown in an information message).
    bool Generate();

    // A declared row whose tax identifier is not valid.
    struct InvalidRow
    {
        int row = 0;
        QString alumno;
        QString miembro;
        QString nif;
    };
    // Every such row of the grid, in grid order.
    static QList<InvalidRow> InvalidIdentifiers(const FlexGrid &grid);
    // The refusal for the first of them.
    static QString RefusalFor(const InvalidRow &row);

private:
    bool Validate();
    bool WriteTables();
    bool FillMailMergeDatabase();
    void CallGenerator();
    void Fail(const QString &what, const QString &detail);

    frmActividadAlumno &m_form;
};
