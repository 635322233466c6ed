#pragma once

#include "data/Installation.h"

#include <QString>

// The provider of the host's databases that a test run asks for: SQLite
// files (the default), or a PostgreSQL server when M182_PROVIDER is
// "PostgreSQL" (the suite registers the wizard tests once more that way).
// The server is the one M182_PG names (scripts/with-postgres starts a
// throw-away one); without it those tests skip themselves.
enum class HostProvider { SQLite, PostgreSQL };

HostProvider RequestedProvider();

// Why the requested provider cannot be used here, "" when it can: always ""
// for SQLite; for PostgreSQL, no M182_PG or a server that does not answer.
QString ProviderUnavailable();

// The test server's connection string (M182_PG), "" when there is none.
QString TestServer();

// Why the test server cannot be used, "" when it can.
QString ServerUnavailable();

// The prefix of the server databases this test process may use: a process
// holds one of a few numbered slots (an advisory lock on the server) for its
// lifetime, so tests running side by side never share a database, and the
// databases are reused, emptied, by the tests that come after.
QString TestDatabasePrefix();

// A connection string to an empty database <prefix>_<name> on the test
// server, made or emptied now.
QString EmptyTestDatabase(const QString &name);

// The description with its host databases on the requested provider.
InstallationDescription OnRequestedProvider(InstallationDescription description);
