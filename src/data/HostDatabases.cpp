#include "data/HostDatabases.h"

#include "data/PostgresServer.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <stdexcept>

void RemoveDatabaseFile(const QString &path)
{
    for (const char *suffix : {"", "-journal", "-wal", "-shm"}) {
        const QString file = path + QString::fromLatin1(suffix);
        if (QFileInfo::exists(file) && !QFile::remove(file))
            throw std::runtime_error(("No se puede reemplazar el archivo " + file).toStdString());
    }
}

HostDatabases::HostDatabases(const QString &server, const QString &prefix, const QString &dataFolderName,
                             const QString &dataFolder)
    : m_server(server), m_prefix(prefix), m_dataFolderName(dataFolderName), m_dataFolder(dataFolder)
{
}

QString HostDatabases::DatabaseName(const QString &file) const
{
    if (!OnServer())
        return QString();
    return m_prefix + QLatin1Char('_') + QFileInfo(file).completeBaseName();
}

QString HostDatabases::ConnectionString(const QString &file) const
{
    if (OnServer())
        return PostgresServer::DatabaseConnectionString(m_server, DatabaseName(file));
    return QStringLiteral("Provider=SQLite;Data Source=") + m_dataFolderName + QLatin1Char('/') + file;
}

QString HostDatabases::FilePath(const QString &file) const
{
    return OnServer() ? QString() : QDir(m_dataFolder).filePath(file);
}

Connection &HostDatabases::Maintenance()
{
    if (!m_maintenance)
        m_maintenance = PostgresServer::OpenMaintenance(m_server);
    return *m_maintenance;
}

ConnectionPtr HostDatabases::Create(const QString &file)
{
    if (!OnServer()) {
        RemoveDatabaseFile(FilePath(file));
        return Connection::CreateSQLite(FilePath(file));
    }
    return PostgresServer::OpenEmptyDatabase(Maintenance(), m_server, DatabaseName(file));
}

void HostDatabases::Remove(const QString &file)
{
    if (OnServer())
        PostgresServer::DropDatabase(Maintenance(), DatabaseName(file));
    else
        RemoveDatabaseFile(FilePath(file));
}
