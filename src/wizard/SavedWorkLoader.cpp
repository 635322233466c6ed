#include "wizard/SavedWorkLoader.h"

#include "data/Connection.h"
#include "session/cConstCol.h"
#include "util/VbFormat.h"

namespace {

QString Text(const Recordset &rs, const char *field)
{
    const QVariant value = rs.Fields(QLatin1String(field));
    return value.isNull() ? QString() : value.toString();
}

// A stored number whatever its column type: a text written with either
// decimal separator reads as well; nothing and garbage read as 0.
double Number(const Recordset &rs, const char *field)
{
    const QVariant value = rs.Fields(QLatin1String(field));
    if (value.isNull())
        return 0;
    if (value.typeId() == QMetaType::QString)
        return ReadNumber(value.toString(), QLocale::c()).value_or(0.0);
    return value.toDouble();
}

qint16 Id16(const Recordset &rs, const char *field)
{
    return qint16(Number(rs, field));
}

void ReadCommunities(Connection &centro, ColComAut &comunidades)
{
    Recordset rs = centro.Execute(QStringLiteral("SELECT * FROM ComDed"));
    for (; !rs.Eof(); rs.MoveNext()) {
        auto comunidad = std::make_shared<cComAut>();
        comunidad->IDComAut = Id16(rs, "IDComAut");
        comunidad->IDDeduccion = Id16(rs, "IDDeduc");
        comunidad->Valor = float(Number(rs, "Valor"));
        comunidad->Estado = cConstCol().NoModificado();
        comunidades.Add(comunidad, KeyOf(comunidad->IDComAut));
    }
    rs.Close();
}

void ReadActivities(Connection &centro, ColCursosEscolares &cursos)
{
    Recordset rs = centro.Execute(QStringLiteral("SELECT * FROM CursoEscAct ORDER BY IDCursoEscolar, IDActividad"));
    std::shared_ptr<cCursoEscolar> curso;
    for (; !rs.Eof(); rs.MoveNext()) {
        const qint16 idCurso = Id16(rs, "IDCursoEscolar");
        if (!curso || curso->idCursoEscolar != idCurso) {
            curso = std::make_shared<cCursoEscolar>();
            curso->idCursoEscolar = idCurso;
            curso->Nombre = Text(rs, "Nombre");
            curso->conBD = Text(rs, "conBD");
            cursos.Add(curso, KeyOf(idCurso));
        }
        auto actividad = std::make_shared<cActividad>();
        actividad->idActividad = Id16(rs, "IDActividad");
        actividad->Nombre = Text(rs, "ActNom");
        actividad->Deduccion = Number(rs, "Deduc");
        actividad->TipoDonativo = Text(rs, "TipoDon");
        actividad->TipoDonativoDeduccion = Text(rs, "TipoDonDed");
        actividad->MesesPago = Text(rs, "Meses");
        curso->colActividades.Add(actividad, KeyOf(actividad->idActividad));
    }
    rs.Close();
}

} // namespace

SavedWork ReadSavedWork(Connection &centro)
{
    SavedWork work;
    ReadCommunities(centro, work.colComAut);
    ReadActivities(centro, work.colCursosEscolares);
    return work;
}
