// Times what a school office waits for in the donor step, on a generated
// large school, against a floor: the same reads or writes done with the
// plainest code straight on SQLite's own interface (bench/Floors.h). The
// operations: building the grid from the host data and from the saved work,
// saving the work ("Guardar") and generating the declaration ("Generar
// Modelo 182", without the certificates).
//
//   bench_donor_step [--students N] [--years Y] [--activities A] [--repeat R]

#include "BenchHarness.h"
#include "Floors.h"

#include "addin/ExternalComponents.h"
#include "catalogue/CatalogueComponents.h"
#include "controls/StackedUi.h"
#include "data/Demo.h"
#include "data/MailMergeDatabase.h"
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
#include <QDir>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace {

// A Ui that shows nothing. Every message is recorded; a question gets the
// answer the table below gives it, and one the table does not know stops
// the benchmark (an answer picked blindly could time something else).
class SilentUi : public StackedUi
{
public:
    struct Message
    {
        QString text;
        int style = 0;
    };

    int MsgBox(const QString &text, int style) override
    {
        messages.append({text, style});
        const int buttons = style & kButtonsMask;
        if (buttons != vbYesNo && buttons != vbYesNoCancel && buttons != vbOKCancel)
            return vbOK;
        struct Answer
        {
            QString asked; // a part of the question
            int answer;
        };
        static const Answer answers[] = {
            // The office loads what it saved before.
            {QStringLiteral("¿Desea cargar los datos guardados"), vbYes},
            // Printing the certificates is an operation of its own, not part
            // of generating the declaration.
            {QStringLiteral("certificados"), vbNo},
        };
        for (const Answer &known : answers)
            if (text.contains(known.asked, Qt::CaseInsensitive))
                return known.answer;
        std::fprintf(stderr, "The benchmark has no answer for this question:\n%s\n", qPrintable(text));
        std::exit(1);
    }
    void Beep() override {}
    void RunUntilClosed() override {}
    void SetMousePointer(int) override {}
    void DoEvents() override {}
    void ShellOpen(const QString &) override {}

    QString Texts() const
    {
        QStringList texts;
        for (const Message &message : messages)
            texts << message.text;
        return texts.join(QLatin1Char('\n'));
    }

    QList<Message> messages;
};

[[noreturn]] void Stop(const SilentUi &ui, const char *what)
{
    std::fprintf(stderr, "%s. Messages:\n%s\n", what, qPrintable(ui.Texts()));
    std::exit(1);
}

template <typename T> T &Top(SilentUi &ui)
{
    auto *form = dynamic_cast<T *>(ui.Stack().Top());
    if (!form)
        Stop(ui, "El asistente se ha detenido");
    return *form;
}

struct DonorStep
{
    frmSelCursos &cursos;
    frmActividadAlumno &alumnos;
};

// Every school year, activity and month chosen, the first deduction for
// each activity: the donor window with the whole school in its grid.
DonorStep OpenDonorStep(SilentUi &ui, cAsignarDatos &addin)
{
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
    return {cursos, Top<frmActividadAlumno>(ui)};
}

// Presses a button of the donor window and checks that it did its job: a
// run that ended in a refusal or a failure would time something else.
void PressExpecting(SilentUi &ui, CommandButton &button, const QString &lastMessage, int icon)
{
    ui.messages.clear();
    button.Press();
    if (ui.messages.isEmpty() || (ui.messages.last().style & kIconMask) != icon
        || !ui.messages.last().text.startsWith(lastMessage))
        Stop(ui, qPrintable(button.Name() + QStringLiteral(" did not end as expected")));
}

// The program's side of a row: its times and the statements one run sent.
struct Measured
{
    Timings timings;
    long statements = 0;
    long peakMb = 0; // the process's peak memory once the operation has run
};

// Times the operation as the program runs it, with no observer on its
// connections (watching a statement puts its text together), then runs it
// once more counting the statements it sends.
Measured TimeProgram(WizardRun &run, int repeat, const std::function<void()> &operation)
{
    run.SetStatementObserver(nullptr);
    const Timings timings = Repeat(repeat, operation);
    long statements = 0;
    run.SetStatementObserver([&statements](const Connection &, const QString &) { ++statements; });
    operation();
    run.SetStatementObserver(nullptr);
    return {timings, statements, PeakResidentKib() / 1024};
}

void PrintRow(const char *operation, const Measured &program, const Timings &floor)
{
    const Timings &timing = program.timings;
    const double ratio = floor.cpu.medianMs > 0 ? timing.cpu.medianMs / floor.cpu.medianMs : 0;
    std::printf("%-30s %9.1f %9.1f-%-9.1f %9.1f %9.1f %7.2f %11ld %8ld\n", operation, timing.wall.medianMs,
                timing.wall.minMs, timing.wall.maxMs, timing.cpu.medianMs, floor.cpu.medianMs, ratio, program.statements,
                program.peakMb);
}

// The AEAT file the generator wrote into the reports folder.
QString AeatFile(const SilentUi &ui, const QString &informes)
{
    const QFileInfoList files = QDir(informes).entryInfoList({QStringLiteral("Modelo182_*.txt")});
    if (files.size() != 1)
        Stop(ui, "The declaration left no single AEAT file");
    return files.first().absoluteFilePath();
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
    repeat = qMax(repeat, 1);
    QTemporaryDir dir;
    const InstallationDescription school = GeneratedSchool(size);
    const InstallationPaths paths = BuildInstallation(dir.path(), school);

    SilentUi ui;
    // The components the add-in's entry point installs: without the
    // generator, "Generar Modelo 182" would write no AEAT file.
    cAsignarDatos addin(ui, [](WizardRun &run) {
        RegisterCatalogueWindows(run.Componentes());
        ExternalComponents::Install(run);
    });
    addin.ObtenerDatos(SessionSettings::Load(paths.iniFile).BuildSession());
    WizardRun &run = *addin.Run();
    const DonorStep step = OpenDonorStep(ui, addin);
    frmActividadAlumno &alumnos = step.alumnos;

    std::printf("School: %d students, %d years x %d activities; grid %d rows x %d columns\n\n", size.students, size.years,
                size.activities, alumnos.msgMod182.Rows() - 1, alumnos.msgMod182.Cols());
    std::printf("%-30s %9s %19s %9s %9s %7s %11s %8s\n", "operation", "wall ms", "wall min-max", "cpu ms", "floor cpu",
                "ratio", "statements", "peak MB");
    // The saved work's grid stays for the save and the declaration: its
    // marks leave out the donors whose tax identifier is not valid.
    for (const bool loaded : {false, true}) {
        step.cursos.blnCargarDatos = loaded;
        const Measured build = TimeProgram(run, repeat, [&] { DonorGridBuilder(alumnos).Build(); });
        const Timings floor = Repeat(repeat, [&] { ReadGridFloor(paths, school, loaded); });
        PrintRow(loaded ? "build the grid (saved work)" : "build the grid (host data)", build, floor);
    }

    const Measured save = TimeProgram(run, repeat, [&] {
        PressExpecting(ui, alumnos.cmdGuardar, QStringLiteral("Datos guardados con éxito"), vbInformation);
    });
    const SaveFloor saveFloor(paths.centroFile);
    PrintRow("save the work", save, Repeat(repeat, [&] { saveFloor.Run(); }));

    // Each run ends in the generator's summary when the AEAT file is written.
    const Measured generate = TimeProgram(run, repeat, [&] {
        PressExpecting(ui, alumnos.cmdAceptar, QStringLiteral("Modelo 182 del ejercicio"), vbInformation);
    });
    const QString informes = run.Configuracion().datossesion()->Text(QStringLiteral("rutaaplicacion"))
                             + alumnos.strRutaInformes;
    const DeclarationFloor declarationFloor(paths.modelo182File,
                                            informes + QString::fromLatin1(MailMergeDatabase::kFileName),
                                            AeatFile(ui, informes));
    PrintRow("generate the declaration", generate, Repeat(repeat, [&] { declarationFloor.Run(); }));

    std::printf("\nstatements: those sent through the run's connections (the AEAT generator steps its own prepared "
                "statements, not counted)\n");
    std::printf("save floor rows: %s; the same as the program's: %s\n", qPrintable(saveFloor.Rows()),
                saveFloor.Matches() ? "yes" : "NO");
    std::printf("declaration floor rows: %s, and %lld bytes of AEAT file; the same as the program's: %s\n",
                qPrintable(declarationFloor.Rows()), qlonglong(declarationFloor.FileBytes()),
                declarationFloor.Matches() ? "yes" : "NO");
    std::printf("\nThe generator's summary of the last declaration:\n%s\n", qPrintable(alumnos.UltimaGeneracion));
    std::printf("\npeak memory: %ld MB\n", PeakResidentKib() / 1024);
    return 0;
}
