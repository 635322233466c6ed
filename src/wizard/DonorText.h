#pragma once

#include "wizard/Registros.h"

#include <QString>
#include <QVariant>
#include <optional>

// The small text rules of the donor step.

// A tax identifier as the donor grid shows it: blanks and "-" removed, fitted
// to nine characters with leading zeros; a numeric text beginning with "0"
// that is not a valid identifier becomes its last eight digits with their NIF
// letter; the all-zero "00000000T" becomes "00000002W". An empty or blank
// text comes back unchanged.
QString NormaliseTaxId(const QString &dni);

// A name for the declaration: "ª" and "º" become ".", and "(", ")", "+", "?"
// and "¿" are removed.
QString CleanName(const QString &text);

// The grid's name of a person: surname 1, " ", surname 2, ", ", name, each
// empty part written "-".
QString GridName(const QVariant &apellido1, const QVariant &apellido2, const QVariant &nombre);

// A grid row's key: the student key, a blank, the family-member key (empty
// for an enrolment without a paying member).
QString RowKey(const QVariant &idAlumno, const QVariant &idMiembroFamilia);

// A row key split at its blank; an empty family part reads 0, so that the
// statements that need it stay well formed.
struct RowKeyParts
{
    qlonglong idAlumno = 0;
    qlonglong idMiembroFamilia = 0;
};
RowKeyParts SplitRowKey(const QString &key);

// The name parts of a grid name ("AP1 AP2, NOMBRE") as the save and the
// declaration read them: the given name after ", "; the part before it, with
// "ª" replaced by "." and in capitals, split at its first blank into the two
// surnames; every part that cannot be found, or comes out empty, is "-".
struct NameParts
{
    QString nombre;
    QString apellido1;
    QString apellido2;
};
NameParts SplitGridName(const QString &name);

// The school year and activity of an amount column, found again from its
// header (year name, " <-> ", activity name): the first chosen pair whose
// joined names equal the header.
struct ActivityKeys
{
    qint16 idCursoEscolar = 0;
    qint16 idActividad = 0;
};
std::optional<ActivityKeys> FindActivityByHeader(const ColCursosEscolares &cursos, const QString &header);
