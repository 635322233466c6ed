#include "CatalogueFixture.h"

#include "catalogue/CatalogueComponents.h"
#include "data/Connection.h"
#include "wizard/frmActividadMes.h"
#include "wizard/frmActividadPonderacion.h"
#include "wizard/frmSelActividad.h"
#include "wizard/frmSelCursos.h"

void CatalogueFixture::InstallCatalogue()
{
    Install();
    // As the add-in entry does for every run.
    RegisterCatalogueWindows(run().Componentes());
    Connection m182;
    m182.Open(paths.modelo182ConnectionString);
    for (const char *sql :
         {"DELETE FROM TipoDonativos_Deducciones", "DELETE FROM ComunidadesAutonomas_Deducciones", "DELETE FROM Provincias",
          "DELETE FROM TipoDonativos", "DELETE FROM Deducciones", "DELETE FROM ComunidadesAutonomas",
          "DELETE FROM sqlite_sequence", // new keys follow the rows below
          "INSERT INTO ComunidadesAutonomas (IDComunidadAutonoma, ComunidadAutonoma, CodigoComunidadAutonoma) "
          "VALUES (1, 'Andalucía', '01'), (2, 'Aragón', '02'), (3, 'Ceuta', '00')",
          "INSERT INTO Deducciones (IDDeduccion, Deduccion) VALUES (1, 80), (2, 35), (3, 13.5), (4, 10), (5, 15)",
          "INSERT INTO TipoDonativos (IDTipoDonativo, TipoDonativo, CodigoDonativo) "
          "VALUES (1, 'Donativo', 'D1'), (2, 'Cuota de socio', 'C2'), (3, 'D''Aportación', 'A3')",
          "INSERT INTO TipoDonativos_Deducciones VALUES (1, 1), (1, 2), (2, 3), (3, 1)",
          "INSERT INTO ComunidadesAutonomas_Deducciones VALUES (1, 4), (1, 5), (2, 4)"})
        m182.Execute(QString::fromUtf8(sql));
    statements.clear();
}

frmActividadPonderacion &CatalogueFixture::OpenStep()
{
    if (!addin)
        InstallCatalogue();
    cursos = &SelectYears({"2023-2024"});
    cursos->cmdAceptar.Press();
    Top<frmSelActividad>().cmdAgregarTodos.Press();
    Top<frmSelActividad>().cmdAceptar.Press();
    frmActividadMes &months = Top<frmActividadMes>();
    for (int i = 0; i < months.cboActCurEsc.ListCount(); ++i) {
        months.cboActCurEsc.SetListIndex(i);
        months.cmdAgregarTodos.Press();
    }
    months.cmdAceptar.Press();
    step = &Top<frmActividadPonderacion>();
    TakeStatements();
    ui.ClearLog();
    return *step;
}

frmConfiguracion &CatalogueFixture::OpenConfiguration()
{
    if (!step)
        OpenStep();
    step->cmdConfigurar.Press();
    return Top<frmConfiguracion>();
}

QStringList CatalogueFixture::Rows(const QString &sql) const
{
    Connection m182;
    m182.Open(paths.modelo182ConnectionString);
    QStringList rows;
    for (Recordset rs = m182.Execute(sql); !rs.Eof(); rs.MoveNext()) {
        QStringList fields;
        for (int i = 0; i < rs.FieldCount(); ++i)
            fields << rs.Fields(i).toString();
        rows << fields.join(QLatin1Char('|'));
    }
    return rows;
}

QStringList CatalogueFixture::CommunityLinkRows() const
{
    QStringList rows = Rows("SELECT codComunidadAutonoma, codDeduccion FROM ComunidadesAutonomas_Deducciones");
    rows.replaceInStrings("|", "-");
    rows.sort();
    return rows;
}

QStringList CatalogueFixture::TypeLinkRows() const
{
    QStringList rows = Rows("SELECT codTipoDonativo, codDeduccion FROM TipoDonativos_Deducciones");
    rows.replaceInStrings("|", "-");
    rows.sort();
    return rows;
}

QStringList CatalogueFixture::TakeWrites()
{
    QStringList writes;
    for (const QString &sql : TakeStatements())
        if (sql.startsWith("INSERT") || sql.startsWith("DELETE"))
            writes << sql;
    return writes;
}
