#include "catalogue/frmNTipoDeduccion.h"

#include "catalogue/frmConfiguracion.h"
#include "util/VbFormat.h"

frmNTipoDeduccion::frmNTipoDeduccion(WizardRun &run, frmConfiguracion &configuracion)
    : NewEntryDialog(run, configuracion, QStringLiteral("frmNTipoDeduccion"), QStringLiteral("Nuevo Tipo de Donativo"))
{
    cmdAceptar.Click = [this] { cmdAceptar_Click(); };
    cmdCancelar.Click = [this] { cmdCancelar_Click(); };
}

QString frmNTipoDeduccion::Refusal() const
{
    if (txtTDonativo.Text().isEmpty() || txtCDonativo.Text().isEmpty())
        return QStringLiteral("Debe introducir todos los datos");
    return QString();
}

QString frmNTipoDeduccion::DuplicateQuery() const
{
    // Only the name must be new; two types may share a code.
    return QStringLiteral("SELECT TipoDonativo FROM TipoDonativos WHERE TipoDonativo='") + SqlEscape(txtTDonativo.Text())
           + QStringLiteral("'");
}

QString frmNTipoDeduccion::DuplicateMessage() const
{
    return QStringLiteral("El dato introducido ya existe en la base de datos");
}

QString frmNTipoDeduccion::InsertStatement() const
{
    return QStringLiteral("INSERT INTO TipoDonativos (TipoDonativo,CodigoDonativo) VALUES ('")
           + SqlEscape(txtTDonativo.Text()) + QStringLiteral("','") + SqlEscape(txtCDonativo.Text()) + QStringLiteral("')");
}

QString frmNTipoDeduccion::NewIdQuery() const
{
    return QStringLiteral("SELECT MAX(IDTipoDonativo) FROM TipoDonativos");
}

void frmNTipoDeduccion::Publish(qint16 id)
{
    ComboBox &tipos = m_configuracion.cboTipo;
    tipos.AddItem(txtTDonativo.Text());
    tipos.SetItemData(tipos.NewIndex(), id);
}
