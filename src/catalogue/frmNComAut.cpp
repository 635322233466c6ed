#include "catalogue/frmNComAut.h"

#include "catalogue/frmConfiguracion.h"
#include "session/WizardRun.h"
#include "util/VbFormat.h"

frmNComAut::frmNComAut(WizardRun &run, frmConfiguracion &configuracion)
    : NewEntryDialog(run, configuracion, QStringLiteral("frmNComAut"), QStringLiteral("Nueva Comunidad Autónoma"))
{
    cmdAceptar.Click = [this] { cmdAceptar_Click(); };
    cmdCancelar.Click = [this] { cmdCancelar_Click(); };
}

QString frmNComAut::Refusal() const
{
    const QString codigo = txtCodComAut.Text();
    if (codigo.isEmpty() || txtNomComAut.Text().isEmpty())
        return QStringLiteral("Debe rellenar todos los campos");
    // Only the lower length bound and the numeric form are checked.
    if (codigo.size() < 2 || !IsNumeric(codigo, m_run.Locale()))
        return QStringLiteral("El campo código debe ser numérico de dos dígitos (por ejemplo 04 o 37)");
    return QString();
}

QString frmNComAut::DuplicateQuery() const
{
    return QStringLiteral("SELECT comunidadautonoma FROM comunidadesautonomas WHERE comunidadautonoma='")
           + SqlEscape(txtNomComAut.Text()) + QStringLiteral("'");
}

QString frmNComAut::DuplicateMessage() const
{
    return QStringLiteral("No puede introducir una comunidad autónoma existente");
}

QString frmNComAut::InsertStatement() const
{
    return QStringLiteral("INSERT INTO ComunidadesAutonomas (comunidadautonoma,codigocomunidadautonoma) VALUES ('")
           + SqlEscape(txtNomComAut.Text()) + QStringLiteral("','") + SqlEscape(txtCodComAut.Text()) + QStringLiteral("')");
}

QString frmNComAut::NewIdQuery() const
{
    return QStringLiteral("SELECT MAX(IDComunidadAutonoma) FROM comunidadesautonomas");
}

void frmNComAut::Publish(qint16 id)
{
    ComboBox &comunidades = m_configuracion.cboComAut;
    comunidades.AddItem(txtNomComAut.Text());
    comunidades.SetItemData(comunidades.NewIndex(), id);
    // The deduction step learns of the community through the wizard's records.
    ColComAut &registros = m_configuracion.ComunidadesDelAsistente();
    if (!registros.Contains(KeyOf(id))) {
        auto comunidad = std::make_shared<cComAut>();
        comunidad->IDComAut = id;
        comunidad->IDDeduccion = -1;
        comunidad->Valor = -1;
        registros.Add(comunidad, KeyOf(id));
    }
}
