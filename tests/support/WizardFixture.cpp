#include "WizardFixture.h"

#include "addin/ExternalComponents.h"
#include "data/Connection.h"
#include "session/SessionSettings.h"
#include "wizard/cAsignarDatos.h"
#include "wizard/frmSelCursos.h"

#include "Providers.h"

InstallationDescription SmallSchool()
{
    InstallationDescription d;
    d.school.id = 7;
    d.school.name = QStringLiteral("Colegio San Prueba");
    d.school.director = QStringLiteral("Ana María López");
    d.school.cif = QStringLiteral("R2800000A");
    d.school.phone = QStringLiteral("915550000");
    SchoolDescription other;
    other.id = 8;
    other.name = QStringLiteral("Otro Colegio");
    d.otherSchools.append(other);

    YearDescription y1;
    y1.id = 3;
    y1.name = QStringLiteral("2023-2024");
    y1.activities = {{1, QStringLiteral("Comedor"), 90.0},
                     {2, QStringLiteral("Transporte"), 40.0},
                     {3, QStringLiteral("Inglés"), 30.0}};
    y1.members = {{101, QStringLiteral("García"), QStringLiteral("Pérez"), QStringLiteral("Juan"), 1,
                   QStringLiteral("12345678Z"),
                   AddressDescription{QStringLiteral("Calle Mayor 1"), QStringLiteral("Madrid"), QStringLiteral("28001"),
                                      QStringLiteral("Madrid")}}};
    y1.students = {{201, QStringLiteral("García"), QStringLiteral("López"), QStringLiteral("Lucía"), 1}};
    y1.enrolments = {{201, 1, 101, 90.0, SchoolMonths()},
                     {201, 2, 101, 40.0, Months({9, 10, 11, 12})},
                     {201, 3, 101, 30.0, Months({1, 2, 3})}};

    YearDescription y2 = y1;
    y2.id = 4;
    y2.name = QStringLiteral("2024-2025");
    y2.activities = {{1, QStringLiteral("Comedor"), 95.0},
                     {5, QStringLiteral("Ajedrez"), 20.0},
                     {6, QStringLiteral("Robótica"), 35.0},
                     {7, QStringLiteral("Natación"), 25.0}};
    y2.enrolments = {{201, 1, 101, 95.0, SchoolMonths()},
                     {201, 5, 101, 20.0, Months({10, 11})},
                     {201, 6, 101, 35.0, Months({})}};

    d.years = {y1, y2};
    return d;
}

void WizardFixture::SetUp()
{
    ASSERT_TRUE(dir.isValid());
    if (const QString why = ProviderUnavailable(); !why.isEmpty())
        GTEST_SKIP() << why.toStdString();
}

void WizardFixture::TearDown()
{
    // Close whatever the test left open, top first, without the close-all flag.
    while (Form *top = ui.Stack().Top()) {
        const int before = ui.Stack().Count();
        ui.Unload(*top);
        if (ui.Stack().Count() == before)
            break;
    }
}

void WizardFixture::Install()
{
    paths = BuildInstallation(dir.path(), OnRequestedProvider(description));
    const SessionSettings settings = SessionSettings::Load(paths.iniFile);
    addin = std::make_unique<cAsignarDatos>(ui, ExternalComponents::Install);
    addin->ObtenerDatos(settings.BuildSession());
    run().SetAddinFolder(paths.addinFolder);
    run().SetStatementObserver([this](const Connection &, const QString &sql) { statements << sql; });
    statements.clear();
}

frmSelCursos &WizardFixture::OpenWizard()
{
    if (!addin)
        Install();
    addin->ActivarFormulario(0);
    return Top<frmSelCursos>();
}

frmSelCursos &WizardFixture::SelectYears(const QStringList &years)
{
    frmSelCursos &form = OpenWizard();
    form.cboCentro.SetListIndex(0);
    for (const QString &year : years) {
        Pick(form.lstDisponibles, year);
        form.cmdAgregarUno.Press();
    }
    return form;
}

void WizardFixture::ExpectOnlyMessage(const QString &text, int icon)
{
    ASSERT_EQ(ui.Messages().size(), 1) << ui.MessageTexts().join(QLatin1Char('|')).toStdString();
    EXPECT_EQ(ui.Messages()[0].text, text);
    EXPECT_EQ(ui.Messages()[0].icon, icon);
    EXPECT_TRUE(ui.Messages()[0].beeped);
}

QStringList WizardFixture::TakeStatements(const QString &filter)
{
    QStringList taken;
    for (const QString &sql : statements)
        if (filter.isEmpty() || sql.contains(filter))
            taken << sql;
    statements.clear();
    return taken;
}

void Pick(ListControl &list, const QString &text)
{
    const int index = list.Texts().indexOf(text);
    if (index < 0)
        throw std::runtime_error(
            ("no entry «" + text + "» in " + list.Name() + ": " + list.Texts().join(" | ")).toStdString());
    list.SetListIndex(index);
}
