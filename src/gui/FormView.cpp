#include "gui/FormView.h"

#include "controls/Form.h"
#include "gui/ViewBinder.h"
#include "gui/ViewFactory.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QIcon>

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
