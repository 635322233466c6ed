#include "data/Seed.h"

namespace Seed {

namespace {

const QString kAndalucia = QStringLiteral("Andalucía");
const QString kAragon = QStringLiteral("Aragón");
const QString kAsturias = QStringLiteral("Principado de Asturias");
const QString kBaleares = QStringLiteral("Illes Balears");
const QString kCanarias = QStringLiteral("Canarias");
const QString kCantabria = QStringLiteral("Cantabria");
const QString kCastillaLaMancha = QStringLiteral("Castilla-La Mancha");
const QString kCastillaLeon = QStringLiteral("Castilla y León");
const QString kCataluna = QStringLiteral("Cataluña");
const QString kExtremadura = QStringLiteral("Extremadura");
const QString kGalicia = QStringLiteral("Galicia");
const QString kMadrid = QStringLiteral("Comunidad de Madrid");
const QString kMurcia = QStringLiteral("Región de Murcia");
const QString kRioja = QStringLiteral("La Rioja");
const QString kValenciana = QStringLiteral("Comunitat Valenciana");
const QString kPaisVasco = QStringLiteral("País Vasco");
const QString kNavarra = QStringLiteral("Comunidad Foral de Navarra");
const QString kCeuta = QStringLiteral("Ceuta");
const QString kMelilla = QStringLiteral("Melilla");

} // namespace

const QList<Community> &Communities()
{
    // The AEAT's own list for the regional deduction; the foral communities
    // and the two autonomous cities have no code there.
    static const QList<Community> rows = {
        {kAndalucia, QStringLiteral("01")},        {kAragon, QStringLiteral("02")},
        {kAsturias, QStringLiteral("03")},         {kBaleares, QStringLiteral("04")},
        {kCanarias, QStringLiteral("05")},         {kCantabria, QStringLiteral("06")},
        {kCastillaLaMancha, QStringLiteral("07")}, {kCastillaLeon, QStringLiteral("08")},
        {kCataluna, QStringLiteral("09")},         {kExtremadura, QStringLiteral("10")},
        {kGalicia, QStringLiteral("11")},          {kMadrid, QStringLiteral("12")},
        {kMurcia, QStringLiteral("13")},           {kRioja, QStringLiteral("16")},
        {kValenciana, QStringLiteral("17")},       {kPaisVasco, QStringLiteral("00")},
        {kNavarra, QStringLiteral("00")},          {kCeuta, QStringLiteral("00")},
        {kMelilla, QStringLiteral("00")},
    };
    return rows;
}

const QList<Province> &Provinces()
{
    static const QList<Province> rows = {
        {QStringLiteral("01"), QStringLiteral("Araba/Álava"), kPaisVasco},
        {QStringLiteral("02"), QStringLiteral("Albacete"), kCastillaLaMancha},
        {QStringLiteral("03"), QStringLiteral("Alicante"), kValenciana},
        {QStringLiteral("04"), QStringLiteral("Almería"), kAndalucia},
        {QStringLiteral("05"), QStringLiteral("Ávila"), kCastillaLeon},
        {QStringLiteral("06"), QStringLiteral("Badajoz"), kExtremadura},
        {QStringLiteral("07"), QStringLiteral("Illes Balears"), kBaleares},
        {QStringLiteral("08"), QStringLiteral("Barcelona"), kCataluna},
        {QStringLiteral("09"), QStringLiteral("Burgos"), kCastillaLeon},
        {QStringLiteral("10"), QStringLiteral("Cáceres"), kExtremadura},
        {QStringLiteral("11"), QStringLiteral("Cádiz"), kAndalucia},
        {QStringLiteral("12"), QStringLiteral("Castellón"), kValenciana},
        {QStringLiteral("13"), QStringLiteral("Ciudad Real"), kCastillaLaMancha},
        {QStringLiteral("14"), QStringLiteral("Córdoba"), kAndalucia},
        {QStringLiteral("15"), QStringLiteral("A Coruña"), kGalicia},
        {QStringLiteral("16"), QStringLiteral("Cuenca"), kCastillaLaMancha},
        {QStringLiteral("17"), QStringLiteral("Girona"), kCataluna},
        {QStringLiteral("18"), QStringLiteral("Granada"), kAndalucia},
        {QStringLiteral("19"), QStringLiteral("Guadalajara"), kCastillaLaMancha},
        {QStringLiteral("20"), QStringLiteral("Gipuzkoa"), kPaisVasco},
        {QStringLiteral("21"), QStringLiteral("Huelva"), kAndalucia},
        {QStringLiteral("22"), QStringLiteral("Huesca"), kAragon},
        {QStringLiteral("23"), QStringLiteral("Jaén"), kAndalucia},
        {QStringLiteral("24"), QStringLiteral("León"), kCastillaLeon},
        {QStringLiteral("25"), QStringLiteral("Lleida"), kCataluna},
        {QStringLiteral("26"), QStringLiteral("La Rioja"), kRioja},
        {QStringLiteral("27"), QStringLiteral("Lugo"), kGalicia},
        {QStringLiteral("28"), QStringLiteral("Madrid"), kMadrid},
        {QStringLiteral("29"), QStringLiteral("Málaga"), kAndalucia},
        {QStringLiteral("30"), QStringLiteral("Murcia"), kMurcia},
        {QStringLiteral("31"), QStringLiteral("Navarra"), kNavarra},
        {QStringLiteral("32"), QStringLiteral("Ourense"), kGalicia},
        {QStringLiteral("33"), QStringLiteral("Asturias"), kAsturias},
        {QStringLiteral("34"), QStringLiteral("Palencia"), kCastillaLeon},
        {QStringLiteral("35"), QStringLiteral("Las Palmas"), kCanarias},
        {QStringLiteral("36"), QStringLiteral("Pontevedra"), kGalicia},
        {QStringLiteral("37"), QStringLiteral("Salamanca"), kCastillaLeon},
        {QStringLiteral("38"), QStringLiteral("Santa Cruz de Tenerife"), kCanarias},
        {QStringLiteral("39"), QStringLiteral("Cantabria"), kCantabria},
        {QStringLiteral("40"), QStringLiteral("Segovia"), kCastillaLeon},
        {QStringLiteral("41"), QStringLiteral("Sevilla"), kAndalucia},
        {QStringLiteral("42"), QStringLiteral("Soria"), kCastillaLeon},
        {QStringLiteral("43"), QStringLiteral("Tarragona"), kCataluna},
        {QStringLiteral("44"), QStringLiteral("Teruel"), kAragon},
        {QStringLiteral("45"), QStringLiteral("Toledo"), kCastillaLaMancha},
        {QStringLiteral("46"), QStringLiteral("Valencia"), kValenciana},
        {QStringLiteral("47"), QStringLiteral("Valladolid"), kCastillaLeon},
        {QStringLiteral("48"), QStringLiteral("Bizkaia"), kPaisVasco},
        {QStringLiteral("49"), QStringLiteral("Zamora"), kCastillaLeon},
        {QStringLiteral("50"), QStringLiteral("Zaragoza"), kAragon},
        {QStringLiteral("51"), QStringLiteral("Ceuta"), kCeuta},
        {QStringLiteral("52"), QStringLiteral("Melilla"), kMelilla},
    };
    return rows;
}

const QList<double> &Deductions()
{
    // The IRPF rates of individual donors (first tranche and the rest, plain
    // and recurrent) and the usual regional rates.
    static const QList<double> rows = {80, 35, 40, 45, 10, 15, 20, 25};
    return rows;
}

const QList<DonationType> &DonationTypes()
{
    static const QList<DonationType> rows = {
        {QStringLiteral("Donativo"), QStringLiteral("A"), {80, 35, 40, 45}},
        {QStringLiteral("Cuota de socio"), QStringLiteral("A"), {80, 35, 40, 45}},
        {QStringLiteral("Actividad prioritaria de mecenazgo"), QStringLiteral("B"), {80, 40, 45}},
    };
    return rows;
}

const QList<CommunityDeduction> &CommunityDeductions()
{
    // Communities with a regional deduction for donations; the others (among
    // them Andalucía, the foral communities, Ceuta and Melilla) have none.
    static const QList<CommunityDeduction> rows = {
        {kAragon, 20},    {kBaleares, 15},     {kBaleares, 25},   {kCanarias, 10},   {kCanarias, 15},
        {kCantabria, 15}, {kCastillaLeon, 15}, {kCataluna, 15},   {kGalicia, 15},    {kMadrid, 15},
        {kMurcia, 20},    {kRioja, 15},        {kValenciana, 20}, {kValenciana, 25},
    };
    return rows;
}

const Province *ProvinceByCode(const QString &code)
{
    for (const Province &province : Provinces())
        if (province.code == code)
            return &province;
    return nullptr;
}

} // namespace Seed
