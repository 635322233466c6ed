#pragma once

#include <QHash>
#include <QList>
#include <QMetaObject>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <functional>

class CheckBox;
class ComboBox;
class CommandButton;
class ControlBase;
class Form;
class Frame;
class Label;
class ListBox;
class ProgressBar;
class TextBox;
class Ui;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListView;
class QProgressBar;
class QPushButton;
class QWidget;

// Runs a form's handler for something a person did. A handler that throws
// does not take the program down: the pointer is restored, the error text
// is shown with the critical icon through `ui`, and the window stays usable.
void RunGuarded(Ui &ui, const std::function<void()> &handler);

// Shows the controls of a form in the widgets of its window, matched by
// name, and turns what a person does with a widget into the control's
// event: ListBox - QListView, ComboBox - QComboBox, CommandButton -
// QPushButton, CheckBox - QCheckBox, Label - QLabel, Frame - QGroupBox,
// TextBox - QLineEdit, ProgressBar - QProgressBar. The models are the
// source of truth: texts, entries, the highlighted entry, enabled, visible,
// tooltip and the host's mandatory mark all come from them.
class ViewBinder : public QObject
{
    Q_OBJECT
public:
    // The host's mandatory style: a light yellow field with a soft border.
    static constexpr const char *kMandatoryColor = "#FFFFE1";

    // Binds every control of `form` to the widget of its name under `root`
    // (and becomes a child of `root`). A control without a widget of the
    // right type is a programming error: it stops a debug build.
    ViewBinder(Form &form, QWidget &root);
    ~ViewBinder() override;

    // What does not fit between a form and its window: controls without a
    // widget of their name, or with a widget of the wrong type. Empty when
    // the window fits the form.
    static QStringList Mismatches(const Form &form, const QWidget &root);
    // Named widgets of the kinds above that no control of the form shows.
    static QStringList UnboundWidgets(const Form &form, const QWidget &root);
    // The widget class a control is shown in ("QListView", ...), empty for
    // a control this binder cannot show.
    static QString WidgetClassFor(const ControlBase &control);

    // The form is going away: stop listening to its controls.
    void Unbind();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Bind(ControlBase &control, QWidget &widget);
    void BindList(ListBox &list, QListView &view);
    void BindCombo(ComboBox &combo, QComboBox &view);
    void BindButton(CommandButton &button, QPushButton &view);
    void BindCheck(CheckBox &check, QCheckBox &view);
    void BindLabel(Label &label, QLabel &view);
    void BindFrame(Frame &frame, QGroupBox &view);
    void BindText(TextBox &text, QLineEdit &view);
    void BindProgress(ProgressBar &bar, QProgressBar &view);

    void ShowListIndex(ListBox &list, QListView &view);
    void ShowComboIndex(ComboBox &combo, QComboBox &view);
    void ShowCommonState(const ControlBase &control, QWidget &widget);
    void Guard(const std::function<void()> &handler);

    Ui &m_ui;
    QList<QMetaObject::Connection> m_connections;
    QHash<QLineEdit *, QPointer<TextBox>> m_textBoxes;
    // Set while a widget is being made to show its model, so that the
    // widget's own change signals are not taken for a person's doing.
    bool m_syncing = false;
    // Set while a list model removes or resets rows: the view moves its
    // current entry by itself then, which is nobody's click.
    int m_structural = 0;
};
