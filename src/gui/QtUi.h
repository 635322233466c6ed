#pragma once

#include "controls/StackedUi.h"
#include "gui/ViewFactory.h"

#include <QHash>
#include <QPointer>
#include <functional>
#include <memory>

class FormView;
class QAbstractButton;
class QEventLoop;
class QMessageBox;
class QUrl;
class QWidget;

// The Qt front end of Ui: every window on the stack gets a view (a dialog
// built from its .ui file and bound to the form's controls), shown modal
// above the window below it. ShowModal returns at once; the host's modal
// call RunUntilClosed is the only event loop of the wizard.
//
// Needs a QApplication; create it before the first window is shown.
class QtUi : public StackedUi
{
public:
    // Shows a message box MsgBox has built and returns the answer (vbOK,
    // vbCancel, vbYes, vbNo). The default runs the box modally; tests put a
    // script here so nothing ever blocks.
    using MessagePresenter = std::function<int(QMessageBox &box)>;
    // Opens a document for the user; the default asks the desktop.
    using UrlOpener = std::function<bool(const QUrl &url)>;

    // `productName` titles every message box.
    explicit QtUi(const QString &productName);
    ~QtUi() override;
    QtUi(const QtUi &) = delete;
    QtUi &operator=(const QtUi &) = delete;

    int MsgBox(const QString &text, int style = vbOKOnly) override;
    void Beep() override;
    void RunUntilClosed() override;
    void SetMousePointer(int pointer) override;
    void DoEvents() override;
    void ShellOpen(const QString &path) override;

    // An empty function restores the default.
    void SetMessagePresenter(MessagePresenter presenter);
    void SetUrlOpener(UrlOpener opener);

    // The box MsgBox shows: titled with the product name, the icon and the
    // Spanish buttons of `style`, each button carrying its answer.
    static std::unique_ptr<QMessageBox> BuildMessageBox(const QString &title, const QString &text, int style,
                                                        QWidget *parent);
    // The answer a button of such a box stands for; a box closed without a
    // button (null) answers as its escape button does.
    static int AnswerOf(const QMessageBox &box, const QAbstractButton *button);
    // Runs the box modally and returns the answer (the default presenter).
    static int ExecMessageBox(QMessageBox &box);

    // The view of an open window (null when it has none), and the one on top.
    QWidget *ViewOf(const Form &form) const;
    QWidget *TopView() const;

    // The windows this front end can show, by form name.
    ViewFactory &Views() { return m_views_factory; }

protected:
    void FormShown(Form &form) override;
    void FormClosed(Form &form) override;
    void AllClosed() override;

private:
    QString m_productName;
    ViewFactory m_views_factory;
    QHash<const Form *, QPointer<FormView>> m_views;
    MessagePresenter m_presenter;
    UrlOpener m_urlOpener;
    QEventLoop *m_loop = nullptr;
    bool m_hourglass = false;
};
