#include "Providers.h"

#include "data/Connection.h"
#include "data/DatabaseError.h"
#include "data/PostgresServer.h"

#include <QProcessEnvironment>
#include <QSqlQuery>

namespace {

constexpr int kSlots = 32;
constexpr int kLockBase = 182000;

// The connection that holds this process's slot. It is never closed: the
// server releases the lock when the process ends.
struct Slot
{
    Connection *holder = nullptr;
    int number = 0;
    QString failure;
};

const Slot &TakeSlot()
{
    static const Slot slot = [] {
        Slot taken;
        const QString server = TestServer();
        if (server.isEmpty()) {
            taken.failure = QStringLiteral("M182_PG names no PostgreSQL server (scripts/with-postgres starts one)");
            return taken;
        }
        auto *connection = new Connection(server);
        try {
            connection->Open();
        } catch (const DatabaseError &error) {
            taken.failure = QStringLiteral("the PostgreSQL server of M182_PG does not answer: ") + error.Message();
            delete connection;
            return taken;
        }
        for (int n = 1; n <= kSlots; ++n) {
            QSqlQuery query(connection->Database());
            if (query.exec(QStringLiteral("SELECT pg_try_advisory_lock(%1)").arg(kLockBase + n)) && query.next()
                && query.value(0).toBool()) {
                taken.holder = connection;
                taken.number = n;
                return taken;
            }
        }
        taken.failure = QStringLiteral("every test slot of the PostgreSQL server is taken");
        delete connection;
        return taken;
    }();
    return slot;
}

} // namespace

HostProvider RequestedProvider()
{
    const QString requested = QProcessEnvironment::systemEnvironment().value(QStringLiteral("M182_PROVIDER"));
    return requested.compare(QLatin1String("PostgreSQL"), Qt::CaseInsensitive) == 0 ? HostProvider::PostgreSQL
                                                                                    : HostProvider::SQLite;
}

QString TestServer()
{
    return QProcessEnvironment::systemEnvironment().value(QStringLiteral("M182_PG"));
}

QString ServerUnavailable()
{
    return TakeSlot().failure;
}

QString ProviderUnavailable()
{
    if (RequestedProvider() == HostProvider::SQLite)
        return QString();
    return ServerUnavailable();
}

QString TestDatabasePrefix()
{
    const Slot &slot = TakeSlot();
    if (!slot.holder)
        throw std::runtime_error(slot.failure.toStdString());
    return QStringLiteral("m182_test%1").arg(slot.number);
}

QString EmptyTestDatabase(const QString &name)
{
    const QString database = TestDatabasePrefix() + QLatin1Char('_') + name;
    PostgresServer::PrepareEmptyDatabase(TestServer(), database);
    return PostgresServer::DatabaseConnectionString(TestServer(), database);
}

InstallationDescription OnRequestedProvider(InstallationDescription description)
{
    if (RequestedProvider() == HostProvider::PostgreSQL) {
        description.server.connectionString = TestServer();
        description.server.prefix = TestDatabasePrefix();
    }
    return description;
}
