#pragma once

#include "WizardFixture.h"

#include "data/Connection.h"
#include "wizard/frmActividadAlumno.h"
#include "wizard/frmActividadMes.h"
#include "wizard/frmActividadPonderacion.h"
#include "wizard/frmSelActividad.h"
#include "wizard/frmSelCursos.h"

#include <QMap>

// Walks the wizard to the donor step and reads the saved-work tables of the
// school database behind the program's back, so tests can compare what a
// save left there.
class DonorStepFixture : public WizardFixture
{
protected:
    // The donor step for `year` with the given activities; every month
    // with fees counts and every activity gets the first deduction pair.
    frmActividadAlumno &WalkToDonorStep(const QString &year, const QStringList &activities)
    {
        SelectYears({year}).cmdAceptar.Press();
        for (const QString &activity : activities) {
            Pick(Top<frmSelActividad>().lstDisponibles, activity);
            Top<frmSelActividad>().cmdAgregarUno.Press();
        }
        Top<frmSelActividad>().cmdAceptar.Press();
        return ForwardFromMonths();
    }

    // From the first window with its years selected (as a load leaves it)
    // on to the donor step, accepting every step as it stands.
    frmActividadAlumno &ForwardFromFirstWindow()
    {
        Top<frmSelCursos>().cmdAceptar.Press();
        Top<frmSelActividad>().cmdAceptar.Press();
        Top<frmActividadMes>().cmdAceptar.Press();
        Top<frmActividadPonderacion>().cmdSiguiente.Press();
        return Top<frmActividadAlumno>();
    }

    // Closes every window above the first one, as "<- Anterior" does.
    frmSelCursos &BackToFirstWindow()
    {
        while (ui.Stack().Count() > 1)
            ui.Unload(*ui.Stack().Top());
        return Top<frmSelCursos>();
    }

    // The grid row with this key (-1 when none).
    static int RowOf(const frmActividadAlumno &form, const QString &key)
    {
        for (int r = 1; r < form.msgMod182.Rows(); ++r)
            if (form.msgMod182.TextMatrix(r, 0) == key)
                return r;
        return -1;
    }

    // A person's edit of a cell: click, type, leave the box.
    static void EditCell(frmActividadAlumno &form, int row, int col, const QString &text)
    {
        form.msgMod182.SetRow(row);
        form.msgMod182.SetCol(col);
        form.msgMod182_Click();
        form.txtValor.SetText(text);
        form.txtValor_LostFocus();
    }

    static void ToggleMark(frmActividadAlumno &form, int row)
    {
        form.msgMod182.SetRow(row);
        form.msgMod182.SetCol(4);
        form.msgMod182_Click();
    }

    // Rows of a saved-work table as "value|value|...", each value tagged
    // with the type the database gave it, in storage order.
    QStringList TableRows(const QString &table) const
    {
        Connection centro(paths.conexionLocalCentro);
        centro.SetBaseFolder(paths.root);
        centro.Open();
        Recordset rs = centro.Execute(QStringLiteral("SELECT * FROM ") + table);
        QStringList rows;
        for (; !rs.Eof(); rs.MoveNext()) {
            QStringList values;
            for (int i = 0; i < rs.FieldCount(); ++i) {
                const QVariant value = rs.Fields(i);
                values << (value.isNull() ? QStringLiteral("NULL")
                                          : QString::fromLatin1(value.typeName()) + QLatin1Char(':') + value.toString());
            }
            rows << values.join(QLatin1Char('|'));
        }
        centro.Close();
        return rows;
    }

    // All four saved-work tables.
    QMap<QString, QStringList> SavedTables() const
    {
        QMap<QString, QStringList> tables;
        for (const char *table : {"ComDed", "CursoEscAct", "DatosModelo182", "ALMFModelo182"})
            tables.insert(QLatin1String(table), TableRows(QLatin1String(table)));
        return tables;
    }

private:
    frmActividadAlumno &ForwardFromMonths()
    {
        frmActividadMes &months = Top<frmActividadMes>();
        for (int i = 0; i < months.cboActCurEsc.ListCount(); ++i) {
            months.cboActCurEsc.SetListIndex(i);
            months.cmdAgregarTodos.Press();
        }
        months.cmdAceptar.Press();
        frmActividadPonderacion &deductions = Top<frmActividadPonderacion>();
        while (deductions.lstActividad.ListCount() > 0) {
            deductions.lstActividad.SetListIndex(0);
            deductions.cboTipoPorcentaje.SetListIndex(0);
            deductions.cmdAnadir.Press();
        }
        deductions.cmdSiguiente.Press();
        return Top<frmActividadAlumno>();
    }
};
