#include "DonorStepFixture.h"

#include "FailingConnection.h"

// "Cargar Datos" of the first window: the saved years, activities and
// community deductions replace the wizard's choices.
class LoadSavedWork : public DonorStepFixture
{
protected:
    static inline const QString kQuestion = QStringLiteral(
        "¿Desea cargar los datos guardados anteriormente? Todos los cambios realizados desde la última grabación se "
        "descartarán");

    static SavedActivity Activity(int year, const QString &yearName, int id, const QString &name, double deduc)
    {
        return {year,           yearName, "conexión'" + QString::number(year), id,
                name,           deduc,    "0" + QString::number(id),           "0" + QString::number(id) + " - tipo",
                "000000001111", true};
    }

    // The first window with 2024-2025 chosen and gone forward once, and a
    // community chosen: the state a load must replace or keep.
    frmSelCursos &WithChoicesMade()
    {
        SelectYears({"2024-2025"}).cmdAceptar.Press();
        frmSelCursos &form = BackToFirstWindow();
        auto comunidad = std::make_shared<cComAut>();
        comunidad->IDComAut = 99;
        form.colComAut.Add(comunidad, "99");
        ui.ClearLog();
        TakeStatements();
        pointersBefore = ui.Pointers().size();
        return form;
    }

    // The pointer changes since the choices were made.
    QList<int> NewPointers() const { return ui.Pointers().mid(pointersBefore); }
    qsizetype pointersBefore = 0;

    struct Choices
    {
        QStringList available, selected, years, communities;
        bool cargar = false, cargarComAut = false;
        bool operator==(const Choices &) const = default;
    };
    static Choices ChoicesOf(const frmSelCursos &form)
    {
        return {form.lstDisponibles.Texts(), form.lstSeleccionados.Texts(), form.colCursosEscolares.Keys(),
                form.colComAut.Keys(),       form.blnCargarDatos,           form.blnCargarDatosComAut};
    }

    void ExpectQuestionFirst()
    {
        ASSERT_FALSE(ui.Messages().isEmpty());
        EXPECT_EQ(ui.Messages()[0].text, kQuestion);
        EXPECT_EQ(ui.Messages()[0].icon, vbQuestion);
        EXPECT_EQ(ui.Messages()[0].buttons, vbYesNo);
    }
};

TEST_F(LoadSavedWork, AnsweringNoChangesNothing)
{
    description.savedWork.activities = {Activity(3, "2023-2024", 2, "Transporte", 80)};
    frmSelCursos &form = WithChoicesMade();
    EXPECT_TRUE(form.cmdCargar.Enabled());
    const Choices before = ChoicesOf(form);
    ui.Answer(vbNo);
    form.cmdCargar.Press();
    EXPECT_TRUE(ChoicesOf(form) == before);
    EXPECT_EQ(ui.Messages().size(), 1);
    ExpectQuestionFirst();
    EXPECT_TRUE(TakeStatements().isEmpty());
    EXPECT_TRUE(NewPointers().isEmpty());
}

TEST_F(LoadSavedWork, EmptySavedTablesLeaveEmptyChoicesAndEveryYearAvailable)
{
    frmSelCursos &form = OpenWizard();
    ASSERT_EQ(form.cboCentro.ListIndex(), -1);
    form.colComAut.Add(std::make_shared<cComAut>(), "5");
    form.cmdCargar.Press();
    EXPECT_EQ(form.cboCentro.ListIndex(), 0); // the school is chosen for the person
    EXPECT_EQ(form.lstDisponibles.Texts(), (QStringList{"2023-2024", "2024-2025"}));
    EXPECT_TRUE(form.lstSeleccionados.Texts().isEmpty());
    EXPECT_TRUE(form.colCursosEscolares.IsEmpty());
    EXPECT_TRUE(form.colComAut.IsEmpty());
    EXPECT_TRUE(form.blnCargarDatos);
    EXPECT_TRUE(form.blnCargarDatosComAut);
    EXPECT_EQ(ui.Messages().size(), 1);
    ExpectQuestionFirst();
    EXPECT_EQ(ui.Pointers(), (QList<int>{vbHourglass, vbDefault}));
    QStringList saved;
    for (const QString &sql : TakeStatements())
        if (sql.contains("ComDed") || sql.contains("CursoEscAct"))
            saved << sql;
    EXPECT_EQ(saved,
              (QStringList{"SELECT * FROM ComDed", "SELECT * FROM CursoEscAct ORDER BY IDCursoEscolar, IDActividad"}));
}

TEST_F(LoadSavedWork, TwoSavedYearsEndUpSelectedInAscendingOrderWithTheirActivities)
{
    description.savedWork.activities = {Activity(4, "2024-2025", 5, "Ajedrez", 12.5),
                                        Activity(3, "2023-2024", 2, "Transporte", 80),
                                        Activity(4, "2024-2025", 1, "Comedor", 25)};
    description.savedWork.communities = {{13, 7, 0.1}, {1, 4, 12.5}};
    frmSelCursos &form = WithChoicesMade();
    form.cmdCargar.Press();

    EXPECT_EQ(form.lstSeleccionados.Texts(), (QStringList{"2023-2024", "2024-2025"}));
    EXPECT_EQ(form.lstSeleccionados.ItemData(0), 3);
    EXPECT_EQ(form.lstSeleccionados.ItemData(1), 4);
    EXPECT_TRUE(form.lstDisponibles.Texts().isEmpty());
    EXPECT_EQ(form.colCursosEscolares.Keys(), (QStringList{"3", "4"}));
    auto year4 = form.colCursosEscolares.Item("4");
    EXPECT_EQ(year4->Nombre, "2024-2025");
    EXPECT_EQ(year4->conBD, "conexión'4");
    EXPECT_EQ(year4->colActividades.Keys(), (QStringList{"1", "5"}));
    EXPECT_EQ(form.colCursosEscolares.Item("3")->colActividades.Keys(), QStringList{"2"});
    auto ajedrez = year4->colActividades.Item("5");
    EXPECT_EQ(ajedrez->Nombre, "Ajedrez");
    EXPECT_EQ(ajedrez->Deduccion, 12.5);
    EXPECT_EQ(ajedrez->TipoDonativo, "05");
    EXPECT_EQ(ajedrez->TipoDonativoDeduccion, "05 - tipo");
    EXPECT_EQ(ajedrez->MesesPago, "000000001111");

    EXPECT_EQ(form.colComAut.Keys(), (QStringList{"13", "1"}));
    auto comunidad = form.colComAut.Item("13");
    EXPECT_EQ(comunidad->IDComAut, 13);
    EXPECT_EQ(comunidad->IDDeduccion, 7);
    EXPECT_EQ(comunidad->Valor, 0.1f);
    EXPECT_EQ(comunidad->Estado, 0);
    EXPECT_EQ(form.colComAut.Item("1")->Valor, 12.5f);
    EXPECT_TRUE(form.blnCargarDatos);
    EXPECT_TRUE(form.blnCargarDatosComAut);
}

TEST_F(LoadSavedWork, AYearTheSchoolNoLongerListsIsLoadedButShownInNeitherList)
{
    description.savedWork.activities = {Activity(4, "2024-2025", 5, "Ajedrez", 0),
                                        Activity(9, "2019-2020", 1, "Comedor", 0)};
    frmSelCursos &form = OpenWizard();
    form.cmdCargar.Press();
    EXPECT_EQ(form.colCursosEscolares.Keys(), (QStringList{"4", "9"}));
    EXPECT_EQ(form.lstSeleccionados.Texts(), QStringList{"2024-2025"});
    EXPECT_EQ(form.lstDisponibles.Texts(), QStringList{"2023-2024"});
}

class LoadRefused : public LoadSavedWork
{
protected:
    void ExpectRefusedAndUntouched(const QString &message)
    {
        frmSelCursos &form = WithChoicesMade();
        const Choices before = ChoicesOf(form);
        form.cmdCargar.Press();
        EXPECT_TRUE(ChoicesOf(form) == before);
        ASSERT_EQ(ui.Messages().size(), 2) << ui.MessageTexts().join('\n').toStdString();
        ExpectQuestionFirst();
        EXPECT_EQ(ui.Messages()[1].text, message);
        EXPECT_EQ(ui.Messages()[1].icon, vbExclamation);
        EXPECT_TRUE(ui.Messages()[1].beeped);
        EXPECT_EQ(NewPointers(), (QList<int>{vbHourglass, vbDefault}));
        // The window stays usable.
        form.cmdAceptar.Press();
        EXPECT_EQ(ui.OpenWindows().last(), "frmSelActividad");
    }

    static QString Duplicate(const QString &key)
    {
        return "Los datos guardados tienen repetida la clave «" + key
               + "» y no se pueden cargar. Los cursos elegidos no han cambiado; vuelva a elegir los cursos y las "
                 "actividades y guarde de nuevo en el último paso.";
    }
};

TEST_F(LoadRefused, ACommunityStoredTwice)
{
    description.savedWork.activities = {Activity(3, "2023-2024", 2, "Transporte", 80)};
    description.savedWork.communities = {{13, 7, 0.1}, {2, 1, 5}, {13, 8, 0.2}};
    ExpectRefusedAndUntouched(Duplicate("13"));
}

TEST_F(LoadRefused, AnActivityStoredTwiceInOneYear)
{
    description.savedWork.activities = {Activity(3, "2023-2024", 2, "Transporte", 80),
                                        Activity(3, "2023-2024", 2, "Transporte", 50)};
    ExpectRefusedAndUntouched(Duplicate("2"));
}

TEST_F(LoadRefused, ATableThatCannotBeReadIsReported)
{
    description.savedWork.activities = {Activity(3, "2023-2024", 2, "Transporte", 80)};
    frmSelCursos &form = WithChoicesMade();
    const Choices before = ChoicesOf(form);
    FailingConnection failing(2);
    run().SetStatementObserver(failing.Observer());
    form.cmdCargar.Press();
    run().SetStatementObserver({});
    EXPECT_EQ(failing.Failed(), "SELECT * FROM CursoEscAct ORDER BY IDCursoEscolar, IDActividad");
    EXPECT_TRUE(ChoicesOf(form) == before);
    ASSERT_EQ(ui.Messages().size(), 2);
    const QString text = ui.Messages()[1].text;
    EXPECT_TRUE(text.startsWith("No se han podido cargar los datos guardados. " + FailingConnection::kMessage))
        << text.toStdString();
    EXPECT_TRUE(text.endsWith("Los cursos elegidos no han cambiado. Compruebe que la base de datos del centro está "
                              "disponible y vuelva a pulsar «Cargar Datos»."))
        << text.toStdString();
    EXPECT_EQ(ui.Messages()[1].icon, vbCritical);
    EXPECT_EQ(NewPointers(), (QList<int>{vbHourglass, vbDefault}));
}
