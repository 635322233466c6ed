#include "wizard/frmActividadMes.h"

#include "session/WizardRun.h"
#include "wizard/FormSetup.h"
#include "wizard/frmActividadPonderacion.h"
#include "wizard/frmSelCursos.h"

#include <array>
#include <cmath>

namespace {

const char *const kMeses[12] = {"Enero", "Febrero", "Marzo",      "Abril",   "Mayo",      "Junio",
                                "Julio", "Agosto",  "Septiembre", "Octubre", "Noviembre", "Diciembre"};

const QString kSinMeses = QStringLiteral("000000000000");

} // namespace

frmActividadMes::frmActividadMes(WizardRun &run, frmSelCursos &cursos)
    : TwoListForm(run.ui(), QStringLiteral("frmActividadMes"),
                  QStringLiteral("Selección de los meses de facturación de las actividades")),
      m_run(run), m_cursos(cursos)
{
    cboActCurEsc.Click = [this] { cboActCurEsc_Click(); };
    cmdAceptar.Click = [this] { cmdAceptar_Click(); };
    cmdCancelar.Click = [this] { cmdCancelar_Click(); };
}

QString frmActividadMes::MonthName(int mes)
{
    return mes >= 1 && mes <= 12 ? QString::fromUtf8(kMeses[mes - 1]) : QString();
}

QList<ControlBase *> frmActividadMes::MandatoryControls()
{
    return {&cboActCurEsc, &lstSeleccionados};
}

void frmActividadMes::Form_Load()
{
    PrepareWizardWindow(*this, m_run);
    for (const auto &curso : m_cursos.colCursosEscolares.Items())
        for (const auto &actividad : curso->colActividades.Items())
            cboActCurEsc.AddItem(ActivityLabel(*curso, *actividad));
    if (cboActCurEsc.ListCount() > 0)
        cboActCurEsc.SetListIndex(0);
}

void frmActividadMes::cboActCurEsc_Click()
{
    const int indice = cboActCurEsc.ListIndex();
    if (indice < 0)
        return;
    if (indice != m_shownIndex)
        StoreMonths(cboActCurEsc.List(m_shownIndex));
    m_shownIndex = qint16(indice);

    const ChosenActivity eleccion = FindActivity(m_cursos.colCursosEscolares, cboActCurEsc.Text());
    if (!eleccion.actividad)
        return;
    ConnectionPtr bd = OpenYearDatabase(eleccion.curso->conBD, m_run);
    if (!bd)
        return;
    lstDisponibles.Clear();
    lstSeleccionados.Clear();

    Recordset rs = bd->Execute(
        QStringLiteral("SELECT sum(enero) AS Campo0, sum(febrero) AS Campo1, sum(marzo) AS Campo2, sum(abril) AS Campo3, "
                       "sum(mayo) AS Campo4, sum(junio) AS Campo5, sum(julio) AS Campo6, sum(agosto) AS Campo7, "
                       "sum(septiembre) AS Campo8, sum(octubre) AS Campo9, sum(noviembre) AS Campo10, "
                       "sum(diciembre) AS Campo11 FROM Alumno_actividad_miembro WHERE codactividad=")
        + QString::number(eleccion.actividad->idActividad));
    const QString &mascara = eleccion.actividad->MesesPago;
    for (int i = 0; i < 12 && !rs.Eof(); ++i) {
        // Refunds make a month's sum negative; they count as fees too.
        const double suma = rs.Fields(QStringLiteral("Campo") + QString::number(i)).toDouble();
        if (!(std::abs(suma) > 0))
            continue;
        ListBox &destino = (!mascara.isEmpty() && mascara.mid(i, 1) != QLatin1String("0")) ? lstSeleccionados
                                                                                           : lstDisponibles;
        destino.AddItem(MonthName(i + 1));
        destino.SetItemData(destino.NewIndex(), i + 1);
    }
    rs.Close();
    bd->Close();
}

void frmActividadMes::StoreMonths(const QString &etiqueta)
{
    const ChosenActivity eleccion = FindActivity(m_cursos.colCursosEscolares, etiqueta);
    if (!eleccion.actividad)
        return;
    if (lstSeleccionados.ListCount() == 0) {
        eleccion.actividad->MesesPago = kSinMeses;
        return;
    }
    std::array<bool, 13> elegido{};
    for (int i = 0; i < lstSeleccionados.ListCount(); ++i) {
        const qlonglong mes = lstSeleccionados.ItemData(i);
        if (mes >= 1 && mes <= 12)
            elegido[size_t(mes)] = true;
    }
    QString mascara;
    for (int mes = 1; mes <= 12; ++mes)
        mascara += elegido[size_t(mes)] ? QLatin1Char('1') : QLatin1Char('0');
    eleccion.actividad->MesesPago = mascara;
}

void frmActividadMes::cmdAceptar_Click()
{
    StoreMonths(cboActCurEsc.List(m_shownIndex));
    for (const auto &curso : m_cursos.colCursosEscolares.Items()) {
        for (const auto &actividad : curso->colActividades.Items()) {
            if (actividad->MesesPago.isEmpty() || actividad->MesesPago == kSinMeses)
                return Refuse(QStringLiteral("Debe seleccionar algún mes de cobro en todas las actividades"));
        }
    }
    ShowNextStep(std::make_shared<frmActividadPonderacion>(m_run, m_cursos), m_run.blnSalir);
}
