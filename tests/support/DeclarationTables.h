#pragma once

#include <QLocale>
#include <QString>

#include <memory>

class Connection;

// Rows of the declaration tables of Modelo182.mdb written as the donor
// window writes them, for the tests and the benchmark of the declaration
// generator.

struct DeclarantValues
{
    QString ejercicio = QStringLiteral("2024");
    QString nombre = QStringLiteral("Colegio Sant Jordi");
    QString nif = QStringLiteral("A58818501");
    QString pcnombre = QStringLiteral("Núria");
    QString pcapellido1 = QStringLiteral("Puig");
    QString pcapellido2 = QStringLiteral("Ferrer");
    QString pctelefono = QStringLiteral("934567890");
    QString regimenfiscal = QStringLiteral("1");
    QString delegacion;
    QString domicilio;
};

struct DonorValues
{
    QString nombre;
    QString apellido1;
    QString apellido2;
    QString nif;
    QString importe; // as the user's locale formats it
    QString deduccion = QStringLiteral("08000");
    QString codigoprovincia = QStringLiteral("08");
    QString comunidadAut = QStringLiteral("09");
    QString deduccionCAut = QStringLiteral("02500");
    QString clave = QStringLiteral("A");
    QString nifrepresentante;
    QString donativoenespecie;
    QString tipoPersona = QStringLiteral("F");
};

// Creates (or opens) Modelo182.mdb at `path` with the program's creation
// routine; the connection uses the declaration database's provider.
std::shared_ptr<Connection> CreateDeclarationFile(const QString &path);

// The wizard's insert of the declarant; returns its IDDeclarante.
qint64 InsertDeclarant(Connection &connection, const DeclarantValues &values);

// The wizard's insert of one donor row under the newest declarant.
void InsertDonor(Connection &connection, const DonorValues &values);

// A declaration of `rows` donor rows: one declarant, donors with three
// activity rows each (two at the first-tranche percentage, one at the
// rest's), amounts formatted with `locale`, valid NIFs, Spanish names with
// accents. Runs in one transaction; a few seconds for 450,000 rows.
void FillLargeDeclaration(Connection &connection, int rows, const QLocale &locale);
