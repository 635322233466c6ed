#include "GuiFixture.h"
#include "controls/Controls.h"
#include "controls/ListControls.h"
#include "gui/ViewFactory.h"
#include <cctype>

namespace {
// A window with a control of each kind that reacts to a person; its handlers note their calls.
class frmPrueba : public Form
{
public:
    explicit frmPrueba(Ui &ui) : Form(ui, "frmPrueba", "Ventana de prueba")
    {
        lstLista.Click = [this] { calls << QString("lstLista:%1").arg(lstLista.ListIndex()); };
        lstLista.DblClick = [this] { calls << QString("lstLista_DblClick:%1").arg(lstLista.ListIndex()); };
        cboLista.Click = [this] { calls << QString("cboLista:%1").arg(cboLista.ListIndex()); };
        cmdBoton.Click = [this] { calls << "cmdBoton"; };
        cmdFallar.Click = [this] {
            calls << "cmdFallar";
            throw std::runtime_error("No se ha podido guardar: la tabla está bloqueada");
        };
        chkOpcion.Click = [this] { calls << QString("chkOpcion:%1").arg(chkOpcion.Value()); };
        // Only letters, digits and backspace reach the text, letters upper case.
        txtValor.KeyPress = [](int &key) {
            key = key == 8 || (key > 0 && key < 128 && std::isalnum(key)) ? std::toupper(key) : 0;
        };
        txtValor.LostFocus = [this] { calls << "txtValor_LostFocus"; };
    }
    ListBox lstLista{this, "lstLista"};
    ComboBox cboLista{this, "cboLista"};
    CommandButton cmdBoton{this, "cmdBoton", "Botón"}, cmdFallar{this, "cmdFallar", "Fallar"};
    CheckBox chkOpcion{this, "chkOpcion", "Opción"};
    TextBox txtValor{this, "txtValor"};
    QStringList calls;
};
} // namespace

class Binding : public GuiTest
{
protected:
    void SetUp() override
    {
        GuiTest::SetUp();
        qtUi.Views().Register("frmPrueba", [](QDialog &view) {
            auto *layout = new QVBoxLayout(&view);
            for (auto [widget, name] : {std::pair<QWidget *, const char *>{new QListView, "lstLista"},
                                        {new QComboBox, "cboLista"},
                                        {new QPushButton, "cmdBoton"},
                                        {new QPushButton, "cmdFallar"},
                                        {new QCheckBox, "chkOpcion"},
                                        {new QLineEdit, "txtValor"}}) {
                widget->setObjectName(name);
                layout->addWidget(widget);
            }
            view.resize(300, 500);
        });
        auto form = std::make_shared<frmPrueba>(qtUi);
        prueba = form.get();
        qtUi.ShowModal(form);
        QApplication::processEvents();
    }
    frmPrueba *prueba = nullptr;
};

TEST_F(Binding, TheButtonAndTheCheckBoxShowTheirControlsAndReportClicks)
{
    prueba->cmdBoton.SetCaption("Guardar");
    prueba->cmdBoton.SetEnabled(false);
    EXPECT_EQ(ShownText(Widget("cmdBoton")), "Guardar");
    Click("cmdBoton"); // disabled: nothing
    prueba->cmdBoton.SetEnabled(true);
    Click("cmdBoton");
    auto &opcion = Widget<QCheckBox>("chkOpcion");
    opcion.click();
    prueba->chkOpcion.SetValue(2);
    EXPECT_EQ(opcion.checkState(), Qt::PartiallyChecked);
    prueba->chkOpcion.SetValue(0);
    EXPECT_EQ(std::tuple(opcion.isChecked(), prueba->calls),
              std::tuple(false, QStringList{"cmdBoton", "chkOpcion:1", "chkOpcion:2", "chkOpcion:0"}));
}

// A click or an arrow key on an entry is the list's Click, as is the form
// setting the index; focus, a (double) click on an empty area and removals
// are none.
TEST_F(Binding, TheListShowsItsHighlightAndTurnsClicksIntoItsEvents)
{
    for (const char *entry : {"Entrada 1", "Entrada 2", "Entrada 3"})
        prueba->lstLista.AddItem(entry);
    auto &lista = Widget<QListView>("lstLista");
    const auto highlight = [&] { // the model's index and the view's selected rows
        QList<int> rows{prueba->lstLista.ListIndex()};
        for (const QModelIndex &row : lista.selectionModel()->selectedRows())
            rows << row.row();
        return rows;
    };
    EXPECT_EQ(Rows(lista), (QStringList{"Entrada 1", "Entrada 2", "Entrada 3"}));
    QFocusEvent focusIn(QEvent::FocusIn, Qt::TabFocusReason);
    QApplication::sendEvent(&lista, &focusIn);
    prueba->lstLista.SetListIndex(2);
    EXPECT_EQ(highlight(), (QList<int>{2, 2}));
    ClickRow(lista, "Entrada 2");
    PressKey(lista, Qt::Key_Down);
    ClickAt(lista, QPoint(10, lista.viewport()->height() - 5), true); // below the entries
    EXPECT_EQ(highlight(), (QList<int>{2, 2}));
    prueba->lstLista.RemoveItem(2);
    EXPECT_EQ(highlight(), QList<int>{-1});
    ClickRow(lista, "Entrada 2");
    EXPECT_EQ(prueba->calls, (QStringList{"lstLista:2", "lstLista:1", "lstLista:2", "lstLista:1"}));
    ClickRow(lista, "Entrada 2", true);
    EXPECT_EQ(prueba->calls.last(), "lstLista_DblClick:1");
}

TEST_F(Binding, TheListScrollsSidewaysToItsLongestEntryAndFourBlanks)
{
    auto &lista = Widget<QListView>("lstLista");
    const QString longest = "2024-2025 - Actividad extraescolar de robótica y programación avanzada";
    prueba->lstLista.AddItem("Corta");
    prueba->lstLista.AddItem(longest);
    prueba->lstLista.FitHorizontalExtent();
    const auto width = [&](int row) { return lista.sizeHintForIndex(lista.model()->index(row, 0)).width(); };
    EXPECT_GE(width(1), lista.fontMetrics().horizontalAdvance(longest + "    "));
    EXPECT_EQ(width(0), width(1)); // every entry as wide as the extent
}

TEST_F(Binding, AComboShowsNoEntryUntilOneIsPicked)
{
    auto &combo = Widget<QComboBox>("cboLista");
    prueba->cboLista.AddItem("Uno");
    prueba->cboLista.AddItem("Dos");
    EXPECT_EQ(std::tuple(Rows(combo), combo.currentIndex()), std::tuple(QStringList{"Uno", "Dos"}, -1));
    ChooseWithKeys(combo, "Dos");
    prueba->cboLista.SetListIndex(0);
    EXPECT_EQ(combo.currentText(), "Uno");
    prueba->cboLista.Clear();
    prueba->cboLista.AddItem("Tres");
    EXPECT_EQ(combo.currentIndex(), -1);
    EXPECT_EQ(prueba->calls, (QStringList{"cboLista:0", "cboLista:1", "cboLista:0"}));
}

TEST_F(Binding, AHandlerThatFailsShowsTheErrorAndTheWindowStaysUsable)
{
    Click("cmdFallar");
    ExpectOnlyMessage("No se ha podido guardar: la tabla está bloqueada", QMessageBox::Critical, TopView());
    ASSERT_NE(TopView(), nullptr);
    PressKey(*TopView(), Qt::Key_Escape); // nor does Escape close a wizard window
    EXPECT_TRUE(TopView()->isVisible());
    Click("cmdBoton");
    EXPECT_EQ(prueba->calls, (QStringList{"cmdFallar", "cmdBoton"}));
}

TEST_F(Binding, TypedKeysGoThroughTheFormsKeyFilter)
{
    auto &valor = Widget<QLineEdit>("txtValor");
    for (const auto &[key, text] : {std::pair{Qt::Key_1, "1"}, {Qt::Key_A, "a"}, {Qt::Key_Comma, ","}, {Qt::Key_2, "2"}})
        PressKey(valor, key, text);
    EXPECT_EQ(std::tuple(prueba->txtValor.Text(), valor.text()), std::tuple(QString("1A2"), QString("1A2")));
    PressKey(valor, Qt::Key_Backspace);
    prueba->txtValor.SetText(prueba->txtValor.Text() + "9");
    EXPECT_EQ(valor.text(), "1A9");
    QFocusEvent focusOut(QEvent::FocusOut);
    QApplication::sendEvent(&valor, &focusOut);
    EXPECT_EQ(prueba->calls, QStringList{"txtValor_LostFocus"});
}
