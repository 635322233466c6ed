#pragma once

#include <QLatin1String>
#include <QString>

#include <array>

// The names of the session settings file, shared by the installation that
// writes it and the host stand-in that reads it back.
namespace SessionKeys {

inline constexpr QLatin1String kSesion("Sesion");       // the host's session properties
inline constexpr QLatin1String kModelo182("Modelo182"); // this program's own settings

// How the host stand-in turns a [Sesion] text into a session value.
enum class Kind {
    Path,       // a folder or file, relative to the settings file's folder
    Connection, // a connection string, opened before the add-in runs
    Boolean,    // true / false
    Integer,    // a whole number that fits in 64 bits
    Text,
};

struct Key
{
    QLatin1String name;
    Kind kind;
};

// The host's session properties under their exact names.
inline constexpr QLatin1String kRutaAplicacion("rutaaplicacion");
inline constexpr QLatin1String kRutaBD("RutaBD");
inline constexpr QLatin1String kSqlServer("sqlserver");
inline constexpr QLatin1String kIDPerfil("IDPerfil");
inline constexpr QLatin1String kIDUsuario("IDUsuario");
inline constexpr QLatin1String kNombreUsuario("NombreUsuario");
inline constexpr QLatin1String kIDCentro("IDCentro");
inline constexpr QLatin1String kNombreCentro("NombreCentro");
inline constexpr QLatin1String kIdCursoEscolar("idCursoEscolar");
inline constexpr QLatin1String kActiva("Activa");
inline constexpr QLatin1String kAccion("Accion");
inline constexpr QLatin1String kLngRowData("lngRowData");
inline constexpr QLatin1String kPesetas("Pesetas");
inline constexpr QLatin1String kMTP("MTP");
inline constexpr QLatin1String kRutaIcono("RutaIcono");
inline constexpr QLatin1String kConexionAppEntrada("conexionAppEntrada");
inline constexpr QLatin1String kConexionLocalCentro("conexionlocalCENTRO");
inline constexpr QLatin1String kConexionBorradoLocalCentro("conexionBORRADOlocalCENTRO");

// Every [Sesion] property in the host's order, with its kind.
inline constexpr std::array<Key, 18> kSession = {{
    {kRutaAplicacion, Kind::Path},
    {kRutaBD, Kind::Path},
    {kSqlServer, Kind::Boolean},
    {kIDPerfil, Kind::Integer},
    {kIDUsuario, Kind::Integer},
    {kNombreUsuario, Kind::Text},
    {kIDCentro, Kind::Integer},
    {kNombreCentro, Kind::Text},
    {kIdCursoEscolar, Kind::Integer},
    {kActiva, Kind::Boolean},
    {kAccion, Kind::Integer},
    {kLngRowData, Kind::Integer},
    {kPesetas, Kind::Boolean},
    {kMTP, Kind::Boolean},
    {kRutaIcono, Kind::Path},
    {kConexionAppEntrada, Kind::Connection},
    {kConexionLocalCentro, Kind::Connection},
    {kConexionBorradoLocalCentro, Kind::Connection},
}};

// [Modelo182], in the order the file lists them.
inline constexpr QLatin1String kLocale("Locale"); // number formats; the environment's when absent or empty
inline constexpr QLatin1String kDesarrollo("desarrollo");
inline constexpr QLatin1String kNumeroJustificante("NumeroJustificante");
inline constexpr QLatin1String kDelegacion("Delegacion");
inline constexpr QLatin1String kDomicilio("Domicilio");

// The listed property of that exact name, or null.
inline const Key *Find(const QString &name)
{
    for (const Key &key : kSession)
        if (name == key.name)
            return &key;
    return nullptr;
}

} // namespace SessionKeys
