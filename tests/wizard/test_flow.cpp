#include "WizardFixture.h"

#include "session/SessionSettings.h"

#include "wizard/frmActividadAlumno.h"
#include "wizard/frmActividadMes.h"
#include "wizard/frmActividadPonderacion.h"
#include "wizard/frmSelActividad.h"
#include "wizard/frmSelCursos.h"

// The five windows chained as the host sees them, with the shipped catalogue.
class WizardFlow : public WizardFixture
{
protected:
    frmActividadAlumno &WalkToTheLastStep()
    {
        SelectYears({"2024-2025"}).cmdAceptar.Press();
        Pick(Top<frmSelActividad>().lstDisponibles, "Comedor");
        Top<frmSelActividad>().cmdAgregarUno.Press();
        Top<frmSelActividad>().cmdAceptar.Press();
        Top<frmActividadMes>().cmdAgregarTodos.Press();
        Top<frmActividadMes>().cmdAceptar.Press();
        frmActividadPonderacion &deductions = Top<frmActividadPonderacion>();
        deductions.lstActividad.SetListIndex(0);
        deductions.cboTipoPorcentaje.SetListIndex(0);
        deductions.cmdAnadir.Press();
        deductions.cmdSiguiente.Press();
        return Top<frmActividadAlumno>();
    }
    const QStringList allFive = {"frmSelCursos", "frmSelActividad", "frmActividadMes", "frmActividadPonderacion",
                                 "frmActividadAlumno"};
};

TEST_F(WizardFlow, SalirInTheLastWindowClosesTheWholeChain)
{
    frmActividadAlumno &last = WalkToTheLastStep();
    EXPECT_TRUE(ui.MessageTexts().isEmpty()) << ui.MessageTexts().join('\n').toStdString();
    EXPECT_EQ(ui.OpenWindows(), allFive);
    EXPECT_EQ(last.Caption(), "Datos de los Alumnos en las Actividades Seleccionadas");
    last.cmdCancelar.Press();
    EXPECT_TRUE(ui.OpenWindows().isEmpty());
    QStringList reversed(allFive.rbegin(), allFive.rend());
    EXPECT_EQ(ui.Closed(), reversed);
    EXPECT_TRUE(run().blnSalir);
}

TEST_F(WizardFlow, BackFromTheLastWindowFindsTheDeductionStepAsItWas)
{
    frmActividadAlumno &last = WalkToTheLastStep();
    auto *deductions = dynamic_cast<frmActividadPonderacion *>(ui.Stack().Forms().at(3));
    ASSERT_NE(deductions, nullptr);
    const QStringList pairs = deductions->lstActPorc.Texts();
    last.cmdAnterior.Press();
    EXPECT_EQ(ui.OpenWindows().last(), "frmActividadPonderacion");
    EXPECT_EQ(Top<frmActividadPonderacion>().lstActPorc.Texts(), pairs);
    ASSERT_EQ(pairs.size(), 1);
    EXPECT_TRUE(pairs[0].startsWith("2024-2025 - Comedor <-> "));
    EXPECT_FALSE(run().blnSalir);
}

TEST_F(WizardFlow, ActivatingTheWizardAgainOpensAFreshFirstWindow)
{
    frmSelCursos &first = SelectYears({"2024-2025"});
    first.cmdAceptar.Press();
    Top<frmSelActividad>().cmdCancelar.Press();
    first.cmdCancelar.Press();
    run().blnSalir = true;
    frmSelCursos &again = OpenWizard();
    EXPECT_TRUE(again.colCursosEscolares.IsEmpty());
    EXPECT_FALSE(run().blnSalir);
    EXPECT_EQ(ui.OpenWindows(), QStringList{"frmSelCursos"});
}

TEST_F(WizardFlow, AWizardOpenedBeforeTheSessionFailsWithAMessage)
{
    cAsignarDatos early(ui);
    try {
        early.ActivarFormulario(0);
        FAIL() << "the first window needs the host's entry connection";
    } catch (const SessionError &error) {
        EXPECT_EQ(error.Message(), "No hay conexión «conexionAppEntrada»: el programa principal no ha entregado la sesión.");
    }
    EXPECT_TRUE(ui.OpenWindows().isEmpty());
}

// Two runs of the add-in in one process, on two schools: neither sees the
// other's session, declaration database, choices or close-all flag.
TEST(TwoRuns, SideBySideTheyDoNotMeet)
{
    QTemporaryDir dirA, dirB;
    InstallationDescription a = SmallSchool(), b = SmallSchool();
    b.school.id = 9;
    b.school.name = "Colegio del Otro Lado";
    b.years.removeLast();
    const InstallationPaths pathsA = BuildInstallation(dirA.path(), a), pathsB = BuildInstallation(dirB.path(), b);
    TestUi uiA, uiB;
    cAsignarDatos addinA(uiA), addinB(uiB);
    addinA.ObtenerDatos(SessionSettings::Load(pathsA.iniFile).BuildSession());
    addinB.ObtenerDatos(SessionSettings::Load(pathsB.iniFile).BuildSession());
    addinA.ActivarFormulario();
    addinB.ActivarFormulario();
    auto &first = dynamic_cast<frmSelCursos &>(*uiA.Stack().Top());
    auto &second = dynamic_cast<frmSelCursos &>(*uiB.Stack().Top());
    EXPECT_EQ(first.cboCentro.Texts(), QStringList{"Colegio San Prueba"});
    EXPECT_EQ(second.cboCentro.Texts(), QStringList{"Colegio del Otro Lado"});
    first.cboCentro.SetListIndex(0);
    second.cboCentro.SetListIndex(0);
    EXPECT_EQ(first.lstDisponibles.ListCount(), 2);
    EXPECT_EQ(second.lstDisponibles.ListCount(), 1);
    EXPECT_EQ(addinA.Run()->conM182().Property("Data Source"), pathsA.rutaBD + "/Modelo182.mdb");
    EXPECT_EQ(addinB.Run()->conM182().Property("Data Source"), pathsB.rutaBD + "/Modelo182.mdb");
    EXPECT_NE(&addinA.Run()->Componentes(), &addinB.Run()->Componentes());

    addinB.Run()->blnSalir = true; // one run closing never closes the other
    EXPECT_FALSE(addinA.Run()->blnSalir);
    second.cmdCancelar.Press();
    EXPECT_TRUE(uiB.OpenWindows().isEmpty());
    EXPECT_EQ(uiA.OpenWindows(), QStringList{"frmSelCursos"});
    first.cmdCancelar.Press();
}
