#include "WizardFixture.h"

#include "wizard/frmActividadMes.h"
#include "wizard/frmActividadPonderacion.h"
#include "wizard/frmSelActividad.h"
#include "wizard/frmSelCursos.h"

class MonthStep : public WizardFixture
{
protected:
    // Both years chosen; 2023-2024 with all its activities, 2024-2025 with Comedor.
    frmActividadMes &OpenStep()
    {
        cursos = &SelectYears({QStringLiteral("2023-2024"), QStringLiteral("2024-2025")});
        cursos->cmdAceptar.Press();
        frmSelActividad &activities = Top<frmSelActividad>();
        activities.cmdAgregarTodos.Press();
        activities.cboCursoEscolar.SetListIndex(1);
        Pick(activities.lstDisponibles, QStringLiteral("Comedor"));
        activities.cmdAgregarUno.Press();
        activities.cmdAceptar.Press();
        TakeStatements();
        return Top<frmActividadMes>();
    }
    std::shared_ptr<cActividad> Activity(const QString &year, const QString &id) const
    {
        return cursos->colCursosEscolares.Item(year)->colActividades.Item(id);
    }
    frmSelCursos *cursos = nullptr;
};

static const QStringList kSchoolMonths = {
    QStringLiteral("Enero"), QStringLiteral("Febrero"), QStringLiteral("Marzo"), QStringLiteral("Abril"),
    QStringLiteral("Mayo"), QStringLiteral("Junio"), QStringLiteral("Septiembre"), QStringLiteral("Octubre"),
    QStringLiteral("Noviembre"), QStringLiteral("Diciembre")};

TEST_F(MonthStep, LoadListsEveryChosenActivityAndOffersTheFirstOnesFeeMonths)
{
    frmActividadMes &form = OpenStep();
    EXPECT_EQ(form.Caption(), QStringLiteral("Selección de los meses de facturación de las actividades"));
    EXPECT_EQ(form.cboActCurEsc.Texts(),
              (QStringList{QStringLiteral("2023-2024 - Comedor"), QStringLiteral("2023-2024 - Transporte"),
                           QStringLiteral("2023-2024 - Inglés"), QStringLiteral("2024-2025 - Comedor")}));
    EXPECT_EQ(form.lstDisponibles.Texts(), kSchoolMonths);
    EXPECT_EQ(form.lstDisponibles.ItemData(6), 9);
    EXPECT_EQ(form.lstSeleccionados.ListCount(), 0);
}

TEST_F(MonthStep, TheMonthSumsAreReadWithTheExactStatement)
{
    frmActividadMes &form = OpenStep();
    form.cboActCurEsc.SetListIndex(1);
    EXPECT_EQ(TakeStatements(QStringLiteral("sum(")),
              QStringList{QStringLiteral(
                  "SELECT sum(enero) AS Campo0, sum(febrero) AS Campo1, sum(marzo) AS Campo2, sum(abril) AS Campo3, "
                  "sum(mayo) AS Campo4, sum(junio) AS Campo5, sum(julio) AS Campo6, sum(agosto) AS Campo7, "
                  "sum(septiembre) AS Campo8, sum(octubre) AS Campo9, sum(noviembre) AS Campo10, "
                  "sum(diciembre) AS Campo11 FROM Alumno_actividad_miembro WHERE codactividad=2")});
    EXPECT_EQ(form.lstDisponibles.Texts(), (QStringList{QStringLiteral("Septiembre"), QStringLiteral("Octubre"),
                                                        QStringLiteral("Noviembre"), QStringLiteral("Diciembre")}));
}

TEST_F(MonthStep, LeavingAnActivityStoresItsMask)
{
    frmActividadMes &form = OpenStep();
    Pick(form.lstDisponibles, QStringLiteral("Marzo"));
    form.cmdAgregarUno.Press();
    Pick(form.lstDisponibles, QStringLiteral("Enero"));
    form.cmdAgregarUno.Press();
    EXPECT_EQ(form.lstSeleccionados.Texts(), (QStringList{QStringLiteral("Marzo"), QStringLiteral("Enero")}));
    form.cboActCurEsc.SetListIndex(2);
    EXPECT_EQ(Activity(QStringLiteral("3"), QStringLiteral("1"))->MesesPago, QStringLiteral("101000000000"));

    // An activity left with no month is stored as twelve zeros.
    form.cboActCurEsc.SetListIndex(3);
    EXPECT_EQ(Activity(QStringLiteral("3"), QStringLiteral("3"))->MesesPago, QStringLiteral("000000000000"));

    // Coming back shows the stored months as chosen, in month order.
    form.cboActCurEsc.SetListIndex(0);
    EXPECT_EQ(form.lstSeleccionados.Texts(), (QStringList{QStringLiteral("Enero"), QStringLiteral("Marzo")}));
}

TEST_F(MonthStep, MovingAllAndBackAppendsAtTheEnd)
{
    frmActividadMes &form = OpenStep();
    form.cmdAgregarTodos.Press();
    EXPECT_EQ(form.lstSeleccionados.Texts(), kSchoolMonths);
    EXPECT_EQ(form.lstDisponibles.ListCount(), 0);
    Pick(form.lstSeleccionados, QStringLiteral("Enero"));
    form.cmdEliminarUno.Press();
    Pick(form.lstSeleccionados, QStringLiteral("Junio"));
    form.lstSeleccionados.DoubleClick(form.lstSeleccionados.ListIndex());
    EXPECT_EQ(form.lstDisponibles.Texts(), (QStringList{QStringLiteral("Enero"), QStringLiteral("Junio")}));
    form.cmdEliminarTodos.Press();
    EXPECT_EQ(form.lstDisponibles.ListCount(), 10);
    EXPECT_EQ(form.lstDisponibles.List(2), QStringLiteral("Febrero"));
}

TEST_F(MonthStep, ASavedMonthWithoutFeesIsDroppedOnTheNextStore)
{
    frmActividadMes &form = OpenStep();
    // Transporte has fees September to December only.
    Activity(QStringLiteral("3"), QStringLiteral("2"))->MesesPago = QStringLiteral("100000000001");
    form.cboActCurEsc.SetListIndex(1);
    EXPECT_EQ(form.lstSeleccionados.Texts(), QStringList{QStringLiteral("Diciembre")});
    EXPECT_EQ(form.lstDisponibles.Texts(),
              (QStringList{QStringLiteral("Septiembre"), QStringLiteral("Octubre"), QStringLiteral("Noviembre")}));
    form.cboActCurEsc.SetListIndex(0);
    EXPECT_EQ(Activity(QStringLiteral("3"), QStringLiteral("2"))->MesesPago, QStringLiteral("000000000001"));
}

TEST_F(MonthStep, RefundsCountAsFeesButCancellingFlagsDoNot)
{
    // Flags as the host may store them: -1 for a charge; a +1 correction in
    // the same month cancels it out.
    auto &year = description.years[0];
    MonthFlags refund{};
    refund.fill(0);
    refund[4] = 1;  // May: +1 against the -1 below: sum 0
    refund[6] = -1; // July: a lone -1: negative sum
    year.enrolments.append({201, 3, 101, 30.0, refund});
    MonthFlags charge{};
    charge.fill(0);
    charge[4] = -1;
    year.enrolments.append({201, 3, 101, 30.0, charge});

    frmActividadMes &form = OpenStep();
    form.cboActCurEsc.SetListIndex(2); // Inglés: January to March, and July
    EXPECT_EQ(form.lstDisponibles.Texts(), (QStringList{QStringLiteral("Enero"), QStringLiteral("Febrero"),
                                                        QStringLiteral("Marzo"), QStringLiteral("Julio")}));
}

TEST_F(MonthStep, AnActivityWithoutFeesOffersNoMonthAndBlocksTheStep)
{
    frmActividadMes &months = OpenStep();
    months.cmdCancelar.Press();
    frmSelActividad &activities = Top<frmSelActividad>();
    activities.cboCursoEscolar.SetListIndex(1);
    Pick(activities.lstDisponibles, QStringLiteral("Robótica"));
    activities.cmdAgregarUno.Press();
    activities.cmdAceptar.Press();

    frmActividadMes &form = Top<frmActividadMes>();
    for (int i = 0; i < form.cboActCurEsc.ListCount(); ++i) {
        form.cboActCurEsc.SetListIndex(i);
        form.cmdAgregarTodos.Press();
    }
    EXPECT_EQ(form.cboActCurEsc.Text(), QStringLiteral("2024-2025 - Robótica"));
    EXPECT_EQ(form.lstSeleccionados.ListCount(), 0);
    EXPECT_EQ(form.lstDisponibles.ListCount(), 0);
    form.cmdAceptar.Press();
    EXPECT_EQ(Activity(QStringLiteral("4"), QStringLiteral("6"))->MesesPago, QStringLiteral("000000000000"));
    EXPECT_EQ(ui.MessageTexts(), QStringList{QStringLiteral("Debe seleccionar algún mes de cobro en todas las actividades")});
}

TEST_F(MonthStep, ChoosingTheSameActivityAgainReloadsItsStoredMonths)
{
    frmActividadMes &form = OpenStep();
    form.cmdAgregarTodos.Press();
    form.cboActCurEsc.UserClick(0); // the one on show
    EXPECT_EQ(form.lstSeleccionados.ListCount(), 0);
    EXPECT_EQ(form.lstDisponibles.Texts(), kSchoolMonths);
    EXPECT_EQ(Activity(QStringLiteral("3"), QStringLiteral("1"))->MesesPago, QString());
}

TEST_F(MonthStep, NextRefusesWhileAnyActivityHasNoMonth)
{
    frmActividadMes &form = OpenStep();
    form.cmdAgregarTodos.Press();
    form.cmdAceptar.Press();
    ASSERT_EQ(ui.Messages().size(), 1);
    EXPECT_EQ(ui.Messages()[0].text, QStringLiteral("Debe seleccionar algún mes de cobro en todas las actividades"));
    EXPECT_EQ(ui.Messages()[0].icon, vbExclamation);
    EXPECT_TRUE(ui.Messages()[0].beeped);
    EXPECT_EQ(Activity(QStringLiteral("3"), QStringLiteral("1"))->MesesPago, QStringLiteral("111111001111"));
    EXPECT_EQ(ui.OpenWindows().last(), QStringLiteral("frmActividadMes"));
}

TEST_F(MonthStep, NextOpensTheDeductionStepWhenEveryActivityHasMonths)
{
    frmActividadMes &form = OpenStep();
    for (int i = 0; i < form.cboActCurEsc.ListCount(); ++i) {
        form.cboActCurEsc.SetListIndex(i);
        form.cmdAgregarTodos.Press();
    }
    form.cmdAceptar.Press();
    EXPECT_TRUE(ui.Messages().isEmpty());
    EXPECT_EQ(ui.OpenWindows().last(), QStringLiteral("frmActividadPonderacion"));
    EXPECT_EQ(Activity(QStringLiteral("4"), QStringLiteral("1"))->MesesPago, QStringLiteral("111111001111"));
    EXPECT_EQ(Activity(QStringLiteral("3"), QStringLiteral("2"))->MesesPago, QStringLiteral("000000001111"));
}

TEST_F(MonthStep, AMissingYearDatabaseLeavesTheListsAsTheyStood)
{
    description.years[1].createDatabase = false;
    cursos = &SelectYears({QStringLiteral("2023-2024"), QStringLiteral("2024-2025")});
    cursos->cmdAceptar.Press();
    frmSelActividad &activities = Top<frmSelActividad>();
    activities.cmdAgregarTodos.Press();
    auto comedor = std::make_shared<cActividad>();
    comedor->idActividad = 1;
    comedor->Nombre = QStringLiteral("Comedor");
    cursos->colCursosEscolares.Item(QStringLiteral("4"))->colActividades.Add(comedor, QStringLiteral("1"));
    activities.cmdAceptar.Press();
    ui.ClearLog();
    frmActividadMes &form = Top<frmActividadMes>();
    form.cboActCurEsc.SetListIndex(3);
    ASSERT_EQ(ui.Messages().size(), 1);
    EXPECT_EQ(ui.Messages()[0].icon, vbCritical);
    EXPECT_EQ(form.lstDisponibles.Texts(), kSchoolMonths); // still the first activity's
}
