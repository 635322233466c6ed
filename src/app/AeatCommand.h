#pragma once

#include "AeatArguments.h"

#include "generator/Modelo182Options.h"
#include "generator/ProgressSink.h"

#include <QDate>
#include <QString>

#include <functional>

// "modelo182 aeat": writes the tax agency's file of the declaration already
// in Modelo182.mdb (the newest declarant and its donors) through the same
// generator the donor window calls, without opening any window.
//
// Where things are: with --session, the database as the wizard finds it
// (RutaBD, or the program's folder when sqlserver is set) and the file in
// the reports folder (rutaaplicacion + "/Informes/", or
// "/QXInformes/Informes .rpt/" in development); with --db, the file beside
// the database. --out names the file in either case.
//
// Exit codes: 0 written; 1 the declaration's data refused, the database
// unreadable or the file not writable (nothing written, a previous file left
// whole, the donor history as it was); 2 the command itself refused
// (options, ids, missing files), before the database is opened.
class AeatCommand
{
public:
    enum Exit { kWritten = 0, kDataRefused = 1, kCommandRefused = 2 };

    explicit AeatCommand(QString defaultSession);

    // `words`: what follows "aeat" on the command line.
    int Run(const QStringList &words);

    // What the run says: the summary (standard output) and the refusals
    // (standard error), in Spanish.
    QString Output() const { return m_output; }
    QString Errors() const { return m_errors; }

    // Tests fix the date the generator's year warning compares with, and
    // watch (or interrupt) the writing through its progress.
    void SetToday(std::function<QDate()> today) { m_today = std::move(today); }
    void SetProgress(ProgressSink *progress) { m_progress = progress; }

private:
    bool FromSession(const AeatArguments &args, Modelo182Options &options, QString &database);
    bool FromDatabase(const AeatArguments &args, Modelo182Options &options, QString &database);
    bool ChooseOutput(const AeatArguments &args, Modelo182Options &options);
    int Generate(const QString &database, const Modelo182Options &options);
    int Refuse(const QString &message);

    QString m_defaultSession;
    std::function<QDate()> m_today = [] { return QDate::currentDate(); };
    NoProgress m_noProgress;
    ProgressSink *m_progress = &m_noProgress;
    QString m_output;
    QString m_errors;
};
