#include "gui/QtUi.h"

#include "controls/Form.h"
#include "gui/FormView.h"

#include <QApplication>
#include <QDesktopServices>
#include <QEventLoop>
#include <QLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QRect>
#include <QUrl>

namespace {

constexpr const char *kAnswerProperty = "vbAnswer";

QMessageBox::Icon IconOf(int style)
{
    switch (style & kIconMask) {
    case vbCritical:
        return QMessageBox::Critical;
    case vbQuestion:
        return QMessageBox::Question;
    case vbExclamation:
        return QMessageBox::Warning;
    case vbInformation:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

QPushButton *AddButton(QMessageBox &box, const QString &text, QMessageBox::ButtonRole role, int answer)
{
    QPushButton *button = box.addButton(text, role);
    button->setProperty(kAnswerProperty, answer);
    return button;
}

} // namespace

QtUi::QtUi(const QString &productName) : m_productName(productName)
{
}

QtUi::~QtUi()
{
    // Views still open belong to windows nobody will unload any more.
    for (const QPointer<FormView> &view : std::as_const(m_views))
        delete view.data();
    if (m_hourglass)
        QApplication::restoreOverrideCursor();
}

std::unique_ptr<QMessageBox> QtUi::BuildMessageBox(const QString &title, const QString &text, int style, QWidget *parent)
{
    auto box = std::make_unique<QMessageBox>(parent);
    box->setWindowTitle(title);
    box->setText(text);
    box->setTextFormat(Qt::PlainText);
    box->setIcon(IconOf(style));
    const QString aceptar = QStringLiteral("Aceptar");
    const QString cancelar = QStringLiteral("Cancelar");
    const QString si = QStringLiteral("Sí");
    const QString no = QStringLiteral("No");
    switch (style & kButtonsMask) {
    case vbOKCancel: {
        QPushButton *ok = AddButton(*box, aceptar, QMessageBox::AcceptRole, vbOK);
        box->setEscapeButton(AddButton(*box, cancelar, QMessageBox::RejectRole, vbCancel));
        box->setDefaultButton(ok);
        break;
    }
    case vbYesNo: {
        QPushButton *yes = AddButton(*box, si, QMessageBox::YesRole, vbYes);
        box->setEscapeButton(AddButton(*box, no, QMessageBox::NoRole, vbNo));
        box->setDefaultButton(yes);
        break;
    }
    case vbYesNoCancel: {
        QPushButton *yes = AddButton(*box, si, QMessageBox::YesRole, vbYes);
        AddButton(*box, no, QMessageBox::NoRole, vbNo);
        box->setEscapeButton(AddButton(*box, cancelar, QMessageBox::RejectRole, vbCancel));
        box->setDefaultButton(yes);
        break;
    }
    default: {
        QPushButton *ok = AddButton(*box, aceptar, QMessageBox::AcceptRole, vbOK);
        box->setEscapeButton(ok);
        box->setDefaultButton(ok);
        break;
    }
    }
    return box;
}

int QtUi::AnswerOf(const QMessageBox &box, const QAbstractButton *button)
{
    if (!button)
        button = box.escapeButton();
    if (button) {
        const QVariant answer = button->property(kAnswerProperty);
        if (answer.isValid())
            return answer.toInt();
    }
    return vbCancel;
}

int QtUi::ExecMessageBox(QMessageBox &box)
{
    box.exec();
    return AnswerOf(box, box.clickedButton());
}

int QtUi::MsgBox(const QString &text, int style)
{
    std::unique_ptr<QMessageBox> box = BuildMessageBox(m_productName, text, style, TopView());
    // A message shown while the pointer is an hourglass must still be usable.
    const bool restore = m_hourglass;
    if (restore)
        QApplication::setOverrideCursor(Qt::ArrowCursor);
    const int answer = m_presenter ? m_presenter(*box) : ExecMessageBox(*box);
    if (restore)
        QApplication::restoreOverrideCursor();
    return answer;
}

void QtUi::Beep()
{
    QApplication::beep();
}

void QtUi::RunUntilClosed()
{
    if (Stack().IsEmpty())
        return;
    QEventLoop loop;
    QEventLoop *outer = m_loop;
    m_loop = &loop;
    // An application quitting ends the loop early: stop waiting then too.
    loop.exec();
    m_loop = outer;
}

void QtUi::SetMousePointer(int pointer)
{
    if (pointer == vbHourglass && !m_hourglass) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        m_hourglass = true;
    } else if (pointer != vbHourglass && m_hourglass) {
        QApplication::restoreOverrideCursor();
        m_hourglass = false;
    }
}

void QtUi::DoEvents()
{
    QApplication::processEvents();
}

void QtUi::ShellOpen(const QString &path)
{
    const QUrl url = QUrl::fromLocalFile(path);
    if (m_urlOpener)
        m_urlOpener(url);
    else
        QDesktopServices::openUrl(url);
}

void QtUi::SetMessagePresenter(MessagePresenter presenter)
{
    m_presenter = std::move(presenter);
}

void QtUi::SetUrlOpener(UrlOpener opener)
{
    m_urlOpener = std::move(opener);
}

QWidget *QtUi::ViewOf(const Form &form) const
{
    return m_views.value(&form).data();
}

QWidget *QtUi::TopView() const
{
    const Form *top = Stack().Top();
    return top ? ViewOf(*top) : nullptr;
}

void QtUi::FormShown(Form &form)
{
    // The window below stays open beneath the new one.
    QWidget *below = nullptr;
    const QList<Form *> forms = Stack().Forms();
    for (int i = forms.indexOf(&form) - 1; i >= 0 && !below; --i)
        below = ViewOf(*forms.at(i));
    auto *view = new FormView(form, m_views_factory, below);
    m_views.insert(&form, view);
    if (below) {
        // A step covers the one it came from, so the wizard reads as one
        // window whose pages change rather than a pile of offset windows.
        // A dialog of fixed size keeps it, centred on the window below
        // (its layout sets that size once activated).
        if (view->layout())
            view->layout()->activate();
        QRect area(QPoint(0, 0), view->size().expandedTo(below->size()).boundedTo(view->maximumSize()));
        area.moveCenter(below->geometry().center());
        view->setGeometry(area);
    }
    view->show();
    view->raise();
    view->activateWindow();
}

void QtUi::FormClosed(Form &form)
{
    QPointer<FormView> view = m_views.take(&form);
    if (!view)
        return;
    // The form is about to go; the view may be in the middle of one of its
    // own events (a button's click), so it is deleted later.
    view->Detach();
    view->deleteLater();
}

void QtUi::AllClosed()
{
    if (m_loop)
        m_loop->quit();
}
