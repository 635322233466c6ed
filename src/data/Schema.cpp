#include "data/Schema.h"

#include "data/ColumnType.h"
#include "data/Connection.h"
#include "data/DatabaseError.h"
#include "data/PostgresSchema.h"
#include "data/SchemaSql.h"
#include "data/SchemaVersion.h"
#include "data/Seed.h"

#include <QHash>
#include <QSqlDatabase>
#include <QStringList>

using namespace SchemaSql;

namespace Schema {

namespace {

// Column types. Every text column carries the Spanish, case-insensitive
// collation; Booleans and month flags are integers (-1 / 0).
constexpr ColumnType kText = ColumnType::Text;
constexpr ColumnType kInteger = ColumnType::Integer;
constexpr ColumnType kReal = ColumnType::Real;
constexpr ColumnType kBoolean = ColumnType::Boolean;
constexpr ColumnType kKey = ColumnType::Key;
constexpr ColumnType kAutoNumber = ColumnType::AutoNumber;

struct Column
{
    QString name;
    ColumnType type;
};

// Names stay unquoted: a server folds them to lower case, and the
// statements' mixed-case names then find them as Access does.
void CreateTable(QSqlDatabase &db, const QString &table, const QList<Column> &columns)
{
    const bool server = PostgresSchema::IsServer(db);
    if (server)
        PostgresSchema::CreateTextCollation(db);
    QStringList parts;
    for (const Column &column : columns)
        parts << column.name + QLatin1Char(' ')
                     + ColumnTypeSql(column.type, server ? SqlEngine::PostgreSQL : SqlEngine::SQLite);
    Exec(db, QStringLiteral("CREATE TABLE IF NOT EXISTS ") + table + QStringLiteral(" (") + parts.join(QStringLiteral(", "))
                 + QLatin1Char(')'));
}

QList<Column> MonthColumns()
{
    QList<Column> columns;
    for (const char *month : {"enero", "febrero", "marzo", "abril", "mayo", "junio", "julio", "agosto", "septiembre",
                              "octubre", "noviembre", "diciembre"})
        columns.append({QString::fromLatin1(month), kBoolean});
    return columns;
}

void Finish(Connection &connection, Connection::Transaction &transaction)
{
    QSqlDatabase db = connection.Database();
    transaction.Commit();
    // Outside the transaction, so that it holds even when the caller runs one.
    SetUserVersion(db, kSchemaVersion);
}

void SeedCatalogue(QSqlDatabase &db)
{
    if (IsEmpty(db, QStringLiteral("ComunidadesAutonomas"))) {
        QSqlQuery insert =
            Prepare(db, QStringLiteral(
                            "INSERT INTO ComunidadesAutonomas (ComunidadAutonoma, CodigoComunidadAutonoma) VALUES (?, ?)"));
        for (const Seed::Community &community : Seed::Communities())
            Run(insert, {community.name, community.code});
    }
    if (IsEmpty(db, QStringLiteral("Deducciones"))) {
        QSqlQuery insert = Prepare(db, QStringLiteral("INSERT INTO Deducciones (Deduccion) VALUES (?)"));
        for (double deduction : Seed::Deductions())
            Run(insert, {deduction});
    }
    if (IsEmpty(db, QStringLiteral("TipoDonativos"))) {
        QSqlQuery insert = Prepare(db,
                                   QStringLiteral("INSERT INTO TipoDonativos (TipoDonativo, CodigoDonativo) VALUES (?, ?)"));
        for (const Seed::DonationType &type : Seed::DonationTypes())
            Run(insert, {type.name, type.code});
    }

    // The links and provinces refer to the rows above by their keys, looked
    // up by name or value (the seeds may sit beside rows a user added).
    QHash<QString, int> communityIds;
    {
        QSqlQuery query(db);
        query.exec(QStringLiteral("SELECT IDComunidadAutonoma, ComunidadAutonoma FROM ComunidadesAutonomas"));
        while (query.next())
            communityIds.insert(query.value(1).toString(), query.value(0).toInt());
    }
    auto deductionId = [&db](double value) {
        return Scalar(db, QStringLiteral("SELECT IDDeduccion FROM Deducciones WHERE Deduccion = %1").arg(value)).toInt();
    };

    if (IsEmpty(db, QStringLiteral("Provincias"))) {
        QSqlQuery insert =
            Prepare(db, QStringLiteral(
                            "INSERT INTO Provincias (CodigoProvincia, codComunidadAutonoma, Provincia) VALUES (?, ?, ?)"));
        for (const Seed::Province &province : Seed::Provinces())
            Run(insert, {province.code, communityIds.value(province.community), province.name});
    }
    if (IsEmpty(db, QStringLiteral("TipoDonativos_Deducciones"))) {
        QSqlQuery insert = Prepare(db, QStringLiteral("INSERT INTO TipoDonativos_Deducciones VALUES (?, ?)"));
        for (const Seed::DonationType &type : Seed::DonationTypes()) {
            const int typeId = Scalar(db, QStringLiteral("SELECT IDTipoDonativo FROM TipoDonativos "
                                                         "WHERE TipoDonativo = '%1'")
                                              .arg(QString(type.name).replace(QLatin1Char('\''), QStringLiteral("''"))))
                                   .toInt();
            for (double deduction : type.deductions)
                Run(insert, {typeId, deductionId(deduction)});
        }
    }
    if (IsEmpty(db, QStringLiteral("ComunidadesAutonomas_Deducciones"))) {
        QSqlQuery insert = Prepare(db, QStringLiteral("INSERT INTO ComunidadesAutonomas_Deducciones VALUES (?, ?)"));
        for (const Seed::CommunityDeduction &link : Seed::CommunityDeductions())
            Run(insert, {communityIds.value(link.community), deductionId(link.deduction)});
    }
}

} // namespace

void CreateEntryDatabase(Connection &connection)
{
    QSqlDatabase db = connection.Database();
    Connection::Transaction transaction(connection);
    CreateTable(db, QStringLiteral("Centro"),
                {
                    {QStringLiteral("IDCentro"), kKey},
                    {QStringLiteral("Nombre"), kText},
                    {QStringLiteral("CIF"), kText},
                    {QStringLiteral("Direccion"), kText},
                    {QStringLiteral("Poblacion"), kText},
                    {QStringLiteral("CodigoPostal"), kText},
                    {QStringLiteral("Telefono"), kText},
                });
    CreateTable(db, QStringLiteral("CursoEscolar"),
                {
                    {QStringLiteral("IDCursoEscolar"), kKey},
                    {QStringLiteral("Nombre"), kText},
                    {QStringLiteral("codcentro"), kInteger},
                    {QStringLiteral("BD"), kText},
                });
    Finish(connection, transaction);
}

void CreateSchoolDatabase(Connection &connection)
{
    QSqlDatabase db = connection.Database();
    Connection::Transaction transaction(connection);
    CreateTable(db, QStringLiteral("CursoEscAct"),
                {
                    {QStringLiteral("IDCursoEscolar"), kInteger},
                    {QStringLiteral("Nombre"), kText},
                    {QStringLiteral("conBD"), kText},
                    {QStringLiteral("IDActividad"), kInteger},
                    {QStringLiteral("ActNom"), kText},
                    {QStringLiteral("Deduc"), kReal},
                    {QStringLiteral("TipoDon"), kText},
                    {QStringLiteral("TipoDonDed"), kText},
                    {QStringLiteral("Meses"), kText},
                    {QStringLiteral("DeducComAut"), kBoolean},
                });
    CreateTable(db, QStringLiteral("ComDed"),
                {
                    {QStringLiteral("IDComAut"), kInteger},
                    {QStringLiteral("IDDeduc"), kInteger},
                    {QStringLiteral("Valor"), kReal},
                });
    CreateTable(db, QStringLiteral("DatosModelo182"),
                {
                    {QStringLiteral("IDAL"), kInteger},
                    {QStringLiteral("IDMF"), kInteger},
                    {QStringLiteral("IDCC"), kInteger},
                    {QStringLiteral("IDAct"), kInteger},
                    {QStringLiteral("Pago"), kReal},
                });
    CreateTable(db, QStringLiteral("ALMFModelo182"),
                {
                    {QStringLiteral("IDAL"), kInteger},
                    {QStringLiteral("IDMF"), kInteger},
                    {QStringLiteral("Nombre"), kText},
                    {QStringLiteral("AP1"), kText},
                    {QStringLiteral("AP2"), kText},
                    {QStringLiteral("NIF"), kText},
                    {QStringLiteral("Mostrar"), kBoolean},
                });
    // The donor grid looks up each row's saved payer and each cell's saved
    // amount: without these a large school's reload reads the tables over
    // and over.
    Exec(db, QStringLiteral("CREATE INDEX IF NOT EXISTS DatosModelo182_Celda ON DatosModelo182 (IDCC, IDAct, IDAL, IDMF)"));
    Exec(db, QStringLiteral("CREATE INDEX IF NOT EXISTS ALMFModelo182_Fila ON ALMFModelo182 (IDAL, IDMF)"));
    Finish(connection, transaction);
}

void CreateDeletedRecordsDatabase(Connection &connection)
{
    Connection::Transaction transaction(connection);
    Finish(connection, transaction);
}

void CreateYearDatabase(Connection &connection)
{
    QSqlDatabase db = connection.Database();
    Connection::Transaction transaction(connection);
    CreateTable(db, QStringLiteral("Centro"),
                {
                    {QStringLiteral("IDCentro"), kKey},
                    {QStringLiteral("Nombre"), kText},
                    {QStringLiteral("DirectorCentro"), kText},
                    {QStringLiteral("CIF"), kText},
                    {QStringLiteral("Direccion"), kText},
                    {QStringLiteral("Poblacion"), kText},
                    {QStringLiteral("CodigoPostal"), kText},
                    {QStringLiteral("codProvincia"), kInteger},
                    {QStringLiteral("Telefono"), kText},
                    {QStringLiteral("Email"), kText},
                    {QStringLiteral("RFiscal"), kInteger},
                });
    CreateTable(db, QStringLiteral("Actividad"),
                {
                    {QStringLiteral("IDActividad"), kKey},
                    {QStringLiteral("Nombre"), kText},
                    {QStringLiteral("PrecioEuros"), kReal},
                });
    CreateTable(db, QStringLiteral("Alumno"),
                {
                    {QStringLiteral("IDAlumno"), kKey},
                    {QStringLiteral("Apellido_1"), kText},
                    {QStringLiteral("Apellido_2"), kText},
                    {QStringLiteral("Nombre"), kText},
                    {QStringLiteral("codFamilia"), kInteger},
                });
    QList<Column> enrolment = {
        {QStringLiteral("IDAlumnoActividadMiembro"), kKey},
        {QStringLiteral("codAlumno"), kInteger},
        {QStringLiteral("codActividad"), kInteger},
        {QStringLiteral("codMiembroFamiliaPagador"), kInteger},
        {QStringLiteral("PrecioEuros"), kReal},
    };
    enrolment += MonthColumns();
    CreateTable(db, QStringLiteral("Alumno_Actividad_Miembro"), enrolment);
    CreateTable(db, QStringLiteral("MiembroFamiliaPagador"),
                {
                    {QStringLiteral("idMiembroFamiliaPagador"), kKey},
                    {QStringLiteral("codMiembroFamilia"), kInteger},
                });
    CreateTable(db, QStringLiteral("MiembroFamilia"),
                {
                    {QStringLiteral("IDMiembroFamilia"), kKey},
                    {QStringLiteral("Apellido1"), kText},
                    {QStringLiteral("Apellido2"), kText},
                    {QStringLiteral("Nombre"), kText},
                    {QStringLiteral("codFamilia"), kInteger},
                    {QStringLiteral("DNI"), kText},
                    {QStringLiteral("codDireccion"), kInteger},
                });
    CreateTable(db, QStringLiteral("Direccion"),
                {
                    {QStringLiteral("IDDireccion"), kKey},
                    {QStringLiteral("direccion"), kText},
                    {QStringLiteral("poblacion"), kText},
                    {QStringLiteral("codigopostal"), kText},
                    {QStringLiteral("codProvincia"), kInteger},
                });
    CreateTable(db, QStringLiteral("Provincia"),
                {
                    {QStringLiteral("IDProvincia"), kKey},
                    {QStringLiteral("descripcion"), kText},
                });
    Exec(db, QStringLiteral("CREATE INDEX IF NOT EXISTS Alumno_Actividad_Miembro_codActividad "
                            "ON Alumno_Actividad_Miembro (codActividad)"));
    if (IsEmpty(db, QStringLiteral("Provincia"))) {
        QSqlQuery insert = Prepare(db, QStringLiteral("INSERT INTO Provincia (IDProvincia, descripcion) VALUES (?, ?)"));
        for (const Seed::Province &province : Seed::Provinces())
            Run(insert, {province.code.toInt(), province.name});
    }
    Finish(connection, transaction);
}

void CreateDeclarationDatabase(Connection &connection)
{
    QSqlDatabase db = connection.Database();
    if (PostgresSchema::IsServer(db))
        throw DatabaseError(QStringLiteral("La base de datos de la declaración (Modelo182.mdb) es siempre un archivo "
                                           "local; no se crea en el servidor."));
    Connection::Transaction transaction(connection);
    CreateTable(db, QStringLiteral("ComunidadesAutonomas"),
                {
                    {QStringLiteral("IDComunidadAutonoma"), kAutoNumber},
                    {QStringLiteral("ComunidadAutonoma"), kText},
                    {QStringLiteral("CodigoComunidadAutonoma"), kText},
                });
    CreateTable(db, QStringLiteral("Deducciones"),
                {
                    {QStringLiteral("IDDeduccion"), kAutoNumber},
                    {QStringLiteral("Deduccion"), kReal},
                });
    CreateTable(db, QStringLiteral("TipoDonativos"),
                {
                    {QStringLiteral("IDTipoDonativo"), kAutoNumber},
                    {QStringLiteral("TipoDonativo"), kText},
                    {QStringLiteral("CodigoDonativo"), kText},
                });
    CreateTable(db, QStringLiteral("ComunidadesAutonomas_Deducciones"),
                {
                    {QStringLiteral("codComunidadAutonoma"), kInteger},
                    {QStringLiteral("codDeduccion"), kInteger},
                });
    CreateTable(db, QStringLiteral("TipoDonativos_Deducciones"),
                {
                    {QStringLiteral("codTipoDonativo"), kInteger},
                    {QStringLiteral("codDeduccion"), kInteger},
                });
    CreateTable(db, QStringLiteral("Provincias"),
                {
                    {QStringLiteral("CodigoProvincia"), kText},
                    {QStringLiteral("codComunidadAutonoma"), kInteger},
                    {QStringLiteral("Provincia"), kText},
                });
    // Every amount of the declaration looks up its donor's province by name.
    Exec(db, QStringLiteral("CREATE INDEX IF NOT EXISTS Provincias_Provincia ON Provincias (Provincia)"));
    CreateTable(db, QStringLiteral("Declarantes"),
                {
                    {QStringLiteral("IDDeclarante"), kAutoNumber},
                    {QStringLiteral("ejercicio"), kText},
                    {QStringLiteral("nombre"), kText},
                    {QStringLiteral("nif"), kText},
                    {QStringLiteral("pcnombre"), kText},
                    {QStringLiteral("pcapellido1"), kText},
                    {QStringLiteral("pcapellido2"), kText},
                    {QStringLiteral("pctelefono"), kText},
                    {QStringLiteral("regimenfiscal"), kText},
                    {QStringLiteral("delegacion"), kText},
                    {QStringLiteral("domicilio"), kText},
                });
    CreateTable(db, QStringLiteral("Donantes"),
                {
                    {QStringLiteral("codDeclarante"), kInteger},
                    {QStringLiteral("nombre"), kText},
                    {QStringLiteral("apellido1"), kText},
                    {QStringLiteral("apellido2"), kText},
                    {QStringLiteral("nif"), kText},
                    {QStringLiteral("nifrepresentante"), kText},
                    {QStringLiteral("codigoprovincia"), kText},
                    {QStringLiteral("clave"), kText},
                    {QStringLiteral("deduccion"), kText},
                    {QStringLiteral("importe"), kText},
                    {QStringLiteral("donativoenespecie"), kText},
                    {QStringLiteral("ComunidadAut"), kText},
                    {QStringLiteral("DeduccionCAut"), kText},
                    {QStringLiteral("TipoPersona"), kText},
                });
    // "DELETE FROM Declarantes" takes the declarant's donors with it, whether
    // or not the connection enforces foreign keys.
    Exec(db, QStringLiteral("CREATE TRIGGER IF NOT EXISTS Declarantes_BorrarDonantes "
                            "AFTER DELETE ON Declarantes FOR EACH ROW BEGIN "
                            "DELETE FROM Donantes WHERE codDeclarante = OLD.IDDeclarante; END"));
    CreateTable(db, QStringLiteral("CartaDonantes"),
                {
                    {QStringLiteral("Apellido1"), kText},
                    {QStringLiteral("Apellido2"), kText},
                    {QStringLiteral("Nombre"), kText},
                    {QStringLiteral("NIF"), kText},
                    {QStringLiteral("Importe"), kText},
                    {QStringLiteral("Poblacion"), kText},
                    {QStringLiteral("Direccion"), kText},
                    {QStringLiteral("CodPos"), kText},
                    {QStringLiteral("Provincia"), kText},
                });
    SeedCatalogue(db);
    Finish(connection, transaction);
}

int UserVersion(Connection &connection)
{
    QSqlDatabase db = connection.Database();
    if (PostgresSchema::IsServer(db))
        return PostgresSchema::Version(db);
    return Scalar(db, QStringLiteral("PRAGMA user_version")).toInt();
}

} // namespace Schema
