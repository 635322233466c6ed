// The grid's part of ViewBinder: a FlexGrid shown in a QTableView.

#include "gui/ViewBinder.h"

#include "controls/FlexGrid.h"
#include "gui/FlexGridStyle.h"
#include "gui/MarkDelegate.h"

#include <QEvent>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTableView>
#include <cmath>
#include <functional>

namespace {

// Hands every event of one object to a function, which may not stop it.
class EventHook : public QObject
{
public:
    EventHook(QObject &watched, std::function<void(QEvent *)> hook) : QObject(&watched), m_hook(std::move(hook))
    {
        watched.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        m_hook(event);
        return false;
    }

private:
    std::function<void(QEvent *)> m_hook;
};

int ToPixels(int twips)
{
    return int(std::lround(double(twips) / FlexGridStyle::kTwipsPerPixel));
}

} // namespace

void ViewBinder::ShowGridLayout(FlexGrid &grid, QTableView &view)
{
    // The first fixed row is the header; further fixed rows stay in the
    // table, grey like the header.
    const bool header = grid.FixedRows() > 0 && grid.Rows() > 0;
    view.horizontalHeader()->setVisible(header);
    if (grid.Rows() > 0)
        view.setRowHidden(0, header);

    const int textHeight = view.fontMetrics().height();
    const int rowHeight = std::max(ToPixels(grid.RowHeightMin()), textHeight + 6);
    view.verticalHeader()->setMinimumSectionSize(std::min(rowHeight, textHeight + 6));
    view.verticalHeader()->setDefaultSectionSize(rowHeight);
    view.horizontalHeader()->setMinimumHeight(rowHeight + 4);

    // Measured in the header's own font, as the style sheet draws it.
    QFont bold = view.horizontalHeader()->font();
    bold.setBold(true);
    const QFontMetrics headerMetrics(bold);
    view.horizontalHeader()->setTextElideMode(Qt::ElideRight);
    for (int col = 0; col < grid.Cols(); ++col) {
        const int twips = grid.ColWidth(col);
        view.setColumnHidden(col, twips == 0);
        if (twips == 0)
            continue;
        int width = ToPixels(twips);
        // A column is at least as wide as its header: the widths are the
        // original grid's, whose fonts were narrower than today's.
        if (header)
            width = std::max(width, headerMetrics.horizontalAdvance(grid.TextMatrix(0, col)) + 32);
        view.setColumnWidth(col, width);
    }
}

void ViewBinder::ShowGridCurrentCell(FlexGrid &grid, QTableView &view)
{
    if (grid.Rows() == 0 || grid.Cols() == 0)
        return;
    const QScopedValueRollback<bool> syncing(m_syncing, true);
    QAbstractItemModel *model = view.model();
    QItemSelectionModel *selection = view.selectionModel();
    const QItemSelection range(model->index(std::min(grid.Row(), grid.RowSel()), std::min(grid.Col(), grid.ColSel())),
                               model->index(std::max(grid.Row(), grid.RowSel()), std::max(grid.Col(), grid.ColSel())));
    selection->setCurrentIndex(model->index(grid.Row(), grid.Col()), QItemSelectionModel::NoUpdate);
    selection->select(range, QItemSelectionModel::ClearAndSelect);
}

void ViewBinder::BindGrid(FlexGrid &grid, QTableView &view)
{
    auto *style = new FlexGridStyle(grid, &view);
    view.setModel(style);
    view.setItemDelegate(new MarkDelegate(&view));
    view.verticalHeader()->hide();
    view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view.horizontalHeader()->setSectionsClickable(false);
    view.horizontalHeader()->setHighlightSections(false);
    view.horizontalHeader()->setDefaultAlignment(Qt::AlignCenter);
    view.horizontalHeader()->setStretchLastSection(false);
    view.setEditTriggers(QAbstractItemView::NoEditTriggers);
    view.setSelectionMode(QAbstractItemView::SingleSelection);
    view.setSelectionBehavior(QAbstractItemView::SelectItems);
    view.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    view.setWordWrap(false);
    view.setCornerButtonEnabled(false);
    // A light highlight keeps the marks and the text readable when selected.
    QPalette palette = view.palette();
    for (QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        palette.setColor(group, QPalette::Highlight, QColor(0xCC, 0xE4, 0xF7));
        palette.setColor(group, QPalette::HighlightedText, QColor(Qt::black));
    }
    view.setPalette(palette);
    view.setStyleSheet(QStringLiteral("QTableView { gridline-color: #C8CDD3; }"
                                      " QHeaderView::section { background-color: %1; border: none;"
                                      " border-right: 1px solid #B8BEC6; border-bottom: 1px solid #B8BEC6;"
                                      " padding: 1px 2px; font-weight: 600; }")
                           .arg(FlexGridStyle::HeaderBackground().name()));

    const auto showState = [this, &grid, &view] { ShowCommonState(grid, view); };
    const auto showLayout = [this, &grid, &view] { ShowGridLayout(grid, view); };
    const auto showCurrent = [this, &grid, &view] { ShowGridCurrentCell(grid, view); };
    showState();
    showLayout();
    showCurrent();
    m_connections << connect(&grid, &FlexGrid::Changed, this, showState);
    m_connections << connect(&grid, &FlexGrid::LayoutChanged, this, showLayout);
    m_connections << connect(&grid, &QAbstractItemModel::modelReset, this, [showLayout, showCurrent] {
        showLayout();
        showCurrent();
    });
    // New or removed columns need their widths; rows only when the header
    // row itself came or went.
    for (auto signal : {&QAbstractItemModel::columnsInserted, &QAbstractItemModel::columnsRemoved})
        m_connections << connect(&grid, signal, this, showLayout);
    m_connections << connect(&grid, &QAbstractItemModel::rowsInserted, this,
                             [showLayout, &view](const QModelIndex &, int first, int last) {
                                 if (first != 0)
                                     return;
                                 view.setRowHidden(last + 1, false); // the former header row
                                 showLayout();
                             });
    m_connections << connect(&grid, &QAbstractItemModel::rowsRemoved, this, [showLayout](const QModelIndex &, int first) {
        if (first == 0)
            showLayout();
    });
    m_connections << connect(&grid, &FlexGrid::CurrentCellChanged, this, showCurrent);
    // Painting off while the form fills the grid, as the original did.
    m_connections << connect(&grid, &FlexGrid::RedrawChanged, this,
                             [&view](bool redraw) { view.setUpdatesEnabled(redraw); });
    m_connections << connect(&grid, &FlexGrid::TopRowChanged, this, [this, &view, style](int row) {
        const QScopedValueRollback<bool> syncing(m_syncing, true);
        view.scrollTo(style->index(row, std::max(0, view.currentIndex().column())), QAbstractItemView::PositionAtTop);
    });

    // A press (or an arrow key) moves the current cell; a click on a cell
    // is the grid's Click, once, after the cell became current.
    m_connections << connect(view.selectionModel(), &QItemSelectionModel::currentChanged, &grid,
                             [this, &grid](const QModelIndex &current) {
                                 if (m_syncing || !current.isValid())
                                     return;
                                 Guard([&grid, current] { grid.UserMoveTo(current.row(), current.column()); });
                             });
    m_connections << connect(&view, &QAbstractItemView::clicked, &grid, [this, &grid](const QModelIndex &index) {
        if (index.isValid())
            Guard([&grid, index] { grid.UserClick(index.row(), index.column()); });
    });
    // The header is the grid's first row: a click there is a click on it.
    QHeaderView *header = view.horizontalHeader();
    m_helpers << new EventHook(*header->viewport(), [this, &grid, header](QEvent *event) {
        if (event->type() != QEvent::MouseButtonRelease)
            return;
        const auto *mouse = static_cast<QMouseEvent *>(event);
        const int column = header->logicalIndexAt(mouse->position().toPoint());
        if (mouse->button() == Qt::LeftButton && column >= 0)
            Guard([&grid, column] { grid.UserClick(0, column); });
    });
    m_helpers << new EventHook(view, [this, &grid](QEvent *event) {
        if (event->type() == QEvent::FocusIn && grid.GotFocus)
            Guard([&grid] { grid.GotFocus(); });
    });
    m_connections << connect(view.verticalScrollBar(), &QScrollBar::valueChanged, &grid, [this, &grid, &view] {
        if (m_syncing)
            return;
        // Rows cut off at the bottom edge count as shown.
        const int top = view.rowAt(0);
        const int bottom = view.rowAt(view.viewport()->height() - 1);
        const int shown = (bottom < 0 ? grid.Rows() - 1 : bottom) - top + 1;
        Guard([&grid, top, shown] { grid.UserScrolled(top, shown); });
    });

    // Where a cell is drawn, in twips from the grid's top left corner, so the
    // form can lay its edit box over it.
    grid.SetGeometryProvider([&view, &grid](int row, int col) {
        QRect rect;
        if (row < grid.FixedRows() && view.horizontalHeader()->isVisible() && row == 0) {
            const QHeaderView &header = *view.horizontalHeader();
            rect = QRect(header.sectionViewportPosition(col), 0, header.sectionSize(col), header.height());
            rect.translate(header.geometry().topLeft());
        } else {
            rect = view.visualRect(view.model()->index(row, col));
            rect.translate(view.viewport()->geometry().topLeft());
        }
        const int k = FlexGridStyle::kTwipsPerPixel;
        return QRect(rect.x() * k, rect.y() * k, rect.width() * k, rect.height() * k);
    });
    m_grids << &grid;
}
