#include "gui/FormView.h"

#include "controls/Form.h"
#include "gui/ViewBinder.h"
#include "gui/ViewFactory.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QIcon>
#include <QLineEdit>
#include <QTableView>

FormView::FormView(Form &form, const ViewFactory &views, QWidget *parent) : QDialog(parent), m_form(&form)
{
    views.Build(form.Name(), *this);
    setWindowTitle(form.Caption());
    if (!form.IconPath().isEmpty() && QFileInfo(form.IconPath()).isFile())
        setWindowIcon(QIcon(form.IconPath()));
    // Each window blocks the ones beneath it, without an event loop of its own.
    setWindowModality(Qt::ApplicationModal);
    setSizeGripEnabled(true);
    m_binder = new ViewBinder(form, *this);
    PlaceCellEditors();
}

void FormView::PlaceCellEditors()
{
    // A window's edit box named txtValor lies over the current cell of its
    // grid whenever it is shown, as the grid's in-place editor.
    auto *editor = findChild<QLineEdit *>(QStringLiteral("txtValor"));
    auto *grid = findChild<QTableView *>(QStringLiteral("msgMod182"));
    if (!editor || !grid)
        return;
    editor->installEventFilter(this);
    m_cellEditor = editor;
    m_cellGrid = grid;
}

bool FormView::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_cellEditor && event->type() == QEvent::Show && m_cellGrid) {
        const QRect cell = m_cellGrid->visualRect(m_cellGrid->currentIndex());
        if (cell.isValid()) {
            const QPoint topLeft = m_cellGrid->viewport()->mapTo(this, cell.topLeft());
            m_cellEditor->setGeometry(QRect(topLeft, cell.size()).adjusted(0, -1, 2, 1));
        }
        m_cellEditor->raise();
        m_cellEditor->setFocus(Qt::MouseFocusReason);
        m_cellEditor->selectAll();
    }
    return QDialog::eventFilter(watched, event);
}

FormView::~FormView() = default;

void FormView::Detach()
{
    if (m_binder)
        m_binder->Unbind();
    m_form = nullptr;
    hide();
}

void FormView::closeEvent(QCloseEvent *event)
{
    if (!m_form) {
        event->accept();
        return;
    }
    // The title bar's close button is the window's back or exit button:
    // unloading the form closes this view through the Ui (or the form
    // refuses and the window stays).
    event->ignore();
    Form *form = m_form;
    RunGuarded(form->ui(), [form] { form->Unload(); });
}
