#include "session/denM182.h"

#include <QDir>
#include <QFileInfo>
#include <dlfcn.h>

denM182::denM182() : m_conM182(InitialConnectionString())
{
}

QString denM182::InitialConnectionString()
{
    return QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=;Persist Security Info=False;"
                          "Jet OLEDB:Database Password=zq417tev");
}

Connection &denM182::Open()
{
    if (m_conM182.State() != Connection::adStateOpen)
        m_conM182.Open();
    return m_conM182;
}

QString denM182::DataSourceFor(const cConfiguracion &configuracion, const QString &addinFolder)
{
    const QString sep = QDir::separator();
    if (configuracion.blnSQLServer)
        return addinFolder + sep + QStringLiteral("Informes") + sep + QStringLiteral("Modelo182.mdb");
    return configuracion.RutaBD() + sep + QStringLiteral("Modelo182.mdb");
}

void denM182::ConfigureDataSource(const cConfiguracion &configuracion, const QString &addinFolder)
{
    const QString path = DataSourceFor(configuracion, addinFolder);
    if (m_conM182.State() == Connection::adStateOpen && m_conM182.Property(QStringLiteral("Data Source")) != path)
        m_conM182.Close();
    m_conM182.SetProperty(QStringLiteral("Data Source"), path);
}

QString AddinBinaryFolder()
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<void *>(&AddinBinaryFolder), &info) && info.dli_fname)
        return QFileInfo(QString::fromLocal8Bit(info.dli_fname)).absolutePath();
    return QDir::currentPath();
}
