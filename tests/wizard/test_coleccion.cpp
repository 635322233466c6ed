#include "wizard/Coleccion.h"
#include "wizard/Registros.h"

#include <gtest/gtest.h>

TEST(Coleccion, KeepsInsertionOrderAndFindsByDecimalKey)
{
    Coleccion<cActividad> col;
    for (int id : {30, 4, 120}) {
        auto a = std::make_shared<cActividad>();
        a->idActividad = qint16(id);
        col.Add(a, Clave(id));
    }
    EXPECT_EQ(col.Keys(), (QStringList{QStringLiteral("30"), QStringLiteral("4"), QStringLiteral("120")}));
    EXPECT_EQ(col.Item(QStringLiteral("4"))->idActividad, 4);
    EXPECT_EQ(col.Find(QStringLiteral("5")), nullptr);
    col.Remove(QStringLiteral("30"));
    QList<qint16> ids;
    for (const auto &a : col.Items())
        ids << a->idActividad;
    EXPECT_EQ(ids, (QList<qint16>{4, 120}));
}

TEST(Coleccion, AMissingOrRepeatedKeyIsACatchableError)
{
    Coleccion<cComAut> col;
    col.Add(std::make_shared<cComAut>(), QStringLiteral("1"));
    try {
        col.Item(QStringLiteral("2"));
        FAIL();
    } catch (const CollectionKeyError &error) {
        EXPECT_EQ(error.Key(), QStringLiteral("2"));
        EXPECT_STREQ(error.what(), "La clave «2» no existe en la colección.");
    }
    EXPECT_THROW(col.Add(std::make_shared<cComAut>(), QStringLiteral("1")), CollectionKeyError);
    EXPECT_THROW(col.Remove(QStringLiteral("9")), CollectionKeyError);
    EXPECT_EQ(col.Count(), 1);
}

TEST(Coleccion, TheSameRecordIsSharedNotCopied)
{
    ColCursosEscolares cursos;
    auto curso = std::make_shared<cCursoEscolar>();
    cursos.Add(curso, Clave(3));
    cursos.Item(QStringLiteral("3"))->colActividades.Add(std::make_shared<cActividad>(), Clave(1));
    EXPECT_EQ(curso->colActividades.Count(), 1);
}

TEST(Etiquetas, AnActivityIsListedWithItsYear)
{
    cCursoEscolar curso;
    curso.Nombre = QStringLiteral("2024-2025");
    cActividad actividad;
    actividad.Nombre = QStringLiteral("Natación");
    EXPECT_EQ(EtiquetaActividad(curso, actividad), QStringLiteral("2024-2025 - Natación"));
}
