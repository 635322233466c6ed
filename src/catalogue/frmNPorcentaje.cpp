#include "catalogue/frmNPorcentaje.h"

#include "catalogue/frmConfiguracion.h"
#include "session/WizardRun.h"
#include "session/cCentroApi.h"
#include "util/VbFormat.h"

frmNPorcentaje::frmNPorcentaje(WizardRun &run, frmConfiguracion &configuracion)
    : NewEntryDialog(run, configuracion, QStringLiteral("frmNPorcentaje"), QStringLiteral("Nuevo Porcentaje"))
{
    txtPorcentaje.KeyPress = [this](int &keyAscii) { txtPorcentaje_KeyPress(keyAscii); };
    cmdAceptar.Click = [this] { cmdAceptar_Click(); };
    cmdCancelar.Click = [this] { cmdCancelar_Click(); };
}

void frmNPorcentaje::txtPorcentaje_KeyPress(int &keyAscii)
{
    // The host's object, created once for this dialog.
    if (!m_api)
        m_api = m_run.Componentes().CreateObjectAs<cCentroApi>(QString::fromLatin1(cCentroApi::ProgId));
    keyAscii = m_api->VerificarEuros(keyAscii, txtPorcentaje.Text(), m_run.Locale());
}

std::optional<double> frmNPorcentaje::Percentage() const
{
    const std::optional<double> valor = ReadNumber(txtPorcentaje.Text(), m_run.Locale());
    if (!valor || *valor < 0 || *valor > 100)
        return std::nullopt;
    return valor;
}

QString frmNPorcentaje::SqlValue() const
{
    return SqlDecimal(Percentage().value_or(0));
}

QString frmNPorcentaje::Refusal() const
{
    if (!Percentage())
        return QStringLiteral("Debe introducir un dato numérico entre 0 y 100");
    return QString();
}

QString frmNPorcentaje::DuplicateQuery() const
{
    return QStringLiteral("SELECT deduccion FROM deducciones WHERE deduccion=") + SqlValue();
}

QString frmNPorcentaje::DuplicateMessage() const
{
    return QStringLiteral("El dato introducido ya existe en la base de datos");
}

QString frmNPorcentaje::InsertStatement() const
{
    return QStringLiteral("INSERT INTO deducciones (deduccion) VALUES (") + SqlValue() + QStringLiteral(")");
}

QString frmNPorcentaje::NewIdQuery() const
{
    return QStringLiteral("SELECT MAX(IDDeduccion) FROM Deducciones");
}

void frmNPorcentaje::Publish(qint16 id)
{
    // Both percentage lists, with the text as typed.
    for (ComboBox *combo : {&m_configuracion.cboPorc, &m_configuracion.cboDeduccion}) {
        combo->AddItem(txtPorcentaje.Text());
        combo->SetItemData(combo->NewIndex(), id);
    }
}
