#include "wizard/frmActividadPonderacion.h"

#include "session/WizardRun.h"
#include "session/cConstCol.h"
#include "util/VbFormat.h"
#include "wizard/ConfigurationWindowMaker.h"
#include "wizard/FormSetup.h"
#include "wizard/frmActividadAlumno.h"
#include "wizard/frmSelCursos.h"

namespace {

const QString kSinMeses = QStringLiteral("000000000000");
const QString kSeparadorTipo = QStringLiteral(" - ");

QString WithoutPercentSign(QString text)
{
    return text.remove(QLatin1Char('%'));
}

} // namespace

const QString frmActividadPonderacion::kSeparadorPar = QStringLiteral(" <-> ");

frmActividadPonderacion::frmActividadPonderacion(WizardRun &run, frmSelCursos &cursos)
    : Form(run.ui(), QStringLiteral("frmActividadPonderacion"), QStringLiteral("Selección de porcentajes de deducciones")),
      m_run(run), m_cursos(cursos)
{
    chkComunidad.Click = [this] { chkComunidad_Click(); };
    cboComAut.Click = [this] { cboComAut_Click(); };
    cboDeduccion.Click = [this] { cboDeduccion_Click(); };
    cmdAnadir.Click = [this] { cmdAnadir_Click(); };
    cmdEliminar.Click = [this] { cmdEliminar_Click(); };
    cmdSiguiente.Click = [this] { cmdSiguiente_Click(); };
    cmdAnterior.Click = [this] { cmdAnterior_Click(); };
    cmdConfigurar.Click = [this] { cmdConfigurar_Click(); };
    // Offered when this run can make the catalogue window.
    cmdConfigurar.SetEnabled(run.Componentes().IsRegistered(QString::fromLatin1(ConfigurationWindowMaker::ProgId)));
}

QList<ControlBase *> frmActividadPonderacion::MandatoryControls()
{
    return {&cboTipoPorcentaje, &lstActPorc};
}

void frmActividadPonderacion::Form_Load()
{
    PrepareWizardWindow(*this, m_run);
    for (const auto &curso : m_cursos.colCursosEscolares.Items()) {
        for (const auto &actividad : curso->colActividades.Items()) {
            if (actividad->MesesPago.isEmpty() || actividad->MesesPago == kSinMeses)
                continue;
            const QString etiqueta = ActivityLabel(*curso, *actividad);
            if (actividad->TipoDonativoDeduccion.isEmpty())
                lstActividad.AddItem(etiqueta);
            else
                lstActPorc.AddItem(etiqueta + kSeparadorPar + actividad->TipoDonativoDeduccion);
        }
    }

    LoadCatalogues();

    if (m_cursos.blnCargarDatosComAut) {
        Recordset rs = m_run.ConexionCentro().Execute(QStringLiteral("SELECT DeducComAut FROM CursoEscAct"));
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

void frmActividadPonderacion::LoadCatalogues()
{
    cboComAut.Clear();
    cboDeduccion.Clear();
    cboTipoPorcentaje.Clear();

    Connection &m182 = m_run.OpenM182();
    const QLocale &locale = m_run.Locale();

    // The community collection is built once per run of the wizard (or by
    // the reload of saved work) and outlives this window.
    const bool crearComunidades = m_cursos.colComAut.IsEmpty();
    Recordset rs = m182.Execute(QStringLiteral("SELECT idcomunidadautonoma, comunidadautonoma FROM ComunidadesAutonomas"));
    for (; !rs.Eof(); rs.MoveNext()) {
        const qlonglong id = rs.Fields(QStringLiteral("idcomunidadautonoma")).toLongLong();
        cboComAut.AddItem(rs.Fields(QStringLiteral("comunidadautonoma")).toString());
        cboComAut.SetItemData(cboComAut.NewIndex(), id);
        if (crearComunidades && !m_cursos.colComAut.Contains(KeyOf(id))) {
            auto comunidad = std::make_shared<cComAut>();
            comunidad->IDComAut = qint16(id);
            comunidad->IDDeduccion = -1;
            comunidad->Valor = -1;
            m_cursos.colComAut.Add(comunidad, KeyOf(id));
        }
    }
    rs.Close();

    rs = m182.Execute(QStringLiteral(
        "SELECT TipoDonativo, Deduccion FROM TipoDonativos INNER JOIN (TipoDonativos_Deducciones INNER JOIN Deducciones "
        "ON TipoDonativos_Deducciones.codDeduccion=Deducciones.IDDeduccion) ON "
        "TipoDonativos.idTipoDonativo=TipoDonativos_Deducciones.codTipoDonativo"));
    for (; !rs.Eof(); rs.MoveNext())
        cboTipoPorcentaje.AddItem(rs.Fields(QStringLiteral("TipoDonativo")).toString() + kSeparadorTipo
                                  + NumberText(rs.Fields(QStringLiteral("Deduccion")), locale) + QStringLiteral("%"));
    rs.Close();
}

void frmActividadPonderacion::Form_Unload(int &cancel)
{
    (void)cancel;
    Connection &m182 = m_run.conM182();
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
    const QLocale &locale = m_run.Locale();
    Recordset rs = m_run.OpenM182().Execute(
        QStringLiteral("SELECT IDDeduccion,Deduccion FROM ComunidadesAutonomas_Deducciones INNER JOIN Deducciones ON "
                       "ComunidadesAutonomas_Deducciones.codDeduccion=Deducciones.IDDeduccion WHERE codComunidadAutonoma=")
        + QString::number(idComunidad));
    for (; !rs.Eof(); rs.MoveNext()) {
        cboDeduccion.AddItem(NumberText(rs.Fields(QStringLiteral("Deduccion")), locale) + QStringLiteral("%"));
        cboDeduccion.SetItemData(cboDeduccion.NewIndex(), rs.Fields(QStringLiteral("IDDeduccion")).toLongLong());
    }
    rs.Close();

    // A community the catalogue gained after the collection was built has
    // no record: nothing to select for it.
    if (auto comunidad = m_cursos.colComAut.Find(KeyOf(idComunidad))) {
        const int indice = cboDeduccion.IndexOfItemData(comunidad->IDDeduccion);
        if (indice >= 0)
            cboDeduccion.SetListIndex(indice);
    }
}

void frmActividadPonderacion::cboDeduccion_Click()
{
    if (cboDeduccion.ListIndex() < 0 || cboComAut.ListIndex() < 0)
        return;
    const qlonglong idComunidad = cboComAut.ItemData(cboComAut.ListIndex());
    auto comunidad = m_cursos.colComAut.Find(KeyOf(idComunidad));
    if (!comunidad) {
        // A collection rebuilt from older saved work may miss a community
        // the catalogue has now: the choice gets its own record.
        comunidad = std::make_shared<cComAut>();
        comunidad->IDComAut = qint16(idComunidad);
        comunidad->Estado = cConstCol().NUEVO();
        m_cursos.colComAut.Add(comunidad, KeyOf(idComunidad));
    }
    const std::optional<double> valor = ReadNumber(WithoutPercentSign(cboDeduccion.Text()), m_run.Locale());
    if (!valor)
        return Refuse(QStringLiteral("El porcentaje «") + cboDeduccion.Text()
                      + QStringLiteral("» no es un número. Revise los porcentajes del catálogo."));
    comunidad->IDDeduccion = qint16(cboDeduccion.ItemData(cboDeduccion.ListIndex()));
    comunidad->Valor = float(*valor);
}

void frmActividadPonderacion::cmdConfigurar_Click()
{
    const auto maker = m_run.Componentes().CreateObjectAs<ConfigurationWindowMaker>(
        QString::fromLatin1(ConfigurationWindowMaker::ProgId));
    // The window refills this step's catalogue lists itself when accepted.
    ui().ShowModal(maker->Create(m_run, m_cursos, *this));
}

void frmActividadPonderacion::cmdAnadir_Click()
{
    if (lstActividad.ListIndex() < 0 || cboTipoPorcentaje.ListIndex() < 0)
        return Refuse(QStringLiteral("Seleccione una actividad"));
    lstActPorc.AddItem(lstActividad.Text() + kSeparadorPar + cboTipoPorcentaje.Text());
    lstActividad.RemoveItem(lstActividad.ListIndex());
}

void frmActividadPonderacion::cmdEliminar_Click()
{
    if (lstActPorc.ListIndex() < 0)
        return Refuse(QStringLiteral("Seleccione una actividad con su deducción a eliminar"));
    const QString texto = lstActPorc.Text();
    const ListedPair listado = FindListedPair(texto);
    // Taking a pair away reaches the activity at once.
    if (const ChosenActivity &eleccion = listado.eleccion) {
        lstActividad.AddItem(ActivityLabel(*eleccion.curso, *eleccion.actividad));
        eleccion.actividad->TipoDonativoDeduccion.clear();
        eleccion.actividad->TipoDonativo.clear();
        eleccion.actividad->Deduccion = 0;
    } else {
        lstActividad.AddItem(texto.left(texto.indexOf(kSeparadorPar)).trimmed());
    }
    lstActPorc.RemoveItem(lstActPorc.ListIndex());
}

void frmActividadPonderacion::cmdSiguiente_Click()
{
    if (lstActividad.ListCount() > 0)
        return Refuse(QStringLiteral("Seleccione un porcentaje de deducción para todas las actividades"));
    if (chkComunidad.Value() == 1) {
        for (const auto &comunidad : m_cursos.colComAut.Items()) {
            if (!(comunidad->Valor < 0))
                continue;
            const int indice = cboComAut.IndexOfItemData(comunidad->IDComAut);
            if (indice >= 0)
                cboComAut.SetListIndex(indice);
            Recordset rs = m_run.OpenM182().Execute(
                QStringLiteral("SELECT coddeduccion FROM comunidadesautonomas_deducciones WHERE codcomunidadautonoma=")
                + QString::number(comunidad->IDComAut));
            const bool tienePorcentajes = !rs.Eof();
            rs.Close();
            if (tienePorcentajes)
                return Refuse(QStringLiteral("Debe seleccionar una deducción para todas las comunidades autónomas"));
            // A community the catalogue gives no percentage declares 0.
            comunidad->Valor = 0;
        }
    }
    QList<PairToWrite> pares;
    if (!ReadPairs(pares))
        return;
    WritePairs(pares);
    ShowNextStep(std::make_shared<frmActividadAlumno>(m_run, m_cursos, *this), m_run.blnSalir);
}

frmActividadPonderacion::ListedPair frmActividadPonderacion::FindListedPair(const QString &linea) const
{
    ListedPair found;
    qsizetype longest = -1;
    for (const auto &curso : m_cursos.colCursosEscolares.Items()) {
        for (const auto &actividad : curso->colActividades.Items()) {
            const QString inicio = ActivityLabel(*curso, *actividad) + kSeparadorPar;
            if (inicio.size() > longest && linea.startsWith(inicio)) {
                longest = inicio.size();
                found = {{curso, actividad}, linea.mid(inicio.size())};
            }
        }
    }
    return found;
}

bool frmActividadPonderacion::ReadPairs(QList<PairToWrite> &pares)
{
    for (int i = 0; i < lstActPorc.ListCount(); ++i) {
        const QString linea = lstActPorc.List(i);
        const ListedPair listado = FindListedPair(linea);
        if (!listado.eleccion) {
            Refuse(QStringLiteral("No se encuentra la actividad de «") + linea
                   + QStringLiteral("». Elimine esa línea y asígnele de nuevo su deducción."));
            return false;
        }
        const QString &par = listado.par;
        const qsizetype guion = par.indexOf(kSeparadorTipo);
        const QString texto = guion < 0 ? QString() : WithoutPercentSign(par.mid(guion + kSeparadorTipo.size()));
        const std::optional<double> porcentaje = ReadNumber(texto, m_run.Locale());
        if (!porcentaje) {
            Refuse(QStringLiteral("No se puede leer el porcentaje de la actividad «")
                   + ActivityLabel(*listado.eleccion.curso, *listado.eleccion.actividad) + QStringLiteral("» en «") + par
                   + QStringLiteral("». Cambie el nombre del tipo de donativo para que no contenga «") + kSeparadorTipo
                   + QStringLiteral("» y vuelva a asignarlo."));
            return false;
        }
        pares.append({listado.eleccion, par, guion < 0 ? par : par.left(guion), *porcentaje});
    }
    return true;
}

void frmActividadPonderacion::WritePairs(const QList<PairToWrite> &pares)
{
    for (const PairToWrite &p : pares) {
        cActividad &actividad = *p.eleccion.actividad;
        actividad.TipoDonativoDeduccion = p.par;
        Recordset rs = m_run.OpenM182().Execute(
            QStringLiteral("SELECT CodigoDonativo FROM TipoDonativos WHERE TipoDonativo='") + SqlEscape(p.tipo)
            + QStringLiteral("'"));
        actividad.TipoDonativo = rs.Eof() ? QString() : rs.Fields(QStringLiteral("CodigoDonativo")).toString();
        rs.Close();
        // Fractional catalogue percentages reach the declaration rounded
        // (half to even), as whole numbers.
        actividad.Deduccion = CInt(p.porcentaje);
    }
}
