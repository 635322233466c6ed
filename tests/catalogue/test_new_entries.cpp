#include "CatalogueFixture.h"

#include "catalogue/CatalogueComponents.h"
#include "catalogue/frmConfiguracion.h"
#include "catalogue/frmNComAut.h"
#include "catalogue/frmNPorcentaje.h"
#include "catalogue/frmNTipoDeduccion.h"
#include "session/SessionSettings.h"
#include "session/WizardRun.h"
#include "wizard/ConfigurationWindowMaker.h"
#include "wizard/frmActividadPonderacion.h"
#include "wizard/frmSelCursos.h"

namespace {
const QString kMaxCommunity = "SELECT MAX(IDComunidadAutonoma) FROM comunidadesautonomas";
const QString kMaxPercentage = "SELECT MAX(IDDeduccion) FROM Deducciones";
const QString kMaxType = "SELECT MAX(IDTipoDonativo) FROM TipoDonativos";
} // namespace

class NewEntries : public CatalogueFixture
{
protected:
    frmNComAut &OpenCommunityDialog()
    {
        configuracion = &OpenConfiguration();
        configuracion->cmdNComAut.Press();
        TakeStatements();
        return Top<frmNComAut>();
    }
    frmNPorcentaje &OpenPercentageDialog(bool fromTypes = false)
    {
        configuracion = &OpenConfiguration();
        (fromTypes ? configuracion->cmdNDeduc : configuracion->cmdNPorc).Press();
        TakeStatements();
        return Top<frmNPorcentaje>();
    }
    frmNTipoDeduccion &OpenTypeDialog()
    {
        configuracion = &OpenConfiguration();
        configuracion->cmdNTipo.Press();
        TakeStatements();
        return Top<frmNTipoDeduccion>();
    }
    frmConfiguracion *configuracion = nullptr;
};

TEST_F(NewEntries, ACommunityNeedsBothFieldsAndANumericCodeOfTwoOrMoreCharacters)
{
    frmNComAut &dialog = OpenCommunityDialog();
    EXPECT_EQ(dialog.Caption(), "Nueva Comunidad Autónoma");
    EXPECT_TRUE(dialog.txtNomComAut.Mandatory() && dialog.txtCodComAut.Mandatory());
    const QString empty = "Debe rellenar todos los campos";
    const QString code = "El campo código debe ser numérico de dos dígitos (por ejemplo 04 o 37)";
    const struct
    {
        const char *name, *code;
        QString message;
    } refused[] = {{"", "", empty},       {"Murcia", "", empty},  {"", "14", empty},
                   {"Murcia", "4", code}, {"Murcia", "1a", code}, {"Murcia", "ab", code}};
    for (const auto &c : refused) {
        ui.ClearLog();
        dialog.txtNomComAut.SetText(c.name);
        dialog.txtCodComAut.SetText(c.code);
        dialog.cmdAceptar.Press();
        ExpectOnlyMessage(c.message);
        EXPECT_EQ(dialog.txtCodComAut.Text(), c.code); // left as typed
    }
    EXPECT_EQ(TakeStatements(), QStringList()); // refused before the database
    EXPECT_TRUE(dialog.IsLoaded());
}

TEST_F(NewEntries, ACommunityCodeOfTwoDigitsOrMoreIsStoredAndTheCommunityOfferedEverywhere)
{
    const struct
    {
        const char *name, *code;
        int id;
    } accepted[] = {{"Murcia", "04", 4}, {"Galicia", "37", 5}, {"Val d'Aran", "123", 6}};
    for (const auto &c : accepted) {
        frmNComAut &dialog = OpenCommunityDialog();
        dialog.txtNomComAut.SetText(c.name);
        dialog.txtCodComAut.SetText(c.code);
        dialog.cmdAceptar.Press();
        const QString name = QString(c.name).replace("'", "''");
        EXPECT_EQ(TakeStatements(),
                  (QStringList{"SELECT comunidadautonoma FROM comunidadesautonomas WHERE comunidadautonoma='" + name + "'",
                               "INSERT INTO ComunidadesAutonomas (comunidadautonoma,codigocomunidadautonoma) VALUES ('"
                                   + name + "','" + c.code + "')",
                               kMaxCommunity}));
        EXPECT_TRUE(ui.Messages().isEmpty()) << ui.MessageTexts().join("|").toStdString();
        EXPECT_EQ(ui.OpenWindows().last(), "frmConfiguracion");
        EXPECT_EQ(std::tuple(configuracion->cboComAut.List(3 + c.id - 4), configuracion->cboComAut.ItemData(3 + c.id - 4)),
                  std::tuple(QString(c.name), qlonglong(c.id)));
        auto record = cursos->colComAut.Item(QString::number(c.id));
        EXPECT_EQ(std::tuple(record->IDComAut, record->IDDeduccion, record->Valor),
                  std::tuple(qint16(c.id), qint16(-1), -1.0f));
        configuracion->cmdAceptar.Press();
    }
    EXPECT_EQ(Rows("SELECT IDComunidadAutonoma, ComunidadAutonoma, CodigoComunidadAutonoma FROM ComunidadesAutonomas "
                   "WHERE IDComunidadAutonoma > 3 ORDER BY 1"),
              (QStringList{"4|Murcia|04", "5|Galicia|37", "6|Val d'Aran|123"})); // one quote, as typed
    EXPECT_EQ(step->cboComAut.Texts(), (QStringList{"Andalucía", "Aragón", "Ceuta", "Murcia", "Galicia", "Val d'Aran"}));
    EXPECT_EQ(cursos->colComAut.Count(), 6);
}

TEST_F(NewEntries, AnExistingCommunityNameIsRefusedWhateverItsCase)
{
    frmNComAut &dialog = OpenCommunityDialog();
    for (const char *name : {"Andalucía", "ARAGÓN", "ceuta"}) {
        ui.ClearLog();
        dialog.txtNomComAut.SetText(name);
        dialog.txtCodComAut.SetText("99");
        dialog.cmdAceptar.Press();
        ExpectOnlyMessage("No puede introducir una comunidad autónoma existente");
        EXPECT_EQ(TakeStatements(), QStringList{"SELECT comunidadautonoma FROM comunidadesautonomas WHERE "
                                                "comunidadautonoma='"
                                                + QString(name) + "'"});
    }
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM ComunidadesAutonomas"), QStringList{"3"});
    EXPECT_EQ(configuracion->cboComAut.ListCount(), 3);
}

TEST_F(NewEntries, APercentageFromZeroToOneHundredIsStoredWithADecimalPoint)
{
    const struct
    {
        const char *typed, *sql;
        int id;
    } accepted[] = {{"0", "0", 6}, {"100", "100", 7}, {"12,5", "12.5", 8}};
    for (const auto &c : accepted) {
        frmNPorcentaje &dialog = OpenPercentageDialog(c.id == 7);
        dialog.txtPorcentaje.SetText(c.typed);
        dialog.cmdAceptar.Press();
        EXPECT_EQ(TakeStatements(),
                  (QStringList{QString("SELECT deduccion FROM deducciones WHERE deduccion=") + c.sql,
                               QString("INSERT INTO deducciones (deduccion) VALUES (") + c.sql + ")", kMaxPercentage}));
        EXPECT_TRUE(ui.Messages().isEmpty()) << ui.MessageTexts().join("|").toStdString();
        // Both percentage lists get it, as typed, with its key.
        for (const ComboBox *combo : {&configuracion->cboPorc, &configuracion->cboDeduccion})
            EXPECT_EQ(std::tuple(combo->List(combo->ListCount() - 1), combo->ItemData(combo->ListCount() - 1)),
                      std::tuple(QString(c.typed), qlonglong(c.id)));
        configuracion->cmdCancelar.Press(); // the dialog wrote at once: cancelling keeps it
    }
    EXPECT_EQ(Rows("SELECT IDDeduccion, Deduccion FROM Deducciones WHERE IDDeduccion > 5 ORDER BY 1"),
              (QStringList{"6|0", "7|100", "8|12.5"}));
}

TEST_F(NewEntries, APercentageOutsideTheRangeNotANumberOrKnownIsRefused)
{
    frmNPorcentaje &dialog = OpenPercentageDialog();
    EXPECT_EQ(dialog.Caption(), "Nuevo Porcentaje");
    const QString range = "Debe introducir un dato numérico entre 0 y 100";
    const QString known = "El dato introducido ya existe en la base de datos";
    const struct
    {
        const char *typed;
        QString message;
        int statements;
    } refused[] = {{"", range, 0},      {"100,5", range, 0}, {"-1", range, 0},   {"diez", range, 0},
                   {"1,2,3", range, 0}, {"80", known, 1},    {"13,50", known, 1}};
    for (const auto &c : refused) {
        ui.ClearLog();
        dialog.txtPorcentaje.SetText(c.typed);
        dialog.cmdAceptar.Press();
        ExpectOnlyMessage(c.message);
        EXPECT_EQ(TakeStatements().size(), c.statements) << c.typed;
    }
    EXPECT_EQ(Rows("SELECT COUNT(*) FROM Deducciones"), QStringList{"5"});
    EXPECT_TRUE(dialog.IsLoaded());
}

TEST_F(NewEntries, PercentageKeysPassTheHostsAmountFilter)
{
    frmNPorcentaje &dialog = OpenPercentageDialog();
    for (char key : QByteArray("1a2.5,7-9"))
        dialog.txtPorcentaje.TypeKey(key);
    EXPECT_EQ(dialog.txtPorcentaje.Text(), "12,57"); // digits, one separator shown as the user's, two decimals
    dialog.txtPorcentaje.TypeKey(8);
    EXPECT_EQ(dialog.txtPorcentaje.Text(), "12,5");
}

TEST_F(NewEntries, ATypeNeedsBothFieldsAndANewNameWhileItsCodeMayRepeat)
{
    frmNTipoDeduccion &dialog = OpenTypeDialog();
    EXPECT_EQ(dialog.Caption(), "Nuevo Tipo de Donativo");
    const QString empty = "Debe introducir todos los datos";
    const QString known = "El dato introducido ya existe en la base de datos";
    const struct
    {
        const char *name, *code;
        QString message;
    } refused[] = {{"", "", empty},
                   {"Beca", "", empty},
                   {"", "B1", empty},
                   {"DONATIVO", "X", known},
                   {"d'aportación", "X", known}};
    for (const auto &c : refused) {
        ui.ClearLog();
        dialog.txtTDonativo.SetText(c.name);
        dialog.txtCDonativo.SetText(c.code);
        dialog.cmdAceptar.Press();
        ExpectOnlyMessage(c.message);
    }
    TakeStatements();
    dialog.txtTDonativo.SetText("Cuota d'honor");
    dialog.txtCDonativo.SetText("D1"); // Donativo's code: not checked
    ui.ClearLog();
    dialog.cmdAceptar.Press();
    EXPECT_TRUE(ui.Messages().isEmpty());
    EXPECT_EQ(TakeStatements(),
              (QStringList{"SELECT TipoDonativo FROM TipoDonativos WHERE TipoDonativo='Cuota d''honor'",
                           "INSERT INTO TipoDonativos (TipoDonativo,CodigoDonativo) VALUES ('Cuota d''honor','D1')",
                           kMaxType}));
    EXPECT_EQ(Rows("SELECT IDTipoDonativo, TipoDonativo, CodigoDonativo FROM TipoDonativos WHERE IDTipoDonativo > 3"),
              QStringList{"4|Cuota d'honor|D1"});
    EXPECT_EQ(std::tuple(configuracion->cboTipo.Texts().last(), configuracion->cboTipo.ItemData(3)),
              std::tuple(QString("Cuota d'honor"), 4));
}

TEST_F(NewEntries, NewEntriesCanBeLinkedAtOnceAndReachTheDeductionStep)
{
    frmNTipoDeduccion &type = OpenTypeDialog();
    type.txtTDonativo.SetText("Beca");
    type.txtCDonativo.SetText("B1");
    type.cmdAceptar.Press();
    configuracion->cmdNDeduc.Press();
    Top<frmNPorcentaje>().txtPorcentaje.SetText("25");
    Top<frmNPorcentaje>().cmdAceptar.Press();
    Pick(configuracion->cboTipo, "Beca");
    Pick(configuracion->cboDeduccion, "25");
    configuracion->cmdAnadirTPor.Press();
    EXPECT_EQ(configuracion->lstDeducPorc.Texts(), QStringList{"Beca <-> 25"});
    TakeStatements();
    configuracion->cmdAceptar.Press();
    EXPECT_EQ(TakeWrites(), QStringList{"INSERT INTO TipoDonativos_Deducciones VALUES (4,6)"});
    EXPECT_TRUE(step->cboTipoPorcentaje.Texts().contains("Beca - 25%"));
}

TEST_F(NewEntries, CancelInADialogWritesNothing)
{
    for (int which = 0; which < 3; ++which) {
        frmConfiguracion &form = OpenConfiguration();
        (which == 0 ? form.cmdNComAut : which == 1 ? form.cmdNPorc : form.cmdNTipo).Press();
        TakeStatements();
        for (TextBox *text : {static_cast<TextBox *>(ui.Stack().Top()->FindControl("txtNomComAut")),
                              static_cast<TextBox *>(ui.Stack().Top()->FindControl("txtPorcentaje")),
                              static_cast<TextBox *>(ui.Stack().Top()->FindControl("txtTDonativo"))})
            if (text)
                text->SetText("55");
        static_cast<CommandButton *>(ui.Stack().Top()->FindControl("cmdCancelar"))->Press();
        EXPECT_EQ(ui.OpenWindows().last(), "frmConfiguracion");
        form.cmdCancelar.Press();
    }
    EXPECT_EQ(TakeStatements(), QStringList());
    EXPECT_EQ(Rows("SELECT (SELECT COUNT(*) FROM ComunidadesAutonomas) || '/' || (SELECT COUNT(*) FROM Deducciones) "
                   "|| '/' || (SELECT COUNT(*) FROM TipoDonativos)"),
              QStringList{"3/5/3"});
}

// The add-in registers the window in every run it starts; without it the
// deduction step does not offer the button.
TEST_F(NewEntries, TheAddinOffersTheCatalogueWindowToEachRun)
{
    Install(); // a run without the catalogue window
    const SesionHostPtr session = SessionSettings::Load(paths.iniFile).BuildSession();
    cAsignarDatos withCatalogue(ui, [](WizardRun &run) { RegisterCatalogueWindows(run.Componentes()); });
    withCatalogue.ObtenerDatos(session);
    EXPECT_TRUE(withCatalogue.Run()->Componentes().IsRegistered(ConfigurationWindowMaker::ProgId));
    cAsignarDatos without(ui);
    without.ObtenerDatos(session);
    EXPECT_FALSE(without.Run()->Componentes().IsRegistered(ConfigurationWindowMaker::ProgId));

    frmSelCursos courses(run());
    frmActividadPonderacion plain(run(), courses);
    EXPECT_FALSE(plain.cmdConfigurar.Enabled());
    RegisterCatalogueWindows(run().Componentes());
    frmActividadPonderacion offered(run(), courses);
    EXPECT_TRUE(offered.cmdConfigurar.Enabled());
}
