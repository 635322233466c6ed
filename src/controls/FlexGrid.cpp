#include "controls/FlexGrid.h"

#include "controls/FlexGridSorter.h"

#include <algorithm>
#include <stdexcept>

namespace {

Qt::Alignment ToQtAlignment(int alignment, const QString &text)
{
    switch (alignment) {
    case flexAlignLeftTop:
        return Qt::AlignLeft | Qt::AlignTop;
    case flexAlignLeftCenter:
        return Qt::AlignLeft | Qt::AlignVCenter;
    case flexAlignLeftBottom:
        return Qt::AlignLeft | Qt::AlignBottom;
    case flexAlignCenterTop:
        return Qt::AlignHCenter | Qt::AlignTop;
    case flexAlignCenterCenter:
        return Qt::AlignCenter;
    case flexAlignCenterBottom:
        return Qt::AlignHCenter | Qt::AlignBottom;
    case flexAlignRightTop:
        return Qt::AlignRight | Qt::AlignTop;
    case flexAlignRightCenter:
        return Qt::AlignRight | Qt::AlignVCenter;
    case flexAlignRightBottom:
        return Qt::AlignRight | Qt::AlignBottom;
    default: // general: numbers to the right, texts to the left
        return (FlexGridSorter::IsNumber(text) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
    }
}

} // namespace

FlexGrid::FlexGrid(Form *owner, const QString &name) : ControlBase(owner, name)
{
    // A new grid looks like the original's: two rows and two columns, the
    // first of each fixed, the current cell the first one that is not.
    SetCols(2);
    SetRows(2);
    m_fixedRows = 1;
    m_fixedCols = 1;
    m_row = m_rowSel = 1;
    m_col = m_colSel = 1;
    m_topRow = 1;
}

FlexGrid::~FlexGrid() = default;

std::out_of_range FlexGrid::OutOfRange(const char *what, const QString &detail)
{
    return std::out_of_range((QString::fromLatin1(what) + QStringLiteral(": ") + detail).toStdString());
}

// --- shape -------------------------------------------------------------------

void FlexGrid::SetRows(int rows)
{
    if (rows < 0)
        throw OutOfRange("Rows", QStringLiteral("el número de filas no puede ser negativo (%1)").arg(rows));
    const int old = Rows();
    if (rows == old)
        return;
    if (rows > old) {
        if (Announcing())
            beginInsertRows(QModelIndex(), old, rows - 1);
        m_rows.resize(size_t(rows), GridRow{std::vector<QString>(size_t(m_cols)), {}});
        if (Announcing())
            endInsertRows();
    } else {
        if (Announcing())
            beginRemoveRows(QModelIndex(), rows, old - 1);
        m_rows.resize(size_t(rows));
        if (Announcing())
            endRemoveRows();
    }
    m_resetPending = m_resetPending || !Announcing();
    if (m_fixedRows > rows) {
        m_fixedRows = rows;
        AnnounceLayout();
    }
    m_topRow = std::clamp(m_topRow, m_fixedRows, std::max(m_fixedRows, rows - 1));
    const int last = std::max(0, rows - 1);
    if (m_row > last || m_rowSel > last) {
        m_row = std::min(m_row, last);
        m_rowSel = std::min(m_rowSel, last);
        if (Announcing())
            Q_EMIT CurrentCellChanged();
    }
}

void FlexGrid::SetCols(int cols)
{
    if (cols < 0)
        throw OutOfRange("Cols", QStringLiteral("el número de columnas no puede ser negativo (%1)").arg(cols));
    const int old = m_cols;
    if (cols == old)
        return;
    if (Announcing()) {
        if (cols > old)
            beginInsertColumns(QModelIndex(), old, cols - 1);
        else
            beginRemoveColumns(QModelIndex(), cols, old - 1);
    }
    for (GridRow &row : m_rows) {
        row.cells.resize(size_t(cols));
        std::erase_if(row.formats, [cols](const auto &format) { return format.first >= cols; });
    }
    m_colWidths.resize(size_t(cols), -1);
    m_cols = cols;
    if (Announcing()) {
        if (cols > old)
            endInsertColumns();
        else
            endRemoveColumns();
    }
    m_resetPending = m_resetPending || !Announcing();
    m_fixedCols = std::min(m_fixedCols, cols);
    const int last = std::max(0, cols - 1);
    if (m_col > last || m_colSel > last) {
        m_col = std::min(m_col, last);
        m_colSel = std::min(m_colSel, last);
        if (Announcing())
            Q_EMIT CurrentCellChanged();
    }
    AnnounceLayout();
}

void FlexGrid::SetFixedRows(int rows)
{
    if (rows < 0 || rows > Rows())
        throw OutOfRange("FixedRows", QStringLiteral("%1 no es válido en una cuadrícula de %2 filas").arg(rows).arg(Rows()));
    if (rows == m_fixedRows)
        return;
    m_fixedRows = rows;
    m_topRow = std::clamp(m_topRow, m_fixedRows, std::max(m_fixedRows, Rows() - 1));
    if (Announcing() && Rows() > 0 && m_cols > 0)
        Q_EMIT dataChanged(index(0, 0), index(Rows() - 1, m_cols - 1), {FixedCellRole});
    m_resetPending = m_resetPending || !Announcing();
    AnnounceLayout();
}

void FlexGrid::SetFixedCols(int cols)
{
    if (cols < 0 || cols > m_cols)
        throw OutOfRange("FixedCols",
                         QStringLiteral("%1 no es válido en una cuadrícula de %2 columnas").arg(cols).arg(m_cols));
    if (cols == m_fixedCols)
        return;
    m_fixedCols = cols;
    if (Announcing() && Rows() > 0 && m_cols > 0)
        Q_EMIT dataChanged(index(0, 0), index(Rows() - 1, m_cols - 1), {FixedCellRole});
    m_resetPending = m_resetPending || !Announcing();
    AnnounceLayout();
}

void FlexGrid::AddItem(const QString &tabSeparated, int index)
{
    if (index == -1)
        index = Rows();
    if (index < 0 || index > Rows())
        throw OutOfRange("AddItem", QStringLiteral("no se puede añadir la fila %1 a una cuadrícula de %2 filas")
                                        .arg(index)
                                        .arg(Rows()));
    GridRow row{std::vector<QString>(size_t(m_cols)), {}};
    const QStringList texts = tabSeparated.split(QLatin1Char('\t'));
    for (int c = 0; c < m_cols && c < texts.size(); ++c)
        row.cells[size_t(c)] = texts.at(c);
    if (Announcing())
        beginInsertRows(QModelIndex(), index, index);
    m_rows.insert(m_rows.begin() + index, std::move(row));
    if (Announcing())
        endInsertRows();
    m_resetPending = m_resetPending || !Announcing();
}

void FlexGrid::RemoveItem(int row)
{
    if (row < 0 || row >= Rows())
        throw OutOfRange("RemoveItem",
                         QStringLiteral("la fila %1 no existe (la cuadrícula tiene %2 filas)").arg(row).arg(Rows()));
    if (Announcing())
        beginRemoveRows(QModelIndex(), row, row);
    m_rows.erase(m_rows.begin() + row);
    if (Announcing())
        endRemoveRows();
    m_resetPending = m_resetPending || !Announcing();
    m_fixedRows = std::min(m_fixedRows, Rows());
    const int last = std::max(0, Rows() - 1);
    m_row = std::min(m_row, last);
    m_rowSel = std::min(m_rowSel, last);
    if (Announcing())
        Q_EMIT CurrentCellChanged();
}

void FlexGrid::Clear()
{
    for (GridRow &row : m_rows) {
        std::fill(row.cells.begin(), row.cells.end(), QString());
        row.formats.clear();
    }
    if (Announcing() && Rows() > 0 && m_cols > 0)
        Q_EMIT dataChanged(index(0, 0), index(Rows() - 1, m_cols - 1));
    m_resetPending = m_resetPending || !Announcing();
}

// --- texts -------------------------------------------------------------------

void FlexGrid::CheckCell(const char *what, int row, int col) const
{
    if (row < 0 || row >= Rows() || col < 0 || col >= m_cols)
        throw OutOfRange(what, QStringLiteral("la celda (%1, %2) está fuera de la cuadrícula de %3 filas y %4 columnas")
                                   .arg(row)
                                   .arg(col)
                                   .arg(Rows())
                                   .arg(m_cols));
}

QString FlexGrid::TextMatrix(int row, int col) const
{
    CheckCell("TextMatrix", row, col);
    return m_rows[size_t(row)].cells[size_t(col)];
}

void FlexGrid::SetTextMatrix(int row, int col, const QString &text)
{
    CheckCell("TextMatrix", row, col);
    QString &cell = m_rows[size_t(row)].cells[size_t(col)];
    if (cell == text)
        return;
    cell = text;
    CellChanged(row, col, {Qt::DisplayRole, Qt::EditRole, Qt::TextAlignmentRole});
}

QString FlexGrid::Text() const
{
    return m_row < Rows() && m_col < m_cols ? m_rows[size_t(m_row)].cells[size_t(m_col)] : QString();
}

void FlexGrid::SetText(const QString &text)
{
    SetTextMatrix(m_row, m_col, text);
}

void FlexGrid::CellChanged(int row, int col, const QList<int> &roles)
{
    if (Announcing())
        Q_EMIT dataChanged(index(row, col), index(row, col), roles);
    else
        m_resetPending = true;
}

// --- current cell ------------------------------------------------------------

void FlexGrid::SetRow(int row)
{
    if (row < 0 || row >= Rows())
        throw OutOfRange("Row", QStringLiteral("la fila %1 no existe (la cuadrícula tiene %2 filas)").arg(row).arg(Rows()));
    MoveCurrentCell(row, m_col, true);
}

void FlexGrid::SetCol(int col)
{
    if (col < 0 || col >= m_cols)
        throw OutOfRange("Col",
                         QStringLiteral("la columna %1 no existe (la cuadrícula tiene %2 columnas)").arg(col).arg(m_cols));
    MoveCurrentCell(m_row, col, true);
}

void FlexGrid::SetRowSel(int row)
{
    if (row < 0 || row >= Rows())
        throw OutOfRange("RowSel",
                         QStringLiteral("la fila %1 no existe (la cuadrícula tiene %2 filas)").arg(row).arg(Rows()));
    m_rowSel = row;
    if (Announcing())
        Q_EMIT CurrentCellChanged();
}

void FlexGrid::SetColSel(int col)
{
    if (col < 0 || col >= m_cols)
        throw OutOfRange("ColSel",
                         QStringLiteral("la columna %1 no existe (la cuadrícula tiene %2 columnas)").arg(col).arg(m_cols));
    m_colSel = col;
    if (Announcing())
        Q_EMIT CurrentCellChanged();
}

void FlexGrid::MoveCurrentCell(int row, int col, bool fireEnterCell)
{
    const bool moved = row != m_row || col != m_col;
    m_row = m_rowSel = row;
    m_col = m_colSel = col;
    if (Announcing())
        Q_EMIT CurrentCellChanged();
    if (moved && fireEnterCell && EnterCell)
        EnterCell();
}

void FlexGrid::UserClick(int row, int col)
{
    if (row < 0 || row >= Rows() || col < 0 || col >= m_cols)
        return;
    m_mouseRow = row;
    m_mouseCol = col;
    MoveCurrentCell(row, col, true);
    if (Click)
        Click();
}

void FlexGrid::UserMoveTo(int row, int col)
{
    if (row >= 0 && row < Rows() && col >= 0 && col < m_cols)
        MoveCurrentCell(row, col, true);
}

void FlexGrid::SetRedraw(bool redraw)
{
    if (redraw == m_redraw)
        return;
    m_redraw = redraw;
    if (!redraw) {
        Q_EMIT RedrawChanged(false);
        return;
    }
    if (m_resetPending) {
        beginResetModel();
        m_resetPending = false;
        endResetModel();
    }
    Q_EMIT RedrawChanged(true);
    Q_EMIT LayoutChanged();
    Q_EMIT CurrentCellChanged();
}

// --- sorting -----------------------------------------------------------------

void FlexGrid::Sort(int colFrom, int colTo)
{
    ColWidth(colFrom); // check both columns
    ColWidth(colTo);
    const std::vector<int> order = FlexGridSorter(*this, std::min(colFrom, colTo), std::max(colFrom, colTo)).Order();
    if (Announcing())
        Q_EMIT layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    std::vector<GridRow> sorted;
    sorted.reserve(m_rows.size());
    std::vector<int> newRowOf(m_rows.size());
    for (size_t i = 0; i < order.size(); ++i) {
        newRowOf[size_t(order[i])] = int(i);
        sorted.push_back(std::move(m_rows[size_t(order[i])]));
    }
    m_rows = std::move(sorted);
    if (!Announcing()) {
        m_resetPending = true;
        return;
    }
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    for (const QModelIndex &index : before)
        after << this->index(newRowOf[size_t(index.row())], index.column());
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

// --- model -------------------------------------------------------------------

int FlexGrid::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Rows();
}

int FlexGrid::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_cols;
}

QVariant FlexGrid::data(const QModelIndex &index, int role) const
{
    // Bounds are checked here too: while Redraw is off a view may still
    // hold indexes the grid has not told it are gone.
    if (!index.isValid() || index.row() >= Rows() || index.column() >= m_cols)
        return {};
    const int row = index.row(), col = index.column();
    const QString &text = m_rows[size_t(row)].cells[size_t(col)];
    const CellFormat *format = FormatAt(row, col);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return text;
    case Qt::TextAlignmentRole:
        return int(ToQtAlignment(format && format->alignment >= 0 ? format->alignment : flexAlignGeneral, text));
    case FontNameRole:
        return format && !format->fontName.isEmpty() ? QVariant(format->fontName) : QVariant();
    case FontSizeRole:
        return format && format->fontSize > 0 ? QVariant(format->fontSize) : QVariant();
    case FontBoldRole:
        return format && format->bold >= 0 ? QVariant(format->bold == 1) : QVariant();
    case ForeColorRole:
        return format && format->foreColor >= 0 ? QVariant(format->foreColor) : QVariant();
    case FixedCellRole:
        return row < m_fixedRows || col < m_fixedCols;
    default:
        return {};
    }
}
