#pragma once

#include "data/Connection.h"

#include <QString>
#include <memory>

// Where the installation builder puts the host's databases: SQLite files in
// the data folder (the default), or databases of a PostgreSQL server. Each
// database is named by its file name ("entrada.db", "curso3.db"); on the
// server it becomes <prefix>_<name without extension> ("modelo182_curso3").
class HostDatabases
{
public:
    // `server` "" means SQLite files in `dataFolder` (named "datos/<file>" in
    // connection strings, relative to the installation's folder).
    HostDatabases(const QString &server, const QString &prefix, const QString &dataFolderName, const QString &dataFolder);

    bool OnServer() const { return !m_server.isEmpty(); }

    // The connection string the session and CursoEscolar.BD hold.
    QString ConnectionString(const QString &file) const;
    // The file's absolute path; "" on a server.
    QString FilePath(const QString &file) const;
    // The name of the server's database; "" for a file.
    QString DatabaseName(const QString &file) const;

    // A new, empty database opened for the creation routines; an earlier
    // one in the same place is replaced.
    ConnectionPtr Create(const QString &file);
    // Removes the database if there is one.
    void Remove(const QString &file);

private:
    // One connection to the server's maintenance database for the whole
    // build: connecting is what takes time.
    Connection &Maintenance();

    std::unique_ptr<Connection> m_maintenance;
    QString m_server;
    QString m_prefix;
    QString m_dataFolderName;
    QString m_dataFolder;
};

// Removes an SQLite file with its journal files. Throws std::runtime_error.
void RemoveDatabaseFile(const QString &path);
