// The Jet forms adapted before a statement runs on a PostgreSQL server: the
// texts sent, worked out by hand. No server needed.
#include "data/PostgresDialect.h"

#include <gtest/gtest.h>

namespace {

struct Case
{
    const char *why;
    const char *jet;
    const char *server;
};

TEST(PostgresDialect, AdaptsOnlyWhatTheServerReadsOtherwise)
{
    const Case cases[] = {
        {"a statement without Jet forms goes as written", "SELECT IDCentro, Nombre FROM Centro WHERE IDCentro=7",
         "SELECT IDCentro, Nombre FROM Centro WHERE IDCentro=7"},
        {"Boolean literals are the -1 / 0 the flag columns hold",
         "UPDATE ALMFModelo182 SET Mostrar=True WHERE Mostrar=FALSE", "UPDATE ALMFModelo182 SET Mostrar=-1 WHERE Mostrar=0"},
        {"bracketed names become quoted names folded as unquoted ones are",
         "SELECT [CartaDonantes].* FROM [CartaDonantes] WHERE [Apellido1]='X'",
         "SELECT \"cartadonantes\".* FROM \"cartadonantes\" WHERE \"apellido1\"='X'"},
        {"a bracketed name keeps its blanks, accents and a double quote (doubled)",
         "SELECT [Año Escolar], [Dice \"sí\"] FROM T", "SELECT \"año escolar\", \"dice \"\"sí\"\"\" FROM T"},
        {"quoted text is never touched", "SELECT * FROM T WHERE a='[True] ORDER BY b' AND c='It''s False'",
         "SELECT * FROM T WHERE a='[True] ORDER BY b' AND c='It''s False'"},
        {"each ascending key of the final ORDER BY puts NULLs first, as Jet does",
         "SELECT * FROM CursoEscAct ORDER BY IDCursoEscolar, IDActividad",
         "SELECT * FROM CursoEscAct ORDER BY IDCursoEscolar NULLS FIRST, IDActividad NULLS FIRST"},
        {"blanks and the missing blank after a comma are kept",
         "SELECT * FROM Alumno ORDER BY Alumno.Apellido_1,Alumno.Apellido_2 ,  Alumno.Nombre ;",
         "SELECT * FROM Alumno ORDER BY Alumno.Apellido_1 NULLS FIRST,Alumno.Apellido_2 NULLS FIRST ,  "
         "Alumno.Nombre NULLS FIRST ;"},
        {"a descending key puts NULLs last; ASC, lower case and a key that says where its NULLs go",
         "select a from t order by a desc, b asc, c nulls last, [d] DESC",
         "select a from t order by a desc NULLS LAST, b asc NULLS FIRST, c nulls last, \"d\" DESC NULLS LAST"},
        {"an ORDER BY inside parentheses or text is not the statement's own",
         "SELECT * FROM (SELECT a FROM t ORDER BY a) s WHERE x='ORDER BY y'",
         "SELECT * FROM (SELECT a FROM t ORDER BY a) s WHERE x='ORDER BY y'"},
        {"a key that is a function call keeps its commas", "SELECT a FROM t ORDER BY coalesce(a, b), Mid(c, 1, 2) DESC",
         "SELECT a FROM t ORDER BY coalesce(a, b) NULLS FIRST, Mid(c, 1, 2) DESC NULLS LAST"},
        {"a word that only contains ORDER is not the clause", "SELECT Ordered FROM Border WHERE x=True",
         "SELECT Ordered FROM Border WHERE x=-1"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.why);
        EXPECT_EQ(PostgresDialect::Adapt(QString::fromUtf8(c.jet)).toStdString(), std::string(c.server));
    }
}

TEST(PostgresDialect, TheDonorQueryKeepsItsJoinsAndOrdersPayerlessRowsFirst)
{
    const QString tail = QStringLiteral(
        " ORDER BY Alumno.Apellido_1,Alumno.Apellido_2, Alumno.Nombre, Miembrofamilia.Apellido1, "
        "Miembrofamilia.Apellido2, Miembrofamilia.Nombre");
    const QString head = QStringLiteral(
        "SELECT Alumno.Nombre FROM Alumno INNER JOIN (Alumno_Actividad_Miembro LEFT JOIN MiembroFamilia ON "
        "MiembroFamilia.IDMiembroFamilia=Alumno_Actividad_Miembro.codMiembroFamiliaPagador) ON "
        "Alumno.IDAlumno=Alumno_Actividad_Miembro.codAlumno WHERE codActividad=5");
    EXPECT_EQ(PostgresDialect::Adapt(head + tail),
              head
                  + " ORDER BY Alumno.Apellido_1 NULLS FIRST,Alumno.Apellido_2 NULLS FIRST, Alumno.Nombre NULLS FIRST, "
                    "Miembrofamilia.Apellido1 NULLS FIRST, Miembrofamilia.Apellido2 NULLS FIRST, "
                    "Miembrofamilia.Nombre NULLS FIRST");
}

} // namespace
