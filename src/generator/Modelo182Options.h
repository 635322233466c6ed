#pragma once

#include <QDate>
#include <QLocale>
#include <QString>

#include <functional>

// What the declaration generator needs beyond the declaration tables.
struct Modelo182Options
{
    enum class Tipo { Normal, Complementaria, Sustitutiva };

    // The locale the wizard formatted each `Donantes.importe` with.
    QLocale locale;
    // Folder of the file; empty: the application folder's "Informes" (the
    // component's caller passes "rutaaplicacion").
    QString reportsFolder;
    // The 13-digit declaration id the tax agency issues ("182..."). Empty:
    // "182" and zeros are written and a warning says it must be filled in.
    QString numeroJustificante;
    // Nature of the declarant (position 160): '1' to '4'.
    char naturaleza = '1';
    // A complementary or substitutive declaration names the one it amends.
    Tipo tipo = Tipo::Normal;
    QString justificanteAnterior;
    // The file to write; empty: "Modelo182_<ejercicio>.txt" in the reports folder.
    QString outputFile;
    // Today's date; tests set their own.
    std::function<QDate()> today = [] { return QDate::currentDate(); };
};
