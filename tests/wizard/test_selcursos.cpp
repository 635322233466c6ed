#include "WizardFixture.h"

#include "wizard/frmSelActividad.h"
#include "wizard/frmSelCursos.h"

static QList<qlonglong> ItemDatas(const ListControl &list)
{
    QList<qlonglong> data;
    for (int i = 0; i < list.ListCount(); ++i)
        data << list.ItemData(i);
    return data;
}

class SchoolYearStep : public WizardFixture
{
};

TEST_F(SchoolYearStep, LoadListsTheSessionSchoolAndPointsAtItsDeclarationDatabase)
{
    Install();
    run().blnSalir = true;
    frmSelCursos &form = OpenWizard();
    EXPECT_EQ(form.Caption(), "Selección de cursos escolares para el modelo 182");
    EXPECT_EQ(form.cboCentro.Texts(), QStringList{"Colegio San Prueba"});
    EXPECT_EQ(form.cboCentro.ItemData(0), 7);
    EXPECT_EQ(form.cboCentro.ListIndex(), -1); // nothing chosen, so no year listed
    EXPECT_EQ(form.lstDisponibles.ListCount() + form.lstSeleccionados.ListCount(), 0);
    EXPECT_EQ(TakeStatements(), QStringList{"SELECT IDCentro, Nombre FROM Centro WHERE IDCentro=7"});
    EXPECT_EQ(form.IconPath(), paths.iconFile);
    EXPECT_TRUE(form.cboCentro.Mandatory() && form.lstSeleccionados.Mandatory());
    EXPECT_FALSE(run().blnSalir);
    EXPECT_EQ(run().conM182().ConnectionString(),
              "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + paths.rutaBD
                  + "/Modelo182.mdb;Persist Security Info=False;Jet OLEDB:Database Password=zq417tev");

    // Opened again, it takes the session's database folder afresh.
    form.cmdCancelar.Press();
    run().Configuracion().set_RutaBD(dir.filePath("otra"));
    OpenWizard();
    EXPECT_EQ(run().conM182().Property("Data Source"), dir.filePath("otra") + "/Modelo182.mdb");
}

TEST_F(SchoolYearStep, OnADatabaseServerTheDeclarationDatabaseIsTheOneBelowTheAddin)
{
    description.session.sqlServer = true;
    Install();
    run().SetAddinFolder(dir.filePath("addin"));
    OpenWizard();
    EXPECT_EQ(run().conM182().Property("Data Source"), dir.filePath("addin") + "/Informes/Modelo182.mdb");
}

TEST_F(SchoolYearStep, ChoosingTheSchoolListsItsYearsInDatabaseOrder)
{
    frmSelCursos &form = OpenWizard();
    TakeStatements();
    form.cboCentro.SetListIndex(0);
    EXPECT_EQ(form.lstDisponibles.Texts(), (QStringList{"2023-2024", "2024-2025"}));
    EXPECT_EQ(ItemDatas(form.lstDisponibles), (QList<qlonglong>{3, 4}));
    EXPECT_EQ(TakeStatements(), QStringList{"SELECT IDCursoEscolar, Nombre FROM CursoEscolar WHERE codcentro=7"});
}

TEST_F(SchoolYearStep, ButtonsAndDoubleClicksMoveYearsWithTheirItemData)
{
    frmSelCursos &form = SelectYears({});
    form.cmdAgregarUno.Press(); // nothing highlighted: nothing moves
    form.lstDisponibles.SetListIndex(0);
    form.lstDisponibles.DoubleClick(-1); // an empty area of the list
    EXPECT_EQ(form.lstSeleccionados.ListCount(), 0);

    form.lstDisponibles.DoubleClick(1);
    EXPECT_EQ(form.lstSeleccionados.Texts(), QStringList{"2024-2025"});
    EXPECT_EQ(ItemDatas(form.lstSeleccionados), QList<qlonglong>{4});
    form.cmdAgregarTodos.Press();
    EXPECT_EQ(form.lstSeleccionados.Texts(), (QStringList{"2024-2025", "2023-2024"}));
    EXPECT_EQ(form.lstDisponibles.ListCount(), 0);
    form.cmdEliminarTodos.Press();
    EXPECT_EQ(ItemDatas(form.lstDisponibles), (QList<qlonglong>{4, 3}));
    Pick(form.lstDisponibles, "2023-2024");
    form.cmdAgregarUno.Press();
    form.lstSeleccionados.DoubleClick(0);
    EXPECT_EQ(form.lstDisponibles.Texts(), (QStringList{"2024-2025", "2023-2024"}));
}

TEST_F(SchoolYearStep, NextWithoutYearsIsRefused)
{
    frmSelCursos &form = SelectYears({});
    form.cmdAceptar.Press();
    ExpectOnlyMessage("Debe seleccionar algún curso escolar");
    EXPECT_EQ(ui.OpenWindows(), QStringList{"frmSelCursos"});
}

TEST_F(SchoolYearStep, NextBuildsTheChosenYearsWithTheirDatabases)
{
    description.years[0].connectionString = QString(); // CursoEscolar.BD is NULL
    frmSelCursos &form = SelectYears({"2024-2025", "2023-2024"});
    TakeStatements();
    form.cmdAceptar.Press();
    EXPECT_EQ(TakeStatements("CursoEscolar"), (QStringList{"SELECT BD FROM CursoEscolar WHERE idcursoescolar=4",
                                                           "SELECT BD FROM CursoEscolar WHERE idcursoescolar=3"}));
    ASSERT_EQ(form.colCursosEscolares.Keys(), (QStringList{"4", "3"}));
    auto curso = form.colCursosEscolares.Item("4");
    EXPECT_EQ(curso->idCursoEscolar, 4);
    EXPECT_EQ(curso->Nombre, "2024-2025");
    EXPECT_EQ(curso->conBD, paths.Year(4)->connectionString);
    EXPECT_TRUE(curso->colActividades.IsEmpty());
    EXPECT_EQ(form.colCursosEscolares.Item("3")->conBD, ""); // still added
    EXPECT_EQ(ui.OpenWindows(), (QStringList{"frmSelCursos", "frmSelActividad"}));
}

TEST_F(SchoolYearStep, AYearMovedBackIsDroppedWithItsActivitiesWhileKeptYearsKeepTheirs)
{
    frmSelCursos &form = SelectYears({"2023-2024", "2024-2025"});
    form.cmdAceptar.Press();
    form.colCursosEscolares.Item("3")->colActividades.Add(std::make_shared<cActividad>(), "1");
    form.colCursosEscolares.Item("4")->colActividades.Add(std::make_shared<cActividad>(), "5");
    Top<frmSelActividad>().cmdCancelar.Press();
    Pick(form.lstSeleccionados, "2023-2024");
    form.cmdEliminarUno.Press();
    form.cmdAceptar.Press();
    EXPECT_EQ(form.colCursosEscolares.Keys(), QStringList{"4"});
    EXPECT_EQ(form.colCursosEscolares.Item("4")->colActividades.Keys(), QStringList{"5"});

    Top<frmSelActividad>().cmdCancelar.Press(); // added again later, the year starts empty
    Pick(form.lstDisponibles, "2023-2024");
    form.cmdAgregarUno.Press();
    form.cmdAceptar.Press();
    EXPECT_TRUE(form.colCursosEscolares.Item("3")->colActividades.IsEmpty());
}

TEST_F(SchoolYearStep, ChoosingTheSchoolAgainResetsTheListsButNotTheChoices)
{
    frmSelCursos &form = SelectYears({"2023-2024", "2024-2025"});
    form.cmdAceptar.Press();
    form.colCursosEscolares.Item("4")->colActividades.Add(std::make_shared<cActividad>(), "5");
    Top<frmSelActividad>().cmdCancelar.Press();
    form.cboCentro.UserClick(0);
    EXPECT_EQ(form.lstDisponibles.ListCount(), 2);
    EXPECT_EQ(form.lstSeleccionados.ListCount(), 0);
    EXPECT_EQ(form.colCursosEscolares.Count(), 2);
    Pick(form.lstDisponibles, "2024-2025");
    form.cmdAgregarUno.Press();
    form.cmdAceptar.Press(); // drops the year left available, keeps the other whole
    EXPECT_EQ(form.colCursosEscolares.Keys(), QStringList{"4"});
    EXPECT_EQ(form.colCursosEscolares.Item("4")->colActividades.Keys(), QStringList{"5"});
}

TEST_F(SchoolYearStep, SalirEndsTheWizard)
{
    OpenWizard().cmdCancelar.Press();
    EXPECT_TRUE(ui.OpenWindows().isEmpty());
    EXPECT_EQ(ui.Closed(), QStringList{"frmSelCursos"});
}
