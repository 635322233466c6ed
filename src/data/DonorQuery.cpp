#include "data/DonorQuery.h"

QString DonorQuery(int idActividad)
{
    // The pieces are kept exactly as the reader of the result expects them,
    // down to the blanks (none after the comma that ends the first one).
    return QStringLiteral("SELECT Alumno.Apellido_1,Alumno.Apellido_2, Alumno.Nombre, "
                          "Alumno_Actividad_Miembro.PrecioEuros, Miembrofamilia.Apellido1, "
                          "Miembrofamilia.Apellido2, Miembrofamilia.Nombre AS Nombre1, "
                          "Miembrofamilia.codFamilia, Miembrofamilia.DNI, direccion.direccion, "
                          "direccion.poblacion, direccion.codigopostal, provincia.descripcion,")
           + QStringLiteral("enero as dato1, febrero as dato2, marzo as dato3, abril as dato4, mayo as dato5, "
                            "junio as dato6, julio as dato7, agosto as dato8, septiembre as dato9, "
                            "octubre as dato10, noviembre as dato11, diciembre as dato12, IDAlumno, "
                            "IDMiembroFamilia ")
           + QStringLiteral(
               "FROM Alumno INNER JOIN (Alumno_Actividad_Miembro LEFT JOIN "
               "(Miembrofamiliapagador LEFT JOIN (MiembroFamilia LEFT JOIN (Direccion LEFT JOIN "
               "Provincia ON Provincia.IDProvincia=Direccion.codProvincia) ON "
               "Direccion.IDDireccion=MiembroFamilia.codDireccion) ON "
               "MiembroFamilia.IDMiembroFamilia=MiembroFamiliaPagador.codMiembroFamilia) ON "
               "MiembroFamiliaPagador.idMiembroFamiliaPagador=Alumno_Actividad_Miembro.codMiembroFamiliaPagador) "
               "ON Alumno.IDAlumno=Alumno_Actividad_Miembro.codAlumno ")
           + QStringLiteral("WHERE codActividad=") + QString::number(idActividad)
           + QStringLiteral(" ORDER BY Alumno.Apellido_1,Alumno.Apellido_2, Alumno.Nombre, "
                            "Miembrofamilia.Apellido1, Miembrofamilia.Apellido2, Miembrofamilia.Nombre");
}
