#include "data/MailMergeDatabase.h"

#include "data/DatabaseError.h"

#include <QFile>
#include <QFileInfo>

namespace MailMergeDatabase {

QString EngineTypeText(int engineType)
{
    return QStringLiteral("Jet OLEDB:Engine Type=") + QString::number(engineType) + QLatin1Char(';');
}

QString Create(const QString &path, int engineType, Connection &declaration)
{
    if (QFileInfo::exists(path) && !QFile::remove(path))
        throw DatabaseError(QStringLiteral("No se puede reemplazar la base de datos «") + path
                            + QStringLiteral("»: está abierta en otro programa o no se puede escribir en su carpeta."));

    const QString engine = EngineTypeText(engineType);
    // The declaration connection keeps the same format as the file made here.
    QString text = declaration.ConnectionString();
    if (text.contains(QStringLiteral("Jet OLEDB:Engine Type=4;"))) {
        text.replace(QStringLiteral("Jet OLEDB:Engine Type=4;"), engine);
        declaration.SetConnectionString(text);
    }

    auto created = Connection::CreateSQLite(path, QStringLiteral("Microsoft.Jet.OLEDB.4.0"));
    created->Close();
    return QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;") + engine + QStringLiteral("Data Source=") + path;
}

} // namespace MailMergeDatabase
