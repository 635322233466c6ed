#include "wizard/DonorText.h"

#include "util/ConversionError.h"
#include "util/NifCif.h"
#include "util/TextRoutines.h"
#include "wizard/DonorGridLayout.h"

namespace {

bool IsValidTaxId(QString id)
{
    try {
        return ValidarNIFCIF(id);
    } catch (const ConversionError &) {
        return false; // a CIF that breaks the rule is simply not valid
    }
}

bool AllDigits(const QString &text)
{
    if (text.isEmpty())
        return false;
    for (const QChar c : text)
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return false;
    return true;
}

QString PartOrDash(const QVariant &value)
{
    const QString text = value.isNull() ? QString() : value.toString();
    return text.isEmpty() ? QStringLiteral("-") : text;
}

QString SurnamePart(const QString &text)
{
    const QString part = text.trimmed().toUpper();
    return part.isEmpty() ? QStringLiteral("-") : part;
}

} // namespace

QString NormaliseTaxId(const QString &dni)
{
    if (dni.trimmed().isEmpty())
        return dni;
    QString text = dni;
    text.remove(QLatin1Char(' ')).remove(QLatin1Char('-'));
    text = FixedWidth(text, 9, QStringLiteral("0"));
    if (!IsValidTaxId(text) && AllDigits(text) && text.startsWith(QLatin1Char('0'))) {
        const QString digits = text.right(8);
        text = digits + LetraNIF(digits.toInt());
    }
    if (text == QLatin1String("00000000T"))
        text = QStringLiteral("00000002") + LetraNIF(2);
    return text;
}

QString CleanName(const QString &text)
{
    QString clean = text;
    clean.replace(QStringLiteral("ª"), QStringLiteral(".")).replace(QStringLiteral("º"), QStringLiteral("."));
    for (const QString &gone :
         {QStringLiteral("("), QStringLiteral(")"), QStringLiteral("+"), QStringLiteral("?"), QStringLiteral("¿")})
        clean.remove(gone);
    return clean;
}

QString GridName(const QVariant &apellido1, const QVariant &apellido2, const QVariant &nombre)
{
    return PartOrDash(apellido1) + QLatin1Char(' ') + PartOrDash(apellido2) + QStringLiteral(", ") + PartOrDash(nombre);
}

QString RowKey(const QVariant &idAlumno, const QVariant &idMiembroFamilia)
{
    const QString family = idMiembroFamilia.isNull() ? QString() : idMiembroFamilia.toString();
    return idAlumno.toString() + QLatin1Char(' ') + family;
}

RowKeyParts SplitRowKey(const QString &key)
{
    const qsizetype blank = key.indexOf(QLatin1Char(' '));
    const QString left = blank < 0 ? key : key.left(blank);
    const QString right = blank < 0 ? QString() : key.mid(blank + 1);
    return {left.trimmed().toLongLong(), right.trimmed().toLongLong()};
}

NameParts SplitGridName(const QString &name)
{
    const QString dash = QStringLiteral("-");
    const qsizetype comma = name.indexOf(QStringLiteral(", "));
    if (comma < 0)
        return {dash, dash, dash};
    NameParts parts;
    parts.nombre = name.mid(comma + 2).trimmed();
    if (parts.nombre.isEmpty())
        parts.nombre = dash;
    const QString surnames = name.left(comma).trimmed().replace(QStringLiteral("ª"), QStringLiteral(".")).toUpper();
    const qsizetype blank = surnames.indexOf(QLatin1Char(' '));
    if (blank < 0) {
        // One surname alone cannot be placed: both read "-".
        parts.apellido1 = dash;
        parts.apellido2 = dash;
        return parts;
    }
    parts.apellido1 = SurnamePart(surnames.left(blank));
    parts.apellido2 = SurnamePart(surnames.mid(blank + 1));
    return parts;
}

std::optional<ActivityKeys> FindActivityByHeader(const ColCursosEscolares &cursos, const QString &header)
{
    for (const auto &curso : cursos.Items())
        for (const auto &actividad : curso->colActividades.Items())
            if (curso->Nombre + DonorGridLayout::kHeaderSeparator + actividad->Nombre == header)
                return ActivityKeys{curso->idCursoEscolar, actividad->idActividad};
    return std::nullopt;
}
