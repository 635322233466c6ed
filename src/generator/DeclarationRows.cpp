#include "generator/DeclarationRows.h"

#include "data/Connection.h"
#include "data/DatabaseError.h"

#include <QSqlDriver>
#include <QSqlError>

#include <sqlite3.h>

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
const char kDonorKey[] =
    "substr('000000000' || upper(trim(replace(nif, '-', ''), ' ' || char(9, 10, 11, 12, 13))), -9)";

sqlite3 *SQLiteHandle(Connection &connection)
{
    const QSqlDatabase db = connection.Database();
    if (!db.isValid() || !db.driver())
        return nullptr;
    const QVariant handle = db.driver()->handle();
    if (!handle.isValid() || qstrcmp(handle.typeName(), "sqlite3*") != 0)
        return nullptr;
    return *static_cast<sqlite3 *const *>(handle.constData());
}

QString Column(sqlite3_stmt *statement, int column)
{
    const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
    return text ? QString::fromUtf8(text, sqlite3_column_bytes(statement, column)) : QString();
}

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
{
    m_sql = QStringLiteral("SELECT ") + QLatin1String(kDonorColumns)
            + QStringLiteral(" FROM Donantes WHERE codDeclarante = ") + QString::number(declarantId);
    if (order == Order::ByDonor)
        m_sql += QStringLiteral(" ORDER BY ") + QLatin1String(kDonorKey);
    if (sqlite3 *handle = SQLiteHandle(connection)) {
        const QByteArray sql = m_sql.toUtf8();
        if (sqlite3_prepare_v2(handle, sql.constData(), int(sql.size()), &m_statement, nullptr) != SQLITE_OK) {
            const QString message = QString::fromUtf8(sqlite3_errmsg(handle));
            sqlite3_finalize(m_statement);
            m_statement = nullptr;
            throw DatabaseError(message, m_sql);
        }
        return;
    }
    m_query = QSqlQuery(connection.Database());
    m_query.setForwardOnly(true);
    if (!m_query.exec(m_sql))
        throw DatabaseError(m_query.lastError().text(), m_sql);
}

DonorRowStream::~DonorRowStream()
{
    sqlite3_finalize(m_statement);
}

bool DonorRowStream::Next(DonorRow &row)
{
    if (!m_statement)
        return NextFromQuery(row);
    const int step = sqlite3_step(m_statement);
    if (step == SQLITE_DONE)
        return false;
    if (step != SQLITE_ROW)
        throw DatabaseError(QString::fromUtf8(sqlite3_errmsg(sqlite3_db_handle(m_statement))), m_sql);
    row.nombre = Column(m_statement, 0);
    row.apellido1 = Column(m_statement, 1);
    row.apellido2 = Column(m_statement, 2);
    row.nif = Column(m_statement, 3);
    row.nifRepresentante = Column(m_statement, 4);
    row.codigoProvincia = Column(m_statement, 5);
    row.clave = Column(m_statement, 6);
    row.deduccion = Column(m_statement, 7);
    row.importe = Column(m_statement, 8);
    row.donativoEnEspecie = Column(m_statement, 9);
    row.comunidadAut = Column(m_statement, 10);
    row.deduccionCAut = Column(m_statement, 11);
    row.tipoPersona = Column(m_statement, 12);
    return true;
}

bool DonorRowStream::NextFromQuery(DonorRow &row)
{
    if (!m_query.next()) {
        if (m_query.lastError().isValid())
            throw DatabaseError(m_query.lastError().text(), m_sql);
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
