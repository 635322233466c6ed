#include "generator/DeclarationRows.h"

#include "data/Connection.h"
#include "data/DatabaseError.h"

namespace Aeat {

namespace {

QString Text(const QVariant &value)
{
    return value.isNull() ? QString() : value.toString();
}

const char kDonorColumns[] =
    "nombre, apellido1, apellido2, nif, nifrepresentante, codigoprovincia, clave, deduccion, importe, "
    "donativoenespecie, ComunidadAut, DeduccionCAut, TipoPersona";

// The identifier as the file writes it (what ValidarNIFCIF leaves of a valid
// one: no "-", no white space around, upper case), so that every way one
// donor's identifier may be stored sorts to the same place.
const char kDonorKey[] = "substr('000000000' || upper(trim(replace(nif, '-', ''), ' ' || char(9, 10, 11, 12, 13))), -9)";

} // namespace

std::optional<DeclarantRow> ReadNewestDeclarant(Connection &connection)
{
    Recordset rs = connection.Execute(
        QStringLiteral("SELECT IDDeclarante, ejercicio, nombre, nif, pcnombre, pcapellido1, pcapellido2, pctelefono "
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

namespace {

QString DonorQuery(qint64 declarantId, DonorRowStream::Order order)
{
    QString sql = QStringLiteral("SELECT ") + QLatin1String(kDonorColumns)
                  + QStringLiteral(" FROM Donantes WHERE codDeclarante = ") + QString::number(declarantId);
    if (order == DonorRowStream::Order::ByDonor)
        sql += QStringLiteral(" ORDER BY ") + QLatin1String(kDonorKey);
    return sql;
}

} // namespace

DonorRowStream::DonorRowStream(Connection &connection, qint64 declarantId, Order order)
    : m_statement(connection, DonorQuery(declarantId, order))
{
}

bool DonorRowStream::Next(DonorRow &row)
{
    if (!m_statement.Step())
        return false;
    row.nombre = m_statement.Text(0);
    row.apellido1 = m_statement.Text(1);
    row.apellido2 = m_statement.Text(2);
    row.nif = m_statement.Text(3);
    row.nifRepresentante = m_statement.Text(4);
    row.codigoProvincia = m_statement.Text(5);
    row.clave = m_statement.Text(6);
    row.deduccion = m_statement.Text(7);
    row.importe = m_statement.Text(8);
    row.donativoEnEspecie = m_statement.Text(9);
    row.comunidadAut = m_statement.Text(10);
    row.deduccionCAut = m_statement.Text(11);
    row.tipoPersona = m_statement.Text(12);
    return true;
}

} // namespace Aeat
