#include "CatalogueFixture.h"

#include "data/DatabaseError.h"
#include "wizard/frmActividadPonderacion.h"

// A database that fails at the k-th statement sent after the observer is
// set: the statement is refused before it runs, as a broken file would.
struct FailAtStatement
{
    int k;
    std::shared_ptr<int> seen = std::make_shared<int>(0);
    void operator()(const Connection &, const QString &sql) const
    {
        if (++*seen == k)
            throw DatabaseError(QStringLiteral("No se puede escribir en la base de datos."), sql, "disk I/O error");
    }
};

class AcceptFailure : public CatalogueFixture
{
protected:
    // Two changes of each kind: four statements.
    frmConfiguracion &ChangeLinks()
    {
        frmConfiguracion &form = OpenConfiguration();
        Pick(form.cboComAut, "Ceuta");
        Pick(form.cboPorc, "80");
        form.cmdAnadirComPor.Press();
        Pick(form.cboComAut, "Aragón");
        Pick(form.lstComAut, "Aragón <-> 10");
        form.cmdEliminarComPor.Press();
        Pick(form.cboTipo, "D'Aportación");
        Pick(form.cboDeduccion, "35");
        form.cmdAnadirTPor.Press();
        Pick(form.cboTipo, "Donativo");
        Pick(form.lstDeducPorc, "Donativo <-> 35");
        form.cmdElimTPor.Press();
        return form;
    }
};

TEST_F(AcceptFailure, AFailureAtAnyStatementKeepsNoneAndSaysSo)
{
    const int writes = 4;
    for (int k = 1; k <= writes; ++k) {
        frmConfiguracion &form = ChangeLinks();
        ui.ClearLog();
        run().SetStatementObserver(FailAtStatement{k});
        form.cmdAceptar.Press();
        run().SetStatementObserver([this](const Connection &, const QString &sql) { statements << sql; });

        ASSERT_EQ(ui.Messages().size(), 1) << "k=" << k;
        const TestUi::Message &message = ui.Messages()[0];
        EXPECT_TRUE(message.text.startsWith("No se han podido guardar los cambios de la configuración de deducciones y "
                                            "no se ha guardado ninguno. No se puede escribir en la base de datos."))
            << message.text.toStdString();
        EXPECT_TRUE(message.text.contains("«Cancelar»"));
        EXPECT_EQ(std::tuple(message.icon, message.beeped), std::tuple(int(vbCritical), true));
        EXPECT_EQ(std::tuple(CommunityLinkRows(), TypeLinkRows()), std::tuple(kStoredCommunityLinks, kStoredTypeLinks))
            << "k=" << k;
        // The window stays with the changes, the step's lists untouched.
        EXPECT_EQ(ui.OpenWindows().last(), "frmConfiguracion");
        EXPECT_EQ(form.lstDeducPorc.Texts(), QStringList{"Donativo <-> 80"});
        EXPECT_EQ(step->cboTipoPorcentaje.ListCount(), 4);
        form.cmdCancelar.Press();
    }

    // Nothing failing: all four, and the catalogue changed.
    frmConfiguracion &form = ChangeLinks();
    TakeStatements();
    form.cmdAceptar.Press();
    EXPECT_EQ(TakeWrites(),
              (QStringList{"DELETE FROM ComunidadesAutonomas_Deducciones WHERE coddeduccion=4 AND codComunidadAutonoma=2",
                           "INSERT INTO ComunidadesAutonomas_Deducciones VALUES (3,1)",
                           "DELETE FROM TipoDonativos_Deducciones WHERE coddeduccion=2 AND codTipoDonativo=1",
                           "INSERT INTO TipoDonativos_Deducciones VALUES (3,2)"}));
    EXPECT_EQ(CommunityLinkRows(), (QStringList{"1-4", "1-5", "3-1"}));
    EXPECT_EQ(TypeLinkRows(), (QStringList{"1-1", "2-3", "3-1", "3-2"}));
}
