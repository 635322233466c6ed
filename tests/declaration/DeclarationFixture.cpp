#include "DeclarationFixture.h"

#include "wizard/frmActividadMes.h"
#include "wizard/frmActividadPonderacion.h"
#include "wizard/frmSelActividad.h"
#include "wizard/frmSelCursos.h"

frmActividadAlumno &DeclarationFixture::WalkToDonors(const QStringList &activities)
{
    Install();
    SelectYears({"2024-2025"}).cmdAceptar.Press();
    for (const QString &activity : activities) {
        Pick(Top<frmSelActividad>().lstDisponibles, activity);
        Top<frmSelActividad>().cmdAgregarUno.Press();
    }
    Top<frmSelActividad>().cmdAceptar.Press();
    Top<frmActividadMes>().cmdAgregarTodos.Press();
    Top<frmActividadMes>().cmdAceptar.Press();
    frmActividadPonderacion &deductions = Top<frmActividadPonderacion>();
    for (int i = 0; i < deductions.lstActividad.ListCount(); ++i) {
        deductions.lstActividad.SetListIndex(0);
        deductions.cboTipoPorcentaje.SetListIndex(0);
        deductions.cmdAnadir.Press();
    }
    deductions.cmdSiguiente.Press();
    frmActividadAlumno &donors = Top<frmActividadAlumno>();
    donors.Hoy = [this] { return today; };
    donors.VersionOffice = [] { return QString(); };
    ui.ClearLog();
    statements.clear();
    return donors;
}

QList<QStringList> DeclarationFixture::Rows(const QString &file, const QString &sql)
{
    Connection connection(QStringLiteral("Provider=SQLite;Data Source=") + file);
    connection.Open();
    Recordset rs = connection.Execute(sql);
    QList<QStringList> rows;
    for (const QVariantList &row : rs.Rows()) {
        QStringList texts;
        for (const QVariant &value : row)
            texts << (value.isNull() ? QStringLiteral("<null>") : value.toString());
        rows << texts;
    }
    connection.Close();
    return rows;
}

QList<QStringList> DeclarationFixture::Snapshot()
{
    QList<QStringList> all;
    for (const char *table : {"Declarantes", "Donantes", "CartaDonantes"}) {
        all << QStringList{QString::fromLatin1(table)};
        all << Declaration(QStringLiteral("SELECT * FROM ") + QString::fromLatin1(table));
    }
    return all;
}

void DeclarationFixture::AddPayer(int member, const QString &surname1, const QString &surname2, const QString &name,
                                  const QString &dni, const QString &province, int student, const QString &studentSurname)
{
    YearDescription &year = description.years[1];
    year.members.append({member, surname1, surname2, name, member, dni,
                         AddressDescription{QStringLiteral("Calle ") + surname1 + QStringLiteral(" 3"),
                                            QStringLiteral("Villa"), QStringLiteral("28002"), province}});
    year.students.append({student, studentSurname, QStringLiteral("Ruiz"), QStringLiteral("Eva"), member});
    year.enrolments.append({student, 1, member, 95.0, SchoolMonths()});
}
