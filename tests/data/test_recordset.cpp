// Reading rows from a Recordset as the forms do: EOF/MoveNext loops and
// fields by name, and the errors of a wrong read.

#include "data/Recordset.h"

#include "test_connection_fixture.h"

#include <gtest/gtest.h>

namespace {

using connection_test::ExpectDatabaseError;
using connection_test::U8;

Recordset TwoRows()
{
    return Recordset({QStringLiteral("IDCentro"), QStringLiteral("Nombre")},
                     {{QVariant(1), QVariant(QStringLiteral("Colegio Uno"))},
                      {QVariant(2), QVariant()}});
}

TEST(RecordsetReading, WalksTheRowsInOrderUntilEof)
{
    Recordset rs = TwoRows();
    EXPECT_EQ(rs.RecordCount(), 2);
    EXPECT_EQ(rs.FieldCount(), 2);
    ASSERT_FALSE(rs.Eof());
    EXPECT_EQ(rs.Fields(QStringLiteral("IDCentro")).toInt(), 1);
    EXPECT_EQ(U8(rs.Fields(QStringLiteral("Nombre")).toString()), "Colegio Uno");
    rs.MoveNext();
    ASSERT_FALSE(rs.Eof());
    EXPECT_EQ(rs.Fields(0).toInt(), 2);
    rs.MoveNext();
    EXPECT_TRUE(rs.Eof());
    rs.MoveFirst();
    EXPECT_EQ(rs.Fields(0).toInt(), 1);
}

TEST(RecordsetReading, FieldNamesIgnoreCase)
{
    Recordset rs = TwoRows();
    EXPECT_EQ(rs.Fields(QStringLiteral("idcentro")).toInt(), 1);
    EXPECT_EQ(U8(rs.Fields(QStringLiteral("NOMBRE")).toString()), "Colegio Uno");
    EXPECT_EQ(rs.FieldNames(), QStringList({QStringLiteral("IDCentro"), QStringLiteral("Nombre")}));
}

TEST(RecordsetReading, DatabaseNullIsANullVariant)
{
    Recordset rs = TwoRows();
    rs.MoveNext();
    EXPECT_TRUE(rs.Fields(QStringLiteral("Nombre")).isNull());
}

TEST(RecordsetReading, EmptyRecordsetIsAtEofAtOnce)
{
    Recordset rs({QStringLiteral("A")}, {});
    EXPECT_TRUE(rs.Eof());
    EXPECT_EQ(rs.RecordCount(), 0);
    Recordset none;
    EXPECT_TRUE(none.Eof());
    EXPECT_EQ(none.FieldCount(), 0);
}

TEST(RecordsetErrors, UnknownFieldNamesTheField)
{
    Recordset rs = TwoRows();
    const DatabaseError e = ExpectDatabaseError([&] { rs.Fields(QStringLiteral("CIF")); });
    EXPECT_TRUE(e.Message().contains(QStringLiteral("«CIF»"))) << U8(e.Message());
}

TEST(RecordsetErrors, ReadingAtEofIsAnError)
{
    Recordset rs = TwoRows();
    rs.MoveNext();
    rs.MoveNext();
    const DatabaseError e = ExpectDatabaseError([&] { rs.Fields(0); });
    EXPECT_TRUE(e.Message().startsWith(QStringLiteral("No hay registro actual"))) << U8(e.Message());
}

TEST(RecordsetErrors, MovingPastEofIsAnError)
{
    Recordset rs({QStringLiteral("A")}, {});
    ExpectDatabaseError([&] { rs.MoveNext(); });
}

TEST(RecordsetErrors, ClosedRecordsetCannotBeRead)
{
    Recordset rs = TwoRows();
    EXPECT_TRUE(rs.IsOpen());
    rs.Close();
    EXPECT_FALSE(rs.IsOpen());
    rs.Close(); // closing twice is harmless
    const DatabaseError e = ExpectDatabaseError([&] { rs.Fields(0); });
    EXPECT_EQ(U8(e.Message()), "La operación no está permitida si el objeto está cerrado.");
}

} // namespace
