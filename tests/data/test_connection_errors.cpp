// DatabaseError: what a message box and a log show of a database failure.

#include "data/DatabaseError.h"

#include "test_connection_fixture.h"

#include <gtest/gtest.h>

namespace {

using connection_test::U8;

TEST(DatabaseErrorText, MessageAloneWithoutStatement)
{
    const DatabaseError e(QStringLiteral("La conexión está cerrada."));
    EXPECT_EQ(U8(e.Message()), "La conexión está cerrada.");
    EXPECT_EQ(U8(e.Statement()), "");
    EXPECT_EQ(U8(e.Describe()), "La conexión está cerrada.");
    EXPECT_STREQ(e.what(), "La conexión está cerrada.");
}

TEST(DatabaseErrorText, MessageThenBlankLineThenStatement)
{
    const DatabaseError e(QStringLiteral("no such table: Declarantes"), QStringLiteral("DELETE FROM Declarantes"));
    EXPECT_EQ(U8(e.Describe()), "no such table: Declarantes\n\nDELETE FROM Declarantes");
    EXPECT_STREQ(e.what(), "no such table: Declarantes\n\nDELETE FROM Declarantes");
    EXPECT_EQ(U8(e.Statement()), "DELETE FROM Declarantes");
}

TEST(DatabaseErrorText, WhatIsUtf8)
{
    const DatabaseError e(QStringLiteral("Año «ñ»"), QStringLiteral("SELECT 'Ñ'"));
    EXPECT_STREQ(e.what(), "A\xc3\xb1o \xc2\xab\xc3\xb1\xc2\xbb\n\nSELECT '\xc3\x91'");
}

TEST(DatabaseErrorText, IsAStdException)
{
    try {
        throw DatabaseError(QStringLiteral("x"), QStringLiteral("y"));
    } catch (const std::exception &e) {
        EXPECT_STREQ(e.what(), "x\n\ny");
    }
}

} // namespace
