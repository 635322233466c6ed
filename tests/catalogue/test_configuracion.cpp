#include "CatalogueFixture.h"

#include "catalogue/frmConfiguracion.h"
#include "wizard/frmActividadPonderacion.h"
#include "wizard/frmSelCursos.h"

namespace {
const QString kInUse = "El porcentaje a eliminar está seleccionado en el modelo 182, no puede ser eliminado";
const QString kStepCommunities = "SELECT idcomunidadautonoma, comunidadautonoma FROM ComunidadesAutonomas";
const QString kStepPairs =
    "SELECT TipoDonativo, Deduccion FROM TipoDonativos INNER JOIN (TipoDonativos_Deducciones INNER JOIN Deducciones "
    "ON TipoDonativos_Deducciones.codDeduccion=Deducciones.IDDeduccion) ON "
    "TipoDonativos.idTipoDonativo=TipoDonativos_Deducciones.codTipoDonativo";
} // namespace

class Configuration : public CatalogueFixture
{
protected:
    void AddCommunityLink(frmConfiguracion &form, const QString &community, const QString &percentage)
    {
        Pick(form.cboComAut, community);
        Pick(form.cboPorc, percentage);
        form.cmdAnadirComPor.Press();
    }
    void AddTypeLink(frmConfiguracion &form, const QString &type, const QString &percentage)
    {
        Pick(form.cboTipo, type);
        Pick(form.cboDeduccion, percentage);
        form.cmdAnadirTPor.Press();
    }
    void RemoveCommunityLink(frmConfiguracion &form, const QString &community, const QString &entry)
    {
        Pick(form.cboComAut, community);
        Pick(form.lstComAut, entry);
        form.cmdEliminarComPor.Press();
    }
    void RemoveTypeLink(frmConfiguracion &form, const QString &type, const QString &entry)
    {
        Pick(form.cboTipo, type);
        Pick(form.lstDeducPorc, entry);
        form.cmdElimTPor.Press();
    }
};

TEST_F(Configuration, OpensOverTheDeductionStepWithTheCatalogueAndItsLinks)
{
    frmActividadPonderacion &paso = OpenStep();
    ASSERT_TRUE(paso.cmdConfigurar.Enabled());
    frmConfiguracion &form = OpenConfiguration();
    EXPECT_EQ(form.Caption(), "Configuración de Deducciones");
    EXPECT_EQ(ui.OpenWindows().mid(3), (QStringList{"frmActividadPonderacion", "frmConfiguracion"}));
    EXPECT_EQ(TakeStatements(),
              (QStringList{"SELECT IDComunidadAutonoma, ComunidadAutonoma FROM ComunidadesAutonomas",
                           "SELECT IDTipoDonativo, TipoDonativo FROM TipoDonativos",
                           "SELECT IDDeduccion, Deduccion FROM Deducciones",
                           "SELECT codTipoDonativo, codDeduccion, Deduccion FROM TipoDonativos_Deducciones INNER JOIN "
                           "Deducciones ON Deducciones.IDDeduccion=TipoDonativos_Deducciones.codDeduccion",
                           "SELECT codComunidadAutonoma, codDeduccion, Deduccion FROM ComunidadesAutonomas_Deducciones "
                           "INNER JOIN Deducciones ON "
                           "Deducciones.IDDeduccion=ComunidadesAutonomas_Deducciones.codDeduccion"}));
    EXPECT_EQ(form.cboComAut.Texts(), (QStringList{"Andalucía", "Aragón", "Ceuta"}));
    EXPECT_EQ(form.cboTipo.Texts(), (QStringList{"Donativo", "Cuota de socio", "D'Aportación"}));
    // Percentages in the user's format, without "%", in both combos.
    const QStringList percentages{"80", "35", "13,5", "10", "15"};
    EXPECT_EQ(form.cboPorc.Texts(), percentages);
    EXPECT_EQ(form.cboDeduccion.Texts(), percentages);
    EXPECT_EQ(std::tuple(form.cboComAut.ItemData(2), form.cboTipo.ItemData(1), form.cboPorc.ItemData(2),
                         form.cboDeduccion.ItemData(4)),
              std::tuple(3, 2, 3, 5));
    EXPECT_EQ(form.lstComAut.ListCount() + form.lstDeducPorc.ListCount(), 0);
    for (const auto &link : form.ComunidadesDeducciones().Items().Items())
        EXPECT_EQ(link->Estado, cConstCol().NoModificado());

    Pick(form.cboComAut, "Andalucía");
    EXPECT_EQ(form.lstComAut.Texts(), (QStringList{"Andalucía <-> 10", "Andalucía <-> 15"}));
    Pick(form.cboComAut, "Ceuta");
    EXPECT_EQ(form.lstComAut.Texts(), QStringList());
    Pick(form.cboTipo, "Cuota de socio");
    EXPECT_EQ(form.lstDeducPorc.Texts(), QStringList{"Cuota de socio <-> 13,5"});
    Pick(form.cboTipo, "Donativo");
    EXPECT_EQ(form.lstDeducPorc.Texts(), (QStringList{"Donativo <-> 80", "Donativo <-> 35"}));
    EXPECT_TRUE(ui.Messages().isEmpty());
}

TEST_F(Configuration, AddingNeedsBothChoicesAndRefusesAPairAlreadyLinked)
{
    frmConfiguracion &form = OpenConfiguration();
    struct Case
    {
        std::function<void()> act;
        QString message;
        int icon;
    };
    const QList<Case> cases{
        {[&] { form.cmdAnadirComPor.Press(); }, "Debe seleccionar una comunidad autónoma y un porcentaje", vbExclamation},
        {[&] {
             Pick(form.cboComAut, "Aragón");
             form.cmdAnadirComPor.Press();
         },
         "Debe seleccionar una comunidad autónoma y un porcentaje", vbExclamation},
        {[&] {
             Pick(form.cboPorc, "10");
             form.cmdAnadirComPor.Press();
         },
         "Ya existe para esta comunidad autónoma ese porcentaje", vbInformation},
        {[&] { form.cmdAnadirTPor.Press(); }, "Debe seleccionar un tipo de donativo y un porcentaje", vbExclamation},
        {[&] {
             Pick(form.cboDeduccion, "35");
             form.cmdAnadirTPor.Press();
         },
         "Debe seleccionar un tipo de donativo y un porcentaje", vbExclamation},
        {[&] { AddTypeLink(form, "Donativo", "35"); }, "Ya existe para este donativo ese porcentaje", vbInformation},
        {[&] { form.cmdEliminarComPor.Press(); }, "Debe seleccionar algún dato", vbExclamation},
        {[&] { form.cmdElimTPor.Press(); }, "Debe seleccionar algún dato", vbExclamation},
    };
    for (const Case &c : cases) {
        ui.ClearLog();
        c.act();
        ExpectOnlyMessage(c.message, c.icon);
    }
    EXPECT_EQ(form.lstComAut.Texts(), QStringList{"Aragón <-> 10"});
    EXPECT_EQ(form.lstDeducPorc.Texts(), (QStringList{"Donativo <-> 80", "Donativo <-> 35"}));
    EXPECT_EQ(form.ComunidadesDeducciones().Items().Count() + form.TiposDeducciones().Items().Count(), 7);
}

TEST_F(Configuration, AcceptWritesTheChangedLinksCommunitiesFirstAndRefillsTheStep)
{
    frmConfiguracion &form = OpenConfiguration();
    AddTypeLink(form, "Cuota de socio", "80");
    AddCommunityLink(form, "Ceuta", "35");
    RemoveCommunityLink(form, "Andalucía", "Andalucía <-> 10");
    RemoveTypeLink(form, "Donativo", "Donativo <-> 35");
    AddCommunityLink(form, "Aragón", "13,5");
    EXPECT_EQ(form.lstComAut.Texts(), (QStringList{"Aragón <-> 10", "Aragón <-> 13,5"}));
    EXPECT_EQ(form.lstDeducPorc.Texts(), QStringList{"Donativo <-> 80"});
    EXPECT_TRUE(ui.Messages().isEmpty());
    TakeStatements();
    form.cmdAceptar.Press();
    EXPECT_EQ(TakeStatements(),
              (QStringList{"DELETE FROM ComunidadesAutonomas_Deducciones WHERE coddeduccion=4 AND codComunidadAutonoma=1",
                           "INSERT INTO ComunidadesAutonomas_Deducciones VALUES (3,2)",
                           "INSERT INTO ComunidadesAutonomas_Deducciones VALUES (2,3)",
                           "DELETE FROM TipoDonativos_Deducciones WHERE coddeduccion=2 AND codTipoDonativo=1",
                           "INSERT INTO TipoDonativos_Deducciones VALUES (2,1)", kStepCommunities, kStepPairs}));
    EXPECT_EQ(CommunityLinkRows(), (QStringList{"1-5", "2-3", "2-4", "3-2"}));
    EXPECT_EQ(TypeLinkRows(), (QStringList{"1-1", "2-1", "2-3", "3-1"}));
    EXPECT_EQ(ui.OpenWindows().last(), "frmActividadPonderacion");
    QStringList pairs = step->cboTipoPorcentaje.Texts();
    std::sort(pairs.begin(), pairs.end());
    EXPECT_EQ(pairs,
              (QStringList{"Cuota de socio - 13,5%", "Cuota de socio - 80%", "D'Aportación - 80%", "Donativo - 80%"}));
    EXPECT_TRUE(ui.Messages().isEmpty());
}

TEST_F(Configuration, ALinkAddedThenRemovedOrRemovedThenAddedBackWritesNothing)
{
    frmConfiguracion &form = OpenConfiguration();
    AddCommunityLink(form, "Ceuta", "80");
    RemoveCommunityLink(form, "Ceuta", "Ceuta <-> 80");
    AddTypeLink(form, "D'Aportación", "13,5");
    RemoveTypeLink(form, "D'Aportación", "D'Aportación <-> 13,5");
    RemoveCommunityLink(form, "Andalucía", "Andalucía <-> 15");
    EXPECT_EQ(form.lstComAut.Texts(), QStringList{"Andalucía <-> 10"});
    AddCommunityLink(form, "Andalucía", "15");
    RemoveTypeLink(form, "Donativo", "Donativo <-> 80");
    AddTypeLink(form, "Donativo", "80");
    EXPECT_EQ(form.lstComAut.Texts(), (QStringList{"Andalucía <-> 10", "Andalucía <-> 15"}));
    EXPECT_EQ(form.lstDeducPorc.Texts(), (QStringList{"Donativo <-> 35", "Donativo <-> 80"}));
    EXPECT_TRUE(ui.Messages().isEmpty());
    // The new links are gone, the stored ones back as they were read.
    EXPECT_EQ(form.ComunidadesDeducciones().Items().Count(), 3);
    EXPECT_EQ(form.TiposDeducciones().Items().Count(), 4);
    for (const auto &link : form.ComunidadesDeducciones().Items().Items())
        EXPECT_EQ(link->Estado, cConstCol().NoModificado());
    for (const auto &link : form.TiposDeducciones().Items().Items())
        EXPECT_EQ(link->Estado, cConstCol().NoModificado());
    TakeStatements();
    form.cmdAceptar.Press();
    EXPECT_EQ(TakeWrites(), QStringList());
    EXPECT_EQ(std::tuple(CommunityLinkRows(), TypeLinkRows()), std::tuple(kStoredCommunityLinks, kStoredTypeLinks));
}

TEST_F(Configuration, AcceptingNoChangeSendsNoWriteButRefillsTheStepsCombos)
{
    frmActividadPonderacion &paso = OpenStep();
    paso.chkComunidad.SetValue(1); // Andalucía shown with its percentages
    ASSERT_EQ(paso.cboDeduccion.Texts(), (QStringList{"10%", "15%"}));
    frmConfiguracion &form = OpenConfiguration();
    TakeStatements();
    form.cmdAceptar.Press();
    EXPECT_EQ(TakeStatements(), (QStringList{kStepCommunities, kStepPairs}));
    EXPECT_EQ(paso.cboDeduccion.ListCount(), 0); // until a community is chosen again
    EXPECT_EQ(std::tuple(paso.cboComAut.Texts(), paso.cboComAut.ListIndex(), paso.cboTipoPorcentaje.ListCount()),
              std::tuple(QStringList{"Andalucía", "Aragón", "Ceuta"}, -1, 4));
    EXPECT_EQ(ui.OpenWindows().last(), "frmActividadPonderacion");
}

TEST_F(Configuration, CancelWritesNothingAndLeavesTheStepAsItWas)
{
    frmActividadPonderacion &paso = OpenStep();
    paso.chkComunidad.SetValue(1);
    frmConfiguracion &form = OpenConfiguration();
    AddCommunityLink(form, "Ceuta", "80");
    RemoveTypeLink(form, "Donativo", "Donativo <-> 80");
    TakeStatements();
    form.cmdCancelar.Press();
    EXPECT_EQ(TakeStatements(), QStringList());
    EXPECT_EQ(std::tuple(CommunityLinkRows(), TypeLinkRows()), std::tuple(kStoredCommunityLinks, kStoredTypeLinks));
    EXPECT_EQ(paso.cboDeduccion.Texts(), (QStringList{"10%", "15%"}));
    EXPECT_EQ(ui.OpenWindows().last(), "frmActividadPonderacion");
}

TEST_F(Configuration, APercentageChosenForACommunityCannotBeRemovedUntilUnchosen)
{
    frmActividadPonderacion &paso = OpenStep();
    paso.chkComunidad.SetValue(1);
    Pick(paso.cboDeduccion, "15%"); // Andalucía
    frmConfiguracion &form = OpenConfiguration();
    RemoveCommunityLink(form, "Andalucía", "Andalucía <-> 15");
    ExpectOnlyMessage(kInUse);
    EXPECT_EQ(form.lstComAut.Texts(), (QStringList{"Andalucía <-> 10", "Andalucía <-> 15"}));
    // Aragón's 10 is not chosen there: it goes.
    ui.ClearLog();
    RemoveCommunityLink(form, "Aragón", "Aragón <-> 10");
    EXPECT_TRUE(ui.Messages().isEmpty());
    form.cmdCancelar.Press();

    Pick(paso.cboComAut, "Andalucía");
    Pick(paso.cboDeduccion, "10%");
    frmConfiguracion &again = OpenConfiguration();
    RemoveCommunityLink(again, "Andalucía", "Andalucía <-> 10");
    ExpectOnlyMessage(kInUse);
    ui.ClearLog();
    RemoveCommunityLink(again, "Andalucía", "Andalucía <-> 15");
    EXPECT_TRUE(ui.Messages().isEmpty());
    TakeStatements();
    again.cmdAceptar.Press();
    EXPECT_EQ(TakeWrites(),
              QStringList{"DELETE FROM ComunidadesAutonomas_Deducciones WHERE coddeduccion=5 AND codComunidadAutonoma=1"});
}

TEST_F(Configuration, APairAssignedToAnActivityCannotBeRemovedUntilUnassigned)
{
    frmActividadPonderacion &paso = OpenStep();
    Pick(paso.lstActividad, "2023-2024 - Comedor");
    Pick(paso.cboTipoPorcentaje, "Cuota de socio - 13,5%");
    paso.cmdAnadir.Press();
    frmConfiguracion &form = OpenConfiguration();
    RemoveTypeLink(form, "Cuota de socio", "Cuota de socio <-> 13,5");
    ExpectOnlyMessage(kInUse);
    EXPECT_EQ(form.lstDeducPorc.Texts(), QStringList{"Cuota de socio <-> 13,5"});
    ui.ClearLog();
    RemoveTypeLink(form, "Donativo", "Donativo <-> 80"); // not assigned
    EXPECT_TRUE(ui.Messages().isEmpty());
    form.cmdCancelar.Press();

    Pick(paso.lstActPorc, "2023-2024 - Comedor <-> Cuota de socio - 13,5%");
    paso.cmdEliminar.Press();
    frmConfiguracion &again = OpenConfiguration();
    RemoveTypeLink(again, "Cuota de socio", "Cuota de socio <-> 13,5");
    EXPECT_TRUE(ui.Messages().isEmpty());
    TakeStatements();
    again.cmdAceptar.Press();
    EXPECT_EQ(TakeWrites(), QStringList{"DELETE FROM TipoDonativos_Deducciones WHERE coddeduccion=3 AND codTipoDonativo=2"});
}
