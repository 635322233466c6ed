#pragma once

#include "data/Connection.h"

#include <QString>
#include <memory>

class SesionHost;

// Each property of the session context: a setter followed by its getter,
// over a private field.
#define M182_PROPERTY(Type, Name)                                                                                           \
public:                                                                                                                     \
    void set_##Name(const Type &value)                                                                                      \
    {                                                                                                                       \
        m_##Name = value;                                                                                                   \
    }                                                                                                                       \
    const Type &Name() const                                                                                                \
    {                                                                                                                       \
        return m_##Name;                                                                                                    \
    }                                                                                                                       \
                                                                                                                            \
private:                                                                                                                    \
    Type m_##Name{};

// The host's session as the add-in keeps it: copied once by ObtenerDatos and
// read by every window afterwards. Properties stand in the host's order.
class cConfiguracion
{
public:
    // Whether the host's databases run on a database server; decides where
    // the declaration database is looked for.
    bool blnSQLServer = false;

    M182_PROPERTY(qint16, intIDPerfil)
    M182_PROPERTY(qint16, intIDUsuario)
    M182_PROPERTY(QString, strNombreUsuario)
    M182_PROPERTY(qint16, intIdCentro)
    M182_PROPERTY(QString, strNombreCentro)
    M182_PROPERTY(qint16, intIDCursoEscolar)
    M182_PROPERTY(qint16, intCodCurso)
    M182_PROPERTY(qint16, intTipoEnsenanza)
    M182_PROPERTY(ConnectionPtr, conLocalBorradoCentro)
    M182_PROPERTY(ConnectionPtr, conLocalCentro)
    M182_PROPERTY(ConnectionPtr, conLocalAppEntrada)
    M182_PROPERTY(qint32, lngRowData)
    M182_PROPERTY(quint8, bytAccion)
    M182_PROPERTY(bool, blnPesetas)
    M182_PROPERTY(bool, Activa)
    M182_PROPERTY(bool, blnDatosMedicos)
    M182_PROPERTY(bool, MTP)
    M182_PROPERTY(QString, RutaIcono)
    M182_PROPERTY(std::shared_ptr<SesionHost>, datossesion)
    M182_PROPERTY(QString, RutaBD)
};
