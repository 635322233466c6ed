#pragma once

#include "generator/DonorOrder.h"
#include "generator/SqliteStatement.h"

#include <QByteArrayView>
#include <QString>

#include <array>
#include <memory>
#include <optional>

class Connection;

// The declaration generator's own pieces.
namespace Aeat {

// The declaration tables as the wizard leaves them: the newest `Declarantes`
// row and its `Donantes` rows, read as the texts they hold.

struct DeclarantRow
{
    qint64 id = 0; // IDDeclarante
    QString ejercicio;
    QString nombre;
    QString nif;
    QString pcnombre;
    QString pcapellido1;
    QString pcapellido2;
    QString pctelefono;
};

// One `Donantes` row: each value's UTF-8 bytes as stored (a null view for
// NULL), valid until the stream gives the next row. Texts are made of them
// only where one is needed (a message, a name): hundreds of thousands of
// rows are read, and most of their values are only checked.
struct DonorRow
{
    QByteArrayView nombre;
    QByteArrayView apellido1;
    QByteArrayView apellido2;
    QByteArrayView nif;
    QByteArrayView nifRepresentante;
    QByteArrayView codigoProvincia;
    QByteArrayView clave;
    QByteArrayView deduccion;
    QByteArrayView importe;
    QByteArrayView donativoEnEspecie;
    QByteArrayView comunidadAut;
    QByteArrayView deduccionCAut;
    QByteArrayView tipoPersona;
};

// The declarant with the greatest IDDeclarante; none when the table is empty.
std::optional<DeclarantRow> ReadNewestDeclarant(Connection &connection);

// The `Donantes` rows of a declarant, one at a time: the table may hold
// hundreds of thousands of rows, which are never all in memory. In
// `ByDonor` order the rows of one donor come together: they are sorted by
// the identifier as the file writes it (no "-", no blanks around, upper case,
// zeros on the left to nine characters), then as stored; the order is worked
// out by DonorOrder, which holds the texts of a declaration within its
// `limits` and otherwise only a key and rowid a row.
// Throws DatabaseError when the query fails.
class DonorRowStream
{
public:
    enum class Order { AsStored, ByDonor };

    DonorRowStream(Connection &connection, qint64 declarantId, Order order, DonorOrder::Limits limits = {});
    bool Next(DonorRow &row);
    // How many rows the stream gives in all (counted by SQL unless the
    // order was worked out here).
    qint64 RowCount(Connection &connection, qint64 declarantId) const;

private:
    static constexpr int kColumns = 13;
    bool Step();

    std::unique_ptr<DonorOrder> m_order; // by donor, when worked out here
    size_t m_next = 0;                   // in m_order: the next held row, or the first rowid not yet in a batch
    bool m_batchBound = false;
    std::unique_ptr<SqliteStatement> m_statement;
    std::array<QByteArrayView, kColumns> m_heldRow; // the current row's cells
};

} // namespace Aeat
