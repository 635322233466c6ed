#pragma once

#include "wizard/Coleccion.h"

#include <QString>

// One chosen activity of a school year, with what the later steps give it.
class cActividad
{
public:
    qint16 idActividad = 0;
    QString Nombre;
    double Deduccion = 0;          // whole-number percentage of its donation type
    QString TipoDonativo;          // the donation code (CodigoDonativo)
    QString TipoDonativoDeduccion; // the chosen pair as listed: "type - 80%"; "" while none
    QString MesesPago;             // twelve "0"/"1", January first; "" while never edited
};

// One chosen school year and its chosen activities.
class cCursoEscolar
{
public:
    qint16 idCursoEscolar = 0;
    QString Nombre;
    QString conBD; // connection string of the year's own database
    Coleccion<cActividad> colActividades;
};

// The deduction percentage chosen for one autonomous community.
class cComAut
{
public:
    qint16 IDComAut = 0;
    qint16 IDDeduccion = 0;
    float Valor = 0;
    quint8 Estado = 0;
};

// One donor row of the donor grid: the student and the paying family member
// as read from the host (the payer's name parts follow an edit of the name).
class cAlumno
{
public:
    qlonglong IDAlumno = 0;
    qlonglong idMF = 0; // 0 for an enrolment without a paying member
    QString Nom_MFP;
    QString AP1_MFP;
    QString AP2_MFP;
    QString NIF_MFP; // normalised tax identifier
    QString codFamilia;
    QString Direccion;
    QString Poblacion;
    QString CodPos; // five digits with leading zeros
    QString Provincia;
};

// A saved amount whose student and payer had no grid row when its activity
// was built: kept so that saving never drops it.
class cDatosCobro
{
public:
    qint16 IDCC = 0;
    qint32 IDAct = 0;
    qlonglong IDAl = 0;
    qlonglong IDMF = 0;
    QString Pago; // as read, "." as decimal point
};

using ColCursosEscolares = Coleccion<cCursoEscolar>;
using ColComAut = Coleccion<cComAut>;
// Donor records keyed by their grid row's key ("IDAlumno IDMF").
using ColAlumnos = Coleccion<cAlumno>;
using ColDatosCobro = QList<cDatosCobro>;

// An activity as the steps list it: year name, " - ", activity name.
inline QString ActivityLabel(const cCursoEscolar &curso, const cActividad &actividad)
{
    return curso.Nombre + QStringLiteral(" - ") + actividad.Nombre;
}

// A chosen activity together with its school year.
struct ChosenActivity
{
    std::shared_ptr<cCursoEscolar> curso;
    std::shared_ptr<cActividad> actividad;
    explicit operator bool() const { return bool(actividad); }
};

// The first activity, in collection order, listed as `etiqueta` (two
// activities with the same label in one year both find the first).
inline ChosenActivity FindActivity(const ColCursosEscolares &cursos, const QString &etiqueta)
{
    for (const auto &curso : cursos.Items())
        for (const auto &actividad : curso->colActividades.Items())
            if (ActivityLabel(*curso, *actividad) == etiqueta)
                return {curso, actividad};
    return {};
}
