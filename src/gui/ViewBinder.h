#pragma once

#include "gui/EventGuard.h"
#include "gui/MandatoryStyle.h"

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
class FlexGrid;
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
class QTableView;
class QWidget;

// Shows the controls of a form in the widgets of its window, matched by
// name, and turns what a person does with a widget into the control's
// event: ListBox - QListView, ComboBox - QComboBox, CommandButton -
// QPushButton, CheckBox - QCheckBox, Label - QLabel, Frame - QGroupBox,
// TextBox - QLineEdit, ProgressBar - QProgressBar, FlexGrid - QTableView.
// The models are the source of truth: texts, entries, the highlighted
// entry, enabled, visible, tooltip and the host's mandatory mark all come
// from them.
class ViewBinder : public QObject
{
    Q_OBJECT
public:
    // The host's mandatory colour (see MandatoryStyle.h).
    static constexpr const char *kMandatoryColor = ::kMandatoryColor;

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
    // One kind of control: the widget class that shows it and how the two
    // are bound. Kinds() is the one table of them.
    struct ControlKind
    {
        const QMetaObject *widget;
        bool (*fits)(const ControlBase &control);
        void (*bind)(ViewBinder &binder, ControlBase &control, QWidget &widget);
    };
    template <typename Control, typename Widget, void (ViewBinder::*BindFunction)(Control &, Widget &)>
    static ControlKind KindOf();
    static const QList<ControlKind> &Kinds();
    static const ControlKind *KindFor(const ControlBase &control);

    void BindList(ListBox &list, QListView &view);
    void BindCombo(ComboBox &combo, QComboBox &view);
    void BindButton(CommandButton &button, QPushButton &view);
    void BindCheck(CheckBox &check, QCheckBox &view);
    void BindLabel(Label &label, QLabel &view);
    void BindFrame(Frame &frame, QGroupBox &view);
    void BindText(TextBox &text, QLineEdit &view);
    void BindProgress(ProgressBar &bar, QProgressBar &view);
    void BindGrid(FlexGrid &grid, QTableView &view);

    void ShowListIndex(ListBox &list, QListView &view);
    void ShowComboIndex(ComboBox &combo, QComboBox &view);
    void ShowGridLayout(FlexGrid &grid, QTableView &view);
    void ShowGridCurrentCell(FlexGrid &grid, QTableView &view);
    void ShowCommonState(const ControlBase &control, QWidget &widget);
    void Guard(const std::function<void()> &handler);

    Ui &m_ui;
    QList<QMetaObject::Connection> m_connections;
    QHash<QLineEdit *, QPointer<TextBox>> m_textBoxes;
    // Grids told where their view draws their cells, and the helpers
    // listening to a view for them; both are let go by Unbind.
    QList<QPointer<FlexGrid>> m_grids;
    QList<QPointer<QObject>> m_helpers;
    // Set while a widget is being made to show its model, so that the
    // widget's own change signals are not taken for a person's doing.
    bool m_syncing = false;
    // Set while a list model removes or resets rows: the view moves its
    // current entry by itself then, which is nobody's click.
    int m_structural = 0;
};
