#include "wizard/frmSelCursos.h"

#include "controls/FormSetup.h"
#include "session/denM182.h"
#include "session/modPrincipal.h"
#include "wizard/frmSelActividad.h"

frmSelCursos::frmSelCursos(Ui &ui)
    : TwoListForm(ui, QStringLiteral("frmSelCursos"), QStringLiteral("Selección de cursos escolares para el modelo 182"))
{
    cboCentro.Click = [this] { cboCentro_Click(); };
    cmdAceptar.Click = [this] { cmdAceptar_Click(); };
    cmdCancelar.Click = [this] { cmdCancelar_Click(); };
    // Reloading saved work comes with the donor step.
    cmdCargar.SetEnabled(false);
}

QList<ControlBase *> frmSelCursos::MandatoryControls()
{
    return {&cboCentro, &lstSeleccionados};
}

void frmSelCursos::Form_Load()
{
    cConfiguracion &configuracion = modPrincipal::Configuracion();
    denM182::ConfigureDataSource(configuracion);
    modPrincipal::blnSalir = false;
    AplicarConfiguracionFormulario(*this);

    Recordset rs = modPrincipal::ConexionEntrada().Execute(
        QStringLiteral("SELECT IDCentro, Nombre FROM Centro WHERE IDCentro=") + QString::number(configuracion.intIdCentro()));
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
    Recordset rs = modPrincipal::ConexionEntrada().Execute(
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
    if (lstSeleccionados.ListCount() == 0) {
        ui().Beep();
        ui().MsgBox(QStringLiteral("Debe seleccionar algún curso escolar"), vbExclamation);
        return;
    }
    ConstruirCursosEscolares();
    ui().ShowModal(std::make_shared<frmSelActividad>(ui(), *this), [this] {
        if (modPrincipal::blnSalir)
            Unload();
    });
}

void frmSelCursos::ConstruirCursosEscolares()
{
    // A failing statement here is skipped, not reported: a year whose
    // database cannot be found is still added, with an empty connection
    // string, and the activity step says so when it opens it.
    if (!colCursosEscolares.IsEmpty()) {
        for (int i = 0; i < lstDisponibles.ListCount(); ++i) {
            const QString key = Clave(lstDisponibles.ItemData(i));
            if (colCursosEscolares.Contains(key))
                colCursosEscolares.Remove(key);
        }
    }
    for (int i = 0; i < lstSeleccionados.ListCount(); ++i) {
        const qlonglong id = lstSeleccionados.ItemData(i);
        if (colCursosEscolares.Contains(Clave(id)))
            continue;
        auto curso = std::make_shared<cCursoEscolar>();
        curso->idCursoEscolar = qint16(id);
        curso->Nombre = lstSeleccionados.List(i);
        try {
            Recordset rs = modPrincipal::ConexionEntrada().Execute(
                QStringLiteral("SELECT BD FROM CursoEscolar WHERE idcursoescolar=") + QString::number(id));
            if (!rs.Eof())
                curso->conBD = rs.Fields(QStringLiteral("BD")).toString();
        } catch (const std::exception &) {
        }
        colCursosEscolares.Add(curso, Clave(id));
    }
}
