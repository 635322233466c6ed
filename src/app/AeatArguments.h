#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// The options of "modelo182 aeat", read and checked before anything is
// opened, so that a refused command writes nothing.
struct AeatArguments
{
    enum class Tipo { Normal, Complementaria, Sustitutiva };

    QString session;      // settings file; empty with --db
    QString database;     // --db: Modelo182.mdb given directly
    QString out;          // --out: the file to write; empty: the default place
    QString justificante; // --justificante: overrides the settings' id
    Tipo tipo = Tipo::Normal;
    QString justificanteAnterior; // with --complementaria / --sustitutiva

    // Reads the words after "aeat". On a refusal returns nothing and sets
    // `error` to a Spanish sentence saying what to change.
    static std::optional<AeatArguments> Parse(const QStringList &words, const QString &defaultSession, QString &error);

    // The new id (empty: none yet) and the previous one must be ids, and
    // differ; checked again once the settings file may have given the new one.
    bool CheckIds(const QString &justificanteNuevo, QString &error) const;
};

// A declaration id as the tax agency issues it: 13 digits beginning with 182.
bool IsDeclarationId(const QString &text);

// The command's own usage lines (Spanish), for --help and refusals.
extern const char *const kAeatUsage;
