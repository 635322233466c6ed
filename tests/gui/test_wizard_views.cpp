#include "GuiFixture.h"

#include "controls/Controls.h"
#include "data/Connection.h"
#include "gui/FormView.h"
#include "gui/ViewBinder.h"
#include "gui/ViewFactory.h"
#include "session/SessionSettings.h"
#include "session/denM182.h"
#include "session/modPrincipal.h"
#include "wizard/frmActividadAlumno.h"
#include "wizard/frmActividadMes.h"
#include "wizard/frmActividadPonderacion.h"
#include "wizard/frmSelActividad.h"
#include "wizard/frmSelCursos.h"

#include <QImage>
#include <QTimer>

namespace {

const QString kCursos = "Selección de cursos escolares para el modelo 182";
const QString kActividades = "Selección de Actividades";
const QString kMeses = "Selección de los meses de facturación de las actividades";
const QString kPorcentajes = "Selección de porcentajes de deducciones";
const QString kAlumnos = "Datos de los Alumnos en las Actividades Seleccionadas";

int FormViewsAlive()
{
    int count = 0;
    for (QWidget *widget : QApplication::topLevelWidgets())
        count += qobject_cast<FormView *>(widget) ? 1 : 0;
    return count;
}

} // namespace

// The small school of the wizard tests, installed in a temporary folder and
// handed to the add-in as the host would; the wizard's windows are real.
class WizardWindows : public GuiTest
{
protected:
    void TearDown() override
    {
        GuiTest::TearDown();
        ResetLibraryState();
    }
    void Install()
    {
        paths = BuildInstallation(dir.path(), SmallSchool());
        const SessionSettings settings = SessionSettings::Load(paths.iniFile);
        modPrincipal::Settings() = settings.Program();
        addin = std::make_unique<cAsignarDatos>(qtUi);
        addin->ObtenerDatos(settings.BuildSession());
    }
    // Opens the first window as ActivarFormulario does, without waiting.
    frmSelCursos &OpenWizard()
    {
        if (!addin)
            Install();
        qtUi.ShowModal(std::make_shared<frmSelCursos>(qtUi));
        return dynamic_cast<frmSelCursos &>(*qtUi.Stack().Top());
    }
    // School chosen, "2024-2025" moved to "Seleccionados:", then "Siguiente ->".
    void ToActivities()
    {
        OpenWizard();
        ChooseWithKeys(Widget<QComboBox>("cboCentro"), "Colegio San Prueba");
        ClickRow(Widget<QListView>("lstDisponibles"), "2024-2025");
        Click("cmdAgregarUno");
        Click("cmdAceptar");
    }

    InstallationPaths paths;
    std::unique_ptr<cAsignarDatos> addin;
};

TEST_F(WizardWindows, TheFirstWindowShowsTheSessionSchoolAndRefusesToGoOnEmpty)
{
    Install();
    QImage icon(16, 16, QImage::Format_ARGB32);
    icon.fill(Qt::darkBlue);
    ASSERT_TRUE(icon.save(paths.iconFile, "PNG"));
    OpenWizard();
    QWidget *view = TopView();
    ASSERT_NE(view, nullptr);
    EXPECT_TRUE(view->isVisible() && view->isModal());
    EXPECT_EQ(view->windowTitle(), kCursos);
    EXPECT_FALSE(view->windowIcon().availableSizes().isEmpty()); // the session's icon

    auto &centro = Widget<QComboBox>("cboCentro");
    EXPECT_EQ(Rows(centro), QStringList{"Colegio San Prueba"});
    EXPECT_EQ(centro.currentIndex(), -1);
    EXPECT_EQ(ListRows("lstDisponibles") + ListRows("lstSeleccionados"), QStringList());
    EXPECT_EQ(Texts({"Label1", "fraCursos", "lblDisponibles", "lblSeleccionados", "cmdAgregarUno", "cmdEliminarUno",
                     "cmdAgregarTodos", "cmdEliminarTodos", "cmdCargar", "cmdAceptar", "cmdCancelar"}),
              (QStringList{"Centro:", "Cursos Escolares:", "Disponibles:", "Seleccionados:", "<- Agregar", "Quitar ->",
                           "<<- Todos", "Todos ->>", "Cargar Datos", "Siguiente ->", "Salir"}));
    EXPECT_FALSE(Widget("cmdCargar").isEnabled()); // reloading saved work is not offered yet

    // "Seleccionados:" left of the buttons, "Disponibles:" right of them, and
    // the lists take the room the window gives them.
    view->resize(720, 480);
    QApplication::processEvents();
    const auto left = [&](const char *name) { return Widget(name).mapTo(view, QPoint(0, 0)).x(); };
    EXPECT_LT(left("lstSeleccionados"), left("cmdAgregarUno"));
    EXPECT_LT(left("cmdAgregarUno"), left("lstDisponibles"));
    EXPECT_GT(Widget("lstSeleccionados").height(), 200);
    EXPECT_GT(Widget("lstSeleccionados").width(), 200);

    Click("cmdAceptar");
    ExpectMessage(0, "Debe seleccionar algún curso escolar", QMessageBox::Warning, view);
    EXPECT_EQ(messages.value(0).buttons, QStringList{"Aceptar"});
    EXPECT_EQ(OpenViewTitles(), QStringList{kCursos});
}

TEST_F(WizardWindows, MovingYearsThenForwardAndBackByButtonOrTitleBar)
{
    OpenWizard();
    ChooseWithKeys(Widget<QComboBox>("cboCentro"), "Colegio San Prueba");
    auto &disponibles = Widget<QListView>("lstDisponibles");
    EXPECT_EQ(Rows(disponibles), (QStringList{"2023-2024", "2024-2025"}));
    ClickRow(disponibles, "2024-2025");
    Click("cmdAgregarUno");
    EXPECT_EQ(ListRows("lstSeleccionados"), QStringList{"2024-2025"});
    EXPECT_EQ(Rows(disponibles), QStringList{"2023-2024"});
    EXPECT_FALSE(disponibles.selectionModel()->hasSelection()); // the moved entry left the list
    ClickRow(disponibles, "2023-2024", true);
    EXPECT_EQ(ListRows("lstSeleccionados"), (QStringList{"2024-2025", "2023-2024"}));
    EXPECT_EQ(Rows(disponibles), QStringList());
    Click("cmdEliminarTodos");
    EXPECT_EQ(Rows(disponibles), (QStringList{"2024-2025", "2023-2024"}));
    ClickRow(disponibles, "2024-2025");
    Click("cmdAgregarUno");
    Click("cmdAceptar");

    EXPECT_EQ(OpenViewTitles(), (QStringList{kCursos, kActividades}));
    QWidget *first = qtUi.ViewOf(*qtUi.Stack().Forms().first());
    EXPECT_TRUE(first->isVisible() && TopView()->isVisible());
    EXPECT_EQ(TopView()->parentWidget(), first);
    auto &curso = Widget<QComboBox>("cboCursoEscolar");
    EXPECT_EQ(Rows(curso), QStringList{"2024-2025"});
    EXPECT_EQ(curso.currentText(), "2024-2025");
    EXPECT_EQ(ListRows("lstDisponibles"), (QStringList{"Comedor", "Ajedrez", "Robótica", "Natación"}));
    EXPECT_EQ(Texts({"fraActual", "cmdCancelar", "cmdAceptar"}),
              (QStringList{"Actividades", "<- Anterior", "Siguiente ->"}));

    Click("cmdCancelar");
    Flush();
    EXPECT_EQ(OpenViewTitles(), QStringList{kCursos});
    EXPECT_EQ(FormViewsAlive(), 1);
    EXPECT_EQ(Widget<QComboBox>("cboCentro").currentText(), "Colegio San Prueba");
    EXPECT_EQ(ListRows("lstSeleccionados"), QStringList{"2024-2025"});
    EXPECT_EQ(ListRows("lstDisponibles"), QStringList{"2023-2024"});

    // The title bar's close: a step goes back, the first window ends the wizard.
    Click("cmdAceptar");
    ASSERT_EQ(OpenViewTitles(), (QStringList{kCursos, kActividades}));
    EXPECT_FALSE(TopView()->close()); // the form closes it, through the Ui
    Flush();
    EXPECT_EQ(OpenViewTitles(), QStringList{kCursos});
    TopView()->close();
    EXPECT_TRUE(qtUi.Stack().IsEmpty());
    Flush();
    EXPECT_EQ(FormViewsAlive(), 0);
}

TEST_F(WizardWindows, OnToTheLastStepBackAsLeftAndSalirClosesEveryWindow)
{
    ToActivities();
    ClickRow(Widget<QListView>("lstDisponibles"), "Ajedrez");
    Click("cmdAgregarUno");
    EXPECT_EQ(ListRows("lstSeleccionados"), QStringList{"Ajedrez"});
    Click("cmdAceptar");

    EXPECT_EQ(TopView()->windowTitle(), kMeses);
    auto &actividad = Widget<QComboBox>("cboActCurEsc");
    EXPECT_EQ(Rows(actividad), QStringList{"2024-2025 - Ajedrez"});
    EXPECT_EQ(actividad.currentIndex(), 0);
    EXPECT_EQ(Texts({"Label1", "fraActual"}),
              (QStringList{"Actividades del Curso Escolar", "Meses de Facturación de la Actividad"}));
    EXPECT_EQ(ListRows("lstDisponibles"), (QStringList{"Octubre", "Noviembre"}));
    Click("cmdAgregarTodos");
    Click("cmdAceptar");

    EXPECT_EQ(OpenViewTitles(), (QStringList{kCursos, kActividades, kMeses, kPorcentajes}));
    auto &lstActividad = Widget<QListView>("lstActividad");
    EXPECT_EQ(Rows(lstActividad), QStringList{"2024-2025 - Ajedrez"});
    EXPECT_FALSE(lstActividad.selectionModel()->hasSelection()); // until the user picks it
    EXPECT_EQ(ListRows("lstActPorc"), QStringList());
    auto &pares = Widget<QComboBox>("cboTipoPorcentaje");
    EXPECT_TRUE(Rows(pares).contains("Donativo - 80%"));
    EXPECT_EQ(pares.currentIndex(), -1);
    ClickRow(lstActividad, "2024-2025 - Ajedrez");
    ChooseWithKeys(pares, "Donativo - 80%");
    Click("cmdAnadir");
    EXPECT_EQ(ListRows("lstActPorc"), QStringList{"2024-2025 - Ajedrez <-> Donativo - 80%"});
    EXPECT_EQ(Rows(lstActividad), QStringList());
    Click("cmdSiguiente");

    const QStringList all{kCursos, kActividades, kMeses, kPorcentajes, kAlumnos};
    EXPECT_EQ(OpenViewTitles(), all);
    EXPECT_EQ(Texts({"cmdAnterior", "cmdCancelar"}), (QStringList{"<- Anterior", "Salir"}));
    Click("cmdAnterior");
    Flush();
    EXPECT_EQ(OpenViewTitles(), all.mid(0, 4));
    EXPECT_EQ(ListRows("lstActPorc"), QStringList{"2024-2025 - Ajedrez <-> Donativo - 80%"});

    Click("cmdSiguiente");
    ASSERT_EQ(OpenViewTitles(), all);
    EXPECT_EQ(FormViewsAlive(), 5);
    Click("cmdCancelar");
    EXPECT_TRUE(qtUi.Stack().IsEmpty());
    EXPECT_TRUE(modPrincipal::blnSalir);
    Flush();
    EXPECT_EQ(FormViewsAlive(), 0);
    EXPECT_EQ(messages.size(), 0);
}

TEST_F(WizardWindows, TheHostCallReturnsWhenTheWizardIsClosed)
{
    Install();
    QString seen;
    QObject timers;
    QTimer::singleShot(0, &timers, [&] {
        seen = TopView() ? TopView()->windowTitle() : QString();
        if (auto *salir = TopView() ? TopView()->findChild<QPushButton *>("cmdCancelar") : nullptr)
            salir->click();
    });
    QTimer::singleShot(10000, &timers, [&] { // should the click not close it, the test must still end
        while (Form *top = qtUi.Stack().Top())
            qtUi.Unload(*top);
    });
    addin->ActivarFormulario(0);
    EXPECT_EQ(seen, kCursos);
    EXPECT_TRUE(qtUi.Stack().IsEmpty());
}

// The windows and the forms cannot drift apart: every control has a widget
// of its name and kind, every widget a control, and the window's own texts
// are the captions.
using WindowFiles = GuiTest;

TEST_F(WindowFiles, EveryWizardWindowFitsItsForm)
{
    frmSelCursos cursos(qtUi);
    frmSelActividad actividades(qtUi, cursos);
    frmActividadMes meses(qtUi, cursos);
    frmActividadPonderacion porcentajes(qtUi, cursos);
    frmActividadAlumno alumnos(qtUi, cursos);
    for (Form *form : std::initializer_list<Form *>{&cursos, &actividades, &meses, &porcentajes, &alumnos}) {
        SCOPED_TRACE(form->Name().toStdString());
        ASSERT_TRUE(ViewFactory::Has(form->Name()));
        QDialog window;
        ViewFactory::Build(form->Name(), window);
        EXPECT_EQ(window.objectName(), form->Name());
        EXPECT_EQ(window.windowTitle(), form->Caption());
        EXPECT_EQ(ViewBinder::Mismatches(*form, window), QStringList());
        EXPECT_EQ(ViewBinder::UnboundWidgets(*form, window), QStringList());
        for (ControlBase *control : form->Controls()) {
            QString caption;
            if (auto *label = dynamic_cast<Label *>(control)) // a frame too
                caption = label->Caption();
            else if (auto *button = dynamic_cast<CommandButton *>(control))
                caption = button->Caption();
            else if (auto *check = dynamic_cast<CheckBox *>(control))
                caption = check->Caption();
            else
                continue;
            QWidget *widget = window.findChild<QWidget *>(control->Name());
            ASSERT_NE(widget, nullptr) << control->Name().toStdString();
            EXPECT_EQ(ShownText(*widget), caption) << control->Name().toStdString();
        }
    }
}

TEST_F(WindowFiles, AWidgetOfTheWrongKindOrMissingIsReported)
{
    frmSelCursos cursos(qtUi);
    QDialog window;
    ViewFactory::Build("frmSelCursos", window);
    delete window.findChild<QPushButton *>("cmdCargar");
    window.findChild<QListView *>("lstDisponibles")->setObjectName("lstOtra");
    (new QLabel(&window))->setObjectName("lstDisponibles");
    EXPECT_EQ(ViewBinder::Mismatches(cursos, window),
              (QStringList{"lstDisponibles: a QListView is needed, the window has a QLabel",
                           "cmdCargar: no QPushButton of this name"}));
    EXPECT_EQ(ViewBinder::UnboundWidgets(cursos, window), QStringList{"lstOtra"});
}
