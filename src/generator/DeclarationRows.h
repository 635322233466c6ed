#pragma once

#include <QSqlQuery>
#include <QString>

#include <optional>

struct sqlite3_stmt;

class Connection;

// The declaration tables as the wizard leaves them: the newest `Declarantes`
// row and its `Donantes` rows, read as the texts they hold.

struct DeclarantRow
{
    qint64 id = 0;   // IDDeclarante
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

// The number of `Donantes` rows of a declarant.
qint64 CountDonorRows(Connection &connection, qint64 declarantId);

// The `Donantes` rows of a declarant, one at a time: the table may hold
// hundreds of thousands of rows, which are never all in memory. In
// `ByDonor` order the rows of one donor come together: they are sorted by
// the identifier as the file writes it (no "-", no blanks around, upper case,
// zeros on the left to nine characters).
// On an SQLite database the rows are stepped through SQLite itself: the
// generic query layer costs a value object per cell, which for a large
// declaration is most of the run. Throws DatabaseError when the query fails.
class DonorRowStream
{
public:
    enum class Order { AsStored, ByDonor };

    DonorRowStream(Connection &connection, qint64 declarantId, Order order);
    ~DonorRowStream();
    DonorRowStream(const DonorRowStream &) = delete;
    DonorRowStream &operator=(const DonorRowStream &) = delete;

    bool Next(DonorRow &row);

private:
    bool NextFromQuery(DonorRow &row);

    QString m_sql;
    sqlite3_stmt *m_statement = nullptr;
    QSqlQuery m_query;   // other databases
};
