#include "WizardFixture.h"

#include "session/modPrincipal.h"
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
        frmSelCursos &years = SelectYears({QStringLiteral("2024-2025")});
        years.cmdAceptar.Press();
        Pick(Top<frmSelActividad>().lstDisponibles, QStringLiteral("Comedor"));
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
};

TEST_F(WizardFlow, EachStepOpensTheNextOnTopOfItself)
{
    WalkToTheLastStep();
    EXPECT_TRUE(ui.MessageTexts().isEmpty()) << ui.MessageTexts().join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(ui.OpenWindows(),
              (QStringList{QStringLiteral("frmSelCursos"), QStringLiteral("frmSelActividad"),
                           QStringLiteral("frmActividadMes"), QStringLiteral("frmActividadPonderacion"),
                           QStringLiteral("frmActividadAlumno")}));
    EXPECT_EQ(Top<frmActividadAlumno>().Caption(), QStringLiteral("Datos de los Alumnos en las Actividades Seleccionadas"));
}

TEST_F(WizardFlow, SalirInTheLastWindowClosesTheWholeChain)
{
    frmActividadAlumno &last = WalkToTheLastStep();
    last.cmdCancelar.Press();
    EXPECT_TRUE(ui.OpenWindows().isEmpty());
    EXPECT_EQ(ui.Closed(),
              (QStringList{QStringLiteral("frmActividadAlumno"), QStringLiteral("frmActividadPonderacion"),
                           QStringLiteral("frmActividadMes"), QStringLiteral("frmSelActividad"),
                           QStringLiteral("frmSelCursos")}));
    EXPECT_TRUE(modPrincipal::blnSalir);
}

TEST_F(WizardFlow, BackFromTheLastWindowFindsTheDeductionStepAsItWas)
{
    frmActividadAlumno &last = WalkToTheLastStep();
    auto *deductions = dynamic_cast<frmActividadPonderacion *>(ui.Stack().Forms().at(3));
    ASSERT_NE(deductions, nullptr);
    const QStringList pairs = deductions->lstActPorc.Texts();
    last.cmdAnterior.Press();
    EXPECT_EQ(ui.OpenWindows().last(), QStringLiteral("frmActividadPonderacion"));
    EXPECT_EQ(Top<frmActividadPonderacion>().lstActPorc.Texts(), pairs);
    ASSERT_EQ(pairs.size(), 1);
    EXPECT_TRUE(pairs[0].startsWith(QStringLiteral("2024-2025 - Comedor <-> ")));
    EXPECT_FALSE(modPrincipal::blnSalir);
}

TEST_F(WizardFlow, ActivatingTheWizardAgainOpensAFreshFirstWindow)
{
    frmSelCursos &first = SelectYears({QStringLiteral("2024-2025")});
    first.cmdAceptar.Press();
    Top<frmSelActividad>().cmdCancelar.Press();
    first.cmdCancelar.Press();
    modPrincipal::blnSalir = true;
    frmSelCursos &again = OpenWizard();
    EXPECT_TRUE(again.colCursosEscolares.IsEmpty());
    EXPECT_EQ(again.cboCentro.ListIndex(), -1);
    EXPECT_FALSE(modPrincipal::blnSalir);
    EXPECT_EQ(ui.OpenWindows(), QStringList{QStringLiteral("frmSelCursos")});
}

TEST_F(WizardFlow, AWizardOpenedBeforeTheSessionFailsWithAMessage)
{
    cAsignarDatos early(ui);
    try {
        early.ActivarFormulario(0);
        FAIL() << "the first window needs the host's entry connection";
    } catch (const SessionError &error) {
        EXPECT_EQ(error.Message(),
                  QStringLiteral("No hay conexión «conexionAppEntrada»: el programa principal no ha entregado la sesión."));
    }
    EXPECT_TRUE(ui.OpenWindows().isEmpty());
}
