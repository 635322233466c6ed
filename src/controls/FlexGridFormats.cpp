// The grid's cell formats and its layout: fonts, colours and alignments
// kept only for the cells that have one; widths, heights and scrolling.

#include "controls/FlexGrid.h"

#include <algorithm>
#include <stdexcept>

// --- formats -----------------------------------------------------------------

const FlexGrid::CellFormat *FlexGrid::FormatAt(int row, int col) const
{
    for (const auto &[column, format] : m_rows[size_t(row)].formats)
        if (column == col)
            return &format;
    return nullptr;
}

FlexGrid::CellFormat &FlexGrid::FormatFor(int row, int col)
{
    auto &formats = m_rows[size_t(row)].formats;
    for (auto &[column, format] : formats)
        if (column == col)
            return format;
    formats.emplace_back(col, CellFormat{});
    return formats.back().second;
}

QString FlexGrid::CellFontName(int row, int col) const
{
    CheckCell("CellFontName", row, col);
    const CellFormat *format = FormatAt(row, col);
    return format ? format->fontName : QString();
}

void FlexGrid::SetCellFontName(int row, int col, const QString &name)
{
    CheckCell("CellFontName", row, col);
    FormatFor(row, col).fontName = name;
    CellChanged(row, col, {FontNameRole});
}

double FlexGrid::CellFontSize(int row, int col) const
{
    CheckCell("CellFontSize", row, col);
    const CellFormat *format = FormatAt(row, col);
    return format ? format->fontSize : 0;
}

void FlexGrid::SetCellFontSize(int row, int col, double points)
{
    CheckCell("CellFontSize", row, col);
    if (points < 0)
        throw std::invalid_argument("CellFontSize: el tamaño de letra no puede ser negativo");
    FormatFor(row, col).fontSize = points;
    CellChanged(row, col, {FontSizeRole});
}

bool FlexGrid::CellFontBold(int row, int col) const
{
    CheckCell("CellFontBold", row, col);
    const CellFormat *format = FormatAt(row, col);
    return format && format->bold == 1;
}

void FlexGrid::SetCellFontBold(int row, int col, bool bold)
{
    CheckCell("CellFontBold", row, col);
    FormatFor(row, col).bold = bold ? 1 : 0;
    CellChanged(row, col, {FontBoldRole});
}

int FlexGrid::CellForeColor(int row, int col) const
{
    CheckCell("CellForeColor", row, col);
    const CellFormat *format = FormatAt(row, col);
    return format ? format->foreColor : -1;
}

void FlexGrid::SetCellForeColor(int row, int col, int color)
{
    CheckCell("CellForeColor", row, col);
    if (color < -1 || color > 0xFFFFFF)
        throw std::invalid_argument("CellForeColor: el color no es válido");
    FormatFor(row, col).foreColor = color;
    CellChanged(row, col, {ForeColorRole});
}

int FlexGrid::CellAlignment(int row, int col) const
{
    CheckCell("CellAlignment", row, col);
    const CellFormat *format = FormatAt(row, col);
    return format && format->alignment >= 0 ? format->alignment : flexAlignGeneral;
}

void FlexGrid::SetCellAlignment(int row, int col, int alignment)
{
    CheckCell("CellAlignment", row, col);
    if (alignment < flexAlignLeftTop || alignment > flexAlignGeneral)
        throw std::invalid_argument("CellAlignment: la alineación no es válida");
    FormatFor(row, col).alignment = alignment;
    CellChanged(row, col, {Qt::TextAlignmentRole});
}

// --- layout ------------------------------------------------------------------

int FlexGrid::ColWidth(int col) const
{
    if (col < 0 || col >= m_cols)
        throw OutOfRange("ColWidth",
                         QStringLiteral("la columna %1 no existe (la cuadrícula tiene %2 columnas)").arg(col).arg(m_cols));
    const int width = m_colWidths[size_t(col)];
    return width < 0 ? kDefaultColWidth : width;
}

bool FlexGrid::HasDefaultWidth(int col) const
{
    ColWidth(col); // checks the column
    return m_colWidths[size_t(col)] < 0;
}

void FlexGrid::SetColWidth(int col, int twips)
{
    ColWidth(col); // checks the column
    if (twips < -1)
        throw std::invalid_argument("ColWidth: el ancho no puede ser negativo");
    m_colWidths[size_t(col)] = twips;
    AnnounceLayout();
}

void FlexGrid::SetRowHeightMin(int twips)
{
    if (twips < 0)
        throw std::invalid_argument("RowHeightMin: el alto no puede ser negativo");
    m_rowHeightMin = twips;
    AnnounceLayout();
}

void FlexGrid::AnnounceLayout()
{
    if (Announcing())
        Q_EMIT LayoutChanged();
}

QRect FlexGrid::CellRect() const
{
    if (m_geometry)
        return m_geometry(m_row, m_col);
    int left = 0;
    for (int c = 0; c < m_col && c < m_cols; ++c)
        left += ColWidth(c);
    const int height = std::max(m_rowHeightMin, kDefaultRowHeight);
    const int top = m_row < m_fixedRows ? m_row * height : (m_fixedRows + m_row - m_topRow) * height;
    return QRect(left, top, m_col < m_cols ? ColWidth(m_col) : 0, height);
}

void FlexGrid::SetTopRow(int row)
{
    if (row < m_fixedRows || row >= Rows())
        throw OutOfRange("TopRow", QStringLiteral("la fila %1 no puede ser la primera que se ve").arg(row));
    if (row == m_topRow)
        return;
    m_topRow = row;
    if (Announcing())
        Q_EMIT TopRowChanged(row);
}

bool FlexGrid::RowIsVisible(int row) const
{
    if (row < 0 || row >= Rows())
        return false;
    if (row < m_fixedRows || m_shownRows < 0)
        return true;
    return row >= m_topRow && row < m_topRow + m_shownRows;
}

void FlexGrid::UserScrolled(int topRow, int shownRows)
{
    m_shownRows = std::max(0, shownRows);
    if (topRow == m_topRow || topRow < 0 || topRow >= std::max(1, Rows()))
        return;
    m_topRow = topRow;
    if (Scroll)
        Scroll();
}
