#pragma once

#include <QString>

// The donor grid's columns, marks and texts: the contract between building
// the grid, editing it, saving it and generating the declaration from it.
namespace DonorGridLayout {

inline constexpr int kKey = 0;         // hidden: "IDAlumno IDMiembroFamilia"
inline constexpr int kAlumno = 1;      // "Alumno"
inline constexpr int kPagador = 2;     // "Miembro Familia Pagador"
inline constexpr int kDni = 3;         // "DNI"
inline constexpr int kMostrar = 4;     // "Mostrar": kDeclarado / kNoDeclarado
inline constexpr int kFirstAmount = 5; // one column per school year and activity

inline const QString kDeclarado = QStringLiteral("ü");   // Wingdings check mark
inline const QString kNoDeclarado = QStringLiteral("û"); // Wingdings cross
inline const QString kMarkFont = QStringLiteral("Wingdings");
inline constexpr int kMarkFontSize = 14;
inline constexpr int kGreen = 65280;
inline constexpr int kRed = 255;

// Between a school year's name and an activity's name in an amount header.
inline const QString kHeaderSeparator = QStringLiteral(" <-> ");
inline const QString kTotalPrefix = QStringLiteral("Total Acumulado de los donativos: ");

} // namespace DonorGridLayout
