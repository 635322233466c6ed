#include "generator/DeclarationRows.h"

#include "data/Connection.h"
#include "data/DatabaseError.h"

#include <algorithm>

namespace Aeat {

namespace {

QString Text(const QVariant &value)
{
    return value.isNull() ? QString() : value.toString();
}

constexpr int kNifColumn = 3;
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
        sql += QStringLiteral(" ORDER BY ") + QLatin1String(kDonorKey) + QStringLiteral(", rowid");
    return sql;
}

} // namespace

// Rows read by rowid in one statement per batch of rowids (a JSON array):
// a statement per row would cost more than SQLite sorting the rows.
constexpr size_t kBatchRows = 20'000;

DonorRowStream::DonorRowStream(Connection &connection, qint64 declarantId, Order order, DonorOrder::Limits limits)
{
    if (order == Order::ByDonor) {
        m_order = std::make_unique<DonorOrder>(connection, declarantId, QLatin1String(kDonorColumns), kColumns, kNifColumn,
                                               limits);
        if (m_order->Held())
            return;
        if (m_order->Ordered()) {
            try {
                // CROSS JOIN keeps the batch as the outer loop: rows come in its order.
                m_statement = std::make_unique<SqliteStatement>(connection,
                                                                QStringLiteral("SELECT ") + QLatin1String(kDonorColumns)
                                                                    + QStringLiteral(
                                                                        " FROM json_each(?) AS batch CROSS JOIN Donantes "
                                                                        "ON Donantes.rowid = batch.value"));
                return;
            } catch (const DatabaseError &) {
                // An SQLite built without its JSON functions: SQL orders the rows.
            }
        }
        m_order.reset(); // an identifier only SQL orders, or no JSON functions
    }
    m_statement = std::make_unique<SqliteStatement>(connection, DonorQuery(declarantId, order));
}

bool DonorRowStream::Step()
{
    if (!m_order)
        return m_statement->Step();
    if (m_order->Held()) {
        if (m_next == m_order->Size())
            return false;
        m_order->HeldRow(m_next++, m_heldRow.data());
        return true;
    }
    for (;;) {
        if (m_batchBound && m_statement->Step())
            return true;
        if (m_next == m_order->Size())
            return false;
        QByteArray batch = "[";
        for (const size_t end = std::min(m_next + kBatchRows, m_order->Size()); m_next < end; ++m_next) {
            batch += QByteArray::number(m_order->RowId(m_next));
            batch += ',';
        }
        batch[batch.size() - 1] = ']';
        m_statement->Reset();
        m_statement->Bind(1, QByteArrayView(batch));
        m_batchBound = true;
    }
}

qint64 DonorRowStream::RowCount(Connection &connection, qint64 declarantId) const
{
    if (m_order)
        return qint64(m_order->Size());
    SqliteStatement count(connection, QStringLiteral("SELECT COUNT(*) FROM Donantes WHERE codDeclarante = ")
                                          + QString::number(declarantId));
    return count.Step() ? count.Integer(0) : 0;
}

bool DonorRowStream::Next(DonorRow &row)
{
    if (!Step())
        return false;
    // A held row is already in m_heldRow; a row read by SQLite is put there.
    if (!m_order || !m_order->Held()) {
        for (int column = 0; column < kColumns; ++column)
            m_heldRow[size_t(column)] = m_statement->Utf8(column);
    }
    const QByteArrayView *cell = m_heldRow.data();
    row.nombre = cell[0];
    row.apellido1 = cell[1];
    row.apellido2 = cell[2];
    row.nif = cell[3];
    row.nifRepresentante = cell[4];
    row.codigoProvincia = cell[5];
    row.clave = cell[6];
    row.deduccion = cell[7];
    row.importe = cell[8];
    row.donativoEnEspecie = cell[9];
    row.comunidadAut = cell[10];
    row.deduccionCAut = cell[11];
    row.tipoPersona = cell[12];
    static_assert(kColumns == 13);
    return true;
}

} // namespace Aeat
