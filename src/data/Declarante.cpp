#include "data/Declarante.h"

#include "data/Connection.h"
#include "data/DatabaseError.h"
#include "data/Recordset.h"

#include <QVariant>
#include <cmath>

namespace {

QString Clean(const QString &text)
{
    return QString(text).replace(QStringLiteral("ª"), QStringLiteral(".")).toUpper();
}

QString PieceOrDash(const QString &piece)
{
    const QString trimmed = piece.trimmed();
    return trimmed.isEmpty() ? QStringLiteral("-") : Clean(trimmed);
}

// The value as a whole number, rounded half to even as the platform's
// conversion does; "" when it is null or not a number.
QString WholeNumberText(const QVariant &value)
{
    if (value.isNull())
        return QString();
    bool ok = false;
    const double number = value.toString().trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(number))
        return QString();
    return QString::number(static_cast<qint64>(std::nearbyint(number)));
}

} // namespace

ContactName SplitDirector(const QString &director)
{
    const QString text = director.trimmed();
    QString first = text;
    QString rest;
    const qsizetype blank = text.indexOf(QLatin1Char(' '));
    if (blank >= 0) {
        first = text.left(blank);
        rest = text.mid(blank + 1).trimmed();
    }
    QString second = rest;
    QString third;
    const qsizetype blank2 = rest.indexOf(QLatin1Char(' '));
    if (blank2 >= 0) {
        second = rest.left(blank2);
        third = rest.mid(blank2 + 1);
    }
    return {PieceOrDash(first), PieceOrDash(second), PieceOrDash(third)};
}

QString PadCif(const QString &cif)
{
    return (QStringLiteral("000000000") + cif).right(9).toUpper();
}

Declarante DeclaranteFromCentro(const Recordset &centro)
{
    Declarante declarante;
    declarante.nombre = Clean(centro.Fields(QStringLiteral("Nombre")).toString());
    const ContactName contact = SplitDirector(centro.Fields(QStringLiteral("DirectorCentro")).toString());
    declarante.pcNombre = contact.nombre;
    declarante.pcApellido1 = contact.apellido1;
    declarante.pcApellido2 = contact.apellido2;
    const QVariant cif = centro.Fields(QStringLiteral("CIF"));
    declarante.cif = cif.isNull() ? QString() : PadCif(cif.toString());
    declarante.telefono = centro.Fields(QStringLiteral("Telefono")).toString().toUpper();
    declarante.rFiscal = WholeNumberText(centro.Fields(QStringLiteral("RFiscal")));
    return declarante;
}

Declarante ReadDeclarante(Connection &yearConnection)
{
    const QString sql = QString::fromLatin1(kDeclaranteQuery);
    Recordset centro = yearConnection.Execute(sql);
    if (centro.Eof())
        throw DatabaseError(QStringLiteral("La tabla Centro no tiene ningún registro"), sql);
    return DeclaranteFromCentro(centro);
}
