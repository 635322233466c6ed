#include "GuiFixture.h"

#include "controls/ControlBase.h"
#include "controls/Controls.h"
#include "gui/FormView.h"
#include "gui/ViewBinder.h"
#include "gui/ViewFactory.h"
#include "session/modPrincipal.h"
#include "wizard/frmActividadAlumno.h"
#include "wizard/frmActividadMes.h"
#include "wizard/frmActividadPonderacion.h"
#include "wizard/frmSelActividad.h"
#include "wizard/frmSelCursos.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QTimer>

namespace {

const QString kTituloCursos = QStringLiteral("Selección de cursos escolares para el modelo 182");
const QString kTituloActividades = QStringLiteral("Selección de Actividades");
const QString kTituloMeses = QStringLiteral("Selección de los meses de facturación de las actividades");
const QString kTituloPorcentajes = QStringLiteral("Selección de porcentajes de deducciones");
const QString kTituloAlumnos = QStringLiteral("Datos de los Alumnos en las Actividades Seleccionadas");

QStringList ButtonTexts(QWidget &view, const QStringList &names)
{
    QStringList texts;
    for (const QString &name : names) {
        auto *button = view.findChild<QPushButton *>(name);
        texts << (button ? button->text() : QStringLiteral("(missing)"));
    }
    return texts;
}

int FormViewsAlive()
{
    int count = 0;
    for (QWidget *widget : QApplication::topLevelWidgets())
        if (qobject_cast<FormView *>(widget))
            ++count;
    return count;
}

} // namespace

class WizardWindows : public GuiWizardTest
{
protected:
    // School chosen, the given years moved to "Seleccionados:" with the
    // "<- Agregar" button, then "Siguiente ->".
    void ToActivities(const QStringList &years)
    {
        OpenWizard();
        ChooseWithKeys(Widget<QComboBox>(QStringLiteral("cboCentro")), QStringLiteral("Colegio San Prueba"));
        for (const QString &year : years) {
            ClickRow(Widget<QListView>(QStringLiteral("lstDisponibles")), year);
            Widget<QPushButton>(QStringLiteral("cmdAgregarUno")).click();
        }
        Widget<QPushButton>(QStringLiteral("cmdAceptar")).click();
    }
    // On to the deduction step with "2024-2025 - Ajedrez" and its months.
    void ToDeductions()
    {
        ToActivities({QStringLiteral("2024-2025")});
        ClickRow(Widget<QListView>(QStringLiteral("lstDisponibles")), QStringLiteral("Ajedrez"));
        Widget<QPushButton>(QStringLiteral("cmdAgregarUno")).click();
        Widget<QPushButton>(QStringLiteral("cmdAceptar")).click();
        Widget<QPushButton>(QStringLiteral("cmdAgregarTodos")).click();
        Widget<QPushButton>(QStringLiteral("cmdAceptar")).click();
    }
};

TEST_F(WizardWindows, TheFirstWindowShowsTheSessionSchoolAndNothingChosen)
{
    OpenWizard();
    QWidget *view = TopView();
    ASSERT_NE(view, nullptr);
    EXPECT_TRUE(view->isVisible());
    EXPECT_EQ(view->objectName(), QStringLiteral("frmSelCursos"));
    EXPECT_EQ(view->windowTitle(), kTituloCursos);
    EXPECT_TRUE(view->isModal());

    auto &centro = Widget<QComboBox>(QStringLiteral("cboCentro"));
    EXPECT_EQ(Rows(centro), QStringList{QStringLiteral("Colegio San Prueba")});
    EXPECT_EQ(centro.currentIndex(), -1);
    EXPECT_EQ(centro.currentText(), QString());
    EXPECT_EQ(Rows(Widget<QListView>(QStringLiteral("lstDisponibles"))), QStringList());
    EXPECT_EQ(Rows(Widget<QListView>(QStringLiteral("lstSeleccionados"))), QStringList());

    EXPECT_EQ(Widget<QLabel>(QStringLiteral("Label1")).text(), QStringLiteral("Centro:"));
    EXPECT_EQ(Widget<QGroupBox>(QStringLiteral("fraCursos")).title(), QStringLiteral("Cursos Escolares:"));
    EXPECT_EQ(Widget<QLabel>(QStringLiteral("lblDisponibles")).text(), QStringLiteral("Disponibles:"));
    EXPECT_EQ(Widget<QLabel>(QStringLiteral("lblSeleccionados")).text(), QStringLiteral("Seleccionados:"));
    EXPECT_EQ(ButtonTexts(*view, {QStringLiteral("cmdAgregarUno"), QStringLiteral("cmdEliminarUno"),
                                  QStringLiteral("cmdAgregarTodos"), QStringLiteral("cmdEliminarTodos"),
                                  QStringLiteral("cmdCargar"), QStringLiteral("cmdAceptar"), QStringLiteral("cmdCancelar")}),
              (QStringList{QStringLiteral("<- Agregar"), QStringLiteral("Quitar ->"), QStringLiteral("<<- Todos"),
                           QStringLiteral("Todos ->>"), QStringLiteral("Cargar Datos"), QStringLiteral("Siguiente ->"),
                           QStringLiteral("Salir")}));
    // The host's mandatory mark, on what the form declares mandatory only.
    EXPECT_TRUE(Widget<QComboBox>(QStringLiteral("cboCentro")).property("mandatory").toBool());
    EXPECT_TRUE(Widget<QListView>(QStringLiteral("lstSeleccionados")).property("mandatory").toBool());
    EXPECT_FALSE(Widget<QListView>(QStringLiteral("lstDisponibles")).property("mandatory").toBool());
    // Reloading saved work is not offered yet.
    EXPECT_FALSE(Widget<QPushButton>(QStringLiteral("cmdCargar")).isEnabled());
}

TEST_F(WizardWindows, TheSelectedListIsOnTheLeftOfTheAvailableOne)
{
    OpenWizard();
    QWidget *view = TopView();
    view->resize(720, 480);
    QApplication::processEvents();
    auto &seleccionados = Widget<QListView>(QStringLiteral("lstSeleccionados"));
    auto &disponibles = Widget<QListView>(QStringLiteral("lstDisponibles"));
    auto &agregar = Widget<QPushButton>(QStringLiteral("cmdAgregarUno"));
    const int left = seleccionados.mapTo(view, QPoint(0, 0)).x();
    const int middle = agregar.mapTo(view, QPoint(0, 0)).x();
    const int right = disponibles.mapTo(view, QPoint(0, 0)).x();
    EXPECT_LT(left, middle);
    EXPECT_LT(middle, right);
    // The lists take the room the window gives them.
    EXPECT_GT(seleccionados.height(), 200);
    EXPECT_GT(seleccionados.width(), 200);
}

TEST_F(WizardWindows, ForwardWithNothingSelectedWarnsOverTheWindowAndStays)
{
    OpenWizard();
    QWidget *view = TopView();
    Widget<QPushButton>(QStringLiteral("cmdAceptar")).click();
    ASSERT_EQ(messages.size(), 1);
    EXPECT_EQ(messages[0].title, QStringLiteral("Vendelar"));
    EXPECT_EQ(messages[0].text, QStringLiteral("Debe seleccionar algún curso escolar"));
    EXPECT_EQ(messages[0].icon, QMessageBox::Warning);
    EXPECT_EQ(messages[0].buttons, QStringList{QStringLiteral("Aceptar")});
    EXPECT_EQ(messages[0].parent, view);
    EXPECT_EQ(OpenViewTitles(qtUi), QStringList{kTituloCursos});
}

TEST_F(WizardWindows, ChoosingTheSchoolAndMovingYearsShowsInBothLists)
{
    frmSelCursos &form = OpenWizard();
    ChooseWithKeys(Widget<QComboBox>(QStringLiteral("cboCentro")), QStringLiteral("Colegio San Prueba"));
    EXPECT_EQ(form.cboCentro.ListIndex(), 0);
    auto &disponibles = Widget<QListView>(QStringLiteral("lstDisponibles"));
    auto &seleccionados = Widget<QListView>(QStringLiteral("lstSeleccionados"));
    EXPECT_EQ(Rows(disponibles), (QStringList{QStringLiteral("2023-2024"), QStringLiteral("2024-2025")}));

    ClickRow(disponibles, QStringLiteral("2024-2025"));
    EXPECT_EQ(form.lstDisponibles.ListIndex(), 1);
    Widget<QPushButton>(QStringLiteral("cmdAgregarUno")).click();
    EXPECT_EQ(Rows(seleccionados), QStringList{QStringLiteral("2024-2025")});
    EXPECT_EQ(Rows(disponibles), QStringList{QStringLiteral("2023-2024")});
    // The moved entry left the list: nothing is highlighted there now.
    EXPECT_FALSE(disponibles.selectionModel()->hasSelection());
    EXPECT_EQ(form.lstDisponibles.ListIndex(), -1);

    DoubleClickRow(disponibles, QStringLiteral("2023-2024"));
    EXPECT_EQ(Rows(seleccionados), (QStringList{QStringLiteral("2024-2025"), QStringLiteral("2023-2024")}));
    EXPECT_EQ(Rows(disponibles), QStringList());

    Widget<QPushButton>(QStringLiteral("cmdEliminarTodos")).click();
    EXPECT_EQ(Rows(disponibles), (QStringList{QStringLiteral("2024-2025"), QStringLiteral("2023-2024")}));
    EXPECT_EQ(Rows(seleccionados), QStringList());
}

TEST_F(WizardWindows, ADoubleClickOnAnEmptyAreaMovesNothing)
{
    OpenWizard();
    ChooseWithKeys(Widget<QComboBox>(QStringLiteral("cboCentro")), QStringLiteral("Colegio San Prueba"));
    auto &disponibles = Widget<QListView>(QStringLiteral("lstDisponibles"));
    disponibles.resize(300, 300);
    DoubleClickAt(disponibles, QPoint(20, disponibles.viewport()->height() - 10));
    EXPECT_EQ(Rows(disponibles), (QStringList{QStringLiteral("2023-2024"), QStringLiteral("2024-2025")}));
    EXPECT_EQ(Rows(Widget<QListView>(QStringLiteral("lstSeleccionados"))), QStringList());
}

TEST_F(WizardWindows, ForwardOpensTheActivityWindowAboveTheFirst)
{
    ToActivities({QStringLiteral("2024-2025")});
    EXPECT_EQ(OpenViewTitles(qtUi), (QStringList{kTituloCursos, kTituloActividades}));
    QWidget *first = qtUi.ViewOf(*qtUi.Stack().Forms().first());
    QWidget *second = TopView();
    EXPECT_TRUE(first->isVisible());
    EXPECT_TRUE(second->isVisible());
    EXPECT_EQ(second->parentWidget(), first);

    auto &curso = Widget<QComboBox>(QStringLiteral("cboCursoEscolar"));
    EXPECT_EQ(Rows(curso), QStringList{QStringLiteral("2024-2025")});
    EXPECT_EQ(curso.currentText(), QStringLiteral("2024-2025"));
    EXPECT_EQ(Rows(Widget<QListView>(QStringLiteral("lstDisponibles"))),
              (QStringList{QStringLiteral("Comedor"), QStringLiteral("Ajedrez"), QStringLiteral("Robótica"),
                           QStringLiteral("Natación")}));
    EXPECT_EQ(Widget<QGroupBox>(QStringLiteral("fraActual")).title(), QStringLiteral("Actividades"));
    EXPECT_EQ(ButtonTexts(*second, {QStringLiteral("cmdCancelar"), QStringLiteral("cmdAceptar")}),
              (QStringList{QStringLiteral("<- Anterior"), QStringLiteral("Siguiente ->")}));
}

TEST_F(WizardWindows, BackReturnsToTheFirstWindowAsTheUserLeftIt)
{
    ToActivities({QStringLiteral("2024-2025")});
    Widget<QPushButton>(QStringLiteral("cmdCancelar")).click();
    Flush();
    EXPECT_EQ(OpenViewTitles(qtUi), QStringList{kTituloCursos});
    EXPECT_EQ(FormViewsAlive(), 1);
    EXPECT_EQ(Widget<QComboBox>(QStringLiteral("cboCentro")).currentText(), QStringLiteral("Colegio San Prueba"));
    EXPECT_EQ(Rows(Widget<QListView>(QStringLiteral("lstSeleccionados"))), QStringList{QStringLiteral("2024-2025")});
    EXPECT_EQ(Rows(Widget<QListView>(QStringLiteral("lstDisponibles"))), QStringList{QStringLiteral("2023-2024")});
}

TEST_F(WizardWindows, TheMonthWindowOffersTheMonthsWithFees)
{
    ToActivities({QStringLiteral("2024-2025")});
    ClickRow(Widget<QListView>(QStringLiteral("lstDisponibles")), QStringLiteral("Ajedrez"));
    Widget<QPushButton>(QStringLiteral("cmdAgregarUno")).click();
    EXPECT_EQ(Rows(Widget<QListView>(QStringLiteral("lstSeleccionados"))), QStringList{QStringLiteral("Ajedrez")});
    Widget<QPushButton>(QStringLiteral("cmdAceptar")).click();

    EXPECT_EQ(TopView()->windowTitle(), kTituloMeses);
    auto &actividad = Widget<QComboBox>(QStringLiteral("cboActCurEsc"));
    EXPECT_EQ(Rows(actividad), QStringList{QStringLiteral("2024-2025 - Ajedrez")});
    EXPECT_EQ(actividad.currentIndex(), 0);
    EXPECT_EQ(Widget<QLabel>(QStringLiteral("Label1")).text(), QStringLiteral("Actividades del Curso Escolar"));
    EXPECT_EQ(Widget<QGroupBox>(QStringLiteral("fraActual")).title(), QStringLiteral("Meses de Facturación de la Actividad"));
    EXPECT_EQ(Rows(Widget<QListView>(QStringLiteral("lstDisponibles"))),
              (QStringList{QStringLiteral("Octubre"), QStringLiteral("Noviembre")}));

    // Forward with no month chosen is refused over this window.
    Widget<QPushButton>(QStringLiteral("cmdAceptar")).click();
    ASSERT_EQ(messages.size(), 1);
    EXPECT_EQ(messages[0].text, QStringLiteral("Debe seleccionar algún mes de cobro en todas las actividades"));
    EXPECT_EQ(messages[0].icon, QMessageBox::Warning);
    EXPECT_EQ(messages[0].parent, TopView());
    EXPECT_EQ(TopView()->windowTitle(), kTituloMeses);
}

TEST_F(WizardWindows, TheDeductionWindowShowsTheActivityAndTheCommunityPart)
{
    ToDeductions();
    EXPECT_EQ(OpenViewTitles(qtUi), (QStringList{kTituloCursos, kTituloActividades, kTituloMeses, kTituloPorcentajes}));
    EXPECT_EQ(Rows(Widget<QListView>(QStringLiteral("lstActividad"))), QStringList{QStringLiteral("2024-2025 - Ajedrez")});
    // Nothing is highlighted until the user picks it.
    EXPECT_EQ(Top<frmActividadPonderacion>().lstActividad.ListIndex(), -1);
    EXPECT_FALSE(Widget<QListView>(QStringLiteral("lstActividad")).selectionModel()->hasSelection());
    EXPECT_EQ(Rows(Widget<QListView>(QStringLiteral("lstActPorc"))), QStringList());
    auto &pares = Widget<QComboBox>(QStringLiteral("cboTipoPorcentaje"));
    EXPECT_TRUE(Rows(pares).contains(QStringLiteral("Donativo - 80%")));
    EXPECT_EQ(pares.currentIndex(), -1);
    auto &comunidad = Widget<QCheckBox>(QStringLiteral("chkComunidad"));
    EXPECT_EQ(comunidad.text(), QStringLiteral("Aplicar deducciones por comunidad autónoma"));
    EXPECT_FALSE(comunidad.isChecked());
    EXPECT_FALSE(Widget<QComboBox>(QStringLiteral("cboComAut")).isEnabled());
    EXPECT_FALSE(Widget<QComboBox>(QStringLiteral("cboDeduccion")).isEnabled());

    // Checking the box enables the community lists and shows the first community.
    comunidad.click();
    EXPECT_TRUE(Top<frmActividadPonderacion>().chkComunidad.Value() == 1);
    auto &comunidades = Widget<QComboBox>(QStringLiteral("cboComAut"));
    EXPECT_TRUE(comunidades.isEnabled());
    EXPECT_EQ(comunidades.currentIndex(), 0);
    EXPECT_EQ(comunidades.currentText(), Top<frmActividadPonderacion>().cboComAut.List(0));
}

TEST_F(WizardWindows, AddingAPairWithoutAnActivityIsRefusedWithTheWarning)
{
    ToDeductions();
    Widget<QPushButton>(QStringLiteral("cmdAnadir")).click();
    ASSERT_EQ(messages.size(), 1);
    EXPECT_EQ(messages[0].text, QStringLiteral("Seleccione una actividad"));
    EXPECT_EQ(messages[0].icon, QMessageBox::Warning);
    EXPECT_EQ(messages[0].title, QStringLiteral("Vendelar"));
}

TEST_F(WizardWindows, TheLastWindowAndBackToTheDeductionsAsLeft)
{
    ToDeductions();
    ClickRow(Widget<QListView>(QStringLiteral("lstActividad")), QStringLiteral("2024-2025 - Ajedrez"));
    ChooseWithKeys(Widget<QComboBox>(QStringLiteral("cboTipoPorcentaje")), QStringLiteral("Donativo - 80%"));
    Widget<QPushButton>(QStringLiteral("cmdAnadir")).click();
    EXPECT_EQ(Rows(Widget<QListView>(QStringLiteral("lstActPorc"))),
              QStringList{QStringLiteral("2024-2025 - Ajedrez <-> Donativo - 80%")});
    EXPECT_EQ(Rows(Widget<QListView>(QStringLiteral("lstActividad"))), QStringList());
    Widget<QPushButton>(QStringLiteral("cmdSiguiente")).click();

    EXPECT_EQ(OpenViewTitles(qtUi),
              (QStringList{kTituloCursos, kTituloActividades, kTituloMeses, kTituloPorcentajes, kTituloAlumnos}));
    EXPECT_EQ(ButtonTexts(*TopView(), {QStringLiteral("cmdAnterior"), QStringLiteral("cmdCancelar")}),
              (QStringList{QStringLiteral("<- Anterior"), QStringLiteral("Salir")}));

    Widget<QPushButton>(QStringLiteral("cmdAnterior")).click();
    Flush();
    EXPECT_EQ(OpenViewTitles(qtUi), (QStringList{kTituloCursos, kTituloActividades, kTituloMeses, kTituloPorcentajes}));
    EXPECT_EQ(Rows(Widget<QListView>(QStringLiteral("lstActPorc"))),
              QStringList{QStringLiteral("2024-2025 - Ajedrez <-> Donativo - 80%")});
}

TEST_F(WizardWindows, SalirInTheLastWindowClosesEveryWindow)
{
    ToDeductions();
    ClickRow(Widget<QListView>(QStringLiteral("lstActividad")), QStringLiteral("2024-2025 - Ajedrez"));
    ChooseWithKeys(Widget<QComboBox>(QStringLiteral("cboTipoPorcentaje")), QStringLiteral("Donativo - 80%"));
    Widget<QPushButton>(QStringLiteral("cmdAnadir")).click();
    Widget<QPushButton>(QStringLiteral("cmdSiguiente")).click();
    ASSERT_EQ(qtUi.Stack().Count(), 5);
    EXPECT_EQ(FormViewsAlive(), 5);

    Widget<QPushButton>(QStringLiteral("cmdCancelar")).click();
    EXPECT_TRUE(qtUi.Stack().IsEmpty());
    EXPECT_EQ(TopView(), nullptr);
    EXPECT_TRUE(modPrincipal::blnSalir);
    Flush();
    EXPECT_EQ(FormViewsAlive(), 0);
}

TEST_F(WizardWindows, ClosingAStepFromTheTitleBarGoesBack)
{
    ToActivities({QStringLiteral("2024-2025")});
    EXPECT_FALSE(TopView()->close()); // the form closes it, through the Ui
    Flush();
    EXPECT_EQ(OpenViewTitles(qtUi), QStringList{kTituloCursos});
    EXPECT_EQ(FormViewsAlive(), 1);
}

TEST_F(WizardWindows, ClosingTheFirstWindowFromTheTitleBarEndsTheWizard)
{
    OpenWizard();
    TopView()->close();
    EXPECT_TRUE(qtUi.Stack().IsEmpty());
    Flush();
    EXPECT_EQ(FormViewsAlive(), 0);
}

TEST_F(WizardWindows, TheHostCallReturnsWhenTheWizardIsClosed)
{
    Install();
    bool closedByTheUser = false;
    QObject timers;
    QTimer::singleShot(0, &timers, [&] {
        if (QWidget *view = TopView()) {
            EXPECT_EQ(view->windowTitle(), kTituloCursos);
            view->findChild<QPushButton *>(QStringLiteral("cmdCancelar"))->click();
            closedByTheUser = true;
        }
    });
    // Should the click not close it, the test must still end.
    QTimer::singleShot(10000, &timers, [&] {
        while (Form *top = qtUi.Stack().Top())
            qtUi.Unload(*top);
    });
    addin->ActivarFormulario(0);
    EXPECT_TRUE(closedByTheUser);
    EXPECT_TRUE(qtUi.Stack().IsEmpty());
}

TEST_F(WizardWindows, TheWindowIconIsTheSessionIcon)
{
    Install();
    QImage image(16, 16, QImage::Format_ARGB32);
    image.fill(Qt::darkBlue);
    ASSERT_TRUE(image.save(paths.iconFile, "PNG"));
    OpenWizard();
    EXPECT_FALSE(TopView()->windowIcon().availableSizes().isEmpty());
}

// The windows and the forms cannot drift apart: every control has a widget
// of its name and kind, every widget a control, and the window's own texts
// are the captions.
class WindowFiles : public GuiTest
{
protected:
    void ExpectFits(Form &form)
    {
        SCOPED_TRACE(form.Name().toStdString());
        ASSERT_TRUE(ViewFactory::Has(form.Name()));
        QDialog window;
        ViewFactory::Build(form.Name(), window);
        EXPECT_EQ(window.objectName(), form.Name());
        EXPECT_EQ(window.windowTitle(), form.Caption());
        EXPECT_EQ(ViewBinder::Mismatches(form, window), QStringList());
        EXPECT_EQ(ViewBinder::UnboundWidgets(form, window), QStringList());
        for (ControlBase *control : form.Controls()) {
            SCOPED_TRACE(control->Name().toStdString());
            QWidget *widget = window.findChild<QWidget *>(control->Name());
            ASSERT_NE(widget, nullptr);
            if (auto *frame = dynamic_cast<Frame *>(control)) {
                EXPECT_EQ(static_cast<QGroupBox *>(widget)->title(), frame->Caption());
            } else if (auto *label = dynamic_cast<Label *>(control)) {
                EXPECT_EQ(static_cast<QLabel *>(widget)->text(), label->Caption());
            } else if (auto *button = dynamic_cast<CommandButton *>(control)) {
                EXPECT_EQ(static_cast<QPushButton *>(widget)->text(), button->Caption());
            } else if (auto *check = dynamic_cast<CheckBox *>(control)) {
                EXPECT_EQ(static_cast<QCheckBox *>(widget)->text(), check->Caption());
            }
        }
    }
};

TEST_F(WindowFiles, EveryWizardWindowFitsItsForm)
{
    frmSelCursos cursos(qtUi);
    frmSelActividad actividades(qtUi, cursos);
    frmActividadMes meses(qtUi, cursos);
    frmActividadPonderacion porcentajes(qtUi, cursos);
    frmActividadAlumno alumnos(qtUi, cursos);
    ExpectFits(cursos);
    ExpectFits(actividades);
    ExpectFits(meses);
    ExpectFits(porcentajes);
    ExpectFits(alumnos);
}

TEST_F(WindowFiles, AWidgetOfTheWrongKindOrMissingIsReported)
{
    frmSelCursos cursos(qtUi);
    QDialog window;
    ViewFactory::Build(QStringLiteral("frmSelCursos"), window);
    delete window.findChild<QPushButton *>(QStringLiteral("cmdCargar"));
    auto *impostor = new QLabel(&window);
    window.findChild<QListView *>(QStringLiteral("lstDisponibles"))->setObjectName(QStringLiteral("lstOtra"));
    impostor->setObjectName(QStringLiteral("lstDisponibles"));
    EXPECT_EQ(ViewBinder::Mismatches(cursos, window),
              (QStringList{QStringLiteral("lstDisponibles: a QListView is needed, the window has a QLabel"),
                           QStringLiteral("cmdCargar: no QPushButton of this name")}));
    EXPECT_EQ(ViewBinder::UnboundWidgets(cursos, window), QStringList{QStringLiteral("lstOtra")});
}
