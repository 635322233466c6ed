#include "WizardFixture.h"

#include "data/Connection.h"
#include "session/denM182.h"
#include "session/modPrincipal.h"
#include "wizard/frmActividadAlumno.h"
#include "wizard/frmActividadMes.h"
#include "wizard/frmActividadPonderacion.h"
#include "wizard/frmSelActividad.h"
#include "wizard/frmSelCursos.h"

#include <algorithm>
#include <functional>

namespace {

QStringList Sorted(QStringList list)
{
    std::sort(list.begin(), list.end());
    return list;
}

} // namespace

class DeductionStep : public WizardFixture
{
protected:
    void Install()
    {
        WizardFixture::Install();
        // A catalogue of known rows instead of the shipped one.
        Connection m182;
        m182.Open(paths.modelo182ConnectionString);
        for (const char *sql : {
                 "DELETE FROM TipoDonativos_Deducciones", "DELETE FROM ComunidadesAutonomas_Deducciones",
                 "DELETE FROM Provincias", "DELETE FROM TipoDonativos", "DELETE FROM Deducciones",
                 "DELETE FROM ComunidadesAutonomas",
                 "INSERT INTO ComunidadesAutonomas (IDComunidadAutonoma, ComunidadAutonoma, CodigoComunidadAutonoma) "
                 "VALUES (1, 'Andalucía', '01'), (2, 'Aragón', '02'), (3, 'Ceuta', '00')",
                 "INSERT INTO Deducciones (IDDeduccion, Deduccion) VALUES (1, 80), (2, 35), (3, 12.5), (4, 13.5), (5, 10), (6, 15)",
                 "INSERT INTO TipoDonativos (IDTipoDonativo, TipoDonativo, CodigoDonativo) "
                 "VALUES (1, 'Donativo', 'D1'), (2, 'Cuota de socio', 'C2'), (3, 'D''Aportación', 'A3')",
                 "INSERT INTO TipoDonativos_Deducciones VALUES (1, 1), (1, 2), (2, 3), (2, 4), (3, 1)",
                 "INSERT INTO ComunidadesAutonomas_Deducciones VALUES (1, 5), (1, 6), (2, 5)"})
            m182.Execute(QString::fromUtf8(sql));
        m182.Close();
        statements.clear();
    }

    frmActividadPonderacion &OpenStep(const std::function<void()> &beforeMonthsNext = {})
    {
        if (!addin)
            Install();
        cursos = &SelectYears({QStringLiteral("2023-2024")});
        cursos->cmdAceptar.Press();
        Top<frmSelActividad>().cmdAgregarTodos.Press();
        Top<frmSelActividad>().cmdAceptar.Press();
        frmActividadMes &months = Top<frmActividadMes>();
        for (int i = 0; i < months.cboActCurEsc.ListCount(); ++i) {
            months.cboActCurEsc.SetListIndex(i);
            months.cmdAgregarTodos.Press();
        }
        if (beforeMonthsNext)
            beforeMonthsNext();
        months.cmdAceptar.Press();
        TakeStatements();
        return Top<frmActividadPonderacion>();
    }

    std::shared_ptr<cActividad> Activity(const QString &id) const
    {
        return cursos->colCursosEscolares.Item(QStringLiteral("3"))->colActividades.Item(id);
    }

    void Assign(frmActividadPonderacion &form, const QString &activity, const QString &pair)
    {
        Pick(form.lstActividad, activity);
        Pick(form.cboTipoPorcentaje, pair);
        form.cmdAnadir.Press();
    }

    frmSelCursos *cursos = nullptr;
};

TEST_F(DeductionStep, LoadListsActivitiesPairsAndCommunities)
{
    frmActividadPonderacion &form = OpenStep();
    EXPECT_EQ(form.Caption(), QStringLiteral("Selección de porcentajes de deducciones"));
    EXPECT_EQ(form.lstActividad.Texts(), (QStringList{QStringLiteral("2023-2024 - Comedor"),
                                                      QStringLiteral("2023-2024 - Transporte"),
                                                      QStringLiteral("2023-2024 - Inglés")}));
    EXPECT_EQ(form.lstActPorc.ListCount(), 0);
    // Percentages are shown with the user's decimal comma.
    EXPECT_EQ(Sorted(form.cboTipoPorcentaje.Texts()),
              (QStringList{QStringLiteral("Cuota de socio - 12,5%"), QStringLiteral("Cuota de socio - 13,5%"),
                           QStringLiteral("D'Aportación - 80%"), QStringLiteral("Donativo - 35%"),
                           QStringLiteral("Donativo - 80%")}));
    EXPECT_EQ(form.cboComAut.Texts(),
              (QStringList{QStringLiteral("Andalucía"), QStringLiteral("Aragón"), QStringLiteral("Ceuta")}));
    EXPECT_EQ(form.cboComAut.ItemData(2), 3);
    EXPECT_FALSE(form.cboComAut.Enabled());
    EXPECT_FALSE(form.cboDeduccion.Enabled());
    EXPECT_EQ(form.chkComunidad.Value(), 0);
}

TEST_F(DeductionStep, TheCommunityCollectionIsBuiltOnceAndOutlivesTheWindow)
{
    frmActividadPonderacion &form = OpenStep();
    ASSERT_EQ(cursos->colComAut.Keys(), (QStringList{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}));
    auto andalucia = cursos->colComAut.Item(QStringLiteral("1"));
    EXPECT_EQ(andalucia->IDComAut, 1);
    EXPECT_EQ(andalucia->IDDeduccion, -1);
    EXPECT_EQ(andalucia->Valor, -1.0f);

    form.chkComunidad.SetValue(1);
    Pick(form.cboDeduccion, QStringLiteral("15%"));
    form.cmdAnterior.Press();
    Top<frmActividadMes>().cmdAceptar.Press();
    EXPECT_EQ(cursos->colComAut.Count(), 3);
    EXPECT_EQ(cursos->colComAut.Item(QStringLiteral("1"))->IDDeduccion, 6);
    EXPECT_EQ(cursos->colComAut.Item(QStringLiteral("1"))->Valor, 15.0f);
}

TEST_F(DeductionStep, TickingTheCommunityBoxShowsTheFirstCommunitysPercentages)
{
    frmActividadPonderacion &form = OpenStep();
    form.chkComunidad.SetValue(1);
    EXPECT_TRUE(form.cboComAut.Enabled());
    EXPECT_TRUE(form.cboDeduccion.Enabled());
    EXPECT_EQ(form.cboComAut.ListIndex(), 0);
    EXPECT_EQ(form.cboDeduccion.Texts(), (QStringList{QStringLiteral("10%"), QStringLiteral("15%")}));
    EXPECT_EQ(form.cboDeduccion.ItemData(1), 6);
    EXPECT_EQ(form.cboDeduccion.ListIndex(), -1);
    EXPECT_EQ(TakeStatements(QStringLiteral("Deducciones")),
              QStringList{QStringLiteral("SELECT IDDeduccion,Deduccion FROM ComunidadesAutonomas_Deducciones INNER JOIN "
                                         "Deducciones ON ComunidadesAutonomas_Deducciones.codDeduccion=Deducciones.IDDeduccion "
                                         "WHERE codComunidadAutonoma=1")});
    form.chkComunidad.SetValue(0);
    EXPECT_FALSE(form.cboComAut.Enabled());
    EXPECT_FALSE(form.cboDeduccion.Enabled());
}

TEST_F(DeductionStep, ChoosingAPercentageGoesIntoTheCommunityAndIsShownAgain)
{
    frmActividadPonderacion &form = OpenStep();
    form.chkComunidad.SetValue(1);
    Pick(form.cboComAut, QStringLiteral("Aragón"));
    Pick(form.cboDeduccion, QStringLiteral("10%"));
    EXPECT_EQ(cursos->colComAut.Item(QStringLiteral("2"))->IDDeduccion, 5);
    EXPECT_EQ(cursos->colComAut.Item(QStringLiteral("2"))->Valor, 10.0f);
    Pick(form.cboComAut, QStringLiteral("Andalucía"));
    EXPECT_EQ(form.cboDeduccion.ListIndex(), -1);
    Pick(form.cboComAut, QStringLiteral("Aragón"));
    EXPECT_EQ(form.cboDeduccion.Text(), QStringLiteral("10%"));
}

TEST_F(DeductionStep, AddingAndRemovingPairsRefusesWithoutASelection)
{
    frmActividadPonderacion &form = OpenStep();
    form.cmdAnadir.Press();
    Pick(form.lstActividad, QStringLiteral("2023-2024 - Comedor"));
    form.cmdAnadir.Press(); // no pair chosen
    form.cmdEliminar.Press();
    EXPECT_EQ(ui.MessageTexts(), (QStringList{QStringLiteral("Seleccione una actividad"),
                                              QStringLiteral("Seleccione una actividad"),
                                              QStringLiteral("Seleccione una actividad con su deducción a eliminar")}));
    for (const auto &message : ui.Messages()) {
        EXPECT_EQ(message.icon, vbExclamation);
        EXPECT_TRUE(message.beeped);
    }
    EXPECT_EQ(form.lstActividad.ListCount(), 3);
    EXPECT_EQ(form.lstActPorc.ListCount(), 0);
}

TEST_F(DeductionStep, AddingMovesTheActivityWithItsPairButWritesNothingYet)
{
    frmActividadPonderacion &form = OpenStep();
    Assign(form, QStringLiteral("2023-2024 - Transporte"), QStringLiteral("Donativo - 80%"));
    EXPECT_EQ(form.lstActPorc.Texts(), QStringList{QStringLiteral("2023-2024 - Transporte <-> Donativo - 80%")});
    EXPECT_EQ(form.lstActividad.Texts(),
              (QStringList{QStringLiteral("2023-2024 - Comedor"), QStringLiteral("2023-2024 - Inglés")}));
    EXPECT_EQ(Activity(QStringLiteral("2"))->TipoDonativoDeduccion, QString());

    // Unconfirmed assignments are lost on the way back.
    form.cmdAnterior.Press();
    Top<frmActividadMes>().cmdAceptar.Press();
    EXPECT_EQ(Top<frmActividadPonderacion>().lstActPorc.ListCount(), 0);
}

TEST_F(DeductionStep, NextRefusesWhileAnActivityHasNoPair)
{
    frmActividadPonderacion &form = OpenStep();
    Assign(form, QStringLiteral("2023-2024 - Transporte"), QStringLiteral("Donativo - 80%"));
    form.cmdSiguiente.Press();
    ASSERT_EQ(ui.Messages().size(), 1);
    EXPECT_EQ(ui.Messages()[0].text, QStringLiteral("Seleccione un porcentaje de deducción para todas las actividades"));
    EXPECT_EQ(ui.Messages()[0].icon, vbExclamation);
    EXPECT_TRUE(ui.Messages()[0].beeped);
    EXPECT_EQ(Activity(QStringLiteral("2"))->TipoDonativoDeduccion, QString());
}

TEST_F(DeductionStep, NextWritesTypeCodeAndWholePercentageIntoEachActivity)
{
    frmActividadPonderacion &form = OpenStep();
    Assign(form, QStringLiteral("2023-2024 - Comedor"), QStringLiteral("Cuota de socio - 12,5%"));
    Assign(form, QStringLiteral("2023-2024 - Transporte"), QStringLiteral("Cuota de socio - 13,5%"));
    Assign(form, QStringLiteral("2023-2024 - Inglés"), QStringLiteral("D'Aportación - 80%"));
    form.cmdSiguiente.Press();

    EXPECT_EQ(Activity(QStringLiteral("1"))->TipoDonativoDeduccion, QStringLiteral("Cuota de socio - 12,5%"));
    EXPECT_EQ(Activity(QStringLiteral("1"))->TipoDonativo, QStringLiteral("C2"));
    EXPECT_EQ(Activity(QStringLiteral("1"))->Deduccion, 12.0); // half to even
    EXPECT_EQ(Activity(QStringLiteral("2"))->Deduccion, 14.0);
    EXPECT_EQ(Activity(QStringLiteral("3"))->TipoDonativo, QStringLiteral("A3"));
    EXPECT_EQ(Activity(QStringLiteral("3"))->Deduccion, 80.0);
    EXPECT_EQ(TakeStatements(QStringLiteral("CodigoDonativo")),
              (QStringList{QStringLiteral("SELECT CodigoDonativo FROM TipoDonativos WHERE TipoDonativo='Cuota de socio'"),
                           QStringLiteral("SELECT CodigoDonativo FROM TipoDonativos WHERE TipoDonativo='Cuota de socio'"),
                           QStringLiteral("SELECT CodigoDonativo FROM TipoDonativos WHERE TipoDonativo='D''Aportación'")}));
    EXPECT_EQ(ui.OpenWindows().last(), QStringLiteral("frmActividadAlumno"));

    // Back again, the confirmed pairs are listed with their activities.
    Top<frmActividadAlumno>().cmdAnterior.Press();
    Top<frmActividadPonderacion>().cmdAnterior.Press();
    Top<frmActividadMes>().cmdAceptar.Press();
    EXPECT_EQ(Top<frmActividadPonderacion>().lstActPorc.Texts(),
              (QStringList{QStringLiteral("2023-2024 - Comedor <-> Cuota de socio - 12,5%"),
                           QStringLiteral("2023-2024 - Transporte <-> Cuota de socio - 13,5%"),
                           QStringLiteral("2023-2024 - Inglés <-> D'Aportación - 80%")}));
}

TEST_F(DeductionStep, RemovingAPairClearsTheActivityAtOnce)
{
    frmActividadPonderacion &form = OpenStep();
    Assign(form, QStringLiteral("2023-2024 - Comedor"), QStringLiteral("Donativo - 80%"));
    Assign(form, QStringLiteral("2023-2024 - Transporte"), QStringLiteral("Donativo - 80%"));
    Assign(form, QStringLiteral("2023-2024 - Inglés"), QStringLiteral("Donativo - 35%"));
    form.cmdSiguiente.Press();
    Top<frmActividadAlumno>().cmdAnterior.Press();

    Pick(form.lstActPorc, QStringLiteral("2023-2024 - Inglés <-> Donativo - 35%"));
    form.cmdEliminar.Press();
    EXPECT_EQ(form.lstActividad.Texts(), QStringList{QStringLiteral("2023-2024 - Inglés")});
    EXPECT_EQ(Activity(QStringLiteral("3"))->TipoDonativoDeduccion, QString());
    EXPECT_EQ(Activity(QStringLiteral("3"))->TipoDonativo, QString());
    EXPECT_EQ(Activity(QStringLiteral("3"))->Deduccion, 0.0);
}

TEST_F(DeductionStep, ACommunityWithPercentagesButNoneChosenBlocksTheStep)
{
    frmActividadPonderacion &form = OpenStep();
    for (const QString &a : form.lstActividad.Texts())
        Assign(form, a, QStringLiteral("Donativo - 80%"));
    form.chkComunidad.SetValue(1);
    Pick(form.cboDeduccion, QStringLiteral("10%")); // Andalucía
    TakeStatements();
    form.cmdSiguiente.Press();
    ASSERT_EQ(ui.Messages().size(), 1);
    EXPECT_EQ(ui.Messages()[0].text, QStringLiteral("Debe seleccionar una deducción para todas las comunidades autónomas"));
    EXPECT_EQ(ui.Messages()[0].icon, vbExclamation);
    EXPECT_EQ(form.cboComAut.Text(), QStringLiteral("Aragón"));
    EXPECT_TRUE(TakeStatements().contains(
        QStringLiteral("SELECT coddeduccion FROM comunidadesautonomas_deducciones WHERE codcomunidadautonoma=2")));
    EXPECT_EQ(ui.OpenWindows().last(), QStringLiteral("frmActividadPonderacion"));
}

TEST_F(DeductionStep, ACommunityWithoutPercentagesSilentlyDeclaresZero)
{
    frmActividadPonderacion &form = OpenStep();
    for (const QString &a : form.lstActividad.Texts())
        Assign(form, a, QStringLiteral("Donativo - 80%"));
    form.chkComunidad.SetValue(1);
    Pick(form.cboDeduccion, QStringLiteral("10%"));
    Pick(form.cboComAut, QStringLiteral("Aragón"));
    Pick(form.cboDeduccion, QStringLiteral("10%"));
    form.cmdSiguiente.Press();
    EXPECT_TRUE(ui.Messages().isEmpty());
    EXPECT_EQ(cursos->colComAut.Item(QStringLiteral("3"))->Valor, 0.0f);
    EXPECT_EQ(cursos->colComAut.Item(QStringLiteral("3"))->IDDeduccion, -1);
    EXPECT_EQ(ui.OpenWindows().last(), QStringLiteral("frmActividadAlumno"));
}

TEST_F(DeductionStep, WithoutTheCommunityBoxCommunitiesAreNotChecked)
{
    frmActividadPonderacion &form = OpenStep();
    for (const QString &a : form.lstActividad.Texts())
        Assign(form, a, QStringLiteral("Donativo - 80%"));
    form.cmdSiguiente.Press();
    EXPECT_TRUE(ui.Messages().isEmpty());
    EXPECT_TRUE(TakeStatements(QStringLiteral("comunidadesautonomas_deducciones")).isEmpty());
    EXPECT_EQ(cursos->colComAut.Item(QStringLiteral("3"))->Valor, -1.0f);
}

TEST_F(DeductionStep, ATypeRenamedMeanwhileLeavesTheCodeEmpty)
{
    frmActividadPonderacion &form = OpenStep();
    for (const QString &a : form.lstActividad.Texts())
        Assign(form, a, QStringLiteral("Donativo - 80%"));
    denM182::Open().Execute(QStringLiteral("UPDATE TipoDonativos SET TipoDonativo='Donación' WHERE IDTipoDonativo=1"));
    form.cmdSiguiente.Press();
    EXPECT_EQ(Activity(QStringLiteral("1"))->TipoDonativo, QString());
    EXPECT_EQ(Activity(QStringLiteral("1"))->Deduccion, 80.0);
}

TEST_F(DeductionStep, TwoActivitiesWithTheSameLabelInAYearAreBothMatchedToTheFirst)
{
    description.years[0].activities.append({8, QStringLiteral("Comedor"), 50.0});
    description.years[0].enrolments.append({201, 8, 101, 50.0, SchoolMonths()});
    // The month step matches the label to the first of the two as well, so
    // the second one gets its months from saved work.
    frmActividadPonderacion &form = OpenStep([this] { Activity(QStringLiteral("8"))->MesesPago = QStringLiteral("000000001111"); });
    ASSERT_EQ(form.lstActividad.Texts().count(QStringLiteral("2023-2024 - Comedor")), 2);
    Assign(form, QStringLiteral("2023-2024 - Comedor"), QStringLiteral("Donativo - 80%"));
    Assign(form, QStringLiteral("2023-2024 - Comedor"), QStringLiteral("Donativo - 35%"));
    for (const QString &a : form.lstActividad.Texts())
        Assign(form, a, QStringLiteral("Donativo - 80%"));
    form.cmdSiguiente.Press();
    EXPECT_EQ(Activity(QStringLiteral("1"))->TipoDonativoDeduccion, QStringLiteral("Donativo - 35%"));
    EXPECT_EQ(Activity(QStringLiteral("8"))->TipoDonativoDeduccion, QString());
}

TEST_F(DeductionStep, SavedWorkDecidesTheCommunityBoxOnce)
{
    description.savedWork.activities.append(
        {3, QStringLiteral("2023-2024"), QString(), 1, QStringLiteral("Comedor"), 80, QStringLiteral("D1"),
         QStringLiteral("Donativo - 80%"), QStringLiteral("111111001111"), true});
    Install();
    // What the reload of saved work leaves behind.
    SelectYears({});
    Top<frmSelCursos>().blnCargarDatosComAut = true;
    Top<frmSelCursos>().cmdCancelar.Press();
    cursos = nullptr;

    frmActividadPonderacion &form = OpenStep();
    (void)form;
    // A new wizard run starts with the flag cleared, so the box stays clear.
    EXPECT_EQ(Top<frmActividadPonderacion>().chkComunidad.Value(), 0);
    EXPECT_TRUE(TakeStatements(QStringLiteral("DeducComAut")).isEmpty());

    Top<frmActividadPonderacion>().cmdAnterior.Press();
    cursos->blnCargarDatosComAut = true;
    Top<frmActividadMes>().cmdAceptar.Press();
    frmActividadPonderacion &again = Top<frmActividadPonderacion>();
    EXPECT_EQ(again.chkComunidad.Value(), 1);
    EXPECT_TRUE(again.cboComAut.Enabled());
    EXPECT_FALSE(cursos->blnCargarDatosComAut);
    EXPECT_EQ(TakeStatements(QStringLiteral("DeducComAut")), QStringList{QStringLiteral("SELECT DeducComAut FROM CursoEscAct")});
}

TEST_F(DeductionStep, UnloadClosesTheDeclarationConnection)
{
    frmActividadPonderacion &form = OpenStep();
    EXPECT_EQ(denM182::conM182().State(), Connection::adStateOpen);
    form.cmdAnterior.Press();
    EXPECT_EQ(denM182::conM182().State(), Connection::adStateClosed);
}

TEST_F(DeductionStep, TheCatalogueIsReadWithTheExactStatements)
{
    Install();
    frmActividadPonderacion &form = OpenStep();
    (void)form;
    form.cmdAnterior.Press();
    Top<frmActividadMes>().cmdAceptar.Press();
    EXPECT_EQ(TakeStatements(QStringLiteral("Comunidades")),
              QStringList{QStringLiteral("SELECT idcomunidadautonoma, comunidadautonoma FROM ComunidadesAutonomas")});
}
