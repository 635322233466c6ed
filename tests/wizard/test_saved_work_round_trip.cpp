#include "DonorStepFixture.h"
#include "Providers.h"

#include "wizard/DonorGridLayout.h"

// What the donor step shows after its work was saved, the saved work loaded
// again from the first window and the wizard walked forward: the saved
// names, marks and amounts.
class SavedWorkRoundTrip : public DonorStepFixture
{
protected:
    frmActividadAlumno &SaveAndReload(frmActividadAlumno &form)
    {
        ui.ClearLog();
        form.cmdGuardar.Press();
        EXPECT_EQ(ui.MessageTexts(), QStringList{"Datos guardados con éxito"});
        return Reload();
    }

    // Back to the first window, "Cargar Datos" answered Yes, and forward
    // again to the donor step.
    frmActividadAlumno &Reload()
    {
        frmSelCursos &first = BackToFirstWindow();
        ui.ClearLog();
        ui.Answer(vbYes);
        first.cmdCargar.Press();
        EXPECT_TRUE(first.blnCargarDatos);
        frmActividadAlumno &again = ForwardFromFirstWindow();
        EXPECT_EQ(ui.Messages().size(), 1); // only the question
        EXPECT_TRUE(ui.Messages().value(0).text.startsWith("¿Desea cargar los datos guardados anteriormente?"));
        return again;
    }

    // The stored payer row of this key: given name, surnames, identifier, mark.
    QString StoredPayer(const QString &idal, const QString &idmf) const
    {
        for (const QString &row : TableRows("ALMFModelo182"))
            if (row.startsWith("qlonglong:" + idal + "|qlonglong:" + idmf + "|"))
                return row;
        return QString();
    }
};

TEST_F(SavedWorkRoundTrip, EditedMarksAmountsAndNamesComeBack)
{
    description.years[0].members.append({102, "López", "Sanz", "Marta", 1, "87654321X", std::nullopt});
    description.years[0].enrolments.append({201, 1, 102, 90.0, SchoolMonths()});
    description.years[0].students.append({202, "Ruiz", QString(), "Pablo", 2});
    description.years[0].enrolments.append({202, 1, 0, 50.0, Months({10, 11})});
    frmActividadAlumno &form = WalkToDonorStep("2023-2024", {"Comedor", "Transporte"});
    ASSERT_EQ(form.msgMod182.Rows(), 4);
    EditCell(form, RowOf(form, "201 101"), 5, "12,5");
    EditCell(form, RowOf(form, "201 101"), 2, "Pérez Gil, Juana María");
    EditCell(form, RowOf(form, "201 101"), 3, "X1234567L");
    ToggleMark(form, RowOf(form, "201 102"));

    frmActividadAlumno &again = SaveAndReload(form);
    const FlexGrid &grid = again.msgMod182;
    ASSERT_EQ(grid.Rows(), 4);
    const int juana = RowOf(again, "201 101");
    const int marta = RowOf(again, "201 102");
    const int pablo = RowOf(again, "202 ");
    ASSERT_GT(juana, 0);
    ASSERT_GT(marta, 0);
    ASSERT_GT(pablo, 0);
    EXPECT_EQ(grid.TextMatrix(juana, 2), "PÉREZ GIL, Juana María");
    EXPECT_EQ(grid.TextMatrix(juana, 3), "X1234567L");
    EXPECT_EQ(grid.TextMatrix(juana, 4), "ü");
    EXPECT_EQ(grid.TextMatrix(juana, 5), "12,50");
    EXPECT_EQ(grid.TextMatrix(juana, 6), "160,00");
    EXPECT_EQ(grid.TextMatrix(marta, 2), "LÓPEZ SANZ, Marta");
    EXPECT_EQ(grid.TextMatrix(marta, 4), "û");
    EXPECT_EQ(grid.CellForeColor(marta, 4), DonorGridLayout::kRed);
    EXPECT_EQ(grid.TextMatrix(marta, 5), "900,00");
    EXPECT_EQ(grid.TextMatrix(pablo, 2), "- -, -");
    EXPECT_EQ(grid.TextMatrix(pablo, 5), "100,00");
    EXPECT_EQ(grid.TextMatrix(pablo, 6), "");
    // 12,50 + 160,00 + 100,00: Marta's 900,00 is not declared.
    EXPECT_EQ(again.lblTotal.Caption(), "Total Acumulado de los donativos: 272,50");
}

TEST_F(SavedWorkRoundTrip, SavedPaymentsWithoutARowAreWrittenBackAsTheyWereRead)
{
    // A text in a number column is something only a file database keeps.
    if (RequestedProvider() == HostProvider::PostgreSQL)
        GTEST_SKIP() << "a text amount cannot be stored on the server";
    frmActividadAlumno &form = WalkToDonorStep("2023-2024", {"Comedor"});
    form.cmdGuardar.Press();
    {
        // A payment saved for a payer the school no longer lists.
        Connection centro(paths.conexionLocalCentro);
        centro.SetBaseFolder(paths.root);
        centro.Open();
        centro.Execute("INSERT INTO DatosModelo182 VALUES (999,998,3,1,7.25)");
        // And one whose amount is a text no statement may take as its own.
        centro.Execute("INSERT INTO DatosModelo182 VALUES (999,997,3,1,'x''); DROP TABLE ComDed; --')");
        centro.Close();
    }
    frmActividadAlumno &again = Reload();
    ASSERT_EQ(again.colDatosCobro.size(), 2);
    TakeStatements();
    ui.ClearLog();
    again.cmdGuardar.Press();
    EXPECT_EQ(ui.MessageTexts(), QStringList{"Datos guardados con éxito"});
    const QStringList sql = TakeStatements();
    ASSERT_GE(sql.size(), 3);
    // The grid's own cell, then the kept-aside payments in the order the
    // saved table gives them (its index: by student and member).
    EXPECT_EQ(sql.mid(sql.size() - 3),
              (QStringList{"INSERT INTO DatosModelo182 VALUES (201,101,3,1,900.00)",
                           "INSERT INTO DatosModelo182 VALUES (999,997,3,1,'x''); DROP TABLE ComDed; --')",
                           "INSERT INTO DatosModelo182 VALUES (999,998,3,1,7.25)"}));
    const QStringList rows = TableRows("DatosModelo182");
    EXPECT_TRUE(rows.contains("qlonglong:999|qlonglong:998|qlonglong:3|qlonglong:1|double:7.25"));
    EXPECT_TRUE(rows.contains("qlonglong:999|qlonglong:997|qlonglong:3|qlonglong:1|QString:x'); DROP TABLE ComDed; --"));
}

// Names a school really has, and names nobody should have, through the
// build, the save and the reload: none breaks a statement, and what comes
// back is what was stored (name parts cut to 30 characters).
TEST_F(SavedWorkRoundTrip, AwkwardNamesAreStoredAndShownAsTheyAre)
{
    struct Case
    {
        QString apellido1, apellido2, nombre;       // in the host's data
        QString storedNombre, storedAp1, storedAp2; // in the saved work
    };
    const QString sqlName = "Robert'); DELETE FROM ComDed; --";
    const QList<Case> cases = {
        {"O'Brien", "D\"Arcy", "Zoë", "Zoë", "O'BRIEN", "D\"ARCY"},
        {"Núñez", "Ibáñez", "María Ángeles", "María Ángeles", "NÚÑEZ", "IBÁÑEZ"},
        {"Mª", "Pº", "Nº 1ª", "Nº 1ª", "M.", "Pº"},
        {"%1", "%2", "%1 %2 %3", "%1 %2 %3", "%1", "%2"},
        {"Smith😀", "Lee", "Ana😀", "Ana😀", "SMITH😀", "LEE"},
        {QString(200, 'x'), QString(200, 'y'), QString(200, 'z'), QString(30, 'z'), QString(30, 'X'), QString(30, 'Y')},
        {"x');", "DROP TABLE ALMFModelo182; --", sqlName, sqlName.left(30), "X');", "DROP TABLE ALMFMODELO182; --"},
        {"", "", "", "-", "-", "-"},
        {"Ruiz", "", "Eva", "Eva", "RUIZ", "-"},
        {"True", "False", "Null", "Null", "TRUE", "FALSE"},
        {"Back\\slash", "Semi;colon", "Q?uestion", "Q?uestion", "BACK\\SLASH", "SEMI;COLON"},
    };
    YearDescription &year = description.years[0];
    for (int i = 0; i < cases.size(); ++i) {
        const Case &c = cases[i];
        year.members.append({300 + i, c.apellido1, c.apellido2, c.nombre, 0, QString(), std::nullopt});
        year.students.append({400 + i, c.apellido1, c.apellido2, c.nombre, 0});
        year.enrolments.append({400 + i, 1, 300 + i, 10.0, Months({10})});
    }
    frmActividadAlumno &form = WalkToDonorStep("2023-2024", {"Comedor"});
    ASSERT_EQ(form.msgMod182.Rows(), 2 + cases.size());
    const QString awkwardId = "12'34\"%1😀; --";
    EditCell(form, RowOf(form, "400 300"), 3, awkwardId);

    frmActividadAlumno &again = SaveAndReload(form);
    ASSERT_EQ(again.msgMod182.Rows(), 2 + cases.size());
    for (int i = 0; i < cases.size(); ++i) {
        const Case &c = cases[i];
        SCOPED_TRACE(c.nombre.toStdString());
        const QString nif = i == 0 ? awkwardId : QString();
        EXPECT_EQ(StoredPayer(QString::number(400 + i), QString::number(300 + i)),
                  "qlonglong:" + QString::number(400 + i) + "|qlonglong:" + QString::number(300 + i)
                      + "|QString:" + c.storedNombre + "|QString:" + c.storedAp1 + "|QString:" + c.storedAp2
                      + "|QString:" + nif + "|qlonglong:-1");
        const int row = RowOf(again, QString::number(400 + i) + " " + QString::number(300 + i));
        ASSERT_GT(row, 0);
        EXPECT_EQ(again.msgMod182.TextMatrix(row, 2), c.storedAp1 + " " + c.storedAp2 + ", " + c.storedNombre);
        EXPECT_EQ(again.msgMod182.TextMatrix(row, 3), nif);
        EXPECT_EQ(again.msgMod182.TextMatrix(row, 5), "10,00");
    }
    // Lucía's 900,00 and ten for each of the eleven others.
    ASSERT_EQ(cases.size(), 11);
    EXPECT_EQ(again.lblTotal.Caption(), "Total Acumulado de los donativos: 1.010,00");
}
