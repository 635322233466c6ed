#include "GuiFixture.h"

#include "WizardFixture.h"
#include "controls/Form.h"
#include "data/Connection.h"
#include "session/SessionSettings.h"
#include "session/denM182.h"
#include "session/modPrincipal.h"
#include "wizard/frmSelCursos.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QMouseEvent>

namespace {

// The offscreen platform cannot raise or size windows as a desktop does;
// its notes about that are not the program's.
QtMessageHandler g_standardHandler = nullptr;

void QuietOffscreenNotes(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (type == QtWarningMsg && message.startsWith(QStringLiteral("This plugin does not support")))
        return;
    if (g_standardHandler)
        g_standardHandler(type, context, message);
}

// The one application of the test program, created before the first test.
class QtApplicationEnvironment : public ::testing::Environment
{
public:
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        g_standardHandler = qInstallMessageHandler(QuietOffscreenNotes);
        static int argc = 1;
        static char name[] = "test_gui";
        static char *argv[] = {name, nullptr};
        m_app = std::make_unique<QApplication>(argc, argv);
        QApplication::setQuitOnLastWindowClosed(false);
    }
    void TearDown() override { m_app.reset(); }

private:
    std::unique_ptr<QApplication> m_app;
};

[[maybe_unused]] ::testing::Environment *const kEnvironment =
    ::testing::AddGlobalTestEnvironment(new QtApplicationEnvironment);

void SendMouse(QWidget &target, QEvent::Type type, const QPoint &point, Qt::MouseButtons buttons)
{
    QMouseEvent event(type, point, target.mapToGlobal(point), Qt::LeftButton, buttons, Qt::NoModifier);
    QApplication::sendEvent(&target, &event);
}

QPoint CenterOf(QAbstractItemView &view, int row)
{
    const QModelIndex index = view.model()->index(row, 0);
    view.scrollTo(index);
    const QRect rect = view.visualRect(index);
    if (!rect.isValid())
        throw std::runtime_error("the entry is not laid out");
    return rect.center();
}

int RowOf(const QAbstractItemView &view, const QString &text)
{
    const int row = Rows(view).indexOf(text);
    if (row < 0)
        throw std::runtime_error(("no entry «" + text + "» in " + view.objectName()).toStdString());
    return row;
}

} // namespace

void GuiTest::SetUp()
{
    ASSERT_TRUE(dir.isValid());
    qtUi.SetMessagePresenter([this](QMessageBox &box) {
        ShownMessage shown;
        shown.title = box.windowTitle();
        shown.text = box.text();
        shown.icon = box.icon();
        for (QAbstractButton *button : box.buttons())
            shown.buttons << button->text();
        shown.parent = box.parentWidget();
        const int unanswered = shown.buttons.contains(QStringLiteral("Sí")) ? vbYes : vbOK;
        shown.answer = answers.isEmpty() ? unanswered : answers.takeFirst();
        messages << shown;
        return shown.answer;
    });
}

void GuiTest::TearDown()
{
    while (Form *top = qtUi.Stack().Top()) {
        const int before = qtUi.Stack().Count();
        qtUi.Unload(*top);
        if (qtUi.Stack().Count() == before)
            break;
    }
    Flush();
}

void GuiTest::Flush()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

void GuiWizardTest::TearDown()
{
    GuiTest::TearDown();
    if (denM182::conM182().State() == Connection::adStateOpen)
        denM182::conM182().Close();
    denM182::conM182().SetConnectionString(denM182::InitialConnectionString());
    Connection::SetBaseFolder(QString());
    modPrincipal::blnSalir = false;
    cConfiguracion &c = modPrincipal::Configuracion();
    c.set_conLocalAppEntrada(nullptr);
    c.set_conLocalCentro(nullptr);
    c.set_conLocalBorradoCentro(nullptr);
    c.set_datossesion(nullptr);
}

void GuiWizardTest::Install()
{
    paths = BuildInstallation(dir.path(), description);
    const SessionSettings settings = SessionSettings::Load(paths.iniFile);
    modPrincipal::Settings() = settings.Program();
    addin = std::make_unique<cAsignarDatos>(qtUi);
    addin->ObtenerDatos(settings.BuildSession());
}

frmSelCursos &GuiWizardTest::OpenWizard()
{
    if (!addin)
        Install();
    qtUi.ShowModal(std::make_shared<frmSelCursos>(qtUi));
    return Top<frmSelCursos>();
}

QStringList Rows(const QAbstractItemView &view)
{
    QStringList rows;
    const QAbstractItemModel *model = view.model();
    for (int row = 0; model && row < model->rowCount(); ++row)
        rows << model->index(row, 0).data(Qt::DisplayRole).toString();
    return rows;
}

QStringList Rows(const QComboBox &combo)
{
    QStringList rows;
    for (int row = 0; row < combo.count(); ++row)
        rows << combo.itemText(row);
    return rows;
}

QStringList OpenViewTitles(const QtUi &ui)
{
    QStringList titles;
    for (Form *form : ui.Stack().Forms())
        titles << (ui.ViewOf(*form) ? ui.ViewOf(*form)->windowTitle() : QStringLiteral("(no view)"));
    return titles;
}

void ClickAt(QAbstractItemView &view, const QPoint &point)
{
    SendMouse(*view.viewport(), QEvent::MouseButtonPress, point, Qt::LeftButton);
    SendMouse(*view.viewport(), QEvent::MouseButtonRelease, point, Qt::NoButton);
}

void DoubleClickAt(QAbstractItemView &view, const QPoint &point)
{
    ClickAt(view, point);
    SendMouse(*view.viewport(), QEvent::MouseButtonDblClick, point, Qt::LeftButton);
    SendMouse(*view.viewport(), QEvent::MouseButtonRelease, point, Qt::NoButton);
}

void ClickRow(QAbstractItemView &view, int row)
{
    ClickAt(view, CenterOf(view, row));
}

void ClickRow(QAbstractItemView &view, const QString &text)
{
    ClickRow(view, RowOf(view, text));
}

void DoubleClickRow(QAbstractItemView &view, const QString &text)
{
    DoubleClickAt(view, CenterOf(view, RowOf(view, text)));
}

void PressKey(QWidget &widget, int key, const QString &text)
{
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(&widget, &press);
    QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, text);
    QApplication::sendEvent(&widget, &release);
}

void ChooseWithKeys(QComboBox &combo, const QString &text)
{
    const int target = Rows(combo).indexOf(text);
    if (target < 0)
        throw std::runtime_error(("no entry «" + text + "» in " + combo.objectName()).toStdString());
    for (int guard = 0; combo.currentIndex() != target && guard <= combo.count(); ++guard)
        PressKey(combo, combo.currentIndex() < target ? Qt::Key_Down : Qt::Key_Up);
    if (combo.currentIndex() != target)
        throw std::runtime_error("the arrow keys did not reach the entry");
}
