#pragma once

#include <QString>

// The kinds of column the creation routines declare, written out for the
// engine that holds the database.
enum class ColumnType {
    Text, // compares with the Spanish, case-insensitive collation
    Integer,
    Real,
    Boolean,    // an integer holding -1 (true) or 0, so flags sum as Access sums them
    Key,        // the integer primary key; numbered by the database when none is given
    AutoNumber, // the same, for tables whose keys always come from the database
};

enum class SqlEngine { SQLite, PostgreSQL };

QString ColumnTypeSql(ColumnType type, SqlEngine engine);
