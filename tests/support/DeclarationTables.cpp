#include "DeclarationTables.h"

#include "data/Connection.h"
#include "data/DatabaseError.h"
#include "data/Schema.h"
#include "util/VbFormat.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>

#include <memory>

std::shared_ptr<Connection> CreateDeclarationFile(const QString &path)
{
    auto connection = Connection::CreateSQLite(path, QStringLiteral("Microsoft.Jet.OLEDB.4.0"));
    Schema::CreateDeclarationDatabase(*connection);
    return connection;
}

qint64 InsertDeclarant(Connection &connection, const DeclarantValues &v)
{
    QStringList values{v.ejercicio,   v.nombre,     v.nif,           v.pcnombre,   v.pcapellido1,
                       v.pcapellido2, v.pctelefono, v.regimenfiscal, v.delegacion, v.domicilio};
    for (QString &value : values)
        value = SqlText(value);
    connection.Execute(QStringLiteral("INSERT INTO Declarantes (ejercicio,nombre,nif,pcnombre,pcapellido1,"
                                      "pcapellido2,pctelefono,regimenfiscal,delegacion,domicilio) VALUES (")
                       + values.join(QLatin1Char(',')) + QLatin1Char(')'));
    return connection.Execute(QStringLiteral("SELECT MAX(IDDeclarante) as Maximo FROM Declarantes"))
        .Fields(QStringLiteral("maximo"))
        .toLongLong();
}

void InsertDonor(Connection &connection, const DonorValues &v)
{
    const QString id = connection.Execute(QStringLiteral("SELECT MAX(IDDeclarante) FROM Declarantes")).Fields(0).toString();
    QStringList values{v.nombre,          v.apellido1,     v.apellido2,  v.nif,     v.nifrepresentante,
                       v.codigoprovincia, v.clave,         v.deduccion,  v.importe, v.donativoenespecie,
                       v.comunidadAut,    v.deduccionCAut, v.tipoPersona};
    for (QString &value : values)
        value = SqlText(value);
    connection.Execute(QStringLiteral("INSERT INTO Donantes (codDeclarante, nombre, apellido1, apellido2, nif, "
                                      "nifrepresentante, codigoprovincia, clave, deduccion, importe, "
                                      "donativoenespecie, ComunidadAut, DeduccionCAut, TipoPersona) VALUES (")
                       + id + QLatin1Char(',') + values.join(QLatin1Char(',')) + QLatin1Char(')'));
}

void FillLargeDeclaration(Connection &connection, int rows, const QLocale &locale)
{
    static const char kLetters[] = "TRWAGMYFPDXBNJZSQVHLCKEO";
    static const QStringList kNames{QStringLiteral("José"),  QStringLiteral("María"), QStringLiteral("Núria"),
                                    QStringLiteral("Iñaki"), QStringLiteral("Ana"),   QStringLiteral("Joan")};
    static const QStringList kSurnames{QStringLiteral("García"), QStringLiteral("Muñoz"), QStringLiteral("Martínez"),
                                       QStringLiteral("Puig"),   QStringLiteral("López"), QStringLiteral("Çelik")};
    InsertDeclarant(connection, DeclarantValues());
    const QString id = connection.Execute(QStringLiteral("SELECT MAX(IDDeclarante) FROM Declarantes")).Fields(0).toString();
    connection.BeginTrans();
    QSqlQuery insert(connection.Database());
    const QString sql = QStringLiteral(
        "INSERT INTO Donantes (codDeclarante, nombre, apellido1, apellido2, nif, nifrepresentante, "
        "codigoprovincia, clave, deduccion, importe, donativoenespecie, ComunidadAut, DeduccionCAut, "
        "TipoPersona) VALUES (?, ?, ?, ?, ?, '', ?, 'A', ?, ?, '', ?, ?, 'F')");
    if (!insert.prepare(sql))
        throw DatabaseError(insert.lastError().text(), sql);
    for (int row = 0; row < rows; ++row) {
        // Rows are inserted activity by activity, as the grid's columns are,
        // so one donor's rows lie far apart in the table.
        const int donors = (rows + 2) / 3;
        const int donor = row % donors;
        const int activity = row / donors;
        const int number = 10'000'000 + donor * 7;
        const QString nif = QString::number(number) + QLatin1Char(kLetters[number % 23]);
        const double amount = 25.5 * (1 + donor % 40) + activity;
        insert.bindValue(0, id.toLongLong());
        insert.bindValue(1, kNames.at(donor % kNames.size()));
        insert.bindValue(2, kSurnames.at(donor % kSurnames.size()));
        insert.bindValue(3, kSurnames.at((donor / 6) % kSurnames.size()));
        insert.bindValue(4, nif);
        insert.bindValue(5, QStringLiteral("08"));
        insert.bindValue(6, activity == 2 ? QStringLiteral("04000") : QStringLiteral("08000"));
        insert.bindValue(7, FormatNumber(amount, QStringLiteral("#,###,##0.00"), locale));
        insert.bindValue(8, QStringLiteral("09"));
        insert.bindValue(9, QStringLiteral("02500"));
        if (!insert.exec()) {
            connection.RollbackTrans();
            throw DatabaseError(insert.lastError().text(), sql);
        }
    }
    connection.CommitTrans();
}
