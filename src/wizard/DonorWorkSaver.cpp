#include "wizard/DonorWorkSaver.h"

#include "data/Connection.h"
#include "data/DatabaseError.h"
#include "session/WizardRun.h"
#include "session/cConstCol.h"
#include "util/ConversionError.h"
#include "util/VbFormat.h"
#include "wizard/DonorGridLayout.h"
#include "wizard/DonorText.h"
#include "wizard/frmActividadAlumno.h"
#include "wizard/frmSelCursos.h"

#include <QRegularExpression>

using namespace DonorGridLayout;

namespace {

// Name parts are stored with at most this many characters.
constexpr int kNamePartLength = 30;

// The first `count` characters of `text`, never splitting a character that
// takes two UTF-16 units (an emoji stays whole or goes whole).
QString FirstCharacters(const QString &text, int count)
{
    qsizetype units = 0;
    for (int taken = 0; taken < count && units < text.size(); ++taken)
        units += (text.at(units).isHighSurrogate() && units + 1 < text.size()) ? 2 : 1;
    return text.left(units);
}

// A single-precision percentage as text: the digits a single holds (12.5,
// not 12.5000000000000001), "." as decimal point.
QString SingleDecimal(float value)
{
    return SqlDecimal(QString::number(double(value), 'g', 7).toDouble());
}

// A plain decimal number with "." as its point, safe to put unquoted into
// a statement.
bool IsDecimalLiteral(const QString &text)
{
    static const QRegularExpression literal(QStringLiteral("^[-+]?(\\d+\\.?\\d*|\\.\\d+)([eE][-+]?\\d+)?$"));
    return literal.match(text).hasMatch();
}

// A saved payment's amount written back as it was read: a number as it
// stands, nothing as Null, anything else as its text, so that no stored
// value can change the statement.
QString KeptAmount(const QString &pago)
{
    if (pago.isEmpty())
        return QStringLiteral("Null");
    return IsDecimalLiteral(pago) ? pago : SqlText(pago);
}

QString FailureMessage(const DatabaseError &error)
{
    return QStringLiteral("No se han podido guardar los datos. ") + error.Describe()
           + QStringLiteral("\n\nLos datos guardados anteriormente se conservan sin cambios. Compruebe que la base de "
                            "datos del centro está disponible y vuelva a pulsar «Guardar».");
}

} // namespace

DonorWorkSaver::DonorWorkSaver(frmActividadAlumno &form) : m_form(form)
{
}

QList<SqlStatement> DonorWorkSaver::Statements() const
{
    QList<SqlStatement> sql;
    for (const char *table : {"ComDed", "CursoEscAct", "DatosModelo182", "ALMFModelo182"})
        sql << SqlStatement(QStringLiteral("DELETE FROM ") + QLatin1String(table));
    AddCommunities(sql);
    AddActivities(sql);
    AddDonorRows(sql);
    AddKeptPayments(sql);
    return sql;
}

bool DonorWorkSaver::Save()
{
    QList<SqlStatement> sql;
    try {
        sql = Statements();
    } catch (const SaveRefused &refused) {
        m_form.Refuse(refused.Message());
        return false;
    }
    try {
        Send(sql);
    } catch (const DatabaseError &error) {
        m_form.ui().MsgBox(FailureMessage(error), vbOKOnly | vbCritical);
        return false;
    }
    m_form.ui().MsgBox(QStringLiteral("Datos guardados con éxito"), vbOKOnly | vbInformation);
    return true;
}

void DonorWorkSaver::Send(const QList<SqlStatement> &sql) const
{
    Connection &centro = m_form.Run().ConexionCentro();
    Connection::Transaction transaction(centro);
    for (const SqlStatement &statement : sql)
        centro.Execute(statement);
    transaction.Commit();
}

void DonorWorkSaver::AddCommunities(QList<SqlStatement> &sql) const
{
    const quint8 eliminado = cConstCol().Eliminado();
    for (const auto &comunidad : m_form.Cursos().colComAut.Items()) {
        if (comunidad->Estado == eliminado)
            continue;
        try {
            sql << SqlStatement(QStringLiteral("INSERT INTO ComDed VALUES (") + QString::number(comunidad->IDComAut)
                                + QLatin1Char(',') + QString::number(comunidad->IDDeduccion) + QLatin1Char(',')
                                + SingleDecimal(comunidad->Valor) + QLatin1Char(')'));
        } catch (const ConversionError &) {
            throw SaveRefused(QStringLiteral("El porcentaje de la comunidad autónoma ")
                              + QString::number(comunidad->IDComAut)
                              + QStringLiteral(" no es un número. Vuelva al paso anterior, corríjalo y vuelva a guardar."));
        }
    }
}

void DonorWorkSaver::AddActivities(QList<SqlStatement> &sql) const
{
    const QString flag = SqlBool(m_form.DeduccionPorComunidad());
    for (const auto &curso : m_form.Cursos().colCursosEscolares.Items()) {
        for (const auto &actividad : curso->colActividades.Items()) {
            QString deduccion;
            try {
                deduccion = SqlDecimal(actividad->Deduccion);
            } catch (const ConversionError &) {
                throw SaveRefused(
                    QStringLiteral("La deducción de la actividad «") + ActivityLabel(*curso, *actividad)
                    + QStringLiteral("» no es un número. Vuelva al paso anterior, corríjala y vuelva a guardar."));
            }
            sql << SqlStatement(QStringLiteral("INSERT INTO CursoEscAct VALUES (") + QString::number(curso->idCursoEscolar)
                                + QLatin1Char(',') + SqlText(curso->Nombre) + QLatin1Char(',') + SqlText(curso->conBD)
                                + QLatin1Char(',') + QString::number(actividad->idActividad) + QLatin1Char(',')
                                + SqlText(actividad->Nombre) + QLatin1Char(',') + deduccion + QLatin1Char(',')
                                + SqlText(actividad->TipoDonativo) + QLatin1Char(',')
                                + SqlText(actividad->TipoDonativoDeduccion) + QLatin1Char(',')
                                + SqlText(actividad->MesesPago) + QLatin1Char(',') + flag + QLatin1Char(')'));
        }
    }
}

QList<QPair<qint16, qint32>> DonorWorkSaver::AmountColumns() const
{
    const FlexGrid &grid = m_form.msgMod182;
    QList<QPair<qint16, qint32>> columns;
    for (int c = kFirstAmount; c < grid.Cols(); ++c) {
        const auto keys = FindActivityByHeader(m_form.Cursos().colCursosEscolares, grid.TextMatrix(0, c));
        // -1 marks a column that no chosen activity owns; only a filled
        // cell in it stops the save.
        columns << (keys ? qMakePair(keys->idCursoEscolar, qint32(keys->idActividad)) : qMakePair(qint16(-1), -1));
    }
    return columns;
}

void DonorWorkSaver::AddDonorRows(QList<SqlStatement> &sql) const
{
    const FlexGrid &grid = m_form.msgMod182;
    const QLocale &locale = m_form.Run().Locale();
    const auto columns = AmountColumns();
    for (int r = 1; r < grid.Rows(); ++r) {
        const RowKeyParts ids = SplitRowKey(grid.TextMatrix(r, kKey));
        const NameParts name = SplitGridName(grid.TextMatrix(r, kPagador));
        sql << SqlStatement(QStringLiteral("INSERT INTO ALMFModelo182 VALUES ("))
                   .Integer(ids.idAlumno)
                   .Sql(QStringLiteral(","))
                   .Integer(ids.idMiembroFamilia)
                   .Sql(QStringLiteral(","))
                   .Text(FirstCharacters(name.nombre, kNamePartLength))
                   .Sql(QStringLiteral(","))
                   .Text(FirstCharacters(name.apellido1, kNamePartLength))
                   .Sql(QStringLiteral(","))
                   .Text(FirstCharacters(name.apellido2, kNamePartLength))
                   .Sql(QStringLiteral(","))
                   .Text(grid.TextMatrix(r, kDni))
                   .Sql(QLatin1Char(',') + SqlBool(grid.TextMatrix(r, kMostrar) == kDeclarado) + QLatin1Char(')'));

        for (int c = kFirstAmount; c < grid.Cols(); ++c) {
            const QString cell = grid.TextMatrix(r, c);
            if (cell.isEmpty())
                continue;
            const QString header = grid.TextMatrix(0, c);
            const auto keys = columns.at(c - kFirstAmount);
            const std::optional<double> amount = ReadNumber(cell, locale);
            const QString where = grid.TextMatrix(r, kPagador) + QStringLiteral(" (alumno ") + grid.TextMatrix(r, kAlumno)
                                  + QStringLiteral(", columna «") + header + QStringLiteral("»)");
            if (!amount)
                throw SaveRefused(QStringLiteral("El importe «") + cell + QStringLiteral("» de ") + where
                                  + QStringLiteral(" no es un número. Escriba una cantidad en euros, por ejemplo 12,50, "
                                                   "o deje la celda vacía, y vuelva a pulsar «Guardar»."));
            if (keys.first < 0)
                throw SaveRefused(QStringLiteral("La columna del importe de ") + where
                                  + QStringLiteral(" no corresponde a ninguna actividad elegida. Vuelva al paso anterior, "
                                                   "revise las actividades y vuelva a pulsar «Guardar»."));
            QString literal = cell.trimmed();
            literal.replace(QLatin1Char(','), QLatin1Char('.'));
            if (!IsDecimalLiteral(literal))
                literal = SqlDecimal(*amount);
            sql << SqlStatement(QStringLiteral("INSERT INTO DatosModelo182 VALUES ("))
                       .Integer(ids.idAlumno)
                       .Sql(QStringLiteral(","))
                       .Integer(ids.idMiembroFamilia)
                       .Sql(QStringLiteral(","))
                       .Integer(keys.first)
                       .Sql(QStringLiteral(","))
                       .Integer(keys.second)
                       .Sql(QStringLiteral(","))
                       .Decimal(literal)
                       .Sql(QStringLiteral(")"));
        }
    }
}

void DonorWorkSaver::AddKeptPayments(QList<SqlStatement> &sql) const
{
    for (const cDatosCobro &cobro : std::as_const(m_form.colDatosCobro))
        sql << SqlStatement(QStringLiteral("INSERT INTO DatosModelo182 VALUES (") + QString::number(cobro.IDAl)
                            + QLatin1Char(',') + QString::number(cobro.IDMF) + QLatin1Char(',') + QString::number(cobro.IDCC)
                            + QLatin1Char(',') + QString::number(cobro.IDAct) + QLatin1Char(',') + KeptAmount(cobro.Pago)
                            + QLatin1Char(')'));
}
