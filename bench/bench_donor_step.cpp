// Times what a school office waits for in the donor step, on a generated
// large school, against a floor: the same reads done with the plainest code
// straight on SQLite's own interface.
//
//   bench_donor_step [--students N] [--years Y] [--activities A] [--repeat R]

#include "BenchHarness.h"

#include "controls/StackedUi.h"
#include "data/Demo.h"
#include "data/DonorQuery.h"
#include "data/SpanishCollation.h"
#include "session/SessionSettings.h"
#include "session/WizardRun.h"
#include "wizard/DonorGridBuilder.h"
#include "wizard/cAsignarDatos.h"
#include "wizard/frmActividadAlumno.h"
#include "wizard/frmActividadMes.h"
#include "wizard/frmActividadPonderacion.h"
#include "wizard/frmSelActividad.h"
#include "wizard/frmSelCursos.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <sqlite3.h>
#include <unordered_map>

namespace {

// A Ui that shows nothing and answers every question with Yes.
class SilentUi : public StackedUi
{
public:
    int MsgBox(const QString &text, int) override
    {
        messages << text;
        return vbYes;
    }
    void Beep() override {}
    void RunUntilClosed() override {}
    void SetMousePointer(int) override {}
    void DoEvents() override {}
    void ShellOpen(const QString &) override {}
    QStringList messages;
};

template <typename T> T &Top(SilentUi &ui)
{
    auto *form = dynamic_cast<T *>(ui.Stack().Top());
    if (!form) {
        std::fprintf(stderr, "El asistente se ha detenido: %s\n", qPrintable(ui.messages.join(QLatin1Char('\n'))));
        std::exit(1);
    }
    return *form;
}

// The same reads as the grid's build: every activity's donor query, one
// row per key; with saved work, the saved payer and amount of every cell.
void Floor(const InstallationPaths &paths, const InstallationDescription &school, bool loaded)
{
    sqlite3 *centro = nullptr;
    sqlite3_open_v2(qPrintable(paths.root + "/datos/centro.db"), &centro, SQLITE_OPEN_READONLY, nullptr);
    RegisterSpanishCollation(centro);
    sqlite3_stmt *payer = nullptr, *amount = nullptr;
    sqlite3_prepare_v2(centro, "SELECT Nombre, AP1, AP2, NIF, Mostrar FROM ALMFModelo182 WHERE IDAL=? AND IDMF=?", -1,
                       &payer, nullptr);
    sqlite3_prepare_v2(centro, "SELECT Pago FROM DatosModelo182 WHERE IDCC=? AND IDAct=? AND IDAL=? AND IDMF=?", -1, &amount,
                       nullptr);
    std::unordered_map<std::string, std::vector<double>> rows;
    for (const YearDescription &year : school.years) {
        sqlite3 *db = nullptr;
        sqlite3_open_v2(qPrintable(paths.root + "/datos/" + year.fileName), &db, SQLITE_OPEN_READONLY, nullptr);
        RegisterSpanishCollation(db);
        for (const ActivityDescription &activity : year.activities) {
            sqlite3_stmt *query = nullptr;
            sqlite3_prepare_v2(db, DonorQuery(activity.id).toUtf8().constData(), -1, &query, nullptr);
            const int columns = sqlite3_column_count(query);
            while (sqlite3_step(query) == SQLITE_ROW) {
                std::string key = std::to_string(sqlite3_column_int64(query, columns - 2)) + " "
                                  + std::to_string(sqlite3_column_int64(query, columns - 1));
                for (int c = 0; c < columns; ++c)
                    sqlite3_column_text(query, c);
                auto &cells = rows[key];
                cells.push_back(sqlite3_column_double(query, 3));
                if (loaded) {
                    for (sqlite3_stmt *lookup : {payer, amount}) {
                        sqlite3_reset(lookup);
                        int i = 1;
                        if (lookup == amount) {
                            sqlite3_bind_int(lookup, i++, year.id);
                            sqlite3_bind_int(lookup, i++, activity.id);
                        }
                        sqlite3_bind_int64(lookup, i++, sqlite3_column_int64(query, columns - 2));
                        sqlite3_bind_int64(lookup, i, sqlite3_column_int64(query, columns - 1));
                        while (sqlite3_step(lookup) == SQLITE_ROW)
                            sqlite3_column_text(lookup, 0);
                    }
                }
            }
            sqlite3_finalize(query);
        }
        sqlite3_close(db);
    }
    sqlite3_finalize(payer);
    sqlite3_finalize(amount);
    sqlite3_close(centro);
}

void PrintRow(const char *operation, const Timings &timing, const Timings &floor, long statements)
{
    const double ratio = floor.cpu.medianMs > 0 ? timing.cpu.medianMs / floor.cpu.medianMs : 0;
    std::printf("%-30s %9.1f %9.1f-%-9.1f %9.1f %9.1f %7.2f %11ld\n", operation, timing.wall.medianMs, timing.wall.minMs,
                timing.wall.maxMs, timing.cpu.medianMs, floor.cpu.medianMs, ratio, statements);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    SchoolSize size;
    int repeat = 5;
    const QStringList args = app.arguments();
    for (int i = 1; i + 1 < args.size(); i += 2) {
        const int value = args.at(i + 1).toInt();
        if (args.at(i) == QLatin1String("--students"))
            size.students = value;
        else if (args.at(i) == QLatin1String("--years"))
            size.years = value;
        else if (args.at(i) == QLatin1String("--activities"))
            size.activities = value;
        else if (args.at(i) == QLatin1String("--repeat"))
            repeat = value;
    }
    QTemporaryDir dir;
    const InstallationDescription school = GeneratedSchool(size);
    const InstallationPaths paths = BuildInstallation(dir.path(), school);

    SilentUi ui;
    cAsignarDatos addin(ui);
    addin.ObtenerDatos(SessionSettings::Load(paths.iniFile).BuildSession());
    WizardRun &run = *addin.Run();
    long statements = 0;
    run.SetStatementObserver([&statements](const Connection &, const QString &) { ++statements; });

    addin.ActivarFormulario();
    frmSelCursos &cursos = Top<frmSelCursos>(ui);
    cursos.cboCentro.SetListIndex(0);
    cursos.cmdAgregarTodos.Press();
    cursos.cmdAceptar.Press();
    frmSelActividad &actividades = Top<frmSelActividad>(ui);
    for (int i = 0; i < actividades.cboCursoEscolar.ListCount(); ++i) {
        actividades.cboCursoEscolar.SetListIndex(i);
        actividades.cmdAgregarTodos.Press();
    }
    actividades.cmdAceptar.Press();
    frmActividadMes &meses = Top<frmActividadMes>(ui);
    for (int i = 0; i < meses.cboActCurEsc.ListCount(); ++i) {
        meses.cboActCurEsc.SetListIndex(i);
        meses.cmdAgregarTodos.Press();
    }
    meses.cmdAceptar.Press();
    frmActividadPonderacion &deducciones = Top<frmActividadPonderacion>(ui);
    while (deducciones.lstActividad.ListCount() > 0) {
        deducciones.lstActividad.SetListIndex(0);
        deducciones.cboTipoPorcentaje.SetListIndex(0);
        deducciones.cmdAnadir.Press();
    }
    deducciones.cmdSiguiente.Press();
    frmActividadAlumno &alumnos = Top<frmActividadAlumno>(ui);

    std::printf("School: %d students, %d years x %d activities; grid %d rows x %d columns\n\n", size.students, size.years,
                size.activities, alumnos.msgMod182.Rows() - 1, alumnos.msgMod182.Cols());
    std::printf("%-30s %9s %19s %9s %9s %7s %11s\n", "operation", "wall ms", "wall min-max", "cpu ms", "floor cpu", "ratio",
                "statements");
    for (const bool loaded : {false, true}) {
        cursos.blnCargarDatos = loaded;
        statements = 0;
        const Timings build = Repeat(repeat, [&] { DonorGridBuilder(alumnos).Build(); });
        const long perBuild = statements / repeat;
        const Timings floor = Repeat(repeat, [&] { Floor(paths, school, loaded); });
        PrintRow(loaded ? "build the grid (saved work)" : "build the grid (host data)", build, floor, perBuild);
    }
    std::printf("\npeak memory: %ld MB\n", PeakResidentKib() / 1024);
    return 0;
}
