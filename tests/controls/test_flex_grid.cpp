#include "TestUi.h"
#include "controls/FlexGrid.h"
#include "controls/Form.h"

#include <QAbstractItemModelTester>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <functional>
#include <gtest/gtest.h>
#include <iostream>

// Texts and cell values print as what they hold when a comparison fails.
[[maybe_unused]] static void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}
[[maybe_unused]] static void PrintTo(const QVariant &value, std::ostream *out)
{
    *out << (value.isValid() ? value.typeName() + std::string(" ") + value.toString().toStdString() : std::string("(none)"));
}

namespace {

class GridWindow : public Form
{
public:
    explicit GridWindow(Ui &ui) : Form(ui, "frmRejilla", "Rejilla")
    {
        msgMod182.Click = [this] { calls << QString("Click %1,%2").arg(msgMod182.Row()).arg(msgMod182.Col()); };
        msgMod182.EnterCell = [this] { calls << QString("EnterCell %1,%2").arg(msgMod182.Row()).arg(msgMod182.Col()); };
        msgMod182.Scroll = [this] { calls << QString("Scroll %1").arg(msgMod182.TopRow()); };
    }
    FlexGrid msgMod182{this, "msgMod182"};
    QStringList calls;
};

class Grid : public ::testing::Test
{
protected:
    // A grid of `rows` x `cols` whose cell (r, c) reads "r.c".
    void Fill(int rows, int cols)
    {
        grid.SetRows(rows);
        grid.SetCols(cols);
        for (int r = 0; r < rows; ++r)
            for (int c = 0; c < cols; ++c)
                grid.SetTextMatrix(r, c, QString("%1.%2").arg(r).arg(c));
    }
    QStringList Column(int col) const
    {
        QStringList texts;
        for (int r = 0; r < grid.Rows(); ++r)
            texts << grid.TextMatrix(r, col);
        return texts;
    }
    // Rows of tab-separated texts below a header row "Clave\tAlumno\tPagador".
    void Load(const QStringList &rows)
    {
        grid.SetRows(1);
        grid.SetCols(3);
        grid.SetTextMatrix(0, 0, "Clave");
        grid.SetTextMatrix(0, 1, "Alumno");
        grid.SetTextMatrix(0, 2, "Pagador");
        for (const QString &row : rows)
            grid.AddItem(row);
    }
    TestUi ui;
    GridWindow window{ui};
    FlexGrid &grid = window.msgMod182;
};

} // namespace

TEST_F(Grid, StartsLikeTheOriginalAndRegistersWithItsWindow)
{
    EXPECT_EQ(window.FindControl("msgMod182"), &grid);
    EXPECT_EQ(std::tuple(grid.Rows(), grid.Cols(), grid.FixedRows(), grid.FixedCols(), grid.Row(), grid.Col()),
              std::tuple(2, 2, 1, 1, 1, 1));
}

TEST_F(Grid, GrowingAndShrinkingKeepTheTextsThatStay)
{
    Fill(3, 3);
    grid.SetRows(5);
    grid.SetCols(4);
    EXPECT_EQ(Column(2), (QStringList{"0.2", "1.2", "2.2", "", ""}));
    EXPECT_EQ(Column(3), (QStringList{"", "", "", "", ""}));
    grid.SetRow(4);
    grid.SetCol(3);
    grid.SetRows(2);
    grid.SetCols(2);
    EXPECT_EQ(std::tuple(grid.Row(), grid.Col(), grid.Text()), std::tuple(1, 1, QString("1.1"))); // pulled inside
    grid.SetRows(3);
    grid.SetCols(3);
    // What was cut off does not come back.
    EXPECT_EQ(Column(2), (QStringList{"", "", ""}));
    EXPECT_EQ(Column(1), (QStringList{"0.1", "1.1", ""}));
    grid.SetRows(0);
    grid.SetCols(0);
    EXPECT_EQ(std::tuple(grid.FixedRows(), grid.FixedCols(), grid.Text()), std::tuple(0, 0, QString()));

    grid.SetRows(2);
    grid.SetCols(5);
    grid.AddItem("1532 877\tGARCIA -, ANA\tGARCIA LOPEZ, EVA\t12345678Z\tsobra\tde más");
    grid.AddItem("primera", 1);
    EXPECT_EQ(Column(0), (QStringList{"", "primera", "", "1532 877"}));
    EXPECT_EQ(grid.TextMatrix(3, 4), "sobra");
    grid.RemoveItem(1);
    EXPECT_EQ(Column(1), (QStringList{"", "", "GARCIA -, ANA"}));
}

// Every way to reach a cell that is not there is refused with the cell named.
TEST_F(Grid, ACellOutsideTheGridIsRefusedWithItsName)
{
    Fill(3, 4);
    const std::vector<std::pair<std::function<void()>, std::string>> cases{
        {[&] { grid.TextMatrix(3, 0); }, "TextMatrix: la celda (3, 0) está fuera de la cuadrícula de 3 filas y 4 columnas"},
        {[&] { grid.TextMatrix(0, 4); }, "TextMatrix: la celda (0, 4) está fuera"},
        {[&] { grid.TextMatrix(-1, 0); }, "TextMatrix: la celda (-1, 0)"},
        {[&] { grid.SetTextMatrix(1, -1, "x"); }, "TextMatrix: la celda (1, -1)"},
        {[&] { grid.SetCellFontName(5, 1, "Wingdings"); }, "CellFontName: la celda (5, 1)"},
        {[&] { grid.SetRow(3); }, "Row: la fila 3 no existe (la cuadrícula tiene 3 filas)"},
        {[&] { grid.SetCol(4); }, "Col: la columna 4 no existe (la cuadrícula tiene 4 columnas)"},
        {[&] { grid.SetColSel(-1); }, "ColSel: la columna -1 no existe"},
        {[&] { grid.ColWidth(9); }, "ColWidth: la columna 9 no existe"},
        {[&] { grid.SetFixedRows(4); }, "FixedRows: 4 no es válido en una cuadrícula de 3 filas"},
        {[&] { grid.RemoveItem(3); }, "RemoveItem: la fila 3 no existe"},
        {[&] { grid.SetRows(-1); }, "Rows: el número de filas no puede ser negativo (-1)"},
    };
    for (const auto &[action, message] : cases) {
        try {
            action();
            ADD_FAILURE() << "not refused: " << message;
        } catch (const std::out_of_range &e) {
            EXPECT_EQ(std::string(e.what()).substr(0, message.size()), message);
        }
    }
    EXPECT_THROW(grid.SetCellAlignment(1, 1, 10), std::invalid_argument);
    EXPECT_EQ(Column(0), (QStringList{"0.0", "1.0", "2.0"})); // nothing changed
}

TEST_F(Grid, WithRedrawOffFillingIsAnnouncedOnceAsAReset)
{
    QSignalSpy changed(&grid, &QAbstractItemModel::dataChanged), rows(&grid, &QAbstractItemModel::rowsInserted),
        cols(&grid, &QAbstractItemModel::columnsInserted), layout(&grid, &QAbstractItemModel::layoutChanged),
        reset(&grid, &QAbstractItemModel::modelReset), current(&grid, &FlexGrid::CurrentCellChanged);
    grid.SetRedraw(false);
    grid.SetRows(0);
    grid.SetCols(0);
    grid.SetRows(1);
    grid.SetCols(5);
    for (int i = 1; i <= 200; ++i) {
        grid.SetRows(grid.Rows() + 1);
        grid.SetTextMatrix(i, 1, QString("Alumno %1").arg(200 - i, 3, 10, QChar('0')));
        grid.SetRow(i);
        grid.SetCol(4);
        grid.SetCellFontName("Wingdings");
        grid.SetText("ü");
    }
    grid.Sort(1, 1);
    EXPECT_EQ(std::tuple(changed.count(), rows.count(), cols.count(), layout.count(), reset.count(), current.count()),
              std::tuple(0, 0, 0, 0, 0, 0));
    grid.SetRedraw(true);
    EXPECT_EQ(std::tuple(changed.count(), rows.count(), reset.count()), std::tuple(0, 0, 1));
    EXPECT_EQ(std::tuple(grid.rowCount(), grid.columnCount(), grid.index(1, 1).data().toString()),
              std::tuple(201, 5, QString("Alumno 000")));
    grid.SetRedraw(false);
    grid.SetRedraw(true); // nothing changed meanwhile: no reset
    grid.SetTextMatrix(2, 2, "uno");
    EXPECT_EQ(std::tuple(reset.count(), changed.count()), std::tuple(1, 1));
    EXPECT_EQ(changed.at(0).at(0).toModelIndex(), grid.index(2, 2));
}

// Spanish order ignoring case: "Álvarez" between "Alonso" and "Amado", "Ñ"
// after "N"; equal names keep their order; the header row stays on top.
TEST_F(Grid, SortingPutsRowsInSpanishOrderStablyBelowTheHeader)
{
    Load({"1\tZapata", "2\tÑandú", "3\tálvarez, ana", "4\tNuñez", "5\tALONSO", "6\tOliva", "7\tAlonso", "8\tamado",
          "9\tNavarro"});
    grid.SetRow(4);
    grid.SetCol(0);
    grid.SetCellForeColor(vbGreen); // the format travels with its row ("4")
    grid.Sort(1, 1);
    EXPECT_EQ(Column(1), (QStringList{"Alumno", "ALONSO", "Alonso", "álvarez, ana", "amado", "Navarro", "Nuñez", "Ñandú",
                                      "Oliva", "Zapata"}));
    EXPECT_EQ(Column(0), (QStringList{"Clave", "5", "7", "3", "8", "9", "4", "2", "6", "1"}));
    EXPECT_EQ(std::tuple(grid.CellForeColor(6, 0), grid.CellForeColor(4, 0), grid.Row()), std::tuple(vbGreen, -1, 4));
}

TEST_F(Grid, SortingOnAColumnRangeBreaksTiesWithTheNextColumn)
{
    const QStringList rows{"a\tGARCIA -, ANA\tPEREZ, LUIS", "b\tBLANCO RUIZ, JUAN\tZAMORA, ROSA",
                           "c\tgarcia -, ana\tLÓPEZ, EVA", "d\tGARCIA -, ANA\tLOPEZ, EVA", "e\tGARCIA -, ANA\t"};
    for (const auto &[from, to] : {std::pair{1, 2}, {2, 1}}) {
        Load(rows);
        grid.Sort(from, to);
        EXPECT_EQ(Column(0), (QStringList{"Clave", "b", "e", "d", "c", "a"})) << from << "-" << to;
    }
    Load({"1\t10", "2\t9", "3\t", "4\t45.00", "5\tabc", "6\t9,5", "7\t-3"});
    grid.Sort(1, 1); // empty, then numbers by value, then texts
    EXPECT_EQ(Column(1), (QStringList{"Alumno", "", "-3", "9", "9,5", "10", "45.00", "abc"}));
}

TEST_F(Grid, EveryRoleShowsTheCellsTextAndFormat)
{
    Fill(3, 6);
    grid.SetTextMatrix(2, 5, "45.00");
    grid.SetTextMatrix(2, 0, "1532 877");
    grid.SetTextMatrix(0, 3, "DNI");
    grid.SetRow(2);
    grid.SetCol(4);
    grid.SetCellFontName("Wingdings");
    grid.SetCellFontSize(14);
    grid.SetCellAlignment(flexAlignCenterCenter);
    grid.SetCellForeColor(vbRed);
    grid.SetText("û");
    grid.SetCellFontBold(1, 3, true);
    grid.SetCellAlignment(1, 3, flexAlignRightBottom);
    const auto roles = [&](int r, int c) {
        const QModelIndex cell = grid.index(r, c);
        return std::tuple(cell.data(Qt::DisplayRole), cell.data(Qt::TextAlignmentRole), cell.data(FlexGrid::FontNameRole),
                          cell.data(FlexGrid::FontSizeRole), cell.data(FlexGrid::FontBoldRole),
                          cell.data(FlexGrid::ForeColorRole), cell.data(FlexGrid::FixedCellRole));
    };
    const QVariant none;
    const int left = int(Qt::AlignLeft | Qt::AlignVCenter), right = int(Qt::AlignRight | Qt::AlignVCenter);
    EXPECT_EQ(roles(2, 4), std::tuple(QVariant("û"), QVariant(int(Qt::AlignCenter)), QVariant("Wingdings"), QVariant(14.0),
                                      none, QVariant(0x0000FF), QVariant(false)));
    EXPECT_EQ(roles(1, 3), std::tuple(QVariant("1.3"), QVariant(int(Qt::AlignRight | Qt::AlignBottom)), none, none,
                                      QVariant(true), none, QVariant(false)));
    EXPECT_EQ(roles(2, 5), std::tuple(QVariant("45.00"), QVariant(right), none, none, none, none, QVariant(false)));
    EXPECT_EQ(roles(2, 0), std::tuple(QVariant("1532 877"), QVariant(left), none, none, none, none, QVariant(true)));
    EXPECT_EQ(roles(0, 3), std::tuple(QVariant("DNI"), QVariant(left), none, none, none, none, QVariant(true)));
    // Read back through the current cell and through its coordinates alike.
    EXPECT_EQ(std::tuple(grid.CellFontName(), grid.CellFontSize(), grid.CellForeColor(), grid.CellAlignment(),
                         grid.CellFontBold()),
              std::tuple(QString("Wingdings"), 14.0, vbRed, int(flexAlignCenterCenter), false));
    EXPECT_EQ(std::tuple(grid.CellFontName(2, 3), grid.CellAlignment(2, 3), grid.CellFontBold(1, 3)),
              std::tuple(QString(), int(flexAlignGeneral), true));
    grid.Clear();
    EXPECT_EQ(roles(2, 4), std::tuple(QVariant(""), QVariant(left), none, none, none, none, QVariant(false)));
}

TEST_F(Grid, ClicksAndMovesSetTheCurrentCellAndFireTheirEvents)
{
    Fill(5, 6);
    grid.SetRow(3); // EnterCell 3,1
    grid.SetCol(1); // unchanged: no event
    EXPECT_EQ(std::tuple(grid.RowSel(), grid.ColSel(), grid.Text()), std::tuple(3, 1, QString("3.1")));
    grid.SetColSel(2);
    grid.SetRowSel(4);
    EXPECT_EQ(std::tuple(grid.Row(), grid.Col(), grid.RowSel(), grid.ColSel()), std::tuple(3, 1, 4, 2));
    grid.UserClick(2, 3);
    grid.UserClick(2, 3);
    grid.UserClick(9, 9); // outside: nothing
    grid.UserMoveTo(0, 4);
    EXPECT_EQ(std::tuple(grid.MouseRow(), grid.MouseCol(), grid.RowSel(), grid.ColSel()), std::tuple(2, 3, 0, 4));
    EXPECT_EQ(window.calls, (QStringList{"EnterCell 3,1", "EnterCell 2,3", "Click 2,3", "Click 2,3", "EnterCell 0,4"}));
}

TEST_F(Grid, WidthsInTwipsPlaceTheCurrentCell)
{
    Fill(10, 6);
    for (const auto &[col, twips] : {std::pair{0, 0}, {1, 2400}, {2, 2355}, {3, 1000}, {4, 660}})
        grid.SetColWidth(col, twips);
    grid.SetRowHeightMin(285);
    EXPECT_EQ(std::tuple(grid.ColWidth(0), grid.ColWidth(5), grid.HasDefaultWidth(5), grid.HasDefaultWidth(0)),
              std::tuple(0, FlexGrid::kDefaultColWidth, true, false));
    grid.SetRow(3);
    grid.SetCol(3);
    EXPECT_EQ(std::tuple(grid.CellLeft(), grid.CellTop(), grid.CellWidth(), grid.CellHeight()),
              std::tuple(0 + 2400 + 2355, 3 * 285, 1000, 285));
    grid.UserScrolled(5, 3); // rows 5..7 shown below the header
    grid.SetRow(6);
    EXPECT_EQ(grid.CellTop(), (1 + 6 - 5) * 285);
    EXPECT_EQ(std::tuple(grid.RowIsVisible(0), grid.RowIsVisible(4), grid.RowIsVisible(7), grid.RowIsVisible(8)),
              std::tuple(true, false, true, false));
    grid.SetGeometryProvider([](int row, int col) { return QRect(col * 100, row * 10, 90, 9); });
    EXPECT_EQ(std::tuple(grid.CellLeft(), grid.CellTop(), grid.CellWidth()), std::tuple(300, 60, 90));
    grid.SetColWidth(1, -1);
    EXPECT_EQ(std::tuple(grid.ColWidth(1), grid.HasDefaultWidth(1)), std::tuple(FlexGrid::kDefaultColWidth, true));
    EXPECT_EQ(window.calls.filter("Scroll"), QStringList{"Scroll 5"});
}

// Qt's own checker watches every signal while the grid is used as the
// donor window uses it.
TEST_F(Grid, QtsModelTesterFindsNothingWrong)
{
    QAbstractItemModelTester tester(&grid, QAbstractItemModelTester::FailureReportingMode::Warning);
    QStringList warnings;
    static QStringList *sink = nullptr;
    sink = &warnings;
    const QtMessageHandler previous = qInstallMessageHandler(
        [](QtMsgType type, const QMessageLogContext &, const QString &text) {
            if (type != QtDebugMsg)
                *sink << text;
        });
    Load({"1\tZapata\tx", "2\tÁlvarez\ty"});
    grid.SetCols(6);
    grid.SetFixedCols(2);
    grid.SetTextMatrix(1, 5, "45.00");
    grid.SetCellAlignment(1, 4, flexAlignCenterCenter);
    grid.Sort(1, 2);
    grid.SetRedraw(false);
    grid.AddItem("3\tBeltrán");
    grid.SetRows(2);
    grid.SetRedraw(true);
    grid.RemoveItem(1);
    grid.SetCols(3);
    grid.Clear();
    qInstallMessageHandler(previous);
    EXPECT_EQ(warnings, QStringList());
}

// A large school: 4,500 donors in 29 columns are built with Redraw off and
// sorted on two columns; the rows come out in order.
TEST_F(Grid, ALargeSchoolIsBuiltAndSortedInOrder)
{
    QElapsedTimer timer;
    timer.start();
    grid.SetRedraw(false);
    grid.SetRows(1);
    grid.SetCols(29);
    const QStringList surnames{"PÉREZ", "NÚÑEZ", "ÁLVAREZ", "ALONSO", "NAVARRO", "ZAMORA", "ÑÍGUEZ", "OLIVA"};
    for (int i = 1; i <= 4500; ++i) {
        grid.SetRows(i + 1);
        grid.SetTextMatrix(i, 0, QString::number(i));
        grid.SetTextMatrix(i, 1, surnames[(i * 7) % surnames.size()] + " -, " + QString::number(i % 13));
        grid.SetTextMatrix(i, 2, surnames[(i * 3) % surnames.size()]);
        grid.SetRow(i);
        grid.SetCol(4);
        grid.SetCellFontName("Wingdings");
        grid.SetCellFontSize(14);
        grid.SetText("ü");
        for (int c = 5; c < 29; ++c)
            grid.SetTextMatrix(i, c, "45.00");
    }
    grid.Sort(1, 2);
    grid.SetRedraw(true);
    const qint64 elapsed = timer.elapsed();
    RecordProperty("milliseconds", int(elapsed));
    std::cout << "4500 x 29 built and sorted in " << elapsed << " ms\n";
    QStringList firsts;
    for (int r = 1; r < grid.Rows(); ++r)
        if (firsts.isEmpty() || firsts.last() != grid.TextMatrix(r, 1).section(' ', 0, 0))
            firsts << grid.TextMatrix(r, 1).section(' ', 0, 0);
    EXPECT_EQ(firsts, (QStringList{"ALONSO", "ÁLVAREZ", "NAVARRO", "NÚÑEZ", "ÑÍGUEZ", "OLIVA", "PÉREZ", "ZAMORA"}));
    EXPECT_EQ(std::tuple(grid.Rows(), grid.CellFontName(4500, 4), grid.TextMatrix(4500, 28)),
              std::tuple(4501, QString("Wingdings"), QString("45.00")));
}
