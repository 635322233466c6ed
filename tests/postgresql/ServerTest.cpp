#include "ServerTest.h"

#include "data/ConnectionString.h"

namespace server_test {

QString ServerValue(const QString &key)
{
    return ConnectionString(TestServer()).Value(key);
}

std::string EngineName(const ::testing::TestParamInfo<Engine> &info)
{
    return info.param == Engine::SQLite ? "SQLite" : "PostgreSQL";
}

ConnectionPtr BothEngines::Fresh(const QString &name)
{
    if (GetParam() == Engine::PostgreSQL)
        return Open(EmptyTestDatabase(name));
    return Connection::CreateSQLite(dir.filePath(name + QStringLiteral(".db")));
}

InstallationDescription BothEngines::OnEngine(InstallationDescription description) const
{
    if (GetParam() == Engine::PostgreSQL) {
        description.server.connectionString = TestServer();
        description.server.prefix = TestDatabasePrefix();
    }
    return description;
}

} // namespace server_test
