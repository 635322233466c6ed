#include "wizard/frmActividadPonderacion.h"

#include "controls/FormSetup.h"
#include "session/denM182.h"
#include "session/modPrincipal.h"
#include "util/VbFormat.h"
#include "wizard/Numeros.h"
#include "wizard/frmActividadAlumno.h"
#include "wizard/frmSelCursos.h"

namespace {

const QString kSinMeses = QStringLiteral("000000000000");
const QString kSeparadorTipo = QStringLiteral(" - ");

QString SinPorcentaje(QString text)
{
    return text.remove(QLatin1Char('%'));
}

} // namespace

const QString frmActividadPonderacion::kSeparadorPar = QStringLiteral(" <-> ");

frmActividadPonderacion::frmActividadPonderacion(Ui &ui, frmSelCursos &cursos)
    : Form(ui, QStringLiteral("frmActividadPonderacion"), QStringLiteral("Selección de porcentajes de deducciones")),
      m_cursos(cursos)
{
    chkComunidad.Click = [this] { chkComunidad_Click(); };
    cboComAut.Click = [this] { cboComAut_Click(); };
    cboDeduccion.Click = [this] { cboDeduccion_Click(); };
    cmdAnadir.Click = [this] { cmdAnadir_Click(); };
    cmdEliminar.Click = [this] { cmdEliminar_Click(); };
    cmdSiguiente.Click = [this] { cmdSiguiente_Click(); };
    cmdAnterior.Click = [this] { cmdAnterior_Click(); };
    // The catalogue window comes with the catalogue maintenance.
    cmdConfigurar.SetEnabled(false);
}

QList<ControlBase *> frmActividadPonderacion::MandatoryControls()
{
    return {&cboTipoPorcentaje, &lstActPorc};
}

void frmActividadPonderacion::Form_Load()
{
    AplicarConfiguracionFormulario(*this);
    for (const auto &curso : m_cursos.colCursosEscolares.Items()) {
        for (const auto &actividad : curso->colActividades.Items()) {
            if (actividad->MesesPago.isEmpty() || actividad->MesesPago == kSinMeses)
                continue;
            const QString etiqueta = EtiquetaActividad(*curso, *actividad);
            if (actividad->TipoDonativoDeduccion.isEmpty())
                lstActividad.AddItem(etiqueta);
            else
                lstActPorc.AddItem(etiqueta + kSeparadorPar + actividad->TipoDonativoDeduccion);
        }
    }

    CargarCatalogos();

    if (m_cursos.blnCargarDatosComAut) {
        Recordset rs = modPrincipal::ConexionCentro().Execute(
            QStringLiteral("SELECT DeducComAut FROM CursoEscAct"));
        if (!rs.Eof())
            chkComunidad.SetValue(rs.Fields(QStringLiteral("DeducComAut")).toLongLong() != 0 ? 1 : 0);
        rs.Close();
        m_cursos.blnCargarDatosComAut = false;
    }
    if (chkComunidad.Value() != 1) {
        cboDeduccion.SetEnabled(false);
        cboComAut.SetEnabled(false);
    }
}

void frmActividadPonderacion::CargarCatalogos()
{
    cboComAut.Clear();
    cboDeduccion.Clear();
    cboTipoPorcentaje.Clear();

    Connection &m182 = denM182::Open();
    const QLocale &locale = modPrincipal::Settings().locale;

    // The community collection is built once per run of the wizard (or by
    // the reload of saved work) and outlives this window.
    const bool crearComunidades = m_cursos.colComAut.IsEmpty();
    Recordset rs = m182.Execute(QStringLiteral("SELECT idcomunidadautonoma, comunidadautonoma FROM ComunidadesAutonomas"));
    for (; !rs.Eof(); rs.MoveNext()) {
        const qlonglong id = rs.Fields(QStringLiteral("idcomunidadautonoma")).toLongLong();
        cboComAut.AddItem(rs.Fields(QStringLiteral("comunidadautonoma")).toString());
        cboComAut.SetItemData(cboComAut.NewIndex(), id);
        if (crearComunidades && !m_cursos.colComAut.Contains(Clave(id))) {
            auto comunidad = std::make_shared<cComAut>();
            comunidad->IDComAut = qint16(id);
            comunidad->IDDeduccion = -1;
            comunidad->Valor = -1;
            m_cursos.colComAut.Add(comunidad, Clave(id));
        }
    }
    rs.Close();

    rs = m182.Execute(QStringLiteral(
        "SELECT TipoDonativo, Deduccion FROM TipoDonativos INNER JOIN (TipoDonativos_Deducciones INNER JOIN Deducciones "
        "ON TipoDonativos_Deducciones.codDeduccion=Deducciones.IDDeduccion) ON "
        "TipoDonativos.idTipoDonativo=TipoDonativos_Deducciones.codTipoDonativo"));
    for (; !rs.Eof(); rs.MoveNext())
        cboTipoPorcentaje.AddItem(rs.Fields(QStringLiteral("TipoDonativo")).toString() + kSeparadorTipo
                                  + TextoNumero(rs.Fields(QStringLiteral("Deduccion")), locale) + QStringLiteral("%"));
    rs.Close();
}

void frmActividadPonderacion::Form_Unload(int &cancel)
{
    (void)cancel;
    Connection &m182 = denM182::conM182();
    if (m182.State() == Connection::adStateOpen)
        m182.Close();
}

void frmActividadPonderacion::chkComunidad_Click()
{
    if (chkComunidad.Value() == 1) {
        cboDeduccion.SetEnabled(true);
        cboComAut.SetEnabled(true);
        if (cboComAut.ListCount() > 0)
            cboComAut.SetListIndex(0);
    } else {
        cboDeduccion.SetEnabled(false);
        cboComAut.SetEnabled(false);
    }
}

void frmActividadPonderacion::cboComAut_Click()
{
    if (cboComAut.ListIndex() < 0)
        return;
    cboDeduccion.Clear();
    const qlonglong idComunidad = cboComAut.ItemData(cboComAut.ListIndex());
    const QLocale &locale = modPrincipal::Settings().locale;
    Recordset rs = denM182::Open().Execute(
        QStringLiteral("SELECT IDDeduccion,Deduccion FROM ComunidadesAutonomas_Deducciones INNER JOIN Deducciones ON "
                       "ComunidadesAutonomas_Deducciones.codDeduccion=Deducciones.IDDeduccion WHERE codComunidadAutonoma=")
        + QString::number(idComunidad));
    for (; !rs.Eof(); rs.MoveNext()) {
        cboDeduccion.AddItem(TextoNumero(rs.Fields(QStringLiteral("Deduccion")), locale) + QStringLiteral("%"));
        cboDeduccion.SetItemData(cboDeduccion.NewIndex(), rs.Fields(QStringLiteral("IDDeduccion")).toLongLong());
    }
    rs.Close();

    // A community the catalogue gained after the collection was built has
    // no record: nothing to select for it.
    if (auto comunidad = m_cursos.colComAut.Find(Clave(idComunidad))) {
        const int indice = cboDeduccion.IndexOfItemData(comunidad->IDDeduccion);
        if (indice >= 0)
            cboDeduccion.SetListIndex(indice);
    }
}

void frmActividadPonderacion::cboDeduccion_Click()
{
    if (cboDeduccion.ListIndex() < 0 || cboComAut.ListIndex() < 0)
        return;
    auto comunidad = m_cursos.colComAut.Find(Clave(cboComAut.ItemData(cboComAut.ListIndex())));
    if (!comunidad)
        return;
    comunidad->IDDeduccion = qint16(cboDeduccion.ItemData(cboDeduccion.ListIndex()));
    comunidad->Valor = float(LeerNumero(SinPorcentaje(cboDeduccion.Text()), modPrincipal::Settings().locale));
}

void frmActividadPonderacion::cmdAnadir_Click()
{
    if (lstActividad.ListIndex() < 0 || cboTipoPorcentaje.ListIndex() < 0) {
        ui().Beep();
        ui().MsgBox(QStringLiteral("Seleccione una actividad"), vbExclamation);
        return;
    }
    lstActPorc.AddItem(lstActividad.Text() + kSeparadorPar + cboTipoPorcentaje.Text());
    lstActividad.RemoveItem(lstActividad.ListIndex());
}

void frmActividadPonderacion::cmdEliminar_Click()
{
    if (lstActPorc.ListIndex() < 0) {
        ui().Beep();
        ui().MsgBox(QStringLiteral("Seleccione una actividad con su deducción a eliminar"), vbExclamation);
        return;
    }
    const QString texto = lstActPorc.Text();
    const QString etiqueta = texto.left(texto.indexOf(kSeparadorPar)).trimmed();
    lstActividad.AddItem(etiqueta);
    // Taking a pair away reaches the activity at once.
    if (const ActividadElegida eleccion = BuscarActividad(m_cursos.colCursosEscolares, etiqueta); eleccion.actividad) {
        eleccion.actividad->TipoDonativoDeduccion.clear();
        eleccion.actividad->TipoDonativo.clear();
        eleccion.actividad->Deduccion = 0;
    }
    lstActPorc.RemoveItem(lstActPorc.ListIndex());
}

void frmActividadPonderacion::cmdSiguiente_Click()
{
    if (lstActividad.ListCount() > 0) {
        ui().Beep();
        ui().MsgBox(QStringLiteral("Seleccione un porcentaje de deducción para todas las actividades"), vbExclamation);
        return;
    }
    if (chkComunidad.Value() == 1) {
        for (const auto &comunidad : m_cursos.colComAut.Items()) {
            if (!(comunidad->Valor < 0))
                continue;
            const int indice = cboComAut.IndexOfItemData(comunidad->IDComAut);
            if (indice >= 0)
                cboComAut.SetListIndex(indice);
            Recordset rs = denM182::Open().Execute(
                QStringLiteral("SELECT coddeduccion FROM comunidadesautonomas_deducciones WHERE codcomunidadautonoma=")
                + QString::number(comunidad->IDComAut));
            const bool tienePorcentajes = !rs.Eof();
            rs.Close();
            if (tienePorcentajes) {
                ui().Beep();
                ui().MsgBox(QStringLiteral("Debe seleccionar una deducción para todas las comunidades autónomas"),
                            vbExclamation);
                return;
            }
            // A community the catalogue gives no percentage declares 0.
            comunidad->Valor = 0;
        }
    }
    EscribirPares();
    ui().ShowModal(std::make_shared<frmActividadAlumno>(ui(), m_cursos), [this] {
        if (modPrincipal::blnSalir)
            Unload();
    });
}

void frmActividadPonderacion::EscribirPares()
{
    const QLocale &locale = modPrincipal::Settings().locale;
    for (int i = 0; i < lstActPorc.ListCount(); ++i) {
        const QString texto = lstActPorc.List(i);
        const qsizetype separador = texto.indexOf(kSeparadorPar);
        const ActividadElegida eleccion = BuscarActividad(m_cursos.colCursosEscolares, texto.left(separador).trimmed());
        if (!eleccion.actividad)
            continue;
        const QString par = texto.mid(separador + kSeparadorPar.size());
        eleccion.actividad->TipoDonativoDeduccion = par;

        const qsizetype guion = par.indexOf(kSeparadorTipo);
        const QString tipo = guion < 0 ? par : par.left(guion);
        Recordset rs = denM182::Open().Execute(QStringLiteral("SELECT CodigoDonativo FROM TipoDonativos WHERE TipoDonativo='")
                                               + SqlEscape(tipo) + QStringLiteral("'"));
        eleccion.actividad->TipoDonativo = rs.Eof() ? QString() : rs.Fields(QStringLiteral("CodigoDonativo")).toString();
        rs.Close();

        // Fractional catalogue percentages reach the declaration rounded
        // (half to even), as whole numbers.
        const QString porcentaje = guion < 0 ? QString() : SinPorcentaje(par.mid(guion + kSeparadorTipo.size()));
        eleccion.actividad->Deduccion = CInt(LeerNumero(porcentaje, locale));
    }
}

