#include "WizardFixture.h"

#include "wizard/frmActividadMes.h"
#include "wizard/frmSelActividad.h"
#include "wizard/frmSelCursos.h"

class MonthStep : public WizardFixture
{
protected:
    // 2023-2024 with all its activities, 2024-2025 with Comedor (and Robótica, which has no fees).
    frmActividadMes &OpenStep(bool withRobotica = false)
    {
        cursos = &SelectYears({"2023-2024", "2024-2025"});
        cursos->cmdAceptar.Press();
        frmSelActividad &activities = Top<frmSelActividad>();
        activities.cmdAgregarTodos.Press();
        activities.cboCursoEscolar.SetListIndex(1);
        for (const char *name : {"Comedor", "Robótica"}) {
            if (QString(name) == "Robótica" && !withRobotica)
                continue;
            Pick(activities.lstDisponibles, name);
            activities.cmdAgregarUno.Press();
        }
        activities.cmdAceptar.Press();
        TakeStatements();
        return Top<frmActividadMes>();
    }
    QString Mask(const QString &year, const QString &id) const
    {
        return cursos->colCursosEscolares.Item(year)->colActividades.Item(id)->MesesPago;
    }
    frmSelCursos *cursos = nullptr;
};

static const QStringList kSchoolMonths = {"Enero", "Febrero",    "Marzo",   "Abril",     "Mayo",
                                          "Junio", "Septiembre", "Octubre", "Noviembre", "Diciembre"};

TEST_F(MonthStep, LoadListsEveryChosenActivityAndOffersOnlyMonthsWithFees)
{
    frmActividadMes &form = OpenStep();
    EXPECT_EQ(form.Caption(), "Selección de los meses de facturación de las actividades");
    EXPECT_EQ(form.cboActCurEsc.Texts(),
              (QStringList{"2023-2024 - Comedor", "2023-2024 - Transporte", "2023-2024 - Inglés", "2024-2025 - Comedor"}));
    EXPECT_EQ(form.lstDisponibles.Texts(), kSchoolMonths);
    EXPECT_EQ(form.lstDisponibles.ItemData(6), 9);
    form.cboActCurEsc.SetListIndex(1);
    EXPECT_EQ(TakeStatements("sum("),
              QStringList{"SELECT sum(enero) AS Campo0, sum(febrero) AS Campo1, sum(marzo) AS Campo2, sum(abril) AS Campo3, "
                          "sum(mayo) AS Campo4, sum(junio) AS Campo5, sum(julio) AS Campo6, sum(agosto) AS Campo7, "
                          "sum(septiembre) AS Campo8, sum(octubre) AS Campo9, sum(noviembre) AS Campo10, "
                          "sum(diciembre) AS Campo11 FROM Alumno_actividad_miembro WHERE codactividad=2"});
    EXPECT_EQ(form.lstDisponibles.Texts(), (QStringList{"Septiembre", "Octubre", "Noviembre", "Diciembre"}));
}

TEST_F(MonthStep, LeavingAnActivityStoresItsMaskAndMovesAppendAtTheEnd)
{
    frmActividadMes &form = OpenStep();
    Pick(form.lstDisponibles, "Marzo");
    form.cmdAgregarUno.Press();
    form.lstDisponibles.DoubleClick(0); // Enero
    EXPECT_EQ(form.lstSeleccionados.Texts(), (QStringList{"Marzo", "Enero"}));
    form.cboActCurEsc.SetListIndex(2);
    EXPECT_EQ(Mask("3", "1"), "101000000000");
    form.cboActCurEsc.SetListIndex(3); // left with no month: twelve zeros
    EXPECT_EQ(Mask("3", "3"), "000000000000");
    form.cboActCurEsc.SetListIndex(0); // back again: the stored months, in month order
    EXPECT_EQ(form.lstSeleccionados.Texts(), (QStringList{"Enero", "Marzo"}));
    form.cmdAgregarTodos.Press();
    form.cmdEliminarUno.Press(); // nothing highlighted
    Pick(form.lstSeleccionados, "Enero");
    form.cmdEliminarUno.Press();
    form.lstSeleccionados.DoubleClick(form.lstSeleccionados.Texts().indexOf("Junio"));
    EXPECT_EQ(form.lstDisponibles.Texts(), (QStringList{"Enero", "Junio"}));
}

TEST_F(MonthStep, ASavedMonthWithoutFeesIsDroppedOnTheNextStore)
{
    frmActividadMes &form = OpenStep();
    cursos->colCursosEscolares.Item("3")->colActividades.Item("2")->MesesPago = "100000000001";
    form.cboActCurEsc.SetListIndex(1); // Transporte has fees September to December only
    EXPECT_EQ(form.lstSeleccionados.Texts(), QStringList{"Diciembre"});
    EXPECT_EQ(form.lstDisponibles.Texts(), (QStringList{"Septiembre", "Octubre", "Noviembre"}));
    form.cboActCurEsc.SetListIndex(0);
    EXPECT_EQ(Mask("3", "2"), "000000000001");
}

TEST_F(MonthStep, ANegativeMonthSumCountsAZeroSumDoesNot)
{
    MonthFlags plusOne{}, minusOne{};
    plusOne.fill(0);
    minusOne.fill(0);
    plusOne[4] = 1; // May: +1 and -1 below sum to 0
    minusOne[4] = -1;
    minusOne[6] = -1; // July: a lone -1
    description.years[0].enrolments << EnrolmentDescription{201, 3, 101, 30.0, plusOne}
                                    << EnrolmentDescription{201, 3, 101, 30.0, minusOne};
    frmActividadMes &form = OpenStep();
    form.cboActCurEsc.SetListIndex(2); // Inglés: January to March, and July
    EXPECT_EQ(form.lstDisponibles.Texts(), (QStringList{"Enero", "Febrero", "Marzo", "Julio"}));
}

TEST_F(MonthStep, ChoosingTheSameActivityAgainReloadsItsStoredMonths)
{
    frmActividadMes &form = OpenStep();
    form.cmdAgregarTodos.Press();
    form.cboActCurEsc.UserClick(0);
    EXPECT_EQ(form.lstDisponibles.Texts(), kSchoolMonths);
    EXPECT_EQ(Mask("3", "1"), "");
}

TEST_F(MonthStep, NextNeedsMonthsInEveryActivity)
{
    frmActividadMes &form = OpenStep(true);
    for (int i = 0; i < form.cboActCurEsc.ListCount(); ++i) {
        form.cboActCurEsc.SetListIndex(i);
        form.cmdAgregarTodos.Press();
    }
    EXPECT_EQ(form.lstDisponibles.ListCount() + form.lstSeleccionados.ListCount(), 0); // Robótica has no fees
    form.cmdAceptar.Press();
    ExpectOnlyMessage("Debe seleccionar algún mes de cobro en todas las actividades");
    EXPECT_EQ(Mask("4", "6"), "000000000000");
    EXPECT_EQ(Mask("3", "2"), "000000001111");

    cursos->colCursosEscolares.Item("4")->colActividades.Remove("6");
    form.cmdAceptar.Press();
    EXPECT_EQ(ui.OpenWindows().last(), "frmActividadPonderacion");
}

TEST_F(MonthStep, AMissingYearDatabaseLeavesTheListsAsTheyStood)
{
    description.years[1].createDatabase = false;
    cursos = &SelectYears({"2023-2024", "2024-2025"});
    cursos->cmdAceptar.Press();
    Top<frmSelActividad>().cmdAgregarTodos.Press();
    auto comedor = std::make_shared<cActividad>();
    comedor->idActividad = 1;
    comedor->Nombre = "Comedor";
    cursos->colCursosEscolares.Item("4")->colActividades.Add(comedor, "1");
    Top<frmSelActividad>().cmdAceptar.Press();
    ui.ClearLog();
    frmActividadMes &form = Top<frmActividadMes>();
    form.cboActCurEsc.SetListIndex(3);
    EXPECT_EQ(ui.Messages().value(0).icon, vbCritical);
    EXPECT_EQ(form.lstDisponibles.Texts(), kSchoolMonths); // still the first activity's
}
