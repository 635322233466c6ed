#include "catalogue/frmConfiguracion.h"

#include "catalogue/frmNComAut.h"
#include "catalogue/frmNPorcentaje.h"
#include "catalogue/frmNTipoDeduccion.h"
#include "data/DatabaseError.h"
#include "session/WizardRun.h"
#include "util/VbFormat.h"
#include "wizard/FormSetup.h"
#include "wizard/frmActividadPonderacion.h"
#include "wizard/frmSelCursos.h"

namespace {

const QString kSeparador = QStringLiteral(" <-> ");
const QString kEnUso = QStringLiteral("El porcentaje a eliminar está seleccionado en el modelo 182, no puede ser eliminado");

void AddEntry(ComboBox &combo, const QString &text, qlonglong id)
{
    combo.AddItem(text);
    combo.SetItemData(combo.NewIndex(), id);
}

qint16 SelectedId(const ListControl &list)
{
    return qint16(list.ItemData(list.ListIndex()));
}

} // namespace

frmConfiguracion::frmConfiguracion(WizardRun &run, frmSelCursos &cursos, frmActividadPonderacion &paso)
    : Form(run.ui(), QStringLiteral("frmConfiguracion"), QStringLiteral("Configuración de Deducciones")), m_run(run),
      m_cursos(cursos), m_paso(paso)
{
    cboComAut.Click = [this] { cboComAut_Click(); };
    cboTipo.Click = [this] { cboTipo_Click(); };
    cmdAnadirComPor.Click = [this] { cmdAnadirComPor_Click(); };
    cmdEliminarComPor.Click = [this] { cmdEliminarComPor_Click(); };
    cmdAnadirTPor.Click = [this] { cmdAnadirTPor_Click(); };
    cmdElimTPor.Click = [this] { cmdElimTPor_Click(); };
    cmdNComAut.Click = [this] { cmdNComAut_Click(); };
    cmdNPorc.Click = [this] { cmdNPorc_Click(); };
    cmdNDeduc.Click = [this] { cmdNPorc_Click(); };
    cmdNTipo.Click = [this] { cmdNTipo_Click(); };
    cmdAceptar.Click = [this] { cmdAceptar_Click(); };
    cmdCancelar.Click = [this] { cmdCancelar_Click(); };
    cmdNComAut.SetToolTipText(QStringLiteral("Nueva comunidad autónoma"));
    cmdNPorc.SetToolTipText(QStringLiteral("Nuevo porcentaje"));
    cmdNDeduc.SetToolTipText(QStringLiteral("Nuevo porcentaje"));
    cmdNTipo.SetToolTipText(QStringLiteral("Nuevo tipo de donativo"));
}

ColComAut &frmConfiguracion::ComunidadesDelAsistente()
{
    return m_cursos.colComAut;
}

void frmConfiguracion::Form_Load()
{
    PrepareWizardWindow(*this, m_run);
    LoadCombos();
    LoadLinks();
}

void frmConfiguracion::LoadCombos()
{
    Connection &m182 = m_run.OpenM182();
    Recordset rs = m182.Execute(QStringLiteral("SELECT IDComunidadAutonoma, ComunidadAutonoma FROM ComunidadesAutonomas"));
    for (; !rs.Eof(); rs.MoveNext())
        AddEntry(cboComAut, rs.Fields(QStringLiteral("ComunidadAutonoma")).toString(),
                 rs.Fields(QStringLiteral("IDComunidadAutonoma")).toLongLong());
    rs.Close();

    rs = m182.Execute(QStringLiteral("SELECT IDTipoDonativo, TipoDonativo FROM TipoDonativos"));
    for (; !rs.Eof(); rs.MoveNext())
        AddEntry(cboTipo, rs.Fields(QStringLiteral("TipoDonativo")).toString(),
                 rs.Fields(QStringLiteral("IDTipoDonativo")).toLongLong());
    rs.Close();

    rs = m182.Execute(QStringLiteral("SELECT IDDeduccion, Deduccion FROM Deducciones"));
    for (; !rs.Eof(); rs.MoveNext()) {
        const QString texto = NumberText(rs.Fields(QStringLiteral("Deduccion")), m_run.Locale());
        const qlonglong id = rs.Fields(QStringLiteral("IDDeduccion")).toLongLong();
        AddEntry(cboPorc, texto, id);
        AddEntry(cboDeduccion, texto, id);
    }
    rs.Close();
}

void frmConfiguracion::LoadLinks()
{
    Connection &m182 = m_run.OpenM182();
    Recordset rs = m182.Execute(QStringLiteral(
        "SELECT codTipoDonativo, codDeduccion, Deduccion FROM TipoDonativos_Deducciones INNER JOIN Deducciones ON "
        "Deducciones.IDDeduccion=TipoDonativos_Deducciones.codDeduccion"));
    for (; !rs.Eof(); rs.MoveNext())
        m_tipos.Load(qint16(rs.Fields(QStringLiteral("codTipoDonativo")).toLongLong()),
                     qint16(rs.Fields(QStringLiteral("codDeduccion")).toLongLong()),
                     rs.Fields(QStringLiteral("Deduccion")).toFloat());
    rs.Close();

    rs = m182.Execute(QStringLiteral("SELECT codComunidadAutonoma, codDeduccion, Deduccion FROM "
                                     "ComunidadesAutonomas_Deducciones INNER JOIN Deducciones ON "
                                     "Deducciones.IDDeduccion=ComunidadesAutonomas_Deducciones.codDeduccion"));
    for (; !rs.Eof(); rs.MoveNext())
        m_comunidades.Load(qint16(rs.Fields(QStringLiteral("codComunidadAutonoma")).toLongLong()),
                           qint16(rs.Fields(QStringLiteral("codDeduccion")).toLongLong()),
                           rs.Fields(QStringLiteral("Deduccion")).toFloat());
    rs.Close();
}

QString frmConfiguracion::EntryText(const QString &nombre, float valor) const
{
    return nombre + kSeparador + PercentageText(valor, m_run.Locale());
}

std::optional<float> frmConfiguracion::SelectedPercentage(const ComboBox &combo)
{
    const std::optional<double> valor = ReadNumber(combo.Text(), m_run.Locale());
    if (!valor)
        Refuse(QStringLiteral("El porcentaje «") + combo.Text()
               + QStringLiteral("» no es un número. Revise los porcentajes del catálogo."));
    return valor ? std::optional<float>(float(*valor)) : std::nullopt;
}

void frmConfiguracion::Inform(const QString &text)
{
    ui().Beep();
    ui().MsgBox(text, vbInformation);
}

void frmConfiguracion::cboComAut_Click()
{
    if (cboComAut.ListIndex() < 0)
        return;
    lstComAut.Clear();
    for (const auto &link : m_comunidades.Listed(SelectedId(cboComAut)))
        lstComAut.AddItem(EntryText(cboComAut.Text(), link->Valor));
}

void frmConfiguracion::cboTipo_Click()
{
    if (cboTipo.ListIndex() < 0)
        return;
    lstDeducPorc.Clear();
    for (const auto &link : m_tipos.Listed(SelectedId(cboTipo)))
        lstDeducPorc.AddItem(EntryText(cboTipo.Text(), link->Valor));
}

void frmConfiguracion::cmdAnadirComPor_Click()
{
    if (cboComAut.ListIndex() < 0 || cboPorc.ListIndex() < 0)
        return Refuse(QStringLiteral("Debe seleccionar una comunidad autónoma y un porcentaje"));
    const std::optional<float> valor = SelectedPercentage(cboPorc);
    if (!valor)
        return;
    const qint16 comunidad = SelectedId(cboComAut);
    const qint16 deduccion = SelectedId(cboPorc);
    if (m_comunidades.Add(comunidad, deduccion, *valor) == CommunityLinks::Added::AlreadyThere)
        return Inform(QStringLiteral("Ya existe para esta comunidad autónoma ese porcentaje"));
    lstComAut.AddItem(EntryText(cboComAut.Text(), m_comunidades.Find(comunidad, deduccion)->Valor));
}

void frmConfiguracion::cmdAnadirTPor_Click()
{
    if (cboTipo.ListIndex() < 0 || cboDeduccion.ListIndex() < 0)
        return Refuse(QStringLiteral("Debe seleccionar un tipo de donativo y un porcentaje"));
    const std::optional<float> valor = SelectedPercentage(cboDeduccion);
    if (!valor)
        return;
    const qint16 tipo = SelectedId(cboTipo);
    const qint16 deduccion = SelectedId(cboDeduccion);
    if (m_tipos.Add(tipo, deduccion, *valor) == TypeLinks::Added::AlreadyThere)
        return Inform(QStringLiteral("Ya existe para este donativo ese porcentaje"));
    lstDeducPorc.AddItem(EntryText(cboTipo.Text(), m_tipos.Find(tipo, deduccion)->Valor));
}

void frmConfiguracion::cmdEliminarComPor_Click()
{
    if (lstComAut.ListIndex() < 0 || cboComAut.ListIndex() < 0)
        return Refuse(QStringLiteral("Debe seleccionar algún dato"));
    const QString entrada = lstComAut.Text();
    const qint16 comunidad = SelectedId(cboComAut);
    // The percentage the deduction step chose for this community.
    if (const auto elegida = m_cursos.colComAut.Find(KeyOf(comunidad)))
        if (EntryText(cboComAut.Text(), elegida->Valor) == entrada)
            return Refuse(kEnUso);
    for (const auto &link : m_comunidades.Listed(comunidad)) {
        if (EntryText(cboComAut.Text(), link->Valor) == entrada) {
            m_comunidades.Remove(link);
            break;
        }
    }
    lstComAut.RemoveItem(lstComAut.ListIndex());
}

bool frmConfiguracion::PairInUse(const QString &entrada) const
{
    for (const QString &linea : m_paso.lstActPorc.Texts()) {
        QString par = m_paso.FindListedPair(linea).par;
        if (par.isEmpty())
            par = linea.mid(linea.indexOf(kSeparador) + kSeparador.size());
        // The pair reads "type - percentage%": the last " - " is the one
        // before the percentage, whatever the type's name holds.
        const qsizetype guion = par.lastIndexOf(QStringLiteral(" - "));
        if (guion < 0)
            continue;
        if (par.left(guion) + kSeparador + par.mid(guion + 3) == entrada + QStringLiteral("%"))
            return true;
    }
    return false;
}

void frmConfiguracion::cmdElimTPor_Click()
{
    if (lstDeducPorc.ListIndex() < 0 || cboTipo.ListIndex() < 0)
        return Refuse(QStringLiteral("Debe seleccionar algún dato"));
    const QString entrada = lstDeducPorc.Text();
    if (PairInUse(entrada))
        return Refuse(kEnUso);
    for (const auto &link : m_tipos.Listed(SelectedId(cboTipo))) {
        if (EntryText(cboTipo.Text(), link->Valor) == entrada) {
            m_tipos.Remove(link);
            break;
        }
    }
    lstDeducPorc.RemoveItem(lstDeducPorc.ListIndex());
}

void frmConfiguracion::cmdNComAut_Click()
{
    ui().ShowModal(std::make_shared<frmNComAut>(m_run, *this));
}

void frmConfiguracion::cmdNPorc_Click()
{
    ui().ShowModal(std::make_shared<frmNPorcentaje>(m_run, *this));
}

void frmConfiguracion::cmdNTipo_Click()
{
    ui().ShowModal(std::make_shared<frmNTipoDeduccion>(m_run, *this));
}

void frmConfiguracion::cmdAceptar_Click()
{
    // All the link changes or none: a failure midway leaves the catalogue
    // as it was and the window open with the changes, to try again.
    try {
        Connection &m182 = m_run.OpenM182();
        Connection::Transaction transaccion(m182);
        for (const QString &sentencia : LinkStatements(m_comunidades, m_tipos))
            m182.Execute(sentencia);
        transaccion.Commit();
    } catch (const DatabaseError &error) {
        ui().Beep();
        ui().MsgBox(QStringLiteral("No se han podido guardar los cambios de la configuración de deducciones y no se ha "
                                   "guardado ninguno. ")
                        + error.Message()
                        + QStringLiteral("\n\nCompruebe que la base de datos del modelo 182 no está abierta en otro "
                                         "programa y pulse «Aceptar» de nuevo, o «Cancelar» para salir sin guardar."),
                    vbCritical);
        return;
    }
    // The deduction step offers the catalogue as it is now.
    m_paso.LoadCatalogues();
    Unload();
}
