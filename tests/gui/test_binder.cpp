#include "GuiFixture.h"

#include "controls/Controls.h"
#include "controls/ListControls.h"
#include "gui/ViewFactory.h"

#include <QFocusEvent>
#include <QLineEdit>
#include <QProgressBar>
#include <QScrollBar>
#include <QVBoxLayout>
#include <cctype>
#include <tuple>

namespace {

// A window with one control of every kind; its handlers note their calls.
class frmPrueba : public Form
{
public:
    explicit frmPrueba(Ui &ui) : Form(ui, "frmPrueba", "Ventana de prueba")
    {
        lstLista.Click = [this] { clicks << QString("lstLista:%1").arg(lstLista.ListIndex()); };
        lstLista.DblClick = [this] { clicks << QString("lstLista_DblClick:%1").arg(lstLista.ListIndex()); };
        cboLista.Click = [this] { clicks << QString("cboLista:%1").arg(cboLista.ListIndex()); };
        cmdBoton.Click = [this] { clicks << "cmdBoton"; };
        chkOpcion.Click = [this] { clicks << QString("chkOpcion:%1").arg(chkOpcion.Value()); };
        // Only letters, digits and backspace reach the text, letters upper case.
        txtValor.KeyPress = [](int &key) {
            key = key == 8 || (key > 0 && key < 128 && std::isalnum(key)) ? std::toupper(key) : 0;
        };
        txtValor.LostFocus = [this] { clicks << "txtValor_LostFocus"; };
    }
    void Form_Load() override { cboLista.SetMandatory(true); txtValor.SetMandatory(true); }
    void Form_Unload(int &cancel) override { cancel = refuseToClose ? 1 : 0; }

    Label lblTexto{this, "lblTexto", "Texto:"};
    Frame fraMarco{this, "fraMarco", "Marco"};
    ListBox lstLista{this, "lstLista"};
    ComboBox cboLista{this, "cboLista"};
    CommandButton cmdBoton{this, "cmdBoton", "Botón"};
    CommandButton cmdFallar{this, "cmdFallar", "Fallar"};
    CheckBox chkOpcion{this, "chkOpcion", "Opción"};
    TextBox txtValor{this, "txtValor"};
    ProgressBar prgAvance{this, "prgAvance"};
    QStringList clicks;
    bool refuseToClose = false;
};

void BuildPrueba(QDialog &view)
{
    view.setObjectName("frmPrueba");
    auto *layout = new QVBoxLayout(&view);
    const std::pair<QWidget *, const char *> widgets[] = {
        {new QLabel, "lblTexto"},     {new QGroupBox, "fraMarco"},   {new QListView, "lstLista"},
        {new QComboBox, "cboLista"},  {new QPushButton, "cmdBoton"}, {new QPushButton, "cmdFallar"},
        {new QCheckBox, "chkOpcion"}, {new QLineEdit, "txtValor"},   {new QProgressBar, "prgAvance"}};
    for (const auto &[widget, name] : widgets) {
        widget->setObjectName(name);
        layout->addWidget(widget);
    }
    widgets[2].first->setMinimumHeight(200);
    view.resize(300, 500);
}

} // namespace

class Binding : public GuiTest
{
protected:
    void SetUp() override
    {
        GuiTest::SetUp();
        ViewFactory::Register("frmPrueba", &BuildPrueba);
        auto form = std::make_shared<frmPrueba>(qtUi);
        prueba = form.get();
        qtUi.ShowModal(form);
        QApplication::processEvents();
    }
    frmPrueba *prueba = nullptr;
};

TEST_F(Binding, CaptionsEnabledVisibleAndTooltipFollowTheControls)
{
    const QStringList captioned{"lblTexto", "fraMarco", "cmdBoton", "chkOpcion"};
    EXPECT_EQ(TopView()->windowTitle(), "Ventana de prueba");
    EXPECT_EQ(Texts(captioned), (QStringList{"Texto:", "Marco", "Botón", "Opción"}));
    prueba->lblTexto.SetCaption("Total: 1.234,50");
    prueba->fraMarco.SetCaption("Otro marco");
    prueba->cmdBoton.SetCaption("Guardar");
    EXPECT_EQ(Texts(captioned), (QStringList{"Total: 1.234,50", "Otro marco", "Guardar", "Opción"}));

    auto &boton = Widget<QPushButton>("cmdBoton");
    prueba->cmdBoton.SetEnabled(false);
    prueba->cmdBoton.SetToolTipText("Guarda el trabajo");
    prueba->lstLista.SetVisible(false);
    EXPECT_EQ(boton.toolTip(), "Guarda el trabajo");
    EXPECT_FALSE(Widget("lstLista").isVisible());
    boton.click();
    prueba->cmdBoton.SetEnabled(true);
    prueba->lstLista.SetVisible(true);
    EXPECT_TRUE(Widget("lstLista").isVisible());
    boton.click();
    EXPECT_EQ(prueba->clicks, QStringList{"cmdBoton"}); // the disabled button did nothing
}

TEST_F(Binding, MandatoryControlsHaveTheHostsStyle)
{
    const QColor yellow(0xFF, 0xFF, 0xE1);
    auto &combo = Widget<QComboBox>("cboLista");
    auto &lista = Widget<QListView>("lstLista");
    EXPECT_EQ(combo.palette().color(QPalette::Button), yellow);
    EXPECT_EQ(combo.palette().color(QPalette::Base), yellow);
    EXPECT_TRUE(Widget("txtValor").styleSheet().contains("#ffffe1", Qt::CaseInsensitive));
    EXPECT_EQ(lista.styleSheet(), QString());
    EXPECT_NE(lista.palette().color(QPalette::Base), yellow);
    prueba->cboLista.SetMandatory(false);
    EXPECT_NE(combo.palette().color(QPalette::Button), yellow);
    prueba->lstLista.SetMandatory(true);
    EXPECT_TRUE(lista.styleSheet().contains("#ffffe1", Qt::CaseInsensitive));
}

// A person's click or arrow key on an entry is the list's Click, the form
// setting the index one Click; focus, empty areas and removals are none.
TEST_F(Binding, TheListShowsItsHighlightAndTurnsClicksIntoItsEvents)
{
    for (const char *entry : {"Entrada 1", "Entrada 2", "Entrada 3"})
        prueba->lstLista.AddItem(entry);
    auto &lista = Widget<QListView>("lstLista");
    const auto highlight = [&] { // the model's index and the view's selected row
        const QModelIndexList rows = lista.selectionModel()->selectedRows();
        return std::pair(prueba->lstLista.ListIndex(), rows.isEmpty() ? -1 : rows.size() > 1 ? -2 : rows[0].row());
    };
    const QPoint empty(10, lista.viewport()->height() - 5);
    EXPECT_EQ(Rows(lista), (QStringList{"Entrada 1", "Entrada 2", "Entrada 3"}));
    QFocusEvent focusIn(QEvent::FocusIn, Qt::TabFocusReason);
    QApplication::sendEvent(&lista, &focusIn);
    EXPECT_EQ(highlight(), std::pair(-1, -1));
    prueba->lstLista.SetListIndex(2);
    EXPECT_EQ(highlight(), std::pair(2, 2));
    prueba->lstLista.SetListIndex(-1);
    EXPECT_EQ(highlight(), std::pair(-1, -1));
    ClickRow(lista, "Entrada 2");
    EXPECT_EQ(highlight(), std::pair(1, 1));
    PressKey(lista, Qt::Key_Down);
    ClickAt(lista, empty);
    ClickAt(lista, empty, true);
    EXPECT_EQ(highlight(), std::pair(2, 2));
    EXPECT_EQ(prueba->clicks, (QStringList{"lstLista:2", "lstLista:-1", "lstLista:1", "lstLista:2"}));

    prueba->clicks.clear();
    prueba->lstLista.RemoveItem(2); // the highlighted entry
    EXPECT_EQ(highlight(), std::pair(-1, -1));
    ClickRow(lista, "Entrada 2");
    prueba->lstLista.RemoveItem(0); // above the highlight: it stays on its entry
    EXPECT_EQ(highlight(), std::pair(0, 0));
    EXPECT_EQ(prueba->clicks, QStringList{"lstLista:1"});
    ClickRow(lista, "Entrada 2", true);
    EXPECT_EQ(prueba->clicks.last(), "lstLista_DblClick:0");
}

TEST_F(Binding, TheListScrollsSidewaysToItsExtent)
{
    auto &lista = Widget<QListView>("lstLista");
    const QString longest = "2024-2025 - Actividad extraescolar de robótica y programación avanzada";
    prueba->lstLista.AddItem("Corta");
    prueba->lstLista.AddItem(longest);
    prueba->lstLista.FitHorizontalExtent();
    lista.resize(150, 200);
    QApplication::processEvents();
    lista.doItemsLayout();
    EXPECT_GE(lista.sizeHintForColumn(0), lista.fontMetrics().horizontalAdvance(longest + "    "));
    EXPECT_GT(lista.horizontalScrollBar()->maximum(), 0);
    // Every entry is as wide as the extent, the short one too.
    EXPECT_EQ(lista.sizeHintForIndex(lista.model()->index(0, 0)).width(),
              lista.sizeHintForIndex(lista.model()->index(1, 0)).width());
}

TEST_F(Binding, AComboShowsNoEntryUntilOneIsPicked)
{
    auto &combo = Widget<QComboBox>("cboLista");
    prueba->cboLista.AddItem("Uno");
    prueba->cboLista.AddItem("Dos");
    EXPECT_EQ(Rows(combo), (QStringList{"Uno", "Dos"}));
    EXPECT_EQ(combo.currentIndex(), -1);
    ChooseWithKeys(combo, "Dos");
    EXPECT_EQ(prueba->cboLista.ListIndex(), 1);
    prueba->cboLista.SetListIndex(0);
    EXPECT_EQ(combo.currentText(), "Uno");
    EXPECT_EQ(prueba->clicks, (QStringList{"cboLista:0", "cboLista:1", "cboLista:0"}));
    prueba->cboLista.Clear();
    prueba->cboLista.AddItem("Tres");
    EXPECT_EQ(combo.currentIndex(), -1);
}

TEST_F(Binding, AHandlerThatFailsShowsTheErrorAndTheWindowStaysUsable)
{
    prueba->cmdFallar.Click = [this] {
        prueba->clicks << "cmdFallar";
        qtUi.SetMousePointer(vbHourglass);
        throw std::runtime_error("No se ha podido guardar: la tabla está bloqueada");
    };
    Click("cmdFallar");
    ExpectMessage(0, "No se ha podido guardar: la tabla está bloqueada", QMessageBox::Critical, TopView());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    ASSERT_NE(TopView(), nullptr);
    EXPECT_TRUE(TopView()->isVisible());
    Click("cmdBoton");
    Click("cmdFallar");
    EXPECT_EQ(prueba->clicks, (QStringList{"cmdFallar", "cmdBoton", "cmdFallar"}));
    EXPECT_EQ(messages.size(), 2);
}

TEST_F(Binding, TheCheckBoxSetsAndShowsTheValue)
{
    auto &opcion = Widget<QCheckBox>("chkOpcion");
    opcion.click();
    EXPECT_EQ(prueba->chkOpcion.Value(), 1);
    prueba->chkOpcion.SetValue(0);
    EXPECT_FALSE(opcion.isChecked());
    prueba->chkOpcion.SetValue(2);
    EXPECT_EQ(opcion.checkState(), Qt::PartiallyChecked);
    EXPECT_EQ(prueba->clicks, (QStringList{"chkOpcion:1", "chkOpcion:0", "chkOpcion:2"}));
}

TEST_F(Binding, TypedKeysGoThroughTheFormsKeyFilter)
{
    auto &valor = Widget<QLineEdit>("txtValor");
    for (const auto &[key, text] : {std::pair{Qt::Key_1, "1"}, {Qt::Key_A, "a"}, {Qt::Key_Comma, ","}, {Qt::Key_2, "2"}})
        PressKey(valor, key, text);
    EXPECT_EQ(std::tuple(prueba->txtValor.Text(), valor.text()), std::tuple(QString("1A2"), QString("1A2")));
    PressKey(valor, Qt::Key_Backspace);
    EXPECT_EQ(prueba->txtValor.Text(), "1A");
    prueba->txtValor.SetText("99");
    EXPECT_EQ(valor.text(), "99");
    QFocusEvent focusOut(QEvent::FocusOut);
    QApplication::sendEvent(&valor, &focusOut);
    EXPECT_EQ(prueba->clicks, QStringList{"txtValor_LostFocus"});
}

TEST_F(Binding, TheProgressBarShowsRangeAndValue)
{
    prueba->prgAvance.SetMax(40);
    prueba->prgAvance.SetValue(10);
    auto &avance = Widget<QProgressBar>("prgAvance");
    EXPECT_EQ(std::tuple(avance.minimum(), avance.maximum(), avance.value()), std::tuple(0, 40, 10));
}

TEST_F(Binding, NeitherEscapeNorARefusedCloseShutsTheWindow)
{
    PressKey(*TopView(), Qt::Key_Escape);
    ASSERT_EQ(qtUi.Stack().Count(), 1);
    prueba->refuseToClose = true;
    EXPECT_FALSE(TopView()->close());
    EXPECT_EQ(qtUi.Stack().Count(), 1);
    EXPECT_TRUE(TopView()->isVisible());
    prueba->refuseToClose = false;
}
