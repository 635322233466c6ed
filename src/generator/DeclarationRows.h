#pragma once

#include "generator/DonorOrder.h"
#include "generator/SqliteStatement.h"

#include <QString>

#include <array>
#include <memory>
#include <optional>
#include <string>

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

struct DonorRow
{
    QString nombre;
    QString apellido1;
    QString apellido2;
    QString nif;
    QString nifRepresentante;
    QString codigoProvincia;
    QString clave;
    QString deduccion;
    QString importe;
    QString donativoEnEspecie;
    QString comunidadAut;
    QString deduccionCAut;
    QString tipoPersona;
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

private:
    // The last text of each column: a donor's rows come one after another
    // and many columns repeat from row to row, so a text is converted only
    // when its bytes change.
    struct Cell
    {
        std::string bytes;
        bool null = true;
        QString text;
    };
    const QString &Column(int column);
    const QString &Column(int column, QByteArrayView bytes);
    bool Step();

    std::unique_ptr<DonorOrder> m_order; // by donor, when worked out here
    size_t m_next = 0;                   // in m_order: the next held row, or the first rowid not yet in a batch
    bool m_batchBound = false;
    std::unique_ptr<SqliteStatement> m_statement;
    std::array<Cell, 13> m_cells;
    std::array<QByteArrayView, 13> m_heldRow; // the current row, when held
};

} // namespace Aeat
