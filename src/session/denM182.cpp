#include "session/denM182.h"

#include <QDir>
#include <QFileInfo>
#include <dlfcn.h>

namespace {

QString &AddinFolderOverride()
{
    static QString folder;
    return folder;
}

// Finds the binary that holds this code: the add-in's shared library when
// the host loaded it, or the executable the library is linked into.
QString BinaryFolder()
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<void *>(&BinaryFolder), &info) && info.dli_fname)
        return QFileInfo(QString::fromLocal8Bit(info.dli_fname)).absolutePath();
    return QDir::currentPath();
}

} // namespace

namespace denM182 {

QString InitialConnectionString()
{
    return QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=;Persist Security Info=False;"
                          "Jet OLEDB:Database Password=zq417tev");
}

Connection &conM182()
{
    static Connection connection(InitialConnectionString());
    return connection;
}

Connection &Open()
{
    Connection &connection = conM182();
    if (connection.State() != Connection::adStateOpen)
        connection.Open();
    return connection;
}

QString DataSourceFor(const cConfiguracion &configuracion)
{
    const QString sep = QDir::separator();
    if (configuracion.blnSQLServer)
        return AddinFolder() + sep + QStringLiteral("Informes") + sep + QStringLiteral("Modelo182.mdb");
    return configuracion.RutaBD() + sep + QStringLiteral("Modelo182.mdb");
}

void ConfigureDataSource(const cConfiguracion &configuracion)
{
    Connection &connection = conM182();
    const QString path = DataSourceFor(configuracion);
    if (connection.State() == Connection::adStateOpen && connection.Property(QStringLiteral("Data Source")) != path)
        connection.Close();
    connection.SetProperty(QStringLiteral("Data Source"), path);
}

QString AddinFolder()
{
    const QString &override = AddinFolderOverride();
    return override.isEmpty() ? BinaryFolder() : override;
}

void SetAddinFolder(const QString &folder)
{
    AddinFolderOverride() = folder;
}

} // namespace denM182
