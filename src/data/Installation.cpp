#include "data/Installation.h"

#include "data/Connection.h"
#include "data/DatabaseError.h"
#include "data/HostDatabases.h"
#include "data/Schema.h"
#include "data/SchemaSql.h"
#include "data/SessionKeys.h"
#include "data/SettingsFile.h"
#include "data/SqlProviders.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSqlDatabase>
#include <QVariant>

#include <algorithm>
#include <stdexcept>

using namespace SchemaSql;

namespace {

const QString kDataFolder = QStringLiteral("datos");
const QString kAppFolder = QStringLiteral("app");
const QString kReportsFolder = QStringLiteral("Informes");
const QString kIconFile = QStringLiteral("modelo182.ico");
const QString kIniFile = QStringLiteral("modelo182.ini");
const QString kEntradaFile = QStringLiteral("entrada.db");
const QString kCentroFile = QStringLiteral("centro.db");
const QString kBorradoFile = QStringLiteral("borrado.db");
const QString kModelo182File = QStringLiteral("Modelo182.mdb");
const QString kJetProvider = QStringLiteral("Microsoft.Jet.OLEDB.4.0");
const QString kDeclarationPassword = QStringLiteral("zq417tev");
constexpr int kFirstPayerRole = 5001;
constexpr int kFirstExtraProvince = 100;

QString YearFileName(const YearDescription &year)
{
    return year.fileName.isEmpty() ? QStringLiteral("curso%1.db").arg(year.id) : year.fileName;
}

QVariant Nullable(const QString &text)
{
    return text.isNull() ? QVariant(QMetaType(QMetaType::QString)) : QVariant(text);
}

QVariant NullableId(int id)
{
    return id == 0 ? QVariant(QMetaType(QMetaType::Int)) : QVariant(id);
}

template <typename T> QVariant Optional(const std::optional<T> &value)
{
    return value ? QVariant(*value) : QVariant(QMetaType::fromType<T>());
}

int Boolean(bool value)
{
    return value ? -1 : 0;
}

void MakeFolder(const QString &path)
{
    if (!QDir().mkpath(path))
        throw std::runtime_error(("No se puede crear la carpeta " + path).toStdString());
}

ConnectionPtr Create(const QString &path, const QString &provider)
{
    RemoveDatabaseFile(path);
    return Connection::CreateSQLite(path, provider);
}

HostDatabases HostDatabasesOf(const InstallationDescription &description, const QString &dataFolder)
{
    const QString &server = description.server.connectionString;
    if (!server.isEmpty()
        && SqlProviders::KindOf(ConnectionString(server).Value(QStringLiteral("Provider")))
               != SqlProviders::Kind::PostgreSQL)
        throw DatabaseError(QStringLiteral("La conexión del servidor debe ser del proveedor PostgreSQL "
                                           "(Provider=PostgreSQL;Host=...;Port=...;User ID=...;Password=...)."),
                            server);
    return HostDatabases(server, description.server.prefix, kDataFolder, dataFolder);
}

void FillEntryDatabase(Connection &connection, const InstallationDescription &description, const InstallationPaths &paths)
{
    QSqlDatabase db = connection.Database();
    Connection::Transaction transaction(connection);
    QSqlQuery school =
        Prepare(db,
                QStringLiteral("INSERT INTO Centro (IDCentro, Nombre, CIF, Direccion, Poblacion, CodigoPostal, Telefono) "
                               "VALUES (?, ?, ?, ?, ?, ?, ?)"));
    QList<SchoolDescription> schools = {description.school};
    schools += description.otherSchools;
    for (const SchoolDescription &s : schools)
        Run(school, {s.id, Nullable(s.name), Nullable(s.cif), Nullable(s.street), Nullable(s.town), Nullable(s.postalCode),
                     Nullable(s.phone)});

    QSqlQuery year =
        Prepare(db, QStringLiteral("INSERT INTO CursoEscolar (IDCursoEscolar, Nombre, codcentro, BD) VALUES (?, ?, ?, ?)"));
    for (int i = 0; i < description.years.size(); ++i) {
        const YearDescription &y = description.years.at(i);
        Run(year, {y.id, Nullable(y.name), y.schoolId == 0 ? description.school.id : y.schoolId,
                   Nullable(paths.years.at(i).connectionString)});
    }
    transaction.Commit();
}

void FillSchoolDatabase(Connection &connection, const SavedWorkDescription &saved)
{
    QSqlDatabase db = connection.Database();
    Connection::Transaction transaction(connection);
    QSqlQuery activity = Prepare(db, QStringLiteral("INSERT INTO CursoEscAct VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    for (const SavedActivity &a : saved.activities)
        Run(activity, {a.idCursoEscolar, Nullable(a.nombre), Nullable(a.conBD), a.idActividad, Nullable(a.actNom), a.deduc,
                       Nullable(a.tipoDon), Nullable(a.tipoDonDed), Nullable(a.meses), Boolean(a.deducComAut)});
    QSqlQuery community = Prepare(db, QStringLiteral("INSERT INTO ComDed VALUES (?, ?, ?)"));
    for (const SavedCommunity &c : saved.communities)
        Run(community, {c.idComAut, c.idDeduc, c.valor});
    QSqlQuery payment = Prepare(db, QStringLiteral("INSERT INTO DatosModelo182 VALUES (?, ?, ?, ?, ?)"));
    for (const SavedPayment &p : saved.payments)
        Run(payment, {p.idAL, p.idMF, p.idCC, p.idAct, p.pago});
    QSqlQuery donor = Prepare(db, QStringLiteral("INSERT INTO ALMFModelo182 VALUES (?, ?, ?, ?, ?, ?, ?)"));
    for (const SavedDonor &d : saved.donors)
        Run(donor,
            {d.idAL, d.idMF, Nullable(d.nombre), Nullable(d.ap1), Nullable(d.ap2), Nullable(d.nif), Boolean(d.mostrar)});
    transaction.Commit();
}

// The year's provinces by name; names not yet there are added.
class ProvinceKeys
{
public:
    explicit ProvinceKeys(QSqlDatabase &db)
        : m_insert(Prepare(db, QStringLiteral("INSERT INTO Provincia (IDProvincia, descripcion) VALUES (?, ?)")))
    {
        QSqlQuery query(db);
        query.exec(QStringLiteral("SELECT IDProvincia, descripcion FROM Provincia"));
        while (query.next()) {
            m_keys.insert(query.value(1).toString(), query.value(0).toInt());
            m_next = std::max(m_next, query.value(0).toInt() + 1);
        }
        m_next = std::max(m_next, kFirstExtraProvince);
    }

    QVariant Key(const QString &name)
    {
        if (name.isEmpty())
            return QVariant(QMetaType(QMetaType::Int));
        auto found = m_keys.constFind(name);
        if (found != m_keys.constEnd())
            return *found;
        const int key = m_next++;
        Run(m_insert, {key, name});
        m_keys.insert(name, key);
        return key;
    }

private:
    QSqlQuery m_insert;
    QHash<QString, int> m_keys;
    int m_next = 1;
};

void FillYearDatabase(Connection &connection, const YearDescription &year, const SchoolDescription &school)
{
    QSqlDatabase db = connection.Database();
    Connection::Transaction transaction(connection);
    ProvinceKeys provinces(db);

    QSqlQuery centro =
        Prepare(db, QStringLiteral(
                        "INSERT INTO Centro (IDCentro, Nombre, DirectorCentro, CIF, Direccion, Poblacion, CodigoPostal, "
                        "codProvincia, Telefono, Email, RFiscal) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    Run(centro, {school.id, Nullable(school.name), Nullable(school.director), Nullable(school.cif), Nullable(school.street),
                 Nullable(school.town), Nullable(school.postalCode), provinces.Key(school.province), Nullable(school.phone),
                 Nullable(school.email), Optional(school.taxRegime)});

    QSqlQuery activity = Prepare(db, QStringLiteral(
                                         "INSERT INTO Actividad (IDActividad, Nombre, PrecioEuros) VALUES (?, ?, ?)"));
    for (const ActivityDescription &a : year.activities)
        Run(activity, {a.id, Nullable(a.name), Optional(a.price)});

    QSqlQuery address =
        Prepare(db, QStringLiteral("INSERT INTO Direccion (IDDireccion, direccion, poblacion, codigopostal, codProvincia) "
                                   "VALUES (?, ?, ?, ?, ?)"));
    QSqlQuery member =
        Prepare(db, QStringLiteral(
                        "INSERT INTO MiembroFamilia (IDMiembroFamilia, Apellido1, Apellido2, Nombre, codFamilia, DNI, "
                        "codDireccion) VALUES (?, ?, ?, ?, ?, ?, ?)"));
    int nextAddress = 1;
    for (const MemberDescription &m : year.members) {
        QVariant addressKey(QMetaType(QMetaType::Int));
        if (m.address) {
            addressKey = nextAddress++;
            Run(address, {addressKey, Nullable(m.address->street), Nullable(m.address->town),
                          Nullable(m.address->postalCode), provinces.Key(m.address->province)});
        }
        Run(member, {m.id, Nullable(m.surname1), Nullable(m.surname2), Nullable(m.name), NullableId(m.family),
                     Nullable(m.dni), addressKey});
    }

    QSqlQuery student =
        Prepare(db, QStringLiteral(
                        "INSERT INTO Alumno (IDAlumno, Apellido_1, Apellido_2, Nombre, codFamilia) VALUES (?, ?, ?, ?, ?)"));
    for (const StudentDescription &s : year.students)
        Run(student, {s.id, Nullable(s.surname1), Nullable(s.surname2), Nullable(s.name), NullableId(s.family)});

    QSqlQuery payerRole =
        Prepare(db, QStringLiteral(
                        "INSERT INTO MiembroFamiliaPagador (idMiembroFamiliaPagador, codMiembroFamilia) VALUES (?, ?)"));
    QSqlQuery enrolment =
        Prepare(db,
                QStringLiteral("INSERT INTO Alumno_Actividad_Miembro (codAlumno, codActividad, codMiembroFamiliaPagador, "
                               "PrecioEuros, enero, febrero, marzo, abril, mayo, junio, julio, agosto, septiembre, octubre, "
                               "noviembre, diciembre) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    QHash<int, int> roles; // member id -> role key
    for (const EnrolmentDescription &e : year.enrolments) {
        QVariant role(QMetaType(QMetaType::Int));
        if (e.payer != 0) {
            auto found = roles.constFind(e.payer);
            if (found == roles.constEnd()) {
                const int key = kFirstPayerRole + int(roles.size());
                Run(payerRole, {key, e.payer});
                found = roles.insert(e.payer, key);
            }
            role = *found;
        }
        QVariantList values = {e.student, e.activity, role, Optional(e.price)};
        for (const std::optional<int> &flag : e.months)
            values << Optional(flag);
        Run(enrolment, values);
    }
    transaction.Commit();
}

} // namespace

MonthFlags Months(std::initializer_list<int> months)
{
    MonthFlags flags;
    flags.fill(0);
    for (int month : months)
        if (month >= 1 && month <= 12)
            flags[month - 1] = -1;
    return flags;
}

MonthFlags SchoolMonths()
{
    return Months({9, 10, 11, 12, 1, 2, 3, 4, 5, 6});
}

const YearPaths *InstallationPaths::Year(int id) const
{
    for (const YearPaths &year : years)
        if (year.id == id)
            return &year;
    return nullptr;
}

namespace {

QString IniText(bool flag)
{
    return flag ? QStringLiteral("true") : QStringLiteral("false");
}

SettingsFile SessionSettingsFile(const InstallationDescription &description, const InstallationPaths &paths)
{
    int currentYear = description.session.currentYear;
    if (currentYear == 0)
        for (const YearDescription &year : description.years)
            currentYear = std::max(currentYear, year.id);

    const SessionDescription &s = description.session;
    using namespace SessionKeys;
    const QHash<QString, QString> sesion = {
        {kRutaAplicacion, kAppFolder},
        {kRutaBD, kDataFolder},
        {kSqlServer, IniText(s.sqlServer)},
        {kIDPerfil, QString::number(s.idPerfil)},
        {kIDUsuario, QString::number(s.idUsuario)},
        {kNombreUsuario, s.userName},
        {kIDCentro, QString::number(description.school.id)},
        {kNombreCentro, description.school.name},
        {kIdCursoEscolar, QString::number(currentYear)},
        {kActiva, IniText(s.activa)},
        {kAccion, QString::number(s.accion)},
        {kLngRowData, QString::number(s.rowData)},
        {kPesetas, IniText(s.pesetas)},
        {kMTP, IniText(s.mtp)},
        {kRutaIcono, kAppFolder + QLatin1Char('/') + kIconFile},
        {kConexionAppEntrada, paths.conexionAppEntrada},
        {kConexionLocalCentro, paths.conexionLocalCentro},
        {kConexionBorradoLocalCentro, paths.conexionBorradoLocalCentro},
    };
    SettingsFile file;
    // The host's order; every listed property gets a line.
    for (const Key &key : kSession) {
        if (!sesion.contains(key.name))
            throw std::logic_error("no value for the session property " + key.name.toString().toStdString());
        file.Add(kSesion, key.name, sesion.value(key.name));
    }
    if (!s.locale.isEmpty())
        file.Add(kModelo182, kLocale, s.locale);
    file.Add(kModelo182, kDesarrollo, IniText(s.desarrollo));
    file.Add(kModelo182, kNumeroJustificante, s.numeroJustificante);
    file.Add(kModelo182, kDelegacion, s.delegacion);
    file.Add(kModelo182, kDomicilio, s.domicilio);
    return file;
}

} // namespace

QString SessionSettingsText(const InstallationDescription &description, const InstallationPaths &paths)
{
    return SessionSettingsFile(description, paths).Text();
}

InstallationPaths BuildInstallation(const QString &dir, const InstallationDescription &description)
{
    InstallationPaths paths;
    paths.root = QDir::cleanPath(QDir(dir).absolutePath());
    const QDir root(paths.root);
    paths.iniFile = root.filePath(kIniFile);
    paths.rutaBD = root.filePath(kDataFolder);
    paths.rutaAplicacion = root.filePath(kAppFolder);
    paths.informes = QDir(paths.rutaAplicacion).filePath(kReportsFolder);
    paths.iconFile = QDir(paths.rutaAplicacion).filePath(kIconFile);
    HostDatabases hosts = HostDatabasesOf(description, paths.rutaBD);
    paths.entradaFile = hosts.FilePath(kEntradaFile);
    paths.centroFile = hosts.FilePath(kCentroFile);
    paths.borradoFile = hosts.FilePath(kBorradoFile);
    paths.conexionAppEntrada = hosts.ConnectionString(kEntradaFile);
    paths.conexionLocalCentro = hosts.ConnectionString(kCentroFile);
    paths.conexionBorradoLocalCentro = hosts.ConnectionString(kBorradoFile);
    // Where the add-in will look for it (the rule of the session's
    // sqlserver flag).
    paths.addinFolder = description.addinFolder.isEmpty() ? paths.rutaAplicacion
                                                          : QDir::cleanPath(root.absoluteFilePath(description.addinFolder));
    paths.modelo182File = description.session.sqlServer
                              ? QDir(paths.addinFolder).filePath(kReportsFolder + QLatin1Char('/') + kModelo182File)
                              : QDir(paths.rutaBD).filePath(kModelo182File);
    paths.modelo182ConnectionString = QStringLiteral("Provider=") + kJetProvider + QStringLiteral(";Data Source=")
                                      + QDir::toNativeSeparators(paths.modelo182File)
                                      + QStringLiteral(";Persist Security Info=False;Jet OLEDB:Database Password=")
                                      + kDeclarationPassword;
    for (const YearDescription &year : description.years) {
        YearPaths y;
        y.id = year.id;
        y.name = year.name;
        y.databaseFile = hosts.FilePath(YearFileName(year));
        y.connectionString = year.connectionString ? *year.connectionString : hosts.ConnectionString(YearFileName(year));
        y.databaseCreated = year.createDatabase;
        paths.years.append(y);
    }

    MakeFolder(paths.rutaBD);
    MakeFolder(paths.informes);
    MakeFolder(QFileInfo(paths.modelo182File).absolutePath());

    {
        ConnectionPtr entrada = hosts.Create(kEntradaFile);
        Schema::CreateEntryDatabase(*entrada);
        FillEntryDatabase(*entrada, description, paths);
    }
    {
        ConnectionPtr centro = hosts.Create(kCentroFile);
        Schema::CreateSchoolDatabase(*centro);
        FillSchoolDatabase(*centro, description.savedWork);
    }
    {
        ConnectionPtr borrado = hosts.Create(kBorradoFile);
        Schema::CreateDeletedRecordsDatabase(*borrado);
    }
    for (int i = 0; i < description.years.size(); ++i) {
        const YearDescription &year = description.years.at(i);
        if (!year.createDatabase) {
            hosts.Remove(YearFileName(year));
            continue;
        }
        ConnectionPtr connection = hosts.Create(YearFileName(year));
        Schema::CreateYearDatabase(*connection);
        FillYearDatabase(*connection, year, year.school ? *year.school : description.school);
    }
    {
        ConnectionPtr modelo182 = Create(paths.modelo182File, kJetProvider);
        Schema::CreateDeclarationDatabase(*modelo182);
    }

    SessionSettingsFile(description, paths).Write(paths.iniFile);
    return paths;
}
