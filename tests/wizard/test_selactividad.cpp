#include "WizardFixture.h"

#include "wizard/frmActividadMes.h"
#include "wizard/frmSelActividad.h"
#include "wizard/frmSelCursos.h"

class ActivityStep : public WizardFixture
{
protected:
    frmSelActividad &OpenStep(const QStringList &years = {"2023-2024", "2024-2025"})
    {
        cursos = &SelectYears(years);
        cursos->cmdAceptar.Press();
        return Top<frmSelActividad>();
    }
    QStringList Chosen(const QString &year) const
    {
        QStringList names;
        for (const auto &a : cursos->colCursosEscolares.Item(year)->colActividades.Items())
            names << a->Nombre + "#" + QString::number(a->idActividad);
        return names;
    }
    frmSelCursos *cursos = nullptr;
};

TEST_F(ActivityStep, LoadListsTheYearsInCollectionOrderAndShowsTheFirst)
{
    frmSelActividad &form = OpenStep({"2024-2025", "2023-2024"});
    EXPECT_EQ(form.Caption(), "Selección de Actividades");
    EXPECT_EQ(form.cboCursoEscolar.Texts(), (QStringList{"2024-2025", "2023-2024"}));
    EXPECT_EQ(form.CursoMostrado(), 4);
    EXPECT_EQ(form.lstDisponibles.Texts(), (QStringList{"Comedor", "Ajedrez", "Robótica", "Natación"}));
    EXPECT_EQ(form.lstDisponibles.ItemData(1), 5);
    EXPECT_EQ(form.lstSeleccionados.ListCount(), 0);
    EXPECT_EQ(TakeStatements("Actividad"), QStringList{"SELECT IDActividad, Nombre FROM Actividad"});
    EXPECT_EQ(form.lstDisponibles.HorizontalExtentText(), "Robótica    "); // longest entry and four blanks
}

TEST_F(ActivityStep, AYearChangeStoresTheListsIntoTheYearShown)
{
    frmSelActividad &form = OpenStep();
    form.cmdAgregarTodos.Press();
    Pick(form.lstSeleccionados, "Transporte");
    form.cmdEliminarUno.Press();
    form.cboCursoEscolar.SetListIndex(1);
    EXPECT_EQ(Chosen("3"), (QStringList{"Comedor#1", "Inglés#3"}));
    cursos->colCursosEscolares.Item("3")->colActividades.Item("1")->MesesPago = "111111000111";

    form.cboCursoEscolar.SetListIndex(0); // chosen ones come back selected, in database order
    EXPECT_EQ(form.lstSeleccionados.Texts(), (QStringList{"Comedor", "Inglés"}));
    Pick(form.lstSeleccionados, "Inglés");
    form.cmdEliminarUno.Press();
    form.cboCursoEscolar.SetListIndex(1);
    EXPECT_EQ(Chosen("3"), QStringList{"Comedor#1"});
    EXPECT_EQ(cursos->colCursosEscolares.Item("3")->colActividades.Item("1")->MesesPago, "111111000111");
}

TEST_F(ActivityStep, NextNeedsAnActivityInSomeYear)
{
    frmSelActividad &form = OpenStep();
    form.cmdAceptar.Press();
    ExpectOnlyMessage("Debe seleccionar alguna actividad");
    EXPECT_EQ(ui.OpenWindows().last(), "frmSelActividad");

    form.cmdAgregarTodos.Press(); // a year left without activities is fine
    form.cmdAceptar.Press();
    EXPECT_TRUE(cursos->colCursosEscolares.Item("4")->colActividades.IsEmpty());
    EXPECT_EQ(ui.OpenWindows().last(), "frmActividadMes");
}

TEST_F(ActivityStep, GoingBackRightAfterMovingLosesTheMoves)
{
    OpenStep().cmdAgregarTodos.Press();
    Top<frmSelActividad>().cmdCancelar.Press();
    EXPECT_TRUE(cursos->colCursosEscolares.Item("3")->colActividades.IsEmpty());
    EXPECT_EQ(ui.OpenWindows(), QStringList{"frmSelCursos"});
}

TEST_F(ActivityStep, AMissingYearDatabaseIsReportedAndTheListsOnShowGoIntoIt)
{
    description.years[1].createDatabase = false;
    description.years[1].connectionString = "Provider=SQLite;Data Source=datos/no-existe.db;Password=secreto";
    frmSelActividad &form = OpenStep();
    Pick(form.lstDisponibles, "Transporte");
    form.cmdAgregarUno.Press();
    form.cboCursoEscolar.SetListIndex(1); // stores into 2023-2024, then fails to open 2024-2025
    ExpectOnlyMessage("No se ha encontrado la base de datos cuya conexión es: "
                      "Provider=SQLite;Data Source=datos/no-existe.db;Password=secreto"
                      ". Por favor verifique que la ruta y la base de datos es correcta.",
                      vbCritical);
    EXPECT_EQ(form.CursoMostrado(), 4);
    EXPECT_EQ(form.lstSeleccionados.Texts(), QStringList{"Transporte"});
    form.cmdAceptar.Press(); // the lists still on show are stored into the failed year
    EXPECT_EQ(Chosen("3"), QStringList{"Transporte#2"});
    EXPECT_EQ(Chosen("4"), QStringList{"Transporte#2"});
}

TEST_F(ActivityStep, AnActivityGoneFromTheDatabaseStaysChosenButIsNotListed)
{
    frmSelActividad &form = OpenStep();
    auto gone = std::make_shared<cActividad>();
    gone->idActividad = 99;
    gone->Nombre = "Teatro";
    cursos->colCursosEscolares.Item("3")->colActividades.Add(gone, "99");
    form.cboCursoEscolar.SetListIndex(1);
    form.cboCursoEscolar.SetListIndex(0);
    EXPECT_FALSE((form.lstDisponibles.Texts() + form.lstSeleccionados.Texts()).contains("Teatro"));
    form.cboCursoEscolar.SetListIndex(1);
    EXPECT_EQ(Chosen("3"), QStringList{"Teatro#99"});
}
