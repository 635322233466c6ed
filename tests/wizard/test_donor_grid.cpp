#include "WizardFixture.h"

#include "wizard/DonorGridLayout.h"
#include "wizard/DonorText.h"
#include "wizard/frmActividadAlumno.h"
#include "wizard/frmActividadMes.h"
#include "wizard/frmActividadPonderacion.h"
#include "wizard/frmSelActividad.h"
#include "wizard/frmSelCursos.h"

using namespace DonorGridLayout;

// The small school with a second payer for Lucía (an all-zero DNI typed with
// a hyphen) and a student enrolled without any paying member.
class DonorGrid : public WizardFixture
{
protected:
    void SetUp() override
    {
        WizardFixture::SetUp();
        if (IsSkipped())
            return;
        YearDescription &y = description.years[0];
        y.members.append({102, "Pérez", "Ruiz", "Marta", 1, "00000000-T", std::nullopt});
        y.students.append({202, "Ortiz", "", "Pablo", 2});
        y.enrolments.append({201, 1, 102, 10.0, SchoolMonths()});
        y.enrolments.append({202, 2, 0, 40.0, Months({9, 10})});
    }

    // Goes forward with every activity of the given years and all their
    // months, the first donation pair for each activity.
    frmActividadAlumno &OpenDonorStep(const QStringList &years, const std::function<void(frmSelCursos &)> &before = {})
    {
        frmSelCursos &cursos = SelectYears(years);
        if (before)
            before(cursos);
        cursos.cmdAceptar.Press();
        frmSelActividad &actividades = Top<frmSelActividad>();
        for (int i = 0; i < actividades.cboCursoEscolar.ListCount(); ++i) {
            actividades.cboCursoEscolar.SetListIndex(i);
            actividades.cmdAgregarTodos.Press();
        }
        actividades.cmdAceptar.Press();
        frmActividadMes &meses = Top<frmActividadMes>();
        for (int i = 0; i < meses.cboActCurEsc.ListCount(); ++i) {
            meses.cboActCurEsc.SetListIndex(i);
            meses.cmdAgregarTodos.Press();
        }
        meses.cmdAceptar.Press();
        frmActividadPonderacion &deducciones = Top<frmActividadPonderacion>();
        while (deducciones.lstActividad.ListCount() > 0) {
            deducciones.lstActividad.SetListIndex(0);
            deducciones.cboTipoPorcentaje.SetListIndex(0);
            deducciones.cmdAnadir.Press();
        }
        deducciones.cmdSiguiente.Press();
        EXPECT_TRUE(ui.MessageTexts().isEmpty()) << ui.MessageTexts().join('\n').toStdString();
        return Top<frmActividadAlumno>();
    }

    static QStringList Row(const FlexGrid &grid, int row)
    {
        QStringList cells;
        for (int c = 0; c < grid.Cols(); ++c)
            cells << grid.TextMatrix(row, c);
        return cells;
    }
    static QStringList Rows(const FlexGrid &grid)
    {
        QStringList rows;
        for (int r = 0; r < grid.Rows(); ++r)
            rows << Row(grid, r).join('|');
        return rows;
    }
    static void Click(FlexGrid &grid, int row, int col) { grid.UserClick(row, col); }
};

TEST_F(DonorGrid, OneRowPerStudentAndPayerOneAmountColumnPerActivityInSpanishOrder)
{
    frmActividadAlumno &form = OpenDonorStep({"2023-2024"});
    const FlexGrid &grid = form.msgMod182;
    // Comedor: ten school months; Transporte: September to December;
    // Inglés: January to March. Lucía's second payer only pays Comedor; Pablo
    // has no paying member (an empty family part in the key).
    EXPECT_EQ(Rows(grid), QStringList({
                              "|Alumno|Miembro Familia Pagador|DNI|Mostrar|2023-2024 <-> Comedor|"
                              "2023-2024 <-> Transporte|2023-2024 <-> Inglés",
                              "201 101|García López, Lucía|García Pérez, Juan|12345678Z|ü|900,00|160,00|90,00",
                              "201 102|García López, Lucía|Pérez Ruiz, Marta|00000002W|ü|100,00||",
                              "202 |Ortiz -, Pablo|- -, -||ü||80,00|",
                          }));
    EXPECT_EQ(std::tuple(grid.FixedRows(), grid.FixedCols(), grid.RowHeightMin()), std::tuple(1, 2, 285));
    EXPECT_EQ(QList<int>({grid.ColWidth(0), grid.ColWidth(1), grid.ColWidth(2), grid.ColWidth(3), grid.ColWidth(4)}),
              QList<int>({0, 2400, 2355, 1000, 660}));
    EXPECT_EQ(std::tuple(grid.CellFontName(1, kMostrar), grid.CellFontSize(1, kMostrar), grid.CellForeColor(1, kMostrar),
                         grid.CellAlignment(1, kMostrar)),
              std::tuple(QString("Wingdings"), 14.0, kGreen, int(flexAlignCenterCenter)));
    EXPECT_EQ(form.lblTotal.Caption(), "Total Acumulado de los donativos: 1.330,00");
    EXPECT_TRUE(grid.Redraw());
    EXPECT_FALSE(form.fraAlumnos.Visible());
    EXPECT_EQ(std::tuple(form.lblCursos.Caption(), form.lblActividades.Caption(), form.lblAlumnos.Caption()),
              std::tuple(QString("1/1"), QString("3/3"), QString("1/1")));

    // The payer records, one per row, as read from the host.
    ASSERT_EQ(form.colAlumnos.Keys(), QStringList({"201 101", "201 102", "202 "}));
    const auto juan = form.colAlumnos.Item("201 101");
    EXPECT_EQ(QStringList({juan->Nom_MFP, juan->AP1_MFP, juan->AP2_MFP, juan->NIF_MFP, juan->Direccion, juan->Poblacion,
                           juan->CodPos, juan->Provincia}),
              QStringList({"Juan", "García", "Pérez", "12345678Z", "Calle Mayor 1", "Madrid", "28001", "Madrid"}));
    EXPECT_EQ(form.colAlumnos.Item("202 ")->idMF, 0);
    // The declarant of the school year.
    EXPECT_EQ(std::tuple(form.declarante.nombre, form.declarante.cif, form.lngUltimoCurso),
              std::tuple(QString("COLEGIO SAN PRUEBA"), QString("R2800000A"), 3LL));
}

TEST_F(DonorGrid, TheDeclarantComesFromTheLatestYearWhateverTheOrderOfChoice)
{
    SchoolDescription later = description.school;
    later.name = "Colegio San Prueba (nuevo nombre)";
    description.years[1].school = later;
    description.years[1].activities = {{1, "Comedor", 95.0}, {5, "Ajedrez", 20.0}};
    frmActividadAlumno &form = OpenDonorStep({"2024-2025", "2023-2024"});
    EXPECT_EQ(form.lngUltimoCurso, 4);
    EXPECT_EQ(form.declarante.nombre, "COLEGIO SAN PRUEBA (NUEVO NOMBRE)");
    // Columns follow the order in which the years were chosen.
    EXPECT_EQ(form.msgMod182.TextMatrix(0, kFirstAmount), "2024-2025 <-> Comedor");
    EXPECT_EQ(Row(form.msgMod182, 1).mid(kFirstAmount), QStringList({"950,00", "40,00", "900,00", "160,00", "90,00"}));
}

TEST_F(DonorGrid, LoadedWorkBringsSavedPayersMarksAndAmountsAndKeepsUnplacedPayments)
{
    description.savedWork.donors = {{201, 101, "ANA", "GARCÍA", "PÉREZ", "X1234567L", false}};
    description.savedWork.payments = {{201, 101, 3, 1, 12.5}, {201, 102, 3, 1, 7.0}, {999, 5, 3, 1, 3.0}};
    frmActividadAlumno &form = OpenDonorStep({"2023-2024"}, [](frmSelCursos &cursos) { cursos.blnCargarDatos = true; });
    const FlexGrid &grid = form.msgMod182;
    EXPECT_EQ(Row(grid, 1).mid(2), QStringList({"GARCÍA PÉREZ, ANA", "X1234567L", "û", "12,50", "160,00", "90,00"}));
    EXPECT_EQ(grid.CellForeColor(1, kMostrar), kRed);
    EXPECT_EQ(Row(grid, 2).mid(2), QStringList({"Pérez Ruiz, Marta", "00000002W", "ü", "7,00", "", ""}));
    // Only saved amounts of declared donors count: Marta's 7,00; Juan is
    // not declared and Pablo's computed 80,00 has no saved amount.
    EXPECT_EQ(form.lblTotal.Caption(), "Total Acumulado de los donativos: 7,00");
    ASSERT_EQ(form.colDatosCobro.size(), 1);
    EXPECT_EQ(std::tuple(form.colDatosCobro[0].IDAl, form.colDatosCobro[0].IDMF, form.colDatosCobro[0].Pago),
              std::tuple(999LL, 5LL, QString("3")));
    EXPECT_EQ(TakeStatements("ALMFModelo182").first(),
              "SELECT Nombre, AP1, AP2, NIF, Mostrar FROM ALMFModelo182 WHERE IDAL=201 AND IDMF=101");
    EXPECT_TRUE(TakeStatements().isEmpty());
}

TEST_F(DonorGrid, TogglingAndEditingMoveTheTotalExactly)
{
    frmActividadAlumno &form = OpenDonorStep({"2023-2024"});
    FlexGrid &grid = form.msgMod182;
    const QString start = form.lblTotal.Caption();
    Click(grid, 1, kMostrar);
    EXPECT_EQ(std::tuple(grid.TextMatrix(1, kMostrar), grid.CellForeColor(1, kMostrar), form.lblTotal.Caption()),
              std::tuple(kNoDeclarado, kRed, QString("Total Acumulado de los donativos: 180,00")));
    Click(grid, 1, kMostrar);
    EXPECT_EQ(std::tuple(grid.TextMatrix(1, kMostrar), form.lblTotal.Caption()), std::tuple(kDeclarado, start));

    // An amount: 15 typed over 100,00 lowers the total by 85; cleared, by 15.
    Click(grid, 2, kFirstAmount);
    EXPECT_TRUE(form.txtValor.Visible());
    EXPECT_EQ(std::tuple(form.txtValor.Text(), form.txtValor.MaxLength()), std::tuple(QString("100,00"), 10));
    form.txtValor.SetText("");
    for (const char key : {'1', '5', 'x', '-'})
        form.txtValor.TypeKey(key); // letters and signs are dropped
    EXPECT_EQ(form.txtValor.Text(), "15");
    form.txtValor_LostFocus();
    EXPECT_EQ(std::tuple(grid.TextMatrix(2, kFirstAmount), form.txtValor.Visible(), form.lblTotal.Caption()),
              std::tuple(QString("15,00"), false, QString("Total Acumulado de los donativos: 1.245,00")));
    Click(grid, 2, kFirstAmount);
    form.txtValor.SetText("");
    form.txtValor_LostFocus();
    EXPECT_EQ(std::tuple(grid.TextMatrix(2, kFirstAmount), form.lblTotal.Caption()),
              std::tuple(QString(), QString("Total Acumulado de los donativos: 1.230,00")));

    // The payer's name rewrites the donor record; the DNI is written as typed.
    Click(grid, 1, kPagador);
    EXPECT_EQ(form.txtValor.MaxLength(), 70);
    form.txtValor.SetText("D'Souza Martín, Peter ª");
    form.txtValor_LostFocus();
    const auto record = form.colAlumnos.Item("201 101");
    EXPECT_EQ(QStringList({record->AP1_MFP, record->AP2_MFP, record->Nom_MFP}),
              QStringList({"D'SOUZA", "MARTÍN", "PETER ."}));
    EXPECT_EQ(grid.TextMatrix(1, kPagador), "D'Souza Martín, Peter ª");
    Click(grid, 1, kDni);
    EXPECT_EQ(form.txtValor.MaxLength(), 20);
    form.txtValor.SetText("y1234567x");
    form.txtValor_LostFocus();
    EXPECT_EQ(grid.TextMatrix(1, kDni), "y1234567x");
    EXPECT_TRUE(ui.MessageTexts().isEmpty());
}

TEST_F(DonorGrid, ClicksOnTheHeaderOrTheStudentDoNothingAndAnUnreadableAmountIsRefused)
{
    frmActividadAlumno &form = OpenDonorStep({"2023-2024"});
    FlexGrid &grid = form.msgMod182;
    const QStringList before = Rows(grid);
    for (auto [row, col] : {std::pair{0, kMostrar}, {0, kFirstAmount}, {1, kAlumno}, {1, kKey}}) {
        Click(grid, row, col);
        EXPECT_FALSE(form.txtValor.Visible()) << row << "," << col;
    }
    EXPECT_EQ(Rows(grid), before);

    Click(grid, 1, kFirstAmount);
    form.txtValor.SetText("12,5,3");
    form.txtValor_LostFocus();
    ExpectOnlyMessage("El importe «12,5,3» no es un número. Escriba una cantidad en euros, por ejemplo 12,50.");
    EXPECT_EQ(Rows(grid), before);
    EXPECT_FALSE(form.txtValor.Visible());
}

TEST_F(DonorGrid, ReturningToTheStepRebuildsFromTheHostData)
{
    frmActividadAlumno &form = OpenDonorStep({"2023-2024"});
    const QStringList built = Rows(form.msgMod182);
    Click(form.msgMod182, 1, kMostrar);
    form.Form_Activate();
    EXPECT_EQ(Rows(form.msgMod182), built);
    EXPECT_EQ(form.colAlumnos.Count(), 3);
}

TEST(DonorText, TaxIdentifiersNamesAndHeaders)
{
    const std::pair<const char *, const char *> ids[] = {
        {"12345678-z", "12345678z"},
        {" 1234567L ", "01234567L"},
        {"00000000-T", "00000002W"},
        {"012345678", "12345678Z"},
        {"", ""},
        {"   ", "   "},
        {"X1234567L", "X1234567L"},
        {"B12 345 674", "B12345674"},
        {"123456789012", "123456789"},
    };
    for (const auto &[in, out] : ids)
        EXPECT_EQ(NormaliseTaxId(QString::fromUtf8(in)), QString::fromUtf8(out)) << in;
    EXPECT_EQ(CleanName("Mª (José) + ¿Ruiz? 1º"), "M. José  Ruiz 1.");

    const std::pair<const char *, QStringList> names[] = {
        {"García Pérez, Ana", {"Ana", "GARCÍA", "PÉREZ"}},
        {"GARCÍA, ANA", {"ANA", "-", "-"}},
        {"García Pérez", {"-", "-", "-"}},
        {"Mª Luz de la Fuente, Eva", {"Eva", "M.", "LUZ DE LA FUENTE"}},
        {"- -, -", {"-", "-", "-"}},
    };
    for (const auto &[in, parts] : names) {
        const NameParts p = SplitGridName(QString::fromUtf8(in));
        EXPECT_EQ(QStringList({p.nombre, p.apellido1, p.apellido2}), parts) << in;
    }
    EXPECT_EQ(GridName(QVariant(), "", "Ana"), "- -, Ana");
    EXPECT_EQ(RowKey(1532, QVariant()), "1532 ");
    EXPECT_EQ(SplitRowKey("1532 ").idMiembroFamilia, 0);
    EXPECT_EQ(SplitRowKey("1532 877").idMiembroFamilia, 877);

    ColCursosEscolares cursos;
    auto curso = std::make_shared<cCursoEscolar>();
    curso->idCursoEscolar = 7;
    curso->Nombre = "2024-2025";
    for (auto [id, name] : {std::pair{3, "Comedor <-> tarde"}, {4, "Comedor"}}) {
        auto actividad = std::make_shared<cActividad>();
        actividad->idActividad = qint16(id);
        actividad->Nombre = name;
        curso->colActividades.Add(actividad, KeyOf(id));
    }
    cursos.Add(curso, "7");
    EXPECT_EQ(FindActivityByHeader(cursos, "2024-2025 <-> Comedor <-> tarde")->idActividad, 3);
    EXPECT_EQ(FindActivityByHeader(cursos, "2024-2025 <-> Comedor")->idActividad, 4);
    EXPECT_FALSE(FindActivityByHeader(cursos, "2023-2024 <-> Comedor"));
}
