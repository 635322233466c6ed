#include "wizard/frmSelActividad.h"

#include "controls/FormSetup.h"
#include "session/modPrincipal.h"
#include "wizard/frmActividadMes.h"
#include "wizard/frmSelCursos.h"

frmSelActividad::frmSelActividad(Ui &ui, frmSelCursos &cursos)
    : TwoListForm(ui, QStringLiteral("frmSelActividad"), QStringLiteral("Selección de Actividades")), m_cursos(cursos)
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
    AplicarConfiguracionFormulario(*this);
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
    if (elegido != m_cursoMostrado) {
        // The first time no year is on show yet: nothing to store.
        try {
            GuardarActividades(m_cursoMostrado);
        } catch (const std::exception &) {
        }
    }
    // The chosen year counts as shown even if its database cannot be
    // opened: the lists left on screen are then stored into it next time.
    m_cursoMostrado = elegido;

    auto curso = m_cursos.colCursosEscolares.Find(Clave(elegido));
    if (!curso)
        return;
    ConnectionPtr bd = AbrirBDCurso(curso->conBD, ui());
    if (bd) {
        lstDisponibles.Clear();
        lstSeleccionados.Clear();
        try {
            Recordset rs = bd->Execute(QStringLiteral("SELECT IDActividad, Nombre FROM Actividad"));
            for (; !rs.Eof(); rs.MoveNext()) {
                const qlonglong id = rs.Fields(QStringLiteral("IDActividad")).toLongLong();
                ListBox &destino = curso->colActividades.Contains(Clave(id)) ? lstSeleccionados : lstDisponibles;
                destino.AddItem(rs.Fields(QStringLiteral("Nombre")).toString());
                destino.SetItemData(destino.NewIndex(), id);
            }
        } catch (const std::exception &) {
        }
        bd->Close();
    }
    AjustarAnchoListas();
}

void frmSelActividad::GuardarActividades(qlonglong idCursoEscolar)
{
    auto curso = m_cursos.colCursosEscolares.Item(Clave(idCursoEscolar));

    QString devueltas = QStringLiteral(",");
    for (int i = 0; i < lstDisponibles.ListCount(); ++i)
        devueltas += QString::number(lstDisponibles.ItemData(i)) + QLatin1Char(',');
    for (const auto &actividad : curso->colActividades.Items()) {
        if (devueltas.contains(QLatin1Char(',') + QString::number(actividad->idActividad) + QLatin1Char(',')))
            curso->colActividades.Remove(Clave(actividad->idActividad));
    }

    for (int i = 0; i < lstSeleccionados.ListCount(); ++i) {
        const qlonglong id = lstSeleccionados.ItemData(i);
        if (curso->colActividades.Contains(Clave(id)))
            continue;
        auto actividad = std::make_shared<cActividad>();
        actividad->idActividad = qint16(id);
        actividad->Nombre = lstSeleccionados.List(i);
        curso->colActividades.Add(actividad, Clave(id));
    }
}

void frmSelActividad::cmdAceptar_Click()
{
    if (m_cursos.colCursosEscolares.Contains(Clave(m_cursoMostrado)))
        GuardarActividades(m_cursoMostrado);

    bool algunaActividad = false;
    for (const auto &curso : m_cursos.colCursosEscolares.Items())
        algunaActividad = algunaActividad || !curso->colActividades.IsEmpty();
    if (!algunaActividad) {
        ui().Beep();
        ui().MsgBox(QStringLiteral("Debe seleccionar alguna actividad"), vbExclamation);
        return;
    }
    ui().ShowModal(std::make_shared<frmActividadMes>(ui(), m_cursos), [this] {
        if (modPrincipal::blnSalir)
            Unload();
    });
}

void frmSelActividad::AjustarAnchoListas()
{
    lstDisponibles.FitHorizontalExtent();
    lstSeleccionados.FitHorizontalExtent();
}
