#include "gui/ViewBinder.h"

#include "controls/Controls.h"
#include "controls/FlexGrid.h"
#include "controls/Form.h"
#include "controls/ListControls.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QProgressBar>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QTableView>

namespace {

// Widens every entry of a list to its control's horizontal extent (the
// longest entry plus four blanks, measured with the list's font), so the
// list scrolls sideways as far as the form asks.
class ExtentDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void SetExtentText(const QString &text)
    {
        if (text == m_text)
            return;
        m_text = text;
        Q_EMIT sizeHintChanged(QModelIndex());
    }

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QSize size = QStyledItemDelegate::sizeHint(option, index);
        if (m_text.isEmpty())
            return size;
        QStyleOptionViewItem extent = option;
        initStyleOption(&extent, index);
        extent.text = m_text;
        const QWidget *widget = option.widget;
        const QStyle *style = widget ? widget->style() : QApplication::style();
        size.setWidth(
            qMax(size.width(), style->sizeFromContents(QStyle::CT_ItemViewItem, &extent, QSize(), widget).width()));
        return size;
    }

private:
    QString m_text;
};

template <typename T> bool Is(const ControlBase &control)
{
    return dynamic_cast<const T *>(&control) != nullptr;
}

} // namespace

template <typename Control, typename Widget, void (ViewBinder::*BindFunction)(Control &, Widget &)>
ViewBinder::ControlKind ViewBinder::KindOf()
{
    return {&Widget::staticMetaObject, &Is<Control>, [](ViewBinder &binder, ControlBase &control, QWidget &widget) {
                (binder.*BindFunction)(dynamic_cast<Control &>(control), static_cast<Widget &>(widget));
            }};
}

// Every kind of control a window can show. Frame before Label: a frame is
// a label with a border.
const QList<ViewBinder::ControlKind> &ViewBinder::Kinds()
{
    static const QList<ControlKind> kinds{
        KindOf<ListBox, QListView, &ViewBinder::BindList>(),
        KindOf<ComboBox, QComboBox, &ViewBinder::BindCombo>(),
        KindOf<CommandButton, QPushButton, &ViewBinder::BindButton>(),
        KindOf<CheckBox, QCheckBox, &ViewBinder::BindCheck>(),
        KindOf<Frame, QGroupBox, &ViewBinder::BindFrame>(),
        KindOf<Label, QLabel, &ViewBinder::BindLabel>(),
        KindOf<TextBox, QLineEdit, &ViewBinder::BindText>(),
        KindOf<ProgressBar, QProgressBar, &ViewBinder::BindProgress>(),
        KindOf<FlexGrid, QTableView, &ViewBinder::BindGrid>(),
    };
    return kinds;
}

const ViewBinder::ControlKind *ViewBinder::KindFor(const ControlBase &control)
{
    for (const ControlKind &kind : Kinds())
        if (kind.fits(control))
            return &kind;
    return nullptr;
}

ViewBinder::ViewBinder(Form &form, QWidget &root) : QObject(&root), m_ui(form.ui())
{
    const QStringList mismatches = Mismatches(form, root);
    if (!mismatches.isEmpty()) {
#ifndef NDEBUG
        qFatal("The window of %s does not fit the form: %s", qPrintable(form.Name()),
               qPrintable(mismatches.join(QStringLiteral("; "))));
#else
        qCritical("The window of %s does not fit the form: %s", qPrintable(form.Name()),
                  qPrintable(mismatches.join(QStringLiteral("; "))));
#endif
    }
    for (ControlBase *control : form.Controls()) {
        QWidget *widget = root.findChild<QWidget *>(control->Name());
        const ControlKind *kind = KindFor(*control);
        if (widget && kind && widget->metaObject()->inherits(kind->widget))
            kind->bind(*this, *control, *widget);
    }
}

ViewBinder::~ViewBinder()
{
    Unbind();
}

QString ViewBinder::WidgetClassFor(const ControlBase &control)
{
    const ControlKind *kind = KindFor(control);
    return kind ? QString::fromLatin1(kind->widget->className()) : QString();
}

QStringList ViewBinder::Mismatches(const Form &form, const QWidget &root)
{
    QStringList mismatches;
    for (const ControlBase *control : form.Controls()) {
        const QString name = control->Name();
        const QString expected = WidgetClassFor(*control);
        const QWidget *widget = root.findChild<QWidget *>(name);
        if (expected.isEmpty())
            mismatches << QStringLiteral("%1: no widget kind shows this control").arg(name);
        else if (!widget)
            mismatches << QStringLiteral("%1: no %2 of this name").arg(name, expected);
        else if (!widget->metaObject()->inherits(KindFor(*control)->widget))
            mismatches << QStringLiteral("%1: a %2 is needed, the window has a %3")
                              .arg(name, expected, QString::fromLatin1(widget->metaObject()->className()));
    }
    return mismatches;
}

QStringList ViewBinder::UnboundWidgets(const Form &form, const QWidget &root)
{
    QStringList unbound;
    for (const QWidget *widget : root.findChildren<QWidget *>()) {
        const QString name = widget->objectName();
        if (name.isEmpty() || name.startsWith(QStringLiteral("qt_")) || widget->window() != &root)
            continue;
        bool bindable = false;
        for (const ControlKind &kind : Kinds())
            bindable = bindable || widget->metaObject()->inherits(kind.widget);
        if (bindable && !form.FindControl(name))
            unbound << name;
    }
    return unbound;
}

void ViewBinder::Unbind()
{
    for (const QMetaObject::Connection &connection : std::as_const(m_connections))
        disconnect(connection);
    m_connections.clear();
    for (auto it = m_textBoxes.constBegin(); it != m_textBoxes.constEnd(); ++it)
        it.key()->removeEventFilter(this);
    m_textBoxes.clear();
    for (const QPointer<FlexGrid> &grid : std::as_const(m_grids))
        if (grid)
            grid->SetGeometryProvider({});
    m_grids.clear();
    for (const QPointer<QObject> &helper : std::as_const(m_helpers))
        delete helper.data();
    m_helpers.clear();
}

void ViewBinder::Guard(const std::function<void()> &handler)
{
    RunGuarded(m_ui, handler);
}

void ViewBinder::ShowCommonState(const ControlBase &control, QWidget &widget)
{
    widget.setEnabled(control.Enabled());
    widget.setHidden(!control.Visible());
    widget.setToolTip(control.ToolTipText());
    ShowMandatory(widget, control.Mandatory());
}

// --- lists -----------------------------------------------------------------

void ViewBinder::ShowListIndex(ListBox &list, QListView &view)
{
    const QScopedValueRollback<bool> syncing(m_syncing, true);
    QItemSelectionModel *selection = view.selectionModel();
    const int index = list.ListIndex();
    if (index >= 0 && index < list.ListCount()) {
        const QModelIndex entry = list.index(index);
        selection->setCurrentIndex(entry, QItemSelectionModel::ClearAndSelect);
        view.scrollTo(entry);
    } else {
        selection->clearSelection();
        selection->setCurrentIndex(QModelIndex(), QItemSelectionModel::NoUpdate);
    }
}

void ViewBinder::BindList(ListBox &list, QListView &view)
{
    // Connected before the view gets the model, so these run before the
    // view's selection model moves its current entry off removed rows.
    const auto structuralStart = [this] { ++m_structural; };
    const auto structuralEnd = [this] { --m_structural; };
    m_connections << connect(&list, &QAbstractItemModel::rowsAboutToBeRemoved, this, structuralStart);
    m_connections << connect(&list, &QAbstractItemModel::rowsRemoved, this, structuralEnd);
    m_connections << connect(&list, &QAbstractItemModel::modelAboutToBeReset, this, structuralStart);
    m_connections << connect(&list, &QAbstractItemModel::modelReset, this, structuralEnd);

    view.setModel(&list);
    view.setSelectionMode(QAbstractItemView::SingleSelection);
    view.setEditTriggers(QAbstractItemView::NoEditTriggers);
    view.setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    view.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    auto *delegate = new ExtentDelegate(&view);
    view.setItemDelegate(delegate);

    const auto showState = [this, &list, &view, delegate] {
        ShowCommonState(list, view);
        delegate->SetExtentText(list.HorizontalExtentText());
    };
    showState();
    ShowListIndex(list, view);
    m_connections << connect(&list, &ListControl::Changed, this, showState);
    m_connections << connect(&list, &ListControl::ListIndexChanged, this,
                             [this, &list, &view] { ShowListIndex(list, view); });

    // A click or an arrow key selects an entry: that is the list's click.
    // The view making an entry current on its own (when it takes the focus)
    // selects nothing and is no click. A list keeps its highlighted entry:
    // a click on an empty area (or a control-click on the entry) does not
    // take it away.
    QItemSelectionModel *selection = view.selectionModel();
    m_connections << connect(selection, &QItemSelectionModel::selectionChanged, &list, [this, &list, &view] {
        if (m_syncing || m_structural > 0)
            return;
        const QModelIndexList rows = view.selectionModel()->selectedRows();
        if (rows.isEmpty()) {
            if (list.ListIndex() >= 0)
                ShowListIndex(list, view);
            return;
        }
        const int row = rows.first().row();
        if (row != list.ListIndex())
            Guard([&list, row] { list.UserClick(row); });
    });
    // Only a double click on an entry reaches the form.
    m_connections << connect(&view, &QAbstractItemView::doubleClicked, &list, [this, &list](const QModelIndex &index) {
        if (index.isValid())
            Guard([&list, row = index.row()] { list.DoubleClick(row); });
    });
}

void ViewBinder::ShowComboIndex(ComboBox &combo, QComboBox &view)
{
    const QScopedValueRollback<bool> syncing(m_syncing, true);
    const int index = combo.ListIndex();
    view.setCurrentIndex(index >= 0 && index < combo.ListCount() ? index : -1);
}

void ViewBinder::BindCombo(ComboBox &combo, QComboBox &view)
{
    view.setEditable(false);
    view.setModel(&combo);
    view.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    ShowCommonState(combo, view);
    ShowComboIndex(combo, view);
    // The combo picks an entry by itself when rows arrive or go; the model
    // decides which entry is shown (none while its ListIndex is -1).
    const auto show = [this, &combo, &view] { ShowComboIndex(combo, view); };
    m_connections << connect(&combo, &QAbstractItemModel::rowsInserted, this, show);
    m_connections << connect(&combo, &QAbstractItemModel::rowsRemoved, this, show);
    m_connections << connect(&combo, &QAbstractItemModel::modelReset, this, show);
    m_connections << connect(&combo, &ListControl::ListIndexChanged, this, show);
    m_connections << connect(&combo, &ListControl::Changed, this, [this, &combo, &view] { ShowCommonState(combo, view); });
    m_connections << connect(&view, &QComboBox::activated, &combo, [this, &combo](int index) {
        if (m_syncing)
            return;
        Guard([&combo, index] { combo.UserClick(index); });
    });
}

// --- buttons, labels, the rest -----------------------------------------------

void ViewBinder::BindButton(CommandButton &button, QPushButton &view)
{
    // Enter does not press a wizard button behind the person's back.
    view.setAutoDefault(false);
    view.setDefault(false);
    const auto show = [this, &button, &view] {
        view.setText(button.Caption());
        ShowCommonState(button, view);
    };
    show();
    m_connections << connect(&button, &Control::Changed, this, show);
    m_connections << connect(&view, &QPushButton::clicked, &button,
                             [this, &button] { Guard([&button] { button.Press(); }); });
}

void ViewBinder::BindCheck(CheckBox &check, QCheckBox &view)
{
    const auto show = [this, &check, &view] {
        const QScopedValueRollback<bool> syncing(m_syncing, true);
        view.setText(check.Caption());
        view.setTristate(check.Value() == 2);
        view.setCheckState(check.Value() == 1 ? Qt::Checked : check.Value() == 2 ? Qt::PartiallyChecked : Qt::Unchecked);
        ShowCommonState(check, view);
    };
    show();
    m_connections << connect(&check, &Control::Changed, this, show);
    m_connections << connect(&view, &QCheckBox::clicked, &check, [this, &check, &view] {
        if (m_syncing)
            return;
        const int value = view.checkState() == Qt::Checked ? 1 : view.checkState() == Qt::PartiallyChecked ? 2 : 0;
        Guard([&check, value] { check.SetValue(value); });
    });
}

void ViewBinder::BindLabel(Label &label, QLabel &view)
{
    view.setTextFormat(Qt::PlainText);
    const auto show = [this, &label, &view] {
        view.setText(label.Caption());
        ShowCommonState(label, view);
    };
    show();
    m_connections << connect(&label, &Control::Changed, this, show);
}

void ViewBinder::BindFrame(Frame &frame, QGroupBox &view)
{
    const auto show = [this, &frame, &view] {
        view.setTitle(frame.Caption());
        ShowCommonState(frame, view);
    };
    show();
    m_connections << connect(&frame, &Control::Changed, this, show);
}

void ViewBinder::BindText(TextBox &text, QLineEdit &view)
{
    const auto show = [this, &text, &view] {
        const QScopedValueRollback<bool> syncing(m_syncing, true);
        if (view.text() != text.Text())
            view.setText(text.Text());
        if (text.MaxLength() > 0)
            view.setMaxLength(text.MaxLength());
        ShowCommonState(text, view);
    };
    show();
    m_connections << connect(&text, &Control::Changed, this, show);
    // Keys typed go through the form's key filter (see eventFilter); other
    // edits (pasting, deleting a selection) set the whole text.
    m_connections << connect(&view, &QLineEdit::textEdited, &text, [this, &text](const QString &edited) {
        if (m_syncing)
            return;
        Guard([&text, edited] { text.SetText(edited); });
    });
    m_textBoxes.insert(&view, &text);
    view.installEventFilter(this);
}

void ViewBinder::BindProgress(ProgressBar &bar, QProgressBar &view)
{
    const auto show = [this, &bar, &view] {
        view.setRange(bar.Min(), qMax(bar.Min(), bar.Max()));
        view.setValue(bar.Value());
        ShowCommonState(bar, view);
    };
    show();
    m_connections << connect(&bar, &Control::Changed, this, show);
}

bool ViewBinder::eventFilter(QObject *watched, QEvent *event)
{
    auto *view = qobject_cast<QLineEdit *>(watched);
    if (!view || !m_textBoxes.contains(view))
        return QObject::eventFilter(watched, event);
    TextBox *text = m_textBoxes.value(view).data();
    if (!text)
        return QObject::eventFilter(watched, event);

    if (event->type() == QEvent::FocusOut) {
        if (text->LostFocus)
            Guard([text] { text->LostFocus(); });
        return false;
    }
    if (event->type() != QEvent::KeyPress || view->isReadOnly())
        return false;
    const auto *key = static_cast<QKeyEvent *>(event);
    int keyAscii = 0;
    if (key->key() == Qt::Key_Backspace)
        keyAscii = 8;
    else if (key->text().size() == 1 && key->text().at(0).unicode() >= 32
             && !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier)))
        keyAscii = key->text().at(0).unicode();
    if (keyAscii == 0)
        return false;
    // As on the original platform, the form's KeyPress sees (and may change
    // or drop) the key before it reaches the text.
    Guard([text, keyAscii] { text->TypeKey(keyAscii); });
    view->end(false);
    return true;
}
