#include "wizard/frmSelActividad.h"

#include "data/DatabaseError.h"
#include "session/WizardRun.h"
#include "wizard/FormSetup.h"
#include "wizard/frmActividadMes.h"
#include "wizard/frmSelCursos.h"

frmSelActividad::frmSelActividad(WizardRun &run, frmSelCursos &cursos)
    : TwoListForm(run.ui(), QStringLiteral("frmSelActividad"), QStringLiteral("Selección de Actividades")), m_run(run),
      m_cursos(cursos)
{
    cboCursoEscolar.Click = [this] { cboCursoEscolar_Click(); };
    cmdAceptar.Click = [this] { cmdAceptar_Click(); };
    cmdCancelar.Click = [this] { cmdCancelar_Click(); };
}

QList<ControlBase *> frmSelActividad::MandatoryControls()
{
    return {&cboCursoEscolar, &lstSeleccionados};
}

void frmSelActividad::Form_Load()
{
    PrepareWizardWindow(*this, m_run);
    cboCursoEscolar.Clear();
    for (const auto &curso : m_cursos.colCursosEscolares.Items()) {
        cboCursoEscolar.AddItem(curso->Nombre);
        cboCursoEscolar.SetItemData(cboCursoEscolar.NewIndex(), curso->idCursoEscolar);
    }
    if (cboCursoEscolar.ListCount() > 0)
        cboCursoEscolar.SetListIndex(0);
}

void frmSelActividad::cboCursoEscolar_Click()
{
    if (cboCursoEscolar.ListIndex() < 0)
        return;
    const qlonglong elegido = cboCursoEscolar.ItemData(cboCursoEscolar.ListIndex());
    if (elegido != m_shownYear) {
        // The first time no year is on show yet: nothing to store.
        try {
            StoreActivities(m_shownYear);
        } catch (const CollectionKeyError &) {
            // The year on show was dropped meanwhile: nothing to store.
        }
    }
    // The chosen year counts as shown even if its database cannot be
    // opened: the lists left on screen are then stored into it next time.
    m_shownYear = elegido;

    auto curso = m_cursos.colCursosEscolares.Find(KeyOf(elegido));
    if (!curso)
        return;
    ConnectionPtr bd = OpenYearDatabase(curso->conBD, m_run);
    if (bd) {
        lstDisponibles.Clear();
        lstSeleccionados.Clear();
        try {
            Recordset rs = bd->Execute(QStringLiteral("SELECT IDActividad, Nombre FROM Actividad"));
            for (; !rs.Eof(); rs.MoveNext()) {
                const qlonglong id = rs.Fields(QStringLiteral("IDActividad")).toLongLong();
                ListBox &destino = curso->colActividades.Contains(KeyOf(id)) ? lstSeleccionados : lstDisponibles;
                destino.AddItem(rs.Fields(QStringLiteral("Nombre")).toString());
                destino.SetItemData(destino.NewIndex(), id);
            }
        } catch (const DatabaseError &) {
            // A year database without the activity table lists nothing.
        }
        bd->Close();
    }
    FitListWidths();
}

void frmSelActividad::StoreActivities(qlonglong idCursoEscolar)
{
    auto curso = m_cursos.colCursosEscolares.Item(KeyOf(idCursoEscolar));

    QString devueltas = QStringLiteral(",");
    for (int i = 0; i < lstDisponibles.ListCount(); ++i)
        devueltas += QString::number(lstDisponibles.ItemData(i)) + QLatin1Char(',');
    for (const auto &actividad : curso->colActividades.Items()) {
        if (devueltas.contains(QLatin1Char(',') + QString::number(actividad->idActividad) + QLatin1Char(',')))
            curso->colActividades.Remove(KeyOf(actividad->idActividad));
    }

    for (int i = 0; i < lstSeleccionados.ListCount(); ++i) {
        const qlonglong id = lstSeleccionados.ItemData(i);
        if (curso->colActividades.Contains(KeyOf(id)))
            continue;
        auto actividad = std::make_shared<cActividad>();
        actividad->idActividad = qint16(id);
        actividad->Nombre = lstSeleccionados.List(i);
        curso->colActividades.Add(actividad, KeyOf(id));
    }
}

void frmSelActividad::cmdAceptar_Click()
{
    if (m_cursos.colCursosEscolares.Contains(KeyOf(m_shownYear)))
        StoreActivities(m_shownYear);

    bool algunaActividad = false;
    for (const auto &curso : m_cursos.colCursosEscolares.Items())
        algunaActividad = algunaActividad || !curso->colActividades.IsEmpty();
    if (!algunaActividad)
        return Refuse(QStringLiteral("Debe seleccionar alguna actividad"));
    ShowNextStep(std::make_shared<frmActividadMes>(m_run, m_cursos), m_run.blnSalir);
}

void frmSelActividad::FitListWidths()
{
    lstDisponibles.FitHorizontalExtent();
    lstSeleccionados.FitHorizontalExtent();
}
