#pragma once

#include <QList>
#include <QString>

// The rows the declaration database is delivered with: autonomous
// communities with the code the AEAT file carries for them, the 52 provinces
// with their codes and communities, the deduction percentages, the donation
// types and the links saying which percentages each type and each community
// allows.
//
// Province names are written as the school databases write them in
// `Provincia.descripcion` (the declaration matches them by name): the official
// names of the AEAT province list ("Araba/Álava", "A Coruña", "Illes
// Balears", "Gipuzkoa", "Bizkaia", ...). The installation builder seeds each
// school year's `Provincia` table with these same names.
namespace Seed {

struct Community
{
    QString name; // ComunidadesAutonomas.ComunidadAutonoma
    QString code; // CodigoComunidadAutonoma: "01".."17", "00" where the file has no code
};

struct Province
{
    QString code;      // Provincias.CodigoProvincia, two digits ("08")
    QString name;      // Provincias.Provincia
    QString community; // the community's name (resolved to its id on insert)
};

struct DonationType
{
    QString name;             // TipoDonativos.TipoDonativo
    QString code;             // CodigoDonativo
    QList<double> deductions; // the percentages linked to the type
};

struct CommunityDeduction
{
    QString community;
    double deduction;
};

// In insertion order: a fresh database numbers the communities 1, 2, ... in
// this order, and the percentages likewise.
const QList<Community> &Communities();
const QList<Province> &Provinces();
const QList<double> &Deductions();
const QList<DonationType> &DonationTypes();
const QList<CommunityDeduction> &CommunityDeductions();

// The province whose code is `code` ("08"), or null when there is none.
const Province *ProvinceByCode(const QString &code);

} // namespace Seed
