#include "wizard/Coleccion.h"
#include "wizard/Registros.h"

#include <gtest/gtest.h>

TEST(Coleccion, KeepsInsertionOrderSharesItsRecordsAndRefusesBadKeys)
{
    ColCursosEscolares col;
    for (int id : {30, 4, 120}) {
        auto curso = std::make_shared<cCursoEscolar>();
        curso->idCursoEscolar = qint16(id);
        col.Add(curso, KeyOf(id));
    }
    EXPECT_EQ(col.Keys(), (QStringList{"30", "4", "120"}));
    col.Item("4")->colActividades.Add(std::make_shared<cActividad>(), "1");
    EXPECT_EQ(col.Items().at(1)->colActividades.Count(), 1); // the same record, not a copy
    col.Remove("30");
    EXPECT_EQ(col.Items().at(0)->idCursoEscolar, 4);
    EXPECT_EQ(col.Find("5"), nullptr);
    try {
        col.Item("2");
        FAIL();
    } catch (const CollectionKeyError &error) {
        EXPECT_EQ(error.Key(), "2");
        EXPECT_STREQ(error.what(), "La clave «2» no existe en la colección.");
    }
    EXPECT_THROW(col.Add(std::make_shared<cCursoEscolar>(), "4"), CollectionKeyError);
    EXPECT_THROW(col.Remove("9"), CollectionKeyError);
    EXPECT_EQ(col.Count(), 2);
}
