#include "GuiFixture.h"

#include "controls/Controls.h"
#include "controls/Form.h"
#include "controls/ListControls.h"
#include "gui/ViewBinder.h"
#include "gui/ViewFactory.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFocusEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <stdexcept>

namespace {

// A window with one control of every kind; its handlers count calls.
class frmPrueba : public Form
{
public:
    explicit frmPrueba(Ui &ui) : Form(ui, QStringLiteral("frmPrueba"), QStringLiteral("Ventana de prueba"))
    {
        lstLista.Click = [this] { clicks << QStringLiteral("lstLista:%1").arg(lstLista.ListIndex()); };
        lstLista.DblClick = [this] { clicks << QStringLiteral("lstLista_DblClick:%1").arg(lstLista.ListIndex()); };
        cboLista.Click = [this] { clicks << QStringLiteral("cboLista:%1").arg(cboLista.ListIndex()); };
        cmdBoton.Click = [this] { clicks << QStringLiteral("cmdBoton"); };
        cmdFallar.Click = [this] {
            clicks << QStringLiteral("cmdFallar");
            throw std::runtime_error("No se ha podido guardar: la tabla está bloqueada");
        };
        chkOpcion.Click = [this] { clicks << QStringLiteral("chkOpcion:%1").arg(chkOpcion.Value()); };
        // Only digits reach the text; a lower-case letter is written upper case.
        txtValor.KeyPress = [](int &key) {
            if (key >= 'a' && key <= 'z')
                key = key - 'a' + 'A';
            else if (key != 8 && (key < '0' || key > '9') && (key < 'A' || key > 'Z'))
                key = 0;
        };
        txtValor.LostFocus = [this] { clicks << QStringLiteral("txtValor_LostFocus"); };
    }

    QList<ControlBase *> MandatoryControls() override { return {&cboLista, &txtValor}; }
    void Form_Load() override
    {
        for (ControlBase *control : MandatoryControls())
            control->SetMandatory(true);
    }
    void Form_Unload(int &cancel) override { cancel = refuseToClose ? 1 : 0; }

    Label lblTexto{this, QStringLiteral("lblTexto"), QStringLiteral("Texto:")};
    Frame fraMarco{this, QStringLiteral("fraMarco"), QStringLiteral("Marco")};
    ListBox lstLista{this, QStringLiteral("lstLista")};
    ComboBox cboLista{this, QStringLiteral("cboLista")};
    CommandButton cmdBoton{this, QStringLiteral("cmdBoton"), QStringLiteral("Botón")};
    CommandButton cmdFallar{this, QStringLiteral("cmdFallar"), QStringLiteral("Fallar")};
    CheckBox chkOpcion{this, QStringLiteral("chkOpcion"), QStringLiteral("Opción")};
    TextBox txtValor{this, QStringLiteral("txtValor")};
    ProgressBar prgAvance{this, QStringLiteral("prgAvance")};

    QStringList clicks;
    bool refuseToClose = false;
};

template <typename W>
W *Add(QWidget &parent, QLayout &layout, const char *name)
{
    auto *widget = new W(&parent);
    widget->setObjectName(QString::fromLatin1(name));
    layout.addWidget(widget);
    return widget;
}

void BuildPrueba(QDialog &view)
{
    view.setObjectName(QStringLiteral("frmPrueba"));
    auto *layout = new QVBoxLayout(&view);
    Add<QLabel>(view, *layout, "lblTexto");
    Add<QGroupBox>(view, *layout, "fraMarco");
    Add<QListView>(view, *layout, "lstLista")->setMinimumHeight(200);
    Add<QComboBox>(view, *layout, "cboLista");
    Add<QPushButton>(view, *layout, "cmdBoton");
    Add<QPushButton>(view, *layout, "cmdFallar");
    Add<QCheckBox>(view, *layout, "chkOpcion");
    Add<QLineEdit>(view, *layout, "txtValor");
    Add<QProgressBar>(view, *layout, "prgAvance");
    view.resize(300, 500);
}

} // namespace

class Binding : public GuiTest
{
protected:
    void SetUp() override
    {
        GuiTest::SetUp();
        ViewFactory::Register(QStringLiteral("frmPrueba"), &BuildPrueba);
        auto form = std::make_shared<frmPrueba>(qtUi);
        prueba = form.get();
        qtUi.ShowModal(form);
        QApplication::processEvents();
    }
    void FillList(int count)
    {
        for (int i = 0; i < count; ++i)
            prueba->lstLista.AddItem(QStringLiteral("Entrada %1").arg(i + 1));
    }

    frmPrueba *prueba = nullptr;
};

TEST_F(Binding, TheWindowTakesTheFormsCaptionAndTexts)
{
    EXPECT_EQ(TopView()->windowTitle(), QStringLiteral("Ventana de prueba"));
    EXPECT_EQ(Widget<QLabel>(QStringLiteral("lblTexto")).text(), QStringLiteral("Texto:"));
    EXPECT_EQ(Widget<QGroupBox>(QStringLiteral("fraMarco")).title(), QStringLiteral("Marco"));
    EXPECT_EQ(Widget<QPushButton>(QStringLiteral("cmdBoton")).text(), QStringLiteral("Botón"));
    EXPECT_EQ(Widget<QCheckBox>(QStringLiteral("chkOpcion")).text(), QStringLiteral("Opción"));

    prueba->lblTexto.SetCaption(QStringLiteral("Total: 1.234,50"));
    prueba->fraMarco.SetCaption(QStringLiteral("Otro marco"));
    prueba->cmdBoton.SetCaption(QStringLiteral("Guardar"));
    EXPECT_EQ(Widget<QLabel>(QStringLiteral("lblTexto")).text(), QStringLiteral("Total: 1.234,50"));
    EXPECT_EQ(Widget<QGroupBox>(QStringLiteral("fraMarco")).title(), QStringLiteral("Otro marco"));
    EXPECT_EQ(Widget<QPushButton>(QStringLiteral("cmdBoton")).text(), QStringLiteral("Guardar"));
}

TEST_F(Binding, EnabledVisibleAndTooltipFollowTheControl)
{
    auto &boton = Widget<QPushButton>(QStringLiteral("cmdBoton"));
    prueba->cmdBoton.SetEnabled(false);
    prueba->cmdBoton.SetToolTipText(QStringLiteral("Guarda el trabajo"));
    prueba->lstLista.SetVisible(false);
    EXPECT_FALSE(boton.isEnabled());
    EXPECT_EQ(boton.toolTip(), QStringLiteral("Guarda el trabajo"));
    EXPECT_FALSE(Widget<QListView>(QStringLiteral("lstLista")).isVisible());
    boton.click();
    EXPECT_EQ(prueba->clicks, QStringList());

    prueba->cmdBoton.SetEnabled(true);
    prueba->lstLista.SetVisible(true);
    EXPECT_TRUE(Widget<QListView>(QStringLiteral("lstLista")).isVisible());
    boton.click();
    EXPECT_EQ(prueba->clicks, QStringList{QStringLiteral("cmdBoton")});
}

TEST_F(Binding, MandatoryControlsHaveTheHostsStyle)
{
    const QColor yellow(0xFF, 0xFF, 0xE1);
    auto &combo = Widget<QComboBox>(QStringLiteral("cboLista"));
    auto &lista = Widget<QListView>(QStringLiteral("lstLista"));
    EXPECT_EQ(combo.palette().color(QPalette::Button), yellow);
    EXPECT_EQ(combo.palette().color(QPalette::Base), yellow);
    EXPECT_TRUE(Widget<QLineEdit>(QStringLiteral("txtValor")).styleSheet().contains(QStringLiteral("#ffffe1"), Qt::CaseInsensitive));
    EXPECT_EQ(lista.styleSheet(), QString());
    EXPECT_NE(lista.palette().color(QPalette::Base), yellow);

    prueba->cboLista.SetMandatory(false);
    EXPECT_NE(combo.palette().color(QPalette::Button), yellow);
    prueba->lstLista.SetMandatory(true);
    EXPECT_TRUE(lista.styleSheet().contains(QStringLiteral("#ffffe1"), Qt::CaseInsensitive));
}

TEST_F(Binding, TheFormsListIndexHighlightsTheEntry)
{
    FillList(3);
    auto &lista = Widget<QListView>(QStringLiteral("lstLista"));
    EXPECT_EQ(Rows(lista), (QStringList{QStringLiteral("Entrada 1"), QStringLiteral("Entrada 2"), QStringLiteral("Entrada 3")}));
    EXPECT_FALSE(lista.selectionModel()->hasSelection());
    prueba->lstLista.SetListIndex(2);
    EXPECT_EQ(lista.selectionModel()->selectedRows(), QModelIndexList{lista.model()->index(2, 0)});
    // Only the form's own Click, not a second one from the view.
    EXPECT_EQ(prueba->clicks, QStringList{QStringLiteral("lstLista:2")});
    prueba->lstLista.SetListIndex(-1);
    EXPECT_FALSE(lista.selectionModel()->hasSelection());
}

TEST_F(Binding, ClickingAnEntryIsTheListsClick)
{
    FillList(3);
    auto &lista = Widget<QListView>(QStringLiteral("lstLista"));
    ClickRow(lista, 1);
    EXPECT_EQ(prueba->lstLista.ListIndex(), 1);
    EXPECT_EQ(prueba->clicks, QStringList{QStringLiteral("lstLista:1")});
    // The arrow keys move the highlight as clicks do.
    PressKey(lista, Qt::Key_Down);
    EXPECT_EQ(prueba->lstLista.ListIndex(), 2);
    EXPECT_EQ(prueba->clicks, (QStringList{QStringLiteral("lstLista:1"), QStringLiteral("lstLista:2")}));
}

TEST_F(Binding, TakingTheFocusHighlightsNothing)
{
    FillList(3);
    auto &lista = Widget<QListView>(QStringLiteral("lstLista"));
    QFocusEvent focusIn(QEvent::FocusIn, Qt::TabFocusReason);
    QApplication::sendEvent(&lista, &focusIn);
    EXPECT_EQ(prueba->lstLista.ListIndex(), -1);
    EXPECT_FALSE(lista.selectionModel()->hasSelection());
    EXPECT_EQ(prueba->clicks, QStringList());
}

TEST_F(Binding, AClickOnAnEmptyAreaKeepsTheHighlightedEntry)
{
    FillList(2);
    auto &lista = Widget<QListView>(QStringLiteral("lstLista"));
    ClickRow(lista, 0);
    prueba->clicks.clear();
    ClickAt(lista, QPoint(10, lista.viewport()->height() - 5));
    EXPECT_EQ(prueba->lstLista.ListIndex(), 0);
    EXPECT_EQ(lista.selectionModel()->selectedRows(), QModelIndexList{lista.model()->index(0, 0)});
    EXPECT_EQ(prueba->clicks, QStringList());
}

TEST_F(Binding, RemovingTheHighlightedEntryClicksNothing)
{
    FillList(3);
    auto &lista = Widget<QListView>(QStringLiteral("lstLista"));
    ClickRow(lista, 1);
    prueba->clicks.clear();
    prueba->lstLista.RemoveItem(1);
    EXPECT_EQ(prueba->lstLista.ListIndex(), -1);
    EXPECT_FALSE(lista.selectionModel()->hasSelection());
    EXPECT_EQ(prueba->clicks, QStringList());
    // An entry above the highlighted one goes: the highlight stays on its entry.
    ClickRow(lista, 1);
    prueba->clicks.clear();
    prueba->lstLista.RemoveItem(0);
    EXPECT_EQ(prueba->lstLista.ListIndex(), 0);
    EXPECT_EQ(lista.selectionModel()->selectedRows(), QModelIndexList{lista.model()->index(0, 0)});
    EXPECT_EQ(prueba->clicks, QStringList());
}

TEST_F(Binding, ADoubleClickOnAnEntryIsTheListsDoubleClick)
{
    FillList(2);
    auto &lista = Widget<QListView>(QStringLiteral("lstLista"));
    DoubleClickRow(lista, QStringLiteral("Entrada 2"));
    EXPECT_EQ(prueba->clicks.last(), QStringLiteral("lstLista_DblClick:1"));
    prueba->clicks.clear();
    DoubleClickAt(lista, QPoint(10, lista.viewport()->height() - 5));
    EXPECT_EQ(prueba->clicks, QStringList());
}

TEST_F(Binding, TheListScrollsSidewaysToItsExtent)
{
    auto &lista = Widget<QListView>(QStringLiteral("lstLista"));
    const QString longest = QStringLiteral("2024-2025 - Actividad extraescolar de robótica y programación avanzada");
    prueba->lstLista.AddItem(QStringLiteral("Corta"));
    prueba->lstLista.AddItem(longest);
    prueba->lstLista.FitHorizontalExtent();
    lista.resize(150, 200);
    QApplication::processEvents();
    lista.doItemsLayout();
    const int wanted = lista.fontMetrics().horizontalAdvance(longest + QStringLiteral("    "));
    EXPECT_GE(lista.sizeHintForColumn(0), wanted);
    EXPECT_GT(lista.horizontalScrollBar()->maximum(), 0);
    // Every entry is as wide as the extent, the short one too.
    EXPECT_EQ(lista.sizeHintForIndex(lista.model()->index(0, 0)).width(),
              lista.sizeHintForIndex(lista.model()->index(1, 0)).width());
}

TEST_F(Binding, AComboWithoutListIndexShowsNoEntry)
{
    auto &combo = Widget<QComboBox>(QStringLiteral("cboLista"));
    prueba->cboLista.AddItem(QStringLiteral("Uno"));
    prueba->cboLista.AddItem(QStringLiteral("Dos"));
    EXPECT_EQ(Rows(combo), (QStringList{QStringLiteral("Uno"), QStringLiteral("Dos")}));
    EXPECT_EQ(combo.currentIndex(), -1);
    EXPECT_EQ(prueba->cboLista.ListIndex(), -1);
    prueba->cboLista.SetListIndex(1);
    EXPECT_EQ(combo.currentText(), QStringLiteral("Dos"));
    EXPECT_EQ(prueba->clicks, QStringList{QStringLiteral("cboLista:1")});
    prueba->cboLista.Clear();
    prueba->cboLista.AddItem(QStringLiteral("Tres"));
    EXPECT_EQ(combo.currentIndex(), -1);
}

TEST_F(Binding, PickingAComboEntryIsTheCombosClick)
{
    auto &combo = Widget<QComboBox>(QStringLiteral("cboLista"));
    prueba->cboLista.AddItem(QStringLiteral("Uno"));
    prueba->cboLista.AddItem(QStringLiteral("Dos"));
    ChooseWithKeys(combo, QStringLiteral("Dos"));
    EXPECT_EQ(prueba->cboLista.ListIndex(), 1);
    EXPECT_EQ(prueba->clicks, (QStringList{QStringLiteral("cboLista:0"), QStringLiteral("cboLista:1")}));
}

TEST_F(Binding, AHandlerThatFailsShowsTheErrorAndTheWindowStaysUsable)
{
    auto &fallar = Widget<QPushButton>(QStringLiteral("cmdFallar"));
    fallar.click();
    ASSERT_EQ(messages.size(), 1);
    EXPECT_EQ(messages[0].text, QStringLiteral("No se ha podido guardar: la tabla está bloqueada"));
    EXPECT_EQ(messages[0].icon, QMessageBox::Critical);
    EXPECT_EQ(messages[0].title, QStringLiteral("Vendelar"));
    EXPECT_EQ(messages[0].parent, TopView());
    ASSERT_NE(TopView(), nullptr);
    EXPECT_TRUE(TopView()->isVisible());
    Widget<QPushButton>(QStringLiteral("cmdBoton")).click();
    fallar.click();
    EXPECT_EQ(prueba->clicks, (QStringList{QStringLiteral("cmdFallar"), QStringLiteral("cmdBoton"), QStringLiteral("cmdFallar")}));
    EXPECT_EQ(messages.size(), 2);
}

TEST_F(Binding, AFailingHandlerDoesNotLeaveTheHourglass)
{
    prueba->cmdFallar.Click = [this] {
        qtUi.SetMousePointer(vbHourglass);
        throw std::runtime_error("fallo");
    };
    Widget<QPushButton>(QStringLiteral("cmdFallar")).click();
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(Binding, TheCheckBoxSetsAndShowsTheValue)
{
    auto &opcion = Widget<QCheckBox>(QStringLiteral("chkOpcion"));
    opcion.click();
    EXPECT_EQ(prueba->chkOpcion.Value(), 1);
    EXPECT_EQ(prueba->clicks, QStringList{QStringLiteral("chkOpcion:1")});
    prueba->chkOpcion.SetValue(0);
    EXPECT_FALSE(opcion.isChecked());
    prueba->chkOpcion.SetValue(2);
    EXPECT_EQ(opcion.checkState(), Qt::PartiallyChecked);
    EXPECT_EQ(prueba->clicks,
              (QStringList{QStringLiteral("chkOpcion:1"), QStringLiteral("chkOpcion:0"), QStringLiteral("chkOpcion:2")}));
}

TEST_F(Binding, TypedKeysGoThroughTheFormsKeyFilter)
{
    auto &valor = Widget<QLineEdit>(QStringLiteral("txtValor"));
    PressKey(valor, Qt::Key_1, QStringLiteral("1"));
    PressKey(valor, Qt::Key_A, QStringLiteral("a"));
    PressKey(valor, Qt::Key_Comma, QStringLiteral(","));
    PressKey(valor, Qt::Key_2, QStringLiteral("2"));
    EXPECT_EQ(prueba->txtValor.Text(), QStringLiteral("1A2"));
    EXPECT_EQ(valor.text(), QStringLiteral("1A2"));
    PressKey(valor, Qt::Key_Backspace);
    EXPECT_EQ(prueba->txtValor.Text(), QStringLiteral("1A"));
    prueba->txtValor.SetText(QStringLiteral("99"));
    EXPECT_EQ(valor.text(), QStringLiteral("99"));
    QFocusEvent focusOut(QEvent::FocusOut);
    QApplication::sendEvent(&valor, &focusOut);
    EXPECT_EQ(prueba->clicks, QStringList{QStringLiteral("txtValor_LostFocus")});
}

TEST_F(Binding, TheProgressBarShowsRangeAndValue)
{
    prueba->prgAvance.SetMax(40);
    prueba->prgAvance.SetValue(10);
    auto &avance = Widget<QProgressBar>(QStringLiteral("prgAvance"));
    EXPECT_EQ(avance.minimum(), 0);
    EXPECT_EQ(avance.maximum(), 40);
    EXPECT_EQ(avance.value(), 10);
}

TEST_F(Binding, AWindowThatRefusesToCloseStaysOpen)
{
    prueba->refuseToClose = true;
    EXPECT_FALSE(TopView()->close());
    EXPECT_EQ(qtUi.Stack().Count(), 1);
    EXPECT_TRUE(TopView()->isVisible());
    prueba->refuseToClose = false;
}

TEST_F(Binding, EscapeDoesNotCloseTheWindow)
{
    PressKey(*TopView(), Qt::Key_Escape);
    EXPECT_EQ(qtUi.Stack().Count(), 1);
    EXPECT_TRUE(TopView()->isVisible());
}
