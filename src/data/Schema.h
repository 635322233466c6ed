#pragma once

class Connection;

// Creation of every database the program reads or writes, on an open SQLite
// connection (Connection::CreateSQLite); the host's databases also on a
// PostgreSQL connection. Each routine is idempotent: tables, indexes and
// triggers are created only when missing, seed rows go only into empty
// tables, and the schema version (PRAGMA user_version, or the server's
// version table) is set to kSchemaVersion. Every text column is declared with
// the collation M182_TEXT_COLLATION (on the server, the ICU collation of
// PostgresSchema), so comparisons ignore case and ordering is Spanish.
// Booleans are integers holding -1 or 0.
// A failing statement throws DatabaseError; the routine's own writes are then
// rolled back.
namespace Schema {

// The host's entry database: `Centro` (the schools) and `CursoEscolar` (their
// school years, each with the connection string `BD` of its database).
void CreateEntryDatabase(Connection &connection);

// The host's school database: the wizard's saved work, `CursoEscAct`,
// `ComDed`, `DatosModelo182` and `ALMFModelo182`, in the column order the
// positional inserts rely on.
void CreateSchoolDatabase(Connection &connection);

// The host's database of deleted records: nothing the program reads; only the
// schema version is recorded.
void CreateDeletedRecordsDatabase(Connection &connection);

// One school year's database: `Centro`, `Actividad`, `Alumno`,
// `Alumno_Actividad_Miembro`, `MiembroFamiliaPagador`, `MiembroFamilia`,
// `Direccion` and `Provincia`. `Provincia` is seeded with the 52 provinces
// (IDProvincia = the province code as a number, `descripcion` = the name the
// declaration database's `Provincias` uses).
void CreateYearDatabase(Connection &connection);

// The declaration database Modelo182.mdb: the deduction catalogues
// (`ComunidadesAutonomas`, `Deducciones`, `TipoDonativos`,
// `ComunidadesAutonomas_Deducciones`, `TipoDonativos_Deducciones`,
// `Provincias`) seeded with the rows of Seed, and the declaration tables
// `Declarantes`, `Donantes` (removed with their declarant by a trigger) and
// `CartaDonantes`. Always a local file: refused on a server.
void CreateDeclarationDatabase(Connection &connection);

// The schema version of the connection's database.
int UserVersion(Connection &connection);

} // namespace Schema
