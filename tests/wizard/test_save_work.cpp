#include "DonorStepFixture.h"

#include "FailingConnection.h"
#include "wizard/DonorWorkSaver.h"

// Saving the donor step's work: the statements sent to the school database
// and what they leave in its four saved-work tables.
class SaveWork : public DonorStepFixture
{
protected:
    void SetUp() override
    {
        DonorStepFixture::SetUp();
        if (IsSkipped())
            return;
        // A second student of the first year, enrolled without a paying
        // member: its row key has an empty family part.
        YearDescription &year = description.years[0];
        year.students.append({202, QStringLiteral("Ruiz"), QString(), QStringLiteral("Pablo"), 2});
        year.enrolments.append({202, 1, 0, 50.0, Months({10, 11})});
        Install();
    }

    // The donor step of 2023-2024 with Comedor and Transporte; the
    // activities' settings and the communities set to known values.
    frmActividadAlumno &Prepare()
    {
        frmActividadAlumno &form = WalkToDonorStep(QStringLiteral("2023-2024"),
                                                   {QStringLiteral("Comedor"), QStringLiteral("Transporte")});
        auto curso = form.Cursos().colCursosEscolares.Item(QStringLiteral("3"));
        auto comedor = curso->colActividades.Item(QStringLiteral("1"));
        comedor->Deduccion = 12.5;
        comedor->TipoDonativo = QStringLiteral("D'1");
        comedor->TipoDonativoDeduccion = QStringLiteral("D'1 - 12,5%");
        comedor->MesesPago = QStringLiteral("111111000111");
        auto transporte = curso->colActividades.Item(QStringLiteral("2"));
        transporte->Deduccion = 80;
        transporte->TipoDonativo = QStringLiteral("01");
        transporte->TipoDonativoDeduccion = QStringLiteral("01 - 80%");
        transporte->MesesPago = QStringLiteral("000000001111");
        ColComAut &comunidades = form.Cursos().colComAut;
        comunidades.Clear();
        comunidades.Add(Community(1, 4, 12.5f, 0), QStringLiteral("1"));
        comunidades.Add(Community(2, 5, 10.0f, 3), QStringLiteral("2"));
        comunidades.Add(Community(13, 7, 0.1f, 1), QStringLiteral("13"));
        ui.ClearLog();
        TakeStatements();
        return form;
    }

    static std::shared_ptr<cComAut> Community(qint16 id, qint16 deduccion, float valor, quint8 estado)
    {
        auto comunidad = std::make_shared<cComAut>();
        comunidad->IDComAut = id;
        comunidad->IDDeduccion = deduccion;
        comunidad->Valor = valor;
        comunidad->Estado = estado;
        return comunidad;
    }

    frmActividadPonderacion &DeductionStep()
    {
        auto *form = dynamic_cast<frmActividadPonderacion *>(ui.Stack().Forms().at(3));
        if (!form)
            throw std::runtime_error("the deduction step is not the fourth window");
        return *form;
    }

    void ExpectSavedMessage()
    {
        ASSERT_EQ(ui.Messages().size(), 1) << ui.MessageTexts().join('\n').toStdString();
        EXPECT_EQ(ui.Messages()[0].text, "Datos guardados con éxito");
        EXPECT_EQ(ui.Messages()[0].icon, vbInformation);
        EXPECT_EQ(ui.Messages()[0].buttons, vbOKOnly);
    }

    void ExpectFailureMessage(const QString &cause)
    {
        ASSERT_EQ(ui.Messages().size(), 1) << ui.MessageTexts().join('\n').toStdString();
        const QString text = ui.Messages()[0].text;
        EXPECT_TRUE(text.startsWith("No se han podido guardar los datos. ")) << text.toStdString();
        EXPECT_TRUE(text.contains(cause)) << text.toStdString();
        EXPECT_TRUE(text.contains("Los datos guardados anteriormente se conservan sin cambios.")) << text.toStdString();
        EXPECT_TRUE(text.contains("vuelva a pulsar «Guardar»")) << text.toStdString();
        EXPECT_EQ(ui.Messages()[0].icon, vbCritical);
    }

    QString conBD() const { return paths.Year(3)->connectionString; }
};

TEST_F(SaveWork, ASmallSchoolIsSavedWithTheseStatementsInOrder)
{
    frmActividadAlumno &form = Prepare();
    ASSERT_EQ(form.msgMod182.Rows(), 3);
    EXPECT_TRUE(form.cmdGuardar.Enabled());
    form.cmdGuardar.Press();

    const QString year = QStringLiteral("3,'2023-2024','") + conBD() + QStringLiteral("',");
    const QStringList expected = {
        "DELETE FROM ComDed",
        "DELETE FROM CursoEscAct",
        "DELETE FROM DatosModelo182",
        "DELETE FROM ALMFModelo182",
        "INSERT INTO ComDed VALUES (1,4,12.5)",
        "INSERT INTO ComDed VALUES (13,7,0.1)",
        "INSERT INTO CursoEscAct VALUES (" + year + "1,'Comedor',12.5,'D''1','D''1 - 12,5%','111111000111',0)",
        "INSERT INTO CursoEscAct VALUES (" + year + "2,'Transporte',80,'01','01 - 80%','000000001111',0)",
        "INSERT INTO ALMFModelo182 VALUES (201,101,'Juan','GARCÍA','PÉREZ','12345678Z',-1)",
        "INSERT INTO DatosModelo182 VALUES (201,101,3,1,900.00)",
        "INSERT INTO DatosModelo182 VALUES (201,101,3,2,160.00)",
        "INSERT INTO ALMFModelo182 VALUES (202,0,'-','-','-','',-1)",
        "INSERT INTO DatosModelo182 VALUES (202,0,3,1,100.00)",
    };
    EXPECT_EQ(TakeStatements(), expected);
    ExpectSavedMessage();

    EXPECT_EQ(TableRows("ComDed"),
              (QStringList{"qlonglong:1|qlonglong:4|double:12.5", "qlonglong:13|qlonglong:7|double:0.1"}));
    EXPECT_EQ(TableRows("ALMFModelo182"),
              (QStringList{"qlonglong:201|qlonglong:101|QString:Juan|QString:GARCÍA|QString:PÉREZ|QString:12345678Z|"
                           "qlonglong:-1",
                           "qlonglong:202|qlonglong:0|QString:-|QString:-|QString:-|QString:|qlonglong:-1"}));
    EXPECT_EQ(TableRows("DatosModelo182"), (QStringList{"qlonglong:201|qlonglong:101|qlonglong:3|qlonglong:1|double:900",
                                                        "qlonglong:201|qlonglong:101|qlonglong:3|qlonglong:2|double:160",
                                                        "qlonglong:202|qlonglong:0|qlonglong:3|qlonglong:1|double:100"}));
    const QStringList activities = TableRows("CursoEscAct");
    ASSERT_EQ(activities.size(), 2);
    EXPECT_EQ(activities[0], "qlonglong:3|QString:2023-2024|QString:" + conBD()
                                 + "|qlonglong:1|QString:Comedor|double:12.5|QString:D'1|QString:D'1 - "
                                   "12,5%|QString:111111000111|qlonglong:0");
}

TEST_F(SaveWork, RegionalDeductionsTickedAreStoredOnEveryActivity)
{
    frmActividadAlumno &form = Prepare();
    DeductionStep().chkComunidad.SetValue(1);
    form.Cursos().colComAut.Clear();
    TakeStatements();
    ui.ClearLog();
    form.cmdGuardar.Press();
    const QStringList rows = TakeStatements("INSERT INTO CursoEscAct");
    ASSERT_EQ(rows.size(), 2);
    for (const QString &sql : rows)
        EXPECT_TRUE(sql.endsWith("',-1)")) << sql.toStdString();
    EXPECT_TRUE(TableRows("ComDed").isEmpty());
    ExpectSavedMessage();
}

TEST_F(SaveWork, SavingTwiceLeavesOneSnapshot)
{
    frmActividadAlumno &form = Prepare();
    form.cmdGuardar.Press();
    const auto once = SavedTables();
    ASSERT_EQ(once["DatosModelo182"].size(), 3);
    form.cmdGuardar.Press();
    EXPECT_EQ(SavedTables(), once);
    EXPECT_EQ(ui.MessageTexts(), (QStringList{"Datos guardados con éxito", "Datos guardados con éxito"}));
}

TEST_F(SaveWork, PayerNamesAreSplitIntoGivenNameAndSurnames)
{
    struct Case
    {
        QString cell;
        QString nombre, apellido1, apellido2; // as stored
    };
    const QString a30 = QString(30, 'A');
    const Case cases[] = {
        {"García Pérez, Juan", "Juan", "GARCÍA", "PÉREZ"},
        {"GARCÍA, ANA", "ANA", "-", "-"},    // one surname: both dropped
        {"GARCIA PEREZ ANA", "-", "-", "-"}, // no ", "
        {"", "-", "-", "-"},
        {", Ana", "Ana", "-", "-"},
        {"García de la Fuente,  Ana ", "Ana", "GARCÍA", "DE LA FUENTE"},
        {"Mª Ruiz, Pepa", "Pepa", "M.", "RUIZ"},
        {a30 + "xyz Pérez, " + QString(29, 'n') + "ñé", QString(29, 'n') + "ñ", a30, "PÉREZ"},
        {"Ruiz Gómez, " + QString(29, 'a') + "😀😀", QString(29, 'a') + "😀", "RUIZ", "GÓMEZ"},
        {"D'Souza O'Neil, Ann'a", "Ann'a", "D'SOUZA", "O'NEIL"},
    };
    frmActividadAlumno &form = Prepare();
    for (const Case &c : cases) {
        SCOPED_TRACE(c.cell.toStdString());
        form.msgMod182.SetTextMatrix(RowOf(form, "201 101"), 2, c.cell);
        form.cmdGuardar.Press();
        const QStringList sql = TakeStatements("INSERT INTO ALMFModelo182 VALUES (201,");
        ASSERT_EQ(sql.size(), 1);
        EXPECT_EQ(sql[0], "INSERT INTO ALMFModelo182 VALUES (201,101,'" + QString(c.nombre).replace("'", "''") + "','"
                              + QString(c.apellido1).replace("'", "''") + "','" + QString(c.apellido2).replace("'", "''")
                              + "','12345678Z',-1)");
        EXPECT_EQ(TableRows("ALMFModelo182").value(0), "qlonglong:201|qlonglong:101|QString:" + c.nombre
                                                           + "|QString:" + c.apellido1 + "|QString:" + c.apellido2
                                                           + "|QString:12345678Z|qlonglong:-1");
    }
}

TEST_F(SaveWork, AnEmptyAmountCellWritesNoRowAndAZeroWritesOne)
{
    frmActividadAlumno &form = Prepare();
    const int juan = RowOf(form, "201 101");
    const int pablo = RowOf(form, "202 ");
    ASSERT_EQ(form.msgMod182.TextMatrix(pablo, 6), ""); // Pablo has no Transporte
    EditCell(form, juan, 5, "");                        // emptied by the person
    EditCell(form, pablo, 6, "0");                      // typed as zero
    ASSERT_EQ(form.msgMod182.TextMatrix(pablo, 6), "0,00");
    ui.ClearLog();
    form.cmdGuardar.Press();
    EXPECT_EQ(TakeStatements("INSERT INTO DatosModelo182"),
              (QStringList{"INSERT INTO DatosModelo182 VALUES (201,101,3,2,160.00)",
                           "INSERT INTO DatosModelo182 VALUES (202,0,3,1,100.00)",
                           "INSERT INTO DatosModelo182 VALUES (202,0,3,2,0.00)"}));
    EXPECT_EQ(TableRows("DatosModelo182").size(), 3);
    ExpectSavedMessage();
}

TEST_F(SaveWork, ADeletedCommunityWritesNoRow)
{
    frmActividadAlumno &form = Prepare();
    for (const auto &comunidad : form.Cursos().colComAut.Items())
        comunidad->Estado = 3;
    form.cmdGuardar.Press();
    EXPECT_TRUE(TakeStatements("INSERT INTO ComDed").isEmpty());
    EXPECT_TRUE(TableRows("ComDed").isEmpty());
    ExpectSavedMessage();
}

TEST_F(SaveWork, DecimalsAreStoredWithAPointInASpanishLocale)
{
    ASSERT_EQ(run().Locale().decimalPoint(), ",");
    frmActividadAlumno &form = Prepare();
    EditCell(form, RowOf(form, "201 101"), 5, "12,5");
    ASSERT_EQ(form.msgMod182.TextMatrix(RowOf(form, "201 101"), 5), "12,50");
    form.cmdGuardar.Press();
    const QStringList activities = TakeStatements("INSERT INTO CursoEscAct");
    ASSERT_EQ(activities.size(), 2);
    EXPECT_TRUE(activities[0].contains(",'Comedor',12.5,'")) << activities[0].toStdString();
    EXPECT_TRUE(TableRows("CursoEscAct").value(0).contains("|double:12.5|"));
    EXPECT_TRUE(TableRows("DatosModelo182").contains("qlonglong:201|qlonglong:101|qlonglong:3|qlonglong:1|double:12.5"));
}

TEST_F(SaveWork, AnAmountThatIsNotANumberIsRefusedBeforeAnythingIsSent)
{
    frmActividadAlumno &form = Prepare();
    form.cmdGuardar.Press();
    const auto saved = SavedTables();
    ui.ClearLog();
    TakeStatements();
    form.msgMod182.SetTextMatrix(RowOf(form, "201 101"), 6, "doce");
    form.cmdGuardar.Press();
    ExpectOnlyMessage("El importe «doce» de García Pérez, Juan (alumno García López, Lucía, columna «2023-2024 <-> "
                      "Transporte») no es un número. Escriba una cantidad en euros, por ejemplo 12,50, o deje la celda "
                      "vacía, y vuelva a pulsar «Guardar».");
    EXPECT_TRUE(TakeStatements().isEmpty());
    EXPECT_EQ(SavedTables(), saved);
}

// The save replaces the snapshot in one transaction: whichever statement
// fails, the previous snapshot stays exactly as it was and the person is told.
class AtomicSave : public SaveWork
{
protected:
    // Saves once, then edits the grid so that the next save would change
    // every table.
    frmActividadAlumno &SavedThenEdited()
    {
        frmActividadAlumno &form = Prepare();
        form.cmdGuardar.Press();
        statementsOfASave = TakeStatements().size();
        previous = SavedTables();
        EditCell(form, RowOf(form, "201 101"), 5, "1,5");
        EditCell(form, RowOf(form, "201 101"), 2, "Otro Nombre, Ana");
        ToggleMark(form, RowOf(form, "202 "));
        form.Cursos().colComAut.Item("13")->Valor = 3;
        form.Cursos().colCursosEscolares.Item("3")->colActividades.Item("2")->Deduccion = 25;
        ui.ClearLog();
        return form;
    }

    void ObserveAll()
    {
        run().SetStatementObserver([this](const Connection &, const QString &sql) { statements << sql; });
    }

    qsizetype statementsOfASave = 0;
    QMap<QString, QStringList> previous;
};

TEST_F(AtomicSave, AFailureAtAnyStatementKeepsThePreviousSnapshot)
{
    frmActividadAlumno &form = SavedThenEdited();
    ASSERT_EQ(statementsOfASave, 13);
    for (int k = 1; k <= statementsOfASave; ++k) {
        SCOPED_TRACE(k);
        FailingConnection failing(k);
        run().SetStatementObserver(failing.Observer());
        ui.ClearLog();
        form.cmdGuardar.Press();
        ObserveAll();
        EXPECT_FALSE(failing.Failed().isEmpty());
        EXPECT_EQ(SavedTables(), previous);
        ExpectFailureMessage(FailingConnection::kMessage);
        EXPECT_TRUE(ui.Stack().Top() == &form);
    }
    // The window stays usable: the next save goes through whole.
    ObserveAll();
    ui.ClearLog();
    form.cmdGuardar.Press();
    ExpectSavedMessage();
    const auto now = SavedTables();
    EXPECT_NE(now, previous);
    EXPECT_TRUE(now["DatosModelo182"].contains("qlonglong:201|qlonglong:101|qlonglong:3|qlonglong:1|double:1.5"));
    EXPECT_TRUE(
        now["ALMFModelo182"].contains("qlonglong:202|qlonglong:0|QString:-|QString:-|QString:-|QString:|qlonglong:0"));
}

TEST_F(AtomicSave, AConnectionClosedInTheMiddleLosesNothing)
{
    frmActividadAlumno &form = SavedThenEdited();
    Connection &centro = run().ConexionCentro();
    for (int k : {1, 4, 5, 9, int(statementsOfASave)}) {
        SCOPED_TRACE(k);
        int seen = 0;
        // The connection goes away with the transaction open, as when the
        // program is ended halfway through the save.
        run().SetStatementObserver([&](const Connection &, const QString &) {
            if (++seen == k)
                centro.Close();
        });
        ui.ClearLog();
        form.cmdGuardar.Press();
        ObserveAll();
        EXPECT_EQ(centro.State(), Connection::adStateClosed);
        EXPECT_EQ(SavedTables(), previous);
        ExpectFailureMessage("La conexión está cerrada.");
        centro.Open();
    }
    ui.ClearLog();
    form.cmdGuardar.Press();
    ExpectSavedMessage();
}

TEST_F(SaveWork, AGridWithoutDonorsStillSavesTheChoices)
{
    frmActividadAlumno &form = Prepare();
    form.msgMod182.SetRows(1);
    form.cmdGuardar.Press();
    const QStringList sql = TakeStatements();
    ASSERT_EQ(sql.size(), 8);
    EXPECT_EQ(sql[5], "INSERT INTO ComDed VALUES (13,7,0.1)");
    EXPECT_TRUE(sql[7].startsWith("INSERT INTO CursoEscAct VALUES (3,'2023-2024','")) << sql[7].toStdString();
    EXPECT_TRUE(TableRows("ALMFModelo182").isEmpty());
    EXPECT_TRUE(TableRows("DatosModelo182").isEmpty());
    ExpectSavedMessage();
}

TEST_F(SaveWork, AnAmountInAColumnNoChosenActivityOwnsIsRefused)
{
    frmActividadAlumno &form = Prepare();
    // The activity renamed after the grid was built: its column's header
    // names nothing chosen any more.
    form.Cursos().colCursosEscolares.Item("3")->colActividades.Item("2")->Nombre = "Autobús";
    form.cmdGuardar.Press();
    ExpectOnlyMessage("La columna del importe de García Pérez, Juan (alumno García López, Lucía, columna «2023-2024 <-> "
                      "Transporte») no corresponde a ninguna actividad elegida. Vuelva al paso anterior, revise las "
                      "actividades y vuelva a pulsar «Guardar».");
    EXPECT_TRUE(TakeStatements().isEmpty());
    EXPECT_TRUE(TableRows("CursoEscAct").isEmpty());
}
