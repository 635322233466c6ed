#include "generator/Modelo182Writer.h"

#include "data/Connection.h"
#include "generator/AeatText.h"
#include "generator/DonorHistory.h"
#include "generator/DonorRecords.h"
#include "generator/Modelo182Records.h"
#include "generator/Modelo182Validation.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <limits>
#include <stdexcept>

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

constexpr int kProgressStep = 1024;

class FileOut
{
public:
    explicit FileOut(const QString &path) : m_file(path), m_path(path)
    {
        const QString folder = QFileInfo(path).absolutePath();
        if (!QDir().mkpath(folder)) {
            throw WriteError(QStringLiteral("No se puede crear la carpeta «") + QDir::toNativeSeparators(folder)
                             + QStringLiteral("»: compruebe la ruta de la carpeta de informes."));
        }
        if (!m_file.open(QIODevice::WriteOnly))
            throw WriteError(Failure());
    }

    void Write(const QString &record)
    {
        const QByteArray bytes = Aeat::Record::Encode(record);
        if (m_file.write(bytes) != bytes.size())
            throw WriteError(Failure());
    }

    void WriteAt0(const QString &record)
    {
        if (!m_file.seek(0))
            throw WriteError(Failure());
        Write(record);
    }

    void Commit()
    {
        if (!m_file.commit())
            throw WriteError(Failure());
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
};

struct Totals
{
    qint64 records = 0;
    qint64 cents = 0;
};

// Streams the donor rows in donor order and writes one record per donor and
// percentage set; returns the count and sum the type-1 record carries.
Totals WriteDonors(Connection &connection, const Modelo182Validation &validation, const Modelo182Options &options,
                   FileOut &out, ProgressSink &progress)
{
    const DeclarantHeader &header = validation.cabecera;
    DonorHistory history;
    history.Load(connection, header.ejercicio);
    DonorHistoryWriter historyWriter(connection, header.ejercicio);

    Totals totals;
    DonorRecords donor;
    auto flush = [&] {
        if (donor.IsEmpty() || donor.TotalCents() <= 0) {
            donor.Clear();
            return;
        }
        const char recurrence = history.Recurrence(donor.Nif(), donor.TotalCents());
        for (const Donation &record : donor.Records()) {
            if (record.centimos <= 0)
                continue;
            out.Write(DonorRecord(header, record, recurrence));
            ++totals.records;
            totals.cents += record.centimos;
        }
        historyWriter.Add(donor.Nif(), donor.TotalCents());
        donor.Clear();
    };

    DonorRowStream rows(connection, validation.declarante->id, DonorRowStream::Order::ByDonor);
    DonorRow row;
    Donation donation;
    int done = 0;
    while (rows.Next(row)) {
        if (!ReadDonation(row, options.locale, donation, nullptr))
            throw std::logic_error("a donor row changed after its validation");
        if (donor.IsOtherDonor(donation))
            flush();
        if (!donor.Add(donation)) {
            throw WriteError(QStringLiteral("Los importes del donante ") + donation.nombre.trimmed()
                             + QStringLiteral(" suman más de lo que admite el modelo 182 (11 cifras enteras): "
                                              "revíselos en la rejilla de donantes."));
        }
        if (++done % kProgressStep == 0)
            progress.SetValue(done);
    }
    flush();
    progress.SetValue(done);
    return totals;
}

// Validates, then writes; inside the transaction the caller of
// EscribirModelo182 opened or found, so both passes see the same rows.
void ValidateAndWrite(Connection &connection, const Modelo182Options &options, ProgressSink &progress,
                      Modelo182Result &result)
{
    const Modelo182Validation validation = ValidarModelo182(connection, options);
    result.rechazos = validation.problemas;
    result.avisos = validation.avisos;
    if (validation.declarante) {
        result.ejercicio = validation.declarante->ejercicio.trimmed();
        result.declarante = Aeat::AlphanumericText(validation.declarante->nombre).left(40).trimmed();
        result.nifDeclarante = validation.cabecera.nif;
    }
    if (!validation.Correcta())
        return;

    progress.SetMax(int(qMin<qint64>(validation.filasDonantes, std::numeric_limits<int>::max())));
    progress.SetValue(0);
    const QString path = Modelo182FilePath(options, result.ejercicio);
    EnsureDonorHistoryTable(connection);
    FileOut out(path);
    // The type-1 record carries the count and total of the records below
    // it: a placeholder now, the record once they are known.
    DeclarantHeader header = validation.cabecera;
    out.Write(DeclarantRecord(header));
    const Totals totals = WriteDonors(connection, validation, options, out, progress);
    header.registros = totals.records;
    header.totalCentimos = totals.cents;
    out.WriteAt0(DeclarantRecord(header));
    out.Commit();
    result.registrosDonantes = totals.records;
    result.totalCentimos = totals.cents;
    result.fichero = QFileInfo(path).absoluteFilePath();
    result.generado = true;
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
