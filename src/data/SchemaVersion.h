#pragma once

// The schema version that every database this program creates records in
// PRAGMA user_version. A file with a higher number was written by a newer
// program and is refused on open.
constexpr int kSchemaVersion = 1;

// The collation that gives text columns of our SQLite schemas the behaviour
// the statements expect: equality ignores case (accented capitals included),
// ordering is Spanish. Registered on every SQLite connection we open.
#define M182_TEXT_COLLATION "ES_CI"
