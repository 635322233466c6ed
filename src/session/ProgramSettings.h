#pragma once

#include <QLocale>
#include <QString>

// What belongs to this program rather than to the host's session: the
// [Modelo182] section of the session settings file, and the folder from
// which relative database paths in the host's data are taken.
struct ProgramSettings
{
    QLocale locale;             // number formats shown to the user
    bool desarrollo = false;    // the host API's "desarrollo" property
    QString numeroJustificante; // 13-digit declaration id for the AEAT file
    QString delegacion;
    QString domicilio;
    QString dataFolder; // base of a relative "Data Source" ("" = current folder)
};
