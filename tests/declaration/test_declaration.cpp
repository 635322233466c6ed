#include "DeclarationFixture.h"

#include "DeclarationTables.h"
#include "FailingConnection.h"
#include "controls/FlexGrid.h"
#include "wizard/DonorGridLayout.h"
#include "wizard/frmActividadPonderacion.h"
#include "wizard/frmSelCursos.h"

using namespace DonorGridLayout;

namespace {

const QString kDonantes = QStringLiteral(
    "SELECT nombre, apellido1, apellido2, nif, nifrepresentante, codigoprovincia, clave, deduccion, importe, "
    "donativoenespecie, ComunidadAut, DeduccionCAut, TipoPersona FROM Donantes ORDER BY rowid");

int Count(const QList<QStringList> &rows)
{
    return int(rows.size());
}

} // namespace

class DeclarationStep : public DeclarationFixture
{
protected:
    // Every activity of the walk at 25 %.
    void SetDeduction(frmActividadAlumno &form, double percentage)
    {
        for (const auto &curso : form.Cursos().colCursosEscolares.Items())
            for (const auto &actividad : curso->colActividades.Items())
                actividad->Deduccion = percentage;
    }
    frmActividadPonderacion &Deductions()
    {
        auto *form = dynamic_cast<frmActividadPonderacion *>(ui.Stack().Forms().at(3));
        if (!form)
            throw std::runtime_error("the deduction step is not below the donor window");
        return *form;
    }
    int RowOf(const FlexGrid &grid, const QString &payer)
    {
        for (int r = 1; r < grid.Rows(); ++r)
            if (grid.TextMatrix(r, kPagador) == payer)
                return r;
        throw std::runtime_error(("no grid row for " + payer).toStdString());
    }
};

TEST_F(DeclarationStep, WritesTheDeclarantTheDonorAndItsLetter)
{
    frmActividadAlumno &form = WalkToDonors();
    SetDeduction(form, 25);
    form.cmdAceptar.Press();

    const auto declarants = Declaration(QStringLiteral(
        "SELECT ejercicio,nombre,nif,pcnombre,pcapellido1,pcapellido2,pctelefono,regimenfiscal,delegacion,domicilio "
        "FROM Declarantes"));
    ASSERT_EQ(Count(declarants), 1);
    EXPECT_EQ(declarants[0],
              (QStringList{"2025", "COLEGIO SAN PRUEBA", "A58818501", "ANA", "MARÍA", "LÓPEZ", "915550000", "1", "", ""}));
    // Ten school months of 95.00, Madrid (28), 25 % written as 02500.
    const auto donors = Declaration(kDonantes);
    ASSERT_EQ(Count(donors), 1);
    EXPECT_EQ(donors[0], (QStringList{"Juan", "García", "Pérez", "12345678Z", "", "28", "A", "02500", "950,00", "", "00",
                                      "00000", "F"}));
    const auto letters = Rows(CartaDonantesFile(), QStringLiteral("SELECT * FROM CartaDonantes"));
    ASSERT_EQ(Count(letters), 1);
    EXPECT_EQ(letters[0],
              (QStringList{"García", "Pérez", "Juan", "12345678Z", "950,00", "Madrid", "Calle Mayor 1", "28001", "Madrid"}));
    EXPECT_FALSE(form.fraAlumnos.Visible());
    // The generator's summary reaches the person.
    ASSERT_EQ(ui.Messages().size(), 1);
    EXPECT_EQ(ui.Messages()[0].icon, vbInformation);
    EXPECT_TRUE(ui.Messages()[0].text.contains("Registros de donantes: 1")) << ui.Messages()[0].text.toStdString();
}

TEST_F(DeclarationStep, TheTaxYearIsTheYearBeforeTheOneOfGeneration)
{
    frmActividadAlumno &form = WalkToDonors();
    today = QDate(2008, 1, 2);
    form.cmdAceptar.Press();
    EXPECT_EQ(Declaration("SELECT ejercicio FROM Declarantes"), (QList<QStringList>{{"2007"}}));
}

TEST_F(DeclarationStep, AGridAllMarkedNotDeclaredWritesOnlyTheDeclarant)
{
    AddPayer(301, "Ortiz", "Vega", "Pedro", "11111111H", "Madrid", 401, "Martín");
    frmActividadAlumno &form = WalkToDonors();
    for (int r = 1; r < form.msgMod182.Rows(); ++r)
        form.msgMod182.SetTextMatrix(r, kMostrar, kNoDeclarado);
    form.cmdAceptar.Press();
    EXPECT_EQ(Count(Declaration("SELECT * FROM Declarantes")), 1);
    EXPECT_EQ(Count(Declaration("SELECT * FROM Donantes")), 0);
    EXPECT_EQ(Count(Declaration("SELECT * FROM CartaDonantes")), 0);
    EXPECT_EQ(Count(Rows(CartaDonantesFile(), "SELECT * FROM CartaDonantes")), 0);
}

TEST_F(DeclarationStep, ADonorWithOnlyZeroAmountsGetsNoRows)
{
    AddPayer(301, "Ortiz", "Vega", "Pedro", "11111111H", "Madrid", 401, "Martín");
    frmActividadAlumno &form = WalkToDonors();
    form.msgMod182.SetTextMatrix(RowOf(form.msgMod182, "Ortiz Vega, Pedro"), kFirstAmount, "0,00");
    form.cmdAceptar.Press();
    const auto donors = Declaration("SELECT nif FROM Donantes");
    EXPECT_EQ(donors, (QList<QStringList>{{"12345678Z"}}));
    EXPECT_EQ(Declaration("SELECT NIF FROM CartaDonantes"), (QList<QStringList>{{"12345678Z"}}));
}

TEST_F(DeclarationStep, OnePayerOfTwoStudentsIsOneLetterWithTheSummedTotal)
{
    YearDescription &year = description.years[1];
    year.students.append({202, "García", "López", "Pablo", 1});
    year.enrolments.append({202, 1, 101, 60.0, Months({9, 10})});
    frmActividadAlumno &form = WalkToDonors();
    ASSERT_EQ(form.msgMod182.Rows(), 3);
    form.cmdAceptar.Press();
    EXPECT_EQ(Declaration("SELECT nif, importe FROM Donantes ORDER BY rowid"),
              (QList<QStringList>{{"12345678Z", "950,00"}, {"12345678Z", "120,00"}}));
    // 950 + 2 x 60
    EXPECT_EQ(Declaration("SELECT Apellido1, NIF, Importe FROM CartaDonantes"),
              (QList<QStringList>{{"García", "12345678Z", "1.070,00"}}));
}

TEST_F(DeclarationStep, RegionalDeductionOnlyWithTheCommunityBoxTicked)
{
    AddPayer(301, "Ortiz", "Vega", "Pedro", "11111111H", "Atlántida", 401, "Martín");
    frmActividadAlumno &form = WalkToDonors();
    const QString madrid =
        Declaration("SELECT IDComunidadAutonoma FROM ComunidadesAutonomas WHERE ComunidadAutonoma='Comunidad de Madrid'")
            .value(0)
            .value(0);
    ASSERT_FALSE(madrid.isEmpty());
    auto comunidad = form.Cursos().colComAut.Find(madrid);
    if (!comunidad) {
        comunidad = std::make_shared<cComAut>();
        comunidad->IDComAut = qint16(madrid.toInt());
        form.Cursos().colComAut.Add(comunidad, madrid);
    }
    comunidad->Valor = 15;

    const QString query = "SELECT nif, codigoprovincia, ComunidadAut, DeduccionCAut FROM Donantes ORDER BY nif";
    Deductions().chkComunidad.SetValue(0);
    form.cmdAceptar.Press();
    EXPECT_EQ(Declaration(query),
              (QList<QStringList>{{"11111111H", "00", "00", "00000"}, {"12345678Z", "28", "00", "00000"}}));
    Deductions().chkComunidad.SetValue(1);
    form.cmdAceptar.Press();
    // A province Provincias does not know keeps every code at zero.
    EXPECT_EQ(Declaration(query),
              (QList<QStringList>{{"11111111H", "00", "00", "00000"}, {"12345678Z", "28", "12", "01500"}}));
}

TEST_F(DeclarationStep, ACommunityTheDeductionStepDoesNotHoldHasNoRegionalDeduction)
{
    frmActividadAlumno &form = WalkToDonors();
    Deductions().chkComunidad.SetValue(1);
    form.Cursos().colComAut.Clear();
    form.cmdAceptar.Press();
    EXPECT_EQ(Declaration("SELECT codigoprovincia, ComunidadAut, DeduccionCAut FROM Donantes"),
              (QList<QStringList>{{"28", "12", "00000"}}));
}

TEST_F(DeclarationStep, LettersComeOutInSurnameOrder)
{
    AddPayer(301, "Zubiri", "Mora", "Íñigo", "11111111H", "Madrid", 401, "Abad");
    AddPayer(302, "Álvarez", "Nieto", "Rosa", "22222222J", "Madrid", 402, "Bueno");
    frmActividadAlumno &form = WalkToDonors();
    form.cmdAceptar.Press();
    // The grid's order (by student) in the declaration database...
    EXPECT_EQ(Declaration("SELECT Apellido1 FROM CartaDonantes ORDER BY rowid"),
              (QList<QStringList>{{"Zubiri"}, {"Álvarez"}, {"García"}}));
    // ...the surnames' order in the letters' database.
    EXPECT_EQ(Rows(CartaDonantesFile(), "SELECT Apellido1 FROM CartaDonantes ORDER BY rowid"),
              (QList<QStringList>{{"Álvarez"}, {"García"}, {"Zubiri"}}));
}

TEST_F(DeclarationStep, InvalidIdentifiersAreAllMarkedAndTheFirstStopsTheDeclaration)
{
    AddPayer(301, "Ortiz", "Vega", "Pedro", "12345678A", "Madrid", 401, "Martín");
    AddPayer(302, "Soto", "Gil", "Marta", "87654321B", "Madrid", 402, "Zamora");
    AddPayer(303, "Ruiz", "Paz", "Luis", "", "Madrid", 403, "Serra");
    frmActividadAlumno &form = WalkToDonors();
    {
        auto previous = CreateDeclarationFile(paths.modelo182File);
        InsertDeclarant(*previous, DeclarantValues{});
        DonorValues donor;
        donor.nombre = "Ana";
        donor.apellido1 = "Puig";
        donor.apellido2 = "Roca";
        donor.nif = "11111111H";
        donor.importe = "10,00";
        InsertDonor(*previous, donor);
        previous->Close();
    }
    const auto before = Snapshot();
    FlexGrid &grid = form.msgMod182;
    // A donor left out is not checked.
    grid.SetTextMatrix(RowOf(grid, "Ruiz Paz, Luis"), kMostrar, kNoDeclarado);
    form.cmdAceptar.Press();

    ExpectOnlyMessage("El CIF-NIF del miembro de familia Ortiz Vega, Pedro, del alumno Martín Ruiz, Eva no es válido");
    const int ortiz = RowOf(grid, "Ortiz Vega, Pedro");
    EXPECT_EQ(grid.CellForeColor(ortiz, kDni), kRed);
    EXPECT_EQ(grid.CellForeColor(RowOf(grid, "Soto Gil, Marta"), kDni), kRed);
    EXPECT_NE(grid.CellForeColor(RowOf(grid, "García Pérez, Juan"), kDni), kRed);
    EXPECT_NE(grid.CellForeColor(RowOf(grid, "Ruiz Paz, Luis"), kDni), kRed);
    EXPECT_EQ(grid.TopRow(), ortiz);
    EXPECT_TRUE(TakeStatements("DELETE").isEmpty());
    EXPECT_EQ(Snapshot(), before);
    EXPECT_FALSE(QFileInfo::exists(CartaDonantesFile()));

    // Once corrected, an identifier loses its mark; the next wrong one is named.
    grid.SetTextMatrix(ortiz, kDni, "12345678Z");
    ui.ClearLog();
    form.cmdAceptar.Press();
    ExpectOnlyMessage("El CIF-NIF del miembro de familia Soto Gil, Marta, del alumno Zamora Ruiz, Eva no es válido");
    EXPECT_NE(grid.CellForeColor(ortiz, kDni), kRed);
    EXPECT_EQ(grid.CellForeColor(RowOf(grid, "Soto Gil, Marta"), kDni), kRed);
}

TEST_F(DeclarationStep, AnUnreadableAmountIsNamedAndNothingChanges)
{
    frmActividadAlumno &form = WalkToDonors();
    form.cmdAceptar.Press();
    const auto before = Snapshot();
    ui.ClearLog();
    form.msgMod182.SetTextMatrix(1, kFirstAmount, "12a");
    form.cmdAceptar.Press();
    ASSERT_EQ(ui.Messages().size(), 1);
    EXPECT_TRUE(ui.Messages()[0].text.startsWith("El importe «12a» de la columna «2024-2025 <-> Comedor»"));
    EXPECT_EQ(Snapshot(), before);
}

TEST_F(DeclarationStep, AFailureAtAnyStatementLeavesThePreviousDeclarationWhole)
{
    AddPayer(301, "Ortiz", "Vega", "Pedro", "11111111H", "Madrid", 401, "Martín");
    frmActividadAlumno &form = WalkToDonors();
    form.cmdAceptar.Press();
    const auto before = Snapshot();
    ASSERT_EQ(Count(Declaration("SELECT * FROM Donantes")), 2);
    form.msgMod182.SetTextMatrix(1, kFirstAmount, "1,00");

    // 2 deletes, the declarant and its key, a lookup and an insert per
    // donor row, one letter per donor: 10 statements in the transaction.
    int tried = 0;
    for (int k = 1;; ++k) {
        FailingConnection failing(k);
        run().SetStatementObserver(failing.Observer());
        ui.ClearLog();
        form.cmdAceptar.Press();
        const QString failed = failing.Failed();
        const bool inTransaction = failed.startsWith("DELETE") || failed.startsWith("INSERT")
                                   || failed.startsWith("SELECT MAX") || failed.startsWith("SELECT CodigoProvincia");
        if (!inTransaction)
            break;
        ++tried;
        SCOPED_TRACE(failed.toStdString());
        EXPECT_EQ(Snapshot(), before) << "failure at statement " << k;
        EXPECT_FALSE(form.fraAlumnos.Visible());
        ASSERT_EQ(ui.Messages().size(), 1);
        EXPECT_EQ(ui.Messages()[0].icon, vbCritical);
        EXPECT_TRUE(ui.Messages()[0].text.contains("la declaración anterior se conserva sin cambios"));
        EXPECT_TRUE(ui.Messages()[0].text.contains(FailingConnection::kMessage));
    }
    EXPECT_EQ(tried, 10);
}

TEST_F(DeclarationStep, TextsAreCutPaddedAndQuotedAsTheTablesWant)
{
    AddPayer(301, "D'Souza Fernández-Llorente", "Peña", "Mª Ángeles (Geli)", "11111111H", "Madrid", 401, "Martín");
    frmActividadAlumno &form = WalkToDonors();
    form.declarante.nombre = "COLEGIO CONCERTADO NUESTRA SEÑORA DE L'ESPERANÇA DE MADRID";
    form.declarante.cif = "A-5881850";
    form.declarante.telefono = "91555";
    form.declarante.pcNombre = "MARÍA DEL CARMEN ISABEL";
    run().Settings().delegacion = QString(60, 'D');
    run().Settings().domicilio = "Calle de O'Donnell, 12 " + QString(40, 'x');
    form.cmdAceptar.Press();

    const QStringList inserts = TakeStatements("INSERT INTO Declarantes");
    ASSERT_EQ(inserts.size(), 1);
    EXPECT_EQ(inserts[0],
              "INSERT INTO Declarantes (ejercicio,nombre,nif,pcnombre,pcapellido1,pcapellido2,pctelefono,regimenfiscal,"
              "delegacion,domicilio) VALUES ('2025','COLEGIO CONCERTADO NUESTRA SEÑORA DE L''E','A5881850 ',"
              "'MARÍA DEL CARMEN ISA','MARÍA','LÓPEZ','91555    ','1','"
                  + QString(50, 'D') + "','Calle de O''Donnell, 12 " + QString(27, 'x') + "')");
    const auto declarant = Declaration("SELECT nombre, nif, pctelefono FROM Declarantes");
    EXPECT_EQ(declarant[0], (QStringList{"COLEGIO CONCERTADO NUESTRA SEÑORA DE L'E", "A5881850 ", "91555    "}));

    // A donor's names cut to 20 and cleaned; the letter keeps them whole.
    const auto donor = Declaration("SELECT nombre, apellido1, apellido2 FROM Donantes WHERE nif='11111111H'");
    EXPECT_EQ(donor, (QList<QStringList>{{"M. Ángeles Geli", "D'Souza Fernández-Ll", "Peña"}}));
    const auto letter = Declaration("SELECT Nombre, Apellido1, Direccion FROM CartaDonantes WHERE NIF='11111111H'");
    EXPECT_EQ(letter, (QList<QStringList>{
                          {"Mª Ángeles (Geli)", "D'Souza Fernández-Llorente", "Calle D'Souza Fernández-Llorente 3"}}));
}
