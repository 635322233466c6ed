#include "session/SessionCopy.h"

#include <QDir>
#include <limits>

namespace {

template <typename T> T Narrow(const SesionHost &session, const QString &name)
{
    const qlonglong value = session.Integer(name);
    if (value < std::numeric_limits<T>::min() || value > std::numeric_limits<T>::max())
        throw SessionError(QStringLiteral("Desbordamiento: la propiedad de sesión «") + name + QStringLiteral("» vale ")
                           + QString::number(value) + QStringLiteral(", fuera del intervalo ")
                           + QString::number(qlonglong(std::numeric_limits<T>::min())) + QStringLiteral(" a ")
                           + QString::number(qlonglong(std::numeric_limits<T>::max())) + QStringLiteral("."));
    return T(value);
}

} // namespace

void CopySession(const SesionHostPtr &sessionPtr, cConfiguracion &c, QString &helpFile)
{
    if (!sessionPtr)
        throw SessionError(QStringLiteral("No se ha recibido la sesión del programa principal."));
    const SesionHost &s = *sessionPtr;

    helpFile = s.Text(QStringLiteral("rutaaplicacion")) + QDir::separator() + QStringLiteral("vendelar.chm");

    c.set_RutaBD(s.Text(QStringLiteral("RutaBD")));
    c.set_Activa(s.Boolean(QStringLiteral("Activa")));
    c.set_bytAccion(Narrow<quint8>(s, QStringLiteral("Accion")));
    c.set_lngRowData(Narrow<qint32>(s, QStringLiteral("lngRowData")));
    c.set_conLocalBorradoCentro(s.ConnectionValue(QStringLiteral("conexionBORRADOlocalCENTRO")));
    c.set_conLocalCentro(s.ConnectionValue(QStringLiteral("conexionlocalCENTRO")));
    c.set_conLocalAppEntrada(s.ConnectionValue(QStringLiteral("conexionAppEntrada")));
    c.set_intIDPerfil(Narrow<qint16>(s, QStringLiteral("IDPerfil")));
    c.set_intIDUsuario(Narrow<qint16>(s, QStringLiteral("IDUsuario")));
    c.set_intIdCentro(Narrow<qint16>(s, QStringLiteral("IDCentro")));
    c.set_intIDCursoEscolar(Narrow<qint16>(s, QStringLiteral("idCursoEscolar")));
    c.set_strNombreUsuario(s.Text(QStringLiteral("NombreUsuario")));
    c.set_strNombreCentro(s.Text(QStringLiteral("NombreCentro")));
    c.set_blnPesetas(s.Boolean(QStringLiteral("Pesetas")));
    c.set_MTP(s.Boolean(QStringLiteral("MTP")));
    c.set_RutaIcono(s.Text(QStringLiteral("RutaIcono")));
    c.blnSQLServer = s.Boolean(QStringLiteral("sqlserver"));

    c.set_datossesion(sessionPtr);
}
