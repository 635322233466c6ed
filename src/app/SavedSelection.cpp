#include "SavedSelection.h"

#include "session/WizardRun.h"
#include "wizard/frmSelCursos.h"

void LoadSavedSelection(WizardRun &run, frmSelCursos &form)
{
    if (form.cboCentro.ListIndex() < 0 && form.cboCentro.ListCount() > 0)
        form.cboCentro.SetListIndex(0);
    form.blnCargarDatos = true;
    form.blnCargarDatosComAut = true;
    form.colCursosEscolares.Clear();
    form.colComAut.Clear();

    Recordset comunidades = run.ConexionCentro().Execute(QStringLiteral("SELECT * FROM ComDed"));
    for (; !comunidades.Eof(); comunidades.MoveNext()) {
        auto comunidad = std::make_shared<cComAut>();
        comunidad->IDComAut = qint16(comunidades.Fields(QStringLiteral("IDComAut")).toInt());
        comunidad->IDDeduccion = qint16(comunidades.Fields(QStringLiteral("IDDeduc")).toInt());
        comunidad->Valor = comunidades.Fields(QStringLiteral("Valor")).toFloat();
        comunidad->Estado = 0;
        form.colComAut.Add(comunidad, KeyOf(comunidad->IDComAut));
    }
    comunidades.Close();

    form.cmdEliminarTodos.Press();
    Recordset rs = run.ConexionCentro().Execute(
        QStringLiteral("SELECT * FROM CursoEscAct ORDER BY IDCursoEscolar, IDActividad"));
    std::shared_ptr<cCursoEscolar> curso;
    for (; !rs.Eof(); rs.MoveNext()) {
        const qint16 id = qint16(rs.Fields(QStringLiteral("IDCursoEscolar")).toInt());
        if (!curso || curso->idCursoEscolar != id) {
            curso = std::make_shared<cCursoEscolar>();
            curso->idCursoEscolar = id;
            curso->Nombre = rs.Fields(QStringLiteral("Nombre")).toString();
            curso->conBD = rs.Fields(QStringLiteral("conBD")).toString();
            form.colCursosEscolares.Add(curso, KeyOf(id));
            for (int i = 0; i < form.lstDisponibles.ListCount(); ++i) {
                if (form.lstDisponibles.ItemData(i) == id) {
                    form.lstDisponibles.SetListIndex(i);
                    form.cmdAgregarUno.Press();
                    break;
                }
            }
        }
        auto actividad = std::make_shared<cActividad>();
        actividad->idActividad = qint16(rs.Fields(QStringLiteral("IDActividad")).toInt());
        actividad->Nombre = rs.Fields(QStringLiteral("ActNom")).toString();
        actividad->Deduccion = rs.Fields(QStringLiteral("Deduc")).toDouble();
        actividad->TipoDonativo = rs.Fields(QStringLiteral("TipoDon")).toString();
        actividad->TipoDonativoDeduccion = rs.Fields(QStringLiteral("TipoDonDed")).toString();
        actividad->MesesPago = rs.Fields(QStringLiteral("Meses")).toString();
        curso->colActividades.Add(actividad, KeyOf(actividad->idActividad));
    }
    rs.Close();
}
