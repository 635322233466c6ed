#include "WizardFixture.h"

#include "wizard/frmActividadMes.h"
#include "wizard/frmSelActividad.h"
#include "wizard/frmSelCursos.h"

class ActivityStep : public WizardFixture
{
protected:
    frmSelActividad &OpenStep(const QStringList &years = {QStringLiteral("2023-2024"), QStringLiteral("2024-2025")})
    {
        cursos = &SelectYears(years);
        cursos->cmdAceptar.Press();
        return Top<frmSelActividad>();
    }
    QStringList Activities(const QString &year) const
    {
        QStringList names;
        for (const auto &a : cursos->colCursosEscolares.Item(year)->colActividades.Items())
            names << a->Nombre;
        return names;
    }
    frmSelCursos *cursos = nullptr;
};

TEST_F(ActivityStep, LoadListsTheYearsInCollectionOrderAndShowsTheFirst)
{
    frmSelActividad &form = OpenStep({QStringLiteral("2024-2025"), QStringLiteral("2023-2024")});
    EXPECT_EQ(form.Caption(), QStringLiteral("Selección de Actividades"));
    EXPECT_EQ(form.cboCursoEscolar.Texts(), (QStringList{QStringLiteral("2024-2025"), QStringLiteral("2023-2024")}));
    EXPECT_EQ(form.cboCursoEscolar.ListIndex(), 0);
    EXPECT_EQ(form.CursoMostrado(), 4);
    EXPECT_EQ(form.lstDisponibles.Texts(), (QStringList{QStringLiteral("Comedor"), QStringLiteral("Ajedrez"),
                                                        QStringLiteral("Robótica"), QStringLiteral("Natación")}));
    EXPECT_EQ(form.lstDisponibles.ItemData(1), 5);
    EXPECT_EQ(form.lstSeleccionados.ListCount(), 0);
    EXPECT_EQ(TakeStatements(QStringLiteral("Actividad")), QStringList{QStringLiteral("SELECT IDActividad, Nombre FROM Actividad")});
}

TEST_F(ActivityStep, AYearChangeStoresTheListsIntoTheYearShown)
{
    frmSelActividad &form = OpenStep();
    Pick(form.lstDisponibles, QStringLiteral("Inglés"));
    form.cmdAgregarUno.Press();
    Pick(form.lstDisponibles, QStringLiteral("Comedor"));
    form.cmdAgregarUno.Press();
    form.cboCursoEscolar.SetListIndex(1);
    EXPECT_EQ(Activities(QStringLiteral("3")), (QStringList{QStringLiteral("Inglés"), QStringLiteral("Comedor")}));
    EXPECT_EQ(cursos->colCursosEscolares.Item(QStringLiteral("3"))->colActividades.Keys(),
              (QStringList{QStringLiteral("3"), QStringLiteral("1")}));

    // Back on the first year, the chosen ones are selected, in database order.
    form.cboCursoEscolar.SetListIndex(0);
    EXPECT_EQ(form.lstSeleccionados.Texts(), (QStringList{QStringLiteral("Comedor"), QStringLiteral("Inglés")}));
    EXPECT_EQ(form.lstDisponibles.Texts(), QStringList{QStringLiteral("Transporte")});
}

TEST_F(ActivityStep, ActivitiesMovedBackLeaveTheYearOthersKeepTheirMonths)
{
    frmSelActividad &form = OpenStep();
    form.cmdAgregarTodos.Press();
    form.cboCursoEscolar.SetListIndex(1);
    cursos->colCursosEscolares.Item(QStringLiteral("3"))->colActividades.Item(QStringLiteral("1"))->MesesPago =
        QStringLiteral("111111000111");
    form.cboCursoEscolar.SetListIndex(0);
    Pick(form.lstSeleccionados, QStringLiteral("Transporte"));
    form.cmdEliminarUno.Press();
    form.cboCursoEscolar.SetListIndex(1);
    EXPECT_EQ(Activities(QStringLiteral("3")), (QStringList{QStringLiteral("Comedor"), QStringLiteral("Inglés")}));
    EXPECT_EQ(cursos->colCursosEscolares.Item(QStringLiteral("3"))->colActividades.Item(QStringLiteral("1"))->MesesPago,
              QStringLiteral("111111000111"));
}

TEST_F(ActivityStep, NextWithoutAnyActivityBeepsAndWarns)
{
    frmSelActividad &form = OpenStep();
    form.cmdAceptar.Press();
    ASSERT_EQ(ui.Messages().size(), 1);
    EXPECT_EQ(ui.Messages()[0].text, QStringLiteral("Debe seleccionar alguna actividad"));
    EXPECT_EQ(ui.Messages()[0].icon, vbExclamation);
    EXPECT_TRUE(ui.Messages()[0].beeped);
    EXPECT_EQ(ui.OpenWindows().last(), QStringLiteral("frmSelActividad"));
}

TEST_F(ActivityStep, AYearWithNoActivityIsAllowedWhenAnotherHasOne)
{
    frmSelActividad &form = OpenStep();
    form.cmdAgregarTodos.Press();
    form.cboCursoEscolar.SetListIndex(1);
    form.cmdEliminarTodos.Press();
    form.cmdAceptar.Press();
    EXPECT_TRUE(cursos->colCursosEscolares.Item(QStringLiteral("4"))->colActividades.IsEmpty());
    EXPECT_EQ(Activities(QStringLiteral("3")).size(), 3);
    EXPECT_EQ(ui.OpenWindows().last(), QStringLiteral("frmActividadMes"));
}

TEST_F(ActivityStep, GoingBackRightAfterMovingLosesTheMoves)
{
    frmSelActividad &form = OpenStep();
    form.cmdAgregarTodos.Press();
    form.cmdCancelar.Press();
    EXPECT_TRUE(cursos->colCursosEscolares.Item(QStringLiteral("3"))->colActividades.IsEmpty());
    EXPECT_EQ(ui.OpenWindows(), QStringList{QStringLiteral("frmSelCursos")});
}

TEST_F(ActivityStep, AMissingYearDatabaseShowsTheWholeConnectionString)
{
    description.years[1].createDatabase = false;
    description.years[1].connectionString = QStringLiteral("Provider=SQLite;Data Source=datos/no-existe.db;Password=secreto");
    frmSelActividad &form = OpenStep();
    form.cboCursoEscolar.SetListIndex(1);
    ASSERT_EQ(ui.Messages().size(), 1);
    EXPECT_EQ(ui.Messages()[0].text,
              QStringLiteral("No se ha encontrado la base de datos cuya conexión es: "
                             "Provider=SQLite;Data Source=datos/no-existe.db;Password=secreto"
                             ". Por favor verifique que la ruta y la base de datos es correcta."));
    EXPECT_EQ(ui.Messages()[0].icon, vbCritical);
    EXPECT_TRUE(ui.Messages()[0].beeped);
}

TEST_F(ActivityStep, AfterAFailedYearTheListsOnShowAreStoredIntoIt)
{
    description.years[1].createDatabase = false;
    frmSelActividad &form = OpenStep();
    Pick(form.lstDisponibles, QStringLiteral("Transporte"));
    form.cmdAgregarUno.Press();
    form.cboCursoEscolar.SetListIndex(1); // stores into 2023-2024, then fails to open 2024-2025
    EXPECT_EQ(form.CursoMostrado(), 4);
    EXPECT_EQ(form.lstSeleccionados.Texts(), QStringList{QStringLiteral("Transporte")});

    form.cmdAceptar.Press(); // the lists still on show go into the failed year
    EXPECT_EQ(Activities(QStringLiteral("3")), QStringList{QStringLiteral("Transporte")});
    EXPECT_EQ(Activities(QStringLiteral("4")), QStringList{QStringLiteral("Transporte")});
    EXPECT_EQ(cursos->colCursosEscolares.Item(QStringLiteral("4"))->colActividades.Keys(), QStringList{QStringLiteral("2")});
}

TEST_F(ActivityStep, AnActivityGoneFromTheDatabaseStaysChosenButIsNotListed)
{
    frmSelActividad &form = OpenStep();
    auto gone = std::make_shared<cActividad>();
    gone->idActividad = 99;
    gone->Nombre = QStringLiteral("Teatro");
    cursos->colCursosEscolares.Item(QStringLiteral("3"))->colActividades.Add(gone, QStringLiteral("99"));
    form.cboCursoEscolar.SetListIndex(1);
    form.cboCursoEscolar.SetListIndex(0);
    EXPECT_FALSE(form.lstDisponibles.Texts().contains(QStringLiteral("Teatro")));
    EXPECT_FALSE(form.lstSeleccionados.Texts().contains(QStringLiteral("Teatro")));
    form.cboCursoEscolar.SetListIndex(1);
    EXPECT_TRUE(cursos->colCursosEscolares.Item(QStringLiteral("3"))->colActividades.Contains(QStringLiteral("99")));
}

TEST_F(ActivityStep, ListsAreWideEnoughForTheirLongestEntry)
{
    frmSelActividad &form = OpenStep();
    EXPECT_EQ(form.lstDisponibles.HorizontalExtentText(), QStringLiteral("Transporte    "));
    form.cmdAgregarTodos.Press();
    EXPECT_EQ(form.lstSeleccionados.HorizontalExtentText(), QStringLiteral("Transporte    "));
    EXPECT_EQ(form.lstDisponibles.HorizontalExtentText(), QStringLiteral("    "));
}
