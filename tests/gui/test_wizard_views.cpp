#include "GuiFixture.h"
#include "catalogue/frmConfiguracion.h"
#include "catalogue/frmNComAut.h"
#include "catalogue/frmNPorcentaje.h"
#include "catalogue/frmNTipoDeduccion.h"
#include "gui/FormView.h"
#include "gui/ViewBinder.h"
#include "gui/ViewFactory.h"
#include "session/SessionSettings.h"
#include "session/WizardRun.h"
#include "wizard/frmActividadAlumno.h"
#include "wizard/frmActividadMes.h"
#include "wizard/frmActividadPonderacion.h"
#include "wizard/frmSelActividad.h"
#include "wizard/frmSelCursos.h"

namespace {
const QString kCursos = "Selección de cursos escolares para el modelo 182", kActividades = "Selección de Actividades",
              kMeses = "Selección de los meses de facturación de las actividades",
              kPorcentajes = "Selección de porcentajes de deducciones",
              kAlumnos = "Datos de los Alumnos en las Actividades Seleccionadas";
int FormViewsAlive()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::count_if(windows.begin(), windows.end(), [](QWidget *window) { return qobject_cast<FormView *>(window); });
}
} // namespace

// The small school installed in a temporary folder and handed to the add-in
// as the host would, with an icon; the wizard's windows are the real ones.
class WizardWindows : public GuiTest
{
protected:
    void SetUp() override
    {
        GuiTest::SetUp();
        const InstallationPaths paths = BuildInstallation(dir.path(), SmallSchool());
        QImage icon(16, 16, QImage::Format_ARGB32);
        icon.fill(Qt::darkBlue);
        ASSERT_TRUE(icon.save(paths.iconFile, "PNG"));
        const SessionSettings settings = SessionSettings::Load(paths.iniFile);
        addin = std::make_unique<cAsignarDatos>(qtUi);
        addin->ObtenerDatos(settings.BuildSession());
    }
    std::unique_ptr<cAsignarDatos> addin;
};

// The first window shows the session's school and refuses to go on empty;
// then every step through its buttons, back from the second step by the
// title bar and from the last by "<- Anterior", each finding its lists as
// left; "Salir" in the last window closes all five.
TEST_F(WizardWindows, EveryStepShowsItsModelBackKeepsTheListsAndSalirClosesAll)
{
    qtUi.ShowModal(std::make_shared<frmSelCursos>(*addin->Run())); // as ActivarFormulario does, without waiting
    QWidget *first = TopView();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(std::tuple(first->windowTitle(), first->isVisible(), first->isModal(), first->windowIcon().isNull()),
              std::tuple(kCursos, true, true, false));
    auto &centro = Widget<QComboBox>("cboCentro");
    EXPECT_EQ(std::tuple(Rows(centro), centro.currentIndex()), std::tuple(QStringList{"Colegio San Prueba"}, -1));
    EXPECT_EQ(ListRows("lstDisponibles") + ListRows("lstSeleccionados"), QStringList());
    EXPECT_EQ(Texts({"Label1", "fraCursos", "lblDisponibles", "lblSeleccionados", "cmdAgregarUno", "cmdEliminarUno",
                     "cmdAgregarTodos", "cmdEliminarTodos", "cmdCargar", "cmdAceptar", "cmdCancelar"}),
              (QStringList{"Centro:", "Cursos Escolares:", "Disponibles:", "Seleccionados:", "<- Agregar", "Quitar ->",
                           "<<- Todos", "Todos ->>", "Cargar Datos", "Siguiente ->", "Salir"}));
    EXPECT_TRUE(Widget("cmdCargar").isEnabled()); // reloading saved work is offered
    // The host's light yellow on the mandatory fields only.
    EXPECT_EQ(centro.palette().color(QPalette::Base), QColor(0xFF, 0xFF, 0xE1));
    EXPECT_EQ(std::tuple(Widget("lstSeleccionados").styleSheet().contains("#ffffe1", Qt::CaseInsensitive),
                         Widget("lstDisponibles").styleSheet()),
              std::tuple(true, QString()));
    Click("cmdAceptar");
    ExpectOnlyMessage("Debe seleccionar algún curso escolar", QMessageBox::Warning, first);
    EXPECT_EQ(OpenViewTitles(), QStringList{kCursos});

    ChooseWithKeys(centro, "Colegio San Prueba");
    EXPECT_EQ(ListRows("lstDisponibles"), (QStringList{"2023-2024", "2024-2025"}));
    ClickRow(Widget<QListView>("lstDisponibles"), "2024-2025");
    Click("cmdAgregarUno");
    EXPECT_EQ(ListRows("lstSeleccionados") + ListRows("lstDisponibles"), (QStringList{"2024-2025", "2023-2024"}));
    Click("cmdAceptar");
    EXPECT_EQ(OpenViewTitles(), (QStringList{kCursos, kActividades}));
    EXPECT_EQ(std::tuple(first->isVisible(), TopView()->isVisible(), TopView()->parentWidget()),
              std::tuple(true, true, first));
    auto &curso = Widget<QComboBox>("cboCursoEscolar");
    EXPECT_EQ(std::tuple(Rows(curso), curso.currentText()), std::tuple(QStringList{"2024-2025"}, QString("2024-2025")));
    EXPECT_EQ(ListRows("lstDisponibles"), (QStringList{"Comedor", "Ajedrez", "Robótica", "Natación"}));
    EXPECT_EQ(Texts({"fraActual", "cmdCancelar", "cmdAceptar"}),
              (QStringList{"Actividades", "<- Anterior", "Siguiente ->"}));
    EXPECT_FALSE(TopView()->close()); // the form closes it, through the Ui
    Flush();
    EXPECT_EQ(std::tuple(OpenViewTitles(), FormViewsAlive(), centro.currentText()),
              std::tuple(QStringList{kCursos}, 1, QString("Colegio San Prueba")));
    EXPECT_EQ(ListRows("lstSeleccionados") + ListRows("lstDisponibles"), (QStringList{"2024-2025", "2023-2024"}));

    Click("cmdAceptar");
    ClickRow(Widget<QListView>("lstDisponibles"), "Ajedrez");
    Click("cmdAgregarUno");
    Click("cmdAceptar");
    EXPECT_EQ(TopView()->windowTitle(), kMeses);
    auto &actividad = Widget<QComboBox>("cboActCurEsc");
    EXPECT_EQ(std::tuple(Rows(actividad), actividad.currentIndex()), std::tuple(QStringList{"2024-2025 - Ajedrez"}, 0));
    EXPECT_EQ(Texts({"Label1", "fraActual"}),
              (QStringList{"Actividades del Curso Escolar", "Meses de Facturación de la Actividad"}));
    EXPECT_EQ(ListRows("lstDisponibles"), (QStringList{"Octubre", "Noviembre"}));
    Click("cmdAgregarTodos");
    Click("cmdAceptar");

    EXPECT_EQ(OpenViewTitles(), (QStringList{kCursos, kActividades, kMeses, kPorcentajes}));
    auto &lstActividad = Widget<QListView>("lstActividad");
    auto &pares = Widget<QComboBox>("cboTipoPorcentaje");
    EXPECT_EQ(std::tuple(Rows(lstActividad), lstActividad.selectionModel()->hasSelection(), pares.currentIndex()),
              std::tuple(QStringList{"2024-2025 - Ajedrez"}, false, -1)); // nothing picked for the user
    ClickRow(lstActividad, "2024-2025 - Ajedrez");
    ChooseWithKeys(pares, "Donativo - 80%");
    Click("cmdAnadir");
    EXPECT_EQ(ListRows("lstActPorc") + Rows(lstActividad), QStringList{"2024-2025 - Ajedrez <-> Donativo - 80%"});
    Click("cmdSiguiente");

    const QStringList all{kCursos, kActividades, kMeses, kPorcentajes, kAlumnos};
    EXPECT_EQ(OpenViewTitles(), all);
    EXPECT_EQ(Texts({"cmdAnterior", "cmdCancelar"}), (QStringList{"<- Anterior", "Salir"}));
    Click("cmdAnterior");
    Flush();
    EXPECT_EQ(OpenViewTitles(), all.mid(0, 4));
    EXPECT_EQ(ListRows("lstActPorc"), QStringList{"2024-2025 - Ajedrez <-> Donativo - 80%"});
    Click("cmdSiguiente");
    ASSERT_EQ(std::tuple(OpenViewTitles(), FormViewsAlive()), std::tuple(all, 5));
    Click("cmdCancelar");
    EXPECT_EQ(std::tuple(qtUi.Stack().IsEmpty(), addin->Run()->blnSalir, messages.size()), std::tuple(true, true, 1));
    Flush();
    EXPECT_EQ(FormViewsAlive(), 0);
}

TEST_F(WizardWindows, TheHostCallReturnsWhenSalirClosesTheWizard)
{
    QString seen;
    QObject timers;
    QTimer::singleShot(0, &timers, [&] {
        if (QWidget *top = TopView())
            seen = top->windowTitle(), Click("cmdCancelar");
    });
    QTimer::singleShot(10000, &timers, [&] {
        while (Form *top = qtUi.Stack().Top())
            qtUi.Unload(*top);
    }); // never hang
    addin->ActivarFormulario(0);
    EXPECT_EQ(std::tuple(seen, qtUi.Stack().IsEmpty()), std::tuple(kCursos, true));
}

// The windows and the forms cannot drift apart: every control has a widget
// of its name and kind, every widget a control; what does not fit is named.
TEST(WindowFiles, EveryWizardWindowFitsItsFormAndAMisfitIsNamed)
{
    TestUi ui;
    WizardRun run(ui);
    const ViewFactory views;
    frmSelCursos cursos(run);
    frmSelActividad actividades(run, cursos);
    frmActividadMes meses(run, cursos);
    frmActividadPonderacion porcentajes(run, cursos);
    frmActividadAlumno alumnos(run, cursos, porcentajes);
    frmConfiguracion configuracion(run, cursos, porcentajes);
    frmNComAut comunidad(run, configuracion);
    frmNPorcentaje porcentaje(run, configuracion);
    frmNTipoDeduccion tipo(run, configuracion);
    for (Form *form : std::initializer_list<Form *>{&cursos, &actividades, &meses, &porcentajes, &alumnos, &configuracion,
                                                    &comunidad, &porcentaje, &tipo}) {
        QDialog window;
        views.Build(form->Name(), window);
        EXPECT_EQ(ViewBinder::Mismatches(*form, window) + ViewBinder::UnboundWidgets(*form, window), QStringList())
            << form->Name().toStdString();
    }
    QDialog window;
    views.Build("frmSelCursos", window);
    delete window.findChild<QPushButton *>("cmdCargar");
    window.findChild<QListView *>("lstDisponibles")->setObjectName("lstOtra");
    (new QLabel(&window))->setObjectName("lstDisponibles");
    EXPECT_EQ(ViewBinder::Mismatches(cursos, window),
              (QStringList{"lstDisponibles: a QListView is needed, the window has a QLabel",
                           "cmdCargar: no QPushButton of this name"}));
    EXPECT_EQ(ViewBinder::UnboundWidgets(cursos, window), QStringList{"lstOtra"});
    QDialog donors; // the donor grid needs a table
    views.Build("frmActividadAlumno", donors);
    donors.findChild<QTableView *>("msgMod182")->setObjectName("msgOtra");
    (new QListView(&donors))->setObjectName("msgMod182");
    EXPECT_EQ(ViewBinder::Mismatches(alumnos, donors),
              QStringList{"msgMod182: a QTableView is needed, the window has a QListView"});
    EXPECT_EQ(ViewBinder::UnboundWidgets(alumnos, donors), QStringList{"msgOtra"});
}
