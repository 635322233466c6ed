#pragma once

#include <QDialog>
#include <QPointer>

class QLineEdit;
class QTableView;

class Form;
class ViewBinder;
class ViewFactory;

// The window of one form: a dialog built from the form's .ui file (by name,
// through the Ui's ViewFactory) with every control bound to its widget. It holds no
// rules of its own; closing it from the title bar is the window's own way
// back (the form is unloaded, so the window stack stays as the form knows it).
class FormView : public QDialog
{
    Q_OBJECT
public:
    FormView(Form &form, const ViewFactory &views, QWidget *parent = nullptr);
    ~FormView() override;

    // The form shown; null once the form has closed.
    Form *ShownForm() const { return m_form; }
    ViewBinder *Binder() const { return m_binder; }

    // The form is closing: forget it, stop showing its controls and hide.
    void Detach();

protected:
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

public Q_SLOTS:
    // Escape does not close a wizard window: only its buttons and the
    // title bar do.
    void reject() override {}

private:
    void PlaceCellEditors();

    Form *m_form;
    QPointer<QLineEdit> m_cellEditor;
    QPointer<QTableView> m_cellGrid;
    ViewBinder *m_binder = nullptr;
};
