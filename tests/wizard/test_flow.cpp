#include "WizardFixture.h"

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
