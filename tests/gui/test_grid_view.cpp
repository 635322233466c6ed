#include "GuiFixture.h"
#include "controls/FlexGrid.h"
#include "gui/FlexGridStyle.h"
#include "gui/ViewFactory.h"
#include <QAbstractItemModelTester>

namespace {
// A window with one grid filled like the donor grid: hidden key, student,
// payer, identifier, the mark, one amount column.
class frmRejilla : public Form
{
public:
    explicit frmRejilla(Ui &ui) : Form(ui, "frmRejilla", "Rejilla de prueba")
    {
        msgMod182.Click = [this] { calls << QString("Click %1,%2").arg(msgMod182.Row()).arg(msgMod182.Col()); };
        msgMod182.EnterCell = [this] { calls << QString("EnterCell %1,%2").arg(msgMod182.Row()).arg(msgMod182.Col()); };
        msgMod182.GotFocus = [this] { calls << "GotFocus"; };
        msgMod182.SetRedraw(false);
        msgMod182.SetRows(1);
        msgMod182.SetCols(6);
        msgMod182.SetFixedCols(2);
        msgMod182.SetRowHeightMin(285);
        const QStringList headers{"", "Alumno", "Miembro Familia Pagador", "DNI", "Mostrar", "2025-2026 <-> Comedor"};
        for (int col = 0; col < headers.size(); ++col)
            msgMod182.SetTextMatrix(0, col, headers[col]);
        for (const auto &[col, twips] : {std::pair{0, 0}, {1, 2400}, {2, 2355}, {3, 1000}, {4, 660}})
            msgMod182.SetColWidth(col, twips);
        AddDonor("1532 877", "GARCIA -, ANA", "GARCIA LOPEZ, EVA", "12345678Z", true, "45.00");
        AddDonor("1533 878", "ÁLVAREZ PÉREZ, LUIS", "PÉREZ RUIZ, MARTA", "00000002W", false, "45.00");
        AddDonor("1534 879", "NÚÑEZ -, PABLO", "NÚÑEZ SOTO, JUAN", "X1234567L", true, "90.00");
        msgMod182.SetRedraw(true);
    }
    void AddDonor(const QString &key, const QString &student, const QString &payer, const QString &nif, bool shown,
                  const QString &amount)
    {
        msgMod182.AddItem(key + "\t" + student + "\t" + payer + "\t" + nif + "\t\t" + amount);
        msgMod182.SetRow(msgMod182.Rows() - 1);
        msgMod182.SetCol(4);
        msgMod182.SetCellFontName("Wingdings");
        msgMod182.SetCellFontSize(14);
        msgMod182.SetCellAlignment(flexAlignCenterCenter);
        msgMod182.SetCellForeColor(shown ? vbGreen : vbRed);
        msgMod182.SetText(shown ? "ü" : "û");
    }
    FlexGrid msgMod182{this, "msgMod182"};
    QStringList calls;
};
} // namespace

class GridView : public GuiTest
{
protected:
    void SetUp() override
    {
        GuiTest::SetUp();
        qtUi.Views().Register("frmRejilla", [](QDialog &view) {
            auto *layout = new QVBoxLayout(&view);
            auto *table = new QTableView;
            table->setObjectName("msgMod182");
            layout->addWidget(table);
            view.resize(800, 300);
        });
        auto form = std::make_shared<frmRejilla>(qtUi);
        rejilla = form.get();
        qtUi.ShowModal(form);
        QApplication::processEvents();
        rejilla->calls.clear();
    }
    QTableView &View() const { return Widget<QTableView>("msgMod182"); }
    QModelIndex At(int row, int col) const { return View().model()->index(row, col); }
    // The cell as drawn, cut out of a picture of the view.
    QImage Picture(int row, int col) const
    {
        const QRect cell = View().visualRect(At(row, col)).translated(View().viewport()->pos());
        return View().grab().toImage().copy(cell);
    }
    static int Pixels(const QImage &image, const std::function<bool(QColor)> &wanted)
    {
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                count += wanted(image.pixelColor(x, y)) ? 1 : 0;
        return count;
    }
    frmRejilla *rejilla = nullptr;
    FlexGrid &Grid() const { return rejilla->msgMod182; }
};

TEST_F(GridView, TheTableShowsTheTextsUnderAFrozenHeaderAndHidesTheKey)
{
    QTableView &view = View();
    auto *style = qobject_cast<FlexGridStyle *>(view.model());
    ASSERT_NE(style, nullptr);
    EXPECT_EQ(style->sourceModel(), &Grid());
    QStringList texts, headers;
    for (int row = 1; row < view.model()->rowCount(); ++row)
        texts << At(row, 1).data().toString() + " | " + At(row, 5).data().toString();
    for (int col = 1; col < view.model()->columnCount(); ++col)
        headers << view.model()->headerData(col, Qt::Horizontal).toString();
    EXPECT_EQ(texts, (QStringList{"GARCIA -, ANA | 45.00", "ÁLVAREZ PÉREZ, LUIS | 45.00", "NÚÑEZ -, PABLO | 90.00"}));
    EXPECT_EQ(headers, (QStringList{"Alumno", "Miembro Familia Pagador", "DNI", "Mostrar", "2025-2026 <-> Comedor"}));
    // Twips at 15 to the pixel; the key column hidden; the header row shown
    // by the header, which does not scroll away.
    // Twips at 15 a pixel, widened where the header would not fit.
    EXPECT_EQ(std::tuple(view.isColumnHidden(0), view.columnWidth(1), view.columnWidth(3)), std::tuple(true, 160, 67));
    QFont headerFont = view.horizontalHeader()->font();
    headerFont.setBold(true);
    for (int col : {2, 4}) {
        EXPECT_GE(view.columnWidth(col), QFontMetrics(headerFont).horizontalAdvance(Grid().TextMatrix(0, col))) << col;
        EXPECT_GE(view.columnWidth(col), Grid().ColWidth(col) / 15) << col;
    }
    EXPECT_EQ(std::tuple(view.isRowHidden(0), view.horizontalHeader()->isVisible(), view.verticalHeader()->isVisible()),
              std::tuple(true, true, false));
    EXPECT_GE(view.columnWidth(5), view.fontMetrics().horizontalAdvance("2025-2026 <-> Comedor"));
    EXPECT_GE(view.rowHeight(1), 19);

    // The grid's plain values become Qt's roles.
    const QFont mark = At(1, 4).data(Qt::FontRole).value<QFont>();
    EXPECT_EQ(std::tuple(mark.families().value(0), mark.pointSizeF(),
                         At(1, 4).data(Qt::ForegroundRole).value<QBrush>().color(),
                         At(2, 4).data(Qt::ForegroundRole).value<QBrush>().color(),
                         At(1, 4).data(Qt::TextAlignmentRole).toInt()),
              std::tuple(QString("Wingdings"), 14.0, QColor(0, 255, 0), QColor(255, 0, 0), int(Qt::AlignCenter)));
    EXPECT_EQ(std::tuple(At(1, 1).data(Qt::BackgroundRole).value<QBrush>().color(),
                         At(1, 2).data(Qt::BackgroundRole).isValid(), At(1, 2).data(Qt::FontRole).isValid(),
                         At(0, 3).data(Qt::FontRole).value<QFont>().bold()),
              std::tuple(FlexGridStyle::FixedBackground(), false, false, true));

    Grid().SetTextMatrix(0, 3, "NIF");
    Grid().SetTextMatrix(3, 2, "SOTO -, JUAN");
    EXPECT_EQ(std::tuple(view.model()->headerData(3, Qt::Horizontal).toString(), At(3, 2).data().toString()),
              std::tuple(QString("NIF"), QString("SOTO -, JUAN")));
}

TEST_F(GridView, AClickOnACellMakesItCurrentAndClicksOnce)
{
    QTableView &view = View();
    ClickAt(view, view.visualRect(At(2, 3)).center());
    EXPECT_EQ(std::tuple(Grid().Row(), Grid().Col(), Grid().MouseRow(), Grid().MouseCol()), std::tuple(2, 3, 2, 3));
    EXPECT_EQ(rejilla->calls, (QStringList{"EnterCell 2,3", "Click 2,3"}));
    // The header is row 0: a click there is a click on (0, column).
    QHeaderView &header = *view.horizontalHeader();
    ClickAt(header, QPoint(header.sectionViewportPosition(4) + header.sectionSize(4) / 2, header.height() / 2));
    EXPECT_EQ(rejilla->calls.mid(2), (QStringList{"EnterCell 0,4", "Click 0,4"}));
    QFocusEvent focusIn(QEvent::FocusIn, Qt::MouseFocusReason);
    QApplication::sendEvent(&view, &focusIn);
    EXPECT_EQ(rejilla->calls.mid(4), QStringList{"GotFocus"});

    // The view follows the current cell and selection the form sets.
    Grid().SetRow(3);
    Grid().SetCol(2);
    Grid().SetColSel(1);
    QList<QPoint> selected;
    for (const QModelIndex &cell : view.selectionModel()->selectedIndexes())
        selected << QPoint(cell.column(), cell.row());
    std::sort(selected.begin(), selected.end(), [](QPoint a, QPoint b) { return a.x() < b.x(); });
    EXPECT_EQ(std::tuple(view.currentIndex(), selected), std::tuple(At(3, 2), QList<QPoint>{{1, 3}, {2, 3}}));
    // The current cell's place, for an edit box laid over it.
    const QRect cell = view.visualRect(At(3, 2)).translated(view.viewport()->pos());
    EXPECT_EQ(std::tuple(Grid().CellLeft(), Grid().CellTop(), Grid().CellWidth(), Grid().CellHeight()),
              std::tuple(cell.left() * 15, cell.top() * 15, cell.width() * 15, cell.height() * 15));
}

TEST_F(GridView, TheMarksAreDrawnAsAGreenCheckAndARedCross)
{
    const auto green = [](QColor c) { return c.green() > 150 && c.red() < 100 && c.blue() < 100; };
    const auto red = [](QColor c) { return c.red() > 150 && c.green() < 100 && c.blue() < 100; };
    const QImage yes = Picture(1, 4), no = Picture(2, 4), amount = Picture(1, 5);
    EXPECT_EQ(std::tuple(Pixels(yes, green) > 10, Pixels(yes, red), Pixels(no, red) > 10, Pixels(no, green)),
              std::tuple(true, 0, true, 0));
    EXPECT_EQ(Pixels(amount, green) + Pixels(amount, red), 0);
    EXPECT_EQ(std::tuple(Grid().TextMatrix(1, 4), Grid().TextMatrix(2, 4)), std::tuple(QString("ü"), QString("û")));
    // Toggled by the form, the cell is drawn anew.
    Grid().SetRow(2);
    Grid().SetCol(4);
    Grid().SetCellForeColor(vbGreen);
    Grid().SetText("ü");
    Grid().SetRow(1); // the selection highlight away from the cell
    EXPECT_GT(Pixels(Picture(2, 4), green), 10);
}

TEST_F(GridView, WhilePaintingIsOffTheViewWaitsAndThenShowsEverything)
{
    QTableView &view = View();
    Grid().SetRedraw(false);
    EXPECT_FALSE(view.updatesEnabled());
    for (int i = 0; i < 300; ++i)
        rejilla->AddDonor(QString("%1 1").arg(2000 + i), QString("ALUMNO %1").arg(i, 3, 10, QChar('0')), "PAGADOR", "",
                          i % 2, "12.50");
    Grid().Sort(1, 2);
    EXPECT_EQ(view.verticalHeader()->count(), 4); // not told yet
    Grid().SetRedraw(true);
    EXPECT_EQ(std::tuple(view.updatesEnabled(), view.model()->rowCount(), At(1, 1).data().toString()),
              std::tuple(true, 304, QString("ALUMNO 000")));
    EXPECT_EQ(std::tuple(view.isColumnHidden(0), view.isRowHidden(0), view.columnWidth(1)), std::tuple(true, true, 160));
    view.scrollToBottom();
    QApplication::processEvents();
    EXPECT_GT(Grid().TopRow(), 250);
    EXPECT_EQ(std::tuple(Grid().RowIsVisible(1), Grid().RowIsVisible(303)), std::tuple(false, true));
}

// Qt's own checker on what the view reads: fonts, brushes and the header
// row, while the form changes, sorts and refills the grid.
TEST_F(GridView, QtsModelTesterFindsNothingWrongInWhatTheViewReads)
{
    static QStringList warnings;
    warnings.clear();
    const QtMessageHandler previous = qInstallMessageHandler(
        [](QtMsgType type, const QMessageLogContext &, const QString &text) {
            if (type != QtDebugMsg && text.contains("FAIL"))
                warnings << text;
        });
    {
        QAbstractItemModelTester tester(View().model(), QAbstractItemModelTester::FailureReportingMode::Warning);
        Grid().SetTextMatrix(0, 1, "Alumno/a");
        Grid().SetCellFontBold(2, 2, true);
        Grid().Sort(1, 2);
        Grid().SetRedraw(false);
        rejilla->AddDonor("1540 890", "BELTRÁN -, SARA", "BELTRÁN OTERO, LUZ", "", true, "45.00");
        Grid().SetRedraw(true);
        Grid().SetFixedRows(0);
        Grid().SetCols(4);
        Grid().Clear();
    }
    qInstallMessageHandler(previous);
    EXPECT_EQ(warnings, QStringList());
}
