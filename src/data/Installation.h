#pragma once

#include <QList>
#include <QString>

#include <array>
#include <initializer_list>
#include <optional>

// A whole installation of the host as this program meets it, built from a
// compact description: the host's entry, school, deleted-records and
// per-year databases, the declaration database Modelo182.mdb with its
// catalogue, the application and reports folders and the session settings
// file. Used by the demo and by the tests of every component that needs a
// host around it.
//
// A null QString (QString()) in a text field is written as NULL; an empty
// but non-null one ("") as an empty text.

// The month flags of an enrolment, January first: -1 set, 0 not set,
// std::nullopt a NULL flag.
using MonthFlags = std::array<std::optional<int>, 12>;

// -1 in the given months (1 = January ... 12 = December), 0 in the others.
MonthFlags Months(std::initializer_list<int> months);
// The school months, September to June.
MonthFlags SchoolMonths();

// One row of a `Centro` table.
struct SchoolDescription
{
    int id = 1;                       // IDCentro
    QString name;                     // Nombre
    QString director;                 // DirectorCentro
    QString cif;                      // CIF
    QString phone;                    // Telefono
    std::optional<int> taxRegime = 1; // RFiscal
    QString street;                   // Direccion
    QString town;                     // Poblacion
    QString postalCode;               // CodigoPostal
    QString province;                 // by name, as Provincia.descripcion
    QString email;                    // Email
};

struct AddressDescription
{
    QString street;     // Direccion.direccion
    QString town;       // poblacion
    QString postalCode; // codigopostal
    QString province;   // Provincia.descripcion; "" leaves codProvincia NULL
};

struct ActivityDescription
{
    int id = 0;                  // IDActividad
    QString name;                // Nombre
    std::optional<double> price; // the activity's usual monthly price
};

struct StudentDescription
{
    int id = 0;       // IDAlumno
    QString surname1; // Apellido_1
    QString surname2; // Apellido_2
    QString name;     // Nombre
    int family = 0;   // codFamilia; 0 -> NULL
};

struct MemberDescription
{
    int id = 0;                                // IDMiembroFamilia
    QString surname1;                          // Apellido1
    QString surname2;                          // Apellido2
    QString name;                              // Nombre
    int family = 0;                            // codFamilia; 0 -> NULL
    QString dni;                               // DNI
    std::optional<AddressDescription> address; // none: codDireccion NULL
};

// One row of `Alumno_Actividad_Miembro`.
struct EnrolmentDescription
{
    int student = 0;                    // codAlumno
    int activity = 0;                   // codActividad
    int payer = 0;                      // the paying member's IDMiembroFamilia; 0: no payer
    std::optional<double> price;        // PrecioEuros; nullopt -> NULL
    MonthFlags months = SchoolMonths(); // enero ... diciembre
};

struct YearDescription
{
    int id = 0;                              // IDCursoEscolar
    QString name;                            // Nombre, e.g. "2024-2025"
    QString fileName;                        // the database file in the data folder; "" -> "curso<id>.db"
    int schoolId = 0;                        // codcentro; 0 -> the installation's school
    std::optional<SchoolDescription> school; // the year's Centro row; default the installation's school
    bool createDatabase = true;              // false: CursoEscolar names a file that does not exist
    std::optional<QString> connectionString; // BD as written; default "Provider=SQLite;Data Source=datos/<fileName>"
    QList<ActivityDescription> activities;
    QList<MemberDescription> members;
    QList<StudentDescription> students;
    QList<EnrolmentDescription> enrolments;
};

// Rows of the saved-work tables of the school database, in column order.
struct SavedActivity // CursoEscAct
{
    int idCursoEscolar = 0;
    QString nombre;
    QString conBD;
    int idActividad = 0;
    QString actNom;
    double deduc = 0;
    QString tipoDon;
    QString tipoDonDed;
    QString meses;
    bool deducComAut = false;
};

struct SavedCommunity // ComDed
{
    int idComAut = 0;
    int idDeduc = 0;
    double valor = 0;
};

struct SavedPayment // DatosModelo182
{
    int idAL = 0;
    int idMF = 0;
    int idCC = 0;
    int idAct = 0;
    double pago = 0;
};

struct SavedDonor // ALMFModelo182
{
    int idAL = 0;
    int idMF = 0;
    QString nombre;
    QString ap1;
    QString ap2;
    QString nif;
    bool mostrar = true;
};

struct SavedWorkDescription
{
    QList<SavedActivity> activities;
    QList<SavedCommunity> communities;
    QList<SavedPayment> payments;
    QList<SavedDonor> donors;
};

// The values of the session settings file that are not paths.
struct SessionDescription
{
    int idPerfil = 1;
    int idUsuario = 1;
    QString userName = QStringLiteral("secretaria");
    int currentYear = 0; // idCursoEscolar; 0 -> the greatest year id
    bool sqlServer = false;
    bool activa = true;
    int accion = 0;
    int rowData = 0; // lngRowData
    bool pesetas = false;
    bool mtp = false;
    QString locale = QStringLiteral("es_ES"); // [Modelo182] Locale; "" leaves it out
    bool desarrollo = false;
    QString numeroJustificante;
    QString delegacion;
    QString domicilio;
};

// Where the host's databases go: SQLite files in the data folder, or a
// PostgreSQL server.
struct HostServerDescription
{
    // A connection string of the PostgreSQL provider reaching the server
    // (Host, Port, User ID, Password; its Database, "postgres" when absent,
    // is where the others are made from). "" puts SQLite files in the data
    // folder.
    QString connectionString;
    // The server's databases are <prefix>_entrada, <prefix>_centro,
    // <prefix>_borrado and <prefix>_curso<id> (a year's file name without
    // its extension).
    QString prefix = QStringLiteral("modelo182");
};

struct InstallationDescription
{
    SchoolDescription school;              // the session's school (IDCentro, NombreCentro)
    QList<SchoolDescription> otherSchools; // further schools of the entry database
    QList<YearDescription> years;
    SavedWorkDescription savedWork;
    SessionDescription session;
    HostServerDescription server;
    // The folder of the add-in's library: with session.sqlServer set, the
    // add-in looks for Modelo182.mdb in its "Informes" folder, so the file is
    // made there. "" means the installation's application folder (where the
    // host keeps its add-ins).
    QString addinFolder;
};

struct YearPaths
{
    int id = 0;
    QString name;
    QString databaseFile;     // absolute path of the year's file ("" on a server)
    QString connectionString; // CursoEscolar.BD as written (relative to the root)
    bool databaseCreated = true;
};

// Where everything went. Folders and files are absolute paths; connection
// strings are as the settings file and CursoEscolar hold them, with "Data
// Source" relative to `root`: a connection opening them needs
// SetBaseFolder(root).
struct InstallationPaths
{
    QString root;                       // the installation folder
    QString iniFile;                    // root/modelo182.ini
    QString rutaBD;                     // root/datos (session "RutaBD")
    QString rutaAplicacion;             // root/app (session "rutaaplicacion")
    QString informes;                   // root/app/Informes
    QString iconFile;                   // root/app/modelo182.ico (not written here)
    QString entradaFile;                // root/datos/entrada.db ("" on a server, as the two below)
    QString centroFile;                 // root/datos/centro.db
    QString borradoFile;                // root/datos/borrado.db
    QString conexionAppEntrada;         // "Provider=SQLite;Data Source=datos/entrada.db", or the server's
    QString conexionLocalCentro;        // "Provider=SQLite;Data Source=datos/centro.db"
    QString conexionBorradoLocalCentro; // "Provider=SQLite;Data Source=datos/borrado.db"
    QList<YearPaths> years;             // in the order of the description
    QString addinFolder;                // where the add-in's library is taken to be
    QString modelo182File;              // root/datos/Modelo182.mdb; with sqlserver, <addinFolder>/Informes/Modelo182.mdb
    // The declaration connection's string with the absolute path:
    // "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=<modelo182File>;
    // Persist Security Info=False;Jet OLEDB:Database Password=zq417tev"
    QString modelo182ConnectionString;

    // The year with this id, or null.
    const YearPaths *Year(int id) const;
};

// Builds the installation in `dir` (created if missing). Database files of an
// earlier installation in the same place are replaced. Each paying member
// gets one `MiembroFamiliaPagador` row, keyed 5000 + n, n counting the payers
// in the order of their first enrolment (so the role keys never equal the
// member keys); a payer id that no member has still gets its role, pointing
// at the missing member. Address and `Direccion` keys are numbered 1, 2, ...
// in member order. A province name not among the seeded ones is added to the
// year's `Provincia` with a key from 100 on.
// On a server, a database of the same name made by an earlier installation
// is emptied and filled again; one holding anything else is refused.
// Throws DatabaseError on a database failure, std::runtime_error when a
// folder cannot be made, SettingsFileError when the settings file cannot
// be written.
InstallationPaths BuildInstallation(const QString &dir, const InstallationDescription &description);

// The settings file's text for an installation ([Sesion] and [Modelo182]),
// written by SettingsFile so that every value reads back as it is.
QString SessionSettingsText(const InstallationDescription &description, const InstallationPaths &paths);
