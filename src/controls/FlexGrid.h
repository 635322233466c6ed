#pragma once

#include "controls/ControlBase.h"

#include <QAbstractTableModel>
#include <QRect>
#include <QString>
#include <functional>
#include <stdexcept>
#include <vector>

// Colour values as the original platform writes them: 0x00BBGGRR.
inline constexpr int vbRed = 0x0000FF;
inline constexpr int vbGreen = 0x00FF00;

// Cell alignments, with the platform's values. "General" puts text on the
// left and numbers on the right, both centred vertically.
enum FlexAlignment : int {
    flexAlignLeftTop = 0,
    flexAlignLeftCenter = 1,
    flexAlignLeftBottom = 2,
    flexAlignCenterTop = 3,
    flexAlignCenterCenter = 4,
    flexAlignCenterBottom = 5,
    flexAlignRightTop = 6,
    flexAlignRightCenter = 7,
    flexAlignRightBottom = 8,
    flexAlignGeneral = 9,
};

// The grid control: a table of texts with fixed (header) rows and columns,
// a current cell and a selection, a format per cell where one was set,
// column widths in twips. It is a Qt table model, so a view shows it as it
// is; fonts and colours are given as plain values (see Role) because this
// layer knows no toolkit. Like the original grid, the cell properties
// (CellFontName, ...) apply to the current cell; the (row, col) overloads
// reach any cell without moving it.
//
// With Redraw off nothing is announced to views cell by cell; switching it
// on again announces one reset. That keeps building thousands of rows fast.
class FlexGrid : public QAbstractTableModel, public ControlBase
{
    Q_OBJECT
public:
    // Besides DisplayRole and TextAlignmentRole. Absent (an invalid
    // QVariant) where the cell keeps the grid's default.
    enum Role {
        FontNameRole = Qt::UserRole + 1, // QString
        FontSizeRole,                    // double, points
        FontBoldRole,                    // bool
        ForeColorRole,                   // int, 0x00BBGGRR
        FixedCellRole,                   // bool: the cell is in a fixed row or column
    };
    static constexpr int kDefaultColWidth = 960;  // twips
    static constexpr int kDefaultRowHeight = 240; // twips

    FlexGrid(Form *owner, const QString &name);
    ~FlexGrid() override;

    // --- shape ---------------------------------------------------------------
    int Rows() const { return int(m_rows.size()); }
    void SetRows(int rows); // keeps the texts of the rows that stay
    int Cols() const { return m_cols; }
    void SetCols(int cols); // keeps the texts of the columns that stay
    int FixedRows() const { return m_fixedRows; }
    void SetFixedRows(int rows); // 0 .. Rows()
    int FixedCols() const { return m_fixedCols; }
    void SetFixedCols(int cols); // 0 .. Cols()
    // Appends (index -1) or inserts a row; tabs separate the cells' texts.
    void AddItem(const QString &tabSeparated, int index = -1);
    void RemoveItem(int row);
    // Empties every cell and drops every cell format; the shape stays.
    void Clear();

    // --- texts ---------------------------------------------------------------
    // A cell outside the grid throws std::out_of_range naming it.
    QString TextMatrix(int row, int col) const;
    void SetTextMatrix(int row, int col, const QString &text);
    // The current cell's text ("" in a grid without cells).
    QString Text() const;
    void SetText(const QString &text);

    // --- current cell and selection --------------------------------------------
    // Setting Row or Col makes the selection the current cell, as on the
    // original grid; EnterCell fires when the current cell changes.
    int Row() const { return m_row; }
    void SetRow(int row);
    int Col() const { return m_col; }
    void SetCol(int col);
    int RowSel() const { return m_rowSel; }
    void SetRowSel(int row);
    int ColSel() const { return m_colSel; }
    void SetColSel(int col);
    // Where the mouse was at the last click.
    int MouseRow() const { return m_mouseRow; }
    int MouseCol() const { return m_mouseCol; }

    // --- cell formats (current cell) -------------------------------------------
    QString CellFontName() const { return CellFontName(m_row, m_col); }
    void SetCellFontName(const QString &name) { SetCellFontName(m_row, m_col, name); }
    double CellFontSize() const { return CellFontSize(m_row, m_col); }
    void SetCellFontSize(double points) { SetCellFontSize(m_row, m_col, points); }
    bool CellFontBold() const { return CellFontBold(m_row, m_col); }
    void SetCellFontBold(bool bold) { SetCellFontBold(m_row, m_col, bold); }
    int CellForeColor() const { return CellForeColor(m_row, m_col); }
    void SetCellForeColor(int color) { SetCellForeColor(m_row, m_col, color); }
    int CellAlignment() const { return CellAlignment(m_row, m_col); }
    void SetCellAlignment(int alignment) { SetCellAlignment(m_row, m_col, alignment); }

    // --- cell formats (any cell) -------------------------------------------------
    // Unset values read as the grid's defaults: "" font name (the view's
    // font), size 0, not bold, colour -1 (the view's), flexAlignGeneral.
    QString CellFontName(int row, int col) const;
    void SetCellFontName(int row, int col, const QString &name);
    double CellFontSize(int row, int col) const;
    void SetCellFontSize(int row, int col, double points);
    bool CellFontBold(int row, int col) const;
    void SetCellFontBold(int row, int col, bool bold);
    int CellForeColor(int row, int col) const;
    void SetCellForeColor(int row, int col, int color);
    int CellAlignment(int row, int col) const;
    void SetCellAlignment(int row, int col, int alignment);

    // --- layout (twips) ----------------------------------------------------------
    // -1 gives a column back its default width; 0 hides it.
    int ColWidth(int col) const;
    void SetColWidth(int col, int twips);
    bool HasDefaultWidth(int col) const;
    int RowHeightMin() const { return m_rowHeightMin; }
    void SetRowHeightMin(int twips);

    // The current cell's place inside the grid, in twips. The view reports
    // the real geometry (scrolling included); without a view it is worked
    // out from the widths and the minimum row height.
    int CellLeft() const { return CellRect().left(); }
    int CellTop() const { return CellRect().top(); }
    int CellWidth() const { return CellRect().width(); }
    int CellHeight() const { return CellRect().height(); }
    using GeometryProvider = std::function<QRect(int row, int col)>;
    void SetGeometryProvider(GeometryProvider provider) { m_geometry = std::move(provider); }

    // The first non-fixed row shown, and whether a row is on screen (as
    // far as the view has reported; every row without a view).
    int TopRow() const { return m_topRow; }
    void SetTopRow(int row);
    bool RowIsVisible(int row) const;

    bool Redraw() const { return m_redraw; }
    void SetRedraw(bool redraw);

    // Generic ascending sort of the non-fixed rows on the texts of the
    // columns colFrom..colTo (either order), left column first: empty texts
    // first, then numbers by value, then texts in Spanish order ignoring
    // case. Rows that compare equal keep their order; fixed rows stay.
    void Sort(int colFrom, int colTo);

    // --- what a person does in the view --------------------------------------------
    // A click on a cell (fixed cells included): it becomes the current cell
    // and the selection, then Click fires.
    void UserClick(int row, int col);
    // The current cell moved with the keys: EnterCell, no Click.
    void UserMoveTo(int row, int col);
    // The view scrolled: `topRow` is the first non-fixed row shown and
    // `shownRows` how many non-fixed rows fit. Fires Scroll when TopRow moved.
    void UserScrolled(int topRow, int shownRows);

    std::function<void()> Click;
    std::function<void()> EnterCell;
    std::function<void()> Scroll;
    // The grid's view took the keyboard focus (the view fires it).
    std::function<void()> GotFocus;

    // --- QAbstractTableModel --------------------------------------------------------
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;

Q_SIGNALS:
    void Changed();            // enabled, visible, tooltip, mandatory
    void CurrentCellChanged(); // Row, Col, RowSel, ColSel
    void LayoutChanged();      // fixed rows or columns, widths, row height
    void TopRowChanged(int row);
    void RedrawChanged(bool redraw);

protected:
    void NotifyChanged() override { Q_EMIT Changed(); }

private:
    struct CellFormat
    {
        QString fontName;
        double fontSize = 0;
        int bold = -1; // -1 unset, 0, 1
        int foreColor = -1;
        int alignment = -1;
    };
    struct GridRow
    {
        std::vector<QString> cells;
        std::vector<std::pair<int, CellFormat>> formats; // by column, only where set
    };
    friend class FlexGridSorter;

    static std::out_of_range OutOfRange(const char *what, const QString &detail);
    void CheckCell(const char *what, int row, int col) const;
    const CellFormat *FormatAt(int row, int col) const;
    CellFormat &FormatFor(int row, int col);
    void CellChanged(int row, int col, const QList<int> &roles);
    void MoveCurrentCell(int row, int col, bool fireEnterCell);
    void AnnounceLayout();
    QRect CellRect() const;
    bool Announcing() const { return m_redraw; }

    std::vector<GridRow> m_rows;
    int m_cols = 0;
    int m_fixedRows = 0;
    int m_fixedCols = 0;
    int m_row = 0, m_col = 0, m_rowSel = 0, m_colSel = 0;
    int m_mouseRow = 0, m_mouseCol = 0;
    std::vector<int> m_colWidths; // -1: default
    int m_rowHeightMin = 0;
    int m_topRow = 0;
    int m_shownRows = -1; // -1: no view has said
    bool m_redraw = true;
    bool m_resetPending = false;
    GeometryProvider m_geometry;
};
