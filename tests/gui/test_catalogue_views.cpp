#include "GuiFixture.h"
#include "catalogue/CatalogueComponents.h"
#include "session/SessionSettings.h"
#include "session/WizardRun.h"
#include "wizard/frmSelCursos.h"

// The catalogue window opened from the deduction step of the real wizard,
// with the add-in's catalogue registration, through the Qt front end.
class CatalogueWindows : public GuiTest
{
protected:
    void OpenDeductionStep()
    {
        const InstallationPaths paths = BuildInstallation(dir.path(), SmallSchool());
        addin = std::make_unique<cAsignarDatos>(qtUi, [](WizardRun &run) { RegisterCatalogueWindows(run.Componentes()); });
        addin->ObtenerDatos(SessionSettings::Load(paths.iniFile).BuildSession());
        qtUi.ShowModal(std::make_shared<frmSelCursos>(*addin->Run()));
        ChooseWithKeys(Widget<QComboBox>("cboCentro"), "Colegio San Prueba");
        ClickRow(Widget<QListView>("lstDisponibles"), "2024-2025");
        Click("cmdAgregarUno");
        Click("cmdAceptar");
        ClickRow(Widget<QListView>("lstDisponibles"), "Comedor");
        Click("cmdAgregarUno");
        Click("cmdAceptar");
        Click("cmdAgregarTodos");
        Click("cmdAceptar");
    }
    void Type(const QString &lineEdit, const QString &text)
    {
        for (const QChar c : text)
            PressKey(Widget<QLineEdit>(lineEdit), 0, QString(c));
    }
    std::unique_ptr<cAsignarDatos> addin;
};

TEST_F(CatalogueWindows, ANewCommunityTypedInItsDialogReachesTheCatalogueWindowAndTheStep)
{
    OpenDeductionStep();
    QWidget *step = TopView();
    ASSERT_TRUE(Widget("cmdConfigurar").isEnabled());
    Click("cmdConfigurar");
    QWidget *catalogue = TopView();
    EXPECT_EQ(std::tuple(catalogue->windowTitle(), catalogue->isModal(), catalogue->parentWidget()),
              std::tuple(QString("Configuración de Deducciones"), true, step));
    EXPECT_EQ(Texts({"Frame2", "Frame1", "Label4", "Label3", "Label1", "Label2", "cmdAnadirComPor", "cmdElimTPor"}),
              (QStringList{"Deducción por Comunidades Autónomas", "Deducción por Tipos", "Comunidad Autónoma", "Porcentaje",
                           "Tipo de donativo", "Porcentaje", "Añadir", "Eliminar"}));
    ChooseWithKeys(Widget<QComboBox>("cboTipo"), "Donativo");
    EXPECT_EQ(ListRows("lstDeducPorc"),
              (QStringList{"Donativo <-> 80", "Donativo <-> 35", "Donativo <-> 40", "Donativo <-> 45"}));

    Click("cmdNComAut");
    QWidget *dialog = TopView();
    EXPECT_EQ(dialog->windowTitle(), "Nueva Comunidad Autónoma");
    // A small dialog, centred over the window it came from.
    EXPECT_LT(dialog->width(), catalogue->width());
    EXPECT_LT(dialog->height(), catalogue->height());
    EXPECT_EQ(dialog->geometry().center(), catalogue->geometry().center());
    Type("txtNomComAut", "Comunitat d'Prova");
    Type("txtCodComAut", "4");
    Click("cmdAceptar");
    ExpectOnlyMessage("El campo código debe ser numérico de dos dígitos (por ejemplo 04 o 37)", QMessageBox::Warning,
                      dialog);
    Type("txtCodComAut", "0");
    Click("cmdAceptar");
    Flush();
    EXPECT_EQ(TopView(), catalogue);
    EXPECT_EQ(Rows(Widget<QComboBox>("cboComAut")).last(), "Comunitat d'Prova");

    Click("cmdAceptar");
    Flush();
    EXPECT_EQ(TopView(), step);
    EXPECT_EQ(Rows(Widget<QComboBox>("cboComAut")).last(), "Comunitat d'Prova");
    EXPECT_EQ(messages.size(), 1);
}
