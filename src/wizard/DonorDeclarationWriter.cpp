#include "wizard/DonorDeclarationWriter.h"

#include "controls/Controls.h"
#include "controls/FlexGrid.h"
#include "data/Connection.h"
#include "data/Declarante.h"
#include "data/SqlStatement.h"
#include "util/VbFormat.h"
#include "wizard/DonorGridLayout.h"
#include "wizard/DonorText.h"

#include <cmath>

using namespace DonorGridLayout;

namespace {

const QString kMoney = QStringLiteral("#,###,##0.00");

QString Quoted(const QString &text)
{
    return SqlEscape(text);
}

QString NoBlanks(QString text)
{
    text.remove(QLatin1Char(' '));
    return text;
}

// "00" + code, its last two characters.
QString TwoDigits(const QVariant &code)
{
    return (QStringLiteral("00") + (code.isNull() ? QString() : code.toString().trimmed())).right(2);
}

} // namespace

QString EncodePercentage(double percentage)
{
    const qlonglong hundredths = std::llround(std::round(percentage * 100.0));
    return (QStringLiteral("00000") + QString::number(hundredths)).right(5);
}

QStringList PayerNames(const cAlumno &payer)
{
    QStringList names;
    for (const QString &empty : {QStringLiteral("-"), QString()}) {
        auto part = [&empty](const QString &text) { return text.trimmed().isEmpty() ? empty : text; };
        names << NoBlanks(part(payer.AP1_MFP) + QLatin1Char(' ') + part(payer.AP2_MFP) + QStringLiteral(", ")
                          + part(payer.Nom_MFP));
    }
    return names;
}

bool PayerNameMatches(const cAlumno &payer, const QString &gridName)
{
    return PayerNames(payer).contains(NoBlanks(gridName));
}

DonorDeclarationWriter::DonorDeclarationWriter(Connection &conexion, Context context)
    : m_conexion(conexion), m_ctx(std::move(context))
{
}

void DonorDeclarationWriter::Write()
{
    m_conexion.Execute(QStringLiteral("DELETE FROM Declarantes"));
    m_conexion.Execute(QStringLiteral("DELETE FROM CartaDonantes"));
    const FlexGrid &grid = m_ctx.grid;
    m_ctx.progreso.SetMin(0);
    m_ctx.progreso.SetMax(qMax(1, grid.Rows() - 2));
    m_ctx.progreso.SetValue(1);

    WriteDeclarant();
    const qlonglong codDeclarante = ReadDeclarantKey();
    IndexPayers();
    m_deductions.clear();
    for (int c = kFirstAmount; c < grid.Cols(); ++c)
        m_deductions << Deduction(grid.TextMatrix(0, c));

    Donor donor;
    int donorRow = 0;
    for (int r = 1; r < grid.Rows(); ++r) {
        const QString nombre = grid.TextMatrix(r, kPagador);
        if (r == 1 || nombre != donor.nombreGrid) {
            if (donor.total > 0)
                WriteCarta(donor, donorRow);
            donor = Donor{nombre, FindPayer(nombre), 0};
            donorRow = r;
        }
        if (grid.TextMatrix(r, kMostrar) != kNoDeclarado)
            WriteDonantes(r, donor, codDeclarante);
        m_ctx.progreso.SetValue(r);
    }
    if (donorRow > 0 && donor.total > 0)
        WriteCarta(donor, donorRow);
}

void DonorDeclarationWriter::WriteDeclarant()
{
    const Declarante &d = m_ctx.declarante;
    const QString ejercicio = QString::number(m_ctx.hoy.year() - 1);
    const QString nif = (QString(d.cif).remove(QLatin1Char('-')) + QString(9, QLatin1Char(' '))).left(9);
    const QString telefono = (d.telefono + QString(9, QLatin1Char(' '))).left(9);
    const QStringList values = {ejercicio,
                                d.nombre.left(40),
                                nif,
                                d.pcNombre.left(20),
                                d.pcApellido1.left(20),
                                d.pcApellido2.left(20),
                                telefono,
                                d.rFiscal,
                                m_ctx.delegacion.left(50),
                                m_ctx.domicilio.left(50)};
    QStringList quoted;
    for (const QString &value : values)
        quoted << Quoted(value);
    m_conexion.Execute(QStringLiteral("INSERT INTO Declarantes (ejercicio,nombre,nif,pcnombre,pcapellido1,pcapellido2,"
                                      "pctelefono,regimenfiscal,delegacion,domicilio) VALUES ('")
                       + quoted.join(QStringLiteral("','")) + QStringLiteral("')"));
}

qlonglong DonorDeclarationWriter::ReadDeclarantKey()
{
    Recordset rs = m_conexion.Execute(QStringLiteral("SELECT MAX(IDDeclarante) as Maximo FROM Declarantes"));
    const qlonglong key = rs.Eof() ? 0 : rs.Fields(QStringLiteral("maximo")).toLongLong();
    rs.Close();
    return key;
}

double DonorDeclarationWriter::CellAmount(int row, int col) const
{
    const QString text = m_ctx.grid.TextMatrix(row, col).trimmed();
    if (text.isEmpty())
        return 0;
    const std::optional<double> value = ReadNumber(QStringLiteral("0") + text, m_ctx.locale);
    if (!value)
        throw UnreadableAmountError(QStringLiteral("El importe «") + text + QStringLiteral("» de la columna «")
                                    + m_ctx.grid.TextMatrix(0, col) + QStringLiteral("», del alumno ")
                                    + m_ctx.grid.TextMatrix(row, kAlumno) + QStringLiteral(" y el miembro de familia ")
                                    + m_ctx.grid.TextMatrix(row, kPagador)
                                    + QStringLiteral(", no es un número. Corríjalo y vuelva a generar el modelo 182."));
    return *value;
}

void DonorDeclarationWriter::WriteDonantes(int row, Donor &donor, qlonglong codDeclarante)
{
    const FlexGrid &grid = m_ctx.grid;
    for (int c = kFirstAmount; c < grid.Cols(); ++c) {
        const double importe = CellAmount(row, c);
        if (!(importe > 0))
            continue;
        QString provincia = QStringLiteral("00");
        QString comunidad = QStringLiteral("00");
        QString deduccionComunidad = QStringLiteral("00000");
        const QString nombreProvincia = donor.pagador ? donor.pagador->Provincia : QString();
        Recordset rs = m_conexion.Execute(
            SqlStatement(QStringLiteral("SELECT CodigoProvincia, CodigoComunidadAutonoma, IDComunidadAutonoma FROM "
                                        "Provincias INNER JOIN ComunidadesAutonomas ON "
                                        "Provincias.codComunidadAutonoma=ComunidadesAutonomas.IDComunidadAutonoma "
                                        "WHERE Provincia="))
                .Text(nombreProvincia));
        if (!rs.Eof()) {
            provincia = TwoDigits(rs.Fields(QStringLiteral("codigoProvincia")));
            if (m_ctx.porComunidad) {
                comunidad = TwoDigits(rs.Fields(QStringLiteral("CodigoComunidadAutonoma")));
                // A community the deduction step does not hold has no regional deduction.
                const auto entry = m_ctx.comunidades.Find(rs.Fields(QStringLiteral("IDComunidadAutonoma")).toString());
                if (entry)
                    deduccionComunidad = EncodePercentage(entry->Valor);
            }
        }
        rs.Close();

        NameParts names;
        if (donor.pagador)
            names = {donor.pagador->Nom_MFP, donor.pagador->AP1_MFP, donor.pagador->AP2_MFP};
        else
            names = SplitGridName(donor.nombreGrid);
        const auto name = [](const QString &part) { return CleanName(part).left(20); };
        const QString importeTexto = FormatNumber(importe, kMoney, m_ctx.locale);
        m_conexion.Execute(
            SqlStatement(QStringLiteral("INSERT INTO Donantes (codDeclarante, nombre, apellido1, apellido2, nif, "
                                        "nifrepresentante, codigoprovincia, clave, deduccion, importe, donativoenespecie, "
                                        "ComunidadAut, DeduccionCAut, TipoPersona) VALUES ("))
                .Integer(codDeclarante)
                .Sql(QStringLiteral(","))
                .Text(name(names.nombre))
                .Sql(QStringLiteral(","))
                .Text(name(names.apellido1))
                .Sql(QStringLiteral(","))
                .Text(name(names.apellido2))
                .Sql(QStringLiteral(","))
                .Text(grid.TextMatrix(row, kDni).toUpper())
                .Sql(QStringLiteral(",'',"))
                .Text(provincia)
                .Sql(QStringLiteral(",'A',"))
                .Text(m_deductions.at(c - kFirstAmount))
                .Sql(QStringLiteral(","))
                .Text(importeTexto)
                .Sql(QStringLiteral(",'',"))
                .Text(comunidad)
                .Sql(QStringLiteral(","))
                .Text(deduccionComunidad)
                .Sql(QStringLiteral(",'F')")));
        ++m_donantes;
        donor.total += importe;
    }
}

void DonorDeclarationWriter::WriteCarta(const Donor &donor, int row)
{
    const QString nif = m_ctx.grid.TextMatrix(row, kDni).toUpper();
    const QString total = FormatNumber(donor.total, kMoney, m_ctx.locale);
    QStringList values;
    if (donor.pagador) {
        const cAlumno &p = *donor.pagador;
        values = {p.AP1_MFP.left(50), p.AP2_MFP.left(50), p.Nom_MFP.left(40), nif,        total,
                  p.Poblacion,        p.Direccion,        p.CodPos,           p.Provincia};
    } else {
        const NameParts names = SplitGridName(donor.nombreGrid);
        const QString blank = QStringLiteral(" ");
        values = {names.apellido1.left(50),
                  names.apellido2.left(50),
                  names.nombre.left(40),
                  nif,
                  total,
                  blank,
                  blank,
                  blank,
                  blank};
    }
    SqlStatement insert(QStringLiteral("INSERT INTO CartaDonantes VALUES ("));
    for (qsizetype i = 0; i < values.size(); ++i)
        insert.Sql(i == 0 ? QString() : QStringLiteral(",")).Text(values.at(i));
    m_conexion.Execute(insert.Sql(QStringLiteral(")")));
    ++m_cartas;
}

void DonorDeclarationWriter::IndexPayers()
{
    m_payerByName.clear();
    for (const auto &alumno : m_ctx.alumnos.Items())
        for (const QString &name : PayerNames(*alumno))
            if (!m_payerByName.contains(name))
                m_payerByName.insert(name, alumno);
}

std::shared_ptr<cAlumno> DonorDeclarationWriter::FindPayer(const QString &gridName) const
{
    return m_payerByName.value(NoBlanks(gridName));
}

QString DonorDeclarationWriter::Deduction(const QString &header) const
{
    const auto keys = FindActivityByHeader(m_ctx.cursos, header);
    if (!keys)
        return QStringLiteral("00000");
    const auto curso = m_ctx.cursos.Find(KeyOf(keys->idCursoEscolar));
    const auto actividad = curso ? curso->colActividades.Find(KeyOf(keys->idActividad)) : nullptr;
    return actividad ? EncodePercentage(actividad->Deduccion) : QStringLiteral("00000");
}
