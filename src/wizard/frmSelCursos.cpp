#include "wizard/frmSelCursos.h"

#include "data/DatabaseError.h"
#include "session/WizardRun.h"
#include "wizard/FormSetup.h"
#include "wizard/SavedWorkLoader.h"
#include "wizard/frmSelActividad.h"

frmSelCursos::frmSelCursos(WizardRun &run)
    : TwoListForm(run.ui(), QStringLiteral("frmSelCursos"),
                  QStringLiteral("Selección de cursos escolares para el modelo 182")),
      m_run(run)
{
    cboCentro.Click = [this] { cboCentro_Click(); };
    cmdAceptar.Click = [this] { cmdAceptar_Click(); };
    cmdCancelar.Click = [this] { cmdCancelar_Click(); };
    cmdCargar.Click = [this] { cmdCargar_Click(); };
}

QList<ControlBase *> frmSelCursos::MandatoryControls()
{
    return {&cboCentro, &lstSeleccionados};
}

void frmSelCursos::Form_Load()
{
    const cConfiguracion &configuracion = m_run.Configuracion();
    m_run.ConfigureDeclarationDatabase();
    m_run.blnSalir = false;
    PrepareWizardWindow(*this, m_run);

    Recordset rs = m_run.ConexionEntrada().Execute(QStringLiteral("SELECT IDCentro, Nombre FROM Centro WHERE IDCentro=")
                                                   + QString::number(configuracion.intIdCentro()));
    for (; !rs.Eof(); rs.MoveNext()) {
        cboCentro.AddItem(rs.Fields(QStringLiteral("Nombre")).toString());
        cboCentro.SetItemData(cboCentro.NewIndex(), rs.Fields(QStringLiteral("IDCentro")).toLongLong());
    }
    rs.Close();
}

void frmSelCursos::cboCentro_Click()
{
    if (cboCentro.ListIndex() < 0)
        return;
    lstDisponibles.Clear();
    lstSeleccionados.Clear();
    Recordset rs = m_run.ConexionEntrada().Execute(
        QStringLiteral("SELECT IDCursoEscolar, Nombre FROM CursoEscolar WHERE codcentro=")
        + QString::number(cboCentro.ItemData(cboCentro.ListIndex())));
    for (; !rs.Eof(); rs.MoveNext()) {
        lstDisponibles.AddItem(rs.Fields(QStringLiteral("Nombre")).toString());
        lstDisponibles.SetItemData(lstDisponibles.NewIndex(), rs.Fields(QStringLiteral("IDCursoEscolar")).toLongLong());
    }
    rs.Close();
}

void frmSelCursos::cmdAceptar_Click()
{
    if (lstSeleccionados.ListCount() == 0)
        return Refuse(QStringLiteral("Debe seleccionar algún curso escolar"));
    BuildChosenYears();
    ShowNextStep(std::make_shared<frmSelActividad>(m_run, *this), m_run.blnSalir);
}

void frmSelCursos::BuildChosenYears()
{
    // A failing statement here is skipped, not reported: a year whose
    // database cannot be found is still added, with an empty connection
    // string, and the activity step says so when it opens it.
    if (!colCursosEscolares.IsEmpty()) {
        for (int i = 0; i < lstDisponibles.ListCount(); ++i) {
            const QString key = KeyOf(lstDisponibles.ItemData(i));
            if (colCursosEscolares.Contains(key))
                colCursosEscolares.Remove(key);
        }
    }
    for (int i = 0; i < lstSeleccionados.ListCount(); ++i) {
        const qlonglong id = lstSeleccionados.ItemData(i);
        if (colCursosEscolares.Contains(KeyOf(id)))
            continue;
        auto curso = std::make_shared<cCursoEscolar>();
        curso->idCursoEscolar = qint16(id);
        curso->Nombre = lstSeleccionados.List(i);
        try {
            Recordset rs = m_run.ConexionEntrada().Execute(
                QStringLiteral("SELECT BD FROM CursoEscolar WHERE idcursoescolar=") + QString::number(id));
            if (!rs.Eof())
                curso->conBD = rs.Fields(QStringLiteral("BD")).toString();
        } catch (const DatabaseError &) {
        }
        colCursosEscolares.Add(curso, KeyOf(id));
    }
}

// Loading saved work ----------------------------------------------------

namespace {

// The hourglass while the saved work loads; the normal pointer back on
// every way out, before any message.
class Hourglass
{
public:
    explicit Hourglass(Ui &ui) : m_ui(ui) { m_ui.SetMousePointer(vbHourglass); }
    ~Hourglass() { Restore(); }
    void Restore()
    {
        if (m_on)
            m_ui.SetMousePointer(vbDefault);
        m_on = false;
    }

private:
    Ui &m_ui;
    bool m_on = true;
};

} // namespace

void frmSelCursos::cmdCargar_Click()
{
    if (ui().MsgBox(QStringLiteral("¿Desea cargar los datos guardados anteriormente? Todos los cambios realizados desde "
                                   "la última grabación se descartarán"),
                    vbYesNo | vbQuestion)
        != vbYes)
        return;
    Hourglass pointer(ui());
    // Read first: a failure leaves the lists, the flags and the wizard's
    // choices as they were.
    SavedWork work;
    try {
        work = ReadSavedWork(m_run.ConexionCentro());
    } catch (const CollectionKeyError &error) {
        pointer.Restore();
        return Refuse(QStringLiteral("Los datos guardados tienen repetida la clave «") + error.Key()
                      + QStringLiteral("» y no se pueden cargar. Los cursos elegidos no han cambiado; vuelva a elegir "
                                       "los cursos y las actividades y guarde de nuevo en el último paso."));
    } catch (const DatabaseError &error) {
        pointer.Restore();
        ui().MsgBox(QStringLiteral("No se han podido cargar los datos guardados. ") + error.Describe()
                        + QStringLiteral("\n\nLos cursos elegidos no han cambiado. Compruebe que la base de datos del "
                                         "centro está disponible y vuelva a pulsar «Cargar Datos»."),
                    vbOKOnly | vbCritical);
        return;
    }
    // Choosing the school lists every year as available and none selected.
    if (cboCentro.ListIndex() < 0 && cboCentro.ListCount() > 0)
        cboCentro.SetListIndex(0);
    else
        cboCentro_Click();
    blnCargarDatos = true;
    blnCargarDatosComAut = true;
    colComAut = std::move(work.colComAut);
    colCursosEscolares = std::move(work.colCursosEscolares);
    // A saved year the school no longer lists stays chosen but in neither list.
    for (const auto &curso : colCursosEscolares.Items()) {
        const int index = lstDisponibles.IndexOfItemData(curso->idCursoEscolar);
        if (index < 0)
            continue;
        lstDisponibles.SetListIndex(index);
        cmdAgregarUno_Click();
    }
}
