#include "WizardFixture.h"

#include "data/Connection.h"
#include "wizard/frmActividadAlumno.h"
#include "wizard/frmActividadMes.h"
#include "wizard/frmActividadPonderacion.h"
#include "wizard/frmSelActividad.h"
#include "wizard/frmSelCursos.h"

#include <algorithm>
#include <functional>

class DeductionStep : public WizardFixture
{
protected:
    void Install()
    {
        WizardFixture::Install();
        // A catalogue of known rows instead of the shipped one.
        Connection m182;
        m182.Open(paths.modelo182ConnectionString);
        for (const char *sql :
             {"DELETE FROM TipoDonativos_Deducciones", "DELETE FROM ComunidadesAutonomas_Deducciones",
              "DELETE FROM Provincias", "DELETE FROM TipoDonativos", "DELETE FROM Deducciones",
              "DELETE FROM ComunidadesAutonomas",
              "INSERT INTO ComunidadesAutonomas (IDComunidadAutonoma, ComunidadAutonoma, CodigoComunidadAutonoma) "
              "VALUES (1, 'Andalucía', '01'), (2, 'Aragón', '02'), (3, 'Ceuta', '00')",
              "INSERT INTO Deducciones (IDDeduccion, Deduccion) VALUES (1, 80), (2, 35), (3, 12.5), (4, 13.5), (5, 10), (6, "
              "15)",
              "INSERT INTO TipoDonativos (IDTipoDonativo, TipoDonativo, CodigoDonativo) "
              "VALUES (1, 'Donativo', 'D1'), (2, 'Cuota de socio', 'C2'), (3, 'D''Aportación', 'A3')",
              "INSERT INTO TipoDonativos_Deducciones VALUES (1, 1), (1, 2), (2, 3), (2, 4), (3, 1)",
              "INSERT INTO ComunidadesAutonomas_Deducciones VALUES (1, 5), (1, 6), (2, 5)"})
            m182.Execute(QString::fromUtf8(sql));
        statements.clear();
    }

    // 2023-2024 with all its activities and all their months.
    frmActividadPonderacion &OpenStep(const std::function<void()> &beforeMonthsNext = {})
    {
        if (!addin)
            Install();
        cursos = &SelectYears({"2023-2024"});
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
        return cursos->colCursosEscolares.Item("3")->colActividades.Item(id);
    }
    std::shared_ptr<cComAut> Community(const QString &id) const { return cursos->colComAut.Item(id); }
    void Assign(frmActividadPonderacion &form, const QString &activity, const QString &pair)
    {
        Pick(form.lstActividad, activity);
        Pick(form.cboTipoPorcentaje, pair);
        form.cmdAnadir.Press();
    }
    void AssignAll(frmActividadPonderacion &form, const QString &pair = "Donativo - 80%")
    {
        for (const QString &activity : form.lstActividad.Texts())
            Assign(form, activity, pair);
    }
    frmSelCursos *cursos = nullptr;
};

TEST_F(DeductionStep, LoadListsActivitiesPairsAndCommunitiesOnce)
{
    frmActividadPonderacion &form = OpenStep();
    EXPECT_EQ(form.Caption(), "Selección de porcentajes de deducciones");
    EXPECT_EQ(form.lstActividad.Texts(),
              (QStringList{"2023-2024 - Comedor", "2023-2024 - Transporte", "2023-2024 - Inglés"}));
    QStringList pairs = form.cboTipoPorcentaje.Texts();
    std::sort(pairs.begin(), pairs.end());
    EXPECT_EQ(pairs, (QStringList{"Cuota de socio - 12,5%", "Cuota de socio - 13,5%", "D'Aportación - 80%", "Donativo - 35%",
                                  "Donativo - 80%"})); // the user's decimal comma
    EXPECT_EQ(form.cboComAut.Texts(), (QStringList{"Andalucía", "Aragón", "Ceuta"}));
    EXPECT_EQ(form.cboComAut.ItemData(2), 3);
    EXPECT_FALSE(form.cboComAut.Enabled() || form.cboDeduccion.Enabled());
    EXPECT_EQ(cursos->colComAut.Keys(), (QStringList{"1", "2", "3"}));
    EXPECT_EQ(Community("1")->IDDeduccion, -1);
    EXPECT_EQ(Community("1")->Valor, -1.0f);

    // The collection outlives the window: a chosen percentage is there on the next visit.
    form.chkComunidad.SetValue(1);
    Pick(form.cboDeduccion, "15%");
    TakeStatements();
    form.cmdAnterior.Press();
    Top<frmActividadMes>().cmdAceptar.Press();
    EXPECT_EQ(TakeStatements("Comunidades"),
              QStringList{"SELECT idcomunidadautonoma, comunidadautonoma FROM ComunidadesAutonomas"});
    EXPECT_EQ(cursos->colComAut.Count(), 3);
    EXPECT_EQ(Community("1")->IDDeduccion, 6);
    EXPECT_EQ(Community("1")->Valor, 15.0f);
}

TEST_F(DeductionStep, TheCommunityBoxEnablesTheCombosAndEachCommunityShowsItsChoice)
{
    frmActividadPonderacion &form = OpenStep();
    form.chkComunidad.SetValue(1);
    EXPECT_TRUE(form.cboComAut.Enabled() && form.cboDeduccion.Enabled());
    EXPECT_EQ(form.cboComAut.ListIndex(), 0);
    EXPECT_EQ(form.cboDeduccion.Texts(), (QStringList{"10%", "15%"}));
    EXPECT_EQ(form.cboDeduccion.ItemData(1), 6);
    EXPECT_EQ(form.cboDeduccion.ListIndex(), -1);
    EXPECT_EQ(TakeStatements("Deducciones"),
              QStringList{
                  "SELECT IDDeduccion,Deduccion FROM ComunidadesAutonomas_Deducciones INNER JOIN Deducciones ON "
                  "ComunidadesAutonomas_Deducciones.codDeduccion=Deducciones.IDDeduccion WHERE codComunidadAutonoma=1"});
    Pick(form.cboComAut, "Aragón");
    Pick(form.cboDeduccion, "10%");
    EXPECT_EQ(Community("2")->IDDeduccion, 5);
    EXPECT_EQ(Community("2")->Valor, 10.0f);
    Pick(form.cboComAut, "Andalucía");
    EXPECT_EQ(form.cboDeduccion.ListIndex(), -1);
    Pick(form.cboComAut, "Aragón");
    EXPECT_EQ(form.cboDeduccion.Text(), "10%");
    form.chkComunidad.SetValue(0);
    EXPECT_FALSE(form.cboComAut.Enabled() || form.cboDeduccion.Enabled());
}

TEST_F(DeductionStep, AddingAndRemovingNeedASelection)
{
    frmActividadPonderacion &form = OpenStep();
    form.cmdAnadir.Press();
    Pick(form.lstActividad, "2023-2024 - Comedor");
    form.cmdAnadir.Press(); // no pair chosen
    form.cmdEliminar.Press();
    EXPECT_EQ(ui.MessageTexts(), (QStringList{"Seleccione una actividad", "Seleccione una actividad",
                                              "Seleccione una actividad con su deducción a eliminar"}));
    for (const auto &message : ui.Messages())
        EXPECT_TRUE(message.icon == vbExclamation && message.beeped);
    EXPECT_EQ(form.lstActividad.ListCount(), 3);
}

TEST_F(DeductionStep, AnAssignmentReachesTheActivityOnlyWithNext)
{
    frmActividadPonderacion &form = OpenStep();
    Assign(form, "2023-2024 - Transporte", "Donativo - 80%");
    EXPECT_EQ(form.lstActPorc.Texts(), QStringList{"2023-2024 - Transporte <-> Donativo - 80%"});
    EXPECT_EQ(form.lstActividad.Texts(), (QStringList{"2023-2024 - Comedor", "2023-2024 - Inglés"}));
    form.cmdSiguiente.Press();
    ExpectOnlyMessage("Seleccione un porcentaje de deducción para todas las actividades");
    EXPECT_EQ(Activity("2")->TipoDonativoDeduccion, "");
    form.cmdAnterior.Press(); // unconfirmed assignments are lost on the way back
    Top<frmActividadMes>().cmdAceptar.Press();
    EXPECT_EQ(Top<frmActividadPonderacion>().lstActPorc.ListCount(), 0);
}

TEST_F(DeductionStep, NextWritesTypeCodeAndWholePercentageIntoEachActivity)
{
    frmActividadPonderacion &form = OpenStep();
    Assign(form, "2023-2024 - Comedor", "Cuota de socio - 12,5%");
    Assign(form, "2023-2024 - Transporte", "Cuota de socio - 13,5%");
    Assign(form, "2023-2024 - Inglés", "D'Aportación - 80%");
    form.cmdSiguiente.Press();
    EXPECT_EQ(Activity("1")->TipoDonativoDeduccion, "Cuota de socio - 12,5%");
    EXPECT_EQ(Activity("1")->TipoDonativo, "C2");
    EXPECT_EQ(Activity("1")->Deduccion, 12.0); // half to even
    EXPECT_EQ(Activity("2")->Deduccion, 14.0);
    EXPECT_EQ(Activity("3")->TipoDonativo, "A3");
    EXPECT_EQ(Activity("3")->Deduccion, 80.0);
    EXPECT_EQ(TakeStatements("CodigoDonativo"),
              (QStringList{"SELECT CodigoDonativo FROM TipoDonativos WHERE TipoDonativo='Cuota de socio'",
                           "SELECT CodigoDonativo FROM TipoDonativos WHERE TipoDonativo='Cuota de socio'",
                           "SELECT CodigoDonativo FROM TipoDonativos WHERE TipoDonativo='D''Aportación'"}));
    EXPECT_EQ(ui.OpenWindows().last(), "frmActividadAlumno");

    // Back again, confirmed pairs are listed; removing one clears its activity at once.
    Top<frmActividadAlumno>().cmdAnterior.Press();
    Pick(form.lstActPorc, "2023-2024 - Inglés <-> D'Aportación - 80%");
    form.cmdEliminar.Press();
    EXPECT_EQ(form.lstActividad.Texts(), QStringList{"2023-2024 - Inglés"});
    EXPECT_EQ(Activity("3")->TipoDonativoDeduccion + Activity("3")->TipoDonativo, "");
    EXPECT_EQ(Activity("3")->Deduccion, 0.0);
}

TEST_F(DeductionStep, CommunitiesAreCheckedOnlyWithTheBoxTicked)
{
    frmActividadPonderacion &form = OpenStep();
    AssignAll(form);
    form.chkComunidad.SetValue(1);
    Pick(form.cboDeduccion, "10%"); // Andalucía; Aragón has percentages but none chosen
    TakeStatements();
    form.cmdSiguiente.Press();
    ExpectOnlyMessage("Debe seleccionar una deducción para todas las comunidades autónomas");
    EXPECT_EQ(form.cboComAut.Text(), "Aragón");
    EXPECT_TRUE(
        TakeStatements().contains("SELECT coddeduccion FROM comunidadesautonomas_deducciones WHERE codcomunidadautonoma=2"));

    form.chkComunidad.SetValue(0); // not ticked: nothing is checked, -1 stays
    form.cmdSiguiente.Press();
    EXPECT_TRUE(TakeStatements("comunidadesautonomas_deducciones").isEmpty());
    EXPECT_EQ(Community("3")->Valor, -1.0f);
    Top<frmActividadAlumno>().cmdAnterior.Press();

    form.chkComunidad.SetValue(1); // Ceuta has no percentage: it declares 0 without asking
    Pick(form.cboComAut, "Aragón");
    Pick(form.cboDeduccion, "10%");
    ui.ClearLog();
    form.cmdSiguiente.Press();
    EXPECT_TRUE(ui.Messages().isEmpty());
    EXPECT_EQ(Community("3")->Valor, 0.0f);
    EXPECT_EQ(Community("3")->IDDeduccion, -1);
}

TEST_F(DeductionStep, ATypeRenamedMeanwhileLeavesTheCodeEmpty)
{
    frmActividadPonderacion &form = OpenStep();
    AssignAll(form);
    run().OpenM182().Execute("UPDATE TipoDonativos SET TipoDonativo='Donación' WHERE IDTipoDonativo=1");
    form.cmdSiguiente.Press();
    EXPECT_EQ(Activity("1")->TipoDonativo, "");
    EXPECT_EQ(Activity("1")->Deduccion, 80.0);
}

TEST_F(DeductionStep, TwoActivitiesWithTheSameLabelInAYearAreBothMatchedToTheFirst)
{
    description.years[0].activities.append({8, "Comedor", 50.0});
    description.years[0].enrolments.append({201, 8, 101, 50.0, SchoolMonths()});
    // The month step matches the label to the first too; the second gets its months from saved work.
    frmActividadPonderacion &form = OpenStep([this] { Activity("8")->MesesPago = "000000001111"; });
    Assign(form, "2023-2024 - Comedor", "Donativo - 80%");
    Assign(form, "2023-2024 - Comedor", "Donativo - 35%");
    AssignAll(form);
    form.cmdSiguiente.Press();
    EXPECT_EQ(Activity("1")->TipoDonativoDeduccion, "Donativo - 35%");
    EXPECT_EQ(Activity("8")->TipoDonativoDeduccion, "");
}

TEST_F(DeductionStep, SavedWorkSetsTheCommunityBoxOnce)
{
    description.savedWork.activities.append(
        {3, "2023-2024", "", 1, "Comedor", 80, "D1", "Donativo - 80%", "111111001111", true});
    frmActividadPonderacion &form = OpenStep();
    EXPECT_EQ(form.chkComunidad.Value(), 0); // the flag is down: saved work is not read
    form.cmdAnterior.Press();
    cursos->blnCargarDatosComAut = true; // as the reload of saved work leaves it
    Top<frmActividadMes>().cmdAceptar.Press();
    EXPECT_EQ(Top<frmActividadPonderacion>().chkComunidad.Value(), 1);
    EXPECT_TRUE(Top<frmActividadPonderacion>().cboComAut.Enabled());
    EXPECT_FALSE(cursos->blnCargarDatosComAut);
    EXPECT_EQ(TakeStatements("DeducComAut"), QStringList{"SELECT DeducComAut FROM CursoEscAct"});
}

TEST_F(DeductionStep, UnloadClosesTheDeclarationConnection)
{
    OpenStep();
    EXPECT_EQ(run().conM182().State(), Connection::adStateOpen);
    Top<frmActividadPonderacion>().cmdAnterior.Press();
    EXPECT_EQ(run().conM182().State(), Connection::adStateClosed);
}

// What the host's data and the catalogue dialogs allow must never be lost in
// silence: a type name holding " - ", activity names holding " <-> " or
// ending in blanks, a community the collection does not hold.
TEST_F(DeductionStep, UnusualNamesKeepTheirPairsOrAreRefusedByName)
{
    description.years[0].activities = {{1, "Comedor <-> tarde", 90.0}, {2, "Transporte   ", 40.0}, {3, "Comedor", 30.0}};
    frmActividadPonderacion &form = OpenStep();
    AssignAll(form, "Cuota de socio - 12,5%");
    form.cmdSiguiente.Press();
    EXPECT_TRUE(ui.MessageTexts().isEmpty()) << ui.MessageTexts().join('\n').toStdString();
    for (const char *id : {"1", "2", "3"}) {
        EXPECT_EQ(Activity(id)->TipoDonativoDeduccion, "Cuota de socio - 12,5%") << id;
        EXPECT_EQ(Activity(id)->Deduccion, 12) << id; // rounded half to even
    }
    Top<frmActividadAlumno>().cmdAnterior.Press();
    Pick(form.lstActPorc, "2023-2024 - Comedor <-> tarde <-> Cuota de socio - 12,5%");
    form.cmdEliminar.Press();
    EXPECT_EQ(form.lstActividad.Texts(), QStringList{"2023-2024 - Comedor <-> tarde"});
    EXPECT_EQ(Activity("1")->TipoDonativoDeduccion, "");
    EXPECT_EQ(Activity("3")->TipoDonativoDeduccion, "Cuota de socio - 12,5%");

    // A type the catalogue dialogs let through with " - " in its name.
    run().OpenM182().Execute("INSERT INTO TipoDonativos (IDTipoDonativo, TipoDonativo, CodigoDonativo) "
                             "VALUES (4, 'Donativo - extra', 'D4')");
    run().OpenM182().Execute("INSERT INTO TipoDonativos_Deducciones VALUES (4, 1)");
    form.LoadCatalogues();
    Assign(form, "2023-2024 - Comedor <-> tarde", "Donativo - extra - 80%");
    ui.ClearLog();
    form.cmdSiguiente.Press();
    ExpectOnlyMessage("No se puede leer el porcentaje de la actividad «2023-2024 - Comedor <-> tarde» en «Donativo - "
                      "extra - 80%». Cambie el nombre del tipo de donativo para que no contenga « - » y vuelva a "
                      "asignarlo.");
    EXPECT_EQ(ui.OpenWindows().last(), "frmActividadPonderacion");
    EXPECT_EQ(Activity("1")->TipoDonativoDeduccion, ""); // nothing written
}

TEST_F(DeductionStep, AChoiceForACommunityTheCollectionLacksGetsItsOwnRecord)
{
    frmActividadPonderacion &form = OpenStep();
    cursos->colComAut.Remove("2"); // a collection rebuilt from older saved work
    form.chkComunidad.SetValue(1);
    Pick(form.cboComAut, "Aragón");
    Pick(form.cboDeduccion, "10%");
    ASSERT_TRUE(cursos->colComAut.Contains("2"));
    EXPECT_EQ(std::tuple(Community("2")->IDDeduccion, Community("2")->Valor, Community("2")->Estado),
              std::tuple(qint16(5), 10.0f, quint8(1)));
}
