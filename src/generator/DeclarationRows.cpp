#include "generator/DeclarationRows.h"

#include "data/Connection.h"
#include "data/DatabaseError.h"

#include <QSqlError>

namespace {

QString Text(const QVariant &value)
{
    return value.isNull() ? QString() : value.toString();
}

const char kDonorColumns[] =
    "nombre, apellido1, apellido2, nif, nifrepresentante, codigoprovincia, clave, deduccion, importe, "
    "donativoenespecie, ComunidadAut, DeduccionCAut, TipoPersona";

// The identifier as the file writes it; the same text for every way the
// wizard may have stored one donor's identifier.
const char kDonorKey[] = "substr('000000000' || upper(trim(replace(nif, '-', ''))), -9)";

} // namespace

std::optional<DeclarantRow> ReadNewestDeclarant(Connection &connection)
{
    Recordset rs = connection.Execute(QStringLiteral(
        "SELECT IDDeclarante, ejercicio, nombre, nif, pcnombre, pcapellido1, pcapellido2, pctelefono "
        "FROM Declarantes WHERE IDDeclarante = (SELECT MAX(IDDeclarante) FROM Declarantes)"));
    if (rs.Eof())
        return std::nullopt;
    DeclarantRow row;
    row.id = rs.Fields(QStringLiteral("IDDeclarante")).toLongLong();
    row.ejercicio = Text(rs.Fields(QStringLiteral("ejercicio")));
    row.nombre = Text(rs.Fields(QStringLiteral("nombre")));
    row.nif = Text(rs.Fields(QStringLiteral("nif")));
    row.pcnombre = Text(rs.Fields(QStringLiteral("pcnombre")));
    row.pcapellido1 = Text(rs.Fields(QStringLiteral("pcapellido1")));
    row.pcapellido2 = Text(rs.Fields(QStringLiteral("pcapellido2")));
    row.pctelefono = Text(rs.Fields(QStringLiteral("pctelefono")));
    return row;
}

qint64 CountDonorRows(Connection &connection, qint64 declarantId)
{
    Recordset rs = connection.Execute(QStringLiteral("SELECT COUNT(*) FROM Donantes WHERE codDeclarante = ")
                                      + QString::number(declarantId));
    return rs.Fields(0).toLongLong();
}

DonorRowStream::DonorRowStream(Connection &connection, qint64 declarantId, Order order)
    : m_query(connection.Database())
{
    QString sql = QStringLiteral("SELECT ") + QLatin1String(kDonorColumns)
                  + QStringLiteral(" FROM Donantes WHERE codDeclarante = ") + QString::number(declarantId);
    if (order == Order::ByDonor)
        sql += QStringLiteral(" ORDER BY ") + QLatin1String(kDonorKey);
    // Forward only: the driver then keeps one row at a time.
    m_query.setForwardOnly(true);
    if (!m_query.exec(sql))
        throw DatabaseError(m_query.lastError().text(), sql);
}

bool DonorRowStream::Next(DonorRow &row)
{
    if (!m_query.next()) {
        if (m_query.lastError().isValid())
            throw DatabaseError(m_query.lastError().text(), m_query.lastQuery());
        return false;
    }
    row.nombre = Text(m_query.value(0));
    row.apellido1 = Text(m_query.value(1));
    row.apellido2 = Text(m_query.value(2));
    row.nif = Text(m_query.value(3));
    row.nifRepresentante = Text(m_query.value(4));
    row.codigoProvincia = Text(m_query.value(5));
    row.clave = Text(m_query.value(6));
    row.deduccion = Text(m_query.value(7));
    row.importe = Text(m_query.value(8));
    row.donativoEnEspecie = Text(m_query.value(9));
    row.comunidadAut = Text(m_query.value(10));
    row.deduccionCAut = Text(m_query.value(11));
    row.tipoPersona = Text(m_query.value(12));
    return true;
}
