#include "data/ConnectionString.h"
#include "data/Demo.h"

namespace {

const QString kDefaultName = QStringLiteral("modelo182");
const QString kMaintenanceDatabase = QStringLiteral("postgres");

} // namespace

HostServerDescription ServerOf(const QString &connectionString)
{
    ConnectionString text(connectionString);
    HostServerDescription server;
    const QString name = text.Value(QStringLiteral("Database")).trimmed();
    server.prefix = name.isEmpty() ? kDefaultName : name;
    text.SetValue(QStringLiteral("Database"), kMaintenanceDatabase);
    server.connectionString = text.ToString();
    return server;
}

InstallationDescription OnServer(InstallationDescription description, const QString &connectionString,
                                 const QString &addinFolder)
{
    description.server = ServerOf(connectionString);
    description.session.sqlServer = true;
    description.addinFolder = addinFolder;
    return description;
}

InstallationPaths CreateDemoInstallationOnServer(const QString &dir, const QString &connectionString,
                                                 const QString &addinFolder)
{
    return BuildInstallation(dir, OnServer(DemoSchool(), connectionString, addinFolder));
}
