#include "WizardFixture.h"

#include "controls/ControlBase.h"
#include "session/denM182.h"
#include "session/modPrincipal.h"
#include "wizard/frmSelActividad.h"
#include "wizard/frmSelCursos.h"

#include <QDir>

namespace {

QList<qlonglong> ItemDatas(const ListControl &list)
{
    QList<qlonglong> data;
    for (int i = 0; i < list.ListCount(); ++i)
        data << list.ItemData(i);
    return data;
}

} // namespace

class SchoolYearStep : public WizardFixture
{
};

TEST_F(SchoolYearStep, LoadListsOnlyTheSessionSchoolWithNothingChosen)
{
    frmSelCursos &form = OpenWizard();
    EXPECT_EQ(form.Caption(), QStringLiteral("Selección de cursos escolares para el modelo 182"));
    EXPECT_EQ(form.cboCentro.Texts(), QStringList{QStringLiteral("Colegio San Prueba")});
    EXPECT_EQ(form.cboCentro.ItemData(0), 7);
    EXPECT_EQ(form.cboCentro.ListIndex(), -1);
    EXPECT_EQ(form.lstDisponibles.ListCount(), 0);
    EXPECT_EQ(form.lstSeleccionados.ListCount(), 0);
    EXPECT_EQ(TakeStatements(), QStringList{QStringLiteral("SELECT IDCentro, Nombre FROM Centro WHERE IDCentro=7")});
    EXPECT_EQ(form.IconPath(), paths.iconFile);
    EXPECT_TRUE(form.cboCentro.Mandatory());
    EXPECT_TRUE(form.lstSeleccionados.Mandatory());
    EXPECT_FALSE(form.lstDisponibles.Mandatory());
}

TEST_F(SchoolYearStep, LoadPointsTheDeclarationDatabaseAtTheHostDatabaseFolder)
{
    modPrincipal::blnSalir = true;
    OpenWizard();
    EXPECT_EQ(denM182::conM182().Property(QStringLiteral("Data Source")),
              paths.rutaBD + QDir::separator() + QStringLiteral("Modelo182.mdb"));
    EXPECT_EQ(denM182::conM182().ConnectionString(),
              QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=") + paths.rutaBD
                  + QStringLiteral("/Modelo182.mdb;Persist Security Info=False;Jet OLEDB:Database Password=zq417tev"));
    EXPECT_FALSE(modPrincipal::blnSalir);
}

TEST_F(SchoolYearStep, OnADatabaseServerTheDeclarationDatabaseIsTheOneBelowTheAddin)
{
    description.session.sqlServer = true;
    denM182::SetAddinFolder(dir.filePath(QStringLiteral("addin")));
    OpenWizard();
    EXPECT_EQ(denM182::conM182().Property(QStringLiteral("Data Source")),
              dir.filePath(QStringLiteral("addin")) + QStringLiteral("/Informes/Modelo182.mdb"));
    denM182::SetAddinFolder(QString());
}

TEST_F(SchoolYearStep, ReopeningTheWizardTakesAChangedDatabaseFolder)
{
    frmSelCursos &first = OpenWizard();
    first.cmdCancelar.Press();
    modPrincipal::Configuracion().set_RutaBD(dir.filePath(QStringLiteral("otra")));
    OpenWizard();
    EXPECT_EQ(denM182::conM182().Property(QStringLiteral("Data Source")),
              dir.filePath(QStringLiteral("otra")) + QStringLiteral("/Modelo182.mdb"));
}

TEST_F(SchoolYearStep, ChoosingTheSchoolListsItsYearsInDatabaseOrder)
{
    frmSelCursos &form = OpenWizard();
    TakeStatements();
    form.cboCentro.SetListIndex(0);
    EXPECT_EQ(form.lstDisponibles.Texts(), (QStringList{QStringLiteral("2023-2024"), QStringLiteral("2024-2025")}));
    EXPECT_EQ(ItemDatas(form.lstDisponibles), (QList<qlonglong>{3, 4}));
    EXPECT_EQ(TakeStatements(), QStringList{QStringLiteral("SELECT IDCursoEscolar, Nombre FROM CursoEscolar WHERE codcentro=7")});
}

TEST_F(SchoolYearStep, MovingYearsKeepsTextAndItemData)
{
    frmSelCursos &form = SelectYears({});
    form.cmdAgregarUno.Press(); // nothing highlighted: nothing moves
    EXPECT_EQ(form.lstSeleccionados.ListCount(), 0);

    Pick(form.lstDisponibles, QStringLiteral("2024-2025"));
    form.cmdAgregarUno.Press();
    EXPECT_EQ(form.lstSeleccionados.Texts(), QStringList{QStringLiteral("2024-2025")});
    EXPECT_EQ(ItemDatas(form.lstSeleccionados), QList<qlonglong>{4});
    EXPECT_EQ(form.lstDisponibles.Texts(), QStringList{QStringLiteral("2023-2024")});

    form.cmdAgregarTodos.Press();
    EXPECT_EQ(form.lstSeleccionados.Texts(), (QStringList{QStringLiteral("2024-2025"), QStringLiteral("2023-2024")}));
    EXPECT_EQ(form.lstDisponibles.ListCount(), 0);

    form.cmdEliminarTodos.Press();
    EXPECT_EQ(form.lstDisponibles.Texts(), (QStringList{QStringLiteral("2024-2025"), QStringLiteral("2023-2024")}));
    EXPECT_EQ(ItemDatas(form.lstDisponibles), (QList<qlonglong>{4, 3}));

    Pick(form.lstDisponibles, QStringLiteral("2023-2024"));
    form.cmdAgregarUno.Press();
    Pick(form.lstSeleccionados, QStringLiteral("2023-2024"));
    form.cmdEliminarUno.Press();
    EXPECT_EQ(form.lstSeleccionados.ListCount(), 0);
    EXPECT_EQ(form.lstDisponibles.Texts(), (QStringList{QStringLiteral("2024-2025"), QStringLiteral("2023-2024")}));
}

TEST_F(SchoolYearStep, DoubleClicksMoveTheEntryUnderThePointerButNotOnEmptyArea)
{
    frmSelCursos &form = SelectYears({});
    form.lstDisponibles.SetListIndex(0);
    form.lstDisponibles.DoubleClick(-1); // empty area below the entries
    EXPECT_EQ(form.lstSeleccionados.ListCount(), 0);

    form.lstDisponibles.DoubleClick(1);
    EXPECT_EQ(form.lstSeleccionados.Texts(), QStringList{QStringLiteral("2024-2025")});
    form.lstSeleccionados.DoubleClick(0);
    EXPECT_EQ(form.lstSeleccionados.ListCount(), 0);
    EXPECT_EQ(form.lstDisponibles.ListCount(), 2);
}

TEST_F(SchoolYearStep, NextWithoutYearsBeepsAndWarns)
{
    frmSelCursos &form = SelectYears({});
    form.cmdAceptar.Press();
    ASSERT_EQ(ui.Messages().size(), 1);
    EXPECT_EQ(ui.Messages()[0].text, QStringLiteral("Debe seleccionar algún curso escolar"));
    EXPECT_EQ(ui.Messages()[0].icon, vbExclamation);
    EXPECT_TRUE(ui.Messages()[0].beeped);
    EXPECT_EQ(ui.OpenWindows(), QStringList{QStringLiteral("frmSelCursos")});
    EXPECT_TRUE(form.colCursosEscolares.IsEmpty());
}

TEST_F(SchoolYearStep, NextBuildsTheChosenYearsWithTheirDatabases)
{
    frmSelCursos &form = SelectYears({QStringLiteral("2024-2025"), QStringLiteral("2023-2024")});
    TakeStatements();
    form.cmdAceptar.Press();
    EXPECT_EQ(TakeStatements(QStringLiteral("CursoEscolar")),
              (QStringList{QStringLiteral("SELECT BD FROM CursoEscolar WHERE idcursoescolar=4"),
                           QStringLiteral("SELECT BD FROM CursoEscolar WHERE idcursoescolar=3")}));
    ASSERT_EQ(form.colCursosEscolares.Keys(), (QStringList{QStringLiteral("4"), QStringLiteral("3")}));
    auto curso = form.colCursosEscolares.Item(QStringLiteral("4"));
    EXPECT_EQ(curso->idCursoEscolar, 4);
    EXPECT_EQ(curso->Nombre, QStringLiteral("2024-2025"));
    EXPECT_EQ(curso->conBD, paths.Year(4)->connectionString);
    EXPECT_TRUE(curso->colActividades.IsEmpty());
    EXPECT_EQ(ui.OpenWindows(), (QStringList{QStringLiteral("frmSelCursos"), QStringLiteral("frmSelActividad")}));
}

TEST_F(SchoolYearStep, AYearWithoutDatabaseStringIsStillAddedWithAnEmptyOne)
{
    description.years[0].connectionString = QString();
    frmSelCursos &form = SelectYears({QStringLiteral("2023-2024")});
    form.cmdAceptar.Press();
    ASSERT_TRUE(form.colCursosEscolares.Contains(QStringLiteral("3")));
    EXPECT_EQ(form.colCursosEscolares.Item(QStringLiteral("3"))->conBD, QString());
}

TEST_F(SchoolYearStep, AYearMovedBackIsDroppedWithItsActivitiesWhileKeptYearsKeepTheirs)
{
    frmSelCursos &form = SelectYears({QStringLiteral("2023-2024"), QStringLiteral("2024-2025")});
    form.cmdAceptar.Press();
    form.colCursosEscolares.Item(QStringLiteral("3"))->colActividades.Add(std::make_shared<cActividad>(), QStringLiteral("1"));
    form.colCursosEscolares.Item(QStringLiteral("4"))->colActividades.Add(std::make_shared<cActividad>(), QStringLiteral("5"));
    Top<frmSelActividad>().cmdCancelar.Press();

    Pick(form.lstSeleccionados, QStringLiteral("2023-2024"));
    form.cmdEliminarUno.Press();
    form.cmdAceptar.Press();
    EXPECT_EQ(form.colCursosEscolares.Keys(), QStringList{QStringLiteral("4")});
    EXPECT_EQ(form.colCursosEscolares.Item(QStringLiteral("4"))->colActividades.Keys(), QStringList{QStringLiteral("5")});
    Top<frmSelActividad>().cmdCancelar.Press();

    // Added again later, the year starts empty.
    Pick(form.lstDisponibles, QStringLiteral("2023-2024"));
    form.cmdAgregarUno.Press();
    form.cmdAceptar.Press();
    EXPECT_TRUE(form.colCursosEscolares.Item(QStringLiteral("3"))->colActividades.IsEmpty());
}

TEST_F(SchoolYearStep, ChoosingTheSchoolAgainResetsTheListsButNotTheChoices)
{
    frmSelCursos &form = SelectYears({QStringLiteral("2023-2024"), QStringLiteral("2024-2025")});
    form.cmdAceptar.Press();
    form.colCursosEscolares.Item(QStringLiteral("4"))->colActividades.Add(std::make_shared<cActividad>(), QStringLiteral("5"));
    Top<frmSelActividad>().cmdCancelar.Press();

    form.cboCentro.UserClick(0);
    EXPECT_EQ(form.lstDisponibles.ListCount(), 2);
    EXPECT_EQ(form.lstSeleccionados.ListCount(), 0);
    EXPECT_EQ(form.colCursosEscolares.Count(), 2);

    Pick(form.lstDisponibles, QStringLiteral("2024-2025"));
    form.cmdAgregarUno.Press();
    form.cmdAceptar.Press();
    EXPECT_EQ(form.colCursosEscolares.Keys(), QStringList{QStringLiteral("4")});
    EXPECT_EQ(form.colCursosEscolares.Item(QStringLiteral("4"))->colActividades.Keys(), QStringList{QStringLiteral("5")});
}

TEST_F(SchoolYearStep, SalirEndsTheWizard)
{
    frmSelCursos &form = OpenWizard();
    form.cmdCancelar.Press();
    EXPECT_TRUE(ui.OpenWindows().isEmpty());
    EXPECT_EQ(ui.Closed(), QStringList{QStringLiteral("frmSelCursos")});
}
