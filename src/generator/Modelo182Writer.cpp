#include "generator/Modelo182Writer.h"

#include "data/Connection.h"
#include "generator/AeatText.h"
#include "generator/DonorHistory.h"
#include "generator/DonorOrder.h"
#include "generator/DonorRecords.h"
#include "generator/Modelo182Records.h"
#include "generator/Modelo182Validation.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <climits>
#include <limits>
#include <stdexcept>
#include <vector>

using namespace Aeat;

namespace {

// A failure the user can fix (folder, permissions, disk); its text is shown.
class WriteError : public std::runtime_error
{
public:
    explicit WriteError(const QString &message) : std::runtime_error(message.toStdString()), m_message(message) {}
    QString Message() const { return m_message; }

private:
    QString m_message;
};

// A donor row that cannot go into the file, or totals the file cannot
// carry: the whole validation then says what and where.
struct RowsRefused
{
};

constexpr int kProgressStep = 1024;
constexpr qsizetype kFlushBytes = 1 << 20;

// The file as it is written: records gather in one buffer that goes to the
// temporary file a megabyte at a time. Unless committed, the temporary file
// and the folders made for it are removed again.
class FileOut
{
public:
    explicit FileOut(const QString &path) : m_file(path), m_path(path)
    {
        const QString folder = QFileInfo(path).absolutePath();
        for (QString missing = folder; !QFileInfo::exists(missing); missing = QFileInfo(missing).absolutePath())
            m_madeFolders << missing;
        if (!QDir().mkpath(folder)) {
            throw WriteError(QStringLiteral("No se puede crear la carpeta «") + QDir::toNativeSeparators(folder)
                             + QStringLiteral("»: compruebe la ruta de la carpeta de informes."));
        }
        if (!m_file.open(QIODevice::WriteOnly))
            throw WriteError(Failure());
        m_buffer.reserve(kFlushBytes + 4 * Aeat::kRecordLength);
    }

    ~FileOut()
    {
        if (m_committed)
            return;
        m_file.cancelWriting();
        m_file.commit(); // with the writing cancelled: only the temporary file goes
        for (const QString &folder : std::as_const(m_madeFolders))
            QDir().rmdir(folder);
    }

    // Where records are appended; FlushIfFull afterwards.
    QByteArray &Buffer() { return m_buffer; }

    void FlushIfFull()
    {
        if (m_buffer.size() >= kFlushBytes)
            Flush();
    }

    void Flush()
    {
        if (m_file.write(m_buffer) != m_buffer.size())
            throw WriteError(Failure());
        m_buffer.resize(0); // keeps its capacity
    }

    void Write(const QString &record)
    {
        m_buffer += Aeat::Record::Encode(record);
        FlushIfFull();
    }

    void WriteAt0(const QString &record)
    {
        Flush();
        if (!m_file.seek(0))
            throw WriteError(Failure());
        Write(record);
        Flush();
    }

    void Commit()
    {
        Flush();
        if (!m_file.commit())
            throw WriteError(Failure());
        m_committed = true;
    }

private:
    QString Failure() const
    {
        return QStringLiteral("No se ha podido escribir el fichero «") + QDir::toNativeSeparators(m_path)
               + QStringLiteral("» (") + m_file.errorString()
               + QStringLiteral("): compruebe que la carpeta existe, que tiene permiso para escribir en ella "
                                "y que queda espacio en el disco.");
    }

    QSaveFile m_file;
    QString m_path;
    QStringList m_madeFolders; // the deepest first
    QByteArray m_buffer;
    bool m_committed = false;
};

struct Totals
{
    qint64 records = 0;
    qint64 cents = 0;
};

// A donor's total for the year, kept until the history may be written.
struct HistoryEntry
{
    DonorKey nif;
    qint64 cents;
};

// The progress bar starts with the first rows: a refusal found at once
// shows none.
class RowProgress
{
public:
    RowProgress(ProgressSink &sink, qint64 rows) : m_sink(sink), m_max(int(qMin<qint64>(rows, INT_MAX))) {}

    void Row()
    {
        if (++m_done % kProgressStep == 0)
            Report();
    }

    void Report()
    {
        if (!m_started) {
            m_sink.SetMax(m_max);
            m_sink.SetValue(0);
            m_started = true;
        }
        m_sink.SetValue(m_done);
    }

private:
    ProgressSink &m_sink;
    int m_max;
    int m_done = 0;
    bool m_started = false;
};

// One pass over the donor rows in donor order: each row is checked and,
// once its donor is complete, the donor's records (one per percentage set)
// go into the file. Throws RowsRefused at the first row that cannot go into
// the file; `tally` gets what the checks over all rows need.
Totals WriteDonors(Connection &connection, const Modelo182Validation &validation, const Modelo182Options &options,
                   FileOut &out, ProgressSink &progress, DonorTally &tally, std::vector<HistoryEntry> &historyEntries)
{
    const DeclarantHeader &header = validation.cabecera;
    const qint64 declarantId = validation.declarante->id;
    DonorHistory history;
    history.Load(connection, header.ejercicio);
    const DonorRecordEncoder encoder(header);
    DonorRowStream rows(connection, declarantId, DonorRowStream::Order::ByDonor);
    RowProgress rowProgress(progress, rows.RowCount(connection, declarantId));

    Totals totals;
    DonorRecords donor;
    auto flush = [&] {
        if (donor.IsEmpty() || donor.TotalCents() <= 0) {
            donor.Clear();
            return;
        }
        const QString nif = donor.Nif();
        const char recurrence = history.Recurrence(nif, donor.TotalCents());
        for (const Donation &record : donor.Records()) {
            if (record.centimos <= 0)
                continue;
            encoder.Append(out.Buffer(), record, recurrence);
            ++totals.records;
            totals.cents += record.centimos;
        }
        out.FlushIfFull();
        historyEntries.push_back({PackDonorKey(QStringView(nif)), donor.TotalCents()});
        donor.Clear();
    };

    DonorRow row;
    Donation donation;
    while (rows.Next(row)) {
        ++tally.rows;
        if (!ReadDonation(row, options.locale, donation, nullptr))
            throw RowsRefused();
        tally.Add(donation);
        if (donor.IsOtherDonor(donation))
            flush();
        if (!donor.Add(donation)) {
            throw WriteError(QStringLiteral("Los importes del donante ") + donation.nombre.trimmed()
                             + QStringLiteral(" suman más de lo que admite el modelo 182 (11 cifras enteras): "
                                              "revíselos en la rejilla de donantes."));
        }
        rowProgress.Row();
    }
    flush();
    out.Flush();
    rowProgress.Report();
    return totals;
}

// Replaces the year's totals in the history with this run's.
void WriteHistory(Connection &connection, int ejercicio, const std::vector<HistoryEntry> &entries)
{
    EnsureDonorHistoryTable(connection);
    DonorHistoryWriter writer(connection, ejercicio);
    for (const HistoryEntry &entry : entries)
        writer.Add(entry.nif, entry.cents);
    writer.Finish();
}

// Checks and writes in one pass. The file grows in a temporary file and the
// history waits in memory: both are dropped when a check fails. Throws
// RowsRefused, WriteError.
void WriteChecked(Connection &connection, const Modelo182Options &options, ProgressSink &progress,
                  Modelo182Validation &validation, Modelo182Result &result)
{
    const QString path = Modelo182FilePath(options, result.ejercicio);
    FileOut out(path);
    // The type-1 record carries the count and total of the records below
    // it: a placeholder now, the record once they are known.
    DeclarantHeader header = validation.cabecera;
    out.Write(DeclarantRecord(header));
    DonorTally tally;
    std::vector<HistoryEntry> history;
    const Totals totals = WriteDonors(connection, validation, options, out, progress, tally, history);
    CheckDonorTally(tally, validation);
    if (!validation.Correcta())
        throw RowsRefused();
    WriteHistory(connection, header.ejercicio, history);
    header.registros = totals.records;
    header.totalCentimos = totals.cents;
    out.WriteAt0(DeclarantRecord(header));
    out.Commit();
    result.registrosDonantes = totals.records;
    result.totalCentimos = totals.cents;
    result.fichero = QFileInfo(path).absoluteFilePath();
    result.generado = true;
}

void Report(const Modelo182Validation &validation, Modelo182Result &result)
{
    result.rechazos = validation.problemas;
    result.avisos = validation.avisos;
    if (validation.declarante) {
        result.ejercicio = validation.declarante->ejercicio.trimmed();
        result.declarante = Aeat::AlphanumericText(validation.declarante->nombre).left(40).trimmed();
        result.nifDeclarante = validation.cabecera.nif;
    }
}

// Validates, then writes: the checks of the declarant come first; those of
// the donor rows as the rows are written. When any check fails (or the file
// cannot be written) the declaration is validated whole, as it is stored, so
// that the refusal lists every problem in the order of the table. Inside
// the transaction the caller of EscribirModelo182 opened or found.
void ValidateAndWrite(Connection &connection, const Modelo182Options &options, ProgressSink &progress,
                      Modelo182Result &result)
{
    Modelo182Validation validation = ValidarCabecera(connection, options);
    Report(validation, result);
    if (validation.Correcta()) {
        try {
            WriteChecked(connection, options, progress, validation, result);
            Report(validation, result);
            return;
        } catch (const RowsRefused &) {
        } catch (const WriteError &) {
            // A declaration that would be refused is refused, whatever the disk says.
            validation = ValidarModelo182(connection, options);
            Report(validation, result);
            if (validation.Correcta())
                throw;
            return;
        }
    }
    Report(ValidarModelo182(connection, options), result);
}

} // namespace

QString Modelo182FilePath(const Modelo182Options &options, const QString &ejercicio)
{
    if (!options.outputFile.isEmpty())
        return options.outputFile;
    return QDir(options.reportsFolder).filePath(QStringLiteral("Modelo182_") + ejercicio.trimmed() + QStringLiteral(".txt"));
}

Modelo182Result EscribirModelo182(Connection &connection, const Modelo182Options &options, ProgressSink &progress)
{
    Modelo182Result result;
    const bool ownTransaction = !connection.InTransaction();
    if (ownTransaction)
        connection.BeginTrans();
    try {
        ValidateAndWrite(connection, options, progress, result);
    } catch (const WriteError &error) {
        result.error = error.Message();
        result.generado = false;
        result.fichero.clear();
    } catch (...) {
        if (ownTransaction && connection.InTransaction())
            connection.RollbackTrans();
        throw;
    }
    if (ownTransaction) {
        // Nothing of a refused or failed run is kept.
        if (result.generado)
            connection.CommitTrans();
        else
            connection.RollbackTrans();
    }
    return result;
}
